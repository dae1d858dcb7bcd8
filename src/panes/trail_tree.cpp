#include "panes/trail_tree.h"

#include "base/dates.h"
#include "base/text.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace orvane {

namespace {

using TrailRows = std::list<TrailPanelRow>;

constexpr Color Black = 0x000000;
constexpr Color DarkOlive = 0x202000;
constexpr Color Blue = 0x0000FF;

/// The rows of a tree while it is built, by level and folded text, so that a map of many trails
/// need not walk a level for each of them. Rows of equal text keep the order in which they were
/// made.
class RowIndex {
 public:
  /// \return the first row with that text, or null
  TrailPanelRow* Find(TrailRows& rows, const std::string& folded) const {
    const auto found = rows_.find({&rows, folded});
    return found == rows_.end() ? nullptr : &*found->second;
  }
  /// Puts a row after those of a smaller or equal text.
  TrailPanelRow& Insert(TrailRows& rows, std::string folded, TrailPanelRow row) {
    const Key key(&rows, std::move(folded));
    const auto next = rows_.upper_bound(key);
    const bool sameLevel = next != rows_.end() && next->first.first == &rows;
    const auto made = rows.insert(sameLevel ? next->second : rows.end(), std::move(row));
    rows_.emplace_hint(next, key, made);
    return *made;
  }

 private:
  using Key = std::pair<const TrailRows*, std::string>;
  std::multimap<Key, TrailRows::iterator> rows_;
};

/// Puts a row after those of a smaller or equal text, before the row "New".
TrailPanelRow& InsertRow(TrailRows& rows, TrailPanelRow row) {
  const auto place = std::find_if(rows.begin(), rows.end(), [&](const TrailPanelRow& there) {
    return there.fixed || CompareNames(there.text, row.text) > 0;
  });
  return *rows.insert(place, std::move(row));
}

/// Finds or makes rows, through an index where there is one.
struct RowMaker {
  RowIndex* index = nullptr;

  TrailPanelRow& Group(TrailRows& rows, const TrailPanelRow* parent, std::string_view text,
                       const Trail* sample) const {
    if (index == nullptr) return RowForText(rows, parent, text, sample);
    if (TrailPanelRow* row = index->Find(rows, FoldedText(text))) return *row;
    return index->Insert(rows, FoldedText(text), MakeTrailRow(parent, text, nullptr, sample));
  }

  /// Every trail has a row of its own, so that no follow is hidden by another of the same day.
  TrailPanelRow& Leaf(TrailPanelRow& group, const std::string& text, Trail& trail) const {
    TrailPanelRow row = MakeTrailRow(&group, text, &trail, nullptr);
    return index == nullptr ? InsertRow(group.children, std::move(row))
                            : index->Insert(group.children, FoldedText(text), std::move(row));
  }
};

std::string TextOfTrail(const Trail& trail) {
  if (trail.name) return *trail.name;
  std::string text = FormatDate(trail.date);
  if (trail.focalAnimal) text += " " + *trail.focalAnimal;
  return text;
}

TrailPanelRow& AddBelowType(const RowMaker& maker, TrailRows& rows, const TrailPanelRow* parent,
                            Trail& trail) {
  TrailPanelRow& group = maker.Group(rows, parent, trail.type, &trail);
  return maker.Leaf(group, TextOfTrail(trail), trail);
}

TrailPanelRow& ContoursRow(const RowMaker& maker, MapWindow& view, ContourKind kind) {
  return maker.Group(view.trailViews, nullptr, ContourGroupText(kind), nullptr);
}

void AddContoursOfMap(const RowMaker& maker, MapWindow& view, Map& map, ContourKind kind) {
  TrailPanelRow& contours = ContoursRow(maker, view, kind);
  contours.visible = false;
  for (Trail& trail : ContoursOf(map, kind)) {
    AddBelowType(maker, contours.children, &contours, trail);
  }
}

void AddRowsOfMap(const RowMaker& maker, MapWindow& view, Map& map) {
  for (Trail& trail : map.trails) AddBelowType(maker, view.trailViews, nullptr, trail);
  if (!OffersContours(map)) return;
  for (const ContourKind kind : ContourKinds) AddContoursOfMap(maker, view, map, kind);
}

Color ColorOfType(std::string_view type) {
  for (const std::string_view name : {"Human", "Road", "Border"}) {
    if (SameName(type, name)) return Black;
  }
  for (const ContourKind kind : ContourKinds) {
    if (SameName(type, ContourGroupText(kind))) return Black;
  }
  // Either case of the first letter, but of no other.
  if (type.find("oundar") != std::string_view::npos) return Black;
  if (SameName(type, "Trail")) return DarkOlive;
  return Blue;
}

void TakeLookOfTrail(TrailPanelRow& row, const Trail& trail) {
  if (trail.color != NoColor) row.color = trail.color;
  if (trail.lineStyle != LineStyle::Unset) row.lineStyle = trail.lineStyle;
  if (trail.labelMode != LabelMode::Unset) row.labelMode = trail.labelMode;
  if (trail.markStyle != MarkStyle::None) row.markStyle = trail.markStyle;
  if (trail.filled) row.filled = true;
  if (trail.fillPattern != 0) row.fillPattern = trail.fillPattern;
}

}  // namespace

void BuildTrailRows(MapWindow& view) {
  view.trailViews.clear();
  std::vector<Map*> chain;
  for (Map* map = view.map; map != nullptr; map = map->basis) chain.push_back(map);
  RowIndex index;
  const RowMaker maker{&index};
  std::for_each(chain.rbegin(), chain.rend(), [&](Map* map) { AddRowsOfMap(maker, view, *map); });
  TrailPanelRow newRow = MakeTrailRow(nullptr, "New", nullptr, nullptr);
  newRow.fixed = true;
  view.trailViews.push_back(std::move(newRow));
}

TrailPanelRow& AddTrailRow(MapWindow& view, Trail& trail) {
  return AddBelowType(RowMaker{}, view.trailViews, nullptr, trail);
}

std::string_view ContourGroupText(ContourKind kind) {
  return kind == ContourKind::Classic ? "Contours" : "Continuous contours";
}

std::optional<ContourKind> ContourKindOf(const TrailPanelRow& row) {
  if (row.trail != nullptr) return std::nullopt;
  const auto* const found =
      std::find_if(ContourKinds.begin(), ContourKinds.end(),
                   [&](ContourKind kind) { return SameName(row.text, ContourGroupText(kind)); });
  if (found == ContourKinds.end()) return std::nullopt;
  return *found;
}

std::forward_list<Trail>& ContoursOf(Map& map, ContourKind kind) {
  return kind == ContourKind::Classic ? map.contourTrails : map.continuousContours;
}

bool OffersContours(const Map& map) { return map.contourEnabled != 0 && map.contourInterval != 0; }

Map* MapWithContours(Map* map) {
  while (map != nullptr && !OffersContours(*map)) map = map->basis;
  return map;
}

TrailPanelRow& AddContourRow(MapWindow& view, Trail& trail, ContourKind kind) {
  TrailPanelRow& contours = ContoursRow(RowMaker{}, view, kind);
  return AddBelowType(RowMaker{}, contours.children, &contours, trail);
}

void AddContourGroups(MapWindow& view) {
  std::vector<Map*> offering;
  for (Map* map = view.map; map != nullptr; map = map->basis) {
    if (OffersContours(*map)) offering.insert(offering.begin(), map);
  }
  for (const ContourKind kind : ContourKinds) {
    const bool isThere = std::any_of(
        view.trailViews.begin(), view.trailViews.end(),
        [&](const TrailPanelRow& row) { return SameName(row.text, ContourGroupText(kind)); });
    if (isThere) continue;
    for (Map* map : offering) AddContoursOfMap(RowMaker{}, view, *map, kind);
  }
}

TrailPanelRow& RowForText(std::list<TrailPanelRow>& rows, const TrailPanelRow* parent,
                          std::string_view text, const Trail* sample) {
  for (TrailPanelRow& row : rows) {
    if (!row.fixed && SameName(row.text, text)) return row;
  }
  return InsertRow(rows, MakeTrailRow(parent, text, nullptr, sample));
}

TrailPanelRow MakeTrailRow(const TrailPanelRow* parent, std::string_view text, Trail* trail,
                           const Trail* sample) {
  TrailPanelRow row;
  row.text = text;
  row.trail = trail;
  if (parent != nullptr) {
    row.visible = parent->visible && (trail == nullptr || !IsHidden(*trail));
    row.lineStyle = parent->lineStyle;
    row.color = parent->color;
    row.labelMode = parent->labelMode;
    row.markStyle = parent->markStyle;
  } else {
    // A group that a nameless trail makes is one of follows of animals, which start hidden.
    row.visible = sample == nullptr || (!IsHidden(*sample) && sample->name.has_value());
    row.lineStyle = LineStyle::Solid;
    row.labelMode = LabelMode::Auto;
    row.color = ColorOfType(text);
  }
  const Trail* look = trail != nullptr ? trail : sample;
  if (look != nullptr) TakeLookOfTrail(row, *look);
  return row;
}

TrailPanelRow* FindTrailRow(MapWindow& view, const Trail& trail) {
  for (TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
    if (row->trail == &trail) return row;
  }
  return nullptr;
}

TrailPanelRow* FirstSelectedRow(std::list<TrailPanelRow>& rows) {
  for (TrailPanelRow* row : TrailRowsInOrder(rows)) {
    if (row->selected) return row;
  }
  return nullptr;
}

RangePanelRow* FirstSelectedRow(std::list<RangePanelRow>& rows) {
  for (RangePanelRow& row : rows) {
    if (row.selected) return &row;
  }
  return nullptr;
}

}  // namespace orvane
