#pragma once

#include "commands/reload_map.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <string>

namespace orvane {

class MapWindowWidget;
class Shell;
struct Map;

/// Reads a map again from its file as an edit, after a question if it has changes, and all maps that
/// are tied to it by bases. Every window on one of them keeps its view, its open groups and its selection;
/// the windows that depend on these are closed first.
/// \return false if the user cancelled, or if the file can't be read, which a message says
bool ReloadMap(Shell& shell, Map& map);

/// Watches the files of all maps that a window shows, of their bases, and the files that they include,
/// and lets the windows offer to
/// reload those that have changed. It looks when the file system reports a change, when the program
/// comes to the front, and when a file is opened again.
class ReloadWatch final : public QObject {
  Q_OBJECT

 public:
  /// \param shell  owns this from now on
  explicit ReloadWatch(Shell& shell);

  /// Looks at all files now.
  void Look();

 private:
  void WatchFiles();
  void TakeAnswer(MapWindowWidget* window, bool reload);

  struct News {
    Map* map = nullptr;  ///< with other contents on the disk; null if there is none
    std::string file;    ///< the file that has changed
  };
  News NewsFor(MapWindowWidget& window);

  Shell& shell_;
  FileNews news_;
  QFileSystemWatcher files_;
  QTimer soon_;
};

/// Plugs in "Reload from Disk", and the watch.
void PlugReload(Shell& shell);

}  // namespace orvane
