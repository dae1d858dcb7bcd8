// Measures and crossings of rings, and the operations that make new rings from them. The overlap of
// two convex rings goes through the vertices of each that are inside the other and through the
// crossings of their edges:
//
//        +-------+ a            The result starts with the corners inside the other ring (o);
//        |   o---x---+          each crossing (x) is then inserted at the edge nearest to it.
//        |   |   |   |
//        +---x---o   |
//            +-------+ b

#include "geometry/polygon.h"

#include "geo/earth.h"
#include "geometry/planes.h"
#include "geometry/ring.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

double SquaredDistance(const Meters& a, const Meters& b) {
  const double north = a.north - b.north;
  const double east = a.east - b.east;
  return north * north + east * east;
}

/// The crossings of one segment with all edges of a ring, newest first, as vertices without a
/// point.
Ring CrossingVertices(const Ring& ring, const Meters& from, const Meters& to) {
  Ring crossings;
  const bool hasLength = from.north != to.north || from.east != to.east;
  if (!hasLength || ring.size() < 2) return crossings;
  for (size_t i = 0; i < ring.size(); ++i) {
    const RingVertex& next = i + 1 < ring.size() ? ring[i + 1] : ring.front();
    const auto place = SegmentIntersection(from, to, ring[i].place, next.place);
    if (place) crossings.push_back({*place, nullptr});
  }
  std::reverse(crossings.begin(), crossings.end());
  return crossings;
}

/// Adds a vertex to the ring of an intersection, which may still be a single vertex.
void GrowIntersection(Ring& ring, const RingVertex& vertex, Messages& messages) {
  if (ring.size() >= 2) {
    AddToRing(ring, vertex, messages);
    return;
  }
  const Meters& only = ring.front().place;
  if (only.north != vertex.place.north || only.east != vertex.place.east) ring.push_back(vertex);
}

}  // namespace

double PolygonArea(PointSpan ring) {
  if (ring.empty()) return 0;
  double sum = 0;
  for (size_t i = 0; i + 1 < ring.size(); ++i) {
    const Meters& from = ring[i]->projected;
    const Meters& to = ring[i + 1]->projected;
    sum += from.north * to.east - from.east * to.north;
  }
  if (ring.back() != ring.front()) {
    const Meters& from = ring.back()->projected;
    const Meters& to = ring.front()->projected;
    sum += from.north * to.east - from.east * to.north;
  }
  return std::fabs(sum / 2);
}

bool PointInPolygon(double east, double north, PointSpan ring) {
  if (ring.empty()) return false;
  bool inside = false;
  const Point* last = ring.back();
  for (const Point* point : ring) {
    if (EdgeCrossesRay(last->projected, point->projected, east, north)) inside = !inside;
    last = point;
  }
  return inside;
}

double SquaredDistanceToSegment(const Meters& p, const Meters& a, const Meters& b) {
  if (a.north != b.north && a.east != b.east) {
    const double ab = SquaredDistance(a, b);
    const double pa = SquaredDistance(p, a);
    const double pb = SquaredDistance(p, b);
    if (ab + pa <= pb) return pa;
    if (ab + pb <= pa) return pb;
    const double m = (a.north - b.north) / (a.east - b.east);
    Meters foot;
    foot.east = (p.north - b.north + p.east / m + m * b.east) / (1 / m + m);
    foot.north = (foot.east - b.east) * m + b.north;
    return SquaredDistance(p, foot);
  }
  if (a.east == b.east) {
    if (p.north >= std::min(a.north, b.north) && p.north <= std::max(a.north, b.north)) {
      return (p.east - a.east) * (p.east - a.east);
    }
  } else if (p.east >= std::min(a.east, b.east) && p.east <= std::max(a.east, b.east)) {
    return (p.north - a.north) * (p.north - a.north);
  }
  return std::min(SquaredDistance(p, a), SquaredDistance(p, b));
}

std::optional<Meters> SegmentIntersection(const Meters& a1, const Meters& a2, const Meters& b1,
                                          const Meters& b2) {
  const Meters da = {a2.north - a1.north, a2.east - a1.east};
  const Meters db = {b2.north - b1.north, b2.east - b1.east};
  if (db.east * da.north == db.north * da.east) return std::nullopt;
  const double t = ((b1.north - a1.north) * da.east - (b1.east - a1.east) * da.north) /
                   (db.east * da.north - db.north * da.east);
  if (!(t >= 0 && t <= 1)) return std::nullopt;
  double s = 0;
  if (da.east != 0) {
    s = (t * db.east + b1.east - a1.east) / da.east;
  } else if (da.north != 0) {
    s = (t * db.north + b1.north - a1.north) / da.north;
  } else {
    return std::nullopt;
  }
  if (!(s >= 0 && s <= 1)) return std::nullopt;
  return Meters{a1.north + s * da.north, a1.east + s * da.east};
}

Poly VerticesInside(PointSpan a, PointSpan b) {
  const Ring around = RingOf(b);
  Poly inside;
  for (Point* point : a) {
    if (PointInRing(point->projected.east, point->projected.north, around)) inside.push_back(point);
  }
  return inside;
}

Poly EdgeCrossings(ScratchPoints& scratch, PointSpan ring, const Meters& from, const Meters& to) {
  Poly crossings;
  for (const RingVertex& vertex : CrossingVertices(RingOf(ring), from, to)) {
    crossings.push_back(&scratch.Make(vertex.place));
  }
  return crossings;
}

Poly IntersectPolygons(ScratchPoints& scratch, PointSpan a, PointSpan b, double lon0, double lat0,
                       Messages& messages) {
  if (a.empty() || b.empty()) return {};
  Ring grown = RingOf(VerticesInside(a, b));
  Ring rest = RingOf(VerticesInside(b, a));
  if (rest.size() > grown.size()) std::swap(grown, rest);
  for (const RingVertex& vertex : rest) GrowIntersection(grown, vertex, messages);

  const Ring other = RingOf(b);
  for (size_t i = 0; i < a.size(); ++i) {
    const Meters& from = a[i]->projected;
    const Meters& to = (i + 1 < a.size() ? a[i + 1] : a.front())->projected;
    Ring crossings = CrossingVertices(other, from, to);
    if (grown.empty()) {
      grown = std::move(crossings);
    } else {
      for (const RingVertex& vertex : crossings) GrowIntersection(grown, vertex, messages);
    }
  }

  // Only the crossings that are still in the ring become points.
  for (RingVertex& vertex : grown) {
    if (vertex.point == nullptr) vertex.point = &scratch.Make(vertex.place);
    if ((vertex.point->flags & PointScratch) == 0) continue;
    vertex.point->geo =
        MetersToLatLon(vertex.place.north + DegreesToMeters(lat0), vertex.place.east);
    vertex.point->geo.lon += lon0;
    vertex.point->flags |= PointPlaced;
  }
  return PolyOf(grown);
}

Poly OffsetPolygon(ScratchPoints& scratch, PointSpan ring, double margin) {
  const LatLon center = PolyCentre(ring);
  const double centerNorth = LatLonToMetersKeepingAltitude(center).north;
  std::vector<Meters> moved;
  moved.reserve(ring.size());
  for (const Point* point : ring) {
    Meters offset = LatLonToMeters(point->geo.lat, point->geo.lon - center.lon);
    offset.north -= centerNorth;
    const double dist = std::sqrt(offset.north * offset.north + offset.east * offset.east);
    if (dist == 0) return {};
    const Meters place = {offset.north + offset.north * margin / dist,
                          offset.east + offset.east * margin / dist};
    if (place.north * offset.north < 0 || place.east * offset.east < 0) return {};
    moved.push_back(place);
  }

  Poly result;
  result.reserve(moved.size());
  for (const Meters& place : moved) {
    Point& vertex = scratch.Make(place);
    vertex.geo = MetersToLatLon(place.north + centerNorth, place.east);
    vertex.geo.lon += center.lon;
    result.push_back(&vertex);
  }
  return result;
}

bool RingRunsClockwise(PointSpan ring) {
  ProjectAboutCentre(ring);
  bool clockwise = false;
  if (ring.size() >= 2) {
    const Meters& first = ring[0]->projected;
    const Meters& second = ring[1]->projected;
    const double north = second.north - first.north;
    const double east = second.east - first.east;
    const double step = (std::fabs(north) + std::fabs(east)) / 20;
    const double right = std::atan2(north, east) - Pi / 2;
    clockwise = PointInPolygon((first.east + second.east) / 2 + std::cos(right) * step,
                               (first.north + second.north) / 2 + std::sin(right) * step, ring);
  }
  LocalPlaneOfPoints(ring);
  return clockwise;
}

}  // namespace orvane
