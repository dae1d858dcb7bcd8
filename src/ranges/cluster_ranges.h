#pragma once

#include "base/messages.h"
#include "base/progress.h"
#include "model/records.h"

#include <span>

namespace orvane {

/// Makes the clusters of several ranges, each from its `points`, on all processors. The results and
/// the order of the messages are those of `ClusterPoints` for one range after the other; the points
/// themselves do not change.
/// \param progress  receives the progress and can cancel; some ranges then have no clusters
void ClusterRanges(std::span<Range* const> ranges, Messages& messages,
                   Progress* progress = nullptr);

}  // namespace orvane
