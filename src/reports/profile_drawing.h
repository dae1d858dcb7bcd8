#pragma once

#include "elevation/profile.h"
#include "geo/angle_text.h"
#include "view/canvas.h"

namespace orvane {

/// Draws the texts along both axes of a profile that is laid out, and the line over all columns
/// whose altitude is known.
void DrawElevation(const ElevationView& view, CoordinateDisplay display, Canvas& canvas);

/// Lays a profile out for a rectangle of paper and draws it whole, without touching the scroll or
/// the pointer of a window. Reports to the progress of the map's workspace; if that is cancelled, what
/// is drawn is of no use.
void PrintElevation(ElevationView& view, CoordinateDisplay display, const PixelRect& area,
                    Canvas& canvas);

}  // namespace orvane
