#include "output/map_features.h"

#include "output/exported_map.h"

#include <variant>

namespace orvane {
namespace {

struct MapFeatures : ExportFixture {
  /// A map with features of every kind.
  Map& WithAll() {
    Map& map = Open(SiteOfRanges);
    Trail& line = map.contourTrails.emplace_front();
    line.points = map.trails.front().points;
    map.continuousContours.push_front(line);
    AddTrail(map, "Plot", map.trails.front().points).filled = true;
    return map;
  }
  static std::string TextOf(const MapFeature& feature, std::string_view key) {
    for (const MapProperty& property : feature.properties) {
      if (property.key != key) continue;
      const auto* text = std::get_if<std::string>(&property.value);
      return text == nullptr ? "no text" : *text;
    }
    return "no property";
  }
  static std::vector<MapFeature> TrailsOf(const Map& map) {
    std::vector<MapFeature> features;
    EXPECT_TRUE(VisitTrails(map, std::nullopt, [&](const MapFeature& feature) {
      features.push_back(feature);
      return true;
    }));
    return features;
  }
};

TEST_F(MapFeatures, EndWhenNoMoreAreWanted) {
  Map& map = WithAll();
  using Visit = std::function<bool(const MapFeatureTaker&)>;
  const std::pair<const char*, Visit> visits[] = {
      {"point", [&](const auto& take) { return VisitPoints(map, take); }},
      {"stop", [&](const auto& take) { return VisitStops(map, take); }},
      {"trail", [&](const auto& take) { return VisitTrails(map, false, take); }},
      {"area", [&](const auto& take) { return VisitTrails(map, true, take); }},
      {"range", [&](const auto& take) { return VisitRanges(map, take); }},
      {"cluster", [&](const auto& take) { return VisitClusters(map, take); }},
      {"intersection", [&](const auto& take) { return VisitOverlaps(map, take); }},
      {"cell", [&](const auto& take) { return VisitCells(map, take); }},
      {"cell", [&](const auto& take) { return VisitShades(map, take); }},
      {"contour", [&](const auto& take) { return VisitContours(map, take); }}};
  for (const auto& each : visits) {
    const char* const kind = each.first;
    const Visit& visit = each.second;
    int seen = 0;
    EXPECT_FALSE(visit([&](const MapFeature& feature) {
      ++seen;
      EXPECT_STREQ(feature.kind, kind);
      return false;
    })) << kind;
    EXPECT_EQ(seen, 1) << kind;
    seen = 0;
    EXPECT_TRUE(visit([&](const MapFeature&) { return ++seen > 0; })) << kind;
    EXPECT_GE(seen, 1) << kind;
  }
}

TEST_F(MapFeatures, OfContoursNameTheirMethodAndWhetherTheyAreClosed) {
  Map& map = Open("G\tA\tN1\tE30\t10\nG\tB\tN1.001\tE30\t10\n");
  Point* a = &Named(map, "A");
  Point* b = &Named(map, "B");
  map.contourTrails.emplace_front().points = {a, b, a};
  map.continuousContours.emplace_front().points = {a, b};
  Texts methods;
  std::vector<std::int64_t> closed;
  EXPECT_TRUE(VisitContours(map, [&](const MapFeature& feature) {
    methods.push_back(TextOf(feature, "method"));
    closed.push_back(std::get<std::int64_t>(feature.properties.back().value));
    return true;
  }));
  EXPECT_EQ(methods, Texts({"classic", "continuous"}));
  EXPECT_EQ(closed, (std::vector<std::int64_t>{1, 0}));
  EXPECT_TRUE(VisitContours(Empty(), [](const MapFeature&) { return false; }));
}

TEST_F(MapFeatures, OfATrailHaveATitleForTheReader) {
  Map& map = Open(
      "T\tRidge\tPath\tAna\nG\tA\tN1\tE30\nT\t\tOru\tAna\t2003-3-14\nP\tA\n"
      "T\t\tOru\t\nP\tA\nT\t \tPath\tAna\nP\tA\n");
  Texts titles;
  for (const MapFeature& trail : TrailsOf(map)) titles.push_back(trail.title);
  EXPECT_EQ(titles, (Texts{"Ridge", "Oru Ana 2003-03-14", "Oru", "Path Ana"}));
}

TEST_F(MapFeatures, OfATrailHaveAnAreaIfItIsClosed) {
  Map& map = Open(
      "T\topen\nG\tA\tN0\tE0\nG\tB\tN0.01\tE0\nG\tC\tN0\tE0.01\nT\tclosed\nP\tA\nP\tB\nP\tC\nP\tA\n"
      "T\tsingle\nP\tA\n");
  Texts areas;
  for (const MapFeature& trail : TrailsOf(map)) areas.push_back(TextOf(trail, "area"));
  EXPECT_EQ(areas, (Texts{"no property", "no text", "no property"}));
}

TEST_F(MapFeatures, OfCellsNameTheColumnFirstWhereTheMapDoes) {
  Map& map = Open("G\tCamp\tN1\tE30\nH\tCamp\t100\t1\t2\t0\t01\ta1\nHS\tb1\t#ff0000\n");
  Texts names;
  EXPECT_TRUE(VisitCells(map, [&](const MapFeature& cell) {
    names.push_back(TextOf(cell, "name") + " " + TextOf(cell, "color"));
    return true;
  }));
  EXPECT_EQ(names, (Texts{"a1 no property", "b1 #ff0000"}));
}

TEST_F(MapFeatures, OfACellWithoutAColorHaveNone) {
  Map& map = Open("G\tCamp\tN1\tE30\nH\tCamp\t100\t1\t1\t0\tA1\t11\nHS\tA1\tnone of these\n");
  EXPECT_TRUE(VisitShades(map, [&](const MapFeature& cell) {
    EXPECT_EQ(TextOf(cell, "color"), "no text");
    EXPECT_EQ(cell.color, NoColor);
    EXPECT_TRUE(cell.filled);
    return true;
  }));
}

}  // namespace
}  // namespace orvane
