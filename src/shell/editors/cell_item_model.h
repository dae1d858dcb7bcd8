#pragma once

#include <QAbstractTableModel>

namespace orvane {

class CellModel;

/// The cells of an editor for the toolkit: the rows of the model and the blank one under them.
class CellItemModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// \param cells  must outlive this
  CellItemModel(CellModel& cells, QObject* parent);

  /// Call after the cells changed in any way, or rows came or went.
  void ShowRows();
  /// Call after other columns show.
  void ShowColumns();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  CellModel& cells_;
  int rows_;
  int columns_;
};

}  // namespace orvane
