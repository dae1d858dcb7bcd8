#include "shell/map/map_view.h"

#include "paint/qt_canvas.h"
#include "view/draw_map.h"
#include "view/panel_rows.h"
#include "view/range_rows.h"
#include "view/view_transform.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace orvane {
namespace {

/// Two notches of a wheel double the scale. A notch is 120 units; touch pads give fewer at a time.
constexpr double WheelUnitsPerDoubling = 240;

constexpr QRgb HintRgb = 0xFF757575;

}  // namespace

bool HasPoints(const Map& map) {
  for (const Map* each = &map; each != nullptr; each = each->basis) {
    if (!each->loosePoints.empty() || !each->namelessPoints.empty()) return true;
    for (const Trail& trail : each->trails) {
      if (!trail.points.empty()) return true;
    }
  }
  return false;
}

MapView::MapView(Map& map, QWidget* parent) : QWidget(parent) {
  view_.map = &map;
  BuildTrailRows(view_);
  BuildRangeRows(view_);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(64, 48);
  setAccessibleName(tr("Map"));
}

MapView::~MapView() = default;

QSize MapView::sizeHint() const { return {1200, 800}; }

void MapView::RequestRepaint() {
  bufferOld_ = true;
  update();
  Q_EMIT viewChanged();
}

Pixel MapView::DevicePixel(QPointF position) const {
  const double ratio = devicePixelRatioF();
  return {static_cast<int>(std::floor(position.x() * ratio)),
          static_cast<int>(std::floor(position.y() * ratio))};
}

void MapView::CenterPointer() { view_.pointer = {view_.centerColumn, view_.centerRow}; }

void MapView::FitToWidget() {
  const double ratio = devicePixelRatioF();
  const int columns = static_cast<int>(std::ceil(width() * ratio));
  const int rows = static_cast<int>(std::ceil(height() * ratio));
  if (ratio != pixelRatio_) {
    // On a screen of finer pixels the map keeps its size in the hand.
    view_.scale = static_cast<float>(static_cast<double>(view_.scale) * ratio / pixelRatio_);
    pixelRatio_ = ratio;
    bufferOld_ = true;
  }
  const double pixelsPerInch = logicalDpiY() * ratio;
  if (!fonts_ || fonts_->PixelsPerInch() != pixelsPerInch) {
    fonts_ = std::make_unique<CanvasFonts>(pixelsPerInch);
    bufferOld_ = true;
  }
  if (view_.clientWidth == columns && view_.clientHeight == rows) return;
  SizeView(view_, columns, rows);
  if (!underMouse()) CenterPointer();
  bufferOld_ = true;
}

void MapView::DrawBuffer() {
  const QSize size(view_.clientWidth, view_.clientHeight);
  if (buffer_.size() != size) buffer_ = QImage(size, QImage::Format_RGB32);
  buffer_.setDevicePixelRatio(1);
  if (buffer_.isNull()) return;
  const PixelRect area{0, 0, view_.clientWidth, view_.clientHeight};
  QPainter painter(&buffer_);
  QtCanvas canvas(painter, *fonts_, area);
  view_.target = &canvas;
  TakeFontMetrics(view_);
  canvas.Clear(view_.background);
  DrawMap(view_, area);
  view_.target = nullptr;
  bufferOld_ = false;
}

void MapView::paintEvent(QPaintEvent* event) {
  // The pixel ratio of the window is known for certain, and may have changed, only here.
  FitToWidget();
  if (bufferOld_) DrawBuffer();
  buffer_.setDevicePixelRatio(devicePixelRatioF());
  QPainter painter(this);
  painter.setClipRegion(event->region());
  painter.drawImage(0, 0, buffer_);
  if (!HasPoints(*view_.map)) PaintHint();
}

void MapView::PaintHint() {
  QPainter painter(this);
  painter.setPen(QColor::fromRgb(HintRgb));
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  const QString heading = tr("This map is empty");
  const QString advice = tr("Drop a map file here to open it");
  const double largeHeight = QFontMetricsF(large).height();
  const double middle = height() / 2.0;
  painter.setFont(large);
  painter.drawText(QRectF(0, middle - largeHeight, width(), largeHeight), Qt::AlignCenter, heading);
  painter.setFont(font());
  painter.drawText(QRectF(0, middle, width(), 2 * QFontMetricsF(font()).height()), Qt::AlignCenter,
                   advice);
}

void MapView::resizeEvent(QResizeEvent*) {
  FitToWidget();
  RequestRepaint();
}

bool MapView::StepByKey(const QKeyEvent& event) {
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  const bool control = event.modifiers().testFlag(Qt::ControlModifier);
  switch (event.key()) {
    case Qt::Key_Up:
      StepView(view_, ViewStep::North, shift, control);
      return true;
    case Qt::Key_Down:
      StepView(view_, ViewStep::South, shift, control);
      return true;
    case Qt::Key_Right:
      StepView(view_, ViewStep::East, shift, control);
      return true;
    case Qt::Key_Left:
      StepView(view_, ViewStep::West, shift, control);
      return true;
    default:
      return false;
  }
}

void MapView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Plus) {
    ZoomOnPixel(view_, view_.pointer, 2);
  } else if (event->key() == Qt::Key_Minus) {
    ZoomOnPixel(view_, view_.pointer, 0.5);
  } else if (!StepByKey(*event)) {
    QWidget::keyPressEvent(event);
    return;
  }
  RequestRepaint();
}

void MapView::mousePressEvent(QMouseEvent* event) {
  if ((view_.flags & MapWindowDrag) != 0) return;  // a second button changes nothing
  const Pixel pixel = DevicePixel(event->position());
  view_.pressPoint = pixel;
  view_.pointer = pixel;
  view_.savedTop = view_.top;
  view_.savedLeft = view_.left;
  view_.flags |= MapWindowDrag;
  if (event->button() != Qt::LeftButton) {
    view_.flags |= MapWindowPan;
    setCursor(Qt::ClosedHandCursor);
  }
}

void MapView::mouseMoveEvent(QMouseEvent* event) {
  const Pixel pixel = DevicePixel(event->position());
  view_.pointer = pixel;
  if ((view_.flags & MapWindowPan) != 0) {
    PanTo(view_, pixel);
    RequestRepaint();
  }
  Q_EMIT pointerMoved();
}

void MapView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->buttons() != Qt::NoButton) return;
  view_.pointer = DevicePixel(event->position());
  view_.flags &= ~std::uint32_t{MapWindowDrag | MapWindowPan};
  unsetCursor();
}

void MapView::mouseDoubleClickEvent(QMouseEvent* event) {
  view_.pointer = DevicePixel(event->position());
  ZoomByDoubleClick(view_, event->modifiers().testFlag(Qt::ShiftModifier),
                    event->button() != Qt::LeftButton);
  view_.flags &= ~std::uint32_t{MapWindowPan};
  RequestRepaint();
}

void MapView::wheelEvent(QWheelEvent* event) {
  const int units = event->angleDelta().y();
  event->accept();
  if (units == 0) return;
  ZoomAboutPixel(view_, DevicePixel(event->position()), std::exp2(units / WheelUnitsPerDoubling));
  RequestRepaint();
}

void MapView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  Q_EMIT focusIn();
}

void MapView::leaveEvent(QEvent*) {
  // Without a pointer over the map the keys zoom on its middle.
  if ((view_.flags & MapWindowDrag) == 0) CenterPointer();
}

}  // namespace orvane
