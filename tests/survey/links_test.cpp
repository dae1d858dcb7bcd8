#include "survey/links.h"

#include "survey_fixture.h"

#include <cmath>

namespace orvane {
namespace {

struct LinksFixture : test::SurveyFixture {
  LinkStore store;

  /// The link from `from` to `to` of a map that is read but not solved.
  const Link& LinkOf(const Map& map, std::string_view from, std::string_view to) {
    const Point& holder = Named(map, from);
    const Link* link = LinkTo(holder.links, Named(map, to));
    if (link == nullptr) link = LinkTo(holder.rays, Named(map, to));
    static const Link none;
    EXPECT_NE(link, nullptr) << from << " to " << to;
    return link == nullptr ? none : *link;
  }
};

struct Links : LinksFixture {
  Map& Gather(std::string_view text) {
    Map& map = Read(text);
    BuildLinks(map, store);
    return map;
  }
};

TEST_F(Links, AverageShotsByTheirCounts) {
  const Map& map = Gather("T\tW\nP\tA\nC\tB\tA\t10\t90\t2\nC\tB\tA\t20\t100\t6\t\t3\n");
  const Link& link = LinkOf(map, "B", "A");
  EXPECT_FLOAT_EQ(link.distance, 17.5F);
  EXPECT_FLOAT_EQ(link.bearing, 97.5F);
  EXPECT_FLOAT_EQ(link.inclination, 5);
  EXPECT_EQ(link.count, 4);
}

TEST_F(Links, AverageBearingsAsPlainNumbers) {
  const Map& map = Gather("T\tW\nP\tA\nC\tB\tA\t10\t359\nC\tB\tA\t10\t1\n");
  EXPECT_FLOAT_EQ(LinkOf(map, "B", "A").bearing, 180);
}

TEST_F(Links, TheOtherEndHoldsTheMirror) {
  const Map& map = Gather("T\tW\nP\tA\nC\tB\tA\t10\t90\t5\nC\tD\tB\t10\t200\n");
  const Link& link = LinkOf(map, "A", "B");
  EXPECT_FLOAT_EQ(link.bearing, 270);
  EXPECT_FLOAT_EQ(link.inclination, -5);
  EXPECT_FLOAT_EQ(link.distance, 10);
  EXPECT_EQ(link.reverse, &LinkOf(map, "B", "A"));
  EXPECT_EQ(link.reverse->reverse, &link);
  EXPECT_FLOAT_EQ(LinkOf(map, "B", "D").bearing, 20);
}

TEST_F(Links, ShotsFromBothEndsAverageWithTheirCounts) {
  for (const std::string_view order : {"P\tA\nP\tB\n", "P\tB\nP\tA\n"}) {
    const Map& map =
        Gather("T\tW\n" + std::string(order) + "C\tB\tA\t10\t90\t4\nC\tA\tB\t20\t272\t-8\t\t3\n");
    EXPECT_FLOAT_EQ(LinkOf(map, "B", "A").bearing, 91.5F);
    EXPECT_FLOAT_EQ(LinkOf(map, "B", "A").distance, 17.5F);
    EXPECT_FLOAT_EQ(LinkOf(map, "B", "A").inclination, 7);
    EXPECT_FLOAT_EQ(LinkOf(map, "A", "B").bearing, 271.5F);
    EXPECT_EQ(LinkOf(map, "A", "B").count, 4);
  }
}

TEST_F(Links, TurnSumsBelowZeroBackByWholeTurns) {
  // A comes first and holds 3 shots of 10 degrees: 30 less 540 is below 0, and 1080 are added.
  const Map& map = Gather("T\tW\nP\tA\nP\tB\nC\tA\tB\t10\t10\t\t\t3\n");
  EXPECT_FLOAT_EQ(LinkOf(map, "B", "A").bearing, 190);
  EXPECT_FLOAT_EQ(LinkOf(map, "A", "B").bearing, 10);
}

TEST_F(Links, AddTheDeviationUnlessABearingIsTrue) {
  const Map& map = Gather("M\t5\nT\tW\nP\tA\nC\tB\tA\t10\t90\nC\tD\tA\t10\ta90\n");
  EXPECT_FLOAT_EQ(LinkOf(map, "B", "A").bearing, 95);
  EXPECT_FLOAT_EQ(LinkOf(map, "D", "A").bearing, 90);
}

TEST_F(Links, ShotsOfNoLengthAreRays) {
  const Map& map = Gather("T\tW\nP\tA\nC\tB\tA\t0\t90\nC\tB\tA\t5\t30\n");
  ASSERT_NE(Named(map, "B").rays, nullptr);
  EXPECT_FLOAT_EQ(Named(map, "B").rays->bearing, 90);
  EXPECT_FLOAT_EQ(Named(map, "A").rays->bearing, 270);
  ASSERT_NE(Named(map, "B").links, nullptr);
  EXPECT_FLOAT_EQ(Named(map, "B").links->bearing, 30);
}

TEST_F(Links, AreNewestFirst) {
  // Readings are met newest first, so the oldest is at the head.
  const Map& map = Gather("T\tW\nP\tA\nP\tB\nP\tD\nC\tE\tA\t1\t0\nC\tE\tB\t1\t0\nC\tE\tD\t1\t0\n");
  const Link* link = Named(map, "E").links;
  Texts names;
  for (; link != nullptr; link = link->next) names.push_back(link->other->name);
  // The mirrors that A, B and D did not make, since they have no shots, are E's own.
  EXPECT_EQ(names, (Texts{"A", "B", "D"}));
}

TEST_F(Links, AShotFromAPointToItselfMakesNone) {
  const Map& map = Gather("T\tW\nC\tA\tA\t10\t90\n");
  EXPECT_EQ(Named(map, "A").links, nullptr);
  EXPECT_EQ(Named(map, "A").rays, nullptr);
}

TEST_F(Links, KnownPointsGiveNoShotsAndNoAltitudes) {
  Map& map = Read("T\tW\nP\tB\nC\tA\tB\t10\t90\nA\tA\t50\n");
  Named(map, "A").flags |= PointPlaced;
  BuildLinks(map, store);
  EXPECT_EQ(Named(map, "A").links, nullptr);
  EXPECT_EQ(Named(map, "A").altitudeWeight, 0);
}

TEST_F(Links, ReadingsAddUpByTheirCounts) {
  const Map& map = Gather("T\tW\nG\tA\tN1\tE2\t100\t3\nG\tA\tN2\tE4\nA\tA\t200\t2\n");
  const Point& point = Named(map, "A");
  EXPECT_DOUBLE_EQ(point.latSum, 5);
  EXPECT_DOUBLE_EQ(point.lonSum, 10);
  EXPECT_EQ(point.positionWeight, 4);
  EXPECT_FLOAT_EQ(point.altSum, 700);
  EXPECT_EQ(point.altitudeWeight, 5);
  EXPECT_FLOAT_EQ(MeanAltitude(point), 140);
}

TEST_F(Links, AShotWithAnAltitudeIsAnAltitudeReadingToo) {
  const Map& map = Gather("T\tW\nP\tA\nC\tB\tA\t10\t90\t0\t55\n");
  EXPECT_FLOAT_EQ(MeanAltitude(Named(map, "B")), 55);
}

TEST_F(Links, GoWithTheSolve) {
  const Map& map = Gather("T\tW\nP\tA\nC\tB\tA\t10\t90\nC\tB\tA\t0\t90\n");
  FreeLinks(store);
  EXPECT_EQ(Named(map, "A").links, nullptr);
  EXPECT_EQ(Named(map, "B").links, nullptr);
  EXPECT_NE(Named(map, "A").rays, nullptr);
  EXPECT_NE(Named(map, "B").rays, nullptr);
}

/// A map on a basis, where a degree of longitude is much shorter than one of latitude.
struct ShotsToBasis : LinksFixture {
  Map* basis = nullptr;

  Map& Rest(std::string_view basisText, std::string_view text) {
    basis = &Open(basisText, "basis.map");
    Map& map = MakeMap(workspace, "upper.map");
    map.basis = basis;
    ReadMapText(map, text);
    return map;
  }
};

TEST_F(ShotsToBasis, AreReadingsOfThePlace) {
  Map& map = Rest("T\tW\nG\tA\tN60\tE22\t100\n",
                  "M\t90\nT\tV\nC\tB\tA\t200\ta180\t-30\t\t2\nC\tD\tA\t100\t0\n");
  BuildLinks(map, store);
  const Point& b = Named(map, "B");  // sees A in the south, 30 degrees down: B is north of it
  EXPECT_EQ(b.links, nullptr);
  EXPECT_EQ(b.positionWeight, 2);
  const double ground = 200 * std::cos(30 * RadiansPerDegree);
  EXPECT_NEAR(b.latSum / 2, 60 + ground / MetersPerDegree, 1e-9);
  EXPECT_NEAR(b.lonSum / 2, 22, 1e-12);
  EXPECT_NEAR(static_cast<double>(MeanAltitude(b)), 200, 1e-3);
  const Point& d = Named(map, "D");  // bearing 0 and the upper map's deviation: A is in the east
  EXPECT_NEAR(d.latSum, 60, 1e-9);
  EXPECT_NEAR(d.lonSum, 22 - 100 / (MetersPerDegree * std::cos(60 * RadiansPerDegree)), 1e-9);
}

TEST_F(ShotsToBasis, AreTurnedRoundWhereTheBaseIsNotKnown) {
  Map& map = Rest("M\t90\nT\tW\nC\tOther\tA\t10\t0\nC\tOther\tA\t0\t0\n", "T\tV\nP\tB\n");
  Named(*basis, "A").flags &= ~std::uint32_t{PointPlaced};
  Point& a = Named(*basis, "A");
  a.latSum = a.lonSum = 0;
  a.positionWeight = 0;
  ReadMapText(map, "T\tV\nC\tB\tA\t200\ta0\t30\t\t3\n");
  Point& b = Named(map, "B");
  b.geo = {60, 22, 100};
  b.flags |= PointPlaced;
  BuildLinks(map, store);
  EXPECT_EQ(b.positionWeight, 0);
  EXPECT_EQ(a.positionWeight, 3);  // north of B, and up
  const double ground = 200 * std::cos(30 * RadiansPerDegree);
  EXPECT_NEAR(a.latSum / 3, 60 + ground / MetersPerDegree, 1e-9);
  EXPECT_NEAR(a.lonSum / 3, 22, 1e-9);
  EXPECT_NEAR(static_cast<double>(MeanAltitude(a)), 200, 1e-3);
}

TEST_F(ShotsToBasis, PlaceTheirHolders) {
  Map& map = Rest("T\tW\nG\tA\tN0\tE0\n", "T\tV\nC\tB\tA\t100\t180\nC\tD\tB\t50\t270\n");
  FinishMap(map);
  ExpectAt(map, "B", 100, 0);
  ExpectAt(map, "D", 100, 50);
  EXPECT_EQ(Said(), Texts{});
}

/// A season's map whose points are on a trail of its basis.
struct LinksAcrossBasis : ShotsToBasis {
  static constexpr double Lat = 20;
  static constexpr double Lon = 100;

  /// Metres north and east of the fix of the survey.
  static void ExpectFromFix(const Map& map, std::string_view name, double north, double east) {
    ASSERT_TRUE(Placed(map, name)) << name;
    const LatLon& geo = Named(map, name).geo;
    const Meters at = LatLonToMeters(geo.lat, geo.lon - Lon);
    EXPECT_NEAR(at.north - Lat * MetersPerDegree, north, 1e-2) << name;
    EXPECT_NEAR(at.east, east, 1e-2) << name;
  }
};

TEST_F(LinksAcrossBasis, TakeAShotOnceThatTwoMapsList) {
  // The basis listed Spring on its trail Pde and gave its shot again: 1200 m, and turned round.
  Map& map = Rest("T\tPde\tTrail\n",
                  "T\tPde\tHuman\nG\tSpring\tN20 0\tE100 0\n"
                  "T\tNew\tHuman\nC\tSpring\tHQ\t600\t90\t0\n");
  FinishMap(map);
  ExpectFromFix(map, "HQ", 0, 600);
  EXPECT_EQ(Named(map, "Spring").positionWeight, 1);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(LinksAcrossBasis, TakeAllShotsOfAPointThatOnlyTheBasisLists) {
  Map& map = Rest("T\tPde\tTrail\n",
                  "T\tPde\tHuman\nC\tSpring\tHQ\t600\t90\t0\t\t2\nC\tSpring\tHQ\t300\t90\t0\n"
                  "T\tNew\tHuman\nG\tHQ\tN20 0\tE100 0\nC\tHQ\tSpring\t500\t280\t0\t\t5\n");
  BuildLinks(map, store);
  const Link& link = LinkOf(map, "Spring", "HQ");
  EXPECT_FLOAT_EQ(link.distance, 500);  // (2 * 600 + 300 + 5 * 500) / 8
  EXPECT_FLOAT_EQ(link.bearing, 96.25F);
  EXPECT_FLOAT_EQ(LinkOf(map, "HQ", "Spring").bearing, 276.25F);
}

TEST_F(LinksAcrossBasis, AverageTheShotsAtAPointThatIsInNoList) {
  // The trail is given twice, so its first points are on it no more, and no list has them.
  Map& map = Rest("",
                  "T\tPde\tHuman\nP\tGone\nT\nG\tHQ\tN20 0\tE100 0\n"
                  "C\tHQ\tGone\t600\t90\t10\t\t2\nC\tHQ\tGone\t300\t90\t10\n"
                  "C\tHQ\tGone\t0\t80\t\t\t2\nT\tPde\tHuman\nP\tOther\n");
  for (Point* listed : map.loosePoints) ASSERT_NE(listed->name, "Gone");
  map.loosePoints.push_front(&Named(map, "HQ"));
  BuildLinks(map, store);
  const Link& link = LinkOf(map, "HQ", "Gone");
  EXPECT_FLOAT_EQ(link.distance, 500);
  EXPECT_FLOAT_EQ(link.bearing, 90);
  EXPECT_FLOAT_EQ(link.inclination, 10);
  EXPECT_FLOAT_EQ(link.reverse->distance, 500);
  EXPECT_FLOAT_EQ(link.reverse->bearing, 270);
  EXPECT_FLOAT_EQ(link.reverse->inclination, -10);
  ASSERT_NE(Named(map, "HQ").rays, nullptr);
  EXPECT_FLOAT_EQ(Named(map, "HQ").rays->bearing, 80);
  EXPECT_FLOAT_EQ(Named(map, "Gone").rays->bearing, 260);
}

TEST_F(ShotsToBasis, LeaveTheBasisWhereItIs) {
  Map& map = Rest("T\tW\nG\tA\tN1\tE1\n", "T\tV\nP\tA\nC\tB\tA\t100\t180\n");
  FinishMap(map);
  ClearOwnPositions(map);
  EXPECT_TRUE(Placed(*basis, "A"));
  EXPECT_FALSE(Placed(map, "B"));
  Solve(map);
  EXPECT_EQ(Named(map, "A").geo.lat, 1);
}

}  // namespace
}  // namespace orvane
