#include "model/listed_points.h"

#include <unordered_set>

namespace orvane {

std::vector<const Point*> ListedPoints(const Map& map) {
  std::unordered_set<const Point*> listed;
  listed.reserve(map.pointStore.size());
  ForEachPoint(map, [&listed](const Point& point) { listed.insert(&point); });
  for (const PointList& bucket : map.pointHash) listed.insert(bucket.begin(), bucket.end());
  std::vector<const Point*> points;
  points.reserve(listed.size());
  for (const Point& point : map.pointStore) {
    if (listed.contains(&point)) points.push_back(&point);
  }
  return points;
}

}  // namespace orvane
