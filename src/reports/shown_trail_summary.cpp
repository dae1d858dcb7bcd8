#include "reports/shown_trail_summary.h"

#include <utility>

namespace orvane {

bool ShownTrailSummary::Show(std::vector<Trail*> trails, double magneticDeviation) {
  const bool differs = view_.trails != trails;
  view_.trails = std::move(trails);
  view_.magneticDeviation = magneticDeviation;
  return differs;
}

void ShownTrailSummary::LayOut(Canvas& canvas) {
  TakeReportFont(view_, canvas);
  LayoutTrailSummary(view_);
}

PixelRect ShownTrailSummary::LinePlace(int line) const {
  const int top = view_.headerHeight + TrailSummaryLineTop(view_, line) - view_.scrollY;
  return {0, top, view_.viewWidth, top + view_.lineHeight};
}

std::string ShownTrailSummary::LineText(int line) const {
  const int rows = static_cast<int>(view_.trails.size());
  if (line > rows) {
    const auto aspect = static_cast<size_t>(line - rows - 1);
    return std::string(AspectClassLabels[aspect]) + '\t' + std::to_string(view_.aspects[aspect]);
  }
  std::string text;
  for (int column = 0; column < static_cast<int>(TrailSummaryColumns); ++column) {
    if (column > 0) text += '\t';
    text += line == rows ? TrailTotalsCell(view_.totals, column)
                         : TrailSummaryCell(*view_.trails[static_cast<size_t>(line)], column,
                                            view_.magneticDeviation);
  }
  return text;
}

std::string ShownTrailSummary::FileText() const {
  return TrailSummaryText(view_.trails, view_.magneticDeviation);
}

void ShownTrailSummary::Drop() {
  view_.trails.clear();
  view_.totals = {};
  view_.aspects = {};
}

}  // namespace orvane
