#include "shell/map/info_panel_widget.h"

#include "paint/display_text.h"
#include "paint/qt_canvas.h"
#include "shell/map/map_view.h"
#include "view/pointer.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

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

InfoPanelWidget::InfoPanelWidget(MapView& view) : QWidget(&view), view_(view) {
  setObjectName(QStringLiteral("infoPanel"));
  setAccessibleName(QStringLiteral("Information about the place under the pointer"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::NoFocus);
  hide();
  soon_.setSingleShot(true);
  soon_.setInterval(0);
  connect(&soon_, &QTimer::timeout, this, &InfoPanelWidget::Refresh);
  connect(&view_, &MapView::pointerMoved, this, &InfoPanelWidget::RefreshSoon);
  connect(&view_, &MapView::viewChanged, this, &InfoPanelWidget::RefreshSoon);
  view_.installEventFilter(this);
}

bool InfoPanelWidget::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
    size_ = {};
    RefreshSoon();
  }
  return false;
}

void InfoPanelWidget::Refresh() {
  soon_.stop();
  const MapWindow& view = view_.Shown();
  const bool shown = (view.flags & MapWindowInfoShown) != 0 && view_.Fonts() != nullptr;
  if (!shown) {
    hide();
    return;
  }
  rows_ = InfoRows(view, view_.Altitudes());
  Draw();
  setAccessibleDescription(SpokenText(rows_));
  const double ratio = view_.devicePixelRatioF();
  const int width = static_cast<int>(std::ceil(size_.width / ratio));
  const int height = static_cast<int>(std::ceil(size_.height / ratio));
  setGeometry(std::max(0, view_.width() - width), 0, width, height);
  show();
  update();
}

void InfoPanelWidget::Draw() {
  const bool band = IsBandDrawn(view_.Shown());
  if (band != bandShown_) size_ = {};
  bandShown_ = band;
  // Measuring text needs a canvas, and a canvas needs something to paint on.
  if (buffer_.isNull()) buffer_ = QImage(1, 1, QImage::Format_RGB32);
  {
    QPainter painter(&buffer_);
    QtCanvas canvas(painter, *view_.Fonts(), {0, 0, 1, 1});
    const InfoPanelSize needed = MeasureInfoPanel(canvas, rows_);
    size_.width = std::max(size_.width, needed.width);
    size_.height = needed.height;
  }
  const QSize size(size_.width, size_.height);
  if (buffer_.size() != size) buffer_ = QImage(size, QImage::Format_RGB32);
  buffer_.setDevicePixelRatio(1);
  QPainter painter(&buffer_);
  QtCanvas canvas(painter, *view_.Fonts(), {0, 0, size_.width, size_.height});
  DrawInfoPanel(canvas, rows_, size_, view_.Shown().background);
}

void InfoPanelWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), PaintColor(view_.Shown().background));
  buffer_.setDevicePixelRatio(devicePixelRatioF());
  painter.drawImage(0, 0, buffer_);
}

}  // namespace orvane
