// These run at the pixel ratio 1 with the others, and by themselves at 1.5 and 2 (see
// CMakeLists.txt), as Qt takes its scale from the environment when it starts.

#include "panes/trail_tree.h"
#include "shell/map/map_panes.h"
#include "shell/map/map_view.h"
#include "support/small_map.h"
#include "view/info_panel.h"
#include "view/scale_text.h"
#include "view/view_transform.h"

#include <QTest>

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

class FineScreen : public testing::Test {
 protected:
  FineScreen() {
    Point& west = map_.AddPoint("", 0, -5000);
    Point& east = map_.AddPoint("", 0, 5000);
    map_.AddTrail("Line", {&west, &east}, 0xFF0000);
    map_.AddLoosePoint("Camp", -40, 0);
    BuildTrailRows(widget_.Shown());
    widget_.resize(300, 200);
    widget_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&widget_));
    widget_.Shown().scale = 1;
    CenterOn(widget_.Shown(), LatLon{.lat = 1, .lon = 10});
    widget_.RequestRepaint();
  }

  double Ratio() const { return widget_.devicePixelRatioF(); }

  QImage Grabbed() { return widget_.grab().toImage().convertToFormat(QImage::Format_RGB32); }

  SmallMap map_;
  MapView widget_{map_.TheMap(), nullptr};
};

TEST_F(FineScreen, RunsAtTheRatioThatWasAskedFor) {
  bool given = false;
  const double wanted = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble(&given);
  EXPECT_DOUBLE_EQ(Ratio(), given ? wanted : 1);
}

TEST_F(FineScreen, TheViewCountsInDevicePixels) {
  EXPECT_EQ(widget_.Shown().clientWidth, static_cast<int>(std::ceil(300 * Ratio())));
  EXPECT_EQ(widget_.Shown().clientHeight, static_cast<int>(std::ceil(200 * Ratio())));
  EXPECT_EQ(Grabbed().width(), widget_.Shown().clientWidth);
  EXPECT_EQ(Grabbed().height(), widget_.Shown().clientHeight);
}

TEST_F(FineScreen, TheScaleIsThatOfTheWidgetsOwnPixels) {
  EXPECT_EQ(widget_.Shown().pixelRatio, Ratio());
  ZoomToScale(widget_.Shown(), 0.4);
  widget_.RequestRepaint();
  Grabbed();
  EXPECT_FLOAT_EQ(widget_.Shown().scale, static_cast<float>(0.4 * Ratio()));
  EXPECT_EQ(InfoRows(widget_.Shown(), widget_.Altitudes())[3].text, "1px=2.5m");
}

TEST_F(FineScreen, AHairlineIsOneDevicePixelThick) {
  const QImage image = Grabbed();
  for (const int x : {5, image.width() / 3, image.width() - 5}) {
    int red = 0;
    int tinted = 0;
    for (int y = 0; y < image.height(); ++y) {
      const QRgb color = image.pixel(x, y) & 0xFFFFFF;
      if (color == 0xFF0000) ++red;
      if (color != 0xFFFFFF) ++tinted;
    }
    EXPECT_EQ(red, 1) << x;
    EXPECT_EQ(tinted, 1) << x;
  }
}

/// The pixels of a row or column that are not white, from one end to the other.
int TintedAlong(const QImage& image, QPoint from, QPoint to) {
  const QPoint step(to.x() > from.x() ? 1 : 0, to.y() > from.y() ? 1 : 0);
  int tinted = 0;
  for (QPoint at = from; at != to; at += step) {
    if ((image.pixel(at) & 0xFFFFFF) != 0xFFFFFF) ++tinted;
  }
  return tinted;
}

TEST_F(FineScreen, HairlinesAreAsThinBesideTheListsAsWithoutThem) {
  Point& north = map_.AddPoint("", 5000, 70);
  Point& south = map_.AddPoint("", -5000, 70);
  map_.AddTrail("Upright", {&north, &south}, 0xFF0000);
  const auto scaled = [this](int x, int y) {
    return QPoint(static_cast<int>(x * Ratio()), static_cast<int>(y * Ratio()));
  };
  // At a ratio of 1.5 an odd place lets the map begin within a device pixel.
  for (const QPoint corner : {QPoint(0, 0), QPoint(0, 21), QPoint(1, 20), QPoint(1, 21)}) {
    QWidget window;
    MapPanes panes(map_.TheMap(), {150, 101}, &window);
    panes.setGeometry(QRect(corner, QSize(601, 400)));
    window.resize(610, 430);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    panes.View().Shown().scale = 1;
    CenterOn(panes.View().Shown(), LatLon{.lat = 1, .lon = 10});
    panes.View().RequestRepaint();
    const QImage image = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    SCOPED_TRACE(corner.x() * 100 + corner.y());
    EXPECT_EQ(TintedAlong(image, scaled(250, 150), scaled(250, 260)), 1);
    EXPECT_EQ(TintedAlong(image, scaled(300, 150), scaled(300, 260)), 1);
    EXPECT_EQ(TintedAlong(image, scaled(250, 120), scaled(580, 120)), 1);
    EXPECT_EQ(TintedAlong(image, scaled(250, 300), scaled(580, 300)), 1);
  }
}

TEST_F(FineScreen, LettersGrowWithTheRatio) {
  const QImage image = Grabbed();
  int top = image.height();
  int bottom = 0;
  for (int y = image.height() / 2 + 20; y < image.height(); ++y) {
    for (int x = image.width() / 2 + 8; x < image.width(); ++x) {
      if (qGray(image.pixel(x, y)) > 160) continue;
      top = std::min(top, y);
      bottom = std::max(bottom, y + 1);
    }
  }
  // "Camp" from the top of its C to the foot of its p: about 10 pixels at the ratio 1.
  EXPECT_NEAR(bottom - top, 10 * Ratio(), 2 + Ratio());
}

TEST_F(FineScreen, AHandShakesBySoManyOfTheWidgetsOwnPixels) {
  const auto drag = [this](QPoint to) {
    QTest::mousePress(&widget_, Qt::LeftButton, Qt::ShiftModifier, QPoint(100, 50));
    QTest::mouseMove(&widget_, to);
    QTest::mouseRelease(&widget_, Qt::LeftButton, Qt::ShiftModifier, to);
    return (widget_.Shown().flags & MapWindowSelection) != 0;
  };
  EXPECT_FALSE(drag({102, 52}));
  EXPECT_FALSE(drag({100, 46}));
  EXPECT_TRUE(drag({102, 53}));
}

TEST_F(FineScreen, TheMousePointsAtDevicePixels) {
  const auto devicePixel = [this](int x, int y) {
    return Pixel{static_cast<int>(x * Ratio()), static_cast<int>(y * Ratio())};
  };
  const LatLon grasped = ScreenToMap(widget_.Shown(), devicePixel(250, 100));
  QTest::mousePress(&widget_, Qt::RightButton, Qt::NoModifier, QPoint(250, 100));
  QTest::mouseMove(&widget_, QPoint(150, 180));
  QTest::mouseRelease(&widget_, Qt::RightButton, Qt::NoModifier, QPoint(150, 180));
  const LatLon now = ScreenToMap(widget_.Shown(), devicePixel(150, 180));
  EXPECT_NEAR(now.lat, grasped.lat, 1e-6);
  EXPECT_NEAR(now.lon, grasped.lon, 1e-6);
}

}  // namespace
}  // namespace orvane
