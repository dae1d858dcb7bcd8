#include "shell/message_boxes.h"

#include <QApplication>
#include <QDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// Answers each modal box as it comes up, and remembers what it said.
class BoxWatcher {
 public:
  explicit BoxWatcher(std::function<void(QWidget&)> answer = nullptr) : answer_(std::move(answer)) {
    timer_.setInterval(1);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start();
  }

  const QStringList& Texts() const { return texts_; }
  const QList<QMessageBox::Icon>& Icons() const { return icons_; }
  const QStringList& Listed() const { return listed_; }

 private:
  void Look() {
    QWidget* widget = QApplication::activeModalWidget();
    if (widget == nullptr) return;
    if (auto* box = qobject_cast<QMessageBox*>(widget)) {
      texts_.append(box->text());
      icons_.append(box->icon());
    } else if (auto* list = widget->findChild<QListWidget*>()) {
      texts_.append(widget->findChild<QLabel*>()->text());
      for (int i = 0; i < list->count(); ++i) listed_.append(list->item(i)->text());
    }
    if (answer_) {
      answer_(*widget);
    } else {
      QTest::keyClick(widget, Qt::Key_Return);
    }
  }

  QTimer timer_;
  std::function<void(QWidget&)> answer_;
  QStringList texts_;
  QList<QMessageBox::Icon> icons_;
  QStringList listed_;
};

QPushButton* ButtonOf(QWidget& box, const QString& text) {
  const auto buttons = box.findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    if (button->text() == text) return button;
  }
  return nullptr;
}

TEST(BoxMessages, ShowsEachMessageWithTheIconOfItsSeverity) {
  BoxMessages boxes;
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
  BoxMessages boxes;
  int status = 0;
  BoxWatcher watcher;
  boxes.endProgram = [&status, &watcher](int given) {
    EXPECT_EQ(watcher.Texts().size(), 2);
    status = given;
  };
  const MessageBatch batch(boxes, QStringLiteral("opening a.map"));
  NoteWarning(boxes, "first");
  NoteFatal(boxes, "Error getting file name.");
  EXPECT_EQ(status, BoxMessages::FatalExit);
  EXPECT_EQ(watcher.Texts(),
            QStringList({QStringLiteral("first"), QStringLiteral("Error getting file name.")}));
}

TEST(BoxMessages, FewMessagesOfABatchHaveABoxEachAtItsEnd) {
  BoxMessages boxes;
  BoxWatcher watcher;
  {
    const MessageBatch batch(boxes, QStringLiteral("opening a.map"));
    NoteWarning(boxes, "one");
    {
      const MessageBatch inner(boxes, QStringLiteral("opening b.map"));
      NoteError(boxes, "two");
    }
    QTest::qWait(10);
    EXPECT_TRUE(watcher.Texts().isEmpty());
  }
  EXPECT_EQ(watcher.Texts(), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
  NoteWarning(boxes, "three");
  EXPECT_EQ(watcher.Texts().size(), 3);
}

TEST(BoxMessages, ManyMessagesOfABatchStandInOneList) {
  BoxMessages boxes;
  BoxWatcher watcher;
  {
    const MessageBatch batch(boxes, QStringLiteral("opening a.map"));
    for (int i = 0; i < 200; ++i) NoteWarning(boxes, "fault %s", {std::to_string(i)});
  }
  ASSERT_EQ(watcher.Texts().size(), 1);
  EXPECT_TRUE(watcher.Texts()[0].contains(QStringLiteral("200")));
  EXPECT_TRUE(watcher.Texts()[0].contains(QStringLiteral("a.map")));
  ASSERT_EQ(watcher.Listed().size(), 200);
  EXPECT_EQ(watcher.Listed()[0], QStringLiteral("fault 0"));
  EXPECT_EQ(watcher.Listed()[199], QStringLiteral("fault 199"));
}

TEST(BoxMessages, AListEndsWithHowManyItLeavesOut) {
  BoxMessages boxes;
  BoxWatcher watcher;
  {
    const MessageBatch batch(boxes, QStringLiteral("opening a.map"));
    for (int i = 0; i < 5000; ++i) NoteWarning(boxes, "fault");
  }
  ASSERT_EQ(watcher.Listed().size(), 1001);
  EXPECT_TRUE(watcher.Listed().last().contains(QStringLiteral("4000")));
}

TEST(BoxMessages, AnEmptyBatchShowsNothing) {
  BoxMessages boxes;
  BoxWatcher watcher;
  { const MessageBatch batch(boxes, QStringLiteral("opening a.map")); }
  QTest::qWait(10);
  EXPECT_TRUE(watcher.Texts().isEmpty());
}

TEST(BoxMessages, AQuestionGivesTheNumberOfItsButton) {
  for (const auto& [text, number] :
       {std::pair{"Save", 1}, std::pair{"Cancel", 2}, std::pair{"Don't Save", 3}}) {
    BoxMessages boxes;
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
  BoxMessages boxes;
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
    const BoxWatcher watcher([](QWidget& box) { box.close(); });
    EXPECT_EQ(AskUser(boxes, "T", "OK", "", "", "text"), 1);
  }
}

TEST(BoxMessages, APromptGivesItsTextInTheEncodingThatItWasGiven) {
  BoxMessages boxes;
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
