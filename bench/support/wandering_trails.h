#pragma once

#include "geo/earth.h"
#include "model/map.h"
#include "support/dice.h"

#include <string>

namespace orvane {

/// Fills a map with placed points named P0, P1, … on trails of a hundred points each, named by
/// their first point, that wander over a site of ten kilometres near the equator.
inline void AddWanderingTrails(Map& map, int points) {
  constexpr int PointsOfTrail = 100;
  constexpr double Extent = 10000;  // metres
  constexpr double Step = 20;       // metres
  constexpr double SouthEdge = 1.5;
  constexpr double WestEdge = 30;
  Dice dice(7);
  double north = 0;
  double east = 0;
  for (int i = 0; i < points; ++i) {
    if (i % PointsOfTrail == 0) {
      map.trails.emplace_front().name = "trail " + std::to_string(i);
      north = dice.Between(0, Extent);
      east = dice.Between(0, Extent);
    }
    north += dice.Between(-Step, Step);
    east += dice.Between(-Step, Step);
    Point& point = MakePoint(map, "P" + std::to_string(i));
    point.geo = MetersToLatLon(DegreesToMeters(SouthEdge) + north, east);
    point.geo.lon += WestEdge;
    point.flags |= PointPlaced;
    map.trails.front().points.push_back(&point);
  }
}

}  // namespace orvane
