#include "estimates/range_fixes.h"

#include "geo/earth.h"
#include "ranges/selection.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

double NorthOfMiddle(const GeoBounds& bounds) {
  return DegreesToMeters((bounds.maxLat + bounds.minLat) / 2);
}
double MiddleLon(const GeoBounds& bounds) { return (bounds.maxLon + bounds.minLon) / 2; }

}  // namespace

bool IsFix(const Point& point) {
  return IsPlaced(point) && std::isfinite(point.geo.lat) && std::isfinite(point.geo.lon);
}

std::vector<RangeFix> FixesOf(const Range& range) {
  const std::vector<const Trail*> follows = FollowsOfPoints(range);
  std::vector<RangeFix> fixes;
  for (size_t i = 0; i < range.points.size(); ++i) {
    const Point& point = *range.points[i];
    if (!IsFix(point)) continue;
    fixes.push_back({point.geo.lat, point.geo.lon, follows[i] == nullptr ? 0 : follows[i]->date});
  }
  return fixes;
}

GeoBounds BoundsOf(std::span<const RangeFix> fixes) {
  const RangeFix& first = fixes.front();
  GeoBounds bounds = {first.lat, first.lat, first.lon, first.lon};
  for (const RangeFix& fix : fixes) {
    bounds.minLat = std::min(bounds.minLat, fix.lat);
    bounds.maxLat = std::max(bounds.maxLat, fix.lat);
    bounds.minLon = std::min(bounds.minLon, fix.lon);
    bounds.maxLon = std::max(bounds.maxLon, fix.lon);
  }
  return bounds;
}

std::vector<PlanePlace> PlacesInPlane(std::span<const RangeFix> fixes, const GeoBounds& bounds) {
  const double north0 = NorthOfMiddle(bounds);
  const double lon0 = MiddleLon(bounds);
  std::vector<PlanePlace> places;
  places.reserve(fixes.size());
  for (const RangeFix& fix : fixes) {
    const Meters at = LatLonToMeters(fix.lat, fix.lon - lon0);
    places.push_back({at.north - north0, at.east});
  }
  return places;
}

LatLon FromPlane(const PlanePlace& place, const GeoBounds& bounds) {
  LatLon at = MetersToLatLon(place.north + NorthOfMiddle(bounds), place.east);
  at.lon += MiddleLon(bounds);
  return at;
}

}  // namespace orvane
