#include "elevation/contours.h"
#include "estimates/density_rings.h"
#include "estimates/range_estimates.h"
#include "estimates/range_fixes.h"
#include "estimates/range_outlines.h"
#include "gis/exported_layers.h"
#include "support/counted_progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <sys/stat.h>

namespace orvane {
namespace {

constexpr LayerFormat Formats[] = {LayerFormat::GeoPackage, LayerFormat::Kml, LayerFormat::Gpx,
                                   LayerFormat::FlatGeobuf, LayerFormat::Csv};

TEST_F(LayerFiles, OfAGeoPackageHaveEveryLayer) {
  Map& map = Open(SiteOfAllLayers);
  ASSERT_EQ(GenerateContours(map, 5), ContourMade);
  const LayerOutcome outcome = ExportTo(map, LayerFormat::GeoPackage, "site.gpkg");
  EXPECT_TRUE(outcome.complete);
  EXPECT_EQ(Said(), Texts{});
  const std::pair<const char*, const char*> expected[] = {
      {"points", "Geometry: 3D Point\nFeature Count: 15\n"},
      {"trails", "Geometry: 3D Line String\nFeature Count: 3\n"},
      {"areas", "Geometry: Polygon\nFeature Count: 1\n"},
      {"grids", "Geometry: Polygon\nFeature Count: 6\n"},
      {"shades", "Geometry: Polygon\nFeature Count: 1\n"},
      {"ranges", "Geometry: Polygon\nFeature Count: 2\n"},
      {"clusters", "Feature Count: "},
      {"overlaps", "Geometry: Polygon\nFeature Count: 1\n"},
      {"contours", "Geometry: 3D Line String\nFeature Count: "}};
  for (const auto& [layer, counted] : expected) {
    const std::string listed = Listed("site.gpkg", layer);
    ExpectNoComplaint(listed);
    ExpectIn(listed, counted);
    ExpectIn(listed, "ID[\"EPSG\",4326]");
    EXPECT_EQ(listed.find("Feature Count: 0\n"), listed.npos) << layer;
  }
}

TEST_F(LayerFiles, HaveCoordinatesAltitudesAndAttributes) {
  Map& map = Open(SiteOfAllLayers);
  ASSERT_TRUE(ExportTo(map, LayerFormat::GeoPackage, "site.gpkg").complete);
  const std::string points = Listed("site.gpkg", "points");
  ExpectIn(points, "  kind (String) = point\n  name (String) = Camp\n  synonyms (String) = Base\n");
  ExpectIn(points,
           "  altitude (Real) = 10\n  note (String) = the \"camp\" & <fire>\n"
           "  POINT Z (30 1 10)\n");
  ExpectIn(points, "  name (String) = M\xC3\xBChle\n");
  ExpectIn(points,
           "  date (Date) = 2001/03/04\n  timeOfDay (Integer64) = 480\n"
           "  duration (Integer64) = 15\n");
  ExpectIn(points, "  POINT Z (30.001 0.998 nan)\n");
  const std::string trails = Listed("site.gpkg", "trails");
  ExpectIn(trails, "  color (String) = #806040\n");
  ExpectIn(trails, "  LINESTRING Z (30 1 10,30.001 1.001 30,30.001 1.002 20)\n");
  ExpectIn(trails, "  focalAnimal (String) = Ana\n");
  ExpectIn(Listed("site.gpkg", "areas"),
           "  POLYGON ((30.002 1.0,30.003 1.0,30.003 1.001,30.002 1.0))\n");
  ExpectIn(Listed("site.gpkg", "shades"), "  name (String) = A2\n  grid (String) = Corner\n");
  ExpectIn(Listed("site.gpkg", "ranges"), "  name (String) = Blue group\n");
  ExpectIn(Listed("site.gpkg", "clusters"), "  range (String) = Red group\n");
  ExpectIn(Listed("site.gpkg", "overlaps"), "  rangeA (String) = ");
}

TEST_F(LayerFiles, HoldOnlyTheLayersAskedFor) {
  Map& map = Open(SiteOfAllLayers);
  const LayerOutcome outcome =
      ExportTo(map, LayerFormat::GeoPackage, "site.gpkg", {"ranges", "points"});
  EXPECT_EQ(outcome.summary, "Exported points and ranges to " + folder.Path("site.gpkg") +
                                 ": 17 features in EPSG:4326");
  const std::string listed = Listed("site.gpkg");
  EXPECT_EQ(listed.find("Layer name: trails"), listed.npos);
  ExpectIn(listed, "Layer name: points");
}

TEST_F(LayerFiles, WithoutFeaturesAreLayersToo) {
  Map& map = Open("G\tCamp\tN1\tE30\n");
  for (const LayerFormat format : Formats) {
    const std::string name = "site." + std::to_string(static_cast<int>(format));
    EXPECT_TRUE(ExportTo(map, format, name).complete) << FormatName(format);
  }
  EXPECT_EQ(Said(), Texts{});
  ExpectIn(Listed("site.0", "clusters"), "Feature Count: 0\n");
}

TEST_F(LayerFiles, AreInTheUtmZoneOfTheMiddle) {
  Map& map = Open(SiteOfAllLayers);
  const LayerOutcome outcome =
      ExportTo(map, LayerFormat::GeoPackage, "site.gpkg", {"points"}, {true, 0});
  EXPECT_TRUE(outcome.summary.ends_with("in EPSG:32636"));
  const std::string listed = Listed("site.gpkg", "points");
  ExpectIn(listed, "ID[\"EPSG\",32636]");
  ExpectIn(listed, "POINT Z (166072.062903");
  ExpectIn(listed, " 110682.837758");
}

TEST_F(LayerFiles, AreInASystemByItsNumber) {
  Map& map = Open("G\tCamp\tN1\tE30\t10\n");
  ASSERT_TRUE(
      ExportTo(map, LayerFormat::FlatGeobuf, "site.fgb", {"points"}, {false, 3857}).complete);
  const std::string listed = Listed("site.fgb");
  ExpectIn(listed, "ID[\"EPSG\",3857]");
  ExpectIn(listed, "POINT Z (3339584.723");
  EXPECT_TRUE(LoadFormatModule().module->knowsSystem(3857));
  EXPECT_FALSE(LoadFormatModule().module->knowsSystem(999999));
  // A system of heights.
  EXPECT_FALSE(LoadFormatModule().module->knowsSystem(5703));
}

TEST_F(LayerFiles, StayAsTheyWereIfTheSystemLeavesFeaturesOut) {
  Map& map = Open("G\tCamp\tN1\tE30\nG\tFar\tN0\tE123\n");
  folder.Write("site.gpkg", "old");
  const LayerOutcome outcome =
      ExportTo(map, LayerFormat::GeoPackage, "site.gpkg", {"points"}, {false, 32636});
  EXPECT_FALSE(outcome.complete);
  EXPECT_EQ(Said(), Texts{"No place in EPSG:32636 for 1 of the features; the old file, if any, is "
                          "unchanged"});
  EXPECT_EQ(folder.Read("site.gpkg"), "old");
}

TEST_F(LayerFiles, OfGpxHaveNoLongitudeOf180) {
  Map& map = Open("G\tEdge\tN1\tE180\n");
  ASSERT_TRUE(ExportTo(map, LayerFormat::Gpx, "edge.gpx", {"points"}).complete);
  ExpectIn(folder.Read("edge.gpx"), "<wpt lat=\"1.0\" lon=\"-180.0\">");
}

TEST_F(LayerFiles, OfGpxAreWaypointsAndTracks) {
  Map& map = Open(SiteOfAllLayers);
  ASSERT_TRUE(ExportTo(map, LayerFormat::Gpx, "site.gpx", {"points", "trails", "areas"}).complete);
  const std::string text = folder.Read("site.gpx");
  ExpectIn(text, "<gpx version=\"1.1\"");
  ExpectIn(text,
           "<wpt lat=\"1.0\" lon=\"30.0\">\n  <ele>10.0</ele>\n  <name>Camp</name>\n"
           "  <desc>the &quot;camp&quot; &amp; &lt;fire&gt;</desc>\n</wpt>");
  ExpectIn(text,
           "<trk>\n  <name>Main</name>\n  <trkseg>\n    <trkpt lat=\"1.0\" lon=\"30.0\">\n"
           "      <ele>10.0</ele>\n    </trkpt>");
  ExpectIn(text, "<name>Blue Ana 2001-03-04</name>");
  const std::string waypoints = Listed("site.gpx", "waypoints");
  ExpectNoComplaint(waypoints);
  // The stops are in the tracks of their follows.
  ExpectIn(waypoints, "Feature Count: 7\n");
  ExpectIn(Listed("site.gpx", "tracks"), "Feature Count: 4\n");
  ExpectIn(Listed("site.gpx", "track_points"), "Feature Count: 15\n");
  EXPECT_EQ(text.find("nan"), text.npos);
}

TEST_F(LayerFiles, OfOneLayerEachHaveItsName) {
  Map& map = Open(SiteOfAllLayers);
  const LayerOutcome outcome =
      ExportTo(map, LayerFormat::Csv, "site.csv", {"trails", "points", "areas"});
  EXPECT_EQ(outcome.summary, "Exported points, trails and areas to 3 files, " +
                                 folder.Path("site-points.csv") +
                                 " to site-areas.csv: 19 features in EPSG:4326");
  EXPECT_EQ(FilesThere(), (Texts{"site-areas.csv", "site-points.csv", "site-trails.csv"}));
  const std::string points = folder.Read("site-points.csv");
  EXPECT_TRUE(points.starts_with("X,Y,kind,name,synonyms,")) << points;
  ExpectIn(points, "\n30,1,point,Camp,Base,");
  ExpectIn(points, "\"the \"\"camp\"\" & <fire>\"");
  const std::string trails = folder.Read("site-trails.csv");
  ExpectIn(trails, "\"LINESTRING Z (30 1 10,30.001 1.001 30,30.001 1.002 20)\",Main,Path,");
  // A line without altitudes has two numbers a place.
  ExpectIn(trails, "\"LINESTRING (30.001 0.998,");
  ASSERT_TRUE(ExportTo(map, LayerFormat::FlatGeobuf, "all.fgb").complete);
  ExpectIn(Listed("all-overlaps.fgb"), "Feature Count: 1\n");
  // One layer asked for by name is the file itself.
  ASSERT_TRUE(ExportTo(map, LayerFormat::FlatGeobuf, "one.fgb", {"grids"}).complete);
  ExpectIn(Listed("one.fgb"), "Feature Count: 6\n");
}

/// Fixes on a circle: the kernels of their range have a hole, its polygons have none.
std::string CircleOfFixes() {
  constexpr int Fixes = 300;
  std::string text = "T\t\tBlue\tAna\t2001-3-4\n";
  for (int i = 0; i < Fixes; ++i) {
    const double angle = 2 * 3.14159265358979 * i / Fixes;
    char line[96];
    std::snprintf(line, sizeof line, "G\t%d:%02d\tN%.7f\tE%.7f\n", 8 + i / 60, i % 60,
                  1 + 0.005 * std::sin(angle), 30 + 0.005 * std::cos(angle));
    text += line;
  }
  return text + "R\tBlue group\nK\tBlue\n";
}

/// Reads the rings of areas from a listing of ogrinfo.
std::vector<std::vector<RangeFix>> RingsIn(const std::string& listed) {
  std::vector<std::vector<RangeFix>> rings;
  std::istringstream lines(listed);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("  POLYGON (") && !line.starts_with("  MULTIPOLYGON (")) continue;
    for (size_t at = line.find('('); at != line.npos; at = line.find('(', at + 1)) {
      const char* next = line.c_str() + at + 1;
      if (*next == '(') continue;
      std::vector<RangeFix>& ring = rings.emplace_back();
      for (char* end = nullptr;; next = end + 1) {
        const double lon = std::strtod(next, &end);
        const double lat = std::strtod(end, &end);
        ring.push_back({lat, lon, 0});
        if (*end != ',') break;
      }
    }
  }
  return rings;
}

TEST_F(LayerFiles, OfEstimatesHaveTheirAreasAndHoles) {
  Map& map = Open(CircleOfFixes());
  const Range* range = FindRange(map, "Blue group");
  ASSERT_NE(range, nullptr);
  ASSERT_TRUE(ExportTo(map, LayerFormat::FlatGeobuf, "all.fgb").complete);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("all-estimates.fgb"))) << "only if named";
  EXPECT_EQ(ExportTo(map, LayerFormat::GeoPackage, "site.gpkg", {"estimates"}).summary,
            "Exported estimates to " + folder.Path("site.gpkg") + ": 4 features in EPSG:4326");
  ExpectNoComplaint(Listed("site.gpkg"));
  const std::vector<RangeEstimate> estimates = EstimateRanges({&range, 1}, {}, nullptr);
  const GeoBounds bounds = BoundsOf(FixesOf(*range));
  for (const OutlineKind& kind : OfferedOutlines) {
    const bool isKernel = kind.method == OutlineKind::Method::Kernel;
    const std::string listed = ListedByOgrinfo(
        folder, "site.gpkg", "-al -where \"caption = '" + OutlineCaption(kind) + "'\"");
    SCOPED_TRACE(OutlineCaption(kind));
    const auto rings = RingsIn(listed);
    ASSERT_EQ(rings.size(), isKernel ? 2U : 1U);
    double area = 0;
    for (const auto& ring : rings) area += SignedArea(PlacesInPlane(ring, bounds));
    const auto& areas = isKernel ? estimates[0].kernel->areas : estimates[0].mcp;
    const auto computed = std::find_if(areas.begin(), areas.end(), [&](const AreaOfPercent& each) {
      return each.percent == kind.percent;
    });
    ASSERT_NE(computed, areas.end());
    EXPECT_NEAR(area, computed->area, computed->area * (isKernel ? 0.003 : 1e-6));
    if (isKernel) {
      EXPECT_LT(SignedArea(PlacesInPlane(rings[1], bounds)), -0.05 * area);
    }
    const std::string field = "  area (Real) = ";
    ExpectIn(listed, field);
    const double written = std::strtod(listed.c_str() + listed.find(field) + field.size(), nullptr);
    EXPECT_NEAR(written, computed->area, computed->area * 1e-12);
  }
  // Other formats have the same rings.
  const std::string listed = Listed("site.gpkg");
  ASSERT_TRUE(ExportTo(map, LayerFormat::FlatGeobuf, "site.fgb", {"estimates"}).complete);
  EXPECT_EQ(RingsIn(listed).size(), 6U);
  EXPECT_EQ(RingsIn(Listed("site.fgb")).size(), 6U);
  ASSERT_TRUE(ExportTo(map, LayerFormat::Kml, "site.kml", {"estimates"}).complete);
  const std::string kml = folder.Read("site.kml");
  ExpectIn(kml, "<Folder><name>estimates</name>");
  ExpectIn(kml, "<name>Blue group Kernel, 95 % of the density</name>");
  ExpectIn(kml, "<innerBoundaryIs>");
}

TEST_F(LayerFiles, AreTheSameEachTime) {
  Map& map = Open(SiteOfAllLayers);
  for (const LayerFormat format : Formats) {
    ASSERT_TRUE(ExportTo(map, format, "first", {"points"}).complete);
    ASSERT_TRUE(ExportTo(map, format, "second", {"points"}).complete);
    EXPECT_FALSE(folder.Read("first").empty());
    EXPECT_TRUE(folder.Read("first") == folder.Read("second")) << FormatName(format);
  }
}

TEST_F(LayerFiles, ReplaceOldOnesOnlyWhenComplete) {
  Map& map = Open(SiteOfAllLayers);
  folder.Write("site.gpkg", "old");
  FileSystem system = SystemFiles();
  system.write = [](int, const char*, size_t) { return -1L; };
  const LayerRequest request = {LayerFormat::GeoPackage, folder.Path("site.gpkg"), {}, {}};
  EXPECT_FALSE(ExportLayers(map, request, LoadFormatModule(), system).complete);
  EXPECT_EQ(Said(), Texts{"Error while writing " + folder.Path("site.gpkg") +
                          "; the old file, if any, is unchanged"});
  EXPECT_EQ(folder.Read("site.gpkg"), "old");
  EXPECT_EQ(FilesThere(), Texts{"site.gpkg"});
  EXPECT_TRUE(ExportLayers(map, request, LoadFormatModule()).complete);
  ExpectIn(Listed("site.gpkg", "points"), "Feature Count: 15\n");
}

TEST_F(LayerFiles, ThatCannotBeOpenedGiveAnError) {
  Map& map = Open(SiteOfAllLayers);
  std::filesystem::create_directory(folder.Path("site-ranges.csv"));
  EXPECT_FALSE(ExportTo(map, LayerFormat::Csv, "site.csv").complete);
  EXPECT_EQ(Said(), Texts{"Can't open " + folder.Path("site-ranges.csv") + " for writing"});
  // None of the others is there either.
  EXPECT_EQ(FilesThere(), Texts{"site-ranges.csv"});
}

TEST_F(LayerFiles, ThatAreCanceledChangeNothing) {
  Map& map = Open(SiteOfAllLayers);
  folder.Write("site.kml", "old");
  for (const size_t at : {1U, 5U, 20U}) {
    CountedProgress progress(at);
    workspace.progress = &progress;
    const LayerOutcome outcome = ExportTo(map, LayerFormat::Kml, "site.kml");
    EXPECT_FALSE(outcome.complete) << at;
    EXPECT_EQ(outcome.summary, "");
  }
  workspace.progress = nullptr;
  EXPECT_EQ(folder.Read("site.kml"), "old");
  EXPECT_EQ(Said(), Texts{});
}

}  // namespace
}  // namespace orvane
