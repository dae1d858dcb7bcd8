#include "output/exported_map.h"
#include "output/geojson.h"
#include "support/gis_reader.h"

namespace orvane {
namespace {

struct GisReaders : ExportFixture {
  std::string Listed(const std::string& name, const std::string& options = "-so -al") const {
    return ListedByOgrinfo(folder, name, options);
  }
};

TEST_F(GisReaders, ListTheGroupsThatStayReadable) {
  ASSERT_TRUE(ExportShapefiles(Open(SiteOfAllGroups), folder.Path(), {.projection = true}));
  const std::map<std::string, std::pair<int, std::string>> groups = {
      {"points", {6, "Point"}},
      {"trails", {1, "Line String"}},
      {"areas", {1, "Polygon"}},
      {"grids", {6, "Polygon"}},
      {"gridlins", {5, "Line String"}}};
  for (const auto& [name, expected] : groups) {
    const std::string listed = Listed(name + ".shp");
    ExpectNoComplaint(listed);
    ExpectIn(listed, "Geometry: " + expected.second);
    ExpectIn(listed, "Feature Count: " + std::to_string(expected.first));
    ExpectIn(listed, "WGS 84");
  }
}

TEST_F(GisReaders, FindEveryPlaceAndText) {
  ASSERT_TRUE(ExportShapefiles(Open(SiteOfAllGroups), folder.Path(), {.projection = true}));
  const std::string points = Listed("points.shp", "-al");
  ExpectNoComplaint(points);
  ExpectIn(points, "Name (String) = Base\n  Latitude (Real) = 1.00000000000\n");
  ExpectIn(points, "POINT (115.001 1.001)");
  ExpectIn(points, "Comments (String) = the camp");
  const std::string areas = Listed("areas.shp", "-al");
  ExpectNoComplaint(areas);
  ExpectIn(areas, "POLYGON ((115.002 1.0,115.003 1.001,115.003 1.0,115.002 1.0))");
}

TEST_F(GisReaders, TakeGeoJsonWithoutAWarning) {
  ASSERT_TRUE(ExportGeoJson(Open(SiteOfAllGroups), folder.Path("site.geojson")));
  const std::string listed = Listed("site.geojson", "-al");
  ExpectNoComplaint(listed);
  ExpectIn(listed, "Feature Count: 13");
  ExpectIn(listed, "POINT (115.001 1.001)");
  ExpectIn(listed, "LINESTRING (115 1,115.001 1.001,115.001 1.002)");
}

}  // namespace
}  // namespace orvane
