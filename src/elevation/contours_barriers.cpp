#include "elevation/contours_barriers.h"

#include "base/text.h"
#include "geo/earth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace orvane {

namespace {

constexpr double LeastDrop = 0.01;  // metres between two samples
constexpr double RiverBanks = 10;   // times the drop, above the water
constexpr double RidgeSides = -3;   // times the drop, below the crest
constexpr double NearbyPart = 20;   // of a step: how far s2 and s3 are from s1

double DistanceInDegrees(const LatLon& a, const LatLon& b) {
  const double dlat = b.lat - a.lat;
  const double dlon = b.lon - a.lon;
  return std::sqrt(dlat * dlat + dlon * dlon);
}

/// The points of a trail from one that has an altitude to the next.
using Stretch = std::span<Point* const>;

double LengthInDegrees(Stretch stretch) {
  double length = 0;
  for (size_t i = 1; i < stretch.size(); ++i) {
    length += DistanceInDegrees(stretch[i - 1]->geo, stretch[i]->geo);
  }
  return length;
}

/// Adds the samples of one trail after the other.
class BarrierMaker {
 public:
  BarrierMaker(double step, ScratchPoints& store) : step_(step), store_(store) {}

  /// The new points in the order in which they were made.
  const std::vector<Point*>& Made() const { return made_; }
  bool TooMany() const { return wouldBeTooMany_ || made_.size() > MostBarrierPoints; }

  void BarrierSamples(const Trail& trail, bool river) {
    const auto isKnown = [](const Point* point) { return HasAltitude(point->geo.altitude); };
    const Stretch points = trail.points;
    auto from = std::find_if(points.begin(), points.end(), isKnown);
    while (from != points.end() && !TooMany()) {
      const auto to = std::find_if(from + 1, points.end(), isKnown);
      if (to == points.end()) return;
      const auto first = static_cast<size_t>(from - points.begin());
      SampleStretch(points.subspan(first, static_cast<size_t>(to - from) + 1), trail.width, river);
      from = to;
    }
  }

 private:
  /// \param t         where between `a` and `b`, from 0 to 1 or a little beyond
  /// \param fraction  where between the altitudes of the stretch's ends
  Point& MakeSample(const Point& a, const Point& b, double t, const Stretch& stretch,
                    double fraction) {
    Point& sample = store_.Make({});
    const auto blend = [t](double from, double to) { return from + (to - from) * t; };
    sample.projected.north = blend(a.projected.north, b.projected.north);
    sample.projected.east = blend(a.projected.east, b.projected.east);
    sample.geo.lat = blend(a.geo.lat, b.geo.lat);
    sample.geo.lon = blend(a.geo.lon, b.geo.lon);
    const auto low = static_cast<double>(stretch.front()->geo.altitude);
    const auto high = static_cast<double>(stretch.back()->geo.altitude);
    sample.geo.altitude = static_cast<float>(low + (high - low) * fraction);
    sample.projected.altitude = sample.geo.altitude;
    sample.map = a.map;
    made_.push_back(&sample);
    return sample;
  }

  /// Both banks come from one formula: they are at one place, on one side of the trail, which
  /// gives that side twice the weight (see "Both banks of a trail are on the same side" in
  /// docs/compatibility.md).
  void MakeBanks(const Point& s1, const Point& s3, double width, bool river) {
    const auto altitude = static_cast<double>(s1.geo.altitude);
    const double drop =
        std::max(std::fabs(altitude - static_cast<double>(s3.geo.altitude)), LeastDrop);
    const double f = MetersToDegrees(width) * NearbyPart / step_ + 1;
    for (int bank = 0; bank < 2; ++bank) {
      Point& point = store_.Make({});
      point.projected.north = s1.projected.north + (s3.projected.east - s1.projected.east) * f;
      point.projected.east = s1.projected.east - (s3.projected.north - s1.projected.north) * f;
      point.geo.lat = s1.geo.lat + (s3.geo.lon - s1.geo.lon) * f;
      point.geo.lon = s1.geo.lon - (s3.geo.lat - s1.geo.lat) * f;
      point.geo.altitude = static_cast<float>(altitude + drop * (river ? RiverBanks : RidgeSides));
      point.projected.altitude = point.geo.altitude;
      made_.push_back(&point);
    }
  }

  void SampleStretch(const Stretch& stretch, double width, bool river) {
    const double length = LengthInDegrees(stretch);
    if (length < step_) return;
    // Five points for every other step, at least: no need to make them to know.
    wouldBeTooMany_ = length / step_ * 2 > static_cast<double>(MostBarrierPoints);
    double acc = 0;
    double offset = 0;
    for (size_t i = 1; i < stretch.size() && !TooMany(); ++i) {
      const Point& a = *stretch[i - 1];
      const Point& b = *stretch[i];
      const double segment = DistanceInDegrees(a.geo, b.geo);
      const auto part = [segment](double place) { return segment == 0 ? 0 : place / segment; };
      double remaining = segment;
      while (!TooMany()) {
        remaining -= offset;
        if (!(remaining > 0)) break;
        const double q = segment - remaining;
        const Point& s1 = MakeSample(a, b, part(q), stretch, (acc + q) / length);
        MakeSample(a, b, part(q - step_ / NearbyPart), stretch,
                   (acc + q - step_ / NearbyPart) / length);
        // What remains is added here, where the other two fractions have it taken off. The drop,
        // and so the height of the banks, comes from this (see "The third
        // sample at a bank takes its altitude from further on" in docs/compatibility.md).
        const Point& s3 = MakeSample(a, b, part(q + step_ / NearbyPart), stretch,
                                     (acc + segment + remaining - step_ / NearbyPart) / length);
        MakeBanks(s1, s3, width, river);
        remaining -= offset;
        offset = step_;
      }
      acc += segment;
      offset = remaining;
    }
  }

  double step_;
  ScratchPoints& store_;
  std::vector<Point*> made_;
  bool wouldBeTooMany_ = false;
};

}  // namespace

bool AddBarrierPoints(const Map& map, std::vector<Point*>& points, double step,
                      ScratchPoints& store) {
  BarrierMaker maker(step, store);
  for (const Trail& trail : map.trails) {
    const bool river = SameName(trail.type, "River");
    if (!river && !SameName(trail.type, "ridge")) continue;
    maker.BarrierSamples(trail, river);
    if (maker.TooMany()) return false;
  }
  points.insert(points.begin(), maker.Made().rbegin(), maker.Made().rend());
  return true;
}

}  // namespace orvane
