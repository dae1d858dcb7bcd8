#pragma once

#include "cli/line_messages.h"
#include "model/map.h"

#include <string>

namespace orvane {

/// What `edit` was asked for.
struct EditRequest {
  std::string script;  ///< a file, or "-" for standard input
  std::string output;  ///< the map to write at the end; empty for none, "-" for standard output
  bool simple = false;
};

/// Carries out a script at the panes and editors of a window on the map, and saves the map at the
/// end if asked. A line that can't be carried out ends the run: "script LINE: why" on standard
/// error, `ExitUsage`, and nothing is saved.
/// \return an `ExitStatus`
int EditCommand(Map& map, LineMessages& messages, const EditRequest& request);

}  // namespace orvane
