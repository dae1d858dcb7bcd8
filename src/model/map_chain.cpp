#include "model/map_chain.h"

#include "model/workspace.h"

#include <algorithm>
#include <utility>

namespace orvane {

bool RestsOn(const Map& map, const Map& other) {
  for (const Map* each = &map; each != nullptr; each = each->basis) {
    if (each == &other) return true;
  }
  return false;
}

std::vector<Map*> MapsBasedOn(const Map& map) {
  std::vector<std::pair<int, Map*>> found;
  for (Map& each : map.workspace->maps) {
    int steps = 0;
    const Map* below = &each;
    for (; below != nullptr && below != &map; below = below->basis) ++steps;
    if (below == &map && steps > 0) found.emplace_back(steps, &each);
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<Map*> maps;
  maps.reserve(found.size());
  for (const auto& [steps, each] : found) maps.push_back(each);
  return maps;
}

}  // namespace orvane
