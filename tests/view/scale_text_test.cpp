#include "view/scale_text.h"

#include "view_case.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(ScalePrompt, ShowsMetersFromTwoHundredMetersToThePixelOn) {
  EXPECT_EQ(ScalePrompt(1), "1px = 1m");
  EXPECT_EQ(ScalePrompt(0.4F), "1px = 2.5m");
  EXPECT_EQ(ScalePrompt(16), "1px = 0.0625m");
  EXPECT_EQ(ScalePrompt(0.005F), "1px = 200m");
  EXPECT_EQ(ScalePrompt(0.0049F), "1px = 0.204082km");
  EXPECT_EQ(ScalePrompt(0.0001F), "1px = 10km");
}

TEST(ParseScale, ReadsTheFormsOfTheBox) {
  EXPECT_EQ(ParseScale("1px = 2.5m"), 1 / 2.5);
  EXPECT_EQ(ParseScale("1px=2.5m"), 1 / 2.5);
  EXPECT_EQ(ParseScale("1px   =   2.5m"), 1 / 2.5);
  EXPECT_EQ(ParseScale("1px 2.5"), 1 / 2.5);
  EXPECT_EQ(ParseScale("= 2.5"), 1 / 2.5);
  EXPECT_EQ(ParseScale("2.5"), 1 / 2.5);
  EXPECT_EQ(ParseScale("  2.5M"), 1 / 2.5);
  EXPECT_EQ(ParseScale("2e1"), 1 / 20.0);
}

TEST(ParseScale, ReadsThousandsAndHundredths) {
  EXPECT_EQ(ParseScale("1px = 2km"), 1 / 2000.0);
  EXPECT_EQ(ParseScale("2K"), 1 / 2000.0);
  EXPECT_EQ(ParseScale("50cm"), 1 / 0.5);
  EXPECT_EQ(ParseScale("50C"), 1 / 0.5);
  EXPECT_EQ(ParseScale("50CM"), 1 / 0.5);
}

TEST(ParseScale, RefusesWhateverIsLeftOver) {
  for (const char* text : {"", "1px", "1px =", "m", "2.5 m", "2.5mm", "2.5kc", "2.5m ", "2.5ckm",
                           "1PX = 2", "1px == 2", "two", "2.5x", "nan", "inf"}) {
    EXPECT_FALSE(ParseScale(text).has_value()) << text;
  }
}

TEST(ParseScale, RefusesWhatIsNotAScale) {
  for (const char* text : {"0", "-1", "0km", "-0"}) {
    EXPECT_FALSE(ParseScale(text).has_value()) << text;
  }
}

TEST(ParseScale, ReadsBackWhatThePromptShows) {
  Dice dice(17);
  for (int i = 0; i < 500; ++i) {
    const double scale = std::exp(dice.Between(-12, 8));
    const auto read = ParseScale(ScalePrompt(static_cast<float>(scale)));
    ASSERT_TRUE(read.has_value());
    EXPECT_NEAR(*read / scale, 1, 1e-5);
  }
}

TEST(ZoomToScale, KeepsTheNorthAtTheCenter) {
  ViewCase c;
  CenterOn(c.view, LatLon{.lat = 2, .lon = 3});
  const double north = (c.view.top + c.view.bottom) / 2;
  ZoomToScale(c.view, 0.25);
  EXPECT_EQ(c.view.scale, 0.25F);
  EXPECT_NEAR((c.view.top + c.view.bottom) / 2, north, 1e-6);
  EXPECT_DOUBLE_EQ(c.view.right, 200 / 0.25);
  EXPECT_DOUBLE_EQ(c.view.left, -200 / 0.25);
  EXPECT_EQ(c.view.centralLongitude, 3);
}

TEST(ZoomToScale, StaysWithinItsBounds) {
  ViewCase c;
  ZoomToScale(c.view, 1e30);
  EXPECT_EQ(c.view.scale, static_cast<float>(LargestScale));
  ZoomToScale(c.view, 1e-30);
  EXPECT_EQ(c.view.scale, static_cast<float>(SmallestScale));
  ZoomToScale(c.view, std::nan(""));
  EXPECT_EQ(c.view.scale, static_cast<float>(SmallestScale));
}

TEST(ZoomToScale, KeepsThePlaceAtTheMiddleOfATurnedView) {
  ViewCase c;
  c.view.rotation = 60;
  CenterOn(c.view, LatLon{.lat = 2, .lon = 3});
  ZoomToScale(c.view, 0.02);
  const Pixel middle = MapToScreen(c.view, LatLon{.lat = 2, .lon = 3});
  EXPECT_NEAR(middle.x, 200, 1);
  EXPECT_NEAR(middle.y, 150, 1);
}

}  // namespace
}  // namespace orvane
