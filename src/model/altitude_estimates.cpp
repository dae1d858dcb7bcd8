#include "model/altitude_estimates.h"

#include <cmath>
#include <cstring>

// The two divisions for each pair of place and point take the time. They must be real divisions,
// and the sum of each place must add the points in their order, so that the last bit agrees with a
// single estimate. So the lanes of the processor's vectors hold several places side by side:
//
//            place 0   1   2   3   4 …
//     point 0    +     +   +   +   +
//     point 1    +     +   +   +   +      one sum down each column
//       …

namespace orvane {

namespace {

#if defined(__x86_64__) && defined(__GNUC__)
#define ORVANE_HAS_LANES
constexpr size_t Lanes = 4;
using LaneVector = double __attribute__((vector_size(Lanes * sizeof(double))));
constexpr size_t VectorsAtOnce = 2;  // enough to keep the divider busy
constexpr size_t PlacesAtOnce = VectorsAtOnce * Lanes;

/// The points with an altitude, as the loops read them.
struct PointColumns {
  const double* lats;
  const double* lons;
  const double* altitudes;
  size_t count;
};

/// The quotients of `PlacesAtOnce` places; not a number if a point is exactly at the place, or if
/// the weights have no sum.
[[gnu::always_inline]] inline void SumLanes(const PointColumns& points, const double* lats,
                                            const double* lons, double* results) {
  LaneVector placeLats[VectorsAtOnce];
  LaneVector placeLons[VectorsAtOnce];
  LaneVector weighted[VectorsAtOnce] = {};
  LaneVector weights[VectorsAtOnce] = {};
  std::memcpy(placeLats, lats, sizeof(placeLats));
  std::memcpy(placeLons, lons, sizeof(placeLons));
  for (size_t i = 0; i < points.count; ++i) {
    for (size_t v = 0; v < VectorsAtOnce; ++v) {
      const LaneVector dlat = points.lats[i] - placeLats[v];
      const LaneVector dlon = points.lons[i] - placeLons[v];
      const LaneVector squared = dlat * dlat + dlon * dlon;
      weighted[v] += points.altitudes[i] / squared;
      weights[v] += 1.0 / squared;
    }
  }
  for (size_t v = 0; v < VectorsAtOnce; ++v) {
    const LaneVector quotient = weighted[v] / weights[v];
    std::memcpy(results + v * Lanes, &quotient, sizeof(quotient));
  }
}

void SumLanesPlain(const PointColumns& points, const double* lats, const double* lons,
                   double* results) {
  SumLanes(points, lats, lons, results);
}

__attribute__((target("avx2"))) void SumLanesWide(const PointColumns& points, const double* lats,
                                                  const double* lons, double* results) {
  SumLanes(points, lats, lons, results);
}
#endif

}  // namespace

AltitudeEstimates::AltitudeEstimates(const Map& map) {
  ForEachPoint(map, [this](const Point& point) {
    if (!HasAltitude(point.geo.altitude)) return;
    lats_.push_back(point.geo.lat);
    lons_.push_back(point.geo.lon);
    altitudes_.push_back(double{point.geo.altitude});
  });
}

float AltitudeEstimates::At(const LatLon& place) const {
  double weighted = 0;
  double weights = 0;
  for (size_t i = 0; i < lats_.size(); ++i) {
    const double dlat = lats_[i] - place.lat;
    const double dlon = lons_[i] - place.lon;
    const double squared = dlat * dlat + dlon * dlon;
    if (squared == 0) return static_cast<float>(altitudes_[i]);
    weighted += altitudes_[i] / squared;
    weights += 1 / squared;
  }
  return weights > 0 ? static_cast<float>(weighted / weights) : NoAltitude;
}

void AltitudeEstimates::At(std::span<const LatLon> places, std::span<float> altitudes) const {
  size_t done = 0;
#ifdef ORVANE_HAS_LANES
  const PointColumns points{lats_.data(), lons_.data(), altitudes_.data(), lats_.size()};
  const auto sum = __builtin_cpu_supports("avx2") ? &SumLanesWide : &SumLanesPlain;
  for (; done + PlacesAtOnce <= places.size(); done += PlacesAtOnce) {
    double lats[PlacesAtOnce];
    double lons[PlacesAtOnce];
    double results[PlacesAtOnce];
    for (size_t i = 0; i < PlacesAtOnce; ++i) {
      lats[i] = places[done + i].lat;
      lons[i] = places[done + i].lon;
    }
    sum(points, lats, lons, results);
    for (size_t i = 0; i < PlacesAtOnce; ++i) {
      altitudes[done + i] =
          std::isnan(results[i]) ? At(places[done + i]) : static_cast<float>(results[i]);
    }
  }
#endif
  for (; done < places.size(); ++done) altitudes[done] = At(places[done]);
}

}  // namespace orvane
