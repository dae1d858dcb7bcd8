#include "geometry/planes.h"

#include "rings.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using test::PointBag;

TEST(ProjectPoints, ScalesEastByEachPointsOwnLatitude) {
  PointBag bag;
  const Poly points = {bag.AtDegrees(0, 31), bag.AtDegrees(60, 31)};
  ProjectPoints(points, 30, 0.5);
  EXPECT_DOUBLE_EQ(points[0]->projected.east, 111120);
  EXPECT_NEAR(points[1]->projected.east, 55560, 1e-6);
  EXPECT_DOUBLE_EQ(points[0]->projected.north, -55560);
  EXPECT_DOUBLE_EQ(points[1]->projected.north, 60 * 111120.0 - 55560);
}

TEST(ProjectPoints, DropsTheProjectedAltitude) {
  PointBag bag;
  Point* point = bag.AtDegrees(1, 2);
  point->geo.altitude = 700;
  point->projected.altitude = 700;
  ProjectPoints(Poly{point}, 0, 0);
  EXPECT_EQ(point->projected.altitude, NoAltitude);
  EXPECT_EQ(point->geo.altitude, 700);
}

TEST(ProjectPoints, WithoutReferenceRestoresTheAbsoluteForm) {
  PointBag bag;
  Point* point = bag.AtDegrees(-3.25, 36.5);
  const Meters absolute = LatLonToMeters(-3.25, 36.5);
  ProjectPoints(Poly{point}, 36, -3);
  ProjectPoints(Poly{point}, 0, 0);
  EXPECT_EQ(point->projected.north, absolute.north);
  EXPECT_EQ(point->projected.east, absolute.east);
}

TEST(PolyCentre, IsTheMiddleOfTheBoundsNotTheMean) {
  PointBag bag;
  const Poly points = {bag.AtDegrees(1, 10), bag.AtDegrees(2, 14), bag.AtDegrees(5, 11)};
  const LatLon center = PolyCentre(points);
  EXPECT_DOUBLE_EQ(center.lat, 3);
  EXPECT_DOUBLE_EQ(center.lon, 12);
}

TEST(PolyCentre, OfAnEmptyListIsTheOrigin) {
  const LatLon center = PolyCentre({});
  EXPECT_EQ(center.lat, 0);
  EXPECT_EQ(center.lon, 0);
}

TEST(ProjectAboutCentre, PutsTheBoundsAroundTheOrigin) {
  PointBag bag;
  const Poly points = {bag.AtDegrees(1, 10), bag.AtDegrees(3, 12)};
  ProjectAboutCentre(points);
  EXPECT_NEAR(points[0]->projected.north, -111120, 1e-6);
  EXPECT_NEAR(points[1]->projected.north, 111120, 1e-6);
  EXPECT_LT(points[0]->projected.east, 0);
  EXPECT_GT(points[1]->projected.east, 0);
}

TEST(LocalPlaneOfPoints, KeepsNorthAbsoluteAndCountsAPointEachTimeItIsListed) {
  PointBag bag;
  Point* a = bag.AtDegrees(0, 10);
  Point* b = bag.AtDegrees(0, 13);
  LocalPlaneOfPoints(Poly{a, b, a});
  EXPECT_DOUBLE_EQ(a->projected.east, -111120);
  EXPECT_DOUBLE_EQ(b->projected.east, 2 * 111120.0);
  b->geo.lat = 2;
  LocalPlaneOfPoints(Poly{a, b});
  EXPECT_DOUBLE_EQ(b->projected.north, 2 * 111120.0);
}

TEST(LocalPlaneOfPoints, AcceptsAnEmptyList) {
  LocalPlaneOfPoints({});
  EXPECT_EQ(MeanPlace({}).lon, 0);
}

}  // namespace
}  // namespace orvane
