#include "view/draw_errors.h"

#include "view/trail_lines.h"
#include "view/view_transform.h"

#include <algorithm>

namespace orvane {

namespace {

// In logical pixels.
constexpr int LegWidth = 3;
constexpr int StrongWidth = 6;
constexpr int EndRadius = 6;
constexpr int LegendMargin = 6;  // within the box, and from the edges of the view
constexpr int SwatchWidth = 24;
constexpr int SwatchHeight = 4;

constexpr Color PaperColor = 0xFFFFFF;
constexpr Color InkColor = 0x000000;
constexpr Color FrameColor = 0x808080;

void DrawEnd(const MapWindow& view, const LatLon& place) {
  const Pixel at = MapToScreen(view, place);
  const int radius = DevicePixels(view, EndRadius);
  view.target->DrawOval({at.x - radius, at.y - radius, at.x + radius + 1, at.y + radius + 1});
}

}  // namespace

void DrawErrorLegs(const MapWindow& view) {
  Canvas& canvas = *view.target;
  Point ends[2];
  Trail line;
  for (Point& end : ends) {
    end.flags = PointPlaced;
    line.points.push_back(&end);
  }
  for (const ErrorLeg& leg : view.errors.legs) {
    ends[0].geo = leg.from;
    ends[1].geo = leg.to;
    if (!IsDrawable(ends[0]) || !IsDrawable(ends[1])) continue;
    const int width = DevicePixels(view, leg.strong ? StrongWidth : LegWidth);
    canvas.SetPen({width, PenPattern::Solid, leg.color});
    DrawTrailLine(view, line);
    if (!leg.strong) continue;
    canvas.SetPen({DevicePixels(view, 2), PenPattern::Solid, leg.color});
    canvas.SetBrush({false, leg.color});
    DrawEnd(view, leg.from);
    DrawEnd(view, leg.to);
  }
}

void DrawErrorLegend(const MapWindow& view) {
  const ErrorOverlay& errors = view.errors;
  if (errors.legend.empty()) return;
  Canvas& canvas = *view.target;
  canvas.SetFont(CanvasFont::Small);
  const int margin = DevicePixels(view, LegendMargin);
  const int swatch = DevicePixels(view, SwatchWidth);
  const int line = canvas.LineHeight(CanvasFont::Small);
  const int ascent = canvas.Ascent(CanvasFont::Small);
  int width = canvas.TextWidth(errors.title);
  for (const ErrorClass& each : errors.legend) {
    width = std::max(width, swatch + margin + canvas.TextWidth(each.text));
  }
  const int lines = static_cast<int>(errors.legend.size()) + 1;
  const int bottom = view.clientHeight - margin;
  const int top = bottom - lines * line - 2 * margin;
  canvas.SetPen({0, PenPattern::Solid, FrameColor});
  canvas.SetBrush({true, PaperColor});
  canvas.DrawRect({margin, top, 3 * margin + width, bottom});
  canvas.SetForeColor(InkColor);
  int baseline = top + margin + ascent;
  canvas.DrawText({2 * margin, baseline}, errors.title);
  for (const ErrorClass& each : errors.legend) {
    baseline += line;
    const int middle = baseline - ascent / 2 + DevicePixels(view, 1);
    const int half = DevicePixels(view, SwatchHeight) / 2;
    canvas.SetPen({0, PenPattern::Hollow, each.color});
    canvas.SetBrush({true, each.color});
    canvas.DrawRect({2 * margin, middle - half, 2 * margin + swatch, middle + half});
    canvas.DrawText({3 * margin + swatch, baseline}, each.text);
  }
}

}  // namespace orvane
