#include "editing/solve_edited.h"

#include "editing/edit_history.h"
#include "mapfile/writer.h"
#include "support/dice.h"
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

constexpr char HutText[] = "T\tBt\tTrail\nG\tB1\tS21 15.1\tE47 25.0\nP\tHut\nP\tDen\n";

/// The shot at the point without a place had given it one, near 0,0, which then counted as known: it
/// moved the fix half the way there.
TEST_F(SolveEditedTest, APointOfTheBasisKeepsNoPlaceThatTheMapGaveIt) {
  Open(HutText, "base.map");
  Map& map =
      Open("B\tbase.map\nT\tT3\tRoad\nP\tHut\nC\tK7\tHut\t60\tA41\t0\nG\tK7\tS21 15.2\tE47 25.1\n");
  const LatLon opened = Named(map, "K7").geo;
  for (int turn = 0; turn < 3; ++turn) {
    SolveEdited(map);
    EXPECT_EQ(Named(map, "K7").geo, opened) << turn;
  }
}

TEST_F(SolveEditedTest, AfterAnUndoTheBasisHasNoPlaceFromTheMapEither) {
  Map& basis = Open(HutText, "base.map");
  Map& map =
      Open("B\tbase.map\nT\tT3\tRoad\nP\tHut\nC\tK7\tHut\t60\tA41\t0\nG\tK7\tS21 15.2\tE47 25.1\n");
  const LatLon opened = Named(map, "K7").geo;
  EditHistory history(workspace);
  history.Apply({.name = "Fix", .map = &basis, .change = [&](EditFollowUp& followUp) {
                   Measurement& reading = Named(basis, "Hut").measurements.emplace_front();
                   reading.flags = MeasureGps;
                   reading.position = {.lat = -21.2534, .lon = 47.4184};
                   followUp.solve = true;
                   return true;
                 }});
  EXPECT_DOUBLE_EQ(Named(basis, "Hut").geo.lat, -21.2534) << "a fix of its own stays";
  SolveEdited(map);
  EXPECT_DOUBLE_EQ(Named(basis, "Hut").geo.lat, -21.2534);
  EXPECT_NE(Named(map, "K7").geo, opened);
  ASSERT_TRUE(history.Undo(basis));
  SolveEdited(map);
  EXPECT_EQ(Named(map, "K7").geo, opened);
}

/// A map above had met the point without a place, and took the new one away.
TEST_F(SolveEditedTest, AMapAboveKeepsThePlaceThatOneBetweenGivesAPoint) {
  Open("T\tBt\tTrail\nG\tB1\tS21 15.1\tE47 25.0\nP\tHut\n", "base.map");
  Map& mid = Open("B\tbase.map\nT\tMid\tRoad\nP\tHut\nP\tB1\n", "mid.map");
  Map& top = Open("B\tmid.map\nT\tTop\tRoad\nC\tT2\tHut\t50\tA90\t0\n", "top.map");
  ASSERT_FALSE(IsPlaced(Named(mid, "Hut")));
  Measurement& shot = Named(mid, "Hut").measurements.emplace_front();
  shot.base = &Named(mid, "B1");
  shot.flags = MeasureCompass | MeasureAbsoluteBearing;
  shot.distance = 100;
  SolveEdited(mid);
  EXPECT_TRUE(IsPlaced(Named(mid, "Hut")));
  EXPECT_TRUE(IsPlaced(Named(top, "T2")));
  EXPECT_NEAR(Named(top, "T2").geo.lat, Named(mid, "Hut").geo.lat, 1e-6);
}

/// A solve took the places that another map had given to points of their common basis.
TEST_F(SolveEditedTest, APlaceFromAnotherMapOverTheBasisStays) {
  Open("T\tBt\tTrail\nG\tB1\tS21 15.1\tE47 25.0\nP\tHut\n", "base.map");
  Map& second = Open("B\tbase.map\nT\tSecond\tRoad\nP\tHut\nG\tS1\tS21 15\tE47 25\n", "second.map");
  Map& first =
      Open("B\tbase.map\nT\tFirst\tRoad\nG\tHut\tS21 15.2\tE47 25.1\nP\tB1\n", "first.map");
  ASSERT_TRUE(IsPlaced(Named(first, "Hut")));
  SolveEdited(second);
  EXPECT_TRUE(IsPlaced(Named(first, "Hut")));
  SolveEdited(*first.basis);
  EXPECT_TRUE(IsPlaced(Named(first, "Hut")));
}

/// The fix had placed the point before it was known to have no place of its own.
TEST_F(SolveEditedTest, ACorrectedFixOfAPointBelowMovesIt) {
  Open("T\tBt\tTrail\nG\tB1\tS21 15.1\tE47 25.0\nP\tHut\n", "base.map");
  Map& map = Open(
      "B\tbase.map\nT\tRoad1\tRoad\nG\tHut\tS21 15.35\tE47 25.25\n"
      "C\tT2\tHut\t50\tA90\t0\n",
      "season.map");
  Named(map, "Hut").measurements.front().position.lat = -21.26;
  SolveEdited(map);
  EXPECT_DOUBLE_EQ(Named(map, "Hut").geo.lat, -21.26);
}

/// Maps over a basis with points that it does not place, and random readings between them.
TEST_F(SolveEditedTest, EditedMapsHaveThePlacesOfTheirSavedFiles) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    Dice dice(seed);
    const auto shots = [&](const std::string& letter, const std::vector<std::string>& below) {
      std::string text;
      for (int i = 0; i < 4; ++i) {
        const std::string name = letter + std::to_string(i);
        if (i == 0 || dice.OneIn(2)) {
          text += "G\t" + name + "\tS21 15." + std::to_string(dice.Below(10)) + "\tE47 25.1\n";
        }
        const std::string& base = below[static_cast<size_t>(dice.Below(4))];
        if (dice.OneIn(2)) text += "P\t" + base + "\n";
        text += "C\t" + name + "\t" + base + "\t" + std::to_string(20 + dice.Below(60)) + "\tA" +
                std::to_string(dice.Below(360)) + "\t0\n";
      }
      return text + "P\t" + letter + "x\n";
    };
    const std::string text = "B\tbase.map\nT\tM\tRoad\n" + shots("M", {"B1", "Hut", "Den", "M0"});
    const auto places = [](const Workspace& of) {
      std::string lines;
      for (const Map& map : of.maps) {
        lines += map.fileName + "\n";
        ForEachPoint(map, [&](const Point& point) {
          lines += point.name + (IsPlaced(point) ? " at " : " not at ");
          if (IsPlaced(point)) {
            lines += std::to_string(point.geo.lat) + " " + std::to_string(point.geo.lon);
          }
          lines += "\n";
        });
      }
      return lines;
    };
    Workspace edited(messages);
    MapFromText(edited, HutText, "base.map");
    Map& map = MapFromText(edited, text, "season.map");
    for (int turn = 0; turn < 4; ++turn) {
      Point& point = Named(map, "M" + std::to_string(dice.Below(4)));
      point.measurements.front().distance += 5;
      point.measurements.front().position.lat += 0.0001;
      SolveEdited(map);
      Workspace opened(messages);
      MapFromText(opened, HutText, "base.map");
      MapFromText(opened, MapFileText(map, "season.map", false), "season.map");
      ASSERT_EQ(places(edited), places(opened)) << "seed " << seed << ", turn " << turn;
    }
  }
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
