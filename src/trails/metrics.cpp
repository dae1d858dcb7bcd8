#include "trails/metrics.h"

#include "base/number_text.h"
#include "geo/angle_text.h"
#include "geo/earth.h"
#include "geometry/planes.h"
#include "geometry/polygon.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace orvane {
namespace {

/// Added to areas, for texts that cut to whole square metres.
constexpr double AreaRounding = 0.5;

constexpr double SquareMetersPerKm2 = 1000000;
constexpr double SquareMetersPerHectare = 10000;

double Altitude(const Point& point) { return static_cast<double>(point.geo.altitude); }

bool IsClosed(PointSpan points) { return !points.empty() && points.back() == points.front(); }

/// Puts the placed points of a list into their local plane; the others keep theirs.
void ProjectPlaced(PointSpan points) {
  std::vector<Point*> placed;
  std::copy_if(points.begin(), points.end(), std::back_inserter(placed),
               [](const Point* point) { return IsPlaced(*point); });
  LocalPlaneOfPoints(placed);
}

/// The links of a closed list up to the one that repeats the first point.
PointSpan UntilRepeat(PointSpan points) {
  for (size_t i = 1; i < points.size(); ++i) {
    if (points[i] == points[0]) return points.first(i);
  }
  return points;
}

/// The rest of a trail's list from the first link whose point is `p` or `q`; empty if there is
/// none.
PointSpan FromEither(const Trail& trail, const Point& p, const Point& q) {
  const auto link = std::find_if(trail.points.begin(), trail.points.end(),
                                 [&](const Point* point) { return point == &p || point == &q; });
  return {link, trail.points.end()};
}

/// True if all points have the same altitude.
bool IsLevel(PointSpan points) {
  return std::all_of(points.begin(), points.end(), [&](const Point* point) {
    return point->geo.altitude == points.front()->geo.altitude;
  });
}

/// The sums from which a plane is fitted: x north, y east, z altitude.
struct PlaneSums {
  double n = 0;
  double z = 0;
  double x = 0;
  double y = 0;
  double xx = 0;
  double yy = 0;
  double xy = 0;
  double zx = 0;
  double zy = 0;
};

PlaneSums SumsOf(PointSpan points) {
  PlaneSums sums;
  for (const Point* point : points) {
    const double x = point->projected.north;
    const double y = point->projected.east;
    const double z = Altitude(*point);
    sums.n += 1;
    sums.z += z;
    sums.x += x;
    sums.y += y;
    sums.xx += x * x;
    sums.yy += y * y;
    sums.xy += x * y;
    sums.zx += z * x;
    sums.zy += z * y;
  }
  return sums;
}

/// A whole number of square metres, cut; an area that is not a number shows as 0.
std::string WholeText(double area) {
  return FormatFixed(std::isfinite(area) ? std::trunc(area) : 0, 0);
}

std::string AreaText(const std::string& label, double area) {
  if (area >= SquareMetersPerKm2) {
    return label + FormatFixed(area / SquareMetersPerKm2, 2) + "km^2";
  }
  if (area >= SquareMetersPerHectare) {
    return label + FormatFixed(area / SquareMetersPerHectare, 2) + "ha";
  }
  return label + WholeText(area) + "m^2";
}

std::string AspectText(const Trail& trail, double magneticDeviation) {
  double degrees = trail.aspect / RadiansPerDegree + 90;
  if (degrees < 0) degrees += 360;
  if (degrees >= 360) degrees -= 360;
  return "Aspect " + FormatFixed(degrees, 0) + DegreeSign + " (Compass " +
         FormatFixed(degrees - magneticDeviation, 0) + DegreeSign + ")";
}

std::string SlopeText(const Trail& trail) {
  return "Slope (along aspect) " + FormatFixed(trail.slope / RadiansPerDegree, 1) + DegreeSign;
}

std::string PlaneText(const Trail& trail) {
  return FormatGeneral(trail.plane[0]) + "*n+" + FormatGeneral(trail.plane[1]) + "*e+" +
         FormatGeneral(trail.plane[2]);
}

/// The lengths, altitudes and the area, lines 1 to 3: a line without a value shows the next one, so
/// trails without altitudes show their area first. If only some altitudes are known, their span is
/// on lines 1 and 2.
std::optional<std::string> ExtentLine(const Trail& trail, int line) {
  const bool hasLength = HasAltitude(trail.groundLength);
  if (line == 1 && hasLength) {
    return "Ground length: " + FormatFixed(trail.groundLength, 2) + "m";
  }
  if (line <= 2 && HasAltitude(trail.minAltitude)) {
    return "Min Alt: " + FormatGeneral(trail.minAltitude) +
           "m, Max Alt: " + FormatGeneral(trail.maxAltitude) + "m";
  }
  if (line == 2 && !hasLength) return std::nullopt;
  if (!IsClosed(trail)) return std::nullopt;
  return AreaText("Area: ", trail.area);
}

}  // namespace

void MeasureTrail(Trail& trail) {
  trail.groundLength = TrailGroundLength(trail.points);
  const AltitudeSpan altitudes = AltitudeRange(trail.points);
  trail.minAltitude = altitudes.min;
  trail.maxAltitude = altitudes.max;
  if (!IsClosed(trail.points)) return;

  trail.flags |= TrailClosed;
  trail.area = FlatTrailArea(trail) + AreaRounding;
  const std::optional<Plane> plane = FitPlane(trail.points);
  if (!plane) return;
  trail.flags |= TrailMeasured;
  const auto [a, b, c] = *plane;
  trail.plane[0] = a;
  trail.plane[1] = b;
  trail.plane[2] = c;
  trail.aspect = std::atan2(b, a);
  trail.slope = std::atan(std::cos(trail.aspect) * a + std::sin(trail.aspect) * b);
  TiltPoints(trail.points, trail.aspect, *plane);
  trail.slantedArea = PolygonArea(trail.points) + AreaRounding;
}

double TrailPathLength(PointSpan points) {
  LocalPlaneOfPoints(points);
  double length = 0;
  for (size_t i = 0; i + 1 < points.size(); ++i) length += PlanDistance(*points[i], *points[i + 1]);
  return length;
}

double TrailGroundLength(PointSpan points) {
  for (const Point* point : points) {
    if (!HasAltitude(point->geo.altitude)) return static_cast<double>(NoAltitude);
  }
  LocalPlaneOfPoints(points);
  double length = 0;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const Point& from = *points[i];
    const Point& to = *points[i + 1];
    const double north = to.projected.north - from.projected.north;
    const double east = to.projected.east - from.projected.east;
    const double up = Altitude(to) - Altitude(from);
    length += std::sqrt(north * north + east * east + up * up);
  }
  return length;
}

AltitudeSpan AltitudeRange(PointSpan points) {
  AltitudeSpan range;
  for (const Point* point : points) {
    const double altitude = Altitude(*point);
    if (!HasAltitude(altitude)) continue;
    if (!HasAltitude(range.min) || altitude < range.min) range.min = altitude;
    if (!HasAltitude(range.max) || altitude > range.max) range.max = altitude;
  }
  return range;
}

double FlatTrailArea(const Trail& trail) {
  const LatLon mean = MeanPlace(trail.points);
  ProjectPoints(trail.points, mean.lon, mean.lat);
  const double area = PolygonArea(trail.points);
  // Afterwards the points have their absolute north again.
  LocalPlaneOfPoints(trail.points);
  return area;
}

std::optional<Plane> FitPlane(PointSpan points) {
  const PointSpan ring = UntilRepeat(points);
  if (ring.size() < 2) return std::nullopt;
  for (const Point* point : ring) {
    if (!HasAltitude(point->geo.altitude)) return std::nullopt;
  }
  const LatLon mean = MeanPlace(ring);
  ProjectPoints(points, mean.lon, mean.lat);
  const PlaneSums s = SumsOf(ring);
  const double spreadEast = s.n * s.yy - s.y * s.y;
  const double spreadNorth = s.n * s.xx - s.x * s.x;
  const double skew = s.n * s.xy - s.x * s.y;
  const double riseNorth = s.n * s.zx - s.z * s.x;
  const double riseEast = s.n * s.zy - s.z * s.y;
  // A least-squares fit would subtract the square of the skew, and use the skew in the numerators
  // too. See docs/compatibility.md.
  const double scale = spreadEast * spreadNorth + skew * skew;
  if (scale == 0 || !std::isfinite(scale)) return std::nullopt;
  // Level ground has no slope at all; the rounding errors in the sums would give it an aspect.
  if (IsLevel(ring)) return Plane{0, 0, Altitude(*ring.front())};
  return Plane{
      riseNorth * spreadEast / scale, riseEast * spreadNorth / scale,
      (s.z * scale - riseNorth * spreadEast * s.x - riseEast * spreadNorth * s.y) / (s.n * scale)};
}

void TiltPoints(PointSpan points, double aspect, const Plane& plane) {
  for (Point* point : points) point->flags &= ~std::uint32_t{PointVisited};
  const LatLon mean = MeanPlace(points);
  ProjectPoints(points, mean.lon, mean.lat);
  const double cosine = std::cos(aspect);
  const double sine = std::sin(aspect);
  // With the aspect of the same plane this is 0, so the flat and the slanted area are alike. See
  // docs/compatibility.md.
  const double k = cosine * plane[1] - sine * plane[0];
  const double stretch = std::sqrt(k * k + 1);
  for (Point* point : points) {
    if ((point->flags & PointVisited) != 0) continue;
    point->flags |= PointVisited;
    const Meters flat = point->projected;
    point->projected.east = cosine * flat.east + sine * flat.north;
    point->projected.north = (cosine * flat.north - sine * flat.east) * stretch;
  }
}

double PathDistanceTo(PointSpan points, const Point& point) {
  if (!points.empty() && points.front() == &point) return 0;
  ProjectPlaced(points);
  double length = 0;
  const Point* last = nullptr;
  for (const Point* next : points) {
    if (next != &point && !IsPlaced(*next)) continue;
    if (last != nullptr) length += PlanDistance(*last, *next);
    if (next == &point) return length;
    last = next;
  }
  return -1;
}

std::optional<LatLon> PositionAlongPath(PointSpan points, const Point& stop, double distance) {
  if (!points.empty() && points.front() == &stop) return std::nullopt;
  ProjectPlaced(points);
  const Point* last = nullptr;
  for (const Point* next : points) {
    if (next != &stop && !IsPlaced(*next)) continue;
    if (last != nullptr) {
      const double length = PlanDistance(*last, *next);
      if (length == distance) return next->geo;
      if (length > distance) {
        return InterpolateLatLon(last->geo, next->geo, length == 0 ? 0 : distance / length);
      }
      distance -= length;
    }
    if (next == &stop) return std::nullopt;
    last = next;
  }
  return std::nullopt;
}

std::optional<size_t> SegmentAtDistance(PointSpan points, double distance, double* rest) {
  if (points.empty()) return std::nullopt;
  size_t link = 0;
  if (!(distance < 0)) {
    LocalPlaneOfPoints(points);
    for (; link + 1 < points.size(); ++link) {
      const double length = PlanDistance(*points[link], *points[link + 1]);
      if (distance < length) break;
      distance -= length;
    }
  }
  if (rest != nullptr) *rest = distance;
  return link;
}

double TrailDistanceBetween(const Trail& trail, const Point& p, const Point& q) {
  const PointSpan rest = FromEither(trail, p, q);
  if (rest.empty()) return 0;
  return PathDistanceTo(rest, rest.front() == &p ? q : p);
}

std::optional<LatLon> TrailPointBetween(const Trail& trail, const Point& p, const Point& q,
                                        double distance) {
  const PointSpan rest = FromEither(trail, p, q);
  if (rest.empty()) return std::nullopt;
  if (rest.front() == &p) return PositionAlongPath(rest, q, distance);
  return PositionAlongPath(rest, p, PathDistanceTo(rest, p) - distance);
}

std::optional<std::string> TrailTipLine(Trail* trail, bool newRow, double magneticDeviation,
                                        int line) {
  if (trail == nullptr) {
    if (newRow && line == 0) return "Create a new trail";
    return std::nullopt;
  }
  const bool isMeasured = (trail->flags & TrailMeasured) != 0;
  switch (line) {
    case 0:
      if (!isMeasured) MeasureTrail(*trail);
      return "Path length: " + FormatFixed(TrailPathLength(trail->points), 2) + "m";
    case 1:
    case 2:
    case 3:
      return ExtentLine(*trail, line);
    case 4:
      if (!isMeasured) return std::nullopt;
      return AreaText("Slanted Area: ", trail->slantedArea + AreaRounding);
    case 5:
      return AspectText(*trail, magneticDeviation);
    case 6:
      return SlopeText(*trail);
    case 7:
      return PlaneText(*trail);
    default:
      return std::nullopt;
  }
}

}  // namespace orvane
