#include "shell/recovery/recovery_dialog.h"

#include "shell/quiet_text.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace orvane {
namespace {

RecoveryOffer Offer(const std::string& fileName, bool saysTheSame = false) {
  return {.copy = {.record = {.fileName = fileName, .original = {}},
                   .slot = "/nowhere/copy-1",
                   .written = 1'000'000'000},
          .differences = {"2 follows and 31 points more than in the file.", "35 lines are new."},
          .saysTheSame = saysTheSame};
}

class RecoveryDialogTest : public testing::Test {
 protected:
  void Show(const std::vector<RecoveryOffer>& offers) {
    dialog_ = std::make_unique<RecoveryDialog>(offers, nullptr);
    dialog_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }

  void Click(size_t offer, RecoveryChoice choice) {
    QRadioButton& button = dialog_->Button(offer, choice);
    QTest::mouseClick(&button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button.height() / 2));
  }

  QPushButton& ButtonOf(const QString& text) {
    const auto buttons = dialog_->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
      if (button->text().remove(QLatin1Char('&')) == text) return *button;
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    return *buttons.front();
  }

  std::unique_ptr<RecoveryDialog> dialog_;
};

// They were black on dark gray on some dark desktops.
TEST_F(RecoveryDialogTest, QuietTextCanBeReadOnEachDesktop) {
  QPalette light(QColor(239, 240, 241));
  QPalette dark(QColor(49, 54, 59));
  for (QPalette* palette : {&light, &dark}) {
    palette->setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    const int ground = palette->color(QPalette::Window).lightness();
    const int full = palette->color(QPalette::WindowText).lightness();
    const int quiet = QuietTextColor(*palette).lightness();
    EXPECT_GT(std::abs(quiet - ground), 100);
    EXPECT_LT(std::abs(quiet - ground), std::abs(full - ground));
  }
}

TEST_F(RecoveryDialogTest, EachCopyIsRecoveredUnlessTheUserWantsSomethingElse) {
  Show({Offer("/a.map"), Offer("/b.map"), Offer("/c.map")});
  Click(1, RecoveryChoice::Discard);
  Click(2, RecoveryChoice::Later);
  QTest::mouseClick(&ButtonOf(QStringLiteral("OK")), Qt::LeftButton);
  EXPECT_EQ(dialog_->Choices(),
            (std::vector<RecoveryChoice>{RecoveryChoice::Recover, RecoveryChoice::Discard,
                                         RecoveryChoice::Later}));
}

TEST_F(RecoveryDialogTest, ReturnTakesWhatIsChosen) {
  Show({Offer("/a.map")});
  QTest::keyClick(dialog_.get(), Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->Choices(), std::vector<RecoveryChoice>{RecoveryChoice::Recover});
}

TEST_F(RecoveryDialogTest, WhatTheFileHoldsAnywayIsDiscarded) {
  Show({Offer("/a.map", true), Offer("/b.map")});
  QTest::keyClick(dialog_.get(), Qt::Key_Return);
  EXPECT_EQ(dialog_->Choices(),
            (std::vector<RecoveryChoice>{RecoveryChoice::Discard, RecoveryChoice::Recover}));
}

TEST_F(RecoveryDialogTest, ClosingItInAnyWayPutsEverythingOff) {
  const std::vector<RecoveryChoice> later(2, RecoveryChoice::Later);
  Show({Offer("/a.map"), Offer("/b.map")});
  Click(0, RecoveryChoice::Discard);
  QTest::keyClick(dialog_.get(), Qt::Key_Escape);
  EXPECT_EQ(dialog_->Choices(), later);
  Show({Offer("/a.map"), Offer("/b.map")});
  Click(0, RecoveryChoice::Discard);
  dialog_->close();
  EXPECT_EQ(dialog_->Choices(), later);
  Show({Offer("/a.map"), Offer("/b.map")});
  QTest::mouseClick(&ButtonOf(QStringLiteral("Decide Later")), Qt::LeftButton);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->Choices(), later);
  for (const Qt::Key key : {Qt::Key_W, Qt::Key_Q}) {
    Show({Offer("/a.map"), Offer("/b.map")});
    Click(0, RecoveryChoice::Discard);
    QTest::keyClick(dialog_.get(), key, Qt::ControlModifier);
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(dialog_->Choices(), later);
    EXPECT_EQ(dialog_->ExitRequested(), key == Qt::Key_Q);
  }
}

TEST_F(RecoveryDialogTest, ShowsTheFileTheFolderAndTheDifferences) {
  Show({Offer("/home/me/site & co/season.map")});
  const auto* frame = dialog_->findChild<QGroupBox*>();
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->title(), QStringLiteral("season.map"));
  const auto* label = frame->findChild<QLabel*>(QStringLiteral("recoveryDifferences"));
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->text(),
            QStringLiteral("2 follows and 31 points more than in the file.\n35 lines are new."));
  const QString all = frame->accessibleDescription().remove(QChar(0x200B));
  EXPECT_TRUE(all.contains(QStringLiteral("In /home/me/site & co\n"))) << all.toStdString();
}

TEST_F(RecoveryDialogTest, NamesThatLookLikeMarkupAreShownAsTheyAre) {
  Show({Offer("/<b>x</b>/<i>y & z</i>.map")});
  EXPECT_EQ(dialog_->findChild<QGroupBox*>()->accessibleName(),
            QStringLiteral("i>.map"));  // the part after the last separator
  for (const QLabel* label : dialog_->findChildren<QLabel*>()) {
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
  }
}

TEST_F(RecoveryDialogTest, EveryControlHasANameForThoseWhoHearIt) {
  Show({Offer("/a.map"), Offer("/b.map")});
  EXPECT_FALSE(dialog_->accessibleDescription().isEmpty());
  QStringList names;
  for (const auto* button : dialog_->findChildren<QRadioButton*>()) {
    EXPECT_FALSE(button->accessibleDescription().isEmpty());
    names.append(button->accessibleName());
  }
  EXPECT_EQ(names, (QStringList{QStringLiteral("Recover a.map"), QStringLiteral("Discard a.map"),
                                QStringLiteral("Later a.map"), QStringLiteral("Recover b.map"),
                                QStringLiteral("Discard b.map"), QStringLiteral("Later b.map")}));
  EXPECT_FALSE(dialog_->findChild<QScrollArea*>()->accessibleName().isEmpty());
}

TEST_F(RecoveryDialogTest, ManyCopiesAreScrolledWithinTheScreen) {
  const std::string longPath =
      "/" + std::string(200, 'x') + "/a blank/" + std::string(200, 'y') + ".map";
  Show(std::vector<RecoveryOffer>(40, Offer(longPath)));
  const QSize room = dialog_->screen()->availableSize();
  EXPECT_LE(dialog_->height(), room.height());
  EXPECT_LE(dialog_->width(), room.width());
  EXPECT_TRUE(ButtonOf(QStringLiteral("OK")).isVisible());
  const auto* area = dialog_->findChild<QScrollArea*>();
  EXPECT_LE(area->widget()->width(), area->viewport()->width());
}

TEST_F(RecoveryDialogTest, AFewCopiesNeedNoScrolling) {
  Show({Offer("/home/me/season.map"), Offer("/home/me/trails.map")});
  const auto* area = dialog_->findChild<QScrollArea*>();
  EXPECT_LE(area->widget()->height(), area->viewport()->height());
}

}  // namespace
}  // namespace orvane
