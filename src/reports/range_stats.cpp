#include "reports/range_stats.h"

#include <algorithm>

namespace orvane {

namespace {

std::optional<std::string> LineOf(const RangePanelRow& row, const MeasureNames& names, int line) {
  if (row.intersection != nullptr) return RangeTipLine(*row.intersection, names, line);
  return RangeReportLine(*row.range, line);
}

}  // namespace

std::string RangeStatsText(const std::vector<const RangePanelRow*>& rows,
                           const MeasureNames& names) {
  std::string text;
  for (const RangePanelRow* row : rows) {
    if (row->range == nullptr && row->intersection == nullptr) continue;
    text += "\t\t" + row->text.value_or("") + '\n';
    for (int number = 0;; ++number) {
      const auto line = LineOf(*row, names, number);
      if (!line) break;
      text += *line + '\n';
    }
    text += '\n';
  }
  return text;
}

std::string RangeFileName(const RangePanelRow& row) {
  std::string name = row.text.value_or("untitled");
  std::replace(name.begin(), name.end(), '/', '-');  // it must not name a folder
  return name;
}

std::string RangeStatsFileName(const std::vector<const RangePanelRow*>& rows) {
  return (rows.empty() ? "untitled" : RangeFileName(*rows.front())) + ".txt";
}

}  // namespace orvane
