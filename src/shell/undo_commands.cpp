#include "shell/undo_commands.h"

#include "base/messages.h"
#include "panes/delete_rows.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

#include <vector>

namespace orvane {
namespace {

/// Where windows point to what the maps hold, they close, as when a map is reloaded. Editors, and the
/// windows that follow a reload, find their trail or range again.
void CloseReports(Shell& shell, const std::vector<Map*>& reread) {
  for (MapWindowWidget* window : shell.Windows().On(reread)) window->CloseReports();
}

void Undo(Shell& shell, const MapWindowWidget& window) {
  EditHistory& history = shell.History();
  CloseReports(shell, history.RereadByUndo(window.TheMap()));
  if (!history.Undo(window.TheMap())) shell.Beep();
}

void Redo(Shell& shell, const MapWindowWidget& window) {
  EditHistory& history = shell.History();
  CloseReports(shell, history.RereadByRedo(window.TheMap()));
  if (!history.Redo(window.TheMap())) shell.Beep();
}

/// The pane that has the keyboard decides whether trails or ranges go.
void DeleteOfFocus(Shell& shell, MapWindowWidget& window) {
  switch (window.Focus()) {
    case FocusPlace::TrailList:
      return DeleteSelectedTrails(window.Shown(), shell.History());
    case FocusPlace::RangeList:
      return DeleteSelectedRanges(window.Shown(), shell.History());
    case FocusPlace::MapView:
    case FocusPlace::Neither:
      shell.Beep();
  }
}

}  // namespace

void PlugUndoCommands(Shell& shell) {
  shell.Commands().PlugOnMapSide(CommandUndo,
                                 [&shell](MapWindowWidget& window) { Undo(shell, window); });
  shell.Commands().PlugOnMapSide(CommandRedo,
                                 [&shell](MapWindowWidget& window) { Redo(shell, window); });
  // Editors delete their rows themselves.
  shell.Commands().Plug(CommandDelete, [&shell](ProgramWindow& window) {
    if (window.Kind() == WindowKind::Map) return DeleteOfFocus(shell, *window.MapSide());
    NoteWarning(shell.TheWorkspace().messages, "NYI");
  });
}

}  // namespace orvane
