#pragma once

#include "commands/file_dialogs.h"
#include "commands/find_box.h"
#include "commands/save_map.h"
#include "model/workspace.h"
#include "shell/program_window.h"
#include "view/view_transform.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvane {

class BoxMessages;
class MapWindowWidget;
class TaskWindow;

/// What all windows of the program share: the open windows, the one dispatcher of commands, the
/// flows that open, save and close maps. Windows free themselves when they are closed.
///
/// A command is carried out by a handler that is plugged in under its number. The shell plugs in
/// those of files, of the view and of help; a window that comes later plugs in its own. A command
/// without a handler is disabled in every menu.
class Shell final : public QObject {
  Q_OBJECT

 public:
  using Handler = std::function<void(ProgramWindow& window)>;

  /// \param workspace  its messages must be `boxes`; both must outlive every window
  Shell(Workspace& workspace, BoxMessages& boxes);
  ~Shell() override;

  // --- Start and end ------------------------------------------------------------------------

  /// Opens the files named at the start, then reads the preferences, and without a file opens the
  /// map that these name, or asks for one. What is recovered is read before all files, so that each
  /// is found open then, and has a window in any case.
  void Start(const std::vector<std::string>& files);

  /// Writes the preferences, closes all windows, each after its questions, and ends the program.
  /// \return false if the user cancelled; the program goes on with what is still open
  bool ExitFlow();

  // --- Windows ------------------------------------------------------------------------------

  /// Opens a map file, or finds the map if it is open, and shows it in a new window. A file that
  /// does not open has its message, and then an empty window of that name.
  /// \return null if the user has called it off; then there is neither a map nor a window
  MapWindowWidget* OpenFile(const std::string& path);
  /// As `OpenFile`, without a window.
  Map* ReadMap(const std::string& path);
  /// Shows a new, empty map in a new window.
  MapWindowWidget& NewMap();
  /// Shows a map in a new window; several may show one map.
  MapWindowWidget& OpenMapWindow(Map& map);

  /// The open map windows, newest first.
  const std::vector<MapWindowWidget*>& OpenWindows() const { return openWindows_; }

  /// Closes a window of any kind, after its questions. One of an unknown kind, or the one that
  /// stands where no map is open, is a fault of the program; it is told, and the window goes.
  /// \return false if the user cancelled
  bool MapWinClose(ProgramWindow& window);

  /// Gives a new window on a map its number: the smallest that no other window on the map has.
  int FreeWindowNumber(const Map& map) const;
  /// \return how many windows show a map
  int WindowsOn(const Map& map) const;

  /// Called by a map window when it is about to go.
  void Forget(MapWindowWidget& window);

  // --- Commands -----------------------------------------------------------------------------

  /// Carries out a command that was picked in a window. An id that is no command does nothing.
  void RunCommand(int id, ProgramWindow& window);
  /// From now on `handler` carries out the command.
  void Plug(CommandId id, Handler handler);
  bool IsPlugged(CommandId id) const;
  /// Brings the menus of all windows up to date.
  void RefreshMenus();
  /// Answers a command that does not fit.
  void Beep() const { beep(); }

  // --- Maps ---------------------------------------------------------------------------------

  /// Sets or clears `MapDirty`, and tells the windows if that is a change.
  void SetMapDirty(Map& map, bool dirty);
  /// After an operation that changed a map and marked it: tells the windows.
  /// \param wasDirty  whether the map was marked before
  void NoteEdit(Map& map, bool wasDirty);
  /// The map has got other trails, ranges or places: every window on it, or on one that rests on
  /// it, shows them.
  void MapChanged(const Map& map);
  /// A map was read again, and the windows show it: tells them of its flags, and the others.
  /// \param wasDirty  whether the map was marked before
  void NoteReread(Map& map, bool wasDirty);

  // --- What the flows share -----------------------------------------------------------------

  Workspace& TheWorkspace() { return workspace_; }
  BoxMessages& Boxes() { return boxes_; }
  FileDialogs& Dialogs() { return *dialogs_; }
  /// Where file dialogs over a window begin if they were never used.
  DialogStart StartOfDialogs(ProgramWindow& window) const;
  void SetDialogs(std::unique_ptr<FileDialogs> dialogs) { dialogs_ = std::move(dialogs); }
  FileSpecifications& Files() { return files_; }
  /// The maps opened or saved last, newest first.
  const std::vector<std::string>& RecentFiles() const { return recentFiles_; }
  /// Opens one of these. If its file is gone, offers to take it from the list.
  void OpenRecentFile(const std::string& path);
  SaveContext Saving();

  /// Where file dialogs begin at first, without a map that has a folder.
  std::string dialogDirectory;
  /// Where the program keeps its own files; empty to keep none.
  std::string ownDirectory;
  /// The view of an earlier run; each new window of its map begins with it.
  SavedView savedView;
  /// Size of the lists of a new map window.
  int trailWidth = 100;
  int trailHeight = 200;

  /// Asks what to find, in every window that searches.
  FindBox findBox;
  /// What sounds for a command that does not fit, and what ends the program. A test puts in its
  /// own.
  std::function<void()> beep;
  std::function<void()> endProgram;
  /// The time for long work (`BusyWork`); that of the machine if empty.
  std::function<std::chrono::milliseconds()> clock;
  /// Reads the preferences and tells the map to open with, or an empty text; writes them.
  std::function<std::string()> readPreferences;
  std::function<void()> writePreferences;
  /// Reads the maps that an earlier run left unsaved and that the user wants back.
  std::function<std::vector<Map*>()> recoverMaps;
  /// Writes recovery copies of all unsaved maps at once.
  std::function<void()> writeCopies;

 Q_SIGNALS:
  void mapDirtyChanged(orvane::Map* map);
  /// The map was changed, be it for the first time since it was saved or not.
  void mapEdited(const orvane::Map* map);
  void mapSaved(orvane::Map* map, const QString& path);
  /// The map was read again from its file: nothing that it held before is there any more.
  void mapReread(orvane::Map* map);
  /// The user answered the offer of a window to reload its map.
  void reloadAnswered(orvane::MapWindowWidget* window, bool reload);
  /// The user closed a window with "Don't Save".
  void changesDiscarded(orvane::Map* map);
  void windowsChanged();

 private:
  void TellDirty(Map& map);
  void ShowTaskWindow();
  bool IsShown(const Map& map) const;
  std::string NameOfOpenMap(const std::string& path) const;
  void ReadRecentFiles();
  void NoteRecentFile(const std::string& path);
  void WriteRecentFiles();
  void ShowTitles();

  Workspace& workspace_;
  BoxMessages& boxes_;
  std::unique_ptr<FileDialogs> dialogs_;
  FileSpecifications files_;
  std::vector<std::string> recentFiles_;
  std::map<CommandId, Handler> handlers_;
  std::vector<MapWindowWidget*> openWindows_;
  std::unique_ptr<TaskWindow> taskWindow_;
  bool exiting_ = false;
};

}  // namespace orvane
