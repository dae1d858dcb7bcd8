#include "geometry/polygon.h"

#include "geo/earth.h"
#include "geometry/convex_hull.h"
#include "geometry/planes.h"
#include "rings.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using test::AreaOf;
using test::ClipConvex;
using test::Corners;
using test::CornersOf;
using test::PerimeterOf;
using test::PointBag;
using test::TextOf;

/// A convex ring with corners on an ellipse, counterclockwise.
Poly Oval(PointBag& bag, Dice& dice, double north, double east, double size) {
  std::vector<double> angles;
  const int count = dice.Int(3, 13);
  for (int i = 0; i < count; ++i) angles.push_back((i + dice.Between(0, 0.8)) * 2 * Pi / count);
  Poly ring;
  const double flatness = dice.Between(0.3, 1);
  for (const double angle : angles) {
    ring.push_back(
        bag.At(north + size * std::sin(angle), east + flatness * size * std::cos(angle)));
  }
  return ring;
}

TEST(PolygonArea, OfASquareAtAnyLatitude) {
  for (const double lat : {-70.0, -33.0, 0.0, 12.5, 51.0, 80.0}) {
    PointBag bag;
    const double up = MetersToDegrees(100);
    const double across = up / std::cos(lat * RadiansPerDegree);
    const Poly ring = {bag.AtDegrees(lat, 30), bag.AtDegrees(lat, 30 + across),
                       bag.AtDegrees(lat + up, 30 + across), bag.AtDegrees(lat + up, 30)};
    ProjectAboutCentre(ring);
    EXPECT_NEAR(PolygonArea(ring), 10000, 1) << lat;
  }
}

TEST(PolygonArea, IsNeverNegative) {
  PointBag bag;
  Poly ring = bag.Ring("0:0 0:10 10:10 10:0");
  EXPECT_EQ(PolygonArea(ring), 100);
  std::reverse(ring.begin(), ring.end());
  EXPECT_EQ(PolygonArea(ring), 100);
}

TEST(PolygonArea, IsTheSameWhetherOrNotTheLastPointRepeatsTheFirst) {
  PointBag bag;
  Poly ring = bag.Ring("3:1 4:10 17:12 9:0");
  const double open = PolygonArea(ring);
  ring.push_back(ring.front());
  EXPECT_EQ(PolygonArea(ring), open);
}

TEST(PolygonArea, OfFewerThanThreeVerticesIsZero) {
  PointBag bag;
  EXPECT_EQ(PolygonArea({}), 0);
  EXPECT_EQ(PolygonArea(bag.Ring("5:7")), 0);
  EXPECT_EQ(PolygonArea(bag.Ring("5:7 8:9")), 0);
}

TEST(PolygonArea, AgreesWithTrianglesOnRandomRings) {
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    Dice dice(seed);
    PointBag bag;
    Poly ring;
    const int count = dice.Int(3, 31);
    for (int i = 0; i < count; ++i) {
      ring.push_back(bag.At(dice.Between(-1000, 1000), dice.Between(-1000, 1000)));
    }
    EXPECT_NEAR(PolygonArea(ring), AreaOf(CornersOf(ring)), 1e-6) << "seed " << seed;
  }
}

TEST(PointInPolygon, SeparatesInsideFromOutside) {
  PointBag bag;
  const Poly ring = bag.Ring("0:0 0:100 50:50 100:100 100:0");
  EXPECT_TRUE(PointInPolygon(25, 50, ring));
  EXPECT_TRUE(PointInPolygon(80, 10, ring));
  EXPECT_FALSE(PointInPolygon(80, 50, ring)) << "in the notch";
  EXPECT_FALSE(PointInPolygon(-1, 50, ring));
  EXPECT_FALSE(PointInPolygon(50, 101, ring));
  EXPECT_FALSE(PointInPolygon(0, 0, {}));
  EXPECT_FALSE(PointInPolygon(0, 0, bag.Ring("0:0")));
}

TEST(PointInPolygon, CutsTheEastSpanOfAnEdgeToWholeMetres) {
  PointBag bag;
  // The western side leans from east 0 to east 0.9; cut to 0 metres it is upright at the east
  // of the vertex where it starts, which is the head for the closing edge's far end.
  const Poly leaning = bag.Ring("0:0 0:100 100:100 100:0.9");
  EXPECT_FALSE(PointInPolygon(0.6, 50, leaning)) << "truly inside by 0.15 m";
  EXPECT_TRUE(PointInPolygon(0.95, 50, leaning));
  // A span of 10.9 metres counts as 10: half way up the edge is at 5.9 instead of 5.45.
  const Poly wide = bag.Ring("0:0 0:100 100:100 100:10.9");
  EXPECT_FALSE(PointInPolygon(5.8, 50, wide));
  EXPECT_TRUE(PointInPolygon(5.95, 50, wide));
}

TEST(PointInPolygon, CutsTowardZeroSoDirectionMatters) {
  PointBag bag;
  Poly ring = bag.Ring("0:0 0:100 100:100 100:0.9");
  std::reverse(ring.begin(), ring.end());
  // The same side now starts at its southern end, east 0.
  EXPECT_TRUE(PointInPolygon(0.6, 50, ring));
}

TEST(PointInPolygon, GivesAVertexNoSpecialCase) {
  PointBag bag;
  const Poly ring = bag.Ring("0:0 0:100 100:100 100:0");
  // A vertex counts as upper and as beyond where it is level with the place.
  EXPECT_FALSE(PointInPolygon(0, 0, ring));
  EXPECT_FALSE(PointInPolygon(100, 0, ring));
  EXPECT_TRUE(PointInPolygon(100, 100, ring));
  EXPECT_FALSE(PointInPolygon(0, 100, ring));
}

TEST(PointInPolygon, CountsACrossingAtThePlaceItself) {
  PointBag bag;
  for (const char* text : {"10:0 0:10 -10:0 0:-10", "0:-10 -10:0 0:10 10:0"}) {
    const Poly diamond = bag.Ring(text);
    EXPECT_TRUE(PointInPolygon(10, 0, diamond)) << "one crossing, at the eastern vertex: " << text;
    EXPECT_FALSE(PointInPolygon(-10, 0, diamond)) << "two, at the western and beyond: " << text;
  }
}

TEST(PointInPolygon, DoesNotDependOnTheVertexAtWhichTheRingBegins) {
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    Dice dice(seed);
    PointBag bag;
    Poly ring;
    for (int i = 0; i < 9; ++i) {
      ring.push_back(bag.At(dice.Int(-5, 6), dice.Int(-5, 6) + 0.5));
    }
    const double east = dice.Int(-10, 11) / 2.0;
    const double north = dice.Int(-5, 6);
    const bool inside = PointInPolygon(east, north, ring);
    for (size_t i = 0; i < ring.size(); ++i) {
      std::rotate(ring.begin(), ring.begin() + 1, ring.end());
      EXPECT_EQ(PointInPolygon(east, north, ring), inside) << "seed " << seed;
    }
  }
}

TEST(SquaredDistanceToSegment, FallsOnTheSegmentOrTheNearerEnd) {
  // Slanted: the foot, then each end.
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({10, 0}, {0, 0}, {10, 10}), 50);
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({-3, -4}, {0, 0}, {10, 10}), 25);
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({13, 14}, {0, 0}, {10, 10}), 25);
  // Along a meridian and along a parallel, in both directions.
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({5, 3}, {0, 0}, {10, 0}), 9);
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({13, 4}, {10, 0}, {0, 0}), 25);
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({3, 5}, {0, 10}, {0, 0}), 9);
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({4, -3}, {0, 0}, {0, 10}), 25);
  // A segment of no length.
  EXPECT_DOUBLE_EQ(SquaredDistanceToSegment({3, 4}, {0, 0}, {0, 0}), 25);
}

TEST(SquaredDistanceToSegment, AgreesWithASearchAlongTheSegment) {
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    Dice dice(seed);
    const auto place = [&] { return Meters{dice.Between(-50, 50), dice.Between(-50, 50)}; };
    const Meters p = place();
    const Meters a = place();
    const Meters b = place();
    double best = 1e9;
    for (int i = 0; i <= 20000; ++i) {
      const double t = i / 20000.0;
      const double north = a.north + t * (b.north - a.north) - p.north;
      const double east = a.east + t * (b.east - a.east) - p.east;
      best = std::min(best, north * north + east * east);
    }
    EXPECT_NEAR(SquaredDistanceToSegment(p, a, b), best, 1e-2) << "seed " << seed;
  }
}

TEST(SegmentIntersection, FindsACrossingAndSharedEnds) {
  const auto crossing = SegmentIntersection({0, 0}, {10, 10}, {0, 10}, {10, 0});
  ASSERT_TRUE(crossing.has_value());
  EXPECT_DOUBLE_EQ(crossing->north, 5);
  EXPECT_DOUBLE_EQ(crossing->east, 5);
  EXPECT_EQ(crossing->altitude, NoAltitude);
  const auto end = SegmentIntersection({0, 0}, {10, 10}, {10, 10}, {20, 0});
  ASSERT_TRUE(end.has_value());
  EXPECT_DOUBLE_EQ(end->north, 10);
  EXPECT_DOUBLE_EQ(end->east, 10);
  // The first segment along a meridian, where the share is taken from the north.
  const auto upright = SegmentIntersection({0, 4}, {10, 4}, {5, 0}, {5, 8});
  ASSERT_TRUE(upright.has_value());
  EXPECT_DOUBLE_EQ(upright->north, 5);
  EXPECT_DOUBLE_EQ(upright->east, 4);
}

TEST(SegmentIntersection, GivesNothingForParallelsAndMisses) {
  EXPECT_FALSE(SegmentIntersection({0, 0}, {10, 10}, {1, 0}, {11, 10}).has_value());
  EXPECT_FALSE(SegmentIntersection({0, 0}, {10, 0}, {5, 0}, {20, 0}).has_value());
  EXPECT_FALSE(SegmentIntersection({0, 0}, {10, 10}, {0, 10}, {4, 6}).has_value());
  EXPECT_FALSE(SegmentIntersection({0, 0}, {4, 4}, {0, 10}, {10, 0}).has_value());
  EXPECT_FALSE(SegmentIntersection({1, 1}, {1, 1}, {0, 0}, {2, 2}).has_value());
}

TEST(VerticesInside, KeepsTheOrderOfTheFirstRing) {
  PointBag bag;
  const Poly a = bag.Ring("30:30 200:20 20:20 5:5 -5:5");
  const Poly b = bag.Ring("0:0 0:100 100:100 100:0");
  EXPECT_EQ(TextOf(VerticesInside(a, b)), "30:30 20:20 5:5");
}

TEST(EdgeCrossings, AreNewestFirst) {
  PointBag bag;
  ScratchPoints scratch;
  const Poly ring = bag.Ring("0:0 0:100 100:100 100:0");
  // The eastern side is the second edge, the western one the closing edge.
  const Poly crossings = EdgeCrossings(scratch, ring, {50, -10}, {50, 110});
  EXPECT_EQ(TextOf(crossings), "50:0 50:100");
  ASSERT_EQ(scratch.store.size(), 2U);
  EXPECT_EQ(scratch.store.front().flags, PointScratch);
  EXPECT_EQ(scratch.store.front().map, nullptr);
  EXPECT_TRUE(scratch.store.front().name.empty());
}

TEST(EdgeCrossings, OfASegmentOfNoLengthOrATooSmallRingAreNone) {
  PointBag bag;
  ScratchPoints scratch;
  EXPECT_TRUE(EdgeCrossings(scratch, bag.Ring("0:0 0:9 9:9"), {0, 3}, {0, 3}).empty());
  EXPECT_TRUE(EdgeCrossings(scratch, bag.Ring("0:0"), {-1, -1}, {1, 1}).empty());
  EXPECT_TRUE(EdgeCrossings(scratch, {}, {-1, -1}, {1, 1}).empty());
  EXPECT_TRUE(scratch.store.empty());
}

TEST(IntersectPolygons, OfTwoSquaresIsTheirOverlap) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const Poly a = bag.Ring("0:0 0:100 100:100 100:0");
  const Poly b = bag.Ring("40:40 40:200 200:200 200:40");
  const Poly both = IntersectPolygons(scratch, a, b, 0, 0, messages);
  EXPECT_EQ(both.size(), 4U);
  EXPECT_NEAR(PolygonArea(both), 3600, 1e-6);
  EXPECT_EQ(scratch.store.size(), 2U) << "only crossings that are part of the ring are made";
  EXPECT_TRUE(messages.Entries().empty());
}

TEST(IntersectPolygons, StartsFromTheLongerListAndInsertsTheOther) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const Poly inner = bag.Ring("20:20 20:60 60:60");
  const Poly outer = bag.Ring("0:0 0:100 100:100 100:0");
  EXPECT_EQ(IntersectPolygons(scratch, outer, inner, 0, 0, messages), inner);
  EXPECT_EQ(IntersectPolygons(scratch, inner, outer, 0, 0, messages), inner);
}

TEST(IntersectPolygons, BeginsWithTheFirstRingWhereBothGiveAlike) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const Poly a = bag.Ring("0:0 0:100 100:100 100:0");
  const Poly b = bag.Ring("50:50 50:150 150:150 150:50");
  EXPECT_EQ(IntersectPolygons(scratch, a, b, 0, 0, messages).front(), a[2]);
  EXPECT_EQ(IntersectPolygons(scratch, b, a, 0, 0, messages).front(), b[0]);
}

TEST(IntersectPolygons, LeavesTheVerticesOfTheRingsAsTheyAre) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const Poly a = bag.Ring("0:0 0:100 100:100 100:0");
  a[2]->geo = {7, 8, 900};
  IntersectPolygons(scratch, a, bag.Ring("50:50 50:150 150:150 150:50"), 0, 0, messages);
  EXPECT_EQ(a[2]->geo.lat, 7);
  EXPECT_EQ(a[2]->geo.altitude, 900);
}

TEST(IntersectPolygons, OfRingsApartOrEmptyIsNone) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const Poly a = bag.Ring("0:0 0:100 100:100 100:0");
  const Poly far = bag.Ring("0:200 0:300 100:300 100:200");
  EXPECT_TRUE(IntersectPolygons(scratch, a, far, 0, 0, messages).empty());
  EXPECT_TRUE(IntersectPolygons(scratch, a, {}, 0, 0, messages).empty());
  EXPECT_TRUE(IntersectPolygons(scratch, {}, a, 0, 0, messages).empty());
  EXPECT_TRUE(scratch.store.empty());
}

TEST(IntersectPolygons, OfACrossHasOnlyCrossings) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const Poly high = bag.Ring("0:40 0:60 100:60 100:40");
  const Poly wide = bag.Ring("40:0 40:100 60:100 60:0");
  const Poly both = IntersectPolygons(scratch, high, wide, 0, 0, messages);
  EXPECT_NEAR(PolygonArea(both), 400, 1e-6);
  EXPECT_EQ(scratch.store.size(), 4U);
}

TEST(IntersectPolygons, AcceptsAClosedTrailThatRepeatsItsFirstPoint) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const Poly hull = bag.Ring("40:40 40:200 200:200 200:40");
  Poly trail = bag.Ring("0:0 0:100 100:100 100:0");
  trail.push_back(trail.front());
  EXPECT_NEAR(PolygonArea(IntersectPolygons(scratch, hull, trail, 0, 0, messages)), 3600, 1e-6);
}

TEST(IntersectPolygons, GivesTheCrossingsTheirPlaceOnTheEarth) {
  PointBag bag;
  ScratchPoints scratch;
  RecordedMessages messages;
  const double lat0 = 1.5;
  const double lon0 = 30.25;
  const Poly a = {bag.AtDegrees(1.49, 30.24), bag.AtDegrees(1.49, 30.26),
                  bag.AtDegrees(1.51, 30.26), bag.AtDegrees(1.51, 30.24)};
  const Poly b = {bag.AtDegrees(1.5, 30.25), bag.AtDegrees(1.5, 30.29), bag.AtDegrees(1.54, 30.29),
                  bag.AtDegrees(1.54, 30.25)};
  ProjectPoints(a, lon0, lat0);
  ProjectPoints(b, lon0, lat0);
  const Poly both = IntersectPolygons(scratch, a, b, lon0, lat0, messages);
  ASSERT_EQ(both.size(), 4U);
  ASSERT_EQ(scratch.store.size(), 2U);
  for (Point& crossing : scratch.store) {
    const Meters place = crossing.projected;
    ProjectPoints(Poly{&crossing}, lon0, lat0);
    EXPECT_NEAR(crossing.projected.north, place.north, 1e-6);
    EXPECT_NEAR(crossing.projected.east, place.east, 1e-6);
    EXPECT_GT(crossing.geo.lat, 1.4999);
    EXPECT_GT(crossing.geo.lon, 30.2499);
  }
}

TEST(IntersectPolygons, AgreesWithClippingOnConvexRingsToAMetre) {
  for (std::uint64_t seed = 1; seed <= 500; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    PointBag bag;
    ScratchPoints scratch;
    RecordedMessages messages;
    const Poly a = Oval(bag, dice, 0, 0, 5000);
    const Poly b = Oval(bag, dice, dice.Between(-6000, 6000), dice.Between(-6000, 6000),
                        dice.Between(500, 5000));
    const Corners expected = ClipConvex(CornersOf(a), CornersOf(b));
    const Poly both = IntersectPolygons(scratch, a, b, 0, 0, messages);
    const double grain = PerimeterOf(expected) + 10;
    EXPECT_NEAR(PolygonArea(both), AreaOf(expected), grain);
    EXPECT_NEAR(PolygonArea(IntersectPolygons(scratch, b, a, 0, 0, messages)), AreaOf(expected),
                grain);
    EXPECT_TRUE(messages.Entries().empty());
  }
}

TEST(OffsetPolygon, MovesVerticesRadiallyFromTheCenterOfTheBounds) {
  PointBag bag;
  ScratchPoints scratch;
  const Poly ring = bag.Ring("-300:-400 -300:400 300:400 300:-400");
  const Poly outer = OffsetPolygon(scratch, ring, 50);
  ASSERT_EQ(outer.size(), 4U);
  EXPECT_EQ(TextOf(outer), "-330:-440 -330:440 330:440 330:-440");
  EXPECT_EQ(TextOf(ring), "-300:-400 -300:400 300:400 300:-400") << "the ring stays as it was";
  EXPECT_EQ(outer[0]->flags, PointScratch);
  ProjectAboutCentre(outer);
  EXPECT_NEAR(outer[2]->projected.north, 330, 1e-6);
  EXPECT_NEAR(outer[2]->projected.east, 440, 1e-6);
  const Poly inner = OffsetPolygon(scratch, ring, -50);
  EXPECT_EQ(TextOf(inner), "-270:-360 -270:360 270:360 270:-360");
}

TEST(OffsetPolygon, PlacesItsVerticesFarFromTheOriginToo) {
  PointBag bag;
  ScratchPoints scratch;
  const Poly ring = {bag.AtDegrees(51, 7), bag.AtDegrees(51.02, 7), bag.AtDegrees(51.01, 7.03)};
  const Poly outer = OffsetPolygon(scratch, ring, 100);
  ASSERT_EQ(outer.size(), 3U);
  for (size_t i = 0; i < ring.size(); ++i) {
    EXPECT_NEAR(GroundDistance(ring[i]->geo, outer[i]->geo), 100, 0.5);
  }
}

TEST(OffsetPolygon, FailsWhenAVertexWouldPassTheCenter) {
  PointBag bag;
  ScratchPoints scratch;
  const Poly ring = bag.Ring("-30:-40 -30:40 30:40 30:-40");
  EXPECT_FALSE(OffsetPolygon(scratch, ring, -49).empty());
  scratch.store.clear();
  EXPECT_TRUE(OffsetPolygon(scratch, ring, -51).empty());
  EXPECT_TRUE(scratch.store.empty()) << "nothing is made by a failure";
}

TEST(OffsetPolygon, FailsForAVertexAtTheCenterAndForNone) {
  PointBag bag;
  ScratchPoints scratch;
  EXPECT_TRUE(OffsetPolygon(scratch, bag.Ring("-10:-10 0:0 10:10"), 5).empty());
  EXPECT_TRUE(OffsetPolygon(scratch, bag.Ring("7:7"), 5).empty());
  EXPECT_TRUE(OffsetPolygon(scratch, {}, 5).empty());
}

TEST(RingRunsClockwise, LooksToTheRightOfTheFirstEdge) {
  PointBag bag;
  Poly ring = bag.Ring("0:0 1000:0 1000:1000 0:1000");
  EXPECT_TRUE(RingRunsClockwise(ring)) << "north, then east";
  std::reverse(ring.begin(), ring.end());
  EXPECT_FALSE(RingRunsClockwise(ring));
  EXPECT_FALSE(RingRunsClockwise(bag.Ring("0:0")));
  EXPECT_FALSE(RingRunsClockwise({}));
}

TEST(RingRunsClockwise, AnswersForEveryFirstEdge) {
  PointBag bag;
  Poly ring = bag.Ring("0:0 1000:200 1500:1700 800:2500 -700:1200");
  for (size_t i = 0; i < ring.size(); ++i) {
    EXPECT_TRUE(RingRunsClockwise(ring)) << i;
    std::rotate(ring.begin(), ring.begin() + 1, ring.end());
  }
}

TEST(RingRunsClockwise, LooksATwentiethOfTheEdgeAway) {
  PointBag bag;
  // The place is 50 m away from an edge of 1000 m: within 60 m of width, and beyond 40 m.
  EXPECT_TRUE(RingRunsClockwise(bag.Ring("0:0 1000:0 1000:60 0:60")));
  EXPECT_FALSE(RingRunsClockwise(bag.Ring("0:0 1000:0 1000:40 0:40")));
}

TEST(RingRunsClockwise, LeavesTheLocalPlane) {
  PointBag bag;
  const Poly ring = {bag.AtDegrees(2, 30), bag.AtDegrees(2.01, 30), bag.AtDegrees(2.01, 30.03)};
  RingRunsClockwise(ring);
  EXPECT_DOUBLE_EQ(ring[0]->projected.north, 2 * 111120.0);
  EXPECT_NEAR(ring[0]->projected.east, -0.01 * 111120 * std::cos(2 * RadiansPerDegree), 1e-6);
}

}  // namespace
}  // namespace orvane
