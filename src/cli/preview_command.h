#pragma once

#include "cli/import_command.h"
#include "cli/import_fixes_command.h"
#include "cli/import_gis_command.h"
#include "cli/line_messages.h"
#include "model/map.h"

namespace orvane {

/// What an import would do with each row of its file, as a table with tabs on standard output. The
/// map is not saved; it must not be used afterwards. All return an `ExitStatus`.

int PreviewSheetCommand(Map& map, LineMessages& messages, const ImportRequest& request);
int PreviewFixesCommand(Map& map, LineMessages& messages, const ImportFixesRequest& request);
int PreviewGisCommand(Map& map, LineMessages& messages, const ImportGisRequest& request);

}  // namespace orvane
