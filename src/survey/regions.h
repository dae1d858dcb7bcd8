#pragma once

#include "model/map.h"

#include <vector>

namespace orvane {

/// A run of links between two junctions, over points that nothing else holds. The sums are signed
/// so that `end` minus `start` equals them.
struct Chain {
  Point* start = nullptr;
  Point* end = nullptr;
  Link* firstLink = nullptr;  ///< at `start`
  double north = 0;           ///< metres, the sum of the horizontal steps
  double east = 0;            ///< metres
  float altitude = 0;         ///< metres, the sum of the vertical steps
  double length = 0;          ///< metres along the slope
};

/// One connected part of a survey.
struct Region {
  std::vector<Point*>
      junctions;              ///< points with readings or at least three links; last found first
  std::vector<Chain> chains;  ///< last found first
};

/// Takes a region apart from one of its points, which must have links.
Region FindRegion(Map& map, Point& point);

/// Gives the points between the two ends of a chain their places: each step as measured, plus its
/// share of the closing error in proportion to its length. The ends must be placed.
void SpreadClosingError(const Chain& chain);

/// Walks out from a placed point over all links to points that are not placed yet.
void PropagateFrom(Point& point);

/// Solves the region that `point` belongs to. A point without links takes its place from its own
/// readings, or is left as it is if it has none. A region without any fix gives a warning and
/// hangs on latitude 0, longitude 0.
void SolveRegion(Map& map, Point& point);

}  // namespace orvane
