#include "elevation/contours_surface.h"

#include "elevation/contours_samples.h"
#include "geo/earth.h"
#include "ground.h"
#include "support/map_from_text.h"

#include <bit>
#include <cmath>

namespace orvane {
namespace {

struct AltitudePointsTest : MapFixture {};

TEST_F(AltitudePointsTest, TakesEachPointWithAnAltitudeOnceTheLastOneFirst) {
  Map& map = Open(
      "T\tWay\tTrail\nG\ta\tN1\tE1\t100\nG\tb\tN1.01\tE1\nG\tc\tN1.02\tE1\t0\nP\ta\n"
      "T\tOther\tTrail\nP\tc\nG\td\tN1.03\tE1\t-5\nT\nG\tloose\tN1.04\tE1\t7\nG\t\tN1.05\tE1\t8\n");
  std::vector<std::string> names;
  for (const Point* point : CollectAltitudePoints(map)) names.push_back(point->name);
  EXPECT_EQ(names, (Texts{"", "loose", "d", "c", "a"}));
}

TEST_F(AltitudePointsTest, LeavesTheBasisOut) {
  Map& basis = Open("G\tlow\tN1\tE1\t100\n", "basis.map");
  Map& map = Open("G\thigh\tN2\tE1\t200\n", "upper.map");
  map.basis = &basis;
  const std::vector<Point*> points = CollectAltitudePoints(map);
  ASSERT_EQ(points.size(), 1U);
  EXPECT_EQ(points[0]->name, "high");
}

struct SurfaceTest : GroundFixture {
  /// Points that are close enough for every rule to come into play.
  void Strew(Dice& dice, int count, double extent) {
    for (int i = 0; i < count; ++i) {
      Add(1 + dice.Part() * extent, 30 + dice.Part() * extent, dice.Below(500));
    }
  }
};

TEST_F(SurfaceTest, WeighsByTheInverseSquareOfTheDistance) {
  Add(0, 0, 100);
  Add(0, 3, 200);
  const std::vector<Point*> points = CollectAltitudePoints(*map);
  // Distances 1 and 2, weights 1 and 1/4.
  EXPECT_DOUBLE_EQ(SurfaceAltitude(points, 0, 1), (200 * 0.25 + 100 * 1) / 1.25);
  // No cosine: a degree of longitude counts as one of latitude.
  EXPECT_DOUBLE_EQ(SurfaceAltitude(points, 4, 0),
                   (200 / 25.0 + 100 / 16.0) / (1 / 25.0 + 1 / 16.0));
}

TEST_F(SurfaceTest, HasTheAltitudeOfAPointAtItsPlace) {
  Add(0, 0, 100);
  Add(0.5, 0.25, 170);
  EXPECT_EQ(SurfaceAltitude(CollectAltitudePoints(*map), 0.5, 0.25), 170);
}

TEST_F(SurfaceTest, TakesTheFirstOfTwoPointsAtOnePlace) {
  Add(0.5, 0.25, 100);
  Add(0.5, 0.25, 200);
  Add(0, 0, 0);
  std::vector<Point*> points = CollectAltitudePoints(*map);
  ASSERT_EQ(points.front()->geo.altitude, 100) << "the list of nameless points is turned round";
  EXPECT_EQ(SurfaceAltitude(points, 0.5, 0.25), 100);
  std::swap(points[0], points[1]);
  EXPECT_EQ(SurfaceAltitude(points, 0.5, 0.25), 200);
  // Beside the place both take part.
  EXPECT_NEAR(SurfaceAltitude(points, 0.5, 0.25 + 1e-7), 150, 1e-6);
}

TEST_F(SurfaceTest, SlopeIsThatOfTheSteepestPairInMetresPerDegree) {
  Add(0, 0, 100);
  Add(0.003, 0.004, 150);
  Add(0.5, 0.5, 0);
  EXPECT_DOUBLE_EQ(MaxSlope(CollectAltitudePoints(*map)), 50 / 0.005);
}

TEST_F(SurfaceTest, SlopeLeavesOutPairsWithinThreeMetres) {
  Add(0, 0, 100);
  Add(0, MetersToDegrees(2.999), 150);
  EXPECT_EQ(MaxSlope(CollectAltitudePoints(*map)), 0);
  Add(0, MetersToDegrees(-3.001), 101);
  EXPECT_NEAR(MaxSlope(CollectAltitudePoints(*map)), 49 / MetersToDegrees(6), 1);
}

TEST_F(SurfaceTest, ThereIsNoSlopeOnLevelGround) {
  EXPECT_EQ(MaxSlope({}), 0);
  Add(0, 0, 100);
  EXPECT_EQ(MaxSlope(CollectAltitudePoints(*map)), 0);
  Add(0, 1, 100);
  EXPECT_EQ(MaxSlope(CollectAltitudePoints(*map)), 0);
}

double SlopeOfAllPairs(PointSpan points) {
  double slope = 0;
  for (const Point* a : points) {
    for (const Point* b : points) {
      const double dlat = a->geo.lat - b->geo.lat;
      const double dlon = a->geo.lon - b->geo.lon;
      const double square = dlat * dlat + dlon * dlon;
      if (!(square > MetersToDegrees(3.0) * MetersToDegrees(3.0))) continue;
      const double rise =
          static_cast<double>(a->geo.altitude) - static_cast<double>(b->geo.altitude);
      slope = std::max(slope, std::fabs(rise) / std::sqrt(square));
    }
  }
  return slope;
}

TEST_F(SurfaceTest, SlopeIsThatOfAllPairsToTheLastBit) {
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    map = &MakeMap(workspace, "slopes.map");
    Strew(dice, 2 + dice.Below(300), seed % 3 == 0 ? 0.0005 : 0.05);
    // A plane on which all pairs along the slope are alike.
    if (seed % 4 == 0) {
      for (Point* point : map->namelessPoints) {
        point->geo.altitude = static_cast<float>(point->geo.lat * 3000);
      }
    }
    const std::vector<Point*> points = CollectAltitudePoints(*map);
    EXPECT_EQ(MaxSlope(points), SlopeOfAllPairs(points));
  }
}

TEST_F(SurfaceTest, SamplesSideBySideAreThoseOfOneByOneToTheLastBit) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    map = &MakeMap(workspace, "samples.map");
    Strew(dice, 1 + dice.Below(200), 0.01);
    const std::vector<Point*> points = CollectAltitudePoints(*map);
    const SurfacePoints surface(points);
    std::vector<double> lons;
    for (int i = dice.Below(40); i >= 0; --i) lons.push_back(30 + dice.Part() * 0.01);
    // Places of points among them, and all but at one.
    for (size_t i = 0; i < lons.size(); i += 3) lons[i] = points[i % points.size()]->geo.lon;
    const double lat = points[lons.size() % points.size()]->geo.lat;
    for (const SurfacePath path : {SurfacePlain, FastestSurfacePath()}) {
      std::vector<double> values(lons.size());
      SampleSurfaceRow(surface, lat, lons, values, path);
      for (size_t i = 0; i < lons.size(); ++i) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(values[i]),
                  std::bit_cast<std::uint64_t>(SurfaceAltitude(points, lat, lons[i])))
            << path << ": place " << i;
      }
    }
  }
}

TEST_F(SurfaceTest, GridIsReportedRowByRowAndCanBeCanceled) {
  Dice dice(7);
  Strew(dice, 200, 0.01);
  const std::vector<Point*> points = CollectAltitudePoints(*map);
  std::vector<double> lats;
  std::vector<double> lons;
  for (int i = 0; i < 90; ++i) lats.push_back(1 + i * 0.0001);
  for (int i = 0; i < 101; ++i) lons.push_back(30 + i * 0.0001);
  std::vector<size_t> told;
  const auto values = SampleSurface(points, lats, lons, [&](size_t row) {
    told.push_back(row);
    return true;
  });
  ASSERT_TRUE(values);
  ASSERT_EQ(told.size(), lats.size());
  for (size_t r = 0; r < told.size(); ++r) EXPECT_EQ(told[r], r);
  for (size_t r = 0; r < lats.size(); r += 13) {
    for (size_t c = 0; c < lons.size(); c += 7) {
      EXPECT_EQ((*values)[r * lons.size() + c], SurfaceAltitude(points, lats[r], lons[c]));
    }
  }
  EXPECT_FALSE(SampleSurface(points, lats, lons, [](size_t row) { return row < 3; }));
}

}  // namespace
}  // namespace orvane
