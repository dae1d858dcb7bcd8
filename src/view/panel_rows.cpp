#include "view/panel_rows.h"

#include <algorithm>
#include <cstddef>

namespace orvane {

std::vector<TrailPanelRow*> TrailRowsInOrder(std::list<TrailPanelRow>& rows) {
  std::vector<TrailPanelRow*> ordered;
  std::vector<TrailPanelRow*> waiting;
  const auto push = [&waiting](std::list<TrailPanelRow>& level) {
    const size_t before = waiting.size();
    for (TrailPanelRow& row : level) waiting.push_back(&row);
    std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(before), waiting.end());
  };
  push(rows);
  while (!waiting.empty()) {
    TrailPanelRow* row = waiting.back();
    waiting.pop_back();
    ordered.push_back(row);
    push(row->children);
  }
  return ordered;
}

}  // namespace orvane
