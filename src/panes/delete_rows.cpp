#include "panes/delete_rows.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "base/utf8.h"
#include "editing/delete_records.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "panes/trail_tree.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace orvane {
namespace {

constexpr size_t QuestionNameBytes = 60;

void AddTrails(std::list<TrailPanelRow>& rows, bool selectedAbove, std::vector<Trail*>& trails) {
  for (TrailPanelRow& row : rows) {
    const bool selected = selectedAbove || row.selected;
    if (selected && row.trail != nullptr && !IsContour(*row.trail)) trails.push_back(row.trail);
    AddTrails(row.children, selected, trails);
  }
}

/// \return true if the user wants to delete the trails that are in basis maps
bool AskAboutBasisMaps(MapWindow& view, const std::vector<Trail*>& trails) {
  std::unordered_set<const Map*> asked{view.map};
  for (Trail* trail : trails) {
    const Map* holder = MapOfTrail(*view.map, *trail);
    if (holder == nullptr || !asked.insert(holder).second) continue;
    const TrailPanelRow* row = FindTrailRow(view, *trail);
    const std::string_view text = row == nullptr ? std::string_view() : row->text;
    const std::string_view file = BaseName(holder->shownName);
    if (AskUser(view.map->workspace->messages, "Delete Trail", "Delete", "Cancel", "",
                "Trail %s is in the basis map %s.  Delete it there?",
                {CutText(text, QuestionNameBytes), CutText(file, QuestionNameBytes)}) != 1) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::vector<Trail*> SelectedTrails(MapWindow& view) {
  std::vector<Trail*> trails;
  AddTrails(view.trailViews, false, trails);
  return trails;
}

void DeleteSelectedTrails(MapWindow& view, EditHistory& history) {
  const std::vector<Trail*> trails = SelectedTrails(view);
  if (!trails.empty() && AskAboutBasisMaps(view, trails)) DeleteTrails(*view.map, trails, history);
}

void DeleteSelectedRanges(MapWindow& view, EditHistory& history) {
  std::vector<Range*> ranges;
  bool anyOverlap = false;
  for (const RangePanelRow& row : view.rangeViews) {
    if (!row.selected) continue;
    if (row.range != nullptr) ranges.push_back(row.range);
    anyOverlap = anyOverlap || row.intersection != nullptr;
  }
  if (ranges.empty() && anyOverlap) {
    NoteError(view.map->workspace->messages, "You may not delete an intersection directly");
  }
  DeleteRanges(*view.map, ranges, history);
}

}  // namespace orvane
