#include "shell/messages/title_width.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGridLayout>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>

namespace orvane {

int TitleWidth(const QString& title, const QWidget& window) {
  constexpr int FrameButtons = 110;  // three of them and the window's picture
  constexpr int FrameSides = 24;
  QFont font = QApplication::font();
  font.setBold(true);
  QString shown = title;
  const QString program = QApplication::applicationDisplayName();
  if (!shown.endsWith(program)) shown += QStringLiteral(" \u2014 ") + program;
  const int width = QFontMetrics(font).horizontalAdvance(shown) + FrameButtons;
  return std::min(width, window.screen()->availableGeometry().width() - FrameSides);
}

void WidenToTitle(QWidget& window) {
  const int width = TitleWidth(window.windowTitle(), window);
  if (auto* grid = qobject_cast<QGridLayout*>(window.layout())) {
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
  } else if (auto* column = qobject_cast<QVBoxLayout*>(window.layout())) {
    column->addItem(new QSpacerItem(width, 0));
  }
}

}  // namespace orvane
