#include "base/number_text.h"
#include "entry/gis_import.h"
#include "entry/preview.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

const std::string Head =
    "<?xml version='1.0' encoding='UTF-8'?>\n<kml xmlns='http://www.opengis.net/kml/2.2' "
    "xmlns:gx='http://www.google.com/kml/ext/2.2'><Document>\n";
const std::string End = "</Document></kml>\n";

std::string FixText(const GisFix& fix) {
  std::string text =
      std::to_string(fix.line) + ": " + FormatGeneral(fix.lat, 8) + ' ' + FormatGeneral(fix.lon, 8);
  if (HasAltitude(fix.altitude)) text += ' ' + FormatGeneral(double{fix.altitude});
  if (fix.utc) text += " at " + std::to_string(*fix.utc / 1000);
  return text;
}

struct Kml : MapFixture {
  Map& map = Open("T\tMain\tTrail\nG\tCamp\tN1\tE115\n");

  GisFile ReadAll(const std::string& text) { return ReadGisText(text, "phone.kml", messages); }
  GisFile Read(const std::string& inside) { return ReadAll(Head + inside + End); }

  static Texts Waypoints(const GisFile& file) {
    Texts texts;
    for (const auto& each : file.waypoints) texts.push_back(each.name + ' ' + FixText(each.fix));
    return texts;
  }
  static Texts Tracks(const GisFile& file) {
    Texts texts;
    for (const GisTrack& track : file.tracks) {
      texts.push_back(track.name + '|' + track.date);
      for (const GisFix& fix : track.fixes) texts.push_back(FixText(fix));
    }
    return texts;
  }
};

/// A recording of a phone: places with a photo, a walk with times, one without.
const std::string Phone =
    "<name>Walk of Monday</name><Style id='s'><IconStyle><scale>1</scale></IconStyle></Style>\n"
    "<Folder><name>Places</name>\n"
    "<Placemark><name>Nest &amp; fig</name><description><![CDATA[<name>photo</name>]]>"
    "</description><TimeStamp><when>2004-05-03T00:20:00Z</when></TimeStamp>\n"
    "<Point><altitudeMode>absolute</altitudeMode><coordinates>115.5,1.25,203.5</coordinates>"
    "</Point></Placemark>\n"
    "<Placemark><Point><coordinates>\n 115.6,1.26,0 </coordinates></Point><name>Hut</name>"
    "</Placemark></Folder>\n"
    "<Placemark id='w'><name>Walk</name><gx:Track><altitudeMode>absolute</altitudeMode>\n"
    "<when>1970-01-02T00:00:10Z</when>\n<when>1970-01-02T08:10:10+08:00</when>\n"
    "<when>soon</when>\n"
    "<gx:coord>115.1 1.1 20</gx:coord>\n<gx:coord>115.2 1.2 0</gx:coord>\n"
    "<gx:coord>115.3 1.3</gx:coord>\n</gx:Track></Placemark>\n"
    "<Placemark><name>Way back</name><LineString><coordinates>\n115.1,1.1,12\n115.2,1.2,0\n"
    "115.3,1.3\n</coordinates></LineString></Placemark>\n";

TEST_F(Kml, OfAPhoneHasPlacesAndTracks) {
  const GisFile file = Read(Phone);
  EXPECT_EQ(Waypoints(file), (Texts{"Nest & fig 6: 1.25 115.5 203.5", "Hut 8: 1.26 115.6"}));
  EXPECT_EQ(Tracks(file), (Texts{"Walk|1970-01-02", "13: 1.1 115.1 20 at 86410",
                                 "14: 1.2 115.2 0 at 87010", "15: 1.3 115.3", "Way back|",
                                 "18: 1.1 115.1 12", "19: 1.2 115.2", "20: 1.3 115.3"}));
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Kml, EntersTheMapLikeGpx) {
  const std::string text = Head + Phone + End;
  GisBoxes boxes;
  boxes.keepAltitude = true;
  boxes.times = true;
  auto import = StartGisImportOfText(map, text, "phone.kml", boxes);
  ASSERT_TRUE(import);
  EXPECT_EQ(import->waypoints, 2U);
  ASSERT_EQ(TakeAllTracks(*import, StartFields(*import, boxes)), GisField::None);
  const std::string saved = MapFileText(map, map.fileName, true);
  EXPECT_NE(saved.find("T\tWalk\tTrail\t\t1970-1-2"), saved.npos) << saved;
  EXPECT_NE(saved.find("G\t08:00\tN1 6.00000'\tE115 6.00000'\t20\n"), saved.npos) << saved;
  EXPECT_NE(saved.find("T\tWay back\tTrail\t\t\t,#000000\n"), saved.npos) << saved;
  EXPECT_NE(saved.find("G\tNest & fig\t"), saved.npos) << saved;
}

TEST_F(Kml, PreviewShowsItsTextsAndBadTimes) {
  const std::string text = Head + Phone + End;
  const auto import = StartGisImportOfText(map, text, "phone.kml", {});
  ASSERT_TRUE(import);
  GisTrailFields fields;
  fields.boxes.times = true;
  const Preview preview = *PreviewGis(*import, fields);
  ASSERT_EQ(preview.rows.size(), 8U);
  EXPECT_EQ(preview.rows[0].cells,
            (Texts{"Nest & fig", "2004-05-03T00:20:00Z", "1.25", "115.5", "203.5"}));
  EXPECT_EQ(preview.rows[1].cells, (Texts{"Hut", "", "1.26", "115.6", "0"}));
  EXPECT_EQ(preview.rows[4].row, 15U);
  EXPECT_EQ(preview.rows[4].cells, (Texts{"Walk", "soon", "1.3", "115.3", ""}));
  EXPECT_EQ(preview.rows[4].state, "bad time");
  EXPECT_EQ(preview.rows[4].reason, "\"soon\" is not a usable time");
  EXPECT_EQ(preview.rows[5].cells, (Texts{"Way back", "", "1.1", "115.1", "12"}));
}

TEST_F(Kml, JoinsTheLinesOfAPlacemark) {
  EXPECT_EQ(Tracks(Read("<Placemark><MultiGeometry>"
                        "<LineString><coordinates>1,2 3,4</coordinates></LineString>"
                        "<MultiGeometry><LineString><coordinates>5,6</coordinates></LineString>"
                        "</MultiGeometry></MultiGeometry><name>A</name></Placemark>"
                        "<Placemark><name>B</name><TimeSpan><begin>2004-05-03</begin></TimeSpan>"
                        "<gx:MultiTrack><gx:Track><when>1970-01-01T00:00:01Z</when>"
                        "<gx:coord>7 8</gx:coord></gx:Track><gx:Track><gx:coord>9 10</gx:coord>"
                        "</gx:Track></gx:MultiTrack></Placemark>")),
            (Texts{"A|", "3: 2 1", "3: 4 3", "3: 6 5", "B|1970-01-01", "3: 8 7 at 1", "3: 10 9"}));
}

TEST_F(Kml, TakesNoAltitudeAboveTheGround) {
  EXPECT_EQ(
      Waypoints(Read("<Placemark><Point><altitudeMode>relativeToGround</altitudeMode>"
                     "<coordinates>1,2,3</coordinates></Point></Placemark>"
                     "<Placemark><Point><coordinates>1,2,3</coordinates></Point></Placemark>"
                     "<Placemark><Point><coordinates>1,2,0</coordinates></Point></Placemark>")),
      (Texts{" 3: 2 1", " 3: 2 1 3", " 3: 2 1"}));
}

TEST_F(Kml, OtherShapesAreLeftOutAndCounted) {
  const GisFile file = Read(
      "<Placemark><name>Plot</name><Polygon><outerBoundaryIs><LinearRing><coordinates>"
      "1,2 3,4 5,6 1,2</coordinates></LinearRing></outerBoundaryIs></Polygon></Placemark>"
      "<Placemark><Model/></Placemark>"
      "<Placemark><name>Camp</name><Point><coordinates>1,2</coordinates></Point></Placemark>");
  EXPECT_EQ(Waypoints(file), Texts{"Camp 3: 2 1"});
  EXPECT_TRUE(file.tracks.empty());
  EXPECT_EQ(Said(), Texts{"phone.kml: shapes other than points, lines and tracks are left out: 2"});
}

TEST_F(Kml, PlacesThatCannotBeReadAreLeftOut) {
  const GisFile file = Read(
      "<Placemark><LineString><coordinates>1,2\n1,91\neast,3\n\n5\n3,4</coordinates>"
      "</LineString></Placemark>");
  EXPECT_EQ(Tracks(file), (Texts{"|", "3: 2 1", "8: 4 3"}));
  EXPECT_EQ(file.badFixes.size(), 3U);
  EXPECT_EQ(file.badFixes[2].line, 7U);
  EXPECT_EQ(Said(),
            Texts{"phone.kml: 3 lines have no position and are left out, the first is line 4"});
}

TEST_F(Kml, WithoutAPlaceSaysWhatWasLookedFor) {
  EXPECT_FALSE(StartGisImportOfText(map, Head + End, "phone.kml", {}));
  EXPECT_EQ(Said(), Texts{"There are no tracks and no waypoints in phone.kml: looked for points, "
                          "lines and tracks of placemarks"});
}

TEST_F(Kml, ThatBreaksOffIsReadUpThere) {
  EXPECT_EQ(Tracks(ReadAll(Head + "<Placemark><name>A</name><LineString><coordinates>1,2 3,4 5")),
            (Texts{"A|", "3: 2 1", "3: 4 3"}));
  EXPECT_EQ(Tracks(ReadAll(Head + "<Placemark><name>B</name><gx:Track><when>2004-05-03T00:00:00Z"
                                  "</when><gx:coord>1 2</gx:coord><gx:coord>3 ")),
            (Texts{"B|2004-05-03", "3: 2 1 at 1083542400"}));
  ASSERT_EQ(Said().size(), 2U);
  EXPECT_EQ(Said()[0], "phone.kml can't be read from line 3 on: no element found");
}

TEST_F(Kml, EntitiesAndFilesThatAreTooLargeAreRefused) {
  const GisFile file = ReadAll(
      "<!DOCTYPE kml [\n<!ENTITY a 'aaaa'>]><kml><Placemark><Point><coordinates>1,2</coordinates>"
      "</Point><name>&a;</name></Placemark></kml>");
  EXPECT_TRUE(file.waypoints.empty());
  std::string large = "<kml><Placemark/>";
  large.resize(LargestKml + 1, ' ');
  ReadKml(large, "large.kml", messages);
  EXPECT_EQ(Said(),
            (Texts{"phone.kml can't be read from line 2 on: it declares entities",
                   "large.kml is larger than 256 MiB, which no KML file of a GPS unit is"}));
}

TEST_F(Kml, IsRecognisedByItsOutermostElement) {
  EXPECT_TRUE(IsKmlText("\xEF\xBB\xBF\n<!-- <gpx> --><k:kml xmlns:k='x'>"));
  EXPECT_FALSE(IsKmlText("<gpx><kml/></gpx>"));
  EXPECT_FALSE(IsKmlText("kml"));
  EXPECT_FALSE(IsKmlText("<"));
}

}  // namespace
}  // namespace orvane
