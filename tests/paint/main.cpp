#include <QGuiApplication>

#include <gtest/gtest.h>

/// Drawing needs a QGuiApplication, and one only; no test needs a screen.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
