#include "estimates/range_estimates.h"

#include "estimates/brute_force.h"
#include "estimates/range_fixes.h"
#include "ranges/analysis.h"
#include "ranges/range_case.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct EstimatesCase : RangeCase {
  std::vector<RangeEstimate> Estimate(const EstimateSettings& settings = {}) {
    AnalyzeAllRanges(map);
    std::vector<const Range*> ranges;
    for (const Range& range : map.ranges) ranges.push_back(&range);
    return EstimateRanges(ranges, settings, nullptr);
  }
  double McpOf(const RangeEstimate& estimate, int percent) {
    for (const AreaOfPercent& area : estimate.mcp) {
      if (area.percent == percent) return area.area;
    }
    ADD_FAILURE() << percent;
    return 0;
  }
};

constexpr PackedDate March1 = 37260;
constexpr PackedDate March2 = 37261;

TEST(RangeEstimates, OfARangeWithoutFixesAreEmpty) {
  EstimatesCase site;
  site.AddRangeOf("Nobody");
  const auto estimates = site.Estimate();
  ASSERT_EQ(estimates.size(), 1U);
  EXPECT_EQ(estimates[0].fixes, 0U);
  EXPECT_EQ(estimates[0].days, 0U);
  EXPECT_TRUE(estimates[0].mcp.empty());
  EXPECT_FALSE(estimates[0].kernel);
  EXPECT_TRUE(estimates[0].curve.empty());
  EXPECT_TRUE(estimates[0].overlaps.empty());
}

TEST(RangeEstimates, CountFixesAndDays) {
  EstimatesCase site;
  site.AddSquare("Oru", 0, 0, 100).date = March2;
  site.AddSquare("Oru", 0, 200, 100).date = March1;
  site.AddSquare("Oru", 300, 0, 100).date = March1;  // two follows of one day
  site.AddSquare("Oru", 500, 0, 100);                // without a date
  site.Named("Fig1", 0, 900);
  Range& range = site.AddRange("Oru", {RangeCase::KeyOf("Oru"), RangeCase::KeyOf("Points:Fig*")});
  const RangeEstimate estimate = site.Estimate().front();
  EXPECT_EQ(range.points.size(), 21U);
  EXPECT_EQ(estimate.fixes, 21U);
  EXPECT_EQ(estimate.days, 2U);
  EXPECT_EQ(estimate.firstDate, March1);
  EXPECT_EQ(estimate.lastDate, March2);
  ASSERT_EQ(estimate.curve.size(), 2U);
  EXPECT_EQ(estimate.curve[0].fixes, 10U);
  EXPECT_EQ(estimate.curve[1].fixes, 15U);
  // Squares of 100 m: in a box of 400 m by 300 m without the corner beyond both, and on the first
  // day without the corner at 0, 0 either.
  EXPECT_NEAR(estimate.curve[0].all.firstDays, 120000 - 300 * 200 / 2.0 - 300 * 200 / 2.0, 20);
  EXPECT_NEAR(estimate.curve[1].all.firstDays, 120000 - 300 * 200 / 2.0, 20);
}

TEST(RangeEstimates, TakeTheDayOfEachFixFromItsFollow) {
  // A time window takes only some of the points of the second follow; the third comes whole.
  EstimatesCase site;
  site.AddSquare("Oru", 0, 0, 100).date = March1;
  site.AddSquare("Oru", 0, 200, 100).date = March2;
  Range& range = site.AddRange("Oru", {RangeCase::KeyOf("Oru", 510, 545)});
  site.Estimate();
  const auto fixes = FixesOf(range);
  ASSERT_EQ(fixes.size(), 4U);
  for (size_t i = 0; i < fixes.size(); ++i) {
    EXPECT_EQ(fixes[i].lon, range.points[i]->geo.lon);
    EXPECT_EQ(fixes[i].day, fixes[i].lon > RangeCase::MiddleLon + 150 / 111120.0 ? March2 : March1);
  }
}

TEST(RangeEstimates, LeaveOutFixesWithoutAPlace) {
  EstimatesCase site;
  Trail& follow = site.AddSquare("Oru", 0, 0, 100);
  Point& lost = site.At("0930", 5000, 5000);
  lost.flags &= ~std::uint32_t{PointPlaced};
  follow.points.push_back(&lost);
  site.AddRangeOf("Oru");
  const RangeEstimate estimate = site.Estimate().front();
  EXPECT_EQ(estimate.fixes, 5U);
  EXPECT_NEAR(site.McpOf(estimate, 100), 10000, 5);
}

TEST(RangeEstimates, TakeTheWholePolygonFromTheRange) {
  EstimatesCase site;
  site.AddSquare("Oru", 0, 0, 100);
  Range& range = site.AddRangeOf("Oru");
  site.Estimate();
  range.mcpArea = 777;  // so that it is clear where the figure comes from
  const Range* const ranges[] = {&range};
  const RangeEstimate estimate = EstimateRanges(ranges, {}, nullptr).front();
  ASSERT_EQ(estimate.mcp.size(), 11U);
  EXPECT_EQ(estimate.mcp.front().percent, 50);
  EXPECT_EQ(site.McpOf(estimate, 100), 777);
  // The two corners away from the equator are a little nearer to the middle, and a line has no area.
  EXPECT_NEAR(site.McpOf(estimate, 95), 10000, 5);
  EXPECT_EQ(site.McpOf(estimate, 50), 0);
}

TEST(RangeEstimates, CompareRangesInTheOrderOfTheCall) {
  EstimatesCase site;
  site.AddSquare("Near", 0, 0, 100);
  site.AddSquare("Same", 0, 0, 100);
  site.AddSquare("Far", 90000, 0, 100);
  site.AddFollow("One", 0, {{0, 0, 480, 10, 0, 0, 0}});
  for (const char* type : {"Near", "Same", "Far", "One"}) site.AddRangeOf(type);
  const auto estimates = site.Estimate();
  ASSERT_EQ(estimates.size(), 4U);
  const auto& overlaps = estimates[0].overlaps;
  ASSERT_EQ(overlaps.size(), 3U);
  EXPECT_EQ(overlaps[0].other, estimates[1].range);
  EXPECT_NEAR(*overlaps[0].inside95, 0.95, 0.002);
  EXPECT_NEAR(*overlaps[0].affinity, 1, 0.001);
  EXPECT_NEAR(*overlaps[1].inside95, 0, 1e-9);
  EXPECT_NEAR(*overlaps[1].affinity, 0, 1e-9);
  EXPECT_FALSE(overlaps[2].inside95);
  EXPECT_FALSE(overlaps[2].affinity);
  EXPECT_EQ(estimates[2].overlaps[0].other, estimates[0].range);
}

TEST(RangeEstimates, UseTheFactorAndThePercentsOfTheSettings) {
  EstimatesCase site;
  site.AddSquare("Oru", 0, 0, 100);
  site.AddRangeOf("Oru");
  EstimateSettings settings;
  const double whole = site.Estimate(settings).front().kernel->bandwidth;
  settings.bandwidthFactor = 0.5;
  settings.densityPercents = {80};
  const auto kernel = site.Estimate(settings).front().kernel;
  EXPECT_DOUBLE_EQ(kernel->bandwidth, whole / 2);
  // Four corners 100 m apart and the middle: variances of 2500 in both directions.
  EXPECT_NEAR(whole, 50 * std::pow(5, -1.0 / 6), 0.01);
  ASSERT_EQ(kernel->areas.size(), 1U);
  EXPECT_EQ(kernel->areas[0].percent, 80);
}

TEST(RangeEstimates, LeaveThePointsAsTheyAre) {
  EstimatesCase site;
  const Trail& follow = site.AddSquare("Oru", 10, 20, 100);
  site.AddRangeOf("Oru");
  AnalyzeAllRanges(site.map);
  std::vector<double> before;
  for (const Point* point : follow.points) before.push_back(point->projected.east);
  site.Estimate();
  for (size_t i = 0; i < before.size(); ++i) {
    EXPECT_EQ(follow.points[i]->projected.east, before[i]);
  }
}

}  // namespace
}  // namespace orvane
