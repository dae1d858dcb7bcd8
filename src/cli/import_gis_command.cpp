#include "cli/import_gis_command.h"

#include "cli/commands.h"
#include "cli/exit_status.h"

namespace orvane {

void NoteBadGisField(GisField field, const GisTrailFields& fields, Messages& messages) {
  switch (field) {
    case GisField::None:
      return;
    case GisField::Date:
      NoteError(messages, "Bad date for --date: %s", {fields.date});
      return;
    case GisField::Size:
      NoteError(messages, "Bad number for --size: %s", {fields.size});
      return;
    case GisField::Width:
      NoteError(messages, "Bad number for --width: %s", {fields.width});
      return;
    case GisField::SubSample:
      NoteError(messages, "Bad number for --subsample: %s", {fields.subSample});
      return;
    case GisField::MinimumDistance:
      NoteError(messages, "Bad number for --minimum-distance: %s", {fields.minimumDistance});
      return;
  }
}

const std::array<GisOption, 8>& GisOptions() {
  static constexpr std::array<GisOption, 8> Options = {{
      {&GisTrailFields::type, "--type", "TEXT", "the type of the trails; Trail if not given"},
      {&GisTrailFields::date, "--date", "DATE", "their date; that of each track if not given"},
      {&GisTrailFields::focalAnimal, "--focal", "NAME", "their focal animal"},
      {&GisTrailFields::size, "--size", "N", "their group size; 1 if not given"},
      {&GisTrailFields::width, "--width", "METRES", "the width of their lines"},
      {&GisTrailFields::color, "--color", "COLOR", "the colour of their lines; black if not given"},
      {&GisTrailFields::subSample, "--subsample", "N", "take every N-th fix"},
      {&GisTrailFields::minimumDistance, "--minimum-distance", "METRES",
       "skip fixes nearer than that"},
  }};
  return Options;
}

bool ImportGisFile(Map& map, Messages& messages, const std::string& file, GisTrailFields fields) {
  auto import = StartGisImport(map, file, fields.boxes);
  if (!import) return false;
  if (const GisTrack* track = CurrentTrack(*import)) fields.name = track->name;
  fields.dateIsForAll = !fields.date.empty();
  const GisField bad = TakeAllTracks(*import, fields);
  NoteBadGisField(bad, fields, messages);
  if (bad != GisField::None) return false;
  messages.Post(Severity::Note, GisSummary(*import));
  return true;
}

int ImportGisCommand(Map& map, LineMessages& messages, const ImportGisRequest& request) {
  if (!ImportGisFile(map, messages, request.file, request.fields)) return ExitFailed;
  return SaveCommand(map, request.output, false);
}

}  // namespace orvane
