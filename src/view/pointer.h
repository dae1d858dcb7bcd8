#pragma once

#include "view/view_transform.h"

#include <array>

namespace orvane {

/// What the mouse does to a view: the left button draws a rubber band, any other drags the map.

/// A rubber band must be longer than this, rows and columns together, in pixels of a screen of
/// usual fineness.
constexpr int SmallestBand = 4;

/// What a release of the button came to.
struct PointerOutcome {
  bool viewMoved = false;      ///< the map must be redrawn
  bool transectDrawn = false;  ///< the transect along `selection` is to be shown
};

/// True while a rubber band is drawn, from `pressPoint` to `pointer`.
bool IsBandDrawn(const MapWindow& view);

/// The pixels of the two corners of the `selection`, rounded as those of `MapToScreen`. A corner
/// outside the window is where it is, however far away; `RoundToPixel` cuts it at the edges of what
/// drawing can take.
std::array<ExactPixel, 2> SelectionCorners(const MapWindow& view);

/// A button goes down: a drag begins.
/// \param otherButton  a button other than the left one: the drag moves the map
void PressPointer(MapWindow& view, Pixel at, bool otherButton);

/// The pointer has moved. A pan moves the map with it; a rubber band that leaves the window scrolls
/// the map towards it.
/// \return true if the map must be redrawn
bool MovePointer(MapWindow& view, Pixel at);

/// The button is let go. With an input target the place of the press goes there. Otherwise a band
/// longer than `smallestBand` becomes the `selection`, and then: a transect with control held or in
/// `transectMode` (which control sets), the area for the printer with shift (`MapWindowAreaShown`),
/// nothing more after a pan, else a zoom to the band. What follows no press is nothing.
/// \param smallestBand  `SmallestBand` in pixels of the view, so that a hand that shakes a little
///                      draws no band on a screen of fine pixels either
PointerOutcome ReleasePointer(MapWindow& view, Pixel at, const HeldKeys& keys,
                              int smallestBand = SmallestBand);

/// Ends a drag without any effect, as when the window loses the mouse.
void CancelPointer(MapWindow& view);

/// Moves the map by whole pixels, right and down above 0, as two fingers or a wheel do.
/// \return true if the map must be redrawn; false during a drag, and for no pixels
bool PanBy(MapWindow& view, int columns, int rows);

/// Escape: ends a drag without any effect, the transect mode, and the box around the area for the
/// printer. The `selection` itself stays until the next one.
/// \return false if there was nothing to end
bool EscapePointer(MapWindow& view);

/// Scrolls towards a pixel outside of the window, faster the farther it is; `pressPoint` is moved
/// by as many pixels. Along the columns each logical pixel moves the map by a metre, whatever the
/// scale is.
void ScrollToward(MapWindow& view, Pixel at);

}  // namespace orvane
