#include "estimates/density_rings.h"

#include "estimates/brute_force.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Rings = std::vector<std::vector<PlanePlace>>;

double AreaInside(const Rings& rings) {
  double area = 0;
  for (const auto& ring : rings) area += SignedArea(ring);
  return area;
}

/// How often rings wind around a place: 1 inside an outer ring, 0 outside and in a hole.
int WindingAround(const Rings& rings, const PlanePlace& place) {
  int turns = 0;
  for (const auto& ring : rings) {
    for (size_t i = 0; i < ring.size(); ++i) {
      const PlanePlace& a = ring[i];
      const PlanePlace& b = ring[(i + 1) % ring.size()];
      const double side =
          (b.east - a.east) * (place.north - a.north) - (b.north - a.north) * (place.east - a.east);
      if (a.north <= place.north && b.north > place.north && side > 0) ++turns;
      if (a.north > place.north && b.north <= place.north && side < 0) --turns;
    }
  }
  return turns;
}

void ExpectClosed(const Rings& rings, double step) {
  for (const auto& ring : rings) {
    ASSERT_GE(ring.size(), 3U);
    for (size_t i = 0; i < ring.size(); ++i) {
      const PlanePlace& next = ring[(i + 1) % ring.size()];
      EXPECT_LE(std::hypot(ring[i].north - next.north, ring[i].east - next.east), step * 1.4143);
    }
  }
}

TEST(RingsAtLevel, OfOnePlaceAreACircle) {
  const std::vector<PlanePlace> places = {{1234.56, -78.9}};
  const KernelDensity density(places, 10);
  for (const double percent : {25.0, 50.0, 95.0, 99.0}) {
    const Rings rings = RingsAtLevel(density, density.SetOf(percent).level);
    ASSERT_EQ(rings.size(), 1U) << percent;
    const double radius = 10 * std::sqrt(-2 * std::log(1 - percent / 100));
    for (const PlanePlace& corner : rings.front()) {
      EXPECT_NEAR(std::hypot(corner.north - 1234.56, corner.east + 78.9), radius, radius * 0.002);
    }
    const double exact = 3.141592653589793 * radius * radius;
    EXPECT_NEAR(SignedArea(rings.front()), exact, exact * 0.004);  // counterclockwise
  }
}

TEST(RingsAtLevel, HaveTheAreaOfTheSet) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const auto places = test::RandomPlaces(dice, 2 + dice.Below(60));
    const auto h = ReferenceBandwidth(places, dice.Between(0.15, 1.5));
    if (!h) continue;
    const KernelDensity density(places, *h);
    for (const double percent : {50.0, 95.0}) {
      const DensitySet set = density.SetOf(percent);
      const Rings rings = RingsAtLevel(density, set.level);
      EXPECT_NEAR(AreaInside(rings), set.area, set.area * 0.003) << percent;
      ExpectClosed(rings, density.Step());
    }
  }
}

TEST(RingsAtLevel, SeparateWhatIsAboveTheLevelFromWhatIsBelow) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const auto places = test::RandomPlaces(dice, 12);
    const double h = *ReferenceBandwidth(places, 0.3);
    const KernelDensity density(places, h);
    const double level = density.SetOf(80).level;
    const Rings rings = RingsAtLevel(density, level);
    int inside = 0;
    for (int i = 0; i < 400; ++i) {
      const PlanePlace& near = places[static_cast<size_t>(dice.Below(12))];
      const PlanePlace at = {near.north + dice.Between(-4, 4) * h,
                             near.east + dice.Between(-4, 4) * h};
      const double exact = test::DensityAt(places, h, at);
      if (std::abs(exact - level) < level * 0.02) continue;  // on the line
      EXPECT_EQ(WindingAround(rings, at), exact > level ? 1 : 0);
      if (exact > level) ++inside;
    }
    EXPECT_GT(inside, 20);
  }
}

TEST(RingsAtLevel, GoClockwiseAroundAHole) {
  std::vector<PlanePlace> places;
  for (int i = 0; i < 60; ++i) {
    const double angle = i * 0.10471975511965977;
    places.push_back({100 * std::cos(angle), 100 * std::sin(angle)});
  }
  const KernelDensity density(places, 12);
  const DensitySet set = density.SetOf(95);
  const Rings rings = RingsAtLevel(density, set.level);
  ASSERT_EQ(rings.size(), 2U);
  const double first = SignedArea(rings[0]);
  const double second = SignedArea(rings[1]);
  EXPECT_LT(std::min(first, second), -5000);
  EXPECT_GT(std::max(first, second), 40000);
  EXPECT_NEAR(first + second, set.area, set.area * 0.003);
}

TEST(RingsAtLevel, CloseAtASaddle) {
  // Four heaps in the corners of a square meet in the middle at one level, which is not a node.
  const std::vector<PlanePlace> places = {{15, 15.3}, {15, -15.1}, {-15.2, 15}, {-15.4, -15}};
  const KernelDensity density(places, 10);
  const double middle = test::DensityAt(places, 10, {0, 0});
  size_t most = 0;
  for (int i = -40; i <= 40; ++i) {
    const double level = middle * (1 + i * 0.001);
    const Rings rings = RingsAtLevel(density, level);
    ExpectClosed(rings, density.Step());
    for (const PlanePlace& place : places) EXPECT_EQ(WindingAround(rings, place), 1) << i;
    most = std::max(most, rings.size());
  }
  EXPECT_GE(most, 2U);
}

TEST(RingsAtLevel, AreNoneAboveThePeak) {
  const std::vector<PlanePlace> places = {{0, 0}, {3, 3}};
  const KernelDensity density(places, 10);
  EXPECT_TRUE(RingsAtLevel(density, 1).empty());
}

}  // namespace
}  // namespace orvane
