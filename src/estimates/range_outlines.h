#pragma once

#include "geo/positions.h"
#include "model/records.h"

#include <vector>

namespace orvane {

/// An estimate of a range that has an outline.
struct OutlineKind {
  enum class Method { Mcp, Kernel };
  Method method = Method::Mcp;
  int percent = 0;  ///< of the fixes or of the volume of the density, above 0 and below 100
};

/// The outline of one estimate.
struct EstimateOutline {
  OutlineKind kind;
  double area = 0;  ///< square metres, as `EstimateRanges` gives it
  /// Its rings, their corners open. Seen on a map with north up, outer rings go counterclockwise,
  /// holes clockwise. Empty where the area is 0 or there is no kernel.
  std::vector<std::vector<LatLon>> rings;
};

/// The places of the fixes of a range, without altitudes.
std::vector<LatLon> FixPlacesOf(const Range& range);

/// The outlines of estimates with the reference bandwidth.
/// \param fixes  of `FixPlacesOf`
/// \return in the order of `kinds`
std::vector<EstimateOutline> OutlineEstimates(const std::vector<LatLon>& fixes,
                                              const std::vector<OutlineKind>& kinds);

}  // namespace orvane
