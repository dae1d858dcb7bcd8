#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// A run of links between two junctions, over points without other links or readings. The sums are
/// signed so that `end` minus `start` equals them.
struct Chain {
  Point* start = nullptr;
  Point* end = nullptr;
  Link* firstLink = nullptr;  ///< at `start`
  double north = 0;           ///< metres, the sum of the horizontal steps
  double east = 0;            ///< metres
  float altitude = 0;         ///< metres, the sum of the vertical steps
  double length = 0;          ///< metres along the slope
  int legs = 0;
};

/// One connected part of a survey.
struct Region {
  std::vector<Point*>
      junctions;              ///< points with readings or at least three links; last found first
  std::vector<Chain> chains;  ///< last found first
};

/// Finds the region of a point, which must have links.
Region FindRegion(Map& map, Point& point);

/// Places the points between the two ends of a chain: each step as measured, plus its share of the
/// closing error in proportion to its length. The ends must be placed.
void SpreadClosingError(const Chain& chain);

/// Measures by how much a chain misses its end. The ends must be placed.
ClosedChain MeasureClosingError(const Chain& chain);

/// Walks from a placed point along all links to the points that are not placed yet.
void PropagateFrom(Point& point);

/// Solves the region that `point` belongs to. A point without links is placed from its own
/// readings; without readings it is left as it is. A region without a fix gives a warning and
/// starts at latitude 0, longitude 0. `Map::closedChains` receives the chains that have a length.
void SolveRegion(Map& map, Point& point);

}  // namespace orvane
