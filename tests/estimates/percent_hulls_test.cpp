#include "estimates/percent_hulls.h"

#include "estimates/brute_force.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

double FreshArea(std::span<const PlanePlace> places, double percent) {
  PercentHulls hulls;
  return hulls.Area(places, CentroidOf(places), percent);
}

TEST(QuantileOfSorted, IsLinearBetweenTwoNumbers) {
  const std::vector<double> numbers = {10, 20, 40, 80};
  EXPECT_EQ(QuantileOfSorted(numbers, 0), 10);
  EXPECT_EQ(QuantileOfSorted(numbers, 50), 30);
  EXPECT_EQ(QuantileOfSorted(numbers, 75), 50);
  EXPECT_EQ(QuantileOfSorted(numbers, 100), 80);
  EXPECT_EQ(QuantileOfSorted(std::vector<double>{7}, 40), 7);
}

TEST(PercentHulls, LeavesOutTheFarthestFix) {
  // The centroid is at 2, 0; distances are 2, 2, 2 and 6 times the square root of 1 or so.
  const std::vector<PlanePlace> places = {{0, -1}, {0, 1}, {1, 0}, {0, 0}, {9, 0}};
  EXPECT_EQ(FreshArea(places, 100), 9);
  EXPECT_EQ(FreshArea(places, 80), 1);
}

TEST(PercentHulls, CountsEqualDistancesAlike) {
  // All corners of a regular layout are equally far from its middle, but not in the last bit.
  std::vector<PlanePlace> places;
  constexpr int Corners = 40;
  for (int i = 0; i < Corners; ++i) {
    const double angle = 2 * 3.141592653589793 * i / Corners;
    places.push_back({1234.5 + 300 * std::cos(angle), 77.7 + 300 * std::sin(angle)});
  }
  EXPECT_DOUBLE_EQ(FreshArea(places, 50), FreshArea(places, 100));
}

TEST(PercentHulls, IsTheHullOfAllWhereTheFixesAreEqual) {
  EXPECT_EQ(FreshArea(std::vector<PlanePlace>{{5, 5}}, 50), 0);
  EXPECT_EQ(FreshArea(std::vector<PlanePlace>(100, {5, 5}), 95), 0);
}

TEST(PercentHulls, AgreesWithSortedDistances) {
  for (unsigned seed = 1; seed <= 400; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const auto places = test::RandomPlaces(dice, 1 + dice.Below(400));
    for (double percent = 50; percent <= 100; percent += 5) {
      EXPECT_NEAR(FreshArea(places, percent), test::SortedPercentArea(places, percent), 1e-6)
          << percent;
    }
  }
}

TEST(PercentHulls, FindsTheSameInGrowingAndShrinkingSets) {
  Dice dice(5);
  const auto places = test::RandomPlaces(dice, 600);
  PercentHulls hulls;
  for (const size_t count : {1U, 3U, 10U, 80U, 600U, 200U, 70U, 5U, 600U}) {
    const auto some = std::span(places).first(count);
    EXPECT_NEAR(hulls.Area(some, CentroidOf(some), 95), test::SortedPercentArea(some, 95), 1e-6)
        << count;
  }
}

TEST(PercentHulls, KeepsCornersWhereNoneIsNearTheQuantile) {
  // A hundred fixes in a heap, and the fix on which the quantile falls far outside.
  std::vector<PlanePlace> places;
  Dice dice(8);
  for (int i = 0; i < 100; ++i) places.push_back({dice.Between(-1, 1), dice.Between(-1, 1)});
  for (int i = 0; i < 6; ++i) places.push_back({1000.0 + i, 1000});
  EXPECT_NEAR(FreshArea(places, 94.3), test::SortedPercentArea(places, 94.3), 1e-6);
  EXPECT_NEAR(FreshArea(places, 90), test::SortedPercentArea(places, 90), 1e-6);
}

}  // namespace
}  // namespace orvane
