#pragma once

#include "survey/regions.h"

namespace orvane {

/// Solves the junctions of a region by least squares: each chain, fix and altitude gives one
/// equation, all with the same weight. Every junction gets a place; altitudes stay unknown if the
/// region has none.
/// \param region  has at least two junctions, and at least one with a position weight
void SolveRegionSystem(const Region& region);

}  // namespace orvane
