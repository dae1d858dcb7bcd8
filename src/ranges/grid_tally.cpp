#include "ranges/grid_tally.h"

#include "geometry/planes.h"
#include "model/cells.h"

#include <algorithm>

namespace orvane {

namespace {

/// The newest grid of the first map of the chain that has any.
const Grid* GridOf(const Map& map) {
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    if (!level->grids.empty()) return &level->grids.front();
  }
  return nullptr;
}

int RowOf(const Point& point) { return static_cast<int>(point.projected.north); }
int ColumnOf(const Point& point) { return static_cast<int>(point.projected.east); }

CellWindow WindowOf(PointSpan points) {
  const auto [southmost, northmost] =
      std::minmax_element(points.begin(), points.end(),
                          [](const Point* a, const Point* b) { return RowOf(*a) < RowOf(*b); });
  const auto [westmost, eastmost] = std::minmax_element(
      points.begin(), points.end(),
      [](const Point* a, const Point* b) { return ColumnOf(*a) < ColumnOf(*b); });
  CellWindow window;
  window.firstRow = RowOf(**southmost);
  window.firstColumn = ColumnOf(**westmost);
  window.rows = RowOf(**northmost) - window.firstRow + 1;
  window.columns = ColumnOf(**eastmost) - window.firstColumn + 1;
  return window;
}

}  // namespace

void AddStop(CellTally& tally, const Point& stop) {
  tally.minutes += stop.duration;
  for (size_t k = 0; k < 3; ++k) tally.measure[k] += stop.sm[k];
}

bool HoldsAnything(const CellTally& tally) {
  return tally.minutes != 0 || tally.measure[0] != 0 || tally.measure[1] != 0 ||
         tally.measure[2] != 0;
}

size_t IndexInWindow(const CellWindow& window, int row, int column) {
  return static_cast<size_t>(row - window.firstRow) * static_cast<size_t>(window.columns) +
         static_cast<size_t>(column - window.firstColumn);
}

void GridCellsOfPoints(PointSpan points, const Grid& grid) {
  const GridFrame frame = FrameOf(grid);
  for (Point* point : points) {
    const CellPosition cell = GridCellOf(point->geo.lat, point->geo.lon, frame);
    point->projected.north = cell.alongNorth;
    point->projected.east = cell.alongEast;
  }
}

void TallyRangeOnGrid(const Map& map, Range& range) {
  const Grid* grid = GridOf(map);
  if (grid == nullptr || range.points.empty()) return;
  range.grid = grid;
  GridCellsOfPoints(range.points, *grid);
  range.window = WindowOf(range.points);
  const CellWindow& window = range.window;
  std::vector<CellTally> cells(static_cast<size_t>(window.rows) *
                               static_cast<size_t>(window.columns));
  for (Point* point : range.points) {
    if (point->duration == 0) {
      point->duration = 1;
      range.minutesGiven.push_back(point);
    }
    AddStop(cells[IndexInWindow(window, RowOf(*point), ColumnOf(*point))], *point);
    AddStop(range.tally, *point);
  }
  double used = 0;
  for (int row = window.firstRow; row < window.firstRow + window.rows; ++row) {
    for (int column = window.firstColumn; column < window.firstColumn + window.columns; ++column) {
      const CellTally& cell = cells[IndexInWindow(window, row, column)];
      if (cell.minutes != 0) ++used;
      if (HoldsAnything(cell)) {
        range.cells.push_back({row, column, cell});
      }
    }
  }
  const auto cellSize = static_cast<double>(grid->cellSize);
  range.gridArea = cellSize * cellSize * used;
  ProjectPoints(range.points, (range.maxLon + range.minLon) / 2, (range.maxLat + range.minLat) / 2);
}

}  // namespace orvane
