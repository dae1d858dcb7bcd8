#include "reports/report_view.h"

#include <algorithm>

namespace orvane {

void TakeReportFont(ReportView& view, const Canvas& canvas) {
  view.lineHeight = canvas.LineHeight(CanvasFont::Small);
  view.ascent = canvas.Ascent(CanvasFont::Small);
}

void HoldReportScroll(ReportView& view) {
  const int below = view.contentHeight - (view.viewHeight - view.headerHeight);
  view.scrollY = std::clamp(view.scrollY, 0, std::max(0, below));
  view.scrollX = std::clamp(view.scrollX, 0, std::max(0, view.contentWidth - view.viewWidth));
}

void DrawHeading(Canvas& canvas, Pixel middle, std::string_view text) {
  canvas.SetFont(CanvasFont::Bold);
  canvas.DrawText({middle.x - canvas.TextWidth(text) / 2, middle.y}, text);
}

}  // namespace orvane
