#include "cli/import_command.h"

#include "base/files.h"
#include "cli/commands.h"
#include "cli/exit_status.h"
#include "entry/sheet_import.h"

#include <string_view>

namespace orvane {

int ImportCommand(Map& map, LineMessages& messages, const ImportRequest& request) {
  const auto sheet = ReadSheet(messages, request.sheet);
  if (!sheet) return ExitFailed;
  SheetReading reading = ReadSheetFields(request.fields, map);
  if (reading.refusal) {
    NoteError(messages, "%s", {reading.refusal->message});
    return ExitFailed;
  }
  reading.spec.sheet = &*sheet;
  reading.spec.fileName = request.sheet;
  SheetLogs logs;
  const SheetOutcome outcome =
      RunSpreadsheetImport(reading.spec, logs, [](const std::string& name, std::string_view text) {
        return WriteFileAtomically(name, text);
      });
  for (const std::string& name : outcome.unwritten) {
    NoteError(messages, "Can't open %s for writing", {name});
  }
  const int saved = SaveCommand(map, request.output, false);
  return outcome.completed && outcome.unwritten.empty() ? saved : ExitFailed;
}

}  // namespace orvane
