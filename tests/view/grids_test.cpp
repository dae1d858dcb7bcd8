#include "view/grids.h"

#include "view/view_case.h"

#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

/// A grid whose corner is at pixel (100, 50).
Grid& GridAt(ViewCase& c, int cellSize, int rows, int columns) {
  return c.AddGrid(c.Add("corner", 100, -100), cellSize, rows, columns);
}

TEST(DrawGrids, DrawsOneLineMoreThanCellsEachWay) {
  ViewCase c;
  Grid& grid = GridAt(c, 8, 2, 3);
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 0 solid a0a0a0"});
  EXPECT_EQ(
      c.canvas.Having("line"),
      (Lines{"line 100,50 100,66", "line 108,50 108,66", "line 116,50 116,66", "line 124,50 124,66",
             "line 100,50 124,50", "line 100,58 124,58", "line 100,66 124,66"}));
  EXPECT_EQ(c.canvas.Count("text"), 0);  // a cell of an ascent or less
  EXPECT_EQ(grid.rows, 2);
}

TEST(DrawGrids, NegativeCountsExtendTheOtherWay) {
  ViewCase c;
  GridAt(c, 8, -1, -1);
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("line"), (Lines{"line 100,50 100,42", "line 92,50 92,42",
                                            "line 100,50 92,50", "line 100,42 92,42"}));
}

TEST(DrawGrids, AGridWhoseCornerIsFarAwayStaysInPlace) {
  // At a centimetre to the pixel the corner is 80,000 pixels to the north and west, and the
  // grid's lines still pass at every 100 metres from it.
  for (const float rotation : {0.0F, 90.0F}) {
    ViewCase c;
    c.AddGrid(c.Add("corner", 800, -800), 100, 20, 20);
    c.view.scale = 100;
    c.view.rotation = rotation;
    CenterOn(c.view, LatLon{});
    DrawGrids(c.view);
    int upright = 0;
    int level = 0;
    for (const std::string& line : c.canvas.Having("line")) {
      Pixel from;
      Pixel to;
      ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &from.x, &from.y, &to.x, &to.y), 4);
      if (std::abs(from.x - 200) <= 1 && std::abs(to.x - 200) <= 1) ++upright;
      if (std::abs(from.y - 150) <= 1 && std::abs(to.y - 150) <= 1) ++level;
    }
    EXPECT_EQ(upright, 1) << rotation;
    EXPECT_EQ(level, 1) << rotation;
  }
}

TEST(DrawGrids, LabelsColumnsAboveAndRowsBefore) {
  ViewCase c;
  Grid& grid = GridAt(c, 20, 1, 2);
  grid.rowStart = 1;
  grid.columnStart = 9;
  DrawGrids(c.view);
  // Columns: in the middle of a cell, an ascent (8) above. Rows: ending at the line, 8 below it.
  // The far lines have a label as well.
  EXPECT_EQ(c.canvas.Having("text"), (Lines{"text 107,42 9", "text 124,42 10", "text 144,42 11",
                                            "text 94,58 A", "text 94,78 B"}));
}

TEST(DrawGrids, LabelsTheUpperEndOfAGridThatExtendsUp) {
  ViewCase c;
  GridAt(c, 20, -1, 1).rowStyle = GridStyle::Unlabeled;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("text"), (Lines{"text 107,22 0", "text 127,22 1"}));
}

TEST(DrawGrids, LabelsTheLeftEndOfAGridThatExtendsLeft) {
  ViewCase c;
  Grid& grid = GridAt(c, 20, 1, -2);
  grid.columnStyle = GridStyle::Unlabeled;
  grid.rowStart = 3;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("text"), (Lines{"text 54,58 C", "text 54,78 D"}));
}

TEST(DrawGrids, ACellMustBeLargerThanAnAscentForLabels) {
  ViewCase c;
  GridAt(c, 8, 1, 1);
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Count("text"), 0);
  c.map.grids.front().cellSize = 9;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Count("text"), 4);
}

TEST(DrawGrids, StylesWithoutLabelsWriteNone) {
  for (const GridStyle style :
       {GridStyle::Unlabeled, GridStyle::RomanLower, GridStyle::RomanUpper}) {
    ViewCase c;
    Grid& grid = GridAt(c, 20, 2, 2);
    grid.rowStyle = style;
    grid.columnStyle = style;
    DrawGrids(c.view);
    EXPECT_EQ(c.canvas.Count("text"), 0);
    EXPECT_EQ(c.canvas.Count("line"), 6);
  }
}

TEST(DrawGrids, PaperTakesTheColorOfThePrintDialog) {
  ViewCase c;
  GridAt(c, 8, 1, 1);
  c.view.gridColor = 0x123456;
  c.view.fewColors = true;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 0 solid 808080"});
  c.canvas.Forget();
  c.view.flags |= MapWindowPrint;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("pen"), Lines{"pen 0 solid 123456"});
}

TEST(DrawGrids, OnPaperLabelsOfAGridBeyondThePageMoveInside) {
  ViewCase c;
  Grid& grid = c.AddGrid(c.Add("corner", 205, -245), 20, 30, 30);  // at pixel (-45, -55)
  grid.rowStart = 1;
  DrawGrids(c.view);
  for (const std::string& line : c.canvas.Having("text")) {
    int x = 0, y = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "text %d,%d", &x, &y), 2);
    EXPECT_TRUE(x < 0 || y < 0) << line;
  }
  c.canvas.Forget();
  c.view.flags |= MapWindowPrint;
  DrawGrids(c.view);
  const Lines labels = c.canvas.Having("text");
  // The middle of the first row of cells that has room for a label is 35; an ascent above is 27.
  EXPECT_NE(std::find(labels.begin(), labels.end(), "text 82,27 6"), labels.end());
  // Lines are at -45, -25, -5, 15: the label D of row line 5 ends at 15.
  EXPECT_NE(std::find(labels.begin(), labels.end(), "text 9,13 D"), labels.end());
}

/// A label more than 200 pixels high was missing where its baseline was below the view: on a fine
/// printer a text of 30 points is as high.
TEST(DrawGrids, LargeLabelsShowTheirUpperPart) {
  ViewCase c;
  c.view.ascent = 300;
  c.view.lineHeight = 400;
  Grid& grid = c.AddGrid(c.Add("corner", -140, -100), 350, 1, 1);  // at pixel (100, 290)
  grid.columnStyle = GridStyle::Unlabeled;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("text"), Lines{"text 88,590 ZZ"});
}

TEST(DrawGrids, OnPaperLabelsStayOutsideWhereNoCellIsLeft) {
  ViewCase c;
  c.view.flags |= MapWindowPrint;
  Grid& grid = c.AddGrid(c.Add("corner", 190, -100), 20, 1, 3);  // at pixel (100, -40)
  grid.rowStyle = GridStyle::Unlabeled;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("text").front(), "text 107,-48 0");
}

TEST(DrawGrids, ATurnedGridTurnsBothFamilies) {
  ViewCase c;
  GridAt(c, 8, 1, 2).angle = 90;
  DrawGrids(c.view);
  // Columns run down the screen now and rows to the left.
  EXPECT_EQ(c.canvas.Having("line"),
            (Lines{"line 100,50 92,50", "line 100,58 92,58", "line 100,66 92,66",
                   "line 100,50 100,66", "line 92,50 92,66"}));
}

TEST(DrawGrids, AViewAndAGridTurnedAlikeAreNotTurned) {
  ViewCase c;
  c.view.rotation = 30;
  CenterOn(c.view, LatLon{});
  Grid& grid = GridAt(c, 20, 1, 1);
  grid.angle = 30;
  const Pixel corner = MapToScreen(c.view, grid.corner->geo);
  DrawGrids(c.view);
  const std::string x = std::to_string(corner.x);
  EXPECT_EQ(c.canvas.Having("line").front(), "line " + x + "," + std::to_string(corner.y) + " " +
                                                 x + "," + std::to_string(corner.y + 20));
}

TEST(DrawGrids, ATurnedGridAgreesWithTheMap) {
  ViewCase c;
  c.view.rotation = -20;
  CenterOn(c.view, LatLon{});
  Grid& grid = GridAt(c, 30, 3, 4);
  grid.angle = 25;
  grid.rowStyle = GridStyle::Unlabeled;
  grid.columnStyle = GridStyle::Unlabeled;
  DrawGrids(c.view);
  LatLon far = grid.corner->geo;
  AddMetersRotated(far, -90, 120, 25);
  const Pixel corner = MapToScreen(c.view, far);
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  ASSERT_EQ(
      std::sscanf(c.canvas.Having("line").back().c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2),
      4);
  EXPECT_NEAR(x2, corner.x, 1);
  EXPECT_NEAR(y2, corner.y, 1);
}

TEST(DrawGrids, LabelsOfATurnedGridAreAtTheStartOfTheLines) {
  ViewCase c;
  Grid& grid = GridAt(c, 40, 1, 1);
  grid.angle = 1e-9;  // turned, but not so that a pixel would show it
  grid.rowStart = 1;
  DrawGrids(c.view);
  const Lines turned = c.canvas.Having("text");
  c.canvas.Forget();
  grid.angle = 0;
  DrawGrids(c.view);
  EXPECT_EQ(turned, c.canvas.Having("text"));
}

TEST(DrawGrids, LabelsOfATurnedGridAreOutsideItWhereverItExtends) {
  ViewCase c;
  Grid& grid = GridAt(c, 40, -1, -1);
  grid.angle = 1e-9;
  grid.rowStart = 1;
  DrawGrids(c.view);
  // The grid reaches from (60, 10) to its corner at (100, 50). Columns are named below it and rows
  // to the right, an ascent of 8 from the lines.
  EXPECT_EQ(c.canvas.Having("text"),
            (Lines{"text 117,66 0", "text 77,66 1", "text 100,58 A", "text 100,18 B"}));
}

TEST(DrawGrids, RowLabelsOfATurnedGridKeepClearOfItsEdge) {
  ViewCase c;
  Grid& grid = GridAt(c, 40, 1, 1);
  grid.angle = 45;
  grid.rowStart = 1;
  grid.columnStyle = GridStyle::Unlabeled;
  DrawGrids(c.view);
  // The edge leads from (100, 50) to the lower left at 45 degrees. The texts, 6 wide and 8 high,
  // touch it with a corner.
  EXPECT_EQ(c.canvas.Having("text"), (Lines{"text 91,53 A", "text 62,82 B"}));
}

TEST(DrawGrids, WalksDownTheBasisChain) {
  ViewCase c;
  GridAt(c, 8, 1, 1);
  Map& upper = MakeMap(c.workspace, "upper.map");
  upper.basis = &c.map;
  c.view.map = &upper;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Count("line"), 4);
  c.canvas.Forget();
  c.view.flags |= MapWindowGridsHidden;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Lines(), Lines{});
}

TEST(DrawGrids, LinesReachTheEdgeOfAPageThatIsLarger) {
  ViewCase c;
  GridAt(c, 1000, 100, 1);
  c.view.clientHeight = 20000;
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("line").front(), "line 100,50 100,20000");
}

TEST(DrawGrids, LinesEndWithin16000PixelsOfTheEdge) {
  ViewCase c;
  GridAt(c, 1000, 100, 1);
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Having("line").front(), "line 100,50 100,16000");
}

TEST(DrawGrids, DrawsABillionCellsInNoTime) {
  for (const double angle : {0.0, 30.0}) {
    for (const int cellSize : {1, 100, 0, -5, INT_MAX, INT_MIN}) {
      for (const float scale : {1e-6F, 1.0F, 50.0F}) {
        ViewCase c;
        c.view.scale = scale;
        CenterOn(c.view, LatLon{});
        Grid& grid = GridAt(c, cellSize, INT_MAX, INT_MIN);
        grid.angle = angle;
        grid.rowStart = INT_MAX;
        const auto start = std::chrono::steady_clock::now();
        DrawGrids(c.view);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        EXPECT_LE(c.canvas.Count("line"), 4000) << angle << " " << cellSize << " " << scale;
        EXPECT_LE(c.canvas.Farthest(), 32767) << angle << " " << cellSize << " " << scale;
      }
    }
  }
}

TEST(DrawGrids, CellsBelowAPixelFillTheArea) {
  ViewCase c;
  c.view.scale = 0.01F;
  CenterOn(c.view, LatLon{});
  c.AddGrid(c.Add("corner", 5000, -5000), 10, 1000, 1000);  // 100 x 100 pixels of 0.1 each
  DrawGrids(c.view);
  std::set<int> columns;
  for (const std::string& line : c.canvas.Having("line")) {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
    if (x1 == x2) columns.insert(x1);
  }
  EXPECT_EQ(columns.size(), 101U);
}

TEST(DrawGrids, ACornerWithoutAPlaceDrawsNothing) {
  ViewCase c;
  c.AddGrid(MakePoint(c.map, "lost"), 10, 3, 3);
  c.map.grids.emplace_front();
  DrawGrids(c.view);
  EXPECT_EQ(c.canvas.Count("line"), 0);
}

TEST(GridLabel, WritesDecimalsAndLetters) {
  EXPECT_EQ(GridLabel(12, GridStyle::Decimal), "12");
  EXPECT_EQ(GridLabel(-3, GridStyle::Decimal), "-3");
  EXPECT_EQ(GridLabel(1, GridStyle::LettersLower), "a");
  EXPECT_EQ(GridLabel(26, GridStyle::LettersUpper), "Z");
  EXPECT_EQ(GridLabel(27, GridStyle::LettersUpper), "AA");
  EXPECT_EQ(GridLabel(53, GridStyle::LettersLower), "ba");
  EXPECT_EQ(GridLabel(0, GridStyle::LettersLower), "zz");
  EXPECT_EQ(GridLabel(-1, GridStyle::LettersUpper), "ZY");
  EXPECT_EQ(GridLabel(3, GridStyle::RomanLower), "");
  EXPECT_EQ(GridLabel(3, GridStyle::Unlabeled), "");
}

TEST(GridLabel, TakesANumberBeyond32BitsAsTheNearest) {
  EXPECT_EQ(GridLabel(std::int64_t{1} << 40, GridStyle::Decimal), "2147483647");
}

}  // namespace
}  // namespace orvane
