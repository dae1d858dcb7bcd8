#include "shell/map/map_panes.h"

#include "shell/map/divider_handle.h"
#include "shell/map/map_area.h"
#include "shell/map/map_view.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"
#include "support/small_map.h"

#include <QApplication>
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
  EXPECT_TRUE(panes_.Trails().Rows().isVisible());
  EXPECT_TRUE(panes_.Ranges().Rows().isVisible());
  EXPECT_EQ(panes_.Area().geometry(), QRect(155, 0, 645, 500));
  EXPECT_EQ(panes_.Trails().Rows().parentWidget()->geometry(), QRect(0, 0, 150, 200));
  EXPECT_EQ(panes_.Ranges().Rows().parentWidget()->geometry(), QRect(0, 205, 150, 295));
  EXPECT_EQ(panes_.Trails().Rows().accessibleName(), QStringLiteral("Trails"));
  EXPECT_EQ(panes_.Ranges().Rows().accessibleName(), QStringLiteral("Ranges"));
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
  EXPECT_EQ(moved[0][0].value<PaneDivider>(), PaneDivider::BesideMap);
  EXPECT_EQ(moved[0][1].toInt(), 250);
}

TEST_F(MapPanesTest, TheDividerBetweenTheListsMovesUpAndDown) {
  QSignalSpy moved(&panes_, &MapPanes::dividerMoved);
  DragDivider({50, 202}, {60, 322});
  ASSERT_EQ(moved.size(), 1);
  EXPECT_EQ(moved[0][0].value<PaneDivider>(), PaneDivider::BetweenLists);
  EXPECT_EQ(moved[0][1].toInt(), 320);
  EXPECT_EQ(panes_.Ranges().Rows().parentWidget()->geometry().top(), 325);
}

TEST_F(MapPanesTest, PanesMadeTooSmallVanishAndCanBePulledBack) {
  DragDivider({152, 300}, {6, 300});
  EXPECT_EQ(panes_.Sizes().panelWidth, 0);
  EXPECT_FALSE(panes_.Trails().Rows().isVisible());
  EXPECT_FALSE(panes_.Ranges().Rows().isVisible());
  EXPECT_EQ(panes_.Area().geometry(), QRect(5, 0, 795, 500));
  DragDivider({2, 300}, {122, 300});
  EXPECT_EQ(panes_.Sizes().panelWidth, 120);
  EXPECT_TRUE(panes_.Trails().Rows().isVisible());
  DragDivider({50, 202}, {50, 3});
  EXPECT_EQ(panes_.Sizes().panelHeight, 0);
  EXPECT_FALSE(panes_.Trails().Rows().isVisible());
  EXPECT_TRUE(panes_.Ranges().Rows().isVisible());
}

TEST_F(MapPanesTest, ASmallerWindowCutsThePanesAndALargerOneGivesThemBack) {
  panes_.resize(100, 120);
  EXPECT_EQ(panes_.Sizes().panelWidth, 31);
  EXPECT_EQ(panes_.Sizes().panelHeight, 115);
  panes_.resize(800, 500);
  EXPECT_EQ(panes_.Sizes().panelWidth, 150);
  EXPECT_EQ(panes_.Sizes().panelHeight, 200);
}

TEST_F(MapPanesTest, ADividerThatMovesLeavesTheOtherSizeAsItWasAskedFor) {
  panes_.resize(800, 120);
  EXPECT_EQ(panes_.Sizes().panelHeight, 115);
  DragDivider({152, 60}, {252, 60});
  panes_.resize(800, 500);
  EXPECT_EQ(panes_.Sizes().panelWidth, 250);
  EXPECT_EQ(panes_.Sizes().panelHeight, 200);
}

TEST_F(MapPanesTest, OtherButtonsAndOtherPlacesMoveNothing) {
  QSignalSpy moved(&panes_, &MapPanes::dividerMoved);
  QTest::mousePress(&panes_, Qt::RightButton, Qt::NoModifier, QPoint(152, 300));
  QTest::mouseRelease(&panes_, Qt::RightButton, Qt::NoModifier, QPoint(300, 300));
  EXPECT_EQ(moved.size(), 0);
  EXPECT_EQ(panes_.Sizes().panelWidth, 150);
}

TEST_F(MapPanesTest, TheCursorShowsHowADividerMoves) {
  QTest::mouseMove(&panes_, QPoint(152, 300));
  EXPECT_EQ(panes_.cursor().shape(), Qt::SplitHCursor);
  QTest::mouseMove(&panes_, QPoint(50, 202));
  EXPECT_EQ(panes_.cursor().shape(), Qt::SplitVCursor);
  EXPECT_EQ(panes_.Area().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(MapPanesTest, KnowsWhichPartHasTheKeyboard) {
  QSignalSpy changed(&panes_, &MapPanes::focusPlaceChanged);
  panes_.View().setFocus();
  EXPECT_EQ(panes_.Focus(), FocusPlace::MapView);
  QTest::mouseClick(panes_.Trails().Rows().viewport(), Qt::LeftButton);
  EXPECT_EQ(panes_.Focus(), FocusPlace::TrailList);
  QTest::mouseClick(panes_.Ranges().Rows().viewport(), Qt::LeftButton);
  EXPECT_EQ(panes_.Focus(), FocusPlace::RangeList);
  QTest::mouseClick(&panes_.View(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
  EXPECT_EQ(panes_.Focus(), FocusPlace::MapView);
  EXPECT_GE(changed.size(), 3);
  EXPECT_EQ(changed.last()[0].value<FocusPlace>(), FocusPlace::MapView);
}

TEST_F(MapPanesTest, TabMovesAroundTheThreeParts) {
  panes_.Trails().Rows().setFocus();
  QTest::keyClick(&panes_.Trails().Rows(), Qt::Key_Tab);
  EXPECT_EQ(panes_.Focus(), FocusPlace::RangeList);
  QTest::keyClick(&panes_.Ranges().Rows(), Qt::Key_Tab);
  EXPECT_EQ(panes_.Focus(), FocusPlace::MapView);
}

class DividerKeys : public MapPanesTest {
 protected:
  DividerHandle& Handle(const char* name) {
    const auto handles = panes_.findChildren<DividerHandle*>();
    for (DividerHandle* handle : handles) {
      if (handle->accessibleName() == QLatin1String(name)) return *handle;
    }
    ADD_FAILURE() << name;
    return *handles.first();
  }
  DividerHandle& BesideMap() { return Handle("Divider between the lists and the map"); }
  DividerHandle& BetweenLists() { return Handle("Divider between the two lists"); }
};

TEST_F(DividerKeys, TabReachesTheDividersAfterTheMap) {
  panes_.View().setFocus();
  QTest::keyClick(&panes_.View(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &BesideMap());
  EXPECT_EQ(panes_.Focus(), FocusPlace::Neither);
  QTest::keyClick(&BesideMap(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &BetweenLists());
  QTest::keyClick(&BetweenLists(), Qt::Key_Tab);
  EXPECT_EQ(panes_.Focus(), FocusPlace::TrailList);
}

TEST_F(DividerKeys, LeftAndRightMoveTheDividerBesideTheMap) {
  QSignalSpy moved(&panes_, &MapPanes::dividerMoved);
  BesideMap().setFocus();
  QTest::keyClick(&BesideMap(), Qt::Key_Right);
  EXPECT_EQ(panes_.Area().geometry().left(), 165);
  EXPECT_EQ(BesideMap().geometry(), QRect(160, 0, 5, 500));
  QTest::keyClick(&BesideMap(), Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(panes_.Area().geometry().left(), 164);
  QTest::keyClick(&BesideMap(), Qt::Key_Up);
  QTest::keyClick(&BesideMap(), Qt::Key_Down);
  ASSERT_EQ(moved.size(), 2);
  EXPECT_EQ(moved[1][0].value<PaneDivider>(), PaneDivider::BesideMap);
  EXPECT_EQ(moved[1][1].toInt(), 159);
  EXPECT_TRUE(BesideMap().hasFocus());
}

TEST_F(DividerKeys, UpAndDownMoveTheDividerBetweenTheLists) {
  QSignalSpy moved(&panes_, &MapPanes::dividerMoved);
  BetweenLists().setFocus();
  QTest::keyClick(&BetweenLists(), Qt::Key_Down);
  QTest::keyClick(&BetweenLists(), Qt::Key_Down);
  QTest::keyClick(&BetweenLists(), Qt::Key_Up, Qt::ShiftModifier);
  QTest::keyClick(&BetweenLists(), Qt::Key_Right);
  ASSERT_EQ(moved.size(), 3);
  EXPECT_EQ(panes_.Sizes().panelHeight, 219);
  EXPECT_EQ(panes_.Sizes().panelWidth, 150);
}

TEST_F(DividerKeys, APaneIsMovedAwayAndBroughtBack) {
  BesideMap().setFocus();
  for (int i = 0; i < 20; ++i) QTest::keyClick(&BesideMap(), Qt::Key_Left);
  EXPECT_EQ(panes_.Sizes().panelWidth, 0);
  EXPECT_FALSE(panes_.Trails().Rows().isVisible());
  EXPECT_FALSE(BetweenLists().isVisible());
  EXPECT_TRUE(BesideMap().hasFocus());
  QTest::keyClick(&BesideMap(), Qt::Key_Right);
  EXPECT_TRUE(panes_.Trails().Rows().isVisible());
  EXPECT_TRUE(BetweenLists().isVisible());
  for (int i = 0; i < 200; ++i) QTest::keyClick(&BesideMap(), Qt::Key_Right);
  EXPECT_EQ(panes_.Sizes().panelWidth, 731);
  QTest::keyClick(&BesideMap(), Qt::Key_Left);
  EXPECT_EQ(panes_.Sizes().panelWidth, 721);
}

TEST_F(DividerKeys, EnterAndEscapeLeadBackToTheMap) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
    BetweenLists().setFocus();
    QTest::keyClick(&BetweenLists(), key);
    EXPECT_EQ(panes_.Focus(), FocusPlace::MapView);
    EXPECT_TRUE(panes_.View().hasFocus());
  }
}

TEST_F(DividerKeys, ADividerShowsThatItHasTheKeyboard) {
  const auto highlit = [this](DividerHandle& handle) {
    const QColor wanted = panes_.palette().color(QPalette::Highlight);
    const QImage image = panes_.grab(handle.geometry()).toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) == wanted) ++count;
      }
    }
    return count;
  };
  EXPECT_EQ(highlit(BesideMap()), 0);
  BesideMap().setFocus();
  EXPECT_GT(highlit(BesideMap()), 1000);
  EXPECT_EQ(highlit(BetweenLists()), 0);
  BetweenLists().setFocus();
  EXPECT_EQ(highlit(BesideMap()), 0);
  EXPECT_GT(highlit(BetweenLists()), 300);
}

TEST_F(DividerKeys, TheMouseReachesThePanesThroughIt) {
  EXPECT_EQ(panes_.childAt(152, 300), nullptr);
  EXPECT_EQ(panes_.childAt(50, 202), nullptr);
}

}  // namespace
}  // namespace orvane
