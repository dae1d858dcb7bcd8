// The box over long work, and what remains of work that was cancelled.

#include "mapfile/writer.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/entry/sheet_dialog.h"
#include "shell/progress/busy_work.h"
#include "shell/progress/progress_box.h"
#include "shell/shell_case.h"
#include "support/working_folder.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include <chrono>
#include <filesystem>
#include <functional>
#include <utility>

namespace orvane {
namespace {

using std::chrono::milliseconds;

ProgressBox* ShownBox() {
  const auto all = QApplication::topLevelWidgets();
  for (QWidget* widget : all) {
    auto* box = qobject_cast<ProgressBox*>(widget);
    if (box != nullptr && box->isVisible()) return box;
  }
  return nullptr;
}

QPushButton& CancelOf(const ProgressBox& box) {
  return *box.findChild<QPushButton*>(QStringLiteral("progressCancel"));
}

QString StageOf(const ProgressBox& box) {
  return box.findChild<QLabel*>(QStringLiteral("progressStage"))->text();
}

class ProgressBoxTest : public ShellCase {
 protected:
  /// Work that has run for `passed` reports its progress.
  void ReachAt(BusyWork& busy, milliseconds passed, size_t done = 1, size_t of = 4) {
    now_ = passed;
    busy.Reach(WorkStage::Reading, done, of);
  }

  BusyWork::Clock clock_ = [this] { return now_; };
  milliseconds now_{0};
};

TEST_F(ProgressBoxTest, ComesAfterHalfASecondAndNotBefore) {
  {
    BusyWork busy(workspace_, boxes_, QStringLiteral("Opening site.map"), clock_);
    EXPECT_EQ(workspace_.progress, &busy);
    ReachAt(busy, milliseconds(0));
    ReachAt(busy, milliseconds(499));
    EXPECT_EQ(ShownBox(), nullptr);
    ReachAt(busy, milliseconds(500));
    ProgressBox* box = ShownBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), QStringLiteral("Opening site.map"));
    EXPECT_EQ(StageOf(*box), QStringLiteral("Reading the file"));
    const auto* bar = box->findChild<QProgressBar*>();
    EXPECT_EQ(4 * bar->value(), bar->maximum());
    ReachAt(busy, milliseconds(549), 2);  // too soon to be worth a look
    EXPECT_EQ(4 * bar->value(), bar->maximum());
    ReachAt(busy, milliseconds(550), 2);
    EXPECT_EQ(2 * bar->value(), bar->maximum());
    EXPECT_FALSE(busy.Canceled());
  }
  EXPECT_EQ(ShownBox(), nullptr);
  EXPECT_EQ(workspace_.progress, nullptr);
}

TEST_F(ProgressBoxTest, IsAsWideAsItsTitle) {
  const QString title = QStringLiteral("Opening ") + QString(60, QLatin1Char('m'));
  BusyWork busy(workspace_, boxes_, title, clock_);
  ReachAt(busy, milliseconds(600));
  ASSERT_NE(ShownBox(), nullptr);
  EXPECT_GT(ShownBox()->width(), ShownBox()->fontMetrics().horizontalAdvance(title));
}

TEST_F(ProgressBoxTest, ItsButtonAndEscapeAndItsFrameCallTheWorkOff) {
  for (int way = 0; way < 3; ++way) {
    BusyWork busy(workspace_, boxes_, QStringLiteral("Opening site.map"), clock_);
    now_ = milliseconds(0);
    ReachAt(busy, milliseconds(10000 * way + 600));
    ProgressBox* box = ShownBox();
    ASSERT_NE(box, nullptr);
    if (way == 0) QTest::mouseClick(&CancelOf(*box), Qt::LeftButton);
    if (way == 1) QTest::keyClick(box, Qt::Key_Escape);
    if (way == 2) box->close();
    EXPECT_TRUE(busy.Canceled());
    EXPECT_EQ(StageOf(*box), QStringLiteral("Stopping"));
    EXPECT_FALSE(CancelOf(*box).isEnabled());
    ReachAt(busy, milliseconds(10000 * way + 700));
    EXPECT_EQ(StageOf(*box), QStringLiteral("Stopping"));
    now_ = milliseconds(10000 * (way + 1));
  }
}

TEST_F(ProgressBoxTest, WhatMustBeFinishedIsNotCalledOff) {
  BusyWork busy(workspace_, boxes_, QStringLiteral("Importing gps.txt"), clock_);
  const MustFinish finish(&busy);
  ReachAt(busy, milliseconds(600));
  ProgressBox* box = ShownBox();
  ASSERT_NE(box, nullptr);
  EXPECT_FALSE(CancelOf(*box).isEnabled());
  QTest::keyClick(box, Qt::Key_Escape);
  box->close();
  EXPECT_TRUE(box->isVisible());
  EXPECT_FALSE(busy.Canceled());
}

TEST_F(ProgressBoxTest, WorkWithinWorkSharesTheOuterBox) {
  BusyWork outer(workspace_, boxes_, QStringLiteral("Opening site.map"), clock_);
  {
    const BusyWork inner(workspace_, boxes_, QStringLiteral("Opening basis.map"), clock_);
    EXPECT_EQ(workspace_.progress, &outer);
  }
  EXPECT_EQ(workspace_.progress, &outer);
}

/// Counts the events of a kind that come to an object.
class EventCount final : public QObject {
 public:
  EventCount(QObject& watched, QEvent::Type type) : type_(type) {
    watched.installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == type_) ++count;
    return false;
  }
  int count = 0;

 private:
  QEvent::Type type_;
};

TEST_F(ProgressBoxTest, NoWindowIsServedBeforeTheWorkIsDone) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  QApplication::processEvents();
  const float scale = window.Shown().scale;
  const EventCount paints(window.View(), QEvent::Paint);
  int fired = 0;
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, [&] { ++fired; });
  {
    BusyWork busy(workspace_, boxes_, QStringLiteral("Importing more.map"), clock_);
    timer.start(0);
    QTimer::singleShot(1, &timer, [&] { ++fired; });
    window.View().RequestRepaint();
    for (int i = 0; i < 5; ++i) ReachAt(busy, milliseconds(600 + 100 * i));
    ASSERT_NE(ShownBox(), nullptr);
    QTest::keyClick(&window.View(), Qt::Key_Plus);
    QTest::mouseClick(&window.View(), Qt::LeftButton);
    QTest::keyClick(ShownBox(), Qt::Key_F1);
    EXPECT_FALSE(window.close());
    EXPECT_EQ(window.Shown().scale, scale);
    EXPECT_EQ(paints.count, 0);
    EXPECT_EQ(fired, 0);
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return fired == 2; }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count > 0; }));
  QTest::keyClick(&window.View(), Qt::Key_Plus);
  EXPECT_EQ(window.Shown().scale, 2 * scale);
}

/// Answers a question once it is there, although timers of the program are held back.
class Answering final : public QObject {
 public:
  explicit Answering(std::function<void(QWidget& box)> answer) : answer_(std::move(answer)) {
    startTimer(1);
  }

 protected:
  void timerEvent(QTimerEvent*) override {
    QWidget* box = QApplication::activeModalWidget();
    if (box != nullptr && box->objectName() == QStringLiteral("questionBox")) answer_(*box);
  }

 private:
  std::function<void(QWidget& box)> answer_;
};

TEST_F(ProgressBoxTest, AQuestionOfTheWorkCanBeAnswered) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  const float scale = window.Shown().scale;
  BusyWork busy(workspace_, boxes_, QStringLiteral("Importing rains.txt"), clock_);
  int fired = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++fired; });
  timer.start(0);
  const Answering answering([&](QWidget& box) {
    // Nothing else is served while the question waits.
    QTest::keyClick(&window.View(), Qt::Key_Plus);
    EXPECT_FALSE(window.close());
    if (QApplication::activeWindow() != &box) return;
    QTest::keyClick(box.windowHandle(), Qt::Key_N, Qt::AltModifier);
  });
  const auto ask = [this] { return boxes_.Ask("Bad Time", {"Yes", "No"}, "Do you want to?"); };
  EXPECT_EQ(ask(), 2);
  ReachAt(busy, milliseconds(600));
  ASSERT_NE(ShownBox(), nullptr);
  EXPECT_EQ(ask(), 2);
  EXPECT_FALSE(busy.Canceled());
  EXPECT_EQ(window.Shown().scale, scale);
  EXPECT_EQ(fired, 0);
}

/// Work that takes its time, and a user who presses Escape as soon as there is a box.
class CanceledTest : public ShellCase {
 protected:
  CanceledTest() {
    around_.clock = [this] {
      if (ProgressBox* box = ShownBox()) {
        ++boxesSeen_;
        QTest::keyClick(box, Qt::Key_Escape);
      }
      return now_ += milliseconds(300);
    };
  }

  std::string WriteLargeMap(const std::string& name) const {
    std::string text = "T\tRidge\tTrail\nG\tA0\tN1\tE10\n";
    for (int i = 1; i < 4000; ++i) {
      const std::string number = std::to_string(i);
      text += "C\tA" + number + "\tA" + std::to_string(i - 1) + "\t10\t90\t0\n";
    }
    return folder_.Write(name, text);
  }
  static void Pick(MapWindowWidget& window, CommandId id) { ActionOf(window, id).trigger(); }

  int boxesSeen_ = 0;
  milliseconds now_{0};
};

TEST_F(CanceledTest, AMapThatWasOpenedIsNotThere) {
  shell_.TheSettings().ownDirectory = folder_.Path();
  const std::string path = WriteLargeMap("large.map");
  EXPECT_EQ(shell_.OpenFile(path), nullptr);
  EXPECT_GE(boxesSeen_, 1);
  EXPECT_TRUE(workspace_.maps.empty());
  EXPECT_TRUE(shell_.Windows().All().empty());
  EXPECT_TRUE(shell_.Maps().Recent().empty());
  EXPECT_TRUE(Texts().empty());
  EXPECT_EQ(ShownBox(), nullptr);
  around_.clock = {};
  EXPECT_NE(shell_.OpenFile(path), nullptr);
}

TEST_F(CanceledTest, AtTheStartTheWindowWithoutAMapIsLeft) {
  program_.Start({WriteLargeMap("large.map")});
  EXPECT_TRUE(shell_.Windows().All().empty());
  EXPECT_NE(ShownTaskWindow(), nullptr);
  EXPECT_TRUE(dialogs_->questions.empty());
}

TEST_F(CanceledTest, ABasisThatWasChosenIsNotSet) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  dialogs_->paths = {WriteLargeMap("large.map")};
  Pick(window, CommandSetBasis);
  EXPECT_EQ(window.TheMap().basis, nullptr);
  EXPECT_EQ(&workspace_.maps.front(), &window.TheMap());
  EXPECT_TRUE(IsEnabled(window, CommandSetBasis));
}

TEST_F(CanceledTest, OfASubmapThePartThatWasReadStaysAndHasItsPlaces) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  dialogs_->paths = {WriteLargeMap("large.map")};
  Pick(window, CommandImportSubmap);
  const std::vector<std::string> texts = Texts();
  ASSERT_GE(texts.size(), 2U);
  EXPECT_EQ(texts[texts.size() - 2],
            "Only a part of " + folder_.Path("large.map") + " was imported");
  EXPECT_TRUE(texts.back().starts_with("Imported ")) << texts.back();
  const Map& map = window.TheMap();
  EXPECT_GT(map.pointStore.size(), 100U);
  EXPECT_LT(map.pointStore.size(), 4000U);
  for (const Trail& trail : map.trails) {
    for (const Point* point : trail.points) EXPECT_NE(point->flags & PointPlaced, 0U);
  }
}

TEST_F(CanceledTest, AnImportOfGpsTracksChangesNothing) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  std::string text = "name,time,x,y,lat,lon,alt\n";
  for (int i = 0; i < 4000; ++i) text += "W" + std::to_string(i) + ",,,,1.0,10.0,5\n";
  dialogs_->paths = {folder_.Write("gps.txt", text)};
  const size_t points = window.TheMap().pointStore.size();
  Pick(window, CommandImportGis);
  EXPECT_GE(boxesSeen_, 1);
  EXPECT_EQ(window.TheMap().pointStore.size(), points);
  EXPECT_EQ(window.TheMap().flags & MapDirty, 0U);
  EXPECT_TRUE(Texts().empty());
}

TEST_F(CanceledTest, AnImportOfASheetChangesNothing) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  const std::string before = MapFileText(window.TheMap(), "site.map", true);
  const WorkingFolder working(folder_.Path());
  std::string text;
  for (int i = 0; i < 200; ++i) {
    const std::string date = "2003-5-" + std::to_string(i % 28 + 1);
    text += date + "\t800\tCamp\n" + date + "\t830\tHill\n";
  }
  dialogs_->paths = {folder_.Write("follows.txt", text)};
  QTimer::singleShot(0, &window, [] {
    auto* dialog = qobject_cast<SheetDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    dialog->Edit(SheetDate).setText(QStringLiteral("A"));
    dialog->Edit(SheetTime).setText(QStringLiteral("B"));
    dialog->Edit(SheetLocation).setText(QStringLiteral("C"));
    dialog->Edit(SheetSpeciesAlways).setText(QStringLiteral("Oru"));
    dialog->accept();
  });
  Pick(window, CommandImportSpreadsheet);
  EXPECT_GE(boxesSeen_, 1);
  EXPECT_EQ(MapFileText(window.TheMap(), "site.map", true), before);
  EXPECT_EQ(window.TheMap().flags & MapDirty, 0U);
  EXPECT_EQ(shell_.History().UndoName(window.TheMap()), nullptr);
  EXPECT_EQ(Texts(), std::vector<std::string>());
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("unknownlocs.txt")));
}

TEST_F(CanceledTest, TracksThatWereTakenStayAndTheNextIsShown) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  std::string text = "name,time,x,y,lat,lon,alt\n";
  for (int i = 0; i < 40; ++i) {
    for (int fix = 0; fix < 2; ++fix) {
      text += "T" + std::to_string(i) + ",2003-05-01,,,1.0,10.0" + std::to_string(fix) + ",5\n";
    }
  }
  dialogs_->paths = {folder_.Write("gps.txt", text)};
  Pick(window, CommandImportGis);
  auto* tracks = window.findChild<GisTrailWindow*>();
  ASSERT_NE(tracks, nullptr);
  const auto buttons = tracks->findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    if (button->accessibleName() == QStringLiteral("OK to All")) button->click();
  }
  EXPECT_GE(boxesSeen_, 1);
  const auto trails = std::distance(window.TheMap().trails.begin(), window.TheMap().trails.end());
  EXPECT_GT(trails, 1);
  EXPECT_LT(trails, 40);
  EXPECT_TRUE(tracks->isVisible());
  EXPECT_EQ(tracks->findChild<QLabel*>(QStringLiteral("progress"))->text(),
            QStringLiteral("Track %1 of 40").arg(trails));
  EXPECT_TRUE(IsEnabled(window, CommandSave));
}

TEST_F(CanceledTest, AnExportLeavesNoFile) {
  const milliseconds pause(0);
  auto clock = std::exchange(around_.clock, [pause] { return pause; });
  MapWindowWidget& window = OpenActive(WriteLargeMap("large.map"));
  around_.clock = std::move(clock);
  std::filesystem::create_directory(folder_.Path("out"));
  dialogs_->paths = {folder_.Path("out/points.shp")};
  Pick(window, CommandSaveAsArcView);
  EXPECT_GE(boxesSeen_, 1);
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("out")));
  EXPECT_TRUE(Texts().empty());
}

}  // namespace
}  // namespace orvane
