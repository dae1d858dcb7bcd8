#pragma once

#include "model/map.h"

namespace orvane {

/// The analysis of home ranges. It overwrites the `projected` fields of the points it looks at and
/// gives stops without a duration one minute; so nothing else may look at them meanwhile.

/// Works out everything that follows from the keys of one range of the map.
void AnalyzeRange(Range& range, Map& map);

/// Empties the analysis fields of a range; the offset hulls stay.
void ClearRangeAnalysis(Range& range);

/// All ranges of the map in list order, then the overlap of each pair. Where that is called off
/// (`Workspace::progress`), some ranges have their analysis and others not.
void AnalyzeAllRanges(Map& map);

/// One range of the map and its overlaps with the others.
void AnalyzeOneRange(Range& range, Map& map);

}  // namespace orvane
