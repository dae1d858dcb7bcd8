#include "estimates/exact_hull.h"

#include "estimates/brute_force.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

double AreaOf(std::vector<PlanePlace> places) {
  ReduceToHull(places);
  return HullArea(places);
}

TEST(ExactHull, KeepsOnlyCorners) {
  std::vector<PlanePlace> places = {{0, 0}, {0, 4}, {4, 4}, {4, 0}, {2, 2}, {0, 2}, {4, 0}};
  ReduceToHull(places);
  EXPECT_EQ(places, (std::vector<PlanePlace>{{0, 0}, {4, 0}, {4, 4}, {0, 4}}));
  EXPECT_EQ(HullArea(places), 16);
}

TEST(ExactHull, HasNoAreaForFewerThanThreePlaces) {
  EXPECT_EQ(AreaOf({}), 0);
  EXPECT_EQ(AreaOf({{3, 4}}), 0);
  EXPECT_EQ(AreaOf({{3, 4}, {30, 40}}), 0);
  EXPECT_EQ(AreaOf({{3, 4}, {3, 4}, {30, 40}, {30, 40}}), 0);
}

TEST(ExactHull, HasNoAreaOnALine) {
  // Coordinates of a slanted line are rounded, so the corners are a little off it.
  std::vector<PlanePlace> line;
  for (int i = 0; i < 50; ++i) line.push_back({i * 0.1 * 37, i * 0.1 * 91});
  EXPECT_EQ(AreaOf(line), 0);
  line.push_back({100, 240});
  EXPECT_GT(AreaOf(line), 500);
}

TEST(ExactHull, TakesInAPlaceThatSticksOutByACentimetre) {
  EXPECT_DOUBLE_EQ(AreaOf({{0, 0}, {0, 1000}, {1000, 1000}, {1000, 0}, {500, -0.01}}),
                   1000 * 1000 + 5);
}

TEST(ExactHull, AgreesWithAWrappedHull) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const auto places = test::RandomPlaces(dice, 3 + dice.Below(200));
    EXPECT_NEAR(AreaOf(places), test::WrappedHullArea(places), 1e-6);
  }
}

}  // namespace
}  // namespace orvane
