#pragma once

#include "geo/positions.h"
#include "model/records.h"

#include <span>
#include <vector>

namespace orvane {

/// A list of points to walk over: a vector, or the end of one from a link on
/// (`PointSpan(points).subspan(first)`). The points themselves may be changed.
using PointSpan = std::span<Point* const>;

/// A ring of vertices, unclosed, in the plane of their `projected` fields. It owns no point. A
/// closed trail used as a ring may repeat its first point as its last. An empty ring means "none".
using Poly = std::vector<Point*>;

}  // namespace orvane
