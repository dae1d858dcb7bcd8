#pragma once

#include "editing/cell_model.h"
#include "model/map.h"

#include <vector>

namespace orvane {

/// Which columns the trail editor shows: compass readings, fixes, or both.
enum class EntryMode { Relative, Gps, Mixture };

/// The columns of the trail editor by what they mean. SM columns follow `Scale`, and the comments
/// come last.
enum TrailColumn : size_t {
  ColumnName = 0,
  ColumnLat = 1,
  ColumnLon = 2,
  ColumnPoint = 3,
  ColumnDistance = 4,
  ColumnBearing = 5,
  ColumnInclination = 6,
  ColumnAltitude = 7,
  ColumnWeight = 8,
  ColumnScale = 9,
  ColumnFirstSm = 10,
};

/// \return how many SM columns the editors of a map have: the names up to the first missing one
size_t SmColumnsOf(const Map& map);

/// \param shown  index of a column of the mode
/// \return its meaning, a `TrailColumn` or more
size_t TrailColumnOf(EntryMode mode, size_t shown);

/// The columns of a mode with their captions, hints and widths.
std::vector<CellColumn> TrailColumns(EntryMode mode, const Map& map);

}  // namespace orvane
