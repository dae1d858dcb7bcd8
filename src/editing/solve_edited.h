#pragma once

#include "editing/map_delta.h"
#include "model/map.h"

#include <vector>

namespace orvane {

/// Sets what the solver has gathered at the points of a map back to nothing: their sums, weights and
/// rays. The next solve then counts each reading once, as after opening the saved file; without
/// this a corrected fix would move its point only part of the way.
void ForgetGatheredReadings(Map& map);

/// Solves a map from cleared positions, whether it needs it or not, then each open map that rests on
/// it, nearest first; then brings the ranges of all of these up to date in the same order.
/// \return the maps that were solved
std::vector<Map*> SolveEdited(Map& map);

/// Brings up to date what follows from the records, after these were exchanged for those of another
/// state together with the positions: the solver's sums start from nothing, and ranges are analysed
/// in each map that is touched or rests on one that is.
void RefreshAfterSwap(const MapDelta& delta);

}  // namespace orvane
