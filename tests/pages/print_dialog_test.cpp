#include "pages/print_dialog.h"

#include "geo/angle_text.h"
#include "geo/earth.h"
#include "pages/page_case.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(PrintDialogTest, ComesUpWithWhatTheWindowShows) {
  const PageCase c;
  EXPECT_EQ(c.dialog.mode, PrintMode::FillPage);
  EXPECT_FALSE(c.dialog.lastSelectionEnabled);
  EXPECT_STREQ(FillPageTitle(c.dialog), "Print current window to fill page");
  EXPECT_EQ(c.dialog.centerLatitude, FormatLatitudeFine(1));
  EXPECT_EQ(c.dialog.centerLongitude, FormatLongitudeFine(10));
  EXPECT_EQ(c.dialog.north, FormatLatitudeFine(1 + 250 / 111120.0));
  EXPECT_EQ(c.dialog.south, FormatLatitudeFine(1 - 250 / 111120.0));
  const double degree = 111120.0 * std::cos(Pi / 180);
  EXPECT_EQ(c.dialog.east, FormatLongitudeFine(10 + 500 / degree));
  EXPECT_EQ(c.dialog.west, FormatLongitudeFine(10 - 500 / degree));
  EXPECT_EQ(c.dialog.vertical, "500m");
  EXPECT_EQ(c.dialog.horizontal, "1000m");
  // 1000 m across 2100 pixels of 300 to the inch is 1:5624.3.
  EXPECT_EQ(c.dialog.areaScale, "1:5700");
  EXPECT_EQ(c.dialog.pointScale, "1:5700");
  EXPECT_EQ(c.dialog.rotation, "0.0");
  EXPECT_EQ(c.dialog.pointSize, "5");
  EXPECT_EQ(c.dialog.gridColor, "#a0a0a0");
  EXPECT_EQ(c.dialog.label, "");
}

TEST(PrintDialogTest, RoundsTheScaleUpByItsSize) {
  const auto scaleFor = [](float pixelsPerMeter) {
    PageCase c;
    c.window.scale = pixelsPerMeter;
    CenterOn(c.window, {.lat = 1, .lon = 10});
    FillPrintDialog(c.view, c.settings, c.dialog);
    return c.dialog.pointScale;
  };
  EXPECT_EQ(scaleFor(100.0F), "1:56");       // 56.243
  EXPECT_EQ(scaleFor(10.0F), "1:570");       // 562.43
  EXPECT_EQ(scaleFor(0.1F), "1:57000");      // 56243
  EXPECT_EQ(scaleFor(0.01F), "1:570000");    // 562430
  EXPECT_EQ(scaleFor(1.0F / 3), "1:17000");  // 16873
}

TEST(PrintDialogTest, WritesDistancesByTheirSize) {
  const auto heightAt = [](float pixelsPerMeter) {
    PageCase c;
    c.window.scale = pixelsPerMeter;
    CenterOn(c.window, {.lat = 1, .lon = 10});
    FillPrintDialog(c.view, c.settings, c.dialog);
    return c.dialog.vertical;
  };
  EXPECT_EQ(heightAt(1000), "50cm");
  EXPECT_EQ(heightAt(500), "1e+02cm");  // two digits, as for all centimetres
  EXPECT_EQ(heightAt(250), "2m");
  EXPECT_EQ(heightAt(0.5F), "1000m");
  EXPECT_EQ(heightAt(0.25F), "2.0km");
  EXPECT_EQ(heightAt(0.03125F), "16.000000km");
}

TEST(PrintDialogTest, HoldsAWindowOfTheWholeEarthToItsPoles) {
  PageCase c;
  c.window.scale = 1e-5F;
  CenterOn(c.window, {.lat = 10, .lon = 20});
  FillPrintDialog(c.view, c.settings, c.dialog);
  EXPECT_EQ(c.dialog.north, FormatLatitudeFine(90));
  EXPECT_EQ(c.dialog.south, FormatLatitudeFine(-90));
  EXPECT_EQ(c.dialog.east, FormatLongitudeFine(180));
  EXPECT_EQ(c.dialog.west, FormatLongitudeFine(-180));
}

TEST(PrintDialogTest, FillsFromTheSelectionWhenThatIsTicked) {
  PageCase c;
  const LatLon a{.lat = 1.001, .lon = 9.999};
  const LatLon b{.lat = 0.998, .lon = 10.002};
  c.Select(a, b);
  c.settings.lastSelection = true;
  c.dialog = OpenPrintDialog(c.view, c.settings);
  EXPECT_TRUE(c.dialog.lastSelectionEnabled);
  EXPECT_TRUE(c.dialog.lastSelection);
  EXPECT_STREQ(FillPageTitle(c.dialog), "Print last selection to fill page");
  EXPECT_EQ(c.dialog.north, FormatLatitudeFine(a.lat));
  EXPECT_EQ(c.dialog.south, FormatLatitudeFine(b.lat));
  EXPECT_EQ(c.dialog.west, FormatLongitudeFine(a.lon));
  EXPECT_EQ(c.dialog.east, FormatLongitudeFine(b.lon));
  EXPECT_EQ(c.dialog.centerLatitude, FormatLatitudeFine((a.lat + b.lat) / 2));
  EXPECT_EQ(c.dialog.vertical, "333m");    // 0.003 degrees
  EXPECT_EQ(c.dialog.horizontal, "333m");  // as many of longitude, less 0.015 per cent
  c.dialog.lastSelection = false;
  FillPrintDialog(c.view, c.settings, c.dialog);
  EXPECT_EQ(c.dialog.vertical, "500m");
}

// Corners far outside the window were moved towards it, so the area became smaller.
TEST(PrintDialogTest, FillsFromASelectionThatIsMuchLargerThanTheWindow) {
  PageCase c;
  const LatLon a{.lat = 1.001, .lon = 9.999};
  c.Select(a, {.lat = 0.998, .lon = 10.002});
  c.window.scale = 256;
  CenterOn(c.window, a);
  c.settings.lastSelection = true;
  c.dialog = OpenPrintDialog(c.view, c.settings);
  EXPECT_EQ(c.dialog.vertical, "333m");
  EXPECT_EQ(c.dialog.horizontal, "333m");
  ASSERT_EQ(c.Accept(), "");
  EXPECT_NEAR(static_cast<double>(c.view.scale), 2100 / 333.3, 0.01);
}

TEST(PrintDialogTest, DoesNotComeUpTickedWithoutASelection) {
  PageCase c;
  c.settings.lastSelection = true;
  EXPECT_FALSE(OpenPrintDialog(c.view, c.settings).lastSelection);
}

TEST(PrintDialogTest, FillsOnePageWithTheWindow) {
  PageCase c;
  ASSERT_EQ(c.Accept(), "");
  EXPECT_FLOAT_EQ(c.view.scale, 2.1F);  // 2100 pixels for 1000 m
  EXPECT_EQ(PageCount(c.view), 1);
  EXPECT_NEAR(c.view.centerLatitude, 1, 1e-12);
  EXPECT_DOUBLE_EQ(c.view.centralLongitude, 10);
}

TEST(PrintDialogTest, FillsThePageWithATurnedWindowAboutItsMiddle) {
  PageCase c;
  c.window.rotation = 30;
  CenterOn(c.window, {.lat = 1, .lon = 10});
  ASSERT_EQ(c.Accept(), "");
  EXPECT_EQ(c.view.rotation, 30);
  EXPECT_NEAR(c.view.centerLatitude, 1, 1e-9);
}

TEST(PrintDialogTest, FillsThePageWithTheSelectionAtTheMiddleOfTheWindow) {
  PageCase c;
  c.Select({.lat = 1, .lon = 10}, {.lat = 1 + 100 / 111120.0, .lon = 10});
  c.dialog = OpenPrintDialog(c.view, c.settings);
  c.dialog.lastSelection = true;
  ASSERT_EQ(c.Accept(), "");
  EXPECT_FLOAT_EQ(c.view.scale, 30);  // 3000 pixels for 100 m; its width is 0 and left out
  EXPECT_NEAR(c.view.centerLatitude, 1, 1e-12);
  EXPECT_TRUE(c.settings.lastSelection);

  c.Select({.lat = 1, .lon = 10}, {.lat = 1, .lon = 10});
  ASSERT_EQ(c.Accept(), "");
  EXPECT_FLOAT_EQ(c.view.scale, 2.1F);  // a selection of no size is the whole window
}

TEST(PrintDialogTest, PrintsAnArea) {
  PageCase c;
  c.window.rotation = 30;
  c.ChooseArea();
  ASSERT_EQ(c.Accept(), "");
  EXPECT_FLOAT_EQ(c.view.scale, static_cast<float>(ScaleOf10000));
  EXPECT_EQ(c.view.rotation, 0);
  EXPECT_NEAR(c.view.centerLatitude, 1, 1e-12);
  EXPECT_NEAR(c.view.centralLongitude, 10, 1e-12);
  // 3704 m each way; a page is 2540 m high and 1778 m wide.
  EXPECT_EQ(c.view.pagesDown, 2);
  EXPECT_EQ(c.view.pagesAcross, 3);
}

TEST(PrintDialogTest, NamesTheFirstBadFieldOfTheArea) {
  struct Case {
    std::string PrintDialog::*field;
    const char* text;
    const char* message;
  };
  static const Case Cases[] = {
      {&PrintDialog::north, "N1 1x", "Bad North Latitude"},
      {&PrintDialog::south, "here", "Bad South Latitude"},
      {&PrintDialog::south, "N2", "Bad South Latitude"},
      {&PrintDialog::east, "E10 1 m", "Bad East Longitude"},
      {&PrintDialog::west, "W?", "Bad West Longitude"},
      {&PrintDialog::west, "E11", "Bad West Longitude"},
      {&PrintDialog::areaScale, "10000", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::areaScale, "1:0", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::areaScale, "1:", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::areaScale, "0:5", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::areaScale, "1:-5000", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::areaScale, "1:5000 m", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::areaScale, "1:nan", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::areaScale, "1:1e300", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::pointSize, "0", "Bad point size"},
      {&PrintDialog::pointSize, "73", "Bad point size"},
      {&PrintDialog::pointSize, "8pt", "Bad point size"},
      {&PrintDialog::gridColor, "grey", "Bad color"},
      {&PrintDialog::gridColor, "#1000000", "Bad color"},
      {&PrintDialog::gridColor, "-1", "Bad color"},
  };
  for (const Case& wrong : Cases) {
    PageCase c;
    c.ChooseArea();
    c.dialog.*wrong.field = wrong.text;
    EXPECT_EQ(c.Accept(), wrong.message) << wrong.text;
    EXPECT_EQ(c.settings.pointSize, 5);
  }
}

TEST(PrintDialogTest, NamesTheFirstBadFieldOfThePoint) {
  struct Case {
    std::string PrintDialog::*field;
    const char* text;
    const char* message;
  };
  static const Case Cases[] = {
      {&PrintDialog::centerLongitude, "camp", "Bad Longitude"},
      {&PrintDialog::centerLatitude, "camp", "Bad Latitude"},
      {&PrintDialog::vertical, "5 miles", "Bad Vertical distance"},
      {&PrintDialog::vertical, "-5m", "Bad Vertical distance"},
      {&PrintDialog::horizontal, "5kmm", "Bad Horizontal distance"},
      {&PrintDialog::horizontal, "1e999", "Bad Horizontal distance"},
      {&PrintDialog::pointScale, "5000", "Bad scale (must be 1:<some number>)"},
      {&PrintDialog::rotation, "361", "Bad rotation angle"},
      {&PrintDialog::rotation, "30 east", "Bad rotation angle"},
  };
  for (const Case& wrong : Cases) {
    PageCase c;
    c.ChooseAroundPoint();
    // Fields that come later are wrong as well.
    if (wrong.field == &PrintDialog::centerLongitude) c.dialog.centerLatitude = "camp";
    c.dialog.*wrong.field = wrong.text;
    EXPECT_EQ(c.Accept(), wrong.message) << wrong.text;
  }
}

TEST(PrintDialogTest, ReadsDistancesWithTheirUnits) {
  const auto pagesDownFor = [](const std::string& text) {
    PageCase c;
    c.ChooseAroundPoint();
    c.dialog.vertical = text;  // a page is 2540 m high
    EXPECT_EQ(c.Accept(), "") << text;
    return c.view.pagesDown;
  };
  EXPECT_EQ(pagesDownFor("2540"), 1);  // exactly one page is one page
  EXPECT_EQ(pagesDownFor("2541m"), 2);
  EXPECT_EQ(pagesDownFor("5.08km"), 2);
  EXPECT_EQ(pagesDownFor("6K"), 3);
  EXPECT_EQ(pagesDownFor("254100CM"), 2);
  EXPECT_EQ(pagesDownFor("254100c"), 2);
  EXPECT_EQ(pagesDownFor("0"), 1);
  EXPECT_EQ(pagesDownFor(""), 1);
}

TEST(PrintDialogTest, TakesEmptyFieldsAsZero) {
  PageCase c;
  c.ChooseAroundPoint();
  c.dialog.centerLatitude = "";
  c.dialog.centerLongitude = "";
  c.dialog.rotation = "";
  c.dialog.gridColor = "";
  ASSERT_EQ(c.Accept(), "");
  EXPECT_EQ(c.view.centerLatitude, 0);
  EXPECT_EQ(c.view.centralLongitude, 0);
  EXPECT_EQ(c.view.rotation, 0);
  EXPECT_EQ(c.view.gridColor, 0);
  c.dialog.pointSize = "";
  EXPECT_EQ(c.Accept(), "Bad point size");
  c.dialog.pointScale = "";
  EXPECT_EQ(c.Accept(), "Bad scale (must be 1:<some number>)");
}

TEST(PrintDialogTest, KeepsTheExactLongitudeOfTheWindowIfItsTextIsUnchanged) {
  PageCase c;
  const double longitude = 10.000000012345;
  c.window.centralLongitude = longitude;
  c.ChooseAroundPoint();
  c.dialog.centerLongitude = "E10\xC2\xB0 0.00000'";
  ASSERT_EQ(c.Accept(), "");
  EXPECT_EQ(c.view.centralLongitude, longitude);
}

TEST(PrintDialogTest, ReadsTheDegreeSignInBothEncodings) {
  PageCase c;
  c.ChooseAroundPoint();
  c.dialog.centerLatitude = "S2\xC2\xB0 30'";
  c.dialog.centerLongitude = "W3\xB0 15'";
  ASSERT_EQ(c.Accept(), "");
  EXPECT_DOUBLE_EQ(c.view.centerLatitude, -2.5);
  EXPECT_DOUBLE_EQ(c.view.centralLongitude, -3.25);
}

TEST(PrintDialogTest, RemembersSizeAndColor) {
  PageCase c;
  c.dialog.pointSize = "12";
  c.dialog.gridColor = "c0ffee";
  c.dialog.label = "Rains";
  ASSERT_EQ(c.Accept(), "");
  EXPECT_EQ(c.view.gridColor, 0xC0FFEE);
  EXPECT_EQ(c.view.label, "Rains");
  const PrintDialog next = OpenPrintDialog(c.view, c.settings);
  EXPECT_EQ(next.pointSize, "12");
  EXPECT_EQ(next.gridColor, "#c0ffee");
  EXPECT_EQ(next.label, "");
}

TEST(PrintDialogTest, RemembersTheTickOverAWindowWithoutASelection) {
  PageCase c;
  c.settings.lastSelection = true;
  ASSERT_EQ(c.Accept(), "");
  EXPECT_TRUE(c.settings.lastSelection);
  c.Select({.lat = 1, .lon = 10}, {.lat = 1.001, .lon = 10.001});
  c.dialog = OpenPrintDialog(c.view, c.settings);
  c.dialog.lastSelection = false;
  ASSERT_EQ(c.Accept(), "");
  EXPECT_FALSE(c.settings.lastSelection);
}

TEST(PrintDialogTest, RefusesMorePagesThanAnyoneCanJoin) {
  PageCase c;
  c.ChooseAroundPoint();
  c.dialog.vertical = "254km";      // 100 pages down
  c.dialog.horizontal = "177.8km";  // 100 pages across
  EXPECT_EQ(c.Accept(), "");
  c.dialog.horizontal = "178km";
  EXPECT_EQ(c.Accept(), "Too many pages (10100)");
  c.dialog.vertical = "1e300";
  c.dialog.horizontal = "1e300";
  EXPECT_EQ(c.Accept(), "Too many pages (1000000000000000000)");
}

TEST(PrintDialogTest, TheScaleGoesByTheResolutionOfThePage) {
  PageCase c;
  c.view.device.horizontalResolution = 600;
  c.view.device.verticalResolution = 600;
  c.ChooseAroundPoint();
  c.dialog.pointScale = "1:5000";
  EXPECT_EQ(c.Accept(), "");
  EXPECT_FLOAT_EQ(c.view.scale, static_cast<float>(600.0 / 5000 / 0.0254));
}

}  // namespace
}  // namespace orvane
