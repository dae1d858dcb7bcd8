#include "view/map_window.h"

namespace orvane {

void TakeFontMetrics(MapWindow& view) {
  const Canvas& canvas = *view.target;
  view.ascent = canvas.Ascent(CanvasFont::Small);
  view.lineHeight = canvas.LineHeight(CanvasFont::Small);
  view.labelAscent = canvas.Ascent(CanvasFont::Label);
  view.labelHeight = canvas.LineHeight(CanvasFont::Label);
  view.penWidthFactor = static_cast<float>(view.labelHeight) / 8.0F;
}

}  // namespace orvane
