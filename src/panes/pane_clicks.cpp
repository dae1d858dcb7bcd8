#include "panes/pane_clicks.h"

#include "elevation/contours.h"
#include "elevation/contours_continuous.h"
#include "panes/trail_tree.h"

#include <algorithm>
#include <optional>

namespace orvane {
namespace {

/// The row, then all rows below it.
std::vector<TrailPanelRow*> RowAndBelow(TrailPanelRow& row) {
  std::vector<TrailPanelRow*> rows = TrailRowsInOrder(row.children);
  rows.insert(rows.begin(), &row);
  return rows;
}

/// \return the kind of lines that the row would hold; nothing if it has lines already, or if it is
///         not a group of contours
std::optional<ContourKind> AwaitedContours(const MapWindow& view, const TrailPanelRow& row) {
  const bool isTop = std::any_of(view.trailViews.begin(), view.trailViews.end(),
                                 [&](const TrailPanelRow& each) { return &each == &row; });
  if (!isTop || !row.children.empty()) return std::nullopt;
  return ContourKindOf(row);
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
  if (AwaitsContours(view, row) && !ShowContours(view, row, progress)) return;
  for (TrailPanelRow* each : RowAndBelow(row)) each->visible = !each->visible;
  ClearTrailSelection(view);
}

bool HasTriangle(const TrailPanelRow& row) { return row.trail == nullptr && !row.fixed; }

void ClickTriangle(MapWindow& view, TrailPanelRow& row, const ContourProgress& progress) {
  if (AwaitsContours(view, row)) ShowContours(view, row, progress);
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
  return AwaitedContours(view, row).has_value();
}

bool ShowContours(MapWindow& view, const TrailPanelRow& row, const ContourProgress& progress) {
  const std::optional<ContourKind> kind = AwaitedContours(view, row);
  Map* map = MapWithContours(view.map);
  if (!kind || map == nullptr) return true;
  const auto generate =
      *kind == ContourKind::Classic ? GenerateContours : GenerateContinuousContours;
  if (ContoursOf(*map, *kind).empty() &&
      generate(*map, map->contourInterval, progress) == ContourCanceled) {
    return false;
  }
  for (Trail& trail : ContoursOf(*map, *kind)) AddContourRow(view, trail, *kind);
  return true;
}

bool MakeMissingContours(Map& map, const ContourProgress& progress) {
  Map* const source = MapWithContours(&map);
  if (source == nullptr) return true;
  for (const ContourKind kind : ContourKinds) {
    if (!ContoursOf(*source, kind).empty()) return true;
  }
  return GenerateContours(*source, source->contourInterval, progress) != ContourCanceled;
}

}  // namespace orvane
