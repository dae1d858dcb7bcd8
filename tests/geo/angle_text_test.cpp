#include "geo/angle_text.h"

#include "support/decimal_comma.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace orvane {
namespace {

struct Angle {
  double value = 0;
  size_t length = 0;
};

Angle AngleOf(std::string_view text, AngleMode mode, double* runningDefault = nullptr) {
  Angle angle;
  angle.value = ParseAngle(text, &angle.length, runningDefault, mode);
  return angle;
}

void ExpectAngle(std::string_view text, AngleMode mode, double value, size_t length) {
  const Angle angle = AngleOf(text, mode);
  EXPECT_NEAR(angle.value, value, 1e-12) << text;
  EXPECT_EQ(angle.length, length) << text;
}

void ExpectWhole(std::string_view text, AngleMode mode, double value) {
  ExpectAngle(text, mode, value, text.size());
}

constexpr AngleMode Longitude = AngleMode::Longitude;
constexpr AngleMode Latitude = AngleMode::Latitude;
constexpr AngleMode Bearing = AngleMode::Bearing;

TEST(ParseAngle, ReadsDegreesMinutesAndSeconds) {
  ExpectWhole("S21.25\xB0", Latitude, -21.25);
  ExpectWhole("S21\xB0 15.720'", Latitude, -21.262);
  ExpectWhole("S21\xB0 15' 43.2\"", Latitude, -(21 + 15.0 / 60 + 43.2 / 3600));
  ExpectWhole("S21\xB0 15' 43.2\"", Latitude, -21.262);
}

TEST(ParseAngle, NeedsBlanksButNoSigns) {
  ExpectWhole("S21 15 43.2", Latitude, -21.262);
  ExpectWhole(
      "S21\xB0"
      "15'",
      Latitude, -21.25);
  ExpectWhole(
      "S21\xA1"
      "15'",
      Latitude, -21.25);
  ExpectAngle("S21 15'43", Latitude, -21.25, 7);
  ExpectAngle("21 15'43", Latitude, 21.25, 6);
}

TEST(ParseAngle, AddsMinutesToTheSignedDegrees) {
  ExpectWhole("-21 15", Latitude, -20.75);
  ExpectWhole("S-21 15", Latitude, 20.75);
}

TEST(ParseAngle, WrapsALongitudeBelow180West) {
  ExpectWhole("-190", Longitude, 170);
  ExpectWhole("W190", Longitude, 170);
  ExpectWhole("W180", Longitude, -180);
  ExpectWhole("190", Longitude, 190);
  ExpectWhole("-190", Latitude, -190);
  ExpectWhole("-190", Bearing, -190);
}

TEST(ParseAngle, TakesOnlyTheLettersOfItsMode) {
  ExpectWhole("n5", Latitude, 5);
  ExpectWhole("s5", Latitude, -5);
  ExpectWhole("e5", Longitude, 5);
  ExpectWhole("w5", Longitude, -5);
  ExpectAngle("e5", Latitude, 0, 0);
  ExpectAngle("N5", Longitude, 0, 0);
  ExpectAngle(" N5", Latitude, 0, 1);
}

TEST(ParseAngle, ReadsABearing) {
  ExpectWhole("359\xB0 30'", Bearing, 359.5);
  ExpectWhole("35\xB0", Bearing, 35);
  ExpectWhole("35.5", Bearing, 35.5);
}

TEST(ParseAngle, LeavesTheLetterOfAnAbsoluteBearingToItsCaller) {
  ExpectWhole(std::string_view("A35\xB0").substr(1), Bearing, 35);
  ExpectAngle("A35\xB0", Bearing, 0, 0);
}

TEST(ParseAngle, IgnoresASingleLetterBeforeABearing) {
  for (const char* text : {"N34", "S34", "E34", "W34", "n34", "s34", "e34", "w34"}) {
    ExpectWhole(text, Bearing, 34);
  }
}

TEST(ParseAngle, StopsAtTheSecondLetterOfAQuadrant) {
  ExpectAngle("N34\xA1 12'E", Bearing, 34.2, 8);
  ExpectAngle("N34E", Bearing, 34, 3);
  ExpectAngle("NE34", Bearing, 0, 1);
}

TEST(ParseAngle, TurnsByTheLettersThatBeginABearing) {
  // The two letters have no number between them, so the angle that is turned is 0.
  ExpectAngle("NE", Bearing, 0, 1);
  ExpectAngle("NW", Bearing, 90, 1);
  ExpectAngle("SE", Bearing, 270, 1);
  ExpectAngle("SW", Bearing, 180, 1);
  ExpectAngle("EN", Bearing, 180, 1);
  ExpectAngle("ES", Bearing, 90, 1);
  ExpectAngle("WS", Bearing, 180, 1);
  ExpectAngle("wn", Bearing, 90, 1);
  ExpectAngle("NS", Bearing, 0, 1);
  ExpectAngle("EW", Bearing, 0, 1);
}

TEST(ParseAngle, LooksForTheSecondLetterRightAfterTheFirst) {
  ExpectAngle("N W34", Bearing, 0, 2);
  ExpectAngle("N34W", Bearing, 34, 3);
}

TEST(ParseAngle, GivesZeroWithoutANumber) {
  ExpectAngle("", Latitude, 0, 0);
  ExpectAngle("camp", Latitude, 0, 0);
  ExpectAngle("S", Latitude, 0, 1);
  ExpectAngle("inf", Latitude, 0, 0);
  ExpectAngle("1e999", Latitude, 0, 0);
  ExpectAngle("\xB0", Latitude, 0, 1);
}

TEST(ParseAngle, StepsOverOneOfEachSign) {
  ExpectAngle("5\xB0\xB0", Latitude, 5, 2);
  ExpectAngle("5\xB0  6", Latitude, 5.1, 5);
  ExpectAngle("5 6''", Latitude, 5.1, 4);
  ExpectAngle("5 6' 7\"\"", Latitude, 5 + 6.0 / 60 + 7.0 / 3600, 7);
  ExpectWhole("5 6' 7\" ", Latitude, 5 + 6.0 / 60 + 7.0 / 3600);
  ExpectAngle("5 6'  7", Latitude, 5.1, 5);
  ExpectWhole("5 ", Latitude, 5);
  ExpectWhole("5'", Latitude, 5);
}

TEST(ParseAngle, TakesNoMinutesAtATab) {
  ExpectAngle("5\t6", Latitude, 5, 1);
  ExpectAngle("5\xB0 \t6", Latitude, 5, 3);
  ExpectAngle(std::string_view("5\0006", 3), Latitude, 5, 1);
}

TEST(ParseAngle, TakesNumbersAsTheStandardConversionDoes) {
  ExpectWhole("+5.5e0", Latitude, 5.5);
  ExpectWhole("5 +6", Latitude, 5.1);
  ExpectWhole("5 -6", Latitude, 4.9);
  ExpectWhole("0x10", Latitude, 16);
  // Without a blank between, minutes follow the degrees at once.
  ExpectAngle("5x", Latitude, 5, 1);
}

TEST(ParseAngle, ReadsMinutesWithinTheDegreeOfTheReadingBefore) {
  double running = -21.5;
  EXPECT_NEAR(AngleOf("15.7", Latitude, &running).value, -(21 + 15.7 / 60), 1e-12);
  EXPECT_NEAR(running, -(21 + 15.7 / 60), 1e-12);
  EXPECT_NEAR(AngleOf("S16.5'", Latitude, &running).value, -(21 + 16.5 / 60), 1e-12);
  EXPECT_NEAR(AngleOf("N16.5'", Latitude, &running).value, 21 + 16.5 / 60, 1e-12);
  EXPECT_NEAR(AngleOf("30'", Latitude, &running).value, 21.5, 1e-12);
  EXPECT_NEAR(AngleOf("30' 36\"", Latitude, &running).value, 21.51, 1e-12);
}

TEST(ParseAngle, ReadsDegreesAfterALetterOrBeforeASignOrABlank) {
  double running = -21.5;
  EXPECT_NEAR(AngleOf("S5", Latitude, &running).value, -5, 1e-12);
  EXPECT_NEAR(AngleOf("6\xB0", Latitude, &running).value, -6, 1e-12);
  EXPECT_NEAR(AngleOf("7 30", Latitude, &running).value, -7.5, 1e-12);
  EXPECT_NEAR(AngleOf("8\xA1", Latitude, &running).value, -8, 1e-12);
  EXPECT_EQ(running, -8);
}

TEST(ParseAngle, TakesTheHemisphereOfTheReadingBefore) {
  double running = -21.5;
  EXPECT_NEAR(AngleOf("22\xB0 30'", Latitude, &running).value, -22.5, 1e-12);
  running = 21.5;
  EXPECT_NEAR(AngleOf("22\xB0 30'", Latitude, &running).value, 22.5, 1e-12);
  running = -21.5;
  EXPECT_NEAR(AngleOf("N22\xB0 30'", Latitude, &running).value, 22.5, 1e-12);
}

TEST(ParseAngle, StartsFromADefaultOfZero) {
  double running = 0;
  EXPECT_NEAR(AngleOf("15.6", Latitude, &running).value, 0.26, 1e-12);
  // An empty field is no minutes at all.
  running = -21.5;
  EXPECT_EQ(AngleOf("", Latitude, &running).value, -21);
  EXPECT_EQ(running, -21);
}

TEST(ParseAngle, WrapsTheLongitudeThatItKeeps) {
  double running = 0;
  EXPECT_NEAR(AngleOf("W190\xB0", Longitude, &running).value, 170, 1e-12);
  EXPECT_NEAR(running, 170, 1e-12);
}

TEST(ParseAngle, GivesItsBearingNoHemisphereOfADefault) {
  double running = -5;
  EXPECT_EQ(AngleOf("34", Bearing, &running).value, 34);
  running = -5;
  EXPECT_NEAR(AngleOf("30'", Bearing, &running).value, 5.5, 1e-12);
}

struct Coordinate {
  bool found = false;
  double value = -777;
  size_t length = 777;
};

Coordinate CoordinateOf(std::string_view text, bool latitude) {
  Coordinate result;
  result.found = ParseCoordinate(text, latitude, result.value, &result.length);
  return result;
}

void ExpectCoordinate(std::string_view text, bool latitude, double value, size_t length) {
  const Coordinate result = CoordinateOf(text, latitude);
  EXPECT_TRUE(result.found) << text;
  EXPECT_NEAR(result.value, value, 1e-12) << text;
  EXPECT_EQ(result.length, length) << text;
}

void ExpectNoCoordinate(std::string_view text, bool latitude) {
  const Coordinate result = CoordinateOf(text, latitude);
  EXPECT_FALSE(result.found) << text;
  EXPECT_EQ(result.value, -777) << text;
  EXPECT_EQ(result.length, 777U) << text;
}

TEST(ParseCoordinate, NeedsALetterOrASign) {
  ExpectNoCoordinate("34", true);
  ExpectNoCoordinate("34 12", true);
  ExpectNoCoordinate("34 12 30", true);
  ExpectCoordinate("34\xB0", true, 34, 3);
  ExpectCoordinate("34\xA1", true, 34, 3);
  ExpectCoordinate("34 12'", true, 34.2, 6);
  ExpectCoordinate("N34", true, 34, 3);
  ExpectCoordinate("34N", true, 34, 3);
}

TEST(ParseCoordinate, CountsItsSecondFieldLikeMinutes) {
  ExpectCoordinate("34 12 30\"", true, 34.7, 9);
  ExpectCoordinate("34\xB0 12' 30\"", true, 34.7, 11);
  EXPECT_NEAR(AngleOf("34 12 30\"", Latitude).value, 34 + 12.0 / 60 + 30.0 / 3600, 1e-12);
}

TEST(ParseCoordinate, TakesTheHemisphereAtEitherEnd) {
  ExpectCoordinate("s34", true, -34, 3);
  ExpectCoordinate("34 s", true, -34, 4);
  ExpectCoordinate("W34", false, -34, 3);
  ExpectCoordinate("34\xB0 12'w", false, -34.2, 8);
  ExpectCoordinate("34e", false, 34, 3);
  ExpectCoordinate("E 34", false, 34, 4);
  ExpectCoordinate("34 12 N", true, 34.2, 7);
}

TEST(ParseCoordinate, TakesOnlyOneHemisphere) {
  ExpectCoordinate("N34S", true, 34, 3);
  ExpectCoordinate("S34S", true, -34, 3);
  ExpectNoCoordinate("E34", true);
  ExpectNoCoordinate("N34", false);
  ExpectCoordinate(
      "34\xB0"
      "E",
      true, 34, 3);
}

TEST(ParseCoordinate, AddsMinutesToTheSignedDegrees) {
  ExpectCoordinate("-34\xB0 12'", true, -33.8, 8);
  ExpectCoordinate("S-34\xB0 12'", true, 33.8, 9);
}

TEST(ParseCoordinate, SkipsWhiteSpace) {
  ExpectCoordinate(" \t34\xB0\t12'\n30\" ", true, 34.7, 13);
  ExpectCoordinate("34\xB0  x", true, 34, 5);
}

TEST(ParseCoordinate, LooksForALetterRightAfterTheSeconds) {
  ExpectNoCoordinate("34 12 30 N", true);
  ExpectCoordinate("34 12 30N", true, 34.7, 9);
  ExpectCoordinate("34 12' 30 N", true, 34.7, 9);
}

TEST(ParseCoordinate, FailsWithoutANumber) {
  for (const char* text : {"", " ", "N", "\xB0", "camp", "N camp", "inf\xB0", "1e999\xB0"}) {
    ExpectNoCoordinate(text, true);
  }
}

TEST(ParseLatLon, ReadsBothToTheEnd) {
  LatLon place;
  EXPECT_TRUE(ParseLatLon("S21\xB0 15.6' E49\xB0 30' ", place));
  EXPECT_NEAR(place.lat, -21.26, 1e-12);
  EXPECT_NEAR(place.lon, 49.5, 1e-12);
  EXPECT_TRUE(ParseLatLon("21S49E", place));
  EXPECT_EQ(place.lat, -21);
  EXPECT_EQ(place.lon, 49);
}

TEST(ParseLatLon, LeavesTheAltitude) {
  LatLon place{1, 2, 345};
  EXPECT_TRUE(ParseLatLon("N3 E4", place));
  EXPECT_EQ(place.altitude, 345);
}

TEST(ParseLatLon, AcceptsNothingAfterThem) {
  LatLon place;
  EXPECT_FALSE(ParseLatLon("N21 E49 x", place));
  EXPECT_FALSE(ParseLatLon("N21 E49,", place));
  EXPECT_TRUE(ParseLatLon("N21 E49 \t\n", place));
}

TEST(ParseLatLon, StoresTheLatitudeEvenIfTheLongitudeFails) {
  LatLon place{1, 2};
  EXPECT_FALSE(ParseLatLon("N21 camp", place));
  EXPECT_EQ(place.lat, 21);
  EXPECT_EQ(place.lon, 2);
  place = {1, 2};
  EXPECT_FALSE(ParseLatLon("21 E49", place));
  EXPECT_EQ(place.lat, 1);
  EXPECT_EQ(place.lon, 2);
}

TEST(FormatLatitude, WritesThreeDisplays) {
  EXPECT_EQ(FormatLatitude(-21.262, CoordinateDisplay::Seconds), "S21\xB0 15' 43.2\"");
  EXPECT_EQ(FormatLatitude(-21.262, CoordinateDisplay::Minutes), "S21\xB0 15.720'");
  EXPECT_EQ(FormatLatitude(-21.262, CoordinateDisplay::Degrees), "S21.262000\xB0");
  EXPECT_EQ(FormatLatitude(-21.262, CoordinateDisplay::Utm), "S21.262000\xB0");
  EXPECT_EQ(FormatLatitude(21.262, CoordinateDisplay::Minutes), "N21\xB0 15.720'");
}

TEST(FormatLongitude, WritesEastAndWest) {
  EXPECT_EQ(FormatLongitude(122.5, CoordinateDisplay::Seconds), "E122\xB0 30' 0.0\"");
  EXPECT_EQ(FormatLongitude(-122.5, CoordinateDisplay::Minutes), "W122\xB0 30.000'");
  EXPECT_EQ(FormatLongitude(-0.5, CoordinateDisplay::Degrees), "W0.500000\xB0");
}

TEST(FormatLatitude, WritesZeroAsNorthWithoutASign) {
  for (const double zero : {0.0, -0.0}) {
    EXPECT_EQ(FormatLatitude(zero, CoordinateDisplay::Degrees), "N0.000000\xB0");
    EXPECT_EQ(FormatLatitude(zero, CoordinateDisplay::Minutes), "N0\xB0 0.000'");
    EXPECT_EQ(FormatLongitude(zero, CoordinateDisplay::Seconds), "E0\xB0 0' 0.0\"");
  }
}

TEST(FormatLatitude, NeverCarries) {
  EXPECT_EQ(FormatLatitude(21 + 15.0 / 60 + 59.97 / 3600, CoordinateDisplay::Seconds),
            "N21\xB0 15' 60.0\"");
  EXPECT_EQ(FormatLatitude(21 + 59.9999 / 60, CoordinateDisplay::Minutes), "N21\xB0 60.000'");
  EXPECT_EQ(FormatLatitude(20.9999999999, CoordinateDisplay::Seconds), "N20\xB0 59' 60.0\"");
}

TEST(FormatLatitudeFine, WritesFiveDecimalsOfAMinute) {
  EXPECT_EQ(FormatLatitudeFine(-21.262), "S21\xB0 15.72000'");
  EXPECT_EQ(FormatLongitudeFine(4.4016692), "E4\xB0 24.10015'");
}

TEST(FormatLatLon, PutsOneBlankBetween) {
  EXPECT_EQ(FormatLatLon({-21.25, 49.5}, CoordinateDisplay::Minutes),
            "S21\xB0 15.000' E49\xB0 30.000'");
}

TEST(FormatLatLon, WritesUtmWhereItIsDefined) {
  EXPECT_EQ(FormatLatLon({0, 33}, CoordinateDisplay::Utm), "36N 500000 0");
  EXPECT_EQ(FormatLatLon({-80.5, 33}, CoordinateDisplay::Utm), "S80.500000\xB0 E33.000000\xB0");
}

TEST(FormatLatitude, StaysBounded) {
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(FormatLatitude(infinite, CoordinateDisplay::Degrees), "Ninf\xB0");
  for (const double odd : {infinite, -infinite, std::nan(""), 1e300, -1e300}) {
    EXPECT_FALSE(FormatLatitude(odd, CoordinateDisplay::Seconds).empty());
    EXPECT_FALSE(FormatLongitudeFine(odd).empty());
    EXPECT_FALSE(FormatDistance(odd).empty());
  }
}

TEST(FormatDistance, ChoosesItsUnitBySize) {
  EXPECT_EQ(FormatDistance(0), "0m");
  EXPECT_EQ(FormatDistance(-0.0), "0m");
  EXPECT_EQ(FormatDistance(0.05), "5cm");
  EXPECT_EQ(FormatDistance(-0.05), "-5cm");
  EXPECT_EQ(FormatDistance(0.1), "0.1m");
  EXPECT_EQ(FormatDistance(-0.1), "-0.1m");
  EXPECT_EQ(FormatDistance(12.345), "12.3m");
  EXPECT_EQ(FormatDistance(999.9), "1e+03m");
  EXPECT_EQ(FormatDistance(1000), "1km");
  EXPECT_EQ(FormatDistance(1234), "1.23km");
  EXPECT_EQ(FormatDistance(-1000), "-1km");
  EXPECT_EQ(FormatDistance(-1234), "-1.23km");
  EXPECT_EQ(FormatDistance(999999), "1e+03km");
  EXPECT_EQ(FormatDistance(1000000), "1000km");
  EXPECT_EQ(FormatDistance(-1000000), "-1000km");
  EXPECT_EQ(FormatDistance(-1234567), "-1235km");
}

/// How far a display may be from the value, in degrees.
double RoundingOf(CoordinateDisplay display) {
  if (display == CoordinateDisplay::Seconds) return 0.05 / 3600;
  return display == CoordinateDisplay::Minutes ? 0.0005 / 60 : 0.0000005;
}

TEST(ParseAngle, ReadsWhatTheFormattersWrite) {
  constexpr unsigned Seed = 41;
  std::mt19937 random(Seed);
  for (int i = 0; i < 30000; ++i) {
    const double value = (static_cast<double>(random()) / 4294967296.0 - 0.5) * 180;
    const auto display = static_cast<CoordinateDisplay>(random() % 3);
    const double tolerance = RoundingOf(display) * 1.000001;
    const std::string lat = FormatLatitude(value, display);
    const std::string lon = FormatLongitude(2 * value, display);
    const Angle readLat = AngleOf(lat, Latitude);
    const Angle readLon = AngleOf(lon, Longitude);
    ASSERT_NEAR(readLat.value, value, tolerance) << lat << " seed " << Seed;
    ASSERT_NEAR(readLon.value, 2 * value, tolerance) << lon << " seed " << Seed;
    ASSERT_EQ(readLat.length, lat.size()) << lat;
    ASSERT_EQ(readLon.length, lon.size()) << lon;
  }
}

TEST(ParseLatLon, ReadsWhatFormatLatLonWritesButSeconds) {
  // Seconds do not come back: this reader counts them like minutes.
  constexpr unsigned Seed = 42;
  std::mt19937 random(Seed);
  for (int i = 0; i < 20000; ++i) {
    const LatLon place{(static_cast<double>(random()) / 4294967296.0 - 0.5) * 180,
                       (static_cast<double>(random()) / 4294967296.0 - 0.5) * 360};
    const auto display = static_cast<CoordinateDisplay>(random() % 2);
    const std::string text = FormatLatLon(place, display);
    LatLon read;
    ASSERT_TRUE(ParseLatLon(text, read)) << text << " seed " << Seed;
    ASSERT_NEAR(read.lat, place.lat, RoundingOf(display) * 1.000001) << text;
    ASSERT_NEAR(read.lon, place.lon, RoundingOf(display) * 1.000001) << text;
  }
}

TEST(ParseAngle, NeverPassesTheEndOfItsField) {
  constexpr unsigned Seed = 43;
  std::mt19937 random(Seed);
  const std::string bytes = "nsewNSEW0123459.-+e '\"\xB0\xA1\t";
  for (int i = 0; i < 200000; ++i) {
    std::string text;
    for (size_t n = random() % 12; n > 0; --n) text += bytes[random() % bytes.size()];
    for (const AngleMode mode : {Longitude, Latitude, Bearing}) {
      double running = -21.5;
      const Angle angle = AngleOf(text, mode, i % 2 == 0 ? nullptr : &running);
      ASSERT_LE(angle.length, text.size()) << text << " seed " << Seed;
      ASSERT_TRUE(std::isfinite(angle.value)) << text << " seed " << Seed;
    }
    LatLon place;
    ParseLatLon(text, place);
    ASSERT_TRUE(std::isfinite(place.lat) && std::isfinite(place.lon)) << text;
  }
}

TEST(AngleText, TakesADegreeSignInUtf8AsOneSign) {
  ExpectWhole("S21\xC2\xB0 15.720'", Latitude, -21.262);
  double running = -21.5;
  EXPECT_DOUBLE_EQ(AngleOf("22\xC2\xB0 30'", Latitude, &running).value, -22.5);
  double value = 0;
  EXPECT_TRUE(ParseCoordinate("34\xC2\xB0", true, value, nullptr));
  EXPECT_EQ(value, 34);
  EXPECT_FALSE(ParseCoordinate("34\xC2", true, value, nullptr));
}

TEST(AngleText, IgnoresTheLocale) {
  const DecimalComma comma;
  ExpectWhole("S21\xB0 15.720'", Latitude, -21.262);
  EXPECT_EQ(FormatLatitude(-21.262, CoordinateDisplay::Seconds), "S21\xB0 15' 43.2\"");
  EXPECT_EQ(FormatDistance(1234), "1.23km");
}

}  // namespace
}  // namespace orvane
