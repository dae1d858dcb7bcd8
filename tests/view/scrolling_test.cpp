#include "view/scrolling.h"

#include "view_case.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(ScrollStep, GoesByEighthsSevenEighthsAndTwentieths) {
  EXPECT_EQ(ScrollStep(ScrollAction::LineBack, 300, 60, 0), 37);
  EXPECT_EQ(ScrollStep(ScrollAction::LineForward, 300, 60, 0), -37);
  EXPECT_EQ(ScrollStep(ScrollAction::PageBack, 300, 60, 0), 262);
  EXPECT_EQ(ScrollStep(ScrollAction::PageForward, 300, 60, 0), -262);
  EXPECT_EQ(ScrollStep(ScrollAction::Thumb, 300, 60, 58), 30);
  EXPECT_EQ(ScrollStep(ScrollAction::ThumbTrack, 300, 60, 63), -45);
  EXPECT_EQ(ScrollStep(ScrollAction::ThumbTrack, 300, 60, 60), 0);
}

TEST(Scrolling, UpMovesTheViewNorthByMeters) {
  ViewCase c;
  c.view.scale = 2;
  CenterOn(c.view, LatLon{});
  const double top = c.view.top;
  const double bottom = c.view.bottom;
  EXPECT_EQ(ScrollVertically(c.view, ScrollAction::LineBack, 0), ScrollRest);
  EXPECT_DOUBLE_EQ(c.view.top, top + 37 / 2.0);
  EXPECT_DOUBLE_EQ(c.view.bottom, bottom + 37 / 2.0);
  EXPECT_EQ(c.view.centralLongitude, 0);
  ScrollVertically(c.view, ScrollAction::PageForward, 0);
  EXPECT_DOUBLE_EQ(c.view.top, top + 37 / 2.0 - 262 / 2.0);
}

TEST(Scrolling, LeftMovesTheViewWest) {
  ViewCase c;
  const double top = c.view.top;
  EXPECT_EQ(ScrollHorizontally(c.view, ScrollAction::LineBack, 0), ScrollRest);
  EXPECT_NEAR(c.view.centralLongitude * MetersPerDegree, -50, 1e-6);
  ScrollHorizontally(c.view, ScrollAction::PageForward, 0);
  EXPECT_NEAR(c.view.centralLongitude * MetersPerDegree, 300, 1e-6);
  EXPECT_EQ(c.view.top, top);
  EXPECT_DOUBLE_EQ(c.view.left, -200);
}

TEST(Scrolling, TheLongitudeStaysInItsRange) {
  ViewCase c;
  c.view.scale = 0.001F;
  CenterOn(c.view, LatLon{.lat = 0, .lon = -179.9});
  ScrollHorizontally(c.view, ScrollAction::LineBack, 0);
  EXPECT_GT(c.view.centralLongitude, 170);
  EXPECT_LT(c.view.centralLongitude, 180);
}

TEST(Scrolling, APulledThumbStaysAndMovesByItsWay) {
  ViewCase c;
  const double top = c.view.top;
  EXPECT_EQ(ScrollVertically(c.view, ScrollAction::ThumbTrack, 58), 58);
  EXPECT_EQ(c.view.verticalPos, 58);
  EXPECT_DOUBLE_EQ(c.view.top, top + 30);
  EXPECT_EQ(ScrollVertically(c.view, ScrollAction::ThumbTrack, 59), 59);
  EXPECT_DOUBLE_EQ(c.view.top, top + 15);
  // Let go at the same place: nothing moves, and the bar returns to its rest.
  EXPECT_EQ(ScrollVertically(c.view, ScrollAction::Thumb, 59), ScrollRest);
  EXPECT_EQ(c.view.verticalPos, ScrollRest);
  EXPECT_DOUBLE_EQ(c.view.top, top + 15);
}

TEST(Scrolling, EachBarHasItsOwnThumb) {
  ViewCase c;
  ScrollVertically(c.view, ScrollAction::ThumbTrack, 40);
  EXPECT_EQ(c.view.horizontalPos, ScrollRest);
  ScrollHorizontally(c.view, ScrollAction::ThumbTrack, 70);
  EXPECT_EQ(c.view.verticalPos, 40);
  EXPECT_EQ(c.view.horizontalPos, 70);
  ResetScrolling(c.view);
  EXPECT_EQ(c.view.verticalPos, ScrollRest);
  EXPECT_EQ(c.view.horizontalPos, ScrollRest);
}

TEST(Scrolling, UnderARotationTheStepGoesAlongTheScreen) {
  for (const float rotation : {30.0F, 90.0F, 180.0F, -60.0F}) {
    ViewCase c;
    c.view.rotation = rotation;
    CenterOn(c.view, LatLon{});
    const LatLon above = ScreenToMap(c.view, {200, 150 - 37});
    ScrollVertically(c.view, ScrollAction::LineBack, 0);
    LatLon middle = ScreenToMap(c.view, {200, 150});
    EXPECT_NEAR(middle.lat, above.lat, 1e-8) << rotation;
    EXPECT_NEAR(middle.lon, above.lon, 1e-8) << rotation;

    CenterOn(c.view, LatLon{});
    const LatLon left = ScreenToMap(c.view, {200 - 50, 150});
    ScrollHorizontally(c.view, ScrollAction::LineBack, 0);
    middle = ScreenToMap(c.view, {200, 150});
    EXPECT_NEAR(middle.lat, left.lat, 1e-8) << rotation;
    EXPECT_NEAR(middle.lon, left.lon, 1e-8) << rotation;
  }
}

}  // namespace
}  // namespace orvane
