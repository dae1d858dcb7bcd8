#include "survey/solver.h"

#include "base/progress.h"
#include "model/workspace.h"
#include "survey/links.h"
#include "survey/positions.h"
#include "survey/regions.h"
#include "survey/strays.h"
#include "survey/unplaced_below.h"

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

}  // namespace

void SolveMap(Map& map) {
  map.closedChains.clear();
  NoteUnplacedBelow(map);
  LinkStore links;
  BuildLinks(map, links);
  SolvePoints(map);
  FreeLinks(links);
  KeepGivenBelow(map);
}

}  // namespace orvane
