#include "elevation/contours_barriers.h"

#include "elevation/contours_surface.h"
#include "geo/earth.h"
#include "ground.h"

#include <cmath>

namespace orvane {
namespace {

constexpr double Step = 0.001;

struct BarriersTest : GroundFixture {
  ScratchPoints store;
  std::vector<Point*> points;

  /// The points that were added, in the order in which they were made.
  std::vector<const Point*> Made(double step = Step) {
    points = CollectAltitudePoints(*map);
    const size_t before = points.size();
    EXPECT_TRUE(AddBarrierPoints(*map, points, step, store));
    return {points.rbegin() + static_cast<std::ptrdiff_t>(before), points.rend()};
  }
  /// Ten steps to the east along the equator, rising from 100 to 200.
  Trail& AddRiver(const char* type = "River") {
    return AddTrail(type, {&AddTo(0, 0, 100), &AddTo(0, 10 * Step, 200)});
  }
};

TEST_F(BarriersTest, FirstSampleIsAtTheStartAndFurtherOnesAreTwoStepsApart) {
  AddRiver();
  const auto made = Made();
  ASSERT_EQ(made.size(), 30U);
  const double places[] = {0, 1, 3, 5, 7, 9};
  for (size_t i = 0; i < 6; ++i) {
    EXPECT_NEAR(made[5 * i]->geo.lon, places[i] * Step, 1e-15);
    EXPECT_NEAR(made[5 * i + 1]->geo.lon, (places[i] - 0.05) * Step, 1e-15);
    EXPECT_NEAR(made[5 * i + 2]->geo.lon, (places[i] + 0.05) * Step, 1e-15);
    EXPECT_NEAR(made[5 * i]->geo.altitude, 100 + 10 * places[i], 1e-4);
    EXPECT_NEAR(made[5 * i + 1]->geo.altitude, 100 + 10 * (places[i] - 0.05), 1e-4);
    EXPECT_NE(made[5 * i]->flags & PointScratch, 0U);
  }
}

TEST_F(BarriersTest, TheThirdSampleTakesItsAltitudeFromFurtherOn) {
  AddRiver();
  const auto made = Made();
  // (acc + seg + remaining - step / 20) / L, where the place would give (acc + q + step / 20) / L.
  EXPECT_NEAR(made[2]->geo.altitude, 100 + 100 * (10 + 10 - 0.05) / 10, 1e-4);
  EXPECT_NEAR(made[7]->geo.altitude, 100 + 100 * (10 + 9 - 0.05) / 10, 1e-4);
}

TEST_F(BarriersTest, BothBanksAreOnTheSameSide) {
  AddRiver();
  const auto made = Made();
  for (const size_t bank : {3U, 4U}) {
    EXPECT_NEAR(made[bank]->geo.lat, 0.05 * Step, 1e-15);
    EXPECT_EQ(made[bank]->geo.lon, 0);
  }
}

TEST_F(BarriersTest, BanksOfARiverAreTenDropsAboveAndSidesOfARidgeThreeBelow) {
  AddRiver("rIVER");
  const auto river = Made();
  const float drop = river[2]->geo.altitude - river[0]->geo.altitude;
  EXPECT_NEAR(river[3]->geo.altitude, 100 + 10 * drop, 1e-2);
  map = &MakeMap(workspace, "other.map");
  AddRiver("RIDGE");
  const auto ridge = Made();
  EXPECT_NEAR(ridge[3]->geo.altitude, 100 - 3 * drop, 1e-2);
}

TEST_F(BarriersTest, LevelWaterHasBanksAllTheSame) {
  AddTrail("River", {&AddTo(0, 0, 100), &AddTo(0, 10 * Step, 100)});
  EXPECT_NEAR(Made()[3]->geo.altitude, 100.1, 1e-5);
}

TEST_F(BarriersTest, WidthMovesTheBanksOutward) {
  AddRiver().width = 10;
  const double f = MetersToDegrees(10) * 20 / Step + 1;
  EXPECT_NEAR(Made()[3]->geo.lat, 0.05 * Step * f, 1e-12);
}

TEST_F(BarriersTest, NewPointsComeFirstTheLastOneInFront) {
  AddRiver();
  const auto made = Made();
  EXPECT_EQ(points.front(), made.back());
  EXPECT_EQ(points.size(), 32U);
}

TEST_F(BarriersTest, OtherTypesAndShortStretchesAddNothing) {
  AddRiver("Stream");
  AddRiver("Rivers");
  AddTrail("River", {&AddTo(1, 0, 100), &AddTo(1, 0.9 * Step, 200)});
  AddTrail("River", {&AddTo(1, 0, 100)});
  AddTrail("River", {&AddTo(1, 0), &AddTo(1, 10 * Step)});
  AddTrail("River", {});
  EXPECT_TRUE(Made().empty());
}

TEST_F(BarriersTest, AltitudesSpanPointsWithoutOne) {
  AddTrail("River", {&AddTo(0, -1), &AddTo(0, 0, 100), &AddTo(0, 4 * Step),
                     &AddTo(0, 10 * Step, 200), &AddTo(0, 1)});
  const auto made = Made();
  // In the first segment at 0, 1 and 3 steps; a step short of its end the second begins.
  ASSERT_GE(made.size(), 20U);
  EXPECT_NEAR(made[10]->geo.lon, 3 * Step, 1e-12);
  EXPECT_NEAR(made[10]->geo.altitude, 130, 1e-3);
  for (const Point* point : made) EXPECT_LT(point->geo.lon, 10.1 * Step);
}

TEST_F(BarriersTest, ASegmentOfNoLengthHasItsSamplesAtItsStart) {
  Point& bend = AddTo(0, 3.5 * Step);
  AddTrail("River", {&AddTo(0, 0, 100), &bend, &bend, &AddTo(0, 10 * Step, 200)});
  for (const Point* point : Made()) {
    EXPECT_TRUE(std::isfinite(point->geo.lat) && std::isfinite(point->geo.lon) &&
                std::isfinite(point->geo.altitude));
  }
}

TEST_F(BarriersTest, TooManyPointsAreRefused) {
  AddTrail("River", {&AddTo(0, 0, 100), &AddTo(0, 90), &AddTo(0, 0.1, 200)});
  points = CollectAltitudePoints(*map);
  const std::vector<Point*> before = points;
  EXPECT_FALSE(AddBarrierPoints(*map, points, 1e-4, store));
  EXPECT_EQ(points, before);
  EXPECT_FALSE(AddBarrierPoints(*map, points, 1e-300, store));
}

}  // namespace
}  // namespace orvane
