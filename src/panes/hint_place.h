#pragma once

#include "view/canvas.h"

namespace orvane {

/// Where a hint box goes first.
enum class HintPlacement { Under, Over, Centered };

/// Places a hint box in its parent. Where it does not fit under or over its anchor, it changes
/// sides; it is moved left until its right edge is one pixel inside the parent.
/// \param anchor         the pixel that the hint is about, in the parent
/// \param width, height  of the box, in pixels
/// \param parent         right and bottom of the parent's inside, in pixels
/// \param lineHeight     of the text in the box, in pixels
PixelRect PlaceHint(Pixel anchor, int width, int height, Pixel parent, int lineHeight,
                    HintPlacement placement);

}  // namespace orvane
