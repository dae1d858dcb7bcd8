#include "paint/small_map.h"
#include "shell/map_view.h"

#include <QApplication>
#include <QPixmap>

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// A widget as a screen of a higher pixel ratio would have it painted.
QImage PaintedAtRatio(MapView& widget, double ratio) {
  QPixmap pixmap((QSizeF(widget.size()) * ratio).toSize());
  pixmap.setDevicePixelRatio(ratio);
  widget.render(&pixmap);
  return pixmap.toImage();
}

TEST(FineScreen, TheBufferFillsTheWidgetAtAnyRatio) {
  SmallMap map;
  Point& west = map.AddPoint("West", 0, -100);
  Point& east = map.AddPoint("East", 0, 100);
  map.AddTrail("Ridge", {&west, &east}, 0xFF0000);
  MapView widget(map.TheMap(), nullptr);
  widget.resize(200, 100);
  for (const double ratio : {1.0, 1.5, 2.0}) {
    const QImage image = PaintedAtRatio(widget, ratio);
    EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::white)) << ratio;
    EXPECT_EQ(image.pixelColor(image.width() - 2, image.height() - 2), QColor(Qt::white)) << ratio;
  }
}

}  // namespace
}  // namespace orvane
