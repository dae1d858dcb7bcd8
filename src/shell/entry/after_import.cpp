#include "shell/entry/after_import.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"
#include "view/fit_to_map.h"

namespace orvane {

void ShowImported(Shell& shell, Map& map, bool wasEmpty, const std::string& sentence) {
  for (MapWindowWidget* window : shell.Windows().All()) {
    if (!wasEmpty || &window->TheMap() != &map) continue;
    FitToMap(window->Shown());
    window->View().RequestRepaint();
  }
  if (!sentence.empty()) shell.TheWorkspace().messages.Post(Severity::Note, sentence);
}

}  // namespace orvane
