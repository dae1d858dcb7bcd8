#include "geo/earth.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// A place further than this many cells from the corner counts in the outermost cell.
constexpr double MostCells = 300;

/// \return the whole cell count of a distance in cells; 0 for a value that is not a number
double CellCount(double cells) {
  if (std::isnan(cells)) return 0;
  return std::clamp(std::floor(cells), -MostCells, MostCells);
}

}  // namespace

double DegreesToMeters(double degrees) { return degrees * MetersPerDegree; }

double MetersToDegrees(double meters) { return meters / MetersPerDegree; }

Meters LatLonToMeters(double lat, double lon) {
  Meters meters;
  meters.north = lat * MetersPerDegree;
  meters.east = std::cos(lat * RadiansPerDegree) * lon * MetersPerDegree;
  return meters;
}

Meters LatLonToMetersKeepingAltitude(const LatLon& place) {
  Meters meters = LatLonToMeters(place.lat, place.lon);
  meters.altitude = place.altitude;
  return meters;
}

LatLon MetersToLatLon(double north, double east) {
  LatLon place;
  place.lat = north / MetersPerDegree;
  place.lon = east / (std::cos(place.lat * RadiansPerDegree) * MetersPerDegree);
  return place;
}

LatLon MetersToLatLonKeepingAltitude(const Meters& meters) {
  LatLon place = MetersToLatLon(meters.north, meters.east);
  place.altitude = meters.altitude;
  return place;
}

void AddMeters(LatLon& place, double north, double east) {
  place.lat += north / MetersPerDegree;
  place.lon += east / (std::cos(place.lat * RadiansPerDegree) * MetersPerDegree);
}

void AddMetersRotated(LatLon& place, double x, double y, double angle) {
  const double radians = angle * RadiansPerDegree;
  const double cosine = std::cos(radians);
  const double sine = std::sin(radians);
  AddMeters(place, x * cosine - y * sine, y * cosine + x * sine);
}

void DisplacementBetween(const LatLon& a, const LatLon& b, Meters& result) {
  const double meanLat = (a.lat + b.lat) / 2;
  result.east = std::cos(meanLat * RadiansPerDegree) * (b.lon - a.lon) * MetersPerDegree;
  result.north = (b.lat - a.lat) * MetersPerDegree;
  if (HasAltitude(a.altitude) && HasAltitude(b.altitude)) result.altitude = b.altitude - a.altitude;
}

double GroundDistance(const LatLon& a, const LatLon& b) {
  Meters step;
  DisplacementBetween(a, b, step);
  return std::sqrt(step.north * step.north + step.east * step.east);
}

// By half the angle, which keeps its digits for places side by side, where a cosine would be 1.
double GreatCircleMeters(const LatLon& a, const LatLon& b) {
  const double north = std::sin((b.lat - a.lat) * RadiansPerDegree / 2);
  const double east = std::sin((b.lon - a.lon) * RadiansPerDegree / 2);
  const double chord = north * north + std::cos(a.lat * RadiansPerDegree) *
                                           std::cos(b.lat * RadiansPerDegree) * east * east;
  return DegreesToMeters(2 * std::asin(std::sqrt(std::min(chord, 1.0))) / RadiansPerDegree);
}

// The point P that has the measurement sees its base B under the bearing. The walk starts at B, so
// P is in the opposite direction:
//
//        B            bearing: P to B
//       /             walked:  B to P, so 180 degrees are added, and the rise from P to B is
//      P                       subtracted from the altitude of B
void AdvanceByMeasurement(Meters& position, double bearing, double distance, double inclination,
                          double deviation) {
  double back = bearing + deviation + 180;
  if (back >= 360) back -= 360;
  const double backRadians = back * RadiansPerDegree;
  const double inclinationRadians = inclination * RadiansPerDegree;
  if (HasAltitude(position.altitude)) {
    position.altitude = static_cast<float>(static_cast<double>(position.altitude) -
                                           std::sin(inclinationRadians) * distance);
  }
  position.north += std::cos(backRadians) * (std::cos(inclinationRadians) * distance);
  position.east += std::sin(backRadians) * (std::cos(inclinationRadians) * distance);
}

LatLon InterpolateLatLon(const LatLon& a, const LatLon& b, double t) {
  LatLon place;
  place.lat = a.lat + (b.lat - a.lat) * t;
  place.lon = a.lon + (b.lon - a.lon) * t;
  if (HasAltitude(a.altitude) && HasAltitude(b.altitude)) {
    const double from = static_cast<double>(a.altitude);
    place.altitude = static_cast<float>(from + (static_cast<double>(b.altitude) - from) * t);
  }
  return place;
}

CellPosition GridCellOf(double lat, double lon, const GridFrame& grid) {
  const Meters meters = LatLonToMeters(lat, lon - grid.cornerLon);
  double x = meters.north - DegreesToMeters(grid.cornerLat);
  double y = meters.east;
  if (grid.angle != 0) {
    const double radians = grid.angle * GridPi / 180;
    const double cosine = std::cos(radians);
    const double sine = std::sin(radians);
    const double north = x;
    const double east = y;
    x = cosine * north + sine * east;
    y = -sine * north + cosine * east;
  }
  return {CellCount(x / grid.cellSize), CellCount(y / grid.cellSize)};
}

}  // namespace orvane
