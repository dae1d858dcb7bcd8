#include "view/info_panel.h"

#include "geo/angle_text.h"
#include "view/pointer.h"
#include "view_case.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

class InfoPanelTest : public testing::Test {
 protected:
  std::vector<InfoRow> Rows() { return InfoRows(c_.view, AltitudeEstimates(c_.map)); }

  /// A nameless point of the map with an altitude.
  void AddAltitude(double north, double east, float altitude) {
    Point& point = c_.Add("", north, east);
    point.geo.altitude = altitude;
    c_.map.namelessPoints.push_front(&point);
  }
  Point& SetOrigin(Map& map, double lat, double lon) {
    Point& point = MakePoint(map, "Origin");
    point.geo = {lat, lon, NoAltitude};
    point.flags |= PointPlaced;
    map.origin = &point;
    return point;
  }
  /// A rubber band between two pixels.
  void Band(Pixel from, Pixel to) {
    PressPointer(c_.view, from, false);
    MovePointer(c_.view, to);
  }

  ViewCase c_;
};

TEST_F(InfoPanelTest, ShowsThePlaceUnderThePointer) {
  CenterOn(c_.view, LatLon{.lat = -2.5, .lon = 30.25});
  c_.view.pointer = {200, 150};
  for (const auto display :
       {CoordinateDisplay::Degrees, CoordinateDisplay::Minutes, CoordinateDisplay::Seconds}) {
    SetDisplayMode(c_.view, display);
    const LatLon place = ScreenToMap(c_.view, {200, 150});
    const auto rows = Rows();
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].text, FormatLatitude(place.lat, display));
    EXPECT_EQ(rows[1].text, FormatLongitude(place.lon, display));
    EXPECT_EQ(rows[2].text, "");
    EXPECT_EQ(rows[3].text, "1px=1m");
    for (const InfoRow& row : rows) {
      EXPECT_FALSE(row.mark);
      EXPECT_EQ(row.offset, "");
    }
  }
}

TEST_F(InfoPanelTest, ShowsUtmInOneRowWhereItIsDefined) {
  SetDisplayMode(c_.view, CoordinateDisplay::Utm);
  SetOrigin(c_.map, 0, 33);
  LatLon place{0, 33.0000001, 12};
  auto rows = PlaceRows(c_.map, place, CoordinateDisplay::Utm);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].text, "36N 500000 0");
  EXPECT_EQ(rows[1].text, "");
  EXPECT_EQ(rows[1].offset, "0m");
  EXPECT_EQ(rows[2].text, " Alt: 12m");
  place.lat = 84.5;
  rows = PlaceRows(c_.map, place, CoordinateDisplay::Utm);
  EXPECT_EQ(rows[0].text, "N84.500000\xB0");
  EXPECT_EQ(rows[1].text, "E33.000000\xB0");
  EXPECT_EQ(Rows().size(), 4U);
}

TEST_F(InfoPanelTest, CutsTheAltitudeToWholeMeters) {
  AddAltitude(0, 0, 341.9F);
  EXPECT_EQ(Rows()[2].text, " Alt: 341m");
  c_.map.namelessPoints.front()->geo.altitude = -3.9F;
  EXPECT_EQ(Rows()[2].text, " Alt: -3m");
  c_.map.namelessPoints.front()->geo.altitude = -0.9F;
  EXPECT_EQ(Rows()[2].text, " Alt: 0m");
}

TEST_F(InfoPanelTest, TheBasisGivesNoAltitude) {
  Map& basis = MakeMap(c_.workspace, "basis.map");
  c_.map.basis = &basis;
  Point& point = MakePoint(basis, "");
  point.geo = {0, 0, 100};
  point.flags |= PointPlaced;
  basis.namelessPoints.push_front(&point);
  EXPECT_EQ(Rows()[2].text, "");
}

TEST_F(InfoPanelTest, ShowsTheWayFromTheOriginAfterTheCoordinates) {
  SetOrigin(c_.map, 0, 0);
  c_.view.pointer = {200 + 34, 150 - 12};
  auto rows = Rows();
  EXPECT_EQ(rows[0].offset, "12.0m");
  EXPECT_EQ(rows[1].offset, "34.0m");
  EXPECT_EQ(rows[2].offset, "");
  c_.view.pointer = {200 - 34, 150 + 12};
  rows = Rows();
  EXPECT_EQ(rows[0].offset, "-12.0m");
  EXPECT_EQ(rows[1].offset, "-34.0m");
}

TEST_F(InfoPanelTest, TheWayFromTheOriginChangesItsFormAtATenthAndAThousand) {
  SetOrigin(c_.map, 0, 0);
  c_.view.scale = 100;
  CenterOn(c_.view, LatLon{});
  c_.view.pointer = {200 + 9, 150 - 10};
  EXPECT_EQ(Rows()[0].offset, "0.1m");
  EXPECT_EQ(Rows()[1].offset, "0m");
  c_.view.scale = 0.1F;
  CenterOn(c_.view, LatLon{});
  c_.view.pointer = {200 - 101, 150 - 99};
  EXPECT_EQ(Rows()[0].offset, "990.0m");
  EXPECT_EQ(Rows()[1].offset, "-1.0km");
  c_.view.pointer = {200 + 123, 150 + 150};
  EXPECT_EQ(Rows()[0].offset, "-1.5km");
  EXPECT_EQ(Rows()[1].offset, "1.2km");
}

TEST_F(InfoPanelTest, TheOriginOfABasisCountsAndTheNearestMapFirst) {
  Map& basis = MakeMap(c_.workspace, "basis.map");
  c_.map.basis = &basis;
  SetOrigin(basis, MetersToDegrees(100), 0);
  c_.view.pointer = {200, 150};
  EXPECT_EQ(Rows()[0].offset, "-100.0m");
  SetOrigin(c_.map, MetersToDegrees(20), 0);
  EXPECT_EQ(Rows()[0].offset, "-20.0m");
}

TEST_F(InfoPanelTest, AnOriginWithoutAPlaceSaysNothing) {
  SetOrigin(c_.map, 0, 0).flags = 0;
  EXPECT_EQ(Rows()[0].offset, "");
}

TEST_F(InfoPanelTest, ShowsTheRiseFromTheOriginWhenBothAltitudesAreKnown) {
  Point& origin = SetOrigin(c_.map, 1, 1);
  AddAltitude(0, 0, 341.5F);
  EXPECT_EQ(Rows()[2].offset, "");
  origin.geo.altitude = 300;
  EXPECT_EQ(Rows()[2].offset, "41m");
  origin.geo.altitude = 400.9F;
  EXPECT_EQ(Rows()[2].offset, "-59m");
}

TEST_F(InfoPanelTest, NamesTheGridCellAfterTheScale) {
  Point& corner = c_.Add("Corner", 100, -100);
  Grid& grid = c_.AddGrid(corner, 50, 4, 4);
  grid.rowStart = 1;
  grid.columnStart = 1;
  c_.view.pointer = {200 - 25, 150 - 25};
  EXPECT_EQ(Rows()[3].text, "1px=1m B2");
  c_.view.pointer = {10, 10};
  EXPECT_EQ(Rows()[3].text, "1px=1m");
  Map above = Map();
  above.workspace = &c_.workspace;
  above.basis = &c_.map;
  c_.view.map = &above;
  c_.view.pointer = {200 - 25, 150 - 25};
  EXPECT_EQ(Rows()[3].text, "1px=1m B2");
  c_.view.map = &c_.map;
}

TEST_F(InfoPanelTest, APanShowsTheSameAsRest) {
  const auto rest = Rows();
  PressPointer(c_.view, c_.view.pointer, true);
  const auto pan = Rows();
  ASSERT_EQ(pan.size(), rest.size());
  EXPECT_EQ(pan[0].text, rest[0].text);
  EXPECT_EQ(pan[3].text, rest[3].text);
}

TEST(ScaleLabel, ChangesItsFormWithTheScale) {
  EXPECT_EQ(ScaleLabel(0.001F), "1px=1km");
  EXPECT_EQ(ScaleLabel(0.0049F), "1px=0.2km");
  EXPECT_EQ(ScaleLabel(0.005F), "1px=200m");
  EXPECT_EQ(ScaleLabel(0.0051F), "1px=196m");
  EXPECT_EQ(ScaleLabel(0.0149F), "1px=67.1m");
  EXPECT_EQ(ScaleLabel(0.015F), "1px=67m");
  EXPECT_EQ(ScaleLabel(0.4F), "1px=2.5m");
  EXPECT_EQ(ScaleLabel(4.99F), "1px=0.2m");
  EXPECT_EQ(ScaleLabel(5), "1px=20cm");
  EXPECT_EQ(ScaleLabel(400), "1px=0.25cm");
}

TEST_F(InfoPanelTest, ABandShowsItsSidesDownAndToTheRight) {
  c_.view.scale = 2;
  CenterOn(c_.view, LatLon{.lat = 1, .lon = 1});
  Band({100, 100}, {160, 180});
  const auto rows = Rows();
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_TRUE(rows[0].mark);
  EXPECT_EQ(rows[0].text, "N40m");
  EXPECT_TRUE(rows[1].mark);
  EXPECT_EQ(rows[1].text, "E30m");
  EXPECT_EQ(rows[2].text, "");
  EXPECT_FALSE(rows[3].mark);
  EXPECT_EQ(rows[3].text, "50m 143\xB0");
  Band({100, 100}, {40, 20});
  EXPECT_EQ(Rows()[0].text, "N-40m");
  EXPECT_EQ(Rows()[1].text, "E-30m");
}

TEST_F(InfoPanelTest, ABandShowsItsWayToTheTrueNorthAndEastBesideItsSides) {
  CenterOn(c_.view, LatLon{.lat = 1, .lon = 1});
  Band({100, 100}, {160, 180});
  EXPECT_EQ(Rows()[0].offset, "true N-80m");
  EXPECT_EQ(Rows()[1].offset, "true E60m");
  EXPECT_EQ(Rows()[2].offset, "");
  EXPECT_EQ(Rows()[3].offset, "");
  c_.view.rotation = 90;  // east is up, north is to the left
  CenterOn(c_.view, LatLon{.lat = 1, .lon = 1});
  Band({100, 100}, {160, 180});
  EXPECT_EQ(Rows()[0].text, "N80m");
  EXPECT_EQ(Rows()[0].offset, "true N-60m");
  EXPECT_EQ(Rows()[1].text, "E60m");
  EXPECT_EQ(Rows()[1].offset, "true E-80m");
}

TEST_F(InfoPanelTest, AColumnBesideMarkedRowsLeavesRoomForTheMark) {
  const std::vector<InfoRow> rows = {{true, std::string(20, 'x'), "off"}, {}, {}, {}};
  DrawInfoPanel(c_.canvas, rows, MeasureInfoPanel(c_.canvas, rows), 0xFFFFFF);
  const int markWidth = 8;
  const int column = 3 + markWidth + 20 * RecordingCanvas::LetterWidth + 3;
  EXPECT_EQ(c_.canvas.Having("text")[1], "text " + std::to_string(column) + ",10 off");
}

TEST_F(InfoPanelTest, TheBearingOfABandRunsClockwiseFromUp) {
  CenterOn(c_.view, LatLon{.lat = 1, .lon = 1});
  const auto bearing = [this](int right, int down) {
    Band({100, 100}, {100 + right, 100 + down});
    const std::string text = Rows()[3].text;
    return text.substr(text.rfind(' ') + 1);
  };
  EXPECT_EQ(bearing(0, -50), "0\xB0");
  EXPECT_EQ(bearing(50, -50), "45\xB0");
  EXPECT_EQ(bearing(50, 0), "90\xB0");
  EXPECT_EQ(bearing(0, 50), "180\xB0");
  EXPECT_EQ(bearing(-50, 0), "270\xB0");
  EXPECT_EQ(bearing(-50, -50), "315\xB0");
  EXPECT_EQ(bearing(0, 0), "0\xB0");
}

TEST_F(InfoPanelTest, ABandShowsRiseSlopeAndTheWayThroughBoth) {
  CenterOn(c_.view, LatLon{.lat = 1, .lon = 1});
  // Two points of known altitude, at the very places of two pixels.
  for (const auto& [pixel, altitude] :
       {std::pair{Pixel{100, 100}, 200.0F}, {Pixel{140, 100}, 230.7F}}) {
    Point& point = MakePoint(c_.map, "");
    point.geo = ScreenToMap(c_.view, pixel);
    point.geo.altitude = altitude;
    c_.map.namelessPoints.push_front(&point);
  }
  Band({100, 100}, {140, 100});
  auto rows = Rows();
  EXPECT_TRUE(rows[2].mark);
  EXPECT_EQ(rows[2].text, "Alt: 30m 38\xB0");
  EXPECT_EQ(rows[3].text, "40m (50.4m) 90\xB0");
  Band({140, 100}, {100, 100});
  rows = Rows();
  EXPECT_EQ(rows[2].text, "Alt: -30m -38\xB0");
  EXPECT_EQ(rows[3].text, "40m (50.4m) 270\xB0");
  Band({100, 100}, {100, 100});
  rows = Rows();
  EXPECT_EQ(rows[2].text, "Alt: 0m 0\xB0");
  EXPECT_EQ(rows[3].text, "0m (0m) 0\xB0");
}

TEST(GreatCircleDistance, TakesDegreesForRadiansAndBack) {
  const LatLon onEquator{.lat = 0, .lon = 10};
  const LatLon north{.lat = 1, .lon = 12};
  const double t1 = std::tan(1.0);
  const double t2 = std::tan(2.0);
  const double expected = std::atan(std::sqrt(t1 * t1 + t2 * t2)) * 111120;
  EXPECT_DOUBLE_EQ(GreatCircleDistance(onEquator, north), expected);
  EXPECT_DOUBLE_EQ(GreatCircleDistance(north, onEquator), expected);
}

TEST(GreatCircleDistance, IsNothingOffTheEquatorOrTooFarAlongIt) {
  EXPECT_EQ(GreatCircleDistance({.lat = 1, .lon = 10}, {.lat = 2, .lon = 12}), 0);
  EXPECT_EQ(GreatCircleDistance({.lat = 1e-9, .lon = 10}, {.lat = 2, .lon = 12}), 0);
  EXPECT_EQ(GreatCircleDistance({.lat = 0, .lon = 10}, {.lat = 2, .lon = 100}), 0);
  EXPECT_EQ(GreatCircleDistance({.lat = 2, .lon = 100}, {.lat = 0, .lon = 10}), 0);
  EXPECT_EQ(GreatCircleDistance({.lat = 0, .lon = 100}, {.lat = 2, .lon = 10}), 0);
  EXPECT_GT(GreatCircleDistance({.lat = 0, .lon = 10}, {.lat = 2, .lon = 99.9}), 0);
  EXPECT_EQ(GreatCircleDistance({.lat = 0, .lon = 10}, {.lat = 0, .lon = 10}), 0);
}

TEST_F(InfoPanelTest, ABandFromTheEquatorHasAFifthRow) {
  c_.view.scale = 0.001F;
  CenterOn(c_.view, LatLon{});
  // Row 150 of 300 is the equator itself.
  ASSERT_EQ(ScreenToMap(c_.view, {200, 150}).lat, 0);
  Band({200, 150}, {200, 100});
  auto rows = Rows();
  ASSERT_EQ(rows.size(), 5U);
  EXPECT_FALSE(rows[4].mark);
  EXPECT_EQ(rows[4].text.substr(0, 12), "GreatCircle ");
  EXPECT_EQ(rows[4].text.substr(rows[4].text.size() - 2), "km");
  Band({200, 151}, {200, 100});
  EXPECT_EQ(Rows().size(), 4U);
}

TEST_F(InfoPanelTest, TheFifthRowChangesItsFormWithItsSize) {
  // Next to the equator the figure is the number of degrees, in metres of the meridian.
  c_.view.scale = 1;
  CenterOn(c_.view, LatLon{});
  Band({200, 150}, {200, 50});
  EXPECT_EQ(Rows()[4].text, "GreatCircle 100m");
  c_.view.scale = 0.01F;
  CenterOn(c_.view, LatLon{});
  Band({200, 150}, {200, 50});
  EXPECT_EQ(Rows()[4].text, "GreatCircle 10km");
}

TEST_F(InfoPanelTest, IsAsWideAsItsSampleAndFourLinesHigh) {
  const InfoPanelSize size = MeasureInfoPanel(c_.canvas, Rows());
  EXPECT_EQ(size.width, 19 * RecordingCanvas::LetterWidth + 10);
  EXPECT_EQ(size.height, 4 * RecordingCanvas::SmallHeight + 4);
}

TEST_F(InfoPanelTest, GrowsForWhatWouldNotFit) {
  const std::vector<InfoRow> wide = {{false, std::string(40, 'x'), ""}, {}, {}, {}};
  EXPECT_EQ(MeasureInfoPanel(c_.canvas, wide).width, 3 + 40 * RecordingCanvas::LetterWidth + 3);
  const std::vector<InfoRow> five(5);
  EXPECT_GE(MeasureInfoPanel(c_.canvas, five).height, 5 * 10 + 2);
  const std::vector<InfoRow> offset = {{false, "N1", "123456789012"}, {}, {}, {}};
  const int column = 3 + 13 * RecordingCanvas::LetterWidth + 3;
  EXPECT_EQ(MeasureInfoPanel(c_.canvas, offset).width,
            column + 12 * RecordingCanvas::LetterWidth + 3);
}

TEST_F(InfoPanelTest, DrawsItsRowsAtTheirBaselines) {
  const std::vector<InfoRow> rows = {
      {false, "one", "off"}, {false, "two", ""}, {true, "three", ""}, {false, "four", ""}};
  DrawInfoPanel(c_.canvas, rows, MeasureInfoPanel(c_.canvas, rows), 0xFFFFFF);
  // The ascent is 8, so the baselines are 10 apart.
  EXPECT_EQ(c_.canvas.Having("text"),
            (std::vector<std::string>{"text 3,10 one", "text 84,10 off", "text 3,20 two",
                                      "text 11,30 three", "text 3,40 four"}));
  EXPECT_EQ(c_.canvas.IndexOf("clear ffffff"), c_.canvas.IndexOf("clear"));
  EXPECT_NE(c_.canvas.IndexOf("pen 0 solid 7000000"), -1);
  // Two edges, and the three strokes of the arrow.
  EXPECT_EQ(c_.canvas.Count("line"), 5);
}

}  // namespace
}  // namespace orvane
