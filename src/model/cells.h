#pragma once

#include "geo/earth.h"
#include "model/map.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Names of grid cells, and the places that they name. A cell name is the row part followed by the
/// column part; if rows are decimal and columns letters, the column comes first.

/// A number read from one part of a cell name.
struct CellNumber {
  int number = 0;
  size_t length = 0;  ///< bytes used
};

/// Reads one part of a cell name. Letters: a is 1, z 26, aa 27; `z` followed by a letter is a
/// negative number. A text that does not begin with a letter of the right case gives 0.
/// \return nothing for a style that names no cells
std::optional<CellNumber> ParseCellNumber(std::string_view text, GridStyle style);

/// Writes one part of a cell name; numbers below 1 differ by one from what `ParseCellNumber` reads.
/// Other styles give the empty text.
std::string FormatCellNumber(int number, GridStyle style);

/// True if the column part comes before the row part in the names of this grid's cells.
bool ColumnComesFirst(const Grid& grid);

/// \return the frame in which the cells of `grid` are counted
GridFrame FrameOf(const Grid& grid);

/// The order of cells in a list: by rows, then by columns.
bool IsCellBefore(const RangeCell& a, const RangeCell& b);

/// All cells of one range in an overlap, row-major.
std::vector<RangeCell> CellsOf(const OverlapShare& share);

/// The centre of the cell that a text names, on the newest grid that has such a name, then on the
/// basis's grids. A grid whose corner has no place has none.
std::optional<LatLon> FindGridCell(const Map& map, std::string_view text);

/// The name of the cell of a place, with a blank in front, on the newest grid of this map that
/// contains it.
/// \param centerLongitude  degrees; longitudes are taken relative to it
/// \return nothing if no grid of this map contains the place
std::optional<std::string> CellAt(const Map& map, const LatLon& place, double centerLongitude);

/// The altitude at a place with no reading: inverse-distance weighting in degrees over the map's
/// own points with an altitude, in list order.
/// \return metres; `NoAltitude` if no point has one
float EstimateAltitude(const Map& map, const LatLon& place);

}  // namespace orvane
