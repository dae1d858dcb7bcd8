#include "shell/undo_commands.h"

#include "base/messages.h"
#include "panes/delete_rows.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

namespace orvane {
namespace {

void Undo(Shell& shell, const MapWindowWidget& window) {
  if (!shell.History().Undo(window.TheMap())) shell.Beep();
}

void Redo(Shell& shell, const MapWindowWidget& window) {
  if (!shell.History().Redo(window.TheMap())) shell.Beep();
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
