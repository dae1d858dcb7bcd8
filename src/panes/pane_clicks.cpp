#include "panes/pane_clicks.h"

#include "base/text.h"
#include "elevation/contours.h"
#include "panes/trail_tree.h"

#include <algorithm>

namespace orvane {
namespace {

/// The row, then all rows below it.
std::vector<TrailPanelRow*> RowAndBelow(TrailPanelRow& row) {
  std::vector<TrailPanelRow*> rows = TrailRowsInOrder(row.children);
  rows.insert(rows.begin(), &row);
  return rows;
}

Map* MapWithContours(Map* map) {
  while (map != nullptr && (map->contourEnabled == 0 || map->contourInterval == 0)) {
    map = map->basis;
  }
  return map;
}

}  // namespace

void ClearTrailSelection(MapWindow& view) {
  for (TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) row->selected = false;
}

void ClearRangeSelection(MapWindow& view) {
  for (RangePanelRow& row : view.rangeViews) row.selected = false;
}

void SelectAllRanges(MapWindow& view) {
  for (RangePanelRow& row : view.rangeViews) row.selected = !row.fixed;
}

void ClickTrailRow(MapWindow& view, TrailPanelRow* row, bool shift) {
  if (row == nullptr || !shift) ClearTrailSelection(view);
  if (row == nullptr || row->fixed) return;
  for (TrailPanelRow* each : RowAndBelow(*row)) each->selected = !each->selected;
}

void ClickTrailTick(MapWindow& view, TrailPanelRow& row, const ContourProgress& progress) {
  if (row.fixed) return;
  if (AwaitsContours(view, row)) ShowContours(view, progress);
  for (TrailPanelRow* each : RowAndBelow(row)) each->visible = !each->visible;
  ClearTrailSelection(view);
}

bool HasTriangle(const TrailPanelRow& row) { return row.trail == nullptr && !row.fixed; }

void ClickTriangle(MapWindow& view, TrailPanelRow& row, const ContourProgress& progress) {
  if (AwaitsContours(view, row)) ShowContours(view, progress);
  if (row.children.empty()) return;
  row.open = !row.open;
  ClearTrailSelection(view);
}

void ClickRangeRow(MapWindow& view, RangePanelRow* row, bool shift) {
  if (row == nullptr || !shift) ClearRangeSelection(view);
  if (row == nullptr || row->fixed) return;
  row->selected = !row->selected;
}

void ClickRangeTick(MapWindow& view, RangePanelRow& row) {
  if (row.fixed) return;
  row.visible = !row.visible;
  ClearRangeSelection(view);
}

bool AwaitsContours(const MapWindow& view, const TrailPanelRow& row) {
  if (!row.children.empty() || row.trail != nullptr || !SameName(row.text, "Contours")) {
    return false;
  }
  return std::any_of(view.trailViews.begin(), view.trailViews.end(),
                     [&](const TrailPanelRow& each) { return &each == &row; });
}

void ShowContours(MapWindow& view, const ContourProgress& progress) {
  Map* map = MapWithContours(view.map);
  if (map == nullptr) return;
  if (map->contourTrails.empty()) GenerateContours(*map, map->contourInterval, progress);
  for (Trail& trail : map->contourTrails) AddContourRow(view, trail);
}

}  // namespace orvane
