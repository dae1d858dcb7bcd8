#pragma once

#include "shell/map/info_rows_widget.h"

#include <QTimer>

namespace orvane {

class MapView;

/// The info panel in the upper right corner of the map: shows what is under the pointer and, during
/// a rubber band, its size.
///
/// Several moves of the pointer in a row update it once, so that it never slows the map down.
class InfoPanelWidget final : public InfoRowsWidget {
  Q_OBJECT

 public:
  /// Becomes a child of `view`, follows its changes, and shows or hides itself by its flags.
  explicit InfoPanelWidget(MapView& view);

  /// Updates it at once.
  void Refresh();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void RefreshSoon() { soon_.start(); }

  MapView& view_;
  QTimer soon_;
  bool bandShown_ = false;
};

}  // namespace orvane
