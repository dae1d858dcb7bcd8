#include "entry/preview.h"

#include "entry/sheet_fields.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct PreviewTest : MapFixture {
  Map& map = Open("T\tMain\tTrail\nG\tCamp\tN1\tE115\nG\tHut\tN1.01\tE115\n");

  static Texts Rows(const Preview& preview) {
    Texts rows;
    for (const PreviewRow& row : preview.rows) {
      rows.push_back(std::to_string(row.row) + " " + std::string(row.state) + ": " + row.reason);
    }
    return rows;
  }
};

TEST_F(PreviewTest, ShowsWhatBecomesOfEachFix) {
  map.trails.emplace_front();
  map.trails.front().type = "Animal";
  map.trails.front().focalAnimal = "Bo";
  map.trails.front().date = PackDate(2004, 5, 3);
  FixOptions options;
  options.clock.offsetMinutes = 0;
  options.filters.maxSpeed = 5;
  options.filters.minMinutes = 5;
  const std::string day = "2004-5-3 0:";
  const auto import =
      StartFixImportOfText(map,
                           "time,lat,lon,id,outlier\n" + day + "30,1,115,Kiki,\n\n" + day +
                               "30:05,1,115,Kiki,\nsoon,1,2,,\n" + day + "31,2,115,Kiki,\n" + day +
                               "32,1,115,Kiki,\n" + day + "40,1,115,Kiki,yes\n" + day +
                               "40,1,115,Bo,\n" + day + "50,,,Kiki,\n2004-2-30 1:00,1,115,Kiki,\n",
                           "a.csv", options);
  ASSERT_TRUE(import);
  const Preview preview = PreviewFixes(*import);
  EXPECT_EQ(preview.captions, (Texts{"time", "lat", "lon", "id", "outlier"}));
  EXPECT_EQ(Rows(preview),
            (Texts{"2 used: 00:30 of Kiki on 2004-5-3",
                   "4 repeat: 00:30 of Kiki on 2004-5-3 is there before it",
                   "5 bad time: \"soon\" in column time is not a usable time",
                   "6 too fast: 6667.2 km/h, faster than the limit",
                   "7 thinned: too soon after another, or too near",
                   "8 outlier: the table marks it as an outlier",
                   "9 already there: the map has a trail of that day",
                   "10 unknown place: no position in column lat",
                   "11 bad date: \"2004-2-30 1:00\" in column time is not a usable date"}));
  EXPECT_EQ(preview.rows[2].cells, (Texts{"soon", "1", "2", "", ""}));
  EXPECT_EQ(PreviewFixes(*import, 3).rows.size(), 3U);
}

TEST_F(PreviewTest, ShowsRowsOfASheetWithoutQuestionsAndMessages) {
  SheetFields fields;
  fields[SheetSkip] = "1";
  fields[SheetDate] = "A";
  fields[SheetSpecies] = "B";
  fields[SheetTime] = "C";
  fields[SheetLocation] = "D";
  FollowSheet sheet;
  sheet.text =
      "heading\n2004-5-3\tOru\t800\tCamp\n\n2004-5-3\tOru\t900\toos\n2004-5-3\tOru\t800\t\n"
      "2004-5-3\tOru\t830\tHut\n2004-5-3\tOru\t820\tHut\n2004-5-3\tOru\t\tHut\n\tOru\t840\tHut\n"
      "2004-5-3\t\t840\tHut\n2004-5-3\tOru\tx\tHut\n2004-5-3\tOru\t850\tNowhere\n"
      "2004-5-3\tOru\t850\train\nsoon\tOru\t850\tHut\n2004-5-3\tOru\t900\tHut\n";
  SheetReading reading = ReadSheetFields(fields, map);
  ASSERT_FALSE(reading.refusal);
  reading.spec.sheet = &sheet;
  const Preview preview = PreviewSheet(reading.spec);
  EXPECT_EQ(
      Rows(preview),
      (Texts{"2 used: ", "4 used: out of sight", "5 unknown place: no place, and none before it",
             "6 not used: the import ends before this stop does",
             "7 not used: the import ends before this stop does", "8 bad time: no time",
             "9 bad date: no date", "10 no species: no species or group",
             "11 bad time: x is not a time", "12 unknown place: the map has no place Nowhere",
             "13 unknown place: rain is a note on the weather",
             "14 bad date: the import ends at soon", "15 not used: the import ends at row 14"}));
  EXPECT_EQ(preview.rows[0].cells, (Texts{"2004-5-3", "Oru", "800", "Camp"}));
  EXPECT_TRUE(messages.Entries().empty());
  EXPECT_TRUE(messages.Questions().empty());
  EXPECT_EQ(PreviewSheet(reading.spec, 2).rows.size(), 2U);
}

constexpr const char* Track =
    "<gpx><wpt lat=\"1\" lon=\"115\"><name>Nest</name><ele>12.5</ele>"
    "<time>2004-05-02T10:00:00Z</time></wpt>\n<trk><name>W</name>"
    "<trkseg>\n<trkpt lat=\"1\" lon=\"115\"><time>2004-05-03T00:30:00Z</time></trkpt>\n"
    "<trkpt lat=\"1\" lon=\"115\"><time>2004-05-03T00:30:30Z</time></trkpt>\n"
    "<trkpt lat=\"1.1\" lon=\"115\"/>\n<trkpt lat=\"x\" lon=\"115\"/>\n"
    "<trkpt lat=\"1\" lon=\"115\"><time>2004-05-03T00:31:00Z</time></trkpt></trkseg></trk></gpx>";

TEST_F(PreviewTest, ShowsFixesOfAGpsFile) {
  const auto import = StartGisImportOfText(map, Track, "a.gpx", {});
  ASSERT_TRUE(import);
  GisTrailFields fields;
  EXPECT_EQ(Rows(*PreviewGis(*import, fields)),
            (Texts{"1 used: waypoint", "3 used: ", "4 used: ", "5 used: ",
                   "6 unknown place: no position", "7 used: "}));
  fields.boxes.times = true;
  fields.minimumDistance = "10";
  const Preview preview = *PreviewGis(*import, fields);
  EXPECT_EQ(Rows(preview),
            (Texts{"1 used: waypoint", "3 used: ", "4 repeat: in one minute with another",
                   "5 bad time: no time", "6 unknown place: no position",
                   "7 thinned: too soon after another, or too near"}));
  // As in the file, also those of a fix without a position.
  EXPECT_EQ(preview.rows[0].cells, (Texts{"Nest", "2004-05-02T10:00:00Z", "1", "115", "12.5"}));
  EXPECT_EQ(preview.rows[2].cells, (Texts{"W", "2004-05-03T00:30:30Z", "1", "115", ""}));
  EXPECT_EQ(preview.rows[4].cells, (Texts{"W", "", "x", "115", ""}));
  EXPECT_EQ(PreviewGis(*import, fields, 2)->rows.size(), 2U);
  fields.size = "many";
  EXPECT_FALSE(PreviewGis(*import, fields));
  EXPECT_EQ(FindBadField(*import, fields), GisField::Size);
}

TEST_F(PreviewTest, QuotesATimeOfAGpsFileThatCannotBeRead) {
  // Both were said to have no time.
  const auto import = StartGisImportOfText(
      map,
      "<gpx><trk><trkseg><trkpt lat='1' lon='115'><time>2004-05-03T00:30:00Z</time></trkpt>\n"
      "<trkpt lat='1' lon='115'><time> soon </time></trkpt>\n"
      "<trkpt lat='1' lon='115'><time>2004-02-18t16:05:00z</time></trkpt></trkseg></trk></gpx>",
      "a.gpx", {});
  ASSERT_TRUE(import);
  GisTrailFields fields;
  fields.boxes.times = true;
  EXPECT_EQ(Rows(*PreviewGis(*import, fields)),
            (Texts{"1 used: ", "2 bad time: \"soon\" is not a usable time",
                   "3 bad time: \"2004-02-18t16:05:00z\" is not a usable time"}));
}

TEST_F(PreviewTest, ShowsTheCellsOfALineWithoutAPosition) {
  const auto import = StartGisImportOfText(
      map,
      "name,time,a,b,lat,lon,alt\nA,2004-5-3 6:00,,,1,115,7\nB,2004-5-3 6:01,,,north,115,8\n"
      "a,2004-5-4 7:00,,,1,115,9\nB,2004-5-5 7:00,,,1,115,9\n",
      "a.txt", {});
  ASSERT_TRUE(import);
  const Preview preview = *PreviewGis(*import, {});
  EXPECT_EQ(Rows(preview),
            (Texts{"2 used: ", "3 unknown place: no position", "4 used: ", "5 used: "}));
  EXPECT_EQ(preview.rows[1].cells, (Texts{"B", "2004-5-3 6:01", "north", "115", "8"}));
  // Each has its own time, not that of the track.
  EXPECT_EQ(preview.rows[2].cells, (Texts{"a", "2004-5-4 7:00", "1", "115", "9"}));
}

TEST_F(PreviewTest, MarksWaypointsThatAreNotKept) {
  Map& above = Open("B\ttest.map\n", "above.map");
  ASSERT_EQ(above.basis, &map);
  const auto import = StartGisImportOfText(
      above,
      "name,time,a,b,lat,lon\nNest,,,,1,115\n,,,,1,116\n0830,,,,1,116\n=,,,,1,116\nCamp,,,,1,116\n",
      "a.txt", {});
  ASSERT_TRUE(import);
  const Preview preview = *PreviewGis(*import, {});
  EXPECT_EQ(Rows(preview),
            (Texts{"2 used: waypoint", "3 bad name: no save keeps a waypoint without a name",
                   "4 bad name: no save keeps a waypoint named like a time of day",
                   "5 bad name: no point can have this name",
                   "6 bad name: a point of the basis has this name"}));
}

TEST(PreviewText, KeepsACellOnItsLine) {
  Preview preview;
  preview.captions = {"a\tb"};
  preview.rows.push_back({7, "used", "", {"x\ny", "z"}});
  EXPECT_EQ(PreviewText(preview), "row\tstate\treason\ta b\n7\tused\t\tx y\tz\n");
}

}  // namespace
}  // namespace orvane
