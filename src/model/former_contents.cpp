#include "model/former_contents.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace orvane {
namespace {

/// What a map is, whatever it holds.
constexpr std::uint32_t StayingFlags = MapDirty | MapUntitled | MapUnlikeFile;

size_t BytesOf(const Point& point) {
  const auto readings =
      static_cast<size_t>(std::distance(point.measurements.begin(), point.measurements.end()));
  const auto synonyms =
      static_cast<size_t>(std::distance(point.synonyms.begin(), point.synonyms.end()));
  // Besides itself a point takes a node in lists, and an entry of its name.
  constexpr size_t InLists = 6 * sizeof(void*);
  return sizeof(Point) + InLists + readings * (sizeof(Measurement) + sizeof(void*)) +
         synonyms * (2 * sizeof(std::string) + InLists) + (point.note ? point.note->size() : 0);
}

size_t BytesOf(const Map& map) {
  size_t bytes = sizeof(Map) + map.rayStore.size() * sizeof(Link);
  for (const Point& point : map.pointStore) bytes += BytesOf(point);
  for (const auto* trails :
       {&map.trails, &map.contourTrails, &map.continuousContours, &map.removed.trails}) {
    for (const Trail& trail : *trails) bytes += sizeof(Trail) + trail.points.size() * sizeof(void*);
  }
  bytes += map.contourPoints.store.size() * sizeof(Point);
  for (const Range& range : map.ranges) {
    bytes += sizeof(Range) + (range.points.size() + range.hull.size()) * sizeof(void*) +
             range.cells.size() * sizeof(RangeCell);
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

size_t FormerContents::Bytes() const {
  size_t bytes = sizeof(FormerContents);
  for (const Map& holder : holders_) bytes += BytesOf(holder);
  return bytes;
}

}  // namespace orvane
