#pragma once

namespace orvane {

/// What a window shows. Menus pass it on, and commands depend on it.
enum class WindowKind {
  Task = 0,  ///< shown while no map is open
  Map = 1,
  TrailEditor = 2,
  RangeEditor = 3,
  Elevation = 7,
  TrailSummary = 8,
  PointIndex = 9,
  RangeStats = 10,
  SurveyQuality = 11,
  RangeEstimates = 12
};

}  // namespace orvane
