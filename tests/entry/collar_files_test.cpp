#include "base/number_text.h"
#include "entry/fix_table.h"
#include "entry/separated_table.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char c : ascii) bytes += {c, '\0'};
  return bytes;
}

/// The styles in which collars and spreadsheet programs write fixes.
struct CollarFiles : testing::Test {
  RecordedMessages messages;

  /// Each fix as "row: animal seconds lat lon altitude".
  Texts Fixes(const std::string& bytes) {
    const auto table = ReadFixTable(TableText(bytes), "C-117.csv", {}, messages);
    if (!table) return {messages.Entries().back().text};
    EXPECT_TRUE(table->badRows.empty());
    Texts rows;
    for (const Fix& fix : table->fixes) {
      std::string row = std::to_string(fix.row) + ": " + table->animals[fix.animal].name + ' ' +
                        std::to_string(fix.utc / 1000) + ' ' + FormatGeneral(fix.lat) + ' ' +
                        FormatGeneral(fix.lon);
      if (HasAltitude(fix.altitude)) row += ' ' + FormatGeneral(double{fix.altitude});
      if (fix.isOutlier) row += " outlier";
      rows.push_back(row);
    }
    return rows;
  }
};

TEST_F(CollarFiles, WithSemicolonsCommasAndDaysFirst) {
  EXPECT_EQ(Fixes("\xEF\xBB\xBFNo;CollarID;UTC_Date;UTC_Time;Latitude [\xC2\xB0];"
                  "Longitude [\xC2\xB0];Height [m];DOP;Fix\r\n"
                  "1;15021;02.01.1970;00:00:10;1,25;115,5;203,4;1,8;3D\r\n"
                  "2;15021;02.01.1970;00:30:10;1,26;115,51;;4,2;2D\r\n"),
            (Texts{"2: 15021 86410 1.25 115.5 203", "3: 15021 88210 1.26 115.51"}));
}

TEST_F(CollarFiles, WithAPreambleTabsAndTheYearFirst) {
  EXPECT_EQ(Fixes("Unit report\nSerial\t5520\n\n"
                  "GPS Fix Time\tDevice ID\tGPS Latitude\tGPS Longitude\tGPS Altitude\tTemp\n"
                  "1970.01.02 00:00:10\tBo\t-1.25\t-60.5\t32767\t31.5\n"
                  "1970.01.02 01:00:10\tBo\t-1.26\t-60.51\t88\t30\n"),
            (Texts{"5: Bo 86410 -1.25 -60.5", "6: Bo 90010 -1.26 -60.51 88"}));
}

TEST_F(CollarFiles, WithUtmAndTimesOfAmerica) {
  EXPECT_EQ(Fixes("\"Acquisition Time\",\"GPS UTM Zone\",\"GPS UTM Easting\",\"GPS UTM Northing\","
                  "\"GPS Altitude\",\"Outlier\"\n"
                  "\"1/2/1970 12:00:10 AM\",\"31N\",\"500000\",\"0\",\"12\",\"\"\n"
                  "\"1/13/1970 1:00:10 PM\",\"31N\",\"500000\",\"0\",\"12\",\"yes\"\n"),
            (Texts{"2: C-117 86410 0 3 12", "3: C-117 1083610 0 3 12 outlier"}));
}

TEST_F(CollarFiles, SavedByExcel) {
  // As "CSV UTF-8" with European settings, and as "Unicode text".
  EXPECT_EQ(Fixes("\xEF\xBB\xBF"
                  "Date;Time;Lat;Lon;Animal\r\n02/01/1970;00:00;1,5;115,25;\"Kiki; adult\"\r\n"
                  "13/01/1970;00:00;1,5;115,25;Kiki\r\n"),
            (Texts{"2: Kiki; adult 86400 1.5 115.25", "3: Kiki 1036800 1.5 115.25"}));
  EXPECT_EQ(Fixes(Utf16("Date\tTime\tLat\tLon\tAnimal\r\n"
                        "2/1/1970\t00:00\t1,5\t115,25\t\"Kiki \"\"K\"\"\"\r\n")),
            Texts{"2: Kiki \"K\" 2678400 1.5 115.25"});
}

TEST_F(CollarFiles, SavedByLibreOffice) {
  EXPECT_EQ(Fixes("\"Date\",\"Time\",\"Lat\",\"Lon\",\"Animal\"\n"
                  "1970-01-02,00:00:10,1.5,115.25,\"M\xC3\xBChle,\nold\"\n"),
            Texts{"2: M\xC3\xBChle  old 86410 1.5 115.25"});
}

}  // namespace
}  // namespace orvane
