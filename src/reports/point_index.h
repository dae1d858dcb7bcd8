#pragma once

#include "geo/angle_text.h"
#include "geo/positions.h"
#include "model/map.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The Point Index: a sorted list of all names of a map with their places.

/// One name: that of a point, or one of its synonyms.
struct PointIndexEntry {
  std::string name;
  LatLon position;       ///< of the point
  std::string gridCell;  ///< name of the cell with a blank in front; empty if no grid holds it
  double north = 0;      ///< metres from the origin; set only if there is one
  double east = 0;       ///< likewise
};

/// A snapshot of the names: what is added to the map later is not in it.
struct PointIndex {
  std::vector<PointIndexEntry> entries;  ///< by `CompareIndexNames`
  bool hasOrigin = false;                ///< the map or its basis chain has an origin
};

/// Collects and sorts the names and synonyms of the points that the map names, hidden ones left
/// out. Names that compare alike stay in the order in which the map's buckets hold them.
/// \param centerLongitude  degrees; where the view that asks looks: cells are counted relative to
/// it
PointIndex BuildPointIndex(const Map& map, double centerLongitude);

/// The order of names. Names that differ only in a tail of digits and points are ordered by the
/// number of the tail, so A9 comes before A10; others by bytes, capitals first. This is not a strict
/// order: two names can be equal, and three can form a circle. So don't use it with `std::sort`.
/// \return negative, 0 or positive as `a` comes before, with or after `b`
int CompareIndexNames(std::string_view a, std::string_view b);

/// The metres from the origin, such as "12.3mN,-1.2kmE"; less than 0.1 m is 0.
std::string FormatMeters(const PointIndexEntry& entry);

/// Which of the optional columns have anything to show.
struct PointIndexColumns {
  bool altitude = false;
  bool grid = false;
  bool meters = false;
};
PointIndexColumns ColumnsOf(const PointIndex& index);

/// The heading of the column of positions: "Lat/Lon" or "UTM".
constexpr std::string_view PositionCaption(CoordinateDisplay display) {
  return display == CoordinateDisplay::Utm ? "UTM" : "Lat/Lon";
}

/// The index as text: a line of headings, an empty line, a line a name; fields are separated by
/// tabs, and columns with nothing to show are left out.
std::string PointIndexText(const PointIndex& index, CoordinateDisplay display);

}  // namespace orvane
