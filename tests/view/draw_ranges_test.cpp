#include "view/draw_ranges.h"

#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "view/draw_map.h"
#include "view/fills.h"
#include "view/labels.h"
#include "view/view_case.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

// A view of 400 x 300 pixels, a metre to the pixel: north 100, east 100 is at 300,50.

struct DrawRangesTest : testing::Test, ViewCase {
  Range& AddRange(const std::string& name, double south, double west, double size) {
    Range& range = map.ranges.emplace_front();
    if (!name.empty()) range.name = name;
    range.hull = {&Add("", south, west), &Add("", south + size, west),
                  &Add("", south + size, west + size), &Add("", south, west + size)};
    range.points = range.hull;
    range.hasBounds = true;
    range.minLat = range.hull[0]->geo.lat;
    range.maxLat = range.hull[2]->geo.lat;
    range.minLon = range.hull[0]->geo.lon;
    range.maxLon = range.hull[2]->geo.lon;
    return range;
  }
  /// A visible row after the others.
  RangePanelRow& Show(Range& range, Color color = 0x102030) {
    RangePanelRow& row = view.rangeViews.emplace_back();
    row.range = &range;
    row.text = range.name;
    row.visible = true;
    row.color = color;
    return row;
  }
  RangeIntersection& AddOverlap(Range& a, Range& b, double south, double west, double size) {
    RangeIntersection& record = map.intersections.emplace_front();
    const Range& shape = AddRange("", south, west, size);
    static_cast<GeoBounds&>(record) = shape;
    for (const Point* vertex : shape.hull) record.polygon.push_back(vertex->geo);
    map.ranges.pop_front();
    record.a.range = &a;
    record.b.range = &b;
    return record;
  }
  void GiveCells(Range& range, int cellSize, const std::vector<RangeCell>& cells) {
    range.grid = &AddGrid(Add("Corner", 0, 0), cellSize, 10, 10);
    range.cells = cells;
  }
  static RangeCell Cell(int row, int column, std::int64_t minutes, std::int64_t sm1 = 0,
                        std::int64_t sm2 = 0, std::int64_t sm3 = 0) {
    return {row, column, {minutes, {sm1, sm2, sm3}}};
  }
  Cluster& AddCluster(Range& range, const std::vector<size_t>& levels) {
    if (range.clusters == nullptr) range.clusters = std::make_unique<ClusterTree>();
    Cluster& cluster = range.clusters->clusters.emplace_back();
    for (const size_t level : levels) {
      cluster.hull[level] = range.hull;
      cluster.area[level] = 100;
    }
    return cluster;
  }
  GeoBounds Everything() const { return {-90, 90, -180, 180}; }
  void Draw() { DrawIn(Everything()); }
  void DrawIn(const GeoBounds& box) {
    canvas.Forget();
    PixelMask taken(All());
    DrawRanges(view, box, taken);
  }
  /// Where the names of ranges were written.
  Lines DrawnAround(const std::vector<PixelRect>& takenBoxes) {
    canvas.Forget();
    PixelMask taken(All());
    for (const PixelRect& box : takenBoxes) taken.Add(box);
    DrawRanges(view, Everything(), taken);
    return canvas.Having("text");
  }
  /// The colours of the pens with which polygons were drawn.
  Lines PolygonPens() const {
    Lines pens;
    std::string pen;
    for (const std::string& line : canvas.Lines()) {
      if (line.compare(0, 4, "pen ") == 0) pen = line.substr(line.size() - 6);
      if (line.compare(0, 8, "polygon ") == 0) pens.push_back(pen);
    }
    return pens;
  }
};

constexpr const char* SquareAt0 = "polygon 200,150 200,50 300,50 300,150 200,150";

TEST_F(DrawRangesTest, OutlinesTheHullOfARange) {
  Show(AddRange("", 0, 0, 100)).clusterMask = 1;
  Draw();
  EXPECT_EQ(canvas.Having("polygon"), (Lines{SquareAt0}));
  EXPECT_EQ(canvas.Having("brush"), (Lines{"brush hollow"}));
  EXPECT_EQ(canvas.Having("pen"), (Lines{"pen 4 solid 102030"}));
}

TEST_F(DrawRangesTest, LeavesTheHullOutWithoutThe100PercentContour) {
  RangePanelRow& row = Show(AddRange("", 0, 0, 100));
  for (const RangeDrawMode mode :
       {RangeDrawMode::Clear, RangeDrawMode::Hash, RangeDrawMode::CoreGrid, RangeDrawMode::Sm3}) {
    row.drawMode = mode;
    row.clusterMask = 0;
    Draw();
    EXPECT_TRUE(canvas.Having("polygon").empty()) << NumberOf(mode);
    EXPECT_TRUE(canvas.Having("line").empty()) << NumberOf(mode);
  }
}

TEST_F(DrawRangesTest, HashesTheHullInItsShading) {
  RangePanelRow& row = Show(AddRange("", 0, 0, 100));
  row.clusterMask = 1;
  row.drawMode = RangeDrawMode::Hash;
  row.shading = FillHorizontal;
  Draw();
  EXPECT_TRUE(canvas.Having("polygon").empty());
  const Lines lines = canvas.Having("line");
  ASSERT_FALSE(lines.empty());
  // Lines along rows, from side to side.
  for (const std::string& line : lines) {
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "line %d,%d %d,%d", &x1, &y1, &x2, &y2), 4);
    EXPECT_EQ(y1, y2);
    EXPECT_EQ(std::min(x1, x2), 200);
    EXPECT_EQ(std::max(x1, x2), 300);
  }
  row.shading = 7;  // none
  Draw();
  EXPECT_EQ(canvas.Having("polygon"), (Lines{SquareAt0}));
}

TEST_F(DrawRangesTest, PassesOverWhatIsHiddenOrEmptyOrOutsideTheBox) {
  Range& range = AddRange("Ana", 0, 0, 100);
  RangePanelRow& row = Show(range);
  row.clusterMask = 1;
  row.visible = false;
  Draw();
  EXPECT_TRUE(canvas.Lines().empty());
  row.visible = true;
  range.hasBounds = false;
  Draw();
  EXPECT_TRUE(canvas.Lines().empty());
  range.hasBounds = true;
  DrawIn({1, 2, 1, 2});
  EXPECT_TRUE(canvas.Lines().empty());
  DrawIn({range.maxLat, 2, range.maxLon, 2});  // touches
  EXPECT_EQ(canvas.Count("polygon"), 1);
}

TEST_F(DrawRangesTest, NamesARangeInItsMiddle) {
  Show(AddRange("Anabel", 0, 0, 100));
  Draw();
  // 6 letters of 6 pixels about 250, and half the ascent of 9 below 100.
  EXPECT_EQ(canvas.Lines(), (Lines{"fore 102030", "text 232,104 Anabel"}));
}

TEST_F(DrawRangesTest, NamesRangesFrom40PixelsOn) {
  Show(AddRange("Ana", 0, 0, 20.01));
  Draw();
  EXPECT_EQ(canvas.Count("text"), 1);
  view.rangeViews.clear();
  Show(AddRange("Ana", 0, 0, 19.9));
  Draw();
  EXPECT_EQ(canvas.Count("text"), 0);
}

TEST_F(DrawRangesTest, ClearsTheBoxUnderANameOnPaper) {
  view.flags |= MapWindowPrint;
  Show(AddRange("Anabel", 0, 0, 100));
  Draw();
  EXPECT_EQ(canvas.Lines(), (Lines{"clip 232,95 268,107", "clear ffffff", "clip 0,0 400,300",
                                   "fore 102030", "text 232,104 Anabel"}));
}

TEST_F(DrawRangesTest, MovesANameToTheNearestFreePlace) {
  Show(AddRange("Anabel", 0, 0, 100));
  // In the middle its box is from 232,95 to 268,107.
  const PixelRect middle{267, 106, 268, 107};
  const PixelRect above{240, 90, 241, 91};
  const PixelRect below{240, 115, 241, 116};
  EXPECT_EQ(DrawnAround({}), Lines{"text 232,104 Anabel"});
  EXPECT_EQ(DrawnAround({{268, 95, 300, 107}, {232, 107, 268, 110}}), Lines{"text 232,104 Anabel"});
  EXPECT_EQ(DrawnAround({middle}), Lines{"text 232,92 Anabel"});
  EXPECT_EQ(DrawnAround({middle, above}), Lines{"text 232,116 Anabel"});
  EXPECT_EQ(DrawnAround({middle, above, below}), Lines{"text 214,104 Anabel"});
}

TEST_F(DrawRangesTest, LeavesANameInTheMiddleWhereThereIsNoRoom) {
  Show(AddRange("Anabel", 0, 0, 100));
  EXPECT_EQ(DrawnAround({{0, 0, 400, 300}}), Lines{"text 232,104 Anabel"});
  // There is room outside the range, where the name would seem to belong to another.
  EXPECT_EQ(DrawnAround({{180, 30, 320, 170}}), Lines{"text 232,104 Anabel"});
}

TEST_F(DrawRangesTest, MovesNoNameOutOfTheView) {
  Show(AddRange("Ana", 138, 0, 30));  // from 18 above the view to 12 in it
  EXPECT_EQ(DrawnAround({}), Lines{"text 206,1 Ana"});
  EXPECT_EQ(DrawnAround({{210, 0, 211, 1}}), Lines{"text 206,13 Ana"});
}

TEST_F(DrawRangesTest, NamesOfRangesInOnePlaceDoNotOverlap) {
  Show(AddRange("Anabel", 0, 0, 100));
  Show(AddRange("Berta", 0, 0, 100));
  Draw();
  EXPECT_EQ(canvas.Having("text"), (Lines{"text 232,104 Anabel", "text 235,92 Berta"}));
}

TEST_F(DrawRangesTest, ANameKeepsClearOfLabels) {
  for (const LabelMode labelMode : {LabelMode::All, LabelMode::Auto, LabelMode::FirstLast}) {
    ViewCase::canvas.Forget();
    view.rangeViews.clear();
    map.trails.clear();
    Show(AddRange("Anabel", 0, 0, 100));
    AddTrail("t", {&Add("Mango", 50, 40), &Add("Fig", 64, 45)}).labelMode = labelMode;
    BuildTrailRows(view);
    view.rangeViews.back().visible = true;
    DrawMap(view, All());
    const auto boxOf = [this](const std::string& name) {
      for (const std::string& line : canvas.Having("text")) {
        Pixel at;
        std::sscanf(line.c_str(), "text %d,%d", &at.x, &at.y);
        const int width = static_cast<int>(name.size()) * RecordingCanvas::LetterWidth;
        if (line.find(name) != std::string::npos) {
          return PixelRect{at.x, at.y - 9, at.x + width, at.y + 3};
        }
      }
      return PixelRect{};
    };
    const PixelRect name = boxOf("Anabel");
    EXPECT_GT(name.right, name.left);
    EXPECT_NE(name.top, 95) << "the middle is free";
    for (const char* label : {"Mango", "Fig"}) {
      PixelRect box = boxOf(label);
      EXPECT_GT(box.right, box.left) << label;
      box.top += 1;  // a label's box is a line of the small font
      box.bottom -= 1;
      EXPECT_FALSE(BoxesOverlap(name, box)) << label << NumberOf(labelMode);
    }
  }
}

// --- Cells ----------------------------------------------------------------------------------

TEST_F(DrawRangesTest, ShadesCellsByTheirPercentOfTheTime) {
  Range& range = AddRange("", -500, -500, 1000);
  GiveCells(range, 10,
            {Cell(0, 0, 1), Cell(0, 1, 10), Cell(0, 2, 20), Cell(0, 3, 30), Cell(1, 0, 40),
             Cell(2, 0, 899)});
  RangePanelRow& row = Show(range);
  row.drawMode = RangeDrawMode::CoreGrid;
  Draw();
  // Of 1000 minutes: 0.1 % counts as 0 and is drawn all the same.
  EXPECT_EQ(canvas.Having("brush"),
            (Lines{"brush solid b0b0b0", "brush solid a0a0a0", "brush solid 808080",
                   "brush solid 606060", "brush solid 404040", "brush solid 404040"}));
  EXPECT_EQ(canvas.Having("polygon").front(), "polygon 201,141 209,141 209,149 201,149");
  view.flags |= MapWindowPrint;
  Draw();
  EXPECT_EQ(canvas.Having("brush"),
            (Lines{"brush solid f0f0f0", "brush solid e0e0e0", "brush solid c0c0c0",
                   "brush solid 808080", "brush solid 404040", "brush solid 404040"}));
}

TEST_F(DrawRangesTest, RoundsThePercentOfACell) {
  Range& range = AddRange("", -500, -500, 1000);
  GiveCells(range, 10, {Cell(0, 0, 5), Cell(0, 1, 4), Cell(0, 2, 991)});
  Show(range).drawMode = RangeDrawMode::CoreGrid;
  Draw();
  EXPECT_EQ(canvas.Having("brush"),
            (Lines{"brush solid a0a0a0", "brush solid b0b0b0", "brush solid 404040"}));
}

TEST_F(DrawRangesTest, ShadesTheMeasureOfTheMode) {
  Range& range = AddRange("", -500, -500, 1000);
  GiveCells(range, 10,
            {Cell(0, 0, 1, 1, 0, 0), Cell(0, 1, 1, 0, 1, 0), Cell(0, 2, 1, 0, 0, 1),
             Cell(0, 3, 1, 0, 0, 1)});
  RangePanelRow& row = Show(range);
  for (const auto& [mode, count] :
       {std::pair{RangeDrawMode::Sm1, 1}, std::pair{RangeDrawMode::Sm2, 1},
        std::pair{RangeDrawMode::Sm3, 2}, std::pair{RangeDrawMode::CoreGrid, 4},
        std::pair{RangeDrawMode::Hash, 0}, std::pair{RangeDrawMode::Clear, 0}}) {
    row.drawMode = mode;
    Draw();
    EXPECT_EQ(canvas.Count("polygon"), count) << NumberOf(mode);
  }
}

TEST_F(DrawRangesTest, LeavesCellsOutBelowThreePixels) {
  Range& range = AddRange("", -500, -500, 1000);
  GiveCells(range, 10, {Cell(0, 0, 1)});
  Show(range).drawMode = RangeDrawMode::CoreGrid;
  view.scale = 0.3F;
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 1);
  view.scale = 0.29F;
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 0);
}

TEST_F(DrawRangesTest, TurnsCellsWithTheirGrid) {
  Range& range = AddRange("", -500, -500, 1000);
  GiveCells(range, 20, {Cell(0, 0, 1)});
  map.grids.front().angle = 90;
  Show(range).drawMode = RangeDrawMode::CoreGrid;
  Draw();
  // Along the grid's north, which points east, and its east, which points south.
  EXPECT_EQ(canvas.Having("polygon"), (Lines{"polygon 219,151 219,169 201,169 201,151"}));
}

TEST_F(DrawRangesTest, DrawsBadCellsWithoutHarm) {
  Range& range = AddRange("", -500, -500, 1000);
  GiveCells(range, 10, {Cell(0, 0, 5), Cell(0, 1, -5)});
  Show(range).drawMode = RangeDrawMode::CoreGrid;
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 0);
  range.cells = {Cell(0, 0, 500), Cell(0, 1, -300)};
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 2);
  map.grids.front().cellSize = -10;
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 0);
  map.grids.front().cellSize = 10;
  map.grids.front().corner->flags = 0;
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 0);
}

// --- Clusters -------------------------------------------------------------------------------

TEST_F(DrawRangesTest, FadesContoursTowardsTheBackground) {
  Range& range = AddRange("", 0, 0, 100);
  AddCluster(range, {19, 18, 10, 1, 0});
  RangePanelRow& row = Show(range, 0x000000);
  row.clusterMask = 0xFFFFF;
  Draw();
  // Weights of 19, 18, 10 and 1 twentieths against white; the last one is the hull.
  EXPECT_EQ(PolygonPens(), (Lines{"0c0c0c", "191919", "7f7f7f", "f2f2f2", "000000"}));
}

TEST_F(DrawRangesTest, DrawsOnlyTheContoursOfItsMask) {
  Range& range = AddRange("", 0, 0, 100);
  AddCluster(range, {19, 18, 10});
  AddCluster(range, {18});
  RangePanelRow& row = Show(range, 0x000000);
  row.clusterMask = 0b10;  // 95 %
  Draw();
  EXPECT_EQ(PolygonPens(), (Lines{"191919", "191919"}));
  row.clusterMask = 0b100;  // 90 %: no cluster shows there
  Draw();
  EXPECT_TRUE(PolygonPens().empty());
}

TEST_F(DrawRangesTest, LeavesOutClustersWithoutAnArea) {
  Range& range = AddRange("", 0, 0, 100);
  AddCluster(range, {18}).area[18] = 0;
  Show(range).clusterMask = 0b10;
  Draw();
  EXPECT_TRUE(PolygonPens().empty());
}

// --- Overlaps -------------------------------------------------------------------------------

TEST_F(DrawRangesTest, HashesTheOverlapOfTwoVisibleRangesAsTheFirst) {
  Range& a = AddRange("", 0, 0, 100);
  Range& b = AddRange("", 50, 50, 100);
  AddOverlap(a, b, 50, 50, 50);
  RangePanelRow& rowA = Show(a, 0xAA0000);
  RangePanelRow& rowB = Show(b, 0x00BB00);
  rowA.drawMode = RangeDrawMode::Hash;
  rowA.shading = FillVertical;
  rowB.drawMode = RangeDrawMode::Hash;
  rowB.shading = FillHorizontal;
  Draw();
  EXPECT_EQ(canvas.Having("pen"), (Lines{"pen 0 solid aa0000"}));
  EXPECT_GT(canvas.Count("line"), 0);
  rowB.visible = false;
  Draw();
  EXPECT_EQ(canvas.Count("line"), 0);
}

TEST_F(DrawRangesTest, DrawsAnOverlapByItsOwnRow) {
  Range& a = AddRange("", 0, 0, 100);
  Range& b = AddRange("", 50, 50, 100);
  RangeIntersection& record = AddOverlap(a, b, 0, 0, 100);
  RangePanelRow& row = view.rangeViews.emplace_back();
  row.intersection = &record;
  row.color = 0xCC;
  Draw();
  EXPECT_TRUE(canvas.Lines().empty());
  row.visible = true;
  Draw();
  EXPECT_EQ(canvas.Having("polygon"), (Lines{SquareAt0}));
  EXPECT_EQ(PolygonPens(), (Lines{"0000cc"}));
  row.drawMode = RangeDrawMode::Hash;
  row.shading = FillCross;
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 0);
  EXPECT_GT(canvas.Count("line"), 0);
  canvas.Forget();
  DrawIn({1, 2, 1, 2});
  EXPECT_TRUE(canvas.Lines().empty());
}

TEST_F(DrawRangesTest, ShadesTheCellsOfAnOverlapForItsFirstRange) {
  Range& a = AddRange("", 0, 0, 100);
  Range& b = AddRange("", 50, 50, 100);
  RangeIntersection& record = AddOverlap(a, b, 0, 0, 100);
  record.grid = &AddGrid(Add("Corner", 0, 0), 10, 10, 10);
  a.cells = {Cell(0, 0, 500), Cell(1, 0, 2)};
  record.a.cells = {{1}, {Cell(0, 0, 900)}};
  record.b.cells = {{}, {Cell(5, 5, 7)}};
  RangePanelRow& row = view.rangeViews.emplace_back();
  row.intersection = &record;
  row.visible = true;
  row.drawMode = RangeDrawMode::CoreGrid;
  Draw();
  const Lines brushes = canvas.Having("brush");
  ASSERT_GE(brushes.size(), 2U);
  EXPECT_EQ(brushes[0], "brush solid 404040");
  EXPECT_EQ(brushes[1], "brush solid b0b0b0");
  EXPECT_EQ(canvas.Count("polygon"), 3);  // two cells and the outline
  row.drawMode = RangeDrawMode::Clear;
  Draw();
  EXPECT_EQ(canvas.Count("polygon"), 1);
}

TEST_F(DrawRangesTest, DrawsShadesThenOverlapsThenOutlines) {
  Range& a = AddRange("Anabel", 0, 0, 100);
  Range& b = AddRange("", 50, 50, 100);
  GiveCells(a, 10, {Cell(0, 0, 1)});
  RangeIntersection& record = AddOverlap(a, b, 50, 50, 50);
  RangePanelRow& rowA = Show(a, 0xAA0000);
  rowA.drawMode = RangeDrawMode::CoreGrid;
  rowA.clusterMask = 1;
  Show(b, 0x00BB00).clusterMask = 1;
  RangePanelRow& rowOverlap = view.rangeViews.emplace_back();
  rowOverlap.intersection = &record;
  rowOverlap.visible = true;
  rowOverlap.color = 0xCC;
  Draw();
  EXPECT_EQ(PolygonPens(), (Lines{"404040", "aa0000", "0000cc", "aa0000", "00bb00"}));
}

// --- Estimates ------------------------------------------------------------------------------

/// A square of estimates, from (0, 0) to the north-east.
std::shared_ptr<const EstimateLines> SquareEstimate(double size, PenPattern pattern) {
  auto lines = std::make_shared<EstimateLines>();
  const LatLon far = MetersToLatLon(size, size);
  lines->rings = {{pattern, {{0, 0}, {far.lat, 0}, {far.lat, far.lon}, {0, far.lon}}}};
  lines->bounds = {0, far.lat, 0, far.lon};
  return lines;
}

TEST_F(DrawRangesTest, DrawsEstimatesInTheColorOfTheRowUnderTheHull) {
  RangePanelRow& row = Show(AddRange("", 0, 0, 100), 0xAA0000);
  row.clusterMask = 1;
  row.estimates = SquareEstimate(50, PenPattern::Dotted);
  Draw();
  EXPECT_EQ(canvas.Having("pen"), (Lines{"pen 3 dotted aa0000", "pen 4 solid aa0000"}));
  EXPECT_EQ(canvas.Having("polygon"),
            (Lines{"polygon 200,150 200,100 250,100 250,150", SquareAt0}));
  EXPECT_EQ(canvas.Having("brush"), (Lines{"brush hollow", "brush hollow"}));
  row.color = NoColor;
  row.estimates = SquareEstimate(50, PenPattern::Dashed);
  Draw();
  EXPECT_EQ(canvas.Having("pen").front(), "pen 3 dashed 7000000") << "the foreground";
  row.visible = false;
  Draw();
  EXPECT_TRUE(canvas.Having("polygon").empty());
}

TEST_F(DrawRangesTest, DrawsEstimatesBeyondTheBoundsOfTheirRange) {
  Range& range = AddRange("", 0, 0, 10);
  Show(range).estimates = SquareEstimate(100, PenPattern::Dashed);
  const LatLon south = MetersToLatLon(40, 40);
  const LatLon north = MetersToLatLon(60, 60);
  DrawIn({south.lat, north.lat, south.lon, north.lon});
  EXPECT_EQ(canvas.Count("polygon"), 1) << "the box is outside the range";
  const LatLon beyond = MetersToLatLon(120, 120);
  DrawIn({beyond.lat, 1, beyond.lon, 1});
  EXPECT_EQ(canvas.Count("polygon"), 0);
}

TEST_F(DrawRangesTest, LeavesOutCornersThatAreLessThanThreePixelsFromTheLast) {
  auto lines = std::make_shared<EstimateLines>();
  EstimateRing ring;
  for (int east = 0; east <= 60; ++east) ring.corners.push_back(MetersToLatLon(0, east));
  ring.corners.push_back(MetersToLatLon(60, 30));
  lines->rings = {ring};
  lines->bounds = {0, 1, 0, 1};
  Show(AddRange("", 0, 0, 100)).estimates = lines;
  Draw();
  const Lines polygons = canvas.Having("polygon");
  ASSERT_EQ(polygons.size(), 1U);
  EXPECT_EQ(std::count(polygons[0].begin(), polygons[0].end(), ','), 22) << polygons[0];
}

// --- Points ---------------------------------------------------------------------------------

TEST_F(DrawRangesTest, MarksThePointsWithAMeasure) {
  Range& range = AddRange("", 0, 0, 100);
  for (Point* point : range.points) point->name = "P";
  range.points[0]->sm[1] = 3;
  range.points[2]->sm[0] = 1;
  RangePanelRow& row = Show(range);
  row.showSm[1] = true;
  Draw();
  EXPECT_EQ(canvas.Count("oval"), 1);
  EXPECT_EQ(canvas.Count("text"), 0);
  row.showSm[0] = true;
  Draw();
  EXPECT_EQ(canvas.Count("oval"), 2);
  row.showSm[2] = true;
  Draw();
  EXPECT_EQ(canvas.Count("oval"), 2);
}

// --- The box of an update -------------------------------------------------------------------

TEST_F(DrawRangesTest, TakesTheBoxOfAnUpdate) {
  const GeoBounds box = BoxOfUpdate(view, {100, 50, 300, 250});
  EXPECT_NEAR(box.maxLat, MetersToDegrees(100), 1e-12);
  EXPECT_NEAR(box.minLat, MetersToDegrees(-100), 1e-12);
  EXPECT_NEAR(box.minLon, MetersToDegrees(-100), 1e-9);
  EXPECT_NEAR(box.maxLon, MetersToDegrees(100), 1e-9);
}

TEST_F(DrawRangesTest, TakesTheWidestOfBothEdgesForTheBox) {
  CenterOn(view, {60, 170, NoAltitude});
  const GeoBounds box = BoxOfUpdate(view, All());
  // East reaches further in degrees at the upper edge, which is nearer to the pole.
  EXPECT_GT(box.maxLon - 170, MetersToLatLon(DegreesToMeters(60), 200).lon);
  EXPECT_NEAR(170 - box.minLon, box.maxLon - 170, 1e-9);
}

TEST_F(DrawRangesTest, AreDrawnUnderGridsAndTrails) {
  Range& range = AddRange("", 0, 0, 100);
  AddTrail("a", {&Add("x", 0, 0), &Add("y", 10, 10)});
  BuildTrailRows(view);
  Show(range).clusterMask = 1;
  canvas.Forget();
  DrawMap(view, All());
  const int polygon = canvas.IndexOf("polygon");
  ASSERT_GE(polygon, 0);
  EXPECT_GT(canvas.IndexOf("polyline 200,150"), polygon);
}

}  // namespace
}  // namespace orvane
