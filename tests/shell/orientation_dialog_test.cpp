#include "shell/map/orientation_dialog.h"

#include "shell/scripted_surroundings.h"
#include "support/small_map.h"
#include "view/view_transform.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

namespace orvane {
namespace {

class OrientationDialogTest : public testing::Test {
 protected:
  OrientationDialogTest() : view_(map_.View(400, 300)) {}

  /// Makes the dialog on the view as it is now, and shows it.
  OrientationDialog& Open() {
    dialog_ = std::make_unique<OrientationDialog>(view_, around_, nullptr);
    dialog_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog_.get()));
    return *dialog_;
  }
  void Click(Orientation orientation) {
    QRadioButton& button = dialog_->Button(orientation);
    QTest::mouseClick(&button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button.height() / 2));
  }

  SmallMap map_;
  ScriptedSurroundings around_;
  MapWindow view_;
  std::unique_ptr<OrientationDialog> dialog_;
};

TEST_F(OrientationDialogTest, BeginsWithWhatTheViewHas) {
  map_.TheMap().magneticDeviation = 2.5;
  view_.rotation = 92.5F;
  OrientationDialog& dialog = Open();
  EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Orientation"));
  EXPECT_TRUE(dialog.Button(Orientation::CompassEast).isChecked());
  EXPECT_EQ(dialog.Field().text(), QStringLiteral("92.5"));
  EXPECT_TRUE(dialog.Button(Orientation::CompassNorth).isEnabled());
}

TEST_F(OrientationDialogTest, TypingReplacesTheNumberAtOnce) {
  view_.rotation = 30;
  OrientationDialog& dialog = Open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  EXPECT_TRUE(dialog.Field().hasFocus());
  EXPECT_EQ(dialog.Field().selectedText(), QStringLiteral("30"));
  QTest::keyClicks(dialog.focusWidget(), QStringLiteral("45"));
  EXPECT_EQ(dialog.Field().text(), QStringLiteral("45"));
  EXPECT_TRUE(dialog.Button(Orientation::Free).isChecked());
  QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  EXPECT_EQ(view_.rotation, 45);
}

TEST_F(OrientationDialogTest, TheCompassIsOffWithoutADeviation) {
  OrientationDialog& dialog = Open();
  EXPECT_TRUE(dialog.Button(Orientation::TrueNorth).isChecked());
  for (const auto each : {Orientation::CompassNorth, Orientation::CompassEast,
                          Orientation::CompassSouth, Orientation::CompassWest}) {
    EXPECT_FALSE(dialog.Button(each).isEnabled());
  }
  EXPECT_TRUE(dialog.Button(Orientation::TrueWest).isEnabled());
  EXPECT_TRUE(dialog.Button(Orientation::Free).isEnabled());
}

TEST_F(OrientationDialogTest, AButtonWritesItsNumberAndOkTurns) {
  map_.TheMap().magneticDeviation = -3;
  OrientationDialog& dialog = Open();
  Click(Orientation::TrueWest);
  EXPECT_EQ(dialog.Field().text(), QStringLiteral("270"));
  EXPECT_EQ(view_.rotation, 0);
  Click(Orientation::CompassSouth);
  EXPECT_EQ(dialog.Field().text(), QStringLiteral("177"));
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(view_.rotation, 177);
  EXPECT_NEAR(ScreenToMap(view_, {200, 150}).lat, 1, 1e-6);
}

TEST_F(OrientationDialogTest, ATypedNumberIsFreeAndReduced) {
  OrientationDialog& dialog = Open();
  dialog.Field().setFocus();
  dialog.Field().selectAll();
  QTest::keyClicks(&dialog.Field(), QStringLiteral("-370"));
  EXPECT_TRUE(dialog.Button(Orientation::Free).isChecked());
  QTest::keyClick(&dialog.Field(), Qt::Key_Return);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(view_.rotation, -10);
  EXPECT_TRUE(Open().Button(Orientation::Free).isChecked());
}

TEST_F(OrientationDialogTest, ABadNumberKeepsItOpen) {
  OrientationDialog& dialog = Open();
  dialog.Field().setFocus();
  dialog.Field().selectAll();
  QTest::keyClicks(&dialog.Field(), QStringLiteral("45x"));
  QTest::keyClick(&dialog.Field(), Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_TRUE(dialog.Field().hasSelectedText());
  EXPECT_EQ(around_.beeps, 1);
  EXPECT_EQ(view_.rotation, 0);
}

TEST_F(OrientationDialogTest, EscapeChangesNothing) {
  OrientationDialog& dialog = Open();
  Click(Orientation::TrueEast);
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(view_.rotation, 0);
}

}  // namespace
}  // namespace orvane
