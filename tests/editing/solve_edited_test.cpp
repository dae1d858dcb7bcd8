#include "editing/solve_edited.h"

#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct SolveEditedTest : MapFixture {};

TEST_F(SolveEditedTest, ACorrectedFixMovesItsPointAllTheWay) {
  Map& map = Open("T\tA\tHuman\nG\tX\tS10 0\tE20 0\nC\tY\tX\t100\t90\t0\n");
  Point& x = Named(map, "X");
  x.measurements.front().position.lat = -11;
  SolveEdited(map);
  EXPECT_DOUBLE_EQ(x.geo.lat, -11);
  x.measurements.front().position.lat = -12;
  SolveEdited(map);
  EXPECT_DOUBLE_EQ(x.geo.lat, -12);
}

TEST_F(SolveEditedTest, GivesThePlacesThatTheSavedFileGives) {
  const std::string text =
      "T\tA\tHuman\nG\tX\tS10 0\tE20 0\nG\tZ\tS10 0.1\tE20 0.2\n"
      "C\tY\tX\t100\t90\t0\nC\tY\tZ\t80\t200\t0\n"
      "C\tRay\tX\t0\t10\t0\nC\tRay\tZ\t0\t300\t0\n";
  Map& edited = Open(text, "edited.map");
  Named(edited, "Y").measurements.front().distance = 75;
  SolveEdited(edited);
  SolveEdited(edited);
  Map& opened = Open(MapFileText(edited, "copy.map", false), "copy.map");
  for (const char* name : {"X", "Y", "Z", "Ray"}) {
    EXPECT_EQ(Named(edited, name).geo, Named(opened, name).geo) << name;
  }
}

TEST_F(SolveEditedTest, MovesThePointsOfMapsAboveToo) {
  Map& basis = Open("T\tA\tHuman\nG\tX\tS10 0\tE20 0\n", "basis.map");
  Map& middle = Open("B\tbasis.map\nT\tB\tHuman\nC\tY\tX\t100\t0\t0\n", "middle.map");
  Map& top = Open("B\tmiddle.map\nT\tC\tHuman\nC\tW\tY\t100\t0\t0\n", "top.map");
  const double was = Named(top, "W").geo.lat;
  Named(basis, "X").measurements.front().position.lat = -11;
  EXPECT_EQ(SolveEdited(basis), (std::vector<Map*>{&basis, &middle, &top}));
  EXPECT_NEAR(Named(top, "W").geo.lat, was - 1, 1e-9);
}

// The figures of the ranges share the durations of the stops; see docs/compatibility.md.
TEST_F(SolveEditedTest, MinutesOfATallyCountUntilTheMapIsOpenedAgain) {
  Map& map = Open(
      "T\t\tPapio\t\t2020-3-1\nG\tA\tS20 0\tE47 0\nG\tB\tS20 0.1\tE47 0\n"
      "G\tC\tS20 0\tE47 0.1\nH\tA\t100\t9\t9\t0\ta1\t1\nR\tBlue\nK\tPapio\n");
  const auto minutesOf = [](const Map& each) { return each.ranges.front().totalMinutes; };
  EXPECT_EQ(minutesOf(map), 0);
  SolveEdited(map);
  EXPECT_EQ(minutesOf(map), 3);
  Workspace other(messages);
  EXPECT_EQ(minutesOf(MapFromText(other, MapFileText(map, "test.map", true))), 0);
}

TEST_F(SolveEditedTest, BringsRangesUpToDate) {
  Map& map = Open(
      "T\t\tPapio\tf\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.1\tE47 0\n"
      "G\t9:00\tS20 0\tE47 0.1\nR\tPapio\nK\tPapio\n");
  const double area = map.ranges.front().mcpArea;
  ASSERT_GT(area, 0);
  map.trails.front().points.back()->measurements.front().position.lon += 1.0 / 600;
  SolveEdited(map);
  EXPECT_NEAR(map.ranges.front().mcpArea, 2 * area, area / 1000);
}

}  // namespace
}  // namespace orvane
