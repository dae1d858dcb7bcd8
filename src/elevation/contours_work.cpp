#include "elevation/contours_work.h"

#include "base/messages.h"
#include "elevation/contours_barriers.h"
#include "elevation/contours_samples.h"
#include "elevation/contours_surface.h"
#include "model/workspace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace orvane {

namespace {

constexpr double MostCells = 1000000;  // above, the step grows to bring the grid back to it

void FindBounds(ContourWork& work) {
  const LatLon& first = work.points.front()->geo;
  work.maxLat = work.minLat = first.lat;
  work.maxLon = work.minLon = first.lon;
  for (const Point* point : work.points) {
    work.maxLat = std::max(work.maxLat, point->geo.lat);
    work.minLat = std::min(work.minLat, point->geo.lat);
    work.maxLon = std::max(work.maxLon, point->geo.lon);
    work.minLon = std::min(work.minLon, point->geo.lon);
  }
}

/// The steepest slope rises by half an interval within a step, unless that makes too many cells.
double StepOf(const ContourWork& work) {
  const double step = work.interval / MaxSlope(work.points) / 2;
  const double cells = (work.maxLat - work.minLat) / step * (work.maxLon - work.minLon) / step;
  return cells > MostCells ? step * std::sqrt(cells / MostCells) : step;
}

/// \return false if the grid has more nodes than are allowed
bool CountLines(ContourWork& work) {
  const double rows = std::trunc((work.maxLat - work.minLat) / work.step + 1);
  const double columns = std::trunc((work.maxLon - work.minLon) / work.step + 1);
  if (!((rows + 2) * (columns + 2) <= MostGridNodes)) return false;
  work.rows = static_cast<int>(rows);
  work.columns = static_cast<int>(columns);
  return true;
}

/// The places of the samples. A row is sampled as the cells below it end, one step from where they
/// begin, which is not always the same number as that many steps from the first row.
void LayOutSamples(ContourWork& work) {
  work.lats = {work.minLat};
  for (int r = 0; r <= work.rows; ++r) {
    const double lat = work.minLat + r * work.step;
    work.lats.push_back(lat + work.step);
  }
  for (int c = 0; c <= work.columns + 1; ++c) {
    work.lons.push_back(work.minLon + c * work.step);
  }
}

ContourOutcome Refuse(const Map& map, std::string_view reason) {
  NoteError(map.workspace->messages, "Can't make contours: %s", {reason});
  return ContourRefused;
}

bool FindValues(ContourWork& work) {
  constexpr const char* Stage = "Generating approximation...";
  if (!work.Reach(Stage, 0)) return false;
  const auto rowDone = [&work](size_t row) {
    if (row == 0) return true;
    const auto r = static_cast<int>(row) - 1;
    return work.Reach(Stage, static_cast<int>(std::int64_t{r} * 100 / work.rows));
  };
  auto values = SampleSurface(work.points, work.lats, work.lons, rowDone);
  if (!values) return false;
  work.values = std::move(*values);
  return true;
}

}  // namespace

ContourOutcome RefuseCrossings(const Map& map) {
  return Refuse(map,
                "the levels are too close (100,000 between neighbours of the grid, 5,000,000 "
                "crossings in all)");
}

ContourOutcome RunContours(const ContourProgress& progress,
                           const std::function<ContourOutcome(ContourWork&)>& run) {
  ContourWork work;
  bool hasBegun = false;
  work.progress = [&](const char* stage, int percent) {
    hasBegun = true;
    return !progress || progress(stage, percent);
  };
  const ContourOutcome outcome = run(work);
  if (hasBegun && progress) progress(nullptr, 0);
  return outcome;
}

ContourOutcome PrepareContours(const Map& map, int interval, ContourWork& work) {
  if (interval <= 0) return ContourNothing;
  work.points = CollectAltitudePoints(map);
  if (work.points.empty()) return ContourNothing;
  work.interval = interval;
  FindBounds(work);
  if (!work.Reach("Figuring grid spacing...", 0)) return ContourCanceled;
  work.step = StepOf(work);
  if (!std::isfinite(work.step)) return ContourNothing;
  if (!CountLines(work)) {
    return Refuse(map, "the grid would have more than 4,000,000 nodes");
  }
  if (!AddBarrierPoints(map, work.points, work.step, work.barrierPoints)) {
    return Refuse(map, "rivers and ridges would add more than 500,000 points");
  }
  LayOutSamples(work);
  return FindValues(work) ? ContourMade : ContourCanceled;
}

}  // namespace orvane
