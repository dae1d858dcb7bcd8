#include "shell/file_commands.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "commands/map_edits.h"
#include "entry/gis_import.h"
#include "entry/import_edits.h"
#include "output/shapefiles.h"
#include "paint/display_text.h"
#include "shell/entry/after_import.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/files/dialog_start.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
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
  PrepareSpecification(file, shell.Maps().Files().maps, StartOfDialogs(shell, window), type);
  switch (shell.Dialogs().AskOpen(title, file)) {
    case FileAnswer::Failed:
      NoteFileDialogFailure(shell.TheWorkspace().messages);
      return std::nullopt;
    case FileAnswer::Canceled:
      return std::nullopt;
    case FileAnswer::Chosen:
      break;
  }
  return PathOf(file);
}

void OpenMapCommand(Shell& shell, ProgramWindow& window) {
  const auto path = AskOpen(shell, "Open Map...", window, shell.Maps().Files().maps, "map");
  if (path) shell.OpenFile(*path);
}

void OpenBasis(Shell& shell, MapWindowWidget& window) {
  if (window.TheMap().basis == nullptr) {
    shell.Beep();
    return;
  }
  shell.Windows().Open(*window.TheMap().basis);
}

void SetBasisCommand(Shell& shell, MapWindowWidget& window) {
  Map& map = window.TheMap();
  if (map.basis != nullptr) {
    shell.Beep();
    return;
  }
  const auto path = AskOpen(shell, "Open Map...", window, shell.Maps().Files().maps, "map");
  if (!path) return;
  Map* basis = shell.Maps().Read(*path);
  if (basis == nullptr) return;
  if (!shell.History().Apply(BasisEdit(map, *basis))) {
    // A map can't rest on itself, directly or through other maps.
    NoteError(shell.TheWorkspace().messages, "Can't open file %s", {*path});
    return;
  }
  for (MapWindowWidget* each : shell.Windows().All()) {
    if (&each->TheMap() == &map && map.trails.empty()) InitView(each->Shown());
  }
}

void ImportSubmap(Shell& shell, MapWindowWidget& window) {
  const auto path = AskOpen(shell, "Import Sub Map...", window, shell.Maps().Files().maps, "map");
  if (!path) return;
  Map& map = window.TheMap();
  const bool wasEmpty = !HasDrawablePoints(map);
  const QString name = DisplayText(shell.Maps().Files().maps.name);
  std::string sentence;
  {
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(),
                        QStringLiteral("Importing %1").arg(name), shell.Clock());
    shell.History().Apply(SubmapEdit(map, *path, sentence));
  }
  ShowImported(shell, map, wasEmpty, sentence);
}

/// The user decides on the tracks one by one in a window of their own.
void ImportGis(Shell& shell, MapWindowWidget& window, GisBoxes& boxes) {
  const auto path =
      AskOpen(shell, "Import GIS data...", window, shell.Maps().Files().gisFiles, "txt");
  if (!path) return;
  Map& map = window.TheMap();
  const bool wasEmpty = !HasDrawablePoints(map);
  std::optional<GisImport> import;
  {
    const QString name = DisplayText(shell.Maps().Files().gisFiles.name);
    const BusyWork busy(shell.TheWorkspace(), shell.Boxes(),
                        QStringLiteral("Importing %1").arg(name), shell.Clock());
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

void SaveAsArcView(Shell& shell, MapWindowWidget& window) {
  Map& map = window.TheMap();
  const std::string folder = AskShapefileFolder(map, shell.Maps().Saving());
  if (folder.empty()) return;
  const QString name = DisplayText(BaseName(map.fileName));
  const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), QStringLiteral("Exporting %1").arg(name),
                      shell.Clock());
  const ShapefileOutcome outcome = ExportShapefiles(map, folder);
  if (!outcome.summary.empty()) {
    shell.TheWorkspace().messages.Post(Severity::Note, outcome.summary);
  }
}

}  // namespace

void PlugFileCommands(Shell& shell) {
  shell.Commands().Plug(CommandNewMap, [&shell](ProgramWindow&) { shell.NewMap(); });
  shell.Commands().Plug(CommandOpenMap,
                        [&shell](ProgramWindow& window) { OpenMapCommand(shell, window); });
  shell.Commands().Plug(CommandCloseMap,
                        [&shell](ProgramWindow& window) { shell.MapWinClose(window); });
  shell.Commands().Plug(CommandExit, [&shell](ProgramWindow&) { shell.ExitFlow(); });
  const auto onMap = [&shell](CommandId id, void (*run)(Shell&, MapWindowWidget&)) {
    shell.Commands().PlugOnMap(id, [&shell, run](MapWindowWidget& window) { run(shell, window); });
  };
  onMap(CommandOpenBasis, OpenBasis);
  onMap(CommandSetBasis, SetBasisCommand);
  onMap(CommandImportSubmap, ImportSubmap);
  onMap(CommandSaveAsArcView, SaveAsArcView);
  shell.Commands().PlugOnMapSide(CommandSave, [&shell](MapWindowWidget& window) {
    SaveChangedMaps(window.TheMap(), shell.Maps().Saving());
  });
  shell.Commands().PlugOnMap(CommandSaveAs, [&shell](MapWindowWidget& window) {
    SaveMapAs(window.TheMap(), true, shell.Maps().Saving());
  });
  shell.Commands().PlugOnMap(CommandSaveSimplyAs, [&shell](MapWindowWidget& window) {
    SaveMapAs(window.TheMap(), false, shell.Maps().Saving());
  });
  shell.Commands().PlugOnMap(
      CommandImportGis, [&shell, boxes = std::make_shared<GisBoxes>()](MapWindowWidget& window) {
        ImportGis(shell, window, *boxes);
      });
}

}  // namespace orvane
