#include "small_stack.h"
#include "survey_fixture.h"

#include <chrono>
#include <cmath>

namespace orvane {
namespace {

/// Surveys that are built in memory, large enough that a walk which recurses would not end well.
struct LargeSurveys : test::SurveyFixture {
  Map& map = MakeMap(workspace, "large.map");
  Trail& trail = map.trails.emplace_front();
  std::vector<Point*> points;

  Point& Add() {
    Point& point = MakePoint(map, "P" + std::to_string(points.size()));
    point.map = &map;
    trail.points.push_back(&point);
    points.push_back(&point);
    return point;
  }
  static void Shoot(Point& point, Point& base, double bearing, double distance) {
    Measurement reading;
    reading.flags = MeasureCompass;
    reading.base = &base;
    reading.bearing = bearing;
    reading.distance = distance;
    point.measurements.push_front(reading);
  }
  static void Fix(Point& point, double lat, double lon) {
    Measurement reading;
    reading.flags = MeasureGps;
    reading.position = {lat, lon, NoAltitude};
    point.measurements.push_front(reading);
  }
  void SolveOnSmallStack() {
    test::RunOnSmallStack([this] { SolveMap(map); });
  }
  void ExpectAllPlaced() const {
    size_t placed = 0;
    for (const Point* point : points) {
      if ((point->flags & PointPlaced) != 0 && std::isfinite(point->geo.lat)) ++placed;
    }
    EXPECT_EQ(placed, points.size());
    EXPECT_EQ(Said(), Texts{});
  }
};

constexpr size_t Many = 200000;

TEST_F(LargeSurveys, AChainBetweenTwoFixesIsSolved) {
  Fix(Add(), 0, 0);
  for (size_t i = 1; i < Many; ++i) Shoot(Add(), *points[i - 1], 180, 1);
  Fix(*points.back(), static_cast<double>(Many - 1) / MetersPerDegree, 0);
  SolveOnSmallStack();
  ExpectAllPlaced();
  EXPECT_NEAR(points[Many / 2]->geo.lat * MetersPerDegree, Many / 2, 1e-3);
}

TEST_F(LargeSurveys, ADeadEndIsWalkedOut) {
  Add();
  for (size_t i = 1; i < Many; ++i) Shoot(Add(), *points[i - 1], 180, 1);
  Fix(*points.front(), 0, 0);
  SolveOnSmallStack();
  ExpectAllPlaced();
  EXPECT_NEAR(points.back()->geo.lat * MetersPerDegree, Many - 1, 1e-2);
}

TEST_F(LargeSurveys, ATreeIsSolved) {
  Fix(Add(), 0, 0);
  for (size_t i = 1; i < Many; ++i) {
    Shoot(Add(), *points[(i - 1) / 2], static_cast<double>(i % 360), 1);
  }
  SolveOnSmallStack();
  ExpectAllPlaced();
}

TEST_F(LargeSurveys, ACombOfDeadEndsIsSolved) {
  // Every second point is a fork: a spine with a tooth at each vertebra.
  constexpr size_t count = 8000;
  Fix(Add(), 0, 0);
  Point* spine = points.front();
  for (size_t i = 1; i < count; i += 2) {
    Point& next = Add();
    Shoot(next, *spine, 180, 1);
    Shoot(Add(), next, 270, 1);
    spine = &next;
  }
  SolveOnSmallStack();
  ExpectAllPlaced();
  EXPECT_NEAR(spine->geo.lat * MetersPerDegree, count / 2, 1e-2);
  EXPECT_NEAR(points[count / 2]->geo.lon * MetersPerDegree, 1, 1e-3);
}

TEST_F(LargeSurveys, NestedRaysAreCrossed) {
  constexpr size_t count = 20000;
  Point& north = Add();
  Point& south = Add();
  Fix(north, 0.01, 0.02);
  Fix(south, -0.01, 0.03);
  // Each point sees the fix in the north, and one that gets its place later.
  for (size_t i = 0; i < count; ++i) Add();
  for (size_t i = 2; i < points.size(); ++i) {
    const bool isLast = i + 1 == points.size();
    Shoot(*points[i], isLast ? south : *points[i + 1], 100 + static_cast<double>(i % 50), 0);
    Shoot(*points[i], north, 20, 0);
  }
  SolveOnSmallStack();
  ExpectAllPlaced();
}

TEST_F(LargeSurveys, AHubWithManyShotsStaysFast) {
  constexpr size_t count = 50000;
  const auto start = std::chrono::steady_clock::now();
  Point& hub = Add();
  Fix(hub, 0, 0);
  for (size_t i = 1; i <= count; ++i) {
    const auto bearing = static_cast<double>(i % 360);
    Shoot(Add(), hub, bearing, 10);
    Shoot(hub, *points[i], bearing < 180 ? bearing + 180 : bearing - 180, 10);
  }
  SolveOnSmallStack();
  ExpectAllPlaced();
  EXPECT_EQ(hub.links, nullptr);
  EXPECT_NEAR(GroundDistance(hub.geo, points[777]->geo), 10, 1e-3);
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  EXPECT_LT(took.count(), 20);
}

}  // namespace
}  // namespace orvane
