#include "survey/positions.h"

#include "geo/earth.h"
#include "survey/links.h"
#include "survey/unplaced_below.h"

namespace orvane {

void ProjectPoint(Point& point) { point.projected = LatLonToMeters(point.geo.lat, point.geo.lon); }

bool QuickPosition(Point& point) {
  if (IsPlaced(point)) return true;
  double latSum = 0;
  double lonSum = 0;
  double altitudeSum = 0;
  int fixes = 0;
  int altitudes = 0;
  const auto addAltitude = [&](float altitude) {
    if (!HasAltitude(altitude)) return;
    altitudeSum += double{altitude};
    ++altitudes;
  };
  for (const Measurement& reading : point.measurements) {
    if ((reading.flags & (MeasureGps | MeasureAltitude)) == 0) return false;
    if ((reading.flags & MeasureGps) != 0) {
      latSum += reading.position.lat;
      lonSum += reading.position.lon;
      ++fixes;
      addAltitude(reading.position.altitude);
    }
    addAltitude(reading.altitude);
  }
  if (fixes == 0) return false;
  point.geo.lat = latSum / fixes;
  point.geo.lon = lonSum / fixes;
  point.geo.altitude = altitudes == 0 ? NoAltitude : static_cast<float>(altitudeSum / altitudes);
  ProjectPoint(point);
  point.flags |= PointPlaced;
  return true;
}

bool NeedsSolving(Map& map) {
  NoteUnplacedBelow(map);
  if (map.basis != nullptr && map.date < map.basis->date) return true;
  bool failed = false;
  ForEachPoint(map, [&](Point& point) { failed = failed || !QuickPosition(point); });
  if (!failed) KeepGivenBelow(map);
  return failed;
}

void ClearOwnPositions(Map& map) {
  for (Trail& trail : map.trails) trail.flags &= ~std::uint32_t{TrailMeasured};
  SolverWalk bases(map);
  ForEachPoint(map, [&](const Point& point) {
    for (const Measurement& reading : point.measurements) {
      if (reading.base != nullptr) bases.FirstVisit(*reading.base);
    }
  });
  ForEachPoint(map, [&](Point& point) {
    if (point.map != &map) return;
    point.flags &= ~std::uint32_t{PointInProgress};
    // Without a reading at either end no solve could place the point again.
    const bool canBeSolved = !point.measurements.empty() || bases.Visited(point);
    if (canBeSolved) point.flags &= ~std::uint32_t{PointPlaced};
  });
}

}  // namespace orvane
