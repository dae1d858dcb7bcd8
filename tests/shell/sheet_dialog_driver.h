#pragma once

#include "shell/entry/sheet_dialog.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace orvane {

/// Runs a command that asks for the columns of a sheet, while `look` works with the dialog. A dialog
/// that `look` leaves open is cancelled.
/// \return true if the dialog came up
inline bool WithSheetDialog(const std::function<void()>& command,
                            const std::function<void(SheetDialog&)>& look) {
  bool shown = false;
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<SheetDialog*>(QApplication::activeModalWidget());
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

/// Types into a field what a user would, over what is there.
inline void TypeInField(SheetDialog& dialog, SheetField field, const char* text) {
  QLineEdit& edit = dialog.Edit(field);
  edit.setFocus();
  edit.selectAll();
  if (*text == '\0') QTest::keyClick(&edit, Qt::Key_Delete);
  QTest::keyClicks(&edit, QLatin1String(text));
}

}  // namespace orvane
