// The list of all messages, and the text that a click opens.

#include "shell/messages/messages_window.h"

#include "shell/messages/message_log.h"
#include "shell/messages/text_viewer.h"
#include "shell/shell_case.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTreeView>

#include <filesystem>

namespace orvane {
namespace {

template <class Window>
Window* Shown() {
  const auto all = QApplication::topLevelWidgets();
  for (QWidget* widget : all) {
    auto* window = qobject_cast<Window*>(widget);
    if (window != nullptr && window->isVisible()) return window;
  }
  return nullptr;
}

/// The line that a viewer marks, as it stands there.
QString MarkedLine(const TextViewer& viewer) {
  const auto* text = viewer.findChild<QPlainTextEdit*>();
  const auto marks = text->extraSelections();
  return marks.isEmpty() ? QString() : marks[0].cursor.block().text();
}

QString PlaceOf(const TextViewer& viewer) {
  return viewer.findChild<QLabel*>(QStringLiteral("viewedPlace"))->text();
}

MessageOrigin At(const std::string& file, size_t line) { return {.file = file, .line = line}; }

TEST(MessageLog, HasARowForEachMessage) {
  MessageLog log;
  const QAbstractItemModelTester tester(&log);
  const MessageOrigin origin = At("/maps/site.map", 12);
  log.Add(Severity::Warning, QStringLiteral("first"), &origin);
  log.Add(Severity::Error, QStringLiteral("second"), nullptr);
  ASSERT_EQ(log.rowCount(), 2);
  const auto shown = [&log](int row, int column) {
    return log.index(row, column).data().toString();
  };
  EXPECT_EQ(shown(0, MessageLog::TextColumn), QStringLiteral("first"));
  EXPECT_EQ(shown(0, MessageLog::FileColumn), QStringLiteral("site.map"));
  EXPECT_EQ(shown(0, MessageLog::LineColumn), QStringLiteral("12"));
  EXPECT_EQ(shown(1, MessageLog::FileColumn), QString());
  EXPECT_EQ(shown(1, MessageLog::LineColumn), QString());
  EXPECT_EQ(log.index(0, 0).data(Qt::AccessibleTextRole).toString(),
            QStringLiteral("Warning: first"));
  EXPECT_EQ(log.index(1, 0).data(Qt::AccessibleTextRole).toString(),
            QStringLiteral("Error: second"));
  log.Add(Severity::Note, QStringLiteral("third"), nullptr);
  EXPECT_EQ(log.index(2, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Note: third"));
  log.Clear();
  EXPECT_EQ(log.rowCount(), 0);
}

TEST(MessageLog, LosesTheOldestWhenItIsFullAndKeepsTheNumbers) {
  MessageLog log;
  const auto most = static_cast<int>(MessageLog::MostKept);
  for (int i = 0; i <= most; ++i) log.Add(Severity::Warning, QString::number(i), nullptr);
  EXPECT_EQ(log.rowCount(), most - most / 10 + 1);
  EXPECT_EQ(log.At(log.rowCount() - 1).text, QString::number(most));
  EXPECT_EQ(log.At(0).text, QString::number(most / 10));
  EXPECT_EQ(log.RowOf(1), 0);
  const size_t last = log.At(log.rowCount() - 1).number;
  EXPECT_EQ(last, MessageLog::MostKept + 1);
  EXPECT_EQ(log.RowOf(last), log.rowCount() - 1);
}

TEST(TextViewer, ShowsAFileAtALine) {
  const TemporaryFolder folder;
  TextViewer viewer;
  viewer.ShowLine(folder.Write("a.map", "G\tCamp\n\nO\tr\xEDo\nlast"), 3);
  EXPECT_TRUE(viewer.isVisible());
  EXPECT_EQ(MarkedLine(viewer), QStringLiteral("O\tr\u00EDo"));
  EXPECT_TRUE(PlaceOf(viewer).contains(QStringLiteral("Line 3 of")));
  EXPECT_TRUE(viewer.findChild<QPlainTextEdit*>()->isReadOnly());
  viewer.ShowLine(folder.Path("a.map"), 0);
  EXPECT_EQ(MarkedLine(viewer), QString());
  EXPECT_EQ(PlaceOf(viewer), QString::fromStdString(folder.Path("a.map")));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&viewer));
  QTest::keyClick(&viewer, Qt::Key_Escape);
  EXPECT_FALSE(viewer.isVisible());
}

TEST(TextViewer, CountsLinesAsTheReaderDoes) {
  const TemporaryFolder folder;
  TextViewer viewer;
  const std::string file =
      folder.Write("a.map", std::string_view("one\rtwo\r\n\r\rfive\xFFsix\n\rei\0ght", 27));
  const QStringList lines = {
      QStringLiteral("one"),  QStringLiteral("two"), QString(), QString(),
      QStringLiteral("five"), QStringLiteral("six"), QString(), QStringLiteral("ei ght")};
  for (qsizetype i = 0; i < lines.size(); ++i) {
    viewer.ShowLine(file, static_cast<size_t>(i) + 1);
    EXPECT_EQ(MarkedLine(viewer), lines[i]) << i;
  }
}

TEST(TextViewer, TellsWhatItCannotShow) {
  const TemporaryFolder folder;
  TextViewer viewer;
  viewer.ShowLine(folder.Path("gone.map"), 5);
  EXPECT_TRUE(PlaceOf(viewer).contains(QStringLiteral("can't be read")));
  viewer.ShowLine(folder.Write("short.map", "one\n"), 500);
  EXPECT_EQ(MarkedLine(viewer), QString());
  std::filesystem::resize_file(folder.Write("huge.map", ""), TextViewer::LargestShown + 1);
  viewer.ShowLine(folder.Path("huge.map"), 1);
  EXPECT_TRUE(PlaceOf(viewer).contains(QStringLiteral("too large")));
}

class MessagesWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    file_ = folder_.Write("site.map", "first\nsecond\nthird\n");
    const MessageOrigin second = At(file_, 2);
    log_.Add(Severity::Warning, QStringLiteral("about the second"), &second);
    log_.Add(Severity::Error, QStringLiteral("about nothing"), nullptr);
    window_.ShowRow(0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QTreeView& List() { return *window_.findChild<QTreeView*>(); }
  void Click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QRect place = List().visualRect(log_.index(row, 0));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers, place.center());
  }

  TemporaryFolder folder_;
  std::string file_;
  MessageLog log_;
  MessagesWindow window_{log_};
};

TEST_F(MessagesWindowTest, AClickOpensTheTextAtTheLine) {
  Click(0);
  const TextViewer* viewer = Shown<TextViewer>();
  ASSERT_NE(viewer, nullptr);
  EXPECT_EQ(MarkedLine(*viewer), QStringLiteral("second"));
  EXPECT_EQ(viewer->windowTitle(), QStringLiteral("site.map"));
}

TEST_F(MessagesWindowTest, EnterOpensItToo) {
  QTest::keyClick(&List(), Qt::Key_Return);
  ASSERT_NE(Shown<TextViewer>(), nullptr);
  EXPECT_EQ(MarkedLine(*Shown<TextViewer>()), QStringLiteral("second"));
}

TEST_F(MessagesWindowTest, AMessageFromNowhereOpensNothing) {
  Click(1);
  EXPECT_EQ(Shown<TextViewer>(), nullptr);
}

TEST_F(MessagesWindowTest, CopiesTheSelectedRowsWithTheirPlaces) {
  Click(1);
  Click(0, Qt::ControlModifier);
  EXPECT_EQ(Shown<TextViewer>(), nullptr);
  QTest::keyClick(&List(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            QString::fromStdString(file_ + ":2: about the second\nabout nothing\n"));
}

TEST_F(MessagesWindowTest, CountsAndClears) {
  const auto* count = window_.findChild<QLabel*>(QStringLiteral("messageCount"));
  EXPECT_TRUE(count->text().startsWith(QStringLiteral("2 messages")));
  auto* clear = window_.findChild<QPushButton*>(QStringLiteral("clearMessages"));
  QTest::mouseClick(clear, Qt::LeftButton);
  EXPECT_EQ(log_.rowCount(), 0);
  EXPECT_EQ(count->text(), QStringLiteral("No messages so far."));
  EXPECT_FALSE(clear->isEnabled());
}

TEST_F(MessagesWindowTest, EscapeAndItsButtonCloseIt) {
  QTest::keyClick(&window_, Qt::Key_Escape);
  EXPECT_FALSE(window_.isVisible());
  window_.ShowRow(0);
  QTest::mouseClick(window_.findChild<QPushButton*>(QStringLiteral("closeMessages")),
                    Qt::LeftButton);
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(MessagesWindowTest, HasANameForEachControl) {
  EXPECT_EQ(List().accessibleName(), QStringLiteral("Messages"));
  const auto buttons = window_.findChildren<QPushButton*>();
  for (const QPushButton* button : buttons) EXPECT_FALSE(button->text().isEmpty());
}

class MessagesCommandTest : public ShellCase {};

TEST_F(MessagesCommandTest, TheMenuOpensTheWindow) {
  MapWindowWidget& window = OpenNew();
  ASSERT_TRUE(IsEnabled(window, CommandMessages));
  ActionOf(window, CommandMessages).trigger();
  ASSERT_NE(Shown<MessagesWindow>(), nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(Shown<MessagesWindow>()));
  QTest::keyClick(Shown<MessagesWindow>(), Qt::Key_Escape);
  EXPECT_EQ(Shown<MessagesWindow>(), nullptr);
}

TEST_F(MessagesCommandTest, TheRestOfTheMessagesOfAMapStandsBeforeItsWindow) {
  boxes_.showInWindow(0);
  MapWindowWidget& map = shell_.NewMap();
  ASSERT_NE(Shown<MessagesWindow>(), nullptr);
  EXPECT_TRUE(QTest::qWaitForWindowActive(Shown<MessagesWindow>()));
  EXPECT_FALSE(map.isActiveWindow());
  Shown<MessagesWindow>()->close();
}

}  // namespace
}  // namespace orvane
