// How a ring grows. A point p outside a convex ring is inserted at the edge nearest to it:
//
//          near           near         p replaces a vertex that is then inside (x), or else is
//         /    \         /             inserted between the two; then the vertices that follow it,
//     p -- - -- x    p -+              and those before it, are removed one by one as long as
//         \    /         \             they are inside
//          after          after

#include "geometry/ring.h"

#include "geometry/polygon.h"

#include <algorithm>
#include <optional>

namespace orvane {
namespace {

size_t Next(const Ring& ring, size_t index) { return index + 1 < ring.size() ? index + 1 : 0; }

/// The edge of a ring nearest to a place; an edge is identified by the index of its start.
struct NearestEdge {
  double distance = 0;  ///< square metres
  size_t near = 0;
  std::optional<size_t> tie;  ///< another edge at exactly this distance
};

/// Finds the nearest edge. A place nearest to a vertex is equally near to its two edges; other ties
/// do not occur around a convex ring.
NearestEdge FindNearestEdge(const Ring& ring, const Meters& place, Messages& messages) {
  const auto distanceTo = [&](size_t edge) {
    return SquaredDistanceToSegment(place, ring[edge].place, ring[Next(ring, edge)].place);
  };
  const size_t last = ring.size() - 1;
  NearestEdge found;
  found.distance = distanceTo(0);
  bool noted = false;
  for (size_t edge = 1; edge <= last; ++edge) {
    const double distance = distanceTo(edge);
    if (distance < found.distance) {
      found = {distance, edge, std::nullopt};
      continue;
    }
    if (distance != found.distance) continue;
    const bool follows = found.near + 1 == edge;
    if (!follows && edge == last && found.near == 0) {
      // The closing edge comes before the first one.
      found.near = last;
      found.tie = 0;
      continue;
    }
    if (!follows && found.distance != 0 && !noted) {
      NoteInternalError(messages, "Poly AddPoint failure");
      noted = true;
    }
    found.tie = edge;
  }
  return found;
}

/// Removes the vertices after `link` that are inside the ring formed without them, continuing at
/// the head after the end of the list. At least 2 vertices remain.
/// \return the new index of `link`
size_t RemoveFollowing(Ring& ring, size_t link) {
  const auto liesInside = [&](size_t index) {
    return PointInRing(ring[index].place.east, ring[index].place.north, ring, index);
  };
  const auto erase = [&](size_t index) {
    ring.erase(ring.begin() + static_cast<Ring::difference_type>(index));
  };
  while (link + 1 < ring.size()) {
    if (ring.size() <= 2 || !liesInside(link + 1)) return link;
    erase(link + 1);
  }
  while (link != 0 && ring.size() > 2 && liesInside(0)) {
    erase(0);
    --link;
  }
  return link;
}

/// Walks away from a new vertex in both directions. The second walk uses the reversed list, because
/// the test of a place depends, within a metre, on the direction of the edges.
void RemoveInside(Ring& ring, size_t link) {
  link = RemoveFollowing(ring, link);
  std::reverse(ring.begin(), ring.end());
  RemoveFollowing(ring, ring.size() - 1 - link);
  std::reverse(ring.begin(), ring.end());
}

/// Replaces a vertex by `vertex` if the old one is then inside, and removes its neighbours
/// likewise.
/// \return false, with nothing changed, if it does not
bool ReplaceVertex(Ring& ring, size_t index, const RingVertex& vertex) {
  const RingVertex old = ring[index];
  ring[index] = vertex;
  if (PointInRing(old.place.east, old.place.north, ring)) {
    RemoveInside(ring, index);
    return true;
  }
  ring[index] = old;
  return false;
}

}  // namespace

Ring RingOf(PointSpan points) {
  Ring ring;
  ring.reserve(points.size());
  for (Point* point : points) ring.push_back({point->projected, point});
  return ring;
}

Poly PolyOf(const Ring& ring) {
  Poly points;
  points.reserve(ring.size());
  for (const RingVertex& vertex : ring) points.push_back(vertex.point);
  return points;
}

bool PointInRing(double east, double north, const Ring& ring, size_t skip) {
  if (ring.empty()) return false;
  bool inside = false;
  size_t last = ring.size() - 1;
  if (last == skip) last = ring.size() > 1 ? last - 1 : 0;
  for (size_t i = 0; i < ring.size(); ++i) {
    if (i == skip) continue;
    if (EdgeCrossesRay(ring[last].place, ring[i].place, east, north)) inside = !inside;
    last = i;
  }
  return inside;
}

void AddToRing(Ring& ring, const RingVertex& vertex, Messages& messages) {
  if (ring.size() < 2) {
    ring.push_back(vertex);
    return;
  }
  const NearestEdge nearest = FindNearestEdge(ring, vertex.place, messages);
  size_t near = nearest.near;
  const Meters& start = ring[near].place;
  // The tolerance grows with the distance from the origin, so rings are projected about their
  // centre.
  if ((std::fabs(start.north) + std::fabs(start.east)) * 1e-9 > nearest.distance) return;

  if (nearest.tie) {
    const Meters& tieStart = ring[*nearest.tie].place;
    const Meters& tieEnd = ring[Next(ring, *nearest.tie)].place;
    if (SegmentIntersection(start, vertex.place, tieStart, tieEnd)) near = *nearest.tie;
  }
  const size_t after = Next(ring, near);
  if (ReplaceVertex(ring, near, vertex)) return;
  if (ReplaceVertex(ring, after, vertex)) return;
  // Between the two. In a ring of two both edges connect the same vertices, and the new one is
  // inserted after `after`.
  const size_t before = Next(ring, after) == near ? after : near;
  ring.insert(ring.begin() + static_cast<Ring::difference_type>(before) + 1, vertex);
}

}  // namespace orvane
