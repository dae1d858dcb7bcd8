#pragma once

#include "cli/line_messages.h"
#include "model/map.h"

#include <string>
#include <vector>

namespace orvane {

/// Commands of the batch tool, each a thin call of what the window program uses. The map is open.
/// All return an `ExitStatus`.

/// Writes the whole map as JSON to standard output.
int DumpCommand(Map& map, const LineMessages& messages);

/// Writes the map to the file `output`, or to standard output if it is "-".
int SaveCommand(Map& map, const std::string& output, bool simple);

/// Writes the place that `text` means as JSON to standard output.
int LocateCommand(Map& map, LineMessages& messages, const std::string& text);

/// Checks the trails named, or all of the map and its basis chain; the warnings are its output.
int CheckCommand(Map& map, LineMessages& messages, const std::vector<std::string>& trailNames,
                 bool showAll);

}  // namespace orvane
