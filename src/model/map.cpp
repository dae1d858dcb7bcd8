#include "model/map.h"

#include "base/text.h"
#include "model/workspace.h"

#include <utility>

namespace orvane {

namespace {

template <size_t... Index>
PointBuckets BucketsIn(MapMemory& memory, std::index_sequence<Index...> order) {
  (void)order;
  return {((void)Index, PointList(&memory))...};
}

}  // namespace

PointBuckets MakeBuckets(MapMemory& memory) {
  return BucketsIn(memory, std::make_index_sequence<NameBuckets>());
}

void SwapContents(Map& a, Map& b) noexcept {
  using std::swap;
  swap(a.pointMemory, b.pointMemory);
  swap(a.listMemory, b.listMemory);
  swap(a.fileMark, b.fileMark);
  swap(a.includedFiles, b.includedFiles);
  swap(a.basis, b.basis);
  swap(a.magneticDeviation, b.magneticDeviation);
  swap(a.flags, b.flags);
  swap(a.date, b.date);
  swap(a.contourEnabled, b.contourEnabled);
  swap(a.contourInterval, b.contourInterval);
  swap(a.smName, b.smName);
  swap(a.pointHash, b.pointHash);
  a.names.Swap(b.names);
  swap(a.loosePoints, b.loosePoints);
  swap(a.namelessPoints, b.namelessPoints);
  swap(a.origin, b.origin);
  swap(a.trails, b.trails);
  swap(a.contourTrails, b.contourTrails);
  swap(a.continuousContours, b.continuousContours);
  swap(a.contourPoints.store, b.contourPoints.store);
  swap(a.ranges, b.ranges);
  swap(a.intersections, b.intersections);
  swap(a.grids, b.grids);
  swap(a.gridShades, b.gridShades);
  swap(a.removed.trails, b.removed.trails);
  swap(a.removed.ranges, b.removed.ranges);
  swap(a.removed.grids, b.removed.grids);
  swap(a.removed.gridShades, b.removed.gridShades);
  swap(a.closedChains, b.closedChains);
  swap(a.unplacedBelow, b.unplacedBelow);
  swap(a.comments, b.comments);
  swap(a.credits, b.credits);
  swap(a.nameIndex, b.nameIndex);
  a.pointStore.Swap(b.pointStore);
  swap(a.rayStore, b.rayStore);
  for (Map* each : {&a, &b}) {
    for (Point& point : each->pointStore) point.map = each;
  }
}

size_t CreditTagLength(std::string_view line) {
  if (line.starts_with('\xA9')) return 1;
  return line.starts_with("\xC2\xA9") ? 2 : 0;
}

Point& MakePoint(Map& map, std::string_view name) {
  Point& point = map.pointStore.Make();
  point.name = name;
  point.map = &map;
  return point;
}

Map& MakeMap(Workspace& workspace, std::string_view name) {
  Map& map = workspace.maps.emplace_front();
  map.workspace = &workspace;
  map.fileName = name;
  map.shownName = name;
  return map;
}

Map* FindMap(Workspace& workspace, std::string_view name) {
  for (Map& map : workspace.maps) {
    if (SameName(map.fileName, name)) return &map;
  }
  return nullptr;
}

}  // namespace orvane
