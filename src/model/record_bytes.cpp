#include "model/record_bytes.h"

#include <string>

namespace orvane {
namespace {

/// What a piece of memory of its own takes besides what is in it.
constexpr size_t PieceOfHeap = 2 * sizeof(void*);

/// The memory of a text outside its record; short texts are within.
size_t TextBytes(const std::string& text) {
  const bool isShort = text.capacity() < sizeof(std::string);
  return isShort ? 0 : text.capacity() + PieceOfHeap;
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

size_t BytesOf(const Grid& grid) { return sizeof grid; }

size_t BytesOf(const GridShade& shade) { return sizeof shade; }

}  // namespace orvane
