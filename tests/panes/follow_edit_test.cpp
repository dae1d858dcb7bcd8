#include "panes/follow_edit.h"

#include "editing/trail_editor.h"
#include "pane_fixture.h"
#include "panes/open_editors.h"
#include "panes/pane_clicks.h"
#include "panes/range_drops.h"
#include "panes/visibility.h"

namespace orvane {
namespace {

struct FollowEditTest : PaneFixture {
  /// The trail pane as lines, one for each row, indented by depth.
  Texts TrailTexts() {
    Texts texts;
    for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) texts.push_back(row->text);
    return texts;
  }
};

TEST_F(FollowEditTest, ANewTrailGetsARowInTheGroupOfItsTypeInAnyCase) {
  Map& map = Show(TwoGroupsText);
  Row("Trail").open = true;
  TrailEditor editor(map, nullptr);
  editor.SetField(TrailField::Type, "TRAIL");
  editor.SetField(TrailField::Name, "Bend");
  editor.SetCell(0, 0, "A");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_EQ(Row("Trail").children.size(), 2U);
  EXPECT_EQ(Row("Trail").children.front().text, "Bend");
  EXPECT_TRUE(Row("Trail").open);
  history.Undo(map);
  EXPECT_EQ(Row("Trail").children.size(), 1U);
  history.Redo(map);
  EXPECT_EQ(Row("Trail").children.size(), 2U);
}

/// The groups appeared only when the map was opened again.
// A trail of such a type would keep the lines from being made.
TEST_F(FollowEditTest, ContoursAreNotOfferedAsATypeOfTrails) {
  Show("Z\t\t1,10\n" + std::string(TwoGroupsText));
  ASSERT_NE(TrailTexts(), OfferedTrailTypes(view));
  EXPECT_TRUE(ContourKindOf(Row("Contours")));
  EXPECT_TRUE(ContourKindOf(Row("Continuous contours")));
  EXPECT_EQ(OfferedTrailTypes(view), (Texts{"Cebus", "Papio", "Trail"}));
}

TEST_F(FollowEditTest, AnEditThatTurnsContoursOnGivesTheirGroups) {
  Map& map = Show(TwoGroupsText);
  const auto has = [&](const std::string& text) {
    return std::any_of(view.trailViews.begin(), view.trailViews.end(),
                       [&](const TrailPanelRow& row) { return row.text == text; });
  };
  history.Apply({.name = "Contours", .map = &map, .change = [&](EditFollowUp&) {
                   map.contourEnabled = 1;
                   map.contourInterval = 10;
                   return true;
                 }});
  EXPECT_TRUE(has("Contours") && has("Continuous contours"));
  EXPECT_FALSE(Row("Contours").visible);
  history.Undo(map);
  EXPECT_FALSE(has("Contours") || has("Continuous contours"));
  history.Redo(map);
  EXPECT_TRUE(has("Contours") && has("Continuous contours"));
}

TEST_F(FollowEditTest, AnEmptyGroupLosesItsRow) {
  Map& map = Show(TwoGroupsText);
  const Texts before = TrailTexts();
  TrailEditor editor(map, nullptr);
  editor.SetField(TrailField::Type, "Road");
  editor.SetField(TrailField::Name, "East");
  editor.SetCell(0, 0, "A");
  SaveTrailEditor(editor, history);
  EXPECT_NE(TrailTexts(), before);
  history.Undo(map);
  EXPECT_EQ(TrailTexts(), before);
}

TEST_F(FollowEditTest, RowsKeepTheirLookThroughASolve) {
  Map& map = Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\n");
  RangeRow("Blue").color = 0x112233;
  Row("2020-3-2").selected = true;
  TrailEditor editor(map, FindTrail(map, "Path"));
  editor.SetCell(0, 3, "50");
  editor.SetField(TrailField::LineColor, "red");
  SaveTrailEditor(editor, history);
  EXPECT_EQ(RangeRow("Blue").color, 0x112233);
  EXPECT_TRUE(Row("2020-3-2").selected);
  EXPECT_EQ(Row("Path").color, 0xFF0000) << "a colour changed in the editor shows";
}

// OK gave the row the old colour of the form.
TEST_F(FollowEditTest, ARowKeepsAColorThatItGotWhileTheEditorWasOpen) {
  Map& map = Show(TwoGroupsText);
  TrailEditor editor(map, FindTrail(map, "Path"));
  editor.SetField(TrailField::LineColor, "blue");
  ASSERT_EQ(SaveTrailEditor(editor, history), SaveOutcome::Closes);
  TrailEditor open(map, FindTrail(map, "Path"));
  Row("Path").selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  dialog.color = "red";
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, history));
  open.SetField(TrailField::Width, "3");
  ASSERT_EQ(SaveTrailEditor(open, history), SaveOutcome::Closes);
  EXPECT_EQ(Row("Path").color, 0xFF0000);
  EXPECT_EQ(FindTrail(map, "Path")->color, 0x0000FF) << "the trail has what the form showed";
}

TEST_F(FollowEditTest, ARenamedRangeMovesToItsPlace) {
  Map& map = Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tAzure\nK\tCebus\n");
  RangeRow("Azure").shading = 3;
  RangeEditor editor(map, RangeRow("Azure").range, RangeRow("Azure").color);
  editor.SetName("Violet");
  ASSERT_EQ(SaveRangeEditor(editor, view, history), SaveOutcome::Closes);
  EXPECT_EQ(RangeTexts()[0], "Blue");
  EXPECT_EQ(RangeTexts()[1], "Violet");
  EXPECT_EQ(RangeRow("Violet").shading, 3);
}

TEST_F(FollowEditTest, ChangedKeysRebuildTheRowsOfItsIntersections) {
  Map& map = Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  const size_t rows = view.rangeViews.size();
  ASSERT_EQ(rows, 4U);
  RangeEditor editor(map, RangeRow("Red").range, 0xFF0000);
  editor.SetCell(0, 0, "Nobody");
  ASSERT_EQ(SaveRangeEditor(editor, view, history), SaveOutcome::Closes);
  EXPECT_EQ(view.rangeViews.size(), 3U) << "nothing overlaps any more";
  history.Undo(map);
  EXPECT_EQ(view.rangeViews.size(), rows);
  for (const RangePanelRow& row : view.rangeViews) {
    if (row.intersection != nullptr) {
      EXPECT_EQ(row.text, row.intersection->name);
    }
  }
}

TEST_F(FollowEditTest, ANewRangeOfTheEditorHasTheColorOfItsField) {
  Map& map = Show(TwoGroupsText);
  RangeEditor editor(map, nullptr, NoColor);
  editor.SetName("Green");
  editor.SetColorText("green");
  editor.SetCell(0, 0, "Papio");
  ASSERT_EQ(SaveRangeEditor(editor, view, history), SaveOutcome::Closes);
  EXPECT_EQ(RangeRow("Green").color, 0x008000);
  EXPECT_EQ(RangeRow("Green").clusterMask, 0U) << "its row was made before it was analysed";
}

TEST_F(FollowEditTest, AnEditOfAnotherMapChangesNoRow) {
  Show(TwoGroupsText);
  const unsigned made = workspace.rangeRowsMade;
  Map& other = Open("T\tX\tRoad\nG\tA\tS1 0\tE1 0\nR\tBlue\nK\tRoad\n", "other.map");
  TrailEditor editor(other, FindTrail(other, "X"));
  editor.SetCell(0, 3, "50");
  SaveTrailEditor(editor, history);
  EXPECT_EQ(workspace.rangeRowsMade, made);
}

TEST_F(FollowEditTest, AskingToCloseSavesOnlyOnOk) {
  Map& map = Show(TwoGroupsText);
  TrailEditor editor(map, FindTrail(map, "Path"));
  EXPECT_EQ(RequestCloseTrailEditor(editor, history), SaveOutcome::Closes);
  EXPECT_TRUE(messages.Questions().empty());
  editor.SetCell(0, 3, "50");
  EXPECT_EQ(RequestCloseTrailEditor(editor, history), SaveOutcome::Closes);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].text,
            "You have made changes to this trail.  Do you want to save it?");
  EXPECT_EQ(history.Steps(), 1U) << "answered by the first button";
}

TEST_F(FollowEditTest, OpensTheOnlyTrailOfAGroup) {
  Map& map = Show(TwoGroupsText);
  EXPECT_EQ(TrailToEdit(view), nullptr);
  ClickTrailRow(view, &Row("Cebus"), false);
  EXPECT_EQ(TrailToEdit(view), FindTrailByDate(map, "Cebus", PackDate(2020, 3, 1), ""));
  ClickTrailRow(view, &Row("Papio"), false);
  EXPECT_EQ(TrailToEdit(view), nullptr);
  EXPECT_EQ(RangeToEdit(view), nullptr);
  EXPECT_EQ(Said(),
            (Texts{"No trail selected", "Please open this set of trails before double clicking",
                   "No range selected"}));
}

}  // namespace
}  // namespace orvane
