#pragma once

#include "model/workspace.h"

#include <string>

namespace orvane {

class BoxMessages;
class MapWindowWidget;

/// What all windows of the program share. Windows free themselves when they are closed.
class Shell {
 public:
  /// \param workspace  its messages must be `boxes`; both must outlive every window
  Shell(Workspace& workspace, BoxMessages& boxes);

  /// Opens a map file, or finds the map if it is open, and shows it in a new window. A file that
  /// does not open has its message, and then an empty window of that name.
  MapWindowWidget& OpenFile(const std::string& path);

  /// Shows a new, empty map in a new window.
  MapWindowWidget& NewMap();

 private:
  MapWindowWidget& OpenMapWindow(Map& map);

  Workspace& workspace_;
  BoxMessages& boxes_;
};

}  // namespace orvane
