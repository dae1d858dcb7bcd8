#pragma once

#include "view/canvas.h"

namespace orvane {

/// Sizes of the panes at the left of a map window, in the window's own pixels.
struct PaneSizes {
  int panelWidth = 100;   ///< width of both lists, without the divider; 0 for no lists
  int panelHeight = 200;  ///< height of the upper list with its title; 0 for no upper list
};

/// Width of the dividers between the panes, in pixels.
constexpr int DividerSize = 5;

/// The width that the lists leave to the map, in pixels.
constexpr int LeastMapWidth = 64;

/// How far an arrow key moves a divider, in pixels.
constexpr int DividerStep = 10;

/// Which divider of a map window.
enum class PaneDivider {
  None,
  BesideMap,     ///< between the lists and the map: moves left and right
  BetweenLists,  ///< between the two lists: moves up and down
};

/// Where everything of a map window is. A pane that is not shown is an empty rectangle.
struct PaneLayout {
  PixelRect trails;        ///< the upper list, with its title
  PixelRect ranges;        ///< the lower list, with its title
  PixelRect map;           ///< the map with its scroll bars
  PixelRect besideMap;     ///< the divider at the left of the map
  PixelRect betweenLists;  ///< the divider between the lists
  PaneSizes sizes;         ///< what the sizes have become: 0 where a pane has vanished
};

/// Lays the panes out. A list that would be narrower, or lower, than a scroll bar vanishes and its
/// size becomes 0; a pane that no longer fits is cut to what there is. Lists of any width leave
/// `LeastMapWidth` to the map, and vanish in a window too narrow for both. The divider beside the
/// map is always there, and the one between the lists while the lists are, so that what has
/// vanished can be pulled back.
/// \param width, height   of the window's inside, in pixels
/// \param scrollBarWidth  the least size of a list
PaneLayout LayOutPanes(int width, int height, const PaneSizes& sizes, int scrollBarWidth);

/// The divider under a pixel.
PaneDivider DividerAt(const PaneLayout& layout, Pixel at);

/// The sizes when a divider is dropped.
/// \param at  the pixel for the middle of the divider; it may be outside the window
PaneSizes SizesAfterDrop(const PaneLayout& layout, PaneDivider divider, Pixel at);

/// The sizes when a divider is moved by some pixels. A pane that has vanished comes back with its
/// least size at the first step, where it is seen.
/// \param pixels  to the right, or down, above 0
/// \param least   the least size of a list, as for `LayOutPanes`
PaneSizes SizesAfterStep(const PaneLayout& layout, PaneDivider divider, int pixels, int least);

}  // namespace orvane
