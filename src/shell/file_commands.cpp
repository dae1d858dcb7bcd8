#include "shell/file_commands.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "commands/map_facts.h"
#include "entry/gis_import.h"
#include "entry/submap_import.h"
#include "model/map_chain.h"
#include "output/shapefiles.h"
#include "paint/display_text.h"
#include "shell/entry/after_import.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/out_of_memory.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"
#include "view/fit_to_map.h"
#include "view/view_transform.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace orvane {
namespace {

/// Asks for a file to open, over a window.
/// \return its path, or nothing if the user cancelled
std::optional<std::string> AskOpen(Shell& shell, const std::string& title, ProgramWindow& window,
                                   FileSpecification& file, std::string_view type) {
  PrepareSpecification(file, shell.Files().maps, shell.StartOfDialogs(window), type);
  switch (shell.Dialogs().AskOpen(title, file)) {
    case FileAnswer::Failed:
      NoteFileDialogFailure(shell.TheWorkspace().messages);
      return std::nullopt;
    case FileAnswer::Cancelled:
      return std::nullopt;
    case FileAnswer::Chosen:
      break;
  }
  return PathOf(file);
}

void OpenMapCommand(Shell& shell, ProgramWindow& window) {
  const auto path = AskOpen(shell, "Open Map...", window, shell.Files().maps, "map");
  if (path) shell.OpenFile(*path);
}

void OpenBasis(Shell& shell, ProgramWindow& window) {
  if (window.Kind() != WindowKind::Map || window.MapSide()->TheMap().basis == nullptr) {
    shell.Beep();
    return;
  }
  shell.OpenMapWindow(*window.MapSide()->TheMap().basis);
}

/// Shows the trails of a new basis in the windows of the map and of maps that rest on it.
void ShowBasis(Shell& shell, const Map& map) {
  for (MapWindowWidget* each : shell.OpenWindows()) {
    if (!RestsOn(each->TheMap(), map)) continue;
    each->ShowMap(true);
    each->RefreshMarks();
  }
}

/// The map is neither marked as changed nor solved again.
void SetBasisCommand(Shell& shell, ProgramWindow& window) {
  if (window.Kind() != WindowKind::Map || window.MapSide()->TheMap().basis != nullptr) {
    shell.Beep();
    return;
  }
  MapWindowWidget& mapWindow = *window.MapSide();
  Map& map = mapWindow.TheMap();
  const auto path = AskOpen(shell, "Open Map...", window, shell.Files().maps, "map");
  if (!path) return;
  Map* basis = shell.ReadMap(*path);
  if (basis == nullptr) return;
  if (!SetBasis(map, *basis)) {
    // A map can't rest on itself, directly or through other maps.
    NoteError(shell.TheWorkspace().messages, "Can't open file %s", {*path});
    return;
  }
  for (MapWindowWidget* each : shell.OpenWindows()) {
    if (&each->TheMap() == &map && map.trails.empty()) InitView(each->View().View());
  }
  ShowBasis(shell, map);
}

void SaveCommand(Shell& shell, ProgramWindow& window) {
  if (window.MapSide() == nullptr) {
    shell.Beep();
    return;
  }
  SaveChangedMaps(window.MapSide()->TheMap(), shell.Saving());
}

void SaveAsCommand(Shell& shell, ProgramWindow& window, bool full) {
  if (window.Kind() != WindowKind::Map) {
    shell.Beep();
    return;
  }
  SaveMapAs(window.MapSide()->TheMap(), full, shell.Saving());
}

/// The map is not marked as changed: what was read is in a file of its own.
void ImportSubmap(Shell& shell, ProgramWindow& window) {
  if (window.Kind() != WindowKind::Map) {
    shell.Beep();
    return;
  }
  const auto path = AskOpen(shell, "Import Sub Map...", window, shell.Files().maps, "map");
  if (!path) return;
  Map& map = window.MapSide()->TheMap();
  const Map* basis = map.basis;
  const bool wasEmpty = !HasDrawablePoints(map);
  const QString name = DisplayText(shell.Files().maps.name);
  std::string sentence;
  {
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), Shell::tr("Importing %1").arg(name),
                        shell.clock);
    ChangeMaps(shell, [&] { sentence = ImportSubmap(map, *path); });
    if (!sentence.empty()) map.flags |= MapUnlikeFile;
  }
  shell.MapChanged(map);
  if (map.basis != basis) ShowBasis(shell, map);
  ShowImported(shell, map, wasEmpty, sentence);
}

/// The user decides on the tracks one by one in a window of their own.
void ImportGis(Shell& shell, ProgramWindow& window, GisBoxes& boxes) {
  if (window.Kind() != WindowKind::Map) {
    shell.Beep();
    return;
  }
  const auto path = AskOpen(shell, "Import GIS data...", window, shell.Files().gisFiles, "txt");
  if (!path) return;
  Map& map = window.MapSide()->TheMap();
  const bool wasDirty = (map.flags & MapDirty) != 0;
  const bool wasEmpty = !HasDrawablePoints(map);
  std::optional<GisImport> import;
  {
    const QString name = DisplayText(shell.Files().gisFiles.name);
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), Shell::tr("Importing %1").arg(name),
                        shell.clock);
    ChangeMaps(shell, [&] { import = StartGisImport(map, *path, boxes); });
  }
  if (!import) return;
  shell.NoteEdit(map, wasDirty);
  const bool hasTracks = CurrentTrack(*import) != nullptr;
  ShowImported(shell, map, wasEmpty, hasTracks ? std::string() : GisSummary(*import));
  if (!hasTracks) return;
  // The window deletes itself, and closes with the map's window.
  auto* tracks = new GisTrailWindow(shell, std::move(*import), boxes, &window.Widget(), wasEmpty);
  tracks->show();
}

void SaveAsArcView(Shell& shell, ProgramWindow& window) {
  if (window.Kind() != WindowKind::Map) {
    shell.Beep();
    return;
  }
  Map& map = window.MapSide()->TheMap();
  const std::string folder = AskShapefileFolder(map, shell.Saving());
  if (folder.empty()) return;
  const QString name = DisplayText(BaseName(map.fileName));
  const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), Shell::tr("Exporting %1").arg(name),
                      shell.clock);
  const ShapefileOutcome outcome = ExportShapefiles(map, folder);
  if (!outcome.summary.empty()) {
    shell.TheWorkspace().messages.Post(Severity::Note, outcome.summary);
  }
}

}  // namespace

void PlugFileCommands(Shell& shell) {
  shell.Plug(CommandNewMap, [&shell](ProgramWindow&) { shell.NewMap(); });
  shell.Plug(CommandOpenMap, [&shell](ProgramWindow& window) { OpenMapCommand(shell, window); });
  shell.Plug(CommandOpenBasis, [&shell](ProgramWindow& window) { OpenBasis(shell, window); });
  shell.Plug(CommandSetBasis, [&shell](ProgramWindow& window) { SetBasisCommand(shell, window); });
  shell.Plug(CommandCloseMap, [&shell](ProgramWindow& window) { shell.MapWinClose(window); });
  shell.Plug(CommandSave, [&shell](ProgramWindow& window) { SaveCommand(shell, window); });
  shell.Plug(CommandSaveAs,
             [&shell](ProgramWindow& window) { SaveAsCommand(shell, window, true); });
  shell.Plug(CommandSaveSimplyAs,
             [&shell](ProgramWindow& window) { SaveAsCommand(shell, window, false); });
  shell.Plug(CommandImportSubmap, [&shell](ProgramWindow& window) { ImportSubmap(shell, window); });
  shell.Plug(CommandSaveAsArcView,
             [&shell](ProgramWindow& window) { SaveAsArcView(shell, window); });
  shell.Plug(CommandImportGis, [&shell, boxes = std::make_shared<GisBoxes>()](
                                   ProgramWindow& window) { ImportGis(shell, window, *boxes); });
  shell.Plug(CommandExit, [&shell](ProgramWindow&) { shell.ExitFlow(); });
}

}  // namespace orvane
