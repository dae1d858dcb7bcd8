#include "ranges/grid_tally.h"

#include "model/cells.h"
#include "ranges/analysis.h"
#include "ranges/range_case.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <utility>

namespace orvane {
namespace {

struct GridTallyTest : testing::Test, RangeCase {
  Range& Tally() {
    Range& range = AddRangeOf("Blue");
    AnalyzeRange(range, map);
    return range;
  }
  static const CellTally* CellOf(const Range& range, int row, int column) {
    for (const RangeCell& cell : range.cells) {
      if (cell.row == row && cell.column == column) return &cell.tally;
    }
    return nullptr;
  }
};

TEST_F(GridTallyTest, CountsMinutesAndMeasuresByCell) {
  AddGrid(100, 0, 0);
  AddFollow("Blue", 1, {{10, 10, 480, 10, 1, 2, 3}, {90, 90, 500, 5, 4, 0, 0}, {150, -50, 520, 7}});
  const Range& range = Tally();
  ASSERT_EQ(range.cells.size(), 2U);
  ASSERT_NE(CellOf(range, 0, 0), nullptr);
  EXPECT_EQ(CellOf(range, 0, 0)->minutes, 15);
  EXPECT_EQ(CellOf(range, 0, 0)->measure[0], 5);
  EXPECT_EQ(CellOf(range, 0, 0)->measure[1], 2);
  EXPECT_EQ(CellOf(range, 0, 0)->measure[2], 3);
  ASSERT_NE(CellOf(range, 1, -1), nullptr);
  EXPECT_EQ(CellOf(range, 1, -1)->minutes, 7);
  EXPECT_EQ(range.window.firstRow, 0);
  EXPECT_EQ(range.window.firstColumn, -1);
  EXPECT_EQ(range.window.rows, 2);
  EXPECT_EQ(range.window.columns, 2);
  EXPECT_EQ(range.tally.minutes, 22);
  EXPECT_EQ(range.gridArea, 20000);
}

TEST_F(GridTallyTest, HoldsCellsRowByRow) {
  AddGrid(10, 0, 0);
  AddFollow("Blue", 1, {{25, 5, 480, 1}, {5, 25, 490, 1}, {5, 5, 500, 1}, {25, 25, 510, 1}});
  std::vector<std::pair<int, int>> places;
  for (const RangeCell& cell : Tally().cells) places.emplace_back(cell.row, cell.column);
  EXPECT_EQ(places, (std::vector<std::pair<int, int>>{{0, 0}, {0, 2}, {2, 0}, {2, 2}}));
}

TEST_F(GridTallyTest, GivesAStopWithoutDurationOneMinuteForGood) {
  AddGrid(100, 0, 0);
  const Trail& trail = AddFollow("Blue", 1, {{10, 10, 480, 0}, {20, 20, 490, 5}});
  Range& range = Tally();
  EXPECT_EQ(trail.points[0]->duration, 1);
  EXPECT_EQ(range.tally.minutes, 6);
  // The sum was taken before; the next analysis sees the minute.
  EXPECT_EQ(range.totalMinutes, 5);
  AnalyzeRange(range, map);
  EXPECT_EQ(range.totalMinutes, 6);
}

TEST_F(GridTallyTest, KeepsDurationsWithoutAGrid) {
  const Trail& trail = AddFollow("Blue", 1, {{10, 10, 480, 0}});
  const Range& range = Tally();
  EXPECT_EQ(trail.points[0]->duration, 0);
  EXPECT_EQ(range.grid, nullptr);
  EXPECT_TRUE(range.cells.empty());
  EXPECT_EQ(range.gridArea, 0);
}

TEST_F(GridTallyTest, CountsAPointAsOftenAsItIsListed) {
  AddGrid(100, 0, 0);
  Trail& trail = AddFollow("Blue", 1, {{10, 10, 480, 4, 1, 0, 0}});
  trail.points.push_back(trail.points.front());
  const Range& range = Tally();
  EXPECT_EQ(range.tally.minutes, 8);
  EXPECT_EQ(range.tally.measure[0], 2);
}

TEST_F(GridTallyTest, TakesTheNewestGridOfTheFirstMapUpTheChain) {
  AddGrid(10, 0, 0);
  const Grid& newest = AddGrid(20, 0, 0);
  AddFollow("Blue", 1, {{10, 10, 480, 4}});
  EXPECT_EQ(Tally().grid, &newest);

  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  Range range;
  range.points = map.trails.front().points;
  TallyRangeOnGrid(above, range);
  EXPECT_EQ(range.grid, &newest);
  Grid& own = above.grids.emplace_front();
  own.corner = &At("Corner", 0, 0);
  own.cellSize = 30;
  TallyRangeOnGrid(above, range);
  EXPECT_EQ(range.grid, &own);
}

TEST_F(GridTallyTest, CountsAreaOnlyWhereTimeWasSpent) {
  AddGrid(100, 0, 0);
  // The minutes of the first two stops cancel out.
  AddFollow("Blue", 1, {{10, 10, 480, 4, 1, 0, 0}, {20, 20, 490, -4, 1, 0, 0}, {110, 10, 500, 3}});
  const Range& range = Tally();
  EXPECT_EQ(range.gridArea, 10000);
  ASSERT_NE(CellOf(range, 0, 0), nullptr);
  EXPECT_EQ(CellOf(range, 0, 0)->measure[0], 2);
}

TEST_F(GridTallyTest, PilesUpOutlyingPointsOnTheEdge) {
  AddGrid(1, 0, 0);
  AddFollow(
      "Blue", 1,
      {{5000, 0.5, 480, 1}, {6000, 0.5, 490, 2}, {-5000, 9000, 500, 4}, {0.5, -7000, 510, 8}});
  const Range& range = Tally();
  EXPECT_EQ(CellOf(range, 300, 0)->minutes, 3);
  EXPECT_EQ(CellOf(range, -300, 300)->minutes, 4);
  EXPECT_EQ(CellOf(range, 0, -300)->minutes, 8);
  EXPECT_EQ(range.window.rows, 601);
  EXPECT_EQ(range.window.columns, 601);
}

TEST_F(GridTallyTest, KeepsWithinBoundsForBadGridsAndPlaces) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinite = std::numeric_limits<double>::infinity();
  for (const int cellSize : {0, -50, std::numeric_limits<int>::min()}) {
    for (const double angle : {0.0, 30.0, nan}) {
      RangeCase site;
      Grid& grid = site.AddGrid(cellSize, 0, 0);
      grid.angle = angle;
      Trail& trail = site.AddSquare("Blue", -200, -200, 400);
      trail.points[1]->geo.lat = nan;
      trail.points[2]->geo.lon = infinite;
      trail.points[3]->geo.lat = 90;
      Range& range = site.AddRangeOf("Blue");
      AnalyzeRange(range, site.map);
      EXPECT_EQ(range.tally.minutes, 50);
      EXPECT_LE(range.window.rows, 601);
      EXPECT_LE(range.window.columns, 601);
    }
  }
}

TEST_F(GridTallyTest, PutsCellNumbersInPlaceOfCoordinates) {
  const Grid& grid = AddGrid(50, 0, 0);
  const std::vector<Point*> points = {&At("a", 75, -25), &At("b", -1, 149)};
  GridCellsOfPoints(points, grid);
  EXPECT_EQ(points[0]->projected.north, 1);
  EXPECT_EQ(points[0]->projected.east, -1);
  EXPECT_EQ(points[1]->projected.north, -1);
  EXPECT_EQ(points[1]->projected.east, 2);
}

TEST_F(GridTallyTest, AgreesWithAMapOfAllCells) {
  constexpr std::uint64_t seed = 11;
  Dice dice(seed);
  for (int round = 0; round < 50; ++round) {
    RangeCase site;
    Grid& grid = site.AddGrid(dice.Int(5, 60), dice.Between(-100, 100), 20);
    grid.angle = round % 2 == 0 ? 0 : dice.Between(-180, 180);
    std::vector<Stop> stops;
    for (int i = 0; i < 60; ++i) {
      stops.push_back({dice.Between(-300, 300), dice.Between(-300, 300), 400 + i, dice.Int(-1, 5),
                       dice.Int(0, 3), 0, dice.Int(-1, 2)});
    }
    const Trail& trail = site.AddFollow("Blue", 1, stops);
    Range& range = site.AddRangeOf("Blue");
    AnalyzeRange(range, site.map);

    std::map<std::pair<int, int>, CellTally> expected;
    for (const Point* point : trail.points) {
      // The place in the grid's own axes, turned back by its angle.
      const LatLon& corner = grid.corner->geo;
      const Meters meters = LatLonToMeters(point->geo.lat, point->geo.lon - corner.lon);
      const double north = meters.north - DegreesToMeters(corner.lat);
      const double turn = grid.angle * RadiansPerDegree;
      const double row = (north * std::cos(turn) + meters.east * std::sin(turn)) / grid.cellSize;
      const double column = (meters.east * std::cos(turn) - north * std::sin(turn)) / grid.cellSize;
      AddStop(expected[{static_cast<int>(std::floor(row)), static_cast<int>(std::floor(column))}],
              *point);
    }
    double area = 0;
    for (const auto& [place, tally] : expected) {
      if (tally.minutes != 0) area += 1.0 * grid.cellSize * grid.cellSize;
      const CellTally* cell = CellOf(range, place.first, place.second);
      if (!HoldsAnything(tally)) {
        EXPECT_EQ(cell, nullptr);
        continue;
      }
      ASSERT_NE(cell, nullptr) << "seed " << seed << " round " << round;
      EXPECT_EQ(cell->minutes, tally.minutes);
      for (size_t k = 0; k < 3; ++k) EXPECT_EQ(cell->measure[k], tally.measure[k]);
    }
    EXPECT_EQ(range.gridArea, area) << "seed " << seed << " round " << round;
  }
}

}  // namespace
}  // namespace orvane
