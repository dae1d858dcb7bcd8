#pragma once

#include "editing/edit_history.h"
#include "entry/fix_import.h"
#include "entry/gis_import.h"
#include "entry/sheet_draft.h"
#include "entry/sheet_import.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The imports as edits. What an import returns goes to a variable of the caller, which must outlive
/// the edit; it is empty as long as the edit was not applied.

/// \return the name of the edit that imports a file, with the file's name without folders
std::string NameOfImport(std::string_view path);

/// Reads a further map file into a map (`ImportSubmap`). The map is not marked as changed.
/// \param sentence  what was read, for the user
Edit SubmapEdit(Map& map, const std::string& path, std::string& sentence);

/// Begins the import of a GPS file (`StartGisImport`): adds its waypoints. The edit gives up if there
/// are none, or the import does not begin.
/// \param boxes   must outlive the edit
/// \param import  for the tracks
Edit GisFileEdit(Map& map, const std::string& path, const GisBoxes& boxes,
                 std::optional<GisImport>& import);

/// Takes the current track, or all from the current one on. The edit gives up if a field can't be
/// read. If memory runs out, `import` is unchanged.
/// \param bad  the field that can't be read
Edit TrackEdit(GisImport& import, const GisTrailFields& fields, bool all, GisField& bad);

/// Adds what an import of fixes has planned (`EnterFixes`). The edit gives up if there is nothing to
/// add; if memory runs out, `import` has lost only the text of its table.
/// \param import  must outlive the edit
Edit FixesEdit(Map& map, FixImport& import);

/// Imports a follow sheet (`RunSpreadsheetImport`); what an abandoned import has made stays. The edit
/// gives up if the user cancels. It does not mark the map if the sheet has no follows. After a cancel,
/// or if memory runs out, `logs` is unchanged.
/// \param spec, logs  must outlive the edit
Edit SheetEdit(const ImportSpec& spec, SheetLogs& logs, const SideFileWriter& write,
               SheetOutcome& outcome);

/// Reads the rows of a preview (`SheetDraft::Read`) and gives up.
/// \param draft  must outlive the edit
Edit SheetPreviewEdit(Map& map, SheetDraft& draft);

}  // namespace orvane
