#pragma once

#include "view/map_window.h"
#include "view/shown_trails.h"

#include <vector>

namespace orvane {

/// Draws the line of each shown trail; that of `view.selectedTrail` thick and in `MarkerColor`.
/// Rows are taken in the order of the pane, so later ones are drawn over earlier ones.
/// \param shown  from `ShownTrails`
void DrawTrails(const MapWindow& view, const std::vector<ShownTrail>& shown);

/// Draws the line of one trail with the current pen. Without a rotation, segments that are wholly
/// beyond one edge of the view or beyond 180 degrees from its centre are left out, and a segment
/// along a parallel that runs over this limit is cut there. A segment that leaves the range of
/// pixels that drawing takes is cut at its edge, so what shows of it is on the line between its
/// points. A point that is not placed breaks the line.
void DrawTrailLine(const MapWindow& view, const Trail& trail);

/// The pixels that a length on the ground takes, cut to a whole number: width x scale + 0.5.
int PixelsOfWidth(const MapWindow& view, double meters);

}  // namespace orvane
