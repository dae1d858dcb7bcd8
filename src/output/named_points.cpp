#include "output/named_points.h"

#include <array>

namespace orvane {

namespace {

/// The points of all nodes, bucket by bucket. The next node of a list is known only when the one
/// before has been read from memory, so all lists are walked side by side: their reads then
/// overlap.
std::vector<Point*> NodesOf(const Map& map) {
  std::array<std::vector<Point*>, NameBuckets> buckets;
  std::array<decltype(map.pointHash[0].begin()), NameBuckets> at;
  for (size_t i = 0; i < NameBuckets; ++i) at[i] = map.pointHash[i].begin();
  for (bool more = true; more;) {
    more = false;
    for (size_t i = 0; i < NameBuckets; ++i) {
      if (at[i] == map.pointHash[i].end()) continue;
      buckets[i].push_back(*at[i]++);
      more = true;
    }
  }
  std::vector<Point*> nodes;
  for (const auto& bucket : buckets) nodes.insert(nodes.end(), bucket.begin(), bucket.end());
  return nodes;
}

}  // namespace

std::vector<Point*> NamedPoints(Map& map) {
  // A point with synonyms is in several buckets, or several times in one.
  const std::vector<Point*> nodes = NodesOf(map);
  ForEachAhead(nodes, [](Point& point) { point.flags &= ~std::uint32_t{PointVisited}; });
  std::vector<Point*> points;
  points.reserve(nodes.size());
  ForEachAhead(nodes, [&](Point& point) {
    if ((point.flags & PointVisited) != 0) return;
    point.flags |= PointVisited;
    points.push_back(&point);
  });
  return points;
}

}  // namespace orvane
