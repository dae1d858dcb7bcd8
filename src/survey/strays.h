#pragma once

#include "model/map.h"

namespace orvane {

/// Places what the regions left: points near a named place, points at which bearings from known
/// points cross, and points tied to another by a shot of distance 0. A new place may help another
/// stray, so passes repeat as long as one places a point; each point that remains gets a warning
/// and stays without a place.
void SolveStrayPoints(Map& map);

}  // namespace orvane
