#pragma once

#include "cli/line_messages.h"
#include "model/map.h"

#include <optional>

namespace orvane {

/// Which contours a command makes.
struct ContoursRequest {
  std::optional<int> interval;  ///< metres between levels; that of the map if not given
  bool continuous = false;      ///< lines without gaps
};

/// Makes the contours of the nearest map of the basis chain that offers them, or of the map itself
/// if an interval is given or none offers them. Progress goes to standard error if that is a
/// terminal.
/// \return the map whose contours were made; null after an error
Map* MakeContours(Map& map, LineMessages& messages, const ContoursRequest& request);

/// Writes the contours as a GeoJSON FeatureCollection of LineStrings to standard output.
/// \return an `ExitStatus`
int ContoursCommand(Map& map, LineMessages& messages, const ContoursRequest& request);

}  // namespace orvane
