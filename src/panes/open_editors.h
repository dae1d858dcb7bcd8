#pragma once

#include "editing/cell_table.h"
#include "editing/edit_history.h"
#include "editing/range_editor.h"
#include "editing/save_trail.h"
#include "editing/trail_editor.h"
#include "view/map_window.h"

#include <string>
#include <vector>

namespace orvane {

class Messages;

/// The trail that the editor opens for a row of the trail pane: its own, or that of the only row
/// below a group.
/// \param row  null for none
/// \return null, after a message, if there is none
Trail* TrailToEdit(Messages& messages, const TrailPanelRow* row);
/// The same for the first selected row.
Trail* TrailToEdit(MapWindow& view);

/// The row whose range the editor opens.
/// \param row  null for none
/// \return the row; null, after a message, if there is none or it is an intersection
RangePanelRow* RangeToEdit(Messages& messages, RangePanelRow* row);
/// The same for the first selected row.
RangePanelRow* RangeToEdit(MapWindow& view);

/// The types that a new trail is offered: the groups of the trail pane but those of contours.
std::vector<std::string> OfferedTrailTypes(const MapWindow& view);

/// OK in the range editor of a view: the row of the range takes the editor's colour, and a new range
/// gets its row before it is analysed.
SaveOutcome SaveRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history);

/// The close box of an editor: with changes the user decides whether to save them.
/// \param cells  the table of the editor, whose open text is a change too and is committed before
///               saving; null without one
/// \return `Stays` if the user cancels, or saving is refused
SaveOutcome RequestCloseTrailEditor(TrailEditor& editor, EditHistory& history,
                                    CellTable* cells = nullptr);
SaveOutcome RequestCloseRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history,
                                    CellTable* cells = nullptr);

}  // namespace orvane
