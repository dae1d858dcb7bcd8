#pragma once

#include "editing/edit_history.h"
#include "view/map_window.h"

#include <forward_list>

namespace orvane {

/// The search keys of a selection of trails. A selected group gives one key with its type, a
/// selected trail one with its type, focal animal and date; rows below a selected group give none.
/// \return in the reverse order of the pane
std::forward_list<SearchKey> KeysFromSelection(const std::list<TrailPanelRow>& rows);

/// Drops the selected trails on a row of the range pane: a range gets their keys in front of its
/// own, "New" makes a range of them, named after its first key. An intersection, or an empty
/// selection, changes nothing.
/// \return true if a range was changed or made
bool DropSelection(MapWindow& view, const RangePanelRow& row, EditHistory& history);

}  // namespace orvane
