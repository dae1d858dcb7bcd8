#include "shell/reports/report_area.h"

#include "paint/display_text.h"
#include "paint/qt_canvas.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

/// Grey that can be read on white.
constexpr QRgb EmptyTextRgb = 0xFF757575;

SelectionMode ModeOf(Qt::KeyboardModifiers modifiers) {
  if (modifiers.testFlag(Qt::ShiftModifier)) return SelectionMode::Extend;
  if (modifiers.testFlag(Qt::ControlModifier)) return SelectionMode::Toggle;
  return SelectionMode::Only;
}

Color ColorOf(const QColor& color) { return static_cast<Color>(color.rgb() & 0xFFFFFFU); }

}  // namespace

QString DisplayFields(std::string_view text) {
  QString shown;
  while (!text.empty()) {
    const size_t length = std::min(text.find_first_of("\t\n"), text.size());
    shown += DisplayText(text.substr(0, length));
    if (length < text.size()) shown += QLatin1Char(text[length]);
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return shown;
}

ReportArea::ReportArea(ShownReport& report, const FontSizes& fonts, QWidget* parent)
    : QAbstractScrollArea(parent), report_(report), sizes_(fonts) {
  setObjectName(QStringLiteral("reportLines"));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  // Room that comes and goes with a bar could make the bars take turns.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

ReportArea::~ReportArea() = default;

// --- Layout and drawing -------------------------------------------------------------------------

void ReportArea::LayOut() {
  const double ratio = devicePixelRatioF();
  const double pixelsPerInch = logicalDpiY() * ratio;
  if (!fonts_ || fonts_->PixelsPerInch() != pixelsPerInch) {
    fonts_ = std::make_unique<CanvasFonts>(pixelsPerInch, sizes_);
  }
  ReportView& view = report_.View();
  view.viewWidth = static_cast<int>(std::ceil(viewport()->width() * ratio));
  view.viewHeight = static_cast<int>(std::ceil(viewport()->height() * ratio));
  view.unit = std::max(1, static_cast<int>(std::lround(ratio)));
  QImage nothing(1, 1, QImage::Format_RGB32);
  QPainter painter(&nothing);
  QtCanvas canvas(painter, *fonts_, {0, 0, view.viewWidth, view.viewHeight});
  report_.LayOut(canvas);
}

void ReportArea::SetBars() {
  ReportView& view = report_.View();
  const int x = view.scrollX;
  const int y = view.scrollY;
  const int body = std::max(0, view.viewHeight - view.headerHeight);
  const auto set = [&](QScrollBar& bar, int content, int shown, int page, int position) {
    bar.setRange(0, std::max(0, content - shown));
    bar.setSingleStep(std::max(1, view.lineHeight));
    bar.setPageStep(page);
    bar.setValue(position);
  };
  set(*horizontalScrollBar(), view.contentWidth, view.viewWidth,
      std::max(1, view.viewWidth * 7 / 8), x);
  set(*verticalScrollBar(), view.contentHeight, body, report_.PageStep(), y);
  // Setting one bar has read the other.
  view.scrollX = horizontalScrollBar()->value();
  view.scrollY = verticalScrollBar()->value();
}

void ReportArea::ShowLines() {
  LayOut();
  HoldSelection(selection_, report_.LineCount());
  SetBars();
  Redraw();
}

void ReportArea::ShowScroll() {
  SetBars();
  Redraw();
}

void ReportArea::Redraw() {
  bufferOld_ = true;
  viewport()->update();
}

void ReportArea::DrawBuffer() {
  const ReportView& view = report_.View();
  const QSize size(view.viewWidth, view.viewHeight);
  if (buffer_.size() != size) buffer_ = QImage(size, QImage::Format_RGB32);
  buffer_.setDevicePixelRatio(1);
  bufferOld_ = false;
  if (buffer_.isNull()) return;
  const auto group = isActiveWindow() ? QPalette::Active : QPalette::Inactive;
  const ReportColors highlight{
      .background = ColorOf(palette().color(group, QPalette::Highlight)),
      .foreground = ColorOf(palette().color(group, QPalette::HighlightedText))};
  QPainter painter(&buffer_);
  QtCanvas canvas(painter, *fonts_, {0, 0, view.viewWidth, view.viewHeight});
  DrawReport(report_, selection_, highlight, canvas);
}

void ReportArea::paintEvent(QPaintEvent* event) {
  // Only here is the pixel ratio of the window certain, and it may have changed.
  if (!fonts_ || fonts_->PixelsPerInch() != logicalDpiY() * devicePixelRatioF()) ShowLines();
  if (bufferOld_) DrawBuffer();
  const double ratio = devicePixelRatioF();
  buffer_.setDevicePixelRatio(ratio);
  QPainter painter(viewport());
  painter.setClipRegion(event->region());
  painter.drawImage(0, 0, buffer_);
  if (report_.LineCount() == 0) {
    painter.setPen(QColor::fromRgb(EmptyTextRgb));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText);
  }
  if (!hasFocus() || selection_.current < 0) return;
  const PixelRect place = report_.LinePlace(selection_.current);
  const QRectF line(place.left / ratio, place.top / ratio, (place.right - place.left) / ratio,
                    (place.bottom - place.top) / ratio);
  QStyleOptionFocusRect option;
  option.initFrom(viewport());
  option.rect = line.toAlignedRect().intersected(viewport()->rect());
  option.backgroundColor = Qt::white;
  const double header = report_.View().headerHeight / ratio;
  painter.setClipRect(QRectF(0, header, width(), height() - header));
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, viewport());
}

void ReportArea::resizeEvent(QResizeEvent*) { ShowLines(); }

void ReportArea::scrollContentsBy(int, int) {
  ReportView& view = report_.View();
  view.scrollX = horizontalScrollBar()->value();
  view.scrollY = verticalScrollBar()->value();
  Redraw();
}

// --- Selection ----------------------------------------------------------------------------------

void ReportArea::ClearSelection() {
  selection_ = {};
  Redraw();
  Q_EMIT selectionChanged();
}

void ReportArea::SelectAll() {
  SelectAllLines(selection_, report_.LineCount());
  Redraw();
  Q_EMIT selectionChanged();
}

void ReportArea::SelectOnly(int line) { Select(line, SelectionMode::Only); }

void ReportArea::Select(int line, SelectionMode mode) {
  SelectLine(selection_, line, mode);
  Redraw();
  SpeakCurrentLine();
  Q_EMIT selectionChanged();
}

void ReportArea::SpeakCurrentLine() {
  if (selection_.current < 0) return;
  QString text = DisplayFields(report_.LineText(selection_.current));
  setAccessibleDescription(text.replace(QLatin1Char('\t'), QLatin1String(", ")));
  QAccessibleEvent event(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&event);
}

int ReportArea::FirstShownLine() const {
  const ReportView& view = report_.View();
  for (int y = view.headerHeight; y < view.viewHeight; y += std::max(1, view.lineHeight)) {
    const int line = LineAt(report_, {0, y});
    if (line >= 0) return line;
  }
  return 0;
}

// --- Keys ---------------------------------------------------------------------------------------

bool ReportArea::GoByKey(const QKeyEvent& event) {
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  const bool control = event.modifiers().testFlag(Qt::ControlModifier);
  const int count = report_.LineCount();
  if ((!shift && !control) || count == 0) return false;
  const ReportView& view = report_.View();
  const int across = report_.Across();
  const int page =
      std::max(1, (view.viewHeight - view.headerHeight) / std::max(1, view.lineHeight));
  int step = 0;
  switch (event.key()) {
    case Qt::Key_Up:
      step = -across;
      break;
    case Qt::Key_Down:
      step = across;
      break;
    case Qt::Key_Left:
      step = across > 1 ? -1 : 0;
      break;
    case Qt::Key_Right:
      step = across > 1 ? 1 : 0;
      break;
    case Qt::Key_PageUp:
      step = -across * page;
      break;
    case Qt::Key_PageDown:
      step = across * page;
      break;
    case Qt::Key_Home:
      step = -count;
      break;
    case Qt::Key_End:
      step = count;
      break;
    default:
      return false;
  }
  int from = FirstShownLine();
  if (event.key() == Qt::Key_Home) from = 0;
  if (event.key() == Qt::Key_End) from = count - 1;
  const int line = SteppedLine(selection_, from, step, count);
  ScrollToLine(report_, line);
  ShowScroll();
  const SelectionMode selects = shift ? SelectionMode::Extend : SelectionMode::Only;
  Select(line, shift && control ? SelectionMode::Move : selects);
  return true;
}

bool ReportArea::ScrollByKey(const QKeyEvent& event) {
  if ((event.modifiers() & ~Qt::KeypadModifier) != 0) return false;
  const auto move = [](QScrollBar& bar, QAbstractSlider::SliderAction action) {
    bar.triggerAction(action);
    return true;
  };
  switch (event.key()) {
    case Qt::Key_Up:
      return move(*verticalScrollBar(), QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Down:
      return move(*verticalScrollBar(), QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_Left:
      return move(*horizontalScrollBar(), QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Right:
      return move(*horizontalScrollBar(), QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_PageUp:
      return move(*verticalScrollBar(), QAbstractSlider::SliderPageStepSub);
    case Qt::Key_PageDown:
      return move(*verticalScrollBar(), QAbstractSlider::SliderPageStepAdd);
    case Qt::Key_Home:
      return move(*verticalScrollBar(), QAbstractSlider::SliderToMinimum);
    case Qt::Key_End:
      return move(*verticalScrollBar(), QAbstractSlider::SliderToMaximum);
    default:
      return false;
  }
}

void ReportArea::keyPressEvent(QKeyEvent* event) {
  if ((takeKey && takeKey(*event)) || ScrollByKey(*event) || GoByKey(*event)) return;
  const bool hasCurrent = selection_.current >= 0;
  if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier) {
    if (hasCurrent) Select(selection_.current, SelectionMode::Toggle);
    return;
  }
  if (event->key() == Qt::Key_A &&
      event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)) {
    ClearSelection();
    return;
  }
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (hasCurrent) Q_EMIT openRequested(selection_.current);
    return;
  }
  QAbstractScrollArea::keyPressEvent(event);
}

// --- Mouse --------------------------------------------------------------------------------------

Pixel ReportArea::DevicePixel(QPointF position) const {
  const double ratio = devicePixelRatioF();
  return {static_cast<int>(std::floor(position.x() * ratio)),
          static_cast<int>(std::floor(position.y() * ratio))};
}

int ReportArea::LineUnder(QPointF position) const { return LineAt(report_, DevicePixel(position)); }

void ReportArea::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int line = LineUnder(event->position());
  dragging_ = line >= 0;
  Select(line, ModeOf(event->modifiers()));
}

void ReportArea::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_ || !event->buttons().testFlag(Qt::LeftButton)) return;
  // Beyond an edge the drag goes on to the line there, and scrolls by it.
  const ReportView& view = report_.View();
  Pixel at = DevicePixel(event->position());
  const int step = at.y < view.headerHeight ? -1 : at.y >= view.viewHeight ? 1 : 0;
  if (step != 0) {
    verticalScrollBar()->triggerAction(step < 0 ? QAbstractSlider::SliderSingleStepSub
                                                : QAbstractSlider::SliderSingleStepAdd);
  }
  at.x = std::clamp(at.x, 0, std::max(0, view.viewWidth - 1));
  at.y = std::clamp(at.y, view.headerHeight, std::max(view.headerHeight, view.viewHeight - 1));
  const int line = LineAt(report_, at);
  if (line >= 0 && line != selection_.current) Select(line, SelectionMode::Extend);
}

void ReportArea::mouseReleaseEvent(QMouseEvent*) { dragging_ = false; }

void ReportArea::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int line = LineUnder(event->position());
  if (line < 0) return;
  Select(line, SelectionMode::Only);
  Q_EMIT openRequested(line);
}

void ReportArea::focusInEvent(QFocusEvent*) { viewport()->update(); }

void ReportArea::focusOutEvent(QFocusEvent*) { viewport()->update(); }

void ReportArea::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  const QEvent::Type type = event->type();
  // The highlight of a window in the background is another one.
  if (type == QEvent::PaletteChange || type == QEvent::ActivationChange) Redraw();
}

}  // namespace orvane
