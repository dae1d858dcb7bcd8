#pragma once

#include "elevation/contours_work.h"
#include "shell/panes/titled_pane.h"
#include "view/map_window.h"

#include <functional>

namespace orvane {

class TrailTreeModel;
enum class PaneZone;

/// The pane "Trails": the tree of all trails, in groups of their types.
class TrailPane final : public TitledPane {
  Q_OBJECT

 public:
  /// Does work that may make contours, and hands it what takes the progress of them.
  using ContourRunner = std::function<void(const std::function<void(const ContourProgress&)>&)>;

  /// \param view  whose rows are shown; must outlive the pane
  TrailPane(MapWindow& view, QWidget* parent);

  /// How clicks that may make contours are carried out; at once if empty.
  void SetContourRunner(ContourRunner runner) { contourRunner_ = std::move(runner); }

 Q_SIGNALS:
  /// A row was double-clicked, or Return was pressed on it: its trail is to be edited, or a new one
  /// if the row is "New".
  void editRequested(orvane::TrailPanelRow* row);
  /// The selected rows are dragged; `end` when the button is released.
  void rowsDragged(QPoint global, bool end);
  void dragCanceled();

 private:
  TrailPane(MapWindow& view, TrailTreeModel& model, QWidget* parent);
  void Click(TrailPanelRow* row, PaneZone zone, bool shift);
  void Toggle(TrailPanelRow& row);
  void WithContours(const std::function<void(const ContourProgress&)>& work);

  MapWindow& view_;
  TrailTreeModel& model_;
  ContourRunner contourRunner_;
};

}  // namespace orvane
