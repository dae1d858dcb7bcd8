#include "view/fit_to_map.h"

#include "geo/earth.h"
#include "model/map.h"
#include "view/map_window.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane {

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double MarginShare = 1.0 / 20;
constexpr double SmallestExtent = 2;  // metres: what a map of one point shows

/// The smallest and largest value met.
struct Span {
  double low = Infinity;
  double high = -Infinity;

  void Take(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  bool IsEmpty() const { return low > high; }
  double Extent() const { return high - low; }
  double Middle() const { return (low + high) / 2; }
  double WithMargins() const { return std::max(Extent() * (1 + 2 * MarginShare), SmallestExtent); }
};

template <typename Visit>
void ForEachDrawablePoint(const Map* map, Visit visit) {
  for (; map != nullptr; map = map->basis) {
    ForEachPoint(*map, [&](const Point& point) {
      if (IsDrawable(point)) visit(point.geo);
    });
  }
}

/// A longitude counted from 0 eastwards, so that those of both sides of the 180th meridian are
/// neighbours.
double EastwardLongitude(double longitude) { return longitude < 0 ? longitude + 360 : longitude; }

}  // namespace

bool HasDrawablePoints(const Map& map) {
  bool found = false;
  ForEachDrawablePoint(&map, [&](const LatLon&) { found = true; });
  return found;
}

void FitToMap(MapWindow& view) {
  Span plain;
  Span eastward;
  ForEachDrawablePoint(view.map, [&](const LatLon& place) {
    plain.Take(place.lon);
    eastward.Take(EastwardLongitude(place.lon));
  });
  if (plain.IsEmpty()) return;
  const bool acrossMeridian = eastward.Extent() < plain.Extent();
  const Span& longitudes = acrossMeridian ? eastward : plain;
  // The axes of the window on the ground: down the rows and along the columns.
  const double turn = static_cast<double>(view.rotation) * Pi / 180;
  const double middleLongitude = longitudes.Middle();
  Span rows;
  Span columns;
  ForEachDrawablePoint(view.map, [&](const LatLon& place) {
    const double lon = acrossMeridian ? EastwardLongitude(place.lon) : place.lon;
    const Meters at = LatLonToMeters(place.lat, lon - middleLongitude);
    rows.Take(std::cos(turn) * -at.north - std::sin(turn) * at.east);
    columns.Take(std::cos(turn) * at.east + std::sin(turn) * -at.north);
  });
  const double scale =
      std::min(view.clientHeight / rows.WithMargins(), view.clientWidth / columns.WithMargins());
  view.scale = BoundedScale(scale);
  const double south = std::cos(turn) * rows.Middle() + std::sin(turn) * columns.Middle();
  const double east = std::cos(turn) * columns.Middle() - std::sin(turn) * rows.Middle();
  LatLon center = MetersToLatLon(-south, east);
  center.lon += middleLongitude;
  CenterOn(view, center);
}

}  // namespace orvane
