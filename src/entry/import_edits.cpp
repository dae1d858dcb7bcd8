#include "entry/import_edits.h"

#include "base/file_names.h"
#include "entry/submap_import.h"

#include <new>
#include <tuple>

namespace orvane {

std::string NameOfImport(std::string_view path) {
  return "Import of " + std::string(BaseName(path));
}

Edit SubmapEdit(Map& map, const std::string& path, std::string& sentence) {
  return {.name = NameOfImport(path),
          .map = &map,
          .marksDirty = false,
          .change = [&map, path, &sentence](EditFollowUp& followUp) {
            const Map* basis = map.basis;
            sentence = ImportSubmap(map, path);
            if (!sentence.empty()) followUp.unlikeFile.push_back(&map);
            followUp.solved = true;
            followUp.freshTrailRows = map.basis != basis;
            return true;
          }};
}

Edit GisFileEdit(Map& map, const std::string& path, const GisBoxes& boxes,
                 std::optional<GisImport>& import) {
  return {.name = NameOfImport(path),
          .map = &map,
          .change = [&map, path, &boxes, &import](EditFollowUp& followUp) {
            import = StartGisImport(map, path, boxes);
            followUp.solved = true;
            return import && import->waypoints > 0;
          }};
}

Edit TrackEdit(GisImport& import, const GisTrailFields& fields, bool all, GisField& bad) {
  return {.name = NameOfImport(import.fileName),
          .map = import.map,
          .change = [&import, fields, all, &bad](EditFollowUp& followUp) {
            const auto before = std::tuple(import.current, import.taken, import.points,
                                           import.timedTracks, import.repeats, import.withoutTime);
            followUp.solved = true;
            try {
              bad = all ? TakeAllTracks(import, fields) : TakeTrack(import, fields);
            } catch (const std::bad_alloc&) {
              std::tie(import.current, import.taken, import.points, import.timedTracks,
                       import.repeats, import.withoutTime) = before;
              throw;
            }
            return bad == GisField::None;
          }};
}

Edit FixesEdit(Map& map, FixImport& import) {
  return {.name = NameOfImport(import.fileName),
          .map = &map,
          .change = [&map, &import](EditFollowUp& followUp) {
            if (!AddsAnything(import)) return false;
            EnterFixes(map, import);
            followUp.solved = true;
            return true;
          }};
}

Edit SheetEdit(const ImportSpec& spec, SheetLogs& logs, const SideFileWriter& write,
               SheetOutcome& outcome) {
  return {.name = NameOfImport(spec.fileName),
          .map = spec.map,
          .change = [&spec, &logs, write, &outcome](EditFollowUp& followUp) {
            const SheetLogs before = logs;
            try {
              outcome = RunSpreadsheetImport(spec, logs, write);
            } catch (const std::bad_alloc&) {
              logs = before;
              throw;
            }
            if (outcome.canceled) logs = before;
            followUp.solved = true;
            followUp.freshRows = true;
            followUp.marksNothing = !outcome.changed;
            return !outcome.canceled;
          }};
}

Edit SheetPreviewEdit(Map& map, SheetDraft& draft) {
  return {.name = "Preview", .map = &map, .change = [&draft](EditFollowUp&) {
            draft.Read();
            return false;
          }};
}

}  // namespace orvane
