#pragma once

#include "output/shapefile_reader.h"
#include "output/shapefiles.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace orvane {

/// A map of every group, with each kind of thing that a record can hold.
constexpr const char* SiteOfAllGroups =
    "T\tMain\tPath\t\t\t2,#806040,Solid\tthe way up\n"
    "G\tCamp=Base\tN1\tE115\t10\t1\tthe camp\n"
    "G\tRidge\tN1.001\tE115.001\t30\n"
    "G\t_bend\tN1.002\tE115.001\n"
    "T\tPlot\tArea\t\t\t,#b8d8d0,Solid,None,1,6\n"
    "G\tP1\tN1\tE115.002\nG\tP2\tN1\tE115.003\nG\tP3\tN1.001\tE115.003\nP\tP1\n"
    "T\n"
    "H\tCamp\t100\t2\t3\t15\tA1\t11\n"
    "HS\tA2\t#ff0000\n";

/// Follows over a grid, with two ranges that overlap.
constexpr const char* SiteOfRanges =
    "G\tCorner\tN1.000\tE30.000\t\t1\nH\tCorner\t100\t3\t2\t0\tA1\t11\nHS\tA2\t#ff0000\n"
    "T\t\tBlue\tAna\t2001-3-4\n"
    "G\t0800-0815\tN0.9980\tE30.0010\t\t1\t,3,1\nG\t0830-0840\tN0.9960\tE30.0015\n"
    "G\t0900-1000\tN0.9950\tE30.0040\nG\t1015\tN0.9975\tE30.0045\n"
    "T\t\tRed\tZoe\t2001-3-4\n"
    "G\t1400-1420\tN0.9960\tE30.0030\nG\t1445-1500\tN0.9930\tE30.0035\n"
    "G\t1530-1540\tN0.9945\tE30.0070\nG\t1600-1630\tN0.9970\tE30.0065\n"
    "R\tBlue group\t\tall\nK\tBlue\nR\tRed group\nK\tRed\n";

/// A folder and a map whose exports go there.
struct ExportFixture : MapFixture {
  TemporaryFolder folder;

  ExportFixture() {
    workspace.today = [] { return PackDate(2003, 3, 14); };  // is in every table
  }

  /// An empty map to which the helpers below add.
  Map& Empty() { return MakeMap(workspace, "made.map"); }
  static Point& Add(Map& map, std::string_view name, double lat, double lon,
                    float altitude = NoAltitude) {
    Point& point = MakePoint(map, name);
    point.geo = {lat, lon, altitude};
    point.flags |= PointPlaced;
    AddPointName(map, point, name);
    return point;
  }
  static void AddSynonym(Map& map, Point& point, const std::string& name) {
    point.synonyms.push_front(name);
    AddPointName(map, point, name);
  }
  static Trail& AddTrail(Map& map, std::string_view name, std::vector<Point*> points,
                         std::string_view type = "Path") {
    Trail& trail = map.trails.emplace_front();
    trail.name = name;
    trail.type = type;
    trail.points = std::move(points);
    return trail;
  }
  static Grid& AddGrid(Map& map, Point& corner, int rows, int columns, int cellSize = 100) {
    Grid& grid = map.grids.emplace_front();
    grid.corner = &corner;
    grid.rows = rows;
    grid.columns = columns;
    grid.cellSize = cellSize;
    grid.rowStart = 1;
    grid.columnStart = 1;
    return grid;
  }

  bool Export(Map& map) { return ExportShapefiles(map, folder.Path()).complete; }
  ReadShapefile Group(const std::string& name) const { return ReadShapefile(folder.Path(name)); }
  Texts FilesThere() const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
};

}  // namespace orvane
