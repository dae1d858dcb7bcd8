#pragma once

#include "view/map_window.h"

#include <string>
#include <vector>

namespace orvane {

/// The lines of the tip that a row of the trail pane shows when the pointer rests on it.
/// \return empty for a group
std::vector<std::string> TrailTip(const MapWindow& view, const TrailPanelRow& row);

/// The same for a row of the range pane.
std::vector<std::string> RangeTip(const MapWindow& view, const RangePanelRow& row);

}  // namespace orvane
