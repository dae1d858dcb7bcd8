#include "view/shown_trails.h"

#include "panes/trail_tree.h"
#include "view/labels.h"
#include "view/trail_lines.h"
#include "view/view_case.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(ShownTrails, AreTheVisibleOnesAndTheSelectedOneInTheOrderOfThePane) {
  ViewCase c;
  c.AddTrail("hidden", {}).flags |= TrailHidden;
  Trail& selected = c.AddTrail("b", {});
  selected.flags |= TrailHidden;
  Trail& last = c.AddTrail("c", {});
  Trail& first = c.AddTrail("a", {});
  c.view.selectedTrail = &selected;
  BuildTrailRows(c.view);
  c.view.trailViews.front().visible = false;  // a group does not count for its children
  const std::vector<ShownTrail> shown = ShownTrails(c.view);
  ASSERT_EQ(shown.size(), 3U);
  EXPECT_EQ(shown[0].row->trail, &first);
  EXPECT_EQ(shown[1].row->trail, &selected);
  EXPECT_EQ(shown[2].row->trail, &last);
}

TEST(ShownTrails, BoundsHoldThePlacedPoints) {
  ViewCase c;
  c.AddTrail("t", {&c.AddAt("a", 3, -7), &MakePoint(c.map, "lost"), &c.AddAt("b", -2, 9),
                   &c.AddAt("odd", std::nan(""), 100)});
  BuildTrailRows(c.view);
  const TrailBounds bounds = ShownTrails(c.view).front().bounds;
  EXPECT_TRUE(bounds.hasPoints);
  EXPECT_EQ(bounds.minLat, -2);
  EXPECT_EQ(bounds.maxLat, 3);
  EXPECT_EQ(bounds.minLon, -7);
  EXPECT_EQ(bounds.maxLon, 9);
}

TEST(IsBeyondView, ATrailWithoutPlacesIsNotDrawn) {
  ViewCase c;
  EXPECT_TRUE(IsBeyondView(c.view, TrailBounds{}));
}

TEST(IsBeyondView, LeavesNothingOutUnderARotation) {
  ViewCase c;
  const TrailBounds far{true, 50, 51, 100, 101};
  EXPECT_TRUE(IsBeyondView(c.view, far));
  c.view.rotation = 1;
  EXPECT_FALSE(IsBeyondView(c.view, far));
}

TEST(IsBeyondView, ChangesNoDrawing) {
  constexpr std::uint64_t Seed = 41;
  Dice dice(Seed);
  int leftOut = 0;
  for (int round = 0; round < 300; ++round) {
    ViewCase c;
    const double lat = dice.Between(-89.9, 89.9);
    const double lon = dice.Between(-180, 180);
    const double reach = std::exp(dice.Between(-8, 5));
    c.view.scale = static_cast<float>(std::exp(dice.Between(-12, 2)));
    CenterOn(c.view, {.lat = lat, .lon = lon});
    c.view.longitudeWrap = dice.Int(-1, 2) * 360;
    for (int t = 0; t < 8; ++t) {
      const double north = lat + reach * dice.Between(-1, 1);
      const double east = lon + reach * dice.Between(-2, 2);
      std::vector<Point*> points;
      for (int i = dice.Int(0, 5); i >= 0; --i) {
        points.push_back(&c.AddAt("p", north + 0.2 * reach * dice.Between(-1, 1),
                                  east + 0.2 * reach * dice.Between(-1, 1)));
      }
      c.AddTrail("t" + std::to_string(t), points);
    }
    BuildTrailRows(c.view);
    std::vector<ShownTrail> shown = ShownTrails(c.view);
    for (const ShownTrail& trail : shown) leftOut += IsBeyondView(c.view, trail.bounds) ? 1 : 0;
    const auto draw = [&] {
      c.canvas.Forget();
      DrawTrails(c.view, shown);
      for (Trail& trail : c.map.trails) {
        for (Point* point : trail.points) point->flags &= ~std::uint32_t{PointVisited};
      }
      PlaceLabels(c.view, shown).Draw();
      std::string drawn;
      for (const std::string& line : c.canvas.Lines()) {
        // A pen that is set for nothing draws nothing.
        if (line.substr(0, 3) != "pen") drawn += line + "\n";
      }
      return drawn;
    };
    const std::string withBounds = draw();
    for (ShownTrail& trail : shown) trail.bounds = {true, -1000, 1000, -1000, 1000};
    EXPECT_EQ(draw(), withBounds) << "seed " << Seed << " round " << round;
  }
  EXPECT_GT(leftOut, 500);
  EXPECT_LT(leftOut, 2300);
}

}  // namespace
}  // namespace orvane
