#include "survey/regions.h"

#include "survey_fixture.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

struct Regions : test::SurveyFixture {
  LinkStore store;

  Region RegionOf(std::string_view text, std::string_view start) {
    Map& map = Read(text);
    BuildLinks(map, store);
    return FindRegion(map, Named(map, start));
  }
  static Texts JunctionNames(const Region& region) {
    Texts names;
    for (const Point* point : region.junctions) names.push_back(point->name);
    return names;
  }
  static Texts ChainNames(const Region& region) {
    Texts names;
    for (const Chain& chain : region.chains) {
      names.push_back(chain.start->name + "-" + chain.end->name);
    }
    return names;
  }
};

//   A---b---C---d---e        A has a fix, C three shots, F an altitude; b, d, e, g none of these
//           |
//           g---F
constexpr std::string_view Fork =
    "T\tW\nG\tA\tN0\tE0\nC\tb\tA\t10\t180\nC\tC\tb\t10\t180\nC\td\tC\t10\t180\n"
    "C\te\td\t10\t180\nC\tg\tC\t5\t270\nC\tF\tg\t5\t270\t-30\nA\tF\t50\n";

TEST_F(Regions, AreJunctionsAndTheChainsBetweenThem) {
  const Region region = RegionOf(Fork, "A");
  Texts junctions = JunctionNames(region);
  EXPECT_EQ(junctions.back(), "A");  // last found first
  std::sort(junctions.begin(), junctions.end());
  EXPECT_EQ(junctions, (Texts{"A", "C", "F"}));
  EXPECT_EQ(region.chains.size(), 2U);  // the dead end d, e is none
}

TEST_F(Regions, ListJunctionsAsTheyAreFoundLastFirst) {
  EXPECT_EQ(JunctionNames(RegionOf("T\tW\nA\tA\t1\nC\tB\tA\t1\t0\nA\tB\t1\nC\tD\tB\t1\t0\n"
                                   "A\tD\t1\nC\tE\tB\t1\t0\nA\tE\t1\n",
                                   "A")),
            (Texts{"D", "E", "B", "A"}));
}

TEST_F(Regions, SumTheStepsOfAChainFromItsStartToItsEnd) {
  const Region region = RegionOf(Fork, "A");
  for (const Chain& chain : region.chains) {
    const bool toFork = chain.start->name == "A" || chain.end->name == "A";
    const double sign = chain.start->name == "C" ? 1 : -1;  // seen from the fork
    EXPECT_NEAR(chain.north * sign, toFork ? -20 : 0, 1e-5);
    EXPECT_NEAR(chain.east * sign, toFork ? 0 : 5 + 5 * std::cos(30 * RadiansPerDegree), 1e-5);
    EXPECT_NEAR(static_cast<double>(chain.altitude) * sign, toFork ? 0 : 2.5, 1e-5);
    EXPECT_DOUBLE_EQ(chain.length, toFork ? 20 : 10);
  }
}

TEST_F(Regions, ALoopAtOneJunctionIsAChainFromItToItself) {
  const Region region =
      RegionOf("T\tW\nG\tA\tN0\tE0\nC\tB\tA\t10\t180\nC\tD\tB\t10\t300\nC\tA\tD\t10\t60\n", "A");
  EXPECT_EQ(JunctionNames(region), (Texts{"A"}));
  EXPECT_EQ(ChainNames(region), (Texts{"A-A"}));
}

TEST_F(Regions, APlainLoopHasNoJunction) {
  const Region region =
      RegionOf("T\tW\nP\tA\nC\tB\tA\t10\t180\nC\tD\tB\t10\t300\nC\tA\tD\t10\t60\n", "A");
  EXPECT_TRUE(region.junctions.empty());
  EXPECT_TRUE(region.chains.empty());
}

using SolvedRegions = test::SurveyFixture;

TEST_F(SolvedRegions, OneJunctionHasAllWalkedOutFromIt) {
  const Map& map =
      Open("T\tW\nC\tB\tA\t10\t180\nC\tD\tB\t20\t270\t-30\nG\tA\tN0\tE0\t100\nC\tE\tA\t5\t0\n");
  ExpectAt(map, "A", 0, 0);
  ExpectAt(map, "B", 10, 0);
  ExpectAt(map, "D", 10, 20 * std::cos(30 * RadiansPerDegree));
  ExpectAt(map, "E", -5, 0);
  ExpectAltitude(map, "D", 110);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(SolvedRegions, WithoutAFixWarnOnceAndAreAroundZero) {
  const Map& map = Open("T\tW\nC\tB\tA\t10\t180\nC\tD\tB\t10\t180\nC\tE\tB\t10\t270\n");
  EXPECT_EQ(Said(), (Texts{"No absolute position found for connected region containing B in "
                           "test.map"}));  // the one junction
  ExpectAt(map, "B", 0, 0);
  ExpectAt(map, "A", -10, 0);
  ExpectAt(map, "D", 10, 0);
  ExpectAt(map, "E", 0, 10);
  EXPECT_FALSE(HasAltitude(Named(map, "B").geo.altitude));
}

TEST_F(SolvedRegions, WithoutJunctionStartAtThePointThatWasMetFirst) {
  const Map& map = Open("T\tW\nP\tB\nC\tB\tA\t10\t180\n");
  EXPECT_EQ(Said(), (Texts{"No absolute position found for connected region containing B in "
                           "test.map"}));
  ExpectAt(map, "A", -10, 0);
}

TEST_F(SolvedRegions, CallAPointWithoutNameNameless) {
  Open("T\tW\nC\t\tA\t10\t180\n");
  EXPECT_EQ(Said(), (Texts{"No absolute position found for connected region containing "
                           "<nameless point> in test.map"}));
}

TEST_F(SolvedRegions, EachWithoutAFixWarns) {
  Open("T\tW\nC\tA\tB\t10\t180\nT\tV\nC\tD\tE\t10\t180\n");
  EXPECT_EQ(Said().size(), 2U);
}

//   B---C    100 m to a side, but the last leg was measured 90: 10 metres too many in the east are
//   |   |    shared by 390 metres of leg
//   A-<-D
constexpr std::string_view Square =
    "C\tB\tA\t100\t180\nC\tC\tB\t100\t270\nC\tD\tC\t100\t0\nC\tA\tD\t90\t90\n";

void ExpectClosedSquare(const Map& map) {
  test::SurveyFixture::ExpectAt(map, "A", 0, 0);
  test::SurveyFixture::ExpectAt(map, "B", 100, -1000.0 / 390);
  test::SurveyFixture::ExpectAt(map, "C", 100, 100 - 2000.0 / 390);
  test::SurveyFixture::ExpectAt(map, "D", 0, 100 - 3000.0 / 390);
}

TEST_F(SolvedRegions, ALoopWithOneFixCloses) {
  ExpectClosedSquare(Open("T\tW\nG\tA\tN0\tE0\n" + std::string(Square)));
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(SolvedRegions, ALoopWithoutAFixStaysOpenUntilItIsSolvedAgain) {
  Map& map = Open("T\tW\nP\tA\n" + std::string(Square));
  EXPECT_EQ(Said().size(), 1U);
  EXPECT_NEAR(At(map, "A").north, 0, 1e-9);
  const double open = At(map, "D").east;  // walked out from one side
  EXPECT_TRUE(std::abs(open - 90) < 1e-4 || std::abs(open - 100) < 1e-4) << open;
  // The weight that the warning left makes A a fix from now on.
  messages.Clear();
  Solve(map);
  EXPECT_EQ(Said(), Texts{});
  ExpectClosedSquare(map);
}

TEST_F(SolvedRegions, TwoFixesAndTheirChainShareTheMisfit) {
  // 120 m apart by the fixes and 135 m by the legs: each equation gives 5 m.
  const Map& map =
      Open("T\tW\nG\tA\tN0\tE0\nC\tB\tA\t90\t180\nC\tD\tB\t45\t180\nG\tD\tN0 0.0647948'\tE0\n");
  const double apart = 0.0647948 / 60 * MetersPerDegree;
  const double share = (135 - apart) / 3;
  ExpectAt(map, "A", -share, 0);
  ExpectAt(map, "D", apart + share, 0);
  ExpectAt(map, "B", -share + 90.0 - 90 * share / 135, 0);  // its share by length
}

TEST_F(SolvedRegions, DeadEndsTakeNoCorrection) {
  const Map& map = Open(
      "T\tW\nG\tA\tN0\tE0\nC\tD\tA\t135\t180\nG\tD\tN0 0.0647948'\tE0\nC\tE\tD\t50\t270\n"
      "C\tF\tE\t50\t270\n");
  EXPECT_NEAR(At(map, "F").north, At(map, "D").north, 1e-4);
  EXPECT_NEAR(At(map, "E").east, 50, 1e-4);
  EXPECT_NEAR(At(map, "F").east, 100, 1e-4);
}

TEST_F(SolvedRegions, ALoopPullsItsOneJunctionTowardsItsMisclosure) {
  // The equation of a chain that ends where it began only has the +1 of its end.
  const Map& map = Open(
      "T\tW\nG\tA\tN0\tE0\nC\tJ\tA\t50\t180\nC\tK\tJ\t30\t180\nC\tL\tK\t30\t300\n"
      "C\tJ\tL\t30\t60\n");
  // North: A = 0, J - A = 50, J = the misclosure, which is 0 here: J at a third of the sum.
  EXPECT_NEAR(At(map, "A").north, -50.0 / 3, 1e-4);
  EXPECT_NEAR(At(map, "J").north, 50.0 / 3, 1e-4);
}

TEST_F(SolvedRegions, AltitudesAreSolvedWithPlacesWhereTheyComeTogether) {
  const Map& map = Open(
      "T\tW\nG\tA\tN0\tE0\t100\nC\tB\tA\t20\t180\t-30\nC\tD\tB\t20\t180\t-30\n"
      "G\tD\tN0 0.01870428'\tE0\t126\n");
  // 26 m apart by the readings and 20 by the legs: 2 m each.
  ExpectAltitude(map, "A", 102);
  ExpectAltitude(map, "D", 124);
  ExpectAltitude(map, "B", 113);
}

TEST_F(SolvedRegions, OnesOfTheFixesStayInTheRowsOfTheAltitudes) {
  // The one altitude takes the row of the one fix, whose 1 stays: A + D = 100, D - A = 10.
  const Map& map = Open("T\tW\nG\tA\tN0\tE0\nC\tD\tA\t20\t180\t-30\nA\tD\t100\n");
  ExpectAltitude(map, "A", 45);
  ExpectAltitude(map, "D", 55);
}

TEST_F(SolvedRegions, MoreAltitudesThanFixesGetRowsOfTheirOwn) {
  // Junctions are listed E, D, A. Rows: E + A = 90 (the fix's row), D = 200; E - D = 0, D - A = 0.
  const Map& map =
      Open("T\tW\nG\tA\tN0\tE0\nC\tD\tA\t20\t180\nC\tE\tD\t20\t180\nA\tE\t90\nA\tD\t200\n");
  // Least squares of z_e + z_a = 90, z_d = 200, z_e = z_d, z_d = z_a.
  ExpectAltitude(map, "A", 470.0 / 7);
  ExpectAltitude(map, "E", 470.0 / 7);
  ExpectAltitude(map, "D", 780.0 / 7);
}

TEST_F(SolvedRegions, WithoutAltitudesHaveNone) {
  const Map& map =
      Open("T\tW\nG\tA\tN0\tE0\nC\tD\tA\t20\t180\t-30\nG\tD\tN0 0.01'\tE0\nC\tE\tD\t9\t0\n");
  for (const char* name : {"A", "D", "E"}) {
    EXPECT_FALSE(HasAltitude(Named(map, name).geo.altitude)) << name;
  }
}

TEST_F(SolvedRegions, ChainsAcrossLongitudesFarFromZeroKeepTheirShape) {
  const Map& map =
      Open("T\tW\nG\tA\tN60\tE22\nC\tB\tA\t100\t180\nC\tD\tB\t100\t270\nC\tE\tD\t100\t0\n");
  const LatLon& a = Named(map, "A").geo;
  Meters step;
  DisplacementBetween(a, Named(map, "E").geo, step);
  EXPECT_NEAR(step.north, 0, 1e-6);
  EXPECT_NEAR(step.east, 100, 0.01);
}

TEST_F(SolvedRegions, ProjectEveryPointInTheEnd) {
  const Map& map = Open("T\tW\nG\tA\tN1\tE2\nC\tB\tA\t100\t180\n");
  EXPECT_EQ(Named(map, "B").projected.north, Named(map, "B").geo.lat * MetersPerDegree);
  EXPECT_FALSE(HasAltitude(Named(map, "B").projected.altitude));
}

}  // namespace
}  // namespace orvane
