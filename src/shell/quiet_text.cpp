#include "shell/quiet_text.h"

#include <QPalette>
#include <QWidget>

namespace orvane {

QColor QuietTextColor(const QPalette& palette) {
  const QColor text = palette.color(QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Window);
  const auto mixed = [](int strong, int weak) { return (2 * strong + weak) / 3; };
  return {mixed(text.red(), ground.red()), mixed(text.green(), ground.green()),
          mixed(text.blue(), ground.blue())};
}

void MakeTextQuiet(QWidget& label) {
  QPalette palette = label.palette();
  palette.setColor(QPalette::WindowText, QuietTextColor(palette));
  label.setPalette(palette);
}

}  // namespace orvane
