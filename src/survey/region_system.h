#pragma once

#include "survey/regions.h"

namespace orvane {

/// Least squares over the junctions of a region: each chain gives one equation, each fix one, each
/// altitude one, and all weigh the same. Every junction gets its place; its altitude stays
/// unknown if the region has no altitude.
/// \param region  at least two junctions, at least one of them with a position weight
void SolveRegionSystem(const Region& region);

}  // namespace orvane
