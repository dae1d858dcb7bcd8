#pragma once

#include "geo/positions.h"
#include "model/records.h"
#include "view/canvas.h"

#include <cstdint>
#include <vector>

namespace orvane {

/// A closed line of an estimate.
struct EstimateRing {
  PenPattern pattern = PenPattern::Solid;
  std::vector<LatLon> corners;  ///< open
};

/// The estimates of a range that its row shows as outlines. `panes` makes them.
struct EstimateLines {
  std::uint32_t mask = 0;     ///< the estimates, as in `RangePanelRow::estimateMask`
  std::vector<LatLon> fixes;  ///< what they were made from
  std::vector<EstimateRing> rings;
  GeoBounds bounds;  ///< of the rings, if there are any
};

}  // namespace orvane
