#include "estimates/range_outlines.h"

#include "estimates/density_rings.h"
#include "estimates/range_estimates.h"
#include "estimates/range_fixes.h"
#include "geo/earth.h"
#include "ranges/analysis.h"
#include "ranges/range_case.h"
#include "support/dice.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Method = OutlineKind::Method;
const std::vector<OutlineKind> AllKinds = {
    {Method::Mcp, 95}, {Method::Mcp, 50}, {Method::Kernel, 95}, {Method::Kernel, 50}};

/// A range of scattered points.
struct ScatteredRange : RangeCase {
  Range* range;

  explicit ScatteredRange(unsigned seed, int count) {
    Dice dice(seed);
    for (int i = 0; i < count; ++i) {
      Named("Fig" + std::to_string(i), dice.Between(-400, 400), dice.Between(-900, 900));
    }
    range = &AddRange("Oru", {RangeCase::KeyOf("Points:Fig*")});
    AnalyzeAllRanges(map);
  }
  std::vector<EstimateOutline> Outlines() {
    return OutlineEstimates(FixPlacesOf(*range), AllKinds);
  }
};

/// The area inside rings of places, in the plane of the fixes.
double AreaInside(const EstimateOutline& outline, const Range& range) {
  const auto fixes = FixesOf(range);
  double area = 0;
  for (const auto& ring : outline.rings) {
    std::vector<RangeFix> corners;
    for (const LatLon& place : ring) corners.push_back({place.lat, place.lon, 0});
    area += SignedArea(PlacesInPlane(corners, BoundsOf(fixes)));
  }
  return area;
}

TEST(OutlineEstimates, HaveTheAreasOfTheEstimates) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    ScatteredRange site(seed, 40);
    const Range* range = site.range;
    const auto estimate = EstimateRanges({&range, 1}, {}, nullptr).front();
    const auto outlines = site.Outlines();
    ASSERT_EQ(outlines.size(), 4U);
    EXPECT_EQ(outlines[0].area, estimate.mcp[9].area);
    EXPECT_EQ(outlines[1].area, estimate.mcp[0].area);
    EXPECT_EQ(outlines[2].area, estimate.kernel->areas[1].area);
    EXPECT_EQ(outlines[3].area, estimate.kernel->areas[0].area);
    for (const size_t i : {0U, 1U}) {
      ASSERT_EQ(outlines[i].rings.size(), 1U);
      EXPECT_NEAR(AreaInside(outlines[i], *range), outlines[i].area, outlines[i].area * 1e-6);
    }
    for (const size_t i : {2U, 3U}) {
      EXPECT_NEAR(AreaInside(outlines[i], *range), outlines[i].area, outlines[i].area * 0.003);
    }
  }
}

TEST(OutlineEstimates, OfPolygonsHaveFixesAsCorners) {
  ScatteredRange site(3, 30);
  const auto fixes = FixPlacesOf(*site.range);
  const auto outlines = site.Outlines();
  for (const size_t i : {0U, 1U}) {
    for (const LatLon& corner : outlines[i].rings.front()) {
      EXPECT_TRUE(std::any_of(fixes.begin(), fixes.end(), [&](const LatLon& fix) {
        return GroundDistance(fix, corner) < 0.001;
      }));
    }
  }
}

TEST(OutlineEstimates, OfTooFewFixesHaveNoRings) {
  for (const int count : {0, 1}) {
    ScatteredRange site(1, count);
    for (const EstimateOutline& outline : site.Outlines()) {
      EXPECT_TRUE(outline.rings.empty());
      EXPECT_EQ(outline.area, 0);
    }
  }
  ScatteredRange two(1, 2);
  const auto outlines = two.Outlines();
  EXPECT_TRUE(outlines[0].rings.empty());
  EXPECT_FALSE(outlines[2].rings.empty());
}

TEST(OutlineEstimates, LeaveOutFixesWithoutAPlace) {
  ScatteredRange site(2, 20);
  site.range->points.front()->flags &= ~PointPlaced;
  EXPECT_EQ(FixPlacesOf(*site.range).size(), site.range->points.size() - 1);
}

}  // namespace
}  // namespace orvane
