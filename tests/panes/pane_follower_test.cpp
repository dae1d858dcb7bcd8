#include "panes/pane_follower.h"

#include "editing/delete_records.h"
#include "editing/trail_editor.h"
#include "model/former_contents.h"
#include "model/workspace.h"
#include "pane_fixture.h"
#include "panes/delete_rows.h"
#include "panes/open_editors.h"
#include "panes/pane_clicks.h"
#include "panes/range_drops.h"
#include "panes/trail_tree.h"
#include "panes/visibility.h"
#include "view/fills.h"

#include <new>

namespace orvane {
namespace {

constexpr char RangesText[] = "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n";

/// A view that is followed with memory.
struct PaneFollowerTest : PaneFixture {
  EditHistory remembered{workspace};
  PaneFollower follower{view, remembered};

  RangePanelRow& Overlap() {
    for (RangePanelRow& row : view.rangeViews) {
      if (row.intersection != nullptr) return row;
    }
    ADD_FAILURE() << "no overlap";
    return view.rangeViews.back();
  }
};

TEST_F(PaneFollowerTest, DeletedRowsComeBackAsTheyWere) {
  Show(TwoGroupsText);
  Row("Papio").open = true;
  Row("2020-3-1 Ana").color = 0x123456;
  Row("2020-3-1 Ana").visible = true;
  Row("Path").visible = false;
  ClickTrailRow(view, &Row("Papio"), false);
  DeleteSelectedTrails(view, remembered);
  for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) EXPECT_NE(row->text, "Papio");
  ClickTrailTick(view, Row("Cebus"));
  const bool ticked = Row("Cebus").visible;
  ASSERT_TRUE(remembered.Undo(*view.map));
  EXPECT_TRUE(Row("Papio").open);
  EXPECT_TRUE(Row("Papio").selected);
  EXPECT_EQ(Row("2020-3-1 Ana").color, 0x123456);
  EXPECT_TRUE(Row("2020-3-1 Ana").visible);
  EXPECT_FALSE(Row("Path").visible);
  EXPECT_EQ(Row("Cebus").visible, ticked) << "a row that was there keeps its tick";
}

TEST_F(PaneFollowerTest, UndoOfVisibilityGivesStylesBackAndKeepsTicks) {
  Show(TwoGroupsText);
  Row("Path").selected = true;
  const Color color = Row("Path").color;
  const bool visible = Row("Path").visible;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  dialog.color = "red";
  dialog.markStyle = MarkStyle::Rect;
  dialog.visible = !visible;
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, remembered));
  ASSERT_TRUE(remembered.Undo(*view.map));
  EXPECT_EQ(Row("Path").color, color);
  EXPECT_EQ(Row("Path").markStyle, MarkStyle::None);
  EXPECT_EQ(Row("Path").trail->markStyle, MarkStyle::None);
  EXPECT_EQ(Row("Path").visible, !visible);
  ASSERT_TRUE(remembered.Redo(*view.map));
  EXPECT_EQ(Row("Path").color, 0xFF0000);
  EXPECT_EQ(Row("Path").markStyle, MarkStyle::Rect);
}

TEST_F(PaneFollowerTest, OverlapsKeepTheirLookOverAnUndo) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  TrailEditor editor(map, FindTrail(map, "Path"));
  editor.SetCell(0, 1, "S20 0.01");
  ASSERT_EQ(SaveTrailEditor(editor, remembered), SaveOutcome::Closes);
  Overlap().visible = true;
  Overlap().color = 0x010203;
  Overlap().selected = true;
  ASSERT_TRUE(remembered.Undo(map));
  EXPECT_TRUE(Overlap().visible);
  EXPECT_TRUE(Overlap().selected);
  EXPECT_EQ(Overlap().color, 0x010203);
}

/// An edit that solves makes the rows of overlaps again, as if they were new.
TEST_F(PaneFollowerTest, OverlapsGetTheirFormerLookBack) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  Overlap().visible = true;
  Overlap().color = 0x010203;
  Overlap().drawMode = RangeDrawMode::Hash;
  TrailEditor editor(map, FindTrail(map, "Path"));
  editor.SetCell(0, 1, "S20 0.01");
  ASSERT_EQ(SaveTrailEditor(editor, remembered), SaveOutcome::Closes);
  ASSERT_FALSE(Overlap().visible);
  ASSERT_TRUE(remembered.Undo(map));
  EXPECT_TRUE(Overlap().visible);
  EXPECT_EQ(Overlap().color, 0x010203);
  EXPECT_EQ(Overlap().drawMode, RangeDrawMode::Hash);
  ASSERT_TRUE(remembered.Redo(map));
  EXPECT_FALSE(Overlap().visible);
  EXPECT_EQ(Overlap().drawMode, RangeDrawMode::Clear);
}

// Every row that is made takes a number, whatever made it.
TEST_F(PaneFollowerTest, OverlapsThatComeBackTakeShadingNumbers) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  const int shading = Overlap().shading;
  TrailEditor editor(map, FindTrail(map, "Path"));
  editor.SetCell(0, 1, "S20 0.01");
  const unsigned rowsMade = workspace.rangeRowsMade;
  ASSERT_EQ(SaveTrailEditor(editor, remembered), SaveOutcome::Closes);
  EXPECT_EQ(workspace.rangeRowsMade, rowsMade + 1);
  ASSERT_TRUE(remembered.Undo(map));
  EXPECT_EQ(workspace.rangeRowsMade, rowsMade + 2);
  ASSERT_TRUE(remembered.Redo(map));
  EXPECT_EQ(workspace.rangeRowsMade, rowsMade + 3);
  EXPECT_EQ(Overlap().shading, shading);
}

/// Analysing the ranges again in list order turned the overlap round.
TEST_F(PaneFollowerTest, OverlapsKeepTheirDirectionAndName) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  ClickTrailRow(view, &Row("Cebus"), false);
  DropSelection(view, RangeRow("Blue"), remembered);
  const std::string name = *Overlap().text;
  ASSERT_EQ(name, "Intersection of Blue and Red");
  ClickTrailRow(view, &Row("Path"), false);
  DeleteSelectedTrails(view, remembered);
  EXPECT_EQ(*Overlap().text, "Intersection of Red and Blue");
  remembered.Undo(map);
  EXPECT_EQ(*Overlap().text, name);
  EXPECT_EQ(*Overlap().overlapOf[0]->name, "Blue");
}

TEST_F(PaneFollowerTest, OneOfSeveralRowsOfEqualTextComesBackToItsPlace) {
  Map& map = Show(
      "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0\tE47 0\n"
      "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\n"
      "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.2\tE47 0\n");
  const auto trails = [&] {
    std::vector<const Trail*> order;
    for (const TrailPanelRow& row : Row("Papio").children) order.push_back(row.trail);
    return order;
  };
  const std::vector<const Trail*> before = trails();
  ClickTrailRow(view, &Row("Papio").children.front(), false);
  DeleteSelectedTrails(view, remembered);
  ASSERT_EQ(trails().size(), 2U);
  remembered.Undo(map);
  EXPECT_EQ(trails(), before);
}

TEST_F(PaneFollowerTest, AnUndoGivesRebuiltRowsTheirLookBack) {
  Map& map = Show(TwoGroupsText);
  ClickTriangle(view, Row("Papio"));
  ClickTrailTick(view, Row("Cebus"));
  remembered.Apply({.name = "Import", .map = &map, .change = [](EditFollowUp& followUp) {
                      followUp.freshRows = true;
                      return true;
                    }});
  ASSERT_FALSE(Row("Papio").open || Row("Cebus").visible);
  remembered.Undo(map);
  EXPECT_TRUE(Row("Papio").open && Row("Cebus").visible);
  remembered.Redo(map);
  EXPECT_FALSE(Row("Papio").open || Row("Cebus").visible);
}

TEST_F(PaneFollowerTest, UndoOfTheFirstDialogTakesThePatternBack) {
  Show(TwoGroupsText);
  Row("Path").selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  ASSERT_EQ(Row("Path").fillPattern, FillSolid);
  dialog.color = "red";
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, remembered));
  EXPECT_EQ(Row("Path").fillPattern, FillSolid);
  ASSERT_TRUE(remembered.Undo(*view.map));
  EXPECT_EQ(Row("Path").fillPattern, 0);
}

/// The colour of a contour is not in the file of its map, and was not taken back.
TEST_F(PaneFollowerTest, TheColorOfAContourIsTakenBack) {
  Map& map = Show(
      "Z\t\t1,10\nT\tA\tHuman\nG\tA\tS20 0\tE47 0\t100\nG\tB\tS20 0.5\tE47 0\t150\n"
      "G\tC\tS20 0\tE47 0.5\t130\n");
  ClickTriangle(view, Row("Contours"));
  Trail& line = map.contourTrails.front();
  const Color rowColor = FindTrailRow(view, line)->color;
  TrailEditor editor(map, &line);
  editor.SetField(TrailField::LineColor, "red");
  ASSERT_EQ(SaveTrailEditor(editor, remembered), SaveOutcome::Closes);
  EXPECT_EQ(line.color, 0xFF0000);
  ASSERT_TRUE(remembered.Undo(map));
  EXPECT_EQ(line.color, NoColor);
  EXPECT_EQ(FindTrailRow(view, line)->color, rowColor);
  ASSERT_TRUE(remembered.Redo(map));
  EXPECT_EQ(line.color, 0xFF0000);
}

/// Rows of overlaps pointed to records that the failed edit had replaced.
TEST_F(PaneFollowerTest, AfterAnEditWithoutMemoryTheRowsAreAsBefore) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  Overlap().visible = true;
  Row("Path").color = 0x010203;
  for (const bool throws : {true, false}) {
    const Edit edit = {.name = "Too much", .map = &map, .change = [&](EditFollowUp&) {
                         map.ranges.front().keys.clear();
                         AnalyzeAllRanges(map);
                         Row("Path").color = 0xFF;
                         if (throws) throw std::bad_alloc();
                         return false;
                       }};
    if (throws) {
      EXPECT_THROW(remembered.Apply(edit), std::bad_alloc);
    } else {
      EXPECT_FALSE(remembered.Apply(edit));
    }
    ASSERT_EQ(Length(map.intersections), 1);
    EXPECT_EQ(Overlap().intersection, &map.intersections.front());
    EXPECT_TRUE(Overlap().visible);
    EXPECT_FALSE(map.ranges.front().points.empty());
    EXPECT_EQ(Row("Path").color, 0x010203);
  }
  EXPECT_EQ(follower.Remembered(), 0U);
}

TEST_F(PaneFollowerTest, ForgetsTheStepsThatTheHistoryDrops) {
  Map& map = Show(TwoGroupsText);
  const auto color = [&](int number) {
    remembered.Apply({.name = "Color", .map = &map, .change = [&](EditFollowUp&) {
                        map.trails.front().color = number;
                        return true;
                      }});
  };
  for (int i = 0; i < 3; ++i) color(i);
  EXPECT_EQ(follower.Remembered(), 3U);
  remembered.Undo(map);
  color(7);
  EXPECT_EQ(follower.Remembered(), 3U);
  remembered.Forget(map);
  EXPECT_EQ(follower.Remembered(), 0U);
}

TEST_F(PaneFollowerTest, AFollowerThatIsGoneIsNotCalled) {
  Map& map = Show(TwoGroupsText);
  { const PaneFollower other(view, remembered); }
  EXPECT_TRUE(remembered.Apply(
      {.name = "None", .map = &map, .change = [](EditFollowUp&) { return true; }}));
}

/// Rows that have not followed an edit, as for lack of memory, pointed to freed records.
TEST_F(PaneFollowerTest, RowsKeepWhatTheyShowUntilTheyFollow) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  Open("T\tOther\tTrail\n", "other.map");  // reading would go on with the range that was read last
  EditHistory unseen(workspace, 1);        // keeps no step, and no view follows it
  DeleteTrails(map, {Row("Path").trail}, unseen);
  DeleteRanges(map, {RangeRow("Blue").range}, unseen);
  ASSERT_FALSE(unseen.HasSteps());
  ASSERT_EQ(Length(map.removed.trails), 1);
  ASSERT_EQ(Length(map.removed.ranges), 1);
  EXPECT_EQ(Row("Path").trail->name, "Path");
  EXPECT_EQ(RangeRow("Blue").range->name, "Blue");
}

TEST_F(PaneFollowerTest, ADeletedRangeLosesItsOverlapsAndComesBackWithItsColor) {
  Show(std::string(TwoGroupsText) + RangesText);
  RangeRow("Blue").color = 0x010203;
  ClickRangeRow(view, &RangeRow("Blue"), false);
  DeleteSelectedRanges(view, remembered);
  EXPECT_EQ(RangeTexts(), (Texts{"Red", "New"}));
  ASSERT_TRUE(remembered.Undo(*view.map));
  EXPECT_EQ(RangeTexts().size(), 4U);
  EXPECT_EQ(RangeRow("Blue").color, 0x010203);
  EXPECT_TRUE(RangeRow("Blue").selected);
}

TEST_F(PaneFollowerTest, AnOverlapIsNotDeletedDirectly) {
  Show(std::string(TwoGroupsText) + RangesText);
  ClickRangeRow(view, &Overlap(), false);
  DeleteSelectedRanges(view, remembered);
  EXPECT_EQ(Said(), Texts{"You may not delete an intersection directly"});
  EXPECT_EQ(remembered.Steps(), 0U);
}

TEST_F(PaneFollowerTest, DeletingAsksOnceForEachBasisMap) {
  Map& below = Open(TwoGroupsText, "below.map");
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &below;
  ReadMapText(above, "T\tOwn\tTrail\nG\tO\tS20 0\tE47 0\n");
  FinishMap(above);
  view.map = &above;
  BuildTrailRows(view);
  BuildRangeRows(view);
  ClickTrailRow(view, &Row("Papio"), false);
  ClickTrailRow(view, &Row("Trail"), true);
  DeleteSelectedTrails(view, remembered);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].title, "Delete Trail");
  EXPECT_EQ(messages.Questions()[0].text,
            "Trail 2020-3-1 Ana is in the basis map below.map.  Delete it there?");
  EXPECT_EQ(FindTrail(above, "Own"), nullptr);
  EXPECT_EQ(Length(below.trails), 1);
}

TEST_F(PaneFollowerTest, AnUndoGivesRebuiltRowsEveryFieldBack) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  TrailPanelRow& trail = Row("Path");
  trail.visible = false;
  trail.open = trail.selected = trail.filled = true;
  trail.lineStyle = LineStyle::Dotted;
  trail.labelMode = LabelMode::None;
  trail.fillPattern = FillCross;
  trail.markStyle = MarkStyle::Tick;
  trail.color = 0x123456;
  RangePanelRow& range = RangeRow("Blue");
  range.visible = !range.visible;
  const bool visible = range.visible;
  range.selected = true;
  range.shading = 5;
  range.drawMode = RangeDrawMode::Hash;
  range.clusterMask = 9;
  range.estimateMask = 1;
  for (bool& shows : range.showSm) shows = true;
  range.color = 0x654321;
  remembered.Apply({.name = "Import", .map = &map, .change = [](EditFollowUp& followUp) {
                      followUp.freshRows = true;
                      return true;
                    }});
  EXPECT_NE(Row("Path").color, 0x123456);
  EXPECT_NE(RangeRow("Blue").color, 0x654321);
  remembered.Undo(map);
  const TrailPanelRow& path = Row("Path");
  EXPECT_FALSE(path.visible);
  EXPECT_TRUE(path.open && path.selected && path.filled);
  EXPECT_EQ(path.lineStyle, LineStyle::Dotted);
  EXPECT_EQ(path.labelMode, LabelMode::None);
  EXPECT_EQ(path.fillPattern, FillCross);
  EXPECT_EQ(path.markStyle, MarkStyle::Tick);
  EXPECT_EQ(path.color, 0x123456);
  const RangePanelRow& blue = RangeRow("Blue");
  EXPECT_EQ(blue.visible, visible);
  EXPECT_TRUE(blue.selected);
  EXPECT_EQ(blue.shading, 5);
  EXPECT_EQ(blue.drawMode, RangeDrawMode::Hash);
  EXPECT_EQ(blue.clusterMask, 9U);
  EXPECT_EQ(blue.estimateMask, 1U);
  EXPECT_TRUE(blue.showSm[0] && blue.showSm[1] && blue.showSm[2]);
  EXPECT_EQ(blue.color, 0x654321);
  remembered.Redo(map);
  EXPECT_EQ(Row("Path").lineStyle, LineStyle::Solid);
  EXPECT_EQ(RangeRow("Blue").clusterMask, 1U);
}

TEST_F(PaneFollowerTest, AnUndoGivesTrailRowsThatWereRebuiltTheirLookBack) {
  Map& map = Show(TwoGroupsText);
  ClickTriangle(view, Row("Papio"));
  remembered.Apply({.name = "Submap", .map = &map, .change = [](EditFollowUp& followUp) {
                      followUp.freshTrailRows = followUp.solved = true;
                      return true;
                    }});
  EXPECT_FALSE(Row("Papio").open);
  remembered.Undo(map);
  EXPECT_TRUE(Row("Papio").open);
}

TEST_F(PaneFollowerTest, ItKeepsTheRecordsOfRowsThatCanComeBack) {
  Map& map = Show(std::string(TwoGroupsText) + RangesText);
  ClickTrailRow(view, &Row("Path"), false);
  DeleteSelectedTrails(view, remembered);
  ClickRangeRow(view, &RangeRow("Blue"), false);
  DeleteSelectedRanges(view, remembered);
  const auto removed = [&] { return Length(map.removed.trails) + Length(map.removed.ranges); };
  ASSERT_EQ(removed(), 2);
  UnusedRecords records(workspace);
  workspace.holders.KeepAll(records);
  records.Free();
  EXPECT_EQ(removed(), 2);
}

TEST_F(PaneFollowerTest, AnEditOfAnotherMapLeavesTheRowsAlone) {
  Show(TwoGroupsText);
  Row("Path").color = 0x123456;
  Map& other = Open("T\tX\tRoad\nG\tA\tS1 0\tE1 0\n", "other.map");
  const auto read = [](FormerContents&) { return true; };
  EXPECT_TRUE(remembered.Apply({.name = "Color", .map = &other, .change = [&](EditFollowUp&) {
                                  other.trails.front().color = 1;
                                  return true;
                                }}));
  EXPECT_TRUE(remembered.Reread(other, "Reload", read));
  EXPECT_EQ(Row("Path").color, 0x123456);
  EXPECT_EQ(follower.Remembered(), 0U);
}

TEST_F(PaneFollowerTest, RowsOfAMapThatIsReadAgainKeepWhatTheUserChanged) {
  Map& map = Show(TwoGroupsText);
  Row("Path").color = 0x123456;
  Row("Papio").open = true;
  EXPECT_TRUE(remembered.Reread(map, "Reload", [](FormerContents&) { return true; }));
  EXPECT_EQ(Row("Path").color, 0x123456);
  EXPECT_TRUE(Row("Papio").open);
}

}  // namespace
}  // namespace orvane
