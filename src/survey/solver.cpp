#include "survey/solver.h"

#include "base/progress.h"
#include "model/workspace.h"
#include "survey/links.h"
#include "survey/positions.h"
#include "survey/regions.h"
#include "survey/strays.h"

#include <unordered_set>
#include <vector>

namespace orvane {

namespace {

void SolvePoints(Map& map) {
  constexpr unsigned PointsOfStep = 64;
  Progress* progress = map.workspace->progress;
  ProgressSteps steps(progress, WorkStage::Solving, map.pointStore.size(), PointsOfStep);
  ForEachPoint(map, [&](Point& point) {
    if (steps.Next() && !IsPlaced(point)) SolveRegion(map, point);
  });
  if (IsCanceled(progress)) return;
  SolveStrayPoints(map);
  ForEachPoint(map, ProjectPoint);
}

/// Remembers the points below that a solve could place. It knows best about those of its own map.
void NoteUnplacedBelow(Map& map) {
  for (Map& other : map.workspace->maps) {
    std::erase_if(other.unplacedBelow,
                  [&](const UnplacedBelow& each) { return each.point->map == &map; });
  }
  std::unordered_set<const Point*> known;
  for (const UnplacedBelow& each : map.unplacedBelow) known.insert(each.point);
  for (const Map* below = map.basis; below != nullptr; below = below->basis) {
    ForEachPoint(*below, [&](Point& point) {
      if (IsPlaced(point) || !known.insert(&point).second) return;
      map.unplacedBelow.push_back({.point = &point,
                                   .latSum = point.latSum,
                                   .lonSum = point.lonSum,
                                   .altSum = point.altSum,
                                   .positionWeight = point.positionWeight,
                                   .altitudeWeight = point.altitudeWeight});
    });
  }
}

}  // namespace

void SolveMap(Map& map) {
  map.closedChains.clear();
  NoteUnplacedBelow(map);
  LinkStore links;
  BuildLinks(map, links);
  SolvePoints(map);
  FreeLinks(links);
}

}  // namespace orvane
