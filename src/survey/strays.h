#pragma once

#include "model/map.h"

namespace orvane {

/// Places what the regions left behind: points near a named place, points at which bearings from
/// known points cross, and points tied to another by a shot of distance 0. A place found for one
/// may serve the next, so passes go over the strays as long as one gains a place; what is left
/// then gets a warning each and stays without a place.
void SolveStrayPoints(Map& map);

}  // namespace orvane
