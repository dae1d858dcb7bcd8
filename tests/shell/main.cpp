#include "shell/accessible_names.h"

#include <QApplication>

#include <gtest/gtest.h>

/// Windows need a QApplication, and one only; no test needs a screen.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("GEOGRAPHICLIB_MAGNETIC_PATH", "/nowhere");  // what is installed must not matter
  QApplication application(argc, argv);
  QApplication::setApplicationDisplayName(QStringLiteral("Orvane"));
  QApplication::setQuitOnLastWindowClosed(false);
  orvane::NameWatcher names;
  application.installEventFilter(&names);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
