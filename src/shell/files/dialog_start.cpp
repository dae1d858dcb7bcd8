#include "shell/files/dialog_start.h"

#include "shell/map_window_widget.h"
#include "shell/shell.h"

namespace orvane {

DialogStart StartOfDialogs(Shell& shell, ProgramWindow& window) {
  const MapWindowWidget* mapWindow = window.MapSide();
  return {.mapFolder = mapWindow == nullptr ? std::string() : FolderOf(mapWindow->TheMap()),
          .defaultDirectory = shell.TheSettings().dialogDirectory};
}

}  // namespace orvane
