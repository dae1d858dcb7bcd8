#include "model/unused_records.h"

#include "model/record_bytes.h"
#include "model/workspace.h"

#include <cstdint>
#include <utility>

namespace orvane {
namespace {

bool IsVisited(const Point& point) { return (point.flags & PointVisited) != 0; }

/// Marks the points that the lists of the maps hold.
void VisitListed(Workspace& workspace) {
  for (Map& map : workspace.maps) {
    for (Point& point : map.pointStore) point.flags &= ~std::uint32_t{PointVisited};
  }
  for (Map& map : workspace.maps) {
    ForEachPoint(map, [](Point& point) { point.flags |= PointVisited; });
    for (const PointList& bucket : map.pointHash) {
      for (Point* point : bucket) point->flags |= PointVisited;
    }
  }
}

template <typename Record>
void Erase(std::forward_list<Record>& removed, const std::unordered_set<const void*>& unused) {
  removed.remove_if([&](const Record& record) { return unused.contains(&record); });
}

}  // namespace

UnusedRecords::UnusedRecords(Workspace& workspace) : workspace_(workspace) {
  VisitListed(workspace);
  const auto addAll = [this](const auto& removed) {
    for (const auto& record : removed) unused_.insert(&record);
  };
  for (const Map& map : workspace.maps) {
    for (const Point& point : map.pointStore) {
      if (!IsVisited(point)) unused_.insert(&point);
    }
    addAll(map.removed.trails);
    addAll(map.removed.ranges);
    addAll(map.removed.grids);
    addAll(map.removed.gridShades);
  }
  if (unused_.empty()) return;
  for (const Map& map : workspace.maps) {
    for (const Point& point : map.pointStore) {
      if (IsVisited(point)) KeepLeads(point);
    }
    KeepLeadsOfLists(map);
  }
  // What is read next can begin with points of the trail that was read last.
  Keep(workspace.reading.currentTrail);
  Keep(workspace.reading.currentRange);
  Keep(workspace.reading.lastPoint);
}

void UnusedRecords::KeepLeadsOf(const Map& map) {
  for (const Point& point : map.pointStore) KeepLeads(point);
  for (const Trail& trail : map.removed.trails) KeepAll(trail.points);
  for (const Range& range : map.removed.ranges) KeepLeads(range);
  for (const Grid& grid : map.removed.grids) Keep(grid.corner);
  for (const GridShade& shade : map.removed.gridShades) Keep(shade.grid);
  for (const PointList& bucket : map.pointHash) KeepAll(bucket);
  ForEachPoint(map, [this](const Point& point) { Keep(&point); });
  KeepLeadsOfLists(map);
}

/// Keeps to what a map leads besides its points.
void UnusedRecords::KeepLeadsOfLists(const Map& map) {
  for (const Range& range : map.ranges) KeepLeads(range);
  for (const RangeIntersection& overlap : map.intersections) {
    Keep(overlap.a.range);
    Keep(overlap.b.range);
    Keep(overlap.grid);
  }
  for (const Grid& grid : map.grids) Keep(grid.corner);
  for (const GridShade& shade : map.gridShades) Keep(shade.grid);
  for (const ClosedChain& chain : map.closedChains) {
    Keep(chain.from);
    Keep(chain.to);
  }
  for (const Link& ray : map.rayStore) Keep(ray.other);
  for (const UnplacedBelow& each : map.unplacedBelow) Keep(each.point);
  Keep(map.origin);
}

void UnusedRecords::KeepLeads(const Point& point) {
  for (const Measurement& reading : point.measurements) Keep(reading.base);
  Keep(point.trail);
}

void UnusedRecords::KeepLeads(const Range& range) {
  for (const Trail* follow : range.follows) Keep(follow);
  KeepAll(range.points);
  KeepAll(range.hull);
  KeepAll(range.minutesGiven);
  if (range.clusters) {
    for (const Cluster& cluster : range.clusters->clusters) {
      for (const auto& hull : cluster.hull) KeepAll(hull);
    }
  }
  Keep(range.grid);
}

/// \return true if the record was among the unused ones
template <typename Record>
bool UnusedRecords::TakeFromUnused(const Record* record) {
  if (unused_.erase(record) == 0) return false;
  keptBytes_ += BytesOf(*record);
  return true;
}

void UnusedRecords::Keep(const Point* point) {
  if (!TakeFromUnused(point)) return;
  kept_.push_back(point);
  if (!isFollowing_) FollowPoints();
}

/// Readings can form long chains, so they are not followed by recursion.
void UnusedRecords::FollowPoints() {
  isFollowing_ = true;
  while (!kept_.empty()) {
    const Point& point = *kept_.back();
    kept_.pop_back();
    KeepLeads(point);
  }
  isFollowing_ = false;
}

void UnusedRecords::Keep(const Trail* trail) {
  if (TakeFromUnused(trail)) KeepAll(trail->points);
}

void UnusedRecords::Keep(const Range* range) {
  if (TakeFromUnused(range)) KeepLeads(*range);
}

void UnusedRecords::Keep(const Grid* grid) {
  if (TakeFromUnused(grid)) Keep(grid->corner);
}

void UnusedRecords::Keep(const GridShade* shade) {
  if (TakeFromUnused(shade)) Keep(shade->grid);
}

void UnusedRecords::Free() {
  if (unused_.empty()) return;
  const auto isUnused = [this](const Point& point) { return unused_.contains(&point); };
  for (Map& map : workspace_.maps) map.pointStore.ExpectFree(isUnused);
  for (Map& map : workspace_.maps) {
    Erase(map.removed.trails, unused_);
    Erase(map.removed.ranges, unused_);
    Erase(map.removed.grids, unused_);
    Erase(map.removed.gridShades, unused_);
    map.pointStore.Free(isUnused);
  }
  unused_.clear();
}

std::shared_ptr<const RecordHolders::Keep> RecordHolders::Add(Keep keep) {
  auto token = std::make_shared<const Keep>(std::move(keep));
  holders_.push_back(token);
  return token;
}

void RecordHolders::KeepAll(UnusedRecords& records) {
  std::erase_if(holders_, [](const auto& holder) { return holder.expired(); });
  for (const auto& holder : holders_) {
    if (const auto keep = holder.lock()) (*keep)(records);
  }
}

}  // namespace orvane
