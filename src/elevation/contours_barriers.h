#pragma once

#include "model/map.h"

#include <cstddef>
#include <vector>

namespace orvane {

/// Points along a trail and beside it that bend the surface: a trail of the type River lies in a
/// valley between banks well above it, one of the type ridge on a crest a little above its sides.

/// The most points that the trails of one map may add.
constexpr size_t MostBarrierPoints = 500000;

/// Adds the samples and banks of each trail of `map.trails` whose type is River or ridge, in any
/// case of letters, in front of `points`, the one made last foremost. The altitudes between the
/// points of a trail that have one are interpolated along its length in degrees; a stretch shorter
/// than `step` adds nothing.
/// \param step   the spacing of the grid in degrees, above 0
/// \param store  keeps the new points; `points` is good as long as it exists
/// \return false, with `points` left as it was, if there would be more than `MostBarrierPoints`
bool AddBarrierPoints(const Map& map, std::vector<Point*>& points, double step,
                      ScratchPoints& store);

}  // namespace orvane
