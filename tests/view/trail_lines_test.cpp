#include "view/trail_lines.h"

#include "panes/trail_tree.h"
#include "view/view_case.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

/// The polylines of one trail, with the rows built.
Lines Drawn(ViewCase& c) {
  BuildTrailRows(c.view);
  c.canvas.Forget();
  DrawTrails(c.view, ShownTrails(c.view));
  return c.canvas.Having("polyline");
}

TEST(DrawTrails, JoinsThePointsInWalkingOrder) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 50, 10), &c.Add("c", -20, 30)});
  EXPECT_EQ(Drawn(c), Lines{"polyline 200,150 210,100 230,170"});
}

TEST(DrawTrails, TakesWidthStyleAndColorFromTrailAndRow) {
  ViewCase c;
  Trail& trail = c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 50, 10)});
  trail.width = 2.4;
  trail.lineStyle = LineStyle::Dotted;
  Drawn(c);
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 2 dotted 112233"});
  trail.width = 2.5;  // rounded by adding a half and cutting
  trail.lineStyle = LineStyle::Dashed;
  Drawn(c);
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 3 dashed 112233"});
  c.view.trailViews.front().children.front().lineStyle = StyleOf<LineStyle>(6);
  c.canvas.Forget();
  DrawTrails(c.view, ShownTrails(c.view));
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 3 dashed 112233"});
}

TEST(DrawTrails, LeavesOutHiddenRows) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 50, 10)}).flags |= TrailHidden;
  EXPECT_EQ(Drawn(c), Lines{});
}

TEST(DrawTrails, TheSelectedTrailIsThickAndDrawnEvenIfHidden) {
  ViewCase c;
  Trail& trail = c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 50, 10)});
  trail.flags |= TrailHidden;
  c.view.selectedTrail = &trail;
  EXPECT_EQ(Drawn(c).size(), 1U);
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 5 solid 6ffff00"});
  trail.width = 9;
  Drawn(c);
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 9 solid 6ffff00"});
}

TEST(DrawTrails, ARowWithoutColorIsDrawnInTheForeground) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 50, 10)});
  BuildTrailRows(c.view);
  c.view.trailViews.front().children.front().color = NoColor;
  DrawTrails(c.view, ShownTrails(c.view));
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 0 solid 7000000"});
}

TEST(DrawTrails, ATrailOfOnePointDrawsNothing) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0)});
  EXPECT_EQ(Drawn(c), Lines{});
}

TEST(DrawTrails, PointsOnOnePixelAreGivenOnce) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 0.1, 0.1), &c.Add("c", 9, 0)});
  EXPECT_EQ(Drawn(c), Lines{"polyline 200,150 200,141"});
}

TEST(DrawTrails, ATrailWithinOnePixelStillShows) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 0.1, 0.1)});
  EXPECT_EQ(Drawn(c), Lines{"polyline 200,150 200,150"});
}

TEST(DrawTrailLine, LeavesOutSegmentsBeyondOneEdge) {
  for (const auto& [north, east] : {std::pair{400, 0}, {-400, 0}, {0, 400}, {0, -400}}) {
    ViewCase c;
    Point& inside = c.Add("in", 0, 0);
    Point& out = c.Add("o", north, east);
    Point& farther = c.Add("p", 2 * north, 2 * east);
    c.AddTrail("t", {&inside, &out, &farther, &out, &inside});
    // Out and in again are two lines: after what was left out a new one begins.
    EXPECT_EQ(Drawn(c).size(), 2U) << north << "," << east;
    c.map.trails.clear();
    c.AddTrail("t", {&out, &farther});
    EXPECT_EQ(Drawn(c), Lines{}) << north << "," << east;
  }
}

TEST(DrawTrailLine, KeepsASegmentThatPassesOverACorner) {
  ViewCase c;
  c.AddTrail("t", {&c.Add("a", 400, 0), &c.Add("b", 0, 500)});
  EXPECT_EQ(Drawn(c).size(), 1U);
}

TEST(DrawTrailLine, UnderARotationNothingIsLeftOut) {
  ViewCase c;
  c.view.rotation = 45;
  CenterOn(c.view, LatLon{});
  c.AddTrail("t", {&c.Add("a", 90000, 0), &c.Add("b", 90000, 10), &c.Add("c", 0, 0)});
  const Lines lines = Drawn(c);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_LE(c.canvas.Farthest(), LargestPixel);
}

TEST(DrawTrailLine, UnderARotationAFarLineKeepsItsDirection) {
  ViewCase c;
  c.view.rotation = 90;
  CenterOn(c.view, LatLon{});
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 300000, 100000)});
  // North is left and east is up: three to the left for one up.
  EXPECT_EQ(Drawn(c), Lines{"polyline 200,150 -32000,-10583"});
}

TEST(DrawTrailLine, ASegmentThatLeavesTheSquareRunsThroughBothItsPoints) {
  // A centimetre to the pixel: the ends are 200,000 pixels off, on a line that passes 30 metres
  // from the middle.
  for (const float rotation : {0.0F, 20.0F}) {
    ViewCase c;
    c.view.scale = 100;
    c.view.rotation = rotation;
    CenterOn(c.view, LatLon{});
    Point& west = c.Add("w", -100, -2000);
    Point& east = c.Add("e", 60, 2000);
    Point& near = c.Add("n", -18, 50);  // on the line between them
    c.AddTrail("t", {&west, &east});
    const Lines whole = Drawn(c);
    ASSERT_EQ(whole.size(), 1U);
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    ASSERT_EQ(std::sscanf(whole[0].c_str(), "polyline %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
    const Pixel on = MapToScreen(c.view, near.geo);
    const double across = (1.0 * (x2 - x1) * (on.y - y1) - 1.0 * (y2 - y1) * (on.x - x1)) /
                          std::hypot(x2 - x1, y2 - y1);
    EXPECT_NEAR(across, 0, 1) << rotation;
    EXPECT_LE(c.canvas.Farthest(), LargestPixel);
  }
}

TEST(DrawTrailLine, ALineThatLeavesTheSquareBeginsAgainWhereItComesBack) {
  ViewCase c;
  c.view.scale = 100;
  CenterOn(c.view, LatLon{});
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 0, 1000), &c.Add("c", 1, 1000), &c.Add("d", 1, 0),
                   &c.Add("e", 2, 0)});
  EXPECT_EQ(Drawn(c), (Lines{"polyline 200,150 32000,150", "polyline 32000,50 200,50 200,-50"}));
}

TEST(DrawTrailLine, UnderARotationASegmentOutsideTheSquareIsLeftOut) {
  ViewCase c;
  c.view.scale = 100;
  c.view.rotation = 90;
  CenterOn(c.view, LatLon{});
  c.AddTrail("t", {&c.Add("a", 900, 0), &c.Add("b", 0, 900)});
  EXPECT_EQ(Drawn(c), Lines{});
}

TEST(DrawTrailLine, LeavesOutWhatIsMoreThanHalfATurnAway) {
  ViewCase c;
  SetClientSize(c.view, 4000, 3000);
  c.view.scale = 0.0001F;
  CenterOn(c.view, LatLon{.lat = 0, .lon = 170});
  c.AddTrail("t", {&c.AddAt("a", 5, -20), &c.AddAt("b", 6, -30)});
  EXPECT_EQ(Drawn(c), Lines{});
  c.view.longitudeWrap = 360;
  c.canvas.Forget();
  DrawTrails(c.view, ShownTrails(c.view));
  EXPECT_EQ(c.canvas.Count("polyline"), 1);
}

TEST(DrawTrailLine, CutsASegmentAlongAParallelAtHalfATurn) {
  ViewCase c;
  SetClientSize(c.view, 5000, 100);
  c.view.scale = 0.0001F;  // a degree is 11.112 pixels; the map is 4000 wide
  CenterOn(c.view, LatLon{});
  c.AddTrail("t", {&c.AddAt("a", 0, 170), &c.AddAt("b", 0, 200), &c.AddAt("c", 0, 150)});
  // Out to the limit, and from the limit back: the second begins again.
  EXPECT_EQ(Drawn(c), (Lines{"polyline 4389,50 4500,50", "polyline 4500,50 4167,50"}));
}

TEST(DrawTrailLine, ASegmentAcrossParallelsIsNotCut) {
  ViewCase c;
  SetClientSize(c.view, 5000, 100);
  c.view.scale = 0.0001F;
  CenterOn(c.view, LatLon{});
  c.AddTrail("t", {&c.AddAt("a", 0, 170), &c.AddAt("b", 1, 200), &c.AddAt("c", 1, 150)});
  // The second runs along a parallel, so it begins at the limit and not where the first ended.
  EXPECT_EQ(Drawn(c), (Lines{"polyline 4389,50 4722,39", "polyline 4500,39 4167,39"}));
}

TEST(DrawTrailLine, APointWithoutAPlaceBreaksTheLine) {
  ViewCase c;
  Point& lost = MakePoint(c.map, "lost");
  Point& odd = c.AddAt("odd", std::nan(""), 0);
  c.AddTrail("t", {&c.Add("a", 0, 0), &c.Add("b", 5, 0), &lost, &c.Add("c", 9, 0), &odd,
                   &c.Add("d", 20, 0), &c.Add("e", 30, 0)});
  EXPECT_EQ(Drawn(c), (Lines{"polyline 200,150 200,145", "polyline 200,130 200,120"}));
}

TEST(PixelsOfWidth, StaysWithinThePixels) {
  ViewCase c;
  EXPECT_EQ(PixelsOfWidth(c.view, 0), 0);
  EXPECT_EQ(PixelsOfWidth(c.view, 0.5), 1);
  EXPECT_EQ(PixelsOfWidth(c.view, -20), 0);
  EXPECT_EQ(PixelsOfWidth(c.view, 1e300), LargestPixel);
  EXPECT_EQ(PixelsOfWidth(c.view, std::nan("")), 0);
}

}  // namespace
}  // namespace orvane
