#pragma once

#include "model/map.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace orvane {

/// Shows how far a run is.
/// \param stage    "Figuring grid spacing...", "Generating approximation..." or
///                 "Connecting contours..."; null at the end of a run, also of one that was given
/// up
/// \param percent  of the stage; more than 100 on a grid of a few cells
/// \return false to cancel the run; not looked at when `stage` is null
using ContourProgress = std::function<bool(const char* stage, int percent)>;

/// How a run ended.
enum ContourOutcome {
  ContourNothing = 0,   ///< there is nothing to draw lines of; `progress` may not have been called
  ContourMade = 1,      ///< the map has what lines there are, maybe none
  ContourCanceled = 2,  ///< the map is as before
  ContourRefused =
      3  ///< too much of something, which was reported as an error; the map is as before
};

/// Bounds of one run. A step that the usual rule gives stays far below them; thin maps, cliffs and
/// damaged positions do not.
constexpr double MostGridNodes = 4e6;
constexpr double MostLevelsOfEdge = 100000;
constexpr size_t MostCrossings = 5000000;

/// One run's state: the grid, in degrees, and the altitudes on it.
struct ContourWork {
  double maxLat = 0;  ///< bounds of the altitude points, without the banks
  double minLat = 0;
  double maxLon = 0;
  double minLon = 0;
  std::vector<Point*> points;  ///< altitude points; those of barriers come first
  ScratchPoints barrierPoints;
  int rows = 0;         ///< grid lines are at 0 to `rows` steps from `minLat`
  int columns = 0;      ///< likewise from `minLon`
  double step = 0;      ///< degrees between grid lines, the same both ways
  double interval = 0;  ///< metres between levels
  ContourProgress progress;

  std::vector<double> lats;    ///< of the samples: `rows` + 2, from `minLat`
  std::vector<double> lons;    ///< of the samples: `columns` + 2, from `minLon`
  std::vector<double> values;  ///< altitudes by grid row, lats.size() * lons.size()

  double Value(int r, int c) const {
    return values[static_cast<size_t>(r) * lons.size() + static_cast<size_t>(c)];
  }
  bool Reach(const char* stage, int percent) const { return !progress || progress(stage, percent); }
};

/// Lays out the grid of a map and samples the surface on it: the first two stages.
/// \param interval  metres between levels; 0 or less makes no contours
/// \param work      a new one, with `progress` set
/// \return `ContourMade` if lines can be drawn now; otherwise how the run ends
ContourOutcome PrepareContours(const Map& map, int interval, ContourWork& work);

/// Reports that a level crosses an edge too often, or all edges together too often.
/// \return `ContourRefused`
ContourOutcome RefuseCrossings(const Map& map);

/// Does a whole run, and reports its end to `progress` if its beginning was reported.
ContourOutcome RunContours(const ContourProgress& progress,
                           const std::function<ContourOutcome(ContourWork&)>& run);

}  // namespace orvane
