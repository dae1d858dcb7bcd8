#include "panes/range_list.h"

#include "base/text.h"
#include "model/workspace.h"
#include "panes/trail_tree.h"
#include "view/fills.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr Color Gray = 0x808080;
constexpr unsigned RangeShadings = 4;
constexpr std::uint32_t WholeRangeContour = 1;  // the bit of the 100 % contour
constexpr const char* NewText = "New";

/// Each Channel halved.
Color HalfOf(Color color) {
  constexpr Color WithoutLowBits = 0x7F7F7F;
  return (color >> 1) & WithoutLowBits;
}

Color MeanOf(Color a, Color b) {
  Color mean = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    constexpr Color Channel = 0xFF;
    mean |= ((((a >> shift) & Channel) + ((b >> shift) & Channel)) / 2) << shift;
  }
  return mean;
}

/// Overlaps are shaded in crossing patterns, so that they stand out from both ranges.
int OverlapShading(int a, int b) {
  const auto isDiagonal = [](int shading) { return shading == 0 || shading == 1; };
  const auto isStraight = [](int shading) { return shading == 2 || shading == 3; };
  if (isDiagonal(a) && isDiagonal(b)) return FillDiagonals;
  if (isStraight(a) && isStraight(b)) return FillCross;
  return a == 0 || a == 2 ? FillDiagonals : FillCross;
}

Color ColorOfFollow(MapWindow& view, const Trail& follow) {
  if (follow.color != NoColor) return follow.color;
  const TrailPanelRow* row = FindTrailRow(view, follow);
  return row != nullptr ? row->color : Gray;
}

void TakeLookOfRange(MapWindow& view, const Range& range, RangePanelRow& row) {
  if (range.follows.empty()) return;
  row.clusterMask = WholeRangeContour;
  row.color = HalfOf(ColorOfFollow(view, *range.follows.front()));
}

void TakeLookOfOverlap(MapWindow& view, const RangeIntersection& record, unsigned counter,
                       RangePanelRow& row) {
  row.visible = false;
  const RangePanelRow* a = FindRangeRow(view, *record.a.range);
  const RangePanelRow* b = FindRangeRow(view, *record.b.range);
  if (a == nullptr || b == nullptr) {
    row.shading = counter % 2 == 0 ? FillDiagonals : FillCross;
    return;
  }
  row.color = MeanOf(a->color, b->color);
  row.shading = OverlapShading(a->shading, b->shading);
}

RangePanelRow MakeRangeRow(MapWindow& view, Range* range, RangeIntersection* intersection) {
  const unsigned counter = view.map->workspace->rangeRowsMade++;
  RangePanelRow row;
  row.range = range;
  row.intersection = intersection;
  row.visible = true;
  row.color = Gray;
  row.shading = static_cast<int>(counter % RangeShadings);
  if (intersection != nullptr) {
    row.text = intersection->name;
    row.overlapOf = {intersection->a.range, intersection->b.range};
    TakeLookOfOverlap(view, *intersection, counter, row);
  } else {
    row.text = range->name;
    TakeLookOfRange(view, *range, row);
  }
  return row;
}

/// Ranges come before overlaps, and the row "New" after both.
int GroupOf(const RangePanelRow& row) {
  if (row.fixed) return 2;
  return row.intersection != nullptr ? 1 : 0;
}

/// True if a row that is to be added goes before an existing one.
bool StandsBefore(const RangePanelRow& added, const RangePanelRow& row) {
  if (GroupOf(added) != GroupOf(row)) return GroupOf(added) < GroupOf(row);
  return CompareNames(added.text.value_or(""), row.text.value_or("")) < 0;
}

bool Involves(const RangeIntersection& record, const Range* range) {
  return range == nullptr || record.a.range == range || record.b.range == range;
}

}  // namespace

RangePanelRow& AddRangeRow(MapWindow& view, Range* range, RangeIntersection* intersection) {
  RangePanelRow row = MakeRangeRow(view, range, intersection);
  auto& rows = view.rangeViews;
  const auto place = std::find_if(rows.begin(), rows.end(), [&](const RangePanelRow& there) {
    return StandsBefore(row, there);
  });
  return *rows.insert(place, std::move(row));
}

void BuildRangeRows(MapWindow& view) {
  view.rangeViews.clear();
  RangePanelRow& last = view.rangeViews.emplace_back();
  last.fixed = true;
  last.visible = true;
  last.color = Gray;
  last.text = NewText;
  for (Range& range : view.map->ranges) AddRangeRow(view, &range, nullptr);
  RedoRangeRows(view, nullptr);
}

RangePanelRow* FindRangeRow(MapWindow& view, const Range& range) {
  for (RangePanelRow& row : view.rangeViews) {
    if (row.range == &range) return &row;
  }
  return nullptr;
}

bool DropRangeRows(MapWindow& view, const Range* range) {
  return view.rangeViews.remove_if([&](const RangePanelRow& row) {
    if (row.intersection == nullptr) return false;
    return range == nullptr || row.overlapOf[0] == range || row.overlapOf[1] == range;
  }) > 0;
}

bool RedoRangeRows(MapWindow& view, const Range* range) {
  bool any = false;
  for (RangeIntersection& record : view.map->intersections) {
    if (!Involves(record, range)) continue;
    AddRangeRow(view, nullptr, &record);
    any = true;
  }
  return any;
}

}  // namespace orvane
