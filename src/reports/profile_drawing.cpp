#include "reports/profile_drawing.h"

#include "reports/profile_labels.h"
#include "reports/profile_view.h"

namespace orvane {

namespace {

constexpr Color LineColor = 0;

}  // namespace

void DrawElevation(const ElevationView& view, CoordinateDisplay display, Canvas& canvas) {
  const TextWidth textWidth = [&canvas](std::string_view text) { return canvas.TextWidth(text); };
  canvas.SetFont(CanvasFont::Small);
  canvas.SetForeColor(ForegroundColor);
  for (const auto& texts : {PlaceNameTexts(view, display, textWidth),
                            DistanceTexts(view, textWidth), AltitudeTexts(view)}) {
    for (const ElevationText& text : texts) canvas.DrawText(text.at, text.text);
  }
  canvas.SetPen({0, PenPattern::Solid, LineColor});
  canvas.DrawPolyline(ElevationLine(view));
}

void PrintElevation(ElevationView& view, CoordinateDisplay display, const PixelRect& area,
                    Canvas& canvas) {
  canvas.SetFont(CanvasFont::Small);
  view.lineHeight = canvas.LineHeight(CanvasFont::Small);
  view.ascent = canvas.Ascent(CanvasFont::Small);
  LayoutElevation(view, area.right, area.bottom,
                  [&canvas](std::string_view text) { return canvas.TextWidth(text); });
  FillGaps(view);
  DrawElevation(view, display, canvas);
}

}  // namespace orvane
