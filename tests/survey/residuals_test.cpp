#include "survey/residuals.h"

#include "survey_fixture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

struct Residuals : test::SurveyFixture {
  /// All points that the map made, in that order.
  static std::vector<const Point*> PointsOf(const Map& map) {
    std::vector<const Point*> points;
    for (const Point& point : map.pointStore) points.push_back(&point);
    return points;
  }
  static std::vector<ReadingResidual> Of(const Map& map) {
    return ReadingResiduals(map, PointsOf(map));
  }
  /// The residual of the first reading of that kind of a point.
  static ReadingResidual Of(const Map& map, std::string_view name, ResidualKind kind) {
    for (const ReadingResidual& each : Of(map)) {
      if (each.point == &Named(map, name) && each.kind == kind) return each;
    }
    ADD_FAILURE() << name;
    return {};
  }
};

TEST_F(Residuals, OfAFixAreWhereItIsFromTheMeanOfAll) {
  // Two fixes a hundredth of a minute apart: each is half of that from the mean.
  Map& map =
      Open("T\tW\nG\tA\tN60 0.000'\tE5 0.000'\t100\nG\tA\tN60 0.010'\tE5 0.010'\nC\tB\tA\t10\t0\n");
  const auto residuals = Of(map);
  const ReadingResidual& newest = residuals[0];
  constexpr double Half = 0.005 / 60 * 111120;
  EXPECT_NEAR(*newest.north, Half, 1e-6);
  EXPECT_NEAR(*newest.east, Half * std::cos((60 + 0.005 / 60) * RadiansPerDegree), 1e-6);
  EXPECT_FALSE(newest.up);
  EXPECT_NEAR(*residuals[1].north, -Half, 1e-6);
  EXPECT_NEAR(*residuals[1].up, 0, 1e-6);
  EXPECT_FALSE(newest.percent);
  EXPECT_FALSE(newest.degrees);
  EXPECT_EQ(newest.base, nullptr);
}

TEST_F(Residuals, TakeEastAtTheLatitudeOfThePoint) {
  Map& map = Open("T\tW\nG\tA\tN72\tE0\nG\tA\tN70\tE4\nC\tB\tA\t10\t0\n");
  const auto residuals = Of(map);
  // The fixes are two degrees either side of the mean at N71 E2.
  EXPECT_NEAR(*residuals[0].east, 2 * 111120 * std::cos(71 * RadiansPerDegree), 1e-3);
  EXPECT_NEAR(*residuals[1].east, -2 * 111120 * std::cos(71 * RadiansPerDegree), 1e-3);
}

TEST_F(Residuals, OfALegAreWhatSeparatesItFromTheSolvedPlaces) {
  // B is placed by its own fix as well, 3 m north and 4 m west of where the leg puts it, 12 m lower.
  Map& map =
      Open("T\tW\nL\tA\tN0\tE0\t100\nL\tB\tN0.0009\tE0\t112\nC\tB\tA\t100\t180\n", "legs.map");
  Named(map, "B").geo = {97 / 111120.0, 4 / 111120.0, 88};
  Named(map, "A").geo = {0, 0, 100};
  Named(map, "B").flags |= PointPlaced;
  Named(map, "A").flags |= PointPlaced;
  const ReadingResidual leg = Of(map, "B", ResidualKind::Compass);
  EXPECT_EQ(leg.base, &Named(map, "A"));
  EXPECT_NEAR(*leg.north, 3, 1e-9);
  EXPECT_NEAR(*leg.east, -4, 1e-6);
  EXPECT_NEAR(*leg.up, 12, 1e-6);
  EXPECT_NEAR(leg.meters, 13, 1e-6);
  EXPECT_NEAR(*leg.percent, 13, 1e-6);
  // From B the base is at 180 degrees and a little more, towards the west.
  EXPECT_NEAR(*leg.degrees, -std::atan2(4, 97) / RadiansPerDegree, 1e-6);
}

/// B and its reading of A, both with a place; the reading is the last line.
struct OneShot : Residuals {
  ReadingResidual Read(std::string_view line, std::string_view head = "") {
    Map& map = SurveyFixture::Read(std::string(head) + "T\tW\nG\tA\tN0\tE0\nP\tB\n" +
                                   std::string(line) + "\n");
    Named(map, "A").geo = {0, 0, NoAltitude};
    Named(map, "B").geo = {30 / 111120.0, 40 / 111120.0, NoAltitude};
    for (const char* name : {"A", "B"}) Named(map, name).flags |= PointPlaced;
    const auto residuals = Of(map);
    return residuals.empty() ? ReadingResidual{} : residuals.back();
  }
};

TEST_F(OneShot, AddsTheDeviationUnlessTheBearingIsAbsolute) {
  const double solved = 180 + std::atan2(40, 30) / RadiansPerDegree;
  EXPECT_NEAR(*Read("C\tB\tA\t50\t200", "M\t10\n").degrees, 210 - solved, 1e-9);
  EXPECT_NEAR(*Read("C\tB\tA\t50\tA200", "M\t10\n").degrees, 200 - solved, 1e-9);
}

TEST_F(OneShot, TurnsTheShortWay) {
  const double solved = 180 + std::atan2(40, 30) / RadiansPerDegree;  // 233
  EXPECT_NEAR(*Read("C\tB\tA\t50\t20").degrees, 20 - solved + 360, 1e-9);
}

TEST_F(OneShot, WithoutADistanceIsAsLongAsTheSolvedLeg) {
  const ReadingResidual shot = Read("C\tB\tA\t0\t270");
  EXPECT_NEAR(*shot.north, -30, 1e-6);  // 50 m east of A
  EXPECT_NEAR(*shot.east, 10, 1e-6);
  EXPECT_FALSE(shot.up);
  EXPECT_FALSE(shot.percent);
  EXPECT_TRUE(shot.degrees);
}

TEST_F(OneShot, OfZerosSaysThatBothAreInOnePlace) {
  const ReadingResidual tie = Read("C\tB\tA\t0\t0");
  EXPECT_NEAR(*tie.north, -30, 1e-9);
  EXPECT_NEAR(*tie.east, -40, 1e-9);
  EXPECT_FALSE(tie.degrees);
  EXPECT_TRUE(Read("C\tB\tA\t0\tA0").degrees);
}

TEST_F(OneShot, StraightDownHasNoBearing) {
  const ReadingResidual shaft = Read("C\tB\tA\t50\t10\t-90");
  EXPECT_FALSE(shaft.degrees);
  EXPECT_NEAR(*shaft.north, -30, 1e-6);
}

TEST_F(Residuals, OfAltitudesHaveARowOfTheirOwn) {
  Map& map = Open("T\tW\nG\tA\tN0\tE0\t100\nC\tB\tA\t10\t0\t0\t97\nA\tB\t106\n");
  EXPECT_TRUE(HasAltitude(Named(map, "B").geo.altitude));
  const double solved = double{Named(map, "B").geo.altitude};
  const auto residuals = Of(map);
  std::vector<double> altitudes;
  for (size_t i = 0; i < residuals.size(); ++i) {
    if (residuals[i].kind != ResidualKind::Altitude) continue;
    EXPECT_FALSE(residuals[i].north);
    EXPECT_FALSE(residuals[i].percent);
    EXPECT_EQ(residuals[i].base, nullptr);
    EXPECT_EQ(residuals[i].meters, std::abs(*residuals[i].up));
    altitudes.push_back(*residuals[i].up);
    // That of the shot comes right after the shot.
    if (residuals[i].reading->base != nullptr) {
      EXPECT_EQ(residuals[i - 1].reading, residuals[i].reading);
    }
  }
  EXPECT_EQ(altitudes, (std::vector<double>{106 - solved, 97 - solved}));
}

TEST_F(Residuals, LeaveOutWhatHasNoPlace) {
  // C has no place, B is shot at from itself, D is near a place; only A has a row.
  Map& map = Open("T\tW\nG\tA\tN0\tE0\nC\tB\tC\t10\t0\nC\tB\tB\t10\t0\nN\tD\tA\n");
  for (const ReadingResidual& each : Of(map)) {
    EXPECT_TRUE(IsPlaced(*each.point));
    EXPECT_NE(each.base, each.point);
    EXPECT_EQ(each.reading->flags & MeasureNear, 0U);
  }
}

TEST_F(Residuals, OfABasisAreItsOwn) {
  Map& basis = Open("T\tW\nG\tA\tN0\tE0\nC\tB\tA\t10\t0\n", "basis.map");
  Map& map = Open("T\tV\nG\tX\tN1\tE1\n");
  std::vector<const Point*> points = PointsOf(basis);
  EXPECT_TRUE(ReadingResiduals(map, points).empty());
  // Unless a reading of the basis has a point of the map as its base.
  Named(basis, "B").measurements.front().base = &Named(map, "X");
  ASSERT_EQ(ReadingResiduals(map, points).size(), 1U);
}

struct ClosedChains : test::SurveyFixture {};

TEST_F(ClosedChains, HaveTheErrorBeforeItIsSpread) {
  // A square of 100 m that ends 6 m too far east and 8 m too far north.
  Map& map = Open(
      "T\tW\nG\tA\tN0\tE0\nC\tb\tA\t108\t180\nC\tc\tb\t100\t270\nC\td\tc\t100\t0\n"
      "C\tA\td\t94\t90\n");
  ASSERT_EQ(map.closedChains.size(), 1U);
  const ClosedChain& chain = map.closedChains[0];
  EXPECT_EQ(chain.from, &Named(map, "A"));
  EXPECT_EQ(chain.to, &Named(map, "A"));
  EXPECT_EQ(chain.legs, 4);
  EXPECT_NEAR(chain.length, 402, 1e-4);
  // Walked the one way or the other.
  EXPECT_NEAR(std::abs(chain.north), 8, 1e-3);
  EXPECT_NEAR(std::abs(chain.east), 6, 1e-3);
  EXPECT_GT(chain.north * chain.east, 0);
  EXPECT_FALSE(chain.up);
}

TEST_F(ClosedChains, OfTwoFixesSayWhereTheChainEnds) {
  // The chain is 10 m too short: the least squares leave a third of it in the chain.
  Map& map = Open(
      "T\tW\nG\tA\tN0\tE0\t50\nG\tC\tN0 0.06\tE0\t50\nC\tb\tA\t50\t180\nC\tC\tb\t51.12\t180\n");
  ASSERT_EQ(map.closedChains.size(), 1U);
  const ClosedChain& chain = map.closedChains[0];
  const double sign = chain.from == &Named(map, "A") ? 1 : -1;
  EXPECT_NEAR(chain.north * sign, -10.0 / 3, 1e-3);
  EXPECT_NEAR(*chain.up, 0, 1e-3);
}

TEST_F(ClosedChains, AreThoseOfTheLastSolve) {
  Map& map = Open("T\tW\nG\tA\tN0\tE0\nC\tb\tA\t108\t180\nC\tc\tb\t100\t270\nC\tA\tc\t94\t45\n");
  ASSERT_EQ(map.closedChains.size(), 1U);
  Solve(map);
  EXPECT_EQ(map.closedChains.size(), 1U);
}

TEST_F(ClosedChains, AreNoneWhereNothingIsSolved) {
  EXPECT_TRUE(Open("T\tW\nG\tA\tN0\tE0\nG\tB\tN1\tE1\n").closedChains.empty());
  // A dead end does not count as a chain.
  EXPECT_TRUE(Open("T\tW\nG\tC\tN0\tE0\nC\tD\tC\t10\t0\n").closedChains.empty());
}

}  // namespace
}  // namespace orvane
