#pragma once

#include "base/messages.h"
#include "geometry/poly.h"
#include "model/map.h"

#include <cstddef>
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
/// \return true if there is a new record
bool IntersectRanges(Range& a, Range& b, std::forward_list<RangeIntersection>& list,
                     Messages& messages);

/// The approximate memory, in bytes, of the overlaps of one map.
constexpr size_t MostOverlapBytes = size_t{1} << 30;

/// Adds overlaps to a map. When they reach a bound of memory, one error reports it and further
/// overlaps are left out.
class OverlapMaker {
 public:
  /// \param map   its present overlaps count too
  /// \param most  the bound in bytes
  explicit OverlapMaker(Map& map, size_t most = MostOverlapBytes);

  /// As `IntersectRanges`, in front of the map's list. Adds nothing after the bound was reached.
  void Intersect(Range& a, Range& b);

 private:
  void Count(const RangeIntersection& record);

  Map& map_;
  size_t left_;
  bool full_ = false;
};

/// The overlaps of a filled trail of at least three points with the ranges of the map, put in
/// front of `list`.
void IntersectTrailWithRanges(Map& map, Trail& trail, std::forward_list<TrailRangeOverlap>& list);

}  // namespace orvane
