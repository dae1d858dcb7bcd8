#include "view/pointer.h"

#include "geo/earth.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orvane {

namespace {

/// Pixels by which one axis scrolls.
int ScrollShift(int coordinate, int size) {
  if (coordinate < 0) return -(size / 40) + coordinate;
  if (coordinate >= size) return size / 40 + (coordinate - size);
  return 0;
}

/// What a finished drag of the mouse means; `selection` is set first.
PointerOutcome UseBand(MapWindow& view, const HeldKeys& keys, bool panning) {
  PointerOutcome outcome;
  view.selection[0] = ScreenToMap(view, view.pressPoint);
  view.selection[1] = ScreenToMap(view, view.pointer);
  view.flags |= MapWindowSelection;
  view.flags &= ~std::uint32_t{MapWindowAreaShown};
  if (keys.shift || keys.control || panning || view.transectMode) {
    outcome.transectDrawn = view.transectMode || keys.control;
    if (outcome.transectDrawn) {
      view.transectMode = true;
    } else if (!panning) {
      view.flags |= MapWindowAreaShown;
    }
  } else {
    ZoomToPixels(view, view.pressPoint, view.pointer);
    outcome.viewMoved = true;
  }
  return outcome;
}

}  // namespace

std::array<ExactPixel, 2> SelectionCorners(const MapWindow& view) {
  const ScreenTransform transform(view);
  const auto corner = [&transform](const LatLon& place) {
    const ExactPixel pixel = transform.ToUnboundedPixel(transform.Project(place));
    return ExactPixel{.row = std::floor(pixel.row + 0.5), .column = std::floor(pixel.column + 0.5)};
  };
  return {corner(view.selection[0]), corner(view.selection[1])};
}

bool IsBandDrawn(const MapWindow& view) {
  return (view.flags & MapWindowDrag) != 0 && (view.flags & MapWindowPan) == 0;
}

void PressPointer(MapWindow& view, Pixel at, bool otherButton) {
  view.pressPoint = at;
  view.pointer = at;
  view.savedTop = view.top;
  view.savedLeft = view.left;
  view.flags &= ~std::uint32_t{MapWindowPan};
  view.flags |= MapWindowDrag;
  if (otherButton) view.flags |= MapWindowPan;
}

bool MovePointer(MapWindow& view, Pixel at) {
  bool moved = false;
  if ((view.flags & MapWindowPan) != 0) {
    moved = at.x != view.pressPoint.x || at.y != view.pressPoint.y;
    PanTo(view, at);
  } else if (IsBandDrawn(view) && ViewOutOfWindow(view, at)) {
    ScrollToward(view, at);
    moved = true;
  }
  view.pointer = at;
  return moved;
}

PointerOutcome ReleasePointer(MapWindow& view, Pixel at, const HeldKeys& keys, int smallestBand) {
  if ((view.flags & MapWindowDrag) == 0) return {};
  const bool panning = (view.flags & MapWindowPan) != 0;
  CancelPointer(view);
  view.pointer = at;
  if (!panning && view.inputTarget != nullptr) {
    LatLon place = ScreenToMap(view, view.pressPoint);
    place.altitude = NoAltitude;
    view.inputTarget->TakePosition(place);
    return {};
  }
  const int length = std::abs(at.y - view.pressPoint.y) + std::abs(at.x - view.pressPoint.x);
  return length > smallestBand ? UseBand(view, keys, panning) : PointerOutcome{};
}

bool PanBy(MapWindow& view, int columns, int rows) {
  if ((view.flags & MapWindowDrag) != 0 || (columns == 0 && rows == 0)) return false;
  const Pixel pressed = view.pressPoint;
  view.pressPoint = {0, 0};
  PanTo(view, {columns, rows});
  view.pressPoint = pressed;
  return true;
}

bool EscapePointer(MapWindow& view) {
  constexpr std::uint32_t Ended = MapWindowDrag | MapWindowPan | MapWindowAreaShown;
  const bool ends = (view.flags & (MapWindowDrag | MapWindowAreaShown)) != 0 || view.transectMode;
  view.flags &= ~Ended;
  view.transectMode = false;
  return ends;
}

void CancelPointer(MapWindow& view) { view.flags &= ~std::uint32_t{MapWindowDrag | MapWindowPan}; }

void ScrollToward(MapWindow& view, Pixel at) {
  const int columns = ScrollShift(at.x, view.clientWidth);
  const int rows = ScrollShift(at.y, view.clientHeight);
  // Columns count as metres: see "A drag beyond the edge" in docs/compatibility.md.
  const double lon = MetersToLatLon((view.top + view.bottom) / 2, columns / view.pixelRatio).lon;
  if (std::isfinite(lon)) view.centralLongitude = WrapLongitude(view.centralLongitude + lon);
  const double north = rows / static_cast<double>(view.scale);
  view.top -= north;
  view.bottom -= north;
  view.pressPoint.x = std::clamp(view.pressPoint.x - columns, -LargestPixel, LargestPixel);
  view.pressPoint.y = std::clamp(view.pressPoint.y - rows, -LargestPixel, LargestPixel);
}

}  // namespace orvane
