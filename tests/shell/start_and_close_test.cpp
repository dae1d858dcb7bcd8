// How the program starts, how windows close, and how it ends.

#include "mapfile/open_map.h"
#include "shell/comment_edit.h"
#include "shell/shell_case.h"
#include "shell/toolkit_hook.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QUrl>

#include <filesystem>

namespace orvane {
namespace {

class StartTest : public ShellCase {};

TEST_F(StartTest, EachFileOpensInAWindowOfItsOwnAndTheDefaultMapDoesNot) {
  int read = 0;
  size_t windowsBefore = 0;
  shell_.Keep(std::make_unique<ScriptedPreferences>([&] {
    ++read;
    windowsBefore = shell_.Windows().All().size();
    return WriteMap("default.map");
  }));
  program_.Start({WriteMap("one.map"), WriteMap("two.map")});
  ASSERT_EQ(shell_.Windows().All().size(), 2U);
  EXPECT_EQ(shell_.Windows().All()[0]->TheMap().fileName, folder_.Path("two.map"));
  EXPECT_EQ(shell_.Windows().All()[1]->TheMap().fileName, folder_.Path("one.map"));
  EXPECT_EQ(read, 1);
  EXPECT_EQ(windowsBefore, 2U);  // the preferences are read after the files
  EXPECT_TRUE(dialogs_->questions.empty());
}

TEST_F(StartTest, WithoutAFileTheDefaultMapOpens) {
  shell_.Keep(std::make_unique<ScriptedPreferences>([&] { return WriteMap("default.map"); }));
  program_.Start({});
  ASSERT_EQ(shell_.Windows().All().size(), 1U);
  EXPECT_EQ(shell_.Windows().All()[0]->TheMap().fileName, folder_.Path("default.map"));
  EXPECT_TRUE(dialogs_->questions.empty());
}

TEST_F(StartTest, WithNeitherAMapIsAskedFor) {
  dialogs_->paths = {WriteMap("asked.map")};
  program_.Start({});
  ASSERT_EQ(dialogs_->questions.size(), 1U);
  EXPECT_EQ(dialogs_->questions[0].title, "Open Map...");
  ASSERT_EQ(shell_.Windows().All().size(), 1U);
  EXPECT_EQ(ShownTaskWindow(), nullptr);
}

TEST_F(StartTest, WhoCancelsIsLeftWithTheWindowWithoutAMap) {
  program_.Start({});
  EXPECT_TRUE(shell_.Windows().All().empty());
  TaskWindow* window = ShownTaskWindow();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Orvane"));
  EXPECT_FALSE(window->Commands().ActionOf(CommandSave).isEnabled());
  EXPECT_FALSE(window->Commands().ActionOf(CommandFind).isEnabled());
  EXPECT_TRUE(window->Commands().ActionOf(CommandNewMap).isEnabled());
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  Press(*window, CommandNewMap);
  EXPECT_EQ(shell_.Windows().All().size(), 1U);
  EXPECT_EQ(ShownTaskWindow(), nullptr);
}

TEST_F(StartTest, WithoutAMapCutCopyAndPasteAreThereAndDoNothing) {
  program_.Start({});
  TaskWindow* window = ShownTaskWindow();
  ASSERT_NE(window, nullptr);
  for (const CommandId id : {CommandCut, CommandCopy, CommandPaste}) {
    EXPECT_TRUE(window->Commands().ActionOf(id).isEnabled()) << id;
    window->Commands().ActionOf(id).trigger();
  }
  EXPECT_EQ(beeps_, 0);
}

TEST_F(StartTest, WithoutAMapACommandThatBeepsLeavesNoMark) {
  program_.Start({});
  TaskWindow* window = ShownTaskWindow();
  ASSERT_NE(window, nullptr);
  int beeps = 0;
  for (const CommandId id : {CommandHideGrids, CommandDegrees, CommandSeconds}) {
    QAction& action = window->Commands().ActionOf(id);
    ASSERT_TRUE(action.isEnabled()) << id;
    action.trigger();
    EXPECT_EQ(beeps_, ++beeps) << id;
    EXPECT_FALSE(action.isChecked()) << id;
  }
  QAction& fullScreen = window->Commands().ActionOf(CommandFullScreen);
  fullScreen.trigger();
  EXPECT_TRUE(window->isFullScreen());
  EXPECT_TRUE(fullScreen.isChecked());
  window->ShowMenu();
  EXPECT_TRUE(fullScreen.isChecked());
  fullScreen.trigger();
  EXPECT_FALSE(fullScreen.isChecked());
}

TEST_F(StartTest, AFileDroppedOnTheWindowWithoutAMapOpens) {
  program_.Start({});
  TaskWindow* window = ShownTaskWindow();
  ASSERT_NE(window, nullptr);
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(WriteMap("site.map")))});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window, &drop);
  EXPECT_TRUE(shell_.Windows().All().empty());  // not before the drop is over
  QApplication::processEvents();
  ASSERT_EQ(shell_.Windows().All().size(), 1U);
  EXPECT_EQ(ShownTaskWindow(), nullptr);
}

TEST_F(StartTest, AMissingFileIsReportedAndOpensEmptyAndSavingMakesIt) {
  program_.Start({folder_.Path("new.map")});
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Can't open file " + folder_.Path("new.map")}));
  ASSERT_EQ(shell_.Windows().All().size(), 1U);
  MapWindowWidget& window = *shell_.Windows().All()[0];
  EXPECT_FALSE(IsUntitled(window.TheMap()));
  EXPECT_TRUE(shell_.Maps().Recent().empty());
  AddComment(shell_, window.TheMap());
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  Press(window, CommandSave);
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("new.map")));
}

TEST_F(StartTest, AFileUnderTwoNamesIsOneMap) {
  WriteMap("site.map");
  std::filesystem::create_directory(folder_.Path("sub"));
  Map* first = shell_.Maps().Read(folder_.Path("site.map"));
  EXPECT_EQ(shell_.Maps().Read(folder_.Path("sub/../site.map")), first);
  WriteMap("other.map");
  EXPECT_NE(shell_.Maps().Read(folder_.Path("other.map")), first);
}

class CloseTest : public ShellCase {
 protected:
  MapWindowWidget& OpenChanged(const std::string& name) {
    MapWindowWidget& window = OpenActive(WriteMap(name));
    AddComment(shell_, window.TheMap());
    return window;
  }
};

TEST_F(CloseTest, TheLastWindowLeavesTheOneWithoutAMap) {
  QPointer<MapWindowWidget> window = &OpenActive(WriteMap("site.map"));
  Press(*window, CommandCloseMap);
  DeliverDeletes();
  EXPECT_TRUE(window.isNull());
  EXPECT_NE(ShownTaskWindow(), nullptr);
  EXPECT_EQ(ends_, 0);
}

TEST_F(CloseTest, TheWindowWithoutAMapTakesThePlaceOfTheLastOne) {
  const std::string path = WriteMap("site.map");
  MapWindowWidget* window = &OpenActive(path);
  window->setGeometry(40, 60, 500, 300);
  Press(*window, CommandCloseMap);
  ASSERT_NE(ShownTaskWindow(), nullptr);
  EXPECT_EQ(ShownTaskWindow()->geometry(), QRect(40, 60, 500, 300));
  // One that filled the screen does not leave its mark on the next.
  for (const bool full : {true, false}) {
    window = &OpenActive(path);
    window->setWindowState(full ? Qt::WindowFullScreen : Qt::WindowNoState);
    Press(*window, CommandCloseMap);
    TaskWindow* task = ShownTaskWindow();
    ASSERT_NE(task, nullptr);
    EXPECT_EQ(task->isFullScreen(), full);
    EXPECT_EQ(task->Commands().ActionOf(CommandFullScreen).isChecked(), full);
  }
}

TEST_F(CloseTest, CancelKeepsTheWindow) {
  MapWindowWidget& window = OpenChanged("site.map");
  messages_.answers = {2};
  Press(window, CommandCloseMap);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(shell_.Windows().All().size(), 1U);
  EXPECT_EQ(messages_.Questions().at(0).text, "site.map has changed, do you want to save it?");
}

TEST_F(CloseTest, DontSaveKeepsTheChangesInMemory) {
  MapWindowWidget& window = OpenChanged("site.map");
  Map* map = &window.TheMap();
  map->magneticDeviation = 7;
  Map* discarded = nullptr;
  QObject::connect(&shell_.Maps(), &OpenMaps::changesDiscarded,
                   [&](Map* each) { discarded = each; });
  messages_.answers = {3};
  Press(window, CommandCloseMap);
  EXPECT_TRUE(shell_.Windows().All().empty());
  EXPECT_EQ(discarded, map);
  MapWindowWidget& again = OpenActive(folder_.Path("site.map"));
  EXPECT_EQ(&again.TheMap(), map);
  EXPECT_EQ(again.TheMap().magneticDeviation, 7);
  EXPECT_TRUE(IsEnabled(again, CommandSave));
}

TEST_F(CloseTest, SaveSavesAndCloses) {
  MapWindowWidget& window = OpenChanged("site.map");
  window.TheMap().comments.emplace_back("# kept");
  messages_.answers = {1};
  Press(window, CommandCloseMap);
  EXPECT_TRUE(shell_.Windows().All().empty());
  EXPECT_NE(folder_.Read("site.map").find("# kept"), std::string::npos);
}

TEST_F(CloseTest, TheFrameOfTheWindowAsksToo) {
  MapWindowWidget& window = OpenChanged("site.map");
  messages_.answers = {2, 3};
  EXPECT_FALSE(window.close());
  EXPECT_EQ(shell_.Windows().All().size(), 1U);
  EXPECT_TRUE(window.close());
  EXPECT_TRUE(shell_.Windows().All().empty());
  EXPECT_EQ(messages_.Questions().size(), 2U);
}

/// A window that hangs on a map window and notes when it is asked to close.
class Dependent final : public ProgramWindow {
 public:
  Dependent(WindowKind kind, MapWindowWidget& map, std::vector<WindowKind>& closed)
      : ProgramWindow(kind), map_(map), closed_(closed) {
    map_.AddDependent(*this);
  }
  QWidget& Widget() override { return map_; }
  MapWindowWidget* MapSide() override { return &map_; }
  bool Answer(CommandId id) override {
    answered = id;
    return id == CommandFind;
  }
  bool TryClose() override {
    if (refuses) return false;
    closed_.push_back(Kind());
    map_.RemoveDependent(*this);
    return true;
  }
  bool refuses = false;
  CommandId answered = CommandNone;

 private:
  MapWindowWidget& map_;
  std::vector<WindowKind>& closed_;
};

TEST_F(CloseTest, EditorsAreAskedFirstAndReportsCloseLast) {
  MapWindowWidget& window = OpenChanged("site.map");
  std::vector<WindowKind> closed;
  Dependent summary(WindowKind::TrailSummary, window, closed);
  Dependent editor(WindowKind::TrailEditor, window, closed);
  editor.refuses = true;
  EXPECT_FALSE(shell_.MapWinClose(window));
  EXPECT_TRUE(messages_.Questions().empty());
  editor.refuses = false;
  messages_.answers = {2};
  EXPECT_FALSE(shell_.MapWinClose(window));
  EXPECT_EQ(closed, (std::vector<WindowKind>{WindowKind::TrailEditor}));
  messages_.answers = {3};
  EXPECT_TRUE(shell_.MapWinClose(window));
  EXPECT_EQ(closed, (std::vector<WindowKind>{WindowKind::TrailEditor, WindowKind::TrailSummary}));
}

TEST_F(CloseTest, AWindowOfAnotherKindAnswersForItselfOrGetsABeep) {
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  std::vector<WindowKind> closed;
  Dependent index(WindowKind::PointIndex, window, closed);
  shell_.Commands().Run(CommandFind, index);
  EXPECT_EQ(index.answered, CommandFind);
  EXPECT_TRUE(messages_.Questions().empty());
  for (const CommandId id : {CommandOpenBasis, CommandSetBasis, CommandCheckTrails, CommandSaveAs,
                             CommandSaveAsArcView, CommandZoomIn, CommandViewControl}) {
    beeps_ = 0;
    shell_.Commands().Run(id, index);
    EXPECT_EQ(beeps_, 1) << id;
  }
  shell_.Commands().Run(CommandCloseMap, index);
  EXPECT_EQ(closed, (std::vector<WindowKind>{WindowKind::PointIndex}));
  EXPECT_EQ(shell_.Windows().All().size(), 1U);
}

/// A window of a kind that there is not.
class StrangeWindow final : public ProgramWindow {
 public:
  StrangeWindow() : ProgramWindow(static_cast<WindowKind>(6)) {}
  QWidget& Widget() override { return widget_; }
  MapWindowWidget* MapSide() override { return nullptr; }
  bool TryClose() override { return false; }

 private:
  QWidget widget_;
};

TEST_F(CloseTest, AWindowOfAnUnknownKindIsReportedAndClosed) {
  StrangeWindow window;
  window.Widget().show();
  EXPECT_TRUE(shell_.MapWinClose(window));
  EXPECT_FALSE(window.Widget().isVisible());
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Unknown window type 6 in MapWinClose"}));
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::InternalError);
}

class ExitTest : public CloseTest {};

TEST_F(ExitTest, WritesThePreferencesClosesAllAndEnds) {
  OpenActive(WriteMap("one.map"));
  MapWindowWidget& window = OpenActive(WriteMap("two.map"));
  size_t windowsWhenWritten = 0;
  shell_.Keep(std::make_unique<ScriptedPreferences>(
      nullptr, [&] { windowsWhenWritten = shell_.Windows().All().size(); }));
  Press(window, CommandExit);
  EXPECT_EQ(windowsWhenWritten, 2U);
  EXPECT_TRUE(shell_.Windows().All().empty());
  EXPECT_EQ(ShownTaskWindow(), nullptr);
  EXPECT_EQ(ends_, 1);
}

TEST_F(ExitTest, ARefusalStopsItWithThePreferencesWritten) {
  OpenActive(WriteMap("one.map"));
  MapWindowWidget& changed = OpenChanged("two.map");
  OpenActive(WriteMap("three.map"));
  int written = 0;
  shell_.Keep(std::make_unique<ScriptedPreferences>(nullptr, [&] { ++written; }));
  messages_.answers = {2};
  EXPECT_FALSE(shell_.ExitFlow());
  EXPECT_EQ(written, 1);
  EXPECT_EQ(ends_, 0);
  ASSERT_EQ(shell_.Windows().All().size(), 2U);  // the newest was closed already
  EXPECT_EQ(shell_.Windows().All()[0], &changed);
}

TEST_F(ExitTest, ClosingTheWindowWithoutAMapIsExit) {
  program_.Start({});
  ASSERT_NE(ShownTaskWindow(), nullptr);
  ShownTaskWindow()->close();
  EXPECT_EQ(ends_, 1);
}

TEST(ToolkitHook, ErrorsOfTheWindowSystemAreShownAsInternalErrors) {
  RecordedMessages messages;
  ScriptedSurroundings around;
  {
    const ToolkitHook hook(messages, around);
    for (int i = 0; i < 11; ++i) qCritical("lost the display %d", i);
    EXPECT_TRUE(messages.Entries().empty());  // not in the middle of other work
    QApplication::processEvents();
    ASSERT_EQ(messages.Entries().size(), 11U);
    EXPECT_EQ(messages.Entries()[0].text, "lost the display 0");
    EXPECT_EQ(messages.Entries()[0].severity, Severity::InternalError);
    EXPECT_EQ(around.ends, 1);
  }
  EXPECT_EQ(messages.Entries().size(), 11U);
}

}  // namespace
}  // namespace orvane
