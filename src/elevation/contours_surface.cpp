#include "elevation/contours_surface.h"

#include "geo/earth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane {

namespace {

constexpr double NearestPair = 3.0;  // metres; closer pairs say nothing on the slope

}  // namespace

std::vector<Point*> CollectAltitudePoints(const Map& map) {
  ForEachPoint(map, [](Point& point) { point.flags &= ~static_cast<unsigned>(PointVisited); });
  std::vector<Point*> points;
  ForEachPoint(map, [&points](Point& point) {
    if (!HasAltitude(point.geo.altitude) || (point.flags & PointVisited) != 0) return;
    point.flags |= PointVisited;
    points.push_back(&point);
  });
  std::reverse(points.begin(), points.end());
  return points;
}

double MaxSlope(PointSpan points) {
  const double nearest = MetersToDegrees(NearestPair);
  double slope = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    const LatLon& a = points[i]->geo;
    for (size_t j = i + 1; j < points.size(); ++j) {
      const LatLon& b = points[j]->geo;
      const double dlat = a.lat - b.lat;
      const double dlon = a.lon - b.lon;
      const double square = dlat * dlat + dlon * dlon;
      if (!(square > nearest * nearest)) continue;
      const double rise =
          std::fabs(static_cast<double>(a.altitude) - static_cast<double>(b.altitude));
      slope = std::max(slope, rise / std::sqrt(square));
    }
  }
  return slope;
}

double SurfaceAltitude(PointSpan points, double lat, double lon) {
  double altitudes = 0;
  double weights = 0;
  for (const Point* point : points) {
    const double dlat = point->geo.lat - lat;
    const double dlon = point->geo.lon - lon;
    const double square = dlat * dlat + dlon * dlon;
    const auto altitude = static_cast<double>(point->geo.altitude);
    if (square == 0) return altitude;
    const double weight = 1 / square;
    altitudes += altitude * weight;
    weights += weight;
  }
  return altitudes / weights;
}

}  // namespace orvane
