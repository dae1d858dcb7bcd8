// The hull by insertion: a ring of the four extremes takes in, one by one, the points outside it.
// The points keep their order; nothing is sorted. The cost is the number of points times the number
// of vertices at that time.

#include "geometry/convex_hull.h"

#include "geometry/planes.h"
#include "geometry/ring.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

/// The points that reach furthest; of equal ones the first in the list.
struct Extremes {
  Point* north;
  Point* east;
  Point* south;
  Point* west;
};

Extremes FindExtremes(PointSpan points) {
  Point* first = points.front();
  Extremes found = {first, first, first, first};
  for (Point* point : points) {
    if (point->geo.lat > found.north->geo.lat) found.north = point;
    if (point->geo.lat < found.south->geo.lat) found.south = point;
    if (point->geo.lon > found.east->geo.lon) found.east = point;
    if (point->geo.lon < found.west->geo.lon) found.west = point;
  }
  return found;
}

/// West, south, east, north. A point that is two of these is in the ring once, at the later place.
Poly StartRing(const Extremes& extremes) {
  Poly ring;
  for (Point* point : {extremes.north, extremes.east, extremes.south, extremes.west}) {
    if (std::find(ring.begin(), ring.end(), point) == ring.end()) ring.push_back(point);
  }
  std::reverse(ring.begin(), ring.end());
  return ring;
}

}  // namespace

std::optional<HullResult> ConvexHull(PointSpan points, Messages& messages) {
  if (points.empty()) return std::nullopt;
  const Extremes extremes = FindExtremes(points);
  HullResult result = {{extremes.south->geo.lat, extremes.north->geo.lat, extremes.west->geo.lon,
                        extremes.east->geo.lon},
                       StartRing(extremes)};
  const Poly start = result.hull;
  if (start.size() == 1) return result;

  ProjectPoints(points, (result.maxLon + result.minLon) / 2, (result.maxLat + result.minLat) / 2);
  Ring ring = RingOf(start);
  for (Point* point : points) {
    if (std::find(start.begin(), start.end(), point) != start.end()) continue;
    const Meters& place = point->projected;
    if (!PointInRing(place.east, place.north, ring)) AddToRing(ring, {place, point}, messages);
  }
  result.hull = PolyOf(ring);
  return result;
}

void PolyAddPoint(Poly& ring, Point& point, Messages& messages) {
  Ring work = RingOf(ring);
  AddToRing(work, {point.projected, &point}, messages);
  ring = PolyOf(work);
}

}  // namespace orvane
