#pragma once

#include "ranges/report_lines.h"
#include "view/panel_rows.h"

#include <string>
#include <vector>

namespace orvane {

/// The report on rows of the range pane as text: for each its name, indented by two tabs, the lines
/// of its figures and an empty line. A range has the lines of its report, an overlap those of its
/// tip. Rows that hold neither are left out.
/// \param rows   in the order of the report
/// \param names  the measures of the map
std::string RangeStatsText(const std::vector<const RangePanelRow*>& rows,
                           const MeasureNames& names);

/// The name of a range or an overlap as that of a file without its ending; "untitled" without one.
std::string RangeFileName(const RangePanelRow& row);
/// The name that is offered for the saved text: that of the first row.
std::string RangeStatsFileName(const std::vector<const RangePanelRow*>& rows);

}  // namespace orvane
