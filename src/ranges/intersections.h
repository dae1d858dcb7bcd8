#pragma once

#include "base/messages.h"
#include "geometry/poly.h"
#include "model/map.h"

#include <forward_list>

namespace orvane {

/// How two ranges share ground.

/// The margin of "just beyond" and "just within", in cells of the grid: about a cell's diagonal.
constexpr double MarginInCells = 1.4;

/// True if two boxes overlap; touching counts.
bool BoundsOverlap(const GeoBounds& a, const GeoBounds& b);

/// The overlap of the hulls of two ranges. Leaves the hulls of both in absolute form.
/// \param scratch  receives the crossings that are part of it
/// \return empty if they do not meet or one has no hull
Poly IntersectHulls(Range& a, Range& b, ScratchPoints& scratch, Messages& messages);

/// Puts the record of the overlap of two ranges in front of `list`, with the time that each spent
/// in it, if they overlap.
void IntersectRanges(Range& a, Range& b, std::forward_list<RangeIntersection>& list,
                     Messages& messages);

/// The overlaps of a filled trail of at least three points with the ranges of the map, put in
/// front of `list`.
void IntersectTrailWithRanges(Map& map, Trail& trail, std::forward_list<TrailRangeOverlap>& list);

}  // namespace orvane
