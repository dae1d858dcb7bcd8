#include "shell/file_commands.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "commands/map_edits.h"
#include "output/shapefiles.h"
#include "paint/display_text.h"
#include "shell/files/dialog_start.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"
#include "view/view_transform.h"

#include <string>

namespace orvane {
namespace {

void OpenMapCommand(Shell& shell, ProgramWindow& window) {
  const auto path = AskOpenFile(shell, "Open Map...", window, shell.Maps().Files().maps, "map");
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
  const auto path = AskOpenFile(shell, "Open Map...", window, shell.Maps().Files().maps, "map");
  if (!path) return;
  Map* basis = shell.Maps().Read(*path);
  if (basis == nullptr) return;
  if (!shell.History().Apply(BasisEdit(map, *basis))) {
    // A map can't be its own basis, directly or through other maps.
    NoteError(shell.TheWorkspace().messages, "Can't open file %s", {*path});
    return;
  }
  for (MapWindowWidget* each : shell.Windows().All()) {
    if (&each->TheMap() == &map && map.trails.empty()) InitView(each->Shown());
  }
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
}

}  // namespace orvane
