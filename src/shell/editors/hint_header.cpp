#include "shell/editors/hint_header.h"

#include "shell/editors/cell_colors.h"
#include "shell/panes/hint_box.h"

#include <QMouseEvent>
#include <QPainter>

namespace orvane {
namespace {

/// Milliseconds that the pointer rests on a caption before its hint is shown.
constexpr int HintDelay = 500;
/// Pixels that the pointer may move meanwhile, rows and columns together.
constexpr int HintSlack = 10;
/// Farther than that from any pixel of the captions.
constexpr QPoint NoPoint(-1000, -1000);

}  // namespace

HintHeader::HintHeader(int baseline, int height, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), baseline_(baseline), hintPoint_(NoPoint) {
  setObjectName(QStringLiteral("cellHeader"));
  QFont bold(QStringLiteral("helvetica"), 10);
  bold.setBold(true);
  setFont(bold);
  setFixedHeight(height);
  setSectionsClickable(false);
  setHighlightSections(false);
  setSectionResizeMode(Interactive);
  setFocusPolicy(Qt::NoFocus);
  viewport()->setMouseTracking(true);
  hintTimer_.setSingleShot(true);
  hintTimer_.setInterval(HintDelay);
  connect(&hintTimer_, &QTimer::timeout, this, [this] {
    const int column = logicalIndexAt(hintPoint_);
    if (column >= 0) Q_EMIT hintRequested(column, hintPoint_);
  });
}

void HintHeader::StopHint() {
  hintTimer_.stop();
  HintBox::Hide();
}

void HintHeader::paintEvent(QPaintEvent* event) {
  QPainter(viewport()).fillRect(event->rect(), CellBackground);
  QHeaderView::paintEvent(event);
}

void HintHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
  const QString caption = model()->headerData(logicalIndex, Qt::Horizontal).toString();
  painter->save();
  painter->setClipRect(rect);
  painter->setFont(font());
  painter->setPen(CellInk);
  const int width = painter->fontMetrics().horizontalAdvance(caption);
  painter->drawText(rect.left() + (rect.width() - width) / 2, baseline_, caption);
  painter->drawLine(rect.topLeft(), rect.bottomLeft());
  painter->restore();
}

void HintHeader::Release() {
  if (!isPressed_) return;
  isPressed_ = false;
  Q_EMIT edgeDropped();
}

void HintHeader::mouseMoveEvent(QMouseEvent* event) {
  QHeaderView::mouseMoveEvent(event);
  if (event->buttons() == Qt::NoButton) Release();  // it went to a box that came up
  const QPoint at = event->position().toPoint();
  if ((at - hintPoint_).manhattanLength() <= HintSlack) return;
  StopHint();
  hintPoint_ = at;
  if (event->buttons() == Qt::NoButton) hintTimer_.start();
}

void HintHeader::mousePressEvent(QMouseEvent* event) {
  StopHint();
  isPressed_ = true;
  QHeaderView::mousePressEvent(event);
}

void HintHeader::mouseReleaseEvent(QMouseEvent* event) {
  QHeaderView::mouseReleaseEvent(event);
  Release();
}

void HintHeader::keyPressEvent(QKeyEvent* event) {
  StopHint();
  QHeaderView::keyPressEvent(event);
}

bool HintHeader::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) {
    StopHint();
    hintPoint_ = NoPoint;
  }
  return QHeaderView::viewportEvent(event);
}

}  // namespace orvane
