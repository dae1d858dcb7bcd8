#include "model/unused_records.h"

#include "base/messages.h"
#include "model/former_contents.h"
#include "model/point_names.h"
#include "model/record_bytes.h"
#include "model/workspace.h"

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace orvane {
namespace {

struct UnusedRecordsTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "a.map");

  /// A point that no list holds.
  Point& Loose(const std::string& name) { return MakePoint(map, name); }
  /// The names of the points that are left, in the order of their places.
  std::string Left() const {
    std::string names;
    for (const Point& point : map.pointStore) names += (names.empty() ? "" : " ") + point.name;
    return names;
  }
  void FreeUnused() { UnusedRecords(workspace).Free(); }
  template <typename List>
  static long Length(const List& list) {
    return static_cast<long>(std::distance(list.begin(), list.end()));
  }
};

TEST_F(UnusedRecordsTest, WithoutAnyNothingIsFreed) {
  AddPointName(map, MakePoint(map, "camp"), "camp");
  map.trails.emplace_front();
  FreeUnused();
  EXPECT_EQ(Left(), "camp");
  EXPECT_EQ(Length(map.trails), 1);
}

TEST_F(UnusedRecordsTest, WhatAListedPointOrTheMapLeadsToStays) {
  Point& camp = Loose("camp");
  AddPointName(map, camp, "camp");
  camp.measurements.emplace_front().base = &Loose("base");
  camp.measurements.front().base->measurements.emplace_front().base = &Loose("far");
  map.origin = &Loose("origin");
  map.grids.emplace_front().corner = &Loose("corner");
  map.closedChains.push_back({.from = &Loose("from"), .to = &Loose("to"), .up = {}});
  map.rayStore.emplace_back().other = &Loose("ray");
  Loose("unused");
  Trail& gone = map.removed.trails.emplace_front();
  gone.points = {&Loose("gone")};
  Trail& kept = map.removed.trails.emplace_front();
  kept.points = {&Loose("kept")};
  camp.trail = &kept;
  FreeUnused();
  EXPECT_EQ(Left(), "camp base far origin corner from to ray kept");
  EXPECT_EQ(Length(map.removed.trails), 1);
}

TEST_F(UnusedRecordsTest, WhatARangeHoldsStaysWithIt) {
  const auto fill = [&](Range& range, const std::string& mark) {
    Trail& follow = map.removed.trails.emplace_front();
    follow.points = {&Loose(mark + "follow")};
    range.follows = {&follow};
    range.points = {&Loose(mark + "point")};
    range.hull = {&Loose(mark + "hull")};
    range.minutesGiven = {&Loose(mark + "stop")};
    range.clusters = std::make_unique<ClusterTree>();
    range.clusters->clusters.emplace_back().hull[0] = {&Loose(mark + "cluster")};
    Grid& grid = map.removed.grids.emplace_front();
    grid.corner = &Loose(mark + "corner");
    range.grid = &grid;
  };
  fill(map.ranges.emplace_front(), "1");
  Range& removed = map.removed.ranges.emplace_front();
  fill(removed, "2");
  Range& other = map.removed.ranges.emplace_front();
  fill(other, "3");
  RangeIntersection& overlap = map.intersections.emplace_front();
  overlap.a.range = &removed;
  FreeUnused();
  EXPECT_EQ(Left(),
            "1follow 1point 1hull 1stop 1cluster 1corner 2follow 2point 2hull 2stop 2cluster "
            "2corner");
  EXPECT_EQ(Length(map.removed.ranges), 1);
  EXPECT_EQ(Length(map.removed.trails), 2);
  EXPECT_EQ(Length(map.removed.grids), 2);
  map.intersections.clear();
  FreeUnused();
  EXPECT_TRUE(map.removed.ranges.empty());
  EXPECT_EQ(Left(), "1follow 1point 1hull 1stop 1cluster 1corner");
}

TEST_F(UnusedRecordsTest, AShadeKeepsItsGridAndThatItsCorner) {
  const auto shaded = [&](const std::string& corner) -> GridShade& {
    Grid& grid = map.removed.grids.emplace_front();
    grid.corner = &Loose(corner);
    GridShade& shade = map.removed.gridShades.emplace_front();
    shade.grid = &grid;
    return shade;
  };
  const GridShade& kept = shaded("a");
  shaded("b");
  UnusedRecords records(workspace);
  records.Keep(&kept);
  records.Keep(&kept);  // once more changes nothing
  records.Keep(static_cast<const GridShade*>(nullptr));
  records.Free();
  EXPECT_EQ(Left(), "a");
  EXPECT_EQ(Length(map.removed.gridShades), 1);
  EXPECT_EQ(Length(map.removed.grids), 1);
  FreeUnused();
  EXPECT_TRUE(map.removed.gridShades.empty());
  EXPECT_EQ(Left(), "");
}

TEST_F(UnusedRecordsTest, WhatTheReaderGoesOnWithStays) {
  Trail& trail = map.removed.trails.emplace_front();
  trail.points = {&Loose("a")};
  Range& range = map.removed.ranges.emplace_front();
  range.points = {&Loose("b")};
  workspace.reading.currentTrail = &trail;
  workspace.reading.currentRange = &range;
  workspace.reading.lastPoint = &Loose("c");
  FreeUnused();
  EXPECT_EQ(Left(), "a b c");
  workspace.reading = {};
  FreeUnused();
  EXPECT_EQ(Left(), "");
}

TEST_F(UnusedRecordsTest, OnlyHoldersThatLiveAreAsked) {
  const Point& mine = Loose("mine");
  const Point& theirs = Loose("theirs");
  const auto token = workspace.holders.Add([&](UnusedRecords& records) { records.Keep(&mine); });
  {
    const auto ended =
        workspace.holders.Add([&](UnusedRecords& records) { records.Keep(&theirs); });
  }
  UnusedRecords records(workspace);
  workspace.holders.KeepAll(records);
  records.Free();
  EXPECT_EQ(Left(), "mine");
}

TEST_F(UnusedRecordsTest, WhatAMapThatIsNotOpenLeadsToStays) {
  RecordedMessages unheard;
  Workspace other(unheard);
  Map& former = MakeMap(other, "former.map");
  MakePoint(former, "own").measurements.emplace_front().base = &Loose("base");
  former.removed.trails.emplace_front().points = {&Loose("trail")};
  former.removed.ranges.emplace_front().points = {&Loose("range")};
  Grid& grid = map.removed.grids.emplace_front();
  grid.corner = &Loose("shaded");
  former.removed.gridShades.emplace_front().grid = &grid;
  former.removed.grids.emplace_front().corner = &Loose("corner");
  former.loosePoints.push_front(&Loose("loose"));
  former.pointHash[0].push_front(&Loose("named"));
  former.origin = &Loose("origin");
  Loose("unused");
  UnusedRecords records(workspace);
  records.KeepLeadsOf(former);
  records.Free();
  EXPECT_EQ(Left(), "base trail range shaded corner loose named origin");
  EXPECT_EQ(Length(map.removed.grids), 1);
}

TEST_F(UnusedRecordsTest, PlacesOfFreedPointsAreTakenAgain) {
  std::vector<Point*> points;
  for (const char* name : {"a", "b", "c", "d"}) points.push_back(&Loose(name));
  AddPointName(map, *points[1], "b");
  FreeUnused();
  EXPECT_EQ(Left(), "b");
  EXPECT_EQ(map.pointStore.size(), 1U);
  EXPECT_EQ(map.pointStore.PlaceCount(), 2U) << "the last places are given up";
  EXPECT_TRUE(map.pointStore.IsFree(0));
  EXPECT_EQ(&map.pointStore.front(), points[1]);
  EXPECT_EQ(&Loose("e"), points[0]);
  EXPECT_EQ(Left(), "e b");
  EXPECT_EQ(points[0]->flags & PointFree, 0U);
}

// --- What records weigh -------------------------------------------------------------------------

TEST(RecordBytes, CountTextsThatAreNotShort) {
  const std::string text(500, 'x');
  Point point;
  const size_t bare = BytesOf(point);
  point.name = "short";
  EXPECT_EQ(BytesOf(point), bare);
  point.note = text;
  EXPECT_GE(BytesOf(point), bare + 500);
  const size_t noted = BytesOf(point);
  point.measurements.emplace_front().nearName = text;
  EXPECT_GE(BytesOf(point), noted + 500 + sizeof(Measurement));
  const size_t read = BytesOf(point);
  point.synonyms.emplace_front(text);
  EXPECT_GE(BytesOf(point), read + 1000);

  Trail trail;
  const size_t empty = BytesOf(trail);
  trail.points.resize(10);
  trail.note = text;
  EXPECT_GE(BytesOf(trail), empty + 10 * sizeof(void*) + 500);

  Range range;
  const size_t plain = BytesOf(range);
  range.note = text;
  range.keys.emplace_front();
  EXPECT_GE(BytesOf(range), plain + 500 + sizeof(SearchKey));
  const size_t keyed = BytesOf(range);
  range.clusters = std::make_unique<ClusterTree>();
  range.clusters->clusters.emplace_back().hull[3].resize(20);
  EXPECT_GE(BytesOf(range), keyed + sizeof(Cluster) + 20 * sizeof(void*));
}

TEST(FormerContentsTest, ExchangesWhatAMapHoldsButNotItsMarks) {
  RecordedMessages messages;
  Workspace workspace(messages);
  Workspace fresh(messages);
  Map& map = MakeMap(workspace, "a.map");
  Map& above = MakeMap(workspace, "b.map");
  map.comments = {"# old"};
  map.flags |= MapDirty;
  Map& read = MakeMap(fresh, "a.map");
  read.comments = {"# new"};
  SwapContents(map, read);
  FormerContents former;
  former.Reserve(1);
  former.Take(map, fresh.maps, fresh.maps.before_begin());
  EXPECT_TRUE(fresh.maps.empty());
  EXPECT_TRUE(former.Holds(map));
  EXPECT_FALSE(former.Holds(above));
  EXPECT_EQ(former.Maps(), std::vector<Map*>{&map});
  EXPECT_GT(former.Bytes(), sizeof(Map));
  EXPECT_EQ(map.comments, std::vector<std::string>{"# new"});
  map.flags &= ~std::uint32_t{MapDirty};
  former.Swap();
  EXPECT_EQ(map.comments, std::vector<std::string>{"# old"});
  EXPECT_EQ(map.flags & MapDirty, 0U) << "what is saved does not depend on the contents";
}

}  // namespace
}  // namespace orvane
