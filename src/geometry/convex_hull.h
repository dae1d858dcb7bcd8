#pragma once

#include "base/messages.h"
#include "geometry/poly.h"

#include <optional>

namespace orvane {

/// The minimum convex polygon of a set of points, and the bounds from which it was started.
struct HullResult : GeoBounds {
  Poly hull;  ///< points of the list; one vertex if all points stand in one place, and two
              ///< or three with no area if they stand on one line
};

/// Builds the hull by inserting point after point into the ring of the four extremes. At metre
/// grain (`PointInPolygon`) it may leave out a point that sticks out by less than a metre.
/// Afterwards the points are projected about the centre of the bounds, unless all of them stand
/// in one place.
/// \param points    in any order; among equals the first is taken
/// \param messages  for internal errors of `PolyAddPoint`
/// \return nothing for an empty list
std::optional<HullResult> ConvexHull(PointSpan points, Messages& messages);

/// Grows a convex ring so that it takes in a point outside it: the point goes in at the nearest
/// edge, or takes the place of a vertex that then lies inside, and the vertices next to it that
/// fall inside are left out, at least 2 vertices staying. It is made for points within the bounds
/// of the ring, as they are once the ring holds the four extremes; a point beyond a sharp corner
/// may go in at the wrong one of its two edges. A point on an edge changes nothing, up to a
/// squared distance of a billionth of the coordinates of the edge's start.
/// \param ring      at least 2 vertices, in one plane with `point`; changed in place. Its head
///                  may become another vertex
/// \param messages  "Poly AddPoint failure" is posted as an internal error if two edges that are
///                  no neighbours are nearest, as happens only in a ring that is not convex
void PolyAddPoint(Poly& ring, Point& point, Messages& messages);

}  // namespace orvane
