#include "shell/editors/cell_item_model.h"

#include "editing/cell_model.h"
#include "paint/display_text.h"

namespace orvane {
namespace {

int RowsOf(const CellModel& cells) { return static_cast<int>(cells.RowCount()) + 1; }

int ColumnsOf(const CellModel& cells) { return static_cast<int>(cells.Columns().size()); }

}  // namespace

CellItemModel::CellItemModel(CellModel& cells, QObject* parent)
    : QAbstractTableModel(parent),
      cells_(cells),
      rows_(RowsOf(cells)),
      columns_(ColumnsOf(cells)) {}

void CellItemModel::ShowRows() {
  const int rows = RowsOf(cells_);
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  }
  if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
}

void CellItemModel::ShowColumns() {
  beginResetModel();
  rows_ = RowsOf(cells_);
  columns_ = ColumnsOf(cells_);
  endResetModel();
}

int CellItemModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int CellItemModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant CellItemModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  return DisplayText(
      cells_.GetCell(static_cast<size_t>(index.row()), static_cast<size_t>(index.column())));
}

QVariant CellItemModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical) {
    if (role != Qt::DisplayRole) return {};
    return section + 1 < rows_ ? QString::number(section + 1) : QStringLiteral("New row");
  }
  if (section < 0 || section >= columns_) return {};
  const CellColumn& column = cells_.Columns()[static_cast<size_t>(section)];
  if (role == Qt::DisplayRole) return DisplayText(column.title);
  if (role == Qt::AccessibleDescriptionRole) return DisplayText(column.hint);
  return {};
}

}  // namespace orvane
