#pragma once

#include "view/view_transform.h"

#include <array>

namespace orvane {

/// Draws the shaded cells of the map and its basis chain: first the full ones, then
/// insets and outlines, then hatched ones, so that each kind is drawn over the ones before.
void DrawGridShades(MapWindow& view);

/// The corners of a cell in whole pixels, in order round it, the first repeated. They may be beyond
/// the pixels that drawing takes.
using CellRing = std::array<ExactPixel, 5>;

/// The corners of a shaded cell: north-west, north-east, south-east and south-west of a grid that
/// is not turned.
CellRing CellPolygon(const MapWindow& view, const GridShade& shade);

/// Shrinks a cell about its centre until its side is `size` pixels long, in whole pixels; a cell
/// whose first side is no longer than that stays as it is.
/// \param corners  changed in place
void ShrinkPolygon(CellRing& corners, double size);

/// Hatches a shaded cell with the current pen.
/// The hatch angle is `shade.value`, in degrees clockwise from the columns.
void HatchCell(const MapWindow& view, const GridShade& shade);

}  // namespace orvane
