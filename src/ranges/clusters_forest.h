#pragma once

#include "base/messages.h"
#include "geometry/ring.h"
#include "model/records.h"
#include "ranges/clusters_index.h"
#include "ranges/clusters_locations.h"

#include <array>
#include <cstdint>
#include <vector>

namespace orvane {

/// The place of a cluster in the tree of merges. Hulls walk over these records, so they are small.
struct ClusterLinks {
  int madeAt = 0;              ///< step at which it was seeded
  int mergedAt = NeverMerged;  ///< step at which it was merged into `parent`
  int parent = NoIndex;        ///< the cluster that it was merged into
  int firstChild = NoIndex;    ///< clusters merged into this one, oldest first
  int lastChild = NoIndex;
  int sibling = NoIndex;        ///< the next newer child of `parent`
  int firstLocation = NoIndex;  ///< locations that joined this cluster itself, oldest first
  int lastLocation = NoIndex;
};

/// The clusters, in order of creation. Locations join them, and they merge. A cluster that was
/// merged into another stays as its child.
class ClusterForest {
 public:
  /// Everything must outlive the forest, which writes the working fields of `locations`.
  ClusterForest(ClusterLocations& locations, LocationIndex& index, ClusterSets& sets,
                Messages& messages);

  /// Makes a cluster of the ends of two pairs that meet.
  void SeedCluster(const ClusterEdge& first, const ClusterEdge& second);
  /// A free location joins a cluster, which may have been merged.
  void JoinCluster(int cluster, int location);
  /// Merges the trees of two clusters, unless they are the same: the one with fewer locations into
  /// the other; of two equal ones the second into the first.
  void MergeClusters(int first, int second);

  /// The points of a cluster at a step, in the order in which its hull takes them.
  std::vector<Point*> PointListFromCluster(int cluster, int limit) const;

  const std::vector<ClusterLinks>& Clusters() const { return links_; }
  /// How many clusters are not merged into another.
  size_t CountTops() const { return tops_.size(); }
  int Steps() const { return steps_; }

 private:
  /// What is needed to project a location, stored close together.
  struct GeoPlace {
    double lat;     ///< degrees
    double lon;     ///< degrees
    double cosine;  ///< of the latitude
    Point* point;
  };

  /// The place of a location in its cluster.
  struct Member {
    int step = 0;        ///< when it joined
    int next = NoIndex;  ///< the next newer one of the cluster
  };
  /// The location of a tree that reaches furthest in one direction.
  struct Extreme {
    double reach = 0;  ///< degrees in that direction
    int location = NoIndex;
    bool isTied = false;  ///< another one reaches as far; then the first in the list counts
  };
  /// North, east, south, west.
  using Extremes = std::array<Extreme, 4>;
  /// The bounds of a cluster, and the hull of its tree.
  struct Ground {
    ClusterBounds bounds;  ///< of its own locations, and of its children when they were merged
    // Of the whole tree; kept for tops only.
    int size = 0;  ///< locations
    Extremes extremes;
    bool hasHull = false;  ///< whether `hull` is that of the present tree
    Ring hull;
  };
  /// The plane of the last hull of a tree, in which its locations are.
  struct Plane {
    std::uint64_t setAt = 0;     ///< moment; 0 for never
    std::uint64_t mergedAt = 0;  ///< moment at which the cluster was merged
    double centerLat = 0;        ///< degrees
    double centerLon = 0;        ///< degrees
  };

  ClusterLinks& LinksOf(int cluster) { return links_[static_cast<size_t>(cluster)]; }
  const ClusterLinks& LinksOf(int cluster) const { return links_[static_cast<size_t>(cluster)]; }
  Ground& GroundOf(int cluster) { return grounds_[static_cast<size_t>(cluster)]; }
  const Ground& GroundOf(int cluster) const { return grounds_[static_cast<size_t>(cluster)]; }
  Plane& PlaneOf(int cluster) { return planes_[static_cast<size_t>(cluster)]; }
  const Plane& PlaneOf(int cluster) const { return planes_[static_cast<size_t>(cluster)]; }
  ClusterPoint& PointAt(int location) { return locations_[static_cast<size_t>(location)]; }
  const ClusterPoint& PointAt(int location) const {
    return locations_[static_cast<size_t>(location)];
  }
  void AddClusterPoint(int cluster, int location);
  int MergeTops(int first, int second);
  void AbsorbOverlaps(int cluster);
  int FindOverlap(int top);
  bool AnyInside(int top, int around);
  bool IsReachable(int location, const ClusterBounds& bounds) const;
  void SetPlane(int top);
  Meters PlaceOf(int location) const;
  Meters PlaceInPlane(int location, const Plane& plane) const;
  const Ring& HullOf(int top);
  Extremes ExtremesOf(int location) const;
  static void Widen(Extremes& extremes, const Extremes& other);
  void SettleTies(int top);
  template <typename Take>
  void WalkTree(int cluster, int limit, const Take& take) const;

  ClusterLocations& locations_;
  LocationIndex& index_;
  ClusterSets& sets_;
  Messages& messages_;
  std::vector<ClusterLinks> links_;  // by cluster, like the next two
  std::vector<Ground> grounds_;
  std::vector<Plane> planes_;
  std::vector<Member> members_;  // by location
  std::vector<int> tops_;        // in order of creation
  int steps_ = 0;

  // Moments order the events that decide in which plane a location is.
  std::uint64_t moment_ = 0;
  std::vector<std::uint64_t> joinedAt_;  // by location
  std::vector<GeoPlace> geo_;            // by location
  std::vector<RingVertex> places_;       // the locations of a hull in their plane
};

}  // namespace orvane
