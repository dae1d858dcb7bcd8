#pragma once

#include "model/map.h"

namespace orvane {

/// Turns what was measured into a latitude, longitude and altitude for every point of the map:
/// averages at each point and pair of points, one least-squares adjustment of each connected
/// region, closing errors spread along the shots in proportion to length, dead ends walked out,
/// and at last the points that hang on a named place or on bearings alone. A fixed sequence of
/// passes: no iteration, no tolerance.
/// The placed mark of the points to be solved must be clear. What can't be placed gives a warning
/// and stays without a place. Solving that is called off leaves places that mean nothing.
void SolveMap(Map& map);

}  // namespace orvane
