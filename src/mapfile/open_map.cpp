#include "mapfile/open_map.h"

#include "mapfile/reader.h"
#include "model/time_names.h"
#include "ranges/analysis.h"
#include "survey/positions.h"
#include "survey/solver.h"

namespace orvane {

Map& OpenMap(Workspace& workspace, const std::string& name, bool* readable) {
  if (Map* map = FindMap(workspace, name)) {
    if (readable != nullptr) *readable = true;
    return *map;
  }
  Map& map = MakeMap(workspace, name);
  // What is found out once all lines are read is about the file as a whole.
  const OriginScope origin(workspace.messages, name);
  const bool read = ReadMapFile(map, name);
  if (readable != nullptr) *readable = read;
  FinishMap(map);
  return map;
}

void FinishMap(Map& map) {
  for (Trail& trail : map.trails) FillPointTimes(trail);
  for (const auto& bucket : map.pointHash) {
    for (Point* point : bucket) {
      if (point->trail == nullptr && !point->name.empty()) map.loosePoints.push_front(point);
    }
  }
  if (NeedsSolving(map)) {
    ClearOwnPositions(map);
    SolveMap(map);
  }
  AnalyzeAllRanges(map);
}

}  // namespace orvane
