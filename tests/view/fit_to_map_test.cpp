#include "view/fit_to_map.h"

#include "view/view_case.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace orvane {
namespace {

/// The pixels of some places, under the wrap that draws each nearest to the middle.
PixelRect BoundsOf(ViewCase& c, const std::vector<Point*>& points) {
  PixelRect box{LargestPixel, LargestPixel, -LargestPixel, -LargestPixel};
  for (const Point* point : points) {
    const double turn = point->geo.lon - c.view.centralLongitude;
    c.view.longitudeWrap = turn > 180 ? -360 : turn < -180 ? 360 : 0;
    const Pixel p = MapToScreen(c.view, point->geo);
    box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
           std::max(box.bottom, p.y)};
  }
  c.view.longitudeWrap = 0;
  return box;
}

TEST(FitToMap, LeavesATwentiethOfTheExtentAtEachSide) {
  ViewCase c;
  Point& a = c.AddAt("a", 0.5, 10);
  Point& b = c.AddAt("b", 0.5, 10.4);
  c.AddTrail("t", {&a, &b});
  FitToMap(c.view);
  // 400 pixels hold the extent and two twentieths of it.
  const PixelRect box = BoundsOf(c, {&a, &b});
  EXPECT_EQ(box.left, 18);
  EXPECT_EQ(box.right, 382);
  EXPECT_EQ(box.top, 150);
}

TEST(FitToMap, TheTighterDirectionGoverns) {
  ViewCase c;
  Point& a = c.Add("a", -1000, 5000);
  Point& b = c.Add("b", 1000, 5300);
  c.AddTrail("t", {&a, &b});
  FitToMap(c.view);
  const PixelRect box = BoundsOf(c, {&a, &b});
  EXPECT_EQ(box.top, 14);
  EXPECT_EQ(box.bottom, 286);
  EXPECT_EQ(box.left + box.right, 400);
}

TEST(FitToMap, KeepsARotationAndTakesItIntoAccount) {
  ViewCase c;
  Point& a = c.Add("a", -1000, 0);
  Point& b = c.Add("b", 1000, 0);
  c.AddTrail("t", {&a, &b});
  c.view.rotation = 90;
  FitToMap(c.view);
  EXPECT_EQ(c.view.rotation, 90);
  const PixelRect box = BoundsOf(c, {&a, &b});
  EXPECT_EQ(box.left, 18);
  EXPECT_EQ(box.right, 382);
  EXPECT_EQ(box.top, 150);
}

TEST(FitToMap, CountsThePointsOfTheBasis) {
  ViewCase c;
  Map& basis = MakeMap(c.workspace, "basis.map");
  c.map.basis = &basis;
  Point& a = c.Add("a", 0, 0);
  c.AddTrail("t", {&a});
  Point& b = MakePoint(basis, "b");
  ViewCase::Place(b, 0, 1000);
  basis.loosePoints.push_front(&b);
  FitToMap(c.view);
  const PixelRect box = BoundsOf(c, {&a, &b});
  EXPECT_EQ(box.left, 18);
  EXPECT_EQ(box.right, 382);
}

TEST(FitToMap, ASiteAcrossThe180thMeridianIsShownInOnePiece) {
  for (const float rotation : {0.0F, 30.0F}) {
    ViewCase c;
    Point& a = c.AddAt("a", -16, 179.9);
    Point& b = c.AddAt("b", -16, -179.9);
    c.AddTrail("t", {&a, &b});
    c.view.rotation = rotation;
    FitToMap(c.view);
    EXPECT_EQ(c.view.centralLongitude, -180);
    const PixelRect box = BoundsOf(c, {&a, &b});
    EXPECT_GT(box.left, 0);
    EXPECT_LT(box.right, 400);
    EXPECT_GT(box.right - box.left, 250);
  }
}

TEST(FitToMap, ASiteAcrossLongitude0IsNotTornApart) {
  ViewCase c;
  Point& a = c.AddAt("a", 0, -0.5);
  Point& b = c.AddAt("b", 0, 0.5);
  c.AddTrail("t", {&a, &b});
  FitToMap(c.view);
  EXPECT_EQ(c.view.centralLongitude, 0);
  EXPECT_EQ(BoundsOf(c, {&a, &b}).left, 18);
}

TEST(FitToMap, OnePointIsShownWithAMetreAboutIt) {
  ViewCase c;
  Point& a = c.AddAt("a", 12, 34);
  c.AddTrail("t", {&a});
  FitToMap(c.view);
  EXPECT_EQ(c.view.scale, 150);
  EXPECT_EQ(BoundsOf(c, {&a}).left, 200);
}

TEST(FitToMap, WithoutPlacedPointsTheViewStays) {
  ViewCase c;
  Point& a = c.AddAt("a", 1, std::numeric_limits<double>::quiet_NaN());
  Point& b = MakePoint(c.map, "b");
  c.AddTrail("t", {&a, &b});
  const MapWindow before = c.view;
  FitToMap(c.view);
  EXPECT_EQ(c.view.scale, before.scale);
  EXPECT_EQ(c.view.top, before.top);
  EXPECT_EQ(c.view.centralLongitude, before.centralLongitude);
}

}  // namespace
}  // namespace orvane
