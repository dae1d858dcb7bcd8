#include "entry/fix_columns.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using Captions = std::vector<std::string>;
using Columns = std::vector<size_t>;

TEST(CaptionKey, KeepsLettersAndDigits) {
  EXPECT_EQ(CaptionKey("Date & Time [GMT]"), "datetimegmt");
  EXPECT_EQ(CaptionKey("location-long"), "locationlong");
  EXPECT_EQ(CaptionKey("Altitude (m)"), "altitudem");
  EXPECT_EQ(CaptionKey("L\xC3\xA4nge 2"), "lnge2");
  EXPECT_EQ(CaptionKey("\xE7\xBA\xAC\xE5\xBA\xA6"), "\xE7\xBA\xAC\xE5\xBA\xA6");
}

TEST(FixFieldNames, AreThoseOfTheOption) {
  EXPECT_EQ(FixFieldName(FixField::Time), "time");
  EXPECT_EQ(FixFieldName(FixField::Outlier), "outlier");
  EXPECT_EQ(FindFixField("northing"), FixField::Northing);
  EXPECT_FALSE(FindFixField("Northing"));
  EXPECT_FALSE(FindFixField(""));
}

TEST(FindFixColumns, OrdersThemByPrecedenceThenFromLeftToRight) {
  const FixColumns columns = FindFixColumns(
      {"Time", "Y", "X", "time", "timestamp", "Lat", "Height above MSL", "alt", "visible"}, {});
  EXPECT_EQ(columns.Of(FixField::Time), (Columns{4, 0, 3}));
  EXPECT_EQ(columns.Of(FixField::Lat), (Columns{5, 1}));
  EXPECT_EQ(columns.Of(FixField::Lon), (Columns{2}));
  EXPECT_EQ(columns.Of(FixField::Altitude), (Columns{6, 7}));
  EXPECT_EQ(columns.visible, (Columns{8}));
  EXPECT_FALSE(columns.Has(FixField::Outlier));
}

TEST(FindFixColumns, TakesOnlyNamedColumnsForAField) {
  const Captions captions = {"timestamp", "Zeit", "lat", "lon", "outlier", "visible", "bad"};
  const FixColumns columns = FindFixColumns(
      captions,
      {{FixField::Time, "zeit"}, {FixField::Outlier, "BAD"}, {FixField::Time, "timestamp"}});
  EXPECT_EQ(columns.Of(FixField::Time), (Columns{1, 0}));
  EXPECT_EQ(columns.Of(FixField::Outlier), (Columns{6}));
  EXPECT_TRUE(columns.visible.empty());
  EXPECT_EQ(columns.Of(FixField::Lat), (Columns{2}));
}

TEST(FindFixColumns, KnowsTheCaptionsOfMakers) {
  const auto knows = [](const Captions& captions) {
    return HasTimeAndPosition(FindFixColumns(captions, {}));
  };
  EXPECT_TRUE(knows({"timestamp", "location-long", "location-lat"}));
  EXPECT_TRUE(knows({"GMT Date", "GMT Time", "Latitude (deg)", "Longitude (deg)"}));
  EXPECT_TRUE(knows({"Acquisition Time", "GPS Latitude", "GPS Longitude"}));
  EXPECT_TRUE(knows({"UTC_Date", "UTC_Time", "lat", "lng"}));
  EXPECT_TRUE(knows({"Date", "UTM Easting", "UTM Northing", "UTM Zone"}));
  EXPECT_FALSE(knows({"Date", "UTM Easting", "UTM Northing"}));
  EXPECT_FALSE(knows({"Date", "lat", "easting"}));
  EXPECT_FALSE(knows({"lat", "lon"}));
  EXPECT_FALSE(knows({}));
}

TEST(HasCaption, ComparesKeys) {
  EXPECT_TRUE(HasCaption({"a", "GPS Fix Time"}, {FixField::Time, "gps-fix time"}));
  EXPECT_FALSE(HasCaption({"a"}, {FixField::Time, "b"}));
}

}  // namespace
}  // namespace orvane
