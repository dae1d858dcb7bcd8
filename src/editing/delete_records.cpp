#include "editing/delete_records.h"

#include "base/messages.h"
#include "editing/detach_trail.h"
#include "editing/trail_editor.h"
#include "model/workspace.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_set>

namespace orvane {
namespace {

/// Moves records out of a list to the removed ones, where pointers to them stay valid.
template <typename Record>
void MoveOut(std::forward_list<Record>& records, std::forward_list<Record>& removed,
             const std::vector<Record*>& which) {
  const std::unordered_set<const Record*> going(which.begin(), which.end());
  for (auto before = records.before_begin(); std::next(before) != records.end();) {
    if (going.contains(&*std::next(before))) {
      removed.splice_after(removed.before_begin(), records, before);
    } else {
      ++before;
    }
  }
}

std::string Counted(size_t count, const std::string& thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

void NoteDeleted(const Map& map, const std::string& what) {
  PostNote(map.workspace->messages, "%s deleted. Undo: Alt+Backspace", {what});
}

struct TrailsOfMap {
  Map* map = nullptr;
  std::vector<Trail*> trails;
};

/// The trails by the map that holds them, the lowest map first.
std::vector<TrailsOfMap> ByMap(Map& top, const std::vector<Trail*>& trails) {
  std::vector<TrailsOfMap> maps;
  const std::unordered_set<const Trail*> going(trails.begin(), trails.end());
  for (Map* map = &top; map != nullptr; map = map->basis) {
    TrailsOfMap own{.map = map, .trails = {}};
    for (Trail& trail : map->trails) {
      if (going.contains(&trail)) own.trails.push_back(&trail);
    }
    if (!own.trails.empty()) maps.push_back(std::move(own));
  }
  std::reverse(maps.begin(), maps.end());
  return maps;
}

}  // namespace

void DeleteTrails(Map& map, const std::vector<Trail*>& trails, EditHistory& history) {
  const std::vector<TrailsOfMap> maps = ByMap(map, trails);
  if (maps.empty()) return;
  const Trail* only = trails.size() == 1 ? trails.front() : nullptr;
  Edit edit{.name = "Deletion of " + (only != nullptr ? "Trail " + ShortNameOf(*only)
                                                      : Counted(trails.size(), "Trail")),
            .map = maps.front().map};
  for (size_t i = 1; i < maps.size(); ++i) edit.others.push_back(maps[i].map);
  size_t points = 0;
  edit.change = [&](EditFollowUp& followUp) {
    // Those of the highest map first: they may hold points of the others.
    for (auto each = maps.rbegin(); each != maps.rend(); ++each) {
      points += TrailDetacher(*each->map, each->trails, {}).Detach();
      MoveOut(each->map->trails, each->map->removed.trails, each->trails);
    }
    followUp.solve = true;
    return true;
  };
  history.Apply(edit);
  NoteDeleted(map, Counted(trails.size(), "trail") + " and " + Counted(points, "point"));
}

void DeleteRanges(Map& map, const std::vector<Range*>& ranges, EditHistory& history) {
  if (ranges.empty()) return;
  const Range* only = ranges.size() == 1 ? ranges.front() : nullptr;
  history.Apply({.name = "Deletion of " + (only != nullptr ? "Range " + only->name.value_or("")
                                                           : Counted(ranges.size(), "Range")),
                 .map = &map,
                 .change = [&](EditFollowUp&) {
                   MoveOut(map.ranges, map.removed.ranges, ranges);
                   const std::unordered_set<const Range*> going(ranges.begin(), ranges.end());
                   map.intersections.remove_if([&](const RangeIntersection& overlap) {
                     return going.contains(overlap.a.range) || going.contains(overlap.b.range);
                   });
                   return true;
                 }});
  NoteDeleted(map, Counted(ranges.size(), "range"));
}

}  // namespace orvane
