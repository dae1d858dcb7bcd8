#pragma once

#include "model/map.h"

namespace orvane {

/// Positions that do not need the solver.

/// Sets the point's projected north and east from its latitude and longitude; no altitude.
void ProjectPoint(Point& point);

/// Places a point from its GPS fixes and altitudes if it has no other readings. Fixes are averaged
/// with equal weight, whatever their counts; see docs/compatibility.md.
/// \return true if the point is placed now
bool QuickPosition(Point& point);

/// Places points with `QuickPosition`, up to the first that fails.
/// \return true if the map must be solved
bool NeedsSolving(Map& map);

/// Prepares the map for solving: clears `PointPlaced` of its own points in its lists, and
/// `TrailMeasured` of its trails. Points of its basis keep their places. So does a point that has
/// no reading and is not the base of a reading of a listed point: its place came from an `L` line,
/// and no solve could find it again.
void ClearOwnPositions(Map& map);

}  // namespace orvane
