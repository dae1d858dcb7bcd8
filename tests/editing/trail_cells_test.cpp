#include "editing/trail_cells.h"

#include "base/messages.h"
#include "editing/trail_columns.h"
#include "model/workspace.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr size_t TwoSm = 2;
constexpr size_t CommentColumn = ColumnFirstSm + TwoSm;

/// Types a text and returns what the cell then shows.
std::string Typed(size_t column, std::string_view text, TrailRow row = {}) {
  const TrailCellResult result = SetTrailCellText(row, column, TwoSm, text);
  if (result.refusal != nullptr) return std::string("refused: ") + result.refusal;
  return TrailCellText(row, column, TwoSm);
}

TrailRow CompassRow() {
  TrailRow row;
  row.basePoint = "Camp";
  return row;
}

TEST(TrailCells, ShowAScaleInTheUnitThatFits) {
  EXPECT_EQ(Typed(ColumnScale, "2km"), "2km");
  EXPECT_EQ(Typed(ColumnScale, "50c"), "50cm");
  EXPECT_EQ(Typed(ColumnScale, "1500"), "2km");
  EXPECT_EQ(Typed(ColumnScale, "12M"), "12m");
  EXPECT_EQ(Typed(ColumnScale, "0.4k"), "400m");
  EXPECT_EQ(Typed(ColumnScale, ""), "");
  EXPECT_EQ(Typed(ColumnScale, "2kx"), "refused: Bad scale, should be a number");
}

TEST(TrailCells, ShowAWeightOnlyAboveOne) {
  EXPECT_EQ(Typed(ColumnWeight, "3"), "3");
  EXPECT_EQ(Typed(ColumnWeight, "1"), "");
  EXPECT_EQ(Typed(ColumnWeight, ""), "");
  EXPECT_EQ(Typed(ColumnWeight, "0"), "refused: Bad weight");
  EXPECT_EQ(Typed(ColumnWeight, "2 m"), "refused: Bad weight");
}

TEST(TrailCells, TakeAltitudesInWholeMetres) {
  EXPECT_EQ(Typed(ColumnAltitude, "95m"), "95m");
  EXPECT_EQ(Typed(ColumnAltitude, " -4"), "-4m");
  EXPECT_EQ(Typed(ColumnAltitude, ""), "");
  EXPECT_EQ(Typed(ColumnAltitude, "12.5"), "refused: Bad altitude.  Must be a number of meters");
}

TEST(TrailCells, ShowPositionsInMinutes) {
  EXPECT_EQ(Typed(ColumnLat, "S21 15.2'"), "S21\xB0 15.200'");
  EXPECT_EQ(Typed(ColumnLon, "E47.5"), "E47\xB0 30.000'");
  EXPECT_EQ(Typed(ColumnLat, "S21\xC2\xB0 15'"), "S21\xB0 15.000'") << "the sign of UTF-8";
  EXPECT_EQ(Typed(ColumnLat, "north of here"), "refused: Bad Latitude");
  EXPECT_EQ(Typed(ColumnLon, "E47 x"), "refused: Bad Longtitude");
}

TEST(TrailCells, AUtmTextAmongLatitudesFillsBoth) {
  for (const char* text : {"36M 500000 9889469.6", "36M 500000, 9889469", " 36MWD0000089469"}) {
    TrailRow row;
    row.isRepeat = true;
    row.gps.lon = 12;
    row.altitude = 7;
    const TrailCellResult result = SetTrailCellText(row, ColumnLat, 0, text);
    EXPECT_EQ(result.refusal, nullptr);
    EXPECT_TRUE(result.gps);
    EXPECT_TRUE(row.isGps);
    EXPECT_FALSE(row.isRepeat);
    EXPECT_EQ(TrailCellText(row, ColumnLat, 0), "S1\xB0 0.000'");
    EXPECT_EQ(TrailCellText(row, ColumnLon, 0), "E33\xB0 0.000'");
    EXPECT_EQ(row.altitude, 7);
  }
}

TEST(TrailCells, ARefusedUtmTextChangesNothing) {
  TrailRow row;
  row.gps = {3, 12};
  for (const char* text : {"36M 500000", "61M 500000 9889470", "36M 500000 9889470 x", "36MWD1"}) {
    EXPECT_STREQ(SetTrailCellText(row, ColumnLat, 0, text).refusal, "Bad Latitude");
    EXPECT_EQ(row.gps, (LatLon{3, 12}));
    EXPECT_FALSE(row.isGps);
  }
  EXPECT_STREQ(SetTrailCellText(row, ColumnLon, 0, "36M 500000 9889470").refusal, "Bad Longtitude");
  EXPECT_EQ(row.gps, (LatLon{3, 12}));
}

TEST(TrailCells, ALatitudeIsReadBeforeUtm) {
  EXPECT_EQ(Typed(ColumnLat, "36 15"), "N36\xB0 15.000'");
  EXPECT_EQ(Typed(ColumnLat, "N36 15 30"), "N36\xB0 15.500'");
}

TEST(TrailCells, ATypedPositionMakesAGpsRow) {
  TrailRow row;
  row.isRepeat = true;
  EXPECT_TRUE(SetTrailCellText(row, ColumnLat, 0, "S20").gps);
  EXPECT_TRUE(row.isGps);
  EXPECT_FALSE(row.isRepeat);
  EXPECT_FALSE(SetTrailCellText(row, ColumnLon, 0, "").gps);
  EXPECT_FALSE(row.isGps);
}

TEST(TrailCells, ATypedPointThrowsTheFixAway) {
  TrailRow row;
  row.isGps = true;
  row.showsNear = true;
  row.nearName = "the ford";
  EXPECT_EQ(TrailCellText(row, ColumnPoint, 0), "the ford");
  EXPECT_TRUE(SetTrailCellText(row, ColumnPoint, 0, "Camp").compass);
  EXPECT_FALSE(row.isGps);
  EXPECT_EQ(TrailCellText(row, ColumnPoint, 0), "Camp");
  EXPECT_FALSE(SetTrailCellText(row, ColumnPoint, 0, "").compass);
  EXPECT_EQ(TrailCellText(row, ColumnPoint, 0), "");
}

TEST(TrailCells, ShowCompassValuesOnlyBesideAPoint) {
  EXPECT_EQ(Typed(ColumnDistance, "30m", CompassRow()), "30m");
  EXPECT_EQ(Typed(ColumnDistance, "52.25", CompassRow()), "52.25m");
  EXPECT_EQ(Typed(ColumnBearing, "A110", CompassRow()), "A110\xB0");
  EXPECT_EQ(Typed(ColumnInclination, "-2.5", CompassRow()), "-2.5\xB0");
  EXPECT_EQ(Typed(ColumnDistance, "30m"), "");
  EXPECT_EQ(Typed(ColumnDistance, "30 x", CompassRow()),
            "refused: Bad distance.  Must be a number of meters");
  EXPECT_EQ(Typed(ColumnBearing, "NE34", CompassRow()),
            "refused: Bad compass bearing.  Must be an angle in degrees (minutes & seconds or a "
            "decimal point are allowed)");
  EXPECT_EQ(Typed(ColumnInclination, "steep", CompassRow()),
            "refused: Bad inclination.  Must be an angle in degrees");
}

TEST(TrailCells, ABearingLosesItsMarkWhenItIsTypedWithout) {
  TrailRow row = CompassRow();
  SetTrailCellText(row, ColumnBearing, 0, "a35");
  EXPECT_TRUE(row.isAbsolute);
  SetTrailCellText(row, ColumnBearing, 0, "35");
  EXPECT_FALSE(row.isAbsolute);
}

TEST(TrailCells, KeepMeasuresIn16Bits) {
  EXPECT_EQ(Typed(ColumnFirstSm, "7"), "7");
  EXPECT_EQ(Typed(ColumnFirstSm + 1, "65537"), "1");
  EXPECT_EQ(Typed(ColumnFirstSm, "0"), "");
  EXPECT_EQ(Typed(ColumnFirstSm, "many"), "refused: Bad integer");
}

TEST(TrailCells, TheCommentFollowsTheMeasures) {
  EXPECT_EQ(Typed(CommentColumn, "  by the fig"), "by the fig");
  EXPECT_EQ(Typed(CommentColumn, ""), "");
  EXPECT_EQ(Typed(CommentColumn + 1, "x"),
            "refused: Something is wrong with your input, but I don't know what");
}

TEST(TrailCells, ARefusedTextLeavesTheRow) {
  TrailRow row = CompassRow();
  row.distance = 12;
  SetTrailCellText(row, ColumnDistance, 0, "1o");
  EXPECT_EQ(row.distance, 12);
}

TEST(TrailColumns, TheHintOnBearingsKeepsItsByte) {
  RecordedMessages messages;
  Workspace workspace(messages);
  const Map& map = MakeMap(workspace, "site.map");
  const std::string hint = TrailColumns(EntryMode::Relative, map)[3].hint;
  EXPECT_NE(hint.find("\n  or N34\xA1 12'E.\n"), std::string::npos) << hint;
}

TEST(TrailCells, TakeUnitsInEitherCase) {
  EXPECT_EQ(Typed(ColumnScale, "2Km"), "2km");
  EXPECT_EQ(Typed(ColumnScale, "50Cm"), "50cm");
  EXPECT_EQ(Typed(ColumnScale, "12x"), "refused: Bad scale, should be a number");
  EXPECT_EQ(Typed(ColumnScale, "-3"), "");
  EXPECT_EQ(Typed(ColumnDistance, "30M", CompassRow()), "30m");
  EXPECT_EQ(Typed(ColumnAltitude, "95M"), "95m");
  EXPECT_EQ(Typed(ColumnBearing, "", CompassRow()), "0\xB0");
}

TEST(TrailCells, HideCompassValuesInRowsOfOtherReadings) {
  for (const int kind : {0, 1, 2}) {
    TrailRow row = CompassRow();
    row.isGps = kind == 0;
    row.isAltitude = kind == 1;
    row.isRepeat = kind == 2;
    EXPECT_EQ(TrailCellText(row, ColumnPoint, 0), "") << kind;
    EXPECT_EQ(TrailCellText(row, ColumnDistance, 0), "") << kind;
    EXPECT_EQ(TrailCellText(row, ColumnBearing, 0), "") << kind;
    EXPECT_EQ(TrailCellText(row, ColumnInclination, 0), "") << kind;
  }
  TrailRow near;
  near.showsNear = true;
  EXPECT_EQ(TrailCellText(near, ColumnPoint, 0), "");
}

TEST(TrailCells, ShowPositionsOfAllQuarters) {
  EXPECT_EQ(Typed(ColumnLat, "N21.5"), "N21\xB0 30.000'");
  EXPECT_EQ(Typed(ColumnLon, "W47.5"), "W47\xB0 30.000'");
  EXPECT_EQ(Typed(ColumnLat, "S21\xB0 15'"), "S21\xB0 15.000'") << "the old sign";
  EXPECT_EQ(TrailCellText({}, ColumnFirstSm + 7, 0), "") << "no such measure";
}

}  // namespace
}  // namespace orvane
