#pragma once

#include "editing/edit_history.h"
#include "view/map_window.h"

namespace orvane {

/// Brings the rows of a view up to date after an edit, undo or redo: rows of trails and ranges come
/// and go with their records, a renamed one moves to its place, and intersections that were computed
/// again get new rows. Other rows keep what was open, selected, visible and coloured.
/// \return true if the edit can have changed what the view shows
bool FollowEdit(MapWindow& view, const EditNews& news);

/// Makes rows for trails and ranges that have none and drops the rows of those that are gone,
/// together with groups that are then empty.
void MatchRowsToMap(MapWindow& view);

}  // namespace orvane
