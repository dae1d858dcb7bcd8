#pragma once

#include "cli/line_messages.h"
#include "entry/fix_import.h"
#include "model/map.h"

#include <string>

namespace orvane {

/// The arguments of `import-fixes`.
struct ImportFixesRequest {
  std::string table;
  std::string output;
  FixOptions options;
};

/// Imports a table of timestamped fixes and saves the whole map. Sentences on the import are notes.
/// \return an `ExitStatus`
int ImportFixesCommand(Map& map, LineMessages& messages, const ImportFixesRequest& request);

}  // namespace orvane
