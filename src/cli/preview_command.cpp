#include "cli/preview_command.h"

#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "entry/preview.h"
#include "model/workspace.h"

#include <limits>

namespace orvane {

namespace {

constexpr size_t AllRows = std::numeric_limits<size_t>::max();

/// Says in which order days and months of the dates in a column are read, if both are possible.
void NoteDateOrder(LineMessages& messages, const Map& map, const Preview& all, size_t column) {
  const bool dayFirst = map.workspace->preferences.europeanDates;
  const std::string_view remedy = dayFirst ? "leave out --european-dates" : "use --european-dates";
  const std::string warning = DateOrderWarning(all, column, dayFirst, remedy);
  if (!warning.empty()) messages.Post(Severity::Note, warning);
}

}  // namespace

int PreviewSheetCommand(Map& map, LineMessages& messages, const ImportRequest& request) {
  const auto sheet = ReadSheet(messages, request.sheet, request.chooseSheet);
  if (!sheet) return ExitFailed;
  auto spec = ReadSheetSpec(map, messages, request.fields);
  if (!spec) return ExitFailed;
  spec->sheet = &*sheet;
  spec->fileName = request.sheet;
  const Preview preview = PreviewSheet(*spec, AllRows);
  if (spec->dateColumn >= 0) {
    NoteDateOrder(messages, map, preview, static_cast<size_t>(spec->dateColumn));
  }
  Print(PreviewText(preview));
  return ExitDone;
}

int PreviewFixesCommand(Map& map, LineMessages& messages, const ImportFixesRequest& request) {
  const auto import = ReadFixImport(map, request.table, request.options);
  if (!import) return ExitFailed;
  if (!HasUsableFixes(*import, messages)) {
    Print(PreviewText(PreviewFixes(*import, AllRows)));
    return ExitFailed;
  }
  for (const std::string& note : FixNotes(*import)) messages.Post(Severity::Note, note);
  Print(PreviewText(PreviewFixes(*import, AllRows)));
  return ExitDone;
}

int PreviewGisCommand(Map& map, LineMessages& messages, const ImportGisRequest& request) {
  GisTrailFields fields = request.fields;
  const auto import = StartGisImport(map, request.file, fields.boxes);
  if (!import) return ExitFailed;
  const auto preview = PreviewGis(*import, fields, AllRows);
  if (!preview) {
    NoteBadGisField(FindBadField(*import, fields), fields, messages);
    return ExitFailed;
  }
  NoteDateOrder(messages, map, *preview, GisTimeColumn);
  Print(PreviewText(*preview));
  return ExitDone;
}

}  // namespace orvane
