#include "geometry/planes.h"

#include "geo/earth.h"

#include <cmath>

namespace orvane {

void ProjectPoints(PointSpan points, double lon0, double lat0) {
  const double north0 = DegreesToMeters(lat0);
  for (Point* point : points) {
    point->projected = LatLonToMeters(point->geo.lat, point->geo.lon - lon0);
    point->projected.north -= north0;
  }
}

void ProjectAboutCentre(PointSpan points) {
  const LatLon center = PolyCentre(points);
  ProjectPoints(points, center.lon, center.lat);
}

void LocalPlaneOfPoints(PointSpan points) { ProjectPoints(points, MeanPlace(points).lon, 0); }

LatLon PolyCentre(PointSpan points) {
  if (points.empty()) return {};
  LatLon low = points.front()->geo;
  LatLon high = low;
  for (const Point* point : points) {
    if (point->geo.lat > high.lat) high.lat = point->geo.lat;
    if (point->geo.lat < low.lat) low.lat = point->geo.lat;
    if (point->geo.lon > high.lon) high.lon = point->geo.lon;
    if (point->geo.lon < low.lon) low.lon = point->geo.lon;
  }
  return {(high.lat + low.lat) / 2, (high.lon + low.lon) / 2};
}

LatLon MeanPlace(PointSpan points) {
  if (points.empty()) return {};
  LatLon sum;
  for (const Point* point : points) {
    sum.lat += point->geo.lat;
    sum.lon += point->geo.lon;
  }
  const auto count = static_cast<double>(points.size());
  return {sum.lat / count, sum.lon / count};
}

double PlanDistance(const Point& a, const Point& b) {
  const double north = b.projected.north - a.projected.north;
  const double east = b.projected.east - a.projected.east;
  return std::sqrt(north * north + east * east);
}

}  // namespace orvane
