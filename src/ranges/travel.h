#pragma once

#include "model/records.h"

namespace orvane {

/// How far the animals of a range travel at each time of day, as means over the follows that cover
/// each slot of five minutes. The plan distance between two stops is spread evenly over the slots
/// from the last slot of the first to the start of the second; the measures of a stop are spread
/// over its own slots.
///
/// Fills `totalMinutes`, `slots`, `hours` and `meanDailyPath`. The points of the follows must be in
/// one plane, in metres. Slots beyond the day are left out.
void ComputeTravel(Range& range);

/// The mean plan length of the follows, cut to metres; a follow of fewer than two points counts as
/// 0. Leaves the points of each follow in a plane of its own.
void RangePathLength(Range& range);

}  // namespace orvane
