#pragma once

#include "view/map_window.h"
#include "view/shown_trails.h"

#include <vector>

namespace orvane {

/// Values of a fill pattern, in the order of the dialogs.
enum FillPattern {
  FillNone = -1,       ///< outline only
  FillRising = 0,      ///< lines that rise to the right
  FillFalling = 1,     ///< lines that fall to the right
  FillHorizontal = 2,  ///< lines along rows
  FillVertical = 3,    ///< lines along columns
  FillDiagonals = 4,   ///< rising and falling
  FillCross = 5,       ///< horizontal and vertical
  FillSolid = 6,
  FillOutline = 7  ///< as `FillNone`; what a file may hold
};

/// Draws the area of each shown trail whose row is visible and filled.
/// \param shown  from `ShownTrails`
void DrawFilledTrails(const MapWindow& view, const std::vector<ShownTrail>& shown);

/// Draws a closed area in a pattern. Hatching is made of lines here and not left to the device, so
/// that it comes out alike on paper.
/// \param points   the ring, open or closed; points that are not placed are left out
/// \param pattern  a `FillPattern`; any other value draws nothing
void DrawPolygonFill(const MapWindow& view, const std::vector<Point*>& points, int pattern,
                     Color color);
/// The same for places.
void DrawPolygonFill(const MapWindow& view, const std::vector<LatLon>& places, int pattern,
                     Color color);

/// Draws lines across a closed area, in the current pen, at multiples of a spacing that hold for
/// the whole canvas: areas that touch are hatched in one piece. Lines outside the clip are left
/// out.
/// \param points   the ring, closed, in pixels
/// \param angle    degrees, counted anticlockwise from the rows; one that is not a number draws
///                 nothing
/// \param spacing  pixels between lines, along the columns (along the rows for lines steeper than
///                 45 degrees); at least 1 is taken
void HatchPolygon(Canvas& canvas, const std::vector<Pixel>& points, double angle, int spacing);

/// The spacing of hatches in a view: 4 units of thick lines, twice that on paper.
int HatchSpacing(const MapWindow& view);

}  // namespace orvane
