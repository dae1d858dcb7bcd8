#include "panes/pane_selection.h"

#include "panes/pane_clicks.h"
#include "trails/checks.h"

namespace orvane {
namespace {

/// Calls `take` for each row from the first of two to come to the last.
template <typename Row, typename Take>
void ForRowsBetween(const std::vector<Row*>& rows, const Row& one, const Row& other,
                    const Take& take) {
  bool inside = false;
  for (Row* row : rows) {
    const bool isEnd = row == &one || row == &other;
    if (inside || isEnd) take(*row);
    if (isEnd && (inside || &one == &other)) return;
    inside = inside || isEnd;
  }
}

void GatherShown(std::list<TrailPanelRow>& rows, std::vector<TrailPanelRow*>& shown) {
  for (TrailPanelRow& row : rows) {
    shown.push_back(&row);
    if (row.open) GatherShown(row.children, shown);
  }
}

}  // namespace

std::vector<TrailPanelRow*> ShownTrailRows(std::list<TrailPanelRow>& rows) {
  std::vector<TrailPanelRow*> shown;
  GatherShown(rows, shown);
  return shown;
}

void SelectTrailsBetween(MapWindow& view, const TrailPanelRow& one, const TrailPanelRow& other) {
  ClearTrailSelection(view);
  ForRowsBetween(ShownTrailRows(view.trailViews), one, other, [](TrailPanelRow& row) {
    row.selected = !row.fixed;
    for (TrailPanelRow* below : TrailRowsInOrder(row.children)) below->selected = true;
  });
}

void SelectRangesBetween(MapWindow& view, const RangePanelRow& one, const RangePanelRow& other) {
  ClearRangeSelection(view);
  std::vector<RangePanelRow*> rows;
  for (RangePanelRow& row : view.rangeViews) rows.push_back(&row);
  ForRowsBetween(rows, one, other, [](RangePanelRow& row) { row.selected = !row.fixed; });
}

bool CheckSelectedTrails(MapWindow& view, Messages& messages) {
  std::vector<const TrailPanelRow*> selected;
  for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
    if (row->selected) selected.push_back(row);
  }
  for (const TrailPanelRow* row : selected) {
    if (row->trail != nullptr) CheckTrail(*row->trail, selected.size() == 1, messages);
  }
  return !selected.empty();
}

}  // namespace orvane
