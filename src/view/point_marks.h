#pragma once

#include "view/map_window.h"

namespace orvane {

/// The width of the letter by which marks are sized, in the font of labels, which must be the
/// current one of `view.target`.
int LetterWidth(const MapWindow& view);

/// How the marks of one list of points are drawn.
struct MarkLook {
  MarkStyle shape = MarkStyle::None;
  int thickness = 0;  ///< pixels of the lines
  Color color = 0;
  int letterWidth = 0;  ///< from `LetterWidth`
};

/// Draws the mark of a point: its own, if it has one, else the shape of the list. Sizes go by
/// the letter's width, two thirds of which are a mark's radius.
/// \param pixel     where the point is
/// \param previous  the pixel of the point before, to which ticks are at right angles; null for
///                  none, and then no tick is drawn
void DrawPointMark(Canvas& canvas, const MarkLook& look, const Point& point, Pixel pixel,
                   const Pixel* previous);

/// The radius of a point's own mark in pixels.
int OwnMarkRadius(const Point& point, int letterWidth);

/// True if `DrawPointMark` draws something: the point has a mark of its own, or the list has one.
bool HasMark(const MarkLook& look, const Point& point);

/// How many pixels to each side of its own pixel a mark may change.
int MarkReach(const MarkLook& look, const Point& point);

}  // namespace orvane
