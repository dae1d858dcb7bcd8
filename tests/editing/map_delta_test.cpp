#include "editing/map_delta.h"

#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

/// The kinds of a change as words.
std::string KindsOf(const MapChange& change) {
  std::string kinds;
  const auto add = [&](bool is, const char* kind) {
    if (is) kinds += (kinds.empty() ? "" : " ") + std::string(kind);
  };
  add(change.trails, "trails");
  add(change.points, "points");
  add(change.survey, "survey");
  add(change.positions, "positions");
  add(change.ranges, "ranges");
  add(change.style, "style");
  add(change.settings, "settings");
  return kinds;
}

struct MapDeltaTest : MapFixture {
  Map& map = Open(
      "T\tPde\tTrail\nG\tCamp\tS20 0\tE47 0\nC\tHill\tCamp\t300\t45\t2\n"
      "T\tKana\tHuman\nC\tNest\tHill\t100\t10\t0\nL\t\t-20\t47.1\nT\nG\tFar\tS20 1\tE47 1\n"
      "H\tCamp\t10\t5\t5\nHS\tA1\tred\nR\tBlue\nK\tHuman\nR\tRed\nK\tTrail\n");
  Point& camp = Named(map, "Camp");

  void SetUp() override {
    map.contourTrails.emplace_front().name = "100";
    map.continuousContours.emplace_front().name = "200";
  }
  std::string Saved() { return MapFileText(map, map.fileName, true); }
};

TEST_F(MapDeltaTest, EachChangeIsOfItsKindsAndSwapsBack) {
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"settings", [&] { map.magneticDeviation = 5; }},
      {"settings", [&] { map.flags |= MapHasDeviation; }},
      {"settings", [&] { map.comments.emplace_back("# more"); }},
      {"settings", [&] { map.grids.emplace_front(map.grids.front()); }},
      {"settings", [&] { map.grids.front().rows = 7; }},
      {"settings", [&] { map.gridShades.emplace_front(map.gridShades.front()); }},
      {"settings", [&] { map.gridShades.front().color = 0xFF; }},
      {"ranges", [&] { map.ranges.front().keys.front().type = "Papio"; }},
      {"ranges", [&] { map.ranges.reverse(); }},
      {"trails survey", [&] { map.trails.reverse(); }},
      {"trails survey", [&] { map.trails.front().date = PackDate(2020, 3, 1); }},
      {"trails survey", [&] { map.trails.front().points.pop_back(); }},
      {"style", [&] { map.trails.front().color = 0xFF; }},
      {"style", [&] { map.trails.front().flags ^= TrailHidden; }},
      {"style", [&] { map.contourTrails.front().width = 3; }},
      {"style", [&] { map.continuousContours.front().filled = true; }},
      {"points", [&] { camp.note = "\tby the river"; }},
      {"points", [&] { camp.sm[2] = 4; }},
      {"points", [&] { camp.flags ^= PointMarkFilled; }},
      {"points survey", [&] { camp.synonyms.emplace_front("Base"); }},
      {"points survey", [&] { camp.measurements.front().count = 3; }},
      {"points survey", [&] { map.loosePoints.push_front(&camp); }},
      {"points survey", [&] { map.namelessPoints.push_front(&camp); }},
      {"points survey", [&] { AddPointName(map, camp, "Base"); }},
      {"survey positions", [&] { camp.geo.lat += 0.1; }},
      {"survey positions", [&] { camp.geo.lon += 0.1; }},
      {"survey positions", [&] { camp.geo.altitude = 9; }},
      {"survey positions", [&] { camp.flags &= ~std::uint32_t{PointPlaced}; }}};
  const std::string before = Saved();
  int number = 0;
  for (const auto& [kinds, change] : changes) {
    SCOPED_TRACE(++number);
    MapSnapshot snapshot(workspace);
    MapSnapshot again(workspace);
    change();
    const std::string after = Saved();
    MapDelta delta = snapshot.TakeDelta();
    EXPECT_EQ(KindsOf(delta.ChangeOf(map)), kinds);
    EXPECT_EQ(KindsOf(delta.Change()), kinds);
    EXPECT_TRUE(delta.Touches(map));
    EXPECT_EQ(delta.Maps(), std::vector<Map*>{&map});
    EXPECT_GT(delta.Bytes(), 0U);
    EXPECT_GE(delta.SwapBytes(), delta.Bytes());
    delta.Swap();
    EXPECT_EQ(Saved(), before);
    EXPECT_TRUE(again.TakeDelta().IsEmpty());
    delta.Swap();
    EXPECT_EQ(Saved(), after);
    delta.Swap();
  }
}

TEST_F(MapDeltaTest, ANewPointIsAChangeOfThePointsAndTheSurvey) {
  MapSnapshot snapshot(workspace);
  MakePoint(map, "");
  EXPECT_EQ(KindsOf(snapshot.TakeDelta().ChangeOf(map)), "points survey");
}

TEST_F(MapDeltaTest, APlaceThatIsNotANumberIsTheSamePlaceStill) {
  camp.geo.lat = std::numeric_limits<double>::quiet_NaN();
  MapSnapshot snapshot(workspace);
  EXPECT_TRUE(snapshot.TakeDelta().IsEmpty());
}

TEST_F(MapDeltaTest, NothingDiffersInAMapThatWasMadeLater) {
  MapSnapshot snapshot(workspace);
  map.magneticDeviation = 5;
  Map& later = Open("G\tCamp\tN1\tE2\n", "later.map");
  const MapDelta delta = snapshot.TakeDelta();
  EXPECT_FALSE(delta.Touches(later));
  EXPECT_FALSE(delta.DiffersInAnalysis(later));
  EXPECT_TRUE(delta.ChangedRanges(later).empty());
  EXPECT_EQ(delta.OverlapsThen(later), OverlapsOf(later));
  EXPECT_TRUE(delta.KeepsFollows(later));
  EXPECT_FALSE(delta.KeepsFollows(map));
}

TEST_F(MapDeltaTest, RangesChangeByTheirKeysAndByTheMinutesOfTheirStops) {
  const auto rangesAfter = [&](const std::function<void()>& change) {
    MapSnapshot snapshot(workspace);
    change();
    MapDelta delta = snapshot.TakeDelta();
    Texts names;
    for (const Range* range : delta.ChangedRanges(map)) names.push_back(*range->name);
    if (delta.DiffersInAnalysis(map)) names.emplace_back("differs");
    delta.Swap();
    return names;
  };
  Range& newest = map.ranges.front();
  const std::vector<Point*> stops = newest.minutesGiven;
  const std::string name = *newest.name;
  EXPECT_EQ(rangesAfter([&] { newest.keys.front().type = "Papio"; }), (Texts{name, "differs"}));
  EXPECT_EQ(rangesAfter([&] { newest.note = "wet"; }), Texts{"differs"});
  EXPECT_EQ(rangesAfter([&] { newest.minutesGiven.push_back(&camp); }), (Texts{name, "differs"}));
  EXPECT_EQ(rangesAfter([&] { camp.note = "\tnear"; }), Texts{});
  EXPECT_EQ(newest.minutesGiven, stops);
}

TEST_F(MapDeltaTest, AnalysisAlsoDiffersInOverlapsAndOffsetHulls) {
  const auto differsAfter = [&](const std::function<void()>& change) {
    MapSnapshot snapshot(workspace);
    change();
    MapDelta delta = snapshot.TakeDelta();
    EXPECT_FALSE(delta.Touches(map)) << "no record of the file differs";
    const bool differs = delta.DiffersInAnalysis(map);
    if (differs) {
      EXPECT_FALSE(delta.IsEmpty());
      EXPECT_GT(delta.Bytes(), sizeof(MapDelta));
    }
    delta.Swap();
    return differs;
  };
  Range& range = map.ranges.front();
  EXPECT_FALSE(differsAfter([] {}));
  EXPECT_TRUE(differsAfter([&] { range.outerHull.ring.push_back(&camp); }));
  EXPECT_TRUE(range.outerHull.ring.empty());
  map.intersections.clear();
  EXPECT_TRUE(differsAfter([&] {
    RangeIntersection& overlap = map.intersections.emplace_front();
    overlap.name = "both";
    overlap.a.range = overlap.b.range = &range;
  }));
}

TEST(MapChangeTest, AddsWhatDiffersInAnother) {
  bool MapChange::*const fields[] = {&MapChange::trails,    &MapChange::points, &MapChange::survey,
                                     &MapChange::positions, &MapChange::ranges, &MapChange::style,
                                     &MapChange::settings};
  EXPECT_FALSE(MapChange().Any());
  for (const auto field : fields) {
    MapChange one;
    one.*field = true;
    // What the survey is follows from points and positions.
    EXPECT_EQ(one.Any(), field != &MapChange::survey) << KindsOf(one);
    MapChange sum;
    sum |= one;
    EXPECT_EQ(KindsOf(sum), KindsOf(one));
    sum |= MapChange();
    EXPECT_EQ(KindsOf(sum), KindsOf(one));
  }
}

}  // namespace
}  // namespace orvane
