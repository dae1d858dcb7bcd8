#pragma once

#include "base/messages.h"
#include "base/progress.h"
#include "model/records.h"

#include <span>

namespace orvane {

/// Makes the clusters of several ranges, each from its `points`, on all processors. What comes out,
/// and the order of the messages, is what `ClusterPoints` gives for one range after the other; the
/// points themselves are not touched.
/// \param progress  is told of it, and may call it off; some ranges then have no clusters
void ClusterRanges(std::span<Range* const> ranges, Messages& messages,
                   Progress* progress = nullptr);

}  // namespace orvane
