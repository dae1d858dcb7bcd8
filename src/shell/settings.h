#pragma once

#include "view/view_transform.h"

#include <string>

namespace orvane {

/// What new windows and file dialogs begin with.
struct Settings {
  /// Where file dialogs begin at first, without a map that has a folder.
  std::string dialogDirectory;
  /// Where the program keeps its own files; empty to keep none.
  std::string ownDirectory;
  /// The view from an earlier run; each new window on its map begins with it.
  SavedView savedView;
  /// Size of the panes of a new map window, in pixels.
  int trailWidth = 100;
  int trailHeight = 200;
};

}  // namespace orvane
