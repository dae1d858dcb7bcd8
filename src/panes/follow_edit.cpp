#include "panes/follow_edit.h"

#include "base/text.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace orvane {
namespace {

using TrailSet = std::unordered_set<const Trail*>;

/// The trails that can have rows: those of the chain, deepest map first, and its contours.
std::vector<Trail*> TrailsOfChain(Map& top) {
  std::vector<Map*> chain;
  for (Map* map = &top; map != nullptr; map = map->basis) chain.push_back(map);
  std::vector<Trail*> trails;
  for (auto map = chain.rbegin(); map != chain.rend(); ++map) {
    for (Trail& trail : (*map)->trails) trails.push_back(&trail);
  }
  return trails;
}

void DropTrailRows(std::list<TrailPanelRow>& rows, const TrailSet& present) {
  for (auto row = rows.begin(); row != rows.end();) {
    const bool wasGroup = !row->children.empty();
    DropTrailRows(row->children, present);
    const bool isContour = row->trail != nullptr && IsContour(*row->trail);
    const bool isGone = row->trail != nullptr && !isContour && !present.contains(row->trail);
    const bool isEmptied = wasGroup && row->children.empty();
    row = isGone || isEmptied ? rows.erase(row) : std::next(row);
  }
}

void MatchTrailRows(MapWindow& view) {
  const std::vector<Trail*> trails = TrailsOfChain(*view.map);
  DropTrailRows(view.trailViews, TrailSet(trails.begin(), trails.end()));
  TrailSet shown;
  for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) shown.insert(row->trail);
  for (Trail* trail : trails) {
    if (!shown.contains(trail)) AddTrailRow(view, *trail);
  }
}

void MatchRangeRows(MapWindow& view) {
  std::unordered_set<const Range*> present;
  for (const Range& range : view.map->ranges) present.insert(&range);
  view.rangeViews.remove_if([&](const RangePanelRow& row) {
    if (row.intersection == nullptr) return row.range != nullptr && !present.contains(row.range);
    return !present.contains(row.overlapOf[0]) || !present.contains(row.overlapOf[1]);
  });
  for (const RangePanelRow& row : view.rangeViews) present.erase(row.range);
  for (Range& range : view.map->ranges) {
    if (present.contains(&range)) AddRangeRow(view, &range, nullptr);
  }
}

/// The row of a renamed range moves to its sorted place, with all that it has.
void MoveRenamedRanges(MapWindow& view) {
  auto& rows = view.rangeViews;
  for (auto row = rows.begin(); row != rows.end();) {
    const auto renamed = row++;
    if (renamed->range == nullptr || renamed->text == renamed->range->name) continue;
    renamed->text = renamed->range->name;
    const auto place = std::find_if(rows.begin(), rows.end(), [&](const RangePanelRow& there) {
      if (&there == &*renamed) return false;
      return there.range == nullptr ||
             CompareNames(renamed->text.value_or(""), there.text.value_or("")) < 0;
    });
    rows.splice(place, rows, renamed);
  }
}

/// \return true if the edit can have changed what the view shows
bool Concerns(const MapWindow& view, const EditNews& news) {
  for (const Map* map = view.map; map != nullptr; map = map->basis) {
    if (map == news.map || news.delta->Touches(*map)) return true;
  }
  return false;
}

void Recolor(MapWindow& view, const std::vector<const Trail*>& trails) {
  for (const Trail* trail : trails) {
    if (TrailPanelRow* row = FindTrailRow(view, *trail)) row->color = trail->color;
  }
}

}  // namespace

void MatchRowsToMap(MapWindow& view) {
  MatchTrailRows(view);
  MatchRangeRows(view);
}

bool FollowEdit(MapWindow& view, const EditNews& news) {
  if (!Concerns(view, news)) return false;
  if (news.followUp != nullptr && news.followUp->freshRows) {
    BuildTrailRows(view);
    BuildRangeRows(view);
    return true;
  }
  const bool allAgain = news.followUp == nullptr || news.followUp->solve || news.followUp->solved;
  // Rows of intersections go before anything looks at them: an analysis replaces the records.
  if (allAgain) {
    DropRangeRows(view, nullptr);
  } else {
    for (const Range* range : news.followUp->ranges) DropRangeRows(view, range);
  }
  if (news.followUp != nullptr && news.followUp->freshTrailRows) BuildTrailRows(view);
  MatchRowsToMap(view);
  MoveRenamedRanges(view);
  if (news.followUp != nullptr) Recolor(view, news.followUp->recolored);
  if (allAgain) {
    RedoRangeRows(view, nullptr);
  } else {
    for (const Range* range : news.followUp->ranges) RedoRangeRows(view, range);
  }
  return true;
}

}  // namespace orvane
