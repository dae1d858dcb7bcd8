#include "shell/messages/box_messages.h"
#include "shell/scripted_surroundings.h"

#include <QApplication>
#include <QCheckBox>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// What a box says, without the places where it may be broken.
QString TextOf(QWidget& box) {
  if (auto* message = qobject_cast<QMessageBox*>(&box)) {
    return message->text().remove(QChar(0x200B));
  }
  const auto* label = box.findChild<QLabel*>(QStringLiteral("boxText"));
  return label == nullptr ? QString() : label->text();
}

/// Answers each modal box when it appears, and remembers its text.
class BoxWatcher {
 public:
  explicit BoxWatcher(std::function<void(QWidget&)> answer = nullptr) : answer_(std::move(answer)) {
    timer_.setInterval(1);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start();
  }

  const QStringList& Texts() const { return texts_; }
  const QList<QMessageBox::Icon>& Icons() const { return icons_; }
  const QStringList& Titles() const { return titles_; }
  /// Of each box, whether it had the check.
  const QList<bool>& Checks() const { return checks_; }

 private:
  void Look() {
    QWidget* widget = QApplication::activeModalWidget();
    if (widget == nullptr) return;
    texts_.append(TextOf(*widget));
    titles_.append(widget->windowTitle());
    checks_.append(widget->findChild<QCheckBox*>() != nullptr);
    if (auto* box = qobject_cast<QMessageBox*>(widget)) icons_.append(box->icon());
    if (answer_) {
      answer_(*widget);
    } else {
      QTest::keyClick(widget, Qt::Key_Return);
    }
  }

  QTimer timer_;
  std::function<void(QWidget&)> answer_;
  QStringList texts_;
  QStringList titles_;
  QList<QMessageBox::Icon> icons_;
  QList<bool> checks_;
};

QPushButton* ButtonOf(QWidget& box, const QString& text) {
  const auto buttons = box.findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    if (button->text().remove(QLatin1Char('&')) == text) return button;
  }
  return nullptr;
}

TEST(BoxMessages, ShowsEachMessageWithTheIconOfItsSeverity) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  BoxWatcher watcher;
  NoteWarning(boxes, "Bad range spec %s", {"<b>x</b>"});
  NoteError(boxes, "Can't open file %s", {"r\xEDo.map"});
  NoteInternalError(boxes, "odd");
  EXPECT_EQ(watcher.Texts(), QStringList({QStringLiteral("Bad range spec <b>x</b>"),
                                          QStringLiteral("Can't open file r\u00EDo.map"),
                                          QStringLiteral("Internal Error: odd")}));
  EXPECT_EQ(watcher.Icons(), (QList<QMessageBox::Icon>{QMessageBox::Warning, QMessageBox::Critical,
                                                       QMessageBox::Critical}));
}

TEST(BoxMessages, AFatalMessageEndsTheProgramAfterItsBox) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  BoxWatcher watcher;
  around.endedAtOnce = [&watcher] { EXPECT_EQ(watcher.Texts().size(), 2); };
  const MessageBatch batch(boxes, QStringLiteral("Opening a.map"));
  NoteWarning(boxes, "first");
  NoteFatal(boxes, "Error getting file name.");
  EXPECT_EQ(around.endStatus, BoxMessages::FatalExit);
  EXPECT_EQ(watcher.Texts(),
            QStringList({QStringLiteral("first"), QStringLiteral("Error getting file name.")}));
}

TEST(BoxMessages, FewMessagesOfABatchHaveABoxEachAtItsEnd) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  BoxWatcher watcher;
  {
    const MessageBatch batch(boxes, QStringLiteral("Opening a.map"));
    NoteWarning(boxes, "one");
    {
      const MessageBatch inner(boxes, QStringLiteral("Opening b.map"));
      NoteError(boxes, "two");
    }
    QTest::qWait(10);
    EXPECT_TRUE(watcher.Texts().isEmpty());
  }
  EXPECT_EQ(watcher.Texts(), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
  NoteWarning(boxes, "three");
  EXPECT_EQ(watcher.Texts().size(), 3);
}

/// Posts so many messages in one batch.
void PostMany(BoxMessages& boxes, int count) {
  const MessageBatch batch(boxes, QStringLiteral("Opening a.map"));
  for (int i = 0; i < count; ++i) NoteWarning(boxes, "fault %s", {std::to_string(i)});
}

TEST(BoxMessages, FromTheThirdOnTheBoxesOfABatchHaveACheck) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher;
  int shown = 0;
  boxes.showInWindow = [&shown](int) { ++shown; };
  PostMany(boxes, 5);
  EXPECT_EQ(watcher.Texts().size(), 5);
  EXPECT_EQ(watcher.Checks(), (QList<bool>{false, false, true, true, true}));
  EXPECT_EQ(shown, 0);
  EXPECT_EQ(watcher.Titles()[0], QStringLiteral("Opening a.map"));
  NoteWarning(boxes, "alone");
  EXPECT_FALSE(watcher.Checks().last());
}

TEST(BoxMessages, TheCheckLeavesTheRestToTheWindow) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  {
    const BoxWatcher before;
    NoteWarning(boxes, "before");
  }
  int row = -1;
  boxes.showInWindow = [&row](int given) { row = given; };
  const BoxWatcher watcher([](QWidget& box) {
    auto* check = box.findChild<QCheckBox*>();
    if (check != nullptr) {
      EXPECT_EQ(check->text(), QStringLiteral("&Show the rest in the messages window only"));
      QTest::keyClick(check, Qt::Key_Space);
      EXPECT_TRUE(check->isChecked());
    }
    QTest::keyClick(&box, Qt::Key_Return);
  });
  PostMany(boxes, 200);
  EXPECT_EQ(watcher.Texts().size(), 3);
  EXPECT_EQ(row, 1 + 3);  // after the earlier one
  ASSERT_EQ(boxes.Log().rowCount(), 201);
  EXPECT_EQ(boxes.Log().At(4).text, QStringLiteral("fault 3"));
  // The next read starts again.
  PostMany(boxes, 3);
  EXPECT_EQ(watcher.Texts().size(), 6);
}

TEST(BoxMessages, TheCheckOfTheLastBoxLeavesNothing) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  int shown = 0;
  boxes.showInWindow = [&shown](int) { ++shown; };
  const BoxWatcher watcher([](QWidget& box) {
    if (auto* check = box.findChild<QCheckBox*>()) check->setChecked(true);
    QTest::keyClick(&box, Qt::Key_Return);
  });
  PostMany(boxes, 3);
  EXPECT_EQ(watcher.Texts().size(), 3);
  EXPECT_EQ(shown, 0);
}

TEST(BoxMessages, EveryMessageIsLoggedWithItsOrigin) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher;
  {
    OriginScope origin(boxes, "/maps/a.map");
    origin.NextLine();
    origin.NextLine();
    NoteError(boxes, "bad line");
  }
  NoteInternalError(boxes, "odd");
  ASSERT_EQ(boxes.Log().rowCount(), 2);
  EXPECT_EQ(boxes.Log().At(0).text, QStringLiteral("bad line"));
  EXPECT_EQ(boxes.Log().At(0).origin.file, "/maps/a.map");
  EXPECT_EQ(boxes.Log().At(0).origin.line, 2U);
  EXPECT_EQ(boxes.Log().At(1).text, QStringLiteral("Internal Error: odd"));
  EXPECT_EQ(boxes.Log().At(1).origin.file, "");
  EXPECT_EQ(boxes.Log().At(1).severity, Severity::InternalError);
}

TEST(BoxMessages, ANoteIsLoggedWithoutABox) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher;
  PostNote(boxes, "3 files were written");
  {
    const MessageBatch batch(boxes, QStringLiteral("opening a.map"));
    PostNote(boxes, "a trail is given again");
  }
  EXPECT_TRUE(watcher.Texts().isEmpty());
  ASSERT_EQ(boxes.Log().rowCount(), 2);
  EXPECT_EQ(boxes.Log().At(0).severity, Severity::Note);
  EXPECT_EQ(boxes.Log().At(1).text, QStringLiteral("a trail is given again"));
}

TEST(BoxMessages, ACutMessageIsStillReadAsUtf8) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher;
  std::string name = "x";
  for (int i = 0; i < 150; ++i) name += "\xC3\xAD";
  NoteError(boxes, "%s", {name});
  ASSERT_EQ(watcher.Texts().size(), 1);
  EXPECT_EQ(watcher.Texts()[0], QLatin1Char('x') + QString(99, QChar(0xED)));
}

TEST(BoxMessages, ALongPathDoesNotMakeABoxWiderThanTheScreen) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  int width = 0;
  const BoxWatcher watcher([&width](QWidget& box) {
    width = box.width();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  NoteError(boxes, "Can't open file %s", {"/" + std::string(400, 'W')});
  EXPECT_GT(width, 0);
  EXPECT_LE(width, QApplication::primaryScreen()->availableGeometry().width());
}

TEST(BoxMessages, AMessageOfManyLinesDoesNotMakeABoxHigherThanTheScreen) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  int height = 0;
  const BoxWatcher watcher([&height](QWidget& box) {
    height = box.height();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  std::string lines;
  for (int i = 0; i < 90; ++i) lines += "a\n";
  NoteError(boxes, "%s", {lines});
  EXPECT_GT(height, 0);
  EXPECT_LE(height, QApplication::primaryScreen()->availableGeometry().height());
  EXPECT_TRUE(watcher.Texts()[0].endsWith(QChar(0x2026)));
  EXPECT_EQ(boxes.Log().At(0).text.size(), 180);
}

TEST(BoxMessages, NoBoxIsNarrowerThanItsTitle) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const QString title = QStringLiteral("Opening ") + QString(50, QLatin1Char('m'));
  const BoxWatcher watcher([&title](QWidget& box) {
    QFont bold = box.font();
    bold.setBold(true);
    const QString shown = title + QStringLiteral(" \u2014 Orvane");
    EXPECT_GT(box.width(), QFontMetrics(bold).horizontalAdvance(shown))
        << box.objectName().toStdString();
    EXPECT_EQ(box.windowTitle(), title);
    box.close();
  });
  {
    const MessageBatch batch(boxes, title);
    NoteWarning(boxes, "x");
  }
  AskUser(boxes, title.toStdString(), "A", "B", "", "x");
  std::string buffer;
  PromptForText(boxes, title.toStdString(), "x", buffer, 10);
  EXPECT_EQ(watcher.Titles().size(), 3);
}

TEST(BoxMessages, ATitleWiderThanTheScreenDoesNotMakeABoxWiderThanIt) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const QString title(500, QLatin1Char('m'));
  const BoxWatcher watcher([](QWidget& box) {
    EXPECT_LE(box.width(), box.screen()->availableGeometry().width());
    box.close();
  });
  {
    const MessageBatch batch(boxes, title);
    NoteWarning(boxes, "x");
  }
  AskUser(boxes, title.toStdString(), "A", "B", "", "x");
  EXPECT_EQ(watcher.Titles().size(), 2);
}

TEST(BoxMessages, AnEmptyBatchShowsNothing) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  BoxWatcher watcher;
  { const MessageBatch batch(boxes, QStringLiteral("Opening a.map")); }
  QTest::qWait(10);
  EXPECT_TRUE(watcher.Texts().isEmpty());
}

TEST(BoxMessages, AQuestionGivesTheNumberOfItsButton) {
  for (const auto& [text, number] :
       {std::pair{"Save", 1}, std::pair{"Cancel", 2}, std::pair{"Don't Save", 3}}) {
    ScriptedSurroundings around;
    BoxMessages boxes(around);
    const QString wanted = QString::fromLatin1(text);
    BoxWatcher watcher([&wanted](QWidget& box) {
      QPushButton* button = ButtonOf(box, wanted);
      ASSERT_NE(button, nullptr);
      QTest::mouseClick(button, Qt::LeftButton);
    });
    EXPECT_EQ(AskUser(boxes, "Save Map?", "Save", "Cancel", "Don't Save", "%s has changed", {"a"}),
              number);
    EXPECT_EQ(watcher.Texts(), QStringList(QStringLiteral("a has changed")));
  }
}

TEST(BoxMessages, ReturnIsTheFirstButtonAndClosingTheSecond) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  {
    const BoxWatcher watcher([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(AskUser(boxes, "T", "Save", "Cancel", "Don't Save", "text"), 1);
  }
  {
    const BoxWatcher watcher([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(AskUser(boxes, "T", "Save", "Cancel", "Don't Save", "text"), 2);
  }
  {
    const BoxWatcher watcher([](QWidget& box) { box.close(); });
    EXPECT_EQ(AskUser(boxes, "T", "Save", "Cancel", "Don't Save", "text"), 2);
  }
  {
    // Whether there is a second one or not.
    const BoxWatcher watcher([](QWidget& box) { box.close(); });
    EXPECT_EQ(AskUser(boxes, "T", "OK", "", "", "text"), 2);
    EXPECT_EQ(AskUser(boxes, "T", "OK", "", "Help", "text"), 2);
  }
}

TEST(BuiltBox, ALetterOfItsTextPressesAButton) {
  for (const auto& [key, number] :
       {std::pair{Qt::Key_S, 1}, std::pair{Qt::Key_C, 2}, std::pair{Qt::Key_D, 3}}) {
    ScriptedSurroundings around;
    BoxMessages boxes(around);
    const BoxWatcher watcher(
        [key = key](QWidget& box) { QTest::keyClick(&box, key, Qt::AltModifier); });
    EXPECT_EQ(AskUser(boxes, "Save Map?", "Save", "Cancel", "Don't Save", "text"), number);
  }
}

TEST(BuiltBox, ReturnOnAnotherButtonPressesThat) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher([](QWidget& box) {
    QTest::keyClick(box.focusWidget(), Qt::Key_Tab);
    QTest::keyClick(box.focusWidget(), Qt::Key_Tab);
    QTest::keyClick(box.focusWidget(), Qt::Key_Return);
  });
  EXPECT_EQ(AskUser(boxes, "T", "Save", "Cancel", "Don't Save", "text"), 3);
}

TEST(BuiltBox, IsLaidOutFromTheRealMetrics) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher([](QWidget& box) {
    const QFontMetrics metrics(box.font());
    const QString text = QStringLiteral("The quick brown fox jumps over the lazy dog");
    const auto* save = ButtonOf(box, QStringLiteral("Save"));
    const auto* last = ButtonOf(box, QStringLiteral("Don't Save"));
    ASSERT_NE(save, nullptr);
    EXPECT_EQ(save->width(), metrics.horizontalAdvance(QStringLiteral("Don't Save")) + 20);
    EXPECT_EQ(last->width(), save->width());
    EXPECT_TRUE(save->isDefault());
    EXPECT_EQ(box.width(),
              std::max(metrics.horizontalAdvance(text) + 72, 16 + 3 * (save->width() + 14)));
    EXPECT_EQ(save->y(), 42 + 10);
    EXPECT_EQ(box.height(), 42 + save->height() + 25);
    const QRect screen = box.screen()->availableGeometry();
    EXPECT_EQ(box.x(), screen.x() + (screen.width() - box.width()) / 2);
    EXPECT_EQ(box.y(), screen.y() + (screen.height() - box.height()) / 3);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Save Map?"));
    EXPECT_EQ(box.accessibleDescription(), text);
    EXPECT_EQ(save->accessibleName(), QStringLiteral("Save"));
    box.close();
  });
  AskUser(boxes, "Save Map?", "Save", "Cancel", "Don't Save", "%s",
          {"The quick brown fox jumps over the lazy dog"});
}

TEST(BuiltBox, MarkupAndMarksInTextsAreShownAsTheyAre) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher([](QWidget& box) {
    EXPECT_EQ(TextOf(box), QStringLiteral("<b>R&D</b> has changed"));
    EXPECT_EQ(box.findChildren<QPushButton*>()[0]->text(), QStringLiteral("&R&&D"));
    box.close();
  });
  EXPECT_EQ(AskUser(boxes, "T", "R&D", "No", "", "%s has changed", {"<b>R&D</b>"}), 2);
}

TEST(BuiltBox, AnEmptyFirstButtonLetsTheOthersChangePlaces) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  int answer = 0;
  {
    const BoxWatcher watcher([](QWidget& box) {
      const auto* stop = ButtonOf(box, QStringLiteral("Stop"));
      const auto* go = ButtonOf(box, QStringLiteral("Go on"));
      ASSERT_NE(stop, nullptr);
      ASSERT_NE(go, nullptr);
      EXPECT_LT(go->x(), stop->x());
      QTest::keyClick(&box, Qt::Key_Return);
    });
    answer = AskUser(boxes, "T", "", "Stop", "Go on", "text");
  }
  EXPECT_EQ(answer, 3);
  const BoxWatcher watcher([](QWidget& box) { box.close(); });
  EXPECT_EQ(AskUser(boxes, "T", "", "Stop", "Go on", "text"), 2);
}

/// The box is within the screen, and its buttons within the box.
void ExpectFits(const QWidget& box) {
  const QRect screen = box.screen()->availableGeometry();
  EXPECT_LE(box.width(), screen.width());
  EXPECT_LE(box.height(), screen.height());
  const auto buttons = box.findChildren<QPushButton*>();
  for (const QPushButton* button : buttons) EXPECT_TRUE(box.rect().contains(button->geometry()));
}

TEST(BuiltBox, AHighTextIsScrolled) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  std::string text;
  for (int i = 0; i < 300; ++i) text += "line " + std::to_string(i) + "\n";
  const BoxWatcher watcher([](QWidget& box) {
    ExpectFits(box);
    auto* area = box.findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
    EXPECT_TRUE(TextOf(box).contains(QStringLiteral("line 299")));
    box.close();
  });
  EXPECT_EQ(AskUser(boxes, "T", "Open", "Leave", "", "%s", {text}), 2);
}

TEST(BuiltBox, AWideTextIsWrapped) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  std::string text = "1\n2\n3\n4\n";
  for (int i = 0; i < 400; ++i) text += "Word" + std::to_string(i) + " ";
  text += std::string(1000, 'W');
  const BoxWatcher watcher([](QWidget& box) {
    ExpectFits(box);
    const QFontMetrics metrics(box.font());
    const auto* label = box.findChild<QLabel*>(QStringLiteral("boxText"));
    EXPECT_TRUE(label->text().contains(QStringLiteral("Word399")));
    const QStringList lines = label->text().split(QLatin1Char('\n'));
    for (const QString& line : lines) {
      EXPECT_LE(metrics.horizontalAdvance(line), label->width()) << line.toStdString();
    }
    box.close();
  });
  EXPECT_EQ(AskUser(boxes, "T", "Open", "Leave", "", "%s", {text}), 2);
}

TEST(BuiltBox, APromptHasTheFocusInItsFieldWithTheTextSelected) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  std::string buffer = "old";
  const BoxWatcher watcher([](QWidget& box) {
    auto* field = box.findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(box.focusWidget(), field);
    EXPECT_EQ(field->x(), 15);
    EXPECT_EQ(field->width(), box.width() - 30);
    EXPECT_EQ(field->accessibleName(), QStringLiteral("Find what?"));
    EXPECT_EQ(field->y() + field->height() + 10, ButtonOf(box, QStringLiteral("OK"))->y());
    QTest::keyClicks(field, QStringLiteral("Camp"));
    QTest::keyClick(field, Qt::Key_Return);
  });
  EXPECT_TRUE(PromptForText(boxes, "Find", "Find what?", buffer, 100));
  EXPECT_EQ(buffer, "Camp");
}

/// Opens a prompt, lets `use` type into it, and presses Return.
std::optional<std::string> AnswerOf(const TextPrompt& prompt,
                                    const std::function<void(QWidget&, QLineEdit&)>& use) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  const BoxWatcher watcher([&use](QWidget& box) {
    auto* field = box.findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    EXPECT_FALSE(field->accessibleName().isEmpty());
    use(box, *field);
    QTest::keyClick(field, Qt::Key_Return);
  });
  return boxes.Prompt(prompt);
}

TextPrompt FindPrompt(size_t size, std::vector<std::string> earlier = {}) {
  const std::string last = earlier.empty() ? std::string() : earlier.front();
  return {.title = "Find",
          .message = "Find what?",
          .text = last,
          .size = size,
          .columns = 40,
          .earlier = std::move(earlier)};
}

TEST(BuiltBox, AWideFieldShowsFortyCharacters) {
  for (const auto& earlier : {std::vector<std::string>{}, std::vector<std::string>{"Camp"}}) {
    AnswerOf(FindPrompt(100, earlier), [](QWidget& box, QLineEdit& field) {
      EXPECT_GT(field.width(), 40 * box.fontMetrics().averageCharWidth());
      EXPECT_EQ(field.hasSelectedText(), !field.text().isEmpty());
    });
  }
}

TEST(BuiltBox, TheFieldTakesNoMoreBytesThanAreAllowed) {
  const auto typed = [](const QString& text) {
    return AnswerOf(FindPrompt(6), [&text](QWidget&, QLineEdit& field) {
      field.clear();
      for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_unknown, QString(c), Qt::NoModifier);
    });
  };
  EXPECT_EQ(typed(QStringLiteral("abcdefgh")), "abcde");
  EXPECT_EQ(typed(QStringLiteral("a\u00E9\u00E9\u00E9")), "a\xC3\xA9\xC3\xA9");
  const auto pasted = AnswerOf(
      FindPrompt(6), [](QWidget&, QLineEdit& field) { field.insert(QString(99, QChar(0xE9))); });
  ASSERT_TRUE(pasted.has_value());
  EXPECT_LT(pasted->size(), 6U);
}

TEST(BuiltBox, EarlierTextsAreOfferedAndATypedOneStaysAsItIs) {
  const TextPrompt prompt = FindPrompt(100, {"Camp", "Hill"});
  EXPECT_EQ(AnswerOf(prompt,
                     [](QWidget&, QLineEdit& field) {
                       EXPECT_EQ(field.selectedText(), QStringLiteral("Camp"));
                     }),
            "Camp");
  EXPECT_EQ(AnswerOf(prompt, [](QWidget& box,
                                QLineEdit&) { QTest::keyClick(box.focusWidget(), Qt::Key_Down); }),
            "Hill");
  EXPECT_EQ(AnswerOf(prompt,
                     [](QWidget& box, QLineEdit&) {
                       QTest::keyClicks(box.focusWidget(), QStringLiteral("hi"));
                     }),
            "hi");
  EXPECT_EQ(AnswerOf(prompt,
                     [](QWidget& box, QLineEdit&) {
                       QTest::keyClicks(box.focusWidget(), QStringLiteral("camp"));
                     }),
            "camp");
}

TEST(BuiltBox, CancelAndClosingEmptyTheAnswer) {
  for (const bool byButton : {true, false}) {
    ScriptedSurroundings around;
    BoxMessages boxes(around);
    const BoxWatcher watcher([byButton](QWidget& box) {
      if (byButton) {
        QTest::mouseClick(ButtonOf(box, QStringLiteral("Cancel")), Qt::LeftButton);
      } else {
        box.close();
      }
    });
    std::string buffer = "before";
    EXPECT_FALSE(PromptForText(boxes, "Find", "Find what?", buffer, 100));
    EXPECT_EQ(buffer, "");
  }
}

TEST(BoxMessages, APromptGivesItsTextInTheEncodingThatItWasGiven) {
  ScriptedSurroundings around;
  BoxMessages boxes(around);
  {
    const BoxWatcher watcher([](QWidget& box) {
      auto* field = box.findChild<QLineEdit*>();
      ASSERT_NE(field, nullptr);
      EXPECT_EQ(field->text(), QStringLiteral("3\u00B0"));
      field->setText(QStringLiteral("4\u00B0"));
      QTest::keyClick(field, Qt::Key_Return);
    });
    std::string buffer = "3\xB0";
    EXPECT_TRUE(PromptForText(boxes, "Magnetic Deviation", "What is it?", buffer, 30));
    EXPECT_EQ(buffer, "4\xB0");
  }
  {
    const BoxWatcher watcher([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    std::string buffer = "before";
    EXPECT_FALSE(PromptForText(boxes, "Find", "Find what?", buffer, 100));
    EXPECT_EQ(buffer, "");
  }
}

}  // namespace
}  // namespace orvane
