#pragma once

#include "view/map_window.h"

namespace orvane {

/// Rebuilds the range rows of a view: the ranges of its map by name, then their overlaps by name,
/// then the row "New". What was selected and visible is lost.
void BuildRangeRows(MapWindow& view);

/// Adds the row of a range in its sorted place; rows of equal name are in the order in which they
/// were added. The trail rows of the view must exist, since a range takes its colour from its first
/// follow.
/// \return the row; good until it is dropped
RangePanelRow& AddRangeRow(MapWindow& view, Range& range);

/// \return the row of that range, or null
RangePanelRow* FindRangeRow(MapWindow& view, const Range& range);

/// Drops the rows of overlaps that involve `range`, or of all if it is null.
/// \return true if any was dropped
bool DropRangeRows(MapWindow& view, const Range* range);

/// Adds rows for the overlaps of the map that involve `range`, or for all if it is null.
/// \return true if any was added
bool RedoRangeRows(MapWindow& view, const Range* range);

}  // namespace orvane
