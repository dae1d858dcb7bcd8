// These run at the pixel ratio 1 with the others, and by themselves at 1.5 and 2 (see
// CMakeLists.txt), as Qt takes its scale from the environment when it starts.

#include "paint/small_map.h"
#include "shell/map/map_view.h"
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
    BuildTrailRows(widget_.View());
    widget_.resize(300, 200);
    widget_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&widget_));
    widget_.View().scale = 1;
    CenterOn(widget_.View(), LatLon{.lat = 1, .lon = 10});
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
  EXPECT_EQ(widget_.View().clientWidth, static_cast<int>(std::ceil(300 * Ratio())));
  EXPECT_EQ(widget_.View().clientHeight, static_cast<int>(std::ceil(200 * Ratio())));
  EXPECT_EQ(Grabbed().width(), widget_.View().clientWidth);
  EXPECT_EQ(Grabbed().height(), widget_.View().clientHeight);
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

TEST_F(FineScreen, TheMousePointsAtDevicePixels) {
  const auto devicePixel = [this](int x, int y) {
    return Pixel{static_cast<int>(x * Ratio()), static_cast<int>(y * Ratio())};
  };
  const LatLon grasped = ScreenToMap(widget_.View(), devicePixel(250, 100));
  QTest::mousePress(&widget_, Qt::RightButton, Qt::NoModifier, QPoint(250, 100));
  QTest::mouseMove(&widget_, QPoint(150, 180));
  QTest::mouseRelease(&widget_, Qt::RightButton, Qt::NoModifier, QPoint(150, 180));
  const LatLon now = ScreenToMap(widget_.View(), devicePixel(150, 180));
  EXPECT_NEAR(now.lat, grasped.lat, 1e-6);
  EXPECT_NEAR(now.lon, grasped.lon, 1e-6);
}

}  // namespace
}  // namespace orvane
