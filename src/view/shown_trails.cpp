#include "view/shown_trails.h"

#include "geo/earth.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double HalfTurn = 180.0;  // degrees

TrailBounds BoundsOf(const Trail& trail) {
  TrailBounds bounds;
  for (const Point* point : trail.points) {
    if (!IsDrawable(*point)) continue;
    const LatLon& place = point->geo;
    if (!bounds.hasPoints) bounds = {true, place.lat, place.lat, place.lon, place.lon};
    bounds.minLat = std::min(bounds.minLat, place.lat);
    bounds.maxLat = std::max(bounds.maxLat, place.lat);
    bounds.minLon = std::min(bounds.minLon, place.lon);
    bounds.maxLon = std::max(bounds.maxLon, place.lon);
  }
  return bounds;
}

/// True if the points, which are at least `least` degrees to one side of the centre, are all more
/// than `edge` metres off on that side. A metre is left for rounding.
bool IsBeyondSide(const TrailBounds& bounds, double least, double edge) {
  if (least <= 0) return false;
  const double farthestLat = std::max(std::abs(bounds.minLat), std::abs(bounds.maxLat));
  if (farthestLat > 90) return false;  // the cosine turns there
  return LatLonToMeters(farthestLat, least).east > edge + 1;
}

}  // namespace

std::vector<ShownTrail> ShownTrails(MapWindow& view) {
  std::vector<ShownTrail> shown;
  for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
    if (row->trail == nullptr || !row->children.empty()) continue;
    if (!row->visible && row->trail != view.selectedTrail) continue;
    shown.push_back({row, BoundsOf(*row->trail)});
  }
  return shown;
}

bool IsBeyondView(const MapWindow& view, const TrailBounds& bounds) {
  if (!bounds.hasPoints) return true;
  if (view.rotation != 0) return false;
  if (DegreesToMeters(bounds.minLat) > view.top) return true;
  if (DegreesToMeters(bounds.maxLat) < view.bottom) return true;
  const double minTurn = bounds.minLon - view.centralLongitude + view.longitudeWrap;
  const double maxTurn = bounds.maxLon - view.centralLongitude + view.longitudeWrap;
  if (minTurn > HalfTurn || maxTurn < -HalfTurn) return true;
  return IsBeyondSide(bounds, minTurn, view.right) || IsBeyondSide(bounds, -maxTurn, -view.left);
}

}  // namespace orvane
