// What happens when clusters grow.
//
// Hulls must not overlap, so after each growth the grown tree (the top) is compared with all others
// whose bounds overlap its own, and merges with the first that has a location inside its hull, or
// the other way round.
//
// For that test a location is read in the plane that the last hull of its tree left it in, with its
// origin at the centre of that tree, while the other's hull is about its own centre. See
// docs/compatibility.md. Making every hull only for the plane that it leaves would cost more than
// everything else. So each top stores the moment and the centre of its last plane, a location finds
// its place by walking up from its cluster, and a hull is made only when some location is within
// the bounds; it is then kept until its tree grows.

#include "ranges/clusters_forest.h"

#include "geo/earth.h"
#include "ranges/clusters_hull.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace orvane {
namespace {

/// Takes the whole present tree.
constexpr int NoLimit = NeverMerged;

/// Trees up to this size are walked instead of being searched for in the index.
constexpr int SmallTree = 32;

ClusterBounds BoundsOf(double north, double east) { return {north, north, east, east}; }

}  // namespace

ClusterForest::ClusterForest(ClusterLocations& locations, LocationIndex& index, ClusterSets& sets,
                             Messages& messages)
    : locations_(locations),
      index_(index),
      sets_(sets),
      messages_(messages),
      members_(locations.size()),
      joinedAt_(locations.size()) {
  geo_.reserve(locations.size());
  for (const ClusterPoint& location : locations) {
    const LatLon& geo = location.point->geo;
    geo_.push_back({geo.lat, geo.lon, std::cos(geo.lat * RadiansPerDegree), location.point});
  }
}

void ClusterForest::SeedCluster(const ClusterEdge& first, const ClusterEdge& second) {
  const int made = sets_.Make();
  tops_.push_back(made);
  links_.emplace_back().madeAt = steps_;
  planes_.emplace_back();
  const ClusterPoint& start = PointAt(first.a);
  Ground& ground = grounds_.emplace_back();
  ground.bounds = BoundsOf(start.north, start.east);
  ground.extremes = ExtremesOf(first.a);
  for (const int location : {first.a, first.b, second.a, second.b}) {
    if (PointAt(location).cluster != made) AddClusterPoint(made, location);
  }
  ++steps_;
}

void ClusterForest::AddClusterPoint(int cluster, int location) {
  ClusterPoint& point = PointAt(location);
  point.cluster = cluster;
  ClusterLinks& links = LinksOf(cluster);
  if (links.lastLocation == NoIndex) {
    links.firstLocation = location;
  } else {
    members_[static_cast<size_t>(links.lastLocation)].next = location;
  }
  links.lastLocation = location;
  members_[static_cast<size_t>(location)] = {steps_, NoIndex};
  joinedAt_[static_cast<size_t>(location)] = ++moment_;
  // The bounds of the clusters above do not change: they are those of the moment of merging.
  GroundOf(cluster).bounds.Widen(BoundsOf(point.north, point.east));

  Ground& tree = GroundOf(sets_.TopOf(cluster));
  ++tree.size;
  Widen(tree.extremes, ExtremesOf(location));
  tree.hasHull = false;
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
  const bool firstIsSmaller = GroundOf(first).size < GroundOf(second).size;
  const int smaller = firstIsSmaller ? first : second;
  const int larger = firstIsSmaller ? second : first;
  ClusterLinks& links = LinksOf(smaller);
  links.parent = larger;
  ClusterLinks& above = LinksOf(larger);
  if (above.lastChild == NoIndex) {
    above.firstChild = smaller;
  } else {
    LinksOf(above.lastChild).sibling = smaller;
  }
  above.lastChild = smaller;
  links.mergedAt = steps_;
  ++steps_;
  PlaneOf(smaller).mergedAt = ++moment_;

  Ground& child = GroundOf(smaller);
  Ground& tree = GroundOf(larger);
  tree.bounds.Widen(child.bounds);
  Widen(tree.extremes, child.extremes);
  tree.size += child.size;
  tree.hasHull = false;
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

/// \return the first tree to merge with this one
int ClusterForest::FindOverlap(int top) {
  bool planeIsSet = false;
  for (const int other : tops_) {
    if (other == top || !GroundOf(other).bounds.Overlaps(GroundOf(top).bounds)) continue;
    if (!planeIsSet) SetPlane(top);
    planeIsSet = true;
    if (AnyInside(other, top)) return other;
    SetPlane(other);
    if (AnyInside(top, other)) return other;
  }
  return NoIndex;
}

/// Whether some location of the tree of `top` is in the bounds of `around` and in its hull.
bool ClusterForest::AnyInside(int top, int around) {
  const ClusterBounds& bounds = GroundOf(around).bounds;
  const auto isInside = [&](int location) {
    if (!IsReachable(location, bounds)) return false;
    const Meters place = PlaceOf(location);
    return PointInRing(place.east, place.north, HullOf(around));
  };
  if (GroundOf(top).size > SmallTree) return index_.AnyOfTree(top, bounds, isInside);
  bool found = false;
  WalkTree(top, NoLimit, [&](int location) {
    const ClusterPoint& point = PointAt(location);
    found = found || (bounds.Holds(point.north, point.east) && isInside(location));
  });
  return found;
}

/// Merged clusters whose bounds do not overlap the given ones are skipped. The bounds of a cluster
/// need not hold what joined its children later, so this may hide a location.
bool ClusterForest::IsReachable(int location, const ClusterBounds& bounds) const {
  int cluster = PointAt(location).cluster;
  while (LinksOf(cluster).parent != NoIndex) {
    if (!GroundOf(cluster).bounds.Overlaps(bounds)) return false;
    cluster = LinksOf(cluster).parent;
  }
  return true;
}

/// The effect of the hull of a tree on the places of its locations. A single one stays as it is.
void ClusterForest::SetPlane(int top) {
  const Ground& tree = GroundOf(top);
  if (tree.size < 2) return;
  Plane& plane = PlaneOf(top);
  plane.setAt = ++moment_;
  const auto& [north, east, south, west] = tree.extremes;
  plane.centerLat = (north.reach - south.reach) / 2;
  plane.centerLon = (east.reach - west.reach) / 2;
}

/// The place of a location in the plane of the last hull that it was part of. The way up is short,
/// since trees are merged into larger ones.
Meters ClusterForest::PlaceOf(int location) const {
  const ClusterPoint& point = PointAt(location);
  std::uint64_t entered = joinedAt_[static_cast<size_t>(location)];
  const Plane* last = nullptr;
  for (int cluster = point.cluster; cluster != NoIndex; cluster = LinksOf(cluster).parent) {
    const Plane& plane = PlaneOf(cluster);
    if (plane.setAt > entered) last = &plane;
    // The location may have joined after the cluster was merged.
    entered = std::max(entered, plane.mergedAt);
  }
  if (last == nullptr) return {point.north, point.east};
  return PlaceInPlane(location, *last);
}

/// As `ProjectPoints` computes it, with the cosine given.
Meters ClusterForest::PlaceInPlane(int location, const Plane& plane) const {
  const GeoPlace& geo = geo_[static_cast<size_t>(location)];
  return {geo.lat * MetersPerDegree - plane.centerLat * MetersPerDegree,
          geo.cosine * (geo.lon - plane.centerLon) * MetersPerDegree};
}

/// Walks the locations of a cluster at a step: those of its children, oldest first, then
/// its own, oldest first.
template <typename Take>
void ClusterForest::WalkTree(int cluster, int limit, const Take& take) const {
  // Later children of a cluster were merged later.
  const auto isPart = [&](int child) {
    return child != NoIndex && LinksOf(child).mergedAt < limit;
  };
  const auto lowestUnder = [&](int at) {
    while (isPart(LinksOf(at).firstChild)) at = LinksOf(at).firstChild;
    return at;
  };
  for (int at = lowestUnder(cluster);;) {
    for (int i = LinksOf(at).firstLocation; i != NoIndex;) {
      const Member& member = members_[static_cast<size_t>(i)];
      if (member.step < limit) take(i);
      i = member.next;
    }
    if (at == cluster) return;
    const int sibling = LinksOf(at).sibling;
    at = isPart(sibling) ? lowestUnder(sibling) : LinksOf(at).parent;
  }
}

std::vector<Point*> ClusterForest::PointListFromCluster(int cluster, int limit) const {
  std::vector<Point*> points;
  WalkTree(cluster, limit, [&](int location) { points.push_back(PointAt(location).point); });
  return points;
}

ClusterForest::Extremes ClusterForest::ExtremesOf(int location) const {
  const GeoPlace& geo = geo_[static_cast<size_t>(location)];
  return {{{geo.lat, location}, {geo.lon, location}, {-geo.lat, location}, {-geo.lon, location}}};
}

void ClusterForest::Widen(Extremes& extremes, const Extremes& other) {
  for (size_t i = 0; i < extremes.size(); ++i) {
    Extreme& own = extremes[i];
    if (other[i].reach > own.reach) {
      own = other[i];
    } else if (other[i].reach == own.reach && other[i].location != own.location) {
      own.isTied = true;
    }
  }
}

/// Finds the first in the list where locations reach equally far.
void ClusterForest::SettleTies(int top) {
  Extremes& extremes = GroundOf(top).extremes;
  const auto isTied = [](const Extreme& extreme) { return extreme.isTied; };
  if (std::none_of(extremes.begin(), extremes.end(), isTied)) return;
  Extremes first = extremes;
  for (Extreme& extreme : first) extreme.location = NoIndex;
  WalkTree(top, NoLimit, [&](int location) {
    const Extremes own = ExtremesOf(location);
    for (size_t i = 0; i < first.size(); ++i) {
      if (first[i].location == NoIndex && own[i].reach == first[i].reach) {
        first[i].location = location;
      }
    }
  });
  extremes = first;
}

/// The hull of a tree as `ConvexHull` makes it, in the plane of the tree.
const Ring& ClusterForest::HullOf(int top) {
  Ground& tree = GroundOf(top);
  if (tree.hasHull) return tree.hull;
  SettleTies(top);
  const Plane plane = PlaneOf(top);
  const auto vertexAt = [&](int location) -> RingVertex {
    return {PlaceInPlane(location, plane), geo_[static_cast<size_t>(location)].point};
  };
  const auto& [north, east, south, west] = tree.extremes;
  HullGrowth growth(vertexAt(north.location), vertexAt(east.location), vertexAt(south.location),
                    vertexAt(west.location), messages_);
  if (tree.size > 1) {
    WalkTree(top, NoLimit, [&](int location) { growth.Take(vertexAt(location)); });
  }
  tree.hull = growth.Hull();
  tree.hasHull = true;
  return tree.hull;
}

}  // namespace orvane
