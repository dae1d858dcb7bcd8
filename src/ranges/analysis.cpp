#include "ranges/analysis.h"

#include "geometry/convex_hull.h"
#include "geometry/planes.h"
#include "geometry/polygon.h"
#include "model/workspace.h"
#include "ranges/cluster_ranges.h"
#include "ranges/grid_tally.h"
#include "ranges/intersections.h"
#include "ranges/selection.h"
#include "ranges/travel.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

// The steps share the `projected` fields of the points and the durations of the stops, so their
// order matters: travel is measured before the tally gives each stop at least a minute, and each
// area is measured in the plane that the previous step left.

namespace orvane {

namespace {

void TakeHull(Range& range, Messages& messages) {
  auto result = ConvexHull(range.points, messages);
  if (!result) return;
  static_cast<GeoBounds&>(range) = *result;
  range.hasBounds = true;
  range.hull = std::move(result->hull);
}

/// Puts the points of the follows into the plane of the range's own points, including those that a
/// time window excludes from the range.
void ProjectFollows(Range& range) {
  const double lon = (range.maxLon + range.minLon) / 2;
  const double lat = (range.maxLat + range.minLat) / 2;
  for (const Trail* follow : range.follows) ProjectPoints(follow->points, lon, lat);
}

/// Puts the points of the range and of its follows back into the plane of a solved map: a place
/// that is looked up along a trail must not depend on whether a range exists.
void ReturnToAbsolutePlane(Range& range) {
  ProjectPoints(range.points, 0, 0);
  for (const Trail* follow : range.follows) ProjectPoints(follow->points, 0, 0);
}

/// All steps except the clusters, which are independent of the others.
void AnalyzeWithoutClusters(Range& range, Map& map) {
  ClearRangeAnalysis(range);
  range.follows = SelectFollows(map, range.keys);
  range.points = CollectRangePoints(map, range.follows, range.keys);
  TakeHull(range, map.workspace->messages);
  ProjectFollows(range);
  ComputeTravel(range);
  TallyRangeOnGrid(map, range);
  range.mcpArea = PolygonArea(range.hull);
  RangePathLength(range);
  ReturnToAbsolutePlane(range);
}

/// Intersects each range with those after it. Copies the boxes next to each other, because each
/// pair is a test of two boxes, and few of them meet on a large site.
void IntersectAllPairs(Map& map, const std::vector<Range*>& ranges, ProgressSteps& steps) {
  std::vector<GeoBounds> boxes;
  boxes.reserve(ranges.size());
  for (const Range* range : ranges) boxes.push_back(*range);
  OverlapMaker overlaps(map);
  for (size_t i = 0; i < ranges.size(); ++i) {
    for (size_t j = i + 1; j < ranges.size(); ++j) {
      if (!steps.Next()) return;
      if (BoundsOverlap(boxes[i], boxes[j])) overlaps.Intersect(*ranges[i], *ranges[j]);
    }
  }
}

}  // namespace

void ClearRangeAnalysis(Range& range) {
  range.follows.clear();
  range.points.clear();
  range.hasBounds = false;
  static_cast<GeoBounds&>(range) = {};
  range.hull.clear();
  range.mcpArea = 0;
  range.gridArea = 0;
  range.grid = nullptr;
  range.window = {};
  range.cells.clear();
  range.tally = {};
  range.minutesGiven.clear();
  range.clusters.reset();
}

void AnalyzeRange(Range& range, Map& map) {
  AnalyzeWithoutClusters(range, map);
  Range* const one[] = {&range};
  ClusterRanges(one, map.workspace->messages, map.workspace->progress);
}

void AnalyzeAllRanges(Map& map) {
  std::vector<Range*> ranges;
  Progress* progress = map.workspace->progress;
  const auto count = static_cast<size_t>(std::distance(map.ranges.begin(), map.ranges.end()));
  ProgressSteps steps(progress, WorkStage::Analyzing, count * (count + 1) / 2);
  map.intersections.clear();  // they refer to the cells of the ranges
  for (Range& range : map.ranges) {
    if (!steps.Next()) return;
    AnalyzeWithoutClusters(range, map);
    ranges.push_back(&range);
  }
  ClusterRanges(ranges, map.workspace->messages, progress);
  if (IsCanceled(progress)) return;
  IntersectAllPairs(map, ranges, steps);
}

void AnalyzeAllRangesOfOpenMap(Map& map) {
  Messages& messages = map.workspace->messages;
  Progress* progress = map.workspace->progress;
  std::vector<Range*> ranges;
  map.intersections.clear();  // they refer to the cells of the ranges
  const auto count = static_cast<size_t>(std::distance(map.ranges.begin(), map.ranges.end()));
  ProgressSteps steps(progress, WorkStage::Analyzing, count * (count + 1) / 2);
  {
    const MustFinish whole(progress);
    for (Range& range : map.ranges) {
      steps.Next();
      AnalyzeWithoutClusters(range, map);
      ranges.push_back(&range);
    }
  }
  ClusterRanges(ranges, messages, progress);
  const bool wasCanceled = IsCanceled(progress);
  const MustFinish whole(progress);
  IntersectAllPairs(map, ranges, steps);
  if (!wasCanceled) return;
  const auto lacking = std::count_if(ranges.begin(), ranges.end(), [](const Range* range) {
    return range->clusters == nullptr && range->points.size() > 1;
  });
  if (lacking == 0) return;
  NoteWarning(
      messages,
      "The search for clusters was canceled; ranges without clusters: %s. They are searched "
      "for when the map is opened again",
      {std::to_string(lacking)});
}

void AnalyzeOneRange(Range& range, Map& map) {
  // Overlaps refer to the cells of their ranges.
  map.intersections.remove_if([&](const RangeIntersection& record) {
    return record.a.range == &range || record.b.range == &range;
  });
  AnalyzeRange(range, map);
  OverlapMaker overlaps(map);
  for (Range& other : map.ranges) {
    if (&other != &range && BoundsOverlap(range, other)) overlaps.Intersect(range, other);
  }
}

std::vector<OverlapPair> OverlapsOf(const Map& map) {
  std::vector<OverlapPair> overlaps;
  for (const RangeIntersection& record : map.intersections) {
    overlaps.push_back({.a = record.a.range, .b = record.b.range, .name = record.name});
  }
  return overlaps;
}

void RepeatAnalysis(Map& map, const std::vector<Range*>& ranges,
                    const std::vector<OverlapPair>& overlaps) {
  Messages& messages = map.workspace->messages;
  const MustFinish whole(map.workspace->progress);
  const std::set<const Range*> again(ranges.begin(), ranges.end());
  std::map<std::pair<const Range*, const Range*>, std::forward_list<RangeIntersection>> kept;
  while (!map.intersections.empty()) {
    const RangeIntersection& record = map.intersections.front();
    const std::pair<const Range*, const Range*> pair(record.a.range, record.b.range);
    if (again.contains(pair.first) || again.contains(pair.second)) {
      map.intersections.pop_front();
    } else {
      auto& place = kept[pair];
      place.splice_after(place.before_begin(), map.intersections, map.intersections.before_begin());
    }
  }
  for (Range* range : ranges) {
    for (Point* stop : range->minutesGiven) stop->duration = 0;
    AnalyzeWithoutClusters(*range, map);
  }
  ClusterRanges(ranges, messages, map.workspace->progress);
  // The oldest first, as they were made.
  for (auto wanted = overlaps.rbegin(); wanted != overlaps.rend(); ++wanted) {
    const auto found = kept.find({wanted->a, wanted->b});
    if (found != kept.end()) {
      map.intersections.splice_after(map.intersections.before_begin(), found->second);
    } else if (!IntersectRanges(*wanted->a, *wanted->b, map.intersections, messages)) {
      continue;
    }
    map.intersections.front().name = wanted->name;
  }
}

}  // namespace orvane
