#include "shell/first_size.h"

#include <QScreen>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(WithinRoom, LeavesAFrameThatFits) {
  EXPECT_EQ(WithinRoom({10, 20, 300, 200}, {0, 0, 1000, 800}), QRect(10, 20, 300, 200));
}

TEST(WithinRoom, CutsAndMovesAFrameThatDoesNot) {
  const QRect room(50, 30, 800, 600);
  EXPECT_EQ(WithinRoom({0, 0, 1000, 700}, room), room);
  EXPECT_EQ(WithinRoom({700, 500, 300, 200}, room), QRect(550, 430, 300, 200));
  EXPECT_EQ(WithinRoom({-5, 0, 300, 200}, room), QRect(50, 30, 300, 200));
}

TEST(FirstSize, FitsTheScreenFrameIncluded) {
  QWidget window;
  GiveFirstSize(window);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  QTest::qWait(400);
  const QRect room = window.screen()->availableGeometry();
  EXPECT_TRUE(room.contains(window.frameGeometry()));
  EXPECT_LE(window.width(), FirstWindowSize.width());
  EXPECT_GT(window.width(), room.width() / 2);
}

TEST(FirstSize, AWindowThatIsPlacedBeyondTheScreenIsMovedIn) {
  QWidget window;
  GiveFirstSize(window);
  const QRect room = window.screen()->availableGeometry();
  window.move(room.topLeft() - QPoint(20, 20));
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  EXPECT_TRUE(QTest::qWaitFor([&] { return room.contains(window.frameGeometry()); }, 3000));
}

TEST(FirstSize, AWindowThatGotAnotherSizeKeepsIt) {
  QWidget window;
  GiveFirstSize(window);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  const QSize wanted = window.screen()->availableSize() + QSize(50, 50);
  window.resize(wanted);
  QTest::qWait(400);
  EXPECT_EQ(window.size(), wanted);
}

}  // namespace
}  // namespace orvane
