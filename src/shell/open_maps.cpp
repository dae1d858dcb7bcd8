#include "shell/open_maps.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "base/files.h"
#include "base/messages.h"
#include "commands/recent_files.h"
#include "mapfile/open_map.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"
#include "shell/map_windows.h"
#include "shell/progress/busy_work.h"
#include "shell/settings.h"
#include "shell/surroundings.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <optional>
#include <system_error>

namespace orvane {
namespace {

/// The file with the recent maps, in the program's own directory.
constexpr auto RecentFilesName = "Orvane.recent";

}  // namespace

OpenMaps::OpenMaps(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings,
                   const Settings& settings, MapWindows& windows)
    : workspace_(workspace),
      boxes_(boxes),
      surroundings_(surroundings),
      settings_(settings),
      windows_(windows),
      history_(workspace) {
  history_.Listen([this](const EditNews& news) { Follow(news); });
  history_.ListenToSteps([this] { Q_EMIT stepsChanged(); });
}

Map* OpenMaps::Read(const std::string& path) {
  const QString name = DisplayText(BaseName(path));
  const BusyWork busy(workspace_, boxes_, QStringLiteral("Opening %1").arg(name),
                      [this] { return surroundings_.Now(); });
  bool readable = false;
  Map* map = ReadUnlessCanceled(path, readable);
  if (map != nullptr && readable) NoteRecent(path);
  // Reading can extend trails of an open basis.
  windows_.RequestRepaint();
  return map;
}

/// Reading can extend trails of an open basis. No step may lead to a state without that.
Map* OpenMaps::ReadUnlessCanceled(const std::string& path, bool& readable) {
  std::optional<MapSnapshot> before;
  if (history_.HasSteps()) before.emplace(workspace_);
  try {
    Map* map = OpenMapUnlessCanceled(workspace_, NameOf(path), &readable);
    if (before) {
      for (const Map* changed : before->TakeDelta().Maps()) history_.Forget(*changed);
    }
    return map;
  } catch (const std::bad_alloc&) {
    // Maps can have been read again to get rid of the new one.
    for (const Map& map : workspace_.maps) history_.Forget(map);
    throw;
  }
}

Map& OpenMaps::New() {
  Map& map = MakeMap(workspace_, "Untitled");
  map.flags |= MapUntitled;
  return map;
}

std::string OpenMaps::NameOf(const std::string& path) const {
  // A file and a link to it must not become two maps: the one saved later would undo the other.
  for (const Map& map : workspace_.maps) {
    if (map.fileName != path && !IsUntitled(map) && IsSameFile(map.fileName, path)) {
      return map.fileName;
    }
  }
  return path;
}

void OpenMaps::ReadRecent() {
  if (settings_.ownDirectory.empty()) return;
  const auto text = ReadWholeFile(JoinPath(settings_.ownDirectory, RecentFilesName));
  if (text) recent_ = ParseRecentFiles(*text);
}

void OpenMaps::NoteRecent(const std::string& path) {
  AddRecentFile(recent_, WholePath(path));
  WriteRecent();
}

void OpenMaps::WriteRecent() const {
  // Failing to write this list is not worth a message.
  if (!settings_.ownDirectory.empty()) {
    WriteFileAtomically(JoinPath(settings_.ownDirectory, RecentFilesName),
                        RecentFilesText(recent_));
  }
}

bool OpenMaps::AskForRecent(const std::string& path) {
  std::error_code error;
  const bool isOpen = FindOpenMap(workspace_, NameOf(path)) != nullptr;
  if (isOpen || std::filesystem::exists(path, error)) return true;
  const int answer = AskUser(workspace_.messages, "Recent Maps", "Remove", "Keep", "",
                             "%s is not there any more. Remove it from the list?", {path});
  if (answer != 1) return false;
  recent_.erase(std::remove(recent_.begin(), recent_.end(), path), recent_.end());
  WriteRecent();
  return false;
}

void OpenMaps::Follow(const EditNews& news) {
  windows_.FollowEdit(news);
  const std::vector<Map*> maps = news.Maps();
  // An undo can clear the mark of each of them.
  AnnounceDirty(maps);
  if (news.contents != nullptr) Q_EMIT mapReread(news.map);
  for (const Map* map : maps) Q_EMIT mapEdited(map);
}

void OpenMaps::AnnounceDirty(const std::vector<Map*>& maps) {
  windows_.ShowDirty();
  for (Map* map : maps) Q_EMIT mapDirtyChanged(map);
}

SaveContext OpenMaps::Saving() {
  return {.dialogs = surroundings_.Dialogs(),
          .files = files_,
          .defaultDirectory = settings_.dialogDirectory,
          .saved =
              [this](Map& map) {
                history_.NoteSaved(map);
                AnnounceDirty({&map});
              },
          .renamed = [this](Map& /*map*/) { windows_.ShowTitles(); },
          .written =
              [this](Map& map, const std::string& path) {
                NoteRecent(path);
                // A map that had no file until now can be reloaded.
                windows_.RefreshMarksOn(map);
                Q_EMIT mapSaved(&map, LocalFileName(path));
              }};
}

}  // namespace orvane
