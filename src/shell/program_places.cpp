#include "shell/program_places.h"

#include "shell/files/local_files.h"
#include "view/preferences.h"

#include <QDir>
#include <QStandardPaths>

namespace orvane {

ProgramPlaces DefaultPlaces() {
  const std::string home = qgetenv("ORVANE_HOME").toStdString();
  const std::string user =
      PathOfLocalFile(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
  ProgramPlaces places;
  places.ownDirectory = DefaultDirectory(home, PathOfLocalFile(QDir::currentPath()), user);
  if (!home.empty()) places.dialogDirectory = places.ownDirectory;
  return places;
}

}  // namespace orvane
