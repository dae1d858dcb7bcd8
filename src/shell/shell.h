#pragma once

#include "commands/find_box.h"
#include "model/workspace.h"
#include "shell/command_dispatcher.h"
#include "shell/keepers.h"
#include "shell/map_windows.h"
#include "shell/memory_guard.h"
#include "shell/open_maps.h"
#include "shell/settings.h"
#include "shell/surroundings.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace orvane {

class BoxMessages;

/// What all windows of the program share: the open maps, the windows on them, the commands, and the
/// flows that need more than one of these. `Program` makes it, with the windows and the handlers of
/// the commands; this knows none of them.
class Shell final : public QObject {
  Q_OBJECT

 public:
  /// All parameters must outlive every window.
  /// \param workspace  its messages must be `boxes`
  /// \param maker      makes the map windows
  Shell(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings, WindowMaker& maker);
  ~Shell() override;

  Workspace& TheWorkspace() { return workspace_; }
  BoxMessages& Boxes() { return boxes_; }
  Settings& TheSettings() { return settings_; }
  CommandDispatcher& Commands() { return commands_; }
  MapWindows& Windows() { return windows_; }
  const MapWindows& Windows() const { return windows_; }
  OpenMaps& Maps() { return maps_; }
  EditHistory& History() { return maps_.History(); }
  MemoryGuard& Guard() { return guard_; }
  const Keepers& Kept() const { return keepers_; }
  /// Asks what to find, in every window that searches.
  FindBox& FindDialog() { return findBox_; }

  /// The answer to a command that makes no sense here.
  void Beep() { surroundings_.Beep(); }
  FileDialogs& Dialogs() { return surroundings_.Dialogs(); }
  PrinterDialogs& Printers() { return surroundings_.Printers(); }
  void EndProgram() { surroundings_.EndProgram(); }
  Surroundings& Around() { return surroundings_; }
  /// The clock for long work (`BusyWork`).
  std::function<std::chrono::milliseconds()> Clock();

  /// Opens a map file (`OpenMaps::Read`) and shows it in a new window.
  /// \return null if the user cancelled; then there is neither a map nor a window
  MapWindowWidget* OpenFile(const std::string& path);
  /// Opens one of the recent maps, if its file is still there.
  void OpenRecentFile(const std::string& path);
  /// Shows a new, empty map in a new window.
  MapWindowWidget& NewMap();

  /// Closes a window of any kind after its questions. A window of an unknown kind, or the one that
  /// is shown when no map is open, gives an internal error and closes.
  /// \return false if the user cancelled
  bool MapWinClose(ProgramWindow& window);

  /// Writes the preferences, closes all windows after their questions, and ends the program.
  /// \return false if the user cancelled; the remaining windows stay open
  bool ExitFlow();
  /// True during `ExitFlow`.
  bool IsExiting() const { return exiting_; }

  /// Sets who keeps the preferences, and who keeps the recovery copies.
  void Keep(std::unique_ptr<PreferencesKeeper> keeper) { keepers_.preferences = std::move(keeper); }
  void Keep(std::unique_ptr<CopyKeeper> keeper) { keepers_.copies = std::move(keeper); }

 private:
  Workspace& workspace_;
  BoxMessages& boxes_;
  Surroundings& surroundings_;
  Settings settings_;
  FindBox findBox_;
  Keepers keepers_;
  MemoryGuard guard_;
  CommandDispatcher commands_;
  MapWindows windows_;
  OpenMaps maps_;
  bool exiting_ = false;
};

}  // namespace orvane
