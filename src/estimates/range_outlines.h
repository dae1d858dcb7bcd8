#pragma once

#include "geo/positions.h"
#include "model/records.h"

#include <array>
#include <string>
#include <vector>

namespace orvane {

/// An estimate of a range that has an outline.
struct OutlineKind {
  enum class Method { Mcp, Kernel };
  Method method = Method::Mcp;
  int percent = 0;  ///< of the fixes or of the volume of the density, above 0 and below 100
};

/// The estimates that maps and exports show as outlines.
constexpr std::array<OutlineKind, 4> OfferedOutlines = {{{OutlineKind::Method::Mcp, 95},
                                                         {OutlineKind::Method::Mcp, 50},
                                                         {OutlineKind::Method::Kernel, 95},
                                                         {OutlineKind::Method::Kernel, 50}}};

/// What an outline is, with what its per cent counts: "MCP, 95 % of the fixes".
std::string OutlineCaption(const OutlineKind& kind);

/// The outline of one estimate.
struct EstimateOutline {
  OutlineKind kind;
  double area = 0;       ///< square metres, as `EstimateRanges` gives it
  double bandwidth = 0;  ///< of a kernel, metres; 0 where there is none
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
