#pragma once

#include "view/map_window.h"

namespace orvane {

/// Draws the legs of `view.errors`. Pen and brush of the canvas are changed.
void DrawErrorLegs(const MapWindow& view);

/// Draws the legend of `view.errors` in the lower left corner of the view, if it has one.
void DrawErrorLegend(const MapWindow& view);

}  // namespace orvane
