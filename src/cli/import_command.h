#pragma once

#include "cli/line_messages.h"
#include "entry/sheet_fields.h"
#include "model/map.h"

#include <string>

namespace orvane {

/// What `import` was asked for.
struct ImportRequest {
  std::string sheet;   ///< the tab-separated file
  std::string output;  ///< the map to write
  SheetFields fields;  ///< what the fields of the dialog would hold
};

/// Takes a follow sheet into the map and saves it in full to the file `output`, or to standard
/// output if it is "-". Fields that the dialog would refuse and a sheet that can't be opened write
/// nothing; an import that is abandoned saves what was built, and fails.
/// \return an `ExitStatus`
int ImportCommand(Map& map, LineMessages& messages, const ImportRequest& request);

}  // namespace orvane
