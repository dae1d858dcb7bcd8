#pragma once

#include "editing/edit_history.h"
#include "view/map_window.h"

namespace orvane {

/// The trails of the selected rows and of all rows below them. Contours are not among them: they
/// are not part of a map's file.
std::vector<Trail*> SelectedTrails(MapWindow& view);

/// The command "Delete Trail". Asks once for each basis map that holds a selected trail; Cancel
/// deletes nothing.
void DeleteSelectedTrails(MapWindow& view, EditHistory& history);

/// The command "Delete Range". If only overlaps are selected it shows a message: they are deleted
/// with their ranges.
void DeleteSelectedRanges(MapWindow& view, EditHistory& history);

}  // namespace orvane
