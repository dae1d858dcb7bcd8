#pragma once

#include "base/messages.h"
#include "model/map.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

namespace orvane {

/// Sorts the points of a trail by their names. Nothing calls this by itself: a trail keeps the
/// order in which it was written down.

/// The key of the point named as the trail followed by "end": it sorts last.
constexpr int EndPointKey = std::numeric_limits<int>::max();
/// The key of a point that does not fit: it sorts just before the end point.
constexpr int UnfittedKey = EndPointKey - 1;

/// One entry of the table by which a trail is ordered.
struct TrailKey {
  Point* point = nullptr;
  int key = 0;
};

/// Sorts by the metre marks in the names. Does nothing if no point has one; a point without one is
/// an error and moves to the end.
void OrderTrailByNumber(Trail& trail, Messages& messages);

/// Sorts by the time names; a point without one is an error and moves to the end.
void OrderTrailByTime(Trail& trail, Messages& messages);

/// Writes the points back to the trail by ascending key; equal keys keep their order. Each point's
/// `duration` becomes the next key minus its own, cut to 16 bits with sign; the last point keeps
/// its duration.
/// \param keys      one for each node of the trail; otherwise posts the internal error "OrderTrail:
///                  inconsistant lists" and writes only as many nodes as both have
void OrderTrail(Trail& trail, std::vector<TrailKey> keys, Messages& messages);

/// Inserts a point before the first node with a greater number, or at the end. Nodes without a
/// number are skipped; the end point comes after every number.
/// \param text  the name that holds the number of the new point
/// \return the index of the new node; nothing, with nothing inserted, if `text` has no number
std::optional<size_t> InsertPointByNumber(Trail& trail, Point& point, std::string_view text);

}  // namespace orvane
