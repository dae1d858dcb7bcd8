#include "shell/reports/elevation_commands.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "reports/profile_choice.h"
#include "shell/bring_to_front.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/reports/elevation_window.h"
#include "shell/shell.h"

#include <optional>
#include <utility>

namespace orvane {
namespace {

void Show(Shell& shell, MapWindowWidget& window, std::optional<ElevationView> view) {
  if (!view) return;
  // It deletes itself when it is closed.
  BringToFront(*new ElevationWindow(shell, window, std::move(*view)));
}

void OpenProfile(Shell& shell, MapWindowWidget& window) {
  switch (window.Focus()) {
    case FocusPlace::TrailList:
      Show(shell, window, OpenSelectedProfile(window.Shown()));
      return;
    case FocusPlace::MapView:
      window.View().SetTransectMode(true);
      PostNote(shell.TheWorkspace().messages, "Please drag out a transect");
      return;
    case FocusPlace::RangeList:
    case FocusPlace::Neither:
      RefuseProfile(window.Shown());
  }
}

/// Opens the profile of the transect that was just dragged across a map.
void OpenTransectProfile(Shell& shell, MapWindowWidget& window) {
  shell.Guard().Run([&] {
    std::optional<ElevationView> view = OpenDraggedTransect(window.Shown());
    window.View().SetTransectMode(false);
    Show(shell, window, std::move(view));
  });
}

}  // namespace

void PlugElevation(Shell& shell) {
  shell.Commands().PlugOnMap(CommandElevation,
                             [&shell](MapWindowWidget& window) { OpenProfile(shell, window); });
  QObject::connect(&shell.Windows(), &MapWindows::transectDrawn, &shell.Windows(),
                   [&shell](MapWindowWidget* window) { OpenTransectProfile(shell, *window); });
}

}  // namespace orvane
