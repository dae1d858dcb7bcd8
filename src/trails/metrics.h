#pragma once

#include "geo/positions.h"
#include "geometry/poly.h"
#include "model/records.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace orvane {

/// Measures of a trail. Everything is planar, in the local plane of the trail's points. Each of
/// these functions overwrites the `projected` of the points and leaves it as its last step set it.

/// The coefficients a, b, c of altitude = a * north + b * east + c; north and east in metres from
/// the mean of the points.
using Plane = std::array<double, 3>;

/// The lowest and highest altitude of a list, in metres; both -9999 if no point has one.
struct AltitudeSpan {
  double min = static_cast<double>(NoAltitude);
  double max = static_cast<double>(NoAltitude);
};

/// Fills the metric fields of the trail. `area` is filled, and `TrailClosed` set, only if its last
/// point is its first; `plane`, `aspect`, `slope` and `slantedArea` are filled, and `TrailMeasured`
/// set, only if a plane then fits. Both areas hold 0.5 more than was measured, for texts that cut
/// them to whole metres. No flag is cleared here.
void MeasureTrail(Trail& trail);

/// \return the plan length in metres; 0 for an empty list
double TrailPathLength(PointSpan points);

/// \return the length along the slope in metres; -9999 if some point has no altitude
double TrailGroundLength(PointSpan points);

/// Of the points that have an altitude. Does not project.
AltitudeSpan AltitudeRange(PointSpan points);

/// \return the plan area in square metres, without the 0.5 of `MeasureTrail`
double FlatTrailArea(const Trail& trail);

/// Fits a plane to the altitudes of a closed list, up to the link that repeats the first point. It
/// is the least-squares plane if the points are evenly spread about both axes, and an approximation
/// elsewhere; see docs/compatibility.md. On level ground a and b are exactly 0.
/// \return nothing if a point has no altitude, for fewer than 2 points, if all points are in one
///         place or on one line along an axis, or if they are too far out for the sums
std::optional<Plane> FitPlane(PointSpan points);

/// Replaces the plane of the points by the view at right angles to their fitted plane.
/// \param aspect  radians
void TiltPoints(PointSpan points, double aspect, const Plane& plane);

/// The length of the way along a list, over its placed points only. If `point` itself is not
/// placed, the last leg goes to its coordinates.
/// \param points  from the link where the way begins
/// \return metres of plan length to `point`; 0 if it is the first, -1 if it is not in the list
double PathDistanceTo(PointSpan points, const Point& point);

/// The place at a distance along a list, over its placed points only.
/// \param points    from the link where the way begins
/// \param stop      the point where the way ends
/// \param distance  metres; a negative one is before the beginning
/// \return nothing if the distance is beyond `stop`, or if `stop` is the first point
std::optional<LatLon> PositionAlongPath(PointSpan points, const Point& stop, double distance);

/// The segment of a list at a distance. Points that are not placed count here.
/// \param distance  metres of plan length
/// \param rest      if not null, receives the metres from that link on: the distance itself if it
///                  is negative, the excess if it is beyond the end of the list
/// \return the index of the link where the segment begins: 0 for a negative distance, the last link
///         beyond the end; nothing for an empty list
std::optional<size_t> SegmentAtDistance(PointSpan points, double distance, double* rest);

/// The plan length of the trail between two points, in either order.
/// \return metres; 0 if neither is on the trail, -1 if only one of them is
double TrailDistanceBetween(const Trail& trail, const Point& p, const Point& q);

/// The place `distance` metres along the trail from `p` towards `q`, in either order. If only `p`
/// is on the trail, the way ends with the list; if only `q` is, the place has no meaning.
/// \return nothing if neither is on the trail or the distance is beyond the other end
std::optional<LatLon> TrailPointBetween(const Trail& trail, const Point& p, const Point& q,
                                        double distance);

/// One line of the tip of a trail's row. Ask from line 0 on until there is none: line 0 measures
/// the trail, and later lines use its result.
/// \param trail              the trail of the row; may be null
/// \param newRow             true for the row that makes a new trail
/// \param magneticDeviation  degrees, of the map
/// \param line               from 0
/// \return nothing after the last line. The degree sign is the byte 0xB0
std::optional<std::string> TrailTipLine(Trail* trail, bool newRow, double magneticDeviation,
                                        int line);

}  // namespace orvane
