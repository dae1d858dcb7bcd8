#include "panes/pane_clicks.h"

#include "pane_fixture.h"
#include "panes/range_drops.h"
#include "panes/visibility.h"

namespace orvane {
namespace {

struct PaneClicks : PaneFixture {};

TEST_F(PaneClicks, AClickSelectsARowWithAllBelowAndNothingElse) {
  Show(TwoGroupsText);
  ClickTrailRow(view, &Row("Path"), false);
  ClickTrailRow(view, &Row("Papio"), false);
  EXPECT_FALSE(Row("Path").selected);
  EXPECT_TRUE(Row("Papio").selected);
  EXPECT_TRUE(Row("2020-3-1 Ana").selected);
  EXPECT_TRUE(Row("2020-3-2").selected);
}

TEST_F(PaneClicks, AClickWithShiftFlipsEachRowByItself) {
  Show(TwoGroupsText);
  ClickTrailRow(view, &Row("2020-3-2"), false);
  ClickTrailRow(view, &Row("Papio"), true);
  EXPECT_TRUE(Row("Papio").selected);
  EXPECT_TRUE(Row("2020-3-1 Ana").selected);
  EXPECT_FALSE(Row("2020-3-2").selected);
}

TEST_F(PaneClicks, TheRowNewIsNeverSelectedOrHidden) {
  Show(TwoGroupsText);
  ClickTrailRow(view, &Row("Path"), false);
  ClickTrailRow(view, &Row("New"), true);
  EXPECT_TRUE(Row("Path").selected);
  ClickTrailTick(view, Row("New"));
  EXPECT_TRUE(Row("Path").selected) << "its tick does nothing";
  ClickTrailRow(view, &Row("New"), false);
  EXPECT_FALSE(Row("New").selected);
  EXPECT_FALSE(Row("Path").selected);
  EXPECT_TRUE(Row("New").visible);
  ClickRangeTick(view, RangeRow("New"));
  EXPECT_TRUE(RangeRow("New").visible);
}

TEST_F(PaneClicks, ATickFlipsAllBelowAndClearsTheSelection) {
  Show(TwoGroupsText);
  Row("2020-3-2").visible = true;
  ClickTrailRow(view, &Row("Papio"), false);
  ClickTrailTick(view, Row("Papio"));
  EXPECT_TRUE(Row("Papio").visible);
  EXPECT_TRUE(Row("2020-3-1 Ana").visible);
  EXPECT_FALSE(Row("2020-3-2").visible);
  EXPECT_FALSE(Row("Papio").selected);
}

TEST_F(PaneClicks, ATriangleOpensAGroup) {
  Show(TwoGroupsText);
  EXPECT_TRUE(HasTriangle(Row("Papio")));
  EXPECT_FALSE(HasTriangle(Row("2020-3-2")));
  EXPECT_FALSE(HasTriangle(Row("New")));
  ClickTriangle(view, Row("Papio"));
  EXPECT_TRUE(Row("Papio").open);
  ClickTriangle(view, Row("Papio"));
  EXPECT_FALSE(Row("Papio").open);
}

constexpr char HillText[] =
    "Z\t\t1,10\nT\tA\tHuman\nG\tA\tS20 0\tE47 0\t100\nG\tB\tS20 0.5\tE47 0\t150\n"
    "G\tC\tS20 0\tE47 0.5\t130\n";

TEST_F(PaneClicks, ContinuousContoursAreAGroupOfTheirOwn) {
  Map& map = Show(HillText);
  ASSERT_TRUE(AwaitsContours(view, Row("Continuous contours")));
  EXPECT_FALSE(Row("Continuous contours").visible);
  ClickTrailTick(view, Row("Continuous contours"));
  EXPECT_TRUE(Row("Continuous contours").visible);
  EXPECT_GT(Length(map.continuousContours), 0);
  EXPECT_EQ(Length(map.contourTrails), 0);
  EXPECT_TRUE(AwaitsContours(view, Row("Contours")));
  const TrailPanelRow* line = FindTrailRow(view, map.continuousContours.front());
  ASSERT_NE(line, nullptr);
  EXPECT_TRUE(line->visible);
  EXPECT_EQ(line->color, Row("Continuous contours").color);
  EXPECT_EQ(line->color, Row("Contours").color);
}

TEST_F(PaneClicks, MissingContoursAreMadeOnceAndOnlyIfAMapAsksForThem) {
  Map& map = Show(HillText);
  int steps = 0;
  const auto cancel = [&](const char*, int) { return ++steps < 0; };
  EXPECT_FALSE(MakeMissingContours(map, cancel));
  EXPECT_EQ(Length(map.contourTrails), 0);
  EXPECT_TRUE(MakeMissingContours(map));
  EXPECT_GT(Length(map.contourTrails), 0);
  steps = 0;
  EXPECT_TRUE(MakeMissingContours(map, cancel));
  EXPECT_EQ(steps, 0);
  Map& plain = Show(TwoGroupsText);
  EXPECT_TRUE(MakeMissingContours(plain, cancel));
  EXPECT_EQ(Length(plain.contourTrails), 0);
}

/// The tick was set on a row that still had no lines.
TEST_F(PaneClicks, CanceledContoursLeaveTheTick) {
  Map& map = Show(HillText);
  const ContourProgress cancel = [](const char* stage, int) { return stage == nullptr; };
  for (const std::string group : {"Contours", "Continuous contours"}) {
    ClickTrailTick(view, Row(group), cancel);
    EXPECT_FALSE(Row(group).visible);
    ClickTriangle(view, Row(group), cancel);
    EXPECT_FALSE(Row(group).open);
    ClickTrailRow(view, &Row(group), false);
    TrailVisibility dialog = *OpenTrailVisibility(view);
    dialog.visible = true;
    EXPECT_TRUE(ApplyTrailVisibility(view, dialog, history, cancel));
    EXPECT_FALSE(Row(group).visible);
  }
  EXPECT_EQ(Length(map.contourTrails) + Length(map.continuousContours), 0);
}

TEST_F(PaneClicks, ContoursAreMadeAtTheFirstLook) {
  Map& map = Show(HillText);
  ASSERT_TRUE(AwaitsContours(view, Row("Contours")));
  ClickTriangle(view, Row("Contours"));
  const auto lines = Length(map.contourTrails);
  EXPECT_GT(lines, 0);
  EXPECT_TRUE(Row("Contours").open);
  EXPECT_FALSE(AwaitsContours(view, Row("Contours")));
  ClickTrailTick(view, Row("Contours"));
  EXPECT_EQ(Length(map.contourTrails), lines);
}

TEST_F(PaneClicks, KeysAreInTheReverseOrderOfThePane) {
  Show(TwoGroupsText);
  ClickTrailRow(view, &Row("Cebus"), false);
  ClickTrailRow(view, &Row("2020-3-1 Ana"), true);
  ClickTrailRow(view, &Row("Path"), true);
  const std::forward_list<SearchKey> keys = KeysFromSelection(view.trailViews);
  ASSERT_EQ(Length(keys), 3);
  auto key = keys.begin();
  EXPECT_EQ(key->type, "Trail");
  EXPECT_EQ(key->dateFrom, 0);
  ++key;
  EXPECT_EQ(key->type, "Papio");
  EXPECT_EQ(key->focalAnimal, "Ana");
  EXPECT_EQ(key->dateFrom, PackDate(2020, 3, 1));
  EXPECT_EQ(key->dateTo, key->dateFrom);
  ++key;
  EXPECT_EQ(key->type, "Cebus");
}

TEST_F(PaneClicks, ADropOnNewNamesTheRangeAfterItsGroupWithANumberIfNeedBe) {
  Map& map = Show(TwoGroupsText);
  ClickTrailRow(view, &Row("Papio"), false);
  EXPECT_TRUE(DropSelection(view, RangeRow("New"), history));
  EXPECT_TRUE(DropSelection(view, RangeRow("New"), history));
  EXPECT_TRUE(DropSelection(view, RangeRow("New"), history));
  EXPECT_EQ(RangeTexts().front(), "Papio");
  EXPECT_EQ(RangeTexts()[1], "Papio 2");
  EXPECT_EQ(RangeTexts()[2], "Papio 3");
  EXPECT_EQ(RangeRow("Papio").clusterMask, 1U);
  EXPECT_GT(map.ranges.front().mcpArea, 0);
  EXPECT_NE(map.flags & MapDirty, 0U);
}

// The name ended with half a letter, and so was shown as Latin-1.
TEST_F(PaneClicks, TheNumberOfARangeFollowsAWholeLetter) {
  const std::string letters(39, 'x');
  const std::string type = letters + "\xC3\xA9";
  Show("T\tPath\t" + type + "\nG\tA\tS20 0\tE47 0\n");
  ClickTrailRow(view, &Row(type), false);
  EXPECT_TRUE(DropSelection(view, RangeRow("New"), history));
  EXPECT_TRUE(DropSelection(view, RangeRow("New"), history));
  EXPECT_EQ(RangeTexts()[0], letters + " 2");
}

TEST_F(PaneClicks, ADropPutsItsKeysInFront) {
  Map& map = Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\n");
  ClickTrailRow(view, &Row("Cebus"), false);
  EXPECT_TRUE(DropSelection(view, RangeRow("Blue"), history));
  EXPECT_EQ(map.ranges.front().keys.front().type, "Cebus");
  EXPECT_EQ(Length(map.ranges.front().keys), 2);
}

TEST_F(PaneClicks, ADropWithoutSelectionOrOnAnIntersectionDoesNothing) {
  Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  EXPECT_FALSE(DropSelection(view, RangeRow("Blue"), history));
  ClickTrailRow(view, &Row("Cebus"), false);
  ASSERT_NE(view.rangeViews.size(), 3U);
  const auto overlap = std::find_if(view.rangeViews.begin(), view.rangeViews.end(),
                                    [](const auto& row) { return row.intersection != nullptr; });
  ASSERT_NE(overlap, view.rangeViews.end());
  EXPECT_FALSE(DropSelection(view, *overlap, history));
  EXPECT_EQ(history.Steps(), 0U);
}

TEST_F(PaneClicks, RangesAreSelectedAndTickedOneByOneOrAllAtOnce) {
  Show(std::string(TwoGroupsText) + "R\tBlue\nK\tPapio\nR\tRed\nK\tCebus\n");
  ClickRangeRow(view, &RangeRow("Blue"), false);
  ClickRangeRow(view, &RangeRow("Red"), true);
  EXPECT_TRUE(RangeRow("Blue").selected && RangeRow("Red").selected);
  ClickRangeRow(view, &RangeRow("Blue"), true);
  EXPECT_FALSE(RangeRow("Blue").selected);
  ClickRangeRow(view, nullptr, true);
  EXPECT_FALSE(RangeRow("Red").selected) << "beside the rows nothing stays selected";
  SelectAllRanges(view);
  EXPECT_TRUE(RangeRow("Blue").selected);
  EXPECT_FALSE(RangeRow("New").selected);
  ClickRangeRow(view, &RangeRow("New"), true);
  EXPECT_TRUE(RangeRow("Blue").selected);
  const bool visible = RangeRow("Blue").visible;
  ClickRangeTick(view, RangeRow("Blue"));
  EXPECT_NE(RangeRow("Blue").visible, visible);
  EXPECT_FALSE(RangeRow("Red").selected);
}

TEST_F(PaneClicks, AGroupWithoutRowsOrLinesDoesNotOpen) {
  Map& map = Show(HillText);
  map.contourEnabled = 0;
  EXPECT_TRUE(AwaitsContours(view, Row("Contours")));
  ClickTriangle(view, Row("Contours"));
  EXPECT_FALSE(Row("Contours").open);
  EXPECT_EQ(Length(map.contourTrails), 0);
  EXPECT_TRUE(ShowContours(view, Row("Human"), {}));
  EXPECT_FALSE(AwaitsContours(view, Row("A"))) << "not a group";
}

TEST_F(PaneClicks, ATypeThatIsTakenGetsTheNextFreeNumber) {
  Show(std::string(TwoGroupsText) + "R\tPapio\nK\tX\nR\tPapio 2\nK\tX\n");
  ClickTrailRow(view, &Row("Papio"), false);
  EXPECT_TRUE(DropSelection(view, RangeRow("New"), history));
  EXPECT_EQ(*history.UndoName(*view.map), "New Range Papio 3");
  EXPECT_EQ(RangeRow("Papio 3").range->keys.front().type, "Papio");
}

TEST_F(PaneClicks, AClickBesideTheRowsClearsTheSelection) {
  Show(TwoGroupsText);
  ClickTrailRow(view, &Row("Path"), false);
  ClickTrailRow(view, nullptr, true);
  EXPECT_FALSE(Row("Path").selected);
}

TEST_F(PaneClicks, AGroupWithoutRowsGivesNoKey) {
  Show(HillText);
  ClickTrailRow(view, &Row("Contours"), false);
  EXPECT_TRUE(KeysFromSelection(view.trailViews).empty());
  EXPECT_FALSE(DropSelection(view, RangeRow("New"), history));
}

}  // namespace
}  // namespace orvane
