#include "editing/solve_edited.h"

#include "model/map_chain.h"
#include "model/workspace.h"
#include "ranges/analysis.h"
#include "survey/positions.h"
#include "survey/solver.h"
#include "survey/unplaced_below.h"

#include <algorithm>

namespace orvane {

void ForgetGatheredReadings(Map& map) {
  for (Point& point : map.pointStore) {
    point.latSum = 0;
    point.lonSum = 0;
    point.altSum = 0;
    point.positionWeight = 0;
    point.altitudeWeight = 0;
    point.rays = nullptr;
  }
  // A ray connects points of one map, so no pointers to these rays are left.
  map.rayStore.clear();
}

namespace {

/// A shot at a point of a basis that has no place begins where its own point is before the solve: on
/// opening that is at 0,0, or at the mean of its fixes if that was found before anything else.
void ForgetPlaces(Map& map) {
  ForEachPoint(map, [&](Point& point) {
    if (point.map == &map && !IsPlaced(point)) point.geo = LatLon();
  });
  NeedsSolving(map);
  ClearOwnPositions(map);
}

}  // namespace

std::vector<Map*> SolveEdited(Map& map) {
  std::vector<Map*> maps{&map};
  for (Map* above : MapsBasedOn(map)) maps.push_back(above);
  for (Map* each : maps) ForgetGatheredReadings(*each);
  for (Map* each : maps) {
    RestoreUnplacedBelow(*each);
    ClearOwnPositions(*each);
    ForgetPlaces(*each);
    SolveMap(*each);
  }
  for (Map* each : maps) AnalyzeAllRanges(*each);
  return maps;
}

bool IsAnalyzedAfterSwap(const MapDelta& delta, const Map& map) {
  const std::vector<Map*> touched = delta.Maps();
  return delta.DiffersInAnalysis(map) ||
         std::any_of(touched.begin(), touched.end(), [&](const Map* each) {
           return !delta.KeepsFollows(*each) && RestsOn(map, *each);
         });
}

void RefreshAfterSwap(const MapDelta& delta, Workspace& workspace) {
  std::vector<Map*> wholly;
  for (Map* touched : delta.Maps()) {
    if (delta.KeepsFollows(*touched)) continue;
    std::vector<Map*> maps = MapsBasedOn(*touched);
    maps.insert(maps.begin(), touched);
    for (Map* each : maps) {
      if (std::find(wholly.begin(), wholly.end(), each) == wholly.end()) wholly.push_back(each);
    }
  }
  for (Map* each : wholly) ForgetGatheredReadings(*each);
  for (Map* each : wholly) {
    std::vector<Range*> ranges;
    for (Range& range : each->ranges) ranges.push_back(&range);
    RepeatAnalysis(*each, ranges, delta.OverlapsThen(*each));
  }
  for (Map& each : workspace.maps) {
    const bool isDone = std::find(wholly.begin(), wholly.end(), &each) != wholly.end();
    if (isDone || !delta.DiffersInAnalysis(each)) continue;
    RepeatAnalysis(each, delta.ChangedRanges(each), delta.OverlapsThen(each));
  }
}

}  // namespace orvane
