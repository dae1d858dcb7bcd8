#include "commands/menu_state.h"

#include "base/messages.h"
#include "editing/cell_table.h"
#include "editing/edit_history.h"
#include "model/workspace.h"
#include "view/map_window.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace orvane {
namespace {

class MenuStateTest : public testing::Test {
 protected:
  MenuStateTest() : workspace_(messages_), map_(MakeMap(workspace_, "season.map")) {
    view_.map = &map_;
  }

  static std::set<int> Disabled(const MenuState& menu) {
    std::set<int> ids;
    for (const CommandInfo& command : AllCommands()) {
      if (!menu.At(command.id).enabled) ids.insert(command.id);
    }
    return ids;
  }

  RecordedMessages messages_;
  Workspace workspace_;
  Map& map_;
  MapWindow view_;
};

TEST_F(MenuStateTest, AtTheStartWhatNeedsAMapIsDisabled) {
  const MenuState menu = StartMenu({});
  EXPECT_EQ(Disabled(menu), (std::set<int>{1000,
                                           1003,
                                           1005,
                                           1006,
                                           1008,
                                           1009,
                                           1010,
                                           1011,
                                           1013,
                                           1019,
                                           1021,
                                           1025,
                                           1026,
                                           1032,
                                           1035,
                                           1036,
                                           1037,
                                           1038,
                                           1040,
                                           1046,
                                           1047,
                                           1051,
                                           1052,
                                           1059,
                                           32026,
                                           CommandSavePicture,
                                           CommandCopyImage,
                                           CommandShowWholeMap,
                                           CommandReload,
                                           CommandUndo,
                                           CommandRedo,
                                           CommandPrintPreview,
                                           CommandRangeEstimates,
                                           CommandSurveyQuality,
                                           CommandExport,
                                           CommandImportFixes}));
  EXPECT_FALSE(menu.At(CommandEuropeanDates).checked);
  EXPECT_TRUE(StartMenu({.europeanDates = true}).At(CommandEuropeanDates).checked);
  EXPECT_TRUE(menu.At(CommandSmoothLines).checked);
  EXPECT_FALSE(StartMenu({.smoothLines = false}).At(CommandSmoothLines).checked);
}

TEST_F(MenuStateTest, UndoAndRedoHaveTheNameOfTheirStep) {
  MenuState menu = NewMapMenu(view_);
  EditHistory history(workspace_);
  const auto edit = [&](const std::string& name) {
    history.Apply({.name = name, .map = &map_, .change = [](EditFollowUp&) { return true; }});
  };
  edit("Edit of Trail R&R");
  FollowSteps(menu, history, map_);
  EXPECT_EQ(menu.At(CommandUndo).text, "&Undo Edit of Trail R&&R");
  EXPECT_TRUE(menu.At(CommandUndo).enabled);
  EXPECT_FALSE(menu.At(CommandRedo).enabled);
  history.Undo(map_);
  FollowSteps(menu, history, map_);
  EXPECT_EQ(menu.At(CommandUndo).text, "&Undo");
  EXPECT_FALSE(menu.At(CommandUndo).enabled);
  EXPECT_EQ(menu.At(CommandRedo).text, "&Redo Edit of Trail R&&R");
  EXPECT_TRUE(menu.At(CommandRedo).enabled);
  // A long name is cut, a tab would begin a key, and old names are Latin-1.
  edit(std::string(70, 'x'));
  FollowSteps(menu, history, map_);
  EXPECT_EQ(menu.At(CommandUndo).text, "&Undo " + std::string(60, 'x') + "...");
  edit("For\xEAt\t1");
  FollowSteps(menu, history, map_);
  EXPECT_EQ(menu.At(CommandUndo).text, "&Undo For\xC3\xAAt 1");
}

TEST_F(MenuStateTest, ANewWindowGoesByItsMap) {
  const MenuState menu = NewMapMenu(view_);
  EXPECT_EQ(Disabled(menu), (std::set<int>{1000, 1029, 1030, 1031, 1032, 1059, 1010, 1006, 1036,
                                           CommandUndo, CommandRedo}));
  EXPECT_TRUE(menu.At(CommandMinutes).checked);
  EXPECT_FALSE(menu.At(CommandDegrees).checked);
  EXPECT_FALSE(menu.At(CommandSeconds).checked);
  EXPECT_EQ(menu.At(CommandAdd).text, "Add Trail/Range");
  EXPECT_EQ(menu.At(CommandViewControl).text, "View Control...");
}

TEST_F(MenuStateTest, AMapWithABasisOffersToOpenItAndNotToSetIt) {
  map_.basis = &MakeMap(workspace_, "trails.map");
  MenuState menu = NewMapMenu(view_);
  EXPECT_TRUE(menu.At(CommandOpenBasis).enabled);
  EXPECT_FALSE(menu.At(CommandSetBasis).enabled);
  map_.basis = nullptr;
  RefreshMapMenu(menu, view_);
  EXPECT_FALSE(menu.At(CommandOpenBasis).enabled);
  EXPECT_TRUE(menu.At(CommandSetBasis).enabled);
}

TEST_F(MenuStateTest, ARefreshFollowsFormOfAnglesDatesAndGrids) {
  MenuState menu = NewMapMenu(view_);
  view_.coordinateDisplay = CoordinateDisplay::Seconds;
  view_.flags |= MapWindowGridsHidden;
  workspace_.preferences.europeanDates = true;
  menu.At(CommandCheckTrails).enabled = false;
  menu.At(CommandAdd).enabled = true;
  RefreshMapMenu(menu, view_);
  EXPECT_TRUE(menu.At(CommandSeconds).checked);
  EXPECT_FALSE(menu.At(CommandMinutes).checked);
  EXPECT_TRUE(menu.At(CommandEuropeanDates).checked);
  EXPECT_TRUE(menu.At(CommandHideGrids).checked);
  EXPECT_TRUE(menu.At(CommandCheckTrails).enabled);
  EXPECT_FALSE(menu.At(CommandAdd).enabled);
  view_.coordinateDisplay = CoordinateDisplay::Utm;
  RefreshMapMenu(menu, view_);
  EXPECT_TRUE(menu.At(CommandUtm).checked);
  EXPECT_FALSE(menu.At(CommandSeconds).checked);
}

TEST_F(MenuStateTest, OnTheTrailListTheCommandsAreAboutTrails) {
  MenuState menu = NewMapMenu(view_);
  FollowFocus(menu, FocusPlace::TrailList, false);
  for (const CommandId id :
       {CommandAdd, CommandElevation, CommandTrailSummary, CommandPointIndex}) {
    EXPECT_TRUE(menu.At(id).enabled) << id;
  }
  for (const CommandId id : {CommandDelete, CommandViewControl, CommandCheckTrails}) {
    EXPECT_FALSE(menu.At(id).enabled) << id;
  }
  FollowFocus(menu, FocusPlace::TrailList, true);
  for (const CommandId id : {CommandDelete, CommandViewControl, CommandCheckTrails}) {
    EXPECT_TRUE(menu.At(id).enabled) << id;
  }
  EXPECT_EQ(menu.At(CommandAdd).text, "Add Trail");
  EXPECT_EQ(menu.At(CommandDelete).text, "Delete Trail");
  EXPECT_EQ(menu.At(CommandViewControl).text, "Trail View Control...");
}

TEST_F(MenuStateTest, OnTheRangeListTheCommandsAreAboutRanges) {
  MenuState menu = NewMapMenu(view_);
  FollowFocus(menu, FocusPlace::RangeList, false);
  EXPECT_TRUE(menu.At(CommandAdd).enabled);
  for (const CommandId id :
       {CommandElevation, CommandCheckTrails, CommandDelete, CommandViewControl}) {
    EXPECT_FALSE(menu.At(id).enabled) << id;
  }
  FollowFocus(menu, FocusPlace::RangeList, true);
  EXPECT_TRUE(menu.At(CommandDelete).enabled);
  EXPECT_TRUE(menu.At(CommandViewControl).enabled);
  EXPECT_FALSE(menu.At(CommandCheckTrails).enabled);
  EXPECT_EQ(menu.At(CommandAdd).text, "Add Range");
  EXPECT_EQ(menu.At(CommandDelete).text, "Delete Range");
  EXPECT_EQ(menu.At(CommandViewControl).text, "Range View Control...");
}

TEST_F(MenuStateTest, AwayFromTheListsTheirCommandsAreDisabled) {
  for (const FocusPlace place : {FocusPlace::MapView, FocusPlace::Neither}) {
    MenuState menu = NewMapMenu(view_);
    FollowFocus(menu, FocusPlace::RangeList, true);
    FollowFocus(menu, place, true);
    for (const CommandId id : {CommandAdd, CommandDelete, CommandViewControl}) {
      EXPECT_FALSE(menu.At(id).enabled) << id;
    }
    // What the range list took away comes back with the trail list.
    EXPECT_FALSE(menu.At(CommandElevation).enabled);
    EXPECT_EQ(menu.At(CommandAdd).text, "Add Trail/Range");
    EXPECT_EQ(menu.At(CommandDelete).text, "Delete Trail/Range");
    EXPECT_EQ(menu.At(CommandViewControl).text, "View Control...");
  }
}

TEST_F(MenuStateTest, SaveIsOfferedForAChangedMapItsBasisOrAnOlderMap) {
  EXPECT_FALSE(SaveIsOffered(map_));
  Map& newer = MakeMap(workspace_, "newer.map");
  newer.flags |= MapDirty;
  EXPECT_FALSE(SaveIsOffered(map_));
  EXPECT_TRUE(SaveIsOffered(newer));
  map_.basis = &newer;
  EXPECT_TRUE(SaveIsOffered(map_));
  map_.basis = nullptr;
  newer.flags = 0;
  map_.flags |= MapDirty;
  EXPECT_TRUE(SaveIsOffered(map_));
  EXPECT_TRUE(SaveIsOffered(newer));  // the list continues after it
  EXPECT_TRUE(NewMapMenu(view_).At(CommandSave).enabled);
}

TEST_F(MenuStateTest, OnlyAMapWithAFileIsReloaded) {
  EXPECT_TRUE(NewMapMenu(view_).At(CommandReload).enabled);
  map_.flags |= MapUntitled;
  EXPECT_FALSE(NewMapMenu(view_).At(CommandReload).enabled);
  map_.fileMark = MarkOf("saved");
  EXPECT_TRUE(NewMapMenu(view_).At(CommandReload).enabled);
}

TEST_F(MenuStateTest, AnEditorOffersWhatItsTableCanDo) {
  const auto offered = [&](CellTableState state, bool canCopyRow, bool isReadOnly) {
    const MenuState menu = EditorMenu(map_, {.kind = EditorKind::Trail,
                                             .table = state,
                                             .canCopyRow = canCopyRow,
                                             .isReadOnly = isReadOnly,
                                             .takesClicks = false});
    std::string text;
    for (const CommandId id : {CommandCut, CommandCopy, CommandPaste, CommandAdd, CommandDelete}) {
      text += menu.At(id).enabled ? '+' : '-';
    }
    return text;
  };
  EXPECT_EQ(offered(CellTableState::Idle, false, false), "-----");
  EXPECT_EQ(offered(CellTableState::Editing, false, false), "+++--");
  EXPECT_EQ(offered(CellTableState::RowSelected, true, false), "-+-++");
  EXPECT_EQ(offered(CellTableState::RowSelected, false, false), "---++");
  EXPECT_EQ(offered(CellTableState::RowSelected, true, true), "-+---");
}

TEST_F(MenuStateTest, AnEditorOffersNothingThatNeedsTheMapWindow) {
  const MenuState menu = EditorMenu(map_, {.kind = EditorKind::Range,
                                           .table = CellTableState::Idle,
                                           .canCopyRow = false,
                                           .isReadOnly = false,
                                           .takesClicks = true});
  for (const CommandId id : {CommandZoomIn, CommandOrientation, CommandSaveAs, CommandImportGis,
                             CommandDegrees, CommandElevation, CommandSaveAsArcView}) {
    EXPECT_FALSE(menu.At(id).enabled) << id;
  }
  for (const CommandId id : {CommandNewMap, CommandCloseMap, CommandExit, CommandFind,
                             CommandGraphicalInput, CommandEuropeanDates, CommandHelp}) {
    EXPECT_TRUE(menu.At(id).enabled) << id;
  }
  EXPECT_EQ(menu.At(CommandAdd).text, "Add Search Criterion");
}

TEST_F(MenuStateTest, AProfileOffersWhatMovesCopiesAndSavesIt) {
  const MenuState menu = ElevationMenu(map_, true);
  for (const CommandId id :
       {CommandZoomIn, CommandZoomOut, CommandFind, CommandHideInfo, CommandShowWholeMap,
        CommandCopy, CommandCopyImage, CommandSavePicture, CommandPrint, CommandPageSetup,
        CommandCloseMap, CommandExit, CommandReload, CommandFullScreen, CommandHelp}) {
    EXPECT_TRUE(menu.At(id).enabled) << id;
  }
  for (const CommandId id : {CommandSaveAs, CommandElevation, CommandCut, CommandPaste, CommandAdd,
                             CommandDelete, CommandChangeZoom, CommandDegrees}) {
    EXPECT_FALSE(menu.At(id).enabled) << id;
  }
  EXPECT_FALSE(menu.At(CommandHideInfo).checked);
  EXPECT_TRUE(ElevationMenu(map_, false).At(CommandHideInfo).checked);
  EXPECT_EQ(menu.At(CommandShowWholeMap).text, "Show &Whole Line");
}

TEST_F(MenuStateTest, AReportSavesPrintsAndSelectsItsLines) {
  const MenuState menu = ReportMenu(map_, {});
  for (const CommandId id :
       {CommandSaveAs, CommandSaveSimplyAs, CommandPrint, CommandPageSetup, CommandCopy, CommandAdd,
        CommandFind, CommandTrailSummary, CommandPointIndex, CommandRangeStats, CommandCloseMap}) {
    EXPECT_TRUE(menu.At(id).enabled) << id;
  }
  for (const CommandId id : {CommandCut, CommandPaste, CommandDelete, CommandZoomIn,
                             CommandCheckTrails, CommandCopyImage, CommandSavePicture}) {
    EXPECT_FALSE(menu.At(id).enabled) << id;
  }
  EXPECT_EQ(menu.At(CommandAdd).text, "Select &All");
}

TEST_F(MenuStateTest, AChartIsCopiedAndSavedWhileItIsShown) {
  const MenuState shown = ReportMenu(map_, {.picture = "Chart", .hasPicture = true});
  EXPECT_TRUE(shown.At(CommandCopyImage).enabled);
  EXPECT_TRUE(shown.At(CommandSavePicture).enabled);
  EXPECT_EQ(shown.At(CommandCopyImage).text, "Copy Chart as &Image");
  const MenuState gone = ReportMenu(map_, {.picture = "Chart"});
  EXPECT_FALSE(gone.At(CommandCopyImage).enabled);
  EXPECT_EQ(gone.At(CommandSavePicture).text, "Save Pict&ure of Chart...");
}

}  // namespace
}  // namespace orvane
