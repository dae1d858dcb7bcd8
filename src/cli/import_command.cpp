#include "cli/import_command.h"

#include "cli/commands.h"
#include "cli/exit_status.h"
#include "entry/sheet_import.h"

#include <string_view>
#include <utility>

namespace orvane {

const std::array<SheetOption, SheetFieldCount>& SheetOptions() {
  static constexpr std::array<SheetOption, SheetFieldCount> Options = {{
      {SheetSkip, "--skip", "N", "lines before the first row"},
      {SheetTime, "--time", "COLUMN", "the column of the time, a letter or a number from 0"},
      {SheetLocation, "--location", "COLUMN", "the column of the place"},
      {SheetSpecies, "--species", "COLUMN", "the column of the species or group"},
      {SheetSpeciesAlways, "--species-always", "TEXT", "the species or group of all rows"},
      {SheetDate, "--date", "COLUMN", "the column of the date, or three as A/B/C"},
      {SheetDateAlways, "--date-always", "DATE", "the date of all rows"},
      {SheetFocal, "--focal", "COLUMN", "the column of the focal animal"},
      {SheetFocalAlways, "--focal-always", "TEXT", "the focal animal of all rows"},
      {SheetActivity, "--activity", "COLUMN", "the column of the activity"},
      {SheetSm1, "--sm1", "COLUMN", "the column of counts of SM1"},
      {SheetSm1Code, "--sm1-code", "TEXT", "the activity that counts as SM1"},
      {SheetSm2, "--sm2", "COLUMN", "the column of counts of SM2"},
      {SheetSm2Code, "--sm2-code", "TEXT", "the activity that counts as SM2"},
      {SheetSm3, "--sm3", "COLUMN", "the column of counts of SM3"},
      {SheetSm3Code, "--sm3-code", "TEXT", "the activity that counts as SM3"},
  }};
  return Options;
}

std::optional<ImportSpec> ReadSheetSpec(Map& map, Messages& messages, const SheetFields& fields) {
  SheetReading reading = ReadSheetFields(fields, map);
  if (!reading.refusal) return std::move(reading.spec);
  NoteError(messages, "%s", {reading.refusal->message});
  return std::nullopt;
}

std::optional<SheetOutcome> ImportSheet(Map& map, Messages& messages, const std::string& sheet,
                                        const SheetFields& fields, const SheetChooser& choose) {
  const auto text = ReadSheet(messages, sheet, choose);
  if (!text) return std::nullopt;
  auto spec = ReadSheetSpec(map, messages, fields);
  if (!spec) return std::nullopt;
  spec->sheet = &*text;
  spec->fileName = sheet;
  SheetLogs logs;
  SheetOutcome outcome = RunSpreadsheetImport(*spec, logs, WriteSideFile);
  NoteSheetOutcome(messages, outcome);
  return outcome;
}

int ImportCommand(Map& map, LineMessages& messages, const ImportRequest& request) {
  const auto outcome =
      ImportSheet(map, messages, request.sheet, request.fields, request.chooseSheet);
  if (!outcome) return ExitFailed;
  const int saved = SaveCommand(map, request.output, false);
  return outcome->completed && outcome->unwritten.empty() ? saved : ExitFailed;
}

}  // namespace orvane
