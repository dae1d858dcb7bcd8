// What happens to clusters when they grow.
//
// Hulls are not to overlap, so after each growth the tree that grew (the top) is held against all
// others whose bounds overlap its own, and merges with the first that has a location within its
// hull, or the other way round.
//
// For that test the places of locations are read in the plane that the last hull of their tree has
// left them in, which has its origin at the centre of that tree, while the other's hull stands
// about its own. It is odd, but it decides when clusters fuse, and figures already published were
// made so. To make every hull only for the plane that it leaves behind would cost more than all
// the rest. So each top keeps the moment and the centre of its last plane, a location finds its
// place by going up from its cluster, and a hull is made only when some location lies within the
// bounds; it is then kept until its tree grows.

#include "ranges/clusters_forest.h"

#include "geo/earth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane {
namespace {

/// Takes in the whole tree as it stands.
constexpr int NoLimit = NeverMerged;

/// Trees up to this size are walked rather than searched for in the index.
constexpr int SmallTree = 32;

ClusterBounds BoundsOf(double north, double east) { return {north, north, east, east}; }

}  // namespace

ClusterForest::ClusterForest(ClusterLocations& locations, LocationIndex& index, ClusterSets& sets,
                             Messages& messages)
    : locations_(locations),
      index_(index),
      sets_(sets),
      messages_(messages),
      joinedWhen_(locations.size()) {
  cosines_.reserve(locations.size());
  for (const ClusterPoint& location : locations) {
    cosines_.push_back(std::cos(location.point->geo.lat * RadiansPerDegree));
  }
}

void ClusterForest::SeedCluster(const ClusterEdge& first, const ClusterEdge& second) {
  const int made = sets_.Make();
  GrowingCluster& cluster = clusters_.emplace_back();
  tops_.push_back(made);
  const ClusterPoint& start = PointAt(first.a);
  cluster.bounds = BoundsOf(start.north, start.east);
  cluster.degrees = BoundsOf(start.point->geo.lat, start.point->geo.lon);
  cluster.mergedAt = NeverMerged;
  cluster.madeAt = steps_;
  for (const int location : {first.a, first.b, second.a, second.b}) {
    if (PointAt(location).cluster != made) AddClusterPoint(made, location);
  }
  ++steps_;
}

void ClusterForest::AddClusterPoint(int cluster, int location) {
  ClusterPoint& point = PointAt(location);
  GrowingCluster& own = At(cluster);
  point.cluster = cluster;
  point.nextInCluster = own.firstPoint;
  own.firstPoint = location;
  point.step = steps_;
  joinedWhen_[static_cast<size_t>(location)] = ++moment_;
  // The bounds of the clusters above stay as they are: they are those of the moment of merging.
  own.bounds.Widen(BoundsOf(point.north, point.east));

  GrowingCluster& top = At(sets_.TopOf(cluster));
  ++top.size;
  top.degrees.Widen(BoundsOf(point.point->geo.lat, point.point->geo.lon));
  top.hasHull = false;
  index_.NoteTaken(location);
}

void ClusterForest::JoinCluster(int cluster, int location) {
  AddClusterPoint(cluster, location);
  ++steps_;
  AbsorbOverlaps(cluster);
}

void ClusterForest::MergeClusters(int first, int second) {
  const int a = sets_.TopOf(first);
  const int b = sets_.TopOf(second);
  if (a != b) AbsorbOverlaps(MergeTops(a, b));
}

/// \return the one that stays a top
int ClusterForest::MergeTops(int first, int second) {
  const bool firstIsSmaller = At(first).size < At(second).size;
  const int smaller = firstIsSmaller ? first : second;
  const int larger = firstIsSmaller ? second : first;
  GrowingCluster& child = At(smaller);
  GrowingCluster& top = At(larger);
  child.parent = larger;
  child.sibling = top.firstChild;
  top.firstChild = smaller;
  child.mergedAt = steps_;
  ++steps_;
  child.mergedWhen = ++moment_;
  top.bounds.Widen(child.bounds);
  top.degrees.Widen(child.degrees);
  top.size += child.size;
  top.hasHull = false;
  child.hasHull = false;
  child.hull = Ring();
  sets_.Unite(smaller, larger);
  tops_.erase(std::lower_bound(tops_.begin(), tops_.end(), smaller));
  return larger;
}

void ClusterForest::AbsorbOverlaps(int cluster) {
  int top = sets_.TopOf(cluster);
  for (;;) {
    const int other = FindOverlap(top);
    if (other == NoIndex) return;
    // Such a merge has no step of its own.
    --steps_;
    top = MergeTops(other, top);
  }
}

/// \return the first tree that is to merge with this one
int ClusterForest::FindOverlap(int top) {
  bool planeIsSet = false;
  for (const int other : tops_) {
    if (other == top || !At(other).bounds.Overlaps(At(top).bounds)) continue;
    if (!planeIsSet) SetPlane(top);
    planeIsSet = true;
    if (AnyInside(other, top)) return other;
    SetPlane(other);
    if (AnyInside(top, other)) return other;
  }
  return NoIndex;
}

/// Whether some location of the tree of `top` lies in the bounds of `around` and in its hull.
bool ClusterForest::AnyInside(int top, int around) {
  const ClusterBounds& bounds = At(around).bounds;
  const auto isInside = [&](int location) {
    if (!IsReachable(location, bounds)) return false;
    const Meters place = PlaceOf(location);
    return PointInRing(place.east, place.north, HullOf(around));
  };
  if (At(top).size > SmallTree) return index_.AnyOfTree(top, bounds, isInside);
  bool found = false;
  WalkTree(top, NoLimit, [&](int location) {
    const ClusterPoint& point = PointAt(location);
    found = found || (bounds.Holds(point.north, point.east) && isInside(location));
  });
  return found;
}

/// Merged clusters whose bounds do not overlap those in question are not looked into. The bounds
/// of a cluster need not hold what joined its children later, so this may hide a location.
bool ClusterForest::IsReachable(int location, const ClusterBounds& bounds) const {
  int cluster = PointAt(location).cluster;
  while (At(cluster).parent != NoIndex) {
    if (!At(cluster).bounds.Overlaps(bounds)) return false;
    cluster = At(cluster).parent;
  }
  return true;
}

/// What the hull of a tree does to the places of its locations. A single one stays as it is.
void ClusterForest::SetPlane(int top) {
  GrowingCluster& tree = At(top);
  if (tree.size < 2) return;
  tree.planeSetAt = ++moment_;
  tree.centreLat = (tree.degrees.maxNorth + tree.degrees.minNorth) / 2;
  tree.centreLon = (tree.degrees.maxEast + tree.degrees.minEast) / 2;
}

/// The place of a location in the plane of the last hull that it had a part in. The way up is
/// short, since trees are merged into larger ones.
Meters ClusterForest::PlaceOf(int location) const {
  const ClusterPoint& point = PointAt(location);
  std::uint64_t entered = joinedWhen_[static_cast<size_t>(location)];
  const GrowingCluster* plane = nullptr;
  for (int cluster = point.cluster; cluster != NoIndex; cluster = At(cluster).parent) {
    if (At(cluster).planeSetAt > entered) plane = &At(cluster);
    entered = At(cluster).mergedWhen;
  }
  if (plane == nullptr) return {point.north, point.east};
  return PlaceInPlane(location, plane->centreLon, plane->centreLat);
}

/// As `ProjectPoints` computes it, with the cosine at hand.
Meters ClusterForest::PlaceInPlane(int location, double lon0, double lat0) const {
  const LatLon& geo = PointAt(location).point->geo;
  return {geo.lat * MetersPerDegree - lat0 * MetersPerDegree,
          cosines_[static_cast<size_t>(location)] * (geo.lon - lon0) * MetersPerDegree};
}

/// Goes over the locations of a cluster as it stood at a step: its own, newest first, then those
/// of its children, newest first.
template <typename Take>
void ClusterForest::WalkTree(int cluster, int limit, const Take& take) const {
  int at = cluster;
  while (at != NoIndex) {
    for (int i = At(at).firstPoint; i != NoIndex; i = PointAt(i).nextInCluster) {
      if (PointAt(i).step < limit) take(i);
    }
    int next = At(at).firstChild;
    for (;;) {
      while (next != NoIndex && At(next).mergedAt >= limit) next = At(next).sibling;
      if (next != NoIndex || at == cluster) break;
      next = At(at).sibling;
      at = At(at).parent;
    }
    at = next;
  }
}

std::vector<Point*> ClusterForest::PointListFromCluster(int cluster, int limit) const {
  std::vector<Point*> points;
  WalkTree(cluster, limit, [&](int location) { points.push_back(PointAt(location).point); });
  std::reverse(points.begin(), points.end());
  return points;
}

/// The hull of a tree as `ConvexHull` makes it, in the plane of the tree.
const Ring& ClusterForest::HullOf(int top) {
  GrowingCluster& tree = At(top);
  if (tree.hasHull) return tree.hull;
  listed_.clear();
  WalkTree(top, NoLimit, [&](int location) { listed_.push_back(location); });
  std::reverse(listed_.begin(), listed_.end());
  tree.hull = StartRing(top);
  const Ring start = tree.hull;
  if (start.size() > 1) {
    for (const int location : listed_) {
      Point* point = PointAt(location).point;
      const auto isPoint = [&](const RingVertex& vertex) { return vertex.point == point; };
      if (std::any_of(start.begin(), start.end(), isPoint)) continue;
      const Meters place = PlaceInPlane(location, tree.centreLon, tree.centreLat);
      if (PointInRing(place.east, place.north, tree.hull)) continue;
      AddToRing(tree.hull, {place, point}, messages_);
    }
  }
  tree.hasHull = true;
  return tree.hull;
}

/// The extremes of the listed locations, each once: west, south, east, north.
Ring ClusterForest::StartRing(int top) const {
  const auto geoOf = [&](int location) -> const LatLon& { return PointAt(location).point->geo; };
  int north = listed_.front();
  int east = north;
  int south = north;
  int west = north;
  for (const int location : listed_) {
    const LatLon& geo = geoOf(location);
    if (geo.lat > geoOf(north).lat) north = location;
    if (geo.lat < geoOf(south).lat) south = location;
    if (geo.lon > geoOf(east).lon) east = location;
    if (geo.lon < geoOf(west).lon) west = location;
  }
  Ring ring;
  for (const int location : {north, east, south, west}) {
    Point* point = PointAt(location).point;
    const auto isPoint = [&](const RingVertex& vertex) { return vertex.point == point; };
    if (std::any_of(ring.begin(), ring.end(), isPoint)) continue;
    ring.push_back({PlaceInPlane(location, At(top).centreLon, At(top).centreLat), point});
  }
  std::reverse(ring.begin(), ring.end());
  return ring;
}

}  // namespace orvane
