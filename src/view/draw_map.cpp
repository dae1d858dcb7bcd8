#include "view/draw_map.h"

#include "view/draw_ranges.h"
#include "view/fills.h"
#include "view/grid_shades.h"
#include "view/grids.h"
#include "view/labels.h"
#include "view/shown_trails.h"
#include "view/trail_lines.h"
#include "view/view_transform.h"

namespace orvane {

namespace {

constexpr int MarkerGap = 2;      // pixels from the place to where the lines begin
constexpr int MarkerReach = 30;   // pixels from the place to where they end
constexpr int MarkerRadius = 20;  // of the circle

void DrawFindMarker(const MapWindow& view) {
  Canvas& canvas = *view.target;
  const Pixel p = MapToScreen(view, view.highlight);
  canvas.SetPen({1, PenPattern::Solid, ForegroundColor});
  canvas.DrawLine({p.x - MarkerReach, p.y}, {p.x - MarkerGap, p.y});
  canvas.DrawLine({p.x + MarkerGap, p.y}, {p.x + MarkerReach, p.y});
  canvas.DrawLine({p.x, p.y - MarkerReach}, {p.x, p.y - MarkerGap});
  canvas.DrawLine({p.x, p.y + MarkerGap}, {p.x, p.y + MarkerReach});
  canvas.SetPen({3, PenPattern::Solid, MarkerColor});
  canvas.SetBrush({false, MarkerColor});
  canvas.DrawOval(
      {p.x - MarkerRadius, p.y - MarkerRadius, p.x + MarkerRadius + 1, p.y + MarkerRadius + 1});
}

/// The wrap under which trails and labels are drawn once more, 0 for none. Metres are compared
/// with the degrees of half a turn here, so almost every view is drawn twice; what does not reach
/// over the 180th meridian falls out at its first test.
int WrapOfView(const MapWindow& view, const PixelRect& update) {
  const double scale = static_cast<double>(view.scale);
  const double west = view.left + update.left / scale;
  const double east = view.left + update.right / scale;
  if (view.centralLongitude > 0 && (east > 180 || east == 0)) return 360;
  if (view.centralLongitude < 0 && (west < -180 || west == 0)) return -360;
  return 0;
}

}  // namespace

void DrawMap(MapWindow& view, const PixelRect& update) {
  view.longitudeWrap = 0;
  view.target->SetFont(CanvasFont::Label);
  const std::vector<ShownTrail> shown = ShownTrails(view);
  DrawFilledTrails(view, shown);
  DrawRanges(view, BoxOfUpdate(view, update));
  DrawGrids(view);
  DrawGridShades(view);
  DrawTrails(view, shown);
  DrawLabels(view, shown);
  if ((view.flags & MapWindowFindMarker) != 0) DrawFindMarker(view);

  view.longitudeWrap = WrapOfView(view, update);
  if (view.longitudeWrap == 0) return;
  DrawFilledTrails(view, shown);
  DrawTrails(view, shown);
  DrawLabels(view, shown);
  view.longitudeWrap = 0;
}

}  // namespace orvane
