#pragma once

#include "view/map_window.h"

namespace orvane {

/// The scroll bars of a map know no end of it: they rest in the middle of their way and move the
/// view by steps.

/// The bar counts from 0 to `ScrollRange`, its thumb being `ScrollProportion` long.
constexpr int ScrollRange = 140;
constexpr int ScrollProportion = 20;

/// What was done to a bar. Back is up, or to the left.
enum class ScrollAction {
  LineBack,
  LineForward,
  PageBack,
  PageForward,
  Thumb,       ///< the thumb was let go
  ThumbTrack,  ///< the thumb is being pulled
};

/// The pixels that the map moves down, or to the right: an eighth of the view by line, seven
/// eighths by page, and by a twentieth for each place that the thumb has moved.
/// \param size      height or width of the view, in pixels
/// \param stored    the last place of the thumb
/// \param position  its new place; read only for the thumb
int ScrollStep(ScrollAction action, int size, int stored, int position);

/// Moves the view up or down, and notes the place of the thumb.
/// \return the new position of the bar: where it is pulled to, or at rest
int ScrollVertically(MapWindow& view, ScrollAction action, int position);
/// The same to the left or right.
int ScrollHorizontally(MapWindow& view, ScrollAction action, int position);

/// Puts both bars at rest, as after a change of size.
void ResetScrolling(MapWindow& view);

}  // namespace orvane
