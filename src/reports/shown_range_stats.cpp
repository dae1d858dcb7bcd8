#include "reports/shown_range_stats.h"

#include "reports/range_stats.h"

#include <algorithm>
#include <utility>

namespace orvane {

bool ShownRangeStats::Show(std::vector<const RangePanelRow*> rows, const MeasureNames& names) {
  std::vector<Subject> subjects;
  subjects.reserve(rows.size());
  for (const RangePanelRow* row : rows) subjects.push_back({row->range, row->overlapOf});
  const bool differs = subjects != subjects_;
  subjects_ = std::move(subjects);
  view_.rows = std::move(rows);
  view_.names = names;
  view_.parts.clear();  // they lead to the rows that were shown before
  return differs;
}

bool ShownRangeStats::IsChart(int line) const {
  return line >= 0 && line < LineCount() && PartOf(line).kind == RangeStatsPart::Kind::Chart;
}

const RangePanelRow* ShownRangeStats::ChartRow(int line) const {
  const auto hasChart = [](const RangeStatsPart& part) {
    return part.kind == RangeStatsPart::Kind::Chart;
  };
  const std::vector<RangeStatsPart>& parts = view_.parts;
  const auto first = std::find_if(parts.begin(), parts.end(), hasChart);
  if (first == parts.end()) return nullptr;
  if (line >= 0 && line < LineCount()) {
    const RangePanelRow* row = PartOf(line).row;
    for (const RangeStatsPart& part : parts) {
      if (part.row == row && hasChart(part)) return row;
    }
  }
  const auto shown = std::find_if(first, parts.end(), [&](const RangeStatsPart& part) {
    return hasChart(part) && part.top + part.height > view_.scrollY &&
           part.top < view_.scrollY + view_.viewHeight;
  });
  return shown == parts.end() ? first->row : shown->row;
}

void ShownRangeStats::LayOut(Canvas& canvas) {
  TakeReportFont(view_, canvas);
  view_.left = RangeStatsMargin * view_.unit;
  canvas.SetFont(CanvasFont::Small);
  view_.letterWidth = canvas.TextWidth("0");
  LayoutRangeStats(view_, counts_);
}

PixelRect ShownRangeStats::LinePlace(int line) const {
  const RangeStatsPart& part = PartOf(line);
  // The topmost label of a chart reaches into the room below its title.
  const int reach = view_.lineHeight / 4;
  const int top = part.top - view_.scrollY - (IsChart(line) ? reach : 0);
  const int bottom = part.top - view_.scrollY + part.height - (IsChart(line + 1) ? reach : 0);
  return {0, top, view_.viewWidth, bottom};
}

std::string ShownRangeStats::LineText(int line) const {
  const RangeStatsPart& part = PartOf(line);
  switch (part.kind) {
    case RangeStatsPart::Kind::Title:
      return "\t\t" + part.row->text.value_or("");
    case RangeStatsPart::Kind::Line:
      return RangeStatsLine(view_, *part.row, part.line).value_or("");
    case RangeStatsPart::Kind::Chart:
      break;
  }
  return {};
}

std::string ShownRangeStats::FileText() const { return RangeStatsText(view_.rows, view_.names); }

int ShownRangeStats::PageStep() const { return std::max(1, view_.viewHeight - view_.lineHeight); }

void ShownRangeStats::Drop() {
  view_.rows.clear();
  view_.parts.clear();
  subjects_.clear();
}

}  // namespace orvane
