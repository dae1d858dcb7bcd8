#include "panes/pane_follower.h"

#include "editing/trail_editor.h"
#include "pane_fixture.h"
#include "panes/delete_rows.h"
#include "panes/open_editors.h"
#include "panes/pane_clicks.h"
#include "panes/trail_tree.h"
#include "panes/visibility.h"

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
  dialog.markStyle = MarkRect;
  dialog.visible = !visible;
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, remembered));
  ASSERT_TRUE(remembered.Undo(*view.map));
  EXPECT_EQ(Row("Path").color, color);
  EXPECT_EQ(Row("Path").markStyle, MarkNone);
  EXPECT_EQ(Row("Path").trail->markStyle, MarkNone);
  EXPECT_EQ(Row("Path").visible, !visible);
  ASSERT_TRUE(remembered.Redo(*view.map));
  EXPECT_EQ(Row("Path").color, 0xFF0000);
  EXPECT_EQ(Row("Path").markStyle, MarkRect);
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

}  // namespace
}  // namespace orvane
