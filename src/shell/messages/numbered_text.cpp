#include "shell/messages/numbered_text.h"

#include "shell/quiet_text.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTextBlock>

#include <algorithm>

namespace orvane {
namespace {

constexpr int MarginPadding = 8;  // left and right of the numbers

}  // namespace

/// The strip with the numbers.
class NumberedText::Margin final : public QWidget {
 public:
  explicit Margin(NumberedText* text) : QWidget(text), text_(*text) {}

 protected:
  void paintEvent(QPaintEvent* event) override { text_.PaintMargin(*event); }
  void wheelEvent(QWheelEvent* event) override { text_.wheelEvent(event); }

 private:
  NumberedText& text_;
};

NumberedText::NumberedText(QWidget* parent) : QPlainTextEdit(parent), margin_(new Margin(this)) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  connect(this, &QPlainTextEdit::blockCountChanged, this, &NumberedText::LayOutMargin);
  connect(this, &QPlainTextEdit::updateRequest, margin_, [this] { margin_->update(); });
  LayOutMargin();
}

void NumberedText::LayOutMargin() {
  const auto digits = std::max<qsizetype>(3, QString::number(blockCount()).size());
  const int width = static_cast<int>(digits) * fontMetrics().horizontalAdvance(QLatin1Char('9')) +
                    2 * MarginPadding;
  setViewportMargins(width, 0, 0, 0);
  const QRect inside = contentsRect();
  margin_->setGeometry(inside.left(), inside.top(), width, inside.height());
}

void NumberedText::PaintMargin(QPaintEvent& event) {
  QPainter painter(margin_);
  painter.fillRect(event.rect(), palette().color(QPalette::Window));
  painter.setFont(font());
  painter.setPen(QuietTextColor(palette()));
  const int width = margin_->width() - MarginPadding;
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    if (place.top() > event.rect().bottom()) break;
    painter.drawText(QRectF(0, place.top(), width, fontMetrics().height()), Qt::AlignRight,
                     QString::number(block.blockNumber() + 1));
  }
}

void NumberedText::MarkLine(size_t line) {
  QList<QTextEdit::ExtraSelection> marks;
  const QTextBlock block = document()->findBlockByNumber(static_cast<int>(line) - 1);
  if (line > 0 && block.isValid()) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(block);
    QColor color = palette().color(QPalette::Highlight);
    color.setAlphaF(0.3F);
    mark.format.setBackground(color);
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    marks.append(mark);
    setTextCursor(mark.cursor);
    centerCursor();
  }
  setExtraSelections(marks);
}

void NumberedText::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  LayOutMargin();
}

void NumberedText::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::FontChange) LayOutMargin();
}

}  // namespace orvane
