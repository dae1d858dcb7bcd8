#include "entry/gis_file.h"

#include "base/number_text.h"
#include "base/text.h"
#include "entry/gis_values.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

const std::string Header = "name,time,a,b,lat,lon,alt\n";

struct GisText : testing::Test {
  RecordedMessages messages;

  GisFile Read(const std::string& text) { return ReadGisText(text, "gps.txt", messages); }

  Texts Said() const {
    Texts texts;
    for (const auto& entry : messages.Entries()) texts.push_back(entry.text);
    return texts;
  }
  static Texts TrackNames(const GisFile& file) {
    Texts names;
    for (const GisTrack& track : file.tracks) names.push_back(track.name);
    return names;
  }
  static Texts WaypointNames(const GisFile& file) {
    Texts names;
    for (const GisWaypoint& waypoint : file.waypoints) names.push_back(waypoint.name);
    return names;
  }
  static std::vector<double> Latitudes(const GisTrack& track) {
    std::vector<double> values;
    for (const GisFix& fix : track.fixes) values.push_back(fix.lat);
    return values;
  }
};

/// A line of ten million letters.
std::string LongText() {
  std::string text;
  text.resize(10000000, 'n');
  return text;
}

using GisLines = GisText;
using Gpx = GisText;

TEST_F(GisLines, TwoFixesOfOneNameMakeATrackFile) {
  const GisFile file = Read(Header + "A,2004-2-18 08:00:00,x,y,1,115,20\nA,2004-2-19,x,y,2,116,\n");
  EXPECT_TRUE(file.waypoints.empty());
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(file.tracks[0].name, "A");
  EXPECT_EQ(file.tracks[0].date, "2004-2-18");
  ASSERT_EQ(file.tracks[0].fixes.size(), 2U);
  EXPECT_EQ(file.tracks[0].fixes[0].lat, 1);
  EXPECT_EQ(file.tracks[0].fixes[0].lon, 115);
  EXPECT_EQ(file.tracks[0].fixes[0].altitude, 20.0F);
  EXPECT_EQ(file.tracks[0].fixes[1].altitude, NoAltitude);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GisLines, TwoNamesMakeAWaypointFileToTheEnd) {
  const GisFile file = Read(Header + "A,,,,1,115\nB,,,,2,115\nB,,,,3,115\n");
  EXPECT_TRUE(file.tracks.empty());
  EXPECT_EQ(WaypointNames(file), (Texts{"A", "B", "B"}));
}

TEST_F(GisLines, ASingleFixIsAWaypoint) {
  EXPECT_EQ(WaypointNames(Read(Header + "Camp,,,,1,115\n")), Texts{"Camp"});
}

TEST_F(GisLines, LaterLinesOfANameBelongToItsTrack) {
  const GisFile file =
      Read(Header + "A,,,,1,115\na,,,,2,115\nB,2005-1-2,,,3,115\nA,,,,4,115\nb,,,,5,115\n");
  EXPECT_EQ(TrackNames(file), (Texts{"A", "B"}));
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1, 2, 4}));
  EXPECT_EQ(Latitudes(file.tracks[1]), (std::vector<double>{3, 5}));
  EXPECT_EQ(file.tracks[1].date, "2005-1-2");
}

TEST_F(GisLines, EmptyNamesAgree) {
  const GisFile file = Read(Header + ",,,,1,115\n,,,,2,115\n");
  EXPECT_EQ(TrackNames(file), Texts{""});
}

TEST_F(GisLines, FieldsMayBeInQuotes) {
  const GisFile file = Read(Header +
                            "\"Fig, red\",\"2004-2-18 8:00\",\"x,y\",,\"1\",\"115\",\"20\"\n"
                            "\"Say \"\"fig\"\"\"junk,,,,2,115\n"
                            "  \"led\" ,,,,3,115\n");
  EXPECT_EQ(WaypointNames(file), (Texts{"Fig, red", "Say \"fig\"", "led"}));
  EXPECT_EQ(file.waypoints[0].fix.altitude, 20.0F);
}

TEST_F(GisLines, AQuoteThatIsNeverClosedCostsItsLine) {
  const GisFile file = Read(Header + "A,,,,1,115\n\"A,,,,2,115\nA,,,,3,115\n");
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1, 3}));
  EXPECT_EQ(Said(), Texts{"gps.txt: line 3 has no position and is left out"});
}

TEST_F(GisLines, ALongitudeBelowMinus180IsBroughtBack) {
  const GisFile file = Read(Header + "A,,,,1,-180\nA,,,,2,-181\nA,,,,3,-539.5\nA,,,,4,200\n");
  ASSERT_EQ(file.tracks.size(), 1U);
  std::vector<double> longitudes;
  for (const GisFix& fix : file.tracks[0].fixes) longitudes.push_back(fix.lon);
  EXPECT_EQ(longitudes, (std::vector<double>{-180, 179, -179.5, 200}));
}

TEST_F(GisLines, AnyEndOfLineWillDo) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    const GisFile file =
        Read("name" + end + "A,,,,1,115" + end + end + "A,,,,2,115,3" + end + "A,,,,3,115");
    ASSERT_EQ(file.tracks.size(), 1U);
    EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1, 2, 3}));
  }
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GisLines, AByteOrderMarkInFrontIsSkipped) {
  EXPECT_EQ(WaypointNames(Read("\xEF\xBB\xBF" + Header + "A,,,,1,115\n")), Texts{"A"});
}

TEST_F(GisLines, TheFirstLineIsTheHeaderEvenWithAPositionAndThatIsReported) {
  const GisFile file = Read("A,,,,1,115\nA,,,,2,115\nA,,,,3,115\n");
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{2, 3}));
  EXPECT_EQ(Said(),
            Texts{"gps.txt has a position in its first line, which is taken as the header"});
}

TEST_F(GisLines, AnEmptyFirstLineIsTheHeader) {
  const GisFile file = Read("\nA,,,,1,115\nA,,,,2,115\n");
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1, 2}));
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GisLines, LinesWithoutAPositionAreLeftOutAndReportedOnce) {
  const GisFile file = Read(Header +
                            "A,,,,1,115\nA\nA,,,,north,115\nA,,,,91,115\nA,,,,1,541\n"
                            "A,,,,1e999,115\nA,,,,12N,115\nA,,,,nan,115\nA,,,,2,115\n");
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1, 2}));
  EXPECT_EQ(Said(), Texts{"gps.txt: 7 lines have no position and are left out, the first is "
                          "line 3"});
}

TEST_F(GisLines, AnAltitudeThatIsNoneCostsNoFix) {
  const GisFile file = Read(Header + "A,,,,1,115,high\nA,,,,2,115,1e300\nA,,,,3,115, 12.5 ,x\n");
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(file.tracks[0].fixes[0].altitude, NoAltitude);
  EXPECT_EQ(file.tracks[0].fixes[1].altitude, NoAltitude);
  EXPECT_EQ(file.tracks[0].fixes[2].altitude, 12.5F);
}

TEST_F(GisLines, NulBytesAreReportedAndTheirLineIsLeftOut) {
  std::string text = Header + "A,,,,1,115\nA,,,,2,115\n";
  text[text.size() - 2] = '\0';
  const GisFile file = Read(text);
  EXPECT_EQ(WaypointNames(file), Texts{"A"});
  EXPECT_EQ(Said(), (Texts{"File gps.txt holds bytes that are not text; it may be damaged",
                           "gps.txt: line 3 has no position and is left out"}));
}

TEST_F(GisLines, ControlCharactersInANameBecomeBlanks) {
  const GisFile file = Read(Header + "\"A\tB\x01\",,,,1,115\n");
  EXPECT_EQ(WaypointNames(file), Texts{"A B "});
}

TEST_F(GisLines, UnboundedColumnsAndLinesAreReadAllTheSame) {
  const std::string wide(1000000, ',');
  const std::string longName = LongText();
  const GisFile file = Read("name" + wide + "\nA,,,,1,115,7" + wide + "\n" + longName +
                            ",,,,2,115\n\"" + longName + "\n");
  ASSERT_EQ(file.waypoints.size(), 2U);
  EXPECT_EQ(file.waypoints[0].fix.altitude, 7.0F);
  EXPECT_EQ(file.waypoints[1].name, longName.substr(0, LongestGisName));
  EXPECT_EQ(Said(), Texts{"gps.txt: line 4 has no position and is left out"});
}

TEST_F(GisLines, ALongNameIsCutBetweenCharacters) {
  const std::string name = std::string(LongestGisName - 1, 'n') + "\xC3\xA9";
  EXPECT_EQ(CleanName(name), std::string(LongestGisName - 1, 'n'));
  const std::string latin1(LongestGisName + 5, '\xE9');
  EXPECT_EQ(CleanName(latin1).size(), LongestGisName);
}

TEST_F(GisLines, NothingIsMadeOfTextInUtf16) {
  EXPECT_TRUE(Read(std::string("\xFF\xFEn\0a\0", 6)).waypoints.empty());
  EXPECT_EQ(Said(), Texts{"File gps.txt is in UTF-16, which can't be read; save it as plain text"});
}

TEST_F(GisLines, NothingComesOfNothing) {
  for (const std::string text : {"", "\n\n", "name,time", "name\n"}) {
    const GisFile file = Read(text);
    EXPECT_TRUE(file.tracks.empty() && file.waypoints.empty()) << text;
  }
  EXPECT_EQ(Said(), Texts{});
}

/// Whatever names and quotes are put in, the same fixes come out, each in the track of its name.
TEST_F(GisLines, EveryFixComesOutOnceInOrder) {
  const std::string names[] = {"A", "b", R"("B")", R"("c,d")", "", R"("e""f")"};
  const std::string tracks[] = {"A", "b", "b", "c,d", "", "e\"f"};
  for (unsigned seed = 1; seed <= 50; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string text = Header + "A,,,,0,0\nA,,,,0,1\n";
    std::vector<std::pair<std::string, double>> expected = {{"A", 0}, {"A", 0}};
    for (int i = 0; i < 40; ++i) {
      const size_t name = random() % 6;
      const double lat = static_cast<double>(random() % 90000) / 1000;
      text += names[name] + R"(,,"q""",,)" + FormatGeneral(lat, 17) + ",5\n";
      expected.emplace_back(tracks[name], lat);
    }
    const GisFile file = Read(text);
    size_t fixes = 0;
    for (const GisTrack& track : file.tracks) {
      std::vector<double> own;
      for (const auto& [name, lat] : expected) {
        if (SameName(name, track.name)) own.push_back(lat);
      }
      EXPECT_EQ(Latitudes(track), own) << track.name;
      fixes += track.fixes.size();
    }
    EXPECT_EQ(fixes, expected.size());
  }
  EXPECT_EQ(Said(), Texts{});
}

/// Remembers where each message comes from: "gps.txt:3".
class PlacedMessages : public RecordedMessages {
 public:
  void Post(Severity severity, const std::string& text) override {
    RecordedMessages::Post(severity, text);
    places.push_back(Origin() == nullptr ? "nowhere"
                                         : Origin()->file + ":" + std::to_string(Origin()->line));
  }
  Texts places;
};

Texts PlacesOf(const std::string& text) {
  PlacedMessages messages;
  ReadGisText(text, "gps.txt", messages);
  EXPECT_EQ(messages.Origin(), nullptr);
  return messages.places;
}

TEST(GisOrigin, MessagesAboutLinesComeFromTheirLine) {
  EXPECT_EQ(PlacesOf("A,,,,1,115\nA,,,,2,115\n"), Texts{"gps.txt:1"});
  EXPECT_EQ(PlacesOf(Header + "A,,,,1,115\r\n\r\nA\r\nA,,,,2,115\r\nB"), Texts{"gps.txt:4"});
  std::string damaged = Header + "A,,,,1,115\nA,,,,2,115\n";
  damaged[damaged.size() - 2] = '\0';
  EXPECT_EQ(PlacesOf(damaged), (Texts{"gps.txt:0", "gps.txt:3"}));
  EXPECT_EQ(PlacesOf(std::string("\xFF\xFEn\0a\0", 6)), Texts{"gps.txt:0"});
}

TEST(GisOrigin, MessagesAboutGpxComeFromTheirLine) {
  EXPECT_EQ(PlacesOf("<gpx>\n<wpt lat='1'/>\n<rte>\n</rte><rte/></gpx>"),
            (Texts{"gps.txt:2", "gps.txt:3"}));
  EXPECT_EQ(PlacesOf("<gpx>\n\n<wpt lat='1' lon='2'>"), Texts{"gps.txt:3"});
  EXPECT_EQ(PlacesOf("<html>\n</html>"), Texts{"gps.txt:0"});
}

TEST(GisOrigin, EmptyLinesBeforeGpxCount) {
  EXPECT_EQ(PlacesOf("\n \r\n\r<gpx>\n<wpt lat='1'/>\n</gpx>\n"), Texts{"gps.txt:5"});
  PlacedMessages messages;
  ReadGisText("\n\n<gpx>\n<wpt", "gps.txt", messages);
  EXPECT_EQ(messages.places, Texts{"gps.txt:4"});
  EXPECT_EQ(messages.Entries()[0].text, "gps.txt can't be read from line 4 on: unclosed token");
}

// --- GPX ------------------------------------------------------------------------------------

TEST_F(Gpx, TracksAndWaypointsAreTaken) {
  const GisFile file = Read(
      "<?xml version=\"1.0\"?>\n<gpx><metadata><name>Day 3</name><time>2001-1-1</time></metadata>"
      "<wpt lat=\"1.5\" lon='115.25'><ele>30.5</ele><time>2000-01-01</time><name>Fig</name></wpt>"
      "<trk><name>Ridge</name><trkseg>"
      "<trkpt lat=\"1\" lon=\"-181\"><ele> 12 </ele><time> 2004-02-18T08:00:00Z</time></trkpt>"
      "<trkpt lat=\"2\" lon=\"115\"><time>2004-02-19T08:00:00Z</time></trkpt>"
      "</trkseg></trk></gpx>");
  EXPECT_EQ(WaypointNames(file), Texts{"Fig"});
  EXPECT_EQ(file.waypoints[0].fix.lat, 1.5);
  EXPECT_EQ(file.waypoints[0].fix.lon, 115.25);
  EXPECT_EQ(file.waypoints[0].fix.altitude, 30.5F);
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(file.tracks[0].name, "Ridge");
  EXPECT_EQ(file.tracks[0].date, "2004-02-18");
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1, 2}));
  EXPECT_EQ(file.tracks[0].fixes[0].lon, 179);
  EXPECT_EQ(file.tracks[0].fixes[0].altitude, 12.0F);
  EXPECT_EQ(file.tracks[0].fixes[1].altitude, NoAltitude);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Gpx, SegmentsAreJoinedAndTracksAreNot) {
  const GisFile file = Read(
      "<gpx><trk><name>A</name><trkseg><trkpt lat='1' lon='1'/></trkseg>"
      "<trkseg><trkpt lat='2' lon='1'/></trkseg></trk>"
      "<trk><name>A</name><trkseg><trkpt lat='3' lon='1'/></trkseg></trk></gpx>");
  EXPECT_EQ(TrackNames(file), (Texts{"A", "A"}));
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1, 2}));
  EXPECT_EQ(Latitudes(file.tracks[1]), std::vector<double>{3});
}

TEST_F(Gpx, PrefixesCommentsCdataAndReferencesAreUnderstood) {
  const GisFile file = Read(
      "  \n<!-- lat='9' --><g:gpx xmlns:g='u'><g:wpt g:x='1' lon='2' lat='1'><!-- c -->"
      "<g:name>Fig<![CDATA[ <&> ]]>&amp; &#x65;&#233;</g:name></g:wpt></g:gpx>");
  EXPECT_EQ(WaypointNames(file), Texts{"Fig <&> & e\xC3\xA9"});
}

TEST_F(Gpx, NamesElsewhereAreNotThoseOfATrack) {
  const GisFile file = Read(
      "<gpx><name>file</name><trk><extensions><name>no</name><trkseg><trkpt lat='9' lon='9'/>"
      "</trkseg></extensions><link><name>no</name></link><trkseg><trkpt lat='1' lon='1'><name>no"
      "</name></trkpt></trkseg></trk></gpx>");
  EXPECT_EQ(TrackNames(file), Texts{""});
  EXPECT_EQ(Latitudes(file.tracks[0]), std::vector<double>{1});
}

TEST_F(Gpx, WaypointsKeepNothingOfTheOneBefore) {
  const GisFile file = Read(
      "<gpx><wpt lat='1' lon='1'><name>A</name><ele>5</ele></wpt><wpt lat='2' lon='2'/>"
      "<wpt lat='3'/></gpx>");
  EXPECT_EQ(WaypointNames(file), (Texts{"A", ""}));
  EXPECT_EQ(file.waypoints[1].fix.altitude, NoAltitude);
  EXPECT_EQ(Said(), Texts{"gps.txt: line 1 has no position and is left out"});
}

TEST_F(Gpx, RoutesAreLeftOutAndReported) {
  const GisFile file =
      Read("<gpx><rte><name>R</name><rtept lat='1' lon='1'/></rte><wpt lat='1' lon='1'/></gpx>");
  EXPECT_TRUE(file.tracks.empty());
  EXPECT_EQ(file.waypoints.size(), 1U);
  EXPECT_EQ(Said(), Texts{"gps.txt: routes are left out"});
}

TEST_F(Gpx, ATrackWithoutFixesIsNone) {
  EXPECT_TRUE(Read("<gpx><trk><name>A</name><trkseg/></trk></gpx>").tracks.empty());
}

TEST_F(Gpx, AFileThatBreaksOffKeepsWhatCameBefore) {
  const GisFile file =
      Read("<gpx>\n<trk><name>A</name><trkseg>\n<trkpt lat='1' lon='1'/>\n<trkpt lat='2' lon='1'");
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(file.tracks[0].name, "A");
  EXPECT_EQ(Latitudes(file.tracks[0]), std::vector<double>{1});
  EXPECT_EQ(Said(), Texts{"gps.txt can't be read from line 4 on: unclosed token"});
}

TEST_F(Gpx, EntitiesAreRefusedWhereTheyAreDeclared) {
  const GisFile file = Read(
      "<!DOCTYPE gpx [\n<!ENTITY a 'aaaa'>\n<!ENTITY b '&a;&a;'>]>"
      "<gpx><wpt lat='1' lon='1'><name>&b;</name></wpt></gpx>");
  EXPECT_TRUE(file.waypoints.empty());
  EXPECT_EQ(Said(), Texts{"gps.txt can't be read from line 2 on: it declares entities"});
}

TEST_F(Gpx, OtherXmlIsReportedAsNotGpx) {
  const GisFile file = Read("<html><wpt lat='1' lon='1'/></html>");
  EXPECT_TRUE(file.waypoints.empty());
  EXPECT_EQ(Said(), Texts{"gps.txt is not a GPX or KML file"});
}

TEST_F(Gpx, OtherEncodingsAreRead) {
  const std::string ascii = "<gpx><wpt lat='1' lon='2'><name>Fig</name></wpt></gpx>";
  std::string utf16 = "\xFF\xFE";
  for (const char c : ascii) utf16 += {c, '\0'};
  EXPECT_EQ(WaypointNames(Read(utf16)), Texts{"Fig"});
  EXPECT_EQ(WaypointNames(Read("\xEF\xBB\xBF" + ascii)), Texts{"Fig"});
  EXPECT_EQ(WaypointNames(Read("<?xml version='1.0' encoding='ISO-8859-1'?><gpx>"
                               "<wpt lat='1' lon='2'><name>\xE9</name></wpt></gpx>")),
            Texts{"\xC3\xA9"});
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Gpx, EncodingsOfOneByteACharacterAreRead) {
  // These were refused as unknown.
  const auto name = [&](const std::string& encoding) {
    return WaypointNames(
        Read("<?xml version='1.0' encoding='" + encoding +
             "'?><gpx><wpt lat='1' lon='2'><name>\xE9\x80\xA4</name></wpt></gpx>"));
  };
  EXPECT_EQ(name("windows-1252"), Texts{"\xC3\xA9\xE2\x82\xAC\xC2\xA4"});
  EXPECT_EQ(name("ISO-8859-15"), Texts{"\xC3\xA9\xC2\x80\xE2\x82\xAC"});
  EXPECT_EQ(Said(), Texts{});
  EXPECT_EQ(name("klingon"), Texts{});
  EXPECT_EQ(name("windows-125/../x"), Texts{});
  ASSERT_EQ(Said().size(), 2U);
  EXPECT_EQ(Said()[0], "gps.txt can't be read from line 1 on: unknown encoding");
}

TEST_F(Gpx, OfAPhoneIsRead) {
  const GisFile file = Read(
      "<?xml version='1.0' encoding='utf-8' standalone='yes'?>\r\n"
      "<gpx creator='Phone' version='1.1' xmlns='http://www.topografix.com/GPX/1/1' "
      "xmlns:p='http://phone.invalid/ext'>\r\n<metadata><name>Monday</name></metadata>"
      "<wpt lat='1.25' lon='115.5'><ele>203.5</ele><time>2004-05-03T00:20:00.500Z</time>"
      "<name>Nest</name><extensions><p:name>photo</p:name></extensions></wpt>"
      "<trk><name><![CDATA[Walk]]></name><extensions><p:color>red</p:color></extensions>"
      "<trkseg><trkpt lat='1.1' lon='115.1'><ele>20</ele><time>1970-01-02T00:00:10Z</time>"
      "<hdop>4</hdop><extensions><p:speed>1.2</p:speed></extensions></trkpt></trkseg>"
      "<trkseg><trkpt lat='1.2' lon='115.2'><time>1970-01-02T00:00:20.750+00:00</time></trkpt>"
      "</trkseg></trk></gpx>");
  EXPECT_EQ(WaypointNames(file), Texts{"Nest"});
  ASSERT_EQ(TrackNames(file), Texts{"Walk"});
  EXPECT_EQ(Latitudes(file.tracks[0]), (std::vector<double>{1.1, 1.2}));
  EXPECT_EQ(file.tracks[0].fixes[0].utc, 86410000);
  EXPECT_EQ(file.tracks[0].fixes[1].utc, 86420750);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Gpx, DeepAndWideFilesAreRead) {
  constexpr int Depth = 100000;
  std::string text = "<gpx>";
  for (int i = 0; i < Depth; ++i) text += "<x>";
  for (int i = 0; i < Depth; ++i) text += "</x>";
  text += "<wpt lat='1' lon='2' ";
  for (int i = 0; i < Depth; ++i) text += "a" + std::to_string(i) + "='' ";
  text += "><name>" + LongText() + "</name></wpt></gpx>";
  EXPECT_EQ(WaypointNames(Read(text)), Texts{std::string(LongestGisName, 'n')});
  EXPECT_EQ(Said(), Texts{});
}

}  // namespace
}  // namespace orvane
