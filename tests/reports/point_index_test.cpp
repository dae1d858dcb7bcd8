#include "reports/point_index.h"

#include "base/messages.h"
#include "geo/earth.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "support/dice.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

using Names = std::vector<std::string>;

struct PointIndexTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "case.map");

  Point& Add(const std::string& name, double north = 0, double east = 0,
             float altitude = NoAltitude) {
    Point& point = MakePoint(map, name);
    point.geo = MetersToLatLon(north, east);
    point.geo.altitude = altitude;
    point.flags |= PointPlaced;
    AddPointName(map, point, name);
    return point;
  }
  void AddSynonym(Point& point, const std::string& name) {
    point.synonyms.push_front(name);
    AddPointName(map, point, name);
  }
  Names Sorted() const {
    Names names;
    for (const PointIndexEntry& entry : BuildPointIndex(map, 0).entries)
      names.push_back(entry.name);
    return names;
  }
};

TEST_F(PointIndexTest, ComparesTailsAsNumbers) {
  EXPECT_LT(CompareIndexNames("A9", "A10"), 0);
  EXPECT_GT(CompareIndexNames("A10", "A9"), 0);
  EXPECT_LT(CompareIndexNames("A1", "A1.5"), 0);
  EXPECT_LT(CompareIndexNames("A1.5", "A2"), 0);
  EXPECT_EQ(CompareIndexNames("A1", "A01"), 0);
  EXPECT_EQ(CompareIndexNames("A1.50", "A1.5"), 0);
  EXPECT_LT(CompareIndexNames("9", "10"), 0);
}

TEST_F(PointIndexTest, ComparesOtherNamesByBytes) {
  EXPECT_LT(CompareIndexNames("B1", "a1"), 0);
  EXPECT_LT(CompareIndexNames("A2", "B1"), 0);
  EXPECT_LT(CompareIndexNames("A", "A1"), 0);
  EXPECT_LT(CompareIndexNames("A10", "AB9"), 0);
  EXPECT_LT(CompareIndexNames("a9", "a\xE9"), 0);
  EXPECT_EQ(CompareIndexNames("Camp", "Camp"), 0);
  EXPECT_LT(CompareIndexNames("", "A"), 0);
}

TEST_F(PointIndexTest, TakesTailsOfPointsAndManyDigits) {
  EXPECT_EQ(CompareIndexNames("A.", "A0"), 0);
  EXPECT_EQ(CompareIndexNames("A1.5.9", "A1.5.1"), 0);  // both begin with 1.5
  EXPECT_GT(CompareIndexNames("A" + std::string(400, '9'), "A5"), 0);
}

TEST_F(PointIndexTest, SortsNames) {
  for (const char* name : {"a1", "A10", "B1", "A2", "A1.5", "A1"}) Add(name);
  EXPECT_EQ(Sorted(), (Names{"A1", "A1.5", "A2", "A10", "B1", "a1"}));
}

TEST_F(PointIndexTest, KeepsNamesThatAreAlikeInTheOrderOfTheBuckets) {
  // Of one bucket the newest comes first; 0 and 1 differ by one bucket.
  Add("A1.0");
  Add("A01.");
  Names walk;
  for (const auto& bucket : map.pointHash) {
    for (const Point* point : bucket) walk.push_back(point->name);
  }
  EXPECT_EQ(Sorted(), walk);
}

/// The same way of sorting by halves, as a function that calls itself.
Names SortHalves(const Names& names) {
  if (names.size() < 2) return names;
  const auto middle = names.begin() + static_cast<std::ptrdiff_t>(names.size() / 2);
  Names a = SortHalves({names.begin(), middle});
  Names b = SortHalves({middle, names.end()});
  Names sorted;
  auto x = a.begin();
  auto y = b.begin();
  while (x != a.end() && y != b.end()) {
    sorted.push_back(CompareIndexNames(*x, *y) <= 0 ? *x++ : *y++);
  }
  sorted.insert(sorted.end(), x, a.end());
  sorted.insert(sorted.end(), y, b.end());
  return sorted;
}

TEST_F(PointIndexTest, SortsNamesThatRunInACircle) {
  // A10 < A1b by bytes and A1b < A9, but also A9 < A10 as numbers.
  EXPECT_LT(CompareIndexNames("A9", "A10"), 0);
  EXPECT_LT(CompareIndexNames("A10", "A1b"), 0);
  EXPECT_LT(CompareIndexNames("A1b", "A9"), 0);
  Dice dice(99);
  for (int round = 0; round < 60; ++round) {
    Map& many = MakeMap(workspace, "many.map");
    for (int i = dice.Below(80); i > 0; --i) {
      std::string name = dice.OneIn(2) ? "A" : "B";
      for (int k = dice.Below(4); k > 0; --k) name += "0129.b"[dice.Below(6)];
      Point& point = MakePoint(many, name);
      AddPointName(many, point, name);
    }
    Names walk;
    for (const auto& bucket : many.pointHash) {
      for (const Point* point : bucket) walk.push_back(point->name);
    }
    Names found;
    for (const PointIndexEntry& entry : BuildPointIndex(many, 0).entries)
      found.push_back(entry.name);
    EXPECT_EQ(found, SortHalves(walk)) << "round " << round;
  }
}

TEST_F(PointIndexTest, GivesANameAndItsSynonymOnePlace) {
  Point& point = Add("Camp", 100, 200, 50);
  AddSynonym(point, "Pde1");
  const PointIndex index = BuildPointIndex(map, 0);
  ASSERT_EQ(index.entries.size(), 2U);
  EXPECT_EQ(index.entries[0].name, "Camp");
  EXPECT_EQ(index.entries[1].name, "Pde1");
  EXPECT_EQ(index.entries[0].position.lat, index.entries[1].position.lat);
  EXPECT_EQ(index.entries[1].position.altitude, 50);
}

TEST_F(PointIndexTest, LeavesOutHiddenNames) {
  AddSynonym(Add("_hidden"), "Shown");
  Point& point = Add("Camp");
  AddSynonym(point, "@hidden");
  AddSynonym(point, "_also");
  EXPECT_EQ(Sorted(), (Names{"Camp", "Shown"}));
}

TEST_F(PointIndexTest, CanBeBuiltAgain) {
  Add("A");
  EXPECT_EQ(Sorted(), (Names{"A"}));
  EXPECT_EQ(Sorted(), (Names{"A"}));
}

TEST_F(PointIndexTest, TakesOnlyTheNamesOfThisMap) {
  Point& below = Add("Below");
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  EXPECT_TRUE(BuildPointIndex(above, 0).entries.empty());
  // A synonym that the upper map gives to a point of its basis.
  below.synonyms.push_front("Above");
  AddPointName(above, below, "Above");
  EXPECT_EQ(BuildPointIndex(above, 0).entries.size(), 2U);
}

TEST_F(PointIndexTest, MeasuresFromTheFirstOriginUpTheChain) {
  Point& origin = Add("Origin", 1000, 2000);
  Add("There", 1250, 1500);
  map.origin = &origin;
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  AddPointName(above, Add("Other", 3000, 2000), "Other");
  const PointIndex index = BuildPointIndex(above, 0);
  EXPECT_TRUE(index.hasOrigin);
  ASSERT_EQ(index.entries.size(), 1U);
  EXPECT_NEAR(index.entries[0].north, 2000, 1e-6);
  const PointIndex own = BuildPointIndex(map, 0);
  const auto& there = *std::find_if(own.entries.begin(), own.entries.end(),
                                    [](const auto& entry) { return entry.name == "There"; });
  EXPECT_NEAR(there.north, 250, 1e-6);
  EXPECT_NEAR(there.east, -500, 0.001);
}

TEST_F(PointIndexTest, FormatsMeters) {
  PointIndexEntry entry;
  EXPECT_EQ(FormatMeters(entry), "0mN,0mE");
  entry.north = 0.1;
  entry.east = -0.09;
  EXPECT_EQ(FormatMeters(entry), "0.1mN,0mE");
  entry.north = 999.96;
  entry.east = -999.4;
  EXPECT_EQ(FormatMeters(entry), "1000.0mN,-999.4mE");
  entry.north = 1000;
  entry.east = -12345;
  EXPECT_EQ(FormatMeters(entry), "1.0kmN,-12.3kmE");
  entry.north = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(FormatMeters(entry), "0mN,-12.3kmE");
}

TEST_F(PointIndexTest, WritesOnlyHeadingsForNoNames) {
  map.origin = &MakePoint(map, "");
  EXPECT_EQ(PointIndexText(BuildPointIndex(map, 0), CoordinateDisplay::Minutes),
            "Name\tLat/Lon\n\n");
}

TEST_F(PointIndexTest, WritesPlacesInTheFormAskedFor) {
  Point& point = Add("Camp");
  point.geo = {-1.5, 30.25, NoAltitude};
  const PointIndex index = BuildPointIndex(map, 0);
  EXPECT_EQ(PointIndexText(index, CoordinateDisplay::Minutes),
            "Name\tLat/Lon\n\nCamp\t" + FormatLatLon(point.geo, CoordinateDisplay::Minutes) + "\n");
  EXPECT_EQ(PointIndexText(index, CoordinateDisplay::Utm),
            "Name\tUTM\n\nCamp\t" + FormatLatLon(point.geo, CoordinateDisplay::Utm) + "\n");
  EXPECT_NE(PointIndexText(index, CoordinateDisplay::Seconds),
            PointIndexText(index, CoordinateDisplay::Degrees));
}

TEST_F(PointIndexTest, WritesTheColumnsThatShowAnything) {
  Grid& grid = map.grids.emplace_front();
  grid.corner = &MakePoint(map, "");
  grid.cellSize = 100;
  grid.rows = 2;
  grid.columns = 2;
  grid.rowStart = 1;
  grid.columnStart = 1;
  Point& origin = Add("A", 50, 50, 12.6F);
  Add("B", -50, 50);
  map.origin = &origin;
  const PointIndex index = BuildPointIndex(map, 0);
  const auto place = [&](size_t i) {
    return FormatLatLon(index.entries[i].position, CoordinateDisplay::Minutes);
  };
  EXPECT_EQ(PointIndexText(index, CoordinateDisplay::Minutes),
            "Name\tLat/Lon\tAltitude\tGrid\tMeters N/E\n\n"
            "A\t" +
                place(0) + "\t13m\t\t0mN,0mE\nB\t" + place(1) + "\t\t A1\t-100.0mN,0mE\n");
}

}  // namespace
}  // namespace orvane
