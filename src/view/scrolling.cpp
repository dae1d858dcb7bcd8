#include "view/scrolling.h"

#include "geo/earth.h"
#include "view/view_transform.h"

#include <cmath>

namespace orvane {

namespace {

double RadiansOfRotation(const MapWindow& view) {
  return static_cast<double>(view.rotation) * (Pi / 180.0);
}

/// Moves the view by metres on the ground; the east is taken off the central longitude.
void MoveView(MapWindow& view, double north, double west) {
  const double lon = MetersToLatLon((view.top + view.bottom) / 2, west).lon;
  if (!std::isfinite(lon) || !std::isfinite(north)) return;
  view.centralLongitude = WrapLongitude(view.centralLongitude - lon);
  view.top += north;
  view.bottom += north;
}

/// Notes where the thumb is, and where it is to go.
int SettleThumb(int& stored, ScrollAction action, int position) {
  stored = action == ScrollAction::ThumbTrack ? position : ScrollRest;
  return stored;
}

}  // namespace

int ScrollStep(ScrollAction action, int size, int stored, int position) {
  switch (action) {
    case ScrollAction::LineBack:
      return size / 8;
    case ScrollAction::LineForward:
      return -(size / 8);
    case ScrollAction::PageBack:
      return 7 * size / 8;
    case ScrollAction::PageForward:
      return -(7 * size / 8);
    case ScrollAction::Thumb:
    case ScrollAction::ThumbTrack:
      break;
  }
  return size * (stored - position) / 20;
}

int ScrollVertically(MapWindow& view, ScrollAction action, int position) {
  const double step = ScrollStep(action, view.clientHeight, view.verticalPos, position) /
                      static_cast<double>(view.scale);
  const double r = RadiansOfRotation(view);
  if (view.rotation == 0) {
    view.top += step;
    view.bottom += step;
  } else {
    MoveView(view, std::cos(r) * step, -std::sin(r) * step);
  }
  return SettleThumb(view.verticalPos, action, position);
}

int ScrollHorizontally(MapWindow& view, ScrollAction action, int position) {
  const double step = ScrollStep(action, view.clientWidth, view.horizontalPos, position) /
                      static_cast<double>(view.scale);
  const double r = RadiansOfRotation(view);
  MoveView(view, view.rotation == 0 ? 0 : std::sin(r) * step, std::cos(r) * step);
  return SettleThumb(view.horizontalPos, action, position);
}

void ResetScrolling(MapWindow& view) {
  view.verticalPos = ScrollRest;
  view.horizontalPos = ScrollRest;
}

}  // namespace orvane
