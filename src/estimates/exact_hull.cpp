#include "estimates/exact_hull.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// Twice the area of the triangle; positive if the turn at `b` is to the left.
double Turn(const PlanePlace& a, const PlanePlace& b, const PlanePlace& c) {
  return (b.north - a.north) * (c.east - a.east) - (b.east - a.east) * (c.north - a.north);
}

/// Appends a place to the half of the hull that begins at `from`, and removes what it makes inner.
void ExtendHalf(std::vector<PlanePlace>& hull, size_t from, const PlanePlace& place) {
  while (hull.size() >= from + 2 && Turn(hull[hull.size() - 2], hull.back(), place) <= 0) {
    hull.pop_back();
  }
  hull.push_back(place);
}

}  // namespace

void ReduceToHull(std::vector<PlanePlace>& places) {
  std::sort(places.begin(), places.end(), [](const PlanePlace& a, const PlanePlace& b) {
    return a.north != b.north ? a.north < b.north : a.east < b.east;
  });
  places.erase(std::unique(places.begin(), places.end()), places.end());
  if (places.size() < 3) return;
  std::vector<PlanePlace> hull;
  for (const PlanePlace& place : places) ExtendHalf(hull, 0, place);
  const size_t farEnd = hull.size() - 1;
  for (auto place = places.rbegin() + 1; place != places.rend(); ++place) {
    ExtendHalf(hull, farEnd, *place);
  }
  hull.pop_back();  // the first corner again
  places = std::move(hull);
}

double HullArea(std::span<const PlanePlace> corners) {
  constexpr double WidthOfLine = 1e-8;  // metres; coordinates are exact to a nanometre
  if (corners.size() < 3) return 0;
  double twiceArea = 0;
  double length = 0;
  const PlanePlace* before = &corners.back();
  for (const PlanePlace& corner : corners) {
    twiceArea += Turn(corners.front(), *before, corner);
    length += std::hypot(corner.north - before->north, corner.east - before->east);
    before = &corner;
  }
  const double area = std::abs(twiceArea) / 2;
  return area <= WidthOfLine * length / 2 ? 0 : area;
}

}  // namespace orvane
