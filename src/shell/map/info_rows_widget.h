#pragma once

#include "view/info_panel.h"

#include <QImage>
#include <QWidget>

#include <vector>

namespace orvane {

class CanvasFonts;

/// Rows about a place in the upper right corner of its parent, on the map and on a profile. Mouse
/// events go through to the parent.
class InfoRowsWidget : public QWidget {
  Q_OBJECT

 public:
  /// Hidden until the first rows are shown.
  explicit InfoRowsWidget(QWidget& parent);

  /// What it shows at the moment.
  const std::vector<InfoRow>& Rows() const { return rows_; }

 protected:
  /// Shows rows, as large as they need. The pane does not shrink before `ForgetSize`, so that it
  /// stays calm while the pointer moves.
  void ShowRows(std::vector<InfoRow> rows, const CanvasFonts& fonts, Color background);
  void ForgetSize() { size_ = {}; }

  void paintEvent(QPaintEvent* event) override;

 private:
  void Draw(const CanvasFonts& fonts);

  std::vector<InfoRow> rows_;
  InfoPanelSize size_;  ///< in device pixels
  Color background_ = 0xFFFFFF;
  QImage buffer_;
};

}  // namespace orvane
