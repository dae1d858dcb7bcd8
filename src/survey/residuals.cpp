#include "survey/residuals.h"

#include "geo/earth.h"

#include <cmath>
#include <utility>

namespace orvane {

namespace {

constexpr double PerCent = 100.0;
constexpr double FullTurn = 360.0;
constexpr double HalfTurn = 180.0;
constexpr double QuarterTurn = 90.0;

/// A way on the ground, in metres.
struct GroundStep {
  double north;
  double east;
};

/// The way from a solved point to a place, with east at the latitude of the point.
GroundStep WayTo(const LatLon& point, const LatLon& place) {
  const Meters way = LatLonToMeters(point.lat, place.lon - point.lon);
  return {DegreesToMeters(place.lat - point.lat), way.east};
}

/// \return the difference of two bearings, above -180 and at most 180
double TurnBetween(double from, double to) {
  const double turn = std::remainder(to - from, FullTurn);
  return turn == -HalfTurn ? HalfTurn : turn;
}

void SetGroundError(ReadingResidual& residual, const GroundStep& error) {
  residual.north = error.north;
  residual.east = error.east;
}

/// Not absolute, and all three numbers 0: the point is where its base is.
bool SaysSamePlace(const Measurement& shot) {
  return (shot.flags & MeasureAbsoluteBearing) == 0 && shot.distance == 0 && shot.bearing == 0 &&
         shot.inclination == 0;
}

void MeasureShot(ReadingResidual& residual, double deviation) {
  const Measurement& shot = *residual.reading;
  const LatLon& point = residual.point->geo;
  const LatLon& base = residual.base->geo;
  if (SaysSamePlace(shot)) {
    SetGroundError(residual, WayTo(point, base));
    return;
  }
  const bool isAbsolute = (shot.flags & MeasureAbsoluteBearing) != 0;
  const double bearing = shot.bearing + (isAbsolute ? 0 : deviation);
  const double inclination = shot.inclination * RadiansPerDegree;
  const GroundStep solved = WayTo(point, base);
  const double ground = shot.distance == 0 ? std::hypot(solved.north, solved.east)
                                           : std::cos(inclination) * shot.distance;
  SetGroundError(residual, {solved.north - std::cos(bearing * RadiansPerDegree) * ground,
                            solved.east - std::sin(bearing * RadiansPerDegree) * ground});
  if (shot.distance != 0 && HasAltitude(base.altitude) && HasAltitude(point.altitude)) {
    residual.up =
        double{base.altitude} - shot.distance * std::sin(inclination) - double{point.altitude};
  }
  const bool hasBearing = std::abs(shot.inclination) != QuarterTurn;
  if (hasBearing && (solved.north != 0 || solved.east != 0)) {
    residual.degrees =
        TurnBetween(std::atan2(solved.east, solved.north) / RadiansPerDegree, bearing);
  }
}

/// Collects the residuals of one point after the other.
class Residuals {
 public:
  explicit Residuals(const Map& map) : map_(map) {}

  void AddReadings(const Point& point) {
    if (!IsPlaced(point)) return;
    for (const Measurement& reading : point.measurements) {
      const bool isOfMap =
          point.map == &map_ || (reading.base != nullptr && reading.base->map == &map_);
      if (isOfMap) Add(point, reading);
    }
  }

  std::vector<ReadingResidual> Take() { return std::move(list_); }

 private:
  void Add(const Point& point, const Measurement& reading) {
    if ((reading.flags & MeasureNear) != 0) return;
    if ((reading.flags & MeasureGps) != 0) {
      AddFix(point, reading);
      return;
    }
    if ((reading.flags & MeasureCompass) != 0) AddShot(point, reading);
    AddAltitude(point, reading);
  }

  void AddFix(const Point& point, const Measurement& fix) {
    ReadingResidual residual = Start(point, fix, ResidualKind::Gps);
    SetGroundError(residual, WayTo(point.geo, fix.position));
    const float altitude = HasAltitude(fix.altitude) ? fix.altitude : fix.position.altitude;
    if (HasAltitude(altitude) && HasAltitude(point.geo.altitude)) {
      residual.up = double{altitude} - double{point.geo.altitude};
    }
    Finish(residual);
  }

  void AddShot(const Point& point, const Measurement& shot) {
    if (shot.base == nullptr || shot.base == &point || !IsPlaced(*shot.base)) return;
    ReadingResidual residual = Start(point, shot, ResidualKind::Compass);
    residual.base = shot.base;
    MeasureShot(residual, map_.magneticDeviation);
    Finish(residual);
    if (shot.distance != 0) list_.back().percent = list_.back().meters / shot.distance * PerCent;
  }

  void AddAltitude(const Point& point, const Measurement& reading) {
    if (!HasAltitude(reading.altitude) || !HasAltitude(point.geo.altitude)) return;
    ReadingResidual residual = Start(point, reading, ResidualKind::Altitude);
    residual.up = double{reading.altitude} - double{point.geo.altitude};
    Finish(residual);
  }

  static ReadingResidual Start(const Point& point, const Measurement& reading, ResidualKind kind) {
    ReadingResidual residual;
    residual.point = &point;
    residual.reading = &reading;
    residual.kind = kind;
    return residual;
  }

  void Finish(ReadingResidual& residual) {
    residual.meters = SizeOfError(residual.north, residual.east, residual.up);
    list_.push_back(residual);
  }

  const Map& map_;
  std::vector<ReadingResidual> list_;
};

}  // namespace

std::vector<ReadingResidual> ReadingResiduals(const Map& map,
                                              std::span<const Point* const> points) {
  Residuals residuals(map);
  for (const Point* point : points) residuals.AddReadings(*point);
  return residuals.Take();
}

double SizeOfError(std::optional<double> north, std::optional<double> east,
                   std::optional<double> up) {
  const double n = north.value_or(0);
  const double e = east.value_or(0);
  const double u = up.value_or(0);
  return std::sqrt(n * n + e * e + u * u);
}

}  // namespace orvane
