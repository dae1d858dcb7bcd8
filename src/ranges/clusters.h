#pragma once

#include "base/messages.h"
#include "base/progress.h"
#include "geometry/poly.h"
#include "model/records.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace orvane {

/// Distinct locations that a range can have and still get clusters. Their events are counted in 32
/// bits.
constexpr size_t MostClusterLocations = 500000000;

/// Groups the locations of a range into clusters, by single linkage: pairs of locations are taken
/// up in order of their distance; the two shortest free ones that meet seed a cluster, and each
/// further event (a location joins, a cluster is seeded, two clusters merge) is one step. Clusters
/// whose hulls come to overlap merge at once. Level i shows the clusters as they stood when
/// (i + 1) * 5 % of all steps were made.
///
/// Equal distances are taken in a fixed order that follows from the order of `points` and from
/// where they lie, so the same list always gives the same tree. Memory is linear in the number of
/// distinct locations; time is that of the searches, n log n, and that of a hull for each merge.
/// \param points    with repetitions; a location with three or more is a cluster by itself. Their
///                  `projected` is overwritten and left in several planes
/// \param messages  the fatal "That range is too complex to be analyzed" if there are more than
///                  `mostLocations` distinct locations or the memory does not suffice; internal
///                  errors of hulls
/// \param progress  is told of it, and may call it off
/// \return null after that, for what was called off, for an empty list, for points whose extent
///         north or east is below a thousandth of a millimetre, and for places that are no numbers
///         or lie 1e16 m apart
std::unique_ptr<ClusterTree> ClusterPoints(PointSpan points, Messages& messages,
                                           size_t mostLocations = MostClusterLocations,
                                           Progress* progress = nullptr);

/// The fatal message of a range for which the memory does not suffice.
/// \param count  its distinct locations, or its points where those are not known yet
void NoteTooComplex(Messages& messages, size_t count);

/// One line on the clusters of a range at one level, such as "  5% area: 1.2ha clusters: 2".
/// \param level  0 to 19
/// \param pad    fills up the area to 19 characters, so that the numbers of all lines stand below
///               each other
/// \return nothing if the areas sum to 0 or there are no clusters
std::optional<std::string> ClusterLevelLine(const Range& range, int level, bool pad);

}  // namespace orvane
