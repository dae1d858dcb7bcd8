#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// The altitudes of a map, laid out for being asked again and again: what follows the pointer asks
/// at every move, and a walk over all points of a large map would be felt. The answers are those of
/// `EstimateAltitude` to the last bit, as the sums run in the same order.
class AltitudeField {
 public:
  AltitudeField() = default;

  /// Takes the points as they are now; make a new field when the map has changed.
  explicit AltitudeField(const Map& map);

  /// \return metres; `NoAltitude` if no point has an altitude
  float EstimateAt(const LatLon& place) const;

  bool IsEmpty() const { return samples_.empty(); }

 private:
  struct Sample {
    double lat;  ///< degrees
    double lon;  ///< degrees
    double altitude;
  };
  std::vector<Sample> samples_;  ///< in the order of `ForEachPoint`
};

}  // namespace orvane
