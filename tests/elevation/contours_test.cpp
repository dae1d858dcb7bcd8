#include "elevation/contours.h"

#include "elevation/contours_barriers.h"
#include "elevation/contours_surface.h"
#include "ground.h"
#include "literal_contours.h"
#include "trails/metrics.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

struct ContoursTest : GroundFixture {
  using Stages = std::vector<std::pair<std::string, int>>;
  Stages told;

  ContourProgress Tell() {
    return [this](const char* stage, int percent) {
      told.emplace_back(stage == nullptr ? "" : stage, percent);
      return true;
    };
  }

  /// Points about the corners of a lattice, so that no two are close and the grid stays small.
  /// \param levels  the range of altitudes, in intervals of 10 metres
  void StrewLattice(Dice& dice, int side, double levels) {
    constexpr double Spacing = 0.01;
    for (int i = 0; i < side * side; ++i) {
      const double north = i / side + (dice.Part() - 0.5) * 0.6;
      const double east = i % side + (dice.Part() - 0.5) * 0.6;
      const double altitude = dice.Part() * levels * 10 - 20;
      // Some altitudes are levels, and grid values at points can be just that.
      Add(1 + north * Spacing, 36 + east * Spacing,
          dice.Below(3) == 0 ? std::round(altitude / 10) * 10 : std::round(altitude));
    }
  }

  double Step(int interval) { return interval / MaxSlope(CollectAltitudePoints(*map)) / 2; }

  /// A hill in the middle of a plain.
  void AddHill() {
    for (int i = 0; i < 8; ++i) Add(1 + 0.01 * (i / 3 - 1), 36 + 0.01 * (i % 3 - 1), 0);
    Add(1.01, 36.01, 0);
    Add(1.002, 36.003, 95);
  }

  /// Two points: a grid of a few dozen cells.
  void AddSlope() {
    Add(1, 36, 0);
    Add(1.01, 36.005, 35);
  }

  void ExpectUntouched() {
    EXPECT_TRUE(map->contourTrails.empty());
    EXPECT_TRUE(map->contourPoints.store.empty());
    EXPECT_TRUE(workspace.contourCounts.empty());
  }
};

std::vector<LiteralContours::Line> LinesOf(const Map& map) {
  std::vector<LiteralContours::Line> lines;
  for (const Trail& trail : map.contourTrails) {
    LiteralContours::Line& line = lines.emplace_back();
    for (const Point* point : trail.points) {
      line.push_back({point->geo.lat, point->geo.lon, point->geo.altitude});
    }
  }
  std::reverse(lines.begin(), lines.end());
  return lines;
}

/// Compares line by line, and shows only the first that differs.
void ExpectSame(const std::vector<LiteralContours::Line>& lines,
                const std::vector<LiteralContours::Line>& expected) {
  ASSERT_EQ(lines.size(), expected.size());
  for (size_t i = 0; i < lines.size(); ++i) {
    ASSERT_EQ(lines[i].size(), expected[i].size()) << "line " << i;
    ASSERT_TRUE(lines[i] == expected[i]) << "line " << i;
  }
}

TEST_F(ContoursTest, AreThoseOfTheLiteralMethodToTheLastBit) {
  size_t lines = 0;
  size_t vertices = 0;
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    map = &MakeMap(workspace, "twins.map");
    StrewLattice(dice, 2 + dice.Below(3), 1 + dice.Below(5));
    if (seed % 3 == 0) {
      const auto at = [&] { return dice.Part() * 0.03; };
      Trail& trail = AddTrail(seed % 2 == 0 ? "River" : "Ridge",
                              {&AddTo(1 + at(), 36 + at(), 20), &AddTo(1 + at(), 36 + at()),
                               &AddTo(1 + at(), 36 + at(), 35)});
      trail.width = dice.Below(3);
    }
    std::vector<Point*> points = CollectAltitudePoints(*map);
    const double step = Step(10);
    const size_t before = points.size();
    ScratchPoints store;
    ASSERT_TRUE(AddBarrierPoints(*map, points, step, store));
    const LiteralContours literal(points, 10, step, points.size() - before);
    ASSERT_EQ(GenerateContours(*map, 10), ContourMade);
    ExpectSame(LinesOf(*map), literal.Lines());
    lines += literal.Lines().size();
    for (const auto& line : literal.Lines()) vertices += line.size();
  }
  EXPECT_GT(lines, 500U);
  EXPECT_GT(vertices, 2500U);
}

TEST_F(ContoursTest, TheEastEndOfEveryRowIsThatOfTheFirst) {
  int shown = 0;
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    map = &MakeMap(workspace, "east end.map");
    StrewLattice(dice, 3, 6);
    const std::vector<Point*> points = CollectAltitudePoints(*map);
    const LiteralContours literal(points, 10, Step(10));
    const LiteralContours renewed(points, 10, Step(10), 0, true);
    if (literal.Lines() == renewed.Lines()) continue;
    ++shown;
    ASSERT_EQ(GenerateContours(*map, 10), ContourMade);
    ExpectSame(LinesOf(*map), literal.Lines());
  }
  EXPECT_GT(shown, 0) << "no map shows it";
}

TEST_F(ContoursTest, LinesAreTrailsOfTheirLevel) {
  AddHill();
  ASSERT_EQ(GenerateContours(*map, 10), ContourMade);
  ASSERT_FALSE(map->contourTrails.empty());
  for (const Trail& trail : map->contourTrails) {
    EXPECT_EQ(trail.flags, TrailContour);
    EXPECT_EQ(trail.color, NoColor);
    EXPECT_EQ(trail.groupSize, 0);
    EXPECT_EQ(trail.name->substr(0, trail.type.size()), trail.type);
    ASSERT_GE(trail.points.size(), 2U);
    for (const Point* point : trail.points) {
      EXPECT_EQ(point->flags, PointScratch | PointPlaced);
      EXPECT_EQ(point->map, nullptr);
      EXPECT_EQ(point->geo.altitude, trail.points.front()->geo.altitude);
      EXPECT_EQ(point->projected.north, point->geo.lat * 111120);
    }
  }
}

TEST_F(ContoursTest, NamesHaveTheLevelInFourPlacesAndANumber) {
  Add(1, 36, 95);
  Add(1.01, 36.01, 108);
  Add(1.02, 36, 1234);
  ASSERT_EQ(GenerateContours(*map, 100), ContourMade);
  const std::vector<std::string> names = NamesOf(map->contourTrails);
  EXPECT_TRUE(std::find(names.begin(), names.end(), "Contour  100 #1") != names.end());
  EXPECT_TRUE(std::find(names.begin(), names.end(), "Contour 1200 #1") != names.end());
  for (const Trail& trail : map->contourTrails) {
    if (trail.name != "Contour  100 #1") continue;
    EXPECT_EQ(trail.type, "Contour  100");
  }
}

TEST_F(ContoursTest, NumbersGoOnFromMapToMap) {
  AddHill();
  ASSERT_EQ(GenerateContours(*map, 50), ContourMade);
  const int last = workspace.contourCounts[50];
  ASSERT_GT(last, 0);
  EXPECT_EQ(map->contourTrails.front().type.substr(0, 7), "Contour");
  map = &MakeMap(workspace, "second.map");
  AddHill();
  ASSERT_EQ(GenerateContours(*map, 50), ContourMade);
  const std::vector<std::string> names = NamesOf(map->contourTrails);
  const std::string next = "Contour   50 #" + std::to_string(last + 1);
  EXPECT_TRUE(std::find(names.begin(), names.end(), next) != names.end());
  EXPECT_EQ(workspace.contourCounts[50], 2 * last);
}

TEST_F(ContoursTest, AClosedLineEndsOnItsFirstPoint) {
  AddHill();
  ASSERT_EQ(GenerateContours(*map, 10), ContourMade);
  size_t closed = 0;
  for (Trail& trail : map->contourTrails) {
    MeasureTrail(trail);
    const bool isRing = trail.points.front() == trail.points.back();
    EXPECT_EQ((trail.flags & TrailClosed) != 0, isRing);
    if (isRing) ++closed;
  }
  EXPECT_GT(closed, 0U);
}

TEST_F(ContoursTest, LevelGroundHasNone) {
  Add(1, 36, 100);
  Add(1.01, 36, 100);
  Add(1, 36.01, 100);
  EXPECT_EQ(GenerateContours(*map, 10, Tell()), ContourNothing);
  ExpectUntouched();
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(ContoursTest, NoAltitudesOrNoIntervalMakeNoneAndReportNothing) {
  EXPECT_EQ(GenerateContours(*map, 10, Tell()), ContourNothing);
  AddHill();
  EXPECT_EQ(GenerateContours(*map, 0, Tell()), ContourNothing);
  EXPECT_EQ(GenerateContours(*map, -10, Tell()), ContourNothing);
  EXPECT_TRUE(told.empty());
  ExpectUntouched();
}

TEST_F(ContoursTest, ASinglePointHasNone) {
  Add(1, 36, 100);
  EXPECT_EQ(GenerateContours(*map, 10), ContourNothing);
}

TEST_F(ContoursTest, ARiverInAnyLettersBendsTheGround) {
  for (const char* type : {"River", "RIVER", "river", "Stream"}) {
    map = &MakeMap(workspace, "river.map");
    AddHill();
    AddTrail(type, {&AddTo(0.99, 36.005, 5), &AddTo(1.01, 36.005, 3)});
    ASSERT_EQ(GenerateContours(*map, 10), ContourMade);
  }
  std::vector<std::vector<LiteralContours::Line>> lines;
  for (const Map& made : workspace.maps) {
    if (!made.contourTrails.empty()) lines.push_back(LinesOf(made));
  }
  ASSERT_EQ(lines.size(), 4U);
  ExpectSame(lines[1], lines[2]);
  ExpectSame(lines[2], lines[3]);
  EXPECT_FALSE(lines[0] == lines[1]);
}

TEST_F(ContoursTest, ProgressIsReportedInThreeStages) {
  AddSlope();
  ASSERT_EQ(GenerateContours(*map, 10, Tell()), ContourMade);
  const LiteralContours literal(CollectAltitudePoints(*map), 10, Step(10));
  const int rows = literal.Rows();
  const int columns = literal.Columns();
  Stages expected = {{"Figuring grid spacing...", 0}, {"Generating approximation...", 0}};
  for (int r = 0; r <= rows; ++r) {
    expected.emplace_back("Generating approximation...", r * 100 / rows);
  }
  const int total = rows + columns;
  expected.emplace_back("Connecting contours...", 0);
  expected.emplace_back("Connecting contours...", 400 / total);
  int done = 4;
  for (int i = 1; i < std::max(rows, columns); ++i) {
    done += (i < rows ? 1 : 0) + (i < columns ? 1 : 0);
    expected.emplace_back("Connecting contours...", done * 100 / total);
  }
  expected.emplace_back("", 0);
  EXPECT_EQ(told, expected);
}

TEST_F(ContoursTest, CanceledAtAnyTimeTheMapIsAsBefore) {
  AddSlope();
  ASSERT_EQ(GenerateContours(*map, 20, Tell()), ContourMade);
  const auto calls = static_cast<int>(told.size());
  map = &MakeMap(workspace, "cancelled.map");
  AddSlope();
  workspace.contourCounts.clear();
  for (int cancelAt = 0; cancelAt + 1 < calls; ++cancelAt) {
    int call = 0;
    bool hasEnded = false;
    const auto progress = [&](const char* stage, int) {
      hasEnded = stage == nullptr;
      return call++ < cancelAt;
    };
    ASSERT_EQ(GenerateContours(*map, 20, progress), ContourCanceled) << cancelAt;
    EXPECT_TRUE(hasEnded);
    ExpectUntouched();
  }
}

TEST_F(ContoursTest, AThinMapWithACliffIsRefused) {
  Add(1, 36, 0);
  Add(1, 37, 0);
  Add(1, 36.5, 0);
  Add(1, 36.50003, 1000);
  EXPECT_EQ(GenerateContours(*map, 1, Tell()), ContourRefused);
  EXPECT_EQ(Said(), (std::vector<std::string>{
                        "Can't make contours: the grid would have more than 4,000,000 nodes"}));
  EXPECT_EQ(told.back().first, "");
  ExpectUntouched();
}

TEST_F(ContoursTest, TooManyLevelsAreRefused) {
  Add(1, 36, 0);
  Add(1.5, 36.5, 1e12);
  Add(1.2, 36.1, -1e12);
  EXPECT_EQ(GenerateContours(*map, 1), ContourRefused);
  ASSERT_EQ(messages.Entries().size(), 1U);
  EXPECT_EQ(messages.Entries()[0].text.substr(0, 44),
            "Can't make contours: the levels are too clos");
  ExpectUntouched();
}

TEST_F(ContoursTest, ARiverThatLeavesTheMapByFarIsRefused) {
  AddHill();
  AddTrail("River", {&AddTo(1, 36, 5), &AddTo(80, 170), &AddTo(1.01, 36.005, 3)});
  EXPECT_EQ(GenerateContours(*map, 10), ContourRefused);
  EXPECT_EQ(Said(), (std::vector<std::string>{"Can't make contours: rivers and ridges would add "
                                              "more than 500,000 points"}));
  ExpectUntouched();
}

TEST_F(ContoursTest, PlacesAndAltitudesBeyondMeasureEndInAnAnswer) {
  AddHill();
  for (const double lat : {1e300, -1e300, 1e17}) Add(lat, 36, 50);
  EXPECT_NE(GenerateContours(*map, 10), ContourMade);
  map = &MakeMap(workspace, "high.map");
  AddHill();
  Add(1.2, 36, 3e38);
  EXPECT_EQ(GenerateContours(*map, 10), ContourRefused);
  ExpectUntouched();
}

}  // namespace
}  // namespace orvane
