#include "panes/range_drops.h"

#include "base/utf8.h"
#include "model/point_names.h"

namespace orvane {
namespace {

/// As much of a type as goes before the number of a further range.
constexpr size_t NumberedNameBytes = 40;

/// \return the type, or the type with the first free number from 2
std::string FreeRangeName(Map& map, const std::string& type) {
  if (FindRange(map, type) == nullptr) return type;
  for (int number = 2;; ++number) {
    std::string name(CutText(type, NumberedNameBytes));
    name += " " + std::to_string(number);
    if (FindRange(map, name) == nullptr) return name;
  }
}

void PutInFront(std::forward_list<SearchKey>& keys, std::forward_list<SearchKey> added) {
  auto last = added.before_begin();
  while (std::next(last) != added.end()) ++last;
  added.splice_after(last, keys);
  keys = std::move(added);
}

}  // namespace

std::forward_list<SearchKey> KeysFromSelection(const std::list<TrailPanelRow>& rows) {
  std::forward_list<SearchKey> keys;
  for (const TrailPanelRow& row : rows) {
    if (row.selected && !row.children.empty()) {
      keys.emplace_front().type = row.text;
    } else if (row.selected && row.trail != nullptr) {
      const Trail& trail = *row.trail;
      keys.push_front({.type = trail.type,
                       .focalAnimal = trail.focalAnimal,
                       .dateFrom = trail.date,
                       .dateTo = trail.date});
    } else {
      PutInFront(keys, KeysFromSelection(row.children));
    }
  }
  return keys;
}

bool DropSelection(MapWindow& view, const RangePanelRow& row, EditHistory& history) {
  const std::forward_list<SearchKey> keys = KeysFromSelection(view.trailViews);
  if (keys.empty() || (!row.fixed && row.range == nullptr)) return false;
  Map& map = *view.map;
  Range* range = row.range;
  const std::string name =
      range == nullptr ? FreeRangeName(map, keys.front().type) : range->name.value_or("");
  return history.Apply({.name = (range == nullptr ? "New Range " : "Drop on Range ") + name,
                        .map = &map,
                        .change = [&](EditFollowUp& followUp) {
                          if (range == nullptr) {
                            range = &map.ranges.emplace_front();
                            range->name = name;
                          }
                          PutInFront(range->keys, keys);
                          followUp.ranges.push_back(range);
                          return true;
                        }});
}

}  // namespace orvane
