#pragma once

#include "editing/edit_history.h"
#include "model/map.h"

#include <cstddef>
#include <vector>

namespace orvane {

/// Deletes trails as one edit, after which their maps are solved. The points that no other trail
/// holds are deleted too, unless something else needs them, as when an editor is saved. A note says
/// how much was deleted.
/// \param trails  of `map` and of maps in its basis chain
void DeleteTrails(Map& map, const std::vector<Trail*>& trails, EditHistory& history);

/// Deletes ranges of a map, and their overlaps, as one edit. A note says how many.
void DeleteRanges(Map& map, const std::vector<Range*>& ranges, EditHistory& history);

}  // namespace orvane
