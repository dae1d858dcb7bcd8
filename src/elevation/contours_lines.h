#pragma once

#include "model/map.h"

#include <forward_list>
#include <map>
#include <vector>

namespace orvane {

/// Lines that were traced, until all are known and a map gets them at once.

/// One line: its vertices in order, each with the level as its altitude.
struct ContourLine {
  float level = 0;  ///< metres
  std::vector<LatLon> vertices;
  bool closed = false;  ///< the first vertex ends the line too; it is in `vertices` once
};

/// Makes a trail of each line and puts them in front of a list, the last line foremost.
/// \param counts  the running number of each level's last line; updated
/// \param trails  a list of the map
/// \param store   keeps the vertices, which belong to no map's lists
void MakeContourTrails(const std::vector<ContourLine>& lines, std::map<double, int>& counts,
                       std::forward_list<Trail>& trails, ScratchPoints& store);

}  // namespace orvane
