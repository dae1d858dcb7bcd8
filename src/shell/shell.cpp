#include "shell/shell.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "base/files.h"
#include "base/messages.h"
#include "commands/map_facts.h"
#include "commands/recent_files.h"
#include "mapfile/open_map.h"
#include "model/map_chain.h"
#include "paint/display_text.h"
#include "shell/editors/editor_commands.h"
#include "shell/file_commands.h"
#include "shell/files/local_files.h"
#include "shell/files/qt_file_dialogs.h"
#include "shell/help_commands.h"
#include "shell/map/map_view.h"
#include "shell/map_commands.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/messages/messages_window.h"
#include "shell/out_of_memory.h"
#include "shell/picture_commands.h"
#include "shell/progress/busy_work.h"
#include "shell/reload_commands.h"
#include "shell/task_window.h"
#include "shell/view_commands.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace orvane {
namespace {

/// The file with the recent maps, in the program's own directory.
constexpr auto RecentFilesName = "Orvane.recent";

}  // namespace

Shell::Shell(Workspace& workspace, BoxMessages& boxes)
    : dialogDirectory(PathOfLocalFile(QDir::currentPath())),
      beep([] { QApplication::beep(); }),
      endProgram([] { QCoreApplication::quit(); }),
      workspace_(workspace),
      boxes_(boxes),
      history_(workspace),
      dialogs_(std::make_unique<QtFileDialogs>()) {
  history_.Listen([this](const EditNews& news) { Follow(news); });
  PlugFileCommands(*this);
  PlugMapCommands(*this);
  PlugEditors(*this);
  PlugViewCommands(*this);
  PlugPictureCommands(*this);
  PlugHelpCommands(*this);
  PlugReload(*this);
  PlugMessagesWindow(*this);
}

Shell::~Shell() = default;

void Shell::Start(const std::vector<std::string>& files) {
  ReadRecentFiles();
  const auto recovered = recoverMaps ? recoverMaps() : std::vector<Map*>();
  if (!recovered) {
    endProgram();  // the preferences were not read yet, so they are not written
    return;
  }
  for (const std::string& file : files) OpenFile(file);
  const std::string defaultMap = readPreferences ? readPreferences() : std::string();
  if (files.empty() && !defaultMap.empty()) OpenFile(defaultMap);
  for (Map* map : *recovered) {
    if (!IsShown(*map)) OpenMapWindow(*map);
  }
  if (openWindows_.empty()) ShowTaskWindow();
  if (!files.empty() || !defaultMap.empty() || !recovered->empty()) return;
  ProgramWindow& asking =
      openWindows_.empty() ? static_cast<ProgramWindow&>(*taskWindow_) : *openWindows_.front();
  RunCommand(CommandOpenMap, asking);
}

bool Shell::IsShown(const Map& map) const { return WindowsOn(map) > 0; }

bool Shell::ExitFlow() {
  if (exiting_) return false;
  if (writePreferences) writePreferences();
  exiting_ = true;
  bool allClosed = true;
  while (allClosed && !openWindows_.empty()) allClosed = MapWinClose(*openWindows_.front());
  exiting_ = false;
  if (allClosed) endProgram();
  return allClosed;
}

MapWindowWidget* Shell::OpenFile(const std::string& path) {
  Map* map = ReadMap(path);
  return map == nullptr ? nullptr : &OpenMapWindow(*map);
}

Map* Shell::ReadMap(const std::string& path) {
  const QString name = DisplayText(BaseName(path));
  const BusyWork busy(workspace_, boxes_, tr("Opening %1").arg(name), clock);
  bool readable = false;
  Map* map = OpenMapUnlessCanceled(workspace_, NameOfOpenMap(path), &readable);
  if (map != nullptr && readable) NoteRecentFile(path);
  // Reading can extend trails of an open basis.
  for (MapWindowWidget* window : openWindows_) window->View().RequestRepaint();
  return map;
}

std::string Shell::NameOfOpenMap(const std::string& path) const {
  // A file and a link to it must not become two maps: the one saved later would undo the other.
  for (const Map& map : workspace_.maps) {
    if (map.fileName != path && (map.flags & MapUntitled) == 0 && IsSameFile(map.fileName, path)) {
      return map.fileName;
    }
  }
  return path;
}

void Shell::ReadRecentFiles() {
  if (ownDirectory.empty()) return;
  const auto text = ReadWholeFile(JoinPath(ownDirectory, RecentFilesName));
  if (text) recentFiles_ = ParseRecentFiles(*text);
}

void Shell::NoteRecentFile(const std::string& path) {
  AddRecentFile(recentFiles_, WholePath(path));
  WriteRecentFiles();
}

void Shell::WriteRecentFiles() {
  // Failing to write this list is not worth a message.
  if (!ownDirectory.empty()) {
    WriteFileAtomically(JoinPath(ownDirectory, RecentFilesName), RecentFilesText(recentFiles_));
  }
}

void Shell::OpenRecentFile(const std::string& path) {
  std::error_code error;
  const bool isOpen = FindOpenMap(workspace_, NameOfOpenMap(path)) != nullptr;
  if (isOpen || std::filesystem::exists(path, error)) {
    OpenFile(path);
    return;
  }
  const int answer = AskUser(workspace_.messages, "Recent Maps", "Remove", "Keep", "",
                             "%s is not there any more. Remove it from the list?", {path});
  if (answer != 1) return;
  recentFiles_.erase(std::remove(recentFiles_.begin(), recentFiles_.end(), path),
                     recentFiles_.end());
  WriteRecentFiles();
}

MapWindowWidget& Shell::NewMap() {
  Map& map = MakeMap(workspace_, "Untitled");
  map.flags |= MapUntitled;
  return OpenMapWindow(map);
}

MapWindowWidget& Shell::OpenMapWindow(Map& map) {
  // The window frees itself when it is closed.
  auto* window = new MapWindowWidget(*this, map);
  window->View().TakeSavedView(savedView);
  openWindows_.insert(openWindows_.begin(), window);
  ShowTitles();
  window->show();
  if (taskWindow_) taskWindow_->hide();
  Q_EMIT windowsChanged();
  return *window;
}

void Shell::ShowTitles() {
  for (MapWindowWidget* window : openWindows_) window->ShowTitle();
}

int Shell::WindowsOn(const Map& map) const {
  return static_cast<int>(
      std::count_if(openWindows_.begin(), openWindows_.end(),
                    [&](const MapWindowWidget* window) { return &window->TheMap() == &map; }));
}

int Shell::FreeWindowNumber(const Map& map) const {
  for (int number = 1;; ++number) {
    const bool isTaken = std::any_of(openWindows_.begin(), openWindows_.end(), [&](auto* window) {
      return &window->TheMap() == &map && window->Number() == number;
    });
    if (!isTaken) return number;
  }
}

void Shell::ShowTaskWindow() {
  if (!taskWindow_) taskWindow_ = std::make_unique<TaskWindow>(*this);
  taskWindow_->ShowMenu();
  taskWindow_->show();
}

bool Shell::MapWinClose(ProgramWindow& window) {
  switch (window.Kind()) {
    case WindowKind::Map:
    case WindowKind::TrailEditor:
    case WindowKind::RangeEditor:
    case WindowKind::Elevation:
    case WindowKind::TrailSummary:
    case WindowKind::PointIndex:
    case WindowKind::RangeStats:
      return window.TryClose();
    case WindowKind::Task:
      break;
  }
  NoteInternalError(workspace_.messages, "Unknown window type %s in MapWinClose",
                    {std::to_string(static_cast<int>(window.Kind()))});
  window.Widget().close();
  return true;
}

void Shell::Forget(MapWindowWidget& window) {
  const auto found = std::find(openWindows_.begin(), openWindows_.end(), &window);
  if (found == openWindows_.end()) return;
  openWindows_.erase(found);
  ShowTitles();
  if (openWindows_.empty() && !exiting_ && !QCoreApplication::closingDown()) {
    if (!taskWindow_) taskWindow_ = std::make_unique<TaskWindow>(*this);
    taskWindow_->TakePlaceOf(window);  // as if the map had left its window
    ShowTaskWindow();
  }
  Q_EMIT windowsChanged();
}

void Shell::RunCommand(int id, ProgramWindow& window) {
  const CommandInfo* command = FindCommand(IsOldHelpCommand(id) ? CommandHelp : id);
  if (command == nullptr) return;
  RunWithinMemory(*this, [&] {
    if (window.Answer(command->id)) return;
    const auto handler = handlers_.find(command->id);
    if (handler == handlers_.end()) return Beep();
    handler->second(window);
  });
}

void Shell::Plug(CommandId id, Handler handler) { handlers_[id] = std::move(handler); }

void Shell::PlugOnMap(CommandId id, const MapHandler& handler) {
  Plug(id, [this, handler](ProgramWindow& window) {
    window.Kind() == WindowKind::Map ? handler(*window.MapSide()) : Beep();
  });
}

void Shell::PlugOnMapSide(CommandId id, const MapHandler& handler) {
  Plug(id, [this, handler](ProgramWindow& window) {
    window.MapSide() != nullptr ? handler(*window.MapSide()) : Beep();
  });
}

bool Shell::IsPlugged(CommandId id) const { return handlers_.find(id) != handlers_.end(); }

void Shell::RefreshMenus() {
  for (MapWindowWidget* window : openWindows_) {
    window->Menu().At(CommandEuropeanDates).checked = workspace_.preferences.europeanDates;
    window->Menu().At(CommandSmoothLines).checked = workspace_.preferences.smoothLines;
    window->RefreshMenu();
  }
  if (taskWindow_) taskWindow_->ShowMenu();
}

void Shell::Follow(const EditNews& news) {
  for (MapWindowWidget* window : openWindows_) window->FollowEdit(news);
  TellDirty(*news.map);
  std::vector<Map*> maps = news.delta->Maps();
  if (!news.delta->Touches(*news.map)) maps.push_back(news.map);
  for (const Map* map : maps) Q_EMIT mapEdited(map);
}

void Shell::TellDirty(Map& map) {
  for (MapWindowWidget* window : openWindows_) {
    window->ShowTitle();
    window->RefreshMenu();
  }
  Q_EMIT mapDirtyChanged(&map);
}

void Shell::NoteReread(Map& map, bool wasDirty) {
  if (wasDirty) TellDirty(map);
  Q_EMIT mapReread(&map);
}

DialogStart Shell::StartOfDialogs(ProgramWindow& window) const {
  const MapWindowWidget* mapWindow = window.MapSide();
  return {.mapFolder = mapWindow == nullptr ? std::string() : FolderOf(mapWindow->TheMap()),
          .defaultDirectory = dialogDirectory};
}

SaveContext Shell::Saving() {
  return {.dialogs = *dialogs_,
          .files = files_,
          .defaultDirectory = dialogDirectory,
          .saved =
              [this](Map& map) {
                history_.NoteSaved(map);
                TellDirty(map);
              },
          .renamed = [this](Map& /*map*/) { ShowTitles(); },
          .written =
              [this](Map& map, const std::string& path) {
                NoteRecentFile(path);
                // A map that had no file until now can be reloaded.
                for (MapWindowWidget* window : openWindows_) {
                  if (&window->TheMap() == &map) window->RefreshMarks();
                }
                Q_EMIT mapSaved(&map, LocalFileName(path));
              }};
}

}  // namespace orvane
