#pragma once

#include "geo/positions.h"
#include "model/map.h"

namespace orvane {

/// What all imports of fixes do to a map.

/// Adds a reading as the map file reader does: the altitude is that of the reading. If its position
/// had one too, the solver would count it twice.
/// \param altitude  metres, or `NoAltitude`
void AddFix(Point& point, const LatLon& place, float altitude);

/// Follows each change of the map. Placed points keep their place: a fix by itself moves no survey,
/// so the map is solved only if `FinishMap` finds that it must be. Marks the map as changed. Can't
/// be cancelled.
void FinishImport(Map& map);

}  // namespace orvane
