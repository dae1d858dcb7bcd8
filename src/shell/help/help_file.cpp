#include "shell/help/help_file.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "commands/save_map.h"
#include "shell/files/local_files.h"
#include "shell/shell.h"

#include <QFile>
#include <QFileInfo>
#include <QHelpEngineCore>

namespace orvane {

HelpFileState LookAtHelpFile(const std::string& path) {
  const QString name = LocalFileName(path);
  QFile file(name);
  if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly)) {
    return HelpFileState::Unreadable;
  }
  // A help file is a database, and an empty file passes for an empty database.
  const bool isOurs = QHelpEngineCore::namespaceName(name) == QLatin1String(HelpNamespace);
  return isOurs ? HelpFileState::Good : HelpFileState::Invalid;
}

std::vector<std::string> HelpFilePlaces(const std::string& ownDirectory,
                                        const std::string& programDirectory) {
  std::vector<std::string> places;
  if (!ownDirectory.empty()) places.push_back(JoinPath(ownDirectory, HelpFileName));
  places.push_back(JoinPath(programDirectory, HelpFileName));
  places.push_back(JoinPath(JoinPath(programDirectory, "../share/orvane"), HelpFileName));
  return places;
}

std::optional<std::string> FindHelpFile(Shell& shell, const std::string& programDirectory,
                                        FileSpecification& file) {
  for (const std::string& place :
       HelpFilePlaces(shell.TheSettings().ownDirectory, programDirectory)) {
    if (LookAtHelpFile(place) == HelpFileState::Good) return place;
  }
  Messages& messages = shell.TheWorkspace().messages;
  while (true) {
    PrepareSpecification(file, shell.Maps().Files().maps, {"", shell.TheSettings().dialogDirectory},
                         "qch");
    if (file.name.empty()) file.name = HelpFileName;
    if (!WasChosen(shell.Dialogs().AskOpen("Please Find and Open help file...", file), messages))
      return std::nullopt;
    switch (LookAtHelpFile(PathOf(file))) {
      case HelpFileState::Good:
        return PathOf(file);
      case HelpFileState::Unreadable:
        NoteError(messages, "Help file is unreadable, please choose another.");
        break;
      case HelpFileState::Invalid:
        NoteError(messages, "Invalid help file, please choose another.");
        break;
    }
  }
}

}  // namespace orvane
