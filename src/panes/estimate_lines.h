#pragma once

#include "base/progress.h"
#include "estimates/range_outlines.h"
#include "view/map_window.h"

#include <array>
#include <string>

namespace orvane {

/// The estimates that can be drawn as outlines: bit i of `RangePanelRow::estimateMask` shows
/// number i. They have the reference bandwidth.
constexpr std::array<OutlineKind, 4> OfferedOutlines = {{{OutlineKind::Method::Mcp, 95},
                                                         {OutlineKind::Method::Mcp, 50},
                                                         {OutlineKind::Method::Kernel, 95},
                                                         {OutlineKind::Method::Kernel, 50}}};

/// What an outline is, with what its per cent counts: "MCP, 95 % of the fixes".
std::string OutlineCaption(const OutlineKind& kind);

/// Makes `RangePanelRow::estimates` of all rows fit their masks and the fixes of their ranges. What
/// fits is kept, so a view without a tick costs nothing.
/// \param progress  can be null; if it cancels, rows that are not done lose their ticks
void UpdateEstimateLines(MapWindow& view, Progress* progress);

}  // namespace orvane
