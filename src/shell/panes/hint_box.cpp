#include "shell/panes/hint_box.h"

#include <QPainter>

#include <algorithm>

namespace orvane {
namespace {

/// Pixels between the text and the edge of the box.
constexpr int Margin = 5;
constexpr int MostCharacters = 199;
constexpr QColor Background(0x00, 0xC0, 0xC0);

QPointer<HintBox> shown;

}  // namespace

HintBox::HintBox(QWidget& parent, const QStringList& lines) : QWidget(&parent), lines_(lines) {
  setObjectName(QStringLiteral("hintBox"));
  setAttribute(Qt::WA_DeleteOnClose);
  setFocusPolicy(Qt::NoFocus);
  setFont(QFont(QStringLiteral("helvetica"), 10));
  setAccessibleName(lines.join(QLatin1Char('\n')));
}

void HintBox::Show(QWidget& parent, const QWidget& from, QPoint at, const QStringList& lines,
                   HintPlacement placement) {
  Hide();
  if (lines.isEmpty()) return;
  auto* box = new HintBox(parent, lines);
  const QPoint anchor = from.mapTo(&parent, at);
  box->Place({anchor.x(), anchor.y()}, placement);
  box->raise();
  box->show();
  shown = box;
}

void HintBox::Hide() {
  if (!shown) return;
  // Not at once: the box may be handling an event.
  shown->hide();
  shown->deleteLater();
  shown.clear();
}

HintBox* HintBox::Shown() { return shown; }

void HintBox::Place(Pixel anchor, HintPlacement placement) {
  const QFontMetrics metrics = fontMetrics();
  int widest = 0;
  for (const QString& line : lines_) widest = std::max(widest, metrics.horizontalAdvance(line));
  const int lineHeight = metrics.ascent() + metrics.descent();
  const int height = static_cast<int>(lines_.size()) * lineHeight + 2 * Margin;
  const QSize parent = parentWidget()->size();
  const PixelRect place = PlaceHint(anchor, widest + 2 * Margin, height,
                                    {parent.width(), parent.height()}, lineHeight, placement);
  setGeometry(place.left, place.top, place.right - place.left, place.bottom - place.top);
}

void HintBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Background);
  painter.setPen(Qt::black);
  const QFontMetrics metrics = fontMetrics();
  int baseline = metrics.ascent() + Margin;
  for (const QString& line : lines_) {
    painter.drawText(Margin, baseline, line);
    baseline += metrics.ascent() + metrics.descent();
  }
}

void HintBox::mousePressEvent(QMouseEvent*) { Hide(); }

void HintBox::mouseReleaseEvent(QMouseEvent*) { Hide(); }

void HintBox::mouseDoubleClickEvent(QMouseEvent*) { Hide(); }

QStringList HintLines(const QString& text) {
  QStringList lines = text.split(QLatin1Char('\n'));
  for (QString& line : lines) line.truncate(MostCharacters);
  return lines;
}

}  // namespace orvane
