#include "panes/row_memory.h"

#include "base/text.h"
#include "model/workspace.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"

namespace orvane {
namespace {

using Numbers = std::map<std::string, int>;

std::string KeyOf(Numbers& numbers, const std::string& above, std::string_view text) {
  const std::string key = above + '\n' + FoldedText(text);
  return key + '\n' + std::to_string(numbers[key]++);
}

/// Calls `visit(key, row)` for each row of a tree.
template <typename Visit>
void ForEachKey(std::list<TrailPanelRow>& rows, const std::string& above, const Visit& visit) {
  Numbers numbers;
  for (TrailPanelRow& row : rows) {
    const std::string key = KeyOf(numbers, above, row.text);
    visit(key, row);
    ForEachKey(row.children, key, visit);
  }
}

/// The same for the rows of a list. Ranges and overlaps are numbered apart.
template <typename Visit>
void ForEachKey(std::list<RangePanelRow>& rows, const Visit& visit) {
  Numbers numbers;
  for (RangePanelRow& row : rows) {
    const std::string kind = row.intersection != nullptr ? "overlap" : "range";
    visit(KeyOf(numbers, kind, row.text.value_or("")), row);
  }
}

TrailPanelRow WithoutChildren(const TrailPanelRow& row) {
  TrailPanelRow copy;
  copy.visible = row.visible;
  copy.open = row.open;
  copy.selected = row.selected;
  copy.filled = row.filled;
  copy.lineStyle = row.lineStyle;
  copy.labelMode = row.labelMode;
  copy.fillPattern = row.fillPattern;
  copy.markStyle = row.markStyle;
  copy.color = row.color;
  return copy;
}

template <typename Row, typename... Fields>
void TakeChanges(Row& row, const RowMemory::Kept<Row>& kept, Fields Row::*... fields) {
  const auto take = [&](auto field) {
    if (kept.was.*field != kept.untouched.*field) row.*field = kept.was.*field;
  };
  (take(fields), ...);
}

void TakeBack(TrailPanelRow& row, const RowMemory::Kept<TrailPanelRow>& kept) {
  using Row = TrailPanelRow;
  row.open = kept.was.open;
  row.selected = kept.was.selected;
  TakeChanges(row, kept, &Row::visible, &Row::filled, &Row::lineStyle, &Row::labelMode,
              &Row::fillPattern, &Row::markStyle, &Row::color);
  // Contours are made again when they are asked for.
  if (row.trail == nullptr && row.children.empty() && !row.fixed) row.open = row.visible = false;
}

void TakeBack(RangePanelRow& row, const RowMemory::Kept<RangePanelRow>& kept) {
  using Row = RangePanelRow;
  row.selected = kept.was.selected;
  row.shading = kept.was.shading;  // it depends on how many rows were made before
  TakeChanges(row, kept, &Row::visible, &Row::drawMode, &Row::clusterMask, &Row::estimateMask,
              &Row::color);
  for (size_t i = 0; i < std::size(row.showSm); ++i) row.showSm[i] = kept.was.showSm[i];
}

}  // namespace

RowMemory RememberRows(MapWindow& view) {
  MapWindow untouched;
  untouched.map = view.map;
  const unsigned rowsMade = view.map->workspace->rangeRowsMade;
  BuildTrailRows(untouched);
  BuildRangeRows(untouched);
  view.map->workspace->rangeRowsMade = rowsMade;

  RowMemory memory;
  ForEachKey(view.trailViews, {}, [&](const std::string& key, const TrailPanelRow& row) {
    memory.trails[key] = {WithoutChildren(row), WithoutChildren(row)};
  });
  ForEachKey(untouched.trailViews, {}, [&](const std::string& key, const TrailPanelRow& row) {
    const auto found = memory.trails.find(key);
    if (found != memory.trails.end()) found->second.untouched = WithoutChildren(row);
  });
  ForEachKey(view.rangeViews, [&](const std::string& key, const RangePanelRow& row) {
    memory.ranges[key] = {row, row};
  });
  ForEachKey(untouched.rangeViews, [&](const std::string& key, const RangePanelRow& row) {
    const auto found = memory.ranges.find(key);
    if (found != memory.ranges.end()) found->second.untouched = row;
  });
  return memory;
}

void RebuildRows(MapWindow& view, const RowMemory& memory) {
  BuildTrailRows(view);
  ForEachKey(view.trailViews, {}, [&](const std::string& key, TrailPanelRow& row) {
    const auto found = memory.trails.find(key);
    if (found != memory.trails.end()) TakeBack(row, found->second);
  });
  // After the trail rows: a range takes its colour from the first of its follows.
  BuildRangeRows(view);
  ForEachKey(view.rangeViews, [&](const std::string& key, RangePanelRow& row) {
    const auto found = memory.ranges.find(key);
    if (found != memory.ranges.end()) TakeBack(row, found->second);
  });
  view.selectedTrail = nullptr;
  view.flags &= ~std::uint32_t{MapWindowTrailFlash};
}

}  // namespace orvane
