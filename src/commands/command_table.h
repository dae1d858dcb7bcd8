#pragma once

#include <span>
#include <string_view>

namespace orvane {

/// The commands of the menu bar. Menus, keys, tests and the guide all read this table. The numbers
/// never change; commands that were added later count from 40001.
enum CommandId : int {
  CommandNone = 0,  ///< in a menu: a line between groups

  CommandNewMap = 1033,
  CommandOpenMap = 1034,
  CommandOpenBasis = 1000,
  CommandSetBasis = 1009,
  CommandCloseMap = 1035,
  CommandSave = 1036,
  CommandSaveAs = 1037,
  CommandSaveSimplyAs = 1052,
  CommandSaveAsArcView = 1053,
  CommandImportSpreadsheet = 1025,
  CommandImportSubmap = 1038,
  CommandImportGis = 1013,
  CommandPageSetup = 1002,
  CommandPrint = 1003,
  CommandExit = 1039,

  CommandCut = 1029,
  CommandCopy = 1030,
  CommandPaste = 1031,
  CommandAdd = 1059,     ///< of a trail, a range, or a row of an editor
  CommandDelete = 1032,  ///< likewise
  CommandGraphicalInput = 1010,

  CommandCheckTrails = 1040,
  CommandDeviation = 1005,
  CommandViewControl = 1006,
  CommandOrientation = 1015,
  CommandHideGrids = 1014,

  CommandElevation = 1019,
  CommandTrailSummary = 1021,
  CommandPointIndex = 1026,
  CommandRangeStats = 1051,

  CommandZoomIn = 32026,
  CommandZoomOut = 1046,
  CommandChangeZoom = 1047,
  CommandFind = 1011,
  CommandHideInfo = 1008,
  CommandDegrees = 1016,
  CommandMinutes = 1017,
  CommandSeconds = 1018,
  CommandEuropeanDates = 1050,

  CommandAbout = 1049,

  CommandRecentMaps = 40001,  ///< a menu of its own
  CommandCopyImage = 40002,
  CommandSavePicture = 40003,
  CommandShowWholeMap = 40004,
  CommandFullScreen = 40005,
  CommandWindowList = 40006,  ///< a menu of its own
  CommandMessages = 40007,
  CommandHelp = 40008,
  CommandReload = 40009,
  CommandSmoothLines = 40010,
  CommandUndo = 40011,
  CommandRedo = 40012,
  CommandPrintPreview = 40013,
  CommandUtm = 40014,
  CommandSurveyQuality = 40015,
  CommandRangeEstimates = 40016,
  CommandExport = 40017,
  CommandImportFixes = 40018
};

/// \return true for the further numbers of the help command
constexpr bool IsOldHelpCommand(int id) { return id >= 32450 && id <= 32462; }

/// One command.
struct CommandInfo {
  CommandId id = CommandNone;
  std::string_view text;  ///< in the menu, with `&` before the letter that picks it
  std::string_view key;   ///< such as "Ctrl+Shift+S"; empty for none
  bool checkable = false;
};

/// One menu of the bar, from left to right, with its items from top to bottom.
struct MenuInfo {
  std::string_view title;
  std::span<const CommandId> items;  ///< `CommandNone` is a line
};

/// Every command, in the order of the menus.
std::span<const CommandInfo> AllCommands();

/// The menus of the bar.
std::span<const MenuInfo> AllMenus();

/// \return the entry of a command, or null for an unknown id
const CommandInfo* FindCommand(int id);

/// \return true for the commands that only open a menu of their own
constexpr bool IsSubmenu(CommandId id) {
  return id == CommandRecentMaps || id == CommandWindowList;
}

}  // namespace orvane
