#include "shell/map/map_note.h"

#include "paint/display_text.h"

#include <QAccessible>
#include <QEvent>
#include <QToolTip>

namespace orvane {
namespace {

constexpr int Padding = 5;     // pixels around the text
constexpr double Points = 10;  // size of its letters

}  // namespace

void DressAsNote(QLabel& label) {
  label.setTextFormat(Qt::PlainText);
  QFont large = label.font();
  large.setPointSizeF(Points);
  label.setFont(large);
  label.setPalette(QToolTip::palette());
  label.setForegroundRole(QPalette::ToolTipText);
  label.setBackgroundRole(QPalette::ToolTipBase);
  label.setAutoFillBackground(true);
  label.setFrameStyle(QFrame::Box | QFrame::Plain);
  label.setMargin(Padding - 1);
}

QSize FitNote(QLabel& label, QSize room) {
  label.setWordWrap(false);
  QSize size = label.sizeHint();
  if (size.width() > room.width()) {
    label.setWordWrap(true);
    size = {room.width(), label.heightForWidth(room.width())};
  }
  return size.boundedTo(room);
}

MapNote::MapNote(const std::vector<std::string>& lines, QWidget* parent) : QLabel(parent) {
  QStringList texts;
  for (const std::string& line : lines) texts.append(DisplayText(line));
  setObjectName(QStringLiteral("mapNote"));
  setAccessibleName(QStringLiteral("Notes of the map"));
  DressAsNote(*this);
  setText(texts.join(QLatin1Char('\n')));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  Center();
}

void MapNote::Center() {
  const QSize room = parentWidget()->size();
  const QSize size = FitNote(*this, room);
  setGeometry((room.width() - size.width()) / 2, (room.height() - size.height()) / 2, size.width(),
              size.height());
}

ResultNote::ResultNote(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("resultNote"));
  DressAsNote(*this);
  setCursor(Qt::PointingHandCursor);
  setToolTip(QStringLiteral("Click to open the messages window"));
  hideTimer_.setSingleShot(true);
  connect(&hideTimer_, &QTimer::timeout, this, &QWidget::hide);
  parent->installEventFilter(this);
  hide();
}

void ResultNote::ShowLines(const QStringList& lines) {
  // Time to notice the note, and to read it.
  constexpr int Noticed = 5000;
  constexpr int ForEachLetter = 60;
  const QString text = lines.join(u'\n');
  setText(text);
  setAccessibleName(text);
  Place();
  show();
  raise();
  hideTimer_.start(Noticed + ForEachLetter * static_cast<int>(text.size()));
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void ResultNote::Place() {
  constexpr int FromEdge = 8;
  const QSize room = parentWidget()->size();
  const QSize size = FitNote(*this, room - QSize(2 * FromEdge, 2 * FromEdge));
  setGeometry((room.width() - size.width()) / 2, room.height() - FromEdge - size.height(),
              size.width(), size.height());
}

bool ResultNote::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && isVisible()) Place();
  return QLabel::eventFilter(watched, event);
}

void ResultNote::mousePressEvent(QMouseEvent*) {
  hide();
  Q_EMIT clicked();
}

}  // namespace orvane
