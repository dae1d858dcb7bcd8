#pragma once

#include "base/messages.h"
#include "geometry/poly.h"

#include <memory>
#include <optional>
#include <string>

namespace orvane {

/// Groups the locations of a range into clusters, with the hull and area of each at twenty levels.
/// \param points  with repetitions; their `projected` is overwritten
/// \return null for an empty list and for points without an extent in north or east
std::unique_ptr<ClusterTree> ClusterPoints(PointSpan points, Messages& messages);

/// "%3d%% area: ", the area of all clusters of a level, and their number.
/// \param pad  fills up with blanks, so that the numbers of all lines stand below each other
/// \return nothing if their areas sum to 0
std::optional<std::string> ClusterLevelLine(const Range& range, int level, bool pad);

}  // namespace orvane
