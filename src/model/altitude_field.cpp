#include "model/altitude_field.h"

namespace orvane {

AltitudeField::AltitudeField(const Map& map) {
  ForEachPoint(map, [this](const Point& point) {
    if (!HasAltitude(point.geo.altitude)) return;
    samples_.push_back({point.geo.lat, point.geo.lon, static_cast<double>(point.geo.altitude)});
  });
}

float AltitudeField::EstimateAt(const LatLon& place) const {
  double weighted = 0;
  double weights = 0;
  for (const Sample& sample : samples_) {
    const double dlat = sample.lat - place.lat;
    const double dlon = sample.lon - place.lon;
    const double squared = dlat * dlat + dlon * dlon;
    if (squared == 0) return static_cast<float>(sample.altitude);
    weighted += sample.altitude / squared;
    weights += 1 / squared;
  }
  return weights > 0 ? static_cast<float>(weighted / weights) : NoAltitude;
}

}  // namespace orvane
