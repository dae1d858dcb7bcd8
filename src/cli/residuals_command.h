#pragma once

#include "model/map.h"

#include <cstdint>
#include <optional>

namespace orvane {

/// What `residuals` prints.
struct ResidualsRequest {
  std::optional<std::uint64_t> worst;  ///< only so many readings and chains, the largest first
};

/// Prints how far the readings are from the solved places, and the closing errors of the chains, as
/// JSON. \return an `ExitStatus`
int ResidualsCommand(const Map& map, const ResidualsRequest& request);

}  // namespace orvane
