#include "shell/editors/row_handles.h"

#include "editing/cell_table.h"
#include "shell/editors/cell_colors.h"

#include <QItemSelectionModel>
#include <QMouseEvent>
#include <QPainter>

namespace orvane {

RowHandles::RowHandles(int rowHeight, QWidget* parent) : QHeaderView(Qt::Vertical, parent) {
  setObjectName(QStringLiteral("rowHandles"));
  setMinimumSectionSize(1);
  setDefaultSectionSize(rowHeight);
  setSectionResizeMode(Fixed);
  setSectionsClickable(false);
  setFixedWidth(RowHandleWidth);
  setFocusPolicy(Qt::NoFocus);
  viewport()->setCursor(Qt::PointingHandCursor);
}

void RowHandles::paintEvent(QPaintEvent* event) {
  QPainter(viewport()).fillRect(event->rect(), CellBackground);
  QHeaderView::paintEvent(event);
  // The toolkit paints what is under the last row in its own way.
  const int end = length() - offset();
  QPainter painter(viewport());
  painter.fillRect(0, end, width(), height(), CellBackground);
  painter.setPen(CellInk);
  painter.drawLine(0, end, width(), end);
}

void RowHandles::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
  const bool selected =
      selectionModel() != nullptr && selectionModel()->isRowSelected(logicalIndex);
  painter->setPen(selected ? InvertedCellInk : CellInk);
  if (selected) painter->fillRect(rect, InvertedCellBackground);
  painter->drawLine(rect.topLeft(), rect.topRight());
}

void RowHandles::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT rowClicked(event->position().toPoint().y());
}

void RowHandles::mouseMoveEvent(QMouseEvent* event) {
  Q_EMIT rowDragged(event->position().toPoint().y(), event->buttons().testFlag(Qt::LeftButton));
}

void RowHandles::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT rowDropped(event->position().toPoint().y());
}

void RowHandles::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

}  // namespace orvane
