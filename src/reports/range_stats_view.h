#pragma once

#include "ranges/report_lines.h"
#include "reports/report_view.h"
#include "reports/travel_chart.h"
#include "view/panel_rows.h"

#include <list>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// Lines of a block of Range Stats. The first block of each kind sets it for the rest of the
/// program, and later blocks get as many, so that blocks are equally high; see
/// docs/compatibility.md. 0 until then.
struct RangeStatsCounts {
  int withChart = 0;
  int withoutChart = 0;
  int overlap = 0;
};

/// A piece of Range Stats that is never cut.
struct RangeStatsPart {
  enum class Kind { Title, Chart, Line };
  Kind kind = Kind::Line;
  const RangePanelRow* row = nullptr;  ///< not owned
  int line = 0;                        ///< which line of the row's report
  int top = 0;                         ///< pixels from the top of the report
  int height = 0;
};

/// Logical pixels kept free at either side of Range Stats.
constexpr int RangeStatsMargin = 3;

/// Range Stats as it is drawn: a block for each row with its name, its chart and its lines.
struct RangeStatsView : ReportView {
  std::vector<const RangePanelRow*> rows;  ///< in the order of the pane; not owned
  MeasureNames names;                      ///< of the map
  TravelChartMode chartMeasure = TravelChartMode::Distance;
  bool printing = false;              ///< no lines between blocks, and each has its own height
  int left = RangeStatsMargin;        ///< where lines begin
  int letterWidth = 0;                ///< in pixels; all letters of the lines are equally wide
  std::vector<RangeStatsPart> parts;  ///< top to bottom
};

/// The selected rows that hold a range or an overlap.
std::vector<const RangePanelRow*> SelectedRanges(const std::list<RangePanelRow>& rows);

/// \return a line of the block of a row, counted from 0; nothing after the last
std::optional<std::string> RangeStatsLine(const RangeStatsView& view, const RangePanelRow& row,
                                          int line);

/// Stacks the blocks of `rows` and holds the scroll. Lines that are wider than the view scroll
/// sideways; titles and charts fit it and stay.
void LayoutRangeStats(RangeStatsView& view, RangeStatsCounts& counts);

/// Sets what the chart shows, as the keys 0 to 3 do. A measure without a name, or after one without
/// a name, can't be shown, and without a first name nothing can be chosen.
/// \return true if the report is to be drawn again
bool ChooseChartMeasure(RangeStatsView& view, TravelChartMode measure);

/// Draws the parts that the clip of the canvas shows.
void DrawRangeStats(const RangeStatsView& view, Canvas& canvas);
/// Draws one part at another height.
/// \param top  pixels of the canvas
void DrawRangeStatsPart(const RangeStatsView& view, const RangeStatsPart& part, Canvas& canvas,
                        int top);

}  // namespace orvane
