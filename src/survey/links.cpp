#include "survey/links.h"

#include "geo/earth.h"
#include "model/workspace.h"

#include <unordered_map>
#include <vector>

// Each pair of points with shots between them gets one link in either direction. While measurements
// are collected a link holds weighted sums; when both its ends have been visited the sums become
// means, and its reverse holds their mirror.
//
// Bearings are averaged as plain numbers: 359 and 1 degrees give 180. See docs/compatibility.md.

namespace orvane {

namespace {

constexpr float HalfTurn = 180.0F;
constexpr float FullTurn = 360.0F;

/// Finds the link from a point to another one. Searching the list for each shot would take
/// quadratic time at a hub with thousands of shots.
class LinkFinder {
 public:
  explicit LinkFinder(Link*& head) : head_(head) {}

  Link* Find(const Point* other) {
    if (indexed_) {
      const auto found = byOther_.find(other);
      return found == byOther_.end() ? nullptr : found->second;
    }
    int steps = 0;
    for (Link* link = head_; link != nullptr; link = link->next) {
      if (link->other == other) return link;
      if (++steps > LongestSearch) {
        Index();
        return Find(other);
      }
    }
    return nullptr;
  }

  void PushFront(Link& link) {
    link.next = head_;
    head_ = &link;
    if (indexed_) byOther_.emplace(link.other, &link);
  }

 private:
  static constexpr int LongestSearch = 32;

  void Index() {
    for (Link* link = head_; link != nullptr; link = link->next)
      byOther_.emplace(link->other, link);
    indexed_ = true;
  }

  Link*& head_;
  bool indexed_ = false;
  std::unordered_map<const Point*, Link*> byOther_;
};

/// The numbers of a shot in 32 bits, as links hold them.
struct Shot {
  float bearing;
  float distance;
  float inclination;
  float deviation;  ///< degrees, to be added to the bearing

  Shot(const Measurement& reading, const Map& deviationMap)
      : bearing(static_cast<float>(reading.bearing)),
        distance(static_cast<float>(reading.distance)),
        inclination(static_cast<float>(reading.inclination)),
        deviation((reading.flags & MeasureAbsoluteBearing) != 0
                      ? 0
                      : static_cast<float>(deviationMap.magneticDeviation)) {}
};

void AddAltitude(Point& point, std::int64_t weight, float altitude) {
  point.altSum += static_cast<float>(weight) * altitude;
  point.altitudeWeight += weight;
}

void AddPosition(Point& point, std::int64_t weight, const LatLon& place) {
  if (HasAltitude(place.altitude)) AddAltitude(point, weight, place.altitude);
  point.latSum += static_cast<double>(weight) * place.lat;
  point.lonSum += static_cast<double>(weight) * place.lon;
  point.positionWeight += weight;
}

/// The place at the far end of a shot, walked from a known place.
/// \param bearing, inclination  of the step, as `AdvanceByMeasurement` takes them
LatLon WalkFrom(const LatLon& start, const Shot& shot, float bearing, float inclination) {
  Meters position = LatLonToMetersKeepingAltitude({start.lat, 0, start.altitude});
  AdvanceByMeasurement(position, double{bearing}, double{shot.distance}, double{inclination},
                       double{shot.deviation});
  LatLon end = MetersToLatLonKeepingAltitude(position);
  end.lon += start.lon;
  return end;
}

/// A shot to a base of another map is not a link: it is a position reading of the end that is not
/// known.
void AddShotToOtherMap(Point& point, const Measurement& reading) {
  Point& base = *reading.base;
  if (!IsPlaced(base)) {
    const Shot shot(reading, *base.map);
    AddPosition(base, reading.count,
                WalkFrom(point.geo, shot, shot.bearing + HalfTurn, -shot.inclination));
  } else {
    const Shot shot(reading, *point.map);
    AddPosition(point, reading.count, WalkFrom(base.geo, shot, shot.bearing, shot.inclination));
  }
}

/// Collects the measurements of the points of a map and of its basis chain. One walk covers the
/// whole chain, so a point in the lists of both a map and its basis gives its readings once.
class Collector {
 public:
  Collector(Map& map, LinkStore& links) : walk_(map), links_(links) {}

  void CollectMeasurements(Point& point) {
    if (!walk_.FirstVisit(point)) return;
    LinkFinder links(point.links);
    LinkFinder rays(point.rays);
    const bool known = IsPlaced(point);
    for (const Measurement& reading : point.measurements) {
      if (HasAltitude(reading.altitude) && !known) {
        AddAltitude(point, reading.count, reading.altitude);
      }
      if ((reading.flags & MeasureGps) != 0) {
        AddPosition(point, reading.count, reading.position);
      } else if ((reading.flags & MeasureCompass) != 0) {
        if (reading.base->map != point.map) {
          AddShotToOtherMap(point, reading);
        } else if (!known && reading.base != &point) {
          AddShot(point, reading, reading.distance != 0 ? links : rays);
        }
      }
    }
    for (Link* link = point.links; link != nullptr; link = link->next)
      FinishLink(point, *link, false);
    for (Link* ray = point.rays; ray != nullptr; ray = ray->next) FinishLink(point, *ray, true);
  }

  /// Turns the links that still hold sums into means: their far end is in no list, so the walk did
  /// not reach it.
  void FinishOpenLinks() {
    for (Link* link : openLinks_) {
      if (!walk_.Visited(*link->other)) TakeMeans(*link);
    }
  }

 private:
  void AddShot(Point& point, const Measurement& reading, LinkFinder& list) {
    Link* link = list.Find(reading.base);
    if (link == nullptr) {
      link = &MakeLink(point, reading.distance == 0);
      link->other = reading.base;
      list.PushFront(*link);
    }
    const Shot shot(reading, *point.map);
    const auto weight = static_cast<float>(reading.count);
    link->distance += weight * shot.distance;
    link->bearing += weight * shot.bearing;
    link->inclination += weight * shot.inclination;
    if (shot.deviation != 0) link->bearing += weight * shot.deviation;
    link->count += reading.count;
  }

  /// Rays outlive the solve, so the map that made their point owns them.
  Link& MakeLink(Point& holder, bool isRay) {
    return isRay ? holder.map->rayStore.emplace_back() : links_.emplace_back();
  }

  void FinishLink(Point& point, Link& link, bool isRay) {
    Point& far = *link.other;
    if (link.reverse == nullptr) {
      Link& mirror = MakeLink(far, isRay);
      mirror.other = &point;
      Link*& head = isRay ? far.rays : far.links;
      mirror.next = head;
      head = &mirror;
      mirror.reverse = &link;
      link.reverse = &mirror;
    }
    if (walk_.Visited(far)) {
      TakeMeans(link);
    } else {
      PassSumsOn(link);
      openLinks_.push_back(&link);
    }
  }

  /// Divides the sums of a link by its count, and gives its reverse the mirror of the means.
  static void TakeMeans(Link& link) {
    const auto count = static_cast<float>(link.count);
    link.distance /= count;
    link.bearing /= count;
    link.inclination /= count;
    Link& mirror = *link.reverse;
    mirror.bearing = link.bearing - HalfTurn;
    if (mirror.bearing < 0) mirror.bearing += FullTurn;
    MirrorTheRest(link);
  }

  /// Gives the reverse of a link the mirror of its sums, so that the far end can add its own shots.
  static void PassSumsOn(Link& link) {
    const auto count = static_cast<float>(link.count);
    Link& mirror = *link.reverse;
    mirror.bearing = link.bearing - count * HalfTurn;
    if (mirror.bearing < 0) mirror.bearing += count * FullTurn;
    MirrorTheRest(link);
  }

  static void MirrorTheRest(Link& link) {
    link.reverse->distance = link.distance;
    link.reverse->inclination = -link.inclination;
    link.reverse->count = link.count;
  }

  SolverWalk walk_;
  LinkStore& links_;
  std::vector<Link*> openLinks_;  ///< held sums when their holder was visited
};

}  // namespace

SolverWalk::SolverWalk(Map& map) : number_(++map.workspace->solverWalks) {}

void BuildLinks(Map& map, LinkStore& links) {
  Collector collector(map, links);
  for (Map* level = &map; level != nullptr; level = level->basis) {
    ForEachPoint(*level, [&](Point& point) { collector.CollectMeasurements(point); });
  }
  collector.FinishOpenLinks();
}

void FreeLinks(LinkStore& links) {
  // Every link has its mirror, so this reaches each point with links, in a list or not.
  for (const Link& link : links) link.other->links = nullptr;
  links.clear();
}

float MeanAltitude(const Point& point) {
  if (point.altitudeWeight == 0) return NoAltitude;
  return point.altSum / static_cast<float>(point.altitudeWeight);
}

void PlaceFromSums(Point& point) {
  const auto weight = static_cast<double>(point.positionWeight);
  point.geo.lat = point.latSum / weight;
  point.geo.lon = point.lonSum / weight;
  point.geo.altitude = MeanAltitude(point);
  point.flags |= PointPlaced;
}

int CountLinks(const Point& point, int limit) {
  int count = 0;
  for (const Link* link = point.links; link != nullptr && count < limit; link = link->next) ++count;
  return count;
}

}  // namespace orvane
