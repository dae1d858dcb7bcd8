#include "panes/range_list.h"

#include "base/text.h"
#include "model/workspace.h"
#include "panes/trail_tree.h"
#include "view/fills.h"

#include <list>
#include <string_view>
#include <unordered_map>
#include <utility>

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

/// Finds the first row of a range, or null. Overlaps of many ranges ask for it often.
class RowsOfRanges {
 public:
  explicit RowsOfRanges(const MapWindow& view) {
    for (const RangePanelRow& row : view.rangeViews) {
      if (row.range != nullptr) rows_.try_emplace(row.range, &row);
    }
  }
  const RangePanelRow* Find(const Range* range) const {
    const auto found = rows_.find(range);
    return found == rows_.end() ? nullptr : found->second;
  }

 private:
  std::unordered_map<const Range*, const RangePanelRow*> rows_;
};

void TakeLookOfOverlap(const RowsOfRanges& rows, const RangeIntersection& record, unsigned counter,
                       RangePanelRow& row) {
  row.visible = false;
  const RangePanelRow* a = rows.Find(record.a.range);
  const RangePanelRow* b = rows.Find(record.b.range);
  if (a == nullptr || b == nullptr) {
    row.shading = counter % 2 == 0 ? FillDiagonals : FillCross;
    return;
  }
  row.color = MeanOf(a->color, b->color);
  row.shading = OverlapShading(a->shading, b->shading);
}

/// A row with the look of every new one, and its counter.
std::pair<RangePanelRow, unsigned> MakeRow(MapWindow& view) {
  const unsigned counter = view.map->workspace->rangeRowsMade++;
  RangePanelRow row;
  row.visible = true;
  row.color = Gray;
  row.shading = static_cast<int>(counter % RangeShadings);
  return {std::move(row), counter};
}

RangePanelRow MakeRangeRow(MapWindow& view, Range& range) {
  RangePanelRow row = MakeRow(view).first;
  row.range = &range;
  row.text = range.name;
  TakeLookOfRange(view, range, row);
  return row;
}

RangePanelRow MakeOverlapRow(MapWindow& view, const RowsOfRanges& rows,
                             RangeIntersection& intersection) {
  auto [row, counter] = MakeRow(view);
  row.intersection = &intersection;
  row.text = intersection.name;
  row.overlapOf = {intersection.a.range, intersection.b.range};
  TakeLookOfOverlap(rows, intersection, counter, row);
  return std::move(row);
}

/// Ranges come before overlaps, and the row "New" after both.
int GroupOf(const RangePanelRow& row) {
  if (row.fixed) return 2;
  return row.intersection != nullptr ? 1 : 0;
}

std::string_view NameOf(const RangePanelRow& row) {
  return row.text ? std::string_view(*row.text) : std::string_view();
}

/// The order of the list. A new row goes after those that it equals.
bool ComesBefore(const RangePanelRow& a, const RangePanelRow& b) {
  if (GroupOf(a) != GroupOf(b)) return GroupOf(a) < GroupOf(b);
  return CompareNames(NameOf(a), NameOf(b)) < 0;
}

/// Adds rows in their places. The order in which they come decides between equal ones.
void AddRows(MapWindow& view, std::list<RangePanelRow> added) {
  added.sort(ComesBefore);
  view.rangeViews.merge(added, ComesBefore);
}

bool Involves(const RangeIntersection& record, const Range* range) {
  return range == nullptr || record.a.range == range || record.b.range == range;
}

}  // namespace

RangePanelRow& AddRangeRow(MapWindow& view, Range& range) {
  std::list<RangePanelRow> added;
  added.push_back(MakeRangeRow(view, range));
  RangePanelRow& row = added.front();  // it keeps its address
  AddRows(view, std::move(added));
  return row;
}

void BuildRangeRows(MapWindow& view) {
  view.rangeViews.clear();
  RangePanelRow& last = view.rangeViews.emplace_back();
  last.fixed = true;
  last.visible = true;
  last.color = Gray;
  last.text = NewText;
  for (Range& range : view.map->ranges) AddRangeRow(view, range);
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
  const RowsOfRanges rows(view);
  std::list<RangePanelRow> added;
  for (RangeIntersection& record : view.map->intersections) {
    if (Involves(record, range)) added.push_back(MakeOverlapRow(view, rows, record));
  }
  const bool any = !added.empty();
  AddRows(view, std::move(added));
  return any;
}

}  // namespace orvane
