#include "ranges/clusters_locations.h"

#include "geometry/planes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace orvane {
namespace {

/// The bounds are cut into this many rows and columns. The cells only serve the order of pairs.
constexpr int CellsAlongSide = 16;

/// An extent that points on one line can get by rounding.
constexpr double LeastExtent = 1e-6;
/// No two places on earth are so far apart. Below it every distance is far below `BeyondAllEdges`,
/// which the end of the method needs.
constexpr double LargestExtent = 1e16;

struct Side {
  double low = 0;
  double high = 0;

  void Widen(double value) {
    if (value < low) low = value;
    if (value > high) high = value;
  }
  bool IsUsable() const { return high - low >= LeastExtent && high - low <= LargestExtent; }
  int Cell(double value) const {
    const double size = (high - low) / CellsAlongSide;
    return std::clamp(static_cast<int>((value - low) / size), 0, CellsAlongSide - 1);
  }
};

/// Indexes of the points in groups of equal place; within a group they keep the order of the list.
std::vector<size_t> SortedByPlace(PointSpan points) {
  std::vector<size_t> order(points.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::sort(order.begin(), order.end(), [&](size_t x, size_t y) {
    const Meters& a = points[x]->projected;
    const Meters& b = points[y]->projected;
    if (a.north != b.north) return a.north < b.north;
    if (a.east != b.east) return a.east < b.east;
    return x < y;
  });
  return order;
}

struct Found {
  size_t first = 0;  ///< number in the list
  ClusterPoint location;
};

}  // namespace

std::optional<ClusterLocations> FindLocations(PointSpan points) {
  if (points.empty()) return std::nullopt;
  const LatLon mean = MeanPlace(points);
  ProjectPoints(points, mean.lon, mean.lat);
  const Meters& start = points.front()->projected;
  Side north = {start.north, start.north};
  Side east = {start.east, start.east};
  for (const Point* point : points) {
    const Meters& place = point->projected;
    if (!std::isfinite(place.north) || !std::isfinite(place.east)) return std::nullopt;
    north.Widen(place.north);
    east.Widen(place.east);
  }
  if (!north.IsUsable() || !east.IsUsable()) return std::nullopt;

  std::vector<Found> found;
  for (const size_t number : SortedByPlace(points)) {
    const Meters& place = points[number]->projected;
    if (!found.empty()) {
      ClusterPoint& last = found.back().location;
      if (last.north == place.north && last.east == place.east) {
        ++last.count;
        continue;
      }
    }
    Found& next = found.emplace_back();
    next.first = number;
    next.location.north = place.north;
    next.location.east = place.east;
    next.location.point = points[number];
    next.location.cell = north.Cell(place.north) * CellsAlongSide + east.Cell(place.east);
  }
  std::sort(found.begin(), found.end(), [](const Found& x, const Found& y) {
    return x.location.cell != y.location.cell ? x.location.cell < y.location.cell
                                              : x.first > y.first;
  });
  ClusterLocations locations;
  locations.reserve(found.size());
  for (const Found& each : found) locations.push_back(each.location);
  return locations;
}

bool Precedes(const ClusterLocations& locations, const ClusterEdge& x, const ClusterEdge& y) {
  if (x.length != y.length) return x.length < y.length;
  if (x.a == y.a && x.b == y.b) return false;
  const ClusterPoint& xa = locations[static_cast<size_t>(x.a)];
  const ClusterPoint& ya = locations[static_cast<size_t>(y.a)];
  if (x.length == 0 && xa.count != ya.count) return xa.count > ya.count;
  if (xa.cell != ya.cell) return xa.cell < ya.cell;
  const ClusterPoint& xb = locations[static_cast<size_t>(x.b)];
  const ClusterPoint& yb = locations[static_cast<size_t>(y.b)];
  if (xb.cell != yb.cell) return xb.cell < yb.cell;
  return x.a != y.a ? x.a < y.a : x.b < y.b;
}

}  // namespace orvane
