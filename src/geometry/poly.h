#pragma once

#include "geo/positions.h"
#include "model/records.h"

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

}  // namespace orvane
