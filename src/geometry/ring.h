#pragma once

#include "base/messages.h"
#include "geo/positions.h"
#include "geometry/poly.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace orvane {

/// The ring on which hulls and intersections are built. It keeps the coordinates with the vertices,
/// so the many walks around it touch few cache lines.

/// One vertex. A crossing has no point, as it may still be removed.
struct RingVertex {
  Meters place;            ///< in the plane of the operation
  Point* point = nullptr;  ///< not owned; null for a crossing that has none yet
};

using Ring = std::vector<RingVertex>;

constexpr size_t NoVertex = std::numeric_limits<size_t>::max();

/// Takes the coordinates that the points have now.
Ring RingOf(PointSpan points);
/// \return the points of the ring in its order; every vertex must have one
Poly PolyOf(const Ring& ring);

/// Whether the edge between two vertices crosses the ray from a place towards greater east.
///
/// The east span of the edge is truncated to whole metres; see docs/compatibility.md.
inline bool EdgeCrossesRay(const Meters& from, const Meters& to, double east, double north) {
  if ((from.north >= north) == (to.north >= north)) return false;
  const bool fromBeyond = from.east >= east;
  if (fromBeyond == (to.east >= east)) return fromBeyond;
  const double span = std::trunc(to.east - from.east);
  return from.east - (from.north - north) * span / (to.north - from.north) >= east;
}

/// As `PointInPolygon`.
/// \param skip  the index of a vertex to leave out
bool PointInRing(double east, double north, const Ring& ring, size_t skip = NoVertex);

/// As `PolyAddPoint`.
void AddToRing(Ring& ring, const RingVertex& vertex, Messages& messages);

}  // namespace orvane
