#pragma once

#include "base/progress.h"
#include "estimates/range_outlines.h"
#include "view/map_window.h"

namespace orvane {

/// Makes `RangePanelRow::estimates` of all rows fit their masks and the fixes of their ranges: bit i
/// of `RangePanelRow::estimateMask` shows number i of `OfferedOutlines`. What fits is kept, so a view
/// without a tick costs nothing.
/// \param progress  can be null; if it cancels, rows that are not done lose their ticks
void UpdateEstimateLines(MapWindow& view, Progress* progress);

}  // namespace orvane
