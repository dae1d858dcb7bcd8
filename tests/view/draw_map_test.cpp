#include "view/draw_map.h"

#include "panes/trail_tree.h"
#include "view/fills.h"
#include "view/view_case.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

/// A small site with one of everything that can be drawn.
struct Site : ViewCase {
  Site() {
    Point& camp = Add("Camp", 0, 0);
    camp.markShape = PointMarkSquare;
    camp.markSize = 2;
    camp.flags |= PointMarkFilled;
    Point& ford = Add("Ford", 40, 90);
    Trail& path = AddTrail("Main", {&Add("M0", -60, -150), &Add("M1", -30, -80), &camp, &ford});
    path.markStyle = MarkStyle::Tick;
    path.width = 2;
    path.lineStyle = LineStyle::Solid;
    path.labelMode = LabelMode::Auto;
    Trail& river = AddTrail("Alem", {&Add("", 140, 60), &ford, &Add("", -20, 130)});
    river.type = "River";
    river.color = NoColor;
    Trail& plot = AddTrail("Plot", {&Add("p1", 100, -120), &Add("p2", 100, -60),
                                    &Add("p3", 50, -60), &Add("p4", 50, -120)});
    plot.points.push_back(plot.points.front());
    plot.filled = true;
    plot.fillPattern = 4;
    plot.labelMode = LabelMode::FirstLast;
    plot.lineStyle = LineStyle::Dashed;
    Trail& pond =
        AddTrail("Pond", {&Add("q1", -70, 60), &Add("q2", -70, 100), &Add("q3", -100, 80)});
    pond.type = "Water";
    pond.filled = true;
    pond.fillPattern = 6;
    pond.labelMode = LabelMode::None;
    Grid& grid = AddGrid(Add("g", -90, -180), 25, 2, 4);
    grid.rowStart = 1;
    grid.columnStart = 1;
    for (const double value : {ShadeFull, ShadeOutline, ShadeInset, 30.0}) {
      GridShade& shade = map.gridShades.emplace_front();
      shade.value = value;
      shade.color = 0x77AA77;
      shade.grid = &grid;
      shade.row = 1;
      shade.column = value >= 0 ? 0 : static_cast<int>(-value) - 9;
    }
    map.loosePoints.push_front(&Add("Tree 7", 120, 150));
    view.flags |= MapWindowFindMarker;
    view.highlight = MetersToLatLon(-110, -20);
    BuildTrailRows(view);
  }
};

/// Compares with a file of tests/view/golden, or writes it where RENEW_GOLDEN is set.
void ExpectGolden(const std::string& text, const std::string& name) {
  const std::string path = std::string(VIEW_GOLDEN_DIR) + "/" + name;
  if (std::getenv("RENEW_GOLDEN") != nullptr) {
    std::ofstream(path, std::ios::binary) << text;
    return;
  }
  std::ifstream file(path, std::ios::binary);
  std::ostringstream golden;
  golden << file.rdbuf();
  EXPECT_EQ(text, golden.str()) << "RENEW_GOLDEN=1 writes " << name << " again";
}

TEST(DrawMap, ASiteIsDrawnAsKept) {
  Site c;
  DrawMap(c.view, c.All());
  ExpectGolden(c.canvas.Text(), "site.txt");
}

TEST(DrawMap, ATurnedSiteIsDrawnAsKept) {
  Site c;
  c.view.rotation = 30;
  CenterOn(c.view, LatLon{});
  DrawMap(c.view, c.All());
  ExpectGolden(c.canvas.Text(), "site_turned.txt");
}

TEST(DrawMap, APrintedSiteIsDrawnAsKept) {
  Site c;
  c.view.flags |= MapWindowPrint;
  DrawMap(c.view, c.All());
  ExpectGolden(c.canvas.Text(), "site_printed.txt");
}

TEST(DrawMap, DrawsInTheOrderOfItsLayers) {
  Site c;
  DrawMap(c.view, c.All());
  const int fill = c.canvas.IndexOf("polygon 260,220");
  const int grid = c.canvas.IndexOf("pen 0 solid a0a0a0");
  const int shade = c.canvas.IndexOf("brush solid 77aa77");
  const int trail = c.canvas.IndexOf("polyline");
  const int label = c.canvas.IndexOf("fore 112233");
  const int marker = c.canvas.IndexOf("pen 3 solid 6ffff00");
  EXPECT_EQ(c.canvas.Lines().front(), "font label");
  EXPECT_GE(fill, 0);
  EXPECT_LT(fill, grid);
  EXPECT_LT(grid, shade);
  EXPECT_LT(shade, trail);
  EXPECT_LT(trail, label);
  EXPECT_LT(label, marker);
}

TEST(DrawMap, TheFindMarkerIsACrossWithAGapInACircle) {
  ViewCase c;
  c.view.flags |= MapWindowFindMarker;
  c.view.highlight = MetersToLatLon(50, 0);
  DrawMap(c.view, c.All());
  EXPECT_EQ(c.canvas.Lines(),
            (Lines{"font label", "pen 0 solid a0a0a0", "fore 7000000", "pen 1 solid 7000000",
                   "line 170,100 198,100", "line 202,100 230,100", "line 200,70 200,98",
                   "line 200,102 200,130", "pen 3 solid 6ffff00", "brush hollow",
                   "oval 180,80 221,121"}));
}

TEST(DrawMap, AcrossThe180thMeridianTrailsAndLabelsAreDrawnTwice) {
  ViewCase c;
  c.view.scale = 0.01F;
  CenterOn(c.view, LatLon{.lat = 0, .lon = 179.95});
  c.AddTrail("west", {&c.AddAt("w1", 0, 179.9), &c.AddAt("w2", 0.02, 179.95)});
  c.AddTrail("east", {&c.AddAt("e1", 0, -179.99), &c.AddAt("e2", 0.02, -179.95)});
  Trail& lake = c.AddTrail("lake", {&c.AddAt("", -0.03, -179.99), &c.AddAt("", -0.03, -179.98),
                                    &c.AddAt("", -0.04, -179.98)});
  lake.filled = true;
  lake.fillPattern = FillSolid;
  BuildTrailRows(c.view);
  DrawMap(c.view, c.All());
  EXPECT_EQ(c.canvas.Count("polyline"), 3);
  Lines names;
  for (const std::string& line : c.canvas.Having("text")) {
    names.push_back(line.substr(line.rfind(' ') + 1));
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (Lines{"e1", "e2", "w1", "w2"}));  // none doubled
  EXPECT_EQ(c.canvas.Count("polygon"), 1);
  EXPECT_EQ(c.view.longitudeWrap, 0);
}

TEST(DrawMap, AcrossThe180thMeridianATurnedViewLabelsBothSidesOnce) {
  for (const double middle : {179.95, -179.95}) {
    ViewCase c;
    c.view.scale = 0.01F;
    c.view.rotation = 30;
    CenterOn(c.view, LatLon{.lat = 0, .lon = middle});
    c.AddTrail("west", {&c.AddAt("w1", 0, 179.9), &c.AddAt("w2", 0.02, 179.95)});
    c.AddTrail("east", {&c.AddAt("e1", 0, -179.99), &c.AddAt("e2", 0.02, -179.95)});
    BuildTrailRows(c.view);
    DrawMap(c.view, c.All());
    Lines names;
    for (const std::string& line : c.canvas.Having("text")) {
      names.push_back(line.substr(line.rfind(' ') + 1));
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Lines{"e1", "e2", "w1", "w2"}));
  }
}

TEST(DrawMap, WestOfThe180thMeridianTheWrapTurnsTheOtherWay) {
  ViewCase c;
  c.view.scale = 0.01F;
  CenterOn(c.view, LatLon{.lat = 0, .lon = -179.95});
  c.AddTrail("west", {&c.AddAt("w1", 0, 179.9), &c.AddAt("w2", 0.02, 179.95)});
  BuildTrailRows(c.view);
  DrawMap(c.view, c.All());
  EXPECT_EQ(c.canvas.Count("polyline"), 1);
  EXPECT_EQ(c.canvas.Count("text"), 2);
}

TEST(DrawMap, TheSecondPassGoesByTheMetresOfTheUpdate) {
  // The area is a turn away from the middle, so it shows in the second pass only.
  const auto hasSecondPass = [](double longitude, PixelRect update) {
    ViewCase c;
    CenterOn(c.view, LatLon{.lat = 0, .lon = longitude});
    const double turned = longitude > 0 ? longitude - 360 : longitude + 360;
    Trail& area = c.AddTrail("t", {&c.AddAt("", 0, turned), &c.AddAt("", 0.0001, turned)});
    area.filled = true;
    area.fillPattern = FillSolid;
    BuildTrailRows(c.view);
    DrawMap(c.view, update);
    return c.canvas.Count("polygon") == 1;
  };
  // The view reaches from 200 metres west to 200 metres east.
  EXPECT_TRUE(hasSecondPass(10, {0, 0, 400, 300}));
  EXPECT_FALSE(hasSecondPass(10, {0, 0, 380, 300}));  // up to 180
  EXPECT_TRUE(hasSecondPass(10, {0, 0, 381, 300}));
  EXPECT_TRUE(hasSecondPass(10, {0, 0, 200, 300}));  // exactly 0
  EXPECT_TRUE(hasSecondPass(-10, {0, 0, 400, 300}));
  EXPECT_FALSE(hasSecondPass(-10, {20, 0, 400, 300}));
  EXPECT_TRUE(hasSecondPass(-10, {200, 0, 400, 300}));
  EXPECT_FALSE(hasSecondPass(0, {0, 0, 400, 300}));
}

TEST(DrawMap, TheSamePassTwiceDrawsTheSame) {
  Site c;
  DrawMap(c.view, c.All());
  const std::string first = c.canvas.Text();
  c.canvas.Forget();
  DrawMap(c.view, c.All());
  EXPECT_EQ(c.canvas.Text(), first);
}

TEST(DrawMap, EveryCoordinateFitsInto16BitsForAnyView) {
  const double bad[] = {1e300,        -1e300, std::numeric_limits<double>::infinity(),
                        std::nan(""), 91,     -180};
  for (const float scale :
       {0.0F, 1e-7F, 1.0F, 1e6F, 3e38F, -2.0F, std::numeric_limits<float>::infinity()}) {
    for (const float rotation : {0.0F, 77.0F}) {
      Site c;
      std::vector<Point*> points;
      for (const double lat : bad) {
        for (const double lon : bad) points.push_back(&c.AddAt("odd", lat, lon));
      }
      Trail& odd = c.AddTrail("odd", points);
      odd.width = 1e300;
      odd.filled = true;
      for (int pattern = -1; pattern < 8; ++pattern) {
        odd.fillPattern = pattern;
        odd.markStyle = MarkStyle::Tick;
        BuildTrailRows(c.view);
        c.view.scale = scale;
        c.view.rotation = rotation;
        CenterOn(c.view, LatLon{.lat = 0, .lon = 100});
        DrawMap(c.view, c.All());
      }
      EXPECT_LE(c.canvas.Farthest(), 32767) << scale << " " << rotation;
    }
  }
}

}  // namespace
}  // namespace orvane
