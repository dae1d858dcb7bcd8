#include "panes/pane_selection.h"

#include "pane_fixture.h"
#include "panes/hint_place.h"
#include "panes/pane_clicks.h"
#include "panes/tips.h"

namespace orvane {
namespace {

struct PaneSelection : PaneFixture {
  Texts Selected() {
    Texts texts;
    for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
      if (row->selected) texts.push_back(row->text);
    }
    return texts;
  }
};

TEST_F(PaneSelection, TakesTheRowsBetweenTwoInEitherOrder) {
  Show(TwoGroupsText);
  SelectTrailsBetween(view, Row("Papio"), Row("Trail"));
  EXPECT_EQ(Selected(), (Texts{"Papio", "2020-3-1 Ana", "2020-3-2", "Trail", "Path"}));
  SelectTrailsBetween(view, Row("Papio"), Row("Cebus"));
  EXPECT_EQ(Selected(), (Texts{"Cebus", "2020-3-1", "Papio", "2020-3-1 Ana", "2020-3-2"}));
  SelectTrailsBetween(view, Row("Cebus"), Row("Cebus"));
  EXPECT_EQ(Selected(), (Texts{"Cebus", "2020-3-1"}));
}

TEST_F(PaneSelection, CountsOnlyRowsThatShowAsRowsBetween) {
  Show(TwoGroupsText);
  Row("Papio").open = true;
  EXPECT_EQ(ShownTrailRows(view.trailViews).size(), 6U);
  SelectTrailsBetween(view, Row("2020-3-2"), Row("Trail"));
  EXPECT_EQ(Selected(), (Texts{"2020-3-2", "Trail", "Path"}));
}

TEST_F(PaneSelection, LeavesNewOut) {
  Show(TwoGroupsText);
  SelectTrailsBetween(view, Row("Trail"), Row("New"));
  EXPECT_EQ(Selected(), (Texts{"Trail", "Path"}));
  ClickRangeRow(view, nullptr, false);
  SelectRangesBetween(view, RangeRow("New"), RangeRow("New"));
  EXPECT_FALSE(RangeRow("New").selected);
}

TEST_F(PaneSelection, TakesRangesBetween) {
  Show(std::string(TwoGroupsText) + "R\tA\nK\tPapio\nR\tB\nK\tCebus\nR\tC\nK\tPapio\n");
  SelectRangesBetween(view, RangeRow("C"), RangeRow("B"));
  EXPECT_FALSE(RangeRow("A").selected);
  EXPECT_TRUE(RangeRow("B").selected);
  EXPECT_TRUE(RangeRow("C").selected);
}

/// A point that is on no trail of its name has a warning each; by default only the first is shown.
TEST_F(PaneSelection, ChecksWithoutLimitOnlyForOneRow) {
  Show(
      "T\tPath\tTrail\nG\tPath1\tS20\tE47\nG\tFoo\tS20\tE47\nG\tBar\tS20\tE47\nG\tPath9\tS20\tE47\n"
      "T\tRidge\tWay\nG\tRidge1\tS20\tE47\nG\tBaz\tS20\tE47\nG\tRidge2\tS20\tE47\n");
  const auto shown = [this] {
    const size_t before = messages.Entries().size();
    EXPECT_TRUE(CheckSelectedTrails(view, messages));
    return messages.Entries().size() - before;
  };
  EXPECT_FALSE(CheckSelectedTrails(view, messages));
  Row("Path").selected = true;
  EXPECT_EQ(shown(), 2U);
  Row("Trail").selected = true;
  EXPECT_EQ(shown(), 1U) << "the group is a row too";
  Row("Trail").selected = false;
  Row("Ridge").selected = true;
  EXPECT_EQ(shown(), 2U) << "one of each trail";
}

TEST_F(PaneSelection, TipsOfRowsAreTheLinesOfTheirRecords) {
  Show(std::string(TwoGroupsText) + "R\tA\nK\tPapio\n");
  EXPECT_EQ(TrailTip(view, Row("New")), Texts{"Create a new trail"});
  EXPECT_TRUE(TrailTip(view, Row("Papio")).empty());
  EXPECT_EQ(TrailTip(view, Row("2020-3-2")).size(), 1U);
  EXPECT_EQ(TrailTip(view, Row("Path")).size(), 2U);
  EXPECT_EQ(RangeTip(view, RangeRow("New")), Texts{"Create a new range"});
  EXPECT_EQ(RangeTip(view, RangeRow("A")).front(), "  A");
}

PixelRect Place(Pixel anchor, HintPlacement placement) {
  return PlaceHint(anchor, 100, 60, {400, 300}, 15, placement);
}

TEST(HintPlace, IsUnderOrOverItsAnchor) {
  const PixelRect under = Place({50, 50}, HintPlacement::Under);
  EXPECT_EQ(under.left, 60);
  EXPECT_EQ(under.top, 65);
  EXPECT_EQ(under.right, 160);
  EXPECT_EQ(under.bottom, 125);
  const PixelRect over = Place({50, 100}, HintPlacement::Over);
  EXPECT_EQ(over.bottom, 85);
  const PixelRect middle = Place({}, HintPlacement::Centered);
  EXPECT_EQ(middle.left, 150);
  EXPECT_EQ(middle.top, 120);
}

TEST(HintPlace, ChangesSidesWhereThereIsNoRoom) {
  EXPECT_EQ(Place({50, 20}, HintPlacement::Over).top, 35);
  EXPECT_EQ(Place({50, 280}, HintPlacement::Under).bottom, 265);
  EXPECT_EQ(Place({390, 50}, HintPlacement::Under).right, 399);
  // Neither side has room.
  EXPECT_EQ(PlaceHint({50, 30}, 100, 90, {400, 100}, 15, HintPlacement::Under).top, 0);
}

TEST_F(PaneSelection, TipsOfOverlapsBeginWithTheirArea) {
  Show(std::string(TwoGroupsText) + "R\tA\nK\tPapio\nR\tB\nK\tCebus\n");
  for (const RangePanelRow& row : view.rangeViews) {
    if (row.intersection == nullptr) continue;
    const Texts tip = RangeTip(view, row);
    ASSERT_FALSE(tip.empty());
    EXPECT_TRUE(tip.front().starts_with("MCP area: ")) << tip.front();
  }
  const RangePanelRow none;
  EXPECT_TRUE(RangeTip(view, none).empty());
}

TEST_F(PaneSelection, ARowThatDoesNotShowIsNoEnd) {
  Show(TwoGroupsText);
  SelectTrailsBetween(view, Row("2020-3-2"), Row("2020-3-2"));
  EXPECT_EQ(Selected(), Texts{});
}

}  // namespace
}  // namespace orvane
