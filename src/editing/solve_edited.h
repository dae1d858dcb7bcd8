#pragma once

#include "editing/map_delta.h"
#include "model/map.h"

#include <vector>

namespace orvane {

/// Sets what the solver has gathered at the points of a map back to nothing: their sums, weights
/// and rays. The next solve then counts each reading once, as after opening the saved file; without
/// this a corrected fix would move its point only part of the way.
void ForgetGatheredReadings(Map& map);

/// Solves a map from cleared positions, without condition, then each open map that has it in its
/// basis chain, nearest first; then updates the ranges of all of these in the same order.
/// \return the maps that were solved
std::vector<Map*> SolveEdited(Map& map);

/// Updates what follows from the records after they and the positions were exchanged for those of
/// another state: the solver's sums start from zero, and ranges are analysed in each map that is
/// touched or has a touched map in its basis chain. Each range and overlap gets the figures that it
/// had in that state, and the overlaps their order. Ranges that the delta can't
/// concern stay as they are.
void RefreshAfterSwap(const MapDelta& delta, Workspace& workspace);

/// \return true if `RefreshAfterSwap` makes the overlaps of a map again
bool IsAnalyzedAfterSwap(const MapDelta& delta, const Map& map);

}  // namespace orvane
