#pragma once

#include "commands/file_dialogs.h"
#include "commands/find_box.h"
#include "commands/save_map.h"
#include "editing/edit_history.h"
#include "model/workspace.h"
#include "shell/program_window.h"
#include "view/view_transform.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

class BoxMessages;
class MapWindowWidget;
class TaskWindow;

/// What all windows of the program share: the list of open windows, the dispatcher of commands, and
/// the flows that open, save and close maps. Windows delete themselves when they are closed.
///
/// Each command runs a handler that is plugged in under its number. The shell plugs in the handlers
/// for files, the view and help; other windows plug in their own. A command without a handler is
/// disabled in every menu.
class Shell final : public QObject {
  Q_OBJECT

 public:
  using Handler = std::function<void(ProgramWindow& window)>;
  using MapHandler = std::function<void(MapWindowWidget& window)>;

  /// \param workspace  its messages must be `boxes`; both must outlive every window
  Shell(Workspace& workspace, BoxMessages& boxes);
  ~Shell() override;

  // --- Start and end ------------------------------------------------------------------------

  /// Opens the files from the command line, then reads the preferences. Without a file it opens the
  /// map that the preferences name, or asks for one. Recovered maps are read before all files, so
  /// that opening such a file finds its recovered form; each gets a window.
  void Start(const std::vector<std::string>& files);

  /// Writes the preferences, closes all windows after their questions, and ends the program.
  /// \return false if the user cancelled; the remaining windows stay open
  bool ExitFlow();

  // --- Windows ------------------------------------------------------------------------------

  /// Opens a map file, or finds the map if it is already open, and shows it in a new window. If the
  /// file can't be read, a message says so and an empty window of that name opens.
  /// \return null if the user cancelled; then there is neither a map nor a window
  MapWindowWidget* OpenFile(const std::string& path);
  /// As `OpenFile`, without a window.
  Map* ReadMap(const std::string& path);
  /// Shows a new, empty map in a new window.
  MapWindowWidget& NewMap();
  /// Shows a map in a new window; several may show one map.
  MapWindowWidget& OpenMapWindow(Map& map);

  /// The open map windows, newest first.
  const std::vector<MapWindowWidget*>& OpenWindows() const { return openWindows_; }

  /// Closes a window of any kind after its questions. A window of an unknown kind, or the one that
  /// is shown when no map is open, gives an internal error and closes.
  /// \return false if the user cancelled
  bool MapWinClose(ProgramWindow& window);

  /// Gives a new window on a map its number: the smallest that no other window on the map has.
  int FreeWindowNumber(const Map& map) const;
  /// \return how many windows show a map
  int WindowsOn(const Map& map) const;

  /// A map window calls this when it is about to close.
  void Forget(MapWindowWidget& window);

  // --- Commands -----------------------------------------------------------------------------

  /// Runs a command that was picked in a window. An unknown id does nothing.
  void RunCommand(int id, ProgramWindow& window);
  /// Sets the handler of a command.
  void Plug(CommandId id, Handler handler);
  /// The same for a command that only makes sense in a map window; elsewhere it beeps.
  void PlugOnMap(CommandId id, const MapHandler& handler);
  /// The same for a map window and the windows that belong to one.
  void PlugOnMapSide(CommandId id, const MapHandler& handler);
  bool IsPlugged(CommandId id) const;
  /// Updates the menus of all windows.
  void RefreshMenus();
  /// The answer to a command that makes no sense here.
  void Beep() const { beep(); }

  // --- Maps ---------------------------------------------------------------------------------

  /// The only way to change an open map: every window on it follows, and so do the recovery copies.
  EditHistory& History() { return history_; }
  /// Call after a map was read again and the windows show it: updates their titles and notifies the
  /// listeners.
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
  /// The view from an earlier run; each new window on its map begins with it.
  SavedView savedView;
  /// Size of the lists of a new map window.
  int trailWidth = 100;
  int trailHeight = 200;

  /// Asks what to find, in every window that searches.
  FindBox findBox;
  /// The sound for a command that makes no sense, and the end of the program. Tests set their own.
  std::function<void()> beep;
  std::function<void()> endProgram;
  /// The clock for long work (`BusyWork`); the system's if empty.
  std::function<std::chrono::milliseconds()> clock;
  /// Reads the preferences and returns the map to open, or an empty text; writes them.
  std::function<std::string()> readPreferences;
  std::function<void()> writePreferences;
  /// Reads the maps that an earlier run left unsaved, as far as the user wants them back. Returns
  /// nothing if the user wants to end the program instead.
  std::function<std::optional<std::vector<Map*>>()> recoverMaps;
  /// Writes recovery copies of all unsaved maps at once.
  std::function<void()> writeCopies;

 Q_SIGNALS:
  void mapDirtyChanged(orvane::Map* map);
  /// The map was changed; sent for every change, not only the first since the last save.
  void mapEdited(const orvane::Map* map);
  void mapSaved(orvane::Map* map, const QString& path);
  /// The map was read again from its file: pointers to what it held before are invalid.
  void mapReread(orvane::Map* map);
  /// The user answered the offer of a window to reload its map.
  void reloadAnswered(orvane::MapWindowWidget* window, bool reload);
  /// The user closed a window with "Don't Save".
  void changesDiscarded(orvane::Map* map);
  void windowsChanged();

 private:
  void Follow(const EditNews& news);
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
  EditHistory history_;
  std::unique_ptr<FileDialogs> dialogs_;
  FileSpecifications files_;
  std::vector<std::string> recentFiles_;
  std::map<CommandId, Handler> handlers_;
  std::vector<MapWindowWidget*> openWindows_;
  std::unique_ptr<TaskWindow> taskWindow_;
  bool exiting_ = false;
};

}  // namespace orvane
