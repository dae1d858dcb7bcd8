#include "shell/preferences_file.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "shell/files/local_files.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/shell.h"
#include "view/preferences.h"

#include <QDir>
#include <QStandardPaths>

#include <filesystem>
#include <system_error>
#include <utility>

namespace orvane {
namespace {

/// \return the map to open with, empty for none
std::string Read(Shell& shell, const std::string& path) {
  WindowPreferences preferences{
      .trailWidth = shell.trailWidth, .trailHeight = shell.trailHeight, .savedView = {}};
  {
    const MessageBatch batch(shell.Boxes(), Shell::tr("Reading the preferences"));
    ReadPreferences(shell.TheWorkspace(), path, preferences, [&](const std::string& fileName) {
      // This window takes the sizes read so far; the view is for another window.
      shell.trailWidth = preferences.trailWidth;
      shell.trailHeight = preferences.trailHeight;
      shell.OpenFile(fileName);
    });
  }
  shell.trailWidth = preferences.trailWidth;
  shell.trailHeight = preferences.trailHeight;
  shell.savedView = preferences.savedView;
  // Older files hold names as they were typed.
  shell.savedView.fileName = WholePath(preferences.savedView.fileName);
  // The windows of the command line are open already: update their names and menus.
  shell.RefreshMenus();
  for (MapWindowWidget* window : shell.OpenWindows()) window->View().RequestRepaint();
  return preferences.savedView.fileName;
}

void Write(Shell& shell, const std::string& path) {
  const WindowPreferences preferences{
      .trailWidth = shell.trailWidth, .trailHeight = shell.trailHeight, .savedView = {}};
  std::vector<const MapWindow*> views;
  for (MapWindowWidget* window : shell.OpenWindows()) views.push_back(&window->Shown());
  WritePreferences(shell.TheWorkspace(), path, preferences, views);
}

}  // namespace

void PlugPreferences(Shell& shell, const std::string& directory) {
  // Made absolute now, so that it stays the same if the working directory changes.
  shell.ownDirectory = WholePath(directory);
  std::error_code error;
  std::filesystem::create_directories(shell.ownDirectory, error);
  const std::string path = JoinPath(shell.ownDirectory, PreferencesName);
  shell.readPreferences = [&shell, path] { return Read(shell, path); };
  shell.writePreferences = [&shell, path] { Write(shell, path); };
}

void PlugDefaultPreferences(Shell& shell) {
  const std::string home = qgetenv("ORVANE_HOME").toStdString();
  const std::string user =
      PathOfLocalFile(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
  PlugPreferences(shell, DefaultDirectory(home, PathOfLocalFile(QDir::currentPath()), user));
  if (!home.empty()) shell.dialogDirectory = shell.ownDirectory;
}

}  // namespace orvane
