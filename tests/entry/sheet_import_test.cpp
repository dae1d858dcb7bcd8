#include "entry/sheet_import.h"

#include "base/dates.h"
#include "base/times.h"
#include "geo/earth.h"
#include "mapfile/writer.h"
#include "places/resolve_location.h"
#include "sheet_case.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace orvane {
namespace {

using SheetImportTest = SheetCase;

// --- Trails ---------------------------------------------------------------------------------

TEST_F(SheetImportTest, RowsThatAgreeBecomeATrailAndRowsAtOnePlaceAStop) {
  Map& map = Open(Site);
  const SheetOutcome outcome = Import(map, Row("1000", "Main0") + Row("1020", "Main0") +
                                               Row("1040", "Main100") + Row("1100", "Main100"));
  EXPECT_TRUE(outcome.completed);
  EXPECT_EQ(Follows(map),
            (Texts{"Oru/Ulo/2003-5-31: 10:00-10:40@Main0+40 10:40-11:00@Main100+20"}));
  EXPECT_EQ(Said(), Texts{});
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(SheetImportTest, ATrailAndItsPointsHaveOnlyWhatTheSheetGives) {
  Map& map = Open(Site);
  Import(map, Row("0805", "Main0") + Row("0830", "oos"));
  const Trail& trail = map.trails.front();
  EXPECT_FALSE(trail.name);
  EXPECT_EQ(trail.groupSize, 1);
  EXPECT_EQ(trail.color, NoColor);
  ASSERT_EQ(trail.points.size(), 1U);
  const Point& point = *trail.points.front();
  EXPECT_EQ(point.name, "08:05-08:30");
  EXPECT_EQ(point.timeOfDay, 485);
  EXPECT_EQ(point.duration, 25);
  EXPECT_EQ(point.map, &map);
  EXPECT_EQ(point.trail, &trail);
  const Point& mark = MapFixture::Named(map, "Main0");
  EXPECT_EQ(point.geo.lat, mark.geo.lat);
  EXPECT_EQ(point.geo.lon, mark.geo.lon);
  EXPECT_EQ(point.geo.altitude, 100.0F);
  EXPECT_NE(point.flags & PointPlaced, 0U);
  ASSERT_EQ(MapFixture::Length(point.measurements), 1);
  EXPECT_EQ(point.measurements.front().flags, MeasureNear);
  EXPECT_EQ(point.measurements.front().nearName, "Main0");
  EXPECT_NE(map.flags & MapDirty, 0U);
}

TEST_F(SheetImportTest, ANewTrailComesFirstAndOldOnesAreNotTouched) {
  Map& map = Open(std::string(Site) + "T\t\tOru\tUlo\t2003-5-31\nN\t0900\tMain100\n");
  Import(map, Row("1000", "Main0"));
  EXPECT_EQ(Follows(map).size(), 2U);
  EXPECT_EQ(Follows(map).front(), "Oru/Ulo/2003-5-31: 10:00-10:00@Main0+0");
}

TEST_F(SheetImportTest, AChangeOfKeyEndsTheStopWhereItWasSeenLast) {
  EXPECT_EQ(
      FollowsOf(Row("1000", "Main0") + Row("1010", "Main0") + "Oru\tPim\t2003-5-31\t1030\tMain0\n" +
                "Oru\tPim\t2003-6-1\t1040\tMain0\n" + "Fen\tPim\t2003-6-1\t1050\tMain0\n"),
      (Texts{"Fen/Pim/2003-6-1: 10:50-10:50@Main0+0", "Oru/Pim/2003-6-1: 10:40-10:40@Main0+0",
             "Oru/Pim/2003-5-31: 10:30-10:30@Main0+0", "Oru/Ulo/2003-5-31: 10:00-10:10@Main0+10"}));
}

TEST_F(SheetImportTest, KeysCountWithRegardToCaseAndOnlyTheLastTrailIsContinued) {
  EXPECT_EQ(
      FollowsOf(Row("1000", "Main0") + "oru\tUlo\t2003-5-31\t1010\tMain0\n" +
                "oru\tulo\t2003-5-31\t1020\tMain0\n" + Row("1030", "Main0")),
      (Texts{"Oru/Ulo/2003-5-31: 10:30-10:30@Main0+0", "oru/ulo/2003-5-31: 10:20-10:20@Main0+0",
             "oru/Ulo/2003-5-31: 10:10-10:10@Main0+0", "Oru/Ulo/2003-5-31: 10:00-10:00@Main0+0"}));
}

TEST_F(SheetImportTest, ATrailWithoutAStopIsUsedAgain) {
  EXPECT_EQ(FollowsOf(Row("1000", "oos") + "Fen\tBel\t2003-6-1\t1010\tMain0\n"),
            (Texts{"Fen/Bel/2003-6-1: 10:10-10:10@Main0+0"}));
}

TEST_F(SheetImportTest, TheLastTrailMayStayWithoutAStop) {
  EXPECT_EQ(FollowsOf(Row("1000", "Main0") + "Fen\tBel\t2003-6-1\t1010\toos\n"),
            (Texts{"Fen/Bel/2003-6-1:", "Oru/Ulo/2003-5-31: 10:00-10:00@Main0+0"}));
}

TEST_F(SheetImportTest, RowsWithoutSpeciesOrDateArePassedOver) {
  EXPECT_EQ(FollowsOf(Row("1000", "Main0") + "\tUlo\t2003-5-31\t1010\tMain100\n" +
                      "Oru\tUlo\t\t1010\tMain100\n" + "\n" + Row("1020", "Main0")),
            (Texts{"Oru/Ulo/2003-5-31: 10:00-10:20@Main0+20"}));
}

TEST_F(SheetImportTest, AnEmptyFocalCellIsAnAnimalWithoutAName) {
  EXPECT_EQ(
      FollowsOf(Row("1000", "Main0") + "Oru\t\t2003-5-31\t1010\tMain0\n"),
      (Texts{"Oru//2003-5-31: 10:10-10:10@Main0+0", "Oru/Ulo/2003-5-31: 10:00-10:00@Main0+0"}));
}

TEST_F(SheetImportTest, WithFixedTextsAllRowsAreOneTrail) {
  Map& map = Open(Site);
  SheetFields fields;
  fields[SheetTime] = "A";
  fields[SheetLocation] = "B";
  fields[SheetSpeciesAlways] = "Oru";
  fields[SheetDateAlways] = "2003-5-31";
  Import(map, "1000\tMain0\n1010\tMain0\n1020\tMain100\n", fields);
  EXPECT_EQ(Follows(map),
            (Texts{"Oru/<none>/2003-5-31: 10:00-10:20@Main0+20 10:20-10:20@Main100+0"}));
  fields[SheetFocalAlways] = "Ulo";
  Import(map, "1000\tMain0\n", fields);
  EXPECT_EQ(Follows(map).front(), "Oru/Ulo/2003-5-31: 10:00-10:00@Main0+0");
}

TEST_F(SheetImportTest, SkipsLinesAsTheyAreRead) {
  Map& map = Open(Site);
  const SheetFields skipTwo = With(SheetSkip, "2");
  Import(map, "SPECIES\tFOCAL\tDATE\n\n" + Row("1000", "Main0"), skipTwo);
  EXPECT_EQ(Follows(map).size(), 1U);
  // A line that is cut counts as two.
  Import(map, std::string(500, 'x') + "\n" + Row("1000", "Main0"), skipTwo);
  EXPECT_EQ(Follows(map).size(), 2U);
  // More lines than there are leave nothing to do.
  EXPECT_TRUE(Import(map, Row("1000", "Main0"), With(SheetSkip, "30")).completed);
  EXPECT_EQ(Follows(map).size(), 2U);
}

// --- Dates ----------------------------------------------------------------------------------

TEST_F(SheetImportTest, DatesAreReadInTheUsersOrder) {
  Map& map = Open(Site);
  Import(map, "Oru\tUlo\t5/6/2003\t1000\tMain0\n");
  EXPECT_EQ(Follows(map).front(), "Oru/Ulo/2003-5-6: 10:00-10:00@Main0+0");
  workspace.preferences.europeanDates = true;
  Import(map, "Oru\tUlo\t5/6/2003\t1000\tMain0\n");
  EXPECT_EQ(Follows(map).front(), "Oru/Ulo/2003-6-5: 10:00-10:00@Main0+0");
}

struct DateSeries : SheetCase {
  std::string DateOf(const std::string& month, const std::string& day, const std::string& year) {
    Map& map = Open(Site);
    SheetFields fields = Columns();
    fields[SheetDate] = "C/F/G";
    fields[SheetActivity] = "";
    const std::string row = "Oru\tUlo\t" + month + "\t1000\tMain0\t" + day + "\t" + year + "\n";
    Import(map, row, fields);
    const Texts follows = Follows(map);
    return follows.empty() ? "" : follows.front().substr(8, follows.front().find(':') - 8);
  }
};

TEST_F(DateSeries, IsPutTogetherFromThreeCells) {
  EXPECT_EQ(DateOf("5", "31", "2003"), "2003-5-31");
  EXPECT_EQ(DateOf("\"05\"", "31 ", "2003"), "2003-5-31");
  EXPECT_EQ(DateOf("5th", "31.", "2003 or so"), "2003-5-31");  // what begins a cell counts
}

TEST_F(DateSeries, GivesAShortYearItsCentury) {
  EXPECT_EQ(DateOf("5", "31", "81"), "1981-5-31");
  EXPECT_EQ(DateOf("5", "31", "99"), "1999-5-31");
  EXPECT_EQ(DateOf("5", "31", "80"), "2080-5-31");
  EXPECT_EQ(DateOf("5", "31", "3"), "2003-5-31");
  EXPECT_EQ(DateOf("5", "31", "-5"), "1995-5-31");
  EXPECT_EQ(DateOf("5", "31", "1881"), "1881-5-31");
}

TEST_F(DateSeries, ReadsBlankCellsAsZero) {
  // Month 0 and day 0 of the year 2000: the last day of November 1999, less one.
  EXPECT_EQ(DateOf("", "", ""), FormatDate(PackDate(2000, 0, 0)));
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(DateSeries, WithANegativeMonthIsABadDate) {
  EXPECT_EQ(DateOf("-5", "31", "2003"), "");
  EXPECT_EQ(Said(), (Texts{"error: Bad date 2003/-5/31"}));
}

TEST_F(SheetImportTest, ADateFieldThatNamesNoColumnReadsTheFirst) {
  Map& map = Open(Site);
  SheetFields fields;
  fields[SheetTime] = "B";
  fields[SheetLocation] = "C";
  fields[SheetSpeciesAlways] = "Oru";
  fields[SheetFocal] = "D";
  fields[SheetDate] = "none";
  fields[SheetDateAlways] = "2003-5-31";
  Import(map, "2001-2-3\t1000\tMain0\tUlo\n", fields);
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2001-2-3: 10:00-10:00@Main0+0"}));
}

// --- Stops ----------------------------------------------------------------------------------

TEST_F(SheetImportTest, AStopLastsUntilTheFirstRowElsewhere) {
  Map& map = Open(Site);
  Import(map, Row("1000", "Main0") + Row("1020", "Main0") + Row("1040", "Main100"));
  const Point& point = *map.trails.front().points.front();
  EXPECT_EQ(point.name, "10:00-10:40");
  EXPECT_EQ(point.duration, 40);
}

TEST_F(SheetImportTest, PlacesAreComparedWithoutRegardToCase) {
  Map& map = Open(Site);
  Import(map, Row("1000", "Main0") + Row("1010", "MAIN0") + Row("1020", "Main200") +
                  Row("1030", "Camp"));
  // But by their texts: a point under another of its names is another place.
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:20@Main0+20 10:20-10:30@Main200+10 "
                                 "10:30-10:30@Camp+0"}));
}

TEST_F(SheetImportTest, ARowWithoutAPlaceStaysWhereTheAnimalWas) {
  Map& map = Open(Site);
  Import(map, Row("0950", "") + Row("1000", "Main0") + Row("1020", "") + Row("1040", "Main100"));
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:40@Main0+40 10:40-10:40@Main100+0"}));
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(SheetImportTest, AnyLocationTextWillDo) {
  EXPECT_EQ(FollowsOf(Row("1000", "20m n of Main50") + Row("1010", "Main0, Main100") +
                      Row("1020", "N1 0' E10 0.1'")),
            (Texts{"Oru/Ulo/2003-5-31: 10:00-10:10@20m n of Main50+10 "
                   "10:10-10:20@Main0, Main100+10 10:20-10:20@N1 0' E10 0.1'+0"}));
}

struct MovingPlane : SheetCase {
  /// A place that is looked up before and after another one, which moves the plane, is found at two
  /// spots. An import that is abandoned before the map is solved has the stops there.
  void ExpectPlacesFollowThePlane(std::string_view site, const std::string& place) {
    constexpr auto Between = "Main150";
    Map& asked = Open(site);
    const auto first = ResolveLocation(asked, place);
    const auto between = ResolveLocation(asked, Between);
    const auto again = ResolveLocation(asked, place);
    ASSERT_TRUE(first && between && again);
    ASSERT_NE(first->place.lat, again->place.lat);
    Map& map = Open(site);
    const SheetOutcome outcome =
        Import(map, Row("1000", place) + Row("1010", Between) + Row("1020", place) +
                        Row("1030", "Main0") + "Oru\tUlo\tx\t1100\tMain0\n");
    ASSERT_FALSE(outcome.completed);
    const std::vector<Point*>& stops = map.trails.front().points;
    ASSERT_EQ(stops.size(), 3U);
    const std::optional<Location> found[] = {first, between, again};
    for (size_t i = 0; i < stops.size(); ++i) {
      EXPECT_EQ(stops[i]->geo.lat, found[i]->place.lat) << i;
      EXPECT_EQ(stops[i]->geo.lon, found[i]->place.lon) << i;
    }
  }
};

TEST_F(MovingPlane, APlaceBesideAMarkIsFoundInThePlaneOfThatMoment) {
  constexpr std::string_view BentSite =
      "T\tMain\tTrail\nG\tMain0\tN20 0'\tE100 0'\nG\tMain100\tN20 0.5'\tE100 0.5'\n"
      "G\tMain200\tN20 1'\tE100 0.2'\n";
  ExpectPlacesFollowThePlane(BentSite, "20m left of Main100");
}

TEST_F(MovingPlane, APlaceBetweenTwoTrailsIsFoundInThePlaneOfThatMoment) {
  constexpr std::string_view PartedSite =
      "T\tMain\tTrail\nG\tMain0\tN20 0'\tE100 0'\nG\tMain100\tN20 0.5'\tE100 0.5'\n"
      "G\tMain200\tN20 1'\tE100 0.2'\nG\tBend\tN20 1.5'\tE100 0.9'\n"
      "T\tMain'\tTrail\nG\tMain300\tN20 2'\tE100 0.4'\nG\tMain400\tN20 2.5'\tE100 0.9'\n";
  ExpectPlacesFollowThePlane(PartedSite, "Main250");
}

TEST_F(SheetImportTest, OosAsThePlaceEndsTheStopAtItsTime) {
  EXPECT_EQ(FollowsOf(Row("1000", "Main0") + Row("1015", "OOS") + Row("1030", "Main0") +
                      Row("1045", "oos") + Row("1100", "oos")),
            (Texts{"Oru/Ulo/2003-5-31: 10:00-10:15@Main0+15 10:30-10:45@Main0+15"}));
}

TEST_F(SheetImportTest, OosAsTheActivityEndsTheStopToo) {
  EXPECT_EQ(FollowsOf(Row("1000", "Main0", "feed") + Row("1015", "Main0", "Oos") +
                      Row("1030", "Main100", "feed")),
            (Texts{"Oru/Ulo/2003-5-31: 10:00-10:15@Main0+15 10:30-10:30@Main100+0"}));
}

TEST_F(SheetImportTest, WithoutAnActivityColumnTheFirstColumnIsTestedForOos) {
  Map& map = Open(Site);
  SheetFields fields = Columns();
  fields[SheetActivity] = "";
  fields[SheetSpecies] = "";
  fields[SheetSpeciesAlways] = "Oru";
  Import(map, "\tUlo\t2003-5-31\t1000\tMain0\noos\tUlo\t2003-5-31\t1015\tMain0\n", fields);
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:15@Main0+15"}));
}

TEST_F(SheetImportTest, WithMeasuresAStopIsCutAtEachHour) {
  const std::string sheet =
      Row("1050", "Main0") + Row("1105", "Main0") + Row("1110", "") + Row("1210", "");
  Map& measured = Open(MeasuredSite);
  Import(measured, sheet);
  EXPECT_EQ(Follows(measured), (Texts{"Oru/Ulo/2003-5-31: 10:50-11:05@Main0+15 "
                                      "11:05-12:10@Main0+65 12:10-12:10@Main0+0"}));
  Map& plain = Open(Site);
  Import(plain, sheet);
  EXPECT_EQ(Follows(plain), (Texts{"Oru/Ulo/2003-5-31: 10:50-12:10@Main0+80"}));
}

TEST_F(SheetImportTest, AtTheEndTheLastRowSetsTheEndOfTheStop) {
  Map& map = Open(Site);
  Import(map, Row("1000", "Main0") + Row("1030", "nowhere"));
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:30@Main0+30"}));
  // Also if it has no time, which counts as midnight.
  Import(map, Row("1000", "Main0") + Row("", "Main0"));
  EXPECT_EQ(Follows(map).front(), "Oru/Ulo/2003-5-31: 10:00-00:00@Main0+-600");
  // A skipped row has no effect.
  Import(map, Row("1000", "Main0") + "\tUlo\t2003-5-31\t1300\tMain0\n");
  EXPECT_EQ(Follows(map).front(), "Oru/Ulo/2003-5-31: 10:00-10:00@Main0+0");
}

TEST_F(SheetImportTest, PmMovesATimeOnlyAfterAPlainNumber) {
  Map& map = Open(Site);
  Import(map, Row("2:30 pm", "Main0") + Row("3:00PM", "Main100"));
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 02:30-03:00@Main0+30 03:00-03:00@Main100+0"}));
  EXPECT_EQ(Asked(), Texts{});
  Import(map, Row("230pm", "Main0"));  // which is not a valid time
  EXPECT_EQ(Asked().size(), 1U);
}

// --- Measures -------------------------------------------------------------------------------

struct MeasuredSheet : SheetCase {
  Map& map = Open(MeasuredSite);

  static SheetFields WithMeasures() {
    SheetFields fields = Columns();
    fields[SheetSm1] = "G";
    fields[SheetSm2] = "H";
    fields[SheetSm2Code] = "feed";
    fields[SheetSm3Code] = "rest";
    return fields;
  }
};

TEST_F(MeasuredSheet, CountsAreSummedOverTheRowsOfAStop) {
  Import(map,
         Row("1000", "Main0", "move\t2\t1") + Row("1010", "Main0", "move\t3\t1") +
             Row("1020", "", "move\tx\t1") + Row("1030", "Main100", "move\t4\t1"),
         WithMeasures());
  EXPECT_EQ(Counts(map), (Texts{"5,3,0", "4,1,0"}));
}

TEST_F(MeasuredSheet, AnActivityCountsBesideAColumn) {
  Import(map,
         Row("1000", "Main0", "feed") + Row("1010", "Main0", "FEED\t\t2") +
             Row("1020", "Main0", "Rest") + Row("1030", "Main0", "restless"),
         WithMeasures());
  EXPECT_EQ(Counts(map), (Texts{"0,4,1"}));
}

TEST_F(MeasuredSheet, RowsThatAreNotTakenCountForTheStopUnderWay) {
  Import(map,
         Row("1000", "Main0", "move\t1") + Row("1010", "nowhere", "move\t10") +
             Row("soon", "Main100", "move\t100") + Row("", "Main100", "move\t1000") +
             Row("1030", "Main100", "move\t1"),
         WithMeasures());
  EXPECT_EQ(Counts(map), (Texts{"1111,0,0", "1,0,0"}));
}

TEST_F(MeasuredSheet, WithoutAStopUnderWayNothingIsCounted) {
  Import(map,
         Row("0950", "nowhere", "move\t10") + Row("1000", "Main0", "move\t1") +
             Row("1010", "oos", "move\t100") + Row("1020", "nowhere", "move\t1000") +
             Row("1030", "Main100", "move\t2"),
         WithMeasures());
  EXPECT_EQ(Counts(map), (Texts{"1,0,0", "2,0,0"}));
}

TEST_F(MeasuredSheet, AChangeOfKeyRestartsTheCount) {
  Import(map, Row("1000", "Main0", "move\t3") + "Fen\tBel\t2003-5-31\t1010\tMain0\tmove\t4\n",
         WithMeasures());
  EXPECT_EQ(Counts(map), (Texts{"4,0,0"}));
}

TEST_F(MeasuredSheet, ACountInEveryScanMakesTheStopFiveMinutesLonger) {
  Import(map,
         Row("1000", "Main0", "move\t1") + Row("1005", "Main0", "move\t1") +
             Row("1010", "Main0", "move\t1") + Row("1015", "Main0", "move\t1") +
             Row("1020", "Main0", "move\t1"),
         WithMeasures());
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:25@Main0+25"}));
}

TEST_F(MeasuredSheet, AFieldThatNamesNoColumnCountsTheFirst) {
  SheetFields fields = WithMeasures();
  fields[SheetSm1] = "G+H";
  fields[SheetSpecies] = "B";
  fields[SheetFocal] = "";
  Import(map, "7\tUlo\t2003-5-31\t1000\tMain0\tmove\t1\t1\n", fields);
  EXPECT_EQ(Counts(map), (Texts{"7,1,0"}));
}

TEST_F(MeasuredSheet, CountsAreCutTo16Bits) {
  Import(map, Row("1000", "Main0", "move\t65537\t32768") + Row("1040", "oos"), WithMeasures());
  EXPECT_EQ(Counts(map), (Texts{"1,-32768,0"}));
}

TEST_F(SheetImportTest, AddStopPointLengthensByTheScansThatTheStopLasts) {
  Map& map = Open(Site);
  Trail& trail = map.trails.emplace_front();
  const LatLon place{1, 10, 50};
  EXPECT_EQ(AddStopPoint(map, trail, place, 600, 620, "Camp", {5, 0, 0}).name, "10:00-10:25");
  EXPECT_EQ(AddStopPoint(map, trail, place, 600, 624, "Camp", {0, 0, 5}).name, "10:00-10:29");
  EXPECT_EQ(AddStopPoint(map, trail, place, 600, 620, "Camp", {4, 6, 0}).name, "10:00-10:20");
  EXPECT_EQ(AddStopPoint(map, trail, place, 600, 600, "Camp", {0, 1, 0}).name, "10:00-10:05");
  // Seven minutes backwards are 0 scans, which a count of 0 equals.
  EXPECT_EQ(AddStopPoint(map, trail, place, 600, 593, "Camp", {0, 0, 0}).name, "10:00-09:58");
  const Point& last = AddStopPoint(map, trail, place, 600, 2147483647, "Camp", {429496610, 0, 0});
  EXPECT_EQ(last.duration, static_cast<std::int16_t>(2147483647 - 600));
  EXPECT_EQ(trail.points.size(), 6U);
  EXPECT_EQ(trail.points.back(), &last);
  const Meters projected = LatLonToMeters(1, 10);
  EXPECT_EQ(last.projected.north, projected.north);
  EXPECT_EQ(last.projected.east, projected.east);
  EXPECT_EQ(last.projected.altitude, 50.0F);
}

// --- Messages and questions -----------------------------------------------------------------

TEST_F(SheetImportTest, TimeThatRunsBackwardsIsReportedOnce) {
  Map& map = Open(Site);
  const SheetOutcome outcome = Import(map, Row("1000", "Main0") + Row("0930", "Main0") +
                                               Row("0900", "Main100") + Row("0800", "Main0"));
  EXPECT_TRUE(outcome.completed);
  EXPECT_EQ(Said(), (Texts{"warning: Time runs backwards for Oru (Ulo) at 0930 on 2003-5-31"}));
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-09:00@Main0+-60 "
                                 "09:00-08:00@Main100+-60 08:00-08:00@Main0+0"}));
  Import(map, Row("1000", "Main0") + Row("0930", "Main0"));  // and again in the next import
  EXPECT_EQ(Said().size(), 2U);
}

TEST_F(SheetImportTest, MessagesComeFromTheLineOfTheirRow) {
  Map& map = Open(Site);
  messages.origins.clear();
  Import(map, "Title\nNames\n\n" + Row("1000", "Main0") + Row("0930", "Main0"),
         With(SheetSkip, "2"));
  ASSERT_EQ(messages.origins.size(), 1U);
  EXPECT_EQ(messages.origins[0].file, "follows.txt");
  EXPECT_EQ(messages.origins[0].line, 5U);
}

TEST_F(SheetImportTest, ARowWithoutATimeCountsAsMidnightInThatWarning) {
  Map& map = Open(Site);
  Import(map, Row("1000", "Main0") + Row("", "Main0") + Row("1010", "Main0"), With(SheetFocal, ""));
  EXPECT_EQ(Said(), (Texts{"warning: Time runs backwards for Oru () at  on 2003-5-31"}));
}

TEST_F(SheetImportTest, ANewFollowMayBeginEarlierInTheDay) {
  Map& map = Open(Site);
  Import(map, Row("1000", "Main0") + "Oru\tPim\t2003-5-31\t0900\tMain0\n" +
                  "Oru\tPim\t2003-5-31\t0930\toos\n" + "Oru\tPim\t2003-5-31\t0800\tMain0\n");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(SheetImportTest, TheDateOfTheFirstDayIsReportedThough0MeansNone) {
  Map& map = Open(Site);
  Import(map, "Oru\tUlo\t1900-1-1\t1000\tMain0\nOru\tUlo\t1900-1-1\t900\tcloudy\n");
  EXPECT_EQ(Said(), (Texts{"warning: Time runs backwards for Oru (Ulo) at 900 on 1900-1-1"}));
  EXPECT_EQ(files["badweather.txt"], "1-1-1900 900: cloudy\n");
}

TEST_F(SheetImportTest, ABadDateEndsTheImport) {
  Map& map = Open(Site);
  const SheetOutcome outcome =
      Import(map, Row("1000", "Main0") + Row("1030", "Main100") +
                      "Oru\tUlo\t2003-5-31 (Sat)\t1040\tMain0\n" + Row("1050", "Main0"));
  EXPECT_FALSE(outcome.completed);
  EXPECT_EQ(Said(), (Texts{"error: Bad date 2003-5-31 (Sat)"}));
  // What was built stays, without the stop that was under way.
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:30@Main0+30"}));
  EXPECT_TRUE(files.empty());
}

TEST_F(SheetImportTest, EachBadTimeIsAskedAbout) {
  Map& map = Open(Site);
  const std::string sheet = Row("1000", "Main0") + Row("1075", "Main100") + Row("noon", "nowhere") +
                            Row("1230", "Main100");
  EXPECT_TRUE(Import(map, sheet).completed);
  EXPECT_EQ(Asked(),
            (Texts{"Bad Time: Bad time specification 1075, Do you want to continue? [Yes|No]",
                   "Bad Time: Bad time specification noon, Do you want to continue? [Yes|No]"}));
  EXPECT_EQ(Follows(map),
            (Texts{"Oru/Ulo/2003-5-31: 10:00-12:30@Main0+150 12:30-12:30@Main100+0"}));
  EXPECT_EQ(files["unknownlocs.txt"], "");  // a bad time hides a bad place
}

TEST_F(SheetImportTest, NoToABadTimeEndsTheImport) {
  Map& map = Open(Site);
  messages.answers = {1, 2};
  const std::string sheet = Row("1000", "Main0") + Row("1075", "Main0") + Row("1040", "Main100") +
                            Row("noon", "Main0") + Row("1230", "Main100");
  EXPECT_FALSE(Import(map, sheet).completed);
  EXPECT_EQ(Asked().size(), 2U);
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:40@Main0+40"}));
  EXPECT_TRUE(files.empty());
}

TEST_F(SheetImportTest, OnlyTheFirstBadLocationIsAskedAbout) {
  Map& map = Open(Site);
  EXPECT_TRUE(Import(map, Row("1000", "near the river") + Row("1010", "Main0") +
                              Row("1020", "nowhere") + Row("1030", "Nowhere"))
                  .completed);
  EXPECT_EQ(Asked(), (Texts{"Bad Location: Bad location specification near the river, Do you want "
                            "to continue? [Yes|No]"}));
  EXPECT_EQ(files["unknownlocs.txt"], "near the river\nnowhere\n");
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:10-10:30@Main0+20"}));
}

TEST_F(SheetImportTest, NoToABadLocationEndsTheImportAndNotesNothing) {
  Map& map = Open(Site);
  messages.answers = {2};
  EXPECT_FALSE(Import(map, Row("1000", "Main0") + Row("1010", "nowhere")).completed);
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31:"}));
  EXPECT_TRUE(logs.unknownLocations.empty());
  EXPECT_TRUE(files.empty());
}

TEST_F(SheetImportTest, ARowWithoutATimeIsPassedOverWithoutAQuestion) {
  Map& map = Open(Site);
  Import(map, Row("", "nowhere") + Row("", "Main0") + Row("1000", "Main100"));
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:00@Main100+0"}));
  EXPECT_EQ(files["unknownlocs.txt"], "");
}

TEST_F(SheetImportTest, ALongTextIsCutInAMessageButNotInAQuestion) {
  Map& map = Open(Site);
  const std::string place(250, 'x');
  Import(map, Row("1000", place));
  EXPECT_EQ(Asked(), (Texts{"Bad Location: Bad location specification " + place +
                            ", Do you want to continue? [Yes|No]"}));
  Import(map, "Oru\tUlo\t" + place + "\n");
  EXPECT_EQ(Said(), (Texts{"error: " + ("Bad date " + place).substr(0, 199)}));
}

// --- The logs -------------------------------------------------------------------------------

TEST_F(SheetImportTest, ASheetOfHeadersLeavesAnEmptyLogAndNoTrail) {
  Map& map = Open(Site);
  EXPECT_TRUE(Import(map, "SPECIES\tFOCAL\tDATE\tTIME\tPLACE\n", With(SheetSkip, "1")).completed);
  EXPECT_EQ(Follows(map), Texts{});
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files["unknownlocs.txt"], "");
  EXPECT_EQ(map.flags & MapDirty, 0U);
}

TEST_F(SheetImportTest, NotesOnTheWeatherGoToAFileOfTheirOwn) {
  Map& map = Open(Site);
  Import(map, Row("600", "SUNNY") + Row("700", "some rain") + Row("8:00", "Rainbow Ridge") +
                  Row("900", "same as yesterday") + Row("1000", "fig by the creek"));
  EXPECT_EQ(files["badweather.txt"],
            "31-5-2003 600: SUNNY\n31-5-2003 700: some rain\n31-5-2003 8:00: Rainbow Ridge\n"
            "31-5-2003 900: same as yesterday\n");
  EXPECT_EQ(files["unknownlocs.txt"], "fig by the creek\n");
}

TEST_F(SheetImportTest, AnAbandonedImportLeavesItsLogsToTheNext) {
  Map& map = Open(Site);
  EXPECT_FALSE(Import(map, Row("700", "drizzle, cool") + Row("800", "fig tree") +
                               "Oru\tUlo\tlater\t900\tMain0\n")
                   .completed);
  // The notes on the weather are in their file at once, the unknown places are not.
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files["badweather.txt"], "31-5-2003 700: drizzle, cool\n");
  EXPECT_TRUE(Import(map, Row("900", "DRY") + Row("910", "creek")).completed);
  EXPECT_EQ(files["badweather.txt"], "31-5-2003 700: drizzle, cool\n31-5-2003 900: DRY\n");
  EXPECT_EQ(files["unknownlocs.txt"], "creek\nfig tree\n");
  EXPECT_TRUE(Import(map, Row("700", "clear") + Row("800", "hill")).completed);
  EXPECT_EQ(files["badweather.txt"], "31-5-2003 700: clear\n");
  EXPECT_EQ(files["unknownlocs.txt"], "hill\n");
}

TEST_F(SheetImportTest, AnUnwritableFolderIsReportedAndLosesNothingOfTheImport) {
  Map& map = Open(Site);
  folderIsClosed = true;
  const SheetOutcome outcome =
      Import(map, Row("700", "dry") + Row("800", "fig") + Row("900", "Main0"));
  EXPECT_TRUE(outcome.completed);
  EXPECT_EQ(outcome.unwritten, (Texts{"badweather.txt", "unknownlocs.txt"}));
  EXPECT_EQ(Follows(map).size(), 1U);
  EXPECT_TRUE(logs.unknownLocations.empty());
  EXPECT_FALSE(logs.weather);
}

TEST(NoteBadLocation, KeepsUnknownPlacesSortedAndOnce) {
  SheetLogs logs;
  for (const char* text : {"river", "Fig", "creek", "RIVER", "fig", "_fig", ""}) {
    NoteBadLocation(logs, text, 0, "800");
  }
  const std::vector<std::string> kept(logs.unknownLocations.begin(), logs.unknownLocations.end());
  EXPECT_EQ(kept, (std::vector<std::string>{"", "_fig", "creek", "Fig", "river"}));
  EXPECT_FALSE(logs.weather);
}

TEST(NoteBadLocation, KnowsEachWordOfTheWeather) {
  for (const char* text :
       {"sun", "Train", "CLOUD", "laundry", "swarm", "nuclear", "Same As", "cool"}) {
    SheetLogs logs;
    NoteBadLocation(logs, text, PackDate(2003, 5, 31), "800");
    EXPECT_EQ(logs.weather, std::string("31-5-2003 800: ") + text + "\n");
  }
}

// --- What follows ---------------------------------------------------------------------------

TEST_F(SheetImportTest, ACompletedImportSolvesTheMapAndRefreshesItsRanges) {
  Map& map = Open(std::string(Site) + "R\tOru range\nK\tOru\n");
  Import(map, Row("1000", "Main0") + Row("1040", "Main200") + Row("1100", "oos"));
  const Range& range = map.ranges.front();
  EXPECT_EQ(range.follows.size(), 1U);
  EXPECT_EQ(range.points.size(), 2U);
  EXPECT_EQ(range.totalMinutes, 60);
}

TEST_F(SheetImportTest, ACompletedImportLetsTrailsBeMeasuredAgain) {
  Map& map = Open(Site);
  map.trails.front().flags |= TrailMeasured | TrailClosed;
  Import(map, Row("1000", "Main0"));
  EXPECT_EQ(std::next(map.trails.begin())->flags, std::uint32_t{TrailClosed});
}

TEST_F(SheetImportTest, AnAbandonedImportDoesNeither) {
  Map& map = Open(std::string(Site) + "R\tOru range\nK\tOru\n");
  Import(map, Row("1000", "Main0") + Row("1040", "Main200") + "Oru\tUlo\tx\t1100\tMain0\n");
  EXPECT_EQ(Follows(map).size(), 1U);
  EXPECT_TRUE(map.ranges.front().follows.empty());
}

TEST_F(SheetImportTest, AFollowThatWasJustImportedCanBeAPlace) {
  Map& map = Open(Site);
  Import(map, Row("1000", "Main0") + Row("1010", "Oru.2003-5-31.Ulo") + Row("1020", "Main100") +
                  Row("1030", "Oru.2003-5-31.Ulo"));
  // Its first stop is not on the trail yet when it is asked for first.
  EXPECT_EQ(files["unknownlocs.txt"], "Oru.2003-5-31.Ulo\n");
  EXPECT_EQ(Follows(map).front(),
            "Oru/Ulo/2003-5-31: 10:00-10:20@Main0+20 "
            "10:20-10:30@Main100+10 10:30-10:30@Oru.2003-5-31.Ulo+0");
}

TEST_F(SheetImportTest, ASavedImportReadsBackAsItWas) {
  Map& map = Open(MeasuredSite);
  Import(map,
         Row("1000", "Main0", "feed\t2") + Row("1040", "20m n of Camp", "feed\t1") +
             Row("1130", "oos"),
         With(SheetSm1, "G"));
  const Texts before = Follows(map);
  const std::string text = MapFileText(map, "other.map", true);
  Map& again = MapFromText(workspace, text, "other.map");
  EXPECT_EQ(Follows(again), before);
  EXPECT_EQ(Counts(again), (Texts{"2,0,0", "1,0,0"}));
}

// --- Files ----------------------------------------------------------------------------------

TEST_F(SheetImportTest, ALineOfTenMegabytesIsTakenInPieces) {
  Map& map = Open(Site);
  std::string row = Row("1000", "Main0");
  row.insert(row.size() - 1, "\tnote" + std::string(10'000'000, ' '));
  EXPECT_TRUE(Import(map, row + Row("1010", "Main0")).completed);
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:10@Main0+10"}));
}

TEST_F(SheetImportTest, AMillionColumnsAreRead) {
  Map& map = Open(Site);
  std::string row = Row("1000", "Main0");
  row.insert(row.size() - 1, std::string(1'000'000, '\t'));
  EXPECT_TRUE(Import(map, row + Row("1010", "Main0")).completed);
  EXPECT_EQ(Follows(map), (Texts{"Oru/Ulo/2003-5-31: 10:00-10:10@Main0+10"}));
}

TEST_F(SheetImportTest, TheRestOfALongRowIsARowThatSaysNothing) {
  Map& map = Open(Site);
  std::string row = Row("1000", "Main0");
  row.insert(row.size() - 1, "\t" + std::string(400, 'n') + "\tb\tc");
  // The rest has "b" for an animal and "c" for a date, if there is a species.
  EXPECT_FALSE(Import(map, row).completed);
  EXPECT_EQ(Said(), (Texts{"error: Bad date c"}));
}

// --- A plain telling of the same ------------------------------------------------------------

/// The stops of a sheet, computed in another way, for the simplest columns and without measures.
std::string ExpectedStops(const std::vector<std::pair<int, std::string>>& rows) {
  std::string told;
  std::string place;
  int start = 0;
  int last = 0;
  const auto end = [&](int at) {
    if (!place.empty()) told += " " + FormatTimeSpan(start, at) + "@" + place;
    place.clear();
  };
  for (const auto& [time, text] : rows) {
    last = time;
    if (text == "oos") {
      end(time);
    } else if (text.starts_with("Main") && text != place) {
      end(time);
      place = text;
      start = time;
    }
  }
  end(last);
  return told;
}

TEST_F(SheetImportTest, StopsAgreeWithAPlainTellingOverManySheets) {
  static constexpr const char* Places[] = {"Main0", "Main100", "Main200", "", "oos", "nowhere"};
  for (unsigned seed = 1; seed <= 200; ++seed) {
    std::mt19937 random(seed);
    std::vector<std::pair<int, std::string>> rows;
    std::string sheet;
    int time = 360;
    for (auto left = 1 + random() % 40; left > 0; --left) {
      time += static_cast<int>(random() % 25);
      rows.emplace_back(time, Places[random() % std::size(Places)]);
      sheet += Row(std::to_string(time / 60) + ":" + std::to_string(time % 60), rows.back().second);
    }
    Map& map = Open(Site);
    Import(map, sheet);
    std::string stops;
    for (const Point* point : map.trails.front().points) {
      stops += " " + point->name + "@" + point->measurements.front().nearName;
    }
    EXPECT_EQ(stops, ExpectedStops(rows)) << "seed " << seed << "\n" << sheet;
  }
}

}  // namespace
}  // namespace orvane
