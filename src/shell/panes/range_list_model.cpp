#include "shell/panes/range_list_model.h"

#include "paint/display_text.h"

#include <algorithm>

namespace orvane {

RangeListModel::RangeListModel(MapWindow& view, QObject* parent) : PaneModel(parent), view_(view) {
  Take();
}

void RangeListModel::Take() {
  rows_.clear();
  for (RangePanelRow& row : view_.rangeViews) rows_.push_back(&row);
}

RangePanelRow* RangeListModel::RowOf(const QModelIndex& index) const {
  return index.isValid() ? static_cast<RangePanelRow*>(index.internalPointer()) : nullptr;
}

void RangeListModel::Rebuild() {
  beginResetModel();
  Take();
  endResetModel();
}

void RangeListModel::Refresh() {
  if (!rows_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0));
}

PaneRowLook RangeListModel::LookOf(const QModelIndex& index) const {
  const RangePanelRow& row = *RowOf(index);
  return {.text = DisplayText(row.text.value_or("")),
          .color = PaneColor(row.color),
          .visible = row.visible,
          .selected = row.selected,
          .fixed = row.fixed};
}

QItemSelection RangeListModel::Selected() const {
  QItemSelection selection;
  AddSelected(
      rows_, {}, [](const RangePanelRow& row) { return row.selected; }, selection);
  return selection;
}

QModelIndex RangeListModel::index(int row, int column, const QModelIndex& parent) const {
  if (parent.isValid() || column != 0 || row < 0 || row >= rowCount()) return {};
  return createIndex(row, 0, rows_[static_cast<size_t>(row)]);
}

QModelIndex RangeListModel::IndexOfPointer(const void* row) const {
  const auto found = std::find(rows_.begin(), rows_.end(), row);
  return found == rows_.end() ? QModelIndex() : index(static_cast<int>(found - rows_.begin()), 0);
}

QModelIndex RangeListModel::parent(const QModelIndex& /*child*/) const { return {}; }

int RangeListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

}  // namespace orvane
