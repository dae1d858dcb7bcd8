#include "model/map.h"

#include "base/text.h"
#include "model/workspace.h"

#include <utility>

namespace orvane {

namespace {

template <size_t... Index>
PointBuckets BucketsIn(std::pmr::memory_resource& memory, std::index_sequence<Index...> order) {
  (void)order;
  return {((void)Index, PointList(&memory))...};
}

}  // namespace

PointBuckets MakeBuckets(std::pmr::memory_resource& memory) {
  return BucketsIn(memory, std::make_index_sequence<NameBuckets>());
}

Point& MakePoint(Map& map, std::string_view name) {
  Point& point = map.pointStore.emplace_back();
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
