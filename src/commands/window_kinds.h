#pragma once

namespace orvane {

/// What a window shows. A command goes by the kind of the window in whose menu it was picked.
enum class WindowKind {
  Task = 0,  ///< stands where no map is open
  Map = 1,
  TrailEditor = 2,
  RangeEditor = 3,
  Elevation = 7,
  TrailSummary = 8,
  PointIndex = 9,
  RangeStats = 10
};

}  // namespace orvane
