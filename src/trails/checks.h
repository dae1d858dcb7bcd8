#pragma once

#include "base/messages.h"
#include "model/map.h"

#include <span>

namespace orvane {

/// Checks of what the names of a trail's points say against their order. All findings are
/// warnings, and no trail is ever changed. A point whose name begins with "_" or "@" takes no
/// part. Numbers may rise or fall along a trail; its first step tells which.

/// Warns of points that stand on the trail twice (four times at most), then checks the order: of
/// a named trail by `CheckTrailNumbers` or else `CheckTrailValues`, of a nameless one by
/// `CheckTrailTimes`.
/// \param showAll  no limit of warnings in the check of the order
/// \return false if no check of the order applied
bool CheckTrail(const Trail& trail, bool showAll, Messages& messages);

/// By the metre marks in the names (`TrailNumberText`). Each of these three warns of values that
/// occur twice in a row or against the direction, and of points that bear none; after 5 warnings
/// it ends with "Too many warnings for trail %s", unless all are to be shown.
/// \return false, with no warning, if no point of the trail bears such a number
bool CheckTrailNumbers(const Trail& trail, bool showAll, Messages& messages);
/// By the synonyms that are numbers (`PointNumericSynonym`).
bool CheckTrailValues(const Trail& trail, bool showAll, Messages& messages);
/// By the time names.
bool CheckTrailTimes(const Trail& trail, bool showAll, Messages& messages);

/// Checks every trail of the map and then of its basis chain, with limited warnings.
void CheckAllTrails(const Map& map, Messages& messages);

/// Checks the trails of a selection, with unlimited warnings if it is a single one.
void CheckSelectedTrails(std::span<const Trail* const> trails, Messages& messages);

}  // namespace orvane
