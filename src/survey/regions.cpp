#include "survey/regions.h"

#include "geo/earth.h"
#include "model/point_origin.h"
#include "model/workspace.h"
#include "survey/links.h"
#include "survey/region_system.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <optional>

// A region consists of junctions and the chains between them:
//
//      J---o---o---J---o        o  a pass-through point: two links and no reading
//      |           |            J  a junction: a reading, or three links and more
//      o           o---J
//      |           |            the last "o" at the right is a dead end, not part of a chain
//      J---o---o---o
//
// Only junctions enter the least-squares system; the points of a chain then share its closing
// error, and dead ends are walked out last. No walk is recursive, since a trail of a hundred
// thousand stations would be one chain of calls.

namespace orvane {

namespace {

constexpr int LinksOfJunction = 3;

bool HoldsReading(const Point& point) {
  return point.positionWeight != 0 || point.altitudeWeight != 0;
}

bool IsJunction(const Point& point) {
  return point.links != nullptr &&
         (HoldsReading(point) || CountLinks(point, LinksOfJunction) == LinksOfJunction);
}

/// A walk that has reached `point` and continues along `next`.
struct WalkStep {
  Point* point;
  Link* next;
};

/// Walks the links of the map's own points depth first, calling `visit` where a point is met first.
template <typename Visit>
void WalkRegion(Map& map, Point& start, Visit visit) {
  const SolverWalk walk(map);
  std::vector<WalkStep> stack;
  const auto enter = [&](Point& point) {
    if (!walk.FirstVisit(point)) return;
    visit(point);
    stack.push_back({&point, point.links});
  };
  enter(start);
  while (!stack.empty()) {
    Link* link = stack.back().next;
    if (link == nullptr) {
      stack.pop_back();
      continue;
    }
    stack.back().next = link->next;
    enter(*link->other);
  }
}

std::vector<Point*> CollectJunctions(Map& map, Point& point) {
  std::vector<Point*> junctions;
  WalkRegion(map, point, [&](Point& met) {
    if (IsJunction(met)) junctions.push_back(&met);
  });
  std::reverse(junctions.begin(), junctions.end());
  return junctions;
}

/// The step along one link: from the point that holds it to its far end.
struct LinkStep {
  double north;
  double east;
  double up;

  explicit LinkStep(const Link& link) {
    const double inclination = double{link.inclination} * RadiansPerDegree;
    const double bearing = double{link.bearing} * RadiansPerDegree;
    const double distance = double{link.distance};
    const double horizontal = std::cos(inclination) * distance;
    north = std::cos(bearing) * horizontal;
    east = std::sin(bearing) * horizontal;
    up = std::sin(inclination) * distance;
  }
};

/// The other link of a point that has two.
Link* LinkOnward(const Point& point, const Link* comingFrom) {
  Link* link = point.links;
  assert(link != nullptr && link->next != nullptr);
  return link == comingFrom ? link->next : link;
}

/// Follows one link of a junction to the next junction. \return nothing for a dead end, and where
/// the chain was followed from its other end before
std::optional<Chain> FollowChain(Point& junction, Link& first) {
  if (first.walked || first.reverse->walked) return std::nullopt;
  Chain chain;
  chain.start = &junction;
  chain.firstLink = &first;
  for (Link* link = &first;;) {
    const LinkStep step(*link);
    chain.altitude = static_cast<float>(double{chain.altitude} + step.up);
    chain.north += step.north;
    chain.east += step.east;
    chain.length += double{link->distance};
    ++chain.legs;
    link->walked = true;
    Point& far = *link->other;
    if (IsJunction(far)) {
      chain.end = &far;
      return chain;
    }
    if (CountLinks(far, 2) == 1) return std::nullopt;
    link = LinkOnward(far, link->reverse);
  }
}

std::vector<Chain> BuildChains(const std::vector<Point*>& junctions) {
  std::vector<Chain> chains;
  for (Point* junction : junctions) {
    for (Link* link = junction->links; link != nullptr; link = link->next) {
      if (const auto chain = FollowChain(*junction, *link)) chains.push_back(*chain);
    }
  }
  std::reverse(chains.begin(), chains.end());
  return chains;
}

/// Warns of a region without any fix, and starts it at one of its points.
void HangFreeRegion(Map& map, Point& holder) {
  const OriginScope about = AboutPoint(map.workspace->messages, holder);
  NoteWarning(
      map.workspace->messages,
      "No absolute position found for connected region containing %s in %s",
      {holder.name.empty() ? "<nameless point>" : std::string_view(holder.name), map.shownName});
  holder.positionWeight = 1;
}

/// The ends of a chain in the plane in which its closing error is spread.
struct ChainEnds {
  Meters start;
  Meters end;

  explicit ChainEnds(const Chain& chain) {
    const LatLon& from = chain.start->geo;
    const LatLon& to = chain.end->geo;
    start = LatLonToMetersKeepingAltitude({from.lat, 0, from.altitude});
    end = LatLonToMetersKeepingAltitude({to.lat, to.lon - from.lon, to.altitude});
  }
};

/// Records what each chain misses its end by, and spreads it.
void CloseChains(Map& map, const std::vector<Chain>& chains) {
  for (const Chain& chain : chains) {
    if (chain.length != 0) map.closedChains.push_back(MeasureClosingError(chain));
    SpreadClosingError(chain);
  }
}

/// Walks from every placed point of the region, so that branches off the chains are reached.
void PropagateRegion(Map& map, Point& start) {
  WalkRegion(map, start, [](Point& point) {
    if (IsPlaced(point)) PropagateFrom(point);
  });
}

/// Places the far end of a link, walked from the placed point that holds the link.
void PlaceFarEnd(const Point& point, const Link& link) {
  Meters position = LatLonToMeters(point.geo.lat, 0);
  AdvanceByMeasurement(position, double{link.bearing}, -double{link.distance},
                       double{link.inclination}, 0);
  if (HasAltitude(point.geo.altitude)) {
    position.altitude = static_cast<float>(double{point.geo.altitude} + LinkStep(link).up);
  }
  Point& far = *link.other;
  far.geo = MetersToLatLonKeepingAltitude(position);
  far.geo.lon += point.geo.lon;
  far.flags |= PointPlaced;
}

}  // namespace

Region FindRegion(Map& map, Point& point) {
  Region region;
  region.junctions = CollectJunctions(map, point);
  region.chains = BuildChains(region.junctions);
  return region;
}

void SpreadClosingError(const Chain& chain) {
  if (chain.length == 0) return;
  const ChainEnds ends(chain);
  Meters at = ends.start;
  const Meters& target = ends.end;
  const double northError = (target.north - at.north - chain.north) / chain.length;
  const double eastError = (target.east - at.east - chain.east) / chain.length;
  double altitudeError = 0;
  if (chain.altitude != 0 && HasAltitude(at.altitude) && HasAltitude(target.altitude)) {
    altitudeError =
        (double{target.altitude} - double{at.altitude} - double{chain.altitude}) / chain.length;
  }
  for (const Link* link = chain.firstLink; link->other != chain.end;) {
    const LinkStep step(*link);
    const double distance = double{link->distance};
    if (HasAltitude(at.altitude)) {
      at.altitude = static_cast<float>(double{at.altitude} + distance * altitudeError + step.up);
    }
    at.east += step.east + distance * eastError;
    at.north += step.north + distance * northError;
    Point& point = *link->other;
    point.geo = MetersToLatLonKeepingAltitude(at);
    point.geo.lon += chain.start->geo.lon;
    point.flags |= PointPlaced;
    link = LinkOnward(point, link->reverse);
  }
}

ClosedChain MeasureClosingError(const Chain& chain) {
  const ChainEnds ends(chain);
  ClosedChain closed;
  closed.from = chain.start;
  closed.to = chain.end;
  closed.legs = chain.legs;
  closed.length = chain.length;
  closed.north = ends.start.north + chain.north - ends.end.north;
  closed.east = ends.start.east + chain.east - ends.end.east;
  if (HasAltitude(ends.start.altitude) && HasAltitude(ends.end.altitude)) {
    closed.up = double{ends.start.altitude} + double{chain.altitude} - double{ends.end.altitude};
  }
  return closed;
}

void PropagateFrom(Point& point) {
  std::vector<WalkStep> stack{{&point, point.links}};
  while (!stack.empty()) {
    const WalkStep step = stack.back();
    if (step.next == nullptr) {
      stack.pop_back();
      continue;
    }
    stack.back().next = step.next->next;
    Point& far = *step.next->other;
    if (IsPlaced(far)) continue;
    PlaceFarEnd(*step.point, *step.next);
    stack.push_back({&far, far.links});
  }
}

void SolveRegion(Map& map, Point& point) {
  if (point.links == nullptr) {
    if (point.positionWeight != 0) PlaceFromSums(point);
    return;
  }
  const Region region = FindRegion(map, point);
  const auto isFix = [](const Point* junction) { return junction->positionWeight != 0; };
  const auto& junctions = region.junctions;
  auto fix = std::find_if(junctions.begin(), junctions.end(), isFix);
  if (fix == junctions.end()) {
    HangFreeRegion(map, junctions.empty() ? point : *junctions.front());
    fix = junctions.begin();
  }
  if (junctions.size() >= 2) {
    SolveRegionSystem(region);
    CloseChains(map, region.chains);
    PropagateRegion(map, point);
    return;
  }
  // One junction, or none in a plain loop: there is nothing to adjust. A chain begins and ends at
  // the one junction and is closed there.
  Point& holder = fix == junctions.end() ? point : **fix;
  PlaceFromSums(holder);
  CloseChains(map, region.chains);
  PropagateFrom(holder);
}

}  // namespace orvane
