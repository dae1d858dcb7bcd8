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

/// Takes the placed mark off every point of the map's lists that this map made, and the mark of what
/// was measured on those places off its trails; points of its basis keep their places.
void ClearOwnPositions(Map& map);

}  // namespace orvane
