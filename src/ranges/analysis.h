#pragma once

#include "model/map.h"

namespace orvane {

/// The analysis of home ranges. It overwrites the `projected` fields of the points and gives stops
/// without a duration one minute, so nothing else may read them meanwhile.

/// Computes everything that follows from the keys of one range of the map.
void AnalyzeRange(Range& range, Map& map);

/// Clears the analysis fields of a range; the offset hulls stay.
void ClearRangeAnalysis(Range& range);

/// All ranges of the map in list order, then the overlap of each pair. If it is cancelled
/// (`Workspace::progress`), some ranges have their analysis and others do not.
void AnalyzeAllRanges(Map& map);

/// One range of the map and its overlaps with the others.
void AnalyzeOneRange(Range& range, Map& map);

}  // namespace orvane
