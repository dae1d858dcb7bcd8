#include "shell/shell.h"

#include "base/file_names.h"
#include "mapfile/open_map.h"
#include "paint/display_text.h"
#include "shell/map_window_widget.h"
#include "shell/message_boxes.h"

#include <QCoreApplication>

namespace orvane {

Shell::Shell(Workspace& workspace, BoxMessages& boxes) : workspace_(workspace), boxes_(boxes) {}

MapWindowWidget& Shell::OpenFile(const std::string& path) {
  Map* map = nullptr;
  {
    const QString name = DisplayText(BaseName(path));
    const MessageBatch batch(boxes_, QCoreApplication::translate("Shell", "opening %1").arg(name));
    map = &OpenMap(workspace_, path);
  }
  return OpenMapWindow(*map);
}

MapWindowWidget& Shell::NewMap() {
  Map& map = MakeMap(workspace_, "Untitled");
  map.flags |= MapUntitled;
  return OpenMapWindow(map);
}

MapWindowWidget& Shell::OpenMapWindow(Map& map) {
  // The window frees itself when it is closed.
  auto* window = new MapWindowWidget(*this, map);
  window->show();
  return *window;
}

}  // namespace orvane
