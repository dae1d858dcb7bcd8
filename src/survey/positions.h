#pragma once

#include "model/map.h"

namespace orvane {

/// Positions that need no solver.

/// Sets the point's projected north and east from its latitude and longitude; no altitude.
void ProjectPoint(Point& point);

/// Places a point from its own GPS fixes and altitudes, if these are all the readings that it has.
/// Fixes are averaged with equal weight, whatever their counts.
/// \return true if the point is placed now or was before
bool QuickPosition(Point& point);

/// Places what it can by `QuickPosition`, up to the first point for which that fails.
/// \return true if the map must be solved
bool NeedsSolving(Map& map);

/// Prepares the map for solving: clears `PointPlaced` of the points in its lists that it made, and
/// `TrailMeasured` of its trails. Points of its basis keep their places. So does a point without a
/// reading that is not the base of a reading of a listed point: only an `L` line gave it its place,
/// and no solve could find it again.
void ClearOwnPositions(Map& map);

}  // namespace orvane
