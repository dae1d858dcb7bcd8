#include "ranges/analysis.h"

#include "ranges/range_case.h"
#include "ranges/report_lines.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

/// All that can be read of the analysis of a map, range by range.
Lines Figures(const Map& map) {
  Lines lines;
  const MeasureNames names = {"one", "two", "three"};
  for (const Range& range : map.ranges) {
    lines.push_back(range.name.value_or(""));
    for (int i = 0;; ++i) {
      const auto line = RangeReportLine(range, i);
      if (!line) break;
      lines.push_back(*line);
    }
    lines.push_back(std::to_string(range.totalMinutes) + " " + std::to_string(range.tally.minutes) +
                    " " + std::to_string(range.cells.size()) + " " +
                    std::to_string(range.points.size()));
  }
  Lines overlaps;
  for (const RangeIntersection& record : map.intersections) {
    std::string text = record.name;
    for (int i = 0;; ++i) {
      const auto line = IntersectionReportLine(record, names, i);
      if (!line) break;
      text += "\n" + *line;
    }
    overlaps.push_back(text);
  }
  std::sort(overlaps.begin(), overlaps.end());
  lines.insert(lines.end(), overlaps.begin(), overlaps.end());
  return lines;
}

/// Adds three groups that share ground, each with several follows.
void AddGroups(RangeCase& site, std::uint64_t seed) {
  Dice dice(seed);

  for (int follow = 0; follow < 12; ++follow) {
    std::vector<Stop> stops;
    double north = 150.0 * (follow % 3);
    double east = 100.0 * (follow % 3);
    int time = 400;
    for (int i = 0; i < 12; ++i) {
      north += dice.Between(-90, 90);
      east += dice.Between(-90, 90);
      stops.push_back({north, east, time, dice.Int(0, 12), dice.Int(0, 4), 1, 2});
      time += dice.Int(15, 30);
    }
    site.AddFollow("Group" + std::to_string(follow % 3), follow + 1, stops);
  }
  for (int group = 0; group < 3; ++group) site.AddRangeOf("Group" + std::to_string(group));
  site.AddGrid(50, -300, -300);
}

struct AnalysisTest : testing::Test, RangeCase {};

TEST_F(AnalysisTest, MakesADurationOfNothingOneMinute) {
  AddGrid(50, 0, 0);
  Trail& trail = AddFollow("A", 0, {{0, 0, 480, 0}, {100, 0, 490, 5}, {0, 100, 500, 5}});
  Range& range = AddRangeOf("A");
  AnalyzeRange(range, map);
  // Travel is measured before the tally, so the minute counts from the next analysis on.
  EXPECT_EQ(range.totalMinutes, 10);
  EXPECT_EQ(range.tally.minutes, 11);
  EXPECT_EQ(trail.points[0]->duration, 1);
  AnalyzeRange(range, map);
  EXPECT_EQ(range.totalMinutes, 11);
}

TEST_F(AnalysisTest, LetsALaterRangeSeeTheMinuteOfAnEarlierOne) {
  AddGrid(50, 0, 0);
  AddFollow("A", 0, {{0, 0, 480, 0}, {100, 0, 490, 5}});
  const Range& first = AddRangeOf("A");
  const Range& second = AddRangeOf("a");
  AnalyzeAllRanges(map);
  EXPECT_EQ(first.totalMinutes, 5);
  EXPECT_EQ(second.totalMinutes, 6);
}

TEST_F(AnalysisTest, MeasuresHullAndAreaInMetres) {
  AddSquare("A", 0, 0, 400);
  Range& range = AddRangeOf("A");
  AnalyzeRange(range, map);
  EXPECT_NEAR(range.mcpArea, 160000, 10);
  EXPECT_EQ(range.hull.size(), 4U);
  EXPECT_TRUE(range.hasBounds);
  EXPECT_EQ(range.points.size(), 5U);
}

TEST_F(AnalysisTest, ReturnsPointsToTheirAbsoluteForm) {
  AddSquare("A", 0, 0, 400);
  Range& range = AddRangeOf("A");
  AnalyzeRange(range, map);
  for (const Point* point : range.points) {
    const Meters expected = LatLonToMeters(point->geo.lat, point->geo.lon);
    EXPECT_EQ(point->projected.north, expected.north);
    EXPECT_EQ(point->projected.east, expected.east);
  }
}

TEST_F(AnalysisTest, ReturnsPointsOutsideItsTimesToTheirAbsoluteForm) {
  // These stayed in the plane of the range, and moved what was looked up by them.
  const Trail& trail = AddSquare("A", 0, 0, 400);
  Range& some = AddRange("some", {KeyOf("A", 490, 530)});
  Range& none = AddRange("none", {KeyOf("A", 600, 610)});
  for (Range* range : {&some, &none}) {
    AnalyzeRange(*range, map);
    ASSERT_LT(range->points.size(), trail.points.size());
    for (const Point* point : trail.points) {
      const Meters expected = LatLonToMeters(point->geo.lat, point->geo.lon);
      EXPECT_EQ(point->projected.north, expected.north) << point->name;
      EXPECT_EQ(point->projected.east, expected.east) << point->name;
    }
  }
}

TEST_F(AnalysisTest, GivesAnEmptyRangeNoFigures) {
  AddGrid(50, 0, 0);
  Range& range = AddRangeOf("Nobody");
  AnalyzeRange(range, map);
  EXPECT_TRUE(range.points.empty());
  EXPECT_TRUE(range.hull.empty());
  EXPECT_FALSE(range.hasBounds);
  EXPECT_EQ(range.clusters, nullptr);
  EXPECT_EQ(range.grid, nullptr);
  EXPECT_EQ(range.mcpArea, 0);
  EXPECT_EQ(range.totalMinutes, 0);
  EXPECT_EQ(range.meanDailyPath, 0);
}

TEST_F(AnalysisTest, EmptiesARangeWhoseKeysFitNothingAnyMore) {
  AddGrid(50, 0, 0);
  AddSquare("A", 0, 0, 400);
  Range& range = AddRangeOf("A");
  AnalyzeRange(range, map);
  ASSERT_NE(range.clusters, nullptr);
  range.keys.front().type = "Nobody";
  AnalyzeRange(range, map);
  EXPECT_EQ(range.clusters, nullptr);
  EXPECT_TRUE(range.cells.empty());
  EXPECT_EQ(range.tally.minutes, 0);
  EXPECT_EQ(range.gridArea, 0);
  EXPECT_EQ(range.mcpArea, 0);
  EXPECT_EQ(range.meanFollowPath, 0);
}

TEST_F(AnalysisTest, ClearsAllButTheOffsetHulls) {
  AddGrid(50, 0, 0);
  AddSquare("A", 0, 0, 400);
  AddSquare("B", 200, 200, 400);
  Range& range = AddRangeOf("A");
  AddRangeOf("B");
  AnalyzeAllRanges(map);
  ASSERT_FALSE(range.outerHull.ring.empty());
  ClearRangeAnalysis(range);
  EXPECT_TRUE(range.hull.empty());
  EXPECT_TRUE(range.points.empty());
  EXPECT_TRUE(range.cells.empty());
  EXPECT_TRUE(range.follows.empty());
  EXPECT_EQ(range.clusters, nullptr);
  EXPECT_FALSE(range.outerHull.ring.empty());
  EXPECT_FALSE(range.keys.empty());
}

TEST_F(AnalysisTest, OfOneRangeGivesWhatTheAnalysisOfAllGives) {
  AddGroups(*this, 3);
  AnalyzeAllRanges(map);
  AnalyzeAllRanges(map);  // stops without a duration have their minute now
  const Lines expected = Figures(map);
  ASSERT_FALSE(map.intersections.empty());
  // The order of the two sides follows the list in one case and puts the new one first in the
  // other, so only the first range of the list gives the same texts.
  AnalyzeOneRange(map.ranges.front(), map);
  EXPECT_EQ(Figures(map), expected);
}

TEST_F(AnalysisTest, OfOneRangeReplacesOnlyItsOverlaps) {
  AddSquare("A", 0, 0, 400);
  AddSquare("B", 200, 200, 400);
  AddSquare("C", 100, 100, 400);
  for (const char* type : {"A", "B", "C"}) AddRangeOf(type);
  AnalyzeAllRanges(map);
  Range& c = *std::next(map.ranges.begin(), 2);
  AnalyzeOneRange(c, map);
  Lines names;
  for (const RangeIntersection& record : map.intersections) names.push_back(record.name);
  EXPECT_EQ(names, (Lines{"Intersection of C and B", "Intersection of C and A",
                          "Intersection of A and B"}));
  c.keys.front().type = "Nobody";
  AnalyzeOneRange(c, map);
  EXPECT_EQ(std::distance(map.intersections.begin(), map.intersections.end()), 1);
}

TEST_F(AnalysisTest, OfAllReplacesAllOverlaps) {
  AddSquare("A", 0, 0, 400);
  AddSquare("B", 200, 200, 400);
  AddRangeOf("A");
  AddRangeOf("B");
  AnalyzeAllRanges(map);
  AnalyzeAllRanges(map);
  EXPECT_EQ(std::distance(map.intersections.begin(), map.intersections.end()), 1);
}

TEST_F(AnalysisTest, DoesNotDependOnTheOrderOfTheTrails) {
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    Lines expected;
    for (int turn = 0; turn < 3; ++turn) {
      RangeCase site;
      AddGroups(site, seed);
      Dice shuffle(seed * 10 + static_cast<std::uint64_t>(turn));
      if (turn > 0) {
        std::vector<std::pair<int, PackedDate>> order;
        for (const Trail& trail : site.map.trails)
          order.emplace_back(shuffle.Int(0, 1000), trail.date);
        std::sort(order.begin(), order.end());
        const auto rank = [&](const Trail& trail) {
          return std::find_if(order.begin(), order.end(),
                              [&](const auto& entry) { return entry.second == trail.date; });
        };
        site.map.trails.sort([&](const Trail& a, const Trail& b) { return rank(a) < rank(b); });
      }
      AnalyzeAllRanges(site.map);
      const Lines figures = Figures(site.map);
      if (turn == 0) expected = figures;
      EXPECT_EQ(figures, expected) << "seed " << seed << " turn " << turn;
    }
  }
}

TEST_F(AnalysisTest, EnduresPlacesThatAreNotNumbers) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinite = std::numeric_limits<double>::infinity();
  const LatLon bad[] = {{nan, nan, 0}, {infinite, 0, 0}, {0, -infinite, 0}, {1e308, 1e308, 0}};
  for (const LatLon& place : bad) {
    for (size_t broken = 0; broken < 5; ++broken) {
      RangeCase site;
      site.AddGrid(50, 0, 0);
      site.AddSquare("A", 0, 0, 400).points[broken]->geo = place;
      site.AddSquare("B", 100, 0, 400);
      Range& range = site.AddRangeOf("A");
      site.AddRangeOf("B");
      AnalyzeAllRanges(site.map);
      EXPECT_EQ(range.points.size(), 5U);
      EXPECT_EQ(range.totalMinutes, 50);
    }
  }
}

TEST_F(AnalysisTest, EnduresRangesAtThePolesAndAcrossTheDateLine) {
  for (const LatLon& place :
       {LatLon{90, 0, 0}, LatLon{-90, 0, 0}, LatLon{0, 180, 0}, LatLon{10, -180, 0}}) {
    RangeCase site;
    for (const char* type : {"A", "B"}) {
      Trail& trail = site.AddSquare(type, 0, 0, 400);
      for (size_t i = 0; i < trail.points.size(); ++i) {
        trail.points[i]->geo = place;
        trail.points[i]->geo.lat -= 0.001 * static_cast<double>(i % 2);
        trail.points[i]->geo.lon += i % 3 == 0 ? -359.999 : 0.001 * static_cast<double>(i);
      }
      site.AddRangeOf(type);
    }
    AnalyzeAllRanges(site.map);
    EXPECT_TRUE(std::isfinite(site.map.ranges.front().mcpArea));
    EXPECT_GE(site.map.ranges.front().mcpArea, 0);
  }
}

}  // namespace
}  // namespace orvane
