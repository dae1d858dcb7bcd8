#include "output/exported_grid.h"
#include "output/shapefile_groups.h"
#include "output/shapefiles.h"

#include <algorithm>
#include <span>
#include <string>
#include <vector>

namespace orvane {

namespace {

constexpr std::string_view CannotOpenGrids = "Can't open point datafiles for ArcView shapefiles\n";

constexpr size_t CellNameWidth = 6;
constexpr std::uint64_t CellBytes = 136;
constexpr std::uint64_t CellContentWords = 64;

constexpr size_t LineNameWidth = 3;
constexpr std::uint64_t LineBytes = 88;
constexpr std::uint64_t LineContentWords = 40;

/// Writes a shape of one part, with its box.
void PutPart(ShapefileSet& set, std::uint64_t words, std::span<const LatLon> places) {
  LatLon low = places.front();
  LatLon high = low;
  for (const LatLon& place : places) {
    low = {std::min(low.lat, place.lat), std::min(low.lon, place.lon)};
    high = {std::max(high.lat, place.lat), std::max(high.lon, place.lon)};
  }
  ByteBuffer& shape = set.BeginShape(words);
  for (const double value : {low.lon, low.lat, high.lon, high.lat}) shape.PutDouble(value);
  shape.PutLittle(1);
  shape.PutLittle(static_cast<std::uint32_t>(places.size()));
  shape.PutLittle(0);
  for (const LatLon& place : places) {
    shape.PutDouble(place.lon);
    shape.PutDouble(place.lat);
  }
}

void PutCells(ShapefileExport& shapes, ShapefileSet& set, const ExportedGrid& grid) {
  for (std::int64_t r = 0; r < grid.Rows(); ++r) {
    if (!shapes.GoesOn()) return;
    const std::string rowLabel = grid.RowLabel(r);
    for (std::int64_t c = 0; c < grid.Columns(); ++c) {
      set.BeginRow();
      // The part of the row is always first, even if the map names the column first; see
      // docs/compatibility.md.
      set.PutField(rowLabel + grid.ColumnLabel(c));
      const LatLon corners[] = {grid.Place(r, c), grid.Place(r, c + 1), grid.Place(r + 1, c + 1),
                                grid.Place(r + 1, c), grid.Place(r, c)};
      PutPart(set, CellContentWords, corners);
    }
  }
}

void PutLine(ShapefileSet& set, const std::string& label, const LatLon& from, const LatLon& to) {
  set.BeginRow();
  set.PutField(label);
  const LatLon ends[] = {from, to};
  PutPart(set, LineContentWords, ends);
}

void PutLines(ShapefileSet& set, const ExportedGrid& grid) {
  if (grid.Lines() == 0) return;
  for (std::int64_t r = 0; r < grid.Rows(); ++r) {
    PutLine(set, grid.RowLabel(r), grid.Place(r, 0), grid.Place(r, grid.Columns()));
  }
  for (std::int64_t c = 0; c < grid.Columns(); ++c) {
    PutLine(set, grid.ColumnLabel(c), grid.Place(0, c), grid.Place(grid.Rows(), c));
  }
}

/// All grids of the map.
struct GridGroup {
  std::vector<ExportedGrid> grids;
  ShapeBounds bounds;
  std::uint64_t cells = 0;
  std::uint64_t lines = 0;
};

GridGroup GatherGrids(const Map& map) {
  GridGroup group;
  for (const Grid& grid : map.grids) {
    if (grid.corner == nullptr) continue;
    const ExportedGrid& shaped = group.grids.emplace_back(grid);
    for (const std::int64_t r : {std::int64_t{0}, shaped.Rows()}) {
      for (const std::int64_t c : {std::int64_t{0}, shaped.Columns()}) {
        group.bounds.Take(shaped.Place(r, c));
      }
    }
    // Bounded, so that the sums do not overflow.
    constexpr std::uint64_t TooMany = MostExportedCells + 1;
    group.cells += std::min(shaped.Cells(), TooMany);
    group.lines += std::min(shaped.Lines(), TooMany);
  }
  return group;
}

/// \return true if there is something to write, and not too much
bool IsExported(ShapefileExport& shapes, std::uint64_t count, std::string_view what) {
  if (count > std::uint64_t{MostExportedCells}) {
    shapes.NoteTooLarge(what);
    return false;
  }
  return count > 0;
}

}  // namespace

void PutGridShapes(ShapefileExport& shapes) {
  const GridGroup group = GatherGrids(shapes.GetMap());
  // The headers count only the last grid, while the file has the records of all; see
  // docs/compatibility.md.
  if (group.grids.empty()) return;
  const ExportedGrid& last = group.grids.back();
  const Grid& lastGrid = last.GetGrid();
  if (std::int64_t{lastGrid.rows} + lastGrid.columns == 0) return;
  const std::uint64_t cells = last.Cells();
  const std::uint64_t lines = last.Lines();
  if (IsExported(shapes, group.cells, "cells")) {
    if (ShapefileSet* set = shapes.Open("grids", CannotOpenGrids)) {
      set->PutHeaders({ShapePolygon, group.bounds, cells, CellBytes * cells, shapes.Today()},
                      {{"Name", 'C', CellNameWidth, 0}});
      for (const ExportedGrid& grid : group.grids) PutCells(shapes, *set, grid);
    }
  }
  if (IsExported(shapes, group.lines, "lines")) {
    if (ShapefileSet* set = shapes.Open("gridlins", CannotOpenGrids)) {
      set->PutHeaders({ShapePolyLine, group.bounds, lines, LineBytes * lines, shapes.Today()},
                      {{"Name", 'C', LineNameWidth, 0}});
      for (const ExportedGrid& grid : group.grids) PutLines(*set, grid);
    }
  }
}

}  // namespace orvane
