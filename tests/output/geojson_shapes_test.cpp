#include "output/geojson_shapes.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace orvane {
namespace {

double Area(const GeoPath& ring) {
  double sum = 0;
  for (size_t i = 0; i + 1 < ring.size(); ++i) {
    sum += ring[i].lon * ring[i + 1].lat - ring[i + 1].lon * ring[i].lat;
  }
  return sum / 2;
}

TEST(AreaShape, IsClosedAndRunsAnticlockwise) {
  const GeoPath expected = {{0, 0}, {1, 0}, {1, 1}, {0, 0}};
  for (const GeoPath& ring :
       {GeoPath{{0, 0}, {1, 0}, {1, 1}}, GeoPath{{0, 0}, {1, 1}, {1, 0}},
        GeoPath{{0, 0}, {1, 1}, {1, 0}, {0, 0}}, GeoPath{{0, 0}, {0, 0}, {1, 1}, {1, 1}, {1, 0}}}) {
    const GeoShape shape = AreaShape(ring);
    EXPECT_EQ(shape.kind, GeoKind::Area);
    EXPECT_EQ(shape.parts, std::vector<GeoPath>{expected});
  }
}

TEST(AreaShape, OfFewerThanThreePlacesIsWhatIsLeft) {
  EXPECT_EQ(AreaShape({}).kind, GeoKind::None);
  EXPECT_EQ(AreaShape({{1, 2}, {1, 2}}).kind, GeoKind::Point);
  EXPECT_EQ(AreaShape({{1, 2}, {1, 3}, {1, 2}}).kind, GeoKind::Line);
}

TEST(AreaShape, OfPlacesOnOneLineIsThatLineFromEndToEnd) {
  const auto expectLine = [](const GeoPath& ring, const std::vector<GeoPath>& expected) {
    const GeoShape shape = AreaShape(ring);
    EXPECT_EQ(shape.kind, GeoKind::Line);
    EXPECT_EQ(shape.parts, expected);
  };
  expectLine({{1, 0}, {1, 2}, {1, 1}}, {{{1, 0}, {1, 2}}});
  expectLine({{0.2, 0.2}, {0.1, 0.1}, {0.3, 0.3}, {0.2, 0.2}}, {{{0.3, 0.3}, {0.1, 0.1}}});
  expectLine({{30.001, 1.001}, {30.002, 1.003}, {30.0035, 1.006}, {30.004, 1.007}},
             {{{30.001, 1.001}, {30.004, 1.007}}});
  expectLine({{179, 0}, {-179, 0}, {180, 0}}, {{{179, 0}, {180, 0}}, {{-180, 0}, {-179, 0}}});
  // A ring that crosses itself may have an area of 0 too, but is not a line.
  EXPECT_EQ(AreaShape({{0, 0}, {1, 1}, {1, 0}, {0, 1}}).kind, GeoKind::Area);
  EXPECT_EQ(AreaShape({{0, 0}, {1, 0}, {0.5, 1e-6}}).kind, GeoKind::Area);
}

TEST(LineShape, IsCutAtThe180thMeridian) {
  const GeoShape shape = LineShape({{179, 0}, {-179, 2}, {-178, 2}, {179, -1}});
  EXPECT_EQ(shape.kind, GeoKind::Line);
  ASSERT_EQ(shape.parts.size(), 3U);
  EXPECT_EQ(shape.parts[0], (GeoPath{{179, 0}, {180, 1}}));
  EXPECT_EQ(shape.parts[1], (GeoPath{{-180, 1}, {-179, 2}, {-178, 2}, {-180, 0}}));
  EXPECT_EQ(shape.parts[2], (GeoPath{{180, 0}, {179, -1}}));
}

TEST(LineShape, ThatOnlyTouchesTheMeridianStaysWhole) {
  const GeoPath path = {{179, 0}, {180, 1}, {179, 2}};
  EXPECT_EQ(LineShape(path).parts, std::vector<GeoPath>{path});
  EXPECT_EQ(LineShape({{179, 0}, {180, 1}, {-180, 2}, {179, 3}}).parts,
            (std::vector<GeoPath>{{{179, 0}, {180, 1}, {180, 2}, {179, 3}}}));
}

TEST(LineShape, BeyondTheMeridianIsBroughtBack) {
  EXPECT_EQ(LineShape({{181, 0}, {182, 1}}).parts, (std::vector<GeoPath>{{{-179, 0}, {-178, 1}}}));
  EXPECT_EQ(PointShape({1, 541}).parts, (std::vector<GeoPath>{{{-179, 1}}}));
}

TEST(AreaShape, IsCutAtThe180thMeridian) {
  const GeoShape shape = AreaShape({{179, 0}, {-179, 0}, {-179, 2}, {179, 2}});
  EXPECT_EQ(shape.kind, GeoKind::Area);
  ASSERT_EQ(shape.parts.size(), 2U);
  EXPECT_DOUBLE_EQ(Area(shape.parts[0]), 2);
  EXPECT_DOUBLE_EQ(Area(shape.parts[1]), 2);
  for (const GeoPlace& place : shape.parts[0]) EXPECT_GE(place.lon, 179);
  for (const GeoPlace& place : shape.parts[1]) EXPECT_LE(place.lon, -179);
}

/// The area of a shape in square degrees, without its holes.
double AreaOf(const GeoShape& shape) {
  double area = 0;
  ForEachPath(shape, [&](const GeoPath& path) { area += Area(path); });
  return area;
}

GeoPath Square(double west, double south, double side) {
  return {{west, south}, {west + side, south}, {west + side, south + side}, {west, south + side}};
}
GeoPath HoleOf(double west, double south, double side) {
  GeoPath ring = Square(west, south, side);
  std::reverse(ring.begin(), ring.end());
  return ring;
}

TEST(OutlineShape, GivesEachHoleToTheSmallestPartAroundIt) {
  // A square with a hole, in which another one with a hole lies; and a square beside them.
  const GeoShape shape = OutlineShape(
      {HoleOf(3, 3, 1), Square(20, 0, 2), Square(2, 2, 4), HoleOf(1, 1, 8), Square(0, 0, 10)});
  EXPECT_EQ(shape.kind, GeoKind::Area);
  ASSERT_EQ(shape.parts.size(), 3U);
  ASSERT_EQ(shape.holes.size(), 3U);
  EXPECT_TRUE(shape.holes[0].empty());
  ASSERT_EQ(shape.holes[1].size(), 1U);
  EXPECT_DOUBLE_EQ(Area(shape.parts[1]), 16);
  EXPECT_DOUBLE_EQ(Area(shape.holes[1][0]), -1);
  EXPECT_DOUBLE_EQ(Area(shape.parts[2]), 100);
  EXPECT_DOUBLE_EQ(Area(shape.holes[2].at(0)), -64);
}

TEST(OutlineShape, WithoutAnAreaIsNone) {
  EXPECT_EQ(OutlineShape({}).kind, GeoKind::None);
  EXPECT_EQ(OutlineShape({{}, {{1, 1}}, {{1, 1}, {2, 2}, {1, 1}}}).kind, GeoKind::None);
}

TEST(OutlineShape, IsCutAtThe180thMeridianWithItsHoles) {
  for (const double moved : {0.0, -360.0}) {
    // The first hole crosses the meridian, the others do not.
    GeoShape shape = OutlineShape({Square(176 + moved, 0, 8), HoleOf(179 + moved, 1, 2),
                                   HoleOf(177 + moved, 5, 1), HoleOf(181 + moved, 5, 2)});
    EXPECT_DOUBLE_EQ(AreaOf(shape), 64 - 4 - 1 - 4);
    ASSERT_EQ(shape.parts.size(), 2U);
    std::sort(shape.parts.begin(), shape.parts.end(),
              [](const GeoPath& a, const GeoPath& b) { return a[0].lon > b[0].lon; });
    EXPECT_DOUBLE_EQ(Area(shape.parts[0]), 4 * 8 - 2);
    EXPECT_DOUBLE_EQ(Area(shape.parts[1]), 4 * 8 - 2);
    ForEachPath(shape, [](const GeoPath& path) {
      EXPECT_EQ(path.front(), path.back());
      for (const GeoPlace& place : path) {
        EXPECT_GE(std::fabs(place.lon), 176);
        EXPECT_LE(std::fabs(place.lon), 180);
      }
    });
  }
}

TEST(OutlineShape, ThatLeavesAHalfOfTheEarthTwiceHasTwoParts) {
  // A comb whose teeth reach over the meridian.
  const GeoShape shape = OutlineShape(
      {{{178, 0}, {182, 0}, {182, 1}, {179, 1}, {179, 2}, {182, 2}, {182, 3}, {178, 3}}});
  ASSERT_EQ(shape.parts.size(), 3U);
  EXPECT_DOUBLE_EQ(AreaOf(shape), 12 - 3);
  EXPECT_TRUE(shape.holes.empty());
}

/// Squares in a chess board round the meridian, each with a hole: what was cut has their area.
TEST(OutlineShape, KeepsItsAreaWhereverItIsCut) {
  for (int step = 0; step <= 40; ++step) {
    const double at = 170 + step / 2.0 + 0.1;
    std::vector<GeoPath> rings;
    for (int i = 0; i < 4; ++i) {
      rings.push_back(Square(at + 3 * i, 3 * i, 2.5));
      rings.push_back(HoleOf(at + 3 * i + 0.7, 3 * i + 0.7, 1.1));
    }
    const GeoShape shape = OutlineShape(rings);
    EXPECT_NEAR(AreaOf(shape), 4 * (2.5 * 2.5 - 1.1 * 1.1), 1e-9) << at;
    ForEachPath(shape, [&](const GeoPath& path) {
      for (const GeoPlace& place : path) EXPECT_LE(std::fabs(place.lon), 180) << at;
    });
  }
}

TEST(OutlineShape, OverManyTurnsIsNotCut) {
  const GeoShape shape = OutlineShape({Square(-1e17, 80, 2e17), Square(2, 2, 1)});
  EXPECT_EQ(shape.kind, GeoKind::Area);
  ForEachPath(shape, [](const GeoPath& path) {
    for (const GeoPlace& place : path) EXPECT_LE(std::fabs(place.lon), 180);
  });
}

TEST(OutlineShape, IsAPolygonWithHolesInGeoJson) {
  std::string text;
  const auto write = [&](const GeoShape& shape) {
    text.clear();
    const std::function<bool(std::string_view)> sink = [&](std::string_view piece) {
      text += piece;
      return true;
    };
    JsonWriter json(sink);
    PutGeometry(json, shape);
    EXPECT_TRUE(json.Finish());
    std::erase(text, '\n');
    return text;
  };
  const std::string outer = "[[0.0,0.0],[3.0,0.0],[3.0,3.0],[0.0,3.0],[0.0,0.0]]";
  const std::string hole = "[[1.0,2.0],[2.0,2.0],[2.0,1.0],[1.0,1.0],[1.0,2.0]]";
  EXPECT_EQ(write(OutlineShape({Square(0, 0, 3), HoleOf(1, 1, 1)})),
            R"({"type":"Polygon","coordinates":[)" + outer + "," + hole + "]}");
  EXPECT_EQ(write(OutlineShape({Square(0, 0, 3), HoleOf(1, 1, 1), Square(5, 0, 1)})),
            R"({"type":"MultiPolygon","coordinates":[[)" + outer + "," + hole +
                "],[[[5.0,0.0],[6.0,0.0],[6.0,1.0],[5.0,1.0],[5.0,0.0]]]]}");
}

TEST(AreaShape, AroundThePoleIsNotCut) {
  const GeoShape shape = AreaShape({{0, 80}, {120, 80}, {-120, 80}});
  EXPECT_EQ(shape.kind, GeoKind::Area);
  EXPECT_EQ(shape.parts.size(), 1U);
}

TEST(GeoShapes, LeaveOutWhatIsNotOnEarth) {
  const double nan = std::nan("");
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(PointShape({nan, 1}).kind, GeoKind::None);
  EXPECT_EQ(PointShape({1, infinite}).kind, GeoKind::None);
  EXPECT_EQ(PointShape({91, 1}).kind, GeoKind::None);
  Point good;
  good.geo = {90, -180};
  Point bad;
  bad.geo = {nan, 3};
  EXPECT_EQ(PathOf(std::vector<Point*>{&bad, &good, &bad}), (GeoPath{{-180, 90}}));
}

TEST(GeoShapes, StayWithinTheirBoundsWhateverTheyAreMadeOf) {
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    std::mt19937 random(seed);
    GeoPath path;
    for (std::uint_fast32_t n = random() % 12; n > 0; --n) {
      const double spread = random() % 2 == 0 ? 2000 : 200;
      path.push_back({(static_cast<double>(random()) / 4294967296.0 - 0.5) * spread,
                      static_cast<double>(random() % 181) - 90});
    }
    for (const GeoShape& shape : {LineShape(path), AreaShape(path)}) {
      EXPECT_EQ(shape.kind == GeoKind::None, path.empty()) << "seed " << seed;
      for (const GeoPath& part : shape.parts) {
        for (size_t i = 0; i < part.size(); ++i) {
          ASSERT_LE(std::fabs(part[i].lon), 180) << "seed " << seed;
          ASSERT_LE(std::fabs(part[i].lat), 90) << "seed " << seed;
        }
        ASSERT_GE(part.size(), shape.kind == GeoKind::Line ? 2U : 1U) << "seed " << seed;
        if (shape.kind != GeoKind::Area) continue;
        ASSERT_GE(part.size(), 4U) << "seed " << seed;
        ASSERT_EQ(part.front(), part.back()) << "seed " << seed;
        ASSERT_GE(Area(part), -1e-9) << "seed " << seed;
      }
    }
  }
}

TEST(AreaShape, OfManyTurnsIsNotCut) {
  // Each step is short, so the places unroll to four turns and back.
  GeoPath ring;
  for (int i = 0; i <= 16; ++i) ring.push_back({std::remainder(i * 90.0, 360.0), 10});
  for (int i = 15; i > 0; --i) ring.push_back({std::remainder(i * 90.0, 360.0), 20});
  const GeoShape shape = AreaShape(ring);
  EXPECT_EQ(shape.kind, GeoKind::Area);
  EXPECT_EQ(shape.parts.size(), 1U);
}

TEST(PathOf, LeavesOutPlacesThatAreNotOnEarth) {
  const std::vector<LatLon> places = {{1, 2}, {91, 2}, {3, std::nan("")}, {4, 5}};
  EXPECT_EQ(PathOf(places), (GeoPath{{2, 1}, {5, 4}}));
}

}  // namespace
}  // namespace orvane
