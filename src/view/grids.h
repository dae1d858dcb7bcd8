#pragma once

#include "view/map_window.h"

#include <cstdint>
#include <string>

namespace orvane {

/// Draws the grids of the map and its basis chain, with their labels in the current
/// font, unless the view hides grids. The corner is the pixel of its point; lines and labels run
/// from there in steps of pixels. Lines closer together than a pixel are drawn about a pixel apart
/// and lines outside the clip are left out, so a grid of any number of cells is drawn in time
/// that grows only with the window.
void DrawGrids(MapWindow& view);

/// The label of a row or column, as `FormatCellNumber` writes it; a number beyond 32 bits is
/// taken as the nearest within.
/// \return the empty text for a style that has no labels
std::string GridLabel(std::int64_t number, GridStyle style);

}  // namespace orvane
