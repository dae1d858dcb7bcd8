#include "shell/reports/elevation_plot.h"

#include "model/workspace.h"
#include "paint/qt_canvas.h"
#include "reports/profile_drawing.h"
#include "reports/profile_labels.h"
#include "reports/profile_view.h"
#include "shell/map/info_rows_widget.h"
#include "shell/map/wheel_turn.h"
#include "view/view_transform.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

/// The filling stops after this time to let events be handled.
constexpr qint64 SliceMilliseconds = 25;

constexpr int LongStep = 10;  ///< columns, of the arrows with Ctrl and Shift
constexpr int EighthsOfPage = 7;

constexpr QRgb MarkRgb = 0xFF808080;

}  // namespace

/// Shows what is under the pointer.
class ElevationPlot::InfoPane final : public InfoRowsWidget {
 public:
  explicit InfoPane(QWidget& plot) : InfoRowsWidget(plot) {
    setObjectName(QStringLiteral("elevationInfo"));
    setAccessibleName(QStringLiteral("Information about the place under the pointer"));
  }
  using InfoRowsWidget::ForgetSize;
  using InfoRowsWidget::ShowRows;
};

ElevationPlot::ElevationPlot(ElevationView view, Color background, QWidget* parent)
    : QWidget(parent), view_(std::move(view)), background_(background), info_(new InfoPane(*this)) {
  setObjectName(QStringLiteral("elevationPlot"));
  setAccessibleName(QStringLiteral("Profile"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(64, 48);
  for (QTimer* timer : {&fillTimer_, &infoTimer_}) {
    timer->setSingleShot(true);
    timer->setInterval(0);
  }
  connect(&fillTimer_, &QTimer::timeout, this, &ElevationPlot::Redraw);
  connect(&infoTimer_, &QTimer::timeout, this, &ElevationPlot::RefreshInfo);
}

ElevationPlot::~ElevationPlot() = default;

QSize ElevationPlot::sizeHint() const { return {800, 320}; }

QSize ElevationPlot::DeviceSize() const {
  const double ratio = devicePixelRatioF();
  return {static_cast<int>(std::ceil(width() * ratio)),
          static_cast<int>(std::ceil(height() * ratio))};
}

const std::vector<InfoRow>& ElevationPlot::InfoPaneRows() const { return info_->Rows(); }

int ElevationPlot::DeviceColumn(const QPointF& position) const {
  return RoundToPixel(std::floor(position.x() * devicePixelRatioF()));
}

// --- Changes ------------------------------------------------------------------------------------

void ElevationPlot::Change(const std::function<void(ElevationView& view)>& change) {
  change(view_);
  LayOut();
}

bool ElevationPlot::Follow(const LineIdentity& identity) {
  if (IsLineThere(view_)) {
    FollowLine(view_);
  } else if (!FindLineAgain(view_, identity)) {
    return false;
  }
  LayOut();
  return true;
}

void ElevationPlot::SetDisplay(CoordinateDisplay display) {
  if (display == display_) return;
  display_ = display;
  info_->ForgetSize();
  Redraw();
}

void ElevationPlot::Redraw() {
  bufferOld_ = true;
  infoTimer_.start();
  update();
}

void ElevationPlot::ToggleInfo() {
  ToggleElevationInfo(view_);
  RefreshInfo();
}

bool ElevationPlot::EndDrag() {
  if ((view_.flags & ElevationPanning) == 0) return false;
  EndElevationPan(view_);
  unsetCursor();
  return true;
}

// --- Drawing ------------------------------------------------------------------------------------

void ElevationPlot::LayOut() {
  const double pixelsPerInch = logicalDpiY() * devicePixelRatioF();
  if (!fonts_ || fonts_->PixelsPerInch() != pixelsPerInch) {
    fonts_ = std::make_unique<CanvasFonts>(pixelsPerInch);
    info_->ForgetSize();
  }
  view_.lineHeight = fonts_->LineHeight(CanvasFont::Small);
  view_.ascent = fonts_->Ascent(CanvasFont::Small);
  const QSize size = DeviceSize();
  RefreshElevation(view_, size.width(), size.height(), [this](std::string_view text) {
    return fonts_->TextWidth(CanvasFont::Small, text);
  });
  layoutOld_ = false;
  filling_.Restart();
  Redraw();
  Q_EMIT viewChanged();
}

const ElevationView& ElevationPlot::FinishedView() {
  if (layoutOld_) LayOut();
  filling_.Run(view_, [] { return true; });
  return view_;
}

void ElevationPlot::DrawView(Canvas& canvas) const {
  constexpr Color HintColor = 0x757575;
  canvas.Clear(background_);
  DrawElevation(view_, display_, canvas);
  const std::vector<std::string_view> hint = EmptyPlotTexts(view_);
  int baseline = (view_.plotHeight - static_cast<int>(hint.size()) * view_.lineHeight) / 2;
  canvas.SetForeColor(HintColor);
  for (const std::string_view text : hint) {
    baseline += view_.lineHeight;
    const int left = view_.leftMargin + (view_.plotWidth - canvas.TextWidth(text)) / 2;
    canvas.DrawText({std::max(left, 0), baseline}, text);
  }
}

void ElevationPlot::DrawBuffer() {
  const QSize size = DeviceSize();
  if (buffer_.size() != size) buffer_ = QImage(size, QImage::Format_RGB32);
  buffer_.setDevicePixelRatio(1);
  bufferOld_ = false;
  if (buffer_.isNull()) return;
  QPainter painter(&buffer_);
  const bool smooth = view_.map->workspace->preferences.smoothLines;
  QtCanvas canvas(painter, *fonts_, {0, 0, size.width(), size.height()}, {.antialias = smooth});
  DrawView(canvas);
}

void ElevationPlot::PaintMark(QPainter& painter) const {
  const double ratio = devicePixelRatioF();
  const double x = (view_.leftMargin + PointerColumn(view_)) / ratio;
  painter.fillRect(QRectF(x, 0, 1 / ratio, view_.plotHeight / ratio), QColor::fromRgb(MarkRgb));
}

void ElevationPlot::paintEvent(QPaintEvent* event) {
  // Only here is the pixel ratio of the window certain, and it may have changed.
  if (layoutOld_ || buffer_.size() != DeviceSize()) LayOut();
  if (bufferOld_) {
    QElapsedTimer timer;
    timer.start();
    const bool done = filling_.Run(view_, [&timer] { return timer.elapsed() < SliceMilliseconds; });
    DrawBuffer();
    infoTimer_.start();
    if (!done) fillTimer_.start();
  }
  buffer_.setDevicePixelRatio(devicePixelRatioF());
  QPainter painter(this);
  painter.setClipRegion(event->region());
  painter.drawImage(0, 0, buffer_);
  if (columnByKey_) PaintMark(painter);
}

void ElevationPlot::RefreshInfo() {
  if ((view_.flags & ElevationInfoShown) == 0 || layoutOld_) {
    info_->hide();
    return;
  }
  info_->ShowRows(ElevationInfoRows(view_, display_), *fonts_, background_);
}

void ElevationPlot::resizeEvent(QResizeEvent*) {
  info_->ForgetSize();
  LayOut();
}

// --- Keys ---------------------------------------------------------------------------------------

bool ElevationPlot::MoveByKey(const QKeyEvent& event) {
  const auto change = [this](auto move) {
    Change(move);
    return true;
  };
  switch (event.key()) {
    case Qt::Key_Plus:
      return change([](ElevationView& view) { ZoomElevation(view, true); });
    case Qt::Key_Minus:
      return change([](ElevationView& view) { ZoomElevation(view, false); });
    case Qt::Key_Right:
      return change([](ElevationView& view) { ShiftElevation(view, 1); });
    case Qt::Key_Left:
      return change([](ElevationView& view) { ShiftElevation(view, -1); });
    case Qt::Key_PageDown:
      return change([](ElevationView& view) { ShiftElevation(view, EighthsOfPage); });
    case Qt::Key_PageUp:
      return change([](ElevationView& view) { ShiftElevation(view, -EighthsOfPage); });
    case Qt::Key_Home:
      return change([](ElevationView& view) { ShowLineEnd(view, false); });
    case Qt::Key_End:
      return change([](ElevationView& view) { ShowLineEnd(view, true); });
    default:
      return false;
  }
}

bool ElevationPlot::StepByKey(const QKeyEvent& event) {
  if (!event.modifiers().testFlag(Qt::ControlModifier)) return false;
  if (event.key() != Qt::Key_Left && event.key() != Qt::Key_Right) return false;
  const int step = event.modifiers().testFlag(Qt::ShiftModifier) ? LongStep : 1;
  StepElevationPointer(view_, event.key() == Qt::Key_Left ? -step : step);
  columnByKey_ = true;
  RefreshInfo();
  update();
  return true;
}

void ElevationPlot::keyPressEvent(QKeyEvent* event) {
  if (!StepByKey(*event) && !MoveByKey(*event)) QWidget::keyPressEvent(event);
}

// --- Mouse --------------------------------------------------------------------------------------

void ElevationPlot::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) return;
  StartElevationPan(view_, DeviceColumn(event->position()));
  setCursor(Qt::ClosedHandCursor);
}

void ElevationPlot::mouseMoveEvent(QMouseEvent* event) {
  // If a box came up during a drag, the release went to the box.
  if (event->buttons() == Qt::NoButton) EndDrag();
  const int row = RoundToPixel(std::floor(event->position().y() * devicePixelRatioF()));
  const bool moved = MoveElevationPointer(view_, DeviceColumn(event->position()), row);
  if (moved) {
    LayOut();
    return;
  }
  infoTimer_.start();
  if (std::exchange(columnByKey_, false)) update();
}

void ElevationPlot::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && EndDrag()) LayOut();
}

void ElevationPlot::mouseDoubleClickEvent(QMouseEvent* event) {
  const bool closer = event->button() == Qt::LeftButton;
  Change([&](ElevationView& view) {
    ZoomElevationAbout(view, DeviceColumn(event->position()), closer);
  });
}

void ElevationPlot::wheelEvent(QWheelEvent* event) {
  event->accept();
  const WheelTurn turn = ReadWheel(*event);
  Change([&](ElevationView& view) {
    PanElevation(view, turn.way.x() * devicePixelRatioF());
    ScaleElevation(view, DeviceColumn(event->position()), turn.factor);
  });
}

bool ElevationPlot::event(QEvent* event) {
  if (event->type() != QEvent::NativeGesture) return QWidget::event(event);
  const auto& gesture = *static_cast<QNativeGestureEvent*>(event);
  if (gesture.gestureType() != Qt::ZoomNativeGesture) return QWidget::event(event);
  Change([&](ElevationView& view) {
    ScaleElevation(view, DeviceColumn(gesture.position()), 1 + gesture.value());
  });
  return true;
}

}  // namespace orvane
