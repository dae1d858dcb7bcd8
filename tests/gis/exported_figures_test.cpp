#include "base/number_text.h"
#include "elevation/contours.h"
#include "entry/gis_import.h"
#include "gis/exported_layers.h"

#include <cmath>
#include <cstdlib>

namespace orvane {
namespace {

/// A feature in the words of ogrinfo.
struct ListedFeature {
  std::string text;

  /// \return the value of a field; empty if it has none
  std::string Field(const std::string& name) const {
    const size_t line = text.find("\n  " + name + " (");
    if (line == text.npos) return {};
    const size_t value = text.find(" = ", line) + 3;
    return text.substr(value, text.find('\n', value) - value);
  }
  double Number(const std::string& name) const { return std::strtod(Field(name).c_str(), nullptr); }

  /// \param dimensions  numbers of each place
  /// \return the places of its geometry
  std::vector<std::vector<double>> Places(const std::string& kind, size_t dimensions) const {
    const size_t line = text.find("\n  " + kind + ' ');
    EXPECT_NE(line, text.npos) << "no " << kind << " in " << text;
    if (line == text.npos) return {};
    const std::string numbers =
        text.substr(line + kind.size() + 3, text.find('\n', line + 1) - line);
    std::vector<std::vector<double>> places;
    size_t count = 0;
    for (size_t at = 0; at < numbers.size();) {
      char* end = nullptr;
      const double value = std::strtod(numbers.c_str() + at, &end);
      const size_t read = static_cast<size_t>(end - numbers.c_str()) - at;
      if (read > 0 && count++ % dimensions == 0) places.emplace_back();
      if (read > 0) places.back().push_back(value);
      at += std::max<size_t>(read, 1);
    }
    return places;
  }
};

void ExpectNear(double read, double computed) {
  EXPECT_NEAR(read, computed, std::abs(computed) * 1e-12 + 1e-12);
}

/// What is read back from a file has the figures and places that the map has.
struct ExportedFigures : LayerFiles {
  Map& map = Open(SiteOfAllLayers);

  void SetUp() override {
    LayerFiles::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    ASSERT_EQ(GenerateContours(map, 5), ContourMade);
    ASSERT_TRUE(ExportTo(map, LayerFormat::GeoPackage, "site.gpkg").complete);
  }

  std::vector<ListedFeature> Features(const std::string& layer) const {
    const std::string listed = Listed("site.gpkg", layer);
    std::vector<ListedFeature> features;
    for (size_t at = listed.find("OGRFeature("); at != listed.npos;) {
      const size_t next = listed.find("OGRFeature(", at + 1);
      features.push_back({listed.substr(at, next - at)});
      at = next;
    }
    return features;
  }

  /// Compares a ring with vertices in any order and direction.
  static void ExpectRing(const ListedFeature& feature, const std::vector<LatLon>& vertices) {
    const auto places = feature.Places("POLYGON", 2);
    ASSERT_EQ(places.size(), vertices.size() + 1);
    EXPECT_EQ(places.front(), places.back());
    for (const LatLon& vertex : vertices) {
      EXPECT_TRUE(std::any_of(places.begin(), places.end(),
                              [&](const std::vector<double>& place) {
                                return std::abs(place[0] - vertex.lon) < 1e-12 &&
                                       std::abs(place[1] - vertex.lat) < 1e-12;
                              }))
          << vertex.lat << ' ' << vertex.lon;
    }
  }
  static std::vector<LatLon> PlacesOf(const std::vector<Point*>& points) {
    std::vector<LatLon> places;
    for (const Point* point : points) places.push_back({point->geo.lat, point->geo.lon});
    return places;
  }
};

TEST_F(ExportedFigures, OfRangesAreThoseOfTheMap) {
  const auto features = Features("ranges");
  auto feature = features.begin();
  for (const Range& range : map.ranges) {
    ASSERT_NE(feature, features.end());
    EXPECT_EQ(feature->Field("name"), *range.name);
    ExpectNear(feature->Number("area"), range.mcpArea);
    EXPECT_GT(range.gridArea, 0);
    ExpectNear(feature->Number("gridArea"), range.gridArea);
    EXPECT_EQ(feature->Number("follows"), 1);
    EXPECT_EQ(feature->Number("minutes"), static_cast<double>(range.totalMinutes));
    EXPECT_EQ(feature->Number("meanDailyPath"), static_cast<double>(range.meanDailyPath));
    ExpectRing(*feature++, PlacesOf(range.hull));
  }
  EXPECT_EQ(feature, features.end());
}

TEST_F(ExportedFigures, OfClustersAreThoseOfTheMap) {
  const auto features = Features("clusters");
  auto feature = features.begin();
  for (const Range& range : map.ranges) {
    ASSERT_NE(range.clusters, nullptr);
    for (size_t level = 0; level < ClusterLevels; ++level) {
      for (const Cluster& cluster : range.clusters->clusters) {
        if (cluster.hull[level].empty()) continue;
        ASSERT_NE(feature, features.end());
        EXPECT_EQ(feature->Field("range"), *range.name);
        EXPECT_EQ(feature->Number("level"), 5.0 * static_cast<double>(level + 1));
        ExpectNear(feature->Number("area"), cluster.area[level]);
        if (cluster.hull[level].size() > 2) ExpectRing(*feature, PlacesOf(cluster.hull[level]));
        ++feature;
      }
    }
  }
  EXPECT_EQ(feature, features.end());
}

TEST_F(ExportedFigures, OfOverlapsAreThoseOfTheMap) {
  const auto features = Features("overlaps");
  ASSERT_EQ(features.size(), 1U);
  const RangeIntersection& overlap = map.intersections.front();
  EXPECT_EQ(features[0].Field("rangeA"), *overlap.a.range->name);
  EXPECT_EQ(features[0].Field("rangeB"), *overlap.b.range->name);
  ExpectNear(features[0].Number("area"), overlap.area);
  ExpectNear(features[0].Number("bothCellsArea"), overlap.bothCellsArea);
  EXPECT_EQ(features[0].Number("minutesA"), overlap.a.tally.minutes);
  EXPECT_EQ(features[0].Number("minutesB"), overlap.b.tally.minutes);
  EXPECT_GT(overlap.a.tally.minutes + overlap.b.tally.minutes, 0);
  ExpectNear(features[0].Number("timeShareA"), double{overlap.a.timeShare});
  ExpectRing(features[0], overlap.polygon);
}

TEST_F(ExportedFigures, OfCellsAreThoseOfTheGrid) {
  const auto features = Features("grids");
  ASSERT_EQ(features.size(), 6U);
  for (size_t i = 0; i < features.size(); ++i) {
    EXPECT_EQ(features[i].Number("row"), static_cast<double>(i / 2));
    EXPECT_EQ(features[i].Number("column"), static_cast<double>(i % 2));
    EXPECT_EQ(features[i].Number("cellSize"), 100);
    // Each is a hundred metres from the one before it, of 111120 to a degree.
    const auto here = features[i].Places("POLYGON", 2);
    ASSERT_EQ(here.size(), 5U);
    double north = 0;
    double south = 90;
    for (const auto& place : here) {
      north = std::max(north, place[1]);
      south = std::min(south, place[1]);
    }
    EXPECT_NEAR((north - south) * 111120, 100, 1e-6);
  }
  EXPECT_EQ(features[0].Places("POLYGON", 2)[0], (std::vector<double>{30, 1}));
  const auto shades = Features("shades");
  ASSERT_EQ(shades.size(), 1U);
  EXPECT_EQ(shades[0].Field("color"), "#ff0000");
}

TEST_F(ExportedFigures, OfContoursAreThoseOfTheMap) {
  const auto features = Features("contours");
  auto feature = features.begin();
  for (const Trail& line : map.contourTrails) {
    ASSERT_NE(feature, features.end());
    EXPECT_EQ(feature->Number("level"), double{line.points.front()->geo.altitude});
    const auto places = feature->Places("LINESTRING Z", 3);
    ASSERT_EQ(places.size(), line.points.size());
    for (size_t i = 0; i < places.size(); ++i) {
      ExpectNear(places[i][0], line.points[i]->geo.lon);
      ExpectNear(places[i][1], line.points[i]->geo.lat);
      ExpectNear(places[i][2], double{line.points[i]->geo.altitude});
    }
    ++feature;
  }
  EXPECT_GT(features.size(), 2U);
  EXPECT_EQ(feature, features.end());
}

size_t CountOf(const std::string& part, const std::string& text) {
  size_t count = 0;
  for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST_F(ExportedFigures, OfKmlHaveEveryFeatureAndItsName) {
  ASSERT_TRUE(ExportTo(map, LayerFormat::Kml, "site.kml",
                       {"points", "trails", "areas", "grids", "shades", "ranges", "clusters",
                        "overlaps", "contours"})
                  .complete);
  const std::string listed = Listed("site.kml");
  ExpectNoComplaint(listed);
  size_t clusters = 0;
  for (const Range& range : map.ranges) {
    for (const Cluster& cluster : range.clusters->clusters) {
      for (const auto& hull : cluster.hull) clusters += hull.empty() ? 0U : 1U;
    }
  }
  const auto contours =
      static_cast<size_t>(std::distance(map.contourTrails.begin(), map.contourTrails.end()));
  const size_t others = 15 + 3 + 1 + 6 + 1 + 2 + 1;
  EXPECT_EQ(CountOf("\nOGRFeature(", listed), others + clusters + contours);
  for (const char* name : {"Camp", "Ridge", "Main", "Plot", "Blue Ana 2001-03-04", "Blue group"}) {
    EXPECT_EQ(CountOf(std::string("  Name (String) = ") + name + '\n', listed), 1U) << name;
  }
  const size_t ofBlue = CountOf("  Name (String) = Blue group ", listed);
  const size_t ofRed = CountOf("  Name (String) = Red group ", listed);
  EXPECT_EQ(ofBlue + ofRed, clusters);
}

TEST_F(ExportedFigures, OfKmlAreImportedAgain) {
  ASSERT_TRUE(ExportTo(map, LayerFormat::Kml, "site.kml", {"points", "trails", "ranges"}).complete);
  Map& other = Open("", "other.map");
  const auto import = StartGisImport(other, folder.Path("site.kml"), {});
  ASSERT_TRUE(import);
  EXPECT_EQ(import->file.waypoints.size(), 15U);
  ASSERT_EQ(import->file.tracks.size(), 3U);
  EXPECT_EQ(import->file.tracks[0].name, "Main");
  ASSERT_EQ(import->file.tracks[0].fixes.size(), 3U);
  EXPECT_EQ(import->file.tracks[0].fixes[1].lat, 1.001);
  EXPECT_EQ(import->file.tracks[0].fixes[1].lon, 30.001);
  EXPECT_EQ(import->file.tracks[0].fixes[1].altitude, 30.0F);
  ASSERT_FALSE(Said().empty());
  EXPECT_EQ(Said().front(), folder.Path("site.kml") +
                                ": shapes other than points, lines and tracks are left out: 2");
}

}  // namespace
}  // namespace orvane
