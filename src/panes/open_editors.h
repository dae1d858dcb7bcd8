#pragma once

#include "editing/edit_history.h"
#include "editing/range_editor.h"
#include "editing/save_trail.h"
#include "editing/trail_editor.h"
#include "view/map_window.h"

namespace orvane {

/// The trail that the editor opens for the selection of the trail pane: that of the first selected
/// row, or of the only row below a group.
/// \return null, after a message, if there is none
Trail* TrailToEdit(MapWindow& view);

/// The row whose range the editor opens: the first selected one.
/// \return null, after a message, if there is none or it is an intersection
RangePanelRow* RangeToEdit(MapWindow& view);

/// OK in the range editor of a view: the row of the range takes the editor's colour, and a new range
/// gets its row before it is analysed.
SaveOutcome SaveRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history);

/// The close box of an editor: with changes the user decides whether to save them.
/// \return `Stays` if the user cancels, or saving is refused
SaveOutcome RequestCloseTrailEditor(TrailEditor& editor, EditHistory& history);
SaveOutcome RequestCloseRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history);

}  // namespace orvane
