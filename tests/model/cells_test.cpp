#include "model/cells.h"

#include "model/workspace.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace orvane {
namespace {

constexpr GridStyle Decimal = GridStyle::Decimal;
constexpr GridStyle Lower = GridStyle::LettersLower;
constexpr GridStyle Upper = GridStyle::LettersUpper;

int CellOf(std::string_view text, GridStyle style) {
  const auto read = ParseCellNumber(text, style);
  return read && read->length == text.size() ? read->number : -1000000;
}

TEST(CellNumbers, LettersCountFromOne) {
  EXPECT_EQ(CellOf("a", Lower), 1);
  EXPECT_EQ(CellOf("z", Lower), 26);
  EXPECT_EQ(CellOf("aa", Lower), 27);
  EXPECT_EQ(CellOf("az", Lower), 52);
  EXPECT_EQ(CellOf("ba", Lower), 53);
  EXPECT_EQ(CellOf("A", Upper), 1);
  EXPECT_EQ(CellOf("AA", Upper), 27);
  EXPECT_EQ(CellOf("YZ", Upper), 25 * 26 + 26);
  // All letters but the last count in base 27.
  EXPECT_EQ(CellOf("ABC", Upper), (1 * 27 + 2) * 26 + 2 + 1);
}

TEST(CellNumbers, ZFollowedByALetterIsNegative) {
  EXPECT_EQ(CellOf("ZA", Upper), -26);
  EXPECT_EQ(CellOf("ZZ", Upper), -1);
  EXPECT_EQ(CellOf("zb", Lower), -25);
  EXPECT_EQ(ParseCellNumber("ZABC", Upper)->length, 2U);
  EXPECT_EQ(ParseCellNumber("Z1", Upper)->number, 26);
  EXPECT_EQ(ParseCellNumber("Za", Upper)->number, 26);  // the letter must be of the same case
}

TEST(CellNumbers, TextOfAnotherKindGivesZeroAndUsesNothing) {
  for (const char* text : {"", "1", "a", "-"}) {
    const auto read = ParseCellNumber(text, Upper);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->number, 0) << text;
    EXPECT_EQ(read->length, 0U) << text;
  }
  EXPECT_EQ(ParseCellNumber("AB", Lower)->length, 0U);
  EXPECT_EQ(ParseCellNumber("x", Decimal)->length, 0U);
  EXPECT_EQ(ParseCellNumber("abC", Lower)->length, 2U);
}

TEST(CellNumbers, DecimalReadsASignedNumber) {
  EXPECT_EQ(CellOf("12", Decimal), 12);
  EXPECT_EQ(CellOf("-3", Decimal), -3);
  EXPECT_EQ(ParseCellNumber("12B", Decimal)->length, 2U);
}

TEST(CellNumbers, OtherStylesNameNoCells) {
  for (const GridStyle style : {GridStyle::Unlabeled, GridStyle::RomanLower, GridStyle::RomanUpper,
                                StyleOf<GridStyle>(17)}) {
    EXPECT_FALSE(ParseCellNumber("1", style).has_value()) << NumberOf(style);
    EXPECT_EQ(FormatCellNumber(1, style), "") << NumberOf(style);
  }
}

TEST(CellNumbers, WrittenNumbersReadBack) {
  for (int number = 1; number <= 26 * 27; ++number) {
    if (number > 26 * 26 && number <= 26 * 27) continue;  // "Z" with a letter is negative
    EXPECT_EQ(CellOf(FormatCellNumber(number, Upper), Upper), number);
    EXPECT_EQ(CellOf(FormatCellNumber(number, Lower), Lower), number);
  }
  for (int number = -500; number <= 500; ++number) {
    EXPECT_EQ(CellOf(FormatCellNumber(number, Decimal), Decimal), number);
  }
}

TEST(CellNumbers, AtTakesThePlaceOfAMissingLetter) {
  // No letter counts 0 in base 27, so these labels name no cell.
  EXPECT_EQ(FormatCellNumber(26 * 27, Upper), "ZZ");
  EXPECT_EQ(FormatCellNumber(26 * 27 + 1, Upper), "A@A");
  EXPECT_EQ(FormatCellNumber(26 * 27 + 26, Lower), "a`z");
  EXPECT_EQ(FormatCellNumber(26 * 28 + 1, Upper), "AAA");
  EXPECT_EQ(CellOf("AAA", Upper), 26 * 28 + 1);
  EXPECT_EQ(FormatCellNumber(26 * 54 + 1, Upper), "B@A");
}

TEST(CellNumbers, NegativeLabelReadsBackOneLess) {
  EXPECT_EQ(FormatCellNumber(0, Upper), "ZZ");
  EXPECT_EQ(FormatCellNumber(-1, Upper), "ZY");
  EXPECT_EQ(FormatCellNumber(-1, Lower), "zy");
  for (int number = -25; number <= 0; ++number) {
    EXPECT_EQ(CellOf(FormatCellNumber(number, Upper), Upper), number - 1);
    EXPECT_EQ(CellOf(FormatCellNumber(number, Lower), Lower), number - 1);
  }
  EXPECT_EQ(FormatCellNumber(-26, Upper), "");  // no letter is left for it
}

TEST(CellNumbers, HugeNamesStayWithinRange) {
  EXPECT_EQ(ParseCellNumber(std::string(390, 'Y'), Upper)->number, 2147483647);
  EXPECT_FALSE(FormatCellNumber(2147483647, Upper).empty());
  EXPECT_EQ(FormatCellNumber(-2147483647 - 1, Upper), "");
}

struct CellsTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "a.map");

  Point& PlacedPoint(Map& owner, double lat, double lon) {
    Point& point = MakePoint(owner, "Corner");
    point.geo = {lat, lon, NoAltitude};
    point.flags |= PointPlaced;
    return point;
  }
  Grid& AddGrid(Map& owner, double lat, double lon) {
    Grid& grid = owner.grids.emplace_front();
    grid.corner = &PlacedPoint(owner, lat, lon);
    grid.cellSize = 100;
    grid.rows = 10;
    grid.columns = 20;
    return grid;
  }
  /// Metres south and east of a place.
  static LatLon Offset(double lat, double lon, double south, double east) {
    LatLon place{lat, lon, NoAltitude};
    AddMeters(place, -south, east);
    return place;
  }
};

TEST_F(CellsTest, RowsRunSouthAndColumnsEastOfTheCorner) {
  Grid& grid = AddGrid(map, 1, 2);
  grid.rowStart = 1;
  grid.columnStart = 1;
  const auto place = FindGridCell(map, "B3");
  ASSERT_TRUE(place.has_value());
  const LatLon expected = Offset(1, 2, 150, 250);
  EXPECT_DOUBLE_EQ(place->lat, expected.lat);
  EXPECT_DOUBLE_EQ(place->lon, expected.lon);
  EXPECT_EQ(place->altitude, NoAltitude);
}

TEST_F(CellsTest, StartsAreSubtracted) {
  Grid& grid = AddGrid(map, 1, 2);
  grid.rowStart = 2;
  grid.columnStart = 10;
  const auto place = FindGridCell(map, "B10");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(place->lat, Offset(1, 2, 50, 50).lat, 1e-12);
}

TEST_F(CellsTest, ColumnComesFirstWhereRowsAreDecimalAndColumnsLetters) {
  Grid& grid = AddGrid(map, 1, 2);
  EXPECT_FALSE(ColumnComesFirst(grid));
  grid.rowStyle = Decimal;
  EXPECT_FALSE(ColumnComesFirst(grid));
  for (const GridStyle letters : {Lower, Upper}) {
    grid.columnStyle = letters;
    EXPECT_TRUE(ColumnComesFirst(grid));
  }
  const auto place = FindGridCell(map, "C1");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(place->lat, Offset(1, 2, 150, 0).lat, 1e-12);
  EXPECT_NEAR(place->lon, Offset(1, 2, 150, 350).lon, 1e-12);
  EXPECT_FALSE(FindGridCell(map, "1C").has_value() && FindGridCell(map, "1C")->lat == place->lat);
}

TEST_F(CellsTest, WholeTextMustBeUsed) {
  AddGrid(map, 1, 2);
  EXPECT_FALSE(FindGridCell(map, "B3x").has_value());
  EXPECT_FALSE(FindGridCell(map, "b3").has_value());
  EXPECT_FALSE(FindGridCell(map, "").has_value());
  EXPECT_TRUE(FindGridCell(map, "B3").has_value());
}

TEST_F(CellsTest, UpperZWithALetterIsAlwaysTheNegativeForm) {
  AddGrid(map, 1, 2);
  const auto place = FindGridCell(map, "ZA1");
  ASSERT_TRUE(place.has_value());
  EXPECT_NEAR(place->lat, Offset(1, 2, (-26 + 0.5) * 100, 0).lat, 1e-12);
  EXPECT_FALSE(FindGridCell(map, "Za1").has_value());
}

TEST_F(CellsTest, NewestGridIsAskedFirstAndThenTheBasis) {
  Map& basis = MakeMap(workspace, "basis.map");
  map.basis = &basis;
  Grid& old = AddGrid(basis, 50, 60);
  EXPECT_NEAR(FindGridCell(map, "A1")->lat, 50, 0.1);
  AddGrid(map, 1, 2).rowStyle = GridStyle::RomanUpper;  // names no cell
  EXPECT_NEAR(FindGridCell(map, "A1")->lat, 50, 0.1);
  AddGrid(map, 3, 4);
  EXPECT_NEAR(FindGridCell(map, "A1")->lat, 3, 0.1);
  AddGrid(map, 5, 6);
  EXPECT_NEAR(FindGridCell(map, "A1")->lat, 5, 0.1);
  EXPECT_EQ(CellAt(basis, Offset(50, 60, 50, 50), 60), " ZZ0");
  old.rowStart = 1;
  EXPECT_EQ(CellAt(basis, Offset(50, 60, 50, 50), 60), " A0");
  EXPECT_FALSE(CellAt(map, Offset(50, 60, 50, 50), 60).has_value()) << "only own grids";
}

TEST_F(CellsTest, CornerThatIsNotPlacedGivesNoPlace) {
  AddGrid(map, 1, 2).corner->flags = 0;
  EXPECT_FALSE(FindGridCell(map, "A1").has_value());
}

TEST_F(CellsTest, TurnedGridFollowsTheFormula) {
  Grid& grid = AddGrid(map, 1, 2);
  grid.angle = 30;
  const double r = 150;
  const double c = 250;
  const double a = 30 * RadiansPerDegree;
  const auto place = FindGridCell(map, "A2");
  ASSERT_TRUE(place.has_value());
  const LatLon expected =
      Offset(1, 2, r * std::cos(a) + c * std::sin(a), -r * std::sin(a) + c * std::cos(a));
  EXPECT_DOUBLE_EQ(place->lat, expected.lat);
  EXPECT_DOUBLE_EQ(place->lon, expected.lon);
}

TEST_F(CellsTest, NamesTheCellOfAPlaceWithABlankInFront) {
  Grid& grid = AddGrid(map, 1, 2);
  grid.rowStart = 1;
  grid.columnStart = 1;
  EXPECT_EQ(CellAt(map, Offset(1, 2, 1, 1), 2), " A1");
  EXPECT_EQ(CellAt(map, Offset(1, 2, 150, 1950), 2), " B20");
  EXPECT_FALSE(CellAt(map, Offset(1, 2, 150, 2001), 2).has_value());
  EXPECT_FALSE(CellAt(map, Offset(1, 2, 1001, 150), 2).has_value());
  EXPECT_FALSE(CellAt(map, Offset(1, 2, -1, 150), 2).has_value());
  EXPECT_FALSE(CellAt(map, Offset(1, 2, 150, -1), 2).has_value());
  grid.rowStyle = Decimal;
  grid.columnStyle = Lower;
  EXPECT_EQ(CellAt(map, Offset(1, 2, 150, 50), 2), " a2");
  grid.columnStyle = GridStyle::Unlabeled;
  EXPECT_EQ(CellAt(map, Offset(1, 2, 150, 50), 2), " 2");
}

TEST_F(CellsTest, NegativeCountExtendsTheOtherWayAndIsSubtractedFromTheIndex) {
  Grid& grid = AddGrid(map, 1, 2);
  grid.rows = -10;
  grid.columns = -20;
  grid.rowStyle = Decimal;
  const auto at = [&](double south, double east) {
    return CellAt(map, Offset(1, 2, south, east), 2);
  };
  EXPECT_EQ(at(50, 50), " 1020");     // index 0
  EXPECT_EQ(at(-50, -50), " 919");    // index -1
  EXPECT_EQ(at(-850, -1850), " 11");  // index -9 and -19, the last inside
  EXPECT_FALSE(at(-950, -50).has_value());
  EXPECT_FALSE(at(-50, -1950).has_value());
  EXPECT_FALSE(at(150, 50).has_value());
}

TEST_F(CellsTest, CountsTheCellsOfTheLargestNegativeGrid) {
  // Index 0 less the count is 2^31, which does not fit 32 bits.
  Grid& grid = AddGrid(map, 1, 2);
  grid.rows = std::numeric_limits<int>::min();
  grid.columns = std::numeric_limits<int>::min();
  grid.rowStyle = Decimal;
  const auto label = [&](double south) { return CellAt(map, Offset(1, 2, south, -50), 2); };
  EXPECT_EQ(label(-50), " 21474836472147483647");
  EXPECT_EQ(label(50), " 21474836472147483647");  // 2^31 is held at the largest number
  grid.rowStart = -10;
  EXPECT_EQ(label(50), " 21474836382147483647");
}

TEST_F(CellsTest, LongitudesAreTakenFromTheCenterOfTheView) {
  AddGrid(map, 60, 20).rowStart = 1;
  // A centre far off stretches the step in longitude by the difference of the cosines.
  const LatLon place = Offset(60, 20, 950, 50);
  const double cosines = std::cos(place.lat * RadiansPerDegree) - std::cos(60 * RadiansPerDegree);
  const double shift = cosines * 10 * MetersPerDegree;
  EXPECT_GT(shift, 100);
  EXPECT_EQ(CellAt(map, place, 20), " J0");
  const int expected = static_cast<int>(std::floor((50 + shift) / 100));
  EXPECT_EQ(CellAt(map, place, 10), " J" + std::to_string(expected));
}

TEST_F(CellsTest, TurningBackUsesThePiOfTheGrids) {
  Grid& grid = AddGrid(map, 0, 0);
  grid.angle = 180;
  grid.cellSize = 1;
  grid.rows = 2000000000;
  grid.columns = 2000000000;
  grid.rowStyle = Decimal;
  grid.columnStyle = GridStyle::Unlabeled;
  // Turned by half a circle, a place far to the west and just north of the corner is in row 0. With
  // the pi of the grids, which is a little too large, it is outside.
  constexpr double west = 18000000;
  constexpr double north = 0.0001;
  const auto rowBy = [&](double pi) {
    const double angle = 180 * (pi / 180.0);
    return std::floor(-north * std::cos(angle) + west * std::sin(angle));
  };
  ASSERT_EQ(rowBy(Pi), 0);
  ASSERT_EQ(rowBy(GridPi), -1);
  EXPECT_FALSE(CellAt(map, MetersToLatLon(north, -west), 0).has_value());
  EXPECT_EQ(CellAt(map, MetersToLatLon(1.5, -west), 0), " 1");
}

TEST_F(CellsTest, CellWithoutASizeHoldsNothing) {
  AddGrid(map, 1, 2).cellSize = 0;
  EXPECT_FALSE(CellAt(map, {1, 2, NoAltitude}, 2).has_value());
  EXPECT_FALSE(CellAt(map, {1.1, 2.1, NoAltitude}, 2).has_value());
}

TEST_F(CellsTest, NamedCellsAreFoundAgainOnTurnedGrids) {
  constexpr unsigned seed = 20040519;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  const auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
  const GridStyle styles[] = {Decimal, Lower, Upper};
  for (int round = 0; round < 300; ++round) {
    map.grids.clear();
    Grid& grid = AddGrid(map, below(160) - 80, below(360) - 180);
    grid.cellSize = 1 + below(200);
    grid.rows = 1 + below(60);
    grid.columns = 1 + below(60);
    grid.angle = below(720) - 360;
    grid.rowStyle = styles[below(3)];
    grid.columnStyle = grid.rowStyle == Decimal ? styles[1 + below(2)] : Decimal;
    grid.rowStart = 1 + below(40);
    grid.columnStart = 1 + below(40);
    const int row = below(static_cast<unsigned>(grid.rows));
    const int column = below(static_cast<unsigned>(grid.columns));
    const std::string rowPart = FormatCellNumber(row + grid.rowStart, grid.rowStyle);
    const std::string columnPart = FormatCellNumber(column + grid.columnStart, grid.columnStyle);
    const std::string name = grid.rowStyle == Decimal ? columnPart + rowPart : rowPart + columnPart;
    const auto place = FindGridCell(map, name);
    ASSERT_TRUE(place.has_value()) << name;
    EXPECT_EQ(CellAt(map, *place, grid.corner->geo.lon), " " + name);
  }
}

struct EstimateAltitudeTest : CellsTest {
  Point& At(double lat, double lon, float altitude) {
    Point& point = MakePoint(map, "p");
    point.geo = {lat, lon, altitude};
    return point;
  }
};

TEST_F(EstimateAltitudeTest, WeighsByTheInverseOfTheSquaredDistance) {
  map.trails.emplace_front().points = {&At(0, 1, 100)};
  map.loosePoints.push_front(&At(0, -2, 200));
  map.namelessPoints.push_front(&At(4, 0, 900));
  const double weights = 1 + 1 / 4.0 + 1 / 16.0;
  EXPECT_FLOAT_EQ(EstimateAltitude(map, {0, 0, NoAltitude}),
                  static_cast<float>((100 + 200 / 4.0 + 900 / 16.0) / weights));
}

TEST_F(EstimateAltitudeTest, PointAtThePlaceGivesItsAltitudeAtOnce) {
  map.trails.emplace_front().points = {&At(0, 1, 100), &At(5, 5, 7), &At(5, 5, 8)};
  EXPECT_EQ(EstimateAltitude(map, {5, 5, NoAltitude}), 7);
}

TEST_F(EstimateAltitudeTest, PointsWithoutAltitudeAndThoseOfTheBasisAreLeftOut) {
  Map& basis = MakeMap(workspace, "basis.map");
  basis.loosePoints.push_front(&At(0, 1, 500));
  map.basis = &basis;
  map.loosePoints.push_front(&At(0, 1, NoAltitude));
  EXPECT_EQ(EstimateAltitude(map, {0, 0, NoAltitude}), NoAltitude);
  map.loosePoints.push_front(&At(3, 3, 250));
  EXPECT_FLOAT_EQ(EstimateAltitude(map, {0, 0, NoAltitude}), 250);
}

TEST_F(EstimateAltitudeTest, EmptyMapHasNone) {
  EXPECT_EQ(EstimateAltitude(map, {0, 0, NoAltitude}), NoAltitude);
}

TEST(RangeCells, AreInTheOrderOfRowsThenColumns) {
  RangeCell low;
  RangeCell high;
  high.column = 1;
  EXPECT_TRUE(IsCellBefore(low, high));
  EXPECT_FALSE(IsCellBefore(high, low));
  EXPECT_FALSE(IsCellBefore(low, low));
  low.row = 1;
  EXPECT_TRUE(IsCellBefore(high, low));
  EXPECT_FALSE(IsCellBefore(low, high));
}

}  // namespace
}  // namespace orvane
