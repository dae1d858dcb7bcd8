#include "trail_maps.h"
#include "trails/metrics.h"

#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

using test::TrailMap;

using Lines = std::vector<std::string>;

/// All lines of a tip, as a caller asks for them.
Lines TipOf(Trail& trail, double magneticDeviation = 0) {
  Lines lines;
  for (int line = 0; line < 100; ++line) {
    const auto text = TrailTipLine(&trail, false, magneticDeviation, line);
    if (!text) break;
    lines.push_back(*text);
  }
  return lines;
}

/// A closed rectangle; the altitudes are those of its corners, head first.
Trail& AddPlot(TrailMap& data, double height, double width, std::vector<float> altitudes) {
  Point& a = data.At("a", 0, 0, altitudes[0]);
  return data.AddTrail("Plot", {&a, &data.At("b", 0, width, altitudes[1]),
                                &data.At("c", height, width, altitudes[2]),
                                &data.At("d", height, 0, altitudes[3]), &a});
}

TEST(TrailTipLine, OfARowWithoutATrailOffersANewOne) {
  EXPECT_EQ(TrailTipLine(nullptr, true, 0, 0), "Create a new trail");
  EXPECT_FALSE(TrailTipLine(nullptr, true, 0, 1).has_value());
  EXPECT_FALSE(TrailTipLine(nullptr, false, 0, 0).has_value());
}

TEST(TrailTipLine, OfALevelPlotHasAllEightLines) {
  TrailMap data;
  // 9000.2 square metres: half a metre is added to the area, and again to the slanted area.
  Trail& trail = AddPlot(data, 90, 100.00222, {500, 500, 500, 500});
  EXPECT_EQ(TipOf(trail, 3),
            (Lines{"Path length: 380.00m", "Ground length: 380.00m", "Min Alt: 500m, Max Alt: 500m",
                   "Area: 9000m^2", "Slanted Area: 9001m^2", "Aspect 90\xB0 (Compass 87\xB0)",
                   "Slope (along aspect) 0.0\xB0", "0*n+0*e+500"}));
}

TEST(TrailTipLine, BringsTheAspectIntoTheCircleButNotTheCompass) {
  TrailMap data;
  // Rising towards the south-west: the gradient's angle is -135 degrees.
  Trail& trail = AddPlot(data, 100, 100, {520, 510, 500, 510});
  const Lines lines = TipOf(trail, 320);
  ASSERT_EQ(lines.size(), 8U);
  EXPECT_EQ(lines[5], "Aspect 315\xB0 (Compass -5\xB0)");
  EXPECT_EQ(lines[6], "Slope (along aspect) 8.0\xB0");
}

TEST(TrailTipLine, ShowsLargeAreasInHectaresAndSquareKilometres) {
  TrailMap data;
  Trail& hectares = AddPlot(data, 200, 300, {1, 1, 1, 1});
  EXPECT_EQ(TipOf(hectares)[3], "Area: 6.00ha");
  EXPECT_EQ(TipOf(hectares)[4], "Slanted Area: 6.00ha");
  Trail& large = AddPlot(data, 1000, 2500, {1, 1, 1, 1});
  EXPECT_EQ(TipOf(large)[3], "Area: 2.50km^2");
  EXPECT_EQ(TipOf(large)[4], "Slanted Area: 2.50km^2");
  hectares.area = 9999.99;
  EXPECT_EQ(*TrailTipLine(&hectares, false, 0, 3), "Area: 9999m^2");
  hectares.area = 10000;
  EXPECT_EQ(*TrailTipLine(&hectares, false, 0, 3), "Area: 1.00ha");
  hectares.area = 1000000;
  EXPECT_EQ(*TrailTipLine(&hectares, false, 0, 3), "Area: 1.00km^2");
}

TEST(TrailTipLine, OfAnOpenTrailEndsBeforeTheArea) {
  TrailMap data;
  Trail& known = data.AddTrail("Pde", {&data.At("a", 0, 0, 10), &data.At("b", 30, 0, 50)});
  EXPECT_EQ(TipOf(known),
            (Lines{"Path length: 30.00m", "Ground length: 50.00m", "Min Alt: 10m, Max Alt: 50m"}));
  Trail& unknown = data.AddTrail("Old", {&data.At("a", 0, 0), &data.At("b", 30, 0)});
  EXPECT_EQ(TipOf(unknown), Lines{"Path length: 30.00m"});
}

TEST(TrailTipLine, OfATrailWithSomeAltitudesShowsTheirSpanTwice) {
  TrailMap data;
  Trail& trail = AddPlot(data, 50, 50, {500.5F, NoAltitude, 510, 505});
  EXPECT_EQ(TipOf(trail), (Lines{"Path length: 200.00m", "Min Alt: 500.5m, Max Alt: 510m",
                                 "Min Alt: 500.5m, Max Alt: 510m", "Area: 2500m^2"}));
}

TEST(TrailTipLine, OfAPlotWithoutAltitudesEndsWithTheArea) {
  TrailMap data;
  Trail& trail = AddPlot(data, 50, 50, {NoAltitude, NoAltitude, NoAltitude, NoAltitude});
  EXPECT_EQ(TipOf(trail), (Lines{"Path length: 200.00m", "Area: 2500m^2"}));
}

TEST(TrailTipLine, OfATrailWithoutPointsShowsLengthsOfZero) {
  TrailMap data;
  Trail& trail = data.AddTrail("Pde", {});
  EXPECT_EQ(TipOf(trail), (Lines{"Path length: 0.00m", "Ground length: 0.00m"}));
}

TEST(TrailTipLine, MeasuresAgainAtLineZeroUntilAPlaneFits) {
  TrailMap data;
  Trail& open = data.AddTrail("Pde", {&data.At("a", 0, 0, 10), &data.At("b", 30, 0, 50)});
  TipOf(open);
  open.points[1]->geo.altitude = 10;
  EXPECT_EQ(TipOf(open)[1], "Ground length: 30.00m");
  Trail& plot = AddPlot(data, 50, 50, {1, 1, 1, 1});
  TipOf(plot);
  plot.points[2]->geo.altitude = 99;
  EXPECT_EQ(TipOf(plot)[2], "Min Alt: 1m, Max Alt: 1m") << "measured until solved again";
}

TEST(TrailTipLine, ShowsAnAreaThatIsNoNumberAsZero) {
  TrailMap data;
  Trail& trail = AddPlot(data, 50, 50, {1, 1, 1, 1});
  TipOf(trail);
  trail.area = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(*TrailTipLine(&trail, false, 0, 3), "Area: 0m^2");
}

}  // namespace
}  // namespace orvane
