#pragma once

#include "base/messages.h"
#include "view/map_window.h"

#include <vector>

namespace orvane {

/// Selection by the keyboard, from the row where Shift was pressed to the one that was reached.

/// The rows of the trail pane that show: the children of open rows only, in the order of the pane.
std::vector<TrailPanelRow*> ShownTrailRows(std::list<TrailPanelRow>& rows);

/// Selects the rows that show between two rows, both included and in either order, with all below
/// them; no other row. "New" is never selected.
void SelectTrailsBetween(MapWindow& view, const TrailPanelRow& one, const TrailPanelRow& other);
/// The same in the range pane.
void SelectRangesBetween(MapWindow& view, const RangePanelRow& one, const RangePanelRow& other);

/// Checks the trails of the selected rows, in the order of the pane; without a limit of warnings if
/// only one row is selected. A group and the only trail in it are two.
/// \return false if no row is selected
bool CheckSelectedTrails(MapWindow& view, Messages& messages);

}  // namespace orvane
