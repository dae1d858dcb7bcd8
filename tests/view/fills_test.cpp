#include "view/fills.h"

#include "panes/trail_tree.h"
#include "view/view_case.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

const std::vector<Pixel> Square{{10, 10}, {30, 10}, {30, 30}, {10, 30}, {10, 10}};

Lines Hatched(const std::vector<Pixel>& ring, double angle, int spacing) {
  RecordingCanvas canvas(400, 300);
  HatchPolygon(canvas, ring, angle, spacing);
  return canvas.Lines();
}

TEST(HatchPolygon, LinesAlongRowsAreAtMultiplesOfTheSpacing) {
  EXPECT_EQ(Hatched(Square, 0, 8), (Lines{"line 10,24 30,24", "line 10,16 30,16"}));
}

TEST(HatchPolygon, LinesAlongColumnsAreAtMultiplesOfTheSpacing) {
  EXPECT_EQ(Hatched(Square, 90, 8), (Lines{"line 16,30 16,10", "line 24,30 24,10"}));
}

TEST(HatchPolygon, LinesAt45RiseToTheRight) {
  for (const std::string& line : Hatched(Square, 45, 8)) {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
    EXPECT_NEAR(x2 - x1, y1 - y2, 1) << line;
    EXPECT_NEAR((x1 + y1) % 8 == 7 ? (x1 + y1) + 1 : x1 + y1, (x1 + y1 + 4) / 8 * 8, 1) << line;
  }
  EXPECT_EQ(Hatched(Square, 45, 8).size(), 5U);  // x + y = 24, 32, 40, 48, 56
}

TEST(HatchPolygon, LinesAtMinus45FallToTheRight) {
  const Lines lines = Hatched(Square, -45, 8);
  EXPECT_EQ(lines.size(), 5U);
  for (const std::string& line : lines) {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
    EXPECT_NEAR(x2 - x1, y2 - y1, 1) << line;
  }
}

TEST(HatchPolygon, AreasThatTouchAreHatchedInOnePiece) {
  const std::vector<Pixel> right{{30, 10}, {50, 10}, {50, 30}, {30, 30}, {30, 10}};
  EXPECT_EQ(Hatched(right, 0, 8), (Lines{"line 30,24 50,24", "line 30,16 50,16"}));
}

//  x     x
//  |\   /|     A line through the notch is drawn in two parts, one below it in one.
//  | \ / |
//  |  x  |
//  +-----+
TEST(HatchPolygon, AHollowInTheRingIsLeftOpen) {
  const std::vector<Pixel> ring{{0, 0}, {20, 20}, {40, 0}, {40, 40}, {0, 40}, {0, 0}};
  const Lines lines = Hatched(ring, 0, 16);
  EXPECT_EQ(lines, (Lines{"line 0,32 40,32", "line 0,16 16,16", "line 24,16 40,16"}));
}

TEST(HatchPolygon, ALineThroughACornerCountsOneEdgeThere) {
  // The ring runs on through its corners at row 16, where there is a line.
  const std::vector<Pixel> ring{{20, 0}, {40, 16}, {20, 300}, {0, 16}, {20, 0}};
  for (const std::string& line : Hatched(ring, 0, 16)) {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
    EXPECT_LE(x1, 20);
    EXPECT_GE(x2, 20);
  }
  EXPECT_EQ(Hatched(ring, 0, 16).size(), 18U);
}

TEST(HatchPolygon, AnyOtherAngleFollowsItsTangent) {
  const std::vector<Pixel> ring{{0, 0}, {200, 0}, {200, 200}, {0, 200}, {0, 0}};
  for (const double angle : {30.0, -30.0, 60.0, 120.0, -60.0, 150.0}) {
    const Lines lines = Hatched(ring, angle, 10);
    EXPECT_GT(lines.size(), 10U) << angle;
    bool hasLong = false;
    for (const std::string& line : lines) {
      int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
      ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
      if (std::hypot(x2 - x1, y2 - y1) < 100) continue;
      hasLong = true;
      double drawn = std::atan2(y1 - y2, x2 - x1) * 180 / Pi;
      EXPECT_NEAR(std::remainder(drawn - angle, 180), 0, 1) << angle << ": " << line;
    }
    EXPECT_TRUE(hasLong);
  }
}

TEST(HatchPolygon, NoSpacingCountsAsOnePixel) {
  EXPECT_EQ(Hatched(Square, 0, 0).size(), 20U);
  EXPECT_EQ(Hatched(Square, 0, -5).size(), 20U);
}

TEST(HatchPolygon, AnAngleIsTakenModuloATurn) {
  EXPECT_EQ(Hatched(Square, 360, 8), Hatched(Square, 0, 8));
  EXPECT_EQ(Hatched(Square, -315, 8), Hatched(Square, 45, 8));
  EXPECT_EQ(Hatched(Square, std::nan(""), 8), Lines{});
  EXPECT_LE(Hatched(Square, 1e300, 1).size(), 60U);
}

TEST(HatchPolygon, FewerThanThreePointsHaveNoInside) {
  EXPECT_EQ(Hatched({}, 0, 4), Lines{});
  EXPECT_EQ(Hatched({{1, 1}, {1, 1}}, 45, 4), Lines{});
  EXPECT_EQ(Hatched({{5, 5}, {5, 5}, {5, 5}}, 45, 4), Lines{});
}

TEST(HatchPolygon, AHugeRingTakesNoMoreLinesThanTheClip) {
  const std::vector<Pixel> ring{
      {-32000, -32000}, {32000, -32000}, {32000, 32000}, {-32000, 32000}, {-32000, -32000}};
  EXPECT_LE(Hatched(ring, 0, 1).size(), 305U);
  EXPECT_LE(Hatched(ring, 45, 1).size(), 705U);
}

TEST(HatchPolygon, EveryPixelOfALineIsInTheRing) {
  constexpr std::uint64_t Seed = 88;
  Dice dice(Seed);
  for (int round = 0; round < 200; ++round) {
    std::vector<Pixel> ring;
    for (int i = dice.Int(3, 9); i > 0; --i) {
      ring.push_back({dice.Int(0, 390), dice.Int(0, 290)});
    }
    ring.push_back(ring.front());
    const auto inside = [&ring](double x, double y) {
      bool in = false;
      for (size_t i = 0; i + 1 < ring.size(); ++i) {
        const Pixel a = ring[i];
        const Pixel b = ring[i + 1];
        if ((a.y > y) == (b.y > y)) continue;
        if (x < a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x)) in = !in;
      }
      return in;
    };
    for (const std::string& line : Hatched(ring, 0, 7)) {
      int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
      ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
      ASSERT_EQ(y1, y2);
      if (x2 - x1 < 3) continue;
      EXPECT_TRUE(inside((x1 + x2) / 2.0, y1 - 0.0078125))
          << "seed " << Seed << " round " << round << ": " << line;
    }
  }
}

TEST(HatchSpacing, IsFourUnitsAndTwiceThatOnPaper) {
  ViewCase c;
  EXPECT_EQ(HatchSpacing(c.view), 6);  // the unit is 12 / 8
  c.view.flags |= MapWindowPrint;
  EXPECT_EQ(HatchSpacing(c.view), 12);
  c.view.penWidthFactor = 0;
  EXPECT_EQ(HatchSpacing(c.view), 1);
}

/// A square of 40 metres with its lower left corner in the middle.
std::vector<Point*> Plot(ViewCase& c) {
  return {&c.Add("a", 0, 0), &c.Add("b", 0, 40), &c.Add("c", 40, 40), &c.Add("d", 40, 0)};
}

TEST(DrawPolygonFill, SolidFillsTheClosedRing) {
  ViewCase c;
  DrawPolygonFill(c.view, Plot(c), FillSolid, 0xABCDEF);
  EXPECT_EQ(c.canvas.Lines(), (Lines{"pen 0 solid abcdef", "brush solid abcdef",
                                     "polygon 200,150 240,150 240,110 200,110 200,150"}));
}

TEST(DrawPolygonFill, OutlineIsThreeUnitsThick) {
  for (const int pattern : {-1, 7}) {
    ViewCase c;
    DrawPolygonFill(c.view, Plot(c), pattern, 0xABCDEF);
    EXPECT_EQ(c.canvas.Lines(), (Lines{"pen 4 solid abcdef", "brush hollow",
                                       "polygon 200,150 240,150 240,110 200,110 200,150"}));
  }
}

TEST(DrawPolygonFill, PatternsAreLinesAtTheirAngles) {
  const auto hatchOf = [](int pattern) {
    ViewCase c;
    DrawPolygonFill(c.view, Plot(c), pattern, 0xABCDEF);
    EXPECT_EQ(c.canvas.Count("polygon"), 0);
    EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 0 solid abcdef"});
    return c.canvas.Having("line");
  };
  const std::vector<Pixel> ring{{200, 150}, {240, 150}, {240, 110}, {200, 110}, {200, 150}};
  EXPECT_EQ(hatchOf(FillRising), Hatched(ring, 45, 6));
  EXPECT_EQ(hatchOf(FillFalling), Hatched(ring, -45, 6));
  EXPECT_EQ(hatchOf(FillHorizontal), Hatched(ring, 0, 6));
  EXPECT_EQ(hatchOf(FillVertical), Hatched(ring, 90, 6));
  Lines both = Hatched(ring, 45, 6);
  for (const std::string& line : Hatched(ring, -45, 6)) both.push_back(line);
  EXPECT_EQ(hatchOf(FillDiagonals), both);
  both = Hatched(ring, 0, 6);
  for (const std::string& line : Hatched(ring, 90, 6)) both.push_back(line);
  EXPECT_EQ(hatchOf(FillCross), both);
}

TEST(DrawPolygonFill, AnUnknownPatternDrawsNothing) {
  ViewCase c;
  DrawPolygonFill(c.view, Plot(c), 8, 0);
  DrawPolygonFill(c.view, Plot(c), -2, 0);
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

TEST(DrawPolygonFill, LeavesOutPointsWithoutAPlace) {
  ViewCase c;
  std::vector<Point*> points = Plot(c);
  points.insert(points.begin() + 2, &MakePoint(c.map, "lost"));
  DrawPolygonFill(c.view, points, FillSolid, 0);
  EXPECT_EQ(c.canvas.Having("polygon"), Lines{"polygon 200,150 240,150 240,110 200,110 200,150"});
  c.canvas.Forget();
  DrawPolygonFill(c.view, {points[2]}, FillSolid, 0);
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

TEST(DrawPolygonFill, ASideWithFarEndsIsDrawnInItsPlace) {
  ViewCase c;
  c.view.scale = 100;
  CenterOn(c.view, LatLon{});
  // The lower side runs 50 pixels above the middle of the view, the corners are 100,000 pixels away.
  const std::vector<Point*> ring{&c.Add("", 0.5, -1000), &c.Add("", 0.5, 1000),
                                 &c.Add("", 1000, 0)};
  DrawPolygonFill(c.view, ring, FillSolid, 0);
  const Lines drawn = c.canvas.Having("polygon");
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_NE(drawn[0].find(" -32000,100 "), std::string::npos) << drawn[0];
  EXPECT_NE(drawn[0].find(" 32000,100 "), std::string::npos) << drawn[0];
}

TEST(DrawPolygonFill, AnAreaBeyondThePixelsIsLeftOut) {
  ViewCase c;
  c.view.scale = 100;
  CenterOn(c.view, LatLon{});
  DrawPolygonFill(c.view, {&c.Add("", 900, 0), &c.Add("", 990, 0), &c.Add("", 990, 90)}, FillNone,
                  0);
  EXPECT_EQ(c.canvas.Count("polygon"), 0);
}

TEST(DrawFilledTrails, TakesVisibleFilledRows) {
  ViewCase c;
  Trail& trail = c.AddTrail("t", Plot(c));
  BuildTrailRows(c.view);
  DrawFilledTrails(c.view, ShownTrails(c.view));
  EXPECT_EQ(c.canvas.Lines(), Lines{});
  trail.filled = true;
  trail.fillPattern = 6;
  BuildTrailRows(c.view);
  DrawFilledTrails(c.view, ShownTrails(c.view));
  EXPECT_EQ(c.canvas.Having("brush"), Lines{"brush solid 112233"});
  c.canvas.Forget();
  c.view.trailViews.front().children.front().visible = false;
  c.view.selectedTrail = &trail;
  DrawFilledTrails(c.view, ShownTrails(c.view));
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

TEST(DrawFilledTrails, ARingOfManyCornersIsHatchedInGoodTime) {
  ViewCase c;
  std::vector<Point*> points;
  Dice dice(3);
  for (int i = 0; i < 20000; ++i) {
    points.push_back(&c.Add("", dice.Between(-140, 140), 0.018 * i - 180));
  }
  const auto start = std::chrono::steady_clock::now();
  DrawPolygonFill(c.view, points, FillCross, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_GT(c.canvas.Count("line"), 1000);
}

}  // namespace
}  // namespace orvane
