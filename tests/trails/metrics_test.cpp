#include "trails/metrics.h"

#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "trail_maps.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

using test::OffsetOf;
using test::TrailMap;

constexpr double Unknown = -9999;

/// A closed square of 100 m whose altitudes are on altitude = 500 + north / 10 + east / 5.
Trail& AddSlopingPlot(TrailMap& data) {
  Point& corner = data.At("a", 0, 0, 500);
  return data.AddTrail("Plot", {&corner, &data.At("b", 0, 100, 520), &data.At("c", 100, 100, 530),
                                &data.At("d", 100, 0, 510), &corner});
}

TEST(TrailPathLength, SumsThePlanLengths) {
  TrailMap data;
  Trail& trail = data.AddTrail(
      "Pde", {&data.At("a", 0, 0, 0), &data.At("b", 30, 40, 700), &data.At("c", 30, 100)});
  EXPECT_NEAR(TrailPathLength(trail.points), 110, 1e-3);
  EXPECT_NEAR(TrailPathLength(PointSpan(trail.points).subspan(1)), 60, 1e-3);
  EXPECT_EQ(TrailPathLength({}), 0);
  EXPECT_EQ(TrailPathLength(PointSpan(trail.points).first(1)), 0);
}

TEST(TrailPathLength, LeavesTheLocalPlane) {
  TrailMap data;
  Trail& trail = data.AddTrail("Pde", {&data.At("a", 0, 0), &data.At("b", 0, 100)});
  TrailPathLength(trail.points);
  EXPECT_NEAR(trail.points[0]->projected.east, -50, 1e-6);
}

TEST(TrailGroundLength, TakesTheAltitudesOfThePoints) {
  TrailMap data;
  Trail& trail = data.AddTrail(
      "Pde", {&data.At("a", 0, 0, 100), &data.At("b", 20, 30, 160), &data.At("c", 20, 30, 150)});
  EXPECT_NEAR(TrailGroundLength(trail.points), 80, 1e-3);
  trail.points[2]->geo.altitude = NoAltitude;
  EXPECT_EQ(TrailGroundLength(trail.points), Unknown);
  EXPECT_EQ(TrailGroundLength({}), 0);
}

TEST(AltitudeRange, LeavesOutPointsWithoutAltitude) {
  TrailMap data;
  Trail& trail = data.AddTrail("Pde", {&data.At("a", 0, 0), &data.At("b", 0, 0, -3),
                                       &data.At("c", 0, 0, 12.5), &data.At("d", 0, 0, 0)});
  const AltitudeSpan range = AltitudeRange(trail.points);
  EXPECT_EQ(range.min, -3);
  EXPECT_EQ(range.max, 12.5);
  const AltitudeSpan none = AltitudeRange(PointSpan(trail.points).first(1));
  EXPECT_EQ(none.min, Unknown);
  EXPECT_EQ(none.max, Unknown);
}

TEST(FlatTrailArea, LeavesOnlyTheLongitudeCentered) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  for (Point* point : trail.points) point->geo.lat = std::fmod(point->geo.lat, 1) + 2;
  EXPECT_NEAR(FlatTrailArea(trail), 10000 * std::cos(2 * RadiansPerDegree), 1);
  EXPECT_NEAR(trail.points[0]->projected.north, 2 * 111120.0, 1e-6);
  EXPECT_NEAR(trail.points[2]->projected.north, 2 * 111120.0 + 100, 1e-6);
  EXPECT_LT(trail.points[0]->projected.east, 0);
}

TEST(FitPlane, IsExactForASquare) {
  TrailMap data;
  const Trail& trail = AddSlopingPlot(data);
  const auto plane = FitPlane(trail.points);
  ASSERT_TRUE(plane.has_value());
  EXPECT_NEAR((*plane)[0], 0.1, 1e-6);
  EXPECT_NEAR((*plane)[1], 0.2, 1e-6);
  EXPECT_NEAR((*plane)[2], 515, 1e-6);
}

TEST(FitPlane, AddsTheSquaredSkew) {
  TrailMap data;
  Point& first = data.At("a", 0, 0, 0);
  const Trail& trail =
      data.AddTrail("Plot", {&first, &data.At("b", 30, 0, 3), &data.At("c", 30, 30, 9), &first});
  const auto plane = FitPlane(trail.points);
  ASSERT_TRUE(plane.has_value());
  // The plane through the three points has 0.1 and 0.2. The sums over (north, east, altitude):
  // east spread 1800, north spread 1800, skew 900, rise 360 and 450; 1800 * 1800 + 900 * 900.
  EXPECT_NEAR((*plane)[0], 360 * 1800 / 4050000.0, 1e-6);
  EXPECT_NEAR((*plane)[1], 450 * 1800 / 4050000.0, 1e-6);
  EXPECT_NEAR((*plane)[2], 4, 1e-6);
}

TEST(FitPlane, TakesTwoPointsOnASlant) {
  TrailMap data;
  Point& first = data.At("a", 0, 0, 5);
  const auto plane = FitPlane(Poly{&first, &data.At("b", 30, 40, 10), &first});
  ASSERT_TRUE(plane.has_value());
  // East spread 1600, north spread 900, skew 1200, rise 150 and 200.
  EXPECT_NEAR((*plane)[0], 150 * 1600 / 2880000.0, 1e-6);
  EXPECT_NEAR((*plane)[1], 200 * 900 / 2880000.0, 1e-6);
}

TEST(FitPlane, IsExactlyLevelForALevelPlot) {
  TrailMap data;
  // Altitudes and sides that no sum holds exactly.
  Point& a = data.At("a", 0, 0, 512.7F);
  const auto plane =
      FitPlane(Poly{&a, &data.At("b", 0, 101.3, 512.7F), &data.At("c", 77.1, 123.9, 512.7F),
                    &data.At("d", 99.9, 3.3, 512.7F), &a});
  ASSERT_TRUE(plane.has_value());
  EXPECT_EQ((*plane)[0], 0);
  EXPECT_EQ((*plane)[1], 0);
  EXPECT_NEAR((*plane)[2], 512.7, 1e-4);
}

TEST(FitPlane, IsExactlyLevelWhereThePlotIsALine) {
  // What rounding leaves of the extent may have either sign; the rise must not take it over.
  int fitted = 0;
  for (std::uint32_t seed = 1; seed <= 2000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 engine(seed);
    const auto number = [&] { return static_cast<double>(engine() % 1000000) / 999983; };
    TrailMap data;
    const double lon = 180 * number();
    Poly points;
    for (int i = 0; i < 7; ++i) {
      points.push_back(&data.At("p", 0, 0, 512.7F));
      points.back()->geo.lat = number() / 1000;
      points.back()->geo.lon = lon;
    }
    const auto plane = FitPlane(points);
    if (!plane) continue;
    ++fitted;
    EXPECT_EQ(std::atan2((*plane)[1], (*plane)[0]), 0);
    EXPECT_FALSE(std::signbit((*plane)[0]) || std::signbit((*plane)[1]));
  }
  EXPECT_GT(fitted, 0);
}

TEST(FitPlane, FailsForPointsTooFarOutForItsSums) {
  TrailMap data;
  Point& a = data.At("a", 0, 0, 5);
  Point& b = data.At("b", 0, 100, 6);
  Point& c = data.At("c", 100, 0, 7);
  ASSERT_TRUE(FitPlane(Poly{&a, &b, &c, &a}).has_value());
  b.geo.lon = 1e200;
  EXPECT_FALSE(FitPlane(Poly{&a, &b, &c, &a}).has_value());
}

TEST(FitPlane, StopsAtTheLinkThatRepeatsTheFirstPoint) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  trail.points.push_back(&data.At("beyond", 900, 900));
  EXPECT_TRUE(FitPlane(trail.points).has_value()) << "what lies beyond needs no altitude";
}

TEST(FitPlane, FailsWithoutAltitudesPointsOrAnExtent) {
  TrailMap data;
  Point& a = data.At("a", 0, 0, 5);
  EXPECT_FALSE(FitPlane({}).has_value());
  EXPECT_FALSE(FitPlane(Poly{&a}).has_value());
  EXPECT_FALSE(FitPlane(Poly{&a, &a}).has_value());
  EXPECT_FALSE(FitPlane(Poly{&a, &data.At("b", 9, 9), &a}).has_value());
  EXPECT_FALSE(FitPlane(Poly{&a, &data.At("c", 0, 0, 6), &a}).has_value());
}

TEST(TiltPoints, StretchesAcrossTheAspect) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  TiltPoints(trail.points, 0, {0, 0.75, 0});
  EXPECT_NEAR(PolygonArea(trail.points), 12500, 0.1);
  // With the aspect of the plane itself nothing is stretched.
  TiltPoints(trail.points, Pi / 2, {0, 0.75, 0});
  EXPECT_NEAR(PolygonArea(trail.points), 10000, 0.1);
  TiltPoints({}, 0, {0, 0, 0});
}

TEST(TiltPoints, TurnsEachPointOnce) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  TiltPoints(trail.points, Pi / 2, {0, 0, 0});
  // The mean counts the closing point twice: 40 m north and 40 m east of the first corner.
  EXPECT_NEAR(trail.points[0]->projected.east, -40, 1e-3) << "east' = north";
  EXPECT_NEAR(trail.points[0]->projected.north, 40, 1e-3) << "north' = -east";
}

TEST(MeasureTrail, MeasuresAClosedTrail) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  MeasureTrail(trail);
  EXPECT_EQ(trail.flags & (TrailClosed | TrailMeasured), TrailClosed | TrailMeasured);
  EXPECT_NEAR(trail.area, 10000.5, 0.01);
  EXPECT_NEAR(trail.slantedArea, trail.area, 0.01) << "alike, whatever the slope";
  EXPECT_NEAR(trail.plane[0], 0.1, 1e-6);
  EXPECT_NEAR(trail.aspect, std::atan2(0.2, 0.1), 1e-5);
  EXPECT_NEAR(trail.slope, std::atan(std::sqrt(0.05)), 1e-6);
  EXPECT_EQ(trail.minAltitude, 500);
  EXPECT_EQ(trail.maxAltitude, 530);
  EXPECT_NEAR(trail.groundLength, 2 * std::hypot(100, 20) + 2 * std::hypot(100, 10), 1e-3);
}

TEST(MeasureTrail, LeavesThePlaneOpenIfAnAltitudeIsMissing) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  trail.points[2]->geo.altitude = NoAltitude;
  MeasureTrail(trail);
  EXPECT_EQ(trail.flags & (TrailClosed | TrailMeasured), std::uint32_t{TrailClosed});
  EXPECT_NEAR(trail.area, 10000.5, 0.01);
  EXPECT_EQ(trail.groundLength, Unknown);
  EXPECT_EQ(trail.maxAltitude, 520);
}

TEST(MeasureTrail, GivesAnOpenTrailNoArea) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  trail.points.pop_back();
  MeasureTrail(trail);
  EXPECT_EQ(trail.flags & (TrailClosed | TrailMeasured), 0U);
  EXPECT_EQ(trail.area, 0);
}

TEST(MeasureTrail, CountsATrailOfOnePointAsClosed) {
  TrailMap data;
  Trail& trail = data.AddTrail("Pde", {&data.At("a", 0, 0, 5)});
  MeasureTrail(trail);
  EXPECT_EQ(trail.flags & (TrailClosed | TrailMeasured), std::uint32_t{TrailClosed});
  EXPECT_EQ(trail.area, 0.5);
}

TEST(MeasureTrail, AcceptsATrailWithoutPoints) {
  TrailMap data;
  Trail& trail = data.AddTrail("Pde", {});
  MeasureTrail(trail);
  EXPECT_EQ(trail.groundLength, 0);
  EXPECT_EQ(trail.minAltitude, Unknown);
  EXPECT_EQ(trail.flags, 0U);
}

TEST(MeasureTrail, ClearsNeitherFlag) {
  TrailMap data;
  Trail& trail = AddSlopingPlot(data);
  MeasureTrail(trail);
  trail.points.pop_back();
  trail.points[0]->geo.altitude = NoAltitude;
  MeasureTrail(trail);
  EXPECT_EQ(trail.flags & (TrailClosed | TrailMeasured), TrailClosed | TrailMeasured);
}

TEST(PathDistanceTo, AddsUpTheLegs) {
  TrailMap data;
  const Trail& trail =
      data.AddTrail("Pde", {&data.At("a", 0, 0), &data.At("b", 30, 40), &data.At("c", 30, 100)});
  EXPECT_EQ(PathDistanceTo(trail.points, *trail.points[0]), 0);
  EXPECT_NEAR(PathDistanceTo(trail.points, *trail.points[1]), 50, 1e-3);
  EXPECT_NEAR(PathDistanceTo(trail.points, *trail.points[2]), 110, 1e-3);
  EXPECT_EQ(PathDistanceTo(PointSpan(trail.points).subspan(1), *trail.points[0]), -1);
  EXPECT_EQ(PathDistanceTo({}, *trail.points[0]), -1);
}

TEST(PathDistanceTo, SkipsPointsThatAreNotPlaced) {
  TrailMap data;
  Point& lost = data.At("lost", 5000, 5000);
  lost.flags = 0;
  const Trail& trail = data.AddTrail(
      "Pde", {&data.At("a", 0, 0), &lost, &data.At("c", 0, 100), &lost, &data.At("e", 0, 150)});
  EXPECT_NEAR(PathDistanceTo(trail.points, *trail.points[2]), 100, 1e-3);
  EXPECT_NEAR(PathDistanceTo(trail.points, *trail.points[4]), 150, 1e-3);
}

TEST(PathDistanceTo, EndsAtATargetThatIsNotPlaced) {
  TrailMap data;
  Point& a = data.At("a", 0, 0);
  Point& lost = data.At("lost", 0, 0);
  lost.flags = 0;
  lost.projected = {40, 0};
  const Poly points = {&a, &lost, &data.At("c", 0, 100)};
  // The placed points are centred 50 m to the east of a.
  EXPECT_NEAR(PathDistanceTo(points, lost), std::hypot(40, 50), 1e-3) << "where it is held to be";
  EXPECT_FALSE(PositionAlongPath(points, lost, 65).has_value()) << "the way ends there";
}

TEST(PositionAlongPath, FindsThePlaceOnALegOrAtItsEnd) {
  TrailMap data;
  const Trail& trail = data.AddTrail(
      "Pde", {&data.At("a", 0, 0, 10), &data.At("b", 100, 0, 20), &data.At("c", 100, 100)});
  const Point& last = *trail.points[2];
  const auto place = PositionAlongPath(trail.points, last, 25);
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, 25, 1e-3);
  EXPECT_NEAR(place->altitude, 12.5, 1e-3);
  EXPECT_NEAR(OffsetOf(*PositionAlongPath(trail.points, last, 130)).east, 30, 1e-3);
  EXPECT_FALSE(PositionAlongPath(trail.points, last, 201).has_value());
  EXPECT_FALSE(PositionAlongPath(trail.points, *trail.points[1], 101).has_value());
  EXPECT_FALSE(PositionAlongPath(trail.points, *trail.points[0], 0).has_value());
  EXPECT_FALSE(PositionAlongPath({}, last, 0).has_value());
  const double toB = PathDistanceTo(trail.points, *trail.points[1]);
  const auto atB = PositionAlongPath(trail.points, last, toB);
  ASSERT_TRUE(atB.has_value());
  EXPECT_EQ(atB->lat, trail.points[1]->geo.lat);
  EXPECT_EQ(atB->altitude, 20);
}

TEST(PositionAlongPath, LeadsBeforeTheBeginningForANegativeDistance) {
  TrailMap data;
  const Trail& trail = data.AddTrail("Pde", {&data.At("a", 0, 0), &data.At("b", 100, 0)});
  const auto place = PositionAlongPath(trail.points, *trail.points[1], -10);
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(OffsetOf(*place).north, -10, 1e-3);
  const Trail& still = data.AddTrail("Old", {&data.At("c", 5, 5), &data.At("d", 5, 5)});
  EXPECT_NEAR(OffsetOf(*PositionAlongPath(still.points, *still.points[1], -10)).north, 5, 1e-3);
}

TEST(PositionAlongPath, IsUndoneByPathDistanceTo) {
  for (std::uint32_t seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 engine(seed);
    const auto number = [&] { return static_cast<double>(engine() % 100000) / 100; };
    TrailMap data;
    std::vector<Point*> points;
    for (int i = 0; i < 12; ++i) points.push_back(&data.At("p", number(), number()));
    points[5]->flags = 0;
    const double length = PathDistanceTo(points, *points.back());
    const double distance = length * number() / 1000;
    const auto place = PositionAlongPath(points, *points.back(), distance);
    ASSERT_TRUE(place.has_value());
    // Put a point there, on whichever leg keeps the length of the way.
    Point& there = data.At("there", 0, 0);
    there.geo = *place;
    double nearest = 1e9;
    double found = -1;
    for (size_t i = 1; i < points.size(); ++i) {
      std::vector<Point*> with = points;
      with.insert(with.begin() + static_cast<std::ptrdiff_t>(i), &there);
      const double longer = PathDistanceTo(with, *points.back()) - length;
      if (std::fabs(longer) < nearest) {
        nearest = std::fabs(longer);
        found = PathDistanceTo(with, there);
      }
    }
    EXPECT_NEAR(nearest, 0, 1e-3);
    EXPECT_NEAR(found, distance, 1e-3);
  }
}

TEST(SegmentAtDistance, FindsTheLinkAndTheRest) {
  TrailMap data;
  const Trail& trail =
      data.AddTrail("Pde", {&data.At("a", 0, 0), &data.At("b", 100, 0), &data.At("c", 100, 50)});
  double rest = 0;
  EXPECT_EQ(SegmentAtDistance(trail.points, 30, &rest), 0U);
  EXPECT_NEAR(rest, 30, 1e-6);
  EXPECT_EQ(SegmentAtDistance(trail.points, 120, &rest), 1U);
  EXPECT_NEAR(rest, 20, 1e-3);
  EXPECT_EQ(SegmentAtDistance(trail.points, 170, &rest), 2U);
  EXPECT_NEAR(rest, 20, 1e-3);
  EXPECT_EQ(SegmentAtDistance(trail.points, -7, &rest), 0U);
  EXPECT_EQ(rest, -7);
  EXPECT_EQ(SegmentAtDistance(trail.points, 120, nullptr), 1U);
  EXPECT_FALSE(SegmentAtDistance({}, 1, &rest).has_value());
}

TEST(SegmentAtDistance, GivesALinkItselfToTheSegmentThatBeginsThere) {
  TrailMap data;
  const Poly points = {&data.At("a", 0, 0), &data.At("b", 100, 0)};
  double rest = -1;
  EXPECT_EQ(SegmentAtDistance(points, TrailPathLength(points), &rest), 1U);
  EXPECT_EQ(rest, 0);
}

TEST(TrailDistanceBetween, IsTheSameEitherWay) {
  TrailMap data;
  const Trail& trail = data.AddTrail("Pde", {&data.At("a", 0, 0), &data.At("b", 100, 0),
                                             &data.At("c", 100, 50), &data.At("d", 0, 50)});
  const Point& b = *trail.points[1];
  const Point& d = *trail.points[3];
  EXPECT_NEAR(TrailDistanceBetween(trail, b, d), 150, 1e-3);
  EXPECT_NEAR(TrailDistanceBetween(trail, d, b), 150, 1e-3);
  EXPECT_EQ(TrailDistanceBetween(trail, b, b), 0);
  const Point& elsewhere = data.At("x", 0, 0);
  EXPECT_EQ(TrailDistanceBetween(trail, elsewhere, elsewhere), 0);
  EXPECT_EQ(TrailDistanceBetween(trail, b, elsewhere), -1);
}

TEST(TrailPointBetween, CountsFromTheFirstPointWhicheverWayTheListRuns) {
  TrailMap data;
  const Trail& trail = data.AddTrail("Pde", {&data.At("a", 0, 0), &data.At("b", 100, 0),
                                             &data.At("c", 100, 50), &data.At("d", 0, 50)});
  const Point& b = *trail.points[1];
  const Point& d = *trail.points[3];
  const auto onward = TrailPointBetween(trail, b, d, 70);
  ASSERT_TRUE(onward.has_value());
  EXPECT_NEAR(OffsetOf(*onward).north, 80, 1e-3);
  EXPECT_NEAR(OffsetOf(*onward).east, 50, 1e-3);
  const auto backward = TrailPointBetween(trail, d, b, 70);
  ASSERT_TRUE(backward.has_value());
  EXPECT_NEAR(OffsetOf(*backward).north, 70, 1e-3);
  EXPECT_FALSE(TrailPointBetween(trail, b, d, 151).has_value());
  const Point& elsewhere = data.At("x", 0, 0);
  EXPECT_FALSE(TrailPointBetween(trail, elsewhere, elsewhere, 0).has_value());
}

}  // namespace
}  // namespace orvane
