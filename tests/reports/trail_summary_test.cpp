#include "reports/trail_summary.h"

#include "base/dates.h"
#include "base/messages.h"
#include "geo/earth.h"
#include "model/map.h"
#include "model/workspace.h"
#include "trails/metrics.h"

#include <cmath>
#include <deque>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

struct TrailSummaryTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "case.map");
  std::deque<Trail> store;

  Point& At(double north, double east, float altitude = NoAltitude) {
    Point& point = MakePoint(map, "");
    point.geo = MetersToLatLon(north, east);
    point.geo.altitude = altitude;
    point.flags |= PointPlaced;
    return point;
  }
  Trail& Path(const std::string& name, const std::vector<Point*>& points) {
    Trail& trail = store.emplace_back();
    trail.name = name;
    trail.points = points;
    return trail;
  }
  /// A square plot of 100 m whose ground rises by the given parts towards north and east.
  Trail& Plot(const std::string& name, double riseNorth, double riseEast) {
    std::vector<Point*> points;
    for (const auto& [north, east] : {std::pair{0, 0}, {100, 0}, {100, 100}, {0, 100}}) {
      points.push_back(
          &At(north, east, static_cast<float>(500 + riseNorth * north + riseEast * east)));
    }
    points.push_back(points.front());
    return Path(name, points);
  }
  /// A closed trail measured to face and slope as given, in degrees.
  Trail& Facing(double aspect, double slope) {
    Trail& trail = Plot("p", 0, 0);
    MeasureTrail(trail);
    trail.flags |= TrailMeasured;
    trail.aspect = (aspect - 90) / 180 * Pi;
    trail.slope = slope * RadiansPerDegree;
    return trail;
  }
  static Texts Cells(Trail& trail, double deviation = 0) {
    Texts cells;
    for (int column = 0; column < static_cast<int>(TrailSummaryColumns); ++column) {
      cells.push_back(TrailSummaryCell(trail, column, deviation));
    }
    return cells;
  }
  static size_t ClassOf(Trail& trail) {
    const auto counts = CountAspects({&trail});
    for (size_t i = 1; i < AspectClasses; ++i) {
      if (counts[i] == 1) return i;
    }
    return 0;
  }
};

TEST_F(TrailSummaryTest, FormatsAreasByTheirSize) {
  EXPECT_EQ(FormatTrailArea(1000000), "1.00km^2");
  EXPECT_EQ(FormatTrailArea(999999), "100.00ha");
  EXPECT_EQ(FormatTrailArea(10000), "1.00ha");
  EXPECT_EQ(FormatTrailArea(9999.9), "9999m^2");
  EXPECT_EQ(FormatTrailArea(-0.5), "0m^2");
  EXPECT_EQ(FormatTrailArea(std::numeric_limits<double>::quiet_NaN()), "0m^2");
}

TEST_F(TrailSummaryTest, ShowsLengthsAndAltitudesOfAPath) {
  Trail& path = Path("Ridge", {&At(0, 0, 500), &At(300, 0, 900.4F), &At(300, 400, 700)});
  EXPECT_EQ(Cells(path), (Texts{"Ridge", "700m", "948m", "500m", "900m", "", "", "", "", ""}));
}

TEST_F(TrailSummaryTest, ShowsOnlyThePathIfAnAltitudeIsMissing) {
  Trail& path = Path("Ridge", {&At(0, 0, 500), &At(300, 0)});
  EXPECT_EQ(Cells(path), (Texts{"Ridge", "300m", "", "", "", "", "", "", "", ""}));
}

TEST_F(TrailSummaryTest, ShowsNoAltitudeOfATrailWithoutPoints) {
  Trail& empty = Path("Empty", {});
  EXPECT_EQ(Cells(empty), (Texts{"Empty", "0m", "0m", "", "", "", "", "", "", ""}));
}

TEST_F(TrailSummaryTest, NamesATrailWithoutANameByDateAndAnimal) {
  Trail& follow = Path("", {&At(0, 0), &At(10, 0)});
  follow.name.reset();
  follow.date = 20010203;
  EXPECT_EQ(TrailSummaryCell(follow, TrailSummaryName, 0), FormatDate(follow.date));
  follow.focalAnimal = "Ana";
  EXPECT_EQ(TrailSummaryCell(follow, TrailSummaryName, 0), FormatDate(follow.date) + " Ana");
}

TEST_F(TrailSummaryTest, ShowsAreaAspectAndSlopeOfASlopingPlot) {
  Trail& plot = Plot("Plot", 0.2, 0);
  EXPECT_EQ(Cells(plot), (Texts{"Plot", "400m", "404m", "500m", "520m", "1.00ha", "1.00ha",
                                "90\xB0", "", "11\xB0"}));
}

TEST_F(TrailSummaryTest, TakesTheDeviationOffTheCompassAspect) {
  Trail& plot = Plot("Plot", 0.2, 0);
  EXPECT_EQ(TrailSummaryCell(plot, TrailSummaryCompassAspect, 12), "78\xB0");
  EXPECT_EQ(TrailSummaryCell(plot, TrailSummaryCompassAspect, 100), "350\xB0");
  EXPECT_EQ(TrailSummaryCell(plot, TrailSummaryCompassAspect, -280), "10\xB0");
  EXPECT_EQ(TrailSummaryCell(plot, TrailSummaryCompassAspect, 0), "");
  EXPECT_FALSE(TrailSummaryCell(plot, TrailSummaryCompassAspect, 1e300).empty());
}

TEST_F(TrailSummaryTest, ShowsNoAspectOfLevelGround) {
  Trail& level = Plot("Level", 0, 0);
  EXPECT_EQ(Cells(level, 5),
            (Texts{"Level", "400m", "400m", "500m", "500m", "1.00ha", "", "", "", "0\xB0"}));
  EXPECT_EQ(TrailSummaryCell(Facing(100, 0.49), TrailSummaryAspect, 0), "");
  EXPECT_EQ(TrailSummaryCell(Facing(100, 0.51), TrailSummaryAspect, 0), "100\xB0");
  EXPECT_EQ(TrailSummaryCell(Facing(100, -0.51), TrailSummarySlantedArea, 0), "1.00ha");
  EXPECT_EQ(TrailSummaryCell(Facing(100, -0.49), TrailSummarySlantedArea, 0), "");
}

TEST_F(TrailSummaryTest, ShowsOnlyTheAreaOfAPlotWithoutAnAltitude) {
  Trail& plot = Plot("Plot", 0.2, 0);
  plot.points[1]->geo.altitude = NoAltitude;
  EXPECT_EQ(Cells(plot, 5), (Texts{"Plot", "400m", "", "", "", "1.00ha", "", "", "", ""}));
}

TEST_F(TrailSummaryTest, HasNoFieldAfterTheLastColumn) {
  Trail& plot = Plot("Plot", 0.2, 0);
  EXPECT_EQ(TrailSummaryCell(plot, -1, 0), "");
  EXPECT_EQ(TrailSummaryCell(plot, 10, 0), "");
}

TEST_F(TrailSummaryTest, PutsBoundsOfAspectsIntoTheirClasses) {
  EXPECT_EQ(ClassOf(Facing(40 - 1e-9, 20)), 2U);
  EXPECT_EQ(ClassOf(Facing(45, 20)), 3U);
  EXPECT_EQ(ClassOf(Facing(90, 20)), 4U);
  EXPECT_EQ(ClassOf(Facing(135, 20)), 5U);
  EXPECT_EQ(ClassOf(Facing(180, 20)), 6U);
  EXPECT_EQ(ClassOf(Facing(225, 20)), 7U);
  EXPECT_EQ(ClassOf(Facing(270, 20)), 8U);
  EXPECT_EQ(ClassOf(Facing(315, 20)), 9U);
  EXPECT_EQ(ClassOf(Facing(330, 20)), 2U);
  EXPECT_EQ(ClassOf(Facing(0, 20)), 2U);
  EXPECT_EQ(ClassOf(Facing(231 - 0.5, 20)), 8U);
  EXPECT_EQ(ClassOf(Facing(310 - 1e-9, 20)), 8U);
  EXPECT_EQ(ClassOf(Facing(90, 9.9)), 1U);
  EXPECT_EQ(ClassOf(Facing(90, 10.1)), 4U);
}

/// An aspect in radians that shows as exactly `degrees`.
double ExactAspect(double degrees) {
  double aspect = (degrees - 90) * Pi / 180;
  for (int i = 0; i < 100 && 180 * aspect / Pi + 90 != degrees; ++i) {
    aspect = std::nextafter(aspect, 180 * aspect / Pi + 90 < degrees ? 10.0 : -10.0);
  }
  return aspect;
}

TEST_F(TrailSummaryTest, CountsExactly40And320WithTheClassesBelow) {
  for (const auto& [degrees, expected] :
       {std::pair{40.0, size_t{2}}, std::pair{50.0, size_t{3}}, std::pair{130.0, size_t{4}},
        std::pair{230.0, size_t{7}}, std::pair{310.0, size_t{8}}, std::pair{320.0, size_t{9}}}) {
    Trail& trail = Facing(degrees, 20);
    trail.aspect = ExactAspect(degrees);
    ASSERT_EQ(180 * trail.aspect / Pi + 90, degrees);
    EXPECT_EQ(ClassOf(trail), expected) << degrees;
  }
}

TEST_F(TrailSummaryTest, CountsOnlyClosedTrailsWithAltitudes) {
  Trail& plot = Plot("Plot", 0.3, 0);
  Trail& flat = Plot("Flat", 0.01, 0);
  Trail& unknown = Plot("Unknown", 0.3, 0);
  unknown.points[2]->geo.altitude = NoAltitude;
  Trail& path = Path("Path", {&At(0, 0, 1), &At(10, 0, 9)});
  const auto counts = CountAspects({&plot, &flat, &unknown, &path});
  EXPECT_EQ(counts, (std::array<int, AspectClasses>{2, 1, 0, 0, 1, 0, 0, 0, 0, 0}));
}

TEST_F(TrailSummaryTest, SumsLengthsAndAreasOfTheTrails) {
  Trail& plot = Plot("Plot", 0.3, 0);
  Trail& level = Plot("Level", 0, 0);
  Trail& unknown = Plot("Unknown", 0.3, 0);
  unknown.points[2]->geo.altitude = NoAltitude;
  Trail& low = Path("Low", {&At(0, 0, -20), &At(30, 0, 20)});
  Trail& empty = Path("Empty", {});
  const TrailTotals totals = SumTrails({&plot, &level, &unknown, &low, &empty});
  EXPECT_NEAR(totals.pathLength, 1230, 0.1);
  EXPECT_NEAR(totals.groundLength, plot.groundLength + 400 + 50, 0.1);
  EXPECT_EQ(totals.minAltitude, -20);
  EXPECT_EQ(totals.maxAltitude, 530);
  EXPECT_EQ(totals.closedTrails, 3);
  // Every closed trail has an area, and a slanted one if its altitudes are known: the level one too,
  // although its row shows none.
  EXPECT_EQ(totals.area, plot.area + level.area + unknown.area);
  EXPECT_GT(level.slantedArea, 0);
  EXPECT_EQ(totals.slantedArea, plot.slantedArea + level.slantedArea);
}

const char* const Headings =
    "Trail\tPath\tGround\tMin\tMax\t\tSlanted\t\tCompass\t\t\n"
    "Name\tLength\tLength\tAlt\tAlt\tArea\tArea\tAspect\tAspect\tSlope\t\n";

TEST_F(TrailSummaryTest, WritesHeadingsAndTotalsForNoTrail) {
  EXPECT_EQ(TrailSummaryText({}, 0), std::string(Headings) + "\nTotals\t0m\t0m\t\t\t\n");
}

TEST_F(TrailSummaryTest, WritesALineATrailInTheGivenOrder) {
  Trail& ridge = Path("Ridge", {&At(0, 0, 500), &At(300, 400, 500)});
  Trail& follow = Path("", {&At(0, 0), &At(30, 0)});
  follow.name.reset();
  follow.focalAnimal = "Ana";
  EXPECT_EQ(TrailSummaryText({&ridge, &follow}, 3), std::string(Headings) +
                                                        "Ridge\t500m\t500m\t500m\t500m\t\t\t\t\t\n"
                                                        "\t30m\t\t\t\t\t\t\t\t\n"
                                                        "\nTotals\t530m\t500m\t500m\t500m\t\n");
}

TEST_F(TrailSummaryTest, WritesTheAspectTableForClosedTrails) {
  const std::string text = TrailSummaryText({&Plot("Plot", 0.2, 0)}, 2);
  EXPECT_EQ(text, std::string(Headings) +
                      "Plot\t400m\t404m\t500m\t520m\t1.00ha\t1.00ha\t90\xB0\t88\xB0\t11\xB0\n"
                      "\nTotals\t400m\t404m\t500m\t520m\t1.00ha\t1.00ha\t\n"
                      "Total closed trails:\t1\n"
                      "Slope < 10\xB0:\t0\n"
                      "321\xB0-40\xB0:\t0\n"
                      "41\xB0-50\xB0:\t0\n"
                      "51\xB0-130\xB0:\t1\n"
                      "131\xB0-140\xB0:\t0\n"
                      "141\xB0-220\xB0:\t0\n"
                      "221\xB0-230\xB0:\t0\n"
                      "231\xB0-310\xB0:\t0\n"
                      "311\xB0-320\xB0:\t0\n");
}

TEST_F(TrailSummaryTest, CountsAspectsWhateverTheDeviation) {
  // By the compass the plot would face into the class below.
  const std::string text = TrailSummaryText({&Plot("Plot", 0.2, 0)}, 45);
  EXPECT_NE(text.find("\t90\xB0\t45\xB0\t"), std::string::npos);
  EXPECT_NE(text.find("\n41\xB0-50\xB0:\t0\n51\xB0-130\xB0:\t1\n"), std::string::npos);
}

TEST_F(TrailSummaryTest, CopesWithPlacesThatAreNotNumbers) {
  Trail& plot = Plot("Plot", 0.2, 0);
  plot.points[1]->geo.lat = std::numeric_limits<double>::quiet_NaN();
  plot.points[2]->geo.altitude = std::numeric_limits<float>::infinity();
  EXPECT_FALSE(TrailSummaryText({&plot}, std::numeric_limits<double>::infinity()).empty());
}

TEST_F(TrailSummaryTest, HeadsEachColumn) {
  int units = 0;
  for (const TrailSummaryHeading& heading : TrailSummaryHeadings) units += heading.units;
  EXPECT_EQ(units, 38);
}

}  // namespace
}  // namespace orvane
