#include "shell/shell.h"

#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/program.h"
#include "shell/scripted_surroundings.h"

#include <QApplication>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <fstream>
#include <gtest/gtest.h>

namespace orvane {
namespace {

class ShellTest : public testing::Test {
 protected:
  ShellTest() : workspace_(boxes_), program_(workspace_, boxes_, around_) {
    closer_.setInterval(1);
    QObject::connect(&closer_, &QTimer::timeout, &closer_, [this] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        texts_.append(box->text());
        windowsAtBox_ = static_cast<int>(Windows().size());
        box->accept();
      }
    });
    closer_.start();
  }

  ~ShellTest() override {
    QApplication::closeAllWindows();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  static QList<MapWindowWidget*> Windows() {
    QList<MapWindowWidget*> windows;
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* widget : all) {
      if (auto* window = qobject_cast<MapWindowWidget*>(widget)) windows.append(window);
    }
    return windows;
  }

  std::string MakeFile(const std::string& name, const std::string& content) {
    std::string path = directory_.path().toStdString() + "/" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
  }

  QTemporaryDir directory_;
  ScriptedSurroundings around_;
  BoxMessages boxes_{around_};
  Workspace workspace_;
  Program program_;
  Shell& shell_ = program_.TheShell();
  QTimer closer_;
  QStringList texts_;
  int windowsAtBox_ = -1;
};

TEST_F(ShellTest, OpensAFileInAWindowThatBearsItsName) {
  const std::string path = MakeFile("site.map", "L\tCamp\t1.0\t10.0\t\nL\tHill\t1.01\t10.01\t\n");
  MapWindowWidget& window = *shell_.OpenFile(path);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.windowTitle(), QStringLiteral("site.map[*]"));
  EXPECT_TRUE(HasPoints(*window.Shown().map));
  EXPECT_TRUE(texts_.isEmpty());
  EXPECT_TRUE(window.View().hasFocus() || window.focusWidget() == &window.View());
}

TEST_F(ShellTest, TheFirstWindowHasAWholeSizeWithinTheScreen) {
  MapWindowWidget& window = shell_.NewMap();
  const QSize room = window.screen()->availableSize();
  // On the small screen of these tests there is room for its frame.
  EXPECT_LT(window.height(), room.height());
  EXPECT_GT(window.height(), room.height() - 100);
  EXPECT_LE(window.width(), room.width());
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Untitled[*]"));
  EXPECT_TRUE(IsUntitled(*window.Shown().map));
}

TEST_F(ShellTest, AFileThatDoesNotOpenHasItsMessageAndThenAnEmptyWindow) {
  const std::string path = directory_.path().toStdString() + "/missing.map";
  MapWindowWidget& window = *shell_.OpenFile(path);
  ASSERT_EQ(texts_.size(), 1);
  EXPECT_EQ(texts_[0].toStdString(), "Can't open file " + path);
  EXPECT_EQ(windowsAtBox_, 0);
  EXPECT_EQ(window.windowTitle(), QStringLiteral("missing.map[*]"));
  EXPECT_FALSE(HasPoints(*window.Shown().map));
}

TEST_F(ShellTest, OpeningAFileTwiceGivesTwoWindowsOnOneMap) {
  const std::string path = MakeFile("site.map", "L\tCamp\t1.0\t10.0\t\n");
  MapWindowWidget& first = *shell_.OpenFile(path);
  MapWindowWidget& second = *shell_.OpenFile(path);
  EXPECT_NE(&first, &second);
  EXPECT_EQ(first.Shown().map, second.Shown().map);
  const float scale = second.Shown().scale;
  QTest::keyClick(&first.View(), Qt::Key_Plus);
  EXPECT_EQ(second.Shown().scale, scale);
}

TEST_F(ShellTest, ControlWClosesOneWindowAndControlQAll) {
  const std::string path = MakeFile("site.map", "L\tCamp\t1.0\t10.0\t\n");
  const QPointer<MapWindowWidget> first = shell_.OpenFile(path);
  const QPointer<MapWindowWidget> second = &shell_.NewMap();
  const QPointer<MapWindowWidget> third = &shell_.NewMap();
  ASSERT_TRUE(QTest::qWaitForWindowActive(third));
  QTest::keyClick(third, Qt::Key_W, Qt::ControlModifier);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(third.isNull());
  ASSERT_FALSE(first.isNull());
  second->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(second));
  QTest::keyClick(second, Qt::Key_Q, Qt::ControlModifier);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(first.isNull());
  EXPECT_TRUE(second.isNull());
}

TEST_F(ShellTest, AFileDroppedOnAWindowOpensInOneOfItsOwn) {
  const std::string path = MakeFile("r\xC3\xADo.map", "L\tCamp\t1.0\t10.0\t\n");
  MapWindowWidget& window = shell_.NewMap();
  QMimeData data;
  data.setUrls({QUrl(QStringLiteral("https://example.org/a.map")),
                QUrl::fromLocalFile(QString::fromStdString(path))});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &drop);
  QApplication::processEvents();
  ASSERT_EQ(Windows().size(), 2);
  QStringList titles;
  for (const MapWindowWidget* each : Windows()) titles.append(each->windowTitle());
  EXPECT_TRUE(titles.contains(QStringLiteral("r\u00EDo.map[*]"))) << titles.join('|').toStdString();

  QMimeData words;
  words.setText(QStringLiteral("no file"));
  QDragEnterEvent other(QPoint(10, 10), Qt::CopyAction, &words, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &other);
  EXPECT_FALSE(other.isAccepted());
}

}  // namespace
}  // namespace orvane
