#include "geo/utm.h"

#include "geo/earth.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace orvane {
namespace {

/// About a millimetre, in degrees.
constexpr double Millimeter = 1e-8;

void ExpectPlace(const std::optional<LatLon>& place, double lat, double lon,
                 double tolerance = Millimeter) {
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->lat, lat, tolerance);
  EXPECT_NEAR(place->lon, lon, tolerance);
  EXPECT_EQ(place->altitude, NoAltitude);
}

/// A place anywhere in the zones.
LatLon RandomPlace(std::mt19937& random) {
  const auto share = [&] { return static_cast<double>(random()) / 4294967296.0; };
  const double lat = -80 + 164 * share();
  return {lat, -180 + 360 * share()};
}

TEST(UtmToPosition, HasTheCentralMeridianAtItsFalseEasting) {
  ExpectPlace(UtmToPosition(36, true, 500000, 0), 0, 33);
  ExpectPlace(UtmToPosition(36, false, 500000, 10000000), 0, 33);
  ExpectPlace(UtmToPosition(1, true, 500000, 0), 0, -177);
  ExpectPlace(UtmToPosition(60, true, 500000, 0), 0, 177);
}

/// Lengths of the meridian of WGS 84 from tables: 4984944.378 m to 45 degrees, times 0.9996.
TEST(UtmToPosition, AgreesWithTheLengthOfTheMeridian) {
  ExpectPlace(UtmToPosition(36, true, 500000, 4984944.378 * 0.9996), 45, 33);
  ExpectPlace(UtmToPosition(36, false, 500000, 1e7 - 4984944.378 * 0.9996), -45, 33);
}

/// A tower in Toronto, as printed in handbooks to the metre.
TEST(UtmToPosition, AgreesWithAPrintedPlace) {
  ExpectPlace(UtmToPosition(17, true, 630084, 4833438), 43.642567, -79.387139, 1e-5);
}

TEST(UtmToPosition, RefusesNumbersOutsideTheirBounds) {
  EXPECT_FALSE(UtmToPosition(0, true, 500000, 0));
  EXPECT_FALSE(UtmToPosition(61, true, 500000, 0));
  EXPECT_FALSE(UtmToPosition(36, true, 99999.9, 0));
  EXPECT_FALSE(UtmToPosition(36, true, 900000.1, 0));
  EXPECT_FALSE(UtmToPosition(36, true, 500000, -0.1));
  EXPECT_FALSE(UtmToPosition(36, true, 500000, 10000000.1));
  EXPECT_FALSE(UtmToPosition(36, true, std::nan(""), 0));
  EXPECT_FALSE(UtmToPosition(36, true, 500000, std::nan("")));
  EXPECT_TRUE(UtmToPosition(1, true, 100000, 0));
  EXPECT_TRUE(UtmToPosition(60, false, 900000, 10000000));
}

TEST(UtmToPosition, StaysOnTheEarthBeyondThePole) {
  const auto place = UtmToPosition(36, true, 500000, 10000000);
  ASSERT_TRUE(place);
  EXPECT_LE(place->lat, 90);
  EXPECT_GT(place->lat, 89.9);
}

TEST(IsUtmNorthern, GoesByTheBand) {
  EXPECT_EQ(IsUtmNorthern('C', 5000000), false);
  EXPECT_EQ(IsUtmNorthern('m', 5000000), false);
  EXPECT_EQ(IsUtmNorthern('N', 5000000), true);
  EXPECT_EQ(IsUtmNorthern('x', 5000000), true);
  for (const char letter : {'A', 'B', 'I', 'O', 'Y', 'Z', '1', ' ', '\0'}) {
    EXPECT_FALSE(IsUtmNorthern(letter, 5000000)) << letter;
  }
}

TEST(IsUtmNorthern, TakesSForTheSouthOutsideItsBand) {
  EXPECT_EQ(IsUtmNorthern('S', 3499999), false);
  EXPECT_EQ(IsUtmNorthern('S', 3500000), true);
  EXPECT_EQ(IsUtmNorthern('s', 4500000), true);
  EXPECT_EQ(IsUtmNorthern('s', 4500001), false);
}

TEST(PositionToUtm, ChoosesZoneAndBand) {
  const auto zoneAndBand = [](double lat, double lon) {
    const auto utm = PositionToUtm({lat, lon});
    return utm ? std::to_string(utm->zone) + utm->band : std::string("none");
  };
  EXPECT_EQ(zoneAndBand(-1.1, 33.01), "36M");
  EXPECT_EQ(zoneAndBand(0, 33), "36N");
  EXPECT_EQ(zoneAndBand(-80, -180), "1C");
  EXPECT_EQ(zoneAndBand(84, 179.9), "60X");
  EXPECT_EQ(zoneAndBand(71.9, 9), "32W");
  EXPECT_EQ(zoneAndBand(60, 4), "32V");   // Norway
  EXPECT_EQ(zoneAndBand(78, 10), "33X");  // Svalbard
  EXPECT_EQ(zoneAndBand(0, 213), zoneAndBand(0, -147));
  EXPECT_EQ(zoneAndBand(-80.1, 0), "none");
  EXPECT_EQ(zoneAndBand(84.1, 0), "none");
  EXPECT_EQ(zoneAndBand(std::nan(""), 0), "none");
  EXPECT_EQ(zoneAndBand(0, std::numeric_limits<double>::infinity()), "none");
}

TEST(PositionToUtm, IsTheInverse) {
  std::mt19937 random(20);
  for (int i = 0; i < 2000; ++i) {
    const auto [lat, lon, altitude] = RandomPlace(random);
    const auto utm = PositionToUtm({lat, lon, altitude});
    ASSERT_TRUE(utm);
    ExpectPlace(UtmToPosition(utm->zone, lat >= 0, utm->easting, utm->northing), lat, lon, 1e-9);
    EXPECT_EQ(IsUtmNorthern(utm->band, utm->northing), lat >= 0);
  }
}

TEST(FormatUtm, WritesWholeMetres) {
  EXPECT_EQ(FormatUtm({0, 33}), "36N 500000 0");
  EXPECT_EQ(FormatUtm(*UtmToPosition(36, false, 501234.4, 9876542.6)), "36M 501234 9876543");
  EXPECT_EQ(FormatUtm({85, 0}), std::nullopt);
}

TEST(FormatUtm, CanBeReadBack) {
  std::mt19937 random(21);
  for (int i = 0; i < 2000; ++i) {
    const LatLon place = RandomPlace(random);
    const auto text = FormatUtm(place);
    ASSERT_TRUE(text);
    const auto read = ParseUtm(*text);
    ASSERT_TRUE(read) << *text;
    EXPECT_LT(GroundDistance(place, *read), 0.75) << *text;
  }
  // Just south of the equator the northing rounds to the one of the equator.
  EXPECT_EQ(FormatUtm({-1e-7, 33}), "36M 500000 10000000");
  ExpectPlace(ParseUtm("36M 500000 10000000"), 0, 33);
}

TEST(ParseUtm, ReadsZoneLetterEastingAndNorthing) {
  const auto place = UtmToPosition(36, false, 501234, 9876543);
  ASSERT_TRUE(place);
  for (const char* text : {"36M 501234 9876543", "36M501234 9876543", "36 M 501234 9876543",
                           "36m\t501234   9876543", "  36M 501234, 9876543 ",
                           "36M 501234.0 9876543.", "36L 501234 9876543", "36S 501234 9876543"}) {
    ExpectPlace(ParseUtm(text), place->lat, place->lon, 0);
  }
  EXPECT_EQ(ParseUtm("5N 500000.5 20"), UtmToPosition(5, true, 500000.5, 20));
  EXPECT_EQ(ParseUtm("05N 500000.5 20"), UtmToPosition(5, true, 500000.5, 20));
}

TEST(ParseUtm, RefusesOtherTexts) {
  for (const char* text : {"",
                           " ",
                           "36",
                           "36M",
                           "36M 501234",
                           "M 501234 9876543",
                           "36 501234 9876543",
                           "61M 501234 9876543",
                           "0M 501234 9876543",
                           "036M 501234 9876543",
                           "36I 501234 9876543",
                           "36O 501234 9876543",
                           "36A 501234 9876543",
                           "50M 346092 151876",  // at 88 S
                           "20S 500000 10",
                           "36e100000 200000",
                           "50C 500000 1000000",
                           "50N 500000 9999000",
                           "50X 500000 9340000",
                           "36M 99999 9876543",
                           "36M 900001 9876543",
                           "36M 501234 10000001",
                           "36M -501234 9876543",
                           "36M +501234 9876543",
                           "36M 501234 -5",
                           "36M 5e5 9876543",
                           "36M 501234 9876543 x",
                           "36M 501234 9876543 1",
                           "36M 501234,,9876543",
                           "36M 5012349876543",
                           "36M .5 9876543",
                           "-36M 501234 9876543",
                           "36.5M 501234 9876543",
                           "camp",
                           "0910",
                           "36M 0x50000 9876543",
                           "S21.2 E33",
                           "S1\xB0 6' E33\xB0 0'"}) {
    EXPECT_FALSE(ParseUtm(text)) << text;
  }
}

TEST(ParseUtm, ReadsSquares) {
  const auto place = UtmToPosition(36, false, 512345.5, 9867890.5);
  ASSERT_TRUE(place);
  for (const char* text :
       {"36MWD1234567890", "36M WD 12345 67890", "36 M WD 1234567890", " 36mwd1234567890 "}) {
    ExpectPlace(ParseUtm(text), place->lat, place->lon);
  }
}

TEST(ParseUtm, TakesTheMiddleOfASquare) {
  EXPECT_EQ(ParseUtm("36MWD1267"), UtmToPosition(36, false, 512500, 9867500));
  EXPECT_EQ(ParseUtm("36MWD16"), UtmToPosition(36, false, 515000, 9865000));
}

TEST(ParseUtm, RefusesOtherSquares) {
  for (const char* text :
       {"36MWD", "36MW1234567890", "36MWD123", "36MWD123456789012", "36MWD 123 45", "36MWD1",
        "36MWDX12", "36MID1234567890", "36MAD1234567890", "61MWD1234567890", "36IWD1234567890",
        "0MWD12", "MWD1234567890", "36MWD12 34 56", "36MWD1.2 34", "36MWD12,34", "36MWP12"}) {
    EXPECT_FALSE(ParseUtm(text)) << text;
  }
}

}  // namespace
}  // namespace orvane
