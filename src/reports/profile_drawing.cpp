#include "reports/profile_drawing.h"

#include "base/progress.h"
#include "model/workspace.h"
#include "reports/profile_labels.h"
#include "reports/profile_view.h"

#include <algorithm>
#include <cstddef>

namespace orvane {

namespace {

constexpr Color LineColor = 0;

/// Estimates all columns, with the progress of the map's workspace. Cancelled, the rest is unknown.
void FillAllGaps(ElevationView& view) {
  const auto columns = static_cast<size_t>(view.plotWidth);
  ProgressSteps steps(view.map->workspace->progress, WorkStage::Printing, columns);
  const auto isKnown = [](const ElevationSample& sample) {
    return HasAltitude(sample.position.altitude);
  };
  GapFilling().Run(view, [&] {
    return steps.Next(
        static_cast<size_t>(std::count_if(view.samples.begin(), view.samples.end(), isKnown)));
  });
}

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
  FillAllGaps(view);
  DrawElevation(view, display, canvas);
}

}  // namespace orvane
