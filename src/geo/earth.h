#pragma once

#include "geo/positions.h"

namespace orvane {

/// The earth as a sphere of 111120 metres to the degree (60 nautical miles of 1852 m), with east
/// scaled by the cosine of the latitude. No ellipsoid and no datum; a study site spans a few
/// kilometres.

constexpr double MetersPerDegree = 111120.0;
constexpr double RadiansPerDegree = 0.017453292519943295;
constexpr double Pi = 3.141592653589793;

/// Pi for counting grid cells. Its tenth decimal differs from `Pi`; see docs/compatibility.md.
constexpr double GridPi = 3.141592653689793;

/// degrees to metres along a meridian
double DegreesToMeters(double degrees);
/// metres along a meridian to degrees
double MetersToDegrees(double meters);

/// Projects a place: north = lat * 111120, east = cos(lat) * lon * 111120, no altitude.
/// \param lat  degrees
/// \param lon  degrees, usually a difference from a reference longitude
Meters LatLonToMeters(double lat, double lon);
/// As `LatLonToMeters`, with the altitude of `place`.
Meters LatLonToMetersKeepingAltitude(const LatLon& place);

/// The inverse of `LatLonToMeters`; the cosine is taken at the new latitude. No altitude.
LatLon MetersToLatLon(double north, double east);
/// As `MetersToLatLon`, with the altitude of `meters`.
LatLon MetersToLatLonKeepingAltitude(const Meters& meters);

/// Moves `place` by metres north, then by metres east at the new latitude.
void AddMeters(LatLon& place, double north, double east);

/// Turns (x, y) by `angle` degrees and moves `place` by it: north = x cos a - y sin a,
/// east = y cos a + x sin a.
void AddMetersRotated(LatLon& place, double x, double y, double angle);

/// The step from `a` to `b` in metres, with east taken at the mean latitude. `result.altitude`
/// is written only if both altitudes are known.
void DisplacementBetween(const LatLon& a, const LatLon& b, Meters& result);

/// The length in metres of `DisplacementBetween`, without altitudes.
double GroundDistance(const LatLon& a, const LatLon& b);

/// The shortest way over the sphere from `a` to `b` in metres, without altitudes; for places that are
/// far apart.
double GreatCircleMeters(const LatLon& a, const LatLon& b);

/// Walks a compass measurement from its base to the point that has it. The bearing is from that
/// point to the base, so the step is turned by 180 degrees; the inclination is from that point up
/// to the base. A negative distance walks towards the base.
/// \param position     changed in place; an unknown altitude stays unknown
/// \param bearing      degrees clockwise from north
/// \param distance     metres along the slope
/// \param inclination  degrees, up positive
/// \param deviation    degrees, added to the bearing
void AdvanceByMeasurement(Meters& position, double bearing, double distance, double inclination,
                          double deviation);

/// Linear between `a` (t = 0) and `b` (t = 1); the altitude only if both have one.
LatLon InterpolateLatLon(const LatLon& a, const LatLon& b, double t);

/// The grid data that cell counts need.
struct GridFrame {
  double cornerLat = 0;  ///< degrees
  double cornerLon = 0;  ///< degrees
  double cellSize = 0;   ///< metres
  double angle = 0;      ///< degrees by which the grid is turned
};

/// Cell counts from a grid's corner, whole numbers held as doubles.
struct CellPosition {
  double alongNorth = 0;
  double alongEast = 0;
};

/// The grid cell that contains a place, each count clamped to -300 to 300. For a grid that is not
/// turned, only the projection uses trigonometry. A cell size of 0 and coordinates that are not
/// numbers give counts within the same bounds.
CellPosition GridCellOf(double lat, double lon, const GridFrame& grid);

}  // namespace orvane
