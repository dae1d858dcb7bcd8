#include "geo/earth.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace orvane {
namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

/// A number from `low` to `high`, the same with every library.
double Between(std::mt19937& random, double low, double high) {
  return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

TEST(Earth, HasItsConstants) {
  EXPECT_EQ(MetersPerDegree, 60 * 1852.0);
  EXPECT_EQ(RadiansPerDegree, 0.017453292519943295);
  EXPECT_EQ(Pi, 3.141592653589793);
  EXPECT_EQ(GridPi, 3.141592653689793);
}

TEST(Earth, HasOneScaleAlongAMeridian) {
  EXPECT_EQ(DegreesToMeters(2), 222240);
  EXPECT_EQ(MetersToDegrees(222240), 2);
}

TEST(LatLonToMeters, TakesEastAtTheEquatorWhole) {
  const Meters meters = LatLonToMeters(0, 1.5);
  EXPECT_EQ(meters.east, 1.5 * 111120);
  EXPECT_EQ(meters.north, 0);
  EXPECT_EQ(meters.altitude, NoAltitude);
}

TEST(LatLonToMeters, TakesEastAtSixtyDegreesByHalf) {
  const Meters meters = LatLonToMeters(60, 1.5);
  EXPECT_NEAR(meters.east, 0.75 * 111120, 1e-9);
  EXPECT_EQ(meters.north, 60 * 111120.0);
}

TEST(LatLonToMeters, IsEvaluatedFromLeftToRight) {
  const double lat = 4.4016692;
  const double lon = -122.4026537;
  EXPECT_EQ(LatLonToMeters(lat, lon).east, std::cos(lat * 0.017453292519943295) * lon * 111120.0);
}

TEST(LatLonToMetersKeepingAltitude, CopiesTheAltitude) {
  EXPECT_EQ(LatLonToMetersKeepingAltitude({4, 5, 120.5F}).altitude, 120.5F);
  EXPECT_EQ(LatLonToMetersKeepingAltitude({4, 5}).altitude, NoAltitude);
  EXPECT_EQ(LatLonToMetersKeepingAltitude({4, 5, 1}).east, LatLonToMeters(4, 5).east);
}

TEST(MetersToLatLon, TakesTheCosineAtTheNewLatitude) {
  const LatLon place = MetersToLatLon(60 * 111120.0, 111120);
  EXPECT_EQ(place.lat, 60);
  EXPECT_NEAR(place.lon, 2, 1e-12);
  EXPECT_EQ(place.altitude, NoAltitude);
}

TEST(MetersToLatLonKeepingAltitude, CopiesTheAltitude) {
  EXPECT_EQ(MetersToLatLonKeepingAltitude({1, 2, 120.5F}).altitude, 120.5F);
  EXPECT_EQ(MetersToLatLonKeepingAltitude({1, 2}).altitude, NoAltitude);
}

TEST(MetersToLatLon, IsTheInverseUpToRounding) {
  constexpr unsigned Seed = 31;
  std::mt19937 random(Seed);
  for (int i = 0; i < 20000; ++i) {
    const double lat = Between(random, -89.9, 89.9);
    const double lon = Between(random, -180, 180);
    const Meters meters = LatLonToMeters(lat, lon);
    const LatLon back = MetersToLatLon(meters.north, meters.east);
    ASSERT_NEAR(back.lat, lat, 1e-13 * 180) << "seed " << Seed;
    ASSERT_NEAR(back.lon, lon, 1e-10) << "lat " << lat << " seed " << Seed;
  }
}

TEST(AddMeters, TakesEastAtTheNewLatitude) {
  LatLon place{59, 10, 7};
  AddMeters(place, 111120, 111120);
  EXPECT_EQ(place.lat, 60);
  EXPECT_NEAR(place.lon, 12, 1e-12);
  EXPECT_EQ(place.altitude, 7);
}

TEST(AddMetersRotated, TurnsTheStepFirst) {
  LatLon place{0, 0};
  AddMetersRotated(place, 1111.2, 0, 90);
  EXPECT_NEAR(place.lat, 0, 1e-15);
  EXPECT_NEAR(place.lon, 0.01, 1e-15);
  LatLon other{0, 0};
  AddMetersRotated(other, 0, 1111.2, 90);
  EXPECT_NEAR(other.lat, -0.01, 1e-15);
  EXPECT_NEAR(other.lon, 0, 1e-15);
}

TEST(AddMetersRotated, IsAddMetersWithoutAnAngle) {
  LatLon a{12, 34};
  LatLon b = a;
  AddMeters(a, 321, -123);
  AddMetersRotated(b, 321, -123, 0);
  EXPECT_EQ(a.lat, b.lat);
  EXPECT_EQ(a.lon, b.lon);
}

TEST(DisplacementBetween, TakesEastAtTheMeanLatitude) {
  Meters step;
  DisplacementBetween({59, 10}, {61, 12}, step);
  EXPECT_EQ(step.north, 2 * 111120.0);
  EXPECT_NEAR(step.east, 111120, 1e-9);
}

TEST(DisplacementBetween, WritesTheAltitudeOnlyIfBothAreKnown) {
  Meters step;
  step.altitude = 5;
  DisplacementBetween({0, 0, 100}, {0, 0}, step);
  EXPECT_EQ(step.altitude, 5);
  DisplacementBetween({0, 0}, {0, 0, 100}, step);
  EXPECT_EQ(step.altitude, 5);
  DisplacementBetween({0, 0, 100}, {0, 0, 130.5F}, step);
  EXPECT_EQ(step.altitude, 30.5F);
}

TEST(GroundDistance, LeavesAltitudesOut) {
  EXPECT_NEAR(GroundDistance({0, 0, 0}, {0.03, 0.04, 5000}), 0.05 * 111120, 1e-3);
  EXPECT_EQ(GroundDistance({7, 8}, {7, 8}), 0);
}

TEST(GreatCircleMeters, FollowsTheSphere) {
  EXPECT_NEAR(GreatCircleMeters({0, 10}, {0, 11}), 111120, 1e-6);
  EXPECT_NEAR(GreatCircleMeters({-1, 10}, {1, 10}), 2 * 111120, 1e-6);
  EXPECT_NEAR(GreatCircleMeters({60, 0}, {60, 180}), 60 * 111120, 1e-6);  // over the pole
  EXPECT_NEAR(GreatCircleMeters({0, 0}, {0, 180}), 180 * 111120, 1e-3);
  EXPECT_NEAR(GreatCircleMeters({1, -179.5}, {1, 179.5}), GroundDistance({1, 0}, {1, 1}),
              1);  // over the line where the date changes
  EXPECT_NEAR(GreatCircleMeters({1.3, 115}, {1.3, 115.00001}), 1.1109, 1e-4);
  EXPECT_EQ(GreatCircleMeters({7, 8}, {7, 8}), 0);
}

TEST(GroundDistance, IsTheSameBothWays) {
  constexpr unsigned Seed = 32;
  std::mt19937 random(Seed);
  for (int i = 0; i < 5000; ++i) {
    const LatLon a{Between(random, -80, 80), Between(random, -180, 180)};
    const LatLon b{Between(random, -80, 80), Between(random, -180, 180)};
    ASSERT_EQ(GroundDistance(a, b), GroundDistance(b, a)) << "seed " << Seed;
  }
}

TEST(AdvanceByMeasurement, WalksFromTheBaseToTheHolder) {
  // The holder sees its base in the north, so it lies south of it.
  Meters position{0, 0, 100};
  AdvanceByMeasurement(position, 0, 50, 0, 0);
  EXPECT_NEAR(position.north, -50, 1e-12);
  EXPECT_NEAR(position.east, 0, 1e-12);
  EXPECT_EQ(position.altitude, 100);
}

TEST(AdvanceByMeasurement, AddsTheDeviation) {
  Meters position;
  AdvanceByMeasurement(position, 80, 50, 0, 10);
  EXPECT_NEAR(position.north, 0, 1e-12);
  EXPECT_NEAR(position.east, -50, 1e-12);
}

TEST(AdvanceByMeasurement, GoesDownWhereTheBaseIsAbove) {
  Meters position{0, 0, 100};
  AdvanceByMeasurement(position, 270, 20, 30, 0);
  EXPECT_NEAR(position.east, 20 * std::cos(30 * RadiansPerDegree), 1e-12);
  EXPECT_NEAR(static_cast<double>(position.altitude), 90, 1e-4);
}

TEST(AdvanceByMeasurement, LeavesAnUnknownAltitude) {
  Meters position;
  AdvanceByMeasurement(position, 270, 20, 30, 0);
  EXPECT_EQ(position.altitude, NoAltitude);
}

TEST(AdvanceByMeasurement, TurnsFullCirclesOnlyOnce) {
  // 360 is taken off once: the rest of a large bearing is the cosine's matter.
  Meters position;
  AdvanceByMeasurement(position, 700, 10, 0, 0);
  EXPECT_EQ(position.north, std::cos(520 * RadiansPerDegree) * (1.0 * 10));
  Meters full;
  AdvanceByMeasurement(full, 180, 10, 0, 0);
  EXPECT_EQ(full.north, 10);
  EXPECT_EQ(full.east, 0);
}

TEST(AdvanceByMeasurement, IsTurnedRoundByANegativeDistance) {
  constexpr unsigned Seed = 33;
  std::mt19937 random(Seed);
  for (int i = 0; i < 5000; ++i) {
    const double bearing = Between(random, 0, 360);
    const double distance = Between(random, 0, 500);
    const double inclination = Between(random, -90, 90);
    Meters position{10, 20, 30};
    AdvanceByMeasurement(position, bearing, distance, inclination, 2.6);
    AdvanceByMeasurement(position, bearing, -distance, inclination, 2.6);
    ASSERT_NEAR(position.north, 10, 1e-10) << "seed " << Seed;
    ASSERT_NEAR(position.east, 20, 1e-10) << "seed " << Seed;
    ASSERT_NEAR(static_cast<double>(position.altitude), 30, 1e-3) << "seed " << Seed;
  }
}

TEST(AdvanceByMeasurement, WalksTheLengthOfTheSlope) {
  constexpr unsigned Seed = 34;
  std::mt19937 random(Seed);
  for (int i = 0; i < 5000; ++i) {
    const double distance = Between(random, 0, 500);
    Meters position{0, 0, 0};
    AdvanceByMeasurement(position, Between(random, 0, 360), distance, Between(random, -90, 90), 0);
    const double up = static_cast<double>(position.altitude);
    const double walked =
        std::sqrt(position.north * position.north + position.east * position.east + up * up);
    ASSERT_NEAR(walked, distance, 1e-4) << "seed " << Seed;
  }
}

TEST(InterpolateLatLon, IsLinear) {
  const LatLon place = InterpolateLatLon({10, 20, 100}, {12, 30, 200}, 0.25);
  EXPECT_EQ(place.lat, 10.5);
  EXPECT_EQ(place.lon, 22.5);
  EXPECT_EQ(place.altitude, 125);
}

TEST(InterpolateLatLon, HasNoAltitudeIfEitherSideHasNone) {
  EXPECT_EQ(InterpolateLatLon({1, 1}, {2, 2, 100}, 0.5).altitude, NoAltitude);
  EXPECT_EQ(InterpolateLatLon({1, 1, 100}, {2, 2}, 0.5).altitude, NoAltitude);
  EXPECT_EQ(InterpolateLatLon({1, 1}, {2, 2}, 0.5).altitude, NoAltitude);
}

void ExpectCell(double lat, double lon, const GridFrame& grid, double alongNorth,
                double alongEast) {
  const CellPosition cell = GridCellOf(lat, lon, grid);
  EXPECT_EQ(cell.alongNorth, alongNorth) << lat << ' ' << lon;
  EXPECT_EQ(cell.alongEast, alongEast) << lat << ' ' << lon;
}

TEST(GridCellOf, CountsFromTheCorner) {
  const GridFrame grid{0, 10, 1111.2, 0};
  ExpectCell(0.0001, 10.0001, grid, 0, 0);
  ExpectCell(0.025, 10.035, grid, 2, 3);
  ExpectCell(-0.0001, 9.9999, grid, -1, -1);
  ExpectCell(-0.025, 9.965, grid, -3, -4);
}

TEST(GridCellOf, TakesTheCosineOfThePlaceAndNotOfTheCorner) {
  const GridFrame grid{59, 0, 111120, 0};
  ExpectCell(60.5, 3.9, grid, 1, 1);
  ExpectCell(59.5, 3.95, grid, 0, 2);
}

TEST(GridCellOf, TurnsWithTheGrid) {
  // The grid's own north points east.
  const GridFrame grid{0, 0, 1111.2, 90};
  ExpectCell(0.0001, 0.025, grid, 2, -1);
  ExpectCell(-0.035, 0.0001, grid, 0, 3);
}

TEST(GridCellOf, KeepsPlacesFarOutInTheOutermostCell) {
  const GridFrame grid{0, 0, 1, 0};
  ExpectCell(50, 50, grid, 300, 300);
  ExpectCell(-50, -50, grid, -300, -300);
  ExpectCell(300.5 / 111120, -300.5 / 111120, grid, 300, -300);
  ExpectCell(299.5 / 111120, -298.5 / 111120, grid, 299, -299);
}

TEST(GridCellOf, UsesItsOwnPi) {
  // A place due east of the corner lies on the edge between two cells of a grid that is turned by
  // 90 degrees. With the usual pi it would fall into cell 0.
  ExpectCell(0, 0.015, {0, 0, 1111.2, 90}, 1, -1);
  EXPECT_GT(std::cos(90 * Pi / 180), 0);
  EXPECT_LT(std::cos(90 * GridPi / 180), 0);
}

TEST(GridCellOf, TakesNoTrigonometryForAGridThatIsNotTurned) {
  // A turn by the cosine and sine of 0 would make the count of an infinite side no number.
  const GridFrame grid{-Infinite, 0, 1, 0};
  ExpectCell(0, 10 / 111120.0 + 1e-9, grid, 300, 10);
}

TEST(GridCellOf, StaysBounded) {
  ExpectCell(0.5, -0.5, {0, 0, 0, 0}, 300, -300);
  ExpectCell(0, 0, {0, 0, 0, 0}, 0, 0);
  for (const double odd : {NotANumber, Infinite, -Infinite, 1e308, 0.0, -0.0}) {
    for (const GridFrame& grid : {GridFrame{odd, 0, 50, 30}, GridFrame{0, odd, 50, 30},
                                  GridFrame{0, 0, odd, 30}, GridFrame{0, 0, 50, odd}}) {
      for (const double lat : {4.4, odd}) {
        const CellPosition cell = GridCellOf(lat, 7.7, grid);
        EXPECT_LE(std::fabs(cell.alongNorth), 300);
        EXPECT_LE(std::fabs(cell.alongEast), 300);
      }
    }
  }
}

}  // namespace
}  // namespace orvane
