#pragma once

#include "geo/positions.h"

namespace orvane {

/// The earth as this program sees it: a sphere of 111120 metres to the degree (60 nautical miles
/// of 1852 m), with east scaled by the cosine of the latitude. No ellipsoid and no datum; a study
/// site spans a few kilometres.

constexpr double MetersPerDegree = 111120.0;
constexpr double RadiansPerDegree = 0.017453292519943295;
constexpr double Pi = 3.141592653589793;

/// Pi as the grid cells have always been counted with: the tenth decimal differs. Figures
/// already published follow from it, so it stays.
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
/// is written only if both altitudes are known and is left as it was otherwise.
void DisplacementBetween(const LatLon& a, const LatLon& b, Meters& result);

/// The length in metres of `DisplacementBetween`, altitudes left out.
double GroundDistance(const LatLon& a, const LatLon& b);

/// Walks a compass measurement from its base point to the point that holds it: the bearing runs
/// from the holder to the base, so the step is turned round by 180 degrees, and the inclination
/// from the holder up to the base. A negative distance walks from the holder to the base.
/// \param position     changed in place; an altitude that is not known stays unknown
/// \param bearing      degrees clockwise from north
/// \param distance     metres along the slope
/// \param inclination  degrees, up positive
/// \param deviation    degrees, added to the bearing
void AdvanceByMeasurement(Meters& position, double bearing, double distance, double inclination,
                          double deviation);

/// Linear between `a` (t = 0) and `b` (t = 1); the altitude only if both have one.
LatLon InterpolateLatLon(const LatLon& a, const LatLon& b, double t);

/// What a grid needs for its cells to be counted.
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

/// The cell of a grid in which a place falls, each count clamped to -300 to 300. A grid that is
/// not turned takes no trigonometry at all beyond the projection.
/// A cell size of 0 and coordinates that are no numbers give counts within the same bounds.
CellPosition GridCellOf(double lat, double lon, const GridFrame& grid);

}  // namespace orvane
