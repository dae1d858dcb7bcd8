#pragma once

#include "ranges/clusters_locations.h"

#include <array>
#include <cstddef>
#include <vector>

namespace orvane {

/// Bounds in the plane of the locations, limits included.
struct ClusterBounds {
  double maxNorth = 0;  ///< metres
  double minNorth = 0;
  double maxEast = 0;
  double minEast = 0;

  void Widen(const ClusterBounds& other);
  bool Overlaps(const ClusterBounds& other) const {
    return maxNorth >= other.minNorth && minNorth <= other.maxNorth && maxEast >= other.minEast &&
           minEast <= other.maxEast;
  }
  bool Holds(double north, double east) const {
    return north <= maxNorth && north >= minNorth && east <= maxEast && east >= minEast;
  }
};

/// The clusters that were merged into one another, as disjoint sets.
class ClusterSets {
 public:
  /// \return the number of the new set, counted from 0
  int Make();
  /// `child` and all of its set belong to `parent` from now on. Both must be tops.
  void Unite(int child, int parent) { above_[static_cast<size_t>(child)] = parent; }
  /// \return the cluster of the set that is not merged into another
  int TopOf(int cluster) const {
    auto at = static_cast<size_t>(cluster);
    while (above_[at] != static_cast<int>(at)) {
      const auto next = static_cast<size_t>(above_[at]);
      above_[at] = above_[next];
      at = next;
    }
    return static_cast<int>(at);
  }

 private:
  mutable std::vector<int> above_;  // paths are halved while they are walked
};

/// Finds locations near to others: a tree of boxes over all of them. A search skips boxes whose
/// locations all belong to one tree of clusters when it needs others.
class LocationIndex {
 public:
  /// Both must outlive the index; each search reads `cluster` of the locations.
  LocationIndex(const ClusterLocations& locations, const ClusterSets& sets);

  /// Call once for each location that joins a cluster.
  void NoteTaken(int location);

  /// The first pair after `after` that joins a clustered location and one that is free or belongs
  /// to another tree, in either direction.
  ClusterEdge FirstForeignEdge(int location, const ClusterEdge& after) const;
  /// The first pair after `after` that joins a location and another free one, in either direction.
  ClusterEdge FirstFreeEdge(int location, const ClusterEdge& after) const;

  /// Whether a test is true for some location of a tree within bounds.
  /// \param top   the top of the tree
  /// \param test  takes the index of a location
  template <typename Test>
  bool AnyOfTree(int top, const ClusterBounds& bounds, const Test& test) const;

 private:
  /// A box. Its first child follows it; its second child is at `second`.
  struct Node {
    ClusterBounds bounds;
    int begin = 0;  ///< in `order_`
    int end = 0;
    int parent = NoIndex;
    int second = NoIndex;           ///< none for a leaf
    int free = 0;                   ///< locations in the box that belong to no cluster
    mutable int cluster = NoIndex;  ///< if all are known to be of one tree, a cluster of it
  };
  struct Entry {
    double north;
    double east;
    int location;
  };
  /// Nodes to visit: at most one for each level, and halving keeps the levels below 32.
  struct Pending {
    double distance;
    size_t node;
  };
  using PendingNodes = std::array<Pending, 64>;

  void Build();
  size_t AddNode(int begin, int end, int parent);
  bool IsOfTree(const Node& node, size_t at, int top) const;
  void RefreshCluster(const Node& node, size_t at) const;
  template <typename SkipNode, typename SkipLocation>
  ClusterEdge FirstEdge(int location, const ClusterEdge& after, const SkipNode& skipNode,
                        const SkipLocation& skipLocation) const;
  ClusterEdge FirstDirection(double length, int x, int y, const ClusterEdge& after) const;

  const ClusterLocations& locations_;
  const ClusterSets& sets_;
  std::vector<Entry> order_;
  std::vector<Node> nodes_;
  std::vector<int> leafOf_;
};

template <typename Test>
bool LocationIndex::AnyOfTree(int top, const ClusterBounds& bounds, const Test& test) const {
  PendingNodes pending;
  size_t count = 0;
  pending[count++] = {0, 0};
  while (count > 0) {
    const size_t at = pending[--count].node;
    const Node& node = nodes_[at];
    if (!node.bounds.Overlaps(bounds)) continue;
    RefreshCluster(node, at);
    if (node.cluster != NoIndex && sets_.TopOf(node.cluster) != top) continue;
    if (node.second != NoIndex) {
      pending[count++] = {0, static_cast<size_t>(node.second)};
      pending[count++] = {0, at + 1};
      continue;
    }
    for (int i = node.begin; i < node.end; ++i) {
      const Entry& entry = order_[static_cast<size_t>(i)];
      if (!bounds.Holds(entry.north, entry.east)) continue;
      const int cluster = locations_[static_cast<size_t>(entry.location)].cluster;
      if (cluster == NoIndex || sets_.TopOf(cluster) != top) continue;
      if (test(entry.location)) return true;
    }
  }
  return false;
}

}  // namespace orvane
