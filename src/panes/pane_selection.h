#pragma once

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

}  // namespace orvane
