#pragma once

#include "elevation/profile.h"

#include <functional>
#include <string_view>

namespace orvane {

/// Layout of a profile's window, and what pointer, keys and scroll bar do to its view. Everything
/// that changes the view only moves `viewStart` and `viewEnd`; `RefreshElevation` follows each.

/// The width in pixels of a text in the window's label font.
using TextWidth = std::function<int(std::string_view)>;

/// A horizontal scroll bar, in its own units.
struct ElevationScroll {
  int first = 0;
  int last = 0;
  int proportion = 0;  ///< of the thumb
  int position = 0;    ///< of the thumb
};

/// Brings the view of a trail back on its line and lays the window out. The view of a transect is
/// not held: it may run past both ends.
/// \param right, bottom  size of the window in pixels
void RefreshElevation(ElevationView& view, int right, int bottom, const TextWidth& textWidth);

/// Works out margins, sizes and scales for a rectangle of the screen or of paper and makes the
/// samples. `lineHeight` must be set.
void LayoutElevation(ElevationView& view, int right, int bottom, const TextWidth& textWidth);

/// The scroll bar that belongs to the view. That of a transect is always in the middle, so that
/// it can be moved both ways.
ElevationScroll ElevationScrollBar(const ElevationView& view);

/// \return the distance along the line under a pixel of the window
double DistanceUnder(const ElevationView& view, int x);

/// A button other than the first goes down: the line is held at the pointer.
void StartElevationPan(ElevationView& view, int x);

/// The pointer moves. During a pan the line follows it.
/// \return true if the view changed and is to be refreshed; otherwise the info pane is
bool MoveElevationPointer(ElevationView& view, int x, int y);

/// A button is released.
void EndElevationPan(ElevationView& view);

/// A double click about the pointer.
/// \param closer  the first button halves the span, any other doubles it
void ZoomElevationAbout(ElevationView& view, int x, bool closer);

/// The wheel: the span is divided by `factor`, and what is under the pointer stays there.
/// \param factor  above 0; more than 1 is closer
void ScaleElevation(ElevationView& view, int x, double factor);

/// Moves the view along with fingers or a wheel to the side.
/// \param pixels  by which the line moves to the right
void PanElevation(ElevationView& view, double pixels);

/// Puts all of the line in view.
void ShowWholeLine(ElevationView& view);

/// Moves the view to the beginning of the line, or to its end, with its span.
void ShowLineEnd(ElevationView& view, bool last);

/// Moves the column that the info pane describes, within the plot.
/// \param columns  to the right; negative is to the left
void StepElevationPointer(ElevationView& view, int columns);

/// Shows the info pane if it is hidden, and hides it if it is shown.
void ToggleElevationInfo(ElevationView& view);

/// The keys "+" and "-" about the middle of the view: half the span, or twice the span.
void ZoomElevation(ElevationView& view, bool closer);

/// Moves the view by eighths of its span: 1 for a key or a scroll line, 7 for a scroll page;
/// negative is back.
void ShiftElevation(ElevationView& view, int eighths);

/// The thumb was dragged. Moves the view of a trail, and nothing for a transect.
void ScrollElevationTo(ElevationView& view, int position);

}  // namespace orvane
