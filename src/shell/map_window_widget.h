#pragma once

#include "shell/map/map_view.h"

#include <QMainWindow>

namespace orvane {

class Shell;

/// A window on one map. Several may show the same map, each in its own way. It frees itself when
/// it is closed; the map stays.
class MapWindowWidget final : public QMainWindow {
  Q_OBJECT

 public:
  /// \param shell  opens what is dropped on the window; must outlive it, as must `map`
  MapWindowWidget(Shell& shell, Map& map);

  MapView& View() { return *mapView_; }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  Shell& shell_;
  MapView* mapView_;
};

}  // namespace orvane
