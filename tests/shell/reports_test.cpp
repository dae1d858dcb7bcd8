// The windows of the reports: what they show, how they follow their map window, keys and mouse.

#include "editing/delete_records.h"
#include "panes/pane_clicks.h"
#include "reports/shown_report.h"
#include "shell/map/map_panes.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"
#include "shell/reload_commands.h"
#include "shell/reports/point_index_window.h"
#include "shell/reports/range_stats_window.h"
#include "shell/reports/report_area.h"
#include "shell/reports/report_commands.h"
#include "shell/reports/trail_summary_window.h"
#include "shell/shell_case.h"

#include <QClipboard>
#include <QMimeData>
#include <QPointer>
#include <QPrinter>
#include <QScrollBar>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace orvane {
namespace {

/// Follows of two animals whose ranges overlap, a trail and a closed trail.
constexpr char Season[] =
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "G\t9:00\tS20 0\tE47 0.2\n"
    "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\nG\t8:30\tS20 0.3\tE47 0.1\n"
    "G\t9:00\tS20 0\tE47 0.3\n"
    "T\tRidge\tTrail\nG\tCamp\tS20 0\tE47 0\nG\tHill\tS20 0.6'\tE47 0.6'\n"
    "R\tAnas\nK\tPapio\tAna\nR\tAll\nK\tPapio\n";

std::string ContentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

class ReportsTest : public ShellCase {
 protected:
  ReportsTest() : window_(OpenActive(folder_.Write("site.map", Season))) {}

  template <typename Window>
  Window* Open(CommandId id) {
    Press(window_, id);
    return Find<Window>();
  }
  template <typename Window>
  Window* Find() {
    for (ProgramWindow* each : window_.Dependents()) {
      if (auto* found = dynamic_cast<Window*>(each)) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(found));
        return found;
      }
    }
    return nullptr;
  }
  PaneView& Trails() { return window_.Panes().Trails().Rows(); }
  PaneView& Ranges() { return window_.Panes().Ranges().Rows(); }
  void SelectAllRangeRows() {
    SelectAllRanges(window_.Shown());
    Q_EMIT window_.Panes().Ranges().selectionChanged();
  }
  /// Clicks the text of a row of a list.
  static void ClickRow(PaneView& list, int row) {
    const QModelIndex index = list.model()->index(row, 0);
    const QRect place = list.visualRect(index);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      {3 * list.RowHeight(), place.center().y()});
  }
  /// What a window copies, as the clipboard has it.
  std::string Copied(ReportWindow& window) {
    QApplication::clipboard()->clear();
    Press(window, CommandCopy);
    return QApplication::clipboard()->text().toStdString();
  }
  static void Key(LinesWindow& window, int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(&window.Area(), static_cast<Qt::Key>(key), held);
  }

  /// Of the lines of a report, in device pixels.
  static int LineHeight(LinesWindow& window) {
    const CanvasFonts fonts(window.Area().logicalDpiY() * window.Area().devicePixelRatioF());
    return fonts.LineHeight(CanvasFont::Small);
  }

  MapWindowWidget& window_;
};

TEST_F(ReportsTest, EachOpensOnceAndIsThenRaised) {
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  ASSERT_NE(summary, nullptr);
  EXPECT_EQ(Open<TrailSummaryWindow>(CommandTrailSummary), summary);
  auto* index = Open<PointIndexWindow>(CommandPointIndex);
  auto* stats = Open<RangeStatsWindow>(CommandRangeStats);
  ASSERT_NE(index, nullptr);
  ASSERT_NE(stats, nullptr);
  EXPECT_EQ(window_.Dependents().size(), 3U);
  EXPECT_EQ(summary->windowTitle(), QStringLiteral("Trail Summary"));
  EXPECT_EQ(index->windowTitle(), QStringLiteral("Point Index"));
  EXPECT_EQ(stats->windowTitle(), QStringLiteral("Range Stats"));
  // From another report too.
  Press(*stats, CommandTrailSummary);
  EXPECT_TRUE(QTest::qWaitForWindowActive(summary));
  EXPECT_EQ(window_.Dependents().size(), 3U);
}

TEST_F(ReportsTest, EachMapWindowHasItsOwn) {
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  MapWindowWidget& other = shell_.Windows().Open(window_.TheMap());
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  Press(other, CommandTrailSummary);
  ASSERT_EQ(other.Dependents().size(), 1U);
  EXPECT_NE(other.Dependents()[0], static_cast<ProgramWindow*>(summary));
  EXPECT_EQ(window_.Dependents().size(), 1U);
}

TEST_F(ReportsTest, TheTrailSummaryFollowsTheSelection) {
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  EXPECT_EQ(Copied(*summary), "Totals\t0m\t0m\t\t\t\t\t\t\t\n") << "nothing is selected";
  ClickRow(Trails(), 0);
  EXPECT_EQ(summary->windowTitle(), QStringLiteral("Trail Summary of Papio"));
  const std::string follows = Copied(*summary);
  EXPECT_EQ(follows.substr(0, follows.find('\t')), "2020-3-1 Ana");
  EXPECT_EQ(std::count(follows.begin(), follows.end(), '\n'), 3);
  ClickRow(Trails(), 1);
  EXPECT_EQ(summary->windowTitle(), QStringLiteral("Trail Summary of Trail"));
  EXPECT_EQ(Copied(*summary).substr(0, 6), "Ridge\t");
}

TEST_F(ReportsTest, AReportClosesWithItsMapWindow) {
  const QPointer<QWidget> summary(Open<TrailSummaryWindow>(CommandTrailSummary));
  const QPointer<QWidget> index(Open<PointIndexWindow>(CommandPointIndex));
  Press(window_, CommandCloseMap);
  DeliverDeletes();
  EXPECT_TRUE(summary.isNull());
  EXPECT_TRUE(index.isNull());
}

TEST_F(ReportsTest, AReportOutlivesADeletedMapWindowWithoutItsRows) {
  ClickRow(Trails(), 0);
  SelectAllRangeRows();
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  auto* stats = Open<RangeStatsWindow>(CommandRangeStats);
  delete &window_;
  summary->grab();
  stats->grab();
  EXPECT_EQ(summary->MapSide(), nullptr);
  DeliverDeletes();
}

TEST_F(ReportsTest, CtrlWClosesOnlyTheReport) {
  const QPointer<QWidget> summary(Open<TrailSummaryWindow>(CommandTrailSummary));
  Press(*summary, CommandCloseMap);
  DeliverDeletes();
  EXPECT_TRUE(summary.isNull());
  EXPECT_TRUE(window_.Dependents().empty());
  EXPECT_TRUE(window_.isVisible());
}

TEST_F(ReportsTest, ItsMenuOffersWhatTheReportCanDo) {
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  const auto isEnabled = [&](CommandId id) { return summary->Commands().ActionOf(id).isEnabled(); };
  for (const CommandId id : {CommandSaveAs, CommandSaveSimplyAs, CommandCopy, CommandAdd,
                             CommandCloseMap, CommandFind, CommandPointIndex}) {
    EXPECT_TRUE(isEnabled(id)) << id;
  }
  for (const CommandId id : {CommandPaste, CommandCut, CommandDelete, CommandZoomIn,
                             CommandCheckTrails, CommandCopyImage, CommandSavePicture}) {
    EXPECT_FALSE(isEnabled(id)) << id;
  }
  EXPECT_EQ(summary->Commands().ActionOf(CommandAdd).text(), QStringLiteral("Select &All"));
}

TEST_F(ReportsTest, TheTrailSummaryIsSavedAsText) {
  ClickRow(Trails(), 1);
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  const std::string path = folder_.Path() + "/out.txt";
  dialogs_->paths = {path, path};
  Press(*summary, CommandSaveAs);
  ASSERT_EQ(dialogs_->questions.size(), 1U);
  EXPECT_EQ(dialogs_->questions[0].title, "Save trail summary as...");
  EXPECT_EQ(dialogs_->questions[0].file.name, "untitled.txt");
  EXPECT_EQ(dialogs_->questions[0].file.type, "txt");
  const std::string saved = ContentOf(path);
  EXPECT_EQ(saved.substr(0, 11), "Trail\tPath\t");
  EXPECT_NE(saved.find("\nRidge\t"), std::string::npos);
  // Both commands save the same.
  std::filesystem::remove(path);
  shell_.Commands().Run(CommandSaveSimplyAs, *summary);
  EXPECT_EQ(ContentOf(path), saved);
}

TEST_F(ReportsTest, ASaveThatFailsSaysSo) {
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  dialogs_->paths = {folder_.Path() + "/missing/out.txt"};
  Press(*summary, CommandSaveAs);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Can't save to file"});
  Press(*summary, CommandSaveAs);  // cancelled
  EXPECT_EQ(Texts().size(), 1U);
  dialogs_->fails = true;
  Press(*summary, CommandSaveAs);
  EXPECT_EQ(Texts().back(), "Error getting file name.");
  EXPECT_EQ(messages_.Entries().back().severity, Severity::Fatal);
}

TEST_F(ReportsTest, LinesAreSelectedWithTheMouse) {
  ClickRow(Trails(), 0);
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  ReportArea& area = summary->Area();
  const auto at = [&](int line) {
    const double ratio = area.devicePixelRatioF();
    return QPoint(40, static_cast<int>((2.25 + line + 0.5) * LineHeight(*summary) / ratio));
  };
  QTest::mouseClick(area.viewport(), Qt::LeftButton, Qt::NoModifier, at(1));
  EXPECT_EQ(area.Selection().lines, std::set<int>{1});
  EXPECT_EQ(Copied(*summary).substr(0, 8), "2020-3-2");
  QTest::mouseClick(area.viewport(), Qt::LeftButton, Qt::ControlModifier, at(0));
  EXPECT_EQ(area.Selection().lines, (std::set<int>{0, 1}));
  QTest::mousePress(area.viewport(), Qt::LeftButton, Qt::NoModifier, at(0));
  QTest::mouseMove(area.viewport(), at(1));
  QMouseEvent move(QEvent::MouseMove, at(1), area.viewport()->mapToGlobal(at(1)), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(area.viewport(), &move);
  QTest::mouseRelease(area.viewport(), Qt::LeftButton, Qt::NoModifier, at(1));
  EXPECT_EQ(area.Selection().lines, (std::set<int>{0, 1}));
  QTest::mouseClick(area.viewport(), Qt::LeftButton, Qt::NoModifier,
                    {40, area.viewport()->height() - 2});
  EXPECT_TRUE(area.Selection().lines.empty());
}

TEST_F(ReportsTest, LinesAreSelectedWithKeys) {
  ClickRow(Trails(), 0);
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  ReportArea& area = summary->Area();
  Key(*summary, Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(area.Selection().lines, std::set<int>{0});
  Key(*summary, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(area.Selection().lines, (std::set<int>{0, 1}));
  Key(*summary, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(area.Selection().lines, std::set<int>{0});
  Key(*summary, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(area.Selection().lines, std::set<int>{0});
  Key(*summary, Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(area.Selection().lines, (std::set<int>{0, 2}));
  Press(*summary, CommandAdd);
  EXPECT_EQ(area.Selection().lines, (std::set<int>{0, 1, 2}));
  Key(*summary, Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(area.Selection().lines.empty());
}

TEST_F(ReportsTest, SelectedLinesHaveThePlatformsHighlight) {
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  const QImage before = summary->grab().toImage();
  Press(*summary, CommandAdd);
  const QImage after = summary->grab().toImage();
  const QColor highlight = summary->palette().color(QPalette::Active, QPalette::Highlight);
  const auto count = [&](const QImage& image) {
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y).rgb() == highlight.rgb()) ++pixels;
      }
    }
    return pixels;
  };
  EXPECT_GT(count(after) - count(before), 3000);
}

TEST_F(ReportsTest, ReportsFollowEditsUndoAndRedo) {
  ClickRow(Trails(), 0);
  SelectAllRangeRows();
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  auto* stats = Open<RangeStatsWindow>(CommandRangeStats);
  EXPECT_NE(Copied(*stats).find("\t\tIntersection of A"), std::string::npos);
  Range* anas = nullptr;
  for (Range& range : window_.TheMap().ranges) {
    if (range.name == "Anas") anas = &range;
  }
  ASSERT_NE(anas, nullptr);
  window_.activateWindow();
  DeleteRanges(window_.TheMap(), {anas}, shell_.History());
  EXPECT_EQ(Copied(*stats).find("Anas"), std::string::npos) << "the deleted range is gone";
  stats->grab();
  Press(*stats, CommandUndo);
  EXPECT_NE(Copied(*stats).find("\t\tAnas\n"), std::string::npos) << "and back, still selected";
  shell_.History().Redo(window_.TheMap());
  EXPECT_EQ(Copied(*stats).find("Anas"), std::string::npos);
  EXPECT_EQ(Copied(*summary).substr(0, 8), "2020-3-1");
}

TEST_F(ReportsTest, ReportsStayOpenWhileTheMapIsReloaded) {
  ClickRow(Trails(), 1);
  SelectAllRangeRows();
  auto* summary = Open<TrailSummaryWindow>(CommandTrailSummary);
  auto* index = Open<PointIndexWindow>(CommandPointIndex);
  auto* stats = Open<RangeStatsWindow>(CommandRangeStats);
  std::string changed = Season;
  changed.replace(changed.find("Camp"), 4, "Base");
  folder_.Write("site.map", changed);
  ASSERT_TRUE(ReloadMap(shell_, window_.TheMap()));
  EXPECT_EQ(window_.Dependents().size(), 3U);
  EXPECT_EQ(Copied(*summary).substr(0, 6), "Ridge\t");
  EXPECT_EQ(Copied(*index).substr(0, 4), "Base");
  EXPECT_NE(Copied(*stats).find("\t\tAnas\n"), std::string::npos);
  for (QWidget* each : {static_cast<QWidget*>(summary), static_cast<QWidget*>(index),
                        static_cast<QWidget*>(stats)}) {
    each->grab();
  }
}

TEST_F(ReportsTest, SavedReportsHaveTheDegreeSignAsOneByte) {
  auto* index = Open<PointIndexWindow>(CommandPointIndex);
  const std::string path = folder_.Path() + "/site.txt";
  dialogs_->paths = {path};
  Press(*index, CommandSaveAs);
  EXPECT_EQ(dialogs_->questions.at(0).title, "Save Point summary as...");
  EXPECT_EQ(dialogs_->questions.at(0).file.name, "site.txt");
  EXPECT_EQ(ContentOf(path),
            "Name\tLat/Lon\n\nCamp\tS20\xB0 0.000' E47\xB0 0.000'\n"
            "Hill\tS20\xB0 0.600' E47\xB0 0.600'\n");
  EXPECT_EQ(Copied(*index),
            "Camp\tS20\xC2\xB0 0.000' E47\xC2\xB0 0.000'\n"
            "Hill\tS20\xC2\xB0 0.600' E47\xC2\xB0 0.600'\n");
}

TEST_F(ReportsTest, ThePointIndexIsASnapshot) {
  auto* index = Open<PointIndexWindow>(CommandPointIndex);
  const std::string before = Copied(*index);
  Trail* ridge = nullptr;
  for (Trail& trail : window_.TheMap().trails) {
    if (trail.name == "Ridge") ridge = &trail;
  }
  ASSERT_NE(ridge, nullptr);
  DeleteTrails(window_.TheMap(), {ridge}, shell_.History());
  EXPECT_EQ(Copied(*index), before);
  index->grab();
}

TEST_F(ReportsTest, ThePointIndexFollowsTheFormOfAngles) {
  auto* index = Open<PointIndexWindow>(CommandPointIndex);
  ActionOf(window_, CommandDegrees).trigger();
  EXPECT_EQ(Copied(*index).substr(0, 10), "Camp\tS20.0");
}

/// A window of the Point Index on many names.
class PointIndexTest : public ReportsTest {
 protected:
  PointIndexTest() : map_(OpenActive(folder_.Write("many.map", ManyNames()))) {
    Press(map_, CommandPointIndex);
    index_ = dynamic_cast<PointIndexWindow*>(map_.Dependents().at(0));
    EXPECT_TRUE(QTest::qWaitForWindowActive(index_));
    index_->resize(300, 200);
    index_->grab();
  }
  static std::string ManyNames() {
    std::string text = "T\tRidge\tTrail\n";
    for (int i = 1; i <= 300; ++i) {
      text += "G\tFig" + std::to_string(i) + "\tN1 " + std::to_string(i * 0.01) + "'\tE10\n";
    }
    return text + "G\tZoo\tN1\tE11\n";
  }
  ReportArea& Area() { return index_->Area(); }
  int ScrollY() { return Area().verticalScrollBar()->value(); }
  int LineStep() { return Area().verticalScrollBar()->singleStep(); }
  /// The name of the only selected entry.
  std::string SelectedName() {
    const std::string copied = Copied(*index_);
    return std::count(copied.begin(), copied.end(), '\n') == 1 ? copied.substr(0, copied.find('\t'))
                                                               : "";
  }

  MapWindowWidget& map_;
  PointIndexWindow* index_ = nullptr;
};

TEST_F(PointIndexTest, TypingGoesToAName) {
  QTest::keyClicks(&Area(), QStringLiteral("Fig200"));
  EXPECT_EQ(index_->Typed(), "Fig200");
  EXPECT_EQ(SelectedName(), "Fig200");
  EXPECT_EQ(ScrollY(), 198 * LineStep()) << "on the second line";
  Key(*index_, Qt::Key_Backspace);
  EXPECT_EQ(index_->Typed(), "Fig20");
  EXPECT_EQ(SelectedName(), "Fig20");
  for (const int key : {Qt::Key_Escape, Qt::Key_Tab}) Key(*index_, key);
  // Only ASCII is searched for. Other letters are not "?".
  QTest::sendKeyEvent(QTest::Click, &Area(), Qt::Key_unknown, QString(QChar(0x044F)),
                      Qt::NoModifier);
  EXPECT_EQ(index_->Typed(), "Fig20");
  // After a pause a new search begins.
  ASSERT_TRUE(QTest::qWaitFor([&] { return index_->Typed().empty(); }, 3000));
  QTest::keyClicks(&Area(), QStringLiteral("Z"));
  EXPECT_EQ(index_->Typed(), "Z");
  EXPECT_EQ(SelectedName(), "Zoo");
}

TEST_F(PointIndexTest, TheCurrentLineIsSpoken) {
  QTest::keyClicks(&Area(), QStringLiteral("Zoo"));
  EXPECT_EQ(Area().accessibleDescription(), QStringLiteral("Zoo, N1° 0.000' E11° 0.000'"));
  EXPECT_EQ(Area().accessibleName(), QStringLiteral("Point Index"));
}

TEST_F(PointIndexTest, TheTwentiethCharacterBeeps) {
  QTest::keyClicks(&Area(), QStringLiteral("1234567890123456789"));
  EXPECT_EQ(beeps_, 0);
  QTest::keyClicks(&Area(), QStringLiteral("x"));
  EXPECT_EQ(beeps_, 1);
  EXPECT_EQ(index_->Typed().size(), 19U);
}

TEST_F(PointIndexTest, ArrowsScrollByALine) {
  Key(*index_, Qt::Key_Down);
  Key(*index_, Qt::Key_Down);
  EXPECT_EQ(ScrollY(), 2 * LineStep());
  Key(*index_, Qt::Key_Up);
  EXPECT_EQ(ScrollY(), LineStep());
  Key(*index_, Qt::Key_PageDown);
  EXPECT_GT(ScrollY(), 5 * LineStep());
  Key(*index_, Qt::Key_Home);
  EXPECT_EQ(ScrollY(), 0);
  Key(*index_, Qt::Key_End);
  EXPECT_EQ(ScrollY(), Area().verticalScrollBar()->maximum());
}

TEST_F(PointIndexTest, TheArrowsToTheSidesMoveThePointIndexUpAndDown) {
  Key(*index_, Qt::Key_Left);
  const int group = ScrollY();
  EXPECT_GT(group, 10 * LineStep());
  Key(*index_, Qt::Key_Left);
  EXPECT_EQ(ScrollY(), 2 * group);
  Key(*index_, Qt::Key_Right);
  EXPECT_EQ(ScrollY(), group);
  EXPECT_EQ(Area().horizontalScrollBar()->value(), 0);
}

TEST_F(PointIndexTest, FindGoesToANameInAnyCase) {
  messages_.texts = {"fig150", "Nowhere"};
  Press(*index_, CommandFind);
  EXPECT_EQ(SelectedName(), "Fig150");
  Press(*index_, CommandFind);
  EXPECT_EQ(Texts().back(), "Can't find Nowhere");
}

TEST_F(PointIndexTest, ReturnAndADoubleClickShowTheNameOnTheMap) {
  Key(*index_, Qt::Key_Return);
  EXPECT_TRUE(index_->isActiveWindow()) << "no name is selected";
  QTest::keyClicks(&Area(), QStringLiteral("Fig200"));
  Key(*index_, Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&map_));
  EXPECT_NE(map_.Shown().flags & MapWindowFindMarker, 0U);
  EXPECT_NEAR(map_.Shown().highlight.lat, 1 + 2.0 / 60, 1e-9);
  index_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(index_));
  const int line = static_cast<int>(1.75 * LineHeight(*index_) / Area().devicePixelRatioF());
  Key(*index_, Qt::Key_Home);
  QTest::mouseDClick(Area().viewport(), Qt::LeftButton, Qt::NoModifier, {20, line});
  EXPECT_TRUE(QTest::qWaitForWindowActive(&map_));
  EXPECT_NEAR(map_.Shown().highlight.lat, 1 + 0.01 / 60, 1e-9);
}

TEST_F(PointIndexTest, ANameThatIsGoneIsNotFound) {
  DeleteTrails(map_.TheMap(), {&map_.TheMap().trails.front()}, shell_.History());
  QTest::keyClicks(&Area(), QStringLiteral("Fig200"));
  Key(*index_, Qt::Key_Return);
  EXPECT_EQ(Texts().back(), "Can't find Fig200");
}

TEST_F(PointIndexTest, ANarrowWindowScrollsSideways) {
  index_->resize(120, 200);
  index_->grab();
  EXPECT_GT(Area().horizontalScrollBar()->maximum(), 0);
}

/// Range Stats of all ranges of a season with measures.
class RangeStatsTest : public ReportsTest {
 protected:
  RangeStatsTest() : map_(OpenActive(folder_.Write("measures.map", Measured()))) {
    SelectAllRanges(map_.Shown());
    Press(map_, CommandRangeStats);
    stats_ = dynamic_cast<RangeStatsWindow*>(map_.Dependents().at(0));
    EXPECT_TRUE(QTest::qWaitForWindowActive(stats_));
  }
  static std::string Measured() { return std::string("z\tfeed,rest\n") + Season; }
  void ClearRangeSelection() {
    for (RangePanelRow& row : map_.Shown().rangeViews) row.selected = false;
    Q_EMIT map_.Panes().Ranges().selectionChanged();
  }
  QImage Shown() { return stats_->Area().grab().toImage(); }

  MapWindowWidget& map_;
  RangeStatsWindow* stats_ = nullptr;
};

TEST_F(RangeStatsTest, TheKeysChooseWhatTheChartShows) {
  const QImage distance = Shown();
  Key(*stats_, Qt::Key_1);
  const QImage first = Shown();
  EXPECT_NE(first, distance);
  Key(*stats_, Qt::Key_3);
  EXPECT_EQ(Shown(), first) << "the map names no third measure";
  Key(*stats_, Qt::Key_2);
  EXPECT_NE(Shown(), first);
  Key(*stats_, Qt::Key_0);
  EXPECT_EQ(Shown(), distance);
  // Some keyboards have digits on their shifted keys only.
  Key(*stats_, Qt::Key_1, Qt::ShiftModifier);
  EXPECT_EQ(Shown(), first);
  Key(*stats_, Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(Shown(), first);
  Key(*stats_, Qt::Key_0);
  // It lasts as long as the window.
  Key(*stats_, Qt::Key_1);
  Q_EMIT map_.Panes().Ranges().selectionChanged();
  EXPECT_EQ(Shown(), first);
}

TEST_F(RangeStatsTest, TheChartIsCopiedAsAPictureWithItsNumbers) {
  QApplication::clipboard()->clear();
  Press(*stats_, CommandCopyImage);
  const QMimeData* data = QApplication::clipboard()->mimeData();
  ASSERT_TRUE(data->hasImage());
  EXPECT_EQ(data->text().left(4), QStringLiteral("Hour"));
  const auto copied = qvariant_cast<QImage>(data->imageData());
  EXPECT_EQ(copied.width(), stats_->Area().viewport()->width() * copied.devicePixelRatio());
  // Likewise if only the chart is selected.
  const double line = LineHeight(*stats_) / stats_->devicePixelRatioF();
  QTest::mouseClick(stats_->Area().viewport(), Qt::LeftButton, Qt::NoModifier,
                    {200, static_cast<int>(6 * line)});
  Press(*stats_, CommandCopy);
  EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
}

TEST_F(RangeStatsTest, TheChartIsSavedInTheFormatOfItsName) {
  for (const char* name : {"a.png", "a.svg", "a.pdf", "a.txt", "a.gif"}) {
    dialogs_->paths.push_back(folder_.Path() + "/" + name);
  }
  for (int i = 0; i < 4; ++i) Press(*stats_, CommandSavePicture);
  EXPECT_EQ(dialogs_->questions[0].title, "Save Picture of Chart...");
  EXPECT_EQ(dialogs_->questions[0].file.name, "All.png");
  EXPECT_TRUE(dialogs_->questions[0].file.withTable);
  EXPECT_EQ(dialogs_->questions[1].file.name, "All.png");
  EXPECT_EQ(dialogs_->questions[2].file.name, "All.svg") << "the ending is remembered";
  EXPECT_TRUE(QImage(QString::fromStdString(folder_.Path() + "/a.png")).width() > 300);
  EXPECT_NE(ContentOf(folder_.Path() + "/a.svg").find(">Hourly Travel<"), std::string::npos);
  EXPECT_EQ(ContentOf(folder_.Path() + "/a.pdf").substr(0, 5), "%PDF-");
  EXPECT_EQ(ContentOf(folder_.Path() + "/a.txt").substr(0, 12), "Hour\tMeters\t");
  EXPECT_TRUE(Texts().empty());
  Press(*stats_, CommandSavePicture);
  EXPECT_EQ(Texts().size(), 1U) << "no such kind of picture";
  EXPECT_FALSE(std::filesystem::exists(folder_.Path() + "/a.gif"));
}

TEST_F(RangeStatsTest, NoSelectionIsAHintAndAnEmptyFile) {
  ClearRangeSelection();
  const QImage hint = Shown();
  stats_->Area().emptyText.clear();
  stats_->Area().ShowLines();
  EXPECT_NE(Shown(), hint);
  EXPECT_FALSE(stats_->Commands().ActionOf(CommandSavePicture).isEnabled());
  const std::string path = folder_.Path() + "/stats.txt";
  dialogs_->paths = {path};
  Press(*stats_, CommandSaveAs);
  EXPECT_EQ(dialogs_->questions.at(0).title, "Save Range statistics as...");
  EXPECT_EQ(dialogs_->questions.at(0).file.name, "untitled.txt");
  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_EQ(ContentOf(path), "");
}

TEST_F(RangeStatsTest, TheFileIsNamedAfterTheFirstRow) {
  dialogs_->paths = {folder_.Path() + "/stats.txt"};
  Press(*stats_, CommandSaveAs);
  EXPECT_EQ(dialogs_->questions.at(0).file.name, "All.txt");
  EXPECT_EQ(ContentOf(folder_.Path() + "/stats.txt").substr(0, 6), "\t\tAll\n");
}

TEST_F(ReportsTest, TheKeyOfAMeasureDoesNothingInAMapWithoutNames) {
  SelectAllRangeRows();
  auto* stats = Open<RangeStatsWindow>(CommandRangeStats);
  const QImage distance = stats->Area().grab().toImage();
  Key(*stats, Qt::Key_1);
  EXPECT_EQ(stats->Area().grab().toImage(), distance);
}

TEST_F(RangeStatsTest, EachReportIsPrintedAsItIsShown) {
  Press(map_, CommandTrailSummary);
  Press(map_, CommandPointIndex);
  around_.printers.choose = [this](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(folder_.Path() + "/out.pdf"));
    return true;
  };
  const std::vector<ProgramWindow*> reports = map_.Dependents();
  ASSERT_EQ(reports.size(), 3U);
  for (ProgramWindow* report : reports) {
    std::filesystem::remove(folder_.Path() + "/out.pdf");
    Press(report->Widget(), CommandPrint);
    EXPECT_EQ(ContentOf(folder_.Path() + "/out.pdf").substr(0, 5), "%PDF-");
  }
  EXPECT_EQ(stats_->MakePages({})->Title(), "Range Stats");
}

}  // namespace
}  // namespace orvane
