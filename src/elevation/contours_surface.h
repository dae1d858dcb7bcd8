#pragma once

#include "geometry/poly.h"
#include "model/map.h"

#include <vector>

namespace orvane {

/// The ground as contours see it. There is no triangulation: the altitude of a place is the mean of
/// all known altitudes, each weighted by the inverse square of its distance. Latitude and longitude
/// are taken as a plane in degrees, without the cosine of the latitude.

/// The points of the map that have an altitude, each once: those of its trails, then loose and
/// nameless ones, the one met last in front. Those of a basis map do not count. Uses and leaves
/// `PointVisited`.
std::vector<Point*> CollectAltitudePoints(const Map& map);

/// The steepest rise between any two points, those closer than 3 metres left out: two fixes of one
/// place would make a cliff.
/// \return metres per degree; 0 if there is no such pair or all are level
double MaxSlope(PointSpan points);

/// The altitude of a place: the sum of altitude * w over the sum of w, both in list order, with
/// w = 1 / (dlat * dlat + dlon * dlon).
/// \param lat, lon  degrees
/// \return metres; at the exact place of a point the altitude of the first one there;
///         not a number for an empty list
double SurfaceAltitude(PointSpan points, double lat, double lon);

}  // namespace orvane
