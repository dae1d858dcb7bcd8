#pragma once

#include "geometry/poly.h"
#include "model/map.h"

#include <cstddef>

namespace orvane {

/// Time and measures by the cells of a survey grid. Cells are counted along north and east from the
/// grid's corner, each count within -300 to 300; points further out count in the outermost cell.

/// Adds the minutes and the measures of a stop.
void AddStop(CellTally& tally, const Point& stop);

/// True if any time or measure is in the tally.
bool HoldsAnything(const CellTally& tally);

/// \return the index of a cell in the row-major list of a window that holds it
size_t IndexInWindow(const CellWindow& window, int row, int column);

/// Overwrites the `projected` north and east of each point by its cell numbers.
void GridCellsOfPoints(PointSpan points, const Grid& grid);

/// Tallies the points of a range on the newest grid of the first map, down the basis chain, that
/// has one: fills `grid`, `window`, `cells`, `tally`, `gridArea`. Does nothing without a grid or
/// without points. A stop without a duration gets one minute for good; see docs/compatibility.md.
/// Leaves the points projected about the centre of the range's bounds.
void TallyRangeOnGrid(const Map& map, Range& range);

}  // namespace orvane
