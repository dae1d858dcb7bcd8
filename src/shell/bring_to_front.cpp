#include "shell/bring_to_front.h"

#include <QWidget>

namespace orvane {

void BringToFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace orvane
