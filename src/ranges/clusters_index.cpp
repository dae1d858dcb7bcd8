#include "ranges/clusters_index.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

/// Small enough to skip most, large enough to keep the tree shallow.
constexpr int LargestLeaf = 8;

/// The distance from a place to a box. It is rounded like the distance to a location in the box,
/// step by step, so it is never greater than that.
double DistanceToBounds(const ClusterBounds& bounds, double north, double east) {
  double dNorth = 0;
  if (north < bounds.minNorth) dNorth = bounds.minNorth - north;
  if (north > bounds.maxNorth) dNorth = north - bounds.maxNorth;
  double dEast = 0;
  if (east < bounds.minEast) dEast = bounds.minEast - east;
  if (east > bounds.maxEast) dEast = east - bounds.maxEast;
  return std::sqrt(dNorth * dNorth + dEast * dEast);
}

}  // namespace

void ClusterBounds::Widen(const ClusterBounds& other) {
  if (other.maxNorth > maxNorth) maxNorth = other.maxNorth;
  if (other.minNorth < minNorth) minNorth = other.minNorth;
  if (other.maxEast > maxEast) maxEast = other.maxEast;
  if (other.minEast < minEast) minEast = other.minEast;
}

int ClusterSets::Make() {
  above_.push_back(static_cast<int>(above_.size()));
  return above_.back();
}

LocationIndex::LocationIndex(const ClusterLocations& locations, const ClusterSets& sets)
    : locations_(locations), sets_(sets), leafOf_(locations.size()) {
  order_.reserve(locations.size());
  for (size_t i = 0; i < locations.size(); ++i) {
    order_.push_back({locations[i].north, locations[i].east, static_cast<int>(i)});
  }
  Build();
}

size_t LocationIndex::AddNode(int begin, int end, int parent) {
  Node& node = nodes_.emplace_back();
  node.begin = begin;
  node.end = end;
  node.parent = parent;
  node.free = end - begin;
  const Entry& first = order_[static_cast<size_t>(begin)];
  node.bounds = {first.north, first.north, first.east, first.east};
  for (int i = begin + 1; i < end; ++i) {
    const Entry& entry = order_[static_cast<size_t>(i)];
    node.bounds.Widen({entry.north, entry.north, entry.east, entry.east});
  }
  return nodes_.size() - 1;
}

void LocationIndex::Build() {
  // A first child is made right after its parent; the second ones wait here.
  struct Waiting {
    int begin;
    int end;
    int parent;
    bool isSecond;
  };
  std::vector<Waiting> waiting = {{0, static_cast<int>(order_.size()), NoIndex, false}};
  while (!waiting.empty()) {
    const Waiting next = waiting.back();
    waiting.pop_back();
    const size_t at = AddNode(next.begin, next.end, next.parent);
    if (next.isSecond) nodes_[static_cast<size_t>(next.parent)].second = static_cast<int>(at);
    if (next.end - next.begin <= LargestLeaf) {
      for (int i = next.begin; i < next.end; ++i) {
        leafOf_[static_cast<size_t>(order_[static_cast<size_t>(i)].location)] =
            static_cast<int>(at);
      }
      continue;
    }
    const ClusterBounds& bounds = nodes_[at].bounds;
    const bool byNorth = bounds.maxNorth - bounds.minNorth > bounds.maxEast - bounds.minEast;
    const int middle = next.begin + (next.end - next.begin) / 2;
    std::nth_element(order_.begin() + next.begin, order_.begin() + middle,
                     order_.begin() + next.end, [byNorth](const Entry& x, const Entry& y) {
                       return byNorth ? x.north < y.north : x.east < y.east;
                     });
    waiting.push_back({middle, next.end, static_cast<int>(at), true});
    waiting.push_back({next.begin, middle, static_cast<int>(at), false});
  }
}

void LocationIndex::NoteTaken(int location) {
  for (int at = leafOf_[static_cast<size_t>(location)]; at != NoIndex;
       at = nodes_[static_cast<size_t>(at)].parent) {
    --nodes_[static_cast<size_t>(at)].free;
  }
}

/// Looks only one level down: a change of a box reaches the boxes above it at later visits.
void LocationIndex::RefreshCluster(const Node& node, size_t at) const {
  if (node.cluster != NoIndex || node.free > 0) return;
  if (node.second != NoIndex) {
    const int first = nodes_[at + 1].cluster;
    const int second = nodes_[static_cast<size_t>(node.second)].cluster;
    if (first == NoIndex || second == NoIndex) return;
    if (sets_.TopOf(first) == sets_.TopOf(second)) node.cluster = first;
    return;
  }
  const auto clusterOf = [&](int i) {
    const int location = order_[static_cast<size_t>(i)].location;
    return locations_[static_cast<size_t>(location)].cluster;
  };
  const int first = clusterOf(node.begin);
  const int top = sets_.TopOf(first);
  for (int i = node.begin + 1; i < node.end; ++i) {
    if (sets_.TopOf(clusterOf(i)) != top) return;
  }
  node.cluster = first;
}

bool LocationIndex::IsOfTree(const Node& node, size_t at, int top) const {
  RefreshCluster(node, at);
  return node.cluster != NoIndex && sets_.TopOf(node.cluster) == top;
}

/// The first of the two directions of a pair that comes after `after`.
ClusterEdge LocationIndex::FirstDirection(double length, int x, int y,
                                          const ClusterEdge& after) const {
  ClusterEdge first = {length, x, y};
  ClusterEdge second = {length, y, x};
  if (Precedes(locations_, second, first)) std::swap(first, second);
  if (Precedes(locations_, after, first)) return first;
  if (Precedes(locations_, after, second)) return second;
  return {BeyondAllEdges, NoIndex, NoIndex};
}

template <typename SkipNode, typename SkipLocation>
ClusterEdge LocationIndex::FirstEdge(int location, const ClusterEdge& after,
                                     const SkipNode& skipNode,
                                     const SkipLocation& skipLocation) const {
  const double north = locations_[static_cast<size_t>(location)].north;
  const double east = locations_[static_cast<size_t>(location)].east;
  ClusterEdge best = {BeyondAllEdges, NoIndex, NoIndex};
  PendingNodes pending;
  size_t count = 0;
  pending[count++] = {0, 0};
  while (count > 0) {
    const auto [distance, at] = pending[--count];
    // At equal length the order of pairs decides, so an equal distance is searched too.
    if (distance > best.length) continue;
    const Node& node = nodes_[at];
    if (skipNode(node, at)) continue;
    if (node.second != NoIndex) {
      const auto second = static_cast<size_t>(node.second);
      Pending near = {DistanceToBounds(nodes_[at + 1].bounds, north, east), at + 1};
      Pending far = {DistanceToBounds(nodes_[second].bounds, north, east), second};
      if (far.distance < near.distance) std::swap(near, far);
      pending[count++] = far;
      pending[count++] = near;
      continue;
    }
    for (int i = node.begin; i < node.end; ++i) {
      const Entry& entry = order_[static_cast<size_t>(i)];
      const double dNorth = north - entry.north;
      const double dEast = east - entry.east;
      const double length = std::sqrt(dNorth * dNorth + dEast * dEast);
      if (length > best.length || length < after.length) continue;
      if (entry.location == location || skipLocation(entry.location)) continue;
      const ClusterEdge edge = FirstDirection(length, location, entry.location, after);
      if (Precedes(locations_, edge, best)) best = edge;
    }
  }
  return best;
}

ClusterEdge LocationIndex::FirstForeignEdge(int location, const ClusterEdge& after) const {
  const int top = sets_.TopOf(locations_[static_cast<size_t>(location)].cluster);
  return FirstEdge(
      location, after, [&](const Node& node, size_t at) { return IsOfTree(node, at, top); },
      [&](int other) {
        const int cluster = locations_[static_cast<size_t>(other)].cluster;
        return cluster != NoIndex && sets_.TopOf(cluster) == top;
      });
}

ClusterEdge LocationIndex::FirstFreeEdge(int location, const ClusterEdge& after) const {
  return FirstEdge(
      location, after, [](const Node& node, size_t) { return node.free == 0; },
      [&](int other) { return locations_[static_cast<size_t>(other)].cluster != NoIndex; });
}

}  // namespace orvane
