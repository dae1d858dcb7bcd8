#include "panes/trail_tree.h"

#include "base/dates.h"
#include "view/view_case.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

/// The rows as text, children in brackets, hidden ones with a `-`.
std::string TextOf(const std::list<TrailPanelRow>& rows) {
  std::string text;
  for (const TrailPanelRow& row : rows) {
    if (!text.empty()) text += " ";
    text += (row.visible || row.fixed ? "" : "-") + row.text;
    if (!row.children.empty()) text += "(" + TextOf(row.children) + ")";
  }
  return text;
}

Trail& AddTyped(Map& map, const std::string& type, const std::string& name) {
  Trail& trail = map.trails.emplace_front();
  trail.type = type;
  trail.name = name;
  return trail;
}

TEST(BuildTrailRows, GroupsByTypeAndSortsEachLevel) {
  ViewCase c;
  AddTyped(c.map, "River", "north arm");
  AddTyped(c.map, "Path", "b");
  AddTyped(c.map, "path", "A");
  AddTyped(c.map, "RIVER", "Main");
  BuildTrailRows(c.view);
  // The trails are newest first, so their newest spelling of a type makes the group.
  EXPECT_EQ(TextOf(c.view.trailViews), "path(A b) RIVER(Main north arm) New");
}

TEST(BuildTrailRows, TakesTheBasisMapsFirstDeepestFirst) {
  ViewCase c;
  Map& middle = MakeMap(c.workspace, "middle.map");
  Map& upper = MakeMap(c.workspace, "upper.map");
  middle.basis = &c.map;
  upper.basis = &middle;
  AddTyped(c.map, "PATH", "deep");
  AddTyped(middle, "Path", "mid");
  AddTyped(upper, "path", "own");
  c.view.map = &upper;
  BuildTrailRows(c.view);
  EXPECT_EQ(TextOf(c.view.trailViews), "PATH(deep mid own) New");
}

TEST(BuildTrailRows, ForgetsWhatWasOpenAndSelected) {
  ViewCase c;
  AddTyped(c.map, "Path", "a");
  BuildTrailRows(c.view);
  c.view.trailViews.front().open = true;
  c.view.trailViews.front().selected = true;
  BuildTrailRows(c.view);
  EXPECT_EQ(c.view.trailViews.size(), 2U);
  EXPECT_FALSE(c.view.trailViews.front().open);
  EXPECT_FALSE(c.view.trailViews.front().selected);
}

TEST(BuildTrailRows, AFollowIsListedByDateAndAnimalAndStartsHidden) {
  ViewCase c;
  Trail& follow = c.map.trails.emplace_front();
  follow.type = "Gibbon";
  follow.date = PackDate(1998, 4, 7);
  Trail& focal = c.map.trails.emplace_front();
  focal.type = "Gibbon";
  focal.date = PackDate(1998, 4, 7);
  focal.focalAnimal = "Tuk";
  BuildTrailRows(c.view);
  EXPECT_EQ(TextOf(c.view.trailViews), "-Gibbon(-1998-4-7 -1998-4-7 Tuk) New");
}

TEST(BuildTrailRows, OffersContoursHiddenWhereBothNumbersAreSet) {
  ViewCase c;
  c.map.contourEnabled = 1;
  BuildTrailRows(c.view);
  EXPECT_EQ(TextOf(c.view.trailViews), "New");
  c.map.contourInterval = 20;
  BuildTrailRows(c.view);
  EXPECT_EQ(TextOf(c.view.trailViews), "-Continuous contours -Contours New");
  EXPECT_EQ(std::next(c.view.trailViews.begin())->color, 0x000000);
  for (auto* lines : {&c.map.contourTrails, &c.map.continuousContours}) {
    Trail& line = lines->emplace_front();
    line.type = "Contour  100";
    line.name = "Contour  100 #1";
    BuildTrailRows(c.view);
  }
  const std::string lines = "(-Contour  100(-Contour  100 #1)) ";
  EXPECT_EQ(TextOf(c.view.trailViews),
            "-Continuous contours" + lines + "-Contours" + lines + "New");
}

TEST(BuildTrailRows, GivesEveryTrailARowOfItsOwnAfterRowsOfEqualText) {
  ViewCase c;
  Trail& second = AddTyped(c.map, "Path", "same");
  Trail& first = AddTyped(c.map, "path", "SAME");
  BuildTrailRows(c.view);
  EXPECT_EQ(TextOf(c.view.trailViews), "path(SAME same) New");
  EXPECT_NE(FindTrailRow(c.view, first), nullptr);
  EXPECT_NE(FindTrailRow(c.view, second), nullptr);
}

TEST(BuildTrailRows, MakesTheRowsThatAddingOneByOneMakes) {
  constexpr std::uint64_t Seed = 19;
  Dice dice(Seed);
  for (int round = 0; round < 50; ++round) {
    ViewCase c;
    for (int i = 0; i < 40; ++i) {
      std::string name;
      for (int k = dice.Int(0, 4); k > 0; --k) name += "aAbBzZ_\xE9"[dice.Int(0, 8)];
      AddTyped(c.map, std::string(1, "pqPQ"[dice.Int(0, 4)]), name);
    }
    BuildTrailRows(c.view);
    const std::string atOnce = TextOf(c.view.trailViews);
    c.view.trailViews.clear();
    for (Trail& trail : c.map.trails) AddTrailRow(c.view, trail);
    EXPECT_EQ(TextOf(c.view.trailViews) + " New", atOnce) << "seed " << Seed << " round " << round;
  }
}

TEST(AddTrailRow, JoinsAGroupInAnyCaseAndStaysBeforeNew) {
  ViewCase c;
  AddTyped(c.map, "River", "b");
  BuildTrailRows(c.view);
  Trail& trail = AddTyped(c.map, "river", "z");
  TrailPanelRow& row = AddTrailRow(c.view, trail);
  EXPECT_EQ(row.trail, &trail);
  EXPECT_EQ(&row, FindTrailRow(c.view, trail));
  AddTrailRow(c.view, AddTyped(c.map, "Zebra", "last"));
  EXPECT_EQ(TextOf(c.view.trailViews), "River(b z) Zebra(last) New");
}

TEST(AddTrailRow, ATypeCalledNewIsAGroupOfItsOwn) {
  ViewCase c;
  BuildTrailRows(c.view);
  AddTrailRow(c.view, AddTyped(c.map, "new", "a"));
  EXPECT_EQ(TextOf(c.view.trailViews), "new(a) New");
  EXPECT_FALSE(c.view.trailViews.front().fixed);
}

TEST(AddContourRow, GoesBelowContours) {
  ViewCase c;
  BuildTrailRows(c.view);
  Trail line;
  line.type = "Contour  120";
  line.name = "Contour  120 #1";
  AddContourRow(c.view, line);
  EXPECT_EQ(TextOf(c.view.trailViews), "Contours(Contour  120(Contour  120 #1)) New");
}

TEST(MakeTrailRow, ColorsAGroupByItsText) {
  const auto colorOf = [](const std::string& text) {
    return MakeTrailRow(nullptr, text, nullptr, nullptr).color;
  };
  EXPECT_EQ(colorOf("human"), 0x000000);
  EXPECT_EQ(colorOf("ROAD"), 0x000000);
  EXPECT_EQ(colorOf("Border"), 0x000000);
  EXPECT_EQ(colorOf("contours"), 0x000000);
  EXPECT_EQ(colorOf("Park boundary"), 0x000000);
  EXPECT_EQ(colorOf("Boundaries"), 0x000000);
  EXPECT_EQ(colorOf("BOUNDARY"), 0x0000FF);
  EXPECT_EQ(colorOf("trail"), 0x202000);
  EXPECT_EQ(colorOf("River"), 0x0000FF);
  EXPECT_EQ(colorOf("Stream"), 0x0000FF);
  EXPECT_EQ(colorOf("Gibbon"), 0x0000FF);
}

TEST(MakeTrailRow, AGroupIsSolidAutoAndVisible) {
  const TrailPanelRow row = MakeTrailRow(nullptr, "Path", nullptr, nullptr);
  EXPECT_TRUE(row.visible);
  EXPECT_EQ(row.lineStyle, LineStyle::Solid);
  EXPECT_EQ(row.labelMode, LabelMode::Auto);
  EXPECT_EQ(row.markStyle, MarkStyle::None);
  EXPECT_FALSE(row.filled);
}

TEST(MakeTrailRow, AGroupTakesTheLookOfTheTrailThatMadeIt) {
  Trail sample;
  sample.name = "s";
  sample.color = 0x123456;
  sample.lineStyle = LineStyle::Dashed;
  sample.labelMode = LabelMode::None;
  sample.markStyle = MarkStyle::Tick;
  const TrailPanelRow row = MakeTrailRow(nullptr, "Path", nullptr, &sample);
  EXPECT_EQ(row.color, 0x123456);
  EXPECT_EQ(row.lineStyle, LineStyle::Dashed);
  EXPECT_EQ(row.labelMode, LabelMode::None);
  EXPECT_EQ(row.markStyle, MarkStyle::Tick);
  EXPECT_EQ(row.trail, nullptr);
}

TEST(MakeTrailRow, AGroupStartsHiddenForAHiddenOrNamelessTrail) {
  Trail sample;
  EXPECT_FALSE(MakeTrailRow(nullptr, "Gibbon", nullptr, &sample).visible);
  sample.name = "s";
  EXPECT_TRUE(MakeTrailRow(nullptr, "Gibbon", nullptr, &sample).visible);
  sample.flags |= TrailHidden;
  EXPECT_FALSE(MakeTrailRow(nullptr, "Gibbon", nullptr, &sample).visible);
}

TEST(MakeTrailRow, AChildTakesItsParentsLookAndThenItsOwn) {
  TrailPanelRow parent;
  parent.visible = true;
  parent.color = 0x445566;
  parent.lineStyle = LineStyle::Dotted;
  parent.labelMode = LabelMode::All;
  parent.markStyle = MarkStyle::Plus;
  parent.filled = true;
  parent.fillPattern = 3;
  Trail plain;
  const TrailPanelRow same = MakeTrailRow(&parent, "a", &plain, nullptr);
  EXPECT_EQ(same.color, 0x445566);
  EXPECT_EQ(same.lineStyle, LineStyle::Dotted);
  EXPECT_EQ(same.labelMode, LabelMode::All);
  EXPECT_EQ(same.markStyle, MarkStyle::Plus);
  EXPECT_FALSE(same.filled);  // an area belongs to one trail
  EXPECT_EQ(same.fillPattern, 0);
  EXPECT_TRUE(same.visible);
  Trail own;
  own.color = 0;
  own.lineStyle = LineStyle::Solid;
  own.labelMode = LabelMode::FirstLast;
  own.markStyle = MarkStyle::Cross;
  own.filled = true;
  own.fillPattern = 6;
  own.flags |= TrailHidden;
  const TrailPanelRow other = MakeTrailRow(&parent, "b", &own, nullptr);
  EXPECT_EQ(other.color, 0);
  EXPECT_EQ(other.lineStyle, LineStyle::Solid);
  EXPECT_EQ(other.labelMode, LabelMode::FirstLast);
  EXPECT_EQ(other.markStyle, MarkStyle::Cross);
  EXPECT_TRUE(other.filled);
  EXPECT_EQ(other.fillPattern, 6);
  EXPECT_FALSE(other.visible);
}

TEST(FirstSelectedRow, IsTheFirstInTheOrderOfThePane) {
  ViewCase c;
  AddTyped(c.map, "A", "2");
  AddTyped(c.map, "A", "1");
  AddTyped(c.map, "B", "3");
  BuildTrailRows(c.view);
  EXPECT_EQ(FirstSelectedRow(c.view.trailViews), nullptr);
  TrailPanelRow& lower = c.view.trailViews.front().children.back();
  std::next(c.view.trailViews.begin())->selected = true;
  lower.selected = true;
  EXPECT_EQ(FirstSelectedRow(c.view.trailViews), &lower);
  c.view.rangeViews.resize(3);
  EXPECT_EQ(FirstSelectedRow(c.view.rangeViews), nullptr);
  c.view.rangeViews.back().selected = true;
  EXPECT_EQ(FirstSelectedRow(c.view.rangeViews), &c.view.rangeViews.back());
}

TEST(FindTrailRow, IsNoneForATrailWithoutARow) {
  ViewCase c;
  AddTyped(c.map, "A", "1");
  BuildTrailRows(c.view);
  const Trail other;
  EXPECT_EQ(FindTrailRow(c.view, other), nullptr);
}

TEST(ContourKindOf, IsNoneForTheRowOfATrail) {
  Trail trail;
  TrailPanelRow row;
  row.text = "Contours";
  EXPECT_EQ(ContourKindOf(row), ContourKind::Classic);
  row.trail = &trail;
  EXPECT_FALSE(ContourKindOf(row));
}

}  // namespace
}  // namespace orvane
