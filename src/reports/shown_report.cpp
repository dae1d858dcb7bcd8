#include "reports/shown_report.h"

#include <algorithm>
#include <vector>

namespace orvane {

namespace {

/// The first line for which `isPast` holds of its place, which holds for all later ones too.
template <typename IsPast>
int FirstLine(const ShownReport& report, IsPast isPast) {
  int first = 0;
  int end = report.LineCount();
  while (first < end) {
    const int middle = first + (end - first) / 2;
    if (isPast(report.LinePlace(middle))) {
      end = middle;
    } else {
      first = middle + 1;
    }
  }
  return first;
}

bool Holds(const PixelRect& rect, Pixel at) {
  return at.x >= rect.left && at.x < rect.right && at.y >= rect.top && at.y < rect.bottom;
}

/// Joins a rectangle to the last one if both together are a rectangle too.
void JoinRect(std::vector<PixelRect>& rects, const PixelRect& rect) {
  if (!rects.empty()) {
    PixelRect& last = rects.back();
    if (last.top == rect.top && last.bottom == rect.bottom && last.right == rect.left) {
      last.right = rect.right;
      return;
    }
    if (last.left == rect.left && last.right == rect.right && last.bottom == rect.top) {
      last.bottom = rect.bottom;
      return;
    }
  }
  rects.push_back(rect);
}

/// The selected lines that `clip` shows, as few rectangles.
std::vector<PixelRect> SelectedPlaces(const ShownReport& report, const ReportSelection& selection,
                                      const PixelRect& clip) {
  const int first =
      FirstLine(report, [&](const PixelRect& place) { return place.bottom > clip.top; });
  std::vector<PixelRect> places;
  std::vector<PixelRect> row;  // of the lines side by side
  const auto flush = [&] {
    for (const PixelRect& each : row) JoinRect(places, each);
    row.clear();
  };
  for (auto line = selection.lines.lower_bound(first); line != selection.lines.end(); ++line) {
    const PixelRect place = report.LinePlace(*line);
    if (place.top >= clip.bottom) break;
    if (!row.empty() && row.back().top != place.top) flush();
    JoinRect(row, place);
  }
  flush();
  return places;
}

}  // namespace

int ShownReport::PageStep() const { return std::max(1, View().viewHeight * 7 / 8); }

int LineAt(const ShownReport& report, Pixel at) {
  if (at.y < report.View().headerHeight) return -1;
  const int count = report.LineCount();
  int line = FirstLine(report, [&](const PixelRect& place) { return place.bottom > at.y; });
  for (int i = 0; i < report.Across() && line < count; ++i, ++line) {
    if (Holds(report.LinePlace(line), at)) return line;
  }
  return -1;
}

void ScrollToLine(ShownReport& report, int line) {
  ReportView& view = report.View();
  const PixelRect place = report.LinePlace(line);
  view.scrollY += std::max(0, place.bottom - view.viewHeight);
  view.scrollY -= std::max(0, view.headerHeight - report.LinePlace(line).top);
  if (report.Across() > 1) {
    view.scrollX += std::max(0, place.right - view.viewWidth);
    view.scrollX -= std::max(0, -report.LinePlace(line).left);
  }
  HoldReportScroll(view);
}

std::string CopiedText(const ShownReport& report, const ReportSelection& selection) {
  std::string text;
  const auto add = [&](int line) {
    const std::string each = report.LineText(line);
    if (!each.empty()) text += each + '\n';
  };
  for (const int line : selection.lines) add(line);
  if (selection.lines.empty()) {
    for (int line = 0; line < report.LineCount(); ++line) add(line);
  }
  return text;
}

void DrawReport(ShownReport& report, const ReportSelection& selection,
                const ReportColors& highlight, Canvas& canvas) {
  report.Draw(canvas);
  ReportView& view = report.View();
  const PixelRect clip = canvas.Clip();
  PixelRect body = clip;
  body.top = std::max(clip.top, view.headerHeight);
  const ReportColors plain{view.background, view.foreground};
  view.background = highlight.background;
  view.foreground = highlight.foreground;
  for (const PixelRect& place : SelectedPlaces(report, selection, body)) {
    canvas.SetClip({std::max(place.left, body.left), std::max(place.top, body.top),
                    std::min(place.right, body.right), std::min(place.bottom, body.bottom)});
    report.Draw(canvas);
  }
  view.background = plain.background;
  view.foreground = plain.foreground;
  canvas.SetClip(clip);
}

}  // namespace orvane
