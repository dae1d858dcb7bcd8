#include "cli/point_numbers.h"

namespace orvane {

PointNumbers::PointNumbers(const Map& map) {
  ForEachPoint(map, [&](const Point& point) { Meet(point); });
  for (size_t i = 0; i < points_.size(); ++i) {
    for (const Measurement& reading : points_[i]->measurements) {
      if (reading.base != nullptr) Meet(*reading.base);
    }
  }
  for (const Range& range : map.ranges) {
    for (const Point* point : range.points) Meet(*point);
    for (const Point* point : range.hull) Meet(*point);
  }
  for (const Grid& grid : map.grids) Meet(*grid.corner);
}

std::optional<size_t> PointNumbers::Find(const Point* point) const {
  const auto found = numbers_.find(point);
  if (found == numbers_.end()) return std::nullopt;
  return found->second;
}

void PointNumbers::Meet(const Point& point) {
  if (numbers_.try_emplace(&point, points_.size()).second) points_.push_back(&point);
}

}  // namespace orvane
