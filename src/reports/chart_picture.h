#pragma once

#include "reports/travel_chart.h"
#include "view/panel_rows.h"

#include <memory>
#include <string>

namespace orvane {

/// The chart of a range as a picture of its own, with the name of the range above it, and as a table
/// of its numbers. It is a copy, so it stays what it is when the map changes.
struct ChartPicture {
  std::string rangeName;
  Range travel;  ///< of which only the tables of travel are filled
  TravelChartMode mode = TravelChartMode::Distance;
  MeasureNames names;  ///< of the map
};

/// \param row  of a range
std::unique_ptr<const ChartPicture> PictureOfChart(const RangePanelRow& row, TravelChartMode mode,
                                                   const MeasureNames& names);

/// \param lineHeight  pixels, of the font
/// \return the height of the picture in pixels
int ChartPictureHeight(int lineHeight);

/// Draws the picture on white.
/// \param width   pixels
/// \param margin  pixels kept free at either side
void DrawChartPicture(const ChartPicture& picture, int width, int margin, Canvas& canvas);

/// The numbers of both lines as text, with a tab between fields: a table of the hours and, after an
/// empty line, one of the slots of five minutes. The slots of distance are in metres per hour, as
/// the chart shows them; measures are in percent.
std::string ChartTable(const ChartPicture& picture);

}  // namespace orvane
