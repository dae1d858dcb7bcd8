#pragma once

#include "model/map.h"

#include <string>
#include <vector>

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

/// The same for a map that stays open: only the search for clusters can be cancelled, which takes nearly
/// all of the time. Ranges that were not reached then have all but clusters, and a warning counts them.
void AnalyzeAllRangesOfOpenMap(Map& map);

/// One range of the map and its overlaps with the others.
void AnalyzeOneRange(Range& range, Map& map);

/// An overlap by its two ranges. Which one comes first, and which name the overlap has, depends on
/// the edits that led to it.
struct OverlapPair {
  Range* a = nullptr;
  Range* b = nullptr;
  std::string name;

  friend bool operator==(const OverlapPair&, const OverlapPair&) = default;
};

/// The overlaps of a map in list order.
std::vector<OverlapPair> OverlapsOf(const Map& map);

/// Repeats the analysis of some ranges of the map, with the result that it had then: their
/// `minutesGiven` count as without a duration again. Then the map has the given overlaps, in that
/// order; those that concern none of the ranges keep their records. Can't be cancelled.
void RepeatAnalysis(Map& map, const std::vector<Range*>& ranges,
                    const std::vector<OverlapPair>& overlaps);

}  // namespace orvane
