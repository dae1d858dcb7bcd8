#pragma once

#include "base/messages.h"
#include "model/records.h"

#include <span>

namespace orvane {

/// Makes the clusters of several ranges, each from its `points`, on all processors. What comes out,
/// and the order of the messages, is what `ClusterPoints` gives for one range after the other; the
/// points themselves are not touched.
void ClusterRanges(std::span<Range* const> ranges, Messages& messages);

}  // namespace orvane
