#include "shell/map/divider_handle.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace orvane {

DividerHandle::DividerHandle(PaneDivider divider, const QString& name, QWidget* parent)
    : QWidget(parent), movesAcross_(divider == PaneDivider::BesideMap) {
  setAccessibleName(name);
  setAccessibleDescription(movesAcross_ ? QStringLiteral("The left and right arrow keys move it")
                                        : QStringLiteral("The up and down arrow keys move it"));
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DividerHandle::keyPressEvent(QKeyEvent* event) {
  const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? 1 : DividerStep;
  const int key = event->key();
  if (key == (movesAcross_ ? Qt::Key_Right : Qt::Key_Down)) {
    Q_EMIT stepRequested(step);
  } else if (key == (movesAcross_ ? Qt::Key_Left : Qt::Key_Up)) {
    Q_EMIT stepRequested(-step);
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
    Q_EMIT leaveRequested();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void DividerHandle::paintEvent(QPaintEvent*) {
  if (!hasFocus()) return;
  QPainter painter(this);
  painter.fillRect(rect(), palette().highlight());
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.backgroundColor = palette().color(QPalette::Highlight);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void DividerHandle::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void DividerHandle::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace orvane
