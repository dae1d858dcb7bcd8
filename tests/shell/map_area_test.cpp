#include "shell/map/map_area.h"

#include "geo/angle_text.h"
#include "shell/map/info_panel_widget.h"
#include "shell/map/map_view.h"
#include "support/small_map.h"
#include "view/view_transform.h"

#include <QApplication>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr double PixelDegrees = 1 / 111120.0;

class MapAreaTest : public testing::Test {
 protected:
  MapAreaTest() {
    map_.AddLoosePoint("Camp", -100, -150);
    area_.resize(500, 400);
    area_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&area_));
    Shown().scale = 1;
    CenterOn(Shown(), LatLon{.lat = 1, .lon = 10});
    area_.View().RequestRepaint();
    QTest::qWait(1);
  }

  MapWindow& Shown() { return area_.View().Shown(); }

  QRect PartOfBar(QScrollBar& bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.pageStep = bar.pageStep();
    option.singleStep = bar.singleStep();
    option.sliderPosition = bar.sliderPosition();
    option.sliderValue = bar.value();
    option.subControls = QStyle::SC_All;
    if (bar.orientation() == Qt::Horizontal) option.state |= QStyle::State_Horizontal;
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar);
  }

  std::string Row(size_t index) { return area_.Info().Rows().at(index).text; }

  SmallMap map_;
  MapArea area_{map_.TheMap(), nullptr};
};

TEST_F(MapAreaTest, TheBarsRestInTheMiddle) {
  for (QScrollBar* bar : {&area_.VerticalBar(), &area_.HorizontalBar()}) {
    EXPECT_EQ(bar->minimum(), 0);
    EXPECT_EQ(bar->maximum() + bar->pageStep(), 140);
    EXPECT_EQ(bar->pageStep(), 20);
    EXPECT_EQ(bar->value(), 60);
    EXPECT_FALSE(bar->accessibleName().isEmpty());
  }
}

TEST_F(MapAreaTest, AClickBesideTheThumbMovesByAPageAndBack) {
  QScrollBar& bar = area_.VerticalBar();
  const double top = Shown().top;
  const QRect above = PartOfBar(bar, QStyle::SC_ScrollBarSubPage);
  QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, above.center());
  EXPECT_DOUBLE_EQ(Shown().top, top + 7 * Shown().clientHeight / 8);
  EXPECT_EQ(bar.value(), 60);
  EXPECT_EQ(bar.sliderPosition(), 60);

  QScrollBar& across = area_.HorizontalBar();
  const QRect right = PartOfBar(across, QStyle::SC_ScrollBarAddPage);
  QTest::mouseClick(&across, Qt::LeftButton, Qt::NoModifier, right.center());
  const double east = 7 * Shown().clientWidth / 8;
  EXPECT_NEAR((Shown().centralLongitude - 10) / PixelDegrees, east, east * 0.001);
  EXPECT_EQ(across.value(), 60);
}

TEST_F(MapAreaTest, AnArrowOfABarMovesByAnEighth) {
  const double top = Shown().top;
  area_.VerticalBar().triggerAction(QAbstractSlider::SliderSingleStepSub);
  EXPECT_DOUBLE_EQ(Shown().top, top + Shown().clientHeight / 8);
  area_.VerticalBar().triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_DOUBLE_EQ(Shown().top, top);
  area_.HorizontalBar().triggerAction(QAbstractSlider::SliderSingleStepSub);
  EXPECT_LT(Shown().centralLongitude, 10);
  EXPECT_EQ(area_.VerticalBar().value(), 60);
  EXPECT_EQ(area_.HorizontalBar().value(), 60);
}

TEST_F(MapAreaTest, APulledThumbMovesTheMapAndReturnsWhenLetGo) {
  QScrollBar& bar = area_.VerticalBar();
  const double top = Shown().top;
  const QPoint grip = PartOfBar(bar, QStyle::SC_ScrollBarSlider).center();
  QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, grip);
  ASSERT_TRUE(bar.isSliderDown());
  QTest::mouseMove(&bar, grip - QPoint(0, 60));
  const int pulled = bar.sliderPosition();
  EXPECT_LT(pulled, 60);
  EXPECT_EQ(Shown().verticalPos, pulled);
  const int pixels = Shown().clientHeight * (60 - pulled) / 20;
  EXPECT_NEAR(Shown().top, top + pixels, 60 - pulled);
  const double there = Shown().top;
  QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, grip - QPoint(0, 60));
  EXPECT_DOUBLE_EQ(Shown().top, there);
  EXPECT_EQ(bar.value(), 60);
  EXPECT_EQ(bar.sliderPosition(), 60);
  EXPECT_EQ(Shown().verticalPos, 60);
}

TEST_F(MapAreaTest, AWheelOverABarMovesTheMapAndTheBarReturns) {
  QScrollBar& bar = area_.VerticalBar();
  const double top = Shown().top;
  const QPointF at = bar.rect().center();
  QWheelEvent event(at, bar.mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&bar, &event);
  EXPECT_GT(Shown().top, top);
  EXPECT_EQ(bar.value(), 60);
}

TEST_F(MapAreaTest, AChangeOfSizeBringsTheBarsToRest) {
  Shown().verticalPos = 20;
  area_.resize(450, 380);
  QTest::qWait(1);
  EXPECT_EQ(Shown().verticalPos, 60);
  EXPECT_EQ(area_.VerticalBar().value(), 60);
}

TEST_F(MapAreaTest, TheInfoPanelIsInTheUpperRightCorner) {
  ASSERT_TRUE(area_.Info().isVisible());
  EXPECT_NE(Shown().flags & MapWindowInfoShown, 0U);
  EXPECT_EQ(Shown().flags & MapWindowInfoWaits, 0U);
  EXPECT_EQ(area_.Info().geometry().top(), 0);
  EXPECT_EQ(area_.Info().geometry().right(), area_.View().width() - 1);
  EXPECT_FALSE(area_.Info().accessibleDescription().isEmpty());
  area_.resize(600, 400);
  QTest::qWait(1);
  EXPECT_EQ(area_.Info().geometry().right(), area_.View().width() - 1);
}

TEST_F(MapAreaTest, TheInfoPanelFollowsThePointer) {
  QTest::mouseMove(&area_.View(), QPoint(120, 90));
  QTest::qWait(1);
  const LatLon place = ScreenToMap(Shown(), {120, 90});
  EXPECT_EQ(Row(0), FormatLatitude(place.lat, Shown().coordinateDisplay));
  EXPECT_EQ(Row(1), FormatLongitude(place.lon, Shown().coordinateDisplay));
  EXPECT_EQ(Row(3), "1px=1m");
  QTest::keyClick(&area_.View(), Qt::Key_Plus);
  QTest::qWait(1);
  EXPECT_EQ(Row(3), "1px=0.5m");
  Shown().coordinateDisplay = CoordinateDisplay::Seconds;
  area_.View().RequestRepaint();
  QTest::qWait(1);
  EXPECT_NE(Row(0).find('"'), std::string::npos);
}

TEST_F(MapAreaTest, DuringABandThePanelShowsItsSize) {
  QTest::mousePress(&area_.View(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
  QTest::mouseMove(&area_.View(), QPoint(130, 140));
  QTest::qWait(1);
  EXPECT_EQ(Row(0), "N40m");
  EXPECT_EQ(Row(1), "E30m");
  EXPECT_EQ(Row(3), "50m 143\xB0");
  QTest::mouseRelease(&area_.View(), Qt::LeftButton, Qt::ShiftModifier, QPoint(130, 140));
  QTest::qWait(1);
  EXPECT_EQ(Row(0)[0], 'N');
  EXPECT_NE(Row(0), "N40m");
}

TEST_F(MapAreaTest, ThePanelFollowsTheFlag) {
  Shown().flags &= ~std::uint32_t{MapWindowInfoShown};
  area_.View().ShowMoved();
  QTest::qWait(1);
  EXPECT_FALSE(area_.Info().isVisible());
  Shown().flags |= MapWindowInfoShown;
  area_.View().ShowMoved();
  QTest::qWait(1);
  EXPECT_TRUE(area_.Info().isVisible());
}

TEST_F(MapAreaTest, TheMouseWorksThroughThePanel) {
  const QPoint inPanel = area_.Info().geometry().center();
  const QPoint inArea = area_.View().mapTo(&area_, inPanel);
  EXPECT_EQ(area_.childAt(inArea), &area_.View());
}

TEST_F(MapAreaTest, ThePanelIsLegibleBlackOnWhite) {
  const QImage image = area_.Info().grab().toImage();
  int dark = 0;
  int white = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const int gray = qGray(image.pixel(x, y));
      if (gray < 100) ++dark;
      if (gray == 255) ++white;
    }
  }
  EXPECT_GT(dark, 80);
  EXPECT_GT(white, image.width() * image.height() / 2);
}

}  // namespace
}  // namespace orvane
