#pragma once

#include "shell/dialog_driver.h"
#include "shell/entry/sheet_dialog.h"

#include <QLineEdit>
#include <QTest>

#include <functional>
#include <gtest/gtest.h>

namespace orvane {

/// Types into a field what a user would, over what is there.
inline void TypeInField(SheetDialog& dialog, SheetField field, const char* text) {
  QLineEdit& edit = dialog.Edit(field);
  edit.setFocus();
  edit.selectAll();
  if (*text == '\0') QTest::keyClick(&edit, Qt::Key_Delete);
  QTest::keyClicks(&edit, QLatin1String(text));
}

}  // namespace orvane
