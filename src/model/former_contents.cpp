#include "model/former_contents.h"

#include "model/record_bytes.h"

#include <algorithm>
#include <cstdint>

namespace orvane {
namespace {

/// What a map is, whatever it holds.
constexpr std::uint32_t StayingFlags = MapDirty | MapUntitled | MapUnlikeFile;

size_t BytesOf(const Map& map) {
  size_t bytes = sizeof(Map) + map.rayStore.size() * sizeof(Link);
  for (const Point& point : map.pointStore) bytes += BytesOf(point);
  for (const auto* trails :
       {&map.trails, &map.contourTrails, &map.continuousContours, &map.removed.trails}) {
    for (const Trail& trail : *trails) bytes += BytesOf(trail);
  }
  bytes += map.contourPoints.store.size() * sizeof(Point);
  for (const auto* ranges : {&map.ranges, &map.removed.ranges}) {
    for (const Range& range : *ranges) bytes += BytesOf(range);
  }
  return bytes;
}

}  // namespace

void FormerContents::Take(Map& map, std::forward_list<Map>& from,
                          std::forward_list<Map>::iterator before) {
  holders_.splice_after(holders_.before_begin(), from, before);
  holders_.front().workspace = map.workspace;
  pairs_.emplace_back(&map, &holders_.front());
}

void FormerContents::Swap() {
  for (const auto& [map, holder] : pairs_) {
    const std::uint32_t staying = map->flags & StayingFlags;
    SwapContents(*map, *holder);
    map->flags = (map->flags & ~StayingFlags) | staying;
    std::swap(map->fileMark, holder->fileMark);
    map->includedFiles.swap(holder->includedFiles);
  }
}

std::vector<Map*> FormerContents::Maps() const {
  std::vector<Map*> maps;
  for (const auto& [map, holder] : pairs_) maps.push_back(map);
  return maps;
}

bool FormerContents::Holds(const Map& map) const {
  return std::any_of(pairs_.begin(), pairs_.end(),
                     [&](const auto& pair) { return pair.first == &map; });
}

void FormerContents::KeepLeads(UnusedRecords& records) const {
  for (const Map& holder : holders_) records.KeepLeadsOf(holder);
}

size_t FormerContents::Bytes() const {
  size_t bytes = sizeof(FormerContents);
  for (const Map& holder : holders_) bytes += BytesOf(holder);
  return bytes;
}

}  // namespace orvane
