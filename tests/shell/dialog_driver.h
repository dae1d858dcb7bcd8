#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace orvane {

/// Runs a command that opens a modal dialog, while `look` works with the dialog. A dialog that `look`
/// leaves open is cancelled.
/// \return true if the dialog came up
template <typename Dialog>
bool WithDialog(const std::function<void()>& command, const std::function<void(Dialog&)>& look) {
  bool shown = false;
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || shown) return;
    shown = true;
    EXPECT_TRUE(QTest::qWaitFor([dialog] {
      dialog->activateWindow();
      return QApplication::activeWindow() == dialog;
    }));
    look(*dialog);
    if (dialog->isVisible()) dialog->reject();
  });
  looks.start(1);
  command();
  return shown;
}

}  // namespace orvane
