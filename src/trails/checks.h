#pragma once

#include "base/messages.h"
#include "model/map.h"

namespace orvane {

/// Checks the order of a trail's points against their names. All findings are warnings, and no
/// trail is changed. Points whose name begins with "_" or "@" are ignored. Numbers may rise or fall
/// along a trail; its first step decides which.

/// Warns of points that are on the trail twice (at most four warnings), then checks the order: of a
/// named trail with `CheckTrailNumbers`, or else `CheckTrailValues`, of a nameless one with
/// `CheckTrailTimes`.
/// \param showAll  does not limit the warnings about the order
/// \return false if no check of the order applied
bool CheckTrail(const Trail& trail, bool showAll, Messages& messages);

/// By the metre marks in the names (`TrailNumberText`). Each of these three checks warns of values
/// that occur twice in a row or run against the direction, and of points without a value. After 5
/// warnings it ends with "Too many warnings for trail %s", unless `showAll` is set.
/// \return false, without a warning, if no point of the trail has such a number
bool CheckTrailNumbers(const Trail& trail, bool showAll, Messages& messages);
/// By the synonyms that are numbers (`PointNumericSynonym`).
bool CheckTrailValues(const Trail& trail, bool showAll, Messages& messages);
/// By the time names.
bool CheckTrailTimes(const Trail& trail, bool showAll, Messages& messages);

/// Checks every trail of the map and then of its basis chain, with limited warnings.
void CheckAllTrails(const Map& map, Messages& messages);

}  // namespace orvane
