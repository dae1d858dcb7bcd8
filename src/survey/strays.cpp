#include "survey/strays.h"

#include "geo/earth.h"
#include "model/name_index.h"
#include "model/point_origin.h"
#include "model/workspace.h"
#include "places/resolve_location.h"
#include "survey/links.h"
#include "survey/positions.h"
#include "survey/stray_turns.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace orvane {

namespace {

constexpr double QuarterTurn = 90.0;

/// Computes places from bearing-only shots. A point whose rays lead to unplaced points tries to
/// place these first, on a stack of its own.
class RayCrossings {
 public:
  /// \return true if the point has a place now
  bool IntersectRays(Point& point) {
    if (point.rays == nullptr || !Ask(point)) return false;
    while (!stack_.empty()) {
      if (!Advance()) Finish();
    }
    return IsPlaced(point);
  }

  /// A place was found by other means: what failed before may succeed now.
  void NoteGain() {
    if (!failed_.empty()) failed_.clear();
  }

  /// \return the points that were placed since the last call
  std::vector<const Point*> TakePlaced() { return std::exchange(placed_, {}); }

 private:
  /// One point whose rays are being crossed, and the state of that work.
  struct Crossing {
    Point* point;
    std::vector<Link*> rays;      ///< in list order
    std::vector<Point*> shifted;  ///< the far ends that were known at the start
    double meanLon = 0;           ///< degrees, of the known far ends
    double northShift = 0;        ///< metres, of their mean latitude
    size_t first = 0;             ///< the next pair to cross
    size_t second = 1;
    double northSum = 0;
    double eastSum = 0;
    int pairs = 0;
  };

  /// Begins with a point, unless it is being worked on, has failed since the last gain, or sees no
  /// placed point. \return true if it was put on the stack
  bool Ask(Point& point) {
    if (underWay_.contains(&point) || failed_.contains(&point)) return false;
    Crossing crossing;
    crossing.point = &point;
    double latSum = 0;
    double lonSum = 0;
    for (Link* ray = point.rays; ray != nullptr; ray = ray->next) {
      crossing.rays.push_back(ray);
      if (!IsPlaced(*ray->other)) continue;
      crossing.shifted.push_back(ray->other);
      latSum += ray->other->geo.lat;
      lonSum += ray->other->geo.lon;
    }
    if (crossing.shifted.empty()) {
      failed_.insert(&point);
      return false;
    }
    const auto known = static_cast<double>(crossing.shifted.size());
    crossing.meanLon = lonSum / known;
    crossing.northShift = DegreesToMeters(latSum / known);
    for (Point* other : crossing.shifted) {
      const Meters at = LatLonToMeters(other->geo.lat, other->geo.lon - crossing.meanLon);
      other->projected.north = at.north - crossing.northShift;
      other->projected.east = at.east;
    }
    underWay_.insert(&point);
    stack_.push_back(std::move(crossing));
    return true;
  }

  /// Crosses pairs of rays until one needs a point that has to be placed first.
  /// \return false if all pairs are done
  bool Advance() {
    Crossing& crossing = stack_.back();
    while (crossing.first + 1 < crossing.rays.size()) {
      Link& a = *crossing.rays[crossing.first];
      if (!IsPlaced(*a.other)) {
        if (Ask(*a.other)) return true;
        NextFirst(crossing);
        continue;
      }
      if (crossing.second == crossing.rays.size()) {
        NextFirst(crossing);
        continue;
      }
      Link& b = *crossing.rays[crossing.second];
      if (!IsPlaced(*b.other) && Ask(*b.other)) return true;
      if (IsPlaced(*b.other)) CrossPair(crossing, a, b);
      ++crossing.second;
    }
    return false;
  }

  static void NextFirst(Crossing& crossing) {
    ++crossing.first;
    crossing.second = crossing.first + 1;
  }

  static void CrossPair(Crossing& crossing, const Link& a, const Link& b) {
    const double slopeA = std::tan((QuarterTurn - double{a.bearing}) * RadiansPerDegree);
    const double slopeB = std::tan((QuarterTurn - double{b.bearing}) * RadiansPerDegree);
    if (slopeA == slopeB) return;
    const Meters& atA = a.other->projected;
    const Meters& atB = b.other->projected;
    const double east =
        (slopeA * atA.east - slopeB * atB.east + atB.north - atA.north) / (slopeA - slopeB);
    const double north = (east - atB.east) * slopeB + atB.north;
    crossing.northSum += north;
    crossing.eastSum += east;
    ++crossing.pairs;
  }

  /// Finishes the point on top of the stack, placed or failed.
  void Finish() {
    const Crossing crossing = std::move(stack_.back());
    stack_.pop_back();
    Point& point = *crossing.point;
    underWay_.erase(&point);
    for (Point* other : crossing.shifted) other->projected.north += crossing.northShift;
    if (crossing.pairs == 0) {
      failed_.insert(&point);
      return;
    }
    const double north = crossing.northSum / crossing.pairs + crossing.northShift;
    point.geo = MetersToLatLon(north, crossing.eastSum / crossing.pairs);
    point.geo.lon += crossing.meanLon;
    point.flags |= PointPlaced;
    ProjectPoint(point);
    placed_.push_back(&point);
    NoteGain();
  }

  std::vector<Crossing> stack_;
  std::unordered_set<const Point*> underWay_;
  std::unordered_set<const Point*> failed_;  ///< since the last gain
  std::vector<const Point*> placed_;
};

/// A reading of distance, bearing and inclination 0 says that the point is at its base.
bool IsTie(const Measurement& reading) {
  return (reading.flags & MeasureCompass) != 0 && (reading.flags & MeasureAbsoluteBearing) == 0 &&
         reading.distance == 0 && reading.bearing == 0 && reading.inclination == 0;
}

bool PlaceByNearName(Map& map, Point& point, LocationNeeds& needs) {
  if (point.measurements.empty()) return false;
  const Measurement& newest = point.measurements.front();
  if ((newest.flags & MeasureNear) == 0) return false;
  const auto location = ResolveLocation(map, newest.nearName, &needs);
  if (!location) return false;
  point.geo = location->place;
  point.flags |= PointPlaced;
  return true;
}

bool PlaceByTie(Point& point) {
  for (const Measurement& reading : point.measurements) {
    if (!IsTie(reading)) continue;
    if (!IsPlaced(*reading.base)) return false;
    const float ownAltitude = MeanAltitude(point);
    point.geo = reading.base->geo;
    if (HasAltitude(ownAltitude)) point.geo.altitude = ownAltitude;
    point.flags |= PointPlaced;
    return true;
  }
  return false;
}

/// Tries each way to place a stray, in turn.
/// \param needs  receives the points on which its near text depends
/// \return true if it has a place now
bool SolveStrayPoint(Map& map, Point& point, RayCrossings& crossings, LocationNeeds& needs) {
  const bool gained =
      PlaceByNearName(map, point, needs) || crossings.IntersectRays(point) || PlaceByTie(point);
  if (gained) crossings.NoteGain();
  return gained;
}

/// True if only a near text can place the point.
bool HasOnlyNearText(const Point& point) {
  return point.rays == nullptr &&
         std::none_of(point.measurements.begin(), point.measurements.end(), IsTie);
}

}  // namespace

void SolveStrayPoints(Map& map) {
  std::vector<Point*> strays;
  SolverWalk walk(map);
  ForEachPoint(map, [&](Point& point) {
    if (!IsPlaced(point) && walk.FirstVisit(point)) strays.push_back(&point);
  });
  const NameIndexScope index(map);
  RayCrossings crossings;
  StrayTurns turns(strays.size());
  while (const auto turn = turns.Next()) {
    Point& point = *strays[*turn];
    LocationNeeds needs;
    // It may have been placed meanwhile as part of another.
    if (IsPlaced(point)) {
      turns.NoteGain();
    } else if (SolveStrayPoint(map, point, crossings, needs)) {
      turns.NoteGain();
      turns.Wake(point);
    } else if (needs.complete && HasOnlyNearText(point)) {
      turns.WaitFor(needs.points);
    } else {
      turns.TryEachPass();
    }
    for (const Point* placed : crossings.TakePlaced()) turns.Wake(*placed);
  }
  for (const Point* point : strays) {
    if (IsPlaced(*point)) continue;
    const OriginScope about = AboutPoint(map.workspace->messages, *point);
    NoteWarning(map.workspace->messages, "No position found for point %s", {point->name});
  }
}

}  // namespace orvane
