#include "panes/range_list.h"

#include "base/text.h"
#include "panes/trail_tree.h"
#include "view/fills.h"
#include "view/view_case.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace orvane {
namespace {

using Names = std::vector<std::string>;

struct RangeRowsTest : testing::Test, ViewCase {
  /// A range in front of the others, as the newest.
  Range& AddRange(const std::string& name) {
    Range& range = map.ranges.emplace_front();
    range.name = name;
    return range;
  }
  RangeIntersection& AddOverlap(Range& a, Range& b, const std::string& name) {
    RangeIntersection& record = map.intersections.emplace_front();
    record.name = name;
    record.a.range = &a;
    record.b.range = &b;
    return record;
  }
  void Build() {
    BuildTrailRows(view);
    BuildRangeRows(view);
  }
  Names Texts() const {
    Names texts;
    for (const RangePanelRow& row : view.rangeViews) texts.push_back(row.text.value_or("<none>"));
    return texts;
  }
  /// The row of the map's only overlap, made again.
  RangePanelRow& AddRow(const RangeIntersection& record) {
    DropRangeRows(view, nullptr);
    RedoRangeRows(view, nullptr);
    return RowOf(record);
  }
  RangePanelRow& RowOf(const Range& range) { return *FindRangeRow(view, range); }
  RangePanelRow& RowOf(const RangeIntersection& record) {
    for (RangePanelRow& row : view.rangeViews) {
      if (row.intersection == &record) return row;
    }
    ADD_FAILURE() << "no row";
    return view.rangeViews.front();
  }
};

TEST_F(RangeRowsTest, HoldOnlyTheRowNew) {
  Build();
  ASSERT_EQ(Texts(), (Names{"New"}));
  EXPECT_TRUE(view.rangeViews.front().fixed);
  EXPECT_EQ(view.rangeViews.front().range, nullptr);
}

TEST_F(RangeRowsTest, AreThoseOfTheMapItself) {
  Map& basis = MakeMap(*map.workspace, "basis.map");
  basis.ranges.emplace_front().name = "Below";
  map.basis = &basis;
  AddRange("Own");
  Build();
  EXPECT_EQ(Texts(), (Names{"Own", "New"}));
}

TEST_F(RangeRowsTest, AreSortedByNameInAnyCaseRangesFirst) {
  Range& b = AddRange("bob");
  Range& z = AddRange("Zoe");
  Range& a = AddRange("Ana");
  AddOverlap(a, b, "Intersection of Ana and bob");
  AddOverlap(z, a, "aaa");
  Build();
  EXPECT_EQ(Texts(), (Names{"Ana", "bob", "Zoe", "aaa", "Intersection of Ana and bob", "New"}));
}

TEST_F(RangeRowsTest, KeepEqualNamesInTheOrderOfTheirAdding) {
  AddRange("ana");
  AddRange("ANA");
  AddRange("Ana");  // the newest, which the list of the map begins with
  Build();
  EXPECT_EQ(Texts(), (Names{"Ana", "ANA", "ana", "New"}));
}

TEST_F(RangeRowsTest, PutANamelessRangeFirst) {
  AddRange("Ana");
  AddRange("x").name.reset();
  Build();
  EXPECT_EQ(Texts(), (Names{"<none>", "Ana", "New"}));
}

TEST_F(RangeRowsTest, AddARangeAboveTheOverlaps) {
  Range& a = AddRange("Ana");
  Range& b = AddRange("Bob");
  AddOverlap(a, b, "overlap");
  Build();
  Range& z = AddRange("Zoe");
  const RangePanelRow& row = AddRangeRow(view, z);
  EXPECT_EQ(row.range, &z);
  EXPECT_EQ(Texts(), (Names{"Ana", "Bob", "Zoe", "overlap", "New"}));
}

TEST_F(RangeRowsTest, StartVisibleAndGrayWithoutTrails) {
  const Range& range = AddRange("Marks");
  Build();
  const RangePanelRow& row = RowOf(range);
  EXPECT_TRUE(row.visible);
  EXPECT_FALSE(row.selected);
  EXPECT_EQ(row.color, 0x808080);
  EXPECT_EQ(row.clusterMask, 0U);
  EXPECT_EQ(row.drawMode, RangeDrawMode::Clear);
}

TEST_F(RangeRowsTest, TakeHalfTheColorOfTheFirstFollow) {
  Trail& first = AddTrail("a", {});
  first.color = 0xFF8001;
  Trail& second = AddTrail("b", {});
  second.color = 0x00FF00;
  Range& range = AddRange("Ana");
  range.follows = {&first, &second};
  Build();
  EXPECT_EQ(RowOf(range).color, 0x7F4000);
  EXPECT_EQ(RowOf(range).clusterMask, 1U);
}

TEST_F(RangeRowsTest, TakeTheColorOfTheRowOfAFollowWithoutOne) {
  Trail& follow = AddTrail("a", {});
  follow.color = NoColor;
  Range& range = AddRange("Ana");
  range.follows = {&follow};
  BuildTrailRows(view);
  FindTrailRow(view, follow)->color = 0x204060;
  BuildRangeRows(view);
  EXPECT_EQ(RowOf(range).color, 0x102030);
}

TEST_F(RangeRowsTest, TakeTurnsInShading) {
  for (const char* name : {"F", "E", "D", "C", "B", "A"}) AddRange(name);
  Build();
  std::vector<int> shadings;
  for (const RangePanelRow& row : view.rangeViews) {
    if (!row.fixed) shadings.push_back(row.shading);
  }
  EXPECT_EQ(shadings, (std::vector<int>{0, 1, 2, 3, 0, 1}));
}

TEST_F(RangeRowsTest, TakeTurnsInShadingOverAllWindows) {
  const Range& range = AddRange("A");
  Build();
  EXPECT_EQ(RowOf(range).shading, 0);
  MapWindow other;
  other.map = &map;
  BuildRangeRows(other);
  EXPECT_EQ(other.rangeViews.front().shading, 1);
}

TEST_F(RangeRowsTest, HideOverlapsAtFirst) {
  Range& a = AddRange("A");
  Range& b = AddRange("B");
  const RangeIntersection& record = AddOverlap(a, b, "overlap");
  Build();
  EXPECT_FALSE(RowOf(record).visible);
  EXPECT_EQ(RowOf(record).clusterMask, 0U);
  EXPECT_EQ(RowOf(record).range, nullptr);
}

TEST_F(RangeRowsTest, GiveAnOverlapTheMeanColor) {
  Range& a = AddRange("A");
  Range& b = AddRange("B");
  Build();
  RowOf(a).color = 0xFF0010;
  RowOf(b).color = 0x0000FF;
  RangeIntersection& record = AddOverlap(a, b, "overlap");
  EXPECT_EQ(AddRow(record).color, 0x7F0087);
}

// A row without a colour counts as white, each of whose channels is 255.
TEST_F(RangeRowsTest, TakeHalfOfWhiteFromARowWithoutAColor) {
  Trail& follow = AddTrail("a", {});
  Range& range = AddRange("Ana");
  range.follows = {&follow};
  follow.color = NoColor;
  BuildTrailRows(view);
  FindTrailRow(view, follow)->color = NoColor;
  BuildRangeRows(view);
  EXPECT_EQ(RowOf(range).color, 0x7F7F7F);
}

TEST_F(RangeRowsTest, GiveAnOverlapTheMeanWithWhiteForARangeWithoutAColor) {
  Range& a = AddRange("A");
  Range& b = AddRange("B");
  Build();
  RowOf(a).color = NoColor;
  RowOf(b).color = 0x010203;
  EXPECT_EQ(AddRow(AddOverlap(a, b, "overlap")).color, 0x808081);
  RowOf(b).color = NoColor;
  EXPECT_EQ(AddRow(AddOverlap(a, b, "both")).color, 0xFFFFFF);
}

TEST_F(RangeRowsTest, ShadeAnOverlapUnlikeItsRanges) {
  Range& a = AddRange("A");
  Range& b = AddRange("B");
  Build();
  RangeIntersection& record = AddOverlap(a, b, "overlap");
  // By the shadings of a, from above, and b.
  const int expected[4][4] = {{4, 4, 4, 4}, {4, 4, 5, 5}, {4, 4, 5, 5}, {5, 5, 5, 5}};
  for (int i = 0; i < 4; ++i) {
    for (int k = 0; k < 4; ++k) {
      RowOf(a).shading = i;
      RowOf(b).shading = k;
      EXPECT_EQ(AddRow(record).shading, expected[i][k]) << i << " " << k;
    }
  }
}

TEST_F(RangeRowsTest, ShadeAnOverlapWithoutRowsByTurns) {
  Range a;
  Range b;
  RangeIntersection& record = AddOverlap(a, b, "overlap");
  view.rangeViews.clear();
  workspace.rangeRowsMade = 6;
  EXPECT_EQ(AddRow(record).shading, FillDiagonals);
  EXPECT_EQ(AddRow(record).shading, FillCross);
  EXPECT_EQ(view.rangeViews.front().color, 0x808080);
}

TEST_F(RangeRowsTest, DropAndRedoTheOverlapsOfARange) {
  Range& a = AddRange("A");
  Range& b = AddRange("B");
  Range& c = AddRange("C");
  AddOverlap(a, b, "ab");
  AddOverlap(b, c, "bc");
  AddOverlap(a, c, "ac");
  Build();
  EXPECT_TRUE(DropRangeRows(view, &b));
  EXPECT_EQ(Texts(), (Names{"A", "B", "C", "ac", "New"}));
  EXPECT_FALSE(DropRangeRows(view, &b));
  EXPECT_TRUE(RedoRangeRows(view, &b));
  EXPECT_EQ(Texts(), (Names{"A", "B", "C", "ab", "ac", "bc", "New"}));
  EXPECT_TRUE(DropRangeRows(view, nullptr));
  EXPECT_EQ(Texts(), (Names{"A", "B", "C", "New"}));
  map.intersections.clear();
  EXPECT_FALSE(RedoRangeRows(view, nullptr));
}

/// The list as inserting one row after the other would make it.
TEST_F(RangeRowsTest, SortManyOverlapsAsOneByOne) {
  Range& a = AddRange("A");
  Range& b = AddRange("B");
  std::vector<std::pair<std::string, RangeIntersection*>> expected;
  unsigned random = 1;
  for (int i = 0; i < 500; ++i) {
    random = random * 1103515245U + 12345U;
    std::string name = "Overlap " + std::to_string(random >> 16 & 63U);
    if (i % 3 == 0) name[0] = 'o';
    AddOverlap(a, b, name);
  }
  for (RangeIntersection& record : map.intersections) {
    const std::string name = record.name;
    const auto place = std::find_if(expected.begin(), expected.end(), [&](const auto& there) {
      return CompareNames(name, there.first) < 0;
    });
    expected.insert(place, {name, &record});
  }
  Build();
  auto row = std::next(view.rangeViews.begin(), 2);
  for (const auto& [name, record] : expected) {
    ASSERT_EQ(row->text, name);
    ASSERT_EQ(row->intersection, record) << name;
    ++row;
  }
  EXPECT_TRUE(row->fixed);
}

TEST_F(RangeRowsTest, FindTheFirstSelectedOne) {
  AddRange("A");
  Range& b = AddRange("B");
  Build();
  EXPECT_EQ(FirstSelectedRow(view.rangeViews), nullptr);
  RowOf(b).selected = true;
  EXPECT_EQ(FirstSelectedRow(view.rangeViews), &RowOf(b));
}

}  // namespace
}  // namespace orvane
