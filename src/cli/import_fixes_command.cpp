#include "cli/import_fixes_command.h"

#include "cli/commands.h"
#include "cli/exit_status.h"

namespace orvane {

int ImportFixesCommand(Map& map, LineMessages& messages, const ImportFixesRequest& request) {
  auto import = StartFixImport(map, request.table, request.options);
  if (!import) return ExitFailed;
  for (const std::string& note : FixNotes(*import)) messages.Post(Severity::Note, note);
  EnterFixes(map, *import, NewRanges::NotAnalyzed);
  return SaveCommand(map, request.output, false);
}

}  // namespace orvane
