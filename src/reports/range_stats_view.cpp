#include "reports/range_stats_view.h"

#include <algorithm>

namespace orvane {

namespace {

bool HasChart(const RangePanelRow& row) {
  return row.intersection == nullptr && row.range->meanDailyPath != 0;
}

/// The lines of a block.
struct LineMeasures {
  int count = 0;
  size_t longest = 0;  ///< bytes of the longest
};

LineMeasures MeasureLines(const RangeStatsView& view, const RangePanelRow& row) {
  LineMeasures lines;
  while (const auto text = RangeStatsLine(view, row, lines.count)) {
    ++lines.count;
    lines.longest = std::max(lines.longest, text->size());
  }
  return lines;
}

/// The lines that a block has room for. \param kept  of blocks of its kind
int RoomForLines(int& kept, int lines) {
  if (kept == 0) kept = lines;
  return std::max(kept, lines);
}

int& CountFor(const RangePanelRow& row, RangeStatsCounts& counts) {
  if (row.intersection != nullptr) return counts.overlap;
  return HasChart(row) ? counts.withChart : counts.withoutChart;
}

void DrawTitle(const RangeStatsView& view, const RangeStatsPart& part, Canvas& canvas, int top) {
  const bool isFirst = part.top == 0;
  if (!isFirst && !view.printing) {
    canvas.SetPen({0, PenPattern::Solid, view.foreground});
    for (const int y : {top + view.unit, top + 3 * view.unit}) {
      canvas.DrawLine({0, y}, {view.viewWidth, y});
    }
  }
  const std::string name = part.row->text.value_or("");
  canvas.SetFont(CanvasFont::Italic);
  const int x = (view.viewWidth - canvas.TextWidth(name)) / 2;
  canvas.DrawText({x, top + view.lineHeight / 4 + view.ascent}, name);
  canvas.SetFont(CanvasFont::Small);
}

void DrawChart(const RangeStatsView& view, const RangePanelRow& row, Canvas& canvas, int top) {
  TravelChartState state;
  state.target = &canvas;
  state.lineHeight = view.lineHeight;
  state.ascent = view.ascent;
  state.margin = view.left;
  state.width = view.viewWidth;
  state.mode = view.chartMeasure;
  state.names = view.names;
  state.foreground = view.foreground;
  DrawTravelChart(state, *row.range, top + view.lineHeight / 4);
}

}  // namespace

std::optional<std::string> RangeStatsLine(const RangeStatsView& view, const RangePanelRow& row,
                                          int line) {
  if (row.intersection != nullptr) {
    return IntersectionReportLine(*row.intersection, view.names, line);
  }
  return RangeReportLine(*row.range, line);
}

std::vector<const RangePanelRow*> SelectedRanges(const std::list<RangePanelRow>& rows) {
  std::vector<const RangePanelRow*> selected;
  for (const RangePanelRow& row : rows) {
    const bool holdsOne = row.range != nullptr || row.intersection != nullptr;
    if (row.selected && !row.fixed && holdsOne) selected.push_back(&row);
  }
  return selected;
}

void LayoutRangeStats(RangeStatsView& view, RangeStatsCounts& counts) {
  using Kind = RangeStatsPart::Kind;
  const int lineHeight = view.lineHeight;
  view.parts.clear();
  int y = 0;
  size_t longest = 0;
  for (const RangePanelRow* row : view.rows) {
    const auto add = [&](Kind kind, int line, int height) {
      view.parts.push_back({kind, row, line, y, height});
      y += height;
    };
    const LineMeasures measures = MeasureLines(view, *row);
    const int lines = measures.count;
    longest = std::max(longest, measures.longest);
    const int room = view.printing ? lines : RoomForLines(CountFor(*row, counts), lines);
    add(Kind::Title, 0, lineHeight * 3 / 2);
    if (HasChart(*row)) add(Kind::Chart, 0, TravelChartLines * lineHeight);
    for (int line = 0; line < lines; ++line) add(Kind::Line, line, lineHeight);
    y += (room - lines) * lineHeight;
  }
  view.contentHeight = y;
  view.contentWidth =
      std::max(view.viewWidth, 2 * view.left + static_cast<int>(longest) * view.letterWidth);
  HoldReportScroll(view);
}

bool ChooseChartMeasure(RangeStatsView& view, TravelChartMode measure) {
  const int needed = std::max(1, NumberOf(measure));
  for (int i = 0; i < needed; ++i) {
    if (!view.names[static_cast<size_t>(i)]) return false;
  }
  view.chartMeasure = measure;
  return true;
}

void DrawRangeStatsPart(const RangeStatsView& view, const RangeStatsPart& part, Canvas& canvas,
                        int top) {
  switch (part.kind) {
    case RangeStatsPart::Kind::Title:
      DrawTitle(view, part, canvas, top);
      break;
    case RangeStatsPart::Kind::Chart:
      DrawChart(view, *part.row, canvas, top);
      break;
    case RangeStatsPart::Kind::Line:
      if (const auto text = RangeStatsLine(view, *part.row, part.line)) {
        canvas.DrawText({view.left - view.scrollX, top + view.ascent}, *text);
      }
      break;
  }
}

void DrawRangeStats(const RangeStatsView& view, Canvas& canvas) {
  const PixelRect clip = canvas.Clip();
  canvas.Clear(view.background);
  canvas.SetForeColor(view.foreground);
  canvas.SetFont(CanvasFont::Small);
  // Parts are in the order of their tops.
  auto part =
      std::partition_point(view.parts.begin(), view.parts.end(), [&](const RangeStatsPart& each) {
        return each.top + each.height - view.scrollY <= clip.top;
      });
  for (; part != view.parts.end() && part->top - view.scrollY < clip.bottom; ++part) {
    DrawRangeStatsPart(view, *part, canvas, part->top - view.scrollY);
  }
}

}  // namespace orvane
