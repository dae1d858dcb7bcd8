#include "geo/earth.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct PointLinesTest : MapFixture {
  /// Reads one line on the point "p". \return the point
  const Point& ReadPoint(const std::string& line) {
    messages.Clear();
    return Named(Read(line), "p");
  }
  /// The reading of a line on the point "p" that has one.
  const Measurement& ReadReading(const std::string& line) {
    const Point& point = ReadPoint(line);
    static const Measurement none;
    const auto readings = Readings(point);
    EXPECT_EQ(readings.size(), 1U) << line;
    return readings.empty() ? none : *readings[0];
  }
};

// --- The point field and the trail --------------------------------------------------------------

TEST_F(PointLinesTest, LineWithoutATabIsBadInput) {
  for (const char* tag : {"A", "C", "G", "L", "N", "P", "P a", "GPS"}) {
    messages.Clear();
    const Map& map = Read(tag);
    EXPECT_EQ(Said(), Texts{"Bad Input"}) << tag;
    EXPECT_TRUE(map.pointStore.empty());
  }
}

TEST_F(PointLinesTest, BadInputIsReportedEachTime) {
  Read("A\nA\n");
  EXPECT_EQ(Said(), (Texts{"Bad Input", "Bad Input"}));
}

TEST_F(PointLinesTest, NameThatCannotBeResolvedDropsTheLine) {
  for (const char* tag : {"A", "C", "G", "L", "N", "P"}) {
    messages.Clear();
    const Map& map = Read(std::string(tag) + "\t==\t1\t2\n");
    EXPECT_EQ(Said(), Texts{"Bad pointname =="}) << tag;
    EXPECT_TRUE(map.pointStore.empty());
  }
}

TEST_F(PointLinesTest, PointsAreAppendedToTheCurrentTrail) {
  const Map& map = Read("T\tt\nA\ta\t1\nG\tb\t1\t2\nC\tc\ta\t1\nL\td\t1\t2\nN\te\ta\nP\tf\n");
  const Trail& trail = map.trails.front();
  EXPECT_EQ(NamesOf(trail), (Texts{"a", "b", "c", "d", "e", "f"}));
  for (const Point* point : trail.points) EXPECT_EQ(point->trail, &trail);
}

TEST_F(PointLinesTest, RepeatedLinesAddThePointOnceAndAReturnAddsItAgain) {
  const Map& map = Read("T\tt\nP\ta\nA\tA\t5\nG\ta\t1\t2\nP\tb\nP\ta\n");
  EXPECT_EQ(NamesOf(map.trails.front()), (Texts{"a", "b", "a"}));
}

TEST_F(PointLinesTest, FirstTrailStaysThePointsTrail) {
  const Map& map = Read("T\tt\nP\ta\nT\tu\nP\ta\n");
  EXPECT_EQ(TrailNamesOf(map), (Texts{"t", "u"}));
  EXPECT_EQ(Named(map, "a").trail, &map.trails.front());
  EXPECT_EQ(NamesOf(*std::next(map.trails.begin())), Texts{"a"});
}

TEST_F(PointLinesTest, BaseIsNotAddedToTheTrail) {
  const Map& map = Read("T\tt\nC\ta\tbase\t1\n");
  EXPECT_EQ(NamesOf(map.trails.front()), Texts{"a"});
  EXPECT_EQ(Named(map, "base").trail, nullptr);
}

TEST_F(PointLinesTest, TimeNameReachesOnePointOnEveryLineOfItsTrail) {
  const Map& map = Read("T\t1\nP\t0910\nP\ta\nA\t0910\t5\nT\t2\nP\t0910\nT\nP\t0910\nP\t0910\n");
  const Trail& first = map.trails.front();
  EXPECT_EQ(NamesOf(first), (Texts{"0910", "a", "0910"}));
  EXPECT_EQ(first.points[0], first.points[2]);
  EXPECT_EQ(Readings(*first.points[0]).size(), 1U);
  const Trail& second = *std::next(map.trails.begin());
  EXPECT_NE(second.points[0], first.points[0]);
  // On no trail each mention is a point of its own.
  EXPECT_EQ(map.pointStore.size(), 5U);
}

TEST_F(PointLinesTest, CompassBaseMayBeATimeNameOfTheTrail) {
  const Map& map = Read("T\t1\nP\t0910\nC\t0920\t0910\t5\n");
  const Trail& trail = map.trails.front();
  EXPECT_EQ(Readings(*trail.points[1])[0]->base, trail.points[0]);
}

TEST_F(PointLinesTest, ManyTimeNamesOfATrailAreFoundAgain) {
  std::string text = "T\tfollow\n";
  constexpr int count = 3000;
  for (int i = 0; i < count; ++i) text += "P\t" + std::to_string(i) + ":0\n";
  for (int i = count - 1; i > 0; --i) text += "A\t" + std::to_string(i) + ":0\t7\n";
  const Map& map = Read(text);
  EXPECT_EQ(map.pointStore.size(), static_cast<size_t>(count));
  EXPECT_EQ(map.trails.front().points.size(), static_cast<size_t>(2 * count - 2));
}

TEST_F(PointLinesTest, SynonymThatIsATimeNameIsFoundOnItsTrail) {
  const Map& map = Read(
      "T\tt\nP\t0800\nP\tCamp\nP\t0810\nP\tCamp=0820\nP\t0830\nP\t0820\nP\tHut=0810\nP\t0810\n");
  EXPECT_EQ(NamesOf(map.trails.front()),
            (Texts{"0800", "Camp", "0810", "Camp", "0830", "Camp", "Hut", "0810"}));
  EXPECT_EQ(map.trails.front().points[2], map.trails.front().points[7]);
}

TEST_F(PointLinesTest, EarlierPointOfATrailKeepsATimeName) {
  // Camp is before 0810 and gets its name as a synonym: it is then the first with that name.
  const Map& map = Read("T\tt\nP\tCamp\nP\t0810\nP\tCamp=0810\nP\t0900\nP\t0810\n");
  EXPECT_EQ(NamesOf(map.trails.front()), (Texts{"Camp", "0810", "Camp", "0900", "Camp"}));
}

// --- The tail: altitude and count -----------------------------------------------------------------

TEST_F(PointLinesTest, AltitudeIsRoundedByAddingHalfAndCutting) {
  const std::pair<const char*, float> cases[] = {{"812.4", 812}, {"812.5", 813}, {"-3.7", -3},
                                                 {"-3.2", -2},   {"-0.5", 0},    {"0", 0},
                                                 {"", -9999},    {"1e3", 1000},  {"-9999", -9998}};
  for (const auto& [text, altitude] : cases) {
    EXPECT_EQ(ReadReading(std::string("A\tp\t") + text).altitude, altitude) << text;
    EXPECT_EQ(ReadReading(std::string("G\tp\t1\t2\t") + text).altitude, altitude) << text;
    EXPECT_EQ(ReadReading(std::string("C\tp\tb\t1\t2\t3\t") + text).altitude, altitude) << text;
  }
}

TEST_F(PointLinesTest, CountIsAtLeastOne) {
  const std::pair<const char*, int> cases[] = {{"", 1},      {"\t", 1},   {"\t3", 3},
                                               {"\t0", 1},   {"\t-4", 1}, {"\tx", 1},
                                               {"\t\tx", 1}, {"\t7x", 7}, {"\t99999999999", 1}};
  for (const auto& [text, count] : cases) {
    EXPECT_EQ(ReadReading(std::string("A\tp\t5") + text).count, count) << text;
    EXPECT_EQ(ReadReading(std::string("G\tp\t1\t2\t5") + text).count, count) << text;
    EXPECT_EQ(ReadReading(std::string("C\tp\tb\t1\t2\t3\t5") + text).count, count) << text;
  }
}

// What was left of the number became the label limit.
TEST_F(PointLinesTest, TheFractionOfACountIsCutOff) {
  for (const auto& [text, count] :
       std::initializer_list<std::pair<const char*, int>>{{"2.5", 2}, {"0.9", 1}, {"-1e300", 1}}) {
    const std::string line = std::string("A\tp\t5\t") + text + "\t30";
    EXPECT_EQ(ReadReading(line).count, count) << text;
    EXPECT_EQ(ReadPoint(line).labelLimit, 30) << text;
  }
}

TEST_F(PointLinesTest, StyleFollowsTheCount) {
  for (const char* line : {"A\tp\t5\t2\t30,1,2,3,C4\tnote", "G\tp\t1\t2\t5\t2\t30,1,2,3,C4\tnote",
                           "C\tp\tb\t1\t2\t3\t5\t2\t30,1,2,3,C4\tnote",
                           "N\tp\tq\t30,1,2,3,C4\tnote", "P\tp\t30,1,2,3,C4\tnote"}) {
    const Point& point = ReadPoint(line);
    EXPECT_EQ(point.labelLimit, 30) << line;
    EXPECT_EQ(point.sm[0], 1);
    EXPECT_EQ(point.sm[1], 2);
    EXPECT_EQ(point.sm[2], 3);
    EXPECT_EQ(point.markShape, PointMarkCircle);
    EXPECT_EQ(point.markSize, 4);
    EXPECT_NE(point.flags & PointMarkFilled, 0U);
    EXPECT_EQ(point.note, "\tnote") << line;
    EXPECT_EQ(Said(), Texts{});
  }
}

// --- The style --------------------------------------------------------------------------------------

TEST_F(PointLinesTest, LabelLimitHasASuffix) {
  const std::pair<const char*, double> cases[] = {
      {"30", 30},    {"30m", 30},    {"300c", 3}, {"300cm", 3},   {"2k", 2000},
      {"2km", 2000}, {"1.5k", 1500}, {"-5", -5},  {"0.25", 0.25}, {"", 0}};
  for (const auto& [text, limit] : cases) {
    EXPECT_EQ(ReadPoint(std::string("P\tp\t") + text).labelLimit, limit) << text;
    EXPECT_EQ(ReadPoint(std::string("P\tp\t") + text + ",7").sm[0], 7) << text;
  }
}

TEST_F(PointLinesTest, SmallestLabelLimitAboveZeroIsKept) {
  EXPECT_EQ(ReadPoint("P\tp\t30\nP\tp\t20\nP\tp\t25\n").labelLimit, 20);
  EXPECT_EQ(ReadPoint("P\tp\t30\nP\tp\t0\n").labelLimit, 30);
  EXPECT_EQ(ReadPoint("P\tp\t0\nP\tp\t30\n").labelLimit, 30);
  EXPECT_EQ(ReadPoint("P\tp\t30\nP\tp\t,1\n").labelLimit, 30);
}

TEST_F(PointLinesTest, MeasuresAreStoredWhenPresent) {
  const Point& point = ReadPoint("P\tp\t,1,2,3\nP\tp\t,,-5\nP\tp\t,0\n");
  EXPECT_EQ(point.sm[0], 0);
  EXPECT_EQ(point.sm[1], -5);
  EXPECT_EQ(point.sm[2], 3);
  EXPECT_FALSE(point.note.has_value());
}

TEST_F(PointLinesTest, MarkIsALetterAndASize) {
  struct Case {
    const char* text;
    int shape;
    bool filled;
    int size;
  };
  for (const Case& c :
       {Case{"c3", PointMarkCircle, false, 3}, Case{"C12", PointMarkCircle, true, 12},
        Case{"s4", PointMarkSquare, false, 4}, Case{"S5", PointMarkSquare, true, 5},
        Case{"C", PointMarkCircle, true, 0}, Case{"x5", PointMarkNone, false, 0}}) {
    const Point& point = ReadPoint(std::string("P\tp\t,,,,") + c.text);
    EXPECT_EQ(point.markShape, c.shape) << c.text;
    EXPECT_EQ((point.flags & PointMarkFilled) != 0, c.filled) << c.text;
    EXPECT_EQ(point.markSize, c.size) << c.text;
    EXPECT_FALSE(point.note.has_value()) << c.text;
  }
}

TEST_F(PointLinesTest, SmallLetterClearsTheFillAndAnotherLetterIsIgnored) {
  const Point& cleared = ReadPoint("P\tp\t,,,,C3\nP\tp\t,,,,s2\n");
  EXPECT_EQ(cleared.flags & PointMarkFilled, 0U);
  EXPECT_EQ(cleared.markShape, PointMarkSquare);
  const Point& kept = ReadPoint("P\tp\t,,,,C3\nP\tp\t,,,,x9\n");
  EXPECT_NE(kept.flags & PointMarkFilled, 0U);
  EXPECT_EQ(kept.markSize, 3);
}

TEST_F(PointLinesTest, NoteIsTheRestWithItsTab) {
  EXPECT_EQ(ReadPoint("P\tp\t\tby the fire\tand so on").note, "\tby the fire\tand so on");
  EXPECT_EQ(ReadPoint("P\tp\t5\tby the fire").note, "\tby the fire");
  EXPECT_EQ(ReadPoint("P\tp\t5").note, std::nullopt);
  EXPECT_EQ(ReadPoint("P\tp\t").note, std::nullopt);
  EXPECT_EQ(ReadPoint("P\tp").note, std::nullopt);
  EXPECT_EQ(ReadPoint("P\tp\t5 words").note, " words");
  EXPECT_EQ(ReadPoint("P\tp\t,,,,c3 words").note, " words");
  EXPECT_EQ(ReadPoint("P\tp\t,1,2,3,c3,more\tnote").note, ",more\tnote");
}

TEST_F(PointLinesTest, FurtherNotesAreAppendedAfterABlank) {
  EXPECT_EQ(ReadPoint("P\tp\t\tone\nP\tp\t\ttwo\nP\tp\nP\tp\t\tthree").note, "\tone \ttwo \tthree");
}

// --- C ------------------------------------------------------------------------------------------------

TEST_F(PointLinesTest, CompassReadingIsStored) {
  const Measurement& reading = ReadReading("C\tp\tb\t25.5\t92.25\t-4.5\t1702.2\t3\n");
  EXPECT_EQ(reading.flags, static_cast<unsigned>(MeasureCompass));
  EXPECT_EQ(reading.base->name, "b");
  EXPECT_EQ(reading.distance, 25.5);
  EXPECT_EQ(reading.bearing, 92.25);
  EXPECT_EQ(reading.inclination, -4.5);
  EXPECT_EQ(reading.altitude, 1702);
  EXPECT_EQ(reading.count, 3);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(PointLinesTest, CompassReadingMayLeaveOutAllButItsBase) {
  for (const char* line : {"C\tp\tb", "C\tp\tb\t", "C\tp\tb\t\t\t\t\t"}) {
    const Measurement& reading = ReadReading(line);
    EXPECT_EQ(reading.distance, 0);
    EXPECT_EQ(reading.bearing, 0);
    EXPECT_EQ(reading.inclination, 0);
    EXPECT_EQ(reading.altitude, NoAltitude);
    EXPECT_EQ(reading.count, 1);
    EXPECT_EQ(Said(), Texts{}) << line;
  }
}

TEST_F(PointLinesTest, CompassBaseMustBeNamed) {
  const Point& point = ReadPoint("L\tp\t1\t2\nC\tp\t\t10\t20\n");
  EXPECT_EQ(Said(), Texts{"No base point in compass specification for p (\t10\t20)"});
  EXPECT_TRUE(point.measurements.empty());
  EXPECT_NE(point.flags & PointPlaced, 0U);
  messages.Clear();
  Read("C\t\t\n");
  EXPECT_EQ(Said(), Texts{"No base point in compass specification for <noname> ()"});
  messages.Clear();
  Read("C\tp\n");
  EXPECT_EQ(Said(), Texts{"No base point in compass specification for p ()"});
  EXPECT_TRUE(ReadPoint("C\tp\t=\t5\n").measurements.empty());
  EXPECT_EQ(Said(), Texts{"Bad pointname ="});
}

TEST_F(PointLinesTest, DistanceHasOnlyTheSuffixOfMetres) {
  for (const char* text : {"20", "20m", "20M"}) {
    EXPECT_EQ(ReadReading(std::string("C\tp\tb\t") + text + "\t90").distance, 20) << text;
    EXPECT_EQ(Said(), Texts{}) << text;
  }
  for (const char* text : {"5cm", "5km", "5mm", "5 m", "5,5"}) {
    const Measurement& reading = ReadReading(std::string("C\tp\tb\t") + text + "\t90\t3");
    EXPECT_EQ(reading.distance, 5) << text;
    EXPECT_EQ(reading.bearing, 90) << text;
    EXPECT_EQ(reading.inclination, 3) << text;
    EXPECT_EQ(Said(), Texts{"Bad distance for point p"}) << text;
  }
  EXPECT_EQ(ReadReading("C\tp\tb\tfar").distance, 0);
  EXPECT_EQ(Said(), Texts{"Bad distance for point p"});
}

TEST_F(PointLinesTest, BearingMayBeAbsolute) {
  for (const char* text : {"a181.25", "A181.25"}) {
    const Measurement& reading = ReadReading(std::string("C\tp\tb\t5\t") + text);
    EXPECT_EQ(reading.bearing, 181.25);
    EXPECT_EQ(reading.flags, static_cast<unsigned>(MeasureCompass | MeasureAbsoluteBearing));
  }
  EXPECT_EQ(ReadReading("C\tp\tb\t5\tnorth\t3\t7").inclination, 3);
  EXPECT_EQ(Said(), Texts{"Bad bearing for point p"});
  EXPECT_EQ(ReadReading("C\tp\tb\t5\t90 E\t3\t7").altitude, 7);
  EXPECT_EQ(Said(), Texts{"Bad bearing for point p"});
}

TEST_F(PointLinesTest, InclinationOutOfRangeGivesAMessageAndIsKept) {
  for (const char* text : {"90", "-90", "0"}) {
    ReadReading(std::string("C\tp\tb\t5\t6\t") + text);
    EXPECT_EQ(Said(), Texts{}) << text;
  }
  EXPECT_EQ(ReadReading("C\tp\tb\t5\t6\t95.5\t7").inclination, 95.5);
  EXPECT_EQ(Said(), Texts{"Bad angle 95.5 for point p"});
  EXPECT_EQ(ReadReading("C\tp\tb\t5\t6\t-1234567").inclination, -1234567);
  EXPECT_EQ(Said(), Texts{"Bad angle -1.23457e+06 for point p"});
  EXPECT_EQ(ReadReading("C\tp\tb\t5\t6\tup\t7").altitude, 7);
  EXPECT_EQ(Said(), Texts{"Bad inclination angle for point p"});
  Read("C\t\tb\t5\t6\t91\n");
  EXPECT_EQ(Said().back(), "Bad angle 91 for point <noname>");
}

TEST_F(PointLinesTest, PointMayRepeatItsBase) {
  const Point& point = ReadPoint("C\tp\tp\t10\t20\n");
  EXPECT_EQ(point.measurements.front().base, &point);
}

// --- G ------------------------------------------------------------------------------------------------

TEST_F(PointLinesTest, FixIsStored) {
  const Measurement& reading = ReadReading("G\tp\tS1 30'\tE36 15'\t812.6\t4\n");
  EXPECT_EQ(reading.flags, static_cast<unsigned>(MeasureGps));
  EXPECT_EQ(reading.position.lat, -1.5);
  EXPECT_EQ(reading.position.lon, 36.25);
  EXPECT_EQ(reading.position.altitude, NoAltitude);
  EXPECT_EQ(reading.altitude, 813);
  EXPECT_EQ(reading.count, 4);
}

TEST_F(PointLinesTest, FixLeavesOutWhatItSharesWithTheOneBefore) {
  const Map& map = Read("G\ta\tS1 30'\tE36 15'\nG\tb\t45'\t30'\n");
  const Measurement& reading = *Readings(Named(map, "b"))[0];
  EXPECT_EQ(reading.position.lat, -1.75);
  EXPECT_EQ(reading.position.lon, 36.5);
  // Over files too.
  EXPECT_EQ(Readings(Named(Read("G\tc\t15'\t45'\n"), "c"))[0]->position.lat, -1.25);
}

TEST_F(PointLinesTest, JunkInAFixGivesAMessageAndTheFieldIsSkipped) {
  const Measurement& reading = ReadReading("G\tp\tN1x\tE2y\t50\t6\n");
  EXPECT_EQ(Said(), (Texts{"Bad lat/lon spec: N1x", "Bad lat/lon spec: E2y"}));
  EXPECT_EQ(reading.position.lat, 1);
  EXPECT_EQ(reading.position.lon, 2);
  EXPECT_EQ(reading.altitude, 50);
  EXPECT_EQ(reading.count, 6);
}

// --- N, P, L --------------------------------------------------------------------------------------------

TEST_F(PointLinesTest, NearReadingKeepsItsText) {
  const Measurement& reading = ReadReading("N\tp\t20m north of Camp\t5,1\tby the fire\n");
  EXPECT_EQ(reading.flags, static_cast<unsigned>(MeasureNear));
  EXPECT_EQ(reading.nearName, "20m north of Camp");
  EXPECT_EQ(reading.altitude, NoAltitude);
  EXPECT_EQ(reading.count, 1);
}

TEST_F(PointLinesTest, NearReadingNeedsAName) {
  const Point& point = ReadPoint("L\tp\t1\t2\nN\tp\t\t5\n");
  EXPECT_EQ(Said(), Texts{"No near name for p (\t5)"});
  EXPECT_TRUE(point.measurements.empty());
  EXPECT_EQ(point.flags & PointPlaced, 0U);
  messages.Clear();
  Read("N\t\n");
  EXPECT_EQ(Said(), Texts{"No near name for <noname> ()"});
}

TEST_F(PointLinesTest, SolvedPlaceIsTaken) {
  const Point& point = ReadPoint("L\tp\t45.5\t-59.25\t995.7\t5,1\tnot read\n");
  EXPECT_NE(point.flags & PointPlaced, 0U);
  EXPECT_EQ(point.geo.lat, 45.5);
  EXPECT_EQ(point.geo.lon, -59.25);
  EXPECT_EQ(point.geo.altitude, 995);
  const Meters projected = LatLonToMeters(45.5, -59.25);
  EXPECT_EQ(point.projected.north, projected.north);
  EXPECT_EQ(point.projected.east, projected.east);
  EXPECT_EQ(point.labelLimit, 0);
  EXPECT_FALSE(point.note.has_value());
  EXPECT_TRUE(point.measurements.empty());
}

TEST_F(PointLinesTest, SolvedPlaceWithoutAltitudeKeepsTheOldOne) {
  EXPECT_EQ(ReadPoint("L\tp\t1\t2\t50\nL\tp\t3\t4\n").geo.altitude, 50);
  EXPECT_EQ(ReadPoint("L\tp\t1\t2\t50\nL\tp\t3\t4\t\n").geo.altitude, 50);
  EXPECT_EQ(ReadPoint("L\tp\t1\t2\n").geo.altitude, NoAltitude);
}

TEST_F(PointLinesTest, SolvedPlaceThatIsNotWholeStoresNothing) {
  for (const char* line :
       {"L\tp\t1", "L\tp", "L\tp\t1x\t2", "L\tp\t1\t2junk\t3", "L\tp\t1\t2 \t3"}) {
    const Point& point = ReadPoint(line);
    EXPECT_EQ(point.flags & PointPlaced, 0U) << line;
    EXPECT_EQ(point.geo.lat, 0) << line;
    EXPECT_EQ(point.geo.altitude, NoAltitude) << line;
    EXPECT_EQ(Said(), Texts{}) << line;
  }
}

TEST_F(PointLinesTest, SolvedPlaceWithoutANameIsThatOfTheLastPoint) {
  const Map& map = Read("T\tt\nC\t0900\ta\t5\nL\t\t1\t2\t3\n");
  const Trail& trail = map.trails.front();
  EXPECT_EQ(trail.points.size(), 1U);
  EXPECT_EQ(trail.points[0]->geo.lat, 1);
  EXPECT_EQ(map.pointStore.size(), 2U);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(PointLinesTest, SolvedPlaceWithoutANameNeedsALastPoint) {
  const Map& map = Read("T\tt\nL\t\t1\t2\n");
  EXPECT_EQ(Said(), Texts{"Bad pointname "});
  EXPECT_TRUE(map.pointStore.empty());
}

TEST_F(PointLinesTest, LaterReadingTakesTheSolvedPlaceAway) {
  for (const char* line : {"A\tp\t5", "G\tp\t1\t2", "C\tp\tq\t1", "N\tp\tq"}) {
    EXPECT_EQ(ReadPoint(std::string("L\tp\t1\t2\n") + line).flags & PointPlaced, 0U) << line;
    EXPECT_NE(ReadPoint(std::string(line) + "\nL\tp\t1\t2\n").flags & PointPlaced, 0U) << line;
  }
  EXPECT_NE(ReadPoint("L\tp\t1\t2\nP\tp\t5\tnote\n").flags & PointPlaced, 0U);
}

TEST_F(PointLinesTest, ReadingsAreNewestFirst) {
  const auto readings = Readings(ReadPoint("A\tp\t1\nA\tp\t2\nG\tp\t1\t2\n"));
  ASSERT_EQ(readings.size(), 3U);
  EXPECT_EQ(readings[0]->flags, static_cast<unsigned>(MeasureGps));
  EXPECT_EQ(readings[1]->altitude, 2);
  EXPECT_EQ(readings[2]->altitude, 1);
}

// --- Numbers that are none --------------------------------------------------------------------------

TEST_F(PointLinesTest, InfiniteAndOverflowingNumbersAreNone) {
  EXPECT_EQ(ReadReading("C\tp\tb\t1e400\t5").distance, 0);
  EXPECT_EQ(Said(), Texts{"Bad distance for point p"});
  EXPECT_EQ(ReadReading("C\tp\tb\tnan\t5").distance, 0);
  EXPECT_EQ(ReadReading("C\tp\tb\t5\tinf\t3").bearing, 0);
  EXPECT_EQ(Said(), Texts{"Bad bearing for point p"});
  EXPECT_EQ(ReadPoint("L\tp\tinf\tnan\n").flags & PointPlaced, 0U);
}

// --- Points of another map -------------------------------------------------------------------------

struct BasisPointTest : MapFixture {
  /// Reads a map whose basis has the points `x` and "".
  Map& ReadAbove(const std::string& text) {
    Map& basis = Open("L\tx\t1\t2\t3\n", "basis.map");
    Map& map = MakeMap(workspace, "above.map");
    map.basis = &basis;
    ReadMapText(map, text);
    return map;
  }
};

TEST_F(BasisPointTest, FixOnAPointOfTheBasisGivesOneMessageAndIsStored) {
  Map& map = ReadAbove("G\tx\t5\t6\nG\tx\t7\t8\nA\tx\t9\nE\n");
  EXPECT_EQ(Said(), Texts{"A GPS location is given to a point (x) which is in a base map, it will "
                          "have no effect"});
  const Point& point = Named(map, "x");
  EXPECT_EQ(Readings(point).size(), 3U);
  EXPECT_NE(point.flags & PointPlaced, 0U);
  EXPECT_EQ(point.geo.lat, 1);
  EXPECT_EQ(point.map, map.basis);
  FinishMap(map);
  EXPECT_EQ(point.geo.lat, 1);
}

TEST_F(BasisPointTest, AltitudeOnAPointOfTheBasisGivesAMessage) {
  Map& map = ReadAbove("A\tx\t50\n");
  EXPECT_EQ(Said(),
            Texts{"An altitude is given to a point (x) which is in a base map, it will have "
                  "no effect"});
  FinishMap(map);
  EXPECT_EQ(Named(map, "x").geo.altitude, 3);
}

TEST_F(BasisPointTest, CompassAndNearReadingsOnItAreSilent) {
  const Map& map = ReadAbove("C\tx\ty\t5\t6\nN\tx\ty\nP\tx\n");
  EXPECT_EQ(Said(), Texts{});
  EXPECT_NE(Named(map, "x").flags & PointPlaced, 0U);
}

TEST_F(BasisPointTest, TrailMayUseItAndBecomesItsTrail) {
  const Map& map = ReadAbove("T\tt\nP\tx\n");
  EXPECT_EQ(NamesOf(map.trails.front()), Texts{"x"});
  EXPECT_EQ(Named(map, "x").trail, &map.trails.front());
}

}  // namespace
}  // namespace orvane
