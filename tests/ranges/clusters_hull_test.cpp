#include "ranges/clusters_hull.h"

#include "geometry/convex_hull.h"
#include "random_ranges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <utility>

namespace orvane {
namespace {

/// A ring about a place that runs once around; `roughness` 0 makes it convex.
Ring RandomRing(RangeRandom& random, double roughness) {
  Ring ring;
  const int vertices = 2 + random.Below(40);
  const double radius = 3 + 500 * std::fabs(random.Part());
  for (int i = 0; i < vertices; ++i) {
    const double angle = 2 * Pi * i / vertices;
    const double distance = radius * (1 + roughness * random.Part());
    ring.push_back({{distance * std::sin(angle) + 20, distance * std::cos(angle) - 7}, nullptr});
  }
  if (random.Below(2) == 0) std::reverse(ring.begin(), ring.end());
  return ring;
}

/// Places all over the ring, and right at its vertices and edges.
Meters RandomPlace(RangeRandom& random, const Ring& ring) {
  const auto any = [&] {
    return ring[static_cast<size_t>(random.Below(static_cast<int>(ring.size())))].place;
  };
  const Meters a = any();
  const Meters b = any();
  const double part = random.Below(3) == 0 ? 1 : std::fabs(random.Part());
  Meters place = {a.north + (b.north - a.north) * part, a.east + (b.east - a.east) * part};
  if (random.Below(2) == 0) place.east += 2 * random.Part();
  if (random.Below(3) == 0) place.north = any().north;
  return place;
}

TEST(InsideTest, AnswersAsThePlainTestDoes) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RangeRandom random(seed);
    static const double Roughness[] = {0, 0.01, 0.4};
    const Ring ring = RandomRing(random, Roughness[random.Below(3)]);
    InsideTest test(ring);
    for (int i = 0; i < 400; ++i) {
      const Meters place = RandomPlace(random, ring);
      ASSERT_EQ(test.IsInside(place), PointInRing(place.east, place.north, ring))
          << place.north << ' ' << place.east;
    }
  }
}

TEST(InsideTest, FollowsTheRing) {
  Ring ring = {{{0, 0}, nullptr}, {{10, 0}, nullptr}, {{10, 10}, nullptr}, {{0, 10}, nullptr}};
  InsideTest test(ring);
  for (int i = 0; i < 100; ++i) ASSERT_FALSE(test.IsInside({5, 15}));
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(test.IsInside({5, 5}));
  for (RingVertex& vertex : ring) vertex.place.east += 10;
  test.NoteChange();
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(test.IsInside({5, 15}));
  for (int i = 0; i < 100; ++i) ASSERT_FALSE(test.IsInside({5, 5}));
}

TEST(HullOfPlaces, IsTheConvexHull) {
  int vertices = 0;
  for (std::uint64_t seed = 0; seed < 1500; ++seed) {
    RandomRange range = MakeRandomRange(seed, 300);
    SCOPED_TRACE("seed " + std::to_string(seed) + ", " + range.shape);
    RecordedMessages messages;
    const auto expected = ConvexHull(range.list, messages);
    ASSERT_TRUE(expected);
    HullExtremes extremes;
    std::vector<RingVertex> places;
    for (Point* point : range.list) {
      const size_t at = places.size();
      if (point->geo.lat == expected->maxLat) extremes.north = std::min(extremes.north, at);
      if (point->geo.lon == expected->maxLon) extremes.east = std::min(extremes.east, at);
      if (point->geo.lat == expected->minLat) extremes.south = std::min(extremes.south, at);
      if (point->geo.lon == expected->minLon) extremes.west = std::min(extremes.west, at);
      places.push_back({point->projected, point});
    }
    RecordedMessages again;
    ASSERT_EQ(PolyOf(HullOfPlaces(places, extremes, again)), expected->hull);
    ASSERT_EQ(again.Entries().size(), messages.Entries().size());
    vertices += static_cast<int>(expected->hull.size());
  }
  EXPECT_GT(vertices, 10000);
}

}  // namespace
}  // namespace orvane
