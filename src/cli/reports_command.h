#pragma once

#include "cli/line_messages.h"
#include "geo/angle_text.h"
#include "model/map.h"
#include "view/map_window.h"

#include <optional>
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

/// The trails of these names in the order of the pane, or all if no name is given.
/// \return nothing, after a message, if a name is not that of a trail
std::optional<std::vector<Trail*>> NamedTrails(MapWindow& view, LineMessages& messages,
                                               const std::vector<std::string>& names);

/// The rows of the ranges and overlaps of these names in the order of the pane, or all if no name is
/// given. The rows belong to the view.
/// \return nothing, after a message, if a name is not that of a row
std::optional<std::vector<const RangePanelRow*>> NamedRanges(const MapWindow& view,
                                                             LineMessages& messages,
                                                             const std::vector<std::string>& names);

}  // namespace orvane
