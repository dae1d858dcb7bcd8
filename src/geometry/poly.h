#pragma once

#include "geo/positions.h"
#include "model/records.h"

#include <deque>
#include <span>
#include <vector>

namespace orvane {

/// A list of points that an operation only walks over: a vector, or the rest of one behind a
/// link (`PointSpan(points).subspan(first)`). The points themselves may be written to.
using PointSpan = std::span<Point* const>;

/// A ring of vertices, unclosed, read in the plane of their `projected` fields. It owns no point.
/// A closed trail that is used as a ring may repeat its first point as its last. An empty ring
/// stands for "none".
using Poly = std::vector<Point*>;

/// Owns the vertices that an operation had to invent: crossings of two rings, and corners pushed
/// off a hull. Whoever keeps such a ring keeps the `ScratchPoints` beside it for as long; the
/// addresses stay good until it goes, and nothing else has to be freed.
struct ScratchPoints {
  std::deque<Point> store;

  /// Makes a nameless point of no map, flagged `PointScratch`.
  /// \param place  its coordinates in the plane of the moment; `geo` is left at 0
  Point& Make(const Meters& place) {
    Point& point = store.emplace_back();
    point.flags = PointScratch;
    point.projected = place;
    return point;
  }
};

}  // namespace orvane
