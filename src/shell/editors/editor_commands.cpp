#include "shell/editors/editor_commands.h"

#include "model/workspace.h"
#include "panes/open_editors.h"
#include "panes/range_list.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

namespace orvane {
namespace {

Editors& EditorsOf(Shell& shell) { return *shell.findChild<Editors*>(); }

void AddOfFocus(Shell& shell, MapWindowWidget& window) {
  switch (window.Focus()) {
    case FocusPlace::TrailList:
      EditorsOf(shell).OpenTrail(window, nullptr);
      return;
    case FocusPlace::RangeList:
      EditorsOf(shell).OpenRange(window, nullptr);
      return;
    case FocusPlace::MapView:
    case FocusPlace::Neither:
      shell.Beep();
  }
}

}  // namespace

Editors::Editors(Shell& shell) : QObject(&shell), shell_(shell) {}

template <typename Window, typename Wanted>
Window* Editors::Find(Wanted wanted) const {
  for (const MapWindowWidget* window : shell_.Windows().All()) {
    for (ProgramWindow* each : window->Dependents()) {
      auto* editor = dynamic_cast<Window*>(each);
      if (editor != nullptr && editor->Editor().Edited() == wanted) return editor;
    }
  }
  return nullptr;
}

template <typename Window>
Window& Editors::ShowNew(Window* window) {
  connect(window, &EditorWindow::contentEdited, this,
          [this, window] { Q_EMIT draftEdited(window); });
  window->BringToFront();
  return *window;
}

TrailEditorWindow& Editors::OpenTrail(MapWindowWidget& window, Trail* trail) {
  auto* open = trail == nullptr ? nullptr : Find<TrailEditorWindow>(trail);
  if (open != nullptr) {
    open->BringToFront();
    return *open;
  }
  auto editor = std::make_unique<TrailEditor>(window.TheMap(), trail);
  // It deletes itself when it is closed.
  return ShowNew(new TrailEditorWindow(shell_, window, std::move(editor), trailWidths_));
}

RangeEditorWindow& Editors::OpenRange(MapWindowWidget& window, const RangePanelRow* row) {
  auto* open = row == nullptr ? nullptr : Find<RangeEditorWindow>(row->range);
  if (open != nullptr) {
    open->BringToFront();
    return *open;
  }
  auto editor = row == nullptr
                    ? std::make_unique<RangeEditor>(window.TheMap(), nullptr, NoColor)
                    : std::make_unique<RangeEditor>(window.TheMap(), row->range, row->color);
  return ShowNew(new RangeEditorWindow(shell_, window, std::move(editor), rangeWidths_));
}

EditorWindow& Editors::Restore(MapWindowWidget& window, const EditorDraft& draft) {
  Map& map = window.TheMap();
  EditorWindow* restored = nullptr;
  if (draft.ofTrail) {
    restored =
        &ShowNew(new TrailEditorWindow(shell_, window, TrailEditorOf(map, draft), trailWidths_));
  } else {
    const Range* range = RangeOf(map, draft);
    const RangePanelRow* row =
        range == nullptr ? nullptr : FindRangeRow(window.View().Shown(), *range);
    const Color color = row == nullptr ? NoColor : row->color;
    restored = &ShowNew(
        new RangeEditorWindow(shell_, window, RangeEditorOf(map, draft, color), rangeWidths_));
  }
  restored->RestoreOpenCell(draft);
  return *restored;
}

void OpenTrailEditor(Shell& shell, MapWindowWidget& window, const TrailPanelRow& row) {
  Trail* trail = row.fixed ? nullptr : TrailToEdit(shell.TheWorkspace().messages, &row);
  if (row.fixed || trail != nullptr) EditorsOf(shell).OpenTrail(window, trail);
}

void OpenRangeEditor(Shell& shell, MapWindowWidget& window, RangePanelRow& row) {
  const RangePanelRow* wanted =
      row.fixed ? nullptr : RangeToEdit(shell.TheWorkspace().messages, &row);
  if (row.fixed || wanted != nullptr) EditorsOf(shell).OpenRange(window, wanted);
}

void PlugEditors(Shell& shell) {
  new Editors(shell);  // the shell frees it
  QObject::connect(&shell.Windows(), &MapWindows::trailEditRequested, &shell,
                   [&shell](MapWindowWidget* window, const TrailPanelRow* row) {
                     shell.Guard().Run([&] { OpenTrailEditor(shell, *window, *row); });
                   });
  QObject::connect(&shell.Windows(), &MapWindows::rangeEditRequested, &shell,
                   [&shell](MapWindowWidget* window, RangePanelRow* row) {
                     shell.Guard().Run([&] { OpenRangeEditor(shell, *window, *row); });
                   });
  shell.Commands().PlugOnMap(CommandAdd,
                             [&shell](MapWindowWidget& window) { AddOfFocus(shell, window); });
  // Only the window of a trail editor starts it.
  shell.Commands().Plug(CommandGraphicalInput, [&shell](ProgramWindow&) { shell.Beep(); });
}

}  // namespace orvane
