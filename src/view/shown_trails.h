#pragma once

#include "view/map_window.h"

#include <vector>

namespace orvane {

/// The least box of latitude and longitude, in degrees, that holds the placed points of a trail.
struct TrailBounds {
  bool hasPoints = false;  ///< otherwise nothing else means anything
  double minLat = 0;
  double maxLat = 0;
  double minLon = 0;
  double maxLon = 0;
};

/// A trail that one drawing of a view may show.
struct ShownTrail {
  const TrailPanelRow* row = nullptr;  ///< its `trail` is not null
  TrailBounds bounds;
};

/// The trails whose rows are visible, and `view.selectedTrail`, in the order of the pane. Good
/// while neither rows nor points change.
std::vector<ShownTrail> ShownTrails(MapWindow& view);

/// True if all points of a trail are beyond the same edge of a view that is not turned, or all
/// beyond half a turn to the same side, so that no part of it is drawn. All other trails are
/// looked at point by point; the answer changes no drawing.
bool IsBeyondView(const MapWindow& view, const TrailBounds& bounds);

}  // namespace orvane
