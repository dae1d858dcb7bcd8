#include "estimates/range_fixes.h"

#include "geo/earth.h"
#include "ranges/selection.h"

#include <algorithm>
#include <cmath>

namespace orvane {

std::vector<RangeFix> FixesOf(const Range& range) {
  const std::vector<const Trail*> follows = FollowsOfPoints(range);
  std::vector<RangeFix> fixes;
  for (size_t i = 0; i < range.points.size(); ++i) {
    const Point& point = *range.points[i];
    const LatLon& geo = point.geo;
    if (!IsPlaced(point) || !std::isfinite(geo.lat) || !std::isfinite(geo.lon)) continue;
    fixes.push_back({geo.lat, geo.lon, follows[i] == nullptr ? 0 : follows[i]->date});
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
  const double north0 = DegreesToMeters((bounds.maxLat + bounds.minLat) / 2);
  const double lon0 = (bounds.maxLon + bounds.minLon) / 2;
  std::vector<PlanePlace> places;
  places.reserve(fixes.size());
  for (const RangeFix& fix : fixes) {
    const Meters at = LatLonToMeters(fix.lat, fix.lon - lon0);
    places.push_back({at.north - north0, at.east});
  }
  return places;
}

}  // namespace orvane
