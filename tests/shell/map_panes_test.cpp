#include "shell/map/map_panes.h"

#include "paint/small_map.h"
#include "shell/map/map_area.h"
#include "shell/map/map_view.h"

#include <QListWidget>
#include <QRubberBand>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace orvane {
namespace {

class MapPanesTest : public testing::Test {
 protected:
  MapPanesTest() {
    panes_.resize(800, 500);
    panes_.show();
    panes_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&panes_));
  }

  void DragDivider(QPoint from, QPoint to) {
    QTest::mousePress(&panes_, Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&panes_, to);
    QTest::mouseRelease(&panes_, Qt::LeftButton, Qt::NoModifier, to);
  }

  SmallMap map_;
  MapPanes panes_{map_.TheMap(), {150, 200}, nullptr};
};

TEST_F(MapPanesTest, TheListsStandOverEachOtherBesideTheMap) {
  EXPECT_TRUE(panes_.TrailList().isVisible());
  EXPECT_TRUE(panes_.RangeList().isVisible());
  EXPECT_EQ(panes_.Area().geometry(), QRect(155, 0, 645, 500));
  EXPECT_EQ(panes_.TrailList().parentWidget()->geometry(), QRect(0, 0, 150, 200));
  EXPECT_EQ(panes_.RangeList().parentWidget()->geometry(), QRect(0, 205, 150, 295));
  EXPECT_EQ(panes_.TrailList().accessibleName(), QStringLiteral("Trails"));
  EXPECT_EQ(panes_.RangeList().accessibleName(), QStringLiteral("Ranges"));
}

TEST_F(MapPanesTest, ADividerShowsARectangleWhileItIsDraggedAndThenMoves) {
  QSignalSpy moved(&panes_, &MapPanes::dividerMoved);
  auto* rectangle = panes_.findChild<QRubberBand*>();
  ASSERT_NE(rectangle, nullptr);
  QTest::mousePress(&panes_, Qt::LeftButton, Qt::NoModifier, QPoint(152, 300));
  EXPECT_TRUE(rectangle->isVisible());
  EXPECT_EQ(rectangle->geometry(), QRect(150, 0, 5, 500));
  QTest::mouseMove(&panes_, QPoint(252, 100));
  EXPECT_EQ(rectangle->geometry(), QRect(250, 0, 5, 500));
  EXPECT_EQ(panes_.Area().geometry().left(), 155);
  EXPECT_EQ(moved.size(), 0);
  QTest::mouseRelease(&panes_, Qt::LeftButton, Qt::NoModifier, QPoint(252, 100));
  EXPECT_FALSE(rectangle->isVisible());
  EXPECT_EQ(panes_.Area().geometry().left(), 255);
  ASSERT_EQ(moved.size(), 1);
  EXPECT_EQ(moved[0][0].toInt(), 250);
  EXPECT_EQ(moved[0][1].toInt(), 200);
}

TEST_F(MapPanesTest, TheDividerBetweenTheListsMovesUpAndDown) {
  QSignalSpy moved(&panes_, &MapPanes::dividerMoved);
  DragDivider({50, 202}, {60, 322});
  ASSERT_EQ(moved.size(), 1);
  EXPECT_EQ(moved[0][0].toInt(), 150);
  EXPECT_EQ(moved[0][1].toInt(), 320);
  EXPECT_EQ(panes_.RangeList().parentWidget()->geometry().top(), 325);
}

TEST_F(MapPanesTest, PanesMadeTooSmallVanishAndCanBePulledBack) {
  DragDivider({152, 300}, {6, 300});
  EXPECT_EQ(panes_.Sizes().panelWidth, 0);
  EXPECT_FALSE(panes_.TrailList().isVisible());
  EXPECT_FALSE(panes_.RangeList().isVisible());
  EXPECT_EQ(panes_.Area().geometry(), QRect(5, 0, 795, 500));
  DragDivider({2, 300}, {122, 300});
  EXPECT_EQ(panes_.Sizes().panelWidth, 120);
  EXPECT_TRUE(panes_.TrailList().isVisible());
  DragDivider({50, 202}, {50, 3});
  EXPECT_EQ(panes_.Sizes().panelHeight, 0);
  EXPECT_FALSE(panes_.TrailList().isVisible());
  EXPECT_TRUE(panes_.RangeList().isVisible());
}

TEST_F(MapPanesTest, ASmallerWindowCutsThePanesAndALargerOneGivesThemBack) {
  panes_.resize(100, 120);
  EXPECT_EQ(panes_.Sizes().panelWidth, 95);
  EXPECT_EQ(panes_.Sizes().panelHeight, 115);
  panes_.resize(800, 500);
  EXPECT_EQ(panes_.Sizes().panelWidth, 150);
  EXPECT_EQ(panes_.Sizes().panelHeight, 200);
}

TEST_F(MapPanesTest, OtherButtonsAndOtherPlacesMoveNothing) {
  QSignalSpy moved(&panes_, &MapPanes::dividerMoved);
  QTest::mousePress(&panes_, Qt::RightButton, Qt::NoModifier, QPoint(152, 300));
  QTest::mouseRelease(&panes_, Qt::RightButton, Qt::NoModifier, QPoint(300, 300));
  EXPECT_EQ(moved.size(), 0);
  EXPECT_EQ(panes_.Sizes().panelWidth, 150);
}

TEST_F(MapPanesTest, TheCursorTellsHowADividerMoves) {
  QTest::mouseMove(&panes_, QPoint(152, 300));
  EXPECT_EQ(panes_.cursor().shape(), Qt::SplitHCursor);
  QTest::mouseMove(&panes_, QPoint(50, 202));
  EXPECT_EQ(panes_.cursor().shape(), Qt::SplitVCursor);
  EXPECT_EQ(panes_.Area().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(MapPanesTest, TellsWhichPartHasTheKeyboard) {
  QSignalSpy changed(&panes_, &MapPanes::focusPlaceChanged);
  panes_.View().setFocus();
  EXPECT_EQ(panes_.Focus(), FocusPlace::MapView);
  QTest::mouseClick(panes_.TrailList().viewport(), Qt::LeftButton);
  EXPECT_EQ(panes_.Focus(), FocusPlace::TrailList);
  QTest::mouseClick(panes_.RangeList().viewport(), Qt::LeftButton);
  EXPECT_EQ(panes_.Focus(), FocusPlace::RangeList);
  QTest::mouseClick(&panes_.View(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
  EXPECT_EQ(panes_.Focus(), FocusPlace::MapView);
  EXPECT_GE(changed.size(), 3);
  EXPECT_EQ(changed.last()[0].value<FocusPlace>(), FocusPlace::MapView);
}

TEST_F(MapPanesTest, TabGoesRoundTheThreeParts) {
  panes_.TrailList().setFocus();
  QTest::keyClick(&panes_.TrailList(), Qt::Key_Tab);
  EXPECT_EQ(panes_.Focus(), FocusPlace::RangeList);
  QTest::keyClick(&panes_.RangeList(), Qt::Key_Tab);
  EXPECT_EQ(panes_.Focus(), FocusPlace::MapView);
}

}  // namespace
}  // namespace orvane
