#pragma once

#include "base/messages.h"
#include "model/map.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

namespace orvane {

/// Sorting the points of a trail by what their names say. Nothing does this by itself: a trail
/// keeps the order in which it was written down until somebody asks.

/// The key of the point named as the trail with "end" behind: it sorts last.
constexpr int EndPointKey = std::numeric_limits<int>::max();
/// The key of a point that cannot be fitted: it sorts just before the end point.
constexpr int UnfittedKey = EndPointKey - 1;

/// One entry of the table by which a trail is ordered.
struct TrailKey {
  Point* point = nullptr;
  int key = 0;
};

/// Sorts by the metre marks in the names. Does nothing if no point bears one; a point without one
/// is an error and goes to the back.
void OrderTrailByNumber(Trail& trail, Messages& messages);

/// Sorts by the time names; a point without one is an error and goes to the back.
void OrderTrailByTime(Trail& trail, Messages& messages);

/// Writes the points back to the trail by ascending key; among equal keys the old order stays.
/// Each point's `duration` becomes the next key less its own, cut to 16 bits with sign; the last
/// point keeps the duration that it has.
/// \param keys      one for each node of the trail; otherwise "OrderTrail: inconsistant lists" is
///                  posted as an internal error, and only as many nodes are written as both have
void OrderTrail(Trail& trail, std::vector<TrailKey> keys, Messages& messages);

/// Inserts a point before the first node with a greater number, else at the end. A node without
/// a number is passed over; the end point stands behind every number.
/// \param text  the name that holds the number of the new point
/// \return the index of the new node; nothing, with nothing inserted, if `text` has no number
std::optional<size_t> InsertPointByNumber(Trail& trail, Point& point, std::string_view text);

}  // namespace orvane
