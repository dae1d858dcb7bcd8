#pragma once

#include "estimates/range_estimates.h"
#include "reports/line_chart.h"
#include "reports/table_report.h"
#include "view/panel_rows.h"

#include <list>
#include <span>
#include <string>
#include <vector>

namespace orvane {

/// The Range Estimates of the ranges that are selected beside a map: a table with a column for each
/// range, and charts of one of them.

/// The ranges of the selected rows, top to bottom, without the overlaps.
std::vector<const Range*> SelectedRangesOnly(const std::list<RangePanelRow>& rows);

/// The name of a range, or "(no name)".
std::string RangeName(const Range& range);

/// An area to four digits at least: "1234 m^2" below a hectare, else "12.34 ha".
std::string EstimateAreaText(double squareMeters);

/// The figures of some ranges, with what is to be known about them above: sentences on each range, or
/// on all of them if they are many.
TableReport EstimatesTable(std::span<const RangeEstimate> estimates);

/// The area of the polygons of 50 to 100 % of the fixes.
LineChart PolygonChart(const RangeEstimate& estimate);

/// The area against the number of days, with the band of the random orders.
LineChart DaysChart(const RangeEstimate& estimate);

/// A density as a picture: what the sets of 50 and 95 % cover, in strips, and the fixes.
struct DensityPicture {
  /// Nodes of one row of the lattice from `begin` to just before `end`.
  struct Strip {
    std::int64_t row = 0;
    std::int64_t begin = 0;
    std::int64_t end = 0;
    bool isCore = false;  ///< within the set of 50 %
  };
  double step = 1;  ///< metres from node to node
  std::vector<Strip> strips;
  std::vector<PlanePlace> fixes;
};

/// \param factor  of the bandwidth
/// \return an empty picture for a range without a kernel
DensityPicture DensityPictureOf(const Range& range, double factor);

/// Draws a density in a rectangle, north up, with a scale bar.
void DrawDensity(const DensityPicture& picture, const PixelRect& place, Canvas& canvas);

/// The charts of one range.
struct EstimateCharts {
  std::string rangeName;
  LineChart polygons;
  LineChart days;
  DensityPicture density;
};

EstimateCharts ChartsOf(const RangeEstimate& estimate, double factor);

/// How many charts `EstimateCharts` has.
constexpr int EstimateChartCount = 3;

/// How wide a chart must be to have room for its texts, in pixels.
int EstimateChartWidth(const Canvas& canvas);

/// How many charts have that room beside each other.
/// \param width  in pixels
/// \return 1 to `EstimateChartCount`
int EstimateChartColumns(int width, const Canvas& canvas);

/// How high charts of that width are that have so many columns and are about square.
int EstimateChartsHeight(int width, const Canvas& canvas);

/// Draws the charts in a rectangle that is white already, the name of the range above.
/// \param columns  1 to `EstimateChartCount`
void DrawEstimateCharts(const EstimateCharts& charts, const PixelRect& place, int columns,
                        Canvas& canvas);

/// The numbers of the first two charts, with tabs between fields.
std::string EstimateChartNumbers(const EstimateCharts& charts);

}  // namespace orvane
