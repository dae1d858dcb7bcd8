#include "panes/follow_edit.h"

#include "base/text.h"
#include "editing/solve_edited.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace orvane {
namespace {

using TrailSet = std::unordered_set<const Trail*>;

/// The contours that can have rows: those of the maps that offer them.
TrailSet ContoursOfChain(Map& top) {
  TrailSet contours;
  for (Map* map = &top; map != nullptr; map = map->basis) {
    if (!OffersContours(*map)) continue;
    for (const ContourKind kind : ContourKinds) {
      for (const Trail& trail : ContoursOf(*map, kind)) contours.insert(&trail);
    }
  }
  return contours;
}

/// The trails of the chain, deepest map first.
std::vector<Trail*> TrailsOfChain(Map& top) {
  std::vector<Map*> chain;
  for (Map* map = &top; map != nullptr; map = map->basis) chain.push_back(map);
  std::vector<Trail*> trails;
  for (auto map = chain.rbegin(); map != chain.rend(); ++map) {
    for (Trail& trail : (*map)->trails) trails.push_back(&trail);
  }
  return trails;
}

/// Drops the rows of trails that are gone, and groups without rows.
void DropTrailRows(std::list<TrailPanelRow>& rows, const TrailSet& present) {
  for (auto row = rows.begin(); row != rows.end();) {
    DropTrailRows(row->children, present);
    const bool isGone = row->trail == nullptr ? row->children.empty() && !row->fixed
                                              : !present.contains(row->trail);
    row = isGone ? rows.erase(row) : std::next(row);
  }
}

void MatchTrailRows(MapWindow& view) {
  const std::vector<Trail*> trails = TrailsOfChain(*view.map);
  TrailSet present = ContoursOfChain(*view.map);
  present.insert(trails.begin(), trails.end());
  auto& rows = view.trailViews;
  for (auto row = rows.begin(); row != rows.end();) {
    DropTrailRows(row->children, present);
    // The groups of contours can be empty.
    const bool isOffered = ContourKindOf(*row) && MapWithContours(view.map) != nullptr;
    const bool isEmpty = row->children.empty() && !row->fixed && !isOffered;
    row = isEmpty ? rows.erase(row) : std::next(row);
  }
  TrailSet shown;
  for (const TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) shown.insert(row->trail);
  for (Trail* trail : trails) {
    if (!shown.contains(trail)) AddTrailRow(view, *trail);
  }
  AddContourGroups(view);
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
    if (present.contains(&range)) AddRangeRow(view, range);
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
    if (news.Concerns(*map)) return true;
  }
  return false;
}

void Recolor(MapWindow& view, const std::vector<const Trail*>& trails) {
  for (const Trail* trail : trails) {
    if (TrailPanelRow* row = FindTrailRow(view, *trail)) row->color = trail->color;
  }
}

void MatchAfterSwap(MapWindow& view, const MapDelta& delta) {
  const bool isAnalyzed = IsAnalyzedAfterSwap(delta, *view.map);
  if (isAnalyzed) DropRangeRows(view, nullptr);
  MatchRowsToMap(view);
  MoveRenamedRanges(view);
  if (isAnalyzed) RedoRangeRows(view, nullptr);
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
  if (news.followUp == nullptr) {
    MatchAfterSwap(view, *news.delta);
    return true;
  }
  const bool allAgain = news.followUp->solve || news.followUp->solved;
  // Rows of intersections go before anything looks at them: an analysis replaces the records.
  if (allAgain) {
    DropRangeRows(view, nullptr);
  } else {
    for (const Range* range : news.followUp->ranges) DropRangeRows(view, range);
  }
  if (news.followUp->freshTrailRows) BuildTrailRows(view);
  MatchRowsToMap(view);
  MoveRenamedRanges(view);
  Recolor(view, news.followUp->recolored);
  if (allAgain) {
    RedoRangeRows(view, nullptr);
  } else {
    for (const Range* range : news.followUp->ranges) RedoRangeRows(view, range);
  }
  return true;
}

}  // namespace orvane
