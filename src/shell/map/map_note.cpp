#include "shell/map/map_note.h"

#include "paint/display_text.h"

#include <QToolTip>

namespace orvane {
namespace {

constexpr int Padding = 5;     // pixels around the text
constexpr double Points = 10;  // size of its letters

}  // namespace

MapNote::MapNote(const std::vector<std::string>& lines, QWidget* parent) : QLabel(parent) {
  QStringList texts;
  for (const std::string& line : lines) texts.append(DisplayText(line));
  setTextFormat(Qt::PlainText);
  setText(texts.join(QLatin1Char('\n')));
  setAccessibleName(tr("Notes of the map"));
  setObjectName(QStringLiteral("mapNote"));
  QFont large = font();
  large.setPointSizeF(Points);
  setFont(large);
  setPalette(QToolTip::palette());
  setForegroundRole(QPalette::ToolTipText);
  setBackgroundRole(QPalette::ToolTipBase);
  setAutoFillBackground(true);
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setMargin(Padding - 1);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  Center();
}

void MapNote::Center() {
  const QSize room = parentWidget()->size();
  // Lines too wide for the map are broken.
  setWordWrap(false);
  QSize size = sizeHint();
  if (size.width() > room.width()) {
    setWordWrap(true);
    size = {room.width(), heightForWidth(room.width())};
  }
  size = size.boundedTo(room);
  setGeometry((room.width() - size.width()) / 2, (room.height() - size.height()) / 2, size.width(),
              size.height());
}

}  // namespace orvane
