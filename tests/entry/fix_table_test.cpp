#include "entry/fix_table.h"

#include "base/number_text.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

struct FixTableTest : testing::Test {
  RecordedMessages messages;
  std::string name = "dir/collar.2004.csv";

  std::optional<FixTable> Read(const std::string& text, const FixReading& reading = {}) {
    return ReadFixTable(text, name, reading, messages);
  }
  /// Each fix as "row: animal seconds lat lon altitude", and each bad row as "row: state fault".
  Texts Rows(const std::string& text, const FixReading& reading = {}) {
    const auto table = Read(text, reading);
    if (!table) return {messages.Entries().back().text};
    Texts rows;
    for (const Fix& fix : table->fixes) {
      std::string row = std::to_string(fix.row) + ": " + table->animals[fix.animal].name + ' ' +
                        std::to_string(fix.utc / 1000) + ' ' + FormatGeneral(fix.lat) + ' ' +
                        FormatGeneral(fix.lon);
      if (HasAltitude(fix.altitude)) row += ' ' + FormatGeneral(double{fix.altitude});
      if (fix.isOutlier) row += " outlier";
      rows.push_back(row);
    }
    FixRows walk(*table);
    for (const BadFixRow& bad : table->badRows) {
      while (walk.Number() != bad.row) EXPECT_TRUE(walk.Next());
      rows.push_back(std::to_string(bad.row) + ": " + std::string(FixStateName(bad.state)) + ": " +
                     FaultOfRow(*table, bad, walk.Cells()));
    }
    return rows;
  }
};

const std::string Heading = "time,lat,lon,id\n";

TEST_F(FixTableTest, ReadsMovebank) {
  EXPECT_EQ(Rows("event-id,visible,timestamp,location-long,location-lat,height-above-ellipsoid,"
                 "manually-marked-outlier,individual-taxon-canonical-name,tag-local-identifier,"
                 "individual-local-identifier\n"
                 "1,true,1970-01-02 00:00:10.000,115.5,1.25,203.4,,Pongo abelii,T1,Kiki\n"
                 "2,false,1970-01-02 00:10:10.000,115.5,1.25,,,Pongo abelii,T1,Kiki\n"
                 "3,true,1970-01-02 00:20:10.000,115.5,1.25,,true,Pongo abelii,T1,\n"
                 "4,true,1970-01-02 00:30:10.000,,,,,Pongo abelii,T1,Kiki\n"),
            (Texts{"2: Kiki 86410 1.25 115.5 203", "3: Kiki 87010 1.25 115.5 outlier",
                   "4: T1 87610 1.25 115.5 outlier",
                   "5: unknown place: no position in column location-lat"}));
}

TEST_F(FixTableTest, NamesThatNoMapCanHoldAreLeftOut) {
  // They made lines that are too long to be read again.
  const std::string most(LongestAnimalName, 'k');
  const std::string row = "1970-01-02 00:00:10,1,115,";
  EXPECT_EQ(Rows(Heading + row + most + "\n" + row + most + "k\nsoon,1,115," + most + "kk\n"),
            (Texts{"2: " + most + " 86410 1 115",
                   "3: bad name: \"" + std::string(40, 'k') +
                       "...\" in column id has more than 150 bytes",
                   "4: bad time: \"soon\" in column time is not a usable time"}));
  EXPECT_EQ(Rows("time,lat,lon,species\n" + row + most + "k\n"),
            Texts{"2: bad name: \"" + std::string(40, 'k') +
                  "...\" in column species has more than 150 bytes"});
  name = std::string(200, 'f') + ".csv";
  EXPECT_EQ(Read(Heading + row + "\n")->animals[0].name, std::string(LongestAnimalName, 'f'));
}

TEST_F(FixTableTest, KnowsTheRowOfAQuoteThatIsNeverClosed) {
  const std::string row = "1970-01-02 00:00:10,1,115,";
  const auto table = Read(Heading + row + "\"Kiki\"\n" + row + "\"Bo\n" + row + "Bo\n");
  EXPECT_EQ(table->openQuoteRow, 3U);
  EXPECT_EQ(table->rowCount, 2U);
  EXPECT_EQ(Read(Heading + row + "\"Kiki\"")->openQuoteRow, 0U);
}

TEST_F(FixTableTest, ReadsCollarsWithUtmAndPreamble) {
  EXPECT_EQ(Rows("Collar 1234\nFirmware;3.1\n\nGMT Date;GMT Time;UTM Easting;UTM Northing;UTM Zone;"
                 "Altitude (m)\n"
                 "02.01.1970;00:00:10;500000;0;36 N;1203,5\n"
                 "02.01.1970;00:00:20;50000;0;36N;-9999\n"
                 "02.01.1970;00:00:30;500000;x;36N;\n"
                 "02.01.1970;00:00:40;500000;0;36I;\n"
                 "02.01.1970;00:00:50;;;;\n"),
            (Texts{"5: collar.2004 86410 0 33 1204",
                   "6: unknown place: \"50000\" in column UTM Easting is not a usable position",
                   "7: unknown place: \"x\" in column UTM Northing is not a usable position",
                   "8: unknown place: \"36I\" in column UTM Zone is not a usable position",
                   "9: unknown place: no position in column UTM Easting"}));
}

TEST_F(FixTableTest, ReadsALoggerWithSemicolonsAndDecimalCommas) {
  EXPECT_EQ(Rows("\"Name\";\"Date & Time [GMT]\";\"Latitude\";\"Longitude\"\r\n"
                 "\"Bo; b\";\"2.1.1970 0:00:10\";\"-1,5\";\"30,25\"\r\n"),
            Texts{"2: Bo; b 86410 -1.5 30.25"});
}

TEST_F(FixTableTest, ReadsTheOutputOfAPhone) {
  name = "walk.txt";
  EXPECT_EQ(Rows("time\tlatitude\tlongitude\televation\n"
                 "1970-01-02T00:00:10Z\t1\t2\t-3.7\n1970-01-02T07:00:10+07:00\t1\t2\t20000\n"),
            (Texts{"2: walk 86410 1 2 -3", "3: walk 86410 1 2 20000"}));
}

TEST_F(FixTableTest, TakesTheFirstSeparatorThatGivesAHeading) {
  EXPECT_EQ(Read("time;lat;lon;a,b\n")->separator, ';');
  EXPECT_EQ(Read("time\tlat\tlon\tid;x,y\n")->separator, '\t');
  EXPECT_EQ(Read("a;b;c\ntime,lat,lon\n")->headingRow, 2U);
  // A heading further down with an earlier separator comes first.
  EXPECT_EQ(Read("time,lat,lon\ntime;lat;lon\n")->headingRow, 2U);
}

TEST_F(FixTableTest, LooksForTheHeadingInAHundredRowsWithAValue) {
  std::string above;
  for (int i = 0; i < 99; ++i) above += "x\n\n-,NA\n";
  EXPECT_EQ(Read(above + Heading)->headingRow, 298U);
  EXPECT_FALSE(Read("x\n" + above + Heading));
  EXPECT_EQ(messages.Entries().back().text,
            "Can't find a heading with time and position in dir/collar.2004.csv");
}

TEST_F(FixTableTest, NamesAColumnThatIsMissing) {
  FixReading reading;
  reading.columns = {{FixField::Animal, "Tier"}};
  EXPECT_EQ(Rows(Heading, reading), Texts{"Can't find column Tier"});
  // Also if the row is a heading only without it.
  reading.columns = {{FixField::Lat, "Breite"}};
  EXPECT_EQ(Rows(Heading, reading), Texts{"Can't find column Breite"});
  EXPECT_EQ(Rows(Heading + "time,Breite,lon\n0:00,1,2\n", reading).size(), 1U);
  EXPECT_EQ(Read(Heading + "time,Breite,lon\n", reading)->headingRow, 2U);
  reading.columns = {{FixField::Time, "Zeit"}};
  EXPECT_EQ(Rows("a,b\n", reading),
            Texts{"Can't find a heading with time and position in dir/collar.2004.csv"});
}

TEST_F(FixTableTest, CountsRowsAsASpreadsheetDoes) {
  const auto table = Read(Heading +
                          "\n,,\n- , NA\n1970-1-1 0:01,1,2,\"a\nb\"\n,,,,,surplus\n"
                          "1970-1-1 0:02,1,2\n");
  ASSERT_TRUE(table);
  EXPECT_EQ(table->rowCount, 2U);
  ASSERT_EQ(table->fixes.size(), 2U);
  EXPECT_EQ(table->fixes[0].row, 5U);
  EXPECT_EQ(table->fixes[1].row, 7U);
  EXPECT_EQ(table->animals[0].name, "a b");
}

TEST_F(FixTableTest, TakesTheFirstColumnWithAValue) {
  EXPECT_EQ(Rows("x,timestamp,lat,lon,y,height above msl,alt,name,id\n"
                 "5,1970-1-1 0:01,1,2,6,99999,7.4,N,I\n,1970-1-1 0:02,1,NA,6,5,7,N,-\n"
                 "5,1970-1-1 0:03,NA,-,6,x,-1001,,\n"),
            (Texts{"2: I 60 1 2 7", "4: collar.2004 180 6 5",
                   "3: unknown place: no position in column lon"}));
}

TEST_F(FixTableTest, RefusesPositionsOutsideTheEarth) {
  EXPECT_EQ(Rows(Heading + "1970-1-1 0:01,90.01,2\n1970-1-1 0:02,-90,180\n"
                           "1970-1-1 0:03,1,-180.5\n1970-1-1 0:04,0,0.0\n1970-1-1 0:05,0,1\n"),
            (Texts{"3: collar.2004 120 -90 180", "6: collar.2004 300 0 1",
                   "2: unknown place: \"90.01\" in column lat is not a usable position",
                   "4: unknown place: \"-180.5\" in column lon is not a usable position",
                   "5: unknown place: \"0\" in column lat is not a usable position"}));
}

TEST_F(FixTableTest, TakesUtmOnlyWithoutDegrees) {
  const std::string heading = "time,lat,lon,easting,northing,zone\n1970-1-1 0:01,";
  EXPECT_EQ(Rows(heading + "1,2,500000,0,36N\n"), Texts{"2: collar.2004 60 1 2"});
  EXPECT_EQ(Rows(heading + "1,,500000,0,36N\n"), Texts{"2: collar.2004 60 0 33"});
  EXPECT_EQ(Rows(heading + "95,2,500000,0,36N\n"),
            Texts{"2: unknown place: \"95\" in column lat is not a usable position"});
}

TEST_F(FixTableTest, SaysWhichCellOfATimeIsAtFault) {
  EXPECT_EQ(Rows("time,date,lat,lon\n8:30,soon,1,2\nsoon,1970-1-1,1,2\n8:30,,1,2\n,,1,2\n"
                 "1970-2-30 8:30,1970-1-1,1,2\n8:30,1970-2-30,1,2\n,1970-1-1,1,2\n"),
            (Texts{"2: bad date: \"soon\" in column date is not a usable date",
                   "3: bad time: \"soon\" in column time is not a usable time",
                   "4: bad date: no date in column date", "5: bad time: no time in column date",
                   "6: bad date: \"1970-2-30 8:30\" in column time is not a usable date",
                   "7: bad date: \"1970-2-30\" in column date is not a usable date",
                   "8: bad time: \"1970-1-1\" in column date is not a usable time"}));
  EXPECT_EQ(Rows("time,lat,lon\n,1,2\n8:30,1,2\n"),
            (Texts{"2: bad time: no time in column time",
                   "3: bad date: \"8:30\" in column time is not a usable date"}));
}

TEST_F(FixTableTest, NamesAnimalsAsTheyFirstAppear) {
  const auto table = Read(
      "time,lat,lon,id,species\n"
      "soon,,,\"Ki\tki, A,\",\n1970-1-1 0:01,1,2,KI KI  A,Pongo\n"
      "1970-1-1 0:02,1,2,\",\",\n1970-1-1 0:03,1,2,ki ki  a,Gorilla\n"
      "1970-1-1 0:03,1,2,B,\n");
  ASSERT_TRUE(table);
  ASSERT_EQ(table->animals.size(), 3U);
  EXPECT_EQ(table->animals[0].name, "Ki ki  A");
  EXPECT_EQ(table->animals[0].species, "Pongo");
  EXPECT_EQ(table->animals[1].name, "collar.2004");
  EXPECT_EQ(table->animals[1].species, "");
  EXPECT_EQ(table->fixes[2].animal, 0U);
}

TEST_F(FixTableTest, NeedsAnAnimalAlsoFromAFileWithoutAName) {
  name = "dir/.csv";
  EXPECT_EQ(Rows(Heading + "1970-1-1 0:01,1,2\n"), Texts{"2: Animal 60 1 2"});
  name = "a,b";
  EXPECT_EQ(Rows(Heading + "1970-1-1 0:01,1,2\n"), Texts{"2: a b 60 1 2"});
}

TEST_F(FixTableTest, TakesTheOrderOfDayAndMonthFromTheFirstRowThatShowsIt) {
  const auto order = [&](const std::string& rows, bool european = false) {
    FixReading reading;
    reading.europeanDates = european;
    const DayOrder read = Read(Heading + rows, reading)->dayOrder;
    return (read.dayFirst ? "day " : "month ") + std::to_string(read.decidingRow) + " " +
           std::to_string(read.ambiguousRow);
  };
  EXPECT_EQ(order("3/5/2004 0:01,1,2\n13/5/2004 0:01,1,2\n5/13/2004 0:01,1,2\n"), "day 3 2");
  EXPECT_EQ(order("3/5/2004 0:01,1,2\n\n5/13/2004 0:01,1,2\n13/5/2004 0:01,1,2\n", true),
            "month 4 2");
  EXPECT_EQ(order("3/5/2004 0:01,1,2\n"), "month 0 2");
  EXPECT_EQ(order("3/5/2004 0:01,1,2\n", true), "day 0 2");
  EXPECT_EQ(order("3/3/2004 0:01,1,2\n"), "month 0 0");
  EXPECT_EQ(order("13/5/2004 0:01,1,2\n3/5/2004 0:01,1,2\n"), "day 2 3");
  // Such dates say nothing of the others.
  EXPECT_EQ(order("13.5.2004 0:01,1,2\n2004-5-13 0:01,1,2\n3/5/2004 0:01,1,2\n"), "month 0 4");
  EXPECT_EQ(order("32/5/2004 0:01,1,2\n13/14/2004 0:01,1,2\n"), "month 0 0");
  // The row decides although its time and place can't be used.
  EXPECT_EQ(order("3/5/2004 0:01,1,2\n13/5/2004 25:00,,\n"), "day 3 2");
}

TEST_F(FixTableTest, ReadsAllDatesInTheOrderThatOneRowShows) {
  EXPECT_EQ(Rows(Heading + "1/2/1970 0:00,1,2\n13/1/1970 0:00,1,2\n1/13/1970 0:00,1,2\n"),
            (Texts{"2: collar.2004 2678400 1 2", "3: collar.2004 1036800 1 2",
                   "4: bad date: \"1/13/1970 0:00\" in column time is not a usable date"}));
  // The search leaves the row where it began as it is, also before longer cells.
  EXPECT_EQ(Rows(Heading + "1/2/1970 0:00,1,2\n1/2/1970 00:01:18.123456789,1,2\n"),
            (Texts{"2: collar.2004 86400 1 2", "3: collar.2004 86478 1 2"}));
  EXPECT_EQ(Rows("date,time,lat,lon\n01-02-1970,00:00,1,2\n01-02-1970 00:01:18,00:00:09 AM,1,2\n"),
            (Texts{"2: collar.2004 86400 1 2",
                   "3: bad time: \"00:00:09 AM\" in column time is not "
                   "a usable time"}));
  // After it the rows that follow are read as if there had been none.
  EXPECT_EQ(Rows("date,time,lat,lon,id\n1/2/1970,0:00,1,2,A\n3/1/1970,0:00,1,2,B\n"
                 "13/1/1970,0:00,1,2,C\n"),
            (Texts{"2: A 2678400 1 2", "3: B 172800 1 2", "4: C 1036800 1 2"}));
}

TEST_F(FixTableTest, ShowsOnlyTheBeginningOfALongCell) {
  const std::string cell(100, 'x');
  EXPECT_EQ(Rows(Heading + cell + ",1,2\n"), Texts{"2: bad time: \"" + cell.substr(0, 40) +
                                                   "\" in column time is not a usable time"});
}

}  // namespace
}  // namespace orvane
