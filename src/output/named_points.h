#pragma once

#include "model/map.h"

#include <cstddef>
#include <vector>

namespace orvane {

/// \return the points of which a map knows a name, each once, also those of its basis that it names
///         again: bucket by bucket, newest first. Stops named by a time are not among them. Leaves
///         `PointVisited` set on all of them.
std::vector<Point*> NamedPoints(Map& map);

/// Calls `visit` for each point of a list. If the order mixes all points of a map, each would wait
/// for the memory; so this prefetches the points that follow.
template <typename List, typename Visit>
void ForEachAhead(const List& points, Visit visit) {
  constexpr size_t Ahead = 12;
  constexpr size_t CacheLine = 64;
  for (size_t i = 0; i < points.size(); ++i) {
    if (i + Ahead < points.size()) {
      const char* const soon = reinterpret_cast<const char*>(points[i + Ahead]);
      for (size_t at = 0; at < sizeof(Point); at += CacheLine) __builtin_prefetch(soon + at);
    }
    visit(*points[i]);
  }
}

}  // namespace orvane
