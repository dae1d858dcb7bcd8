#pragma once

#include "base/colors.h"
#include "geo/positions.h"

#include <string>
#include <vector>

namespace orvane {

/// Lines over the map that show how far readings are off.

/// One reading: a leg from point to point, or a line from a point to where its fix puts it.
struct ErrorLeg {
  LatLon from;
  LatLon to;
  Color color = 0;
  bool strong = false;  ///< drawn thick, with a mark at both ends
};

/// One colour of the legend, and what it means.
struct ErrorClass {
  Color color = 0;
  std::string text;
};

/// What a view shows of the errors of its survey; nothing unless a window has filled it.
struct ErrorOverlay {
  std::vector<ErrorLeg> legs;      ///< later ones are drawn over earlier ones
  std::string title;               ///< of the legend
  std::vector<ErrorClass> legend;  ///< from top to bottom; empty for none
};

}  // namespace orvane
