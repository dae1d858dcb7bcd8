#pragma once

#include "model/map.h"

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace orvane {

/// The points of a map in the order of the JSON documents, numbered from 0 as they first appear:
/// those of the trails, the loose and the nameless ones, the bases of their readings, those of
/// ranges, and the corners of grids.
class PointNumbers {
 public:
  explicit PointNumbers(const Map& map);

  const std::vector<const Point*>& Points() const { return points_; }

  /// \return nothing for a point that is not in the documents, and for null
  std::optional<size_t> Find(const Point* point) const;

 private:
  void Meet(const Point& point);

  std::vector<const Point*> points_;
  std::unordered_map<const Point*, size_t> numbers_;
};

}  // namespace orvane
