#include "reports/report_selection.h"

#include <algorithm>

namespace orvane {

void SelectLine(ReportSelection& selection, int line, SelectionMode mode) {
  if (line < 0) {
    if (mode == SelectionMode::Only) selection = {};
    return;
  }
  switch (mode) {
    case SelectionMode::Only:
      selection.lines = {line};
      break;
    case SelectionMode::Toggle:
      if (selection.lines.erase(line) == 0) selection.lines.insert(line);
      break;
    case SelectionMode::Extend: {
      if (selection.anchor < 0) selection.anchor = line;
      const auto [first, last] = std::minmax(selection.anchor, line);
      selection.lines.clear();
      for (int each = first; each <= last; ++each) selection.lines.insert(each);
      break;
    }
    case SelectionMode::Move:
      break;
  }
  selection.current = line;
  if (mode != SelectionMode::Extend) selection.anchor = line;
}

void SelectAllLines(ReportSelection& selection, int lineCount) {
  selection.lines.clear();
  for (int line = 0; line < lineCount; ++line) selection.lines.insert(selection.lines.end(), line);
}

void HoldSelection(ReportSelection& selection, int lineCount) {
  selection.lines.erase(selection.lines.lower_bound(lineCount), selection.lines.end());
  if (selection.current >= lineCount) selection.current = -1;
  if (selection.anchor >= lineCount) selection.anchor = -1;
}

int SteppedLine(const ReportSelection& selection, int from, int step, int lineCount) {
  const int line = selection.current < 0 ? from : selection.current + step;
  return std::clamp(line, 0, lineCount - 1);
}

}  // namespace orvane
