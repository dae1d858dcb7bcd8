#pragma once

#include "base/messages.h"
#include "geometry/poly.h"

#include <optional>

namespace orvane {

/// The minimum convex polygon of a set of points, and the bounds of the set.
struct HullResult : GeoBounds {
  Poly hull;  ///< points of the list; one vertex if all points are in one place, and two
              /// < or three with no area if they are on one line
};

/// Builds the hull by inserting point after point into the ring of the four extremes. Because
/// places are tested to the metre (`PointInPolygon`), it may omit a point that sticks out by less
/// than a metre. Afterwards the points are projected about the centre of the bounds, unless all of
/// them are in one place.
/// \param points    in any order; of equal ones the first is taken
/// \param messages  for internal errors of `PolyAddPoint`
/// \return nothing for an empty list
std::optional<HullResult> ConvexHull(PointSpan points, Messages& messages);

/// Grows a convex ring to take in a point outside it: the point is inserted at the nearest edge, or
/// replaces a vertex that is then inside, and neighbouring vertices that are then inside are
/// removed. At least 2 vertices remain. The point must be within the bounds of the ring, as it is
/// once the ring holds the four extremes; beyond a sharp corner it may be inserted at the wrong one
/// of its two edges. A point on an edge changes nothing, within a squared distance of a billionth
/// of the coordinates of the edge's start.
/// \param ring      at least 2 vertices, in one plane with `point`; changed in place. Its head may
///                  become another vertex
/// \param messages  receives the internal error "Poly AddPoint failure" if two edges that are not
///                  neighbours are equally near, which happens only in a ring that is not convex
void PolyAddPoint(Poly& ring, Point& point, Messages& messages);

}  // namespace orvane
