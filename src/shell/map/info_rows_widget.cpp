#include "shell/map/info_rows_widget.h"

#include "paint/display_text.h"
#include "paint/qt_canvas.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane {
namespace {

/// The rows as one text, for screen readers.
QString SpokenText(const std::vector<InfoRow>& rows) {
  QStringList parts;
  for (const InfoRow& row : rows) {
    if (!row.text.empty()) parts.append(DisplayText(row.text).trimmed());
    if (!row.offset.empty()) parts.append(DisplayText(row.offset));
  }
  return parts.join(QStringLiteral(", "));
}

}  // namespace

InfoRowsWidget::InfoRowsWidget(QWidget& parent) : QWidget(&parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void InfoRowsWidget::ShowRows(std::vector<InfoRow> rows, const CanvasFonts& fonts,
                              Color background) {
  rows_ = std::move(rows);
  background_ = background;
  Draw(fonts);
  setAccessibleDescription(SpokenText(rows_));
  const QWidget& parent = *parentWidget();
  const double ratio = parent.devicePixelRatioF();
  const int width = static_cast<int>(std::ceil(size_.width / ratio));
  const int height = static_cast<int>(std::ceil(size_.height / ratio));
  setGeometry(std::max(0, parent.width() - width), 0, width, height);
  show();
  update();
}

void InfoRowsWidget::Draw(const CanvasFonts& fonts) {
  // Measuring text needs a canvas, and a canvas needs something to paint on.
  if (buffer_.isNull()) buffer_ = QImage(1, 1, QImage::Format_RGB32);
  {
    QPainter painter(&buffer_);
    QtCanvas canvas(painter, fonts, {0, 0, 1, 1});
    const InfoPanelSize needed = MeasureInfoPanel(canvas, rows_);
    size_.width = std::max(size_.width, needed.width);
    size_.height = needed.height;
  }
  const QSize size(size_.width, size_.height);
  if (buffer_.size() != size) buffer_ = QImage(size, QImage::Format_RGB32);
  buffer_.setDevicePixelRatio(1);
  QPainter painter(&buffer_);
  QtCanvas canvas(painter, fonts, {0, 0, size_.width, size_.height});
  DrawInfoPanel(canvas, rows_, size_, background_);
}

void InfoRowsWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), PaintColor(background_));
  buffer_.setDevicePixelRatio(devicePixelRatioF());
  painter.drawImage(0, 0, buffer_);
}

}  // namespace orvane
