#include "shell/map_commands.h"

#include "base/messages.h"
#include "commands/map_facts.h"
#include "paint/display_text.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/shell.h"
#include "trails/checks.h"
#include "view/panel_rows.h"

#include <vector>

namespace orvane {
namespace {

/// Bytes of an answer on the magnetic deviation, with the one that ends it.
constexpr size_t DeviationSize = 30;

void CheckTrails(Shell& shell, ProgramWindow& window) {
  if (window.Kind() != WindowKind::Map || window.MapSide()->Focus() == FocusPlace::RangeList) {
    shell.Beep();
    return;
  }
  MapWindowWidget& mapWindow = *window.MapSide();
  Messages& messages = shell.TheWorkspace().messages;
  const MessageBatch batch(shell.Boxes(), Shell::tr("Checking trails"));
  if (mapWindow.Focus() != FocusPlace::TrailList) {
    CheckAllTrails(mapWindow.TheMap(), messages);
    return;
  }
  std::vector<const Trail*> selected;
  for (const TrailPanelRow* row : TrailRowsInOrder(mapWindow.View().View().trailViews)) {
    if (row->selected && row->trail != nullptr) selected.push_back(row->trail);
  }
  CheckSelectedTrails(selected, messages);
}

/// That the map has a deviation of its own is not noted here, and it is not solved again: positions
/// change only where the survey does.
void SetDeviation(Shell& shell, ProgramWindow& window) {
  if (window.MapSide() == nullptr) {
    shell.Beep();
    return;
  }
  Map& map = window.MapSide()->TheMap();
  Messages& messages = shell.TheWorkspace().messages;
  std::string answer = DeviationText(map.magneticDeviation);
  if (!PromptForText(messages, "Magnetic Deviation", "What is the local magnetic deviation?",
                     answer, DeviationSize)) {
    return;
  }
  const std::optional<double> deviation = ParseDeviation(answer);
  if (!deviation) {
    NoteError(messages, "Bad number");
    return;
  }
  map.magneticDeviation = *deviation;
  shell.SetMapDirty(map, true);
}

}  // namespace

void PlugMapCommands(Shell& shell) {
  shell.Plug(CommandCheckTrails, [&shell](ProgramWindow& window) { CheckTrails(shell, window); });
  shell.Plug(CommandDeviation, [&shell](ProgramWindow& window) { SetDeviation(shell, window); });
  // These stand in the menu and do nothing: texts are edited in dialogs, which have their own.
  for (const CommandId id : {CommandCut, CommandCopy, CommandPaste}) {
    shell.Plug(id, [](ProgramWindow&) {});
  }
  // Editors delete their rows themselves. In a map window it has never done more than this.
  shell.Plug(CommandDelete,
             [&shell](ProgramWindow&) { NoteWarning(shell.TheWorkspace().messages, "NYI"); });
}

}  // namespace orvane
