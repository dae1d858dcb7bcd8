#pragma once

#include "cli/line_messages.h"
#include "geo/angle_text.h"
#include "model/map.h"

#include <string>
#include <vector>

namespace orvane {

/// The commands that print what the report windows save. All return an `ExitStatus`.

/// Prints the Trail Summary of the trails named, or of all of the map and its basis chain, in the
/// order of the pane of a new window.
int TrailsCommand(Map& map, LineMessages& messages, const std::vector<std::string>& trailNames);

/// Prints the Point Index as a new window of 1024 x 768 pixels has it.
int IndexCommand(Map& map, CoordinateDisplay display);

/// Prints the figures of the ranges and overlaps named, or of all, in the order of the pane of a new
/// window.
int RangesCommand(Map& map, LineMessages& messages, const std::vector<std::string>& rangeNames);

}  // namespace orvane
