#include "elevation/contours_surface.h"

#include "geo/earth.h"
#include "support/map_from_text.h"

#include <cmath>

namespace orvane {
namespace {

struct AltitudePointsTest : MapFixture {};

TEST_F(AltitudePointsTest, TakesEachPointWithAnAltitudeOnceTheLastOneFirst) {
  Map& map = Open(
      "T\tWay\tTrail\nG\ta\tN1\tE1\t100\nG\tb\tN1.01\tE1\nG\tc\tN1.02\tE1\t0\nP\ta\n"
      "T\tOther\tTrail\nP\tc\nG\td\tN1.03\tE1\t-5\nT\nG\tloose\tN1.04\tE1\t7\nG\t\tN1.05\tE1\t8\n");
  std::vector<std::string> names;
  for (const Point* point : CollectAltitudePoints(map)) names.push_back(point->name);
  EXPECT_EQ(names, (Texts{"", "loose", "d", "c", "a"}));
}

TEST_F(AltitudePointsTest, LeavesTheBasisOut) {
  Map& basis = Open("G\tlow\tN1\tE1\t100\n", "basis.map");
  Map& map = Open("G\thigh\tN2\tE1\t200\n", "upper.map");
  map.basis = &basis;
  const std::vector<Point*> points = CollectAltitudePoints(map);
  ASSERT_EQ(points.size(), 1U);
  EXPECT_EQ(points[0]->name, "high");
}

}  // namespace
}  // namespace orvane
