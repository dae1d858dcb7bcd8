#pragma once

#include "model/map.h"

#include <span>
#include <vector>

namespace orvane {

/// The altitudes of a map, laid out for many questions: a profile asks once for each column, and a
/// walk over all points of a large map each time would be felt. Every answer is that of
/// `EstimateAltitude` to the last bit, as the sums run in the same order.
class AltitudeEstimates {
 public:
  AltitudeEstimates() = default;

  /// Takes the points as they stand; what changes in the map later is not seen.
  explicit AltitudeEstimates(const Map& map);

  /// \return true if no point has an altitude, and so no place an estimate
  bool IsEmpty() const { return lats_.empty(); }

  /// \return metres; `NoAltitude` if there is no estimate
  float At(const LatLon& place) const;

  /// Estimates several places side by side.
  /// \param altitudes  receives metres or `NoAltitude`, one for each of `places`
  void At(std::span<const LatLon> places, std::span<float> altitudes) const;

 private:
  // In the order of `ForEachPoint`; a point that stands there twice counts twice.
  std::vector<double> lats_;       ///< degrees
  std::vector<double> lons_;       ///< degrees
  std::vector<double> altitudes_;  ///< metres
};

}  // namespace orvane
