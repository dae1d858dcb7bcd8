#include "shell/map_commands.h"

#include "base/messages.h"
#include "commands/deviation_offer.h"
#include "commands/map_edits.h"
#include "commands/map_facts.h"
#include "paint/display_text.h"
#include "panes/pane_selection.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/panes/view_control.h"
#include "shell/shell.h"
#include "trails/checks.h"
#include "view/panel_rows.h"

#include <vector>

namespace orvane {
namespace {

/// Most bytes of the answer on the magnetic deviation, including the final zero.
constexpr size_t DeviationSize = 30;

void CheckTrails(Shell& shell, MapWindowWidget& mapWindow) {
  if (mapWindow.Focus() == FocusPlace::RangeList) {
    shell.Beep();
    return;
  }
  Messages& messages = shell.TheWorkspace().messages;
  const MessageBatch batch(shell.Boxes(), QStringLiteral("Checking trails"));
  if (mapWindow.Focus() != FocusPlace::TrailList) {
    CheckAllTrails(mapWindow.TheMap(), messages);
    return;
  }
  CheckSelectedTrails(mapWindow.Shown(), messages);
}

/// If a model of the field is installed, its value is in the list of the field. Does not set
/// `MapHasDeviation` and does not solve the map: positions change only with the survey.
void SetDeviation(Shell& shell, MapWindowWidget& window) {
  Map& map = window.TheMap();
  Messages& messages = shell.TheWorkspace().messages;
  TextPrompt prompt{.title = "Magnetic Deviation",
                    .message = "What is the local magnetic deviation?",
                    .text = DeviationText(map.magneticDeviation),
                    .size = DeviationSize,
                    .columns = 0,
                    .earlier = {}};
  if (const auto offer = OfferDeviation(map, LocalDate())) {
    prompt.message += '\n' + offer->sentence;
    prompt.earlier = {offer->text};
  }
  const std::optional<std::string> answer = AskForText(messages, prompt);
  if (!answer) return;
  const std::optional<double> deviation = ParseDeviation(*answer);
  if (!deviation) {
    NoteError(messages, "Bad number");
    return;
  }
  shell.History().Apply(DeviationEdit(map, *deviation));
}

}  // namespace

void PlugMapCommands(Shell& shell) {
  shell.Commands().PlugOnMap(CommandCheckTrails,
                             [&shell](MapWindowWidget& window) { CheckTrails(shell, window); });
  shell.Commands().PlugOnMapSide(
      CommandDeviation, [&shell](MapWindowWidget& window) { SetDeviation(shell, window); });
  shell.Commands().PlugOnMap(CommandViewControl,
                             [&shell](MapWindowWidget& window) { ViewControl(shell, window); });
  // These are in the menu and do nothing: texts are edited in dialogs, which handle them.
  for (const CommandId id : {CommandCut, CommandCopy, CommandPaste}) {
    shell.Commands().Plug(id, [](ProgramWindow&) {});
  }
}

}  // namespace orvane
