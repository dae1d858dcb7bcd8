#pragma once

#include "shell/panes/pane_model.h"
#include "view/map_window.h"

#include <unordered_map>
#include <vector>

namespace orvane {

/// The tree of trail rows of a view.
class TrailTreeModel final : public PaneModel {
  Q_OBJECT

 public:
  /// \param view  must outlive the model
  TrailTreeModel(MapWindow& view, QObject* parent);

  TrailPanelRow* RowOf(const QModelIndex& index) const;
  /// \return an invalid index for a row that is not in the tree
  QModelIndex IndexOf(const TrailPanelRow* row) const;

  void Rebuild() override;
  void Refresh() override;
  PaneRowLook LookOf(const QModelIndex& index) const override;
  bool IsSelected(const QModelIndex& index) const override { return RowOf(index)->selected; }
  QItemSelection Selected() const override;
  std::vector<QModelIndex> Groups() const override;
  bool IsOpen(const QModelIndex& index) const override { return RowOf(index)->open; }
  QModelIndex IndexOfPointer(const void* row) const override {
    return IndexOf(static_cast<const TrailPanelRow*>(row));
  }

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;

 private:
  /// Where a row is in the tree. The row itself knows only what is below it.
  struct Place {
    const TrailPanelRow* parent = nullptr;
    int number = 0;
    int depth = 0;
    std::vector<TrailPanelRow*> children;
  };

  void Take(std::list<TrailPanelRow>& rows, const TrailPanelRow* parent, int depth);
  const Place* PlaceOf(const TrailPanelRow* row) const;
  void TellOf(const QModelIndex& parent);

  MapWindow& view_;
  std::unordered_map<const TrailPanelRow*, Place> places_;  ///< null for the invisible root
  std::vector<const TrailPanelRow*> groups_;                ///< rows with rows below them
};

}  // namespace orvane
