#pragma once

#include "geo/positions.h"
#include "geometry/poly.h"

namespace orvane {

/// Local planes. Every analysis works on the `projected` fields of its points, in metres, and
/// overwrites them: points keep the coordinates of the operation that ran last. East is scaled by
/// the cosine of each point's own latitude; there is no spherical geometry.

/// Projects about a reference: north = lat * 111120 - lat0 * 111120,
/// east = cos(lat) * (lon - lon0) * 111120, no projected altitude. The reference 0, 0 gives the
/// absolute coordinates that points of a solved map have.
/// \param points  their `projected` is overwritten
/// \param lon0    degrees
/// \param lat0    degrees
void ProjectPoints(PointSpan points, double lon0, double lat0);

/// `ProjectPoints` with the centre of the bounds of the points.
void ProjectAboutCentre(PointSpan points);

/// Projects with absolute north (lat * 111120) and east about the mean longitude of the list. A
/// point that is in the list twice counts twice in the mean.
void LocalPlaneOfPoints(PointSpan points);

/// The centre of the bounds, (max + min) / 2, in degrees; 0, 0 for an empty list.
LatLon PolyCentre(PointSpan points);

/// The mean latitude and longitude of a list, in degrees, summed in list order. A point that is in
/// the list twice counts twice. 0, 0 for an empty list.
LatLon MeanPlace(PointSpan points);

/// The distance in metres between two points in the plane of their `projected` fields.
double PlanDistance(const Point& a, const Point& b);

}  // namespace orvane
