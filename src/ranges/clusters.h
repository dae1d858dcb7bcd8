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

/// Distinct locations of a range that can still get clusters. Their events are counted in 32 bits.
constexpr size_t MostClusterLocations = 500000000;

/// Groups the locations of a range into clusters, by single linkage. Pairs of locations are taken
/// in order of their distance. The two shortest free pairs that meet seed a cluster. Each further
/// event is one step: a location joins, a cluster is seeded, or two clusters merge. Clusters whose
/// hulls overlap merge at once. Level i shows the clusters as they were after (i + 1) * 5 % of all
/// steps.
///
/// Equal distances are taken in a fixed order that follows from the order of `points` and their
/// places, so the same list always gives the same tree. Memory is linear in the number of distinct
/// locations; time is n log n for the searches, plus a hull for each merge.
/// \param points    with repetitions; a location with three or more is a cluster by itself. Their
///                  `projected` is overwritten and left in several planes
/// \param messages  receives the fatal "That range is too complex to be analyzed" if there are more
///                  than `mostLocations` distinct locations or too little memory; internal errors
///                  of hulls
/// \param progress  receives the progress and can cancel
/// \return null after a fatal message or a cancellation, for an empty list, for points whose extent
///         north or east is below a thousandth of a millimetre, and for places that are not numbers
///         or are 1e16 m apart
std::unique_ptr<ClusterTree> ClusterPoints(PointSpan points, Messages& messages,
                                           size_t mostLocations = MostClusterLocations,
                                           Progress* progress = nullptr);

/// The fatal message of a range that needs too much memory.
/// \param count  its distinct locations, or its points if those are not known yet
void NoteTooComplex(Messages& messages, size_t count);

/// One line on the clusters of a range at one level, such as "  5% area: 1.2ha clusters: 2".
/// \param level  0 to 19
/// \param pad    fills up the area to 19 characters, so that the numbers of all lines are aligned
/// \return nothing if the areas sum to 0 or there are no clusters
std::optional<std::string> ClusterLevelLine(const Range& range, int level, bool pad);

}  // namespace orvane
