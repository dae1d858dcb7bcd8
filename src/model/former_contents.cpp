#include "model/former_contents.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace orvane {
namespace {

/// What a map is, whatever it holds.
constexpr std::uint32_t StayingFlags = MapDirty | MapUntitled | MapUnlikeFile;

/// What a piece of memory of its own takes besides what is in it.
constexpr size_t PieceOfHeap = 2 * sizeof(void*);

/// The memory of a text outside its record; short texts are within.
size_t TextBytes(const std::string& text) {
  const bool isShort = text.capacity() < sizeof(std::string);
  return isShort ? 0 : text.capacity() + PieceOfHeap;
}

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

size_t BytesOf(const OffsetHull& hull) {
  return hull.ring.size() * sizeof(void*) + hull.store.store.size() * sizeof(Point);
}

}  // namespace

size_t BytesOf(const Point& point) {
  size_t bytes = sizeof(Point) + TextBytes(point.name) + (point.note ? TextBytes(*point.note) : 0);
  for (const Measurement& reading : point.measurements) {
    bytes += sizeof(Measurement) + PieceOfHeap + TextBytes(reading.nearName);
  }
  // Each name has an entry in the tables and in the lists of the map.
  constexpr size_t InLists = 6 * sizeof(void*);
  bytes += InLists;
  for (const std::string& synonym : point.synonyms) {
    bytes += 2 * (sizeof(std::string) + TextBytes(synonym)) + PieceOfHeap + InLists;
  }
  return bytes;
}

size_t BytesOf(const Trail& trail) {
  return sizeof(Trail) + 2 * PieceOfHeap + trail.points.size() * sizeof(void*) +
         (trail.note ? TextBytes(*trail.note) : 0);
}

size_t BytesOf(const Range& range) {
  size_t bytes = sizeof(Range) + PieceOfHeap + range.follows.size() * sizeof(void*) +
                 (range.points.size() + range.hull.size()) * sizeof(void*) +
                 range.cells.size() * sizeof(RangeCell) + BytesOf(range.outerHull) +
                 BytesOf(range.innerHull) + (range.note ? TextBytes(*range.note) : 0);
  for (const SearchKey& key : range.keys) bytes += sizeof key + PieceOfHeap;
  if (!range.clusters) return bytes;
  for (const Cluster& cluster : range.clusters->clusters) {
    bytes += sizeof cluster;
    for (const auto& hull : cluster.hull) bytes += hull.size() * sizeof(void*);
  }
  return bytes;
}

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
