#include "survey/unplaced_below.h"

#include "model/map_chain.h"
#include "model/workspace.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orvane {

namespace {

UnplacedBelow StateOf(Point& point) {
  return {.point = &point,
          .latSum = point.latSum,
          .lonSum = point.lonSum,
          .altSum = point.altSum,
          .positionWeight = point.positionWeight,
          .altitudeWeight = point.altitudeWeight};
}

/// The points of a map's bases. A map that got another basis, or whose basis was read again, can
/// remember others.
std::unordered_set<const Point*> PointsBelow(const Map& map) {
  std::unordered_set<const Point*> points;
  for (const Map* below = map.basis; below != nullptr; below = below->basis) {
    ForEachPoint(*below, [&](const Point& point) { points.insert(&point); });
  }
  return points;
}

bool AnyRemembered(const Workspace& workspace) {
  return std::any_of(workspace.maps.begin(), workspace.maps.end(),
                     [](const Map& map) { return !map.unplacedBelow.empty(); });
}

/// Leaves out what this map no longer rests on. Maps above forget the map's own points, and those of
/// its bases that have no place before this map is solved.
void ForgetWhatChanged(Map& map) {
  if (!AnyRemembered(*map.workspace)) return;
  const std::unordered_set<const Point*> below = PointsBelow(map);
  std::unordered_set<const Point*> own;
  ForEachPoint(map, [&](const Point& point) {
    if (point.map == &map) own.insert(&point);
  });
  std::erase_if(map.unplacedBelow,
                [&](const UnplacedBelow& each) { return !below.contains(each.point); });
  for (Map& above : map.workspace->maps) {
    if (&above == &map || !RestsOn(above, map)) continue;
    std::erase_if(above.unplacedBelow, [&](const UnplacedBelow& each) {
      return own.contains(each.point) || (below.contains(each.point) && !IsPlaced(*each.point));
    });
  }
}

}  // namespace

void NoteUnplacedBelow(Map& map) {
  ForgetWhatChanged(map);
  std::unordered_set<const Point*> known;
  for (const UnplacedBelow& each : map.unplacedBelow) known.insert(each.point);
  for (const Map* below = map.basis; below != nullptr; below = below->basis) {
    ForEachPoint(*below, [&](Point& point) {
      if (!IsPlaced(point) && known.insert(&point).second) {
        map.unplacedBelow.push_back(StateOf(point));
      }
    });
  }
}

void KeepGivenBelow(Map& map) {
  std::erase_if(map.unplacedBelow, [](const UnplacedBelow& each) {
    return !IsPlaced(*each.point) && StateOf(*each.point) == each;
  });
}

void RestoreUnplacedBelow(Map& map) {
  if (!AnyRemembered(*map.workspace)) return;
  const std::unordered_set<const Point*> below = PointsBelow(map);
  std::unordered_map<Point*, UnplacedBelow> first;
  for (const Map& other : map.workspace->maps) {
    if (!RestsOn(other, map)) continue;
    for (const UnplacedBelow& each : other.unplacedBelow) {
      if (!below.contains(each.point)) continue;
      const auto [place, isNew] = first.emplace(each.point, each);
      // Solves only add, so the lower weight is the earlier one.
      const UnplacedBelow& known = place->second;
      if (!isNew &&
          each.positionWeight + each.altitudeWeight < known.positionWeight + known.altitudeWeight) {
        place->second = each;
      }
    }
  }
  for (const auto& [point, then] : first) {
    point->flags &= ~std::uint32_t{PointPlaced};
    point->latSum = then.latSum;
    point->lonSum = then.lonSum;
    point->altSum = then.altSum;
    point->positionWeight = then.positionWeight;
    point->altitudeWeight = then.altitudeWeight;
  }
  map.unplacedBelow.clear();
}

}  // namespace orvane
