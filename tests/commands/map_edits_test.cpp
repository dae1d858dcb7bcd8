#include "commands/map_edits.h"

#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct MapEdits : MapFixture {
  EditHistory history{workspace};
};

TEST_F(MapEdits, ADeviationMarksTheMapAndLeavesItsPlaces) {
  Map& map = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\nC\tHill\tCamp\t100\t90\t0\n");
  const LatLon before = map.trails.front().points.back()->geo;
  ASSERT_TRUE(history.Apply(DeviationEdit(map, 12.5)));
  EXPECT_EQ(map.magneticDeviation, 12.5);
  EXPECT_EQ(map.flags & MapHasDeviation, 0U);
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_EQ(map.trails.front().points.back()->geo.lon, before.lon);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(map.magneticDeviation, 0);
  EXPECT_EQ(map.flags & MapDirty, 0U);
}

TEST_F(MapEdits, ABasisIsSetWithoutAMarkAndTakenBack) {
  Map& basis = Open("T\tRidge\tTrail\nG\tCamp\tN1\tE10\n", "basis.map");
  Map& map = Open("T\tLoop\tTrail\nG\tFar\tN1\tE10\n", "season.map");
  ASSERT_TRUE(history.Apply(BasisEdit(map, basis)));
  EXPECT_EQ(map.basis, &basis);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_FALSE(history.Apply(BasisEdit(basis, map)));
  EXPECT_EQ(basis.basis, nullptr);
  ASSERT_TRUE(history.Undo(map));
  EXPECT_EQ(map.basis, nullptr);
}

}  // namespace
}  // namespace orvane
