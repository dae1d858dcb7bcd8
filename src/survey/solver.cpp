#include "survey/solver.h"

#include "survey/links.h"
#include "survey/positions.h"
#include "survey/regions.h"
#include "survey/strays.h"

namespace orvane {

namespace {

void SolvePoints(Map& map) {
  ForEachPoint(map, [&](Point& point) {
    if ((point.flags & PointPlaced) == 0) SolveRegion(map, point);
  });
  SolveStrayPoints(map);
  ForEachPoint(map, ProjectPoint);
}

}  // namespace

void SolveMap(Map& map) {
  LinkStore links;
  BuildLinks(map, links);
  SolvePoints(map);
  FreeLinks(links);
}

}  // namespace orvane
