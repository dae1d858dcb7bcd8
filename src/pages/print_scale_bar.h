#pragma once

#include "pages/print_map_window.h"

#include <string>

namespace orvane {

/// The measures of the scale bar of a page.
struct PrintScaleBar {
  double power = 1;          ///< metres: the power of ten that the labels are written by
  double segmentMeters = 0;  ///< metres of one segment: a whole multiple of `power`
  int segmentPixels = 1;     ///< its length on paper, at least 1
  int segments = 0;          ///< how many there are, so that the bar is about an inch long
};

/// Chooses segments of at most a centimetre on paper that are a round number of metres.
PrintScaleBar MakePrintScaleBar(const PrintMapWindow& view);

/// The text at the end of a segment.
/// \param count  which segment, from 1
std::string ScaleBarLabel(const PrintScaleBar& bar, int count);

/// Pixels from the top to the foot of the bar, and between the bar and its labels.
int ScaleBarHeight(const PrintMapWindow& view);
int ScaleBarGap(const PrintMapWindow& view);

/// Draws the bar with its labels: odd ones above it, even ones below.
/// \param at  its left end and its lower edge
void DrawPrintScaleBar(const PrintMapWindow& view, Pixel at);

}  // namespace orvane
