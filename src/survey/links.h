#pragma once

#include "model/map.h"

#include <deque>

namespace orvane {

/// Starts a walk over points: `FirstVisit` is true once for each point of a walk.
class SolverWalk {
 public:
  explicit SolverWalk(Map& map);

  bool Visited(const Point& point) const { return point.solverVisit == number_; }
  /// Marks the point. \return true if the walk has not reached it before
  bool FirstVisit(Point& point) const {
    if (Visited(point)) return false;
    point.solverVisit = number_;
    return true;
  }

 private:
  std::uint64_t number_;
};

/// Holds the links that have a length, for one solve.
using LinkStore = std::deque<Link>;

/// Collects the measurements of the map's points, and of the points of its basis chain, as sums,
/// links and rays.
void BuildLinks(Map& map, LinkStore& links);

/// Clears the link lists of all points, and the store. Rays stay on the points, and the next
/// `BuildLinks` adds to them.
void FreeLinks(LinkStore& links);

/// Gives a point the weighted mean of its position and altitude readings. `positionWeight` must not
/// be 0.
void PlaceFromSums(Point& point);

/// \return the weighted mean of the point's altitude readings; `NoAltitude` if it has none
float MeanAltitude(const Point& point);

/// The number of links, counted up to `limit`.
int CountLinks(const Point& point, int limit);

}  // namespace orvane
