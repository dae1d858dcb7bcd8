#include "elevation/contours_continuous.h"

#include "elevation/contours.h"
#include "ground.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace orvane {
namespace {

/// A sampled grid with altitudes of the test's own.
ContourWork GridOf(int rows, int columns, double interval, auto altitudeAt) {
  ContourWork work;
  work.interval = interval;
  for (int r = 0; r < rows; ++r) work.lats.push_back(1 + r * 0.001);
  for (int c = 0; c < columns; ++c) work.lons.push_back(36 + c * 0.001);
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < columns; ++c) work.values.push_back(altitudeAt(r, c));
  }
  return work;
}

std::vector<ContourLine> LinesOf(const ContourWork& work) {
  std::vector<ContourLine> lines;
  EXPECT_EQ(TraceContinuousContours(work, lines), ContourMade);
  return lines;
}

bool IsOnBorder(const ContourWork& work, const LatLon& place) {
  return place.lat == work.lats.front() || place.lat == work.lats.back() ||
         place.lon == work.lons.front() || place.lon == work.lons.back();
}

/// The altitude on the grid line that a place is on, straight between the samples at either side;
/// no number if it is on none.
double AltitudeOnLine(const ContourWork& work, const LatLon& place) {
  const auto index = [](const std::vector<double>& lines, double coordinate) {
    const auto above = std::upper_bound(lines.begin(), lines.end(), coordinate);
    const auto at = static_cast<size_t>(above - lines.begin()) - 1;
    return std::min(at, lines.size() - 2);
  };
  const size_t columns = work.lons.size();
  const size_t r = index(work.lats, place.lat);
  const size_t c = index(work.lons, place.lon);
  const double north = (place.lat - work.lats[r]) / (work.lats[r + 1] - work.lats[r]);
  const double east = (place.lon - work.lons[c]) / (work.lons[c + 1] - work.lons[c]);
  const auto value = [&](size_t dr, size_t dc) { return work.values[(r + dr) * columns + c + dc]; };
  if (north == 0 || north == 1) {
    const auto dr = static_cast<size_t>(north);
    return value(dr, 0) + (value(dr, 1) - value(dr, 0)) * east;
  }
  if (east == 0 || east == 1) {
    const auto dc = static_cast<size_t>(east);
    return value(0, dc) + (value(1, dc) - value(0, dc)) * north;
  }
  return std::nan("");
}

struct Segment {
  LatLon a;
  LatLon b;
};

/// True if each segment passes from one side of the other to the other, by more than rounding.
bool Cross(const Segment& s, const Segment& t) {
  const auto side = [](const Segment& line, const LatLon& p) {
    return (line.b.lat - line.a.lat) * (p.lon - line.a.lon) -
           (line.b.lon - line.a.lon) * (p.lat - line.a.lat);
  };
  constexpr double Rounding = 1e-17;  // a step is 1e-3 or more, a product 1e-6
  const auto apart = [](double x, double y) {
    return (x > Rounding && y < -Rounding) || (x < -Rounding && y > Rounding);
  };
  return apart(side(s, t.a), side(s, t.b)) && apart(side(t, s.a), side(t, s.b));
}

std::vector<Segment> SegmentsOf(const std::vector<ContourLine>& lines, float level) {
  std::vector<Segment> segments;
  for (const ContourLine& line : lines) {
    if (line.level != level) continue;
    for (size_t i = 1; i < line.vertices.size(); ++i) {
      segments.push_back({line.vertices[i - 1], line.vertices[i]});
    }
    if (line.closed) segments.push_back({line.vertices.back(), line.vertices.front()});
  }
  std::sort(segments.begin(), segments.end(), [](const Segment& a, const Segment& b) {
    return std::min(a.a.lat, a.b.lat) < std::min(b.a.lat, b.b.lat);
  });
  return segments;
}

/// What must hold for the lines of any grid.
void ExpectSound(const ContourWork& work, const std::vector<ContourLine>& lines) {
  std::set<float> levels;
  for (const ContourLine& line : lines) {
    levels.insert(line.level);
    EXPECT_TRUE(line.closed || (IsOnBorder(work, line.vertices.front()) &&
                                IsOnBorder(work, line.vertices.back())));
    for (const LatLon& vertex : line.vertices) {
      EXPECT_NEAR(AltitudeOnLine(work, vertex), static_cast<double>(line.level), 1e-9);
    }
  }
  for (const float level : levels) {
    const std::vector<Segment> segments = SegmentsOf(lines, level);
    for (size_t i = 0; i < segments.size(); ++i) {
      const double top = std::max(segments[i].a.lat, segments[i].b.lat);
      for (size_t j = i + 1; j < segments.size(); ++j) {
        if (std::min(segments[j].a.lat, segments[j].b.lat) > top) break;
        ASSERT_FALSE(Cross(segments[i], segments[j])) << "level " << level;
      }
    }
  }
  // The level of each sample is between those of the lines about it: none is left out.
  const auto [low, high] = std::minmax_element(work.values.begin(), work.values.end());
  for (double k = std::floor(*low / work.interval) + 1; k * work.interval <= *high; ++k) {
    EXPECT_TRUE(levels.contains(static_cast<float>(k * work.interval))) << k;
  }
}

TEST(ContinuousContours, OfAPlaneAreStraight) {
  const ContourWork work = GridOf(30, 40, 10, [](int r, int c) { return 3 + r * 2.7 + c * 1.3; });
  const auto lines = LinesOf(work);
  ExpectSound(work, lines);
  EXPECT_EQ(lines.size(), 13U) << "from 10 to 130, each in one piece";
  for (const ContourLine& line : lines) {
    EXPECT_FALSE(line.closed);
    const LatLon& first = line.vertices.front();
    for (const LatLon& vertex : line.vertices) {
      EXPECT_NEAR((vertex.lat - first.lat) * 2.7, (vertex.lon - first.lon) * -1.3, 1e-12);
    }
  }
}

TEST(ContinuousContours, OfAConeAreRings) {
  const auto distance = [](double r, double c) { return std::hypot(r - 20.3, c - 20.6); };
  const ContourWork work =
      GridOf(41, 41, 10, [&](int r, int c) { return 195 - 9 * distance(r, c); });
  auto lines = LinesOf(work);
  ExpectSound(work, lines);
  std::set<float> rings;
  for (const ContourLine& line : lines) {
    // The rings that fit on the grid are whole.
    const bool fits = static_cast<double>(line.level) > 195 - 9 * 19;
    if (!fits) continue;
    EXPECT_TRUE(line.closed);
    EXPECT_TRUE(rings.insert(line.level).second) << "in one piece";
    for (const LatLon& vertex : line.vertices) {
      EXPECT_NEAR(distance((vertex.lat - 1) / 0.001, (vertex.lon - 36) / 0.001),
                  (195 - static_cast<double>(line.level)) / 9, 0.3);
    }
  }
  EXPECT_EQ(rings.size(), 17U) << "from 30 to 190";
}

TEST(ContinuousContours, ASaddleIsSettledByTheMeanOfTheCell) {
  // High in the south-west and the north-east.
  const auto saddle = [](double high) {
    return GridOf(2, 2, 10, [high](int r, int c) { return r == c ? high : 6.0; });
  };
  const auto joins = [](const ContourLine& line, const LatLon& corner) {
    return std::hypot(line.vertices[0].lat - corner.lat, line.vertices[1].lon - corner.lon) +
               std::hypot(line.vertices[1].lat - corner.lat, line.vertices[0].lon - corner.lon) <
           0.0021;
  };
  // Mean 9: the high corners are cut off.
  for (const ContourLine& line : LinesOf(saddle(12))) {
    const bool southWest =
        joins(line, {1, 36}) && line.vertices[0].lat + line.vertices[1].lat < 2.001;
    const bool northEast =
        joins(line, {1.001, 36.001}) && line.vertices[0].lat + line.vertices[1].lat > 2.001;
    EXPECT_TRUE(southWest || northEast);
    EXPECT_NEAR((line.vertices[0].lat - line.vertices[1].lat) /
                    (line.vertices[0].lon - line.vertices[1].lon),
                -1, 1e-9);
  }
  // Mean 11: the low ones.
  for (const ContourLine& line : LinesOf(saddle(16))) {
    EXPECT_NEAR((line.vertices[0].lat - line.vertices[1].lat) /
                    (line.vertices[0].lon - line.vertices[1].lon),
                1, 1e-9);
  }
}

TEST(ContinuousContours, AreSoundOnGroundOfEveryKind) {
  for (std::uint64_t seed = 1; seed <= 120; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    const int steps = 1 + dice.Below(4);
    const bool whole = seed % 2 == 0;  // then many samples are just at a level
    const ContourWork work = GridOf(2 + dice.Below(14), 2 + dice.Below(14), 10, [&](int, int) {
      const double altitude = (dice.Part() - 0.5) * 20 * steps;
      return whole ? std::round(altitude / 10) * 10 : altitude;
    });
    ExpectSound(work, LinesOf(work));
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(ContinuousContours, ASummitThatHasJustTheLevelIsALineAtOnePlace) {
  const ContourWork work =
      GridOf(5, 5, 10, [](int r, int c) { return r == 2 && c == 2 ? 10.0 : 5.0; });
  const auto lines = LinesOf(work);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_TRUE(lines[0].closed);
  EXPECT_EQ(lines[0].vertices.size(), 1U);
}

TEST(ContinuousContours, GroundWithoutANumberIsAHole) {
  const ContourWork work =
      GridOf(6, 6, 10, [](int r, int c) { return r == 2 && c == 2 ? std::nan("") : r * 7.0 + c; });
  for (const ContourLine& line : LinesOf(work)) {
    for (const LatLon& vertex : line.vertices) EXPECT_TRUE(std::isfinite(vertex.lat));
  }
}

struct ContinuousContoursTest : GroundFixture {
  void Strew(std::uint64_t seed) {
    Dice dice(seed);
    for (int i = 0; i < 16; ++i) {
      Add(1 + (i / 4 + dice.Part() * 0.5) * 0.01, 36 + (i % 4 + dice.Part() * 0.5) * 0.01,
          std::round(dice.Part() * 60));
    }
  }
};

TEST_F(ContinuousContoursTest, HaveEveryLevelOfTheOthersAndAreBesideThem) {
  for (std::uint64_t seed = 1; seed <= 15; ++seed) {
    SCOPED_TRACE(seed);
    map = &MakeMap(workspace, "levels.map");
    Strew(seed);
    ASSERT_EQ(GenerateContinuousContours(*map, 10), ContourMade);
    EXPECT_TRUE(map->contourTrails.empty());
    ASSERT_EQ(GenerateContours(*map, 10), ContourMade);
    std::set<std::string> types;
    for (const Trail& trail : map->continuousContours) types.insert(trail.type);
    for (const Trail& trail : map->contourTrails) EXPECT_TRUE(types.contains(trail.type));
    ContourWork work;
    ASSERT_EQ(PrepareContours(*map, 10, work), ContourMade);
    ExpectSound(work, LinesOf(work));
  }
}

TEST_F(ContinuousContoursTest, AreNumberedForThemselves) {
  Strew(3);
  ASSERT_EQ(GenerateContinuousContours(*map, 20), ContourMade);
  EXPECT_TRUE(workspace.contourCounts.empty());
  const auto names = NamesOf(map->continuousContours);
  EXPECT_TRUE(std::find(names.begin(), names.end(), "Contour   20 #1") != names.end());
  for (const Trail& trail : map->continuousContours) {
    EXPECT_EQ(trail.flags, TrailContour);
    EXPECT_GE(trail.points.size(), 2U);
  }
}

TEST_F(ContinuousContoursTest, CanceledOrRefusedTheMapIsAsBefore) {
  Strew(4);
  int calls = 0;
  ASSERT_EQ(GenerateContinuousContours(*map, 20,
                                       [&](const char* stage, int) {
                                         ++calls;
                                         return stage == nullptr ||
                                                std::string(stage) != "Connecting contours...";
                                       }),
            ContourCanceled);
  EXPECT_GT(calls, 3);
  EXPECT_EQ(GenerateContinuousContours(*map, 0), ContourNothing);
  Add(1.02, 36.02, 1e12);
  EXPECT_EQ(GenerateContinuousContours(*map, 20), ContourRefused);
  EXPECT_EQ(messages.Entries().size(), 1U);
  EXPECT_TRUE(map->continuousContours.empty());
  EXPECT_TRUE(map->contourPoints.store.empty());
  EXPECT_TRUE(workspace.continuousContourCounts.empty());
}

}  // namespace
}  // namespace orvane
