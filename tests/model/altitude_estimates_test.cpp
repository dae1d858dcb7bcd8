#include "model/altitude_estimates.h"

#include "base/messages.h"
#include "model/cells.h"
#include "model/workspace.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace orvane {
namespace {

bool SameBits(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }

class AltitudeEstimatesTest : public testing::Test {
 protected:
  Point& Add(double lat, double lon, float altitude) {
    Point& point = MakePoint(map_, "");
    point.geo = {lat, lon, altitude};
    point.flags |= PointPlaced;
    map_.namelessPoints.push_front(&point);
    return point;
  }

  RecordedMessages messages_;
  Workspace workspace_{messages_};
  Map& map_ = MakeMap(workspace_, "a.map");
};

TEST_F(AltitudeEstimatesTest, KnowsNothingWithoutAltitudes) {
  Add(1, 2, NoAltitude);
  const AltitudeEstimates estimates(map_);
  EXPECT_TRUE(estimates.IsEmpty());
  EXPECT_TRUE(SameBits(estimates.At({1, 2}), NoAltitude));
  EXPECT_TRUE(SameBits(AltitudeEstimates().At({1, 2}), NoAltitude));
}

TEST_F(AltitudeEstimatesTest, GivesTheAltitudeOfAPointAtItsVeryPlace) {
  Add(1, 2, 340.5F);
  Add(1.1, 2, 100);
  EXPECT_TRUE(SameBits(AltitudeEstimates(map_).At({1, 2}), 340.5F));
}

TEST_F(AltitudeEstimatesTest, LeavesOutThePointsOfTheBasis) {
  Map& above = MakeMap(workspace_, "above.map");
  above.basis = &map_;
  Add(1, 2, 340);
  EXPECT_TRUE(SameBits(AltitudeEstimates(above).At({1, 2}), NoAltitude));
}

TEST_F(AltitudeEstimatesTest, AgreesWithTheWalkOverTheMapToTheLastBit) {
  constexpr unsigned Seed = 20261;
  SCOPED_TRACE(Seed);
  std::mt19937 random(Seed);
  const auto unit = [&random] { return static_cast<double>(random()) / 4294967296.0; };
  Trail& trail = map_.trails.emplace_front();
  for (int i = 0; i < 400; ++i) {
    const bool known = i % 3 != 0;
    Point& point = Add(unit(), unit(), known ? static_cast<float>(unit() * 900 - 50) : NoAltitude);
    if (i % 2 == 0) trail.points.push_back(&point);
    if (i % 10 == 0) trail.points.push_back(&point);
  }
  const AltitudeEstimates estimates(map_);
  for (int i = 0; i < 200; ++i) {
    const LatLon place{unit() * 1.2, unit() * 1.2};
    EXPECT_TRUE(SameBits(estimates.At(place), EstimateAltitude(map_, place))) << i;
  }
  for (const Point& point : map_.pointStore) {
    EXPECT_TRUE(SameBits(estimates.At(point.geo), EstimateAltitude(map_, point.geo)));
  }
}

TEST_F(AltitudeEstimatesTest, ManyPlacesAtOnceAgreeWithEachByItself) {
  Add(1, 2, 340.5F);
  Add(1.1, 2, 100);
  Add(1.2, 2.3, 50);
  const AltitudeEstimates estimates(map_);
  for (const size_t count : {0U, 3U, 8U, 21U}) {
    std::vector<LatLon> places;
    for (size_t i = 0; i < count; ++i) places.push_back({1 + static_cast<double>(i) / 7, 2.1});
    if (count > 5) places[5] = {1.1, 2};  // exactly at a point
    std::vector<float> altitudes(count);
    estimates.At(places, altitudes);
    for (size_t i = 0; i < count; ++i) {
      EXPECT_TRUE(SameBits(altitudes[i], estimates.At(places[i]))) << i << " of " << count;
    }
  }
}

}  // namespace
}  // namespace orvane
