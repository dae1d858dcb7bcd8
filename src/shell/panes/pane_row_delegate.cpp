#include "shell/panes/pane_row_delegate.h"

#include "shell/panes/pane_model.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPainterPath>

#include <utility>

namespace orvane {
namespace {

/// Pixels that a text moves right for each group above it.
constexpr int Indent = 4;
/// Pixels added to the height of the text.
constexpr int Leading = 3;

QPolygonF Triangle(const QRectF& box, bool open) {
  const qreal least = box.left() + box.width() * 0.25;
  const qreal most = box.left() + box.width() * 0.75;
  const qreal above = box.top() + box.height() * 0.25;
  const qreal below = box.top() + box.height() * 0.75;
  const QPointF middle = box.center();
  if (open) return QPolygonF({{least, above}, {most, above}, {middle.x(), below}});
  return QPolygonF({{least, above}, {most, middle.y()}, {least, below}});
}

}  // namespace

PaneRowDelegate::PaneRowDelegate(PaneModel& model, QAbstractItemView& view,
                                 std::function<QModelIndex()> dropTarget)
    : QStyledItemDelegate(&view), model_(model), view_(view), dropTarget_(std::move(dropTarget)) {}

QSize PaneRowDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& /*index*/) const {
  return {1, option.fontMetrics.height() + Leading};
}

void PaneRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  const PaneRowLook look = model_.LookOf(index);
  const QRect row = option.rect;
  const int height = row.height();
  const int textLeft = PaneMargin + 2 * height;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  if (look.hasTriangle) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(look.color);
    painter->drawPolygon(Triangle(QRectF(PaneMargin, row.top(), height, height), look.open));
  }
  QFont font = option.font;
  font.setBold(look.visible || look.fixed);
  painter->setFont(font);
  painter->setPen(look.color);
  if (look.visible && !look.fixed) {
    painter->drawText(QRect(PaneMargin + height, row.top(), height, height), Qt::AlignCenter,
                      QStringLiteral("v"));
  }
  const QRect textBox(textLeft, row.top(), row.right() - textLeft + 1, height);
  if (look.selected) {
    painter->fillRect(textBox, look.color);
    painter->setPen(view_.palette().color(QPalette::Base));
  }
  painter->drawText(textBox.adjusted(Indent * look.depth, 0, 0, 0),
                    Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, look.text);
  const bool isTarget = dropTarget_() == index;
  if (isTarget || (view_.hasFocus() && view_.currentIndex() == index)) {
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(isTarget ? Qt::black : Qt::darkGray, isTarget ? 2 : 1,
                         isTarget ? Qt::SolidLine : Qt::DotLine));
    painter->drawRect(row.adjusted(1, isTarget ? 1 : 0, -2, -1));
  }
  painter->restore();
}

}  // namespace orvane
