#include "geometry/convex_hull.h"

#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "rings.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using test::AreaOf;
using test::Corners;
using test::CornersOf;
using test::PerimeterOf;
using test::PointBag;
using test::SortedHull;
using test::TextOf;

/// Grows a ring by the points that lie outside it, as a hull does.
void Grow(Poly& ring, const Poly& points, Messages& messages) {
  for (Point* point : points) {
    const Meters& place = point->projected;
    if (!PointInPolygon(place.east, place.north, ring)) PolyAddPoint(ring, *point, messages);
  }
}

/// The points that reach furthest west, south, east and north, each once.
Poly ExtremesOf(const Poly& points) {
  const auto further = [&](auto comes) {
    return *std::min_element(points.begin(), points.end(), [&](const Point* a, const Point* b) {
      return comes(a->projected, b->projected);
    });
  };
  Poly ring;
  for (Point* point : {further([](const Meters&a, const Meters&b) { return a.east < b.east; }),
                       further([](const Meters&a, const Meters&b) { return a.north < b.north; }),
                       further([](const Meters&a, const Meters&b) { return a.east > b.east; }),
                       further([](const Meters&a, const Meters&b) { return a.north > b.north; })}) {
    if (std::find(ring.begin(), ring.end(), point) == ring.end()) ring.push_back(point);
  }
  return ring;
}

TEST(ConvexHull, OfNoPointsIsNothing) {
  RecordedMessages messages;
  EXPECT_FALSE(ConvexHull({}, messages).has_value());
}

TEST(ConvexHull, OfOnePlaceIsOneVertexAndHasNoArea) {
  PointBag bag;
  RecordedMessages messages;
  const Poly points = {bag.AtDegrees(1, 30), bag.AtDegrees(1, 30), bag.AtDegrees(1, 30)};
  const auto hull = ConvexHull(points, messages);
  ASSERT_TRUE(hull.has_value());
  ASSERT_EQ(hull->hull, Poly{points[0]});
  EXPECT_EQ(PolygonArea(hull->hull), 0);
  EXPECT_EQ(hull->minLat, 1);
  EXPECT_EQ(hull->maxLon, 30);
}

TEST(ConvexHull, StartsWithWestSouthEastNorth) {
  PointBag bag;
  RecordedMessages messages;
  Point* north = bag.AtDegrees(1.01, 30);
  Point* east = bag.AtDegrees(1, 30.01);
  Point* south = bag.AtDegrees(0.99, 30);
  Point* west = bag.AtDegrees(1, 29.99);
  const auto hull = ConvexHull(Poly{north, east, south, west}, messages);
  EXPECT_EQ(hull->hull, (Poly{west, south, east, north}));
  EXPECT_EQ(hull->maxLat, 1.01);
  EXPECT_EQ(hull->minLat, 0.99);
  EXPECT_EQ(hull->maxLon, 30.01);
  EXPECT_EQ(hull->minLon, 29.99);
}

TEST(ConvexHull, TakesTheFirstOfEqualExtremesAndEachPointOnce) {
  PointBag bag;
  RecordedMessages messages;
  Point* southWest = bag.AtDegrees(1, 30);
  Point* northEast = bag.AtDegrees(1.01, 30.01);
  const auto hull = ConvexHull(Poly{southWest, northEast, bag.AtDegrees(1, 30)}, messages);
  // West and south are the same point, pushed as the south; east and north as the north.
  EXPECT_EQ(hull->hull, (Poly{southWest, northEast}));
  EXPECT_TRUE(messages.Entries().empty());
}

TEST(ConvexHull, DropsInnerPoints) {
  PointBag bag;
  RecordedMessages messages;
  const Poly points = bag.Ring("0:0 500:500 0:1000 1000:1000 200:900 1000:0 700:300");
  const auto hull = ConvexHull(points, messages);
  EXPECT_NEAR(PolygonArea(hull->hull), 1e6, 1);
  EXPECT_EQ(hull->hull.size(), 4U);
}

TEST(ConvexHull, OfPointsOnAMeridianHasNoAreaAndPostsNoError) {
  for (const char* text : {"0:0 500:0 1000:0", "500:0 0:0 1000:0", "1000:0 500:0 0:0"}) {
    PointBag bag;
    RecordedMessages messages;
    const auto hull = ConvexHull(bag.Ring(text), messages);
    EXPECT_GE(hull->hull.size(), 2U) << text;
    EXPECT_LE(hull->hull.size(), 3U) << text;
    EXPECT_NEAR(PolygonArea(hull->hull), 0, 1e-6) << text;
    EXPECT_TRUE(messages.Entries().empty()) << text;
  }
}

TEST(ConvexHull, KeepsAPointOnAnEdgeThatStartsAtTheVeryCenter) {
  PointBag bag;
  RecordedMessages messages;
  // The tolerance follows from the coordinates of the edge's start, and these are 0 here.
  const auto hull = ConvexHull(bag.Ring("500:0 1000:0 0:0 250:0 750:0"), messages);
  EXPECT_EQ(hull->hull.size(), 4U);
  EXPECT_NEAR(PolygonArea(hull->hull), 0, 1e-6);
  EXPECT_TRUE(messages.Entries().empty());
}

TEST(ConvexHull, LeavesThePointsProjectedAboutTheCenterOfTheBounds) {
  PointBag bag;
  RecordedMessages messages;
  const Poly points = {bag.AtDegrees(1, 30), bag.AtDegrees(1.02, 30.04),
                       bag.AtDegrees(1.01, 30.01)};
  ConvexHull(points, messages);
  EXPECT_NEAR(points[0]->projected.north, -0.01 * 111120, 1e-6);
  EXPECT_NEAR(points[1]->projected.north, 0.01 * 111120, 1e-6);
  EXPECT_NEAR(points[2]->projected.north, 0, 1e-6);
}

TEST(ConvexHull, AgreesWithASortedHullToAMetreOnRandomPoints) {
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    PointBag bag;
    RecordedMessages messages;
    Poly points;
    const int count = dice.Int(3, 121);
    const double extent = dice.Between(50, 20000);
    for (int i = 0; i < count; ++i) {
      points.push_back(bag.At(dice.Between(-extent, extent), dice.Between(-extent, extent)));
    }
    const auto hull = ConvexHull(points, messages);
    ASSERT_TRUE(hull.has_value());
    const Corners expected = SortedHull(CornersOf(points));
    EXPECT_NEAR(PolygonArea(hull->hull), AreaOf(expected), PerimeterOf(expected));
    EXPECT_TRUE(messages.Entries().empty());
  }
}

TEST(ConvexHull, AgreesWithASortedHullOnDegenerateSets) {
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    PointBag bag;
    RecordedMessages messages;
    Poly points;
    // Few places on a coarse raster: doubles, and many points on one line.
    const int size = dice.Int(1, 5);
    const int count = dice.Int(2, 41);
    for (int i = 0; i < count; ++i) {
      points.push_back(bag.At(100.0 * dice.Int(0, size + 1), 100.0 * dice.Int(0, size + 1)));
    }
    const auto hull = ConvexHull(points, messages);
    const Corners expected = SortedHull(CornersOf(points));
    EXPECT_NEAR(PolygonArea(hull->hull), AreaOf(expected), PerimeterOf(expected) + 1);
  }
}

TEST(ConvexHull, IsUnmovedByFurtherInnerPoints) {
  Dice dice(7);
  PointBag bag;
  RecordedMessages messages;
  Poly points = bag.Ring("0:0 -3000:4000 0:8000 6000:7000 8000:1000");
  const Poly hull = ConvexHull(points, messages)->hull;
  for (int i = 0; i < 1000; ++i) {
    points.push_back(bag.At(dice.Between(1000, 5000), dice.Between(1500, 6000)));
  }
  EXPECT_EQ(ConvexHull(points, messages)->hull, hull);
}

TEST(ConvexHull, TakesTenThousandPointsOnACircleInTime) {
  PointBag bag;
  RecordedMessages messages;
  Poly points;
  Dice dice(3);
  for (int i = 0; i < 10000; ++i) {
    const double angle = dice.Between(0, 2 * Pi);
    points.push_back(bag.At(50000 * std::cos(angle), 50000 * std::sin(angle)));
  }
  const auto start = std::chrono::steady_clock::now();
  const auto hull = ConvexHull(points, messages);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  RecordProperty("seconds", std::to_string(taken.count()));
  EXPECT_NEAR(PolygonArea(hull->hull) / (Pi * 2.5e9), 1, 1e-4);
  EXPECT_LT(taken.count(), 60) << "quadratic in the hull, but no worse";
}

TEST(PolyAddPoint, KeepsTheRingForAPointOnAnEdge) {
  PointBag bag;
  RecordedMessages messages;
  Poly ring = bag.Ring("-500:-500 -500:500 500:500 500:-500");
  const Poly before = ring;
  PolyAddPoint(ring, *bag.At(-500, 0), messages);
  EXPECT_EQ(ring, before);
  // Within the tolerance: a billionth of the coordinates is held against the squared distance.
  PolyAddPoint(ring, *bag.At(500.0009, 0), messages);
  EXPECT_EQ(ring, before);
  PolyAddPoint(ring, *bag.At(500.0011, 0), messages);
  EXPECT_EQ(ring.size(), 5U);
}

TEST(PolyAddPoint, ToleratesMoreFarFromTheOrigin) {
  PointBag bag;
  RecordedMessages messages;
  Poly ring = bag.Ring("9000000:0 9000000:1000 9001000:1000 9001000:0");
  PolyAddPoint(ring, *bag.At(8999999.95, 500), messages);
  EXPECT_EQ(ring.size(), 4U);
}

TEST(PolyAddPoint, InsertsAfterTheStartOfTheNearestEdge) {
  PointBag bag;
  RecordedMessages messages;
  Poly ring = bag.Ring("0:0 0:1000 1000:1000 1000:0");
  PolyAddPoint(ring, *bag.At(500, 1200), messages);
  EXPECT_EQ(TextOf(ring), "0:0 0:1000 500:1200 1000:1000 1000:0");
  // The closing edge: the new vertex becomes the last.
  PolyAddPoint(ring, *bag.At(500, -200), messages);
  EXPECT_EQ(TextOf(ring), "0:0 0:1000 500:1200 1000:1000 1000:0 500:-200");
}

TEST(PolyAddPoint, PutsAThirdVertexBetweenTheTwoOfARing) {
  PointBag bag;
  RecordedMessages messages;
  // Both edges of a ring of two tie. The way from the head to the new vertex meets the edge that
  // leads back to the head, so that one counts, and the vertex goes after the head.
  Poly ring = bag.Ring("0:0 1000:1000");
  PolyAddPoint(ring, *bag.At(1000, 0), messages);
  EXPECT_EQ(TextOf(ring), "0:0 1000:0 1000:1000");
  EXPECT_TRUE(messages.Entries().empty());
}

TEST(PolyAddPoint, ReplacesAVertexThatIsThenInside) {
  PointBag bag;
  RecordedMessages messages;
  Poly ring = bag.Ring("0:0 0:1000 1000:1000 1000:0");
  PolyAddPoint(ring, *bag.At(1500, 1500), messages);
  EXPECT_EQ(TextOf(ring), "0:0 0:1000 1500:1500 1000:0");
}

TEST(PolyAddPoint, RemovesVerticesInBothDirections) {
  PointBag bag;
  RecordedMessages messages;
  // An arc towards the east; the new point far to the east covers all but the western corners.
  Poly ring = bag.Ring("0:0 10:300 200:500 500:600 800:500 990:300 1000:0");
  PolyAddPoint(ring, *bag.At(500, 50000), messages);
  EXPECT_EQ(TextOf(ring), "0:0 500:50000 1000:0");
}

TEST(PolyAddPoint, RemovesAcrossTheHeadOfTheListAndKeepsTwo) {
  PointBag bag;
  RecordedMessages messages;
  Poly ring = bag.Ring("500:600 800:500 990:300 1000:0 0:0 10:300 200:500");
  PolyAddPoint(ring, *bag.At(500, 50000), messages);
  EXPECT_EQ(ring.size(), 3U);
  EXPECT_NEAR(PolygonArea(ring), 500 * 50000.0, 1);
}

TEST(PolyAddPoint, NeverLeavesFewerThanTwoVertices) {
  for (std::uint64_t seed = 1; seed <= 500; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    PointBag bag;
    RecordedMessages messages;
    Poly points;
    for (int i = 0; i < 12; ++i) {
      points.push_back(bag.At(dice.Between(-2, 2), dice.Between(-2, 2)));
    }
    // Below a metre nearly every test of a place is rough; the ring must still stand.
    Poly ring = {points[0], points[1]};
    Grow(ring, points, messages);
    EXPECT_GE(ring.size(), 2U);
  }
}

TEST(PolyAddPoint, GrowsTheExactHullOfPlacesOnWholeMetres) {
  for (std::uint64_t seed = 1; seed <= 500; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    PointBag bag;
    RecordedMessages messages;
    Poly points;
    const int count = dice.Int(3, 61);
    const int extent = dice.Int(3, 5001);
    for (int i = 0; i < count; ++i) {
      points.push_back(bag.At(dice.Int(-extent, extent + 1), dice.Int(-extent, extent + 1)));
    }
    Poly ring = ExtremesOf(points);
    if (ring.size() < 2) continue;
    Grow(ring, points, messages);
    EXPECT_NEAR(PolygonArea(ring), AreaOf(SortedHull(CornersOf(points))),
                1e-9 * extent * extent + 1e-6);
  }
}

TEST(PolyAddPoint, PostsAnErrorOnceForEdgesThatTieWithoutBeingNeighbors) {
  PointBag bag;
  RecordedMessages messages;
  // The middle of a square whose southern side has a vertex: five edges are equally near.
  Poly ring = bag.Ring("0:0 0:500 0:1000 1000:1000 1000:0");
  PolyAddPoint(ring, *bag.At(500, 500), messages);
  ASSERT_EQ(messages.Entries().size(), 1U);
  EXPECT_EQ(messages.Entries()[0].severity, Severity::InternalError);
  EXPECT_EQ(messages.Entries()[0].text, "Poly AddPoint failure");
  EXPECT_GE(ring.size(), 2U);
}

TEST(PolyAddPoint, PostsNoErrorOnARingThatTouchesItself) {
  PointBag bag;
  RecordedMessages messages;
  // Four edges meet at 0:0, and not all of them are neighbours.
  Poly ring = bag.Ring("-500:0 0:0 500:0 500:500 0:0 -500:500");
  const Poly before = ring;
  PolyAddPoint(ring, *bag.At(0, 0), messages);
  EXPECT_TRUE(messages.Entries().empty());
  EXPECT_EQ(ring, before);
}

TEST(PolyAddPoint, AcceptsAPlaceNearestToAVertexWithoutAnError) {
  // Each corner of a square in turn, so that the tie is met at the head and at the closing edge.
  for (const char* text : {"-900:-900", "-900:1900", "1900:1900", "1900:-900"}) {
    PointBag bag;
    RecordedMessages messages;
    Poly ring = bag.Ring("0:0 0:1000 1000:1000 1000:0");
    PolyAddPoint(ring, *bag.Ring(text)[0], messages);
    EXPECT_TRUE(messages.Entries().empty()) << text;
    EXPECT_EQ(ring.size(), 4U) << text;
    EXPECT_NEAR(PolygonArea(ring), 1.9e6, 1) << text;
  }
}

}  // namespace
}  // namespace orvane
