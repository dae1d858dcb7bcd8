#pragma once

#include "geometry/poly.h"
#include "model/map.h"

#include <cstddef>

namespace orvane {

/// Time and measures by the cells of a survey grid. Cells are counted along north and east from
/// the grid's corner, each count within -300 to 300: outlying points pile up in the outermost.

/// Adds what was done at a stop: its minutes and its measures.
void AddStop(CellTally& tally, const Point& stop);

/// True if anything was spent there.
bool HoldsAnything(const CellTally& tally);

/// \return the place of a cell in a row-major list of the cells of a window that holds it
size_t IndexInWindow(const CellWindow& window, int row, int column);

/// Overwrites the `projected` north and east of each point by its cell numbers.
void GridCellsOfPoints(PointSpan points, const Grid& grid);

/// Tallies the points of a range on the newest grid of the first map, up the basis chain, that has
/// one: fills `grid`, `window`, `cells`, `tally`, `gridArea`. Nothing is done without a grid or
/// without points. A stop without a duration counts one minute, and keeps it for good.
/// Leaves the points projected about the centre of the range's bounds.
void TallyRangeOnGrid(const Map& map, Range& range);

}  // namespace orvane
