#pragma once

#include "model/map.h"

#include <span>
#include <vector>

namespace orvane {

/// The altitudes of a map, laid out for many estimates: a profile needs one for each column, and a
/// walk over all points of a large map each time would be slow. Each result equals that of
/// `EstimateAltitude` to the last bit, because the sums run in the same order.
class AltitudeEstimates {
 public:
  AltitudeEstimates() = default;

  /// Copies the points as they are; later changes of the map have no effect.
  explicit AltitudeEstimates(const Map& map);

  /// \return true if no point has an altitude, so that no place has an estimate
  bool IsEmpty() const { return lats_.empty(); }

  /// \return metres; `NoAltitude` if there is no estimate
  float At(const LatLon& place) const;

  /// Estimates several places side by side.
  /// \param altitudes  receives metres or `NoAltitude`, one for each of `places`
  void At(std::span<const LatLon> places, std::span<float> altitudes) const;

 private:
  // In the order of `ForEachPoint`; a point that occurs twice counts twice.
  std::vector<double> lats_;       ///< degrees
  std::vector<double> lons_;       ///< degrees
  std::vector<double> altitudes_;  ///< metres
};

}  // namespace orvane
