#include "places/resolve_location.h"

#include "geo/earth.h"
#include "support/map_from_text.h"

#include <cmath>

namespace orvane {
namespace {

/// Places are in metres north and east of latitude 0, longitude 0.
constexpr double Unit = MetersPerDegree / 1000;

/// A thousandth of a degree is one unit. Camp (0, 0), Ridge (0, 10), Falls (10, 10).
///
///      Falls          Main: Main0 (20, 0), Main100 (20, 10), Main200 (20, 20)
///        |            Walk: Camp, Ridge      Stream: Ridge, Falls
///     ---+--- Ridge
///   Camp
constexpr std::string_view Site =
    "T\tMain\nG\tMain0\tN0.02\tE0\t100\nG\tMain100\tN0.02\tE0.01\t200\nG\tMain200\tN0.02\tE0."
    "02\t200\n"
    "T\tWalk\nG\tCamp=HQ\tN0\tE0\t10\nG\tRidge\tN0\tE0.01\t30\n"
    "T\tStream\nP\tRidge\nG\tFalls\tN0.01\tE0.01\n"
    "T\tSolo\nG\tLone\tN0.03\tE0.03\t7\n"
    "T\tEmpty\n"
    "T\tLost\nP\tUnplaced\n"
    "T\tCamp\nP\tFalls\n"
    "T\t\tGibbon\tFred\t99-5-3\nG\t0830\tN0.05\tE0.05\n"
    "T\nG\t_Secret\tN0.04\tE0.04\n"
    "H\tFalls\t100\t5\t5\t0\tA1\t01\n";

struct Locations : MapFixture {
  Map& map = Open(Site);

  std::optional<Location> Find(std::string_view text) { return ResolveLocation(map, text); }

  void ExpectAt(std::string_view text, double north, double east,
                std::optional<float> altitude = std::nullopt) {
    const auto found = Find(text);
    ASSERT_TRUE(found) << text;
    EXPECT_NEAR(found->place.lat * MetersPerDegree, north, 0.01) << text;
    EXPECT_NEAR(found->place.lon * MetersPerDegree, east, 0.01) << text;
    EXPECT_FLOAT_EQ(found->place.altitude, altitude.value_or(NoAltitude)) << text;
  }
  void ExpectNothing(std::string_view text) { EXPECT_FALSE(Find(text)) << text; }
};

TEST_F(Locations, APointIsFoundByAnyOfItsNames) {
  for (const char* text : {"Camp", "camp", "HQ"}) {
    ExpectAt(text, 0, 0, 10);
    EXPECT_EQ(Find(text)->point, &Named(map, "Camp"));
    EXPECT_EQ(Find(text)->trail, nullptr);
  }
}

TEST_F(Locations, ATrailIsTheMiddleOfItsBounds) {
  ExpectAt("Main", 20 * Unit, 10 * Unit);
  const auto found = Find("main");
  EXPECT_EQ(found->trail->name, "Main");
  EXPECT_EQ(found->point, nullptr);
}

TEST_F(Locations, AFollowIsNamedByTypeAndDate) {
  ExpectAt("Gibbon.99-5-3.Fred", 50 * Unit, 50 * Unit);
}

TEST_F(Locations, ATrailOfOnePointIsThatPointOnlyAfterThePrefix) {
  EXPECT_EQ(Find("Solo")->point, nullptr);
  ExpectAt("Solo", 30 * Unit, 30 * Unit);
  EXPECT_EQ(Find("Trail:Solo")->point, &Named(map, "Lone"));
  ExpectAt("Trail:Solo", 30 * Unit, 30 * Unit, 7);
}

TEST_F(Locations, ATrailWithoutPlacedPointsIsNowhere) {
  ExpectNothing("Empty");
  ExpectNothing("Trail:Empty");
  ExpectNothing("Lost");
}

TEST_F(Locations, APointWithoutPlaceGivesNoneInAnyText) {
  for (const char* text :
       {"Unplaced", "Point:Unplaced", "Lost:Unplaced", "Unplaced, Camp", "5m n of Unplaced",
        "From Unplaced to Ridge along Walk by 1", "Camp, Unplaced, Ridge"}) {
    ExpectNothing(text);
  }
}

TEST_F(Locations, APointBeatsATrailOfItsName) {
  ExpectAt("Camp", 0, 0, 10);
  ExpectAt("Trail:Camp", 10 * Unit, 10 * Unit);  // one point, Falls
}

TEST_F(Locations, TwoPlacesGiveTheirMidpointAndMeanAltitude) {
  ExpectAt("Camp, Ridge", 0, 5 * Unit, 20);
  ExpectAt("Camp,Ridge", 0, 5 * Unit, 20);
  ExpectAt("Camp, Falls", 5 * Unit, 5 * Unit, 10);  // the one altitude that is known
  ExpectAt("Falls, Camp", 5 * Unit, 5 * Unit, 10);
  ExpectAt("Falls, Falls", 10 * Unit, 10 * Unit);
  EXPECT_EQ(Find("Camp, Ridge")->point, nullptr);
}

TEST_F(Locations, ManyPlacesAreCutAtTheLastComma) {
  ExpectAt("Camp, Ridge, Falls", 5 * Unit, 7.5 * Unit, 20);
  ExpectAt("Main100, 50m north of Camp", 10 * Unit + 25, 5 * Unit, 105);
}

TEST_F(Locations, AHalfThatNamesNothingNamesNothing) {
  for (const char* text : {"Camp, Nowhere", "Nowhere, Camp", "Camp,", ",Camp", ",", ", "}) {
    ExpectNothing(text);
  }
}

TEST_F(Locations, NestToABoundedDepth) {
  std::string text = "Camp";
  for (int i = 0; i < 63; ++i) text += ",Camp";
  ExpectAt(text, 0, 0, 10);
  std::string deep = "Camp";
  for (int i = 0; i < 100000; ++i) deep += ",Camp";
  ExpectNothing(deep);
}

TEST_F(Locations, ATrailAndAPointGiveBoth) {
  const auto found = Find("Walk:Ridge");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->trail->name, "Walk");
  EXPECT_EQ(found->point, &Named(map, "Ridge"));
  ExpectAt("Main:Camp", 0, 0, 10);  // the point need not be on the trail
  ExpectNothing("Walk:Nowhere");
  ExpectNothing("Nowhere:Camp");
}

TEST_F(Locations, ATimeIsLookedForOnItsTrail) {
  ExpectAt("Gibbon.99-5-3.Fred:0830", 50 * Unit, 50 * Unit);
  ExpectNothing("Main:0830");
}

TEST_F(Locations, ARangeIsTheMiddleOfItsBounds) {
  Range& range = map.ranges.emplace_front();
  range.name = "Core";
  ExpectNothing("Core");  // no bounds yet
  range.hasBounds = true;
  range.minLat = 0.06;
  range.maxLat = 0.08;
  range.minLon = 0.01;
  range.maxLon = 0.03;
  for (const char* text : {"Core", "core", "Range:Core", "Range.core"}) {
    ExpectAt(text, 70 * Unit, 20 * Unit);
    EXPECT_EQ(Find(text)->range, &range);
  }
  ExpectNothing("range:Core");
  ExpectNothing("Range:None");
}

TEST_F(Locations, ARangeYieldsToATrailOfItsNameUnlessThePrefixAsksForIt) {
  Range& range = map.ranges.emplace_front();
  range.name = "Main";
  range.hasBounds = true;
  EXPECT_EQ(Find("Main")->range, nullptr);
  EXPECT_EQ(Find("Range:Main")->range, &range);
}

TEST_F(Locations, PrefixesAreWrittenExactly) {
  ExpectAt("Point:Camp", 0, 0, 10);
  ExpectAt("Point.ridge", 0, 10 * Unit, 30);
  ExpectAt("Trail.main", 20 * Unit, 10 * Unit);
  ExpectNothing("point:Camp");
  ExpectNothing("trail:Main");
  ExpectNothing("Trail:None");
  ExpectNothing("Point:None");
}

TEST_F(Locations, ACellIsItsCenter) {
  for (const char* text : {"A1", "Grid:A1", "Grid.A1", "grid:A1", "grid.A1"}) {
    ExpectAt(text, 10 * Unit - 50, 10 * Unit + 50);
  }
  ExpectAt("B3", 10 * Unit - 150, 10 * Unit + 250);
  ExpectNothing("Grid:a1");
  ExpectNothing("GRID:A1");
}

TEST_F(Locations, APointBeatsACellOfItsName) {
  MakePoint(map, "B3");
  Point& point = MakePoint(map, "B3");
  AddPointName(map, point, "B3");
  point.geo = {0.07, 0.07, 1};
  point.flags |= PointPlaced;
  ExpectAt("B3", 70 * Unit, 70 * Unit, 1);
  ExpectAt("Grid:B3", 10 * Unit - 150, 10 * Unit + 250);
}

TEST_F(Locations, AMetreMarkIsBetweenItsNeighbors) {
  ExpectAt("Main50", 20 * Unit, 5 * Unit, 150);
  ExpectAt("main50m", 20 * Unit, 5 * Unit, 150);
  EXPECT_EQ(Find("Main50")->point, nullptr);
  ExpectNothing("Main999999");
}

TEST_F(Locations, ACoordinatePairIsAPlace) {
  ExpectAt("N0.5 E0.25", 500 * Unit, 250 * Unit);
  ExpectAt("S0 30' W0 15'", -500 * Unit, -250 * Unit);
  ExpectNothing("0.5 0.25");
  ExpectNothing("N0.5 E0.25 x");
}

TEST_F(Locations, HiddenNamesAreFoundWithoutTheirSign) {
  ExpectAt("_Secret", 40 * Unit, 40 * Unit);
  ExpectAt("Secret", 40 * Unit, 40 * Unit);
  ExpectAt("secret", 40 * Unit, 40 * Unit);
  EXPECT_EQ(Find("Secret")->point->name, "_Secret");
  ExpectNothing("Point:Secret");
}

TEST_F(Locations, ABearingOfTheWindStartsAtAPointOrAMark) {
  ExpectAt("20m east of Camp", 0, 20, 10);
  ExpectAt("20 meters north of Camp", 20, 0, 10);
  ExpectAt("7.5 meter s of Camp", -7.5, 0, 10);
  ExpectAt("12 M   w   of   Camp", 0, -12, 10);
  ExpectAt("-10m e of HQ", 0, -10, 10);
  ExpectAt("5mnofCamp", 5, 0, 10);  // blanks may be missing
  ExpectAt("10m n of Main50", 20 * Unit + 10, 5 * Unit, 150);
  EXPECT_EQ(Find("20m east of Camp")->point, nullptr);
}

TEST_F(Locations, RightAndLeftDependOnTheDirectionOfTravel) {
  // Main runs east; right is the direction less a quarter turn, which is north.
  ExpectAt("10m right of Main50", 20 * Unit + 10, 5 * Unit, 150);
  ExpectAt("10m r of Main100", 20 * Unit + 10, 10 * Unit, 200);
  ExpectAt("10 meters left of Main50", 20 * Unit - 10, 5 * Unit, 150);
  ExpectAt("10m l of Main150", 20 * Unit - 10, 15 * Unit, 200);
  ExpectNothing("10m right of Camp");
  ExpectNothing("10m l of Ridge");
}

TEST_F(Locations, RightOfAMarkIsTheSamePlaceWithARangeAndWithout) {
  // The range takes 0830 only; Pde20 stayed in the plane of the range, which turned the direction.
  const std::string follow =
      "T\tPde\tChimp\nG\tPde20\tN60\tE20\nG\t0830\tN60.001\tE20.002\nG\t0930\tN60.002\tE20\n";
  Map& plain = Open(follow, "plain.map");
  Map& withRange = Open(follow + "R\tMorning\nK\tChimp\t\t8:00-9:00\n", "range.map");
  ASSERT_EQ(withRange.ranges.front().points.size(), 1U);
  const auto expected = ResolveLocation(plain, "10m right of Pde20");
  const auto found = ResolveLocation(withRange, "10m right of Pde20");
  ASSERT_TRUE(expected && found);
  EXPECT_EQ(found->place.lat, expected->place.lat);
  EXPECT_EQ(found->place.lon, expected->place.lon);
}

TEST_F(Locations, ARelativePlaceMustBeWhole) {
  for (const char* text :
       {"m east of Camp", "20 east of Camp", "20ft east of Camp", "20m East of Camp",
        "20m up of Camp", "20m east Camp", "20m east of", "20m east of Nowhere",
        "20  m east of Camp", "20m east of Main", "20m east of Camp, Ridge2"}) {
    ExpectNothing(text);
  }
}

TEST_F(Locations, AFractionOfTheWayAlongATrail) {
  ExpectAt("From Camp to Ridge along Walk by 1/2", 0, 5 * Unit, 20);
  ExpectAt("from camp to ridge along walk by 1/4", 0, 2.5 * Unit, 15);
  ExpectAt("FROM Ridge TO Camp ALONG Walk BY 1/4", 0, 7.5 * Unit, 25);  // runs against the trail
  ExpectAt("From Camp to Ridge along Walk by 0/3", 0, 0, 10);
  ExpectAt("From Camp to Ridge along Walk by 3/3", 0, 10 * Unit, 30);
}

TEST_F(Locations, TheWholeWayEndsAtItsEndHoweverManyStretchesItHas) {
  Map& way = Open(
      "T\tWay\nG\tw0\tN20 0.1'\tE100 0.3'\nG\tw1\tN20 1'\tE100 0.7'\nG\tw2\tN20 2'\tE100 0.2'\n"
      "G\tw3\tN20 3'\tE100 0.9'\nG\tw4\tN20 4'\tE100 0.4'\n"
      "T\tUp\nP\tw4\nG\tu1\tN20 5'\tE100 0.6'\nG\tu2\tN20 6'\tE100 0.1'\nG\tu3\tN20 7'\tE100 "
      "0.8'\n");
  const auto expectAt = [&](const std::string& text, std::string_view end) {
    const auto found = ResolveLocation(way, text);
    ASSERT_TRUE(found) << text;
    EXPECT_NEAR(found->place.lat, Named(way, end).geo.lat, 1e-9) << text;
    EXPECT_NEAR(found->place.lon, Named(way, end).geo.lon, 1e-9) << text;
  };
  for (const std::string end : {"w1", "w2", "w3", "w4"}) {
    for (const char* share : {"1/1", "3/3", "7/7"}) {
      expectAt("From w0 to " + end + " along Way by " + share, end);
      expectAt("From w0 to u3 along Way via w4 and Up by " + std::string(share), "u3");
    }
  }
  EXPECT_FALSE(ResolveLocation(way, "From w0 to w4 along Way by 90000"));
}

TEST_F(Locations, ADistanceAlongATrail) {
  ExpectAt("From Camp to Ridge along Walk by 250", 0, 250, 10 + 20 * 250 / (10 * Unit));
  ExpectAt("From Ridge to Camp along Walk by 250", 0, 10 * Unit - 250, 30 - 20 * 250 / (10 * Unit));
  ExpectNothing("From Camp to Ridge along Walk by 5000");
}

TEST_F(Locations, ARouteMayHaveTwoLegs) {
  const std::string route = "From Camp to Falls along Walk via Ridge and Stream by ";
  ExpectAt(route + "1/4", 0, 5 * Unit, 20);
  ExpectAt(route + "1/2", 0, 10 * Unit, 30);
  ExpectAt(route + "3/4", 5 * Unit, 10 * Unit);
  ExpectAt(route + "200", 0, 200, 10 + 20 * 200 / (10 * Unit));
  ExpectAt("From Falls to Camp along Stream via Ridge and Walk by 3/4", 0, 5 * Unit, 20);
  ExpectAt("from falls to camp ALONG stream VIA ridge AND walk BY 1/4", 5 * Unit, 10 * Unit);
}

TEST_F(Locations, ARouteMustBeWhole) {
  for (const char* text :
       {"From Camp to Ridge", "From Camp to Ridge along Walk", "From Camp to Ridge along Walk by",
        "From Camp to Ridge along Walk by ", "From Camp to Ridge along Walk by x",
        "From Camp to Ridge along Walk by 1/2 more", "From Camp to Ridge along Walk by 1/2 ",
        "From Camp to Ridge along Walk by 3/2", "From Camp to Ridge along Walk by 1/0",
        "From Camp to Ridge along Walk by -1/2", "From Camp to Ridge along Walk by 1/-2",
        "From Camp to Ridge along Walk by 1/", "From Camp to Nowhere along Walk by 1/2",
        "From Camp to Ridge along Nowhere by 1/2", "From Camp to Ridge along Stream by 1/2",
        "From Camp to Ridge along Main by 1/2",
        "From Camp to Falls along Walk via Ridge and Nowhere by 1/2",
        "From Camp to Falls along Walk via Nowhere and Stream by 1/2",
        "From Camp to Falls along Walk via Ridge by 1/2"}) {
    ExpectNothing(text);
  }
}

TEST_F(Locations, AListIsTheMeanOfItsItems) {
  // A trail without points takes the name of the cell A1 from a pair, but not from a list.
  map.trails.emplace_front().name = "A1";
  const double north = 10 * Unit - 50;
  const double east = 10 * Unit + 50;
  ExpectNothing("A1");
  ExpectAt("Camp, A1", north / 2, east / 2);
  ExpectAt("Camp, Ridge, A1", north / 3, (10 * Unit + east) / 3);
  EXPECT_EQ(Find("Camp, A1")->point, nullptr);
  EXPECT_EQ(Find("A1, Ridge")->point, &Named(map, "Ridge"));  // the last item
  ExpectAt("Main50, Secret, grid:B3, A1", (20 * Unit + 40 * Unit + 2 * north - 100) / 4,
           (5 * Unit + 40 * Unit + 2 * east + 200) / 4);
  ExpectNothing("Nowhere, A1");
  ExpectNothing("Camp,A1");  // a list needs the blank
  ExpectNothing("20m east of Camp, A1");
}

TEST_F(Locations, PlacesBeyondTheBoundOfNestingAreAList) {
  std::string list = "Camp";
  for (int i = 0; i < 70; ++i) list += ", Camp";
  ExpectAt(list, 0, 0, 10);
}

TEST_F(Locations, AnEmptyTextNamesNothing) {
  for (const char* text : {"", " ", "Range:", "Point:", "Trail:", "Grid:"}) {
    ExpectNothing(text);
  }
}

TEST_F(Locations, GiveNoMessage) {
  messages.Clear();
  ExpectNothing("Nowhere");
  EXPECT_EQ(Said(), Texts{});
}

/// What a lookup that finds nothing hangs on.
struct LocationNeedsTest : Locations {
  LocationNeeds NeedsOf(std::string_view text) {
    LocationNeeds needs;
    EXPECT_FALSE(ResolveLocation(map, text, &needs)) << text;
    return needs;
  }
};

TEST_F(LocationNeedsTest, AreThePointsWithoutAPlaceThatATextAsksFor) {
  const Point* unplaced = &Named(map, "Unplaced");
  for (const char* text : {"Unplaced", "Point:Unplaced", "Lost:Unplaced", "Unplaced, Camp",
                           "5m n of Unplaced", "From Unplaced to Ridge along Walk by 1",
                           "From Camp to Unplaced along Walk by 1", "Camp, Unplaced, Ridge"}) {
    const LocationNeeds needs = NeedsOf(text);
    EXPECT_TRUE(needs.complete) << text;
    ASSERT_FALSE(needs.points.empty()) << text;
    for (const Point* point : needs.points) EXPECT_EQ(point, unplaced) << text;
  }
}

TEST_F(LocationNeedsTest, AreNoneForATextThatNamesNothing) {
  const LocationNeeds needs = NeedsOf("Nowhere");
  EXPECT_TRUE(needs.complete);
  EXPECT_TRUE(needs.points.empty());
}

TEST_F(LocationNeedsTest, AreIncompleteWhereMoreThanSinglePointsCounts) {
  // A mark beyond the end of its trail, a trail without places, a way along a trail.
  for (const char* text :
       {"Main999", "3m n of Main999", "Lost", "Camp, Lost", "From Camp to Falls along Walk by 1"}) {
    EXPECT_FALSE(NeedsOf(text).complete) << text;
  }
}

TEST_F(LocationNeedsTest, HoldTheCornersOfGridsWithoutAPlace) {
  Point& corner = *map.grids.front().corner;
  corner.flags &= ~std::uint32_t{PointPlaced};
  const LocationNeeds needs = NeedsOf("A1");
  EXPECT_TRUE(needs.complete);
  ASSERT_FALSE(needs.points.empty());
  EXPECT_EQ(needs.points.front(), &corner);
}

TEST_F(LocationNeedsTest, AreIncompleteForMorePointsThanARecordHolds) {
  std::string list = "Unplaced";
  for (int i = 0; i < 100; ++i) list += ", Unplaced";
  const LocationNeeds needs = NeedsOf(list);
  EXPECT_LE(needs.points.size(), 64U);
  map.grids.clear();
  for (int i = 0; i < 70; ++i) {
    Grid& grid = map.grids.emplace_front();
    grid.corner = &Named(map, "Unplaced");
  }
  const LocationNeeds many = NeedsOf("B1");
  EXPECT_FALSE(many.complete);
  EXPECT_EQ(many.points.size(), 64U);
}

/// 36N 500000 0 is on the equator at 33 degrees east, 1000 units of a thousandth of a degree each.
TEST_F(Locations, UtmAndSquaresArePlaces) {
  for (const char* text : {"36N 500000 0", "36n500000 0", " 36N 500000 0 ", "36N 500000, 0"}) {
    ExpectAt(text, 0, 33000 * Unit);
    EXPECT_EQ(Find(text)->point, nullptr);
    EXPECT_EQ(Find(text)->trail, nullptr);
    EXPECT_EQ(Find(text)->range, nullptr);
  }
  const auto square = Find("36NWF 00000 00000");
  ASSERT_TRUE(square);
  EXPECT_NEAR(square->place.lat * MetersPerDegree, 0.5, 0.01);
  for (const char* text : {"36N 500000", "61N 500000 0", "36N 500000 0 x", "36NWF"}) {
    ExpectNothing(text);
  }
}

TEST_F(Locations, UtmIsAHalfOfTwoPlaces) {
  ExpectAt("Camp, 36N 500000 0", 0, 16500 * Unit, 10);
  ExpectAt("36N 500000 0, Camp", 0, 16500 * Unit, 10);
  ExpectAt("36N 500000, 0, Camp", 0, 16500 * Unit, 10);
  ExpectAt("36N 500000 0, 37N 500000 0", 0, 36000 * Unit);
  ExpectNothing("36N 500000 0, Nowhere");
  ExpectNothing("36N 500000 0, Unplaced");
}

/// What meant something before UTM was read must mean the same: names win, also those that hold a
/// UTM text in one half.
TEST_F(Locations, NamesBeatUtm) {
  Map& named = Open(
      "T\t36N 500000 1\nG\t36N 500000 0\tN0.02\tE0.03\n"
      "T\tWalk\nG\tCamp\tN0\tE0\nG\tA, 36N 500000 3\tN0.05\tE0\nP\t36N 500000 2\n"
      "T\t\tOru\tUlo\t2003-5-31\nG\t0900\tN0.06\tE0.07\nR\tCamp, 36N 500000 4\nK\tOru\n");
  const auto lat = [&](const char* text) {
    const auto found = ResolveLocation(named, text);
    return found ? found->place.lat : -1;
  };
  EXPECT_NEAR(lat("36N 500000 0"), 0.02, 1e-9);
  EXPECT_NEAR(lat("36n 500000 0"), 0.02, 1e-9);
  EXPECT_NEAR(lat("36N 500000 1"), 0.02, 1e-9) << "a trail";
  EXPECT_EQ(lat("36N 500000 2"), -1) << "a point without a place stays without one";
  EXPECT_NEAR(lat("A, 36N 500000 3"), 0.05, 1e-9);
  EXPECT_NEAR(lat("Camp, 36N 500000 4"), 0.06, 1e-9) << "a range, though both halves are places";
  EXPECT_NEAR(lat("36N 500000 0, Camp"), 0.01, 1e-9);
}

}  // namespace
}  // namespace orvane
