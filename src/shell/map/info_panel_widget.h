#pragma once

#include "view/info_panel.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <vector>

namespace orvane {

class MapView;

/// The info panel in the upper right corner of the map: shows what is under the pointer and, during
/// a rubber band, its size. Mouse events go through to the map.
///
/// Several moves of the pointer in a row update it once, so that it never slows the map down.
class InfoPanelWidget final : public QWidget {
  Q_OBJECT

 public:
  /// Becomes a child of `view`, follows its changes, and shows or hides itself by its flags.
  explicit InfoPanelWidget(MapView& view);

  /// What it shows at the moment.
  const std::vector<InfoRow>& Rows() const { return rows_; }

  /// Updates it at once.
  void Refresh();

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void RefreshSoon() { soon_.start(); }
  void Draw();

  MapView& view_;
  QTimer soon_;
  std::vector<InfoRow> rows_;
  InfoPanelSize size_;  ///< in device pixels; does not shrink while it shows the same kind of rows
  bool bandShown_ = false;
  QImage buffer_;
};

}  // namespace orvane
