#include "cli/import_gis_command.h"

#include "cli/commands.h"
#include "cli/exit_status.h"

namespace orvane {

namespace {

/// Tells of a field that the window would refuse.
void TellBadField(GisField field, const GisTrailFields& fields, Messages& messages) {
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

}  // namespace

bool ImportGisFile(Map& map, Messages& messages, const std::string& file, GisTrailFields fields) {
  auto import = StartGisImport(map, file, fields.boxes);
  if (!import) return false;
  if (const GisTrack* track = CurrentTrack(*import)) fields.name = track->name;
  fields.dateIsForAll = !fields.date.empty();
  const GisField bad = TakeAllTracks(*import, fields);
  TellBadField(bad, fields, messages);
  return bad == GisField::None;
}

int ImportGisCommand(Map& map, LineMessages& messages, const ImportGisRequest& request) {
  if (!ImportGisFile(map, messages, request.file, request.fields)) return ExitFailed;
  return SaveCommand(map, request.output, false);
}

}  // namespace orvane
