#pragma once

#include "paint/qt_canvas.h"

#include <QImage>

#include <memory>
#include <set>
#include <utility>

namespace orvane {

/// A white picture with a canvas on it.
class PaintedPicture {
 public:
  PaintedPicture(int width, int height, const CanvasOptions& options = {}, double pixelRatio = 1)
      : image_(width, height, QImage::Format_RGB32), fonts_(96 * pixelRatio) {
    image_.fill(Qt::white);
    image_.setDevicePixelRatio(pixelRatio);
    painter_.begin(&image_);
    canvas_ = std::make_unique<QtCanvas>(painter_, fonts_, PixelRect{0, 0, width, height}, options);
  }
  ~PaintedPicture() { End(); }
  PaintedPicture(const PaintedPicture&) = delete;
  PaintedPicture& operator=(const PaintedPicture&) = delete;

  QtCanvas& Paper() { return *canvas_; }
  const CanvasFonts& Fonts() const { return fonts_; }

  /// Ends the painting. \return what was painted
  const QImage& Image() {
    End();
    return image_;
  }

  int ColorAt(int x, int y) { return static_cast<int>(Image().pixel(x, y) & 0xFFFFFF); }

  /// All pixels that are not white, as (x, y).
  std::set<std::pair<int, int>> Marked() {
    std::set<std::pair<int, int>> marked;
    for (int y = 0; y < Image().height(); ++y) {
      for (int x = 0; x < Image().width(); ++x) {
        if (ColorAt(x, y) != 0xFFFFFF) marked.emplace(x, y);
      }
    }
    return marked;
  }

  /// The smallest rectangle around all pixels that are not white.
  PixelRect MarkedBounds() {
    PixelRect bounds{image_.width(), image_.height(), 0, 0};
    for (const auto& [x, y] : Marked()) {
      bounds.left = std::min(bounds.left, x);
      bounds.top = std::min(bounds.top, y);
      bounds.right = std::max(bounds.right, x + 1);
      bounds.bottom = std::max(bounds.bottom, y + 1);
    }
    return bounds;
  }

 private:
  void End() {
    canvas_.reset();
    if (painter_.isActive()) painter_.end();
  }

  QImage image_;
  CanvasFonts fonts_;
  QPainter painter_;
  std::unique_ptr<QtCanvas> canvas_;
};

inline bool operator==(const PixelRect& a, const PixelRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline void PrintTo(const PixelRect& rect, std::ostream* out) {
  *out << "{" << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom << "}";
}

}  // namespace orvane
