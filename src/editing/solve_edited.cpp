#include "editing/solve_edited.h"

#include "model/map_chain.h"
#include "model/workspace.h"
#include "ranges/analysis.h"
#include "survey/positions.h"
#include "survey/solver.h"

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

std::vector<Map*> SolveEdited(Map& map) {
  std::vector<Map*> maps{&map};
  for (Map* above : MapsRestingOn(map)) maps.push_back(above);
  for (Map* each : maps) ForgetGatheredReadings(*each);
  for (Map* each : maps) {
    ClearOwnPositions(*each);
    SolveMap(*each);
  }
  for (Map* each : maps) AnalyzeAllRanges(*each);
  return maps;
}

void RefreshAfterSwap(const MapDelta& delta) {
  std::vector<Map*> maps = delta.Maps();
  for (const Map* touched : delta.Maps()) {
    for (Map* above : MapsRestingOn(*touched)) {
      if (std::find(maps.begin(), maps.end(), above) == maps.end()) maps.push_back(above);
    }
  }
  for (Map* each : maps) ForgetGatheredReadings(*each);
  for (Map* each : maps) AnalyzeAllRanges(*each);
}

}  // namespace orvane
