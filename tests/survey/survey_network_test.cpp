#include "survey/survey_network.h"

#include "survey/residuals.h"
#include "survey_fixture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

struct SurveyNetworks : test::SurveyFixture {
  /// The parts of a map with one region.
  std::vector<NetworkPart> Parts(std::string_view text) {
    SurveyNetwork network = BuildSurveyNetwork(Open(text));
    EXPECT_EQ(network.regions.size(), 1U);
    return network.regions.empty() ? std::vector<NetworkPart>() : network.regions[0].parts;
  }
  static double Error(const NetworkPart& part) {
    return SizeOfError(part.north, part.east, part.up);
  }
};

/// A square of 100 m with a fix at A; the last leg is 8 m too long. Its four legs are one chain.
TEST_F(SurveyNetworks, ALoopHasItsWholeClosingErrorAgainstTheRest) {
  const auto parts = Parts(
      "T\nG\tA\tN0\tE0\nC\tB\tA\t100\t180\nC\tC\tB\t100\t270\nC\tD\tC\t100\t0\nC\tA\tD\t108\t90\n");
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_FALSE(parts[0].isFix);
  EXPECT_EQ(parts[0].readings.size(), 4U);
  EXPECT_NEAR(parts[0].length, 408, 1e-9);
  EXPECT_NEAR(Error(parts[0]), 8, 1e-9);
  EXPECT_TRUE(parts[1].isFix);
  EXPECT_FALSE(parts[1].north) << "nothing else says where the map is";
}

/// In a loop of k chains the solved chain has a k-th of the error; left out it has all of it.
TEST_F(SurveyNetworks, AChainOfALoopOfThreeHasThreeTimesItsSolvedError) {
  Map& map = Open(
      "T\nG\tA\tN0\tE0\nC\tB\tA\t100\t180\nC\tC\tB\t100\t270\nC\tA\tC\t150\t45\n"
      "C\tX\tB\t10\t0\nC\tX\tC\t50\t300\nC\tX\tA\t1000\t1\n"
      "T\nG\tP\tN1\tE1\nC\tQ\tP\t100\t180\nC\tR\tQ\t100\t270\nC\tP\tR\t150\t45\n"
      "A\tQ\t5\nA\tR\t5\n");
  const SurveyNetwork network = BuildSurveyNetwork(map);
  ASSERT_EQ(network.regions.size(), 2U);
  std::vector<double> solved;
  for (const ClosedChain& chain : map.closedChains) {
    if (chain.from->name == "P" || chain.from->name == "Q" || chain.from->name == "R") {
      solved.push_back(std::hypot(chain.north, chain.east));
    }
  }
  ASSERT_EQ(solved.size(), 3U);
  for (const NetworkRegion& region : network.regions) {
    const bool isTriangle = region.junctions == 3;
    if (!isTriangle) continue;
    size_t i = 0;
    for (const NetworkPart& part : region.parts) {
      if (part.isFix) continue;
      EXPECT_NEAR(std::hypot(*part.north, *part.east), 3 * solved[i], 1e-3);
      ++i;
    }
    EXPECT_EQ(i, 3U);
  }
}

/// What the rest says of a part does not depend on what the part says.
TEST_F(SurveyNetworks, ErrorsAreAgainstTheSurveyWithoutThePart) {
  SurveyNetwork network =
      BuildSurveyNetwork(Open("T\nG\tA\tN0\tE0\t10\nG\tC\tN0.001\tE0.001\t20\n"
                              "C\tB\tA\t111\t180\t-3\nC\tC\tB\t108\t272\t2\nC\tD\tA\t113\t271\t-5\n"
                              "C\tC\tD\t110\t181\t1\nC\tD\tB\t160\t316\t4\n"));
  ASSERT_EQ(network.regions.size(), 1U);
  NetworkRegion& region = network.regions[0];
  ASSERT_EQ(region.parts.size(), 7U);
  for (size_t i = 0; i < region.parts.size(); ++i) {
    const NetworkPart part = region.parts[i];
    region.parts[i].says = {};
    MeasureRegion(region);
    EXPECT_NEAR(*part.north, part.says.north + *region.parts[i].north, 1e-9);
    EXPECT_NEAR(*part.east, part.says.east + *region.parts[i].east, 1e-9);
    EXPECT_NEAR(*part.up, part.says.up + *region.parts[i].up, 1e-9);
    region.parts[i].says = part.says;
    MeasureRegion(region);
  }
}

TEST_F(SurveyNetworks, DeadEndsAndBridgesAreNotChecked) {
  // A loop at C hangs on a bridge from A; E is a dead end.
  const SurveyNetwork network = BuildSurveyNetwork(Open(
      "T\nG\tA\tN0\tE0\nC\tC\tA\t50\t180\nC\tD\tC\t10\t180\nC\tF\tD\t10\t270\nC\tC\tF\t14\t45\n"
      "C\tE\tC\t9\t33\nC\tG\tE\t9\t33\n"));
  ASSERT_EQ(network.regions.size(), 1U);
  ASSERT_EQ(network.deadEnds.size(), 2U);
  EXPECT_EQ(network.deadEnds[0].point->name, "E");
  EXPECT_EQ(network.deadEnds[1].point->name, "G");
  int bridges = 0;
  for (const NetworkPart& part : network.regions[0].parts) {
    if (part.isFix || part.start == part.end) continue;
    ++bridges;
    EXPECT_FALSE(part.north);
    EXPECT_FALSE(part.up);
  }
  EXPECT_EQ(bridges, 1);
}

TEST_F(SurveyNetworks, ARegionWithoutAFixOrJunctionIsMeasuredToo) {
  const auto parts =
      Parts("T\nC\tB\tA\t100\t180\nC\tC\tB\t100\t270\nC\tD\tC\t100\t0\nC\tA\tD\t108\t90\n");
  ASSERT_EQ(parts.size(), 1U);
  EXPECT_NEAR(Error(parts[0]), 8, 1e-9);
}

TEST_F(SurveyNetworks, ShotsOfOnePairAreAveragedByTheirCounts) {
  const auto parts = Parts(
      "T\nG\tA\tN0\tE0\nC\tB\tA\t100\t180\t0\t\t3\nC\tA\tB\t104\t0\t0\t\t1\nC\tB\tA\t90\t180\t0\t\t"
      "4\n"
      "G\tB\tN0.001\tE0\n");
  ASSERT_EQ(parts.size(), 3U);
  EXPECT_EQ(parts[0].readings.size(), 3U);
  double shares = 0;
  for (const NetworkReading& reading : parts[0].readings) shares += std::abs(reading.share);
  EXPECT_NEAR(shares, 1, 1e-12);
  EXPECT_NEAR(parts[0].length, (300 + 104 + 360) / 8.0, 1e-9);
}

TEST_F(SurveyNetworks, SomeFixesWithAltitudesAndSomeWithoutAreMixed) {
  const auto mixed = [&](std::string_view text) {
    return BuildSurveyNetwork(Open(text)).regions[0].mixedAltitudes;
  };
  EXPECT_TRUE(mixed("T\nG\tA\tN0\tE0\t10\nG\tB\tN0.001\tE0\nC\tB\tA\t111\t180\n"));
  EXPECT_FALSE(mixed("T\nG\tA\tN0\tE0\t10\nG\tB\tN0.001\tE0\t11\nC\tB\tA\t111\t180\n"));
  EXPECT_FALSE(mixed("T\nG\tA\tN0\tE0\nG\tB\tN0.001\tE0\nC\tB\tA\t111\t180\n"));
}

TEST_F(SurveyNetworks, AShotAtThePointOfABasisIsHeldThere) {
  Map& basis = Open("T\nG\tK\tN0\tE0\nG\tL\tN0.001\tE0\n", "basis.map");
  Map& map = MakeMap(workspace, "top.map");
  map.basis = &basis;
  ReadMapText(map, "T\nC\tM\tK\t50\t180\nC\tL\tM\t70\t180\n");
  FinishMap(map);
  const SurveyNetwork network = BuildSurveyNetwork(map);
  ASSERT_EQ(network.regions.size(), 1U);
  const auto& parts = network.regions[0].parts;
  ASSERT_EQ(parts.size(), 3U);
  EXPECT_NEAR(std::abs(*parts[0].north), 120 - 111.12, 1e-6);
}

TEST_F(SurveyNetworks, TheMapStaysAsItWas) {
  Map& map = Open("T\nG\tA\tN0\tE0\nC\tB\tA\t100\t180\nC\tC\tB\t100\t270\nC\tA\tC\t150\t45\n");
  std::vector<LatLon> before;
  for (const Point& point : map.pointStore) before.push_back(point.geo);
  BuildSurveyNetwork(map);
  Solve(map);
  size_t i = 0;
  for (const Point& point : map.pointStore) EXPECT_EQ(point.geo, before[i++]);
}

}  // namespace
}  // namespace orvane
