#pragma once

#include "view/map_window.h"

#include <string_view>

namespace orvane {

/// What Find came to.
enum class FindOutcome {
  Nothing,  ///< the text means nothing; a message has said so
  Range,    ///< the view shows the range
  Trail,    ///< the view shows the trail, which is marked
  Place,    ///< the view is centred on the place, which is marked
};

/// Looks a text up (`ResolveLocation`) and moves the view there: to the bounds of a range or of a
/// trail, or centred on a place. A trail is marked by `selectedTrail` and `MapWindowTrailFlash`, a
/// place by `highlight` and `MapWindowFindMarker`; the caller takes the mark away with
/// `EndFindMark` after `FindMarkMilliseconds`. A mark of an earlier find goes at once.
///
/// At a named point that vanishes beyond a scale the view zooms out to that figure if it has more
/// pixels to the metre than the figure has metres to the pixel: the two numbers are compared
/// directly (see "Find compares a label limit" in docs/compatibility.md).
FindOutcome FindInMap(MapWindow& view, std::string_view text);

/// How long a mark stays.
constexpr int FindMarkMilliseconds = 1000;

/// Takes away what Find has marked.
void EndFindMark(MapWindow& view);

}  // namespace orvane
