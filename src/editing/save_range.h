#pragma once

#include "editing/range_editor.h"
#include "editing/save_trail.h"

#include <functional>

namespace orvane {

/// OK in the range editor: checks name and colour and hands the range to the history as one edit.
/// Changed keys are analysed again; a changed name or colour leaves the results as they are.
/// \param show  called inside the edit with the range, when it has its name and keys: gives its row
///              the colour, or makes the row. Rows are in windows, which this does not know.
/// \return `Stays` after a message, or where the user cancels
SaveOutcome SaveRangeEditor(RangeEditor& editor, EditHistory& history,
                            const std::function<void(Range& range, Color color)>& show);

}  // namespace orvane
