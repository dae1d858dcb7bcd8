#include "shell/entry/import_commands.h"

#include "entry/fix_draft.h"
#include "entry/gis_import.h"
#include "entry/import_edits.h"
#include "entry/sheet_fields.h"
#include "entry/sheet_file.h"
#include "paint/display_text.h"
#include "shell/entry/after_import.h"
#include "shell/entry/fix_import_window.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/entry/sheet_dialog.h"
#include "shell/files/dialog_start.h"
#include "shell/map_window_widget.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"
#include "view/fit_to_map.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace orvane {
namespace {

/// What is kept from one import to the next, as long as the program runs.
struct ImportMemory {
  FixForm fixForm;
  SheetFields sheetFields;
  SheetLogs sheetLogs;
  GisBoxes gisBoxes;
};

QString OccasionOf(const FileSpecification& file) {
  return QStringLiteral("Importing %1").arg(DisplayText(file.name));
}

/// Asks for the columns of a sheet.
/// \return the settings of the import, without a sheet; nothing if the user cancelled
std::optional<ImportSpec> AskColumns(MapWindowWidget& window, SheetFields& fields) {
  SheetDialog dialog(window.TheMap(), fields, &window);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Spec();
}

void ImportSpreadsheet(Shell& shell, MapWindowWidget& window, ImportMemory& memory) {
  FileSpecification& file = shell.Maps().Files().spreadsheets;
  const auto path = AskOpenFile(shell, "Import Spreadsheet Data...", window, file, "txt");
  if (!path) return;
  Messages& messages = shell.TheWorkspace().messages;
  const auto sheet = ReadSheet(messages, *path, [&](const std::vector<std::string>& names) {
    return AskForSheet(messages, "Import Spreadsheet Data", names);
  });
  if (!sheet) return;
  auto spec = AskColumns(window, memory.sheetFields);
  if (!spec) return;
  spec->sheet = &*sheet;
  spec->fileName = *path;
  Map& map = window.TheMap();
  const bool wasEmpty = !HasDrawablePoints(map);
  SheetOutcome outcome;
  bool done = false;
  {
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), OccasionOf(file), shell.Clock());
    done = shell.History().Apply(SheetEdit(*spec, memory.sheetLogs, WriteSideFile, outcome));
  }
  if (!done) return;
  ShowImported(shell, map, wasEmpty, "");
  NoteSheetOutcome(messages, outcome);
}

void ImportSubmapFile(Shell& shell, MapWindowWidget& window) {
  FileSpecification& file = shell.Maps().Files().maps;
  const auto path = AskOpenFile(shell, "Import Sub Map...", window, file, "map");
  if (!path) return;
  Map& map = window.TheMap();
  const bool wasEmpty = !HasDrawablePoints(map);
  std::string sentence;
  {
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), OccasionOf(file), shell.Clock());
    shell.History().Apply(SubmapEdit(map, *path, sentence));
  }
  ShowImported(shell, map, wasEmpty, sentence);
}

/// The user decides in a window that shows what becomes of each row; the map changes after its OK.
void ImportFixes(Shell& shell, MapWindowWidget& window, FixForm& form) {
  FileSpecification& file = shell.Maps().Files().fixTables;
  const auto path = AskOpenFile(shell, "Import Fixes...", window, file, "txt");
  if (!path) return;
  Messages& messages = shell.TheWorkspace().messages;
  auto text = ReadFixText(messages, *path, [&](const std::vector<std::string>& names) {
    return AskForSheet(messages, "Import Fixes", names);
  });
  if (!text) return;
  Map& map = window.TheMap();
  FixDraft draft(map, *path, std::move(*text));
  FixImportWindow dialog(shell, draft, form, window, &window);
  if (dialog.exec() != QDialog::Accepted) return;
  const std::string sentence = FixNotes(draft.Import()).back();
  bool done = false;
  {
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), OccasionOf(file), shell.Clock());
    done = shell.History().Apply(FixesEdit(map, draft.Import()));
  }
  // The ranges are to be seen, also where the map has other places.
  if (done) ShowImported(shell, map, true, sentence);
}

/// The user decides on the tracks one by one in a window of their own.
void ImportGis(Shell& shell, MapWindowWidget& window, GisBoxes& boxes) {
  FileSpecification& file = shell.Maps().Files().gisFiles;
  const auto path = AskOpenFile(shell, "Import GIS data...", window, file, "txt");
  if (!path) return;
  Map& map = window.TheMap();
  const bool wasEmpty = !HasDrawablePoints(map);
  std::optional<GisImport> import;
  {
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), OccasionOf(file), shell.Clock());
    shell.History().Apply(GisFileEdit(map, *path, boxes, import));
  }
  if (!import) return;
  const bool hasTracks = CurrentTrack(*import) != nullptr;
  ShowImported(shell, map, wasEmpty, hasTracks ? std::string() : GisSummary(*import));
  if (!hasTracks) return;
  // The window deletes itself, and closes with the map's window.
  auto* tracks = new GisTrailWindow(shell, std::move(*import), boxes, &window, wasEmpty);
  tracks->show();
}

}  // namespace

void PlugImportCommands(Shell& shell) {
  const auto memory = std::make_shared<ImportMemory>();
  CommandDispatcher& commands = shell.Commands();
  commands.PlugOnMap(CommandImportSpreadsheet, [&shell, memory](MapWindowWidget& window) {
    ImportSpreadsheet(shell, window, *memory);
  });
  commands.PlugOnMap(CommandImportSubmap,
                     [&shell](MapWindowWidget& window) { ImportSubmapFile(shell, window); });
  commands.PlugOnMap(CommandImportFixes, [&shell, memory](MapWindowWidget& window) {
    ImportFixes(shell, window, memory->fixForm);
  });
  commands.PlugOnMap(CommandImportGis, [&shell, memory](MapWindowWidget& window) {
    ImportGis(shell, window, memory->gisBoxes);
  });
}

}  // namespace orvane
