#include "shell/map/map_view.h"

#include "model/workspace.h"
#include "paint/qt_canvas.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "shell/map/map_note.h"
#include "shell/map/wheel_turn.h"
#include "view/draw_map.h"
#include "view/find_in_map.h"
#include "view/map_notes.h"
#include "view/pointer.h"
#include "view/scrolling.h"
#include "view/view_transform.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QWheelEvent>

#include <cmath>

namespace orvane {
namespace {

constexpr QRgb HintRgb = 0xFF757575;

/// Lengths of the dashes of a rubber band and of the gaps between them, in widths of its line.
constexpr double BandDash = 4;

HeldKeys KeysOf(Qt::KeyboardModifiers modifiers) {
  return {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier)};
}

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
  shown_.map = &map;
  shown_.flags |= MapWindowInfoWaits;
  BuildTrailRows(shown_);
  BuildRangeRows(shown_);
  setObjectName(QStringLiteral("mapView"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(64, 48);
  setAccessibleName(QStringLiteral("Map"));
  grabGesture(Qt::PinchGesture);
  findTimer_.setSingleShot(true);
  notesTimer_.setSingleShot(true);
  connect(&findTimer_, &QTimer::timeout, this, &MapView::EndFind);
  connect(&notesTimer_, &QTimer::timeout, this, &MapView::FollowNotes);
}

MapView::~MapView() = default;

QSize MapView::sizeHint() const { return {1200, 800}; }

void MapView::RequestRepaint() {
  altitudes_.reset();  // the map may have changed
  ShowMoved();
}

void MapView::ShowMoved() {
  bufferOld_ = true;
  update();
  Q_EMIT viewChanged();
}

const AltitudeEstimates& MapView::Altitudes() {
  if (!altitudes_) altitudes_.emplace(*shown_.map);
  return *altitudes_;
}

Pixel MapView::DevicePixel(QPointF position) const {
  const double ratio = devicePixelRatioF();
  return {RoundToPixel(std::floor(position.x() * ratio)),
          RoundToPixel(std::floor(position.y() * ratio))};
}

void MapView::CenterPointer() { shown_.pointer = {shown_.centerColumn, shown_.centerRow}; }

void MapView::FitToWidget() {
  const double ratio = devicePixelRatioF();
  const int columns = static_cast<int>(std::ceil(width() * ratio));
  const int rows = static_cast<int>(std::ceil(height() * ratio));
  if (ratio != shown_.pixelRatio) {
    SetPixelRatio(shown_, ratio);
    bufferOld_ = true;
  }
  const double pixelsPerInch = logicalDpiY() * ratio;
  if (!fonts_ || fonts_->PixelsPerInch() != pixelsPerInch) {
    fonts_ = std::make_unique<CanvasFonts>(pixelsPerInch);
    bufferOld_ = true;
  }
  if (shown_.clientWidth == columns && shown_.clientHeight == rows) return;
  SizeView(shown_, columns, rows, savedView_ ? &*savedView_ : nullptr);
  ResetScrolling(shown_);
  if ((shown_.flags & MapWindowInfoWaits) != 0) {
    shown_.flags &= ~std::uint32_t{MapWindowInfoWaits};
    shown_.flags |= MapWindowInfoShown;
  }
  if (!underMouse()) CenterPointer();
  bufferOld_ = true;
}

void MapView::DrawBuffer() {
  const QSize size(shown_.clientWidth, shown_.clientHeight);
  if (buffer_.size() != size) buffer_ = QImage(size, QImage::Format_RGB32);
  buffer_.setDevicePixelRatio(1);
  if (buffer_.isNull()) return;
  const PixelRect area{0, 0, shown_.clientWidth, shown_.clientHeight};
  QPainter painter(&buffer_);
  const CanvasOptions options{.antialias = shown_.map->workspace->preferences.smoothLines};
  QtCanvas canvas(painter, *fonts_, area, options);
  shown_.target = &canvas;
  TakeFontMetrics(shown_);
  canvas.Clear(shown_.background);
  DrawMap(shown_, area);
  shown_.target = nullptr;
  bufferOld_ = false;
}

void MapView::paintEvent(QPaintEvent* event) {
  // Only here is the pixel ratio of the window certain, and it may have changed.
  FitToWidget();
  if (bufferOld_) DrawBuffer();
  buffer_.setDevicePixelRatio(devicePixelRatioF());
  QPainter painter(this);
  painter.setClipRegion(event->region());
  painter.drawImage(0, 0, buffer_);
  if (IsBandDrawn(shown_)) {
    PaintBand(painter, shown_.pressPoint, shown_.pointer, shown_.transectMode || controlHeld_);
  } else if ((shown_.flags & MapWindowAreaShown) != 0) {
    const auto [a, b] = SelectionCorners(shown_);
    PaintBand(painter, {RoundToPixel(a.column), RoundToPixel(a.row)},
              {RoundToPixel(b.column), RoundToPixel(b.row)}, false);
  }
  if (!HasPoints(*shown_.map)) PaintHint(painter);
  if (wasPainted_) return;
  wasPainted_ = true;
  if (shown_.map->credits.empty()) return;
  shown_.flags |= MapWindowNotesDue;
  notesTimer_.start(NotesDelayMilliseconds);
}

void MapView::PaintBand(QPainter& painter, Pixel begin, Pixel end, bool asLine) const {
  const double ratio = devicePixelRatioF();
  const int width = std::max(1, static_cast<int>(std::lround(ratio)));
  painter.save();
  painter.scale(1 / ratio, 1 / ratio);
  painter.setBrush(Qt::NoBrush);
  const QPointF middle(width % 2 == 0 ? 0 : 0.5, width % 2 == 0 ? 0 : 0.5);
  const QPointF from = QPointF(begin.x, begin.y) + middle;
  const QPointF to = QPointF(end.x, end.y) + middle;
  // White under black dashes is visible on every colour.
  QPen pen(Qt::white, width);
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(Qt::MiterJoin);
  for (const bool dashed : {false, true}) {
    if (dashed) {
      pen.setColor(Qt::black);
      pen.setDashPattern({BandDash, BandDash});
    }
    painter.setPen(pen);
    if (asLine) {
      painter.drawLine(from, to);
    } else {
      painter.drawRect(QRectF(from, to).normalized());
    }
  }
  painter.restore();
}

void MapView::PaintHint(QPainter& painter) const {
  painter.setPen(QColor::fromRgb(HintRgb));
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  const double largeHeight = QFontMetricsF(large).height();
  const double line = QFontMetricsF(font()).height();
  const QStringList advice = {
      QStringLiteral("Open a map with Ctrl+O, or drop its file here"),
      QStringLiteral("Import a spreadsheet with Ctrl+I"),
      QStringLiteral("Begin a new trail with Ctrl+A in the list of trails"),
  };
  double top = (height() - largeHeight - line * static_cast<double>(advice.size() + 1)) / 2;
  painter.setFont(large);
  painter.drawText(QRectF(0, top, width(), largeHeight), Qt::AlignCenter,
                   QStringLiteral("This map is empty"));
  top += largeHeight + line / 2;
  painter.setFont(font());
  for (const QString& text : advice) {
    painter.drawText(QRectF(0, top, width(), line), Qt::AlignCenter, text);
    top += line * 1.25;
  }
}

void MapView::resizeEvent(QResizeEvent*) {
  FitToWidget();
  if (note_ != nullptr) note_->Center();
  ShowMoved();
}

bool MapView::Find(std::string_view text) {
  const FindOutcome outcome = FindInMap(shown_, text);
  if (outcome == FindOutcome::Nothing) return false;
  findTimer_.stop();
  ShowMoved();
  if (outcome == FindOutcome::Range) return true;
  repaint();
  findTimer_.start(FindMarkMilliseconds);
  return true;
}

void MapView::EndFind() {
  EndFindMark(shown_);
  ShowMoved();
}

void MapView::FollowNotes() {
  if ((shown_.flags & MapWindowNotesDue) != 0) {
    shown_.flags &= ~std::uint32_t{MapWindowNotesDue};
    shown_.flags |= MapWindowNotesShown;
    note_ = new MapNote(NoteLines(*shown_.map), this);
    note_->show();
    notesTimer_.start(NotesMilliseconds);
    return;
  }
  shown_.flags &= ~std::uint32_t{MapWindowNotesShown};
  if (note_ != nullptr) note_->deleteLater();
  note_ = nullptr;
}

void MapView::SetInputTarget(InputTarget* target) {
  shown_.inputTarget = target;
  ShowCursor();
  if (target == nullptr) return;
  window()->show();
  window()->raise();
}

void MapView::SetTransectMode(bool on) {
  shown_.transectMode = on;
  ShowCursor();
}

void MapView::ShowCursor() {
  if ((shown_.flags & MapWindowPan) != 0) {
    setCursor(Qt::ClosedHandCursor);
  } else if (shown_.inputTarget != nullptr || shown_.transectMode) {
    setCursor(Qt::CrossCursor);
  } else {
    setCursor(Qt::ArrowCursor);
  }
}

bool MapView::StepByKey(const QKeyEvent& event) {
  const HeldKeys keys = KeysOf(event.modifiers());
  switch (event.key()) {
    case Qt::Key_Up:
      StepView(shown_, ViewStep::North, keys);
      return true;
    case Qt::Key_Down:
      StepView(shown_, ViewStep::South, keys);
      return true;
    case Qt::Key_Right:
      StepView(shown_, ViewStep::East, keys);
      return true;
    case Qt::Key_Left:
      StepView(shown_, ViewStep::West, keys);
      return true;
    default:
      return false;
  }
}

bool MapView::EndModes() {
  if (!EscapePointer(shown_)) {
    if (shown_.inputTarget == nullptr) return false;
    SetInputTarget(nullptr);
    Q_EMIT inputCanceled();
    return true;
  }
  ShowCursor();
  ShowMoved();
  return true;
}

void MapView::keyPressEvent(QKeyEvent* event) {
  const bool dragged = (shown_.flags & MapWindowDrag) != 0;
  if (event->key() == Qt::Key_Plus) {
    ZoomOnPixel(shown_, shown_.pointer, 2);
  } else if (event->key() == Qt::Key_Minus) {
    ZoomOnPixel(shown_, shown_.pointer, 0.5);
  } else if (event->key() == Qt::Key_Escape && EndModes()) {
    return;
  } else if (event->key() == Qt::Key_Control && dragged) {
    controlHeld_ = true;
    update();
    return;
  } else if (event->key() == Qt::Key_E &&
             (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0) {
    Q_EMIT printRequested();
    return;
  } else if (!StepByKey(*event)) {
    QWidget::keyPressEvent(event);
    return;
  }
  ShowMoved();
}

void MapView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Control && controlHeld_) {
    controlHeld_ = false;
    update();
  }
  QWidget::keyReleaseEvent(event);
}

void MapView::mousePressEvent(QMouseEvent* event) {
  if ((shown_.flags & MapWindowDrag) != 0) return;  // a second button changes nothing
  PressPointer(shown_, DevicePixel(event->position()), event->button() != Qt::LeftButton);
  controlHeld_ = event->modifiers().testFlag(Qt::ControlModifier);
  ShowCursor();
  Q_EMIT pointerMoved();
}

void MapView::mouseMoveEvent(QMouseEvent* event) {
  // If a box came up during a drag, the release went to the box.
  if (event->buttons() == Qt::NoButton && (shown_.flags & MapWindowDrag) != 0) {
    CancelPointer(shown_);
    ShowCursor();
    update();
  }
  const bool moved = MovePointer(shown_, DevicePixel(event->position()));
  if (moved) {
    ShowMoved();
  } else if (IsBandDrawn(shown_)) {
    update();
  }
  controlHeld_ = event->modifiers().testFlag(Qt::ControlModifier);
  Q_EMIT pointerMoved();
}

void MapView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->buttons() != Qt::NoButton) return;
  const bool band = IsBandDrawn(shown_);
  const auto smallestBand = static_cast<int>(std::lround(SmallestBand * devicePixelRatioF()));
  const PointerOutcome outcome = ReleasePointer(shown_, DevicePixel(event->position()),
                                                KeysOf(event->modifiers()), smallestBand);
  if (outcome.viewMoved) {
    ShowMoved();
  } else if (band) {
    update();
  }
  controlHeld_ = false;
  // Without a window that shows transects, the next drag is an ordinary one again.
  const bool taken = isSignalConnected(QMetaMethod::fromSignal(&MapView::transectDrawn));
  if (outcome.transectDrawn && !taken) shown_.transectMode = false;
  ShowCursor();
  Q_EMIT pointerMoved();
  if (outcome.transectDrawn) Q_EMIT transectDrawn();
}

void MapView::mouseDoubleClickEvent(QMouseEvent* event) {
  shown_.pointer = DevicePixel(event->position());
  ZoomByDoubleClick(shown_, KeysOf(event->modifiers()), event->button() != Qt::LeftButton);
  shown_.flags &= ~std::uint32_t{MapWindowPan};
  ShowCursor();
  ShowMoved();
}

void MapView::ZoomAbout(QPointF position, double factor) {
  if (!(factor > 0) || !std::isfinite(factor)) return;
  ZoomAboutPixel(shown_, DevicePixel(position), factor);
  ShowMoved();
}

void MapView::PanAlong(QPointF way) {
  // Fractions of a pixel are kept for the next event.
  panRest_ += way * devicePixelRatioF();
  const QPoint pixels(static_cast<int>(panRest_.x()), static_cast<int>(panRest_.y()));
  panRest_ -= pixels;
  if (PanBy(shown_, pixels.x(), pixels.y())) ShowMoved();
}

void MapView::wheelEvent(QWheelEvent* event) {
  event->accept();
  const WheelTurn turn = ReadWheel(*event);
  if (!turn.way.isNull()) PanAlong(turn.way);
  if (turn.factor != 1) ZoomAbout(event->position(), turn.factor);
}

bool MapView::PinchByTouchPad(const QNativeGestureEvent& event) {
  if (event.gestureType() != Qt::ZoomNativeGesture) return false;
  ZoomAbout(event.position(), 1 + event.value());
  return true;
}

bool MapView::PinchByTouch(QGestureEvent& event) {
  const auto* pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
  if (pinch == nullptr) return false;
  // The first finger has already begun a rubber band.
  CancelPointer(shown_);
  ShowCursor();
  PanAlong(pinch->centerPoint() - pinch->lastCenterPoint());
  ZoomAbout(mapFromGlobal(pinch->centerPoint()), pinch->scaleFactor());
  return true;
}

bool MapView::event(QEvent* event) {
  if (event->type() == QEvent::NativeGesture &&
      PinchByTouchPad(*static_cast<QNativeGestureEvent*>(event))) {
    return true;
  }
  if (event->type() == QEvent::Gesture && PinchByTouch(*static_cast<QGestureEvent*>(event))) {
    return true;
  }
  return QWidget::event(event);
}

void MapView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  Q_EMIT focusIn();
}

void MapView::leaveEvent(QEvent*) {
  if ((shown_.flags & MapWindowDrag) != 0) return;
  // Without a pointer over the map, the keys zoom on the middle.
  CenterPointer();
  Q_EMIT pointerMoved();
}

}  // namespace orvane
