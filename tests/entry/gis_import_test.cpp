#include "entry/gis_import.h"

#include "base/number_text.h"
#include "geo/earth.h"
#include "mapfile/writer.h"
#include "support/counted_progress.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

const std::string Header = "name,time,a,b,lat,lon,alt\n";
const std::string TwoTracks = Header +
                              "A,2004-2-18 08:00,,,1,115,10\nA,2004-2-19,,,1.001,115,20\n"
                              "B,2005-3-4,,,2,115,30.25\nC,soon,,,3,115\nB,,,,2.001,115,40\n";

struct GisImportTest : MapFixture {
  Map& map = Open("T\tMain\nG\tCamp\tN1\tE115\nG\tHut\tN1\tE116\n");

  std::optional<GisImport> Start(const std::string& text, const GisBoxes& boxes = {}) {
    return StartGisImportOfText(map, text, "gps.txt", boxes);
  }
  /// Takes all tracks of a text, with fields as the batch tool has them.
  void TakeAll(const std::string& text, GisTrailFields fields = {}) {
    auto import = Start(text, fields.boxes);
    ASSERT_TRUE(import);
    if (const GisTrack* track = CurrentTrack(*import)) fields.name = track->name;
    EXPECT_EQ(TakeAllTracks(*import, fields), GisField::None);
  }
  Trail& TrailNamed(std::string_view name) {
    Trail* trail = FindTrail(map, name);
    static Trail none;
    EXPECT_NE(trail, nullptr) << name;
    return trail == nullptr ? none : *trail;
  }
  static std::vector<double> Latitudes(const Trail& trail) {
    std::vector<double> values;
    for (const Point* point : trail.points) values.push_back(point->geo.lat);
    return values;
  }
  Texts LoosePoints() const {
    Texts names;
    for (const Point* point : map.loosePoints) names.push_back(point->name);
    return names;
  }
};

TEST_F(GisImportTest, TheWindowStartsWithTheFirstTrack) {
  const auto import = Start(TwoTracks);
  ASSERT_TRUE(import);
  GisBoxes boxes;
  boxes.times = true;
  const GisTrailFields fields = StartFields(*import, boxes);
  EXPECT_EQ(fields.type, "Trail");
  EXPECT_EQ(fields.color, "black");
  EXPECT_EQ(fields.name, "A");
  EXPECT_EQ(fields.date, "2004-2-18");
  EXPECT_EQ(
      fields.focalAnimal + fields.size + fields.width + fields.subSample + fields.minimumDistance,
      "");
  EXPECT_TRUE(fields.boxes.times);
  EXPECT_FALSE(map.flags & MapDirty);
}

TEST_F(GisImportTest, TakingATrackMakesATrailOfNamelessPoints) {
  auto import = Start(TwoTracks);
  ASSERT_TRUE(import);
  GisTrailFields fields = StartFields(*import, {});
  fields.type = "Path";
  fields.focalAnimal = "Ana";
  fields.size = "3";
  fields.width = " 1.5 ";
  fields.color = "red";
  EXPECT_EQ(TakeTrack(*import, fields), GisField::None);
  EXPECT_EQ(TrailNamesOf(map), (Texts{"A", "Main"}));
  const Trail& trail = map.trails.front();
  EXPECT_EQ(trail.type, "Path");
  EXPECT_EQ(trail.focalAnimal, "Ana");
  EXPECT_EQ(trail.groupSize, 3);
  EXPECT_EQ(trail.width, 1.5);
  EXPECT_EQ(trail.color, 0xFF0000);
  EXPECT_EQ(trail.date, PackDate(2004, 2, 18));
  ASSERT_EQ(trail.points.size(), 2U);
  const Point& point = *trail.points[1];
  EXPECT_EQ(point.name, "");
  EXPECT_EQ(point.trail, &trail);
  EXPECT_TRUE(point.flags & PointPlaced);
  EXPECT_EQ(point.geo.lat, 1.001);
  EXPECT_EQ(point.geo.altitude, NoAltitude);
  ASSERT_EQ(Readings(point).size(), 1U);
  EXPECT_EQ(Readings(point)[0]->flags, std::uint32_t{MeasureGps});
  EXPECT_EQ(Readings(point)[0]->count, 1);
  EXPECT_EQ(Readings(point)[0]->altitude, NoAltitude);
  EXPECT_EQ(Length(map.namelessPoints), 0);
  EXPECT_TRUE(map.flags & MapDirty);
}

TEST_F(GisImportTest, KeepAltitudeGivesTheReadingAndThePointTheirs) {
  GisTrailFields fields;
  fields.boxes.keepAltitude = true;
  TakeAll(TwoTracks, fields);
  const Point& point = *TrailNamed("B").points[0];
  EXPECT_EQ(Readings(point)[0]->altitude, 30.25F);
  EXPECT_EQ(Readings(point)[0]->position.altitude, NoAltitude);
  EXPECT_EQ(point.geo.altitude, 30.25F);
  EXPECT_EQ(TrailNamed("C").points[0]->geo.altitude, NoAltitude);
}

TEST_F(GisImportTest, TheOtherBoxesChangeNothing) {
  GisTrailFields fields;
  TakeAll(TwoTracks, fields);
  const std::string without = MapFileText(map, "x.map", true);
  Map& other = Open("T\tMain\nG\tCamp\tN1\tE115\nG\tHut\tN1\tE116\n", "other.map");
  fields.boxes.average = true;
  fields.boxes.times = true;
  auto import = StartGisImportOfText(other, TwoTracks, "gps.txt", fields.boxes);
  ASSERT_TRUE(import);
  fields.name = "A";
  EXPECT_EQ(TakeAllTracks(*import, fields), GisField::None);
  EXPECT_EQ(MapFileText(other, "x.map", true), without);
}

TEST_F(GisImportTest, ATrackCanBeSkipped) {
  auto import = Start(TwoTracks);
  ASSERT_TRUE(import);
  SkipTrack(*import);
  ASSERT_NE(CurrentTrack(*import), nullptr);
  GisTrailFields fields = StartFields(*import, {});
  EXPECT_EQ(fields.name, "B");
  fields.name = "Renamed";
  EXPECT_EQ(TakeTrack(*import, fields), GisField::None);
  NextFields(*import, fields);
  EXPECT_EQ(fields.name, "C");
  EXPECT_EQ(fields.date, "soon");
  SkipTrack(*import);
  EXPECT_EQ(CurrentTrack(*import), nullptr);
  EXPECT_EQ(import->taken, 1U);
  EXPECT_EQ(TakeTrack(*import, fields), GisField::None);
  SkipTrack(*import);
  EXPECT_EQ(TrailNamesOf(map), (Texts{"Renamed", "Main"}));
}

TEST_F(GisImportTest, TakingOneByOneAndAllAtOnceComesToTheSame) {
  TakeAll(TwoTracks);
  const std::string atOnce = MapFileText(map, "x.map", true);
  Map& other = Open("T\tMain\nG\tCamp\tN1\tE115\nG\tHut\tN1\tE116\n", "other.map");
  auto import = StartGisImportOfText(other, TwoTracks, "gps.txt", {});
  ASSERT_TRUE(import);
  GisTrailFields fields = StartFields(*import, {});
  while (CurrentTrack(*import) != nullptr) {
    fields.date = fields.date == "soon" ? "" : fields.date;
    EXPECT_EQ(TakeTrack(*import, fields), GisField::None);
    NextFields(*import, fields);
  }
  EXPECT_EQ(MapFileText(other, "x.map", true), atOnce);
}

TEST_F(GisImportTest, EachTrackTakesItsOwnDateUnlessOneIsGiven) {
  TakeAll(TwoTracks);
  EXPECT_EQ(TrailNamed("A").date, PackDate(2004, 2, 18));
  EXPECT_EQ(TrailNamed("B").date, PackDate(2005, 3, 4));
  EXPECT_EQ(TrailNamed("C").date, 0);
  EXPECT_EQ(Said(), Texts{"Bad date soon of track C, which gets none"});
}

TEST_F(GisImportTest, AllTakesTheDateThatWasTypedAndNotTheOneThatWasThere) {
  for (const bool isTyped : {false, true}) {
    auto import = Start(TwoTracks);
    ASSERT_TRUE(import);
    GisTrailFields fields = StartFields(*import, {});
    if (isTyped) fields.date = "2010-5-6";
    EXPECT_EQ(TakeAllTracks(*import, fields), GisField::None);
    EXPECT_EQ(map.trails.front().name, "C");
    EXPECT_EQ(map.trails.front().date, isTyped ? PackDate(2010, 5, 6) : 0);
    EXPECT_EQ(import->taken, 3U);
  }
}

TEST_F(GisImportTest, ADateForAllHoldsThoughTheFirstTrackHasTheSame) {
  GisTrailFields fields;
  fields.date = "2004-2-18";
  fields.dateIsForAll = true;
  TakeAll(TwoTracks, fields);
  for (const char* name : {"A", "B", "C"}) {
    EXPECT_EQ(TrailNamed(name).date, PackDate(2004, 2, 18)) << name;
  }
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GisImportTest, DatesGoByTheUsersOrder) {
  workspace.preferences.europeanDates = true;
  GisTrailFields fields;
  fields.date = "2-3-99";
  TakeAll(TwoTracks, fields);
  EXPECT_EQ(TrailNamed("A").date, PackDate(1999, 3, 2));
}

TEST_F(GisImportTest, ABadNumberOrDateRefusesAndDoesNothing) {
  struct Case {
    std::string GisTrailFields::*field;
    std::string text;
    GisField bad;
  };
  const Case cases[] = {
      {&GisTrailFields::date, "soon", GisField::Date},
      {&GisTrailFields::date, "2004-2-18x", GisField::Date},
      {&GisTrailFields::size, "three", GisField::Size},
      {&GisTrailFields::size, "2.5", GisField::Size},
      {&GisTrailFields::size, "40000", GisField::Size},
      {&GisTrailFields::size, "-1", GisField::Size},
      {&GisTrailFields::width, "1m", GisField::Width},
      {&GisTrailFields::width, "1e39", GisField::Width},
      {&GisTrailFields::subSample, "1,5", GisField::SubSample},
      {&GisTrailFields::subSample, "1e10", GisField::SubSample},
      {&GisTrailFields::minimumDistance, "-0.1", GisField::MinimumDistance},
      {&GisTrailFields::minimumDistance, "10 20", GisField::MinimumDistance},
  };
  auto import = Start(TwoTracks);
  ASSERT_TRUE(import);
  for (const Case& one : cases) {
    GisTrailFields fields = StartFields(*import, {});
    fields.*one.field = one.text;
    EXPECT_EQ(TakeTrack(*import, fields), one.bad) << one.text;
    EXPECT_EQ(TakeAllTracks(*import, fields), one.bad) << one.text;
  }
  EXPECT_EQ(import->current, 0U);
  EXPECT_EQ(TrailNamesOf(map), Texts{"Main"});
  EXPECT_FALSE(map.flags & MapDirty);
}

TEST_F(GisImportTest, EmptyFieldsAndOddColorsAreNoFault) {
  GisTrailFields fields;
  fields.type = "";
  fields.color = "no colour";
  fields.size = "0";
  TakeAll(Header + ",,,,1,115\n,,,,2,115\n", fields);
  const Trail& trail = map.trails.front();
  EXPECT_EQ(trail.name, "gps 1");
  EXPECT_FALSE(trail.focalAnimal);
  EXPECT_EQ(trail.type, "");
  EXPECT_EQ(trail.color, NoColor);
  EXPECT_EQ(trail.groupSize, 1);
  EXPECT_EQ(trail.date, 0);
}

TEST_F(GisImportTest, TabsThatWereTypedCannotBreakTheFile) {
  GisTrailFields fields;
  fields.type = "a\tb";
  fields.focalAnimal = "c\nd";
  TakeAll(TwoTracks, fields);
  EXPECT_EQ(TrailNamed("A").type, "a b");
  EXPECT_EQ(TrailNamed("A").focalAnimal, "c d");
}

// --- Which fixes are taken ------------------------------------------------------------------

std::string Line(double lat) { return "A,,,,0," + std::to_string(lat) + "\n"; }

TEST_F(GisImportTest, SubSampleTakesEveryNth) {
  std::string text = Header;
  for (int i = 0; i < 10; ++i) text += "A,,,," + std::to_string(i) + ",115\n";
  const std::pair<std::string, std::vector<double>> cases[] = {
      {"", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
      {"0", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
      {"1", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
      {"3", {0, 3, 6, 9}},
      {"4", {0, 4, 8}},
      {"100", {0}}};
  for (const auto& [step, expected] : cases) {
    GisTrailFields fields;
    fields.subSample = step;
    TakeAll(text, fields);
    EXPECT_EQ(Latitudes(map.trails.front()), expected) << step;
  }
}

TEST_F(GisImportTest, TheMinimumDistanceCountsFromTheLastFixTaken) {
  // 0.001 degrees of longitude are 111.12 m on the equator.
  std::string text = Header;
  for (int i = 0; i < 8; ++i) text += Line(i * 0.001);
  GisTrailFields fields;
  fields.minimumDistance = "250";
  TakeAll(text, fields);
  std::vector<double> longitudes;
  for (const Point* point : map.trails.front().points) longitudes.push_back(point->geo.lon);
  EXPECT_EQ(longitudes, (std::vector<double>{0, 0.003, 0.006}));
}

TEST_F(GisImportTest, BothLimitsMustBeKeptAndAFixThatFailsOneIsNotWaitedFor) {
  const std::string text =
      Header + Line(0) + Line(0.01) + Line(0.0001) + Line(0.0002) + Line(0.02) + Line(0.03);
  GisTrailFields fields;
  fields.subSample = "2";
  fields.minimumDistance = "500";
  TakeAll(text, fields);
  std::vector<double> longitudes;
  for (const Point* point : map.trails.front().points) longitudes.push_back(point->geo.lon);
  EXPECT_EQ(longitudes, (std::vector<double>{0, 0.02}));
}

/// The rule in other words: of all fixes in order, the first and then always the next one that
/// fits.
TEST_F(GisImportTest, TheFixesTakenAreTheNextThatFit) {
  for (unsigned seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string text = Header;
    std::vector<LatLon> fixes;
    LatLon place{1, 115};
    for (int i = 0; i < 60; ++i) {
      place.lat += static_cast<double>(random() % 9) * 1e-4;
      place.lon += static_cast<double>(random() % 9) * 1e-4 - 4e-4;
      const std::string lat = FormatFixed(place.lat, 7);
      const std::string lon = FormatFixed(place.lon, 7);
      text += "A,,,," + lat + "," + lon + "\n";
      fixes.push_back({ReadReal(lat).value, ReadReal(lon).value});
    }
    const size_t step = random() % 6;
    const double distance = static_cast<double>(random() % 200);
    std::vector<double> expected = {fixes[0].lat};
    for (size_t last = 0;;) {
      size_t next = std::max(last + 1, last + step);
      while (next < fixes.size() && GroundDistance(fixes[last], fixes[next]) < distance) ++next;
      if (next >= fixes.size()) break;
      expected.push_back(fixes[next].lat);
      last = next;
    }
    GisTrailFields fields;
    fields.subSample = std::to_string(step);
    fields.minimumDistance = FormatGeneral(distance);
    TakeAll(text, fields);
    EXPECT_EQ(Latitudes(map.trails.front()), expected);
  }
}

// --- Waypoints ------------------------------------------------------------------------------

TEST_F(GisImportTest, WaypointsAreLoosePointsWithOneReading) {
  const auto import = Start(Header + "Fig,,,,1.5,115.5,30\nLed,,,,1.6,115.5\n");
  ASSERT_TRUE(import);
  EXPECT_EQ(CurrentTrack(*import), nullptr);
  // Finishing a map lists its loose points again, also those that are on the list.
  EXPECT_EQ(LoosePoints(), (Texts{"Fig", "Led", "Led", "Fig"}));
  const Point& fig = Named(map, "fig");
  EXPECT_EQ(fig.trail, nullptr);
  EXPECT_EQ(fig.geo.lat, 1.5);
  EXPECT_TRUE(fig.flags & PointPlaced);
  ASSERT_EQ(Readings(fig).size(), 1U);
  EXPECT_EQ(Readings(fig)[0]->altitude, NoAltitude);
  EXPECT_EQ(fig.geo.altitude, NoAltitude);
  EXPECT_EQ(TrailNamesOf(map), Texts{"Main"});
  EXPECT_TRUE(map.flags & MapDirty);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GisImportTest, WaypointsTakeTheirAltitudeIfTheBoxIsChecked) {
  GisBoxes boxes;
  boxes.keepAltitude = true;
  ASSERT_TRUE(Start(Header + "Fig,,,,1.5,115.5,30\nLed,,,,1.6,115.5\n", boxes));
  EXPECT_EQ(Named(map, "Fig").geo.altitude, 30.0F);
  EXPECT_EQ(Named(map, "Led").geo.altitude, NoAltitude);
}

// The altitude was in the reading and in its position, and each of them counted.
TEST_F(GisImportTest, AnAltitudeThatIsKeptCountsOnceInTheMean) {
  Map& known = Open("T\tMain\nG\tCamp\tN1\tE115\t10\n");
  GisBoxes boxes;
  boxes.keepAltitude = true;
  ASSERT_TRUE(StartGisImportOfText(known, Header + "Camp,,,,1,115,30\n", "gps.txt", boxes));
  EXPECT_EQ(Named(known, "Camp").geo.altitude, 20.0F);
  Map& again = Open(MapFileText(known, "again.map", false), "again.map");
  EXPECT_EQ(Named(again, "Camp").geo.altitude, 20.0F);
}

TEST_F(GisImportTest, AWaypointOfAKnownNameIsAFurtherReading) {
  ASSERT_TRUE(Start(Header + "camp,,,,2,115\nFig=Tree,,,,3,115\ntree,,,,5,115\n"));
  EXPECT_EQ(Readings(Named(map, "Camp")).size(), 2U);
  EXPECT_EQ(Named(map, "Camp").geo.lat, 1.5);
  EXPECT_EQ(Named(map, "Fig").geo.lat, 4);
  EXPECT_EQ(LoosePoints(), (Texts{"Fig", "Fig", "Fig"}));
}

TEST_F(GisImportTest, PlacesThatOnlyTheMapFileGivesAreKept) {
  for (const char* lines : {"A,,,,1,115\nA,,,,2,115\n", "Fig,,,,1,115\nNest,,,,2,115\n"}) {
    Map& told = Open("T\tPath\nL\tStart\t1.5\t115.5\t20\n\nT\nL\tTree\t2\t116\t\n");
    auto import = StartGisImportOfText(told, Header + lines, "gps.txt", {});
    ASSERT_TRUE(import);
    EXPECT_EQ(TakeAllTracks(*import, {}), GisField::None);
    for (const char* name : {"Start", "Tree"}) {
      EXPECT_TRUE(Named(told, name).flags & PointPlaced) << name;
    }
    EXPECT_EQ(Named(told, "Start").geo.lat, 1.5);
    EXPECT_EQ(Named(told, "Start").geo.altitude, 20.0F);
    EXPECT_EQ(Said(), Texts{});
  }
}

TEST_F(GisImportTest, ReadingsAveragedWithoutTheirCountsStayAveragedSo) {
  Map& counted = Open("T\nG\tCamp\tN1\tE115\t\t5\nG\tCamp\tN2\tE115\n");
  ASSERT_EQ(Named(counted, "Camp").geo.lat, 1.5);
  auto import = StartGisImportOfText(counted, TwoTracks, "gps.txt", {});
  ASSERT_TRUE(import);
  GisTrailFields fields;
  fields.date = "2004-2-18";
  EXPECT_EQ(TakeTrack(*import, fields), GisField::None);
  EXPECT_EQ(Named(counted, "Camp").geo.lat, 1.5);
}

TEST_F(GisImportTest, AFixForAPointOfCompassReadingsSolvesTheMap) {
  const std::string survey = "T\tPath\nG\tCamp\tN1\tE115\nC\tHut\tCamp\t100\t180\n";
  const Map& atOnce = Open(survey + "\nT\nG\tHut\tN1.01\tE115\n");
  Map& later = Open(survey);
  ASSERT_TRUE(StartGisImportOfText(later, Header + "Hut,,,,1.01,115\n", "gps.txt", {}));
  for (const char* name : {"Camp", "Hut"}) {
    EXPECT_EQ(Named(later, name).geo.lat, Named(atOnce, name).geo.lat) << name;
  }
  EXPECT_GT(Named(later, "Camp").geo.lat, 1);
}

TEST_F(GisImportTest, WaypointsWithoutALastingNameAreReported) {
  ASSERT_TRUE(Start(Header + ",,,,2,115\n0830,,,,3,115\n0830,,,,4,115\n"));
  EXPECT_EQ(LoosePoints(), (Texts{"0830", "0830"}));
  EXPECT_EQ(Length(map.namelessPoints), 1);
  EXPECT_TRUE(map.namelessPoints.front()->flags & PointPlaced);
  EXPECT_EQ(Said(), Texts{"3 waypoints are not kept when the map is saved: they have no name, or "
                          "that of a time of day"});
}

TEST_F(GisImportTest, OneWaypointWithoutALastingNameIsNamed) {
  ASSERT_TRUE(Start(Header + "0830,,,,3,115\n"));
  ASSERT_TRUE(Start(Header + ",,,,3,115\n"));
  EXPECT_EQ(Said(), (Texts{"1 waypoint is not kept when the map is saved: 0830 is the name of a "
                           "time of day",
                           "1 waypoint is not kept when the map is saved: it has no name"}));
}

TEST_F(GisImportTest, PointsOfTheBasisStayAsTheyAre) {
  Map& above = Open("B\ttest.map\n", "above.map");
  ASSERT_EQ(above.basis, &map);
  ASSERT_TRUE(StartGisImportOfText(above, Header + "Camp,,,,2,115\nFig,,,,3,115\n", "gps.txt", {}));
  EXPECT_EQ(Readings(Named(map, "Camp")).size(), 1U);
  EXPECT_EQ(Named(map, "Camp").geo.lat, 1);
  EXPECT_EQ(Named(above, "Fig").map, &above);
  EXPECT_EQ(Said(), Texts{"A GPS location is given to a point (Camp) which is in a base map, it "
                          "will have no effect"});
}

TEST_F(GisImportTest, UnusableNamesAreReportedAFewTimes) {
  std::string text = Header + "Fig,,,,1,115\n";
  for (int i = 0; i < 9; ++i) text += "=,,,,2,115\n";
  ASSERT_TRUE(Start(text));
  Texts expected(5, "Bad pointname =");
  expected.emplace_back("4 more waypoints are left out");
  EXPECT_EQ(Said(), expected);
}

TEST_F(GisImportTest, TracksAndWaypointsOfOneFileBothComeIn) {
  TakeAll(
      "<gpx><wpt lat='1' lon='2'><name>Fig</name></wpt><trk><trkseg><trkpt lat='1' lon='2'>"
      "<time>2004-02-18T08:00:00Z</time></trkpt></trkseg></trk></gpx>");
  EXPECT_EQ(LoosePoints(), (Texts{"Fig", "Fig", "Fig"}));
  EXPECT_EQ(Length(map.trails), 2);
  EXPECT_EQ(map.trails.front().name, "gps 1");
  EXPECT_EQ(map.trails.front().date, PackDate(2004, 2, 18));
}

std::string GpxOf(const std::vector<std::string>& trackNames) {
  std::string text = "<gpx>";
  for (const std::string& name : trackNames) {
    text += "<trk><name>" + name + "</name><trkseg><trkpt lat='1' lon='2'/></trkseg></trk>";
  }
  return text + "</gpx>";
}

TEST_F(GisImportTest, TracksWithoutANameGetThatOfTheFileAndANumber) {
  const auto namesOf = [this](const std::string& file, const std::vector<std::string>& tracks) {
    auto import = StartGisImportOfText(map, GpxOf(tracks), file, {});
    Texts names;
    for (const GisTrack& track : import->file.tracks) names.push_back(track.name);
    EXPECT_EQ(TakeAllTracks(*import, StartFields(*import, {})), GisField::None);
    return names;
  };
  EXPECT_EQ(namesOf("gps/walk.gpx", {"", "Ridge", " "}), (Texts{"walk 1", "Ridge", "walk 2"}));
  // Neither a name of the map is used again, nor one of the same file.
  EXPECT_EQ(namesOf("walk.txt", {"", "WALK 3", ""}), (Texts{"walk 4", "WALK 3", "walk 5"}));
  EXPECT_EQ(namesOf(".gpx", {""}), Texts{"Track 1"});
  EXPECT_EQ(namesOf("a\tb.c.gpx", {""}), Texts{"a b.c 1"});
  const auto lines = StartGisImportOfText(map, Header + ",,,,1,2\n,,,,1,3\n", "day.txt", {});
  EXPECT_EQ(CurrentTrack(*lines)->name, "day 1");
}

TEST_F(GisImportTest, TheSummaryCountsWhatWasTaken) {
  auto import = Start(TwoTracks + "D,,,,x,115\n");
  ASSERT_TRUE(import);
  EXPECT_EQ(GisSummary(*import),
            "Imported no tracks from gps.txt; 3 tracks are skipped; line 7 is left out");
  EXPECT_EQ(TakeTrack(*import, StartFields(*import, {})), GisField::None);
  SkipTrack(*import);
  EXPECT_EQ(
      GisSummary(*import),
      "Imported 1 track with 2 points from gps.txt; 2 tracks are skipped; line 7 is left out");
  EXPECT_EQ(TakeTrack(*import, {}), GisField::None);
  EXPECT_EQ(GisSummary(*import),
            "Imported 2 tracks with 3 points from gps.txt; 1 track is skipped; line 7 is left out");
  const auto waypoints =
      Start(Header + "Fig,,,,1.5,115\nCamp,,,,1,115\n=,,,,1,115\n,,,,,\n,,,,,\n");
  ASSERT_TRUE(waypoints);
  EXPECT_EQ(GisSummary(*waypoints),
            "Imported 2 waypoints from gps.txt; 1 waypoint is left out; 2 lines are left out, the "
            "first is line 5");
  const auto both = Start(
      "<gpx><wpt lat='1' lon='2'><name>Fig</name></wpt><trk><trkseg>"
      "<trkpt lat='1' lon='2'/></trkseg></trk></gpx>");
  ASSERT_TRUE(both);
  EXPECT_EQ(GisSummary(*both),
            "Imported no tracks and 1 waypoint from gps.txt; 1 track is skipped");
}

// --- The whole way --------------------------------------------------------------------------

TEST_F(GisImportTest, ImportedTracksAreAFollowForTheRanges) {
  Map& follows = Open("R\tAll\nK\tGroup\n", "follows.map");
  auto import = StartGisImportOfText(follows, TwoTracks, "gps.txt", {});
  ASSERT_TRUE(import);
  GisTrailFields fields = StartFields(*import, {});
  fields.type = "Group";
  EXPECT_EQ(TakeTrack(*import, fields), GisField::None);
  EXPECT_EQ(follows.ranges.front().follows.size(), 1U);
}

TEST_F(GisImportTest, WhatIsSavedOpensAgain) {
  TakeAll(TwoTracks);
  ASSERT_TRUE(Start(Header + "Fig,,,,1.5,115.5,30\nLed,,,,1.6,115.5\n"));
  Map& again = Open(MapFileText(map, "again.map", true), "again.map");
  EXPECT_EQ(TrailNamesOf(again), TrailNamesOf(map));
  EXPECT_NEAR(Named(again, "Fig").geo.lat, 1.5, 1e-7);
  Trail* trail = FindTrail(again, "B");
  ASSERT_NE(trail, nullptr);
  EXPECT_EQ(trail->points.size(), 2U);
}

TEST_F(GisImportTest, AnEmptyOrMissingFileIsReported) {
  const TemporaryFolder folder;
  EXPECT_FALSE(StartGisImport(map, folder.Path("none.txt"), {}));
  EXPECT_FALSE(StartGisImport(map, folder.Path(), {}));
  const std::string path = folder.Write("empty.txt", Header);
  EXPECT_FALSE(StartGisImport(map, path, {}));
  EXPECT_EQ(Said(),
            (Texts{"Can't open file " + folder.Path("none.txt"), "Can't open file " + folder.Path(),
                   "There are no tracks and no waypoints in " + path +
                       ": looked for latitude in column 5 and longitude in column 6, separated by "
                       "commas"}));
  EXPECT_FALSE(map.flags & MapDirty);
  EXPECT_TRUE(StartGisImport(map, folder.Write("gps.txt", TwoTracks), {}));
}

TEST_F(GisImportTest, AFileThatHoldsNothingNamesItsSeparator) {
  for (const std::string separator : {"\t", ";"}) {
    std::string text = Header + "A,x,,,1,115\n";
    std::replace(text.begin(), text.end(), ',', separator[0]);
    EXPECT_FALSE(Start(text));
  }
  EXPECT_FALSE(Start("<gpx><rte/></gpx>"));
  EXPECT_FALSE(Start(""));
  const std::string start = "There are no tracks and no waypoints in gps.txt: looked for ";
  const std::string columns =
      start + "latitude in column 5 and longitude in column 6, separated by commas";
  Texts errors;
  for (const auto& entry : messages.Entries()) {
    if (entry.severity == Severity::Error) errors.push_back(entry.text);
  }
  EXPECT_EQ(errors, (Texts{columns + ", not tabs", columns + ", not semicolons",
                           start + "trk and wpt", columns}));
}

// --- Cancelled ------------------------------------------------------------------------------

TEST_F(GisImportTest, CalledOffWhileItIsReadItChangesNothing) {
  std::string text = Header;
  for (int i = 0; i < 2000; ++i) text += "W" + std::to_string(i) + ",,,,1.5,115\n";
  for (const std::string& file :
       {text, "<gpx><wpt lat=\"1\" lon=\"2\"/>" + std::string(3 << 20, ' ') + "</gpx>"}) {
    for (const size_t at : {1U, 3U}) {
      CountedProgress progress(at);
      workspace.progress = &progress;
      const size_t points = map.pointStore.size();
      EXPECT_FALSE(Start(file));
      EXPECT_EQ(map.pointStore.size(), points);
      EXPECT_EQ(map.flags & MapDirty, 0U);
    }
  }
  EXPECT_TRUE(Said().empty());
  workspace.progress = nullptr;
}

TEST_F(GisImportTest, TracksTakenBeforeItWasCalledOffStay) {
  std::string text = Header;
  for (int i = 0; i < 10; ++i) {
    const std::string name = "T" + std::to_string(i);
    text += name + ",,,,1." + std::to_string(i) + ",115\n" + name + ",,,,1.5,115.1\n";
  }
  auto import = Start(text);
  ASSERT_TRUE(import);
  CountedProgress progress(4);
  workspace.progress = &progress;
  EXPECT_EQ(TakeAllTracks(*import, StartFields(*import, {})), GisField::None);
  workspace.progress = nullptr;
  EXPECT_EQ(import->taken, 4U);
  ASSERT_NE(CurrentTrack(*import), nullptr);
  EXPECT_EQ(CurrentTrack(*import)->name, "T4");
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_NE(FindTrail(map, "T3"), nullptr);
  EXPECT_EQ(FindTrail(map, "T4"), nullptr);
  for (const Point* point : TrailNamed("T3").points) EXPECT_NE(point->flags & PointPlaced, 0U);
}

std::string TimedTrack(const std::vector<std::string>& times) {
  std::string text = "<gpx><trk><name>Walk</name><trkseg>";
  double lat = 1;
  for (const std::string& time : times) {
    text += "<trkpt lat=\"" + FormatFixed(lat, 3) + "\" lon=\"115\"><ele>7</ele>";
    if (!time.empty()) text += "<time>" + time + "</time>";
    text += "</trkpt>";
    lat += 0.001;
  }
  return text + "</trkseg></trk></gpx>";
}

TEST_F(GisImportTest, TimesGiveATrailForEachLocalDate) {
  GisTrailFields fields;
  fields.boxes.times = true;
  fields.date = "1999-1-1";  // does not count
  TakeAll(TimedTrack({"2004-05-03T16:00:00Z", "2004-05-03T15:59:59.5Z", "2004-05-03T00:30:00Z", "",
                      "2004-05-03T00:30:59Z", "2004-05-04T08:00:00+08:00", "soon"}),
          fields);
  const Trail& first = TrailNamed("Walk");
  EXPECT_EQ(FormatDate(first.date), "2004-5-3");
  ASSERT_EQ(first.points.size(), 2U);
  EXPECT_EQ(first.points[0]->name, "08:30");
  EXPECT_EQ(first.points[0]->timeOfDay, 8 * 60 + 30);
  EXPECT_EQ(first.points[1]->name, "23:59");
  EXPECT_EQ(Latitudes(first), (std::vector<double>{1.002, 1.001}));
  const Trail& second = TrailNamed("Walk 2004-5-4");
  ASSERT_EQ(second.points.size(), 2U);
  EXPECT_EQ(second.points[0]->name, "00:00");
  EXPECT_EQ(second.points[1]->name, "08:00");
  EXPECT_EQ(second.points[1]->trail, &second);
}

TEST_F(GisImportTest, TimesAreReported) {
  auto import = Start(TimedTrack({"2004-05-03T00:30:00Z", "2004-05-03T00:30:59Z", ""}));
  ASSERT_TRUE(import);
  GisTrailFields fields = StartFields(*import, {});
  fields.boxes.times = true;
  EXPECT_EQ(TakeTrack(*import, fields), GisField::None);
  EXPECT_EQ(
      GisSummary(*import),
      "Imported 1 track with 1 point from gps.txt; 1 fix in one minute with another left out; "
      "1 fix without a time left out; times are UTC+08:00");
}

TEST_F(GisImportTest, TimesStartAnewOnEachDate) {
  GisTrailFields fields;
  fields.boxes.times = true;
  fields.subSample = "2";
  TakeAll(TimedTrack({"2004-05-03T01:00:00Z", "2004-05-03T02:00:00Z", "2004-05-03T03:00:00Z",
                      "2004-05-03T17:00:00Z", "2004-05-03T18:00:00Z"}),
          fields);
  EXPECT_EQ(TrailNamed("Walk").points.size(), 2U);
  EXPECT_EQ(TrailNamed("Walk 2004-5-4").points.size(), 1U);
}

TEST_F(GisImportTest, TimesChangeNothingWithoutTimesInTheFile) {
  GisTrailFields fields;
  fields.boxes.times = true;
  TakeAll(TimedTrack({"", ""}), fields);
  EXPECT_EQ(TrailNamed("Walk").date, 0);
  EXPECT_EQ(TrailNamed("Walk").points[0]->name, "");
  fields.boxes.times = false;
  TakeAll(TimedTrack({"2004-05-03T00:30:00Z"}), fields);
  EXPECT_EQ(map.trails.front().points[0]->name, "");
}

}  // namespace
}  // namespace orvane
