#include "commands/command_table.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

// Later commands come after the first ones of their menu, so that known places stay; only Undo and
// Redo are where everybody looks for them, and Export is beside the older export. The keys of Undo
// and Redo have no Ctrl+Z, since that zooms. The key of Point Index has Shift, since Ctrl+I is the
// spreadsheet import.
constexpr std::array Commands{
    CommandInfo{CommandNewMap, "&New Map", "Ctrl+N"},
    CommandInfo{CommandOpenMap, "&Open Map...", "Ctrl+O"},
    CommandInfo{CommandOpenBasis, "Open &Basis", "Ctrl+B"},
    CommandInfo{CommandSetBasis, "Set B&asis", "Ctrl+Shift+B"},
    CommandInfo{CommandCloseMap, "&Close Map", "Ctrl+W"},
    CommandInfo{CommandSave, "&Save", "Ctrl+S"},
    CommandInfo{CommandSaveAs, "S&ave As...", "Ctrl+Shift+S"},
    CommandInfo{CommandSaveSimplyAs, "Sa&ve Simply As...", ""},
    CommandInfo{CommandSaveAsArcView, "Save As Arc&View...", ""},
    CommandInfo{CommandExport, "Export...", "Ctrl+Shift+E"},
    CommandInfo{CommandImportSpreadsheet, "Impor&t Spreadsheet...", "Ctrl+I"},
    CommandInfo{CommandImportSubmap, "I&mport Submap...", ""},
    CommandInfo{CommandImportGis, "&Import GIS...", ""},
    CommandInfo{CommandImportFixes, "Import &Fixes...", ""},
    CommandInfo{CommandPageSetup, "Pag&e Setup...", "Ctrl+Shift+P"},
    CommandInfo{CommandPrint, "&Print...", "Ctrl+P"},
    CommandInfo{CommandPrintPreview, "Print Previe&w...", "Ctrl+Alt+P"},
    CommandInfo{CommandSavePicture, "Save Pict&ure of Map...", "Ctrl+Alt+S"},
    CommandInfo{CommandRecentMaps, "&Recent Maps", ""},
    CommandInfo{CommandReload, "Re&load from Disk", "F5"},
    CommandInfo{CommandExit, "E&xit", "Ctrl+Q"},

    CommandInfo{CommandUndo, "&Undo", "Alt+Backspace"},
    CommandInfo{CommandRedo, "&Redo", "Alt+Shift+Backspace"},
    CommandInfo{CommandCut, "Cu&t", "Ctrl+X"},
    CommandInfo{CommandCopy, "&Copy", "Ctrl+C"},
    CommandInfo{CommandPaste, "&Paste", "Ctrl+V"},
    CommandInfo{CommandAdd, "&Add Trail/Range", "Ctrl+A"},
    CommandInfo{CommandDelete, "&Delete Trail/Range", "Ctrl+D"},
    CommandInfo{CommandGraphicalInput, "&Graphical Trail Input", "Ctrl+G"},
    CommandInfo{CommandCopyImage, "Copy Map as &Image", "Ctrl+Alt+C"},

    CommandInfo{CommandCheckTrails, "Check &Trails", "Ctrl+Shift+T"},
    CommandInfo{CommandDeviation, "Set &Magnetic deviance...", "Ctrl+M"},
    CommandInfo{CommandViewControl, "&View Control...", "Ctrl+Shift+V"},
    CommandInfo{CommandOrientation, "Set &Orientation...", ""},
    CommandInfo{CommandHideGrids, "&Hide Grids", "", true},

    CommandInfo{CommandElevation, "&Elevation...", "Ctrl+E"},
    CommandInfo{CommandTrailSummary, "&Trail Summary...", "Ctrl+T"},
    CommandInfo{CommandPointIndex, "&Point Index", "Ctrl+Shift+I"},
    CommandInfo{CommandRangeStats, "&Range Stats...", "Ctrl+R"},
    CommandInfo{CommandRangeEstimates, "Ra&nge Estimates...", "Ctrl+Shift+R"},
    CommandInfo{CommandSurveyQuality, "Survey &Quality...", "Ctrl+Shift+Q"},

    CommandInfo{CommandZoomIn, "Zoom &In", "Ctrl+Z"},
    CommandInfo{CommandZoomOut, "Zoom &Out", "Ctrl+Shift+Z"},
    CommandInfo{CommandChangeZoom, "&Change Zoom...", "Ctrl+Shift+C"},
    CommandInfo{CommandFind, "&Find...", "Ctrl+F"},
    CommandInfo{CommandHideInfo, "Hide I&nfo", "Ctrl+H", true},
    CommandInfo{CommandDegrees, "&Degrees", "", true},
    CommandInfo{CommandMinutes, "&Minutes", "", true},
    CommandInfo{CommandSeconds, "&Seconds", "", true},
    CommandInfo{CommandUtm, "UTM Coordin&ates", "", true},
    CommandInfo{CommandEuropeanDates, "European Da&te Format", "", true},
    CommandInfo{CommandShowWholeMap, "Show &Whole Map", "Ctrl+0"},
    CommandInfo{CommandSmoothLines, "Smooth &Lines", "", true},
    CommandInfo{CommandFullScreen, "F&ull Screen", "F11", true},

    CommandInfo{CommandMessages, "&Messages", ""},
    CommandInfo{CommandWindowList, "", ""},

    CommandInfo{CommandHelp, "&Contents", "F1"},
    CommandInfo{CommandAbout, "&About Orvane...", ""},
};

constexpr std::array FileMenu{CommandNewMap,
                              CommandOpenMap,
                              CommandOpenBasis,
                              CommandSetBasis,
                              CommandNone,
                              CommandCloseMap,
                              CommandSave,
                              CommandSaveAs,
                              CommandSaveSimplyAs,
                              CommandSaveAsArcView,
                              CommandExport,
                              CommandNone,
                              CommandImportSpreadsheet,
                              CommandImportSubmap,
                              CommandImportGis,
                              CommandImportFixes,
                              CommandNone,
                              CommandPageSetup,
                              CommandPrint,
                              CommandPrintPreview,
                              CommandSavePicture,
                              CommandNone,
                              CommandRecentMaps,
                              CommandReload,
                              CommandNone,
                              CommandExit};
constexpr std::array EditMenu{CommandUndo,   CommandRedo,           CommandNone, CommandCut,
                              CommandCopy,   CommandPaste,          CommandNone, CommandAdd,
                              CommandDelete, CommandGraphicalInput, CommandNone, CommandCopyImage};
constexpr std::array MapMenu{CommandCheckTrails, CommandDeviation,   CommandNone,
                             CommandViewControl, CommandOrientation, CommandHideGrids};
constexpr std::array AnalysisMenu{CommandElevation,    CommandTrailSummary,   CommandPointIndex,
                                  CommandRangeStats,   CommandRangeEstimates, CommandNone,
                                  CommandSurveyQuality};
constexpr std::array ViewMenu{
    CommandZoomIn,     CommandZoomOut, CommandChangeZoom,    CommandFind,    CommandNone,
    CommandHideInfo,   CommandNone,    CommandDegrees,       CommandMinutes, CommandSeconds,
    CommandUtm,        CommandNone,    CommandEuropeanDates, CommandNone,    CommandShowWholeMap,
    CommandFullScreen, CommandNone,    CommandSmoothLines};
constexpr std::array WindowMenu{CommandMessages, CommandNone, CommandWindowList};
constexpr std::array HelpMenu{CommandHelp, CommandNone, CommandAbout};

constexpr std::array<MenuInfo, 7> Menus{{{"&File", FileMenu},
                                         {"&Edit", EditMenu},
                                         {"&Map", MapMenu},
                                         {"&Analysis", AnalysisMenu},
                                         {"&View", ViewMenu},
                                         {"&Window", WindowMenu},
                                         {"&Help", HelpMenu}}};

}  // namespace

std::span<const CommandInfo> AllCommands() { return Commands; }

std::span<const MenuInfo> AllMenus() { return Menus; }

const CommandInfo* FindCommand(int id) {
  const auto found = std::find_if(Commands.begin(), Commands.end(),
                                  [id](const CommandInfo& command) { return command.id == id; });
  return found == Commands.end() ? nullptr : &*found;
}

}  // namespace orvane
