#pragma once

#include "base/files.h"
#include "view/view_transform.h"

#include <functional>
#include <string>
#include <vector>

namespace orvane {

struct Workspace;

/// The file that keeps the user's settings and the open windows from one run to the next: text in
/// lines, each a key and a value.

/// Its name; it is in the default directory.
constexpr auto PreferencesName = "Orvane.prf";

/// What the file holds beside the settings in `Workspace::preferences`. What it does not say stays
/// as it is.
struct WindowPreferences {
  int trailWidth = 100;   ///< width of the lists of a map window, in pixels; 0 hides them
  int trailHeight = 200;  ///< height of the list of trails, in pixels; 0 hides it
  SavedView savedView;    ///< the map that the file names last, and the last value of each kind
};

/// Reads the file; called once, after the maps of the command line were opened.
///
/// A line that is not a setting is reported as an internal error and reading continues; a missing
/// file is fine. A file may name several maps: all but the last are opened at once, in the
/// order of the file; the last is left to the caller, as `savedView.fileName`.
/// \param openMap  opens a map in a window of its own. The saved view is not for these windows.
void ReadPreferences(Workspace& workspace, const std::string& path, WindowPreferences& preferences,
                     const std::function<void(const std::string& fileName)>& openMap);

/// What is written: each line ends in carriage return and line feed. The newest window is
/// first, and since the last one read is the one whose view comes back, it is the oldest that shows
/// what it showed. Maps without a name of their own are left out, and so are names that could not
/// be read back: with an end of a line in them, or too long for a line.
/// \param windows  the open map windows, newest first
std::string PreferencesText(const Workspace& workspace, const WindowPreferences& preferences,
                            const std::vector<const MapWindow*>& windows);

/// Writes the file so that a crash or a full disk leaves the old one. A file that can't be written
/// gives no message.
/// \param path    empty to write nothing
/// \param system  what the file is written with; a test lets its calls fail
void WritePreferences(const Workspace& workspace, const std::string& path,
                      const WindowPreferences& preferences,
                      const std::vector<const MapWindow*>& windows,
                      const FileSystem& system = SystemFiles());

/// The directory of the program's own files.
/// \param home            what the user has set for it in `ORVANE_HOME`; empty for nothing
/// \param startDirectory  where the program was started: used if it has a preferences file
/// \param userDirectory   where the platform keeps the settings of each user
std::string DefaultDirectory(const std::string& home, const std::string& startDirectory,
                             const std::string& userDirectory);

}  // namespace orvane
