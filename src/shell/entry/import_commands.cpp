#include "shell/entry/import_commands.h"

#include "entry/fix_draft.h"
#include "entry/gis_import.h"
#include "entry/import_edits.h"
#include "entry/sheet_draft.h"
#include "entry/sheet_fields.h"
#include "entry/sheet_file.h"
#include "paint/display_text.h"
#include "shell/entry/after_import.h"
#include "shell/entry/fix_import_window.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/entry/preview_window.h"
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

/// Shows what the rows of a sheet become, over its dialog.
/// \return the fields as the user left them; nothing after Cancel
std::optional<SheetFields> PreviewColumns(Shell& shell, const ImportSpec& of,
                                          const SheetFields& fields, QWidget* parent) {
  Map& map = *of.map;
  SheetDraft draft(map, *of.sheet, of.fileName, fields);
  PreviewWindow window(shell, map, of.fileName, PreviewWindow::Buttons::OkAndCancel, parent);
  const auto show = [&] {
    shell.Guard().Run([&] {
      const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), QStringLiteral("Reading rows"),
                          shell.Clock());
      shell.History().Apply(SheetPreviewEdit(map, draft));
    });
    window.ShowPage(draft.Page(), draft.Chosen());
  };
  window.SetChoices(draft.Choices());
  show();
  QObject::connect(&window, &PreviewWindow::assignmentChanged, &window,
                   [&](int column, int choice) {
                     draft.Assign(static_cast<size_t>(column), static_cast<size_t>(choice));
                     show();
                   });
  if (window.exec() != QDialog::Accepted) return std::nullopt;
  return draft.Fields();
}

/// Asks for the columns of a sheet.
/// \param of  the map, the sheet and its name
/// \return the settings of the import; nothing if the user cancelled
std::optional<ImportSpec> AskColumns(Shell& shell, MapWindowWidget& window, const ImportSpec& of,
                                     SheetFields& fields) {
  SheetDialog dialog(*of.map, fields, &window);
  dialog.SetPreviewer(
      [&](const SheetFields& typed) { return PreviewColumns(shell, of, typed, &dialog); });
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  ImportSpec spec = dialog.Spec();
  spec.sheet = of.sheet;
  spec.fileName = of.fileName;
  return spec;
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
  Map& map = window.TheMap();
  ImportSpec of;
  of.map = &map;
  of.sheet = &*sheet;
  of.fileName = *path;
  const auto spec = AskColumns(shell, window, of, memory.sheetFields);
  if (!spec) return;
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
