#pragma once

#include "cli/line_messages.h"
#include "estimates/kernel.h"
#include "model/map.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvane {

/// What `estimates` prints.
struct EstimatesRequest {
  std::vector<std::string> ranges;  ///< names, in any case; all ranges if there is none
  double bandwidthFactor = 1;       ///< `LeastBandwidthFactor` to `LargestBandwidthFactor`
  std::uint64_t seed = 1;           ///< of the random orders of the days
};

/// Prints the estimates of ranges, in the order of the pane of a new window, as JSON. \return an
/// `ExitStatus`
int EstimatesCommand(Map& map, LineMessages& messages, const EstimatesRequest& request);

}  // namespace orvane
