// A view on a screen of fine pixels shows and reads the same figures as on any other.

#include "model/point_names.h"
#include "panes/trail_tree.h"
#include "view/draw_map.h"
#include "view/draw_ranges.h"
#include "view/find_in_map.h"
#include "view/grid_shades.h"
#include "view/info_panel.h"
#include "view/pointer.h"
#include "view/preferences.h"
#include "view/scale_text.h"
#include "view/trail_lines.h"
#include "view_case.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

/// A view of 800 x 600 pixels at the ratio 2: what others show on 400 x 300, a metre to the logical
/// pixel.
struct FineCase : ViewCase {
  FineCase() {
    SetPixelRatio(view, 2);
    SizeView(view, 800, 600);
    ZoomToScale(view, 1);
    CenterOn(view, LatLon{});
    canvas.SetClip(All());
    canvas.Forget();
  }
};

TEST(SetPixelRatio, KeepsTheLogicalScaleAndTheMiddle) {
  ViewCase c;
  c.view.rotation = 40;
  CenterOn(c.view, LatLon{.lat = 2, .lon = 3});
  SetPixelRatio(c.view, 1.5);
  EXPECT_EQ(c.view.scale, 1.5F);
  EXPECT_EQ(LogicalScale(c.view), 1);
  const Pixel middle = MapToScreen(c.view, LatLon{.lat = 2, .lon = 3});
  EXPECT_NEAR(middle.x, 200, 1);
  EXPECT_NEAR(middle.y, 150, 1);
  SetPixelRatio(c.view, 1);
  EXPECT_EQ(c.view.scale, 1);
}

TEST(SetPixelRatio, LeavesTheViewForARatioThatNoScreenHas) {
  ViewCase c;
  for (const double ratio : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
    SetPixelRatio(c.view, ratio);
    EXPECT_EQ(c.view.pixelRatio, 1);
    EXPECT_EQ(c.view.scale, 1);
  }
}

TEST(PixelRatio, ALabelLimitCountsLogicalPixels) {
  FineCase c;
  Point& camp = c.Add("Camp", 0, 0);
  c.map.loosePoints.push_front(&camp);
  for (const auto& [limit, drawn] : {std::pair{0.99, 0}, {1.0, 1}, {0.5, 0}}) {
    camp.labelLimit = limit;
    c.canvas.Forget();
    DrawMap(c.view, c.All());
    EXPECT_EQ(c.canvas.Count("text"), drawn) << limit;
  }
}

TEST(PixelRatio, FindZoomsToALimitInLogicalPixels) {
  FineCase c;
  Point& camp = c.Add("Camp", 0, 0);
  AddPointName(c.map, camp, "Camp");
  camp.labelLimit = 0.5;
  FindInMap(c.view, "Camp");
  EXPECT_EQ(LogicalScale(c.view), 0.5F);
  EXPECT_EQ(c.view.scale, 1);
}

TEST(PixelRatio, ThePanelShowsMetersToALogicalPixel) {
  FineCase c;
  EXPECT_EQ(InfoRows(c.view, AltitudeEstimates(c.map))[3].text, "1px=1m");
  ZoomToScale(c.view, *ParseScale("1px = 2.5m"));
  EXPECT_EQ(c.view.scale, 0.8F);
  EXPECT_EQ(InfoRows(c.view, AltitudeEstimates(c.map))[3].text, "1px=2.5m");
}

TEST(PixelRatio, ThePreferencesKeepLogicalPixels) {
  FineCase c;
  ZoomToScale(c.view, 0.25);
  const std::string text = PreferencesText(c.workspace, {}, {&c.view});
  EXPECT_NE(text.find("\r\nScale=0.25\r\n"), std::string::npos) << text;
  const SavedView saved{"case.map", 0, 0, 0.25, 0, false};
  for (const double ratio : {1.0, 1.5, 2.0}) {
    ViewCase other;
    SetPixelRatio(other.view, ratio);
    InitView(other.view, &saved);
    EXPECT_EQ(other.view.scale, static_cast<float>(0.25 * ratio));
  }
}

TEST(PixelRatio, ARangeIsNamedFromTheSameSizeOn) {
  FineCase c;
  Range& range = c.map.ranges.emplace_front();
  range.name = "Home";
  range.hasBounds = true;
  RangePanelRow& row = c.view.rangeViews.emplace_back();
  row.range = &range;
  row.visible = true;
  for (const auto& [meters, named] : {std::pair{19, 0}, {21, 1}}) {
    range.maxLat = range.maxLon = meters / (60.0 * 1852.0);
    c.canvas.Forget();
    PixelMask taken(c.All());
    DrawRanges(c.view, {-90, 90, -180, 180}, taken);
    EXPECT_EQ(c.canvas.Count("text"), named) << meters;
  }
}

TEST(PixelRatio, MarksAndHatchesAreTwiceAsLarge) {
  FineCase c;
  c.view.flags |= MapWindowFindMarker;
  DrawMap(c.view, c.All());
  EXPECT_GE(c.canvas.IndexOf("line 340,300 396,300"), 0);
  EXPECT_GE(c.canvas.IndexOf("pen 6 solid 6ffff00"), 0);
  EXPECT_GE(c.canvas.IndexOf("oval 360,260 441,341"), 0);

  Trail& trail = c.AddTrail("t", {&c.Add("", 0, 0), &c.Add("", 0, 50)});
  BuildTrailRows(c.view);
  c.view.selectedTrail = &trail;
  c.canvas.Forget();
  DrawTrails(c.view, ShownTrails(c.view));
  EXPECT_GE(c.canvas.IndexOf("pen 10 solid 6ffff00"), 0);

  GridShade shade;
  shade.grid = &c.AddGrid(c.Add("corner", 50, -50), 100, 1, 1);
  shade.value = 0;
  c.canvas.Forget();
  HatchCell(c.view, shade);
  EXPECT_NEAR(c.canvas.Count("line"), 25, 1);  // 200 pixels, 8 apart
}

TEST(PixelRatio, ABandScrollsByMetersToALogicalPixel) {
  const auto eastAfter = [](ViewCase& c, Pixel at) {
    ScrollToward(c.view, at);
    return c.view.centralLongitude;
  };
  ViewCase plain;
  FineCase fine;
  EXPECT_NEAR(eastAfter(fine, {820, 10}), eastAfter(plain, {410, 5}), 1e-12);
}

}  // namespace
}  // namespace orvane
