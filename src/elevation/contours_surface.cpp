#include "elevation/contours_surface.h"

#include "geo/earth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane {

namespace {

constexpr double NearestPair = 3.0;  // metres; closer pairs say nothing on the slope
constexpr double Slack = 1e-9;       // what no rounding reaches

/// Finds the steepest pair of points. The points are sorted by latitude, and each is compared with
/// those north of it up to a limit: the range of all altitudes, divided by the steepest slope so
/// far. No pair that is farther apart can be steeper.
class SlopeSearch {
 public:
  explicit SlopeSearch(PointSpan points) {
    std::vector<const Point*> sorted;
    for (const Point* point : points) {
      if (std::isfinite(point->geo.lat) && std::isfinite(point->geo.lon)) sorted.push_back(point);
    }
    std::sort(sorted.begin(), sorted.end(),
              [](const Point* a, const Point* b) { return a->geo.lat < b->geo.lat; });
    for (const Point* point : sorted) {
      lats_.push_back(point->geo.lat);
      lons_.push_back(point->geo.lon);
      altitudes_.push_back(static_cast<double>(point->geo.altitude));
    }
  }

  double Steepest() {
    if (lats_.empty()) return 0;
    const auto [low, high] = std::minmax_element(altitudes_.begin(), altitudes_.end());
    const double range = *high - *low;
    for (size_t i = 0; i < lats_.size(); ++i) {
      for (size_t j = i + 1; j < lats_.size(); j += Block) {
        if (slope_ > 0 && lats_[j] - lats_[i] > range / slope_ * (1 + Slack)) break;
        const size_t end = std::min(j + Block, lats_.size());
        if (MayBeSteeper(i, j, end)) LookAt(i, j, end);
      }
    }
    return slope_;
  }

 private:
  static constexpr size_t Block = 64;

  double Square(size_t i, size_t j) const {
    const double dlat = lats_[i] - lats_[j];
    const double dlon = lons_[i] - lons_[j];
    return dlat * dlat + dlon * dlon;
  }

  /// False only if no pair is steeper, close ones included. It takes no root and no quotient, which
  /// is what the time goes to.
  bool MayBeSteeper(size_t i, size_t begin, size_t end) const {
    const double bound = slope_ * slope_ * (1 - Slack);
    double excess = -1;
    for (size_t j = begin; j < end; ++j) {
      const double rise = altitudes_[i] - altitudes_[j];
      excess = std::max(excess, rise * rise - bound * Square(i, j));
    }
    return excess > 0;
  }

  void LookAt(size_t i, size_t begin, size_t end) {
    for (size_t j = begin; j < end; ++j) {
      const double square = Square(i, j);
      if (!(square > nearest_ * nearest_)) continue;
      slope_ = std::max(slope_, std::fabs(altitudes_[i] - altitudes_[j]) / std::sqrt(square));
    }
  }

  const double nearest_ = MetersToDegrees(NearestPair);
  std::vector<double> lats_;  // of the points, from south to north
  std::vector<double> lons_;
  std::vector<double> altitudes_;
  double slope_ = 0;  // the steepest so far
};

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

double MaxSlope(PointSpan points) { return SlopeSearch(points).Steepest(); }

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
