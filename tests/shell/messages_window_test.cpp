// The list of all messages, and the text that a click opens.

#include "shell/messages/messages_window.h"

#include "model/point_names.h"
#include "shell/map/map_note.h"
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

/// The text of the line that a viewer marks.
QString MarkedLine(const TextViewer& viewer) {
  const auto* text = viewer.findChild<QPlainTextEdit*>();
  const auto marks = text->extraSelections();
  return marks.isEmpty() ? QString() : marks[0].cursor.block().text();
}

QString PlaceOf(const TextViewer& viewer) {
  return viewer.findChild<QLabel*>(QStringLiteral("viewedPlace"))->text();
}

MessageOrigin At(const std::string& file, size_t line) {
  return {.file = file, .line = line, .point = {}};
}

MessageOrigin About(const std::string& file, const std::string& point) {
  return {.file = file, .line = 0, .point = point};
}

/// Shows a file as it is now.
void ShowLine(TextViewer& viewer, const std::string& file, size_t line) {
  viewer.Show({.file = file, .line = line, .message = {}, .fileState = StateOfFile(file)});
}

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

TEST(MessageLog, KeepsTheFirstWhenItIsFull) {
  MessageLog log;
  const auto most = static_cast<int>(MessageLog::MostKept);
  int dropped = 0;
  QObject::connect(&log, &MessageLog::messageDropped, &log, [&dropped] { ++dropped; });
  for (int i = 0; i < most; ++i) log.Add(Severity::Warning, QString::number(i), nullptr);
  EXPECT_EQ(log.NotKept(), 0U);
  EXPECT_EQ(log.Add(Severity::Warning, QStringLiteral("late"), nullptr), MessageLog::MostKept + 1);
  log.Add(Severity::Warning, QStringLiteral("later"), nullptr);
  EXPECT_EQ(log.rowCount(), most);
  EXPECT_EQ(log.At(0).text, QStringLiteral("0"));
  EXPECT_EQ(log.At(most - 1).text, QString::number(most - 1));
  EXPECT_EQ(log.NotKept(), 2U);
  EXPECT_EQ(dropped, 2);
  EXPECT_EQ(log.RowOf(1), 0);
  EXPECT_EQ(log.RowOf(2), 1);
  EXPECT_EQ(log.RowOf(MessageLog::MostKept + 2), most - 1);
  log.Clear();
  EXPECT_EQ(log.NotKept(), 0U);
  const size_t next = log.Add(Severity::Warning, QStringLiteral("new"), nullptr);
  EXPECT_EQ(log.RowOf(next), 0);
}

TEST(MessageLog, ItsTipsArePlainText) {
  MessageLog log;
  const MessageOrigin origin = At("/maps/<b>.map", 1);
  log.Add(Severity::Warning, QStringLiteral("Bad range spec <b>x</b>\nR"), &origin);
  const auto tip = [&log](int column) {
    return log.index(0, column).data(Qt::ToolTipRole).toString();
  };
  EXPECT_TRUE(tip(MessageLog::TextColumn).contains(QStringLiteral("spec &lt;b&gt;x&lt;/b&gt;\nR")));
  EXPECT_TRUE(tip(MessageLog::TextColumn).contains(QStringLiteral("pre-wrap")));
  EXPECT_TRUE(tip(MessageLog::FileColumn).contains(QStringLiteral("/maps/&lt;b&gt;.map")));
}

TEST(MessageLog, KnowsWhichMessagesLeadSomewhere) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a.map", "#\nG\tCamp\tN1 0\tE1 0\n");
  MessageLog log;
  const MessageOrigin line = At(file, 3);
  const MessageOrigin whole = At(file, 0);
  const MessageOrigin point = About(file, "camp");
  const MessageOrigin other = About(file, "Nest");
  const MessageOrigin noFile = About("", "Camp");
  for (const MessageOrigin* origin :
       {&line, &whole, &point, static_cast<const MessageOrigin*>(nullptr), &other, &noFile}) {
    log.Add(Severity::Warning, QStringLiteral("x"), origin);
  }
  const std::vector<bool> leads = {true, false, true, false, false, false};
  const std::vector<size_t> lines = {3, 0, 2, 0, 0, 0};
  for (int row = 0; row < log.rowCount(); ++row) {
    EXPECT_EQ(log.Leads(row), leads[static_cast<size_t>(row)]) << row;
    EXPECT_EQ(log.LineOf(row), lines[static_cast<size_t>(row)]) << row;
    const QVariant font = log.index(row, MessageLog::FileColumn).data(Qt::FontRole);
    EXPECT_EQ(font.value<QFont>().underline(), leads[static_cast<size_t>(row)]) << row;
  }
}

TEST(MessageLog, APointLeadsToItsPlaceOrToTheFileAsItIsNow) {
  const TemporaryFolder folder;
  const MessageOrigin nest = About(folder.Write("a.map", "#\n"), "Nest");
  MessageLog log;
  log.Add(Severity::Warning, QStringLiteral("x"), &nest);
  EXPECT_FALSE(log.Leads(0));
  bool isPlaced = true;
  log.hasPlace = [&](const MessageOrigin& origin) { return isPlaced && origin.point == "Nest"; };
  EXPECT_TRUE(log.Leads(0));
  isPlaced = false;
  EXPECT_FALSE(log.Leads(0));
  folder.Write("a.map", "#\n#\nG\tNest\n");
  EXPECT_TRUE(log.Leads(0));
  EXPECT_EQ(log.LineOf(0), 3U);
}

TEST(TextViewer, ShowsAFileAtALine) {
  const TemporaryFolder folder;
  TextViewer viewer;
  ShowLine(viewer, folder.Write("a.map", "G\tCamp\n\nO\tr\xEDo\nlast"), 3);
  EXPECT_TRUE(viewer.isVisible());
  EXPECT_EQ(MarkedLine(viewer), QStringLiteral("O\tr\u00EDo"));
  EXPECT_TRUE(PlaceOf(viewer).contains(QStringLiteral("Line 3 of")));
  EXPECT_TRUE(viewer.findChild<QPlainTextEdit*>()->isReadOnly());
  ShowLine(viewer, folder.Path("a.map"), 0);
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
    ShowLine(viewer, file, static_cast<size_t>(i) + 1);
    EXPECT_EQ(MarkedLine(viewer), lines[i]) << i;
  }
}

TEST(TextViewer, DecodesEachLineByItself) {
  const TemporaryFolder folder;
  TextViewer viewer;
  ShowLine(viewer, folder.Write("a.map", "R\xC3\xADo\nR\xEDo\nR\xC3\xADo\xE2\x80\xA9x\nend"), 4);
  EXPECT_EQ(viewer.findChild<QPlainTextEdit*>()->toPlainText(),
            QStringLiteral("R\u00EDo\nR\u00EDo\nR\u00EDo x\nend"));
  EXPECT_EQ(MarkedLine(viewer), QStringLiteral("end"));
}

TEST(TextViewer, LeavesRoomForTheNumbersOfItsLines) {
  const TemporaryFolder folder;
  TextViewer viewer;
  const auto room = [&viewer] {
    const auto* text = viewer.findChild<QPlainTextEdit*>();
    return text->viewport()->geometry().left() - text->contentsRect().left();
  };
  ShowLine(viewer, folder.Write("a.map", "one\n"), 1);
  const int few = room();
  EXPECT_GT(few, viewer.findChild<QPlainTextEdit*>()->fontMetrics().horizontalAdvance(
                     QStringLiteral("999")));
  ShowLine(viewer, folder.Write("b.map", std::string(12345, '\n')), 12345);
  EXPECT_GT(room(), few);
}

TEST(TextViewer, ShowsTheMessageAndTheNoticeOfAChange) {
  const TemporaryFolder folder;
  TextViewer viewer;
  const std::string file = folder.Write("a.map", "one\ntwo\n");
  const auto* notice = viewer.findChild<QLabel*>(QStringLiteral("viewedNotice"));
  const FileState before = StateOfFile(file);
  const ViewedPlace place{
      .file = file, .line = 2, .message = QStringLiteral("Bad <b>line</b>"), .fileState = before};
  viewer.Show(place);
  const auto* message = viewer.findChild<QLabel*>(QStringLiteral("viewedMessage"));
  EXPECT_EQ(message->text(), place.message);
  EXPECT_EQ(message->textFormat(), Qt::PlainText);
  EXPECT_FALSE(notice->isVisible());
  // It changes while the viewer is open, and the user comes back to the viewer.
  folder.Write("a.map", "new\none\ntwo\n");
  QEvent activation(QEvent::ActivationChange);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&viewer));
  QApplication::sendEvent(&viewer, &activation);
  EXPECT_TRUE(notice->isVisible());
  EXPECT_EQ(MarkedLine(viewer), QStringLiteral("one"));
  viewer.Show(place);
  EXPECT_TRUE(notice->isVisible());
  ShowLine(viewer, file, 1);
  EXPECT_FALSE(notice->isVisible());
  EXPECT_FALSE(message->isVisible());
}

TEST(TextViewer, ReportsWhatItCannotShow) {
  const TemporaryFolder folder;
  TextViewer viewer;
  ShowLine(viewer, folder.Path("gone.map"), 5);
  EXPECT_TRUE(PlaceOf(viewer).contains(QStringLiteral("can't be read")));
  ShowLine(viewer, folder.Write("short.map", "one\n"), 500);
  EXPECT_EQ(MarkedLine(viewer), QString());
  std::filesystem::resize_file(folder.Write("huge.map", ""), TextViewer::LargestShown + 1);
  ShowLine(viewer, folder.Path("huge.map"), 1);
  EXPECT_TRUE(PlaceOf(viewer).contains(QStringLiteral("too large")));
}

class MessagesWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    file_ = folder_.Write("site.map", "first\nsecond\nthird\n");
    const MessageOrigin second = At(file_, 2);
    log_.Add(Severity::Warning, QStringLiteral("about the second"), &second);
    log_.Add(Severity::Error, QStringLiteral("about nothing"), nullptr);
    log_.hasPlace = [this](const MessageOrigin&) { return placeIsKnown_; };
    window_.showOnMap = [this](const MessageOrigin& origin) {
      shownPoints_.push_back(origin.point);
    };
    window_.ShowRow(0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QTreeView& List() { return *window_.findChild<QTreeView*>(); }
  void Click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QRect place = List().visualRect(log_.index(row, 0));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers, place.center());
  }

  QString Hint() { return window_.findChild<QLabel*>(QStringLiteral("messageCount"))->text(); }
  void AddAbout(const MessageOrigin& origin) {
    log_.Add(Severity::Warning, QStringLiteral("more"), &origin);
  }

  TemporaryFolder folder_;
  std::string file_;
  std::vector<std::string> shownPoints_;
  bool placeIsKnown_ = true;
  MessageLog log_;
  ScriptedSurroundings around_;
  MessagesWindow window_{log_, around_};
};

TEST_F(MessagesWindowTest, AClickOpensTheTextAtTheLine) {
  Click(0);
  const TextViewer* viewer = Shown<TextViewer>();
  ASSERT_NE(viewer, nullptr);
  EXPECT_EQ(MarkedLine(*viewer), QStringLiteral("second"));
  EXPECT_EQ(viewer->windowTitle(), QStringLiteral("site.map (text)"));
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

TEST_F(MessagesWindowTest, AFileAsAWholeOpensNothing) {
  AddAbout(At(file_, 0));
  Click(2);
  EXPECT_EQ(Shown<TextViewer>(), nullptr);
}

TEST_F(MessagesWindowTest, APointLeadsToItsFirstLine) {
  folder_.Write("points.map", "#\nC\tHide\tCamp\t20\t35\n");
  AddAbout(About(folder_.Path("points.map"), "Camp"));
  Click(2);
  ASSERT_NE(Shown<TextViewer>(), nullptr);
  EXPECT_EQ(MarkedLine(*Shown<TextViewer>()), QStringLiteral("C\tHide\tCamp\t20\t35"));
  EXPECT_TRUE(shownPoints_.empty());
}

TEST_F(MessagesWindowTest, APointThatTheFileDoesNotNameLeadsToTheMap) {
  AddAbout(About(file_, "Nest"));
  Click(2);
  EXPECT_EQ(shownPoints_, std::vector<std::string>{"Nest"});
  EXPECT_EQ(Shown<TextViewer>(), nullptr);
}

// It looked like a link and opened the file with no line marked.
TEST_F(MessagesWindowTest, APointWithoutALineOrAPlaceOffersNothing) {
  placeIsKnown_ = false;
  log_.Clear();
  AddAbout(About(file_, "Nest"));
  EXPECT_EQ(Hint(), QStringLiteral("1 message."));
  Click(0);
  QTest::keyClick(&List(), Qt::Key_F8);
  EXPECT_EQ(Shown<TextViewer>(), nullptr);
  EXPECT_TRUE(shownPoints_.empty());
  EXPECT_EQ(around_.beeps, 1);
  AddAbout(At(file_, 1));
  EXPECT_EQ(Hint(),
            QStringLiteral("2 messages. Click one with an underlined file to see its line."));
}

TEST_F(MessagesWindowTest, OffersAClickOnlyWhereItLeadsSomewhere) {
  EXPECT_EQ(Hint(),
            QStringLiteral("2 messages. Click one with an underlined file to see its line."));
  log_.Clear();
  EXPECT_EQ(Hint(), QStringLiteral("No messages so far."));
  AddAbout(At(file_, 0));
  EXPECT_EQ(Hint(), QStringLiteral("1 message."));
  log_.Clear();
  AddAbout(At(file_, 1));
  EXPECT_EQ(Hint(), QStringLiteral("1 message. Click it to see its line."));
  AddAbout(About(file_, "Camp"));
  EXPECT_EQ(Hint(), QStringLiteral("2 messages. Click one to see its line or place."));
  const MessagesWindow late(log_, around_);
  EXPECT_EQ(late.findChild<QLabel*>(QStringLiteral("messageCount"))->text(), Hint());
}

TEST_F(MessagesWindowTest, TheHandShowsWhereAClickLeadsSomewhere) {
  for (const int row : {0, 1, 0}) {
    const QPoint place = List().visualRect(log_.index(row, 0)).center();
    QTest::mouseMove(List().viewport(), place);
    const auto wanted = row == 0 ? Qt::PointingHandCursor : Qt::ArrowCursor;
    EXPECT_TRUE(QTest::qWaitFor([&] { return List().viewport()->cursor().shape() == wanted; }));
  }
}

TEST_F(MessagesWindowTest, F8StepsThroughTheMessagesThatHaveALine) {
  AddAbout(At(file_, 3));
  QTest::keyClick(&List(), Qt::Key_F8);
  TextViewer* viewer = Shown<TextViewer>();
  ASSERT_NE(viewer, nullptr);
  EXPECT_EQ(MarkedLine(*viewer), QStringLiteral("second"));
  ASSERT_TRUE(QTest::qWaitForWindowActive(viewer));
  const auto* next = viewer->findChild<QPushButton*>(QStringLiteral("nextMessage"));
  const auto* previous = viewer->findChild<QPushButton*>(QStringLiteral("previousMessage"));
  EXPECT_TRUE(next->isEnabled());
  EXPECT_FALSE(previous->isEnabled());
  QTest::keyClick(viewer, Qt::Key_F8);
  EXPECT_EQ(MarkedLine(*viewer), QStringLiteral("third"));
  EXPECT_EQ(List().currentIndex().row(), 2);
  EXPECT_FALSE(next->isEnabled());
  QTest::keyClick(viewer, Qt::Key_F8);
  EXPECT_EQ(MarkedLine(*viewer), QStringLiteral("third"));
  QTest::keyClick(viewer, Qt::Key_F8, Qt::ShiftModifier);
  EXPECT_EQ(MarkedLine(*viewer), QStringLiteral("second"));
}

TEST_F(MessagesWindowTest, TheKeyOfExitIsHandedOn) {
  int exits = 0;
  QObject::connect(&window_, &MessagesWindow::exitRequested, &window_, [&exits] { ++exits; });
  QTest::keyClick(&List(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(exits, 1);
  Click(0);
  ASSERT_TRUE(QTest::qWaitForWindowActive(Shown<TextViewer>()));
  QTest::keyClick(Shown<TextViewer>(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(exits, 2);
}

TEST_F(MessagesWindowTest, SaysHowManyMessagesWereNotKept) {
  for (size_t i = 0; i < MessageLog::MostKept; ++i) {
    log_.Add(Severity::Warning, QString(), nullptr);
  }
  EXPECT_TRUE(Hint().contains(QStringLiteral(" 2 more were not kept.")));
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

TEST_F(MessagesWindowTest, EscapeAndItsKeyAndItsButtonCloseIt) {
  QTest::keyClick(&window_, Qt::Key_Escape);
  EXPECT_FALSE(window_.isVisible());
  window_.ShowRow(0);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  QTest::keyClick(&window_, Qt::Key_W, Qt::ControlModifier);
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

TEST_F(MessagesCommandTest, APointThatIsInNoFileIsShownOnItsMap) {
  MapWindowWidget& map = OpenActive(WriteMap("site.map"));
  Point* nest = ResolvePointName(map.TheMap(), nullptr, "Nest");
  nest->flags |= PointPlaced;
  const MessageOrigin origin = About(map.TheMap().fileName, "Nest");
  boxes_.Log().Add(Severity::Warning, QStringLiteral("x"), &origin);
  boxes_.showInWindow(0);
  auto* messages = Shown<MessagesWindow>();
  ASSERT_NE(messages, nullptr);
  QTest::keyClick(messages->findChild<QTreeView*>(), Qt::Key_Return);
  EXPECT_EQ(Shown<TextViewer>(), nullptr);
  EXPECT_NE(map.Shown().flags & MapWindowFindMarker, 0U);
  EXPECT_TRUE(boxes_.Log().Leads(0));
  nest->flags &= ~std::uint32_t{PointPlaced};
  EXPECT_FALSE(boxes_.Log().Leads(0));
  QTest::keyClick(messages->findChild<QTreeView*>(), Qt::Key_Return);
  EXPECT_EQ(Shown<TextViewer>(), nullptr);
  messages->close();
}

TEST_F(MessagesCommandTest, TheKeyOfExitEndsTheProgram) {
  OpenNew();
  boxes_.showInWindow(0);
  ASSERT_TRUE(QTest::qWaitForWindowActive(Shown<MessagesWindow>()));
  QTest::keyClick(Shown<MessagesWindow>(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(ends_, 1);
  Shown<MessagesWindow>()->close();
}

TEST_F(MessagesCommandTest, TheMenuOpensTheWindow) {
  MapWindowWidget& window = OpenNew();
  ASSERT_TRUE(IsEnabled(window, CommandMessages));
  ActionOf(window, CommandMessages).trigger();
  ASSERT_NE(Shown<MessagesWindow>(), nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(Shown<MessagesWindow>()));
  QTest::keyClick(Shown<MessagesWindow>(), Qt::Key_Escape);
  EXPECT_EQ(Shown<MessagesWindow>(), nullptr);
}

/// The note at the edge of a map, once it is shown; null if it is not.
ResultNote* NoteOf(MapWindowWidget& window) {
  ResultNote* note = nullptr;
  const bool shown = QTest::qWaitFor(
      [&] {
        note = window.View().findChild<ResultNote*>();
        return note != nullptr && note->isVisible();
      },
      500);
  return shown ? note : nullptr;
}

TEST_F(MessagesCommandTest, NotesOfOneCommandShowAtTheEdgeOfTheMap) {
  const MapWindowWidget& other = OpenActive(WriteMap("other.map"));
  MapWindowWidget& window = OpenActive(WriteMap("site.map"));
  boxes_.Log().Add(Severity::Warning, QStringLiteral("first"), nullptr);
  PostNote(boxes_, "12 follows, <b>140</b> stops");
  PostNote(boxes_, "3 places are unknown");
  EXPECT_EQ(window.View().findChild<ResultNote*>(), nullptr);
  ResultNote* note = NoteOf(window);
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(note->text(), QStringLiteral("12 follows, <b>140</b> stops\n3 places are unknown"));
  EXPECT_EQ(note->textFormat(), Qt::PlainText);
  EXPECT_EQ(note->accessibleName(), note->text());
  EXPECT_TRUE(window.View().rect().contains(note->geometry()));
  EXPECT_GT(note->geometry().bottom(), window.View().height() - 12);
  EXPECT_EQ(other.findChild<ResultNote*>(), nullptr);
  // It stays at the edge, and a click leads to the first of the notes.
  window.resize(window.width() - 100, window.height() - 100);
  QApplication::processEvents();
  EXPECT_TRUE(window.View().rect().contains(note->geometry()));
  QTest::mouseClick(note, Qt::LeftButton);
  EXPECT_FALSE(note->isVisible());
  auto* messages = Shown<MessagesWindow>();
  ASSERT_NE(messages, nullptr);
  EXPECT_EQ(messages->findChild<QTreeView*>()->currentIndex().row(), 1);
  messages->close();
}

TEST_F(MessagesCommandTest, ManyNotesAreCutToFourLines) {
  MapWindowWidget& window = OpenNew();
  for (int i = 0; i < 6; ++i) PostNote(boxes_, "note %s", {std::to_string(i)});
  ResultNote* note = NoteOf(window);
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(note->text(), QStringLiteral("note 0\nnote 1\nnote 2\n"
                                         "3 more notes are in the messages window"));
  PostNote(boxes_, "later");
  EXPECT_TRUE(QTest::qWaitFor([&] { return note->text() == QStringLiteral("later"); }));
}

TEST_F(MessagesCommandTest, ANoteOfAMapThatIsReadShowsInItsNewWindow) {
  PostNote(boxes_, "read");
  EXPECT_NE(NoteOf(OpenNew()), nullptr);
  QTest::qWait(10);  // and one for which there is no window shows nowhere
}

TEST_F(MessagesCommandTest, TheRestOfTheMessagesOfAMapIsInFrontOfItsWindow) {
  boxes_.showInWindow(0);
  MapWindowWidget& map = shell_.NewMap();
  ASSERT_NE(Shown<MessagesWindow>(), nullptr);
  EXPECT_TRUE(QTest::qWaitForWindowActive(Shown<MessagesWindow>()));
  EXPECT_FALSE(map.isActiveWindow());
  Shown<MessagesWindow>()->close();
}

}  // namespace
}  // namespace orvane
