#pragma once

#include "model/map.h"

namespace orvane {

/// Computes latitude, longitude and altitude of every point of the map from its measurements:
/// averages for each point and pair of points, a least-squares adjustment of each connected region,
/// closing errors spread in proportion to length, dead ends walked out, and last the points that
/// depend on a named place or only on bearings. The sequence of passes is fixed: no iteration, no
/// tolerance. `PointPlaced` of the points to be solved must be clear. A point that cannot be placed
/// gives a warning and stays without a place. After a cancelled solve the places mean nothing.
/// `Map::closedChains` receives the chains that were closed.
void SolveMap(Map& map);

}  // namespace orvane
