// Imports any bytes as a follow sheet into a small site, twice, saves the map and opens it again.
// Nothing may crash, hang or be undefined, whatever is in the sheet and in the fields.
//
// The lines before a line with only a form feed are the fields, a line each from top to bottom of
// the dialog. A line after them has marks: `e` for European dates, `n` for "No" to all questions,
// `p` for a site without measures, `c` for a `.csv` file. Without such a line the whole input is
// the sheet.

#include "entry/sheet_fields.h"
#include "entry/sheet_import.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "mapfile/writer.h"
#include "model/workspace.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view Measures = "Z\tfruit,leaf,rest\n";
constexpr std::string_view Site =
    "T\tMain\tTrail\nG\tMain0\tN1 0'\tE10 0'\t100\nG\tMain100\tN1 0'\tE10 0.1'\n"
    "G\tMain200=Camp\tN1 0'\tE10 0.2'\t120\nX\tMain0\t100\t20,20\n"
    "T\t\tOru\tUlo\t2003-5-31\nN\t0900\tMain100\nR\tOru range\nK\tOru\nR\tFen range\nK\tFen\n";

orvane::Map& Open(orvane::Workspace& workspace, std::string_view name, std::string_view text) {
  orvane::Map& map = orvane::MakeMap(workspace, name);
  orvane::ReadMapText(map, text);
  orvane::FinishMap(map);
  return map;
}

/// Takes the next line off a text.
std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
  return line;
}

orvane::SheetFields UsualFields() {
  orvane::SheetFields fields;
  fields[orvane::SheetSpecies] = "A";
  fields[orvane::SheetFocal] = "B";
  fields[orvane::SheetDate] = "C";
  fields[orvane::SheetTime] = "D";
  fields[orvane::SheetLocation] = "E";
  fields[orvane::SheetActivity] = "F";
  fields[orvane::SheetSm1] = "G";
  fields[orvane::SheetSm1Code] = "feed";
  return fields;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view Separator = "\n\f\n";
  const std::string input(data, data + size);
  std::string_view sheet = input;
  std::string_view marks;
  orvane::SheetFields fields = UsualFields();
  if (const std::size_t cut = sheet.find(Separator); cut != std::string_view::npos) {
    std::string_view head = sheet.substr(0, cut);
    sheet.remove_prefix(cut + Separator.size());
    for (std::string& field : fields) field = TakeLine(head);
    marks = TakeLine(head);
  }
  const auto isMarked = [&](char mark) { return marks.find(mark) != std::string_view::npos; };

  orvane::RecordedMessages messages(isMarked('n') ? 2 : 1);
  orvane::Workspace workspace(messages);
  workspace.preferences.europeanDates = isMarked('e');
  std::string text(isMarked('p') ? "" : Measures);
  text += Site;
  orvane::Map& map = Open(workspace, "site.map", text);
  orvane::SheetReading reading = orvane::ReadSheetFields(fields, map);
  if (reading.refusal) return 0;
  const orvane::FollowSheet read =
      isMarked('c') ? orvane::SheetFromCsv(sheet) : orvane::FollowSheet{.text = std::string(sheet)};
  reading.spec.sheet = &read;
  orvane::SheetLogs logs;
  for (int time = 0; time < 2; ++time) {
    orvane::RunSpreadsheetImport(reading.spec, logs, [](const std::string&, std::string_view) {
      return orvane::WriteResult::Done;
    });
  }
  Open(workspace, "again.map", orvane::MapFileText(map, "again.map", true));
  return 0;
}
