#pragma once

#include "shell/panes/titled_pane.h"
#include "view/map_window.h"

namespace orvane {

class RangeListModel;

/// The pane "Ranges": the ranges, then the overlaps of two.
class RangePane final : public TitledPane {
  Q_OBJECT

 public:
  /// \param view  whose rows are shown; must outlive the pane
  RangePane(MapWindow& view, QWidget* parent);

  /// \param global  a pixel of the screen
  /// \return the row at that height; null above, below, and for a pane that is not shown
  RangePanelRow* RowAtHeight(QPoint global);
  /// Frames the row on which trails would drop; null for none.
  void SetDropTarget(const RangePanelRow* row);

 Q_SIGNALS:
  /// A row was double-clicked, or Return was pressed on it: its range is to be edited, or a new one
  /// if the row is "New".
  void editRequested(orvane::RangePanelRow* row);

 private:
  RangePane(MapWindow& view, RangeListModel& model, QWidget* parent);

  MapWindow& view_;
  RangeListModel& model_;
};

}  // namespace orvane
