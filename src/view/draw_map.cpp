#include "view/draw_map.h"

#include "view/draw_errors.h"
#include "view/draw_ranges.h"
#include "view/fills.h"
#include "view/grid_shades.h"
#include "view/grids.h"
#include "view/labels.h"
#include "view/shown_trails.h"
#include "view/trail_lines.h"
#include "view/view_transform.h"

#include <optional>

namespace orvane {

namespace {

// The Find marker, in logical pixels.
constexpr int MarkerGap = 2;      // from the place to where the lines begin
constexpr int MarkerReach = 30;   // from the place to where they end
constexpr int MarkerRadius = 20;  // of the circle
constexpr int MarkerWidth = 3;    // of its line

void DrawFindMarker(const MapWindow& view) {
  Canvas& canvas = *view.target;
  const Pixel p = MapToScreen(view, view.highlight);
  const int gap = DevicePixels(view, MarkerGap);
  const int reach = DevicePixels(view, MarkerReach);
  const int radius = DevicePixels(view, MarkerRadius);
  canvas.SetPen({DevicePixels(view, 1), PenPattern::Solid, ForegroundColor});
  canvas.DrawLine({p.x - reach, p.y}, {p.x - gap, p.y});
  canvas.DrawLine({p.x + gap, p.y}, {p.x + reach, p.y});
  canvas.DrawLine({p.x, p.y - reach}, {p.x, p.y - gap});
  canvas.DrawLine({p.x, p.y + gap}, {p.x, p.y + reach});
  canvas.SetPen({DevicePixels(view, MarkerWidth), PenPattern::Solid, MarkerColor});
  canvas.SetBrush({false, MarkerColor});
  canvas.DrawOval({p.x - radius, p.y - radius, p.x + radius + 1, p.y + radius + 1});
}

/// The wrap under which trails and labels are drawn once more, 0 for none. It compares metres with
/// degrees (see "A second pass across the 180th meridian" in docs/compatibility.md), so almost
/// every view has a second pass; what does not cross the 180th meridian is skipped at its first
/// test.
int WrapOfView(const MapWindow& view, const PixelRect& update) {
  const double scale = static_cast<double>(view.scale);
  const double west = view.left + update.left / scale;
  const double east = view.left + update.right / scale;
  if (view.centralLongitude > 0 && (east > 180 || east == 0)) return 360;
  if (view.centralLongitude < 0 && (west < -180 || west == 0)) return -360;
  return 0;
}

/// The labels of the second pass, under a wrap.
LabelLayer PlaceWrappedLabels(MapWindow& view, const std::vector<ShownTrail>& shown, int wrap) {
  view.longitudeWrap = wrap;
  LabelLayer labels = PlaceLabels(view, shown);
  view.longitudeWrap = 0;
  return labels;
}

}  // namespace

void DrawMap(MapWindow& view, const PixelRect& update) {
  view.longitudeWrap = 0;
  view.target->SetFont(CanvasFont::Label);
  const std::vector<ShownTrail> shown = ShownTrails(view);
  // Labels are placed first, so that the names of ranges can avoid them.
  LabelLayer labels = PlaceLabels(view, shown);
  std::optional<LabelLayer> wrappedLabels;
  const int wrap = WrapOfView(view, update);
  if (wrap != 0) wrappedLabels.emplace(PlaceWrappedLabels(view, shown, wrap));

  DrawFilledTrails(view, shown);
  if (!view.rangeViews.empty()) {
    PixelMask taken(view.target->Clip());
    labels.AddBoxes(taken);
    if (wrappedLabels) wrappedLabels->AddBoxes(taken);
    DrawRanges(view, BoxOfUpdate(view, update), taken);
  }
  DrawGrids(view);
  DrawGridShades(view);
  DrawTrails(view, shown);
  DrawErrorLegs(view);
  labels.Draw();
  DrawErrorLegend(view);
  if ((view.flags & MapWindowFindMarker) != 0) DrawFindMarker(view);

  if (!wrappedLabels) return;
  view.longitudeWrap = wrap;
  DrawFilledTrails(view, shown);
  DrawTrails(view, shown);
  DrawErrorLegs(view);
  wrappedLabels->Draw();
  view.longitudeWrap = 0;
}

}  // namespace orvane
