#include "view/orientation.h"

#include "view_case.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(Orientation, ItsButtonsAreInOrder) {
  EXPECT_STREQ(OrientationTexts[static_cast<size_t>(Orientation::TrueNorth)], "True North");
  EXPECT_STREQ(OrientationTexts[static_cast<size_t>(Orientation::TrueWest)], "True West");
  EXPECT_STREQ(OrientationTexts[static_cast<size_t>(Orientation::CompassNorth)], "Compass North");
  EXPECT_STREQ(OrientationTexts[static_cast<size_t>(Orientation::CompassWest)], "Compass West");
  EXPECT_STREQ(OrientationTexts[static_cast<size_t>(Orientation::Free)], "Free Orientation:");
}

TEST(Orientation, TheCompassOnesAddTheDeviation) {
  EXPECT_EQ(RotationOf(Orientation::TrueNorth, 7), 0);
  EXPECT_EQ(RotationOf(Orientation::TrueEast, 7), 90);
  EXPECT_EQ(RotationOf(Orientation::TrueSouth, 7), 180);
  EXPECT_EQ(RotationOf(Orientation::TrueWest, 7), 270);
  EXPECT_EQ(RotationOf(Orientation::CompassNorth, 7), 7);
  EXPECT_EQ(RotationOf(Orientation::CompassEast, 7), 97);
  EXPECT_EQ(RotationOf(Orientation::CompassSouth, -7), 173);
  EXPECT_EQ(RotationOf(Orientation::CompassWest, -7), 263);
  EXPECT_TRUE(IsCompassOrientation(Orientation::CompassNorth));
  EXPECT_TRUE(IsCompassOrientation(Orientation::CompassWest));
  EXPECT_FALSE(IsCompassOrientation(Orientation::TrueWest));
  EXPECT_FALSE(IsCompassOrientation(Orientation::Free));
}

TEST(Orientation, TheButtonThatEqualsTheRotationIsFound) {
  for (const double deviation : {-3.7, 2.25, 12.1}) {
    for (int i = 0; i < 8; ++i) {
      const auto orientation = static_cast<Orientation>(i);
      const double rotation = RotationOf(orientation, deviation);
      EXPECT_EQ(OrientationOf(static_cast<float>(rotation), deviation), orientation) << i;
    }
  }
  EXPECT_EQ(OrientationOf(45, 2.25), Orientation::Free);
  EXPECT_EQ(OrientationOf(-90, 0), Orientation::Free);
  EXPECT_EQ(OrientationOf(2, 2.25), Orientation::Free);
}

TEST(Orientation, TrueComesBeforeCompassAndNorthBeforeEast) {
  EXPECT_EQ(OrientationOf(0, 0), Orientation::TrueNorth);
  EXPECT_EQ(OrientationOf(270, 0), Orientation::TrueWest);
  EXPECT_EQ(OrientationOf(90, 90), Orientation::CompassNorth);
  EXPECT_EQ(OrientationOf(180, 180), Orientation::CompassNorth);
}

TEST(Orientation, TheFieldHoldsOneNumberReducedByWholeTurns) {
  EXPECT_EQ(ParseRotation("45"), 45);
  EXPECT_EQ(ParseRotation(" -12.5"), -12.5);
  EXPECT_EQ(ParseRotation("360"), 0);
  EXPECT_EQ(ParseRotation("730"), 10);
  EXPECT_EQ(ParseRotation("-370"), -10);
  EXPECT_EQ(ParseRotation("359.5"), 359.5);
  EXPECT_EQ(ParseRotation(""), 0);
  for (const char* text : {"45 ", "45 degrees", "north", " ", "1,5", "45\xB0", "inf", "nan"}) {
    EXPECT_FALSE(ParseRotation(text).has_value()) << text;
  }
}

TEST(Orientation, TheFieldShowsWhatItReads) {
  EXPECT_EQ(RotationText(97.25), "97.25");
  EXPECT_EQ(RotationText(-3.5), "-3.5");
  EXPECT_EQ(RotationText(270), "270");
}

TEST(SetOrientation, TurnsAboutTheMiddleOfTheView) {
  ViewCase c;
  CenterOn(c.view, LatLon{.lat = 2, .lon = 3});
  for (const double rotation : {90.0, 180.0, 33.0, -145.0, 0.0}) {
    SetOrientation(c.view, rotation);
    EXPECT_EQ(c.view.rotation, static_cast<float>(rotation));
    const LatLon middle = ScreenToMap(c.view, {200, 150});
    EXPECT_NEAR(middle.lat, 2, 1e-6);
    EXPECT_NEAR(middle.lon, 3, 1e-6);
  }
  EXPECT_EQ(c.view.scale, 1);
}

TEST(SetOrientation, LeavesTheViewForATurnThatIsNotFinite) {
  ViewCase c;
  SetOrientation(c.view, 30);
  for (const double rotation : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    SetOrientation(c.view, rotation);
    EXPECT_EQ(c.view.rotation, 30);
  }
}

TEST(SetOrientation, AtNinetyEastIsUp) {
  ViewCase c;
  SetOrientation(c.view, 90);
  const Pixel east = MapToScreen(c.view, MetersToLatLon(0, 100));
  EXPECT_NEAR(east.x, 200, 1);
  EXPECT_NEAR(east.y, 50, 1);
}

}  // namespace
}  // namespace orvane
