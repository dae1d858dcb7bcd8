#include "survey_fixture.h"

#include <cmath>

namespace orvane {
namespace {

using Strays = test::SurveyFixture;

constexpr std::string_view TwoFixes = "T\tW\nG\tA\tN0\tE0\t10\nG\tB\tN0\tE0.01\n";
constexpr double Side = 0.01 * MetersPerDegree;

std::string WithFixes(std::string_view text) { return std::string(TwoFixes) + std::string(text); }

TEST_F(Strays, TwoBearingsCrossAtAPlaceWithoutAltitude) {
  // P sees A in the south-west and B in the south-east.
  const Map& map = Open(WithFixes("C\tP\tA\t0\t225\nC\tP\tB\t0\t135\n"));
  ExpectAt(map, "P", Side / 2, Side / 2);
  EXPECT_FALSE(HasAltitude(Named(map, "P").geo.altitude));
  EXPECT_NEAR(Named(map, "P").projected.north, Side / 2, 1e-4);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Strays, BearingsTakenFromTheFixesCrossAsWell) {
  const Map& map = Open(WithFixes("C\tA\tP\t0\t45\nC\tB\tP\t0\t315\n"));
  ExpectAt(map, "P", Side / 2, Side / 2);
}

TEST_F(Strays, ABearingOfZeroHasASteepSlopeAndIsUsedAsItIs) {
  const Map& map = Open(WithFixes("C\tP\tA\t0\ta0\nC\tP\tB\t0\t45\n"));
  ExpectAt(map, "P", -Side, 0, 1e-2);
}

TEST_F(Strays, EveryPairOfBearingsCountsOnce) {
  // Three lines that do not meet in one point: the mean of their three crossings. In degrees:
  //   A: n = e    B: n = 0.01 - e    D: n = 2 e + 0.002
  const Map& map = Open(
      "T\tW\nG\tA\tN0\tE0\nG\tB\tN0\tE0.01\nG\tD\tN0.01\tE0.004\n"
      "C\tP\tA\t0\t225\nC\tP\tB\t0\t135\nC\tP\tD\t0\t26.5650512\n");
  ExpectAt(map, "P", (0.005 - 0.002 + 0.022 / 3) / 3 * MetersPerDegree,
           (0.005 - 0.002 + 0.008 / 3) / 3 * MetersPerDegree, 0.05);
}

TEST_F(Strays, OneBearingIsNotEnough) {
  const Map& map = Open(WithFixes("C\tP\tA\t0\t225\n"));
  EXPECT_FALSE(Placed(map, "P"));
  EXPECT_EQ(Said(), (Texts{"No position found for point P"}));
}

TEST_F(Strays, ParallelBearingsCrossNowhere) {
  const Map& map = Open(WithFixes("C\tP\tA\t0\t30\nC\tP\tB\t0\t30\n"));
  EXPECT_FALSE(Placed(map, "P"));
  EXPECT_EQ(Said(), (Texts{"No position found for point P"}));
}

TEST_F(Strays, AnUnknownPointInViewIsCrossedFirst) {
  // Q comes after P in the list, and P sees it and A.
  const Map& map =
      Open(WithFixes("C\tP\tA\t0\t200\nC\tP\tQ\t0\t100\nC\tQ\tA\t0\t225\nC\tQ\tB\t0\t135\n"));
  ExpectAt(map, "Q", Side / 2, Side / 2);
  EXPECT_TRUE(Placed(map, "P"));
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Strays, TwoPointsThatAreEachOthersOnlyWayStayUnknown) {
  const Map& map = Open(WithFixes("C\tP\tA\t0\t225\nC\tQ\tB\t0\t135\nC\tP\tQ\t0\t90\n"));
  EXPECT_FALSE(Placed(map, "P"));
  EXPECT_FALSE(Placed(map, "Q"));
  EXPECT_EQ(Said(), (Texts{"No position found for point P", "No position found for point Q"}));
}

TEST_F(Strays, RaysKeepTheirMeanFromSolveToSolve) {
  Map& map = Open(
      "T\tW\nP\tP\nG\tA\tN0\tE0\nG\tB\tN0\tE0.01\n"
      "C\tP\tA\t0\t225\nC\tP\tB\t0\t135\n");
  Point& p = Named(map, "P");
  const auto bearingToB = [&] { return LinkTo(p.rays, Named(map, "B"))->bearing; };
  EXPECT_FLOAT_EQ(bearingToB(), 135);
  p.measurements.front().bearing = 105;  // the shot to B, edited
  Solve(map);
  EXPECT_FLOAT_EQ(bearingToB(), (135.0F + 105.0F) / 2);
  Solve(map);  // the mean counts once, whatever the number of its readings
  EXPECT_FLOAT_EQ(bearingToB(), (120.0F + 105.0F) / 3);
}

TEST_F(Strays, ANearNameGivesItsPlaceAndAltitude) {
  const Map& map = Open(WithFixes("N\tP\ta\nN\tQ\tA, B\nN\tR\t100m north of A\n"));
  ExpectAt(map, "P", 0, 0);
  ExpectAltitude(map, "P", 10);
  ExpectAt(map, "Q", 0, Side / 2);
  ExpectAt(map, "R", 100, 0);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Strays, OnlyTheNewestReadingMayBeANearName) {
  const Map& map = Open(WithFixes("N\tP\tA\nA\tP\t50\nA\tQ\t50\nN\tQ\tA\n"));
  EXPECT_FALSE(Placed(map, "P"));
  EXPECT_TRUE(Placed(map, "Q"));
  EXPECT_EQ(Said(), (Texts{"No position found for point P"}));
}

TEST_F(Strays, NearNamesThatLeadOnAreFollowedInSeveralPasses) {
  const Map& map = Open(WithFixes("N\tP\tQ\nN\tQ\tR\nN\tR\tB\n"));
  for (const char* name : {"P", "Q", "R"}) ExpectAt(map, name, 0, Side);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Strays, NearNamesInACircleStayUnknown) {
  Open(WithFixes("N\tP\tQ\nN\tQ\tP\nN\tS\tS\nN\tT\tnowhere\n"));
  EXPECT_EQ(Said(), (Texts{"No position found for point P", "No position found for point Q",
                           "No position found for point S", "No position found for point T"}));
}

TEST_F(Strays, AFailureIsTriedAgainWhenAnotherGainsAPlace) {
  // P needs Q, which a near name places only after P was tried.
  const Map& map = Open(WithFixes("C\tP\tA\t0\t225\nC\tP\tQ\t0\t135\nN\tQ\tB\n"));
  ExpectAt(map, "P", Side / 2, Side / 2);
}

TEST_F(Strays, WarnInTheOrderOfTheVisitsAndOnceEach) {
  Open("T\tW\nP\tX\nP\tY\nP\tX\nT\tV\nP\tZ\nP\tY\n");
  EXPECT_EQ(Said(), (Texts{"No position found for point X", "No position found for point Y",
                           "No position found for point Z"}));
}

TEST_F(Strays, ATieTakesThePlaceOfItsBase) {
  const Map& map = Open(WithFixes("C\tP\tA\t0\t0\t0\nC\tQ\tP\t0\t0\n"));
  ExpectAt(map, "P", 0, 0);
  ExpectAltitude(map, "P", 10);
  ExpectAt(map, "Q", 0, 0);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Strays, ATieKeepsTheAltitudeOfItsOwnReadings) {
  const Map& map = Open(WithFixes("C\tP\tA\t0\t0\t0\t77\n"));
  ExpectAltitude(map, "P", 77);
}

TEST_F(Strays, TheNewestTieDecides) {
  const Map& map = Open(WithFixes("C\tP\tA\t0\t0\nC\tP\tB\t0\t0\n"));
  ExpectAt(map, "P", 0, Side);
}

TEST_F(Strays, ABearingIsNotATie) {
  Open(WithFixes("C\tP\tA\t0\t1\nC\tQ\tA\t0\ta0\nC\tR\tA\t0\t0\t5\n"));
  EXPECT_EQ(Said(), (Texts{"No position found for point P", "No position found for point Q",
                           "No position found for point R"}));
}

TEST_F(Strays, ATieToAPointWithoutPlaceGivesNone) {
  Open(WithFixes("P\tX\nC\tP\tX\t0\t0\n"));
  EXPECT_EQ(Said(), (Texts{"No position found for point X", "No position found for point P"}));
}

using Sums = test::SurveyFixture;

TEST_F(Sums, ASingleFixWithoutShotsIsAWeightedMean) {
  Map& map = Open("T\tW\nG\tA\tN0\tE0\t100\nG\tA\tN0.004\tE0.008\t200\t3\n");
  // Opened without the solver, all fixes count alike.
  EXPECT_NEAR(Named(map, "A").geo.lat, 0.002, 1e-12);
  ExpectAltitude(map, "A", 150);
  Solve(map);
  EXPECT_NEAR(Named(map, "A").geo.lat, 0.003, 1e-12);
  EXPECT_NEAR(Named(map, "A").geo.lon, 0.006, 1e-12);
  ExpectAltitude(map, "A", 175);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Sums, AreNeverCleared) {
  Map& map = Open("T\tW\nG\tA\tN0\tE0\nG\tA\tN0.006\tE0\n");
  Solve(map);
  const Point& a = Named(map, "A");
  EXPECT_NEAR(a.geo.lat, 0.003, 1e-12);
  Solve(map);
  EXPECT_EQ(a.positionWeight, 4);
  EXPECT_NEAR(a.geo.lat, 0.003, 1e-12);
  Named(map, "A").measurements.pop_front();  // the fix at 0.006, edited away
  Solve(map);
  EXPECT_EQ(a.positionWeight, 5);
  EXPECT_NEAR(a.geo.lat, 0.012 / 5, 1e-12);
}

TEST_F(Sums, ALaterFixSharesWithTheWeightThatTheWarningLeft) {
  Map& map = Open("T\tW\nC\tA\tB\t10\t0\n");
  EXPECT_EQ(Said().size(), 1U);
  Measurement fix;
  fix.flags = MeasureGps;
  fix.position = {0.004, 0, NoAltitude};
  Named(map, "A").measurements.push_front(fix);
  Solve(map);
  EXPECT_EQ(Said().size(), 1U);
  EXPECT_NEAR(Named(map, "A").geo.lat, 0.002, 1e-12);  // between 0 and the fix
}

using Quick = test::SurveyFixture;

TEST_F(Quick, PlacesComeFromFixesOnly) {
  Map& map = Read("T\tW\nG\tA\tN1\tE2\nA\tA\t30\nL\tB\t3\t4\n");
  EXPECT_FALSE(NeedsSolving(map));
  EXPECT_EQ(Named(map, "A").geo.lat, 1);
  ExpectAltitude(map, "A", 30);
  EXPECT_EQ(Named(map, "A").projected.north, MetersPerDegree);
  EXPECT_EQ(Named(map, "B").geo.lon, 4);
}

TEST_F(Quick, AnyOtherReadingOrNoneNeedsTheSolver) {
  for (const char* text : {"P\tA\n", "A\tA\t5\n", "C\tA\tB\t1\t0\n", "N\tA\tB\n"}) {
    EXPECT_TRUE(NeedsSolving(Read("T\tW\n" + std::string(text)))) << text;
  }
}

TEST_F(Quick, AMapOlderThanItsBasisNeedsTheSolver) {
  Map& basis = Open("", "basis.map");
  Map& map = Read("T\tW\nL\tB\t3\t4\n");
  map.basis = &basis;
  EXPECT_FALSE(NeedsSolving(map));
  basis.date = 1;
  EXPECT_TRUE(NeedsSolving(map));
}

TEST_F(Strays, LongChainsOfNearTextsTakeNoMoreThanAMoment) {
  // Each text was tried again in each pass: 8000 points took 20 s.
  constexpr int Length = 10000;
  for (const std::string_view text : {"P%", "10m north of P%"}) {
    std::string lines = "T\tW\nG\tP0\tN1\tE1\n";
    for (int i = Length; i > 0; --i) {
      std::string near(text);
      near.replace(near.find('%'), 1, std::to_string(i - 1));
      lines += "N\tP" + std::to_string(i) + "\t" + near + "\n";
    }
    for (int i = 0; i < Length; ++i) lines += "P\tLost" + std::to_string(i) + "\n";
    const Map& map = Open(lines);
    EXPECT_TRUE(Placed(map, "P" + std::to_string(Length))) << text;
    EXPECT_EQ(Said().size(), static_cast<size_t>(Length));
    messages = RecordedMessages();
  }
}

/// Places that an `L` line gives. Solving used to clear them all, and a save then wrote `P` lines.
using StoredPlaces = test::SurveyFixture;

TEST_F(StoredPlaces, OfPointsWithoutReadingsOutliveEverySolve) {
  Map& map = Open(
      "T\tW\nL\tA\t3\t4\t55\nG\tFix\tN1\tE1\nC\tNew\tFix\t10\t180\nT\nL\tLoose\t5\t6\nL\t\t7\t8\n");
  for (int turn = 0; turn < 2; ++turn) {
    for (const auto& [name, lat] : {std::pair{"A", 3.0}, {"Loose", 7.0}}) {
      EXPECT_TRUE(Placed(map, name)) << name;
      EXPECT_EQ(Named(map, name).geo.lat, lat);
      EXPECT_EQ(Named(map, name).projected.north, lat * MetersPerDegree);
    }
    ExpectAltitude(map, "A", 55);
    EXPECT_TRUE(Placed(map, "New"));
    Solve(map);
  }
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(StoredPlaces, OutliveABasisWithALaterDate) {
  Map& basis = Open("", "basis.map");
  basis.date = 1;
  Map& map = Read("T\tW\nL\tA\t3\t4\nG\tB\tN1\tE1\n");
  map.basis = &basis;
  FinishMap(map);
  EXPECT_TRUE(Placed(map, "A"));
  EXPECT_EQ(Named(map, "A").geo.lon, 4);
}

TEST_F(StoredPlaces, AreSolvedAgainIfAReadingTouchesThePoint) {
  // A has a reading, B is the base of one: both follow from Fix.
  Map& map =
      Read("T\tW\nG\tFix\tN0\tE0\nC\tA\tFix\t100\t180\nC\tFix\tB\t50\t0\nL\tA\t3\t4\nL\tB\t3\t4\n");
  EXPECT_TRUE(Placed(map, "A"));
  EXPECT_TRUE(Placed(map, "B"));
  ClearOwnPositions(map);
  EXPECT_FALSE(Placed(map, "A"));
  EXPECT_FALSE(Placed(map, "B"));
  SolveMap(map);
  ExpectAt(map, "A", 100, 0);
  ExpectAt(map, "B", 50, 0);
}

TEST_F(StoredPlaces, OfPointsThatOnlyAnUnlistedReadingNamesAreKept) {
  Map& map = Read("T\tW\nL\tA\t3\t4\n");
  Measurement& shot = MakePoint(map, "Nowhere").measurements.emplace_front();
  shot.flags = MeasureCompass;
  shot.base = &Named(map, "A");
  ClearOwnPositions(map);
  EXPECT_TRUE(Placed(map, "A"));
}

}  // namespace
}  // namespace orvane
