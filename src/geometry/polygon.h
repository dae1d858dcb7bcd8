#pragma once

#include "base/messages.h"
#include "geo/positions.h"
#include "geometry/poly.h"

#include <optional>

namespace orvane {

/// Areas, containment and crossings of rings. Nothing here projects unless it says so: the caller
/// first puts all points of one operation into one plane.

/// The plain shoelace area of a ring.
/// \param ring  in either direction; its last point may be the first one again
/// \return square metres, never negative; 0 for fewer than two vertices
double PolygonArea(PointSpan ring);

/// Whether a place is inside a ring, to the metre: the east span of an edge is truncated to whole
/// metres before its crossing is computed, so the result for a vertex, or for a place within a
/// metre of an edge, may be either. See docs/compatibility.md.
/// \param east   metres
/// \param north  metres
/// \return false for an empty ring
bool PointInPolygon(double east, double north, PointSpan ring);

/// The squared distance from `p` to the nearest place on the segment from `a` to `b`.
/// \return square metres
double SquaredDistanceToSegment(const Meters& p, const Meters& a, const Meters& b);

/// Where the segments from `a1` to `a2` and from `b1` to `b2` meet. Their ends belong to them.
/// \return the place, without altitude; nothing for parallel segments, overlapping ones too
std::optional<Meters> SegmentIntersection(const Meters& a1, const Meters& a2, const Meters& b1,
                                          const Meters& b2);

/// \return the vertices of `a` that are inside `b`, in the order of `a`
Poly VerticesInside(PointSpan a, PointSpan b);

/// Where the segment between two places crosses the edges of a ring, the closing edge included.
/// \param scratch  receives the points
/// \return newest first: the crossing of the last edge is the head; empty for a segment without
///         length or a ring of fewer than 2 vertices
Poly EdgeCrossings(ScratchPoints& scratch, PointSpan ring, const Meters& from, const Meters& to);

/// The overlap of two convex rings. For other rings: the ring built from the vertices that are
/// inside the other ring and the crossings of the edges. Because places are tested to the metre, a
/// corner within a metre of the other ring's edge may be missing.
/// \param scratch   receives the crossings that are part of the result
/// \param a, b      projected about (lat0, lon0)
/// \param lon0      degrees; with `lat0` used to give the crossings their `geo`
/// \param messages  for internal errors of `PolyAddPoint`
/// \return vertices of `a`, `b` and `scratch`, perhaps only one or two; empty if the rings do not
///         meet or one is empty
Poly IntersectPolygons(ScratchPoints& scratch, PointSpan a, PointSpan b, double lon0, double lat0,
                       Messages& messages);

/// Moves each vertex radially away from the centre of the ring's bounds by `margin` (towards it if
/// negative). This is not a parallel offset: a long ring grows more at its ends than at its sides.
/// See docs/compatibility.md. Works from `geo`; the plane of `ring` is neither used nor changed.
/// \param scratch  receives the new vertices, with `geo`, and `projected` about the centre
/// \param margin   metres, signed
/// \return one new vertex for each old one; empty, with nothing made, if a vertex is at the centre
///         or would pass it
Poly OffsetPolygon(ScratchPoints& scratch, PointSpan ring, double margin);

/// Tests a place just right of the first edge, away from its middle by a twentieth of the edge's
/// north and east spans. Leaves the ring in the plane of `LocalPlaneOfPoints`.
/// \return true if that place is inside the ring; false for fewer than 2 vertices
bool RingRunsClockwise(PointSpan ring);

}  // namespace orvane
