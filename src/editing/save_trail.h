#pragma once

#include "editing/trail_editor.h"

namespace orvane {

class EditHistory;

/// What an editor does after OK.
enum class SaveOutcome { Stays, Closes };

/// OK in the trail editor: checks the form, asks what has to be asked, and hands the trail to the
/// history as one edit, after which the map is solved. Without a change it does nothing.
///
/// A trail of a basis is changed there. Readings are rebuilt from the rows, so those of a point
/// come back in reverse order. Points that no row names any more are deleted from the map, unless
/// something else needs them.
/// \return `Stays` after a message, or where the user cancels: editor and map are as they were
SaveOutcome SaveTrailEditor(TrailEditor& editor, EditHistory& history);

}  // namespace orvane
