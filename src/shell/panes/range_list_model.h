#pragma once

#include "shell/panes/pane_model.h"
#include "view/map_window.h"

#include <vector>

namespace orvane {

/// The list of range rows of a view.
class RangeListModel final : public PaneModel {
  Q_OBJECT

 public:
  /// \param view  must outlive the model
  RangeListModel(MapWindow& view, QObject* parent);

  RangePanelRow* RowOf(const QModelIndex& index) const;

  void Rebuild() override;
  void Refresh() override;
  PaneRowLook LookOf(const QModelIndex& index) const override;
  bool IsSelected(const QModelIndex& index) const override { return RowOf(index)->selected; }
  QItemSelection Selected() const override;
  std::vector<QModelIndex> Groups() const override { return {}; }
  bool IsOpen(const QModelIndex& /*index*/) const override { return false; }
  QModelIndex IndexOfPointer(const void* row) const override;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;

 private:
  void Take();

  MapWindow& view_;
  std::vector<RangePanelRow*> rows_;
};

}  // namespace orvane
