#include "panes/tips.h"

#include "ranges/report_lines.h"
#include "trails/metrics.h"

#include <optional>

namespace orvane {
namespace {

/// Asks for lines from 0 on until there is none.
template <typename LineOf>
std::vector<std::string> LinesOf(const LineOf& lineOf) {
  std::vector<std::string> lines;
  while (auto line = lineOf(static_cast<int>(lines.size()))) lines.push_back(std::move(*line));
  return lines;
}

}  // namespace

std::vector<std::string> TrailTip(const MapWindow& view, const TrailPanelRow& row) {
  return LinesOf([&](int line) {
    return TrailTipLine(row.trail, row.fixed, view.map->magneticDeviation, line);
  });
}

std::vector<std::string> RangeTip(const MapWindow& view, const RangePanelRow& row) {
  return LinesOf([&](int line) -> std::optional<std::string> {
    if (row.range != nullptr) return RangeTipLine(*row.range, row.clusterMask, line);
    if (row.intersection != nullptr) {
      return RangeTipLine(*row.intersection, view.map->smName, line);
    }
    return row.fixed ? NewRangeTipLine(line) : std::nullopt;
  });
}

}  // namespace orvane
