#include "panes/pane_layout.h"

#include <algorithm>

namespace orvane {

namespace {

bool Contains(const PixelRect& rect, Pixel at) {
  return at.x >= rect.left && at.x < rect.right && at.y >= rect.top && at.y < rect.bottom;
}

/// The size that a pane gets out of `room` pixels.
int FittedSize(int wanted, int room, int least) {
  const int size = std::min(wanted, room);
  return size < least ? 0 : size;
}

/// A size that grows by a step: from nothing to what is shown at all.
int SteppedSize(int size, int step, int least) {
  const int stepped = std::max(0, size + step);
  return size == 0 && step > 0 ? std::max(stepped, least) : stepped;
}

}  // namespace

PaneLayout LayOutPanes(int width, int height, const PaneSizes& sizes, int scrollBarWidth) {
  PaneLayout layout;
  const int least = std::max(1, scrollBarWidth);
  const int panel = FittedSize(sizes.panelWidth, width - DividerSize - LeastMapWidth, least);
  const int mapLeft = std::min(std::max(width, 0), panel + DividerSize);
  layout.besideMap = {panel, 0, mapLeft, height};
  layout.map = {mapLeft, 0, std::max(mapLeft, width), height};
  layout.sizes = {panel, sizes.panelHeight};
  if (panel == 0) return layout;

  const int upper = FittedSize(sizes.panelHeight, height - DividerSize, least);
  const int lowerTop = std::min(std::max(height, 0), upper + DividerSize);
  layout.sizes.panelHeight = upper;
  if (upper > 0) layout.trails = {0, 0, panel, upper};
  layout.betweenLists = {0, upper, panel, lowerTop};
  if (height - lowerTop >= least) layout.ranges = {0, lowerTop, panel, height};
  return layout;
}

PaneDivider DividerAt(const PaneLayout& layout, Pixel at) {
  if (Contains(layout.besideMap, at)) return PaneDivider::BesideMap;
  if (Contains(layout.betweenLists, at)) return PaneDivider::BetweenLists;
  return PaneDivider::None;
}

PaneSizes SizesAfterDrop(const PaneLayout& layout, PaneDivider divider, Pixel at) {
  PaneSizes sizes = layout.sizes;
  if (divider == PaneDivider::BesideMap) sizes.panelWidth = std::max(0, at.x - DividerSize / 2);
  if (divider == PaneDivider::BetweenLists) sizes.panelHeight = std::max(0, at.y - DividerSize / 2);
  return sizes;
}

PaneSizes SizesAfterStep(const PaneLayout& layout, PaneDivider divider, int pixels, int least) {
  PaneSizes sizes = layout.sizes;
  if (divider == PaneDivider::BesideMap) {
    sizes.panelWidth = SteppedSize(sizes.panelWidth, pixels, least);
  }
  if (divider == PaneDivider::BetweenLists) {
    sizes.panelHeight = SteppedSize(sizes.panelHeight, pixels, least);
  }
  return sizes;
}

}  // namespace orvane
