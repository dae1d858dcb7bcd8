#include "reports/trail_summary_view.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr int Columns = static_cast<int>(TrailSummaryColumns);
constexpr size_t LongestTitle = 100;

int TotalUnits() {
  int units = 0;
  for (const TrailSummaryHeading& heading : TrailSummaryHeadings) units += heading.units;
  return units;
}

/// The left edge of a column; that of the column after the last is the right edge of the table.
int ColumnEdge(const TrailSummaryView& view, int column) {
  int units = 0;
  for (int i = 0; i < column; ++i) units += TrailSummaryHeadings[static_cast<size_t>(i)].units;
  const float edge = static_cast<float>(units * view.lineHeight) * view.scale;
  return static_cast<int>(edge) - view.scrollX;
}

void DrawHeadings(const TrailSummaryView& view, Canvas& canvas) {
  const int y = view.ascent + view.lineHeight / 8;
  for (int column = 0; column < Columns; ++column) {
    const int middle = (ColumnEdge(view, column) + ColumnEdge(view, column + 1)) / 2;
    const TrailSummaryHeading& heading = TrailSummaryHeadings[static_cast<size_t>(column)];
    DrawHeading(canvas, {middle, y}, heading.first);
    DrawHeading(canvas, {middle, y + view.lineHeight}, heading.second);
  }
}

/// Draws a name in its column. A long one is cut before the figures.
void DrawName(const TrailSummaryView& view, Canvas& canvas, int baseline, const std::string& name) {
  const int x = view.lineHeight / 5 - view.scrollX;
  const int end = ColumnEdge(view, TrailSummaryName + 1);
  if (x + canvas.TextWidth(name) <= end) {
    canvas.DrawText({x, baseline}, name);
    return;
  }
  const PixelRect clip = canvas.Clip();
  canvas.SetClip({clip.left, clip.top, std::min(clip.right, end), clip.bottom});
  canvas.DrawText({x, baseline}, name);
  canvas.SetClip(clip);
}

/// Draws the cells of one line, each at the right of its column but for the first.
template <typename CellText>
void DrawCells(const TrailSummaryView& view, Canvas& canvas, int baseline, CellText cellText) {
  const int gap = view.lineHeight / 5;
  for (int column = 0; column < Columns; ++column) {
    const std::string text = cellText(column);
    if (text.empty()) continue;
    if (column == TrailSummaryName) {
      DrawName(view, canvas, baseline, text);
      continue;
    }
    canvas.DrawText({ColumnEdge(view, column + 1) - gap - canvas.TextWidth(text), baseline}, text);
  }
}

void DrawTotals(const TrailSummaryView& view, Canvas& canvas, int baseline) {
  canvas.SetFont(CanvasFont::Bold);
  canvas.DrawText({view.lineHeight / 5 - view.scrollX, baseline},
                  TrailTotalsCell(view.totals, TrailSummaryName));
  canvas.SetFont(CanvasFont::Small);
  DrawCells(view, canvas, baseline, [&](int column) {
    return column == TrailSummaryName ? std::string() : TrailTotalsCell(view.totals, column);
  });
}

void DrawAspect(const TrailSummaryView& view, Canvas& canvas, size_t aspect, int baseline) {
  const int left = 3 * view.unit;
  int widest = 0;
  for (const std::string_view label : AspectClassLabels) {
    widest = std::max(widest, canvas.TextWidth(label));
  }
  canvas.DrawText({left - view.scrollX, baseline}, AspectClassLabels[aspect]);
  canvas.DrawText({widest + view.lineHeight - view.scrollX, baseline},
                  std::to_string(view.aspects[aspect]));
}

void DrawLine(const TrailSummaryView& view, Canvas& canvas, int line) {
  const int baseline =
      view.headerHeight + view.ascent + TrailSummaryLineTop(view, line) - view.scrollY;
  const int rows = static_cast<int>(view.trails.size());
  if (line < rows) {
    Trail& trail = *view.trails[static_cast<size_t>(line)];
    DrawCells(view, canvas, baseline,
              [&](int column) { return TrailSummaryCell(trail, column, view.magneticDeviation); });
  } else if (line == rows) {
    DrawTotals(view, canvas, baseline);
  } else {
    DrawAspect(view, canvas, static_cast<size_t>(line - rows - 1), baseline);
  }
}

/// The lines of the view that the clip shows, at least in part.
ReportLines LinesIn(const TrailSummaryView& view, const PixelRect& clip) {
  const int last = TrailSummaryLines(view);
  const int top = view.scrollY + std::max(0, clip.top - view.headerHeight);
  const int bottom = view.scrollY + std::min(clip.bottom, view.viewHeight) - view.headerHeight;
  // The totals and the aspect table are a little below the grid of the lines.
  int first = std::clamp(top / std::max(1, view.lineHeight) - 1, 0, last);
  while (first < last && TrailSummaryLineTop(view, first) + view.lineHeight <= top) ++first;
  int end = first;
  while (end < last && TrailSummaryLineTop(view, end) < bottom) ++end;
  return {first, end};
}

/// Adds the trails of a selected row, or of its children.
void AddSelected(const TrailPanelRow& row, std::vector<const TrailPanelRow*>& waiting,
                 std::vector<Trail*>& trails) {
  if (row.children.empty()) {
    if (row.selected && row.trail != nullptr) trails.push_back(row.trail);
    return;
  }
  const size_t begin = waiting.size();
  for (const TrailPanelRow& child : row.children) waiting.push_back(&child);
  std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(begin), waiting.end());
}

}  // namespace

std::vector<Trail*> SelectedTrails(const std::list<TrailPanelRow>& rows) {
  std::vector<Trail*> trails;
  std::vector<const TrailPanelRow*> waiting;  // the next one last
  for (const TrailPanelRow& row : rows) waiting.push_back(&row);
  std::reverse(waiting.begin(), waiting.end());
  while (!waiting.empty()) {
    const TrailPanelRow* row = waiting.back();
    waiting.pop_back();
    AddSelected(*row, waiting, trails);
  }
  return trails;
}

std::string TrailSummaryTitle(const std::list<TrailPanelRow>& rows) {
  std::string title = "Trail Summary";
  bool first = true;
  for (const TrailPanelRow& row : rows) {
    if (!row.selected || row.children.empty()) continue;
    const std::string part = (first ? " of " : ", ") + row.text;
    if (title.size() + part.size() > LongestTitle) continue;
    title += part;
    first = false;
  }
  return title;
}

void LayoutTrailSummary(TrailSummaryView& view) {
  const int plainWidth = TotalUnits() * view.lineHeight;
  const float spread =
      static_cast<float>(view.viewWidth) / static_cast<float>(std::max(1, plainWidth));
  view.scale = std::max(1.0F, spread);
  view.headerHeight = view.lineHeight / 4 + 2 * view.lineHeight;
  view.contentWidth = static_cast<int>(static_cast<float>(plainWidth) * view.scale);
  view.totals = SumTrails(view.trails);
  view.aspects = CountAspects(view.trails);
  view.contentHeight = TrailSummaryLineTop(view, TrailSummaryLines(view) - 1) + view.lineHeight;
  HoldReportScroll(view);
}

int TrailSummaryLines(const TrailSummaryView& view) {
  const int rows = static_cast<int>(view.trails.size()) + 1;
  return rows + (view.totals.closedTrails > 0 ? static_cast<int>(AspectClasses) : 0);
}

int TrailSummaryLineTop(const TrailSummaryView& view, int line) {
  const int rows = static_cast<int>(view.trails.size());
  int top = line * view.lineHeight;
  if (line >= rows) top += view.lineHeight / 4;
  if (line > rows) top += view.lineHeight / 2;
  return top;
}

void DrawTrailSummary(const TrailSummaryView& view, Canvas& canvas,
                      const std::optional<ReportLines>& lines) {
  const PixelRect clip = canvas.Clip();
  canvas.Clear(view.background);
  canvas.SetForeColor(view.foreground);
  if (clip.top < view.headerHeight) DrawHeadings(view, canvas);
  canvas.SetFont(CanvasFont::Small);
  canvas.SetClip({clip.left, std::max(clip.top, view.headerHeight), clip.right, clip.bottom});
  const ReportLines shown = lines.value_or(LinesIn(view, clip));
  for (int line = shown.first; line < shown.end; ++line) DrawLine(view, canvas, line);
  canvas.SetClip(clip);
}

}  // namespace orvane
