#include "shell/program.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "shell/editors/editor_commands.h"
#include "shell/entry/import_commands.h"
#include "shell/file_commands.h"
#include "shell/help_commands.h"
#include "shell/map_commands.h"
#include "shell/map_window_widget.h"
#include "shell/messages/messages_window.h"
#include "shell/output/export_commands.h"
#include "shell/picture_commands.h"
#include "shell/preferences_file.h"
#include "shell/print/print_commands.h"
#include "shell/recovery/map_recovery.h"
#include "shell/reload_commands.h"
#include "shell/reports/elevation_commands.h"
#include "shell/reports/report_commands.h"
#include "shell/task_window.h"
#include "shell/undo_commands.h"
#include "shell/view_commands.h"

#include <QCoreApplication>

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace orvane {
namespace {

/// The folder of the recovery copies in the program's own directory.
constexpr auto RecoveryFolderName = "recovery";

}  // namespace

Program::Program(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings)
    : shell_(workspace, boxes, surroundings, *this) {
  MapWindows& windows = shell_.Windows();
  connect(&windows, &MapWindows::windowsChanged, this, [this, &windows] {
    if (taskWindow_ && !windows.Bases().empty()) taskWindow_->hide();
  });
  connect(&windows, &MapWindows::lastWindowClosed, this, [this](const QWidget* window) {
    if (shell_.IsExiting() || QCoreApplication::closingDown()) return;
    TheTaskWindow().TakePlaceOf(*window);  // as if the map had left its window
    ShowTaskWindow();
  });
  connect(&windows, &MapWindows::preferencesChanged, this, [this] {
    if (taskWindow_) taskWindow_->ShowMenu();
  });
  PlugFileCommands(shell_);
  PlugImportCommands(shell_);
  PlugExport(shell_);
  PlugMapCommands(shell_);
  PlugUndoCommands(shell_);
  PlugViewCommands(shell_);
  PlugPictureCommands(shell_);
  PlugHelpCommands(shell_);
  PlugReload(shell_);
  PlugMessagesWindow(shell_);
  PlugEditors(shell_);
  PlugPrintCommands(shell_);
  PlugElevation(shell_);
  PlugReports(shell_);
}

Program::Program(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings,
                 const ProgramPlaces& places)
    : Program(workspace, boxes, surroundings) {
  Settings& settings = shell_.TheSettings();
  if (!places.dialogDirectory.empty()) settings.dialogDirectory = WholePath(places.dialogDirectory);
  if (places.ownDirectory.empty()) return;
  KeepPreferencesIn(places.ownDirectory);
  KeepCopiesIn(JoinPath(settings.ownDirectory, RecoveryFolderName));
}

Program::~Program() = default;

void Program::KeepPreferencesIn(const std::string& directory) {
  // Made absolute now, so that it stays the same if the working directory changes.
  const std::string own = WholePath(directory);
  std::error_code error;
  std::filesystem::create_directories(own, error);
  shell_.TheSettings().ownDirectory = own;
  shell_.Keep(std::make_unique<PreferencesFile>(shell_, own));
}

MapRecovery& Program::KeepCopiesIn(const std::string& directory, FileSystem system) {
  auto recovery = std::make_unique<MapRecovery>(shell_, directory, std::move(system));
  MapRecovery& kept = *recovery;
  shell_.Keep(std::unique_ptr<CopyKeeper>(std::move(recovery)));
  return kept;
}

void Program::Start(const std::vector<std::string>& files) {
  shell_.Maps().ReadRecent();
  const Keepers& keepers = shell_.Kept();
  const auto recovered = keepers.copies ? keepers.copies->OfferCopies() : std::vector<Map*>();
  if (!recovered) {
    shell_.EndProgram();  // the preferences were not read yet, so they are not written
    return;
  }
  for (const std::string& file : files) shell_.OpenFile(file);
  const std::string defaultMap = keepers.preferences ? keepers.preferences->Read() : std::string();
  if (files.empty() && !defaultMap.empty()) shell_.OpenFile(defaultMap);
  MapWindows& windows = shell_.Windows();
  for (Map* map : *recovered) {
    if (windows.CountOn(*map) == 0) windows.Open(*map);
  }
  if (windows.Bases().empty()) ShowTaskWindow();
  if (!files.empty() || !defaultMap.empty() || !recovered->empty()) return;
  ProgramWindow& asking = windows.Bases().empty() ? static_cast<ProgramWindow&>(TheTaskWindow())
                                                  : *windows.Bases().front();
  shell_.Commands().Run(CommandOpenMap, asking);
}

MapWindowBase& Program::MakeMapWindow(Map& map) {
  // The window frees itself when it is closed.
  return *new MapWindowWidget(shell_, map);
}

TaskWindow& Program::TheTaskWindow() {
  if (!taskWindow_) taskWindow_ = std::make_unique<TaskWindow>(shell_);
  return *taskWindow_;
}

void Program::ShowTaskWindow() {
  TheTaskWindow().ShowMenu();
  TheTaskWindow().show();
}

}  // namespace orvane
