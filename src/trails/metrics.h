#pragma once

#include "geo/positions.h"
#include "geometry/poly.h"
#include "model/records.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace orvane {

/// What a trail measures. Everything is planar, in the local plane of the trail's points, whose
/// `projected` each of these functions overwrites and leaves as its last step set it.

/// The coefficients a, b, c of altitude = a * north + b * east + c; north and east in metres from
/// the mean of the points.
using Plane = std::array<double, 3>;

/// The lowest and highest altitude of a list, in metres; both -9999 if no point has one.
struct AltitudeSpan {
  double min = static_cast<double>(NoAltitude);
  double max = static_cast<double>(NoAltitude);
};

/// Fills the metric fields of the trail. `area` is filled, and `TrailClosed` set, only if its last
/// point is its first; `plane`, `aspect`, `slope` and `slantedArea`, and `TrailMeasured`, only if
/// a plane then fits. Both areas hold 0.5 more than was measured, for texts that cut to whole
/// metres. Neither flag is ever cleared here.
void MeasureTrail(Trail& trail);

/// \return the plan length in metres; 0 for an empty list
double TrailPathLength(PointSpan points);

/// \return the length along the slope in metres; -9999 if some point has no altitude
double TrailGroundLength(PointSpan points);

/// Of the points that have an altitude. Projects nothing.
AltitudeSpan AltitudeRange(PointSpan points);

/// \return the plan area in square metres, without the 0.5 of `MeasureTrail`
double FlatTrailArea(const Trail& trail);

/// Fits a plane to the altitudes of a closed list, up to the link that repeats the first point.
/// It is the least-squares plane where the points lie evenly about both axes; elsewhere the
/// figures differ from it, and they stay, as those in use were made so. On level ground a and b are
/// exactly 0.
/// \return nothing if a point has no altitude, for fewer than 2 points, or if the points lie in
///         one place or on one line along an axis, which bears no plane, or too far out for the
///         sums
std::optional<Plane> FitPlane(PointSpan points);

/// Rewrites the plane of the points as seen square to the plane that was fitted to them.
/// \param aspect  radians
void TiltPoints(PointSpan points, double aspect, const Plane& plane);

/// The way along a list, over its placed points alone. If `point` itself is not placed the last
/// leg goes to the coordinates that it holds.
/// \param points  from the link on at which the way begins
/// \return metres of plan length to `point`; 0 if it is the first, -1 if it is not in the list
double PathDistanceTo(PointSpan points, const Point& point);

/// The place a distance along a list, over its placed points alone.
/// \param points    from the link on at which the way begins
/// \param stop      the point at which the way ends
/// \param distance  metres; a negative one lies before the beginning
/// \return nothing if the distance goes beyond `stop`, or if `stop` is the first point
std::optional<LatLon> PositionAlongPath(PointSpan points, const Point& stop, double distance);

/// Which segment of a list holds a distance. Not placed points are not left out here.
/// \param distance  metres of plan length
/// \param rest      if not null, receives the metres from that link on: the distance itself if it
///                  is negative, the excess beyond the end of the list
/// \return the index of the link where the segment begins: 0 for a negative distance, the last
///         link beyond the end; nothing for an empty list
std::optional<size_t> SegmentAtDistance(PointSpan points, double distance, double* rest);

/// The plan length of the trail between two points, whichever stands first.
/// \return metres; 0 if neither is on the trail, -1 if only one of them is
double TrailDistanceBetween(const Trail& trail, const Point& p, const Point& q);

/// The place `distance` metres along the trail from `p` towards `q`, whichever stands first. If
/// only `p` is on the trail the way ends with the list; if only `q` is, the place has no meaning.
/// \return nothing if neither is on the trail or the distance goes beyond the other end
std::optional<LatLon> TrailPointBetween(const Trail& trail, const Point& p, const Point& q,
                                        double distance);

/// The text of one line of the tip that hangs at a trail's row. A caller asks from line 0 on until
/// there is none: line 0 measures the trail, later lines read what it left.
/// \param trail              the trail of the row; may be null
/// \param newRow             a row without a trail is the one that makes a new trail
/// \param magneticDeviation  degrees, of the map
/// \param line               from 0
/// \return nothing where the list ends. The degree sign is the byte 0xB0
std::optional<std::string> TrailTipLine(Trail* trail, bool newRow, double magneticDeviation,
                                        int line);

}  // namespace orvane
