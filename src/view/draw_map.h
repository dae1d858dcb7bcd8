#pragma once

#include "view/map_window.h"

namespace orvane {

/// Draws the map of a view, and those of its basis chain, on `view.target`: filled trails, ranges,
/// grids, shaded cells, trails, errors of the survey, labels and the Find marker, in this order. Trails are drawn as the
/// rows of `view.trailViews` say, ranges as those of `view.rangeViews`. Across the 180th meridian
/// filled trails, trails and labels are drawn a second time.
///
/// Before: `view.map` and `view.target` are set, `TakeFontMetrics` has run, the caller has set the
/// clip to `update`, cleared it to `view.background`. Pen, brush, font and fore colour of the
/// canvas are changed.
/// After: the clip is as it was; the visited bits of the points show what has a label.
/// \param update  the pixels that are to be redrawn
void DrawMap(MapWindow& view, const PixelRect& update);

}  // namespace orvane
