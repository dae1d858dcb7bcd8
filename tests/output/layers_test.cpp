#include "output/layers.h"

#include "estimates/range_estimates.h"
#include "output/exported_map.h"
#include "output/layer_export.h"
#include "output/map_features.h"
#include "support/counted_progress.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

struct Layers : ExportFixture {
  static std::vector<LayerFeature> FeaturesOf(const ExportedLayer& layer) {
    std::vector<LayerFeature> features;
    layer.visit([&](const LayerFeature& feature) {
      features.push_back(feature);
      return true;
    });
    return features;
  }
  static std::string Value(const ExportedLayer& layer, const LayerFeature& feature,
                           std::string_view name) {
    for (size_t i = 0; i < layer.fields.size(); ++i) {
      if (layer.fields[i].name != name) continue;
      const FieldValue& value = feature.values[i];
      if (const auto* text = std::get_if<std::string>(&value)) return *text;
      if (const auto* whole = std::get_if<std::int64_t>(&value)) return std::to_string(*whole);
      return std::holds_alternative<double>(value) ? "real" : "none";
    }
    return "no field";
  }
  ExportedLayer Only(Map& map, const std::string& name) {
    std::vector<ExportedLayer> layers = LayersOf(map, {name});
    EXPECT_EQ(layers.size(), 1U);
    return layers.front();
  }
};

TEST_F(Layers, AreThoseOfTheirNamesInAFixedOrder) {
  Map& map = Open(SiteOfAllGroups);
  Texts all;
  for (const ExportedLayer& layer : LayersOf(map, {})) all.push_back(layer.name);
  EXPECT_EQ(all, (Texts{"points", "trails", "areas", "grids", "shades", "ranges", "clusters",
                        "overlaps", "contours"}));
  Texts some;
  for (const ExportedLayer& layer : LayersOf(map, {"estimates", "ranges", "points", "ranges"})) {
    some.push_back(layer.name);
  }
  EXPECT_EQ(some, (Texts{"points", "ranges", "estimates"}));
  EXPECT_TRUE(IsLayerName("contours"));
  EXPECT_FALSE(IsLayerName("Points"));
  EXPECT_FALSE(IsLayerName(""));
}

TEST_F(Layers, KnowTheirShapesBeforeTheFirstFeature) {
  Map& map = Open(SiteOfAllGroups);
  const ExportedLayer points = Only(map, "points");
  EXPECT_EQ(points.kind, GeoKind::Point);
  EXPECT_TRUE(points.hasAltitudes);
  EXPECT_EQ(points.count, FeaturesOf(points).size());
  EXPECT_FALSE(Only(map, "grids").hasAltitudes);
  // One place gives a point, which is not a line.
  map.trails.emplace_front().points = {&Named(map, "Camp")};
  EXPECT_EQ(Only(map, "trails").kind, GeoKind::None);
  // Across the 180th meridian a trail has two parts.
  Named(map, "Ridge").geo.lon = -179;
  Named(map, "Camp").geo.lon = 179;
  EXPECT_TRUE(Only(map, "trails").several);
}

TEST_F(Layers, HaveAValueForEachField) {
  Map& map = Open(SiteOfAllGroups);
  for (const ExportedLayer& layer : LayersOf(map, {})) {
    for (const LayerFeature& feature : FeaturesOf(layer)) {
      EXPECT_EQ(feature.values.size(), layer.fields.size()) << layer.name;
    }
  }
  const ExportedLayer trails = Only(map, "trails");
  const LayerFeature trail = FeaturesOf(trails).front();
  EXPECT_EQ(Value(trails, trail, "name"), "Main");
  EXPECT_EQ(Value(trails, trail, "color"), "#806040");
  EXPECT_EQ(Value(trails, trail, "pathLength"), "real");
  EXPECT_EQ(Value(trails, trail, "groundLength"), "none");
  EXPECT_EQ(trail.title, "Main");
  EXPECT_EQ(trail.group, "Path");
  EXPECT_EQ(trail.color, 0x806040U);
  EXPECT_EQ(trail.shape.parts.front()[0].altitude, 10);
  EXPECT_TRUE(std::isnan(trail.shape.parts.front()[2].altitude));
  const ExportedLayer points = Only(map, "points");
  bool found = false;
  for (const LayerFeature& point : FeaturesOf(points)) {
    if (point.title != "Camp") continue;
    found = true;
    EXPECT_EQ(Value(points, point, "kind"), "point");
    EXPECT_EQ(Value(points, point, "synonyms"), "Base");
    EXPECT_EQ(point.note, "the camp");
    EXPECT_TRUE(point.isMark);
  }
  EXPECT_TRUE(found);
}

TEST_F(Layers, OfCountsHaveTheirNamesUnlessTheyAreTaken) {
  Map& map = Open("T\t\tBlue\tAna\t2001-3-4\nG\t0800-0815\tN1\tE30\t\t1\t,3,1\n");
  map.smName[0] = "Fruit";
  map.smName[1] = "FID";
  map.smName[2] = "synonyms";
  const ExportedLayer points = Only(map, "points");
  const LayerFeature stop = FeaturesOf(points).front();
  EXPECT_NE(Value(points, stop, "Fruit"), "no field");
  EXPECT_NE(Value(points, stop, "sm2"), "no field");
  EXPECT_NE(Value(points, stop, "sm3"), "no field");
  EXPECT_EQ(Value(points, stop, "date"), "2001-03-04");
}

TEST_F(Layers, OfShadesHaveCellsBeyondTheGridToo) {
  Map& map = Open("G\tCamp\tN1\tE30\nH\tCamp\t100\t2\t2\t0\tA1\t11\nHS\tA2\t#ff0000\n");
  GridShade& beyond = map.gridShades.emplace_front();
  beyond = {45, 0x00FF00, &map.grids.front(), -1, 7};
  const ExportedLayer shades = Only(map, "shades");
  const std::vector<LayerFeature> features = FeaturesOf(shades);
  ASSERT_EQ(features.size(), 2U);
  EXPECT_EQ(Value(shades, features[0], "row"), "-1");
  EXPECT_EQ(features[0].color, 0x00FF00U);
  EXPECT_TRUE(features[0].filled);
  EXPECT_EQ(Value(shades, features[1], "name"), "A2");
}

/// A range of six fixes, one of two, and one of none.
constexpr const char* ThreeRanges =
    "T\t\tOru\tUlo\t2003-3-1\nG\t8:00\tN1\tE30\nG\t9:00\tN1.001\tE30\nG\t10:00\tN1\tE30.001\n"
    "G\t11:00\tN1.0002\tE30.0002\nG\t12:00\tN1.0007\tE30.0001\nG\t13:00\tN1.004\tE30.004\n"
    "T\t\tTavu\nG\t8:00\tN1.01\tE30.01\nG\t9:00\tN1.02\tE30.01\n"
    "R\tUlos\nK\tOru\nR\tTavus\nK\tTavu\nR\tNobody\nK\tNone\n";

TEST_F(Layers, OfEstimatesHaveTheirFigures) {
  Map& map = Open(ThreeRanges);
  const ExportedLayer estimates = Only(map, "estimates");
  EXPECT_EQ(estimates.kind, GeoKind::Area);
  EXPECT_FALSE(estimates.hasAltitudes);
  const std::vector<LayerFeature> features = FeaturesOf(estimates);
  Texts listed;
  for (const LayerFeature& feature : features) {
    listed.push_back(
        feature.title + "; " + Value(estimates, feature, "range") + "; " +
        Value(estimates, feature, "caption") + "; " + Value(estimates, feature, "method") + "; " +
        Value(estimates, feature, "percent") + "; " + Value(estimates, feature, "bandwidth") +
        "; " + Value(estimates, feature, "fixes"));
  }
  std::sort(listed.begin(), listed.end());
  // Two fixes have a kernel, but no polygon.
  EXPECT_EQ(listed,
            (Texts{"Tavus Kernel, 50 % of the density; Tavus; Kernel, 50 % of the density; kernel; "
                   "50; real; 2",
                   "Tavus Kernel, 95 % of the density; Tavus; Kernel, 95 % of the density; kernel; "
                   "95; real; 2",
                   "Ulos Kernel, 50 % of the density; Ulos; Kernel, 50 % of the density; kernel; "
                   "50; real; 6",
                   "Ulos Kernel, 95 % of the density; Ulos; Kernel, 95 % of the density; kernel; "
                   "95; real; 6",
                   "Ulos MCP, 50 % of the fixes; Ulos; MCP, 50 % of the fixes; MCP; 50; none; 6",
                   "Ulos MCP, 95 % of the fixes; Ulos; MCP, 95 % of the fixes; MCP; 95; none; 6"}));
  EXPECT_EQ(FeaturesOf(estimates).size(), features.size()) << "each visit gives the same";
  EXPECT_EQ(estimates.count, features.size());
}

TEST_F(Layers, OfEstimatesHaveTheAreasOfTheEstimates) {
  Map& map = Open(ThreeRanges);
  const Range* range = FindRange(map, "Ulos");
  ASSERT_NE(range, nullptr);
  const RangeEstimate estimate = EstimateRanges({&range, 1}, {}, nullptr).front();
  const ExportedLayer layer = Only(map, "estimates");
  std::vector<double> areas;
  for (const LayerFeature& feature : FeaturesOf(layer)) {
    if (Value(layer, feature, "range") != "Ulos") continue;
    for (size_t i = 0; i < layer.fields.size(); ++i) {
      if (layer.fields[i].name == "area") areas.push_back(std::get<double>(feature.values[i]));
      if (layer.fields[i].name != "bandwidth") continue;
      const auto* bandwidth = std::get_if<double>(&feature.values[i]);
      if (bandwidth != nullptr) {
        EXPECT_EQ(*bandwidth, estimate.kernel->bandwidth);
      }
    }
  }
  EXPECT_EQ(areas,
            (std::vector<double>{estimate.mcp[9].area, estimate.mcp[0].area,
                                 estimate.kernel->areas[1].area, estimate.kernel->areas[0].area}));
}

TEST_F(Layers, OfEstimatesStopWhenTheyAreCanceled) {
  Map& map = Open(ThreeRanges);
  CountedProgress progress(1);
  workspace.progress = &progress;
  EXPECT_TRUE(EstimateFeatures(map).empty());
  workspace.progress = nullptr;
  EXPECT_EQ(EstimateFeatures(map).size(), 6U);
}

TEST_F(Layers, OfTooManyCellsAreLeftOut) {
  Map& map = Open("G\tCamp\tN1\tE30\n");
  AddGrid(map, Named(map, "Camp"), 3000, 3000);
  const ExportedLayer grids = Only(map, "grids");
  EXPECT_FALSE(grids.isComplete);
  EXPECT_EQ(grids.count, 0U);
  EXPECT_EQ(Said(), Texts{"The grids have more than 4000000 cells: they are left out"});
}

TEST_F(Layers, OfContoursAreThoseOfTheNearestMap) {
  Map& basis = Open("G\tCamp\tN1\tE30\t10\nG\tRidge\tN1.001\tE30\t10\n", "basis.map");
  Trail& line = basis.contourTrails.emplace_front();
  line.name = "Contour   10 #1";
  line.type = "Contour   10";
  line.points = {&Named(basis, "Camp"), &Named(basis, "Ridge"), &Named(basis, "Camp")};
  Map& map = Empty();
  map.basis = &basis;
  const ExportedLayer contours = Only(map, "contours");
  const std::vector<LayerFeature> features = FeaturesOf(contours);
  ASSERT_EQ(features.size(), 1U);
  EXPECT_EQ(Value(contours, features[0], "method"), "classic");
  EXPECT_EQ(Value(contours, features[0], "closed"), "1");
  EXPECT_TRUE(contours.hasAltitudes);
}

// --- Export -----------------------------------------------------------------------------------

TEST(LayerSystem, IsReadFromItsName) {
  EXPECT_EQ(ParseLayerSystem("wgs84")->number, Wgs84System);
  EXPECT_TRUE(ParseLayerSystem("UTM")->isUtm);
  EXPECT_EQ(ParseLayerSystem("epsg:32636")->number, 32636);
  for (const char* text : {"", "utm36", "EPSG:", "EPSG:0", "EPSG:-1", "EPSG:12x", "EPSG: 12",
                           "4326", "EPSG:99999999999"}) {
    EXPECT_FALSE(ParseLayerSystem(text)) << text;
  }
}

TEST(LayerPath, HasTheLayerBeforeItsEnding) {
  EXPECT_EQ(LayerPath("site.csv", "trails"), "site-trails.csv");
  EXPECT_EQ(LayerPath("a.b/site", "trails"), "a.b/site-trails");
  EXPECT_EQ(LayerPath("a/.site", "trails"), "a/.site-trails");
  EXPECT_EQ(LayerPath("a/my.site.fgb", "points"), "a/my.site-points.fgb");
}

TEST_F(Layers, AreInTheUtmZoneOfTheMiddleOfTheMap) {
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tN1\tE30\n", "a.map")), 32636);
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tN1\tE29.9\n", "b.map")), 32635);
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tS3\tE36\nG\tB\tN1\tE37\n", "c.map")), 32737);
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tN1\tW180\n", "d.map")), 32601);
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tN85\tE30\n", "e.map")), std::nullopt);
  EXPECT_EQ(UtmSystemOf(Empty()), std::nullopt);
}

/// A module that writes what it gets as text, and fails for some formats.
const FormatModule FakeModule = {
    "", [](int) { return true; },
    [](const LayerFile& file, const std::vector<ExportedLayer>& layers) {
      if (file.format == LayerFormat::Kml) return LayersWritten{"no ink", 0};
      std::ofstream out(file.path);
      for (const ExportedLayer& layer : layers) out << layer.name << ' ' << layer.count << '\n';
      return LayersWritten{{}, file.system == Wgs84System ? 0U : 2U};
    },
    nullptr, nullptr};

TEST_F(Layers, NeedTheModule) {
  Map& map = Open(SiteOfAllGroups);
  const LayerRequest request = {LayerFormat::Gpx, folder.Path("a.gpx"), {}, {}};
  EXPECT_FALSE(ExportLayers(map, request, {nullptr, "it is not installed"}).complete);
  EXPECT_EQ(Said(), Texts{"Writing GPX needs the package orvane-gis: it is not installed"});
  EXPECT_EQ(FilesThere(), Texts{});
}

TEST_F(Layers, ThatTheModuleCannotWriteGiveItsReason) {
  Map& map = Open(SiteOfAllGroups);
  folder.Write("a.kml", "old");
  const LayerRequest request = {LayerFormat::Kml, folder.Path("a.kml"), {}, {}};
  EXPECT_FALSE(ExportLayers(map, request, {&FakeModule, {}}).complete);
  EXPECT_EQ(Said(), Texts{"Error while writing " + folder.Path("a.kml") +
                          ": no ink; the old file, if any, is unchanged"});
  EXPECT_EQ(folder.Read("a.kml"), "old");
}

TEST_F(Layers, ArePrintedOrWritten) {
  Map& map = Open(SiteOfAllGroups);
  std::string printed;
  const auto print = [&](std::string_view text) {
    printed += text;
    return true;
  };
  const LayerRequest request = {LayerFormat::GeoPackage, folder.Path("a"), {"areas", "grids"}, {}};
  EXPECT_TRUE(PrintLayers(map, request, {&FakeModule, {}}, print).complete);
  EXPECT_EQ(printed, "areas 1\ngrids 6\n");
  EXPECT_EQ(ExportLayers(map, request, {&FakeModule, {}}).summary,
            "Exported areas and grids to " + folder.Path("a") + ": 7 features in EPSG:4326");
  EXPECT_EQ(folder.Read("a"), printed);
  // Layers without features are written, but the sentence does not claim them.
  const LayerRequest more = {LayerFormat::GeoPackage, folder.Path("a"), {"grids", "contours"}, {}};
  EXPECT_EQ(ExportLayers(map, more, {&FakeModule, {}}).summary,
            "Exported grids to " + folder.Path("a") + ": 6 features in EPSG:4326");
  EXPECT_EQ(folder.Read("a"), "grids 6\ncontours 0\n");
  const LayerRequest none = {LayerFormat::GeoPackage, folder.Path("a"), {"contours"}, {}};
  EXPECT_EQ(ExportLayers(map, none, {&FakeModule, {}}).summary,
            "Exported no features to " + folder.Path("a") + " in EPSG:4326");
  EXPECT_FALSE(PrintLayers(map, request, {&FakeModule, {}}, [](std::string_view) {
                 return false;
               }).complete);
}

TEST_F(Layers, WithoutAPlaceInTheirSystemAreAnError) {
  Map& map = Open(SiteOfAllGroups);
  LayerRequest request = {LayerFormat::GeoPackage, folder.Path("a"), {"areas"}, {false, 32650}};
  const LayerOutcome outcome = ExportLayers(map, request, {&FakeModule, {}});
  EXPECT_FALSE(outcome.complete);
  EXPECT_EQ(outcome.summary, "");
  EXPECT_EQ(Said(), Texts{"No place in EPSG:32650 for 2 of the features; the old file, if any, is "
                          "unchanged"});
  messages.Clear();
  request.system.isUtm = true;
  Map& nowhere = Empty();
  EXPECT_FALSE(ExportLayers(nowhere, request, {&FakeModule, {}}).complete);
  EXPECT_EQ(Said(), Texts{"The middle of made.map is in no UTM zone"});
}

TEST_F(Layers, TheUtmZoneIsThatOfTheMiddleAlsoAcrossThe180thMeridian) {
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tN1\tE30\nG\tB\tN2\tE32\n", "a.map")), 32636);
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tS1\tE30\nG\tB\tS2\tE28\n", "b.map")), 32735);
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tN1\tE179 59'\nG\tB\tN1\tW179 50'\n", "c.map")), 32601);
  EXPECT_EQ(UtmSystemOf(Open("G\tA\tN1\tW179 59'\nG\tB\tN1\tE179 50'\n", "d.map")), 32660);
}

}  // namespace
}  // namespace orvane
