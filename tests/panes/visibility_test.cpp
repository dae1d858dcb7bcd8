#include "panes/visibility.h"

#include "pane_fixture.h"
#include "panes/pane_clicks.h"
#include "view/fills.h"

namespace orvane {
namespace {

struct VisibilityTest : PaneFixture {};

TEST_F(VisibilityTest, ShowsTheFirstSelectedRowWithTheValuesThatItsButtonsHave) {
  Show(TwoGroupsText);
  EXPECT_FALSE(OpenTrailVisibility(view));
  Row("Path").selected = true;
  Row("Path").lineStyle = StyleOf<LineStyle>(4);
  Row("Path").labelMode = LabelMode::Unset;
  Row("Path").markStyle = MarkStyle::HalfTick;
  const auto dialog = OpenTrailVisibility(view);
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->lineStyle, LineStyle::Dashed);
  EXPECT_EQ(dialog->labelMode, LabelMode::Auto);
  EXPECT_EQ(dialog->markStyle, MarkStyle::Plus);
}

TEST_F(VisibilityTest, OpeningGivesAnUnfilledRowTheSolidPattern) {
  Show(TwoGroupsText);
  Row("Path").selected = true;
  EXPECT_EQ(OpenTrailVisibility(view)->fillPattern, FillSolid);
  EXPECT_EQ(Row("Path").fillPattern, FillSolid) << "even if the dialog is cancelled";
}

TEST_F(VisibilityTest, FilledRulesThePatternsAndTheSolidLine) {
  TrailVisibility dialog;
  EXPECT_FALSE(IsLineStyleEnabled(dialog, LineStyle::Solid));
  EXPECT_TRUE(IsLineStyleEnabled(dialog, LineStyle::Dashed));
  EXPECT_FALSE(IsFillPatternEnabled(dialog, FillRising));
  EXPECT_TRUE(IsFillPatternEnabled(dialog, FillSolid));
  dialog.filled = true;
  EXPECT_TRUE(IsLineStyleEnabled(dialog, LineStyle::Solid));
  EXPECT_TRUE(IsFillPatternEnabled(dialog, FillCross));
  EXPECT_FALSE(IsFillPatternEnabled(dialog, FillOutline));
}

TEST_F(VisibilityTest, OkGivesSelectedRowsAndTheirTrailsTheStyle) {
  Map& map = Show(TwoGroupsText);
  Row("Papio").selected = true;
  Row("2020-3-2").selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  dialog.visible = true;
  dialog.color = "olive";
  dialog.filled = true;
  dialog.fillPattern = FillCross;
  dialog.markStyle = MarkStyle::Rect;
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, history));
  const Trail& trail = *FindTrailByDate(map, "Papio", PackDate(2020, 3, 2), "");
  EXPECT_EQ(trail.color, 0x808000);
  EXPECT_TRUE(trail.filled);
  EXPECT_EQ(trail.fillPattern, FillCross);
  EXPECT_EQ(trail.markStyle, MarkStyle::Rect);
  EXPECT_FALSE(Row("2020-3-1 Ana").visible) << "not selected itself";
  EXPECT_EQ(map.flags & MapDirty, 0U);
}

TEST_F(VisibilityTest, VisibleMakesContoursTheFirstTimeOnly) {
  Map& map = Show(
      "Z\t\t1,10\nT\tA\tHuman\nG\tA\tS20 0\tE47 0\t100\nG\tB\tS20 0.5\tE47 0\t150\n"
      "G\tC\tS20 0\tE47 0.5\t130\n");
  int runs = 0;
  const ContourProgress count = [&](const char* stage, int) {
    runs += stage != nullptr ? 1 : 0;
    return true;
  };
  Row("Contours").selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  dialog.visible = false;
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, history, count));
  EXPECT_TRUE(map.contourTrails.empty()) << "what is not shown is not made";
  for (const bool visible : {true, false, true}) {
    dialog.visible = visible;
    ASSERT_TRUE(ApplyTrailVisibility(view, dialog, history, count));
    EXPECT_EQ(Row("Contours").visible, visible);
    ASSERT_FALSE(map.contourTrails.empty());
    if (!visible) continue;
    const int once = runs;
    const long lines = Length(map.contourTrails);
    const size_t rows = Row("Contours").children.size();
    ASSERT_TRUE(ApplyTrailVisibility(view, dialog, history, count));
    EXPECT_EQ(runs, once);
    EXPECT_EQ(Length(map.contourTrails), lines);
    EXPECT_EQ(Row("Contours").children.size(), rows);
  }
  EXPECT_TRUE(map.continuousContours.empty());
}

TEST_F(VisibilityTest, AnEmptyColorIsNoneAndABadOneStays) {
  Show(TwoGroupsText);
  Row("Path").selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  dialog.color = "muddy";
  EXPECT_FALSE(ApplyTrailVisibility(view, dialog, history));
  EXPECT_EQ(Said(), Texts{"Bad Color"});
  dialog.color = "";
  EXPECT_TRUE(ApplyTrailVisibility(view, dialog, history));
  EXPECT_EQ(Row("Path").color, NoColor);
}

TEST_F(VisibilityTest, RangesAndIntersectionsShadeInTheirOwnPatterns) {
  Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  EXPECT_FALSE(OpenRangeVisibility(view));
  EXPECT_EQ(Said(), Texts{"Select a range first"});
  RangeRow("Blue").selected = true;
  RangeControls controls = ControlsOfRange(view);
  EXPECT_TRUE(controls.shading[FillRising]);
  EXPECT_FALSE(controls.shading[FillCross]);
  EXPECT_FALSE(controls.shading[FillSolid]);
  EXPECT_TRUE(controls.shading[NoShading]);
  EXPECT_TRUE(controls.clusters);
  EXPECT_FALSE(controls.drawMode[static_cast<size_t>(RangeDrawMode::CoreGrid)]) << "no grid";
  EXPECT_FALSE(controls.showSm[0]);
  ClearRangeSelection(view);
  for (RangePanelRow& row : view.rangeViews) row.selected = row.intersection != nullptr;
  controls = ControlsOfRange(view);
  EXPECT_FALSE(controls.shading[FillRising]);
  EXPECT_TRUE(controls.shading[FillDiagonals]);
  EXPECT_FALSE(controls.clusters);
}

TEST_F(VisibilityTest, OkGivesAllSelectedRangesTheSameLook) {
  Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  RangeRow("Blue").selected = true;
  RangeRow("Blue").shading = 6;
  RangeRow("Red").selected = true;
  RangeVisibility dialog = *OpenRangeVisibility(view);
  EXPECT_EQ(dialog.shading, NoShading);
  dialog.clusterMask = 5;
  dialog.drawMode = RangeDrawMode::Hash;
  dialog.showSm = {false, true, false};
  ASSERT_TRUE(ApplyRangeVisibility(view, dialog));
  for (const char* name : {"Blue", "Red"}) {
    EXPECT_EQ(RangeRow(name).clusterMask, 5U);
    EXPECT_EQ(RangeRow(name).shading, NoShading);
    EXPECT_EQ(RangeRow(name).drawMode, RangeDrawMode::Hash);
    EXPECT_TRUE(RangeRow(name).showSm[1]);
  }
}

TEST_F(VisibilityTest, ShowsEachStyleThatHasAButton) {
  Show(TwoGroupsText);
  TrailPanelRow& row = Row("Path");
  row.selected = true;
  for (const LineStyle style : {LineStyle::Solid, LineStyle::Dotted, LineStyle::Dashed}) {
    row.lineStyle = style;
    EXPECT_EQ(OpenTrailVisibility(view)->lineStyle, style);
  }
  for (const LabelMode mode : {LabelMode::None, LabelMode::FirstLast, LabelMode::All}) {
    row.labelMode = mode;
    EXPECT_EQ(OpenTrailVisibility(view)->labelMode, mode);
  }
  row.labelMode = LabelMode::Auto;
  EXPECT_EQ(OpenTrailVisibility(view)->labelMode, LabelMode::Auto);
  for (const MarkStyle style : {MarkStyle::None, MarkStyle::Circle, MarkStyle::Rect}) {
    row.markStyle = style;
    EXPECT_EQ(OpenTrailVisibility(view)->markStyle, style);
  }
  row.markStyle = MarkStyle::Unknown;
  EXPECT_EQ(OpenTrailVisibility(view)->markStyle, MarkStyle::Plus);
}

TEST_F(VisibilityTest, OnlyTheLinesOfTheDialogHaveButtons) {
  TrailVisibility dialog;
  EXPECT_TRUE(IsLineStyleEnabled(dialog, LineStyle::Dotted));
  EXPECT_FALSE(IsLineStyleEnabled(dialog, LineStyle::Unset));
  dialog.filled = true;
  EXPECT_FALSE(IsFillPatternEnabled(dialog, FillRising - 1));
  EXPECT_TRUE(IsFillPatternEnabled(dialog, FillRising));
}

TEST_F(VisibilityTest, TheGridAndTheCountsOfARangeHaveTheirControls) {
  Map& map =
      Show("Z\t,fruit\n" + std::string(TwoGroupsText) + "H\tA\t100\t5\t5\nR\tBlue\nK\tPapio\n");
  const RangeControls none = ControlsOfRange(view);
  EXPECT_FALSE(none.shading[NoShading] || none.clusters || none.estimates);
  RangePanelRow& row = RangeRow("Blue");
  row.selected = true;
  ASSERT_EQ(row.range->grid, &map.grids.front());
  const RangeControls controls = ControlsOfRange(view);
  EXPECT_TRUE(controls.estimates);
  EXPECT_TRUE(controls.drawMode[static_cast<size_t>(RangeDrawMode::CoreGrid)]);
  EXPECT_EQ(controls.showSm, (std::array<bool, 3>{false, true, false}));
  const auto sm1 = static_cast<size_t>(RangeDrawMode::Sm1);
  EXPECT_FALSE(controls.drawMode[sm1]);
  EXPECT_TRUE(controls.drawMode[sm1 + 1]);
}

TEST_F(VisibilityTest, ABadColorOfARangeStays) {
  Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  for (RangePanelRow& row : view.rangeViews) row.selected = !row.fixed;
  RangeVisibility dialog = *OpenRangeVisibility(view);
  dialog.color = "muddy";
  dialog.estimateMask = 1;
  EXPECT_FALSE(ApplyRangeVisibility(view, dialog));
  EXPECT_EQ(Said(), Texts{"Bad Color"});
  EXPECT_EQ(RangeRow("Blue").estimateMask, 0U);
  dialog.color = "";
  EXPECT_TRUE(ApplyRangeVisibility(view, dialog));
  for (const RangePanelRow& row : view.rangeViews) {
    if (row.fixed) continue;
    EXPECT_EQ(row.color, NoColor);
    EXPECT_EQ(row.estimateMask, row.range != nullptr ? 1U : 0U) << "overlaps have no estimates";
  }
}

TEST_F(VisibilityTest, ARowThatIsFilledOrHasAPatternKeepsIt) {
  Show(TwoGroupsText);
  TrailPanelRow& row = Row("Path");
  row.selected = true;
  row.filled = true;
  EXPECT_EQ(OpenTrailVisibility(view)->fillPattern, 0);
  row.filled = false;
  row.fillPattern = FillCross;
  EXPECT_FALSE(OpenTrailVisibility(view)->gavePattern);
}

TEST_F(VisibilityTest, ThePatternThatOpeningGaveIsTakenOnlyFromARowThatIsNotFilled) {
  Show(TwoGroupsText);
  Row("Path").selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  ASSERT_TRUE(dialog.gavePattern);
  Row("Path").filled = true;
  dialog.fillPattern = FillCross;
  EXPECT_TRUE(ApplyTrailVisibility(view, dialog, history));
  EXPECT_EQ(Row("Path").fillPattern, FillCross);
  Row("Path").selected = false;
  dialog.fillPattern = FillRising;
  EXPECT_TRUE(ApplyTrailVisibility(view, dialog, history));
  EXPECT_EQ(Row("Path").fillPattern, FillCross) << "nothing is selected any more";
}

TEST_F(VisibilityTest, TrailsOfTheBasisGetTheStyleThere) {
  Map& below = Show(TwoGroupsText);
  Map& above = Open("T\tOwn\tTrail\nG\tO\tS20 0\tE47 0\n", "above.map");
  above.basis = &below;
  view.map = &above;
  BuildTrailRows(view);
  Row("Path").selected = true;
  TrailVisibility dialog = *OpenTrailVisibility(view);
  dialog.color = "red";
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, history));
  EXPECT_EQ(FindTrail(below, "Path")->color, 0xFF0000);
  EXPECT_NE(below.flags & MapUnlikeFile, 0U);
  EXPECT_EQ(above.flags & MapUnlikeFile, 0U);
  below.flags &= ~std::uint32_t{MapUnlikeFile};
  const size_t steps = history.Steps();
  ASSERT_TRUE(ApplyTrailVisibility(view, dialog, history));
  EXPECT_EQ(history.Steps(), steps) << "the same style once more is no step";
}

}  // namespace
}  // namespace orvane
