#include "view/grid_shades.h"

#include "view/view_case.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

/// A shade in row 1, column 2 of a grid of 40-metre cells with its corner at pixel (100, 50).
struct ShadeCase : ViewCase {
  ShadeCase() : grid(AddGrid(Add("corner", 100, -100), 40, 5, 5)) {}
  GridShade& Shade(double value, int row = 1, int column = 2) {
    GridShade& shade = map.gridShades.emplace_front();
    shade.value = value;
    shade.color = 0xAA5500;
    shade.grid = &grid;
    shade.row = row;
    shade.column = column;
    return shade;
  }
  Grid& grid;
};

TEST(DrawGridShades, AFullShadeIsTheWholeCellWithoutOutline) {
  ShadeCase c;
  c.Shade(ShadeFull);
  DrawGridShades(c.view);
  EXPECT_EQ(c.canvas.Lines(), (Lines{"pen 0 hollow aa5500", "brush solid aa5500",
                                     "polygon 180,90 220,90 220,130 180,130 180,90"}));
}

TEST(DrawGridShades, AnOutlineIsTwoUnitsThick) {
  ShadeCase c;
  c.Shade(ShadeOutline);
  DrawGridShades(c.view);
  EXPECT_EQ(c.canvas.Lines(), (Lines{"pen 3 solid aa5500", "brush hollow",
                                     "polygon 180,90 220,90 220,130 180,130 180,90"}));
}

TEST(DrawGridShades, AnInsetIsFourUnitsWide) {
  ShadeCase c;
  c.Shade(ShadeInset);
  DrawGridShades(c.view);
  // 40 pixels to 6: each corner moves in by 17.
  EXPECT_EQ(c.canvas.Lines(), (Lines{"pen 0 hollow aa5500", "brush solid aa5500",
                                     "polygon 197,107 203,107 203,113 197,113 197,107"}));
}

TEST(DrawGridShades, OtherNegativeValuesDrawNothing) {
  ShadeCase c;
  c.Shade(-5);
  c.Shade(std::nan(""));
  c.Shade(HUGE_VAL);
  DrawGridShades(c.view);
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

TEST(DrawGridShades, FullOnesComeFirstAndHatchedOnesLast) {
  ShadeCase c;
  c.Shade(ShadeFull);
  c.Shade(ShadeOutline);
  c.Shade(30);
  Map& upper = MakeMap(c.workspace, "upper.map");
  upper.basis = &c.map;
  GridShade& own = upper.gridShades.emplace_front();
  own.value = ShadeInset;
  own.grid = &c.grid;
  c.view.map = &upper;
  DrawGridShades(c.view);
  const int full = c.canvas.IndexOf("brush solid aa5500");
  const int inset = c.canvas.IndexOf("pen 0 hollow 7000000");
  const int outline = c.canvas.IndexOf("pen 3");
  const int hatch = c.canvas.IndexOf("line");
  EXPECT_LT(full, inset);
  EXPECT_LT(inset, outline);
  EXPECT_LT(outline, hatch);
  EXPECT_GE(full, 0);
}

TEST(DrawGridShades, LeavesOutCellsBesideTheClip) {
  ShadeCase c;
  c.Shade(ShadeFull, 20, 2);
  c.Shade(12, 1, -20);
  DrawGridShades(c.view);
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

TEST(DrawGridShades, ACellLargerThanThePixelsIsDrawnInItsPlace) {
  ShadeCase c;
  c.grid.cellSize = 2000;
  c.grid.corner->geo = MetersToLatLon(1000, -0.5);  // its west side is left of the middle
  c.Shade(ShadeFull, 0, 0);
  c.Shade(90, 0, 0);
  c.view.scale = 100;
  CenterOn(c.view, LatLon{});
  DrawGridShades(c.view);
  const Lines drawn = c.canvas.Having("polygon");
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_NE(drawn[0].find(" 150,-32000"), std::string::npos) << drawn[0];
  EXPECT_NE(drawn[0].find(" 150,32000"), std::string::npos) << drawn[0];
  for (const std::string& line : c.canvas.Having("line")) {
    Pixel from;
    Pixel to;
    ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &from.x, &from.y, &to.x, &to.y), 4);
    EXPECT_NEAR(std::min(from.x, to.x), 150, 1) << line;
  }
  EXPECT_GT(c.canvas.Count("line"), 70);
}

TEST(CellPolygon, TurnsWithTheGrid) {
  ShadeCase c;
  c.grid.angle = 90;
  const auto corners = CellPolygon(c.view, c.Shade(ShadeFull));
  // Columns run down now, and rows to the left.
  EXPECT_EQ(corners[0].column, 60);
  EXPECT_EQ(corners[0].row, 130);
  EXPECT_EQ(corners[2].column, 20);
  EXPECT_EQ(corners[2].row, 170);
  EXPECT_EQ(corners[4].column, corners[0].column);
  EXPECT_EQ(corners[4].row, corners[0].row);
}

TEST(ShrinkPolygon, LeavesASmallCell) {
  CellRing corners{{{0, 0}, {0, 6}, {6, 6}, {6, 0}, {0, 0}}};
  ShrinkPolygon(corners, 6);
  EXPECT_EQ(corners[2].column, 6);
  ShrinkPolygon(corners, 4);
  EXPECT_EQ(corners[0].column, 1);
  EXPECT_EQ(corners[0].row, 1);
  EXPECT_EQ(corners[1].column, 5);
  EXPECT_EQ(corners[1].row, 1);
  EXPECT_EQ(corners[2].column, 5);
  EXPECT_EQ(corners[3].row, 5);
  EXPECT_EQ(corners[4].column, 1);
}

TEST(ShrinkPolygon, ACellWithoutASideStays) {
  CellRing corners{};
  ShrinkPolygon(corners, 0);
  EXPECT_EQ(corners[2].column, 0);
}

TEST(HatchCell, AtZeroTheLinesAreColumnsAtMultiplesOfFour) {
  ShadeCase c;
  HatchCell(c.view, c.Shade(0));
  const Lines lines = c.canvas.Lines();
  ASSERT_EQ(lines.size(), 10U);
  for (const std::string& line : lines) {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
    EXPECT_EQ(x1, x2);
    EXPECT_EQ(x1 % 4, 0);
    EXPECT_NEAR(std::abs(y2 - y1), 40, 1);
  }
}

TEST(HatchCell, OnPaperTheLinesAreEighteenApart) {
  ShadeCase c;
  c.view.flags |= MapWindowPrint;
  HatchCell(c.view, c.Shade(0));
  EXPECT_EQ(c.canvas.Count("line"), 3);  // columns 180, 198 and 216
}

TEST(HatchCell, TheValueTurnsTheLinesClockwise) {
  for (const double angle : {30.0, 45.0, 90.0, 135.0, 200.0}) {
    ShadeCase c;
    c.grid.angle = 10;
    HatchCell(c.view, c.Shade(angle));
    bool hasLong = false;
    for (const std::string& line : c.canvas.Lines()) {
      int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
      ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
      if (std::hypot(x2 - x1, y2 - y1) < 30) continue;
      hasLong = true;
      const double bearing = std::atan2(x2 - x1, y1 - y2) * 180 / Pi;
      EXPECT_NEAR(std::remainder(bearing - angle, 180), 0, 3) << line;
    }
    EXPECT_TRUE(hasLong) << angle;
  }
}

TEST(HatchCell, AHugeCellTakesNoMoreLinesThanTheClip) {
  ShadeCase c;
  c.grid.cellSize = 2000000000;
  for (const double angle : {0.0, 45.0, 1e300}) HatchCell(c.view, c.Shade(angle, 0, 0));
  HatchCell(c.view, c.Shade(std::nan("")));
  EXPECT_LE(c.canvas.Count("line"), 3 * 180);
  EXPECT_LE(c.canvas.Farthest(), LargestPixel);
}

TEST(HatchCell, ACellOfNoSizeHasNoLines) {
  ShadeCase c;
  c.grid.cellSize = 0;
  HatchCell(c.view, c.Shade(45));
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

}  // namespace
}  // namespace orvane
