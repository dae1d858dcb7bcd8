#pragma once

#include "base/number_text.h"
#include "geo/earth.h"
#include "geometry/poly.h"
#include "support/dice.h"

#include <cmath>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::test {

/// Owns the points of one test.
struct PointBag {
  std::deque<Point> store;

  /// A point at metres north and east of latitude 0, longitude 0.
  Point* At(double north, double east) {
    Point& point = store.emplace_back();
    point.projected = {north, east};
    point.geo = MetersToLatLon(north, east);
    return &point;
  }

  /// A point at degrees; its plane is the absolute one.
  Point* AtDegrees(double lat, double lon) {
    Point& point = store.emplace_back();
    point.geo = {lat, lon};
    point.projected = LatLonToMeters(lat, lon);
    return &point;
  }

  /// "north:east north:east ..." in metres.
  Poly Ring(std::string_view text) {
    Poly ring;
    while (!text.empty()) {
      const RealPrefix north = ReadReal(text);
      text.remove_prefix(north.length + 1);
      const RealPrefix east = ReadReal(text);
      text.remove_prefix(east.length);
      ring.push_back(At(north.value, east.value));
    }
    return ring;
  }
};

/// The reverse of `PointBag::Ring`, to a tenth of a metre or better.
inline std::string TextOf(PointSpan ring) {
  std::string text;
  for (const Point* point : ring) {
    if (!text.empty()) text += ' ';
    // Adding 0 makes a negative zero a plain one.
    text += FormatGeneral(std::round(point->projected.north * 1e6) / 1e6 + 0.0) + ":" +
            FormatGeneral(std::round(point->projected.east * 1e6) / 1e6 + 0.0);
  }
  return text;
}

/// The corners of a polygon in a plane, for the independent calculations that tests compare with.
using Corners = std::vector<Meters>;

inline Corners CornersOf(PointSpan ring) {
  Corners corners;
  for (const Point* point : ring) corners.push_back(point->projected);
  return corners;
}

/// Twice the signed area of three places; positive if `c` lies left of the way from `a` to `b`,
/// with east to the right and north up.
inline double Turn(const Meters& a, const Meters& b, const Meters& c) {
  return (b.east - a.east) * (c.north - a.north) - (b.north - a.north) * (c.east - a.east);
}

/// Area by triangles from the first corner.
inline double AreaOf(const Corners& corners) {
  double twice = 0;
  for (size_t i = 2; i < corners.size(); ++i) {
    twice += Turn(corners[0], corners[i - 1], corners[i]);
  }
  return std::fabs(twice) / 2;
}

inline double PerimeterOf(const Corners& corners) {
  double sum = 0;
  for (size_t i = 0; i < corners.size(); ++i) {
    const Meters& next = corners[(i + 1) % corners.size()];
    sum += std::hypot(next.north - corners[i].north, next.east - corners[i].east);
  }
  return sum;
}

/// The convex hull by sorting (the monotone chain), counterclockwise.
Corners SortedHull(Corners places);

/// What two convex counterclockwise rings have in common, by clipping with one edge after another.
Corners ClipConvex(Corners subject, const Corners& clip);

}  // namespace orvane::test
