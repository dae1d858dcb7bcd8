#include "panes/row_memory.h"

#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "view/view_case.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr Color Red = 0xFF0000;
constexpr Color Green = 0x00FF00;

struct RowMemoryTest : testing::Test {
  ViewCase c;

  Trail& AddTrail(const std::string& type, const std::string& name) {
    Trail& trail = c.map.trails.emplace_front();
    trail.type = type;
    trail.name = name;
    return trail;
  }
  Range& AddRange(const std::string& name) {
    Range& range = c.map.ranges.emplace_front();
    range.name = name;
    return range;
  }
  void Build() {
    BuildTrailRows(c.view);
    BuildRangeRows(c.view);
  }
  TrailPanelRow& Row(const std::string& text) {
    for (TrailPanelRow* row : TrailRowsInOrder(c.view.trailViews)) {
      if (row->text == text) return *row;
    }
    ADD_FAILURE() << text;
    return c.view.trailViews.back();
  }
  /// What the map holds is replaced, and the rows follow.
  template <typename Read>
  void ReadAgain(const Read& read) {
    const RowMemory memory = RememberRows(c.view);
    c.map.trails.clear();
    c.map.ranges.clear();
    c.map.intersections.clear();
    read();
    RebuildRows(c.view, memory);
  }
};

TEST_F(RowMemoryTest, OpenGroupsAndTheSelectionComeBack) {
  AddTrail("Path", "Ridge");
  AddTrail("River", "Main");
  Build();
  Row("Path").open = true;
  Row("Main").selected = true;
  ReadAgain([&] {
    AddTrail("path", "ridge");
    AddTrail("River", "Main");
    AddTrail("River", "New arm");
  });
  EXPECT_TRUE(Row("path").open);
  EXPECT_FALSE(Row("River").open);
  EXPECT_TRUE(Row("Main").selected);
  EXPECT_FALSE(Row("New arm").selected);
  EXPECT_NE(Row("New arm").trail, nullptr);
}

TEST_F(RowMemoryTest, WhatTheUserChangedStaysAndElseTheMapDecides) {
  AddTrail("Path", "Ridge").color = Red;
  AddTrail("Path", "Valley").color = Red;
  Build();
  Row("Ridge").color = Green;
  Row("Ridge").visible = false;
  ReadAgain([&] {
    AddTrail("Path", "Ridge").color = 0x123456;
    Trail& valley = AddTrail("Path", "Valley");
    valley.color = 0x123456;
    valley.flags |= TrailHidden;
  });
  EXPECT_EQ(Row("Ridge").color, Green);
  EXPECT_FALSE(Row("Ridge").visible);
  EXPECT_EQ(Row("Valley").color, 0x123456);
  EXPECT_FALSE(Row("Valley").visible);
}

TEST_F(RowMemoryTest, RowsOfEqualTextAreDistinguishedByTheirNumber) {
  for (int i = 0; i < 3; ++i) AddTrail("Path", "Same");
  Build();
  TrailPanelRow& group = Row("Path");
  std::next(group.children.begin())->selected = true;
  ReadAgain([&] {
    for (int i = 0; i < 3; ++i) AddTrail("Path", "Same");
  });
  std::vector<bool> selected;
  for (const TrailPanelRow& row : Row("Path").children) selected.push_back(row.selected);
  EXPECT_EQ(selected, (std::vector<bool>{false, true, false}));
}

TEST_F(RowMemoryTest, RangesKeepTheirShadingAndWhatIsShown) {
  Range& north = AddRange("North");
  Range& south = AddRange("South");
  Trail& follow = AddTrail("Group", "Pde");
  follow.color = Red;
  north.follows = {&follow};
  RangeIntersection& overlap = c.map.intersections.emplace_front();
  overlap.name = "North";  // as a range is called
  overlap.a.range = &north;
  overlap.b.range = &south;
  Build();
  RangePanelRow& row = *FindRangeRow(c.view, north);
  row.selected = true;
  row.visible = false;
  row.showSm[1] = true;
  row.drawMode = RangeDrawMode::Hash;
  row.clusterMask = 8;
  const int shading = row.shading;
  const unsigned rowsMade = c.workspace.rangeRowsMade;
  ReadAgain([&] {
    EXPECT_EQ(c.workspace.rangeRowsMade, rowsMade);  // remembering makes none
    Trail& newFollow = AddTrail("Group", "Pde");
    newFollow.color = Green;
    AddRange("South");
    Range& newNorth = AddRange("North");
    newNorth.follows = {&newFollow};
  });
  const RangePanelRow& now = c.view.rangeViews.front();
  EXPECT_EQ(now.text, "North");
  EXPECT_EQ(now.range, &c.map.ranges.front());
  EXPECT_TRUE(now.selected);
  EXPECT_FALSE(now.visible);
  EXPECT_TRUE(now.showSm[1]);
  EXPECT_EQ(now.drawMode, RangeDrawMode::Hash);
  EXPECT_EQ(now.clusterMask, 8U);
  EXPECT_EQ(now.shading, shading);
  EXPECT_EQ(now.color, 0x007F00);  // half of what the follow has now
}

TEST_F(RowMemoryTest, WhatFindShowedIsOver) {
  c.view.selectedTrail = &AddTrail("Path", "Ridge");
  c.view.flags |= MapWindowTrailFlash;
  Build();
  ReadAgain([] {});
  EXPECT_EQ(c.view.selectedTrail, nullptr);
  EXPECT_EQ(c.view.flags & MapWindowTrailFlash, 0U);
}

TEST_F(RowMemoryTest, EachFieldThatTheUserChangedStays) {
  AddTrail("Path", "Ridge");
  AddRange("North");
  Build();
  TrailPanelRow& row = Row("Ridge");
  row.filled = true;
  row.lineStyle = LineStyle::Dotted;
  row.labelMode = LabelMode::None;
  row.fillPattern = 3;
  row.markStyle = MarkStyle::Tick;
  RangePanelRow& range = c.view.rangeViews.front();
  range.color = Red;
  range.estimateMask = 2;
  ReadAgain([&] {
    Trail& ridge = AddTrail("Path", "Ridge");
    ridge.lineStyle = LineStyle::Dashed;
    ridge.markStyle = MarkStyle::Cross;
    AddRange("North");
    AddRange("South");
  });
  const TrailPanelRow& now = Row("Ridge");
  EXPECT_TRUE(now.filled);
  EXPECT_EQ(now.lineStyle, LineStyle::Dotted);
  EXPECT_EQ(now.labelMode, LabelMode::None);
  EXPECT_EQ(now.fillPattern, 3);
  EXPECT_EQ(now.markStyle, MarkStyle::Tick);
  EXPECT_EQ(c.view.rangeViews.front().color, Red);
  EXPECT_EQ(c.view.rangeViews.front().estimateMask, 2U);
}

TEST_F(RowMemoryTest, RowsThatWereMadeMeanwhileAreNotCompared) {
  AddTrail("Path", "Ridge");
  AddRange("North");
  Build();
  // Records without rows yet.
  AddTrail("River", "Main");
  AddRange("South");
  const RowMemory memory = RememberRows(c.view);
  EXPECT_EQ(memory.ranges.size(), 2U) << "North and New";
  RebuildRows(c.view, memory);
  EXPECT_NE(Row("Main").trail, nullptr);
  EXPECT_EQ(c.view.rangeViews.size(), 3U);
}

}  // namespace
}  // namespace orvane
