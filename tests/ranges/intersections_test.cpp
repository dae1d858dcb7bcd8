#include "ranges/intersections.h"

#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "model/cells.h"
#include "ranges/analysis.h"
#include "ranges/grid_tally.h"
#include "ranges/range_case.h"
#include "support/counted_progress.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>
#include <utility>

namespace orvane {
namespace {

//      600            .------B------.
//                     |             |
//      400     .------+------.      |
//              |      |######|      |       two squares of 400 m, which share one of 200 m
//      200     |      '------+------'
//              |             |
//        0     '------A------'
//              0     200    400    600

struct IntersectionsTest : testing::Test, RangeCase {
  /// The overlap of the first two ranges, analysed; the test fails if there is none.
  RangeIntersection& Overlap() {
    AnalyzeAllRanges(map);
    EXPECT_FALSE(map.intersections.empty());
    static RangeIntersection none;
    return map.intersections.empty() ? none : map.intersections.front();
  }
  void AddTwoSquares(int minutes = 10) {
    AddSquare("A", 0, 0, 400, minutes);
    AddSquare("B", 200, 200, 400, minutes);
    AddRangeOf("A");
    AddRangeOf("B");
  }
};

TEST_F(IntersectionsTest, FindsTheCommonGround) {
  AddTwoSquares();
  const RangeIntersection& record = Overlap();
  EXPECT_NEAR(record.area, 40000, 20);
  EXPECT_EQ(record.a.range->name, "A");
  EXPECT_EQ(record.b.range->name, "B");
  const double meter = MetersToDegrees(1);
  EXPECT_NEAR(record.minLat, MiddleLat + MetersToDegrees(200), meter);
  EXPECT_NEAR(record.maxLat, MiddleLat + MetersToDegrees(400), meter);
  EXPECT_NEAR(record.minLon, MiddleLon + MetersToDegrees(200), meter);
  EXPECT_NEAR(record.maxLon, MiddleLon + MetersToDegrees(400), meter);
}

TEST_F(IntersectionsTest, MakesNoRecordWhereOnlyBoundsMeet) {
  AddFollow("A", 0, {{0, 0, 480, 10}, {400, 0, 490, 10}, {0, 400, 500, 10}});
  AddFollow("B", 0, {{400, 400, 480, 10}, {300, 400, 490, 10}, {400, 300, 500, 10}});
  Range& a = AddRangeOf("A");
  Range& b = AddRangeOf("B");
  AnalyzeAllRanges(map);
  EXPECT_TRUE(BoundsOverlap(a, b));
  EXPECT_TRUE(map.intersections.empty());
}

TEST_F(IntersectionsTest, MakesNoRecordForARangeWithoutPoints) {
  AddSquare("A", 0, 0, 400);
  AddRangeOf("A");
  AddRangeOf("None");
  AnalyzeAllRanges(map);
  EXPECT_TRUE(map.intersections.empty());
}

TEST_F(IntersectionsTest, LetsBoundsThatTouchOverlap) {
  EXPECT_TRUE(BoundsOverlap({0, 1, 0, 1}, {1, 2, 1, 2}));
  EXPECT_TRUE(BoundsOverlap({0, 9, 0, 9}, {1, 2, 1, 2}));
  EXPECT_FALSE(BoundsOverlap({0, 1, 0, 1}, {1.1, 2, 0, 1}));
  EXPECT_FALSE(BoundsOverlap({0, 1, 0, 1}, {0, 1, -2, -1}));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(BoundsOverlap({nan, nan, 0, 1}, {0, 1, 0, 1}));
}

TEST_F(IntersectionsTest, NamesARecordByBothRanges) {
  AddTwoSquares();
  EXPECT_EQ(Overlap().name, "Intersection of A and B");
  map.ranges.front().name = "A name of more than twenty letters";
  EXPECT_EQ(Overlap().name, "Intersection of A name of more than  and B");
  map.ranges.front().name.reset();
  EXPECT_EQ(Overlap().name, "Intersection of B and something");
  std::next(map.ranges.begin())->name.reset();
  EXPECT_EQ(Overlap().name, "Intersection of two ranges");
  map.ranges.front().name = "A";
  EXPECT_EQ(Overlap().name, "Intersection of A and something");
}

TEST_F(IntersectionsTest, SharesTimeByMinutes) {
  // Of each square one corner and the middle lie in the other, unless a vertex tests as outside at
  // metre grain: the middle of A is the corner of B.
  AddFollow("A", 0, {{0, 0, 480, 10}, {400, 0, 490, 10}, {400, 400, 500, 30}, {0, 400, 540, 50}});
  AddFollow("B", 0,
            {{200, 200, 480, 5}, {600, 200, 490, 5}, {600, 600, 500, 5}, {200, 600, 540, 5}});
  AddRangeOf("A");
  AddRangeOf("B");
  const RangeIntersection& record = Overlap();
  EXPECT_FLOAT_EQ(record.a.timeShare, 30);
  EXPECT_FLOAT_EQ(record.b.timeShare, 25);
}

TEST_F(IntersectionsTest, SharesAllTimeOfARangeWithinTheOther) {
  AddSquare("A", 100, 100, 50);
  AddSquare("B", 0, 0, 400);
  AddRangeOf("A");
  AddRangeOf("B");
  const RangeIntersection& record = Overlap();
  EXPECT_EQ(record.a.timeShare, 100);
  EXPECT_NEAR(record.area, 2500, 2);
}

TEST_F(IntersectionsTest, SharesNoTimeOfARangeWithoutMinutes) {
  AddTwoSquares(0);
  const RangeIntersection& record = Overlap();
  EXPECT_EQ(record.a.timeShare, 0);
  EXPECT_EQ(record.b.timeShare, 0);
}

TEST_F(IntersectionsTest, CountsNoCellsWithoutACommonGrid) {
  AddTwoSquares();
  AddGrid(50, 0, 0);
  AnalyzeAllRanges(map);
  Range& b = *std::next(map.ranges.begin());
  const Grid other = map.grids.front();
  b.grid = &other;
  std::forward_list<RangeIntersection> list;
  IntersectRanges(map.ranges.front(), b, list, messages);
  ASSERT_FALSE(list.empty());
  EXPECT_EQ(list.front().grid, nullptr);
  EXPECT_GT(list.front().a.timeShare, 0);
  EXPECT_EQ(list.front().a.cellShare, 0);
  EXPECT_EQ(list.front().bothCellsArea, 0);
  for (const OverlapShare* share : {&list.front().a, &list.front().b}) {
    for (const CellTally* tally :
         {&share->tally, &share->beyond, &share->withinOther, &share->withinOwn}) {
      EXPECT_FALSE(HoldsAnything(*tally));
    }
  }
}

TEST_F(IntersectionsTest, CountsStopsJustBeyondAndJustWithin) {
  // Cells of 50 m give a margin of 70 m along the diagonals, which is 49.5 m at the sides.
  AddGrid(50, -1000, -1000);
  AddFollow("A", 0,
            {{-45, 200, 480, 1, 10, 0, 0},  // just beyond B
             {-55, 200, 490, 2, 10, 0, 0},  // farther out
             {45, 210, 500, 4, 0, 100, 0},  // just within B
             {55, 190, 510, 8},             // deep in B
             {200, 800, 520, 16},           // far from B, so that A is wide
             {200, -400, 530, 32}});
  AddFollow("B", 0, {{0, 0, 480, 1}, {400, 0, 490, 1}, {400, 400, 500, 1}, {0, 400, 510, 1}});
  AddRangeOf("A");
  AddRangeOf("B");
  const OverlapShare& share = Overlap().a;
  EXPECT_EQ(share.beyond.minutes, 1);
  EXPECT_EQ(share.beyond.measure[0], 10);
  EXPECT_EQ(share.withinOther.minutes, 4);
  EXPECT_EQ(share.withinOther.measure[1], 100);
  EXPECT_EQ(share.tally.minutes, 12);
}

TEST_F(IntersectionsTest, CountsStopsInTheOtherJustWithinTheOwnHull) {
  AddGrid(50, -1000, -1000);
  AddFollow("A", 0,
            {{0, 0, 480, 1},
             {400, 0, 490, 1},
             {400, 400, 500, 1},
             {0, 400, 510, 1},
             {45, 200, 520, 4},
             {55, 200, 530, 8}});
  AddSquare("B", -300, -300, 1000);
  AddRangeOf("A");
  AddRangeOf("B");
  const OverlapShare& share = Overlap().a;
  EXPECT_EQ(share.withinOwn.minutes, 8);  // the four corners and the stop 45 m from the side
  EXPECT_EQ(share.withinOther.minutes, 0);
  EXPECT_EQ(share.tally.minutes, 16);
}

TEST_F(IntersectionsTest, HasNoInnerHullForAMarginBeyondTheMiddle) {
  AddGrid(500, -1000, -1000);
  AddTwoSquares();
  const RangeIntersection& record = Overlap();
  EXPECT_TRUE(map.ranges.front().innerHull.ring.empty());
  EXPECT_FALSE(map.ranges.front().outerHull.ring.empty());
  EXPECT_GT(record.a.tally.minutes, 0);
  EXPECT_EQ(record.a.withinOther.minutes, 0);
  EXPECT_EQ(record.a.withinOwn.minutes, 0);
  EXPECT_GT(record.a.beyond.minutes, 0);
}

TEST_F(IntersectionsTest, KeepsOffsetHullsThroughALaterAnalysis) {
  AddGrid(50, -1000, -1000);
  AddTwoSquares();
  Overlap();
  const Range& a = map.ranges.front();
  const std::vector<Point*> outer = a.outerHull.ring;
  const std::vector<Point*> inner = a.innerHull.ring;
  const Meters place = outer.front()->projected;
  for (Point* point : map.trails.front().points) point->geo.lat += 0.0001;
  Overlap();
  EXPECT_EQ(a.outerHull.ring, outer);
  EXPECT_EQ(a.innerHull.ring, inner);
  EXPECT_EQ(a.outerHull.ring.front()->projected.north, place.north);
}

TEST_F(IntersectionsTest, KeepsOffsetHullsInThePlaneOfTheFirstOverlap) {
  AddGrid(50, -1000, -1000);
  AddTwoSquares();
  AddSquare("C", -300, 100, 500);
  AddRangeOf("C");
  AnalyzeAllRanges(map);
  ASSERT_EQ(std::distance(map.intersections.begin(), map.intersections.end()), 3);
  // The first pair, A and B, is the oldest record.
  const RangeIntersection& first = *std::next(map.intersections.begin(), 2);
  ASSERT_EQ(first.name, "Intersection of A and B");
  const LatLon center{(first.minLat + first.maxLat) / 2, (first.minLon + first.maxLon) / 2,
                      NoAltitude};
  for (const Range* range : {first.a.range, first.b.range}) {
    const Point& vertex = *range->outerHull.ring.front();
    const Meters expected = LatLonToMeters(vertex.geo.lat, vertex.geo.lon - center.lon);
    EXPECT_EQ(vertex.projected.east, expected.east);
    EXPECT_EQ(vertex.projected.north, expected.north - DegreesToMeters(center.lat));
  }
}

TEST_F(IntersectionsTest, CountsACommonCellForBoth) {
  AddGrid(100, 0, 0);
  AddSquare("A", -100, -100, 600);
  AddSquare("B", -90, -90, 600);
  // Both spend time in the cell (2, 2), where their middles lie, and only A in (3, 1).
  AddFollow("A", 0, {{310, 110, 700, 20}});
  AddRangeOf("A");
  AddRangeOf("B");
  const RangeIntersection& record = Overlap();
  EXPECT_EQ(record.bothCellsArea, 10000);
  EXPECT_EQ(record.a.range->totalMinutes, 70);
  EXPECT_FLOAT_EQ(record.a.cellShare, 1000 / 70.0F);
  EXPECT_FLOAT_EQ(record.b.cellShare, 1000 / 50.0F);
}

TEST_F(IntersectionsTest, PostsNegativeTimes) {
  AddSquare("A", 100, 100, 50, -10);
  AddSquare("B", 0, 0, 400);
  AddRangeOf("A");
  AddRangeOf("B");
  const RangeIntersection& record = Overlap();
  const std::vector<std::string> said = Said();
  EXPECT_EQ(std::count(said.begin(), said.end(), "Negative time"), 5);
  EXPECT_EQ(said.back(), "negative time percentage in: PercentTimeInIntersection");
  EXPECT_EQ(messages.Entries().back().severity, Severity::InternalError);
  EXPECT_EQ(record.a.timeShare, 100);
}

TEST_F(IntersectionsTest, PutsNewRecordsInFront) {
  AddTwoSquares();
  AddSquare("C", 250, 250, 100);
  AddRangeOf("C");
  AnalyzeAllRanges(map);
  std::vector<std::string> names;
  for (const RangeIntersection& record : map.intersections) names.push_back(record.name);
  EXPECT_EQ(names, (std::vector<std::string>{"Intersection of B and C", "Intersection of A and C",
                                             "Intersection of A and B"}));
}

// --- Against plain methods ------------------------------------------------------------------

struct Place {
  double x;
  double y;
};

double SignedArea(const std::vector<Place>& ring) {
  double sum = 0;
  for (size_t i = 0; i < ring.size(); ++i) {
    const Place& p = ring[i];
    const Place& q = ring[(i + 1) % ring.size()];
    sum += p.x * q.y - q.x * p.y;
  }
  return sum / 2;
}

/// Cuts a ring by each side of a convex one in turn.
std::vector<Place> Clip(std::vector<Place> ring, std::vector<Place> by) {
  if (SignedArea(by) < 0) std::reverse(by.begin(), by.end());
  for (size_t i = 0; i < by.size(); ++i) {
    const Place& a = by[i];
    const Place& b = by[(i + 1) % by.size()];
    const auto left = [&](const Place& p) {
      return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
    };
    std::vector<Place> cut;
    for (size_t k = 0; k < ring.size(); ++k) {
      const Place& p = ring[k];
      const Place& q = ring[(k + 1) % ring.size()];
      const double lp = left(p);
      const double lq = left(q);
      if (lp >= 0) cut.push_back(p);
      if ((lp >= 0) != (lq >= 0)) {
        const double t = lp / (lp - lq);
        cut.push_back({p.x + t * (q.x - p.x), p.y + t * (q.y - p.y)});
      }
    }
    ring = cut;
  }
  return ring;
}

std::vector<Place> RingIn(const std::vector<Point*>& points, const LatLon& center) {
  std::vector<Place> ring;
  for (const Point* point : points) {
    const Meters place = LatLonToMeters(point->geo.lat, point->geo.lon - center.lon);
    ring.push_back({place.east, place.north - DegreesToMeters(center.lat)});
  }
  return ring;
}

double Length(const std::vector<Place>& ring) {
  double length = 0;
  for (size_t i = 0; i < ring.size(); ++i) {
    const Place& q = ring[(i + 1) % ring.size()];
    length += std::hypot(q.x - ring[i].x, q.y - ring[i].y);
  }
  return length;
}

double DistanceToSide(const Place& place, const Place& from, const Place& to) {
  const double x = to.x - from.x;
  const double y = to.y - from.y;
  const double along = ((place.x - from.x) * x + (place.y - from.y) * y) / (x * x + y * y);
  const double held = std::clamp(along, 0.0, 1.0);
  return std::hypot(place.x - from.x - held * x, place.y - from.y - held * y);
}

bool IsNearSide(const Place& place, const std::vector<Place>& ring) {
  constexpr double Near = 1.1;  // metres
  for (size_t i = 0; i < ring.size(); ++i) {
    if (DistanceToSide(place, ring[i], ring[(i + 1) % ring.size()]) < Near) return true;
  }
  return false;
}

/// What is left of the common ground of two rings without the corners of either that lie on a side
/// of the other.
std::vector<Place> WithoutNearCorners(std::vector<Place> common, const std::vector<Place>& a,
                                      const std::vector<Place>& b) {
  const auto isNearCorner = [](const Place& place, const std::vector<Place>& ring,
                               const std::vector<Place>& other) {
    return IsNearSide(place, other) && std::any_of(ring.begin(), ring.end(), [&](const Place& p) {
             return std::hypot(p.x - place.x, p.y - place.y) < 1e-6;
           });
  };
  std::erase_if(common, [&](const Place& place) {
    return isNearCorner(place, a, b) || isNearCorner(place, b, a);
  });
  return common;
}

struct RandomOverlaps : testing::TestWithParam<int>, RangeCase {
  Dice dice{static_cast<std::uint64_t>(1000 + GetParam())};

  void AddCloud(const std::string& type, double north, double east) {
    std::vector<Stop> stops;
    const double height = dice.Between(50, 600);
    const double width = dice.Between(50, 600);
    for (int i = dice.Int(3, 60); i > 0; --i) {
      stops.push_back({north + dice.Between(-height, height), east + dice.Between(-width, width),
                       400 + i, dice.Int(0, 20), dice.Int(0, 4), dice.Int(0, 2), dice.Int(0, 9)});
    }
    AddFollow(type, 0, stops);
    AddRangeOf(type);
  }
};

TEST_P(RandomOverlaps, HaveTheAreaThatAClipperFinds) {
  SCOPED_TRACE(testing::Message() << "seed " << 1000 + GetParam());
  AddCloud("A", 0, 0);
  AddCloud("B", dice.Between(-400, 400), dice.Between(-400, 400));
  AnalyzeAllRanges(map);
  const Range& a = map.ranges.front();
  const Range& b = *std::next(map.ranges.begin());
  const LatLon center{(a.minLat + a.maxLat + b.minLat + b.maxLat) / 4,
                      (a.minLon + a.maxLon + b.minLon + b.maxLon) / 4, NoAltitude};
  const std::vector<Place> ringA = RingIn(a.hull, center);
  const std::vector<Place> ringB = RingIn(b.hull, center);
  const std::vector<Place> clipped = Clip(ringA, ringB);
  const double found = map.intersections.empty() ? 0 : map.intersections.front().area;
  // Corners within a metre of the other's edge may be left out, and the ground behind them.
  const double tolerance = 2 * Length(clipped) + 10;
  EXPECT_LE(found, std::abs(SignedArea(clipped)) + tolerance);
  EXPECT_GE(found, std::abs(SignedArea(WithoutNearCorners(clipped, ringA, ringB))) - tolerance);
}

/// What one side spent where, walked point by point with rings of points.
OverlapShare PlainShare(Range& range, Range& other, const RangeIntersection& record,
                        std::map<std::pair<int, int>, CellTally>& cells) {
  const LatLon center{(record.maxLat + record.minLat) / 2, (record.maxLon + record.minLon) / 2,
                      NoAltitude};
  const double margin = record.grid->cellSize * 1.4;
  ScratchPoints scratch;
  const auto offset = [&](const Range& of, double by) {
    Poly ring = OffsetPolygon(scratch, of.hull, by);
    ProjectPoints(ring, center.lon, center.lat);
    return ring;
  };
  const Poly outer = offset(other, margin);
  const Poly inner = offset(other, -margin);
  const Poly own = offset(range, -margin);
  ProjectPoints(other.hull, center.lon, center.lat);
  const auto isIn = [](const Point& point, const Poly& ring) {
    return PointInPolygon(point.projected.east, point.projected.north, ring);
  };
  OverlapShare share;
  std::int64_t minutes = 0;
  for (Point* point : range.points) {
    ProjectPoints({&point, 1}, center.lon, center.lat);
    if (isIn(*point, other.hull)) {
      minutes += point->duration;
      AddStop(share.tally, *point);
      const CellPosition cell = GridCellOf(point->geo.lat, point->geo.lon, FrameOf(*record.grid));
      const int row = static_cast<int>(cell.alongNorth);
      const int column = static_cast<int>(cell.alongEast);
      if (row >= record.window.firstRow && row < record.window.firstRow + record.window.rows &&
          column >= record.window.firstColumn &&
          column < record.window.firstColumn + record.window.columns) {
        AddStop(cells[{row, column}], *point);
      }
      if (!inner.empty() && !isIn(*point, inner)) AddStop(share.withinOther, *point);
      if (!own.empty() && !isIn(*point, own)) AddStop(share.withinOwn, *point);
    } else if (!outer.empty() && isIn(*point, outer)) {
      AddStop(share.beyond, *point);
    }
  }
  if (range.totalMinutes == 0) return {};
  share.timeShare = static_cast<float>(static_cast<double>(minutes) * 100 /
                                       static_cast<double>(range.totalMinutes));
  ProjectPoints(range.points, 0, 0);
  ProjectPoints(other.hull, 0, 0);
  return share;
}

void ExpectSame(const CellTally& found, const CellTally& expected, const char* what) {
  EXPECT_EQ(found.minutes, expected.minutes) << what;
  for (size_t k = 0; k < 3; ++k) EXPECT_EQ(found.measure[k], expected.measure[k]) << what << k;
}

TEST_P(RandomOverlaps, HaveTheTalliesOfAWalkFromPointToPoint) {
  SCOPED_TRACE(testing::Message() << "seed " << 1000 + GetParam());
  AddGrid(dice.Int(10, 80), 30, -50).angle = GetParam() % 2 == 0 ? 0 : 33;
  AddCloud("A", 0, 0);
  AddCloud("B", dice.Between(-400, 400), dice.Between(-400, 400));
  AnalyzeAllRanges(map);
  if (map.intersections.empty()) return;
  const RangeIntersection& record = map.intersections.front();
  std::map<std::pair<int, int>, CellTally> cells[2];
  const OverlapShare* sides[] = {&record.a, &record.b};
  for (int side : {0, 1}) {
    const OverlapShare& found = *sides[side];
    const OverlapShare expected =
        PlainShare(*found.range, *sides[1 - side]->range, record, cells[side]);
    ExpectSame(found.tally, expected.tally, "tally");
    ExpectSame(found.beyond, expected.beyond, "beyond");
    ExpectSame(found.withinOther, expected.withinOther, "withinOther");
    ExpectSame(found.withinOwn, expected.withinOwn, "withinOwn");
    EXPECT_EQ(found.timeShare, expected.timeShare);
    std::map<std::pair<int, int>, CellTally> kept;
    for (const RangeCell& cell : CellsOf(found)) kept[{cell.row, cell.column}] = cell.tally;
    std::erase_if(cells[side], [](const auto& each) { return !HoldsAnything(each.second); });
    EXPECT_EQ(kept, cells[side]);
  }
  double used = 0;
  double minutes[2] = {0, 0};
  for (const auto& [place, tally] : cells[0]) {
    const auto other = cells[1].find(place);
    if (other == cells[1].end() || tally.minutes == 0 || other->second.minutes == 0) continue;
    ++used;
    minutes[0] += static_cast<double>(tally.minutes);
    minutes[1] += static_cast<double>(other->second.minutes);
  }
  EXPECT_EQ(record.bothCellsArea, used * record.grid->cellSize * record.grid->cellSize);
  for (const int side : {0, 1}) {
    const double whole = static_cast<double>(sides[side]->range->totalMinutes);
    EXPECT_FLOAT_EQ(sides[side]->cellShare,
                    static_cast<float>(whole == 0 ? 0 : minutes[side] * 100 / whole));
  }
}

TEST_P(RandomOverlaps, AreTheSameFromEitherSide) {
  SCOPED_TRACE(testing::Message() << "seed " << 1000 + GetParam());
  AddGrid(40, 30, -50);
  AddCloud("A", 0, 0);
  AddCloud("B", dice.Between(-400, 400), dice.Between(-400, 400));
  AnalyzeAllRanges(map);
  if (map.intersections.empty()) return;
  std::forward_list<RangeIntersection> turned;
  IntersectRanges(*std::next(map.ranges.begin()), map.ranges.front(), turned, messages);
  ASSERT_FALSE(turned.empty());
  const RangeIntersection& record = map.intersections.front();
  EXPECT_NEAR(turned.front().area, record.area, 1e-6 * record.area + 1e-6);
  ExpectSame(turned.front().a.tally, record.b.tally, "tally");
  ExpectSame(turned.front().b.tally, record.a.tally, "tally");
}

TEST_P(RandomOverlaps, LeaveAllPointsInAbsoluteForm) {
  AddGrid(40, 30, -50);
  AddCloud("A", 0, 0);
  AddCloud("B", 100, 100);
  AnalyzeAllRanges(map);
  for (const Trail& trail : map.trails) {
    for (const Point* point : trail.points) {
      const Meters expected = LatLonToMeters(point->geo.lat, point->geo.lon);
      EXPECT_EQ(point->projected.north, expected.north);
      EXPECT_EQ(point->projected.east, expected.east);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOverlaps, testing::Range(0, 150));

// --- Bad input ------------------------------------------------------------------------------

TEST(IntersectionsOfBadInput, AreBounded) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinite = std::numeric_limits<double>::infinity();
  const LatLon bad[] = {{nan, 0, 0},       {0, nan, 0},       {infinite, 0, 0},
                        {0, -infinite, 0}, {90, 0, 0},        {-90, 180, 0},
                        {89.999, -180, 0}, {1e300, 1e300, 0}, {1, 179.999, 0}};
  for (const LatLon& place : bad) {
    for (const int cellSize : {50, 0, -50}) {
      RangeCase site;
      site.AddGrid(cellSize, 0, 0);
      site.AddSquare("A", 0, 0, 400).points[1]->geo = place;
      site.AddSquare("B", 200, 200, 400).points[2]->geo = place;
      Trail& filled = site.AddSquare("C", 100, 100, 400);
      filled.points[0]->geo = place;
      filled.filled = true;
      site.AddRangeOf("A");
      site.AddRangeOf("B");
      AnalyzeAllRanges(site.map);
      std::forward_list<TrailRangeOverlap> overlaps;
      IntersectTrailWithRanges(site.map, filled, overlaps);
      for (const RangeIntersection& record : site.map.intersections) {
        EXPECT_LE(record.window.rows, 601);
        EXPECT_LE(record.window.columns, 601);
        EXPECT_LE(record.a.tally.minutes, 50);
      }
    }
  }
}

// --- Trails ---------------------------------------------------------------------------------

struct TrailOverlapsTest : testing::Test, RangeCase {
  std::forward_list<TrailRangeOverlap> list;

  Trail& AddPlot(double south, double west, double size) {
    Trail& plot = AddTrail("Plot");
    plot.points = {&At("p", south, west), &At("q", south + size, west),
                   &At("r", south + size, west + size), &At("s", south, west + size)};
    plot.filled = true;
    return plot;
  }
};

TEST_F(TrailOverlapsTest, FindTheRangesUnderAFilledTrail) {
  AddSquare("A", 0, 0, 400);
  AddSquare("B", 1000, 1000, 400);
  AddSquare("C", 100, 100, 400);
  for (const char* type : {"A", "B", "C"}) AddRangeOf(type);
  AnalyzeAllRanges(map);
  Trail& plot = AddPlot(200, 200, 150);
  IntersectTrailWithRanges(map, plot, list);
  ASSERT_EQ(std::distance(list.begin(), list.end()), 2);
  EXPECT_EQ(list.front().range->name, "C");
  EXPECT_EQ(std::next(list.begin())->range->name, "A");
  EXPECT_EQ(list.front().trail, &plot);
  EXPECT_EQ(list.front().polygon.size(), 4U);
  EXPECT_EQ(list.front().minLat, plot.points[0]->geo.lat);
  EXPECT_EQ(list.front().maxLon, plot.points[2]->geo.lon);
}

TEST_F(TrailOverlapsTest, AreNoneForTrailsWithoutAnArea) {
  AddSquare("A", 0, 0, 400);
  AddRangeOf("A");
  AnalyzeAllRanges(map);
  Trail& plot = AddPlot(200, 200, 150);
  plot.filled = false;
  IntersectTrailWithRanges(map, plot, list);
  EXPECT_TRUE(list.empty());
  plot.filled = true;
  plot.points.resize(2);
  IntersectTrailWithRanges(map, plot, list);
  EXPECT_TRUE(list.empty());
}

/// Ranges at random places in a map with a grid; equal seeds make equal maps.
struct RandomRanges : RangeCase {
  explicit RandomRanges(unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](unsigned n) { return static_cast<double>(random() % n); };
    AddGrid(50, 2000, 0);
    for (int i = 0; i < 25; ++i) {
      const std::string type = "A" + std::to_string(i);
      AddSquare(type, below(2000), below(2000), 50 + below(600), 1 + static_cast<int>(below(30)));
      AddRangeOf(type);
    }
  }
};

TEST(AnalyzeAllRanges, FindsTheOverlapsOfEveryPairOfRanges) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    RandomRanges found(seed);
    AnalyzeAllRanges(found.map);
    // The twin tries all pairs, whether their boxes meet or not.
    RandomRanges twin(seed);
    for (Range& range : twin.map.ranges) AnalyzeRange(range, twin.map);
    auto& expected = twin.map.intersections;
    for (auto a = twin.map.ranges.begin(); a != twin.map.ranges.end(); ++a) {
      for (auto b = std::next(a); b != twin.map.ranges.end(); ++b) {
        IntersectRanges(*a, *b, expected, twin.messages);
      }
    }
    const auto length = [](const auto& list) { return std::distance(list.begin(), list.end()); };
    ASSERT_EQ(length(found.map.intersections), length(expected)) << seed;
    EXPECT_GT(length(expected), 20) << seed;
    auto record = found.map.intersections.begin();
    for (const RangeIntersection& other : expected) {
      EXPECT_EQ(record->name, other.name) << seed;
      EXPECT_EQ(record->area, other.area) << seed;
      EXPECT_EQ(record->a.timeShare, other.a.timeShare) << seed;
      EXPECT_EQ(record->b.cellShare, other.b.cellShare) << seed;
      EXPECT_EQ(record->b.beyond.minutes, other.b.beyond.minutes) << seed;
      ++record;
    }
  }
}

struct OverlapMakerTest : testing::Test, RangeCase {
  std::vector<Range*> ranges;

  /// Ranges that all overlap, each analysed.
  void AddRanges(int count) {
    for (int i = 0; i < count; ++i) {
      const std::string type = "A" + std::to_string(i);
      AddSquare(type, 50 * i, 50 * i, 800);
      ranges.push_back(&AddRangeOf(type));
      AnalyzeRange(*ranges.back(), map);
    }
  }
  long Overlaps() const {
    return std::distance(map.intersections.begin(), map.intersections.end());
  }
};

TEST_F(OverlapMakerTest, LeavesOutWhatGoesBeyondItsBoundAndSaysSoOnce) {
  AddRanges(4);
  constexpr size_t ForOne = sizeof(RangeIntersection) + 1;
  OverlapMaker overlaps(map, ForOne);
  for (size_t i = 0; i < ranges.size(); ++i) {
    for (size_t j = i + 1; j < ranges.size(); ++j) overlaps.Intersect(*ranges[i], *ranges[j]);
  }
  EXPECT_EQ(Overlaps(), 1);  // its corners take the byte that is left
  EXPECT_EQ(map.intersections.front().name, "Intersection of A0 and A1");
  EXPECT_EQ(Said(), std::vector<std::string>{"The ranges overlap too often: overlaps of A0 with "
                                             "later ranges are left out"});
}

// Its corners were whole points, each as large as half of the record.
TEST_F(OverlapMakerTest, AnOverlapTakesLittleMemory) {
  AddRanges(4);
  OverlapMaker overlaps(map, 1500);
  for (size_t i = 0; i < ranges.size(); ++i) {
    for (size_t j = i + 1; j < ranges.size(); ++j) overlaps.Intersect(*ranges[i], *ranges[j]);
  }
  EXPECT_EQ(Overlaps(), 3);
}

// A cell that the edge of the overlap does not cut is that of the range.
TEST_F(OverlapMakerTest, AnOverlapSharesTheCellsOfItsRanges) {
  AddGrid(50, -1000, -1000);
  std::vector<Stop> stops = {
      {0, 0, 480, 3}, {800, 0, 490, 3}, {800, 800, 500, 3}, {0, 800, 510, 3}};
  for (int i = 0; i < 200; ++i) {
    stops.push_back({10.0 * (i * 37 % 80), 10.0 * (i * 53 % 80), 520 + i, 2, i % 3});
  }
  for (const char* type : {"A", "B"}) {
    AddFollow(type, 0, stops);
    for (Stop& stop : stops) stop.north += 215;
    ranges.push_back(&AddRangeOf(type));
    AnalyzeRange(*ranges.back(), map);
  }
  OverlapMaker(map).Intersect(*ranges[0], *ranges[1]);
  ASSERT_EQ(Overlaps(), 1);
  for (const OverlapShare* share : {&map.intersections.front().a, &map.intersections.front().b}) {
    const OverlapCells& cells = share->cells;
    EXPECT_GT(cells.whole.size(), 5 * cells.parts.size());
    const std::vector<RangeCell> all = CellsOf(*share);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), IsCellBefore));
    EXPECT_EQ(all.size(), cells.whole.size() + cells.parts.size());
  }
}

// An overlap must not outlive the cells that it refers to.
TEST_F(OverlapMakerTest, ACanceledAnalysisLeavesNoOverlaps) {
  CountedProgress cancel(1);
  AddGrid(50, -1000, -1000);
  AddRanges(3);
  AnalyzeAllRanges(map);
  ASSERT_EQ(Overlaps(), 3);
  workspace.progress = &cancel;
  AnalyzeAllRanges(map);
  workspace.progress = nullptr;
  EXPECT_EQ(Overlaps(), 0);
}

TEST_F(OverlapMakerTest, CountsTheOverlapsThatTheMapHas) {
  AddRanges(3);
  OverlapMaker(map).Intersect(*ranges[0], *ranges[1]);
  ASSERT_EQ(Overlaps(), 1);
  OverlapMaker(map, sizeof(RangeIntersection)).Intersect(*ranges[0], *ranges[2]);
  EXPECT_EQ(Overlaps(), 1);
  OverlapMaker(map, 100 * sizeof(RangeIntersection)).Intersect(*ranges[0], *ranges[2]);
  EXPECT_EQ(Overlaps(), 2);
}

TEST_F(OverlapMakerTest, SaysNothingIfWhatIsLeftOutDoesNotOverlap) {
  // The boxes of two triangles meet, their hulls do not.
  AddFollow("A", 0, {{0, 0, 480, 5}, {100, 0, 490, 5}, {0, 100, 500, 5}});
  AddFollow("B", 0, {{100, 100, 480, 5}, {100, 60, 490, 5}, {60, 100, 500, 5}});
  Range& a = AddRangeOf("A");
  Range& b = AddRangeOf("B");
  AnalyzeRange(a, map);
  AnalyzeRange(b, map);
  ASSERT_TRUE(BoundsOverlap(a, b));
  OverlapMaker(map, 0).Intersect(a, b);
  EXPECT_TRUE(Said().empty());
}

}  // namespace
}  // namespace orvane
