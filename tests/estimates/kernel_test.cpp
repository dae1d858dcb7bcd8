#include "estimates/kernel.h"

#include "estimates/brute_force.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numbers>

namespace orvane {
namespace {

constexpr double FullCircle = 2 * 3.141592653589793;

/// The density on the middles of fine squares that cover all of it.
struct FineGrid {
  double step;
  std::vector<PlanePlace> middles;

  FineGrid(std::span<const PlanePlace> places, double reach, double stepToUse) : step(stepToUse) {
    PlanePlace low = places.front();
    PlanePlace high = low;
    for (const PlanePlace& place : places) {
      low = {std::min(low.north, place.north), std::min(low.east, place.east)};
      high = {std::max(high.north, place.north), std::max(high.east, place.east)};
    }
    for (double north = low.north - reach; north < high.north + reach; north += step) {
      for (double east = low.east - reach; east < high.east + reach; east += step) {
        middles.push_back({north, east});
      }
    }
  }
  std::vector<double> Densities(std::span<const PlanePlace> places, double h) const {
    std::vector<double> densities;
    for (const PlanePlace& at : middles) {
      densities.push_back(test::DensityAt(places, h, at));
    }
    return densities;
  }
};

/// The level and the area of the smallest set that holds some per cent, by sorting all squares.
DensitySet SortedSet(std::vector<double> densities, double step, double percent) {
  std::sort(densities.begin(), densities.end(), std::greater<>());
  double held = 0;
  size_t count = 0;
  while (held < percent / 100) held += densities[count++] * step * step;
  return {densities[count - 1], static_cast<double>(count) * step * step};
}

TEST(ReferenceBandwidth, ComesFromTheSpreadOfTheFixes) {
  // Variances of 2 and 8 with n - 1: the mean is 5.
  const std::vector<PlanePlace> places = {{1, 2}, {-1, -2}};
  EXPECT_DOUBLE_EQ(*ReferenceBandwidth(places, 1), std::sqrt(5) * std::pow(2, -1.0 / 6));
  EXPECT_DOUBLE_EQ(*ReferenceBandwidth(places, 0.3), 0.3 * *ReferenceBandwidth(places, 1));
}

TEST(ReferenceBandwidth, NeedsTwoFixesAMillimetreApart) {
  EXPECT_FALSE(ReferenceBandwidth({}, 1));
  EXPECT_FALSE(ReferenceBandwidth(std::vector<PlanePlace>{{1, 2}}, 1));
  EXPECT_FALSE(ReferenceBandwidth(std::vector<PlanePlace>(9, {1, 2}), 1));
  EXPECT_FALSE(ReferenceBandwidth(std::vector<PlanePlace>{{0, 0}, {0, 0.0019}}, 1));
  EXPECT_TRUE(ReferenceBandwidth(std::vector<PlanePlace>{{0, 0}, {0, 0.0021}}, 1));
}

TEST(CubicWeights, KeepThePositionAndItsPowers) {
  for (const double t : {0.0, 0.25, 0.5, 0.9}) {
    const auto weights = CubicWeights(t);
    for (int power = 0; power <= 3; ++power) {
      double sum = 0;
      for (int i = 0; i < 4; ++i) sum += weights[static_cast<size_t>(i)] * std::pow(i - 1, power);
      EXPECT_NEAR(sum, std::pow(t, power), 1e-14) << t << ' ' << power;
    }
  }
}

TEST(KernelDensity, OfOnePlaceIsACircle) {
  // Of a round normal distribution the share p is within sqrt(-2 ln(1 - p)) deviations.
  for (const double shift : {0.0, 0.3, 1234.56}) {
    const std::vector<PlanePlace> places = {{shift, -shift}};
    const KernelDensity density(places, 10);
    for (const double percent : {5.0, 50.0, 95.0, 99.0}) {
      const double exact = FullCircle * 100 * -std::log(1 - percent / 100);
      EXPECT_NEAR(density.SetOf(percent).area, exact, exact * 0.001) << percent << ' ' << shift;
    }
  }
}

/// The table of chi-squared with two degrees of freedom, which statistics books print, has the
/// squares of the radii in bandwidths.
TEST(KernelDensity, OfOnePlaceHasTheRadiiOfTheTableOfChiSquared) {
  constexpr std::pair<double, double> Table[] = {{10, 0.211},   {25, 0.575}, {50, 1.386},
                                                 {75, 2.773},   {90, 4.605}, {95, 5.991},
                                                 {97.5, 7.378}, {99, 9.210}};
  constexpr double Bandwidth = 80;
  const KernelDensity density(std::vector<PlanePlace>{{12, -7}}, Bandwidth);
  for (const auto& [percent, squares] : Table) {
    const double area = std::numbers::pi * Bandwidth * Bandwidth * squares;
    // The table has three decimals.
    EXPECT_NEAR(density.SetOf(percent).area, area, area * (0.002 + 0.0005 / squares)) << percent;
  }
}

TEST(KernelDensity, OfFarPlacesIsACircleForEach) {
  const std::vector<PlanePlace> places = {{0, 0}, {1e6, 3e5}, {-2e7, 5}};
  const KernelDensity density(places, 2);
  const double exact = 3 * FullCircle * 4 * std::log(2);
  EXPECT_NEAR(density.SetOf(50).area, exact, exact * 0.001);
}

TEST(KernelDensity, HasTheDensityOfTheDefinition) {
  Dice dice(4);
  const auto places = test::RandomPlaces(dice, 60);
  const double h = *ReferenceBandwidth(places, 0.4);
  const KernelDensity density(places, h);
  const double step = density.Step();
  for (const auto& tile : density.Shares().Tiles()) {
    for (size_t i = 0; i < DensityTiles::Nodes; i += 37) {
      const auto row = static_cast<double>(tile.row * DensityTiles::Side) +
                       std::floor(static_cast<double>(i) / DensityTiles::Side);
      const auto column = static_cast<double>(tile.column * DensityTiles::Side) +
                          static_cast<double>(i % DensityTiles::Side);
      EXPECT_NEAR(tile.values[i] / (step * step),
                  test::DensityAt(places, h, {row * step, column * step}),
                  1e-5 / (FullCircle * h * h));
    }
  }
}

TEST(KernelDensity, MeasuresAreasWithinAFifthOfAPerCent) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const auto places = test::RandomPlaces(dice, 2 + dice.Below(12));
    const double h = *ReferenceBandwidth(places, dice.Between(0.15, 1.5));
    const FineGrid grid(places, 5 * h, h / 12);
    if (grid.middles.size() > 400000) continue;
    const auto densities = grid.Densities(places, h);
    const KernelDensity density(places, h);
    for (const double percent : {50.0, 95.0}) {
      const DensitySet exact = SortedSet(densities, grid.step, percent);
      const DensitySet set = density.SetOf(percent);
      // The squares of the twin are counted whole.
      EXPECT_NEAR(set.area, exact.area, exact.area * 0.004) << percent;
      EXPECT_NEAR(set.level, exact.level, exact.level * 0.01) << percent;
    }
  }
}

TEST(KernelDensity, AgreesWithACoarserLattice) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const auto places = test::RandomPlaces(dice, 300);
    const double h = *ReferenceBandwidth(places, dice.Between(0.1, 2));
    const KernelDensity fine(places, h);
    const KernelDensity coarse(places, h, true);
    EXPECT_EQ(coarse.Step(), 2 * fine.Step());
    for (const double percent : {50.0, 95.0}) {
      const double area = fine.SetOf(percent).area;
      EXPECT_NEAR(coarse.SetOf(percent).area, area, area * 0.002) << percent;
    }
  }
}

SharedDensity Compared(const KernelDensity& first, const KernelDensity& second) {
  return CompareDensities(first, second, {first.SetOf(95).level, second.SetOf(95).level});
}

/// Far from each other every fix has a bump of its own, and the areas follow from one level.
TEST(KernelDensity, MeasuresSeparateBumpsOnItsCoarserLattice) {
  constexpr double H = 3;
  std::vector<PlanePlace> places;
  for (int i = 0; i < 12; ++i) {
    for (int j = 0; j < 12; ++j) places.push_back({i * 60.0, j * 60.0});
  }
  const KernelDensity density(places, H);
  ASSERT_EQ(density.Step(), H / 8);
  for (const double percent : {50.0, 95.0}) {
    const double circle = -2 * std::numbers::pi * H * H * std::log(1 - percent / 100);
    EXPECT_NEAR(density.SetOf(percent).area / circle / 144, 1, 0.0015) << percent;
  }
}

TEST(CompareDensities, OfADensityWithItselfIsWhole) {
  Dice dice(6);
  const auto places = test::RandomPlaces(dice, 100);
  const KernelDensity density(places, *ReferenceBandwidth(places, 1), true);
  const SharedDensity shared = Compared(density, density);
  EXPECT_NEAR(shared.ofFirst, 0.95, 0.001);
  EXPECT_NEAR(shared.ofSecond, 0.95, 0.001);
  EXPECT_NEAR(shared.affinity, 1, 0.0005);
}

TEST(CompareDensities, OfTwoNormalDistributionsFollowsTheirDistance) {
  // The affinity of two round normal distributions with deviations a and b at a distance d is
  // 2 a b / (a a + b b) * exp(-d d / (4 (a a + b b))).
  for (const double b : {3.0, 10.0, 80.0}) {
    for (const double distance : {0.0, 5.0, 40.0}) {
      const double a = 7;
      const KernelDensity first(std::vector<PlanePlace>{{1, 2}}, a, true);
      const KernelDensity second(std::vector<PlanePlace>{{1 + distance, 2}}, b, true);
      const SharedDensity shared = Compared(first, second);
      const double squares = a * a + b * b;
      EXPECT_NEAR(shared.affinity,
                  2 * a * b / squares * std::exp(-distance * distance / (4 * squares)), 0.0005)
          << b << ' ' << distance;
      if (distance == 0) {
        const double radius = b * std::sqrt(-2 * std::log(0.05));
        EXPECT_NEAR(shared.ofFirst, 1 - std::exp(-radius * radius / (2 * a * a)), 0.001) << b;
      }
    }
  }
}

TEST(CompareDensities, AgreesWithSumsOverAFineGrid) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    auto places = test::RandomPlaces(dice, 20);
    const std::vector<PlanePlace> first(places.begin(), places.begin() + 8);
    const std::vector<PlanePlace> second(places.begin() + 6, places.end());
    const double a = *ReferenceBandwidth(first, 1);
    const double b = *ReferenceBandwidth(second, 0.4);
    const FineGrid grid(places, 5 * std::max(a, b), std::min(a, b) / 5);
    const auto ofFirst = grid.Densities(first, a);
    const auto ofSecond = grid.Densities(second, b);
    const double firstLevel = SortedSet(ofFirst, grid.step, 95).level;
    const double secondLevel = SortedSet(ofSecond, grid.step, 95).level;
    SharedDensity exact;
    const double square = grid.step * grid.step;
    for (size_t i = 0; i < ofFirst.size(); ++i) {
      if (ofSecond[i] >= secondLevel) exact.ofFirst += ofFirst[i] * square;
      if (ofFirst[i] >= firstLevel) exact.ofSecond += ofSecond[i] * square;
      exact.affinity += std::sqrt(ofFirst[i] * ofSecond[i]) * square;
    }
    const SharedDensity shared =
        Compared(KernelDensity(first, a, true), KernelDensity(second, b, true));
    EXPECT_NEAR(shared.ofFirst, exact.ofFirst, 0.002);
    EXPECT_NEAR(shared.ofSecond, exact.ofSecond, 0.002);
    EXPECT_NEAR(shared.affinity, exact.affinity, 0.001);
  }
}

}  // namespace
}  // namespace orvane
