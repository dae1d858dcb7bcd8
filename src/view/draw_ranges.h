#pragma once

#include "view/map_window.h"
#include "view/pixel_mask.h"

namespace orvane {

/// The box of latitude and longitude, in degrees, that an update rectangle covers.
GeoBounds BoxOfUpdate(const MapWindow& view, const PixelRect& update);

/// Draws the ranges of a view whose bounds meet `box`, as its range rows say: shades of cells and
/// cluster contours, overlaps, estimates, then outlines with names, and marks of the points with a measure. A
/// name is in the middle of its range if that is free, otherwise in the nearest free place within
/// the range; without one it stays in the middle.
/// \param taken  the pixels that names avoid, such as those of labels; the names are added to it
void DrawRanges(MapWindow& view, const GeoBounds& box, PixelMask& taken);

}  // namespace orvane
