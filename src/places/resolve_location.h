#pragma once

#include "model/map.h"

#include <optional>
#include <string_view>
#include <vector>

namespace orvane {

/// What a location text means: a place, and the thing that it names, if any.
struct Location {
  LatLon place;  ///< altitude `NoAltitude` if unknown
  Point* point = nullptr;
  Trail* trail = nullptr;
  Range* range = nullptr;
};

/// What a lookup without a result depends on.
struct LocationNeeds {
  /// Points whose place was needed but is not known yet; a point can be listed more than once.
  std::vector<const Point*> points;
  /// True if the result depends only on these: until one of them has a place, the same text means
  /// nothing in this map, and the lookup changes no point.
  bool complete = true;
};

/// Reads a free text that means a place, wherever the program asks for one. The forms are tried in
/// this order, and the first that fits wins:
///
///   1. a point's name, else a trail's (or contour's, or "type.date" of a follow)
///   2. two places with a comma between: their midpoint
///   3. trail:point
///   4. a range's name, or "Range:" and a range's name
///   5. "Trail:", "Point:", "Grid:" and a name (exactly so written); a bare cell name
///   6. a metre mark on a trail, as Main135
///   7. a latitude and a longitude
///   8. a point's name without its leading `_` or `@`
///   9. "20m east of Camp", "5 meters left of Main306"
///  10. "From a to b along t [via c and u] by n", n in metres or as a fraction
///  11. a list of places with ", " between: their mean
///  12. a trail that was named: the middle of its bounds
///
/// If all of them fail, they are tried once more, now also with UTM and MGRS texts (`ParseUtm`) as
/// places. So a text that meant something before these were known means the same now.
///
/// A point without a place gives none.
/// \param needs  if not null, receives what a lookup without a result depends on
/// \return nothing if the text means nothing
std::optional<Location> ResolveLocation(Map& map, std::string_view text,
                                        LocationNeeds* needs = nullptr);

}  // namespace orvane
