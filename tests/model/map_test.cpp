#include "model/map.h"

#include "model/point_names.h"
#include "model/workspace.h"

#include <gtest/gtest.h>
#include <type_traits>
#include <vector>

namespace orvane {
namespace {

struct MapTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
};

TEST_F(MapTest, NewMapIsEmptyAndHoldsItsName) {
  const Map& map = MakeMap(workspace, "site/Main.map");
  EXPECT_EQ(map.fileName, "site/Main.map");
  EXPECT_EQ(map.workspace, &workspace);
  EXPECT_EQ(map.basis, nullptr);
  EXPECT_EQ(map.origin, nullptr);
  EXPECT_EQ(map.magneticDeviation, 0);
  EXPECT_EQ(map.flags, 0U);
  EXPECT_EQ(map.date, 0);
  EXPECT_EQ(map.contourEnabled, 0);
  EXPECT_EQ(map.contourInterval, 0);
  for (const auto& name : map.smName) EXPECT_FALSE(name.has_value());
  EXPECT_TRUE(map.trails.empty());
  EXPECT_TRUE(map.loosePoints.empty());
  EXPECT_TRUE(map.namelessPoints.empty());
  EXPECT_TRUE(map.comments.empty());
  EXPECT_TRUE(map.credits.empty());
}

TEST_F(MapTest, NewestMapIsFirst) {
  Map& first = MakeMap(workspace, "a.map");
  Map& second = MakeMap(workspace, "b.map");
  EXPECT_EQ(&workspace.maps.front(), &second);
  EXPECT_EQ(&*std::next(workspace.maps.begin()), &first);
}

TEST_F(MapTest, FindsAMapWithoutRegardToCase) {
  Map& map = MakeMap(workspace, "Site/Main.map");
  MakeMap(workspace, "Other.map");
  EXPECT_EQ(FindMap(workspace, "site/MAIN.MAP"), &map);
  EXPECT_EQ(FindMap(workspace, "Main.map"), nullptr);
  EXPECT_EQ(FindMap(workspace, "site/Main.ma"), nullptr);
}

TEST_F(MapTest, FindsTheNewestOfTwoMapsOfOneName) {
  MakeMap(workspace, "Untitled");
  Map& second = MakeMap(workspace, "Untitled");
  EXPECT_EQ(FindMap(workspace, "untitled"), &second);
}

TEST_F(MapTest, NewPointHasNoAltitudeAndEntersNoList) {
  Map& map = MakeMap(workspace, "a.map");
  const Point& point = MakePoint(map, "Camp");
  EXPECT_EQ(point.name, "Camp");
  EXPECT_EQ(point.map, &map);
  EXPECT_EQ(point.trail, nullptr);
  EXPECT_EQ(point.geo.altitude, -9999.0F);
  EXPECT_EQ(point.projected.altitude, -9999.0F);
  EXPECT_EQ(point.flags, 0U);
  EXPECT_FALSE(point.note.has_value());
  EXPECT_TRUE(map.loosePoints.empty());
  EXPECT_TRUE(map.namelessPoints.empty());
  for (const auto& bucket : map.pointHash) EXPECT_TRUE(bucket.empty());
}

TEST_F(MapTest, PointsNeverMove) {
  Map& map = MakeMap(workspace, "a.map");
  const Point* first = &MakePoint(map, "first");
  for (int i = 0; i < 10000; ++i) MakePoint(map, "more");
  EXPECT_EQ(first, &map.pointStore.front());
  EXPECT_EQ(first->name, "first");
}

TEST_F(MapTest, NewRecordsHoldTheirDefaults) {
  const Measurement reading;
  EXPECT_EQ(reading.altitude, -9999.0F);
  EXPECT_EQ(reading.position.altitude, -9999.0F);
  EXPECT_EQ(reading.count, 1);
  const Trail trail;
  EXPECT_EQ(trail.groupSize, 1);
  EXPECT_EQ(trail.color, -1);
  EXPECT_EQ(trail.date, 0);
  const Grid grid;
  EXPECT_EQ(grid.rowStyle, GridStyle::LettersUpper);
  EXPECT_EQ(grid.columnStyle, GridStyle::Decimal);
}

TEST_F(MapTest, WalkMeetsTrailsThenLooseThenNamelessPoints) {
  Map& map = MakeMap(workspace, "a.map");
  Point& a = MakePoint(map, "a");
  Point& b = MakePoint(map, "b");
  Point& loose = MakePoint(map, "loose");
  Point& nameless = MakePoint(map, "");
  Point& contour = MakePoint(map, "");
  map.trails.emplace_front().points = {&b};
  map.trails.emplace_front().points = {&a, &b, &a};
  map.contourTrails.emplace_front().points = {&contour};
  map.loosePoints.push_front(&loose);
  map.namelessPoints.push_front(&nameless);
  std::vector<const Point*> met;
  ForEachPoint(map, [&](const Point& point) { met.push_back(&point); });
  EXPECT_EQ(met, (std::vector<const Point*>{&a, &b, &a, &b, &loose, &nameless}));
}

TEST_F(MapTest, SwappedMapsWorkWithEachOthersContents) {
  Map& a = MakeMap(workspace, "a.map");
  {
    Workspace other(messages);
    Map& b = MakeMap(other, "b.map");
    ResolvePointName(a, nullptr, "Camp");
    for (int i = 0; i < 1000; ++i) ResolvePointName(b, nullptr, "P" + std::to_string(i));
    Point& hill = *ResolvePointName(b, nullptr, "Hill=Top");
    b.trails.emplace_front().points = {&hill};
    b.origin = &hill;
    b.comments.emplace_back("# new");
    b.removed.trails.emplace_front().name = "Old";
    SwapContents(a, b);
    EXPECT_NE(FindPointByName(b, nullptr, "Camp"), nullptr);
    EXPECT_EQ(FindPointByName(b, nullptr, "Hill"), nullptr);
    EXPECT_EQ(b.workspace, &other);
    // The other map is destroyed with its workspace, and so is the memory of its present content.
  }
  EXPECT_EQ(a.fileName, "a.map");
  EXPECT_EQ(a.workspace, &workspace);
  Point* hill = FindPointByName(a, nullptr, "Top");
  ASSERT_NE(hill, nullptr);
  EXPECT_EQ(a.origin, hill);
  EXPECT_EQ(hill->map, &a);
  EXPECT_EQ(a.trails.front().points.front(), hill);
  EXPECT_EQ(a.comments, std::vector<std::string>{"# new"});
  EXPECT_EQ(a.removed.trails.front().name, "Old");
  EXPECT_EQ(FindPointByName(a, nullptr, "Camp"), nullptr);
  for (int i = 0; i < 1000; ++i) ResolvePointName(a, nullptr, "Q" + std::to_string(i));
  for (const char* name : {"P0", "P999", "Q0", "Q999"}) {
    EXPECT_NE(FindPointByName(a, nullptr, name), nullptr) << name;
  }
}

// A copy of these would point into the points or clusters of the original.
TEST(Records, WithPointersIntoTheirOwnStoreCannotBeCopied) {
  const auto movesOnly = [](auto type) {
    using Record = typename decltype(type)::type;
    return !std::is_copy_constructible_v<Record> && !std::is_copy_assignable_v<Record> &&
           std::is_move_constructible_v<Record>;
  };
  EXPECT_TRUE(movesOnly(std::type_identity<ClusterTree>()));
  EXPECT_TRUE(movesOnly(std::type_identity<OffsetHull>()));
  EXPECT_TRUE(movesOnly(std::type_identity<TrailRangeOverlap>()));
  EXPECT_FALSE(std::is_copy_constructible_v<Range>);
  EXPECT_FALSE(std::is_copy_constructible_v<Map>);
}

}  // namespace
}  // namespace orvane
