#include "editing/detach_trail.h"

#include "base/text.h"
#include "model/map_chain.h"
#include "model/point_names.h"
#include "model/time_names.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace orvane {

TrailDetacher::TrailDetacher(Map& map, std::vector<Trail*> trails,
                             const std::vector<TrailRow>& rows)
    : map_(map), order_(std::move(trails)), trails_(order_.begin(), order_.end()) {
  for (const TrailRow& row : rows) {
    const std::string name = FoldedText(row.name);
    rowNames_.push_back(name);
    for (size_t start = 0; start <= name.size();) {
      const size_t end = std::min(name.find('=', start), name.size());
      rowParts_.push_back(name.substr(start, end - start));
      start = end + 1;
    }
  }
  std::sort(rowNames_.begin(), rowNames_.end());
  std::sort(rowParts_.begin(), rowParts_.end());
}

TrailDetacher::Found TrailDetacher::FindInRows(const Point& point) const {
  const auto isIn = [](const std::vector<std::string>& names, const std::string& name) {
    return std::binary_search(names.begin(), names.end(), FoldedText(name));
  };
  Found found{.exact = isIn(rowNames_, point.name), .named = isIn(rowParts_, point.name)};
  for (const std::string& synonym : point.synonyms) {
    found.named = found.named || isIn(rowParts_, synonym);
  }
  return found;
}

/// One walk over all trails finds the other holders of the points.
void TrailDetacher::FindHolders() {
  std::unordered_set<const Point*> own;
  for (const Trail* trail : order_) own.insert(trail->points.begin(), trail->points.end());
  std::vector<Map*> maps = MapsBasedOn(map_);
  maps.insert(maps.begin(), &map_);
  for (Map* each : maps) {
    for (Trail& other : each->trails) {
      if (IsEmptied(&other)) continue;
      for (const Point* point : other.points) {
        if (own.contains(point)) holders_.try_emplace(point, each == &map_ ? &other : nullptr);
      }
    }
  }
}

size_t TrailDetacher::Detach() {
  FindHolders();
  std::unordered_set<const Point*> met;
  for (Trail* trail : order_) {
    for (Point* point : trail->points) {
      if (met.insert(point).second) DetachPoint(*point);
    }
  }
  for (Trail* trail : order_) {
    trail->points.clear();
    trail->flags &= ~std::uint32_t{TrailMeasured | TrailClosed};
  }
  return RemoveGone();
}

void TrailDetacher::DetachPoint(Point& point) {
  const Found found = FindInRows(point);
  const auto holding = holders_.find(&point);
  const bool isHeld = holding != holders_.end();
  Trail* holder = isHeld ? holding->second : nullptr;
  const bool isOwn = point.map == &map_;
  const bool stays = found.exact || isHeld || !isOwn;
  if (stays && !found.exact && !found.named) {
    // Nothing here gives its readings back.
    if (IsEmptied(point.trail)) {
      point.trail = holder;
      if (holder == nullptr && isOwn && !point.name.empty()) map_.loosePoints.push_front(&point);
    }
    return;
  }
  point.measurements.clear();
  point.note.reset();
  point.labelLimit = 0;
  std::fill(std::begin(point.sm), std::end(point.sm), 0);
  point.timeOfDay = 0;
  point.duration = 0;
  if (!found.exact && IsEmptied(point.trail)) point.trail = holder;
  // The name of a time is looked up on the trail, which is empty now, so its point is made again.
  if (found.exact && IsTimeName(point.name)) KeepMark(point);
  if (!stays) going_.push_back(&point);
}

/// Points that the saved file would bring back stay, without readings, on no trail.
size_t TrailDetacher::RemoveGone() {
  std::unordered_set<const Point*> needed;
  const auto needBases = [&](const Point& point) {
    for (const Measurement& reading : point.measurements) needed.insert(reading.base);
  };
  // A point of the basis can have a reading from a point of this map.
  for (const Map* below = map_.basis; below != nullptr; below = below->basis) {
    ForEachPoint(*below, needBases);
  }
  std::vector<Map*> maps = MapsBasedOn(map_);
  maps.push_back(&map_);
  for (const Map* each : maps) {
    ForEachPoint(*each, needBases);
    for (const Grid& grid : each->grids) needed.insert(grid.corner);
    needed.insert(each->origin);
  }
  size_t removed = 0;
  for (Point* point : going_) {
    const bool canStay = !point->name.empty() && !IsTimeName(point->name);
    if (canStay && needed.contains(point)) {
      map_.loosePoints.push_front(point);
    } else {
      TakeOut(*point);
      ++removed;
    }
  }
  return removed;
}

void TrailDetacher::KeepMark(const Point& point) {
  const OwnMark mark = MarkOf(point);
  marks_.emplace(FoldedText(point.name), mark);
  for (const std::string& synonym : point.synonyms) marks_.emplace(FoldedText(synonym), mark);
}

void TrailDetacher::KeepMarks(const std::vector<Point*>& points) {
  for (const Point* point : points) KeepMark(*point);
}

void TrailDetacher::TakeOut(Point& point) {
  KeepMark(point);
  RemovePointNames(map_, point);
  RemoveFromLists(map_, point);
  for (Map* above : MapsBasedOn(map_)) RemovePointNames(*above, point);
}

bool TrailDetacher::RestoreMark(Point& point) const {
  const auto found = marks_.find(FoldedText(point.name));
  if (found == marks_.end() || point.name.empty()) return false;
  GiveMark(found->second, point);
  return true;
}

std::vector<Point*> PointsHeld(Map& map, const std::vector<Point*>& points) {
  std::unordered_set<const Point*> held;
  std::vector<Map*> maps = MapsBasedOn(map);
  maps.push_back(&map);
  for (const Map* each : maps) {
    for (const Trail& trail : each->trails) held.insert(trail.points.begin(), trail.points.end());
  }
  std::vector<Point*> found;
  std::copy_if(points.begin(), points.end(), std::back_inserter(found),
               [&held](const Point* point) { return held.contains(point); });
  return found;
}

}  // namespace orvane
