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

/// The ring is changed in small ways, as a hull is, and in others.
TEST(InsideTest, FollowsSmallChangesOfTheRing) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RangeRandom random(seed);
    Ring ring = RandomRing(random, random.Below(2) * 0.02);
    InsideTest test(ring);
    for (int change = 0; change < 25; ++change) {
      for (int i = 0; i < 40; ++i) {
        const Meters place = RandomPlace(random, ring);
        ASSERT_EQ(test.IsInside(place), PointInRing(place.east, place.north, ring))
            << place.north << ' ' << place.east;
      }
      const auto at = static_cast<size_t>(random.Below(static_cast<int>(ring.size())));
      const auto it = ring.begin() + static_cast<Ring::difference_type>(at);
      const int kind = random.Below(4);
      if (kind == 0 && ring.size() > 2) {
        ring.erase(it);
      } else if (kind == 1) {
        const Meters place = it->place;
        const double north = place.north + 3 * random.Part();
        const double east = place.east + 3 * random.Part();
        ring.insert(it, RingVertex{{north, east, NoAltitude}, nullptr});
      } else if (kind == 2) {
        it->place.north *= 1 + 0.1 * random.Part();
        it->place.east *= 1 + 0.3 * random.Part();
      } else {
        it->place.east += 5 * random.Part();
      }
      test.NoteChange();
    }
  }
}

TEST(HullGrowth, BuildsTheConvexHull) {
  size_t vertices = 0;
  for (std::uint64_t seed = 0; seed < 1500; ++seed) {
    RandomRange range = MakeRandomRange(seed, 300);
    SCOPED_TRACE("seed " + std::to_string(seed) + ", " + range.shape);
    RecordedMessages messages;
    const auto expected = ConvexHull(range.list, messages);
    ASSERT_TRUE(expected);
    const auto firstWith = [&](const auto& test) -> RingVertex {
      Point* point = *std::find_if(range.list.begin(), range.list.end(), test);
      return {point->projected, point};
    };
    RecordedMessages again;
    HullGrowth growth(firstWith([&](Point* p) { return p->geo.lat == expected->maxLat; }),
                      firstWith([&](Point* p) { return p->geo.lon == expected->maxLon; }),
                      firstWith([&](Point* p) { return p->geo.lat == expected->minLat; }),
                      firstWith([&](Point* p) { return p->geo.lon == expected->minLon; }), again);
    for (Point* point : range.list) growth.Take({point->projected, point});
    ASSERT_EQ(PolyOf(growth.Hull()), expected->hull);
    ASSERT_EQ(again.Entries().size(), messages.Entries().size());
    vertices += expected->hull.size();
  }
  EXPECT_GT(vertices, 10000U);
}

}  // namespace
}  // namespace orvane
