#pragma once

#include "ranges/report_lines.h"
#include "view/canvas.h"

#include <cstddef>

namespace orvane {

/// What the chart of a range shows over the hours of the day.
enum class TravelChartMode { Distance = 0, Sm1 = 1, Sm2 = 2, Sm3 = 3 };

/// The number of the measure that a mode shows, from 0. The mode must not be `Distance`.
size_t MeasureOf(TravelChartMode mode);

/// Where and how a report draws its charts. The report has set the canvas's font.
struct TravelChartState {
  Canvas* target = nullptr;  ///< not owned
  int lineHeight = 0;        ///< pixels, ascent and descent of the font
  int ascent = 0;            ///< pixels above the baseline
  int margin = 0;            ///< pixels kept free at either side
  int width = 0;             ///< pixels
  int scroll = 0;            ///< pixels by which the report is scrolled
  TravelChartMode mode = TravelChartMode::Distance;
  MeasureNames names;                  ///< of the map
  Color foreground = ForegroundColor;  ///< of texts, axes and the line of the hours
};

/// The height of a chart in lines: the plot, its title and the labels of the hours.
constexpr int TravelChartLines = 17;

/// The value at the upper end of an axis for a greatest value: a round number above it.
double ChartAxisTop(double peak);

/// Draws the chart of a range: a grey line through the slots of five minutes and one in the
/// foreground through the hours, with axes. Distances are metres per hour, measures percent.
/// \param top  pixels from the beginning of the report
void DrawTravelChart(const TravelChartState& state, const Range& range, int top);

}  // namespace orvane
