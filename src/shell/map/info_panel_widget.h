#pragma once

#include "view/info_panel.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <vector>

namespace orvane {

class MapView;

/// The info panel in the upper right corner of the map: what stands under the pointer and, during
/// a rubber band, how far it reaches. Events of the mouse go through it to the map.
///
/// Its rows are worked out once for all moves of the pointer that came together, so that it never
/// holds the map up.
class InfoPanelWidget final : public QWidget {
  Q_OBJECT

 public:
  /// A child of `view`; it follows it by itself and shows itself as its flags tell.
  explicit InfoPanelWidget(MapView& view);

  /// What it reads at the moment.
  const std::vector<InfoRow>& Rows() const { return rows_; }

  /// Brings it up to date at once.
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
  InfoPanelSize size_;  ///< in device pixels; never shrinks while the same kind of rows is shown
  bool bandShown_ = false;
  QImage buffer_;
};

}  // namespace orvane
