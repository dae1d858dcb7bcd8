#include "view/find_in_map.h"

#include "model/point_names.h"
#include "view_case.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

class FindInMapTest : public testing::Test {
 protected:
  Point& Named(const std::string& name, double lat, double lon) {
    Point& point = c_.AddAt(name, lat, lon);
    AddPointName(c_.map, point, name);
    c_.map.loosePoints.push_front(&point);
    return point;
  }
  bool HasFlag(std::uint32_t flag) const { return (c_.view.flags & flag) != 0; }
  LatLon Middle() const { return ScreenToMap(c_.view, {200, 150}); }

  ViewCase c_;
};

TEST_F(FindInMapTest, ATextWithoutMeaningIsReportedAndChangesNothing) {
  c_.view.flags |= MapWindowFindMarker;
  const double top = c_.view.top;
  EXPECT_EQ(FindInMap(c_.view, "Nowhere"), FindOutcome::Nothing);
  ASSERT_EQ(c_.messages.Entries().size(), 1U);
  EXPECT_EQ(c_.messages.Entries()[0].text, "Can't find Nowhere");
  EXPECT_EQ(c_.view.top, top);
  EXPECT_TRUE(HasFlag(MapWindowFindMarker));
}

TEST_F(FindInMapTest, APointIsCenteredAndMarked) {
  Named("Camp", 2, 3);
  EXPECT_EQ(FindInMap(c_.view, "camp"), FindOutcome::Place);
  EXPECT_NEAR(Middle().lat, 2, 1e-8);
  EXPECT_NEAR(Middle().lon, 3, 1e-8);
  EXPECT_EQ(c_.view.highlight.lat, 2);
  EXPECT_EQ(c_.view.highlight.lon, 3);
  EXPECT_TRUE(HasFlag(MapWindowFindMarker));
  EXPECT_FALSE(HasFlag(MapWindowTrailFlash));
  EXPECT_EQ(c_.view.scale, 1);
  EXPECT_TRUE(c_.messages.Entries().empty());
}

TEST_F(FindInMapTest, APairOfCoordinatesIsAPlace) {
  EXPECT_EQ(FindInMap(c_.view, "N2 E3"), FindOutcome::Place);
  EXPECT_NEAR(Middle().lat, 2, 1e-8);
  EXPECT_TRUE(HasFlag(MapWindowFindMarker));
}

TEST_F(FindInMapTest, ALabelLimitIsComparedDirectlyWithTheScale) {
  Named("Far", 2, 3).labelLimit = 0.5;
  FindInMap(c_.view, "Far");
  EXPECT_EQ(c_.view.scale, 0.5F);
  // Half a metre to the pixel would be two pixels to the metre; the figures are compared raw.
  Named("Near", 2, 3).labelLimit = 2;
  c_.view.scale = 2;
  FindInMap(c_.view, "Near");
  EXPECT_EQ(c_.view.scale, 2);
  c_.view.scale = 2.5F;
  FindInMap(c_.view, "Near");
  EXPECT_EQ(c_.view.scale, 2);
  c_.view.scale = 1000;
  Named("Always", 2, 3);
  FindInMap(c_.view, "Always");
  EXPECT_EQ(c_.view.scale, 1000);
}

TEST_F(FindInMapTest, ATrailIsFittedAndFlashed) {
  Point& a = c_.AddAt("", 1, 1);
  Point& b = c_.AddAt("", 1.5, 3);
  Point& unplaced = MakePoint(c_.map, "");
  unplaced.geo = {80, 80, NoAltitude};
  Trail& trail = c_.AddTrail("Ridge", {&a, &b, &unplaced});
  MapWindow expected = c_.view;
  FitToBounds(expected, 1.5, 1, 3, 1);
  EXPECT_EQ(FindInMap(c_.view, "ridge"), FindOutcome::Trail);
  EXPECT_EQ(c_.view.selectedTrail, &trail);
  EXPECT_TRUE(HasFlag(MapWindowTrailFlash));
  EXPECT_FALSE(HasFlag(MapWindowFindMarker));
  EXPECT_EQ(c_.view.top, expected.top);
  EXPECT_EQ(c_.view.scale, expected.scale);
  EXPECT_EQ(c_.view.centralLongitude, expected.centralLongitude);
}

TEST_F(FindInMapTest, ATurnedViewShowsTheTrailAtItsMiddle) {
  Point& a = c_.AddAt("", 1, 1);
  Point& b = c_.AddAt("", 1.02, 1.06);
  c_.AddTrail("Ridge", {&a, &b});
  c_.view.rotation = 115;
  ASSERT_EQ(FindInMap(c_.view, "ridge"), FindOutcome::Trail);
  const Pixel first = MapToScreen(c_.view, a.geo);
  const Pixel second = MapToScreen(c_.view, b.geo);
  // The margin of the second side is a fortieth wider, so the middle is a few pixels off.
  EXPECT_NEAR((first.x + second.x) / 2, 200, 5);
  EXPECT_NEAR((first.y + second.y) / 2, 150, 5);
}

TEST_F(FindInMapTest, ARangeIsFittedWithoutAMark) {
  Range& range = c_.map.ranges.emplace_front();
  range.name = "North group";
  range.minLat = 1;
  range.maxLat = 2;
  range.minLon = 5;
  range.maxLon = 6;
  range.hasBounds = true;
  MapWindow expected = c_.view;
  FitToBounds(expected, 2, 1, 6, 5);
  EXPECT_EQ(FindInMap(c_.view, "Range:North group"), FindOutcome::Range);
  EXPECT_EQ(c_.view.scale, expected.scale);
  EXPECT_EQ(c_.view.bottom, expected.bottom);
  EXPECT_FALSE(HasFlag(MapWindowFindMarker | MapWindowTrailFlash));
}

TEST_F(FindInMapTest, TheMarkOfAnEarlierFindIsRemoved) {
  Point& a = c_.AddAt("", 1, 1);
  Point& b = c_.AddAt("", 1.5, 3);
  c_.AddTrail("Ridge", {&a, &b});
  Named("Camp", 2, 3);
  FindInMap(c_.view, "Ridge");
  FindInMap(c_.view, "Camp");
  EXPECT_EQ(c_.view.selectedTrail, nullptr);
  EXPECT_FALSE(HasFlag(MapWindowTrailFlash));
  FindInMap(c_.view, "Ridge");
  EXPECT_FALSE(HasFlag(MapWindowFindMarker));
  EXPECT_NE(c_.view.selectedTrail, nullptr);
}

TEST_F(FindInMapTest, TheMarkEndsWhole) {
  Named("Camp", 2, 3);
  FindInMap(c_.view, "Camp");
  c_.view.flags |= MapWindowTrailFlash | MapWindowInfoShown;
  EndFindMark(c_.view);
  EXPECT_FALSE(HasFlag(MapWindowFindMarker | MapWindowTrailFlash));
  EXPECT_TRUE(HasFlag(MapWindowInfoShown));
  EXPECT_EQ(c_.view.selectedTrail, nullptr);
}

}  // namespace
}  // namespace orvane
