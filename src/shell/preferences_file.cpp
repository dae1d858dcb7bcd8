#include "shell/preferences_file.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/shell.h"
#include "view/preferences.h"

#include <vector>

namespace orvane {

PreferencesFile::PreferencesFile(Shell& shell, const std::string& directory)
    : shell_(shell), path_(JoinPath(directory, PreferencesName)) {}

std::string PreferencesFile::Read() {
  Settings& settings = shell_.TheSettings();
  WindowPreferences preferences{
      .trailWidth = settings.trailWidth, .trailHeight = settings.trailHeight, .savedView = {}};
  {
    const MessageBatch batch(shell_.Boxes(), QStringLiteral("Reading the preferences"));
    ReadPreferences(shell_.TheWorkspace(), path_, preferences, [&](const std::string& fileName) {
      // This window takes the sizes read so far; the view is for another window.
      settings.trailWidth = preferences.trailWidth;
      settings.trailHeight = preferences.trailHeight;
      shell_.OpenFile(fileName);
    });
  }
  settings.trailWidth = preferences.trailWidth;
  settings.trailHeight = preferences.trailHeight;
  settings.savedView = preferences.savedView;
  // Older files hold names as they were typed.
  settings.savedView.fileName = WholePath(preferences.savedView.fileName);
  // The windows of the command line are open already: update their names and menus.
  shell_.Windows().ShowPreferences();
  shell_.Windows().RequestRepaint();
  return preferences.savedView.fileName;
}

void PreferencesFile::Write() {
  const Settings& settings = shell_.TheSettings();
  const WindowPreferences preferences{
      .trailWidth = settings.trailWidth, .trailHeight = settings.trailHeight, .savedView = {}};
  std::vector<const MapWindow*> views;
  for (MapWindowWidget* window : shell_.Windows().All()) views.push_back(&window->Shown());
  WritePreferences(shell_.TheWorkspace(), path_, preferences, views);
}

}  // namespace orvane
