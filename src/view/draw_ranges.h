#pragma once

#include "view/map_window.h"

namespace orvane {

/// The box of latitude and longitude, in degrees, that an update rectangle covers.
GeoBounds BoxOfUpdate(const MapWindow& view, const PixelRect& update);

/// Draws the ranges of a view whose bounds meet `box`, as its range rows say: shades of cells and
/// cluster contours, overlaps, then outlines with names, and marks of the points with a measure.
void DrawRanges(MapWindow& view, const GeoBounds& box);

}  // namespace orvane
