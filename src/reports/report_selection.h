#pragma once

#include <set>

namespace orvane {

/// Which lines of a report are selected. Lines count from 0; -1 is none.
struct ReportSelection {
  std::set<int> lines;
  int current = -1;  ///< where the keyboard is
  int anchor = -1;   ///< where a selection of several lines begins
};

/// How a click or a key changes the selection.
enum class SelectionMode {
  Only,    ///< selects just the line
  Toggle,  ///< selects the line too, or no longer
  Extend,  ///< selects the lines from the anchor to this one, and no others
  Move,    ///< makes the line the current one and changes nothing else
};

/// Applies a click on a line, or a key that leads to it. The line becomes the current one and,
/// except when extending, the anchor.
/// \param line  -1 for a click beside the lines: `Only` then clears the selection, the others
///              change nothing
void SelectLine(ReportSelection& selection, int line, SelectionMode mode);

/// Selects all lines. The current one stays.
void SelectAllLines(ReportSelection& selection, int lineCount);

/// Forgets the lines from `lineCount` on.
void HoldSelection(ReportSelection& selection, int lineCount);

/// \return the line to go to by a key from the current one
/// \param from       where to begin if no line is current
/// \param step       how many lines, negative for back
/// \param lineCount  at least 1
int SteppedLine(const ReportSelection& selection, int from, int step, int lineCount);

}  // namespace orvane
