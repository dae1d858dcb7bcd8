#include "shell/map/map_view.h"

#include "support/small_map.h"
#include "view/view_transform.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr int Width = 400;
constexpr int Height = 300;

/// A shown view of a map with a cross of two trails, one metre to the pixel.
class MapViewTest : public testing::Test {
 protected:
  MapViewTest() {
    Point& west = map_.AddPoint("West", 0, -100);
    Point& east = map_.AddPoint("East", 0, 100);
    Point& north = map_.AddPoint("", 100, 0);
    Point& south = map_.AddPoint("", -100, 0);
    map_.AddTrail("Ridge", {&west, &east}, 0xFF0000);
    map_.AddTrail("River", {&north, &south}, 0x0000FF);
    widget_ = std::make_unique<MapView>(map_.TheMap(), nullptr);
    widget_->resize(Width, Height);
    widget_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widget_.get()));
    Shown().scale = 1;
    CenterOn(Shown(), LatLon{.lat = 1, .lon = 10});
    widget_->RequestRepaint();
  }

  MapWindow& Shown() { return widget_->Shown(); }

  LatLon Under(int x, int y) { return ScreenToMap(Shown(), {x, y}); }

  LatLon Middle() { return Under(Shown().centerColumn, Shown().centerRow); }

  void MovePointer(int x, int y) { QTest::mouseMove(widget_.get(), QPoint(x, y)); }

  void Wheel(int x, int y, int units) {
    const QPoint at(x, y);
    QWheelEvent event(at, widget_->mapToGlobal(at), QPoint(), QPoint(0, units), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget_.get(), &event);
  }

  QImage Grabbed() { return widget_->grab().toImage().convertToFormat(QImage::Format_RGB32); }

  SmallMap map_;
  std::unique_ptr<MapView> widget_;
};

/// Degrees that a pixel of a view at one metre to the pixel spans.
constexpr double PixelDegrees = 1 / 111120.0;

TEST_F(MapViewTest, IsPlacedAtItsOwnSizeWhenItIsShown) {
  EXPECT_EQ(Shown().clientWidth, Width);
  EXPECT_EQ(Shown().clientHeight, Height);
  EXPECT_EQ(Shown().centerColumn, Width / 2);
  EXPECT_EQ(Shown().centerRow, Height / 2);
  EXPECT_NE(Shown().flags & MapWindowPlaced, 0U);
  EXPECT_EQ(Shown().target, nullptr);
}

TEST_F(MapViewTest, ShowsTheMapInItsColors) {
  const QImage image = Grabbed();
  ASSERT_EQ(image.size(), QSize(Width, Height));
  int red = 0;
  int blue = 0;
  for (int y = 0; y < Height; ++y) {
    for (int x = 0; x < Width; ++x) {
      const QRgb color = image.pixel(x, y) & 0xFFFFFF;
      if (color == 0xFF0000) ++red;
      if (color == 0x0000FF) ++blue;
    }
  }
  EXPECT_NEAR(red, 200, 12);
  EXPECT_NEAR(blue, 200, 12);
  EXPECT_EQ(image.pixel(3, 3), 0xFFFFFFFF);
}

TEST_F(MapViewTest, PlusDoublesTheScaleAndCentersOnThePointer) {
  MovePointer(300, 80);
  const LatLon under = Under(300, 80);
  QTest::keyClick(widget_.get(), Qt::Key_Plus);
  EXPECT_FLOAT_EQ(Shown().scale, 2);
  EXPECT_NEAR(Middle().lat, under.lat, PixelDegrees / 10);
  EXPECT_NEAR(Middle().lon, under.lon, PixelDegrees / 10);
}

TEST_F(MapViewTest, MinusHalvesTheScaleAndCentersOnThePointer) {
  MovePointer(100, 200);
  const LatLon under = Under(100, 200);
  QTest::keyClick(widget_.get(), Qt::Key_Minus);
  EXPECT_FLOAT_EQ(Shown().scale, 0.5);
  EXPECT_NEAR(Middle().lat, under.lat, PixelDegrees / 10);
  EXPECT_NEAR(Middle().lon, under.lon, PixelDegrees / 10);
}

TEST_F(MapViewTest, KeysZoomOnTheMiddleWhenThePointerHasLeft) {
  MovePointer(100, 200);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(widget_.get(), &leave);
  QTest::keyClick(widget_.get(), Qt::Key_Plus);
  EXPECT_FLOAT_EQ(Shown().scale, 2);
  EXPECT_NEAR(Middle().lat, 1, PixelDegrees);
  EXPECT_NEAR(Middle().lon, 10, PixelDegrees);
}

TEST_F(MapViewTest, ArrowsMoveTheCenterByATenthOfTheView) {
  QTest::keyClick(widget_.get(), Qt::Key_Up);
  EXPECT_NEAR(Middle().lat, 1 + Height / 10.0 * PixelDegrees, PixelDegrees / 10);
  QTest::keyClick(widget_.get(), Qt::Key_Down);
  EXPECT_NEAR(Middle().lat, 1, PixelDegrees / 10);
  const double degreesEast = PixelDegrees / std::cos(1 * 3.14159265 / 180);
  QTest::keyClick(widget_.get(), Qt::Key_Right);
  EXPECT_NEAR(Middle().lon, 10 + Width / 10.0 * degreesEast, PixelDegrees / 10);
  QTest::keyClick(widget_.get(), Qt::Key_Left);
  EXPECT_NEAR(Middle().lon, 10, PixelDegrees / 10);
  EXPECT_FLOAT_EQ(Shown().scale, 1);
}

TEST_F(MapViewTest, ArrowsStepFinerWithControlAndFinestWithShift) {
  QTest::keyClick(widget_.get(), Qt::Key_Up, Qt::ControlModifier);
  EXPECT_NEAR(Middle().lat, 1 + Height / 30.0 * PixelDegrees, PixelDegrees / 10);
  QTest::keyClick(widget_.get(), Qt::Key_Down, Qt::ControlModifier);
  QTest::keyClick(widget_.get(), Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_NEAR(Middle().lat, 1 + Height / 100.0 * PixelDegrees, PixelDegrees / 10);
  QTest::keyClick(widget_.get(), Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(widget_.get(), Qt::Key_Left, Qt::ControlModifier);
  const double degreesEast = PixelDegrees / std::cos(1 * 3.14159265 / 180);
  EXPECT_NEAR(Middle().lon, 10 - Width / 30.0 * degreesEast, PixelDegrees / 10);
}

TEST_F(MapViewTest, OtherKeysChangeNothing) {
  const MapWindow before = Shown();
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_Space, Qt::Key_PageUp, Qt::Key_F5}) {
    QTest::keyClick(widget_.get(), key);
  }
  EXPECT_EQ(Shown().top, before.top);
  EXPECT_EQ(Shown().centralLongitude, before.centralLongitude);
  EXPECT_EQ(Shown().scale, before.scale);
}

TEST_F(MapViewTest, TheWheelKeepsThePlaceUnderThePointer) {
  for (const auto& [x, y] : {std::pair{300, 80}, {20, 290}, {200, 150}}) {
    const LatLon under = Under(x, y);
    const float before = Shown().scale;
    Wheel(x, y, 120);
    EXPECT_FLOAT_EQ(Shown().scale, before * std::sqrt(2.0F));
    EXPECT_NEAR(Under(x, y).lat, under.lat, PixelDegrees / 10);
    EXPECT_NEAR(Under(x, y).lon, under.lon, PixelDegrees / 10);
    Wheel(x, y, -120);
    EXPECT_FLOAT_EQ(Shown().scale, before);
  }
}

TEST_F(MapViewTest, SmallStepsOfATouchPadAddUpToANotch) {
  for (int i = 0; i < 8; ++i) Wheel(100, 100, 15);
  EXPECT_NEAR(Shown().scale, std::sqrt(2.0F), 1e-5);
  Wheel(100, 100, 0);
  EXPECT_NEAR(Shown().scale, std::sqrt(2.0F), 1e-5);
}

TEST_F(MapViewTest, TheRightButtonDragsTheMapUnderThePointer) {
  const LatLon grasped = Under(250, 100);
  QTest::mousePress(widget_.get(), Qt::RightButton, Qt::NoModifier, QPoint(250, 100));
  EXPECT_NE(Shown().flags & MapWindowPan, 0U);
  MovePointer(200, 130);
  MovePointer(150, 180);
  EXPECT_NEAR(Under(150, 180).lat, grasped.lat, PixelDegrees / 10);
  EXPECT_NEAR(Under(150, 180).lon, grasped.lon, PixelDegrees / 10);
  QTest::mouseRelease(widget_.get(), Qt::RightButton, Qt::NoModifier, QPoint(150, 180));
  EXPECT_EQ(Shown().flags & (MapWindowPan | MapWindowDrag), 0U);
  const double top = Shown().top;
  MovePointer(20, 20);
  EXPECT_EQ(Shown().top, top);
  EXPECT_FLOAT_EQ(Shown().scale, 1);
}

TEST_F(MapViewTest, TheLeftButtonMovesNothingWhileItIsHeld) {
  const double top = Shown().top;
  QTest::mousePress(widget_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(250, 100));
  MovePointer(200, 130);
  EXPECT_EQ(Shown().top, top);
  MovePointer(250, 100);
  QTest::mouseRelease(widget_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(250, 100));
  EXPECT_EQ(Shown().top, top);
  EXPECT_EQ(Shown().flags & (MapWindowPan | MapWindowDrag), 0U);
}

TEST_F(MapViewTest, ASecondButtonDoesNotDisturbAPan) {
  const LatLon grasped = Under(250, 100);
  QTest::mousePress(widget_.get(), Qt::RightButton, Qt::NoModifier, QPoint(250, 100));
  QTest::mousePress(widget_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(250, 100));
  MovePointer(240, 120);
  EXPECT_NEAR(Under(240, 120).lat, grasped.lat, PixelDegrees / 10);
  QTest::mouseRelease(widget_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(240, 120));
  QTest::mouseRelease(widget_.get(), Qt::RightButton, Qt::NoModifier, QPoint(240, 120));
  EXPECT_EQ(Shown().flags & (MapWindowPan | MapWindowDrag), 0U);
}

TEST_F(MapViewTest, ADoubleClickZoomsInAndWithShiftOut) {
  const LatLon under = Under(120, 220);
  QTest::mouseDClick(widget_.get(), Qt::LeftButton, Qt::NoModifier, QPoint(120, 220));
  EXPECT_FLOAT_EQ(Shown().scale, 2);
  EXPECT_NEAR(Middle().lat, under.lat, PixelDegrees / 10);
  EXPECT_NEAR(Middle().lon, under.lon, PixelDegrees / 10);
  QTest::mouseDClick(widget_.get(), Qt::LeftButton, Qt::ShiftModifier, QPoint(200, 150));
  EXPECT_FLOAT_EQ(Shown().scale, 1);
  EXPECT_EQ(Shown().flags & (MapWindowPan | MapWindowDrag), 0U);
}

TEST_F(MapViewTest, AChangeOfSizeKeepsScaleAndCenter) {
  widget_->resize(600, 500);
  QTest::qWait(1);
  EXPECT_EQ(Shown().clientWidth, 600);
  EXPECT_EQ(Shown().clientHeight, 500);
  EXPECT_FLOAT_EQ(Shown().scale, 1);
  EXPECT_NEAR(Middle().lat, 1, PixelDegrees);
  EXPECT_NEAR(Middle().lon, 10, PixelDegrees);
  EXPECT_EQ(Grabbed().size(), QSize(600, 500));
}

TEST_F(MapViewTest, SurvivesBeingMadeTiny) {
  widget_->setMinimumSize(0, 0);
  for (const QSize size : {QSize(1, 1), QSize(0, 0), QSize(300, 1), QSize(300, 200)}) {
    widget_->resize(size);
    QTest::keyClick(widget_.get(), Qt::Key_Plus);
    Wheel(0, 0, -120);
    widget_->grab();
  }
  EXPECT_EQ(Shown().clientWidth, 300);
  EXPECT_TRUE(std::isfinite(Shown().top));
  EXPECT_TRUE(std::isfinite(Shown().scale));
}

TEST_F(MapViewTest, DrawsAnewOnlyAfterAChange) {
  const QImage before = Grabbed();
  EXPECT_EQ(Grabbed(), before);
  QTest::keyClick(widget_.get(), Qt::Key_Right);
  EXPECT_NE(Grabbed(), before);
}

TEST(EmptyMapView, SaysInGrayWhatToDoNext) {
  SmallMap map;
  MapView widget(map.TheMap(), nullptr);
  widget.resize(400, 300);
  const QImage image = widget.grab().toImage();
  int gray = 0;
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor color = image.pixelColor(x, y);
      if (color == QColor(Qt::white)) continue;
      ++gray;
      EXPECT_GE(color.lightness(), 0x70);
      ink |= QRect(x, y, 1, 1);
    }
  }
  EXPECT_GT(gray, 100);
  EXPECT_NEAR(ink.center().x(), 200, 20);
  EXPECT_NEAR(ink.center().y(), 150, 40);
}

TEST(HasPoints, LooksInTheWholeBasisChain) {
  SmallMap basis;
  SmallMap above;
  above.TheMap().basis = &basis.TheMap();
  EXPECT_FALSE(HasPoints(above.TheMap()));
  basis.AddTrail("Empty", {}, 0);
  EXPECT_FALSE(HasPoints(above.TheMap()));
  basis.AddLoosePoint("Camp", 0, 0);
  EXPECT_TRUE(HasPoints(above.TheMap()));
}

}  // namespace
}  // namespace orvane
