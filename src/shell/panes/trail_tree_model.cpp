#include "shell/panes/trail_tree_model.h"

#include "paint/display_text.h"
#include "panes/pane_clicks.h"

namespace orvane {

TrailTreeModel::TrailTreeModel(MapWindow& view, QObject* parent) : PaneModel(parent), view_(view) {
  Take(view_.trailViews, nullptr, 0);
}

void TrailTreeModel::Take(std::list<TrailPanelRow>& rows, const TrailPanelRow* parent, int depth) {
  std::vector<TrailPanelRow*> children;
  children.reserve(rows.size());
  for (TrailPanelRow& row : rows) {
    places_[&row] = {.parent = parent,
                     .number = static_cast<int>(children.size()),
                     .depth = depth,
                     .children = {}};
    children.push_back(&row);
    if (row.children.empty()) continue;
    groups_.push_back(&row);
    Take(row.children, &row, depth + 1);
  }
  places_[parent].children = std::move(children);
}

const TrailTreeModel::Place* TrailTreeModel::PlaceOf(const TrailPanelRow* row) const {
  const auto found = places_.find(row);
  return found == places_.end() ? nullptr : &found->second;
}

TrailPanelRow* TrailTreeModel::RowOf(const QModelIndex& index) const {
  return index.isValid() ? static_cast<TrailPanelRow*>(index.internalPointer()) : nullptr;
}

QModelIndex TrailTreeModel::IndexOf(const TrailPanelRow* row) const {
  const Place* place = row == nullptr ? nullptr : PlaceOf(row);
  if (place == nullptr) return {};
  return createIndex(place->number, 0, row);
}

void TrailTreeModel::Rebuild() {
  beginResetModel();
  places_.clear();
  groups_.clear();
  Take(view_.trailViews, nullptr, 0);
  endResetModel();
}

void TrailTreeModel::Refresh() { TellOf({}); }

void TrailTreeModel::TellOf(const QModelIndex& parent) {
  const int rows = rowCount(parent);
  if (rows == 0) return;
  Q_EMIT dataChanged(index(0, 0, parent), index(rows - 1, 0, parent));
  // Rows that don't show need no news, and there can be many.
  for (TrailPanelRow* row : PlaceOf(RowOf(parent))->children) {
    if (row->open) TellOf(IndexOf(row));
  }
}

QItemSelection TrailTreeModel::Selected() const {
  QItemSelection selection;
  const auto isSelected = [](const TrailPanelRow& row) { return row.selected; };
  AddSelected(PlaceOf(nullptr)->children, {}, isSelected, selection);
  for (const TrailPanelRow* group : groups_) {
    AddSelected(PlaceOf(group)->children, IndexOf(group), isSelected, selection);
  }
  return selection;
}

std::vector<QModelIndex> TrailTreeModel::Groups() const {
  std::vector<QModelIndex> groups;
  groups.reserve(groups_.size());
  for (const TrailPanelRow* group : groups_) groups.push_back(IndexOf(group));
  return groups;
}

PaneRowLook TrailTreeModel::LookOf(const QModelIndex& index) const {
  const TrailPanelRow& row = *RowOf(index);
  return {.text = DisplayText(row.text),
          .color = PaneColor(row.color),
          .depth = PlaceOf(&row)->depth,
          .hasTriangle = HasTriangle(row),
          .open = row.open,
          .visible = row.visible,
          .selected = row.selected,
          .fixed = row.fixed};
}

QModelIndex TrailTreeModel::index(int row, int column, const QModelIndex& parent) const {
  const Place* place = PlaceOf(RowOf(parent));
  if (column != 0 || row < 0 || place == nullptr ||
      static_cast<size_t>(row) >= place->children.size()) {
    return {};
  }
  return createIndex(row, 0, place->children[static_cast<size_t>(row)]);
}

QModelIndex TrailTreeModel::parent(const QModelIndex& child) const {
  const Place* place = child.isValid() ? PlaceOf(RowOf(child)) : nullptr;
  return place == nullptr ? QModelIndex() : IndexOf(place->parent);
}

int TrailTreeModel::rowCount(const QModelIndex& parent) const {
  const Place* place = PlaceOf(RowOf(parent));
  return place == nullptr ? 0 : static_cast<int>(place->children.size());
}

}  // namespace orvane
