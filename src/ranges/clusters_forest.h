#pragma once

#include "base/messages.h"
#include "geometry/ring.h"
#include "ranges/clusters_index.h"
#include "ranges/clusters_locations.h"

#include <cstdint>
#include <vector>

namespace orvane {

/// One cluster while the clusters grow.
struct GrowingCluster {
  int madeAt = 0;    ///< step at which it was seeded
  int mergedAt = 0;  ///< step at which it was merged into `parent`
  int parent = NoIndex;
  int firstChild = NoIndex;  ///< clusters merged into this one, newest first
  int sibling = NoIndex;     ///< the next older child of `parent`
  int firstPoint = NoIndex;  ///< locations that joined this cluster itself, newest first
  int size = 0;              ///< locations of the whole tree; kept for tops alone
  ClusterBounds bounds;      ///< of its own locations, and of its children when they were merged
  ClusterBounds degrees;     ///< of the whole tree; kept for tops alone

  // The plane in which the last hull of the tree put its locations.
  std::uint64_t planeSetAt = 0;  ///< moment
  std::uint64_t mergedWhen = 0;  ///< moment
  double centreLat = 0;          ///< degrees
  double centreLon = 0;          ///< degrees

  bool hasHull = false;  ///< whether `hull` is that of the tree as it stands
  Ring hull;
};

/// The clusters, in order of creation, as locations join them and they merge. A cluster that was
/// merged into another stays as its child.
class ClusterForest {
 public:
  /// Everything must live as long as the forest, which writes the working fields of `locations`.
  ClusterForest(ClusterLocations& locations, LocationIndex& index, ClusterSets& sets,
                Messages& messages);

  /// Makes a cluster of the ends of two pairs that meet.
  void SeedCluster(const ClusterEdge& first, const ClusterEdge& second);
  /// A free location joins a cluster, which may have been merged.
  void JoinCluster(int cluster, int location);
  /// Merges the trees of two clusters, unless they are one: the one of fewer locations into the
  /// other, and the second into the first if they are equal.
  void MergeClusters(int first, int second);

  /// The points of a cluster as it stood at a step, in the order in which its hull takes them.
  std::vector<Point*> PointListFromCluster(int cluster, int limit) const;

  const std::vector<GrowingCluster>& Clusters() const { return clusters_; }
  /// How many of them are merged into no other.
  size_t CountTops() const { return tops_.size(); }
  int Steps() const { return steps_; }

 private:
  GrowingCluster& At(int cluster) { return clusters_[static_cast<size_t>(cluster)]; }
  const GrowingCluster& At(int cluster) const { return clusters_[static_cast<size_t>(cluster)]; }
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
  Meters PlaceInPlane(int location, double lon0, double lat0) const;
  const Ring& HullOf(int top);
  Ring StartRing(int top) const;
  template <typename Take>
  void WalkTree(int cluster, int limit, const Take& take) const;

  ClusterLocations& locations_;
  LocationIndex& index_;
  ClusterSets& sets_;
  Messages& messages_;
  std::vector<GrowingCluster> clusters_;
  std::vector<int> tops_;  // in order of creation
  int steps_ = 0;

  // Moments order the events that decide in which plane a location stands.
  std::uint64_t moment_ = 0;
  std::vector<std::uint64_t> joinedWhen_;  // by location
  std::vector<double> cosines_;            // of the latitudes, by location
  std::vector<int> listed_;                // a hull's locations
};

}  // namespace orvane
