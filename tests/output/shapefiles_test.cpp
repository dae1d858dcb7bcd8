#include "output/shapefiles.h"

#include "geo/earth.h"
#include "geometry/polygon.h"
#include "output/exported_map.h"
#include "output/shapefile_set.h"

#include <cmath>
#include <limits>
#include <random>

namespace orvane {
namespace {

struct PointShapes : ExportFixture {};
struct TrailShapes : ExportFixture {};
struct GridShapes : ExportFixture {};
struct Shapefiles : ExportFixture {};

std::string Padded(const std::string& text, size_t width) {
  return text + std::string(width - text.size(), ' ');
}

// --- Points ---------------------------------------------------------------------------------

TEST_F(PointShapes, OfOnlyHiddenNamesAreNoGroup) {
  Map& map = Empty();
  Add(map, "_here", 1, 2);
  Add(map, "@there", 1, 3);
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(FilesThere(), Texts{});
}

TEST_F(PointShapes, HaveARecordForEachVisibleName) {
  Map& map = Empty();
  Point& camp = Add(map, "Camp", 1.5, 115.25);
  AddSynonym(map, camp, "Base");
  AddSynonym(map, camp, "_old");
  AddSynonym(map, Add(map, "_bend", 1, 115), "Curve");
  EXPECT_TRUE(Export(map));
  const ReadShapefile points = Group("points");
  ASSERT_EQ(points.records.size(), 3U);
  EXPECT_EQ(points.tableRecords, 3U);
  std::map<std::string, std::string> mainNames;
  for (const auto& row : points.rows) mainNames[row.at("Name")] = row.at("Synonym");
  EXPECT_EQ(mainNames, (std::map<std::string, std::string>{
                           {"Camp ", "     "}, {"Base ", "Camp "}, {"Curve", "_bend"}}));
}

TEST_F(PointShapes, AreAtTheLongitudeAndLatitude) {
  Map& map = Empty();
  Add(map, "Camp", -1.5, 115.25);
  EXPECT_TRUE(Export(map));
  const ReadShapefile points = Group("points");
  ASSERT_EQ(points.records.size(), 1U);
  EXPECT_EQ(points.records[0].type, 1U);
  EXPECT_EQ(points.records[0].number, 1U);
  EXPECT_EQ(points.records[0].words, 10U);
  EXPECT_EQ(points.records[0].places, (std::vector<ReadPlace>{{115.25, -1.5}}));
  EXPECT_EQ(points.rows[0].at("Latitude"), " -1.50000000000");
  EXPECT_EQ(points.rows[0].at("Longitude"), "115.25000000000");
  EXPECT_EQ(points.mainHeader.fileWords, (28U + 104U) / 2);
  EXPECT_EQ(points.indexHeader.fileWords, (8U + 104U) / 2);
  EXPECT_EQ(points.mainBytes, 128U);
  // Only what is there has a field.
  ASSERT_EQ(points.fields.size(), 3U);
  EXPECT_EQ(points.fields[0].width, 4U);
  EXPECT_EQ(points.fields[1].type, 'N');
  EXPECT_EQ(points.fields[1].decimals, 11U);
  EXPECT_EQ(points.date[0], 103U);
  EXPECT_EQ(points.date[1], 3U);
  EXPECT_EQ(points.date[2], 14U);
}

TEST_F(PointShapes, CarryTheAltitudeUncounted) {
  Map& map = Empty();
  Add(map, "A", 1, 2, 30.6F);
  Add(map, "B", 1, 3);
  EXPECT_TRUE(Export(map));
  const ReadShapefile points = Group("points");
  ASSERT_EQ(points.records.size(), 2U);
  for (size_t i = 0; i < 2; ++i) {
    const bool isA = points.rows[i].at("Name") == "A";
    EXPECT_EQ(points.records[i].words, 10U);
    EXPECT_EQ(points.records[i].bytes, 28U);
    EXPECT_EQ(points.records[i].rest, std::vector<double>{isA ? double{30.6F} : 1e-39});
    EXPECT_EQ(points.rows[i].at("Altitude"), isA ? "    31" : " -9999");
  }
  EXPECT_EQ(points.mainHeader.fileWords, (2U * 28 + 104) / 2);
  EXPECT_EQ(points.mainBytes, 100U + 2 * 36);
}

TEST_F(PointShapes, GiveTheRangeOfAltitudesAsThatOfM) {
  Map& map = Empty();
  Add(map, "A", 1, 2, 30);
  Add(map, "B", -1, 3, 10);
  Add(map, "C", 0, -3);
  EXPECT_TRUE(Export(map));
  const double expected[] = {-3, -1, 3, 1, 0, 0, 0, 30};
  const ReadShapefile points = Group("points");
  for (size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(points.mainHeader.bounds[i], expected[i]) << i;
    EXPECT_EQ(points.indexHeader.bounds[i], expected[i]) << i;
  }
  map.pointStore[0].geo.altitude = -20;
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(Group("points").mainHeader.bounds[6], -20);
  EXPECT_EQ(Group("points").mainHeader.bounds[7], 10);
}

TEST_F(PointShapes, CountHiddenNamesForWidthsAndBounds) {
  Map& map = Empty();
  Add(map, "A", 1, 2);
  Point& hidden = Add(map, "_muchlonger", 5, 6, 7);
  hidden.note = "unseen";
  EXPECT_TRUE(Export(map));
  const ReadShapefile points = Group("points");
  ASSERT_EQ(points.rows.size(), 1U);
  EXPECT_EQ(points.rows[0].at("Name"), Padded("A", 11));
  EXPECT_EQ(points.rows[0].at("Comments"), "      ");
  EXPECT_EQ(points.rows[0].at("Altitude"), " -9999");
  EXPECT_EQ(points.mainHeader.bounds[2], 6);
}

TEST_F(PointShapes, CutTexts) {
  Map& map = Empty();
  Point& point = Add(map, std::string(300, 'n'), 1, 2, 12345678);
  point.note = std::string(90, 'c');
  EXPECT_TRUE(Export(map));
  const ReadShapefile points = Group("points");
  EXPECT_EQ(points.rows[0].at("Name"), std::string(254, 'n'));
  EXPECT_EQ(points.rows[0].at("Comments"), std::string(80, 'c'));
  EXPECT_EQ(points.rows[0].at("Altitude"), "123456");
}

TEST_F(PointShapes, OfANegativeLongitudeLoseTheLastDigit) {
  Map& map = Empty();
  Add(map, "A", 1, -115.12345678915);
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(Group("points").rows[0].at("Longitude"), "-115.1234567891");
}

TEST_F(PointShapes, LeaveOutStopsAndNamelessPoints) {
  Map& map = Open(
      "T\tMain\tPath\nG\tCamp\tN1\tE115\n"
      "T\t\tRed\t\t2003-3-3\nG\t0800\tN1\tE115\nT\nG\t\tN1\tE115\n");
  EXPECT_TRUE(Export(map));
  const ReadShapefile points = Group("points");
  ASSERT_EQ(points.rows.size(), 1U);
  EXPECT_EQ(points.rows[0].at("Name"), "Camp");
}

// --- Trails and areas -----------------------------------------------------------------------

TEST_F(TrailShapes, HaveTheirGroupByFillAndName) {
  Map& map = Empty();
  Point& a = Add(map, "A", 1, 2);
  Point& b = Add(map, "B", 1.5, 2.5);
  Point& c = Add(map, "C", 1, 3);
  AddTrail(map, "line", {&a, &b}, "Path").width = 2.9;
  AddTrail(map, "plot", {&a, &b, &c}, "Area").filled = true;
  map.trails.emplace_front().points = {&a, &c};
  AddTrail(map, "empty", {});
  EXPECT_TRUE(Export(map));
  const ReadShapefile trails = Group("trails");
  ASSERT_EQ(trails.rows.size(), 1U);
  EXPECT_EQ(trails.rows[0].at("Name"), "line");
  EXPECT_EQ(trails.rows[0].at("Type"), "Path");
  EXPECT_EQ(trails.rows[0].at("Width"), " 2");
  EXPECT_EQ(trails.records[0].type, 3U);
  EXPECT_EQ(trails.records[0].words, (16U * 2 + 48) / 2);
  EXPECT_EQ(trails.records[0].places, (std::vector<ReadPlace>{{2, 1}, {2.5, 1.5}}));
  EXPECT_EQ(trails.mainHeader.fileWords, (56U + 32 + 104) / 2);
  EXPECT_EQ(trails.mainBytes, 100U + 56 + 32);
  const ReadShapefile areas = Group("areas");
  ASSERT_EQ(areas.rows.size(), 1U);
  EXPECT_EQ(areas.rows[0].at("Name"), "plot");
  EXPECT_FALSE(areas.rows[0].contains("Width"));
  EXPECT_EQ(areas.records[0].type, 5U);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("trails3d.shp")));
}

TEST_F(TrailShapes, WriteAWidthInTwoDigits) {
  Map& map = Empty();
  Point& a = Add(map, "A", 1, 2);
  for (const double width : {0.0, 123.0, -1.5, 1e300, std::nan("")}) {
    AddTrail(map, "t", {&a}).width = width;
  }
  EXPECT_TRUE(Export(map));
  Texts widths;
  for (const auto& row : Group("trails").rows) widths.push_back(row.at("Width"));
  EXPECT_EQ(widths, (Texts{"-2", "21", "-1", "12", " 0"}));
}

TEST_F(TrailShapes, BoxesIncludeTheLimitsOfTheEarth) {
  Map& map = Empty();
  Point& a = Add(map, "A", 1, 200);
  AddTrail(map, "t", {&a});
  EXPECT_TRUE(Export(map));
  const ReadRecord record = Group("trails").records[0];
  EXPECT_EQ(record.box[0], 180);
  EXPECT_EQ(record.box[1], 1);
  EXPECT_EQ(record.box[2], 200);
  EXPECT_EQ(record.box[3], 1);
}

TEST_F(TrailShapes, GiveTooSmallALengthForRecordsWithAltitudes) {
  Map& map = Empty();
  Point& a = Add(map, "A", 1, 2, 30);
  Point& b = Add(map, "B", 1, 3);
  Point& c = Add(map, "C", 1, 4, 20);
  AddTrail(map, "none", {&b, &b});
  AddTrail(map, "high", {&a, &b, &c});
  EXPECT_TRUE(Export(map));
  const ReadShapefile trails = Group("trails3d");
  ASSERT_EQ(trails.records.size(), 2U);
  EXPECT_EQ(trails.records[0].type, 13U);
  EXPECT_EQ(trails.records[0].words, (24U * 3 + 48) / 2);
  EXPECT_EQ(trails.records[0].bytes, 80U + 32 * 3);
  EXPECT_EQ(trails.records[0].rest,
            (std::vector<double>{20, 30, 30, -9999, 20, 1e-39, 1e-39, 1e-39, 1e-39, 1e-39}));
  EXPECT_EQ(trails.records[1].rest,
            (std::vector<double>{9999999, 0, -9999, -9999, 1e-39, 1e-39, 1e-39, 1e-39}));
  EXPECT_EQ(trails.mainHeader.fileWords, (88U * 2 + 32 * 5 + 104) / 2);
  EXPECT_EQ(trails.mainBytes, 100U + 88 * 2 + 32 * 5);
  EXPECT_FALSE(trails.rows[0].contains("Width"));
}

TEST_F(TrailShapes, RunClockwiseAsAreasAndStayInTheirOrderInMemory) {
  Map& map = Empty();
  Point& a = Add(map, "A", 1, 2);
  Point& b = Add(map, "B", 1, 2.01);
  Point& c = Add(map, "C", 1.01, 2.01);
  AddTrail(map, "clockwise", {&a, &c, &b}).filled = true;
  Trail& turned = AddTrail(map, "anticlockwise", {&a, &b, &c});
  turned.filled = true;
  a.projected = {11, 12, 13};
  EXPECT_TRUE(Export(map));
  const ReadShapefile areas = Group("areas");
  ASSERT_EQ(areas.records.size(), 2U);
  EXPECT_EQ(areas.records[0].places, (std::vector<ReadPlace>{{2.01, 1.01}, {2.01, 1}, {2, 1}}));
  EXPECT_EQ(areas.records[1].places, (std::vector<ReadPlace>{{2, 1}, {2.01, 1.01}, {2.01, 1}}));
  EXPECT_EQ(turned.points, (std::vector<Point*>{&a, &b, &c}));
  EXPECT_EQ(a.projected.north, 11);
  EXPECT_EQ(a.projected.east, 12);
  EXPECT_EQ(a.projected.altitude, 13);
}

// --- Grids ----------------------------------------------------------------------------------

TEST_F(GridShapes, HaveCellsAndLines) {
  Map& map = Empty();
  Point& corner = Add(map, "Corner", 0, 30);
  AddGrid(map, corner, 2, 3, 1111);
  EXPECT_TRUE(Export(map));
  const ReadShapefile cells = Group("grids");
  ASSERT_EQ(cells.records.size(), 6U);
  Texts names;
  for (const auto& row : cells.rows) names.push_back(row.at("Name"));
  EXPECT_EQ(names, (Texts{"A1    ", "A2    ", "A3    ", "B1    ", "B2    ", "B3    "}));
  EXPECT_EQ(cells.records[5].words, 64U);
  EXPECT_EQ(cells.mainHeader.fileWords, (136U * 6 + 104) / 2);
  EXPECT_EQ(cells.tableHeaderBytes, 65U);
  EXPECT_EQ(cells.rowBytes, 7U);
  const std::vector<ReadPlace>& ring = cells.records[0].places;
  ASSERT_EQ(ring.size(), 5U);
  EXPECT_EQ(ring[0], (ReadPlace{30, 0}));
  EXPECT_EQ(ring[4], ring[0]);
  EXPECT_EQ(ring[1].y, 0);
  EXPECT_GT(ring[1].x, 30);
  EXPECT_LT(ring[2].y, 0);
  EXPECT_EQ(ring[3].x, 30);

  const ReadShapefile lines = Group("gridlins");
  ASSERT_EQ(lines.records.size(), 5U);
  names.clear();
  for (const auto& row : lines.rows) names.push_back(row.at("Name"));
  EXPECT_EQ(names, (Texts{"A  ", "B  ", "1  ", "2  ", "3  "}));
  EXPECT_EQ(lines.records[0].words, 40U);
  EXPECT_EQ(lines.records[0].type, 3U);
  EXPECT_EQ(lines.mainHeader.fileWords, (88U * 5 + 104) / 2);
  EXPECT_EQ(lines.rowBytes, 4U);
  EXPECT_EQ(lines.records[0].places[0], (ReadPlace{30, 0}));
  // The end of the first row is the far corner of its last cell, and the far edges have no line.
  EXPECT_EQ(lines.records[0].places[1], cells.records[2].places[1]);
  EXPECT_EQ(lines.records[4].places[0], cells.records[2].places[0]);
  EXPECT_EQ(lines.records[4].places[1], cells.records[5].places[3]);
}

TEST_F(GridShapes, CountOnlyTheLastGrid) {
  Map& map = Empty();
  Point& corner = Add(map, "Corner", 0, 30);
  AddGrid(map, corner, 2, 1);
  AddGrid(map, corner, 3, 4);  // newest first: the one above is the last
  EXPECT_TRUE(Export(map));
  const ReadShapefile cells = Group("grids");
  EXPECT_EQ(cells.records.size(), 14U);
  EXPECT_EQ(cells.rows.size(), 14U);
  EXPECT_EQ(cells.records[13].number, 14U);
  EXPECT_EQ(cells.tableRecords, 2U);
  EXPECT_EQ(cells.mainHeader.fileWords, (136U * 2 + 104) / 2);
  EXPECT_EQ(cells.indexHeader.fileWords, (8U * 2 + 104) / 2);
  const ReadShapefile lines = Group("gridlins");
  EXPECT_EQ(lines.records.size(), 10U);
  EXPECT_EQ(lines.tableRecords, 3U);
}

TEST_F(GridShapes, AreNoneIfTheLastGridHasNoneAtAll) {
  Map& map = Empty();
  Point& corner = Add(map, "_Corner", 0, 30);
  AddGrid(map, corner, 0, 0);
  AddGrid(map, corner, 3, 4);
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(FilesThere(), Texts{});
}

// The columns of such a grid were written as lines from the corner to the corner.
TEST_F(GridShapes, OfNegativeRowsOrColumnsHaveNoCellsAndNoLines) {
  Map& map = Empty();
  Point& corner = Add(map, "_Corner", 0, 30);
  AddGrid(map, corner, -3, 2);
  EXPECT_TRUE(Export(map));
  map.grids.front().rows = 3;
  map.grids.front().columns = std::numeric_limits<int>::min();
  EXPECT_TRUE(Export(map));
  map.grids.front().rows = -2;
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(FilesThere(), Texts{});
}

TEST_F(GridShapes, OfNegativeRowsLeaveTheOtherGridsThere) {
  Map& map = Empty();
  Point& corner = Add(map, "_Corner", 0, 30);
  AddGrid(map, corner, -3, 2);
  AddGrid(map, corner, 2, 4);  // newest first: the one above is the last
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(Group("grids").records.size(), 8U);
  const ReadShapefile lines = Group("gridlins");
  EXPECT_EQ(lines.records.size(), 6U);
  for (const auto& record : lines.records) EXPECT_NE(record.places[0], record.places[1]);
}

TEST_F(GridShapes, ALastGridWithoutCellsLeavesTheOthersThere) {
  Map& map = Empty();
  Point& corner = Add(map, "_Corner", 0, 30);
  AddGrid(map, corner, -2, -3);
  AddGrid(map, corner, 2, 2);
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(Group("grids").records.size(), 4U);
}

TEST_F(GridShapes, AlwaysNameTheRowBeforeTheColumn) {
  Map& map = Empty();
  Grid& grid = AddGrid(map, Add(map, "_Corner", 0, 30), 1, 1);
  grid.rowStyle = GridStyle::Decimal;
  grid.columnStyle = GridStyle::LettersLower;
  grid.rowStart = 12;
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(Group("grids").rows[0].at("Name"), "12a   ");
  grid.rowStart = 1234567;
  grid.rowStyle = GridStyle::Decimal;
  EXPECT_TRUE(Export(map));
  EXPECT_EQ(Group("grids").rows[0].at("Name"), "123456");
  EXPECT_EQ(Group("gridlins").rows[0].at("Name"), "123");
}

TEST_F(GridShapes, TurnWithTheAngle) {
  Map& map = Empty();
  Grid& grid = AddGrid(map, Add(map, "_Corner", 10, 30), 2, 2, 500);
  grid.angle = 30;
  EXPECT_TRUE(Export(map));
  const ReadPlace place = Group("grids").records[3].places[2];  // (2, 2)
  const double a = 30 * RadiansPerDegree;
  const double north = (-2 * std::cos(a) - 2 * std::sin(a)) * 500;
  const double east = (2 * std::cos(a) - 2 * std::sin(a)) * 500;
  const double lat = 10 + north / 111120;
  EXPECT_DOUBLE_EQ(place.y, lat);
  EXPECT_DOUBLE_EQ(place.x, 30 + east / (std::cos(lat * RadiansPerDegree) * 111120));
}

TEST_F(GridShapes, OfTooManyCellsAreRefused) {
  Map& map = Empty();
  Point& corner = Add(map, "Corner", 0, 30);
  AddGrid(map, corner, 40000, 40000);
  EXPECT_FALSE(Export(map));
  EXPECT_EQ(Said(),
            Texts{"The grids have more than 4000000 cells: no shapefiles are written of them"});
  EXPECT_EQ(FilesThere(), (Texts{"gridlins.dbf", "gridlins.shp", "gridlins.shx", "points.dbf",
                                 "points.shp", "points.shx"}));
  messages.Clear();
  map.grids.front().rows = 2147483647;
  map.grids.front().columns = 2147483647;
  EXPECT_FALSE(Export(map));
  EXPECT_EQ(Said().size(), 2U);
}

// --- All groups -----------------------------------------------------------------------------

TEST_F(Shapefiles, OfAnEmptyMapAreNone) {
  EXPECT_TRUE(Export(Empty()));
  EXPECT_TRUE(ExportShapefiles(Empty(), folder.Path("nowhere")));
  EXPECT_EQ(FilesThere(), Texts{});
}

TEST_F(Shapefiles, AreCountedInTheSummary) {
  EXPECT_EQ(ExportShapefiles(Empty(), folder.Path()).summary,
            "Nothing to export: looked for named points, named trails and grids");
  Map& map = Empty();
  Add(map, "Camp", 1, 30);
  EXPECT_EQ(ExportShapefiles(map, folder.Path()).summary,
            "Exported points to " + folder.Path() + ": 3 files were written");
  AddTrail(map, "Path", {&Add(map, "Ford", 1, 31)});
  EXPECT_EQ(ExportShapefiles(map, folder.Path(), {.projection = true}).summary,
            "Exported points and trails to " + folder.Path() + ": 10 files were written");
}

TEST_F(Shapefiles, LeaveOutTheBasis) {
  folder.Write("below.map", "T\tLow\tPath\nG\tCamp\tN1\tE115\n");
  const std::string path =
      folder.Write("above.map", "B\tbelow.map\nT\tHigh\tPath\nG\tRidge\tN1\tE116\nC\tCamp\n");
  Map& map = OpenMap(workspace, path);
  EXPECT_TRUE(Export(map));
  ASSERT_EQ(Group("points").rows.size(), 1U);
  EXPECT_EQ(Group("points").rows[0].at("Name"), "Ridge");
  ASSERT_EQ(Group("trails").rows.size(), 1U);
  EXPECT_EQ(Group("trails").rows[0].at("Name"), "High");
}

TEST_F(Shapefiles, GiveProjectionAndEncodingIfAsked) {
  Map& map = Empty();
  Point& a = Add(map, "M\xC3\xBChle", 1, 2);
  AddTrail(map, "M\xFChle", {&a});
  EXPECT_TRUE(ExportShapefiles(map, folder.Path(), {.projection = true}));
  EXPECT_EQ(FilesThere(),
            (Texts{"points.cpg", "points.dbf", "points.prj", "points.shp", "points.shx",
                   "trails.cpg", "trails.dbf", "trails.prj", "trails.shp", "trails.shx"}));
  EXPECT_EQ(folder.Read("points.cpg"), "UTF-8");
  EXPECT_EQ(folder.Read("trails.cpg"), "ISO-8859-1");
  EXPECT_TRUE(folder.Read("trails.prj").starts_with("GEOGCS[\"GCS_WGS_1984\","));
  EXPECT_EQ(Group("trails").rows[0].at("Name"), "M\xFChle");
}

/// Maps with every group, from a seed.
Map& RandomMap(ExportFixture& test, unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
  const auto degrees = [&](double middle) { return middle + below(100000) / 1e6; };
  Map& map = test.Empty();
  std::vector<Point*> points;
  for (int i = 0; i < 60; ++i) {
    const std::string name = (below(8) == 0 ? "_P" : "P") + std::to_string(i);
    points.push_back(
        &ExportFixture::Add(map, name, degrees(1), degrees(115),
                            below(3) == 0 ? static_cast<float>(below(900)) / 2 : NoAltitude));
    for (int more = below(3); more > 0; --more) {
      ExportFixture::AddSynonym(map, *points.back(), "S" + std::to_string(i * 10 + more));
    }
    if (below(4) == 0) points.back()->note = std::string(static_cast<size_t>(below(100)), 'x');
  }
  for (int i = 0; i < 12; ++i) {
    std::vector<Point*> way;
    for (int n = below(9); n > 0; --n) way.push_back(points[random() % points.size()]);
    Trail& trail = ExportFixture::AddTrail(map, "T" + std::to_string(i), std::move(way));
    trail.filled = below(3) == 0;
    trail.width = below(12);
    if (below(5) == 0) trail.name.reset();
    if (below(3) == 0) trail.note = "note " + std::to_string(i);
  }
  for (int i = below(3); i > 0; --i) {
    ExportFixture::AddGrid(map, *points.front(), below(6) - 1, below(6) - 1).angle = below(90);
  }
  return map;
}

/// What holds of the three files of every group, but for the counts of grids.
void ExpectConsistent(const ReadShapefile& group, const std::string& name) {
  EXPECT_EQ(group.records.size(), group.rows.size()) << name;
  const bool isGrid = name.starts_with("grid");
  if (!isGrid) {
    EXPECT_EQ(group.tableRecords, group.rows.size()) << name;
    EXPECT_EQ(group.indexHeader.fileWords * 2, group.indexBytes + 4) << name;
  }
  if (!isGrid && name != "points") {
    EXPECT_EQ(group.mainHeader.fileWords * 2, group.mainBytes + 4) << name;
  }
  for (size_t i = 0; i < group.records.size(); ++i) {
    const ReadRecord& record = group.records[i];
    EXPECT_EQ(record.number, i + 1) << name;
    EXPECT_EQ(record.type, group.mainHeader.type) << name;
    if (name != "points" && name != "trails3d") {
      EXPECT_EQ(record.words * 2, record.bytes) << name;
    }
    for (const ReadPlace& place : record.places) {
      EXPECT_GE(place.x, group.mainHeader.bounds[0]) << name;
      EXPECT_LE(place.y, group.mainHeader.bounds[3]) << name;
      if (record.type == 1) continue;
      EXPECT_GE(place.x, record.box[0]) << name;
      EXPECT_GE(place.y, record.box[1]) << name;
      EXPECT_LE(place.x, record.box[2]) << name;
      EXPECT_LE(place.y, record.box[3]) << name;
    }
  }
}

TEST_F(Shapefiles, OfAnyMapAreConsistent) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const TemporaryFolder own;
    Map& map = RandomMap(*this, seed);
    ASSERT_TRUE(ExportShapefiles(map, own.Path()));
    for (const std::string name : {"points", "trails", "trails3d", "areas", "grids", "gridlins"}) {
      if (!std::filesystem::exists(own.Path(name + ".shp"))) continue;
      ExpectConsistent(ReadShapefile(own.Path(name)), name);
    }
    // Every trail is found again, place by place.
    std::map<std::string, std::vector<ReadPlace>> found;
    for (const std::string name : {"trails", "areas"}) {
      if (!std::filesystem::exists(own.Path(name + ".shp"))) continue;
      const ReadShapefile group(own.Path(name));
      for (size_t i = 0; i < group.rows.size(); ++i) {
        std::string text = group.rows[i].at("Name");
        found[text.substr(0, text.find(' '))] = group.records[i].places;
      }
    }
    size_t expected = 0;
    for (const Trail& trail : map.trails) {
      if (!trail.name || trail.points.empty()) continue;
      ++expected;
      std::vector<ReadPlace> places;
      for (const Point* point : trail.points) places.push_back({point->geo.lon, point->geo.lat});
      if (trail.filled && !RingRunsClockwise(trail.points)) {
        std::reverse(places.begin(), places.end());
      }
      EXPECT_EQ(found[*trail.name], places) << *trail.name;
    }
    EXPECT_EQ(found.size(), expected);
  }
}

TEST_F(Shapefiles, OfManyRecordsAreWrittenInPieces) {
  Map& map = Empty();
  constexpr size_t Count = 10000;
  const std::string rest(WidestField - 10, 'x');
  for (size_t i = 0; i < Count; ++i) {
    Add(map, "n" + std::to_string(100000 + i) + rest, 1, 2, static_cast<float>(i));
  }
  EXPECT_TRUE(Export(map));
  const ReadShapefile points = Group("points");
  ASSERT_EQ(points.records.size(), Count);
  ASSERT_EQ(points.rows.size(), Count);
  std::vector<bool> seen(Count);
  for (size_t i = 0; i < Count; ++i) {
    const std::string& name = points.rows[i].at("Name");
    const auto index = static_cast<size_t>(std::stoi(name.substr(1, 6)) - 100000);
    seen.at(index) = true;
    ASSERT_EQ(points.records[i].number, i + 1);
    ASSERT_EQ(points.records[i].rest.at(0), static_cast<double>(index));
  }
  EXPECT_EQ(std::count(seen.begin(), seen.end(), true), static_cast<long>(Count));
}

}  // namespace
}  // namespace orvane
