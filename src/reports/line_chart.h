#pragma once

#include "view/canvas.h"

#include <string>
#include <vector>

namespace orvane {

/// A chart of lines with axes from 0.

struct ChartPoint {
  double x = 0;
  double y = 0;
};

struct ChartLine {
  std::string name;  ///< in the legend; empty for none
  Color color = 0;
  bool dots = false;  ///< a dot at each point
  std::vector<ChartPoint> points;
};

/// An area between two lines over the same values of x.
struct ChartBand {
  std::string name;
  Color color = 0;
  std::vector<ChartPoint> low;
  std::vector<ChartPoint> high;
};

struct LineChart {
  std::string title;
  std::string xTitle;
  std::string yTitle;
  ChartBand band;  ///< drawn below the lines, if it has points
  std::vector<ChartLine> lines;
};

/// The steps of an axis from 0 to at least `largest`: 1, 2 or 5 times a power of ten, at most
/// `most` of them.
/// \return the step; 1 for a largest value that is not above 0
double AxisStep(double largest, int most);

/// Draws a chart in a rectangle, on what is there, with texts in the present fore colour.
void DrawLineChart(const LineChart& chart, const PixelRect& place, Canvas& canvas);

}  // namespace orvane
