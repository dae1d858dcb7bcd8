#include "output/exported_grid.h"

#include "geo/earth.h"
#include "view/grids.h"

#include <algorithm>
#include <cmath>

namespace orvane {

ExportedGrid::ExportedGrid(const Grid& grid)
    : grid_(grid),
      isNegative_(grid.rows < 0 || grid.columns < 0),
      rows_(std::max(0, grid.rows)),
      columns_(std::max(0, grid.columns)),
      cosine_(std::cos(grid.angle * RadiansPerDegree)),
      sine_(std::sin(grid.angle * RadiansPerDegree)) {}

LatLon ExportedGrid::Place(std::int64_t row, std::int64_t column) const {
  const auto r = static_cast<double>(row);
  const auto c = static_cast<double>(column);
  const double size = grid_.cellSize;
  LatLon place{grid_.corner->geo.lat, grid_.corner->geo.lon, NoAltitude};
  AddMeters(place, (-r * cosine_ - c * sine_) * size, (c * cosine_ - r * sine_) * size);
  return place;
}

std::string ExportedGrid::RowLabel(std::int64_t row) const {
  return GridLabel(row + grid_.rowStart, grid_.rowStyle);
}

std::string ExportedGrid::ColumnLabel(std::int64_t column) const {
  return GridLabel(column + grid_.columnStart, grid_.columnStyle);
}

}  // namespace orvane
