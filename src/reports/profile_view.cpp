#include "reports/profile_view.h"

#include "base/number_text.h"
#include "view/scrolling.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// No view is narrower or wider, in metres: a window is then some thousandths of a millimetre, or
/// many times the earth, from edge to edge.
constexpr double NarrowestSpan = 1e-6;
constexpr double WidestSpan = 1e9;

/// The same for the distance of a view from its line, that a transect may be moved along.
constexpr double FarthestDistance = 1e10;

/// The bar of a transect, at rest as those of a map.
constexpr ElevationScroll MiddleBar = {0, ScrollRange, ScrollProportion, ScrollRest};

double Span(const ElevationView& view) { return view.viewEnd - view.viewStart; }

void SetView(ElevationView& view, double start, double end) {
  const double span = end - start;
  if (span > WidestSpan || span < std::min(NarrowestSpan, Span(view))) return;
  if (std::abs(start) > FarthestDistance || std::abs(end) > FarthestDistance) return;
  view.viewStart = start;
  view.viewEnd = end;
}

void MoveView(ElevationView& view, double distance) {
  SetView(view, view.viewStart + distance, view.viewEnd + distance);
}

/// Keeps the view of a trail on its line, with its span where that fits.
void HoldOnLine(ElevationView& view) {
  if (view.viewStart < 0) {
    view.viewEnd -= view.viewStart;
    view.viewStart = 0;
  } else if (view.viewEnd > view.lineLength) {
    view.viewStart -= view.viewEnd - view.lineLength;
    view.viewEnd = view.lineLength;
  }
  view.viewStart = std::max(view.viewStart, 0.0);
  view.viewEnd = std::min(view.viewEnd, view.lineLength);
}

}  // namespace

void RefreshElevation(ElevationView& view, int right, int bottom, const TextWidth& textWidth) {
  if (view.trail != nullptr) HoldOnLine(view);
  LayoutElevation(view, right, bottom, textWidth);
  view.pointerX = std::min(view.pointerX, view.plotWidth - 1);
}

void LayoutElevation(ElevationView& view, int right, int bottom, const TextWidth& textWidth) {
  constexpr int MarginGap = 3;
  const double tenth = (view.maxAltitude - view.minAltitude) / 10;
  view.plotBottom = view.minAltitude - tenth;
  if (view.plotBottom < 0 && view.minAltitude > 0) view.plotBottom = 0;
  view.plotHeight = std::max(bottom - 2 * view.lineHeight, 1);
  view.leftMargin = textWidth(FormatFixed(view.maxAltitude, 0)) + MarginGap;
  view.metresPerPixelY = (tenth + view.maxAltitude - view.plotBottom) / view.plotHeight;
  // Level ground has no range that a scale could come from.
  if (!(view.metresPerPixelY > 0)) view.metresPerPixelY = 1;
  LayoutColumns(view, right - view.leftMargin);
}

ElevationScroll ElevationScrollBar(const ElevationView& view) {
  if (view.trail == nullptr) return MiddleBar;
  const int last = view.plotWidth - 1;
  if (!(view.lineLength > 0)) return {0, last, last, 0};
  return {0, last, static_cast<int>(Span(view) * last / view.lineLength),
          static_cast<int>(last * view.viewStart / view.lineLength)};
}

double DistanceUnder(const ElevationView& view, int x) {
  return (x - view.leftMargin) * view.metresPerPixelX + view.viewStart;
}

void StartElevationPan(ElevationView& view, int x) {
  view.flags |= ElevationPanning;
  view.dragAnchor = DistanceUnder(view, x);
}

bool MoveElevationPointer(ElevationView& view, int x, int y) {
  if ((view.flags & ElevationPanning) != 0) {
    MoveView(view, view.dragAnchor - DistanceUnder(view, x));
    return true;
  }
  view.pointerX = x;
  view.pointerY = y;
  return false;
}

void EndElevationPan(ElevationView& view) { view.flags &= ~std::uint32_t{ElevationPanning}; }

void ZoomElevationAbout(ElevationView& view, int x, bool closer) {
  const double middle = DistanceUnder(view, x);
  const double half = closer ? Span(view) / 4 : Span(view);
  SetView(view, middle - half, middle + half);
}

void ScaleElevation(ElevationView& view, int x, double factor) {
  if (!(factor > 0)) return;
  const double under = DistanceUnder(view, x);
  SetView(view, under - (under - view.viewStart) / factor, under + (view.viewEnd - under) / factor);
}

void PanElevation(ElevationView& view, double pixels) {
  MoveView(view, -pixels * view.metresPerPixelX);
}

void ShowWholeLine(ElevationView& view) {
  view.viewStart = 0;
  view.viewEnd = view.lineLength;
}

void ShowLineEnd(ElevationView& view, bool last) {
  MoveView(view, last ? view.lineLength - view.viewEnd : -view.viewStart);
}

void StepElevationPointer(ElevationView& view, int columns) {
  const int last = view.plotWidth - 1;
  view.pointerX = view.leftMargin + std::clamp(PointerColumn(view) + columns, 0, std::max(last, 0));
}

void ToggleElevationInfo(ElevationView& view) { view.flags ^= ElevationInfoShown; }

void ZoomElevation(ElevationView& view, bool closer) {
  const double step = closer ? Span(view) / 4 : -Span(view) / 2;
  SetView(view, view.viewStart + step, view.viewEnd - step);
}

void ShiftElevation(ElevationView& view, int eighths) { MoveView(view, eighths * Span(view) / 8); }

void ScrollElevationTo(ElevationView& view, int position) {
  if (view.trail == nullptr || view.plotWidth < 2) return;
  const double start = position * view.lineLength / (view.plotWidth - 1);
  SetView(view, start, start + Span(view));
}

}  // namespace orvane
