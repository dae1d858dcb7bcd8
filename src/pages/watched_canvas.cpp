#include "pages/watched_canvas.h"

namespace orvane {

bool WatchedCanvas::GoesOn() const {
  // About a tenth of a millisecond of drawing: the clock is asked no more often than it must be.
  constexpr unsigned Stride = 64;
  if (done_.progress != nullptr && ++calls_ % Stride == 0 && !IsCanceled(done_.progress)) {
    done_.progress->Reach(WorkStage::Printing, done_.page, done_.pages);
  }
  return !IsCanceled(done_.progress);
}

void WatchedCanvas::DrawLine(Pixel from, Pixel to) {
  if (GoesOn()) canvas_.DrawLine(from, to);
}

void WatchedCanvas::DrawPolyline(const std::vector<Pixel>& points) {
  if (GoesOn()) canvas_.DrawPolyline(points);
}

void WatchedCanvas::DrawPolygon(const std::vector<Pixel>& points) {
  if (GoesOn()) canvas_.DrawPolygon(points);
}

void WatchedCanvas::DrawRect(const PixelRect& rect) {
  if (GoesOn()) canvas_.DrawRect(rect);
}

void WatchedCanvas::DrawOval(const PixelRect& rect) {
  if (GoesOn()) canvas_.DrawOval(rect);
}

void WatchedCanvas::DrawText(Pixel at, std::string_view text) {
  if (GoesOn()) canvas_.DrawText(at, text);
}

void WatchedCanvas::DrawTextWithin(Pixel at, std::string_view text, const PixelColumns& columns) {
  if (GoesOn()) canvas_.DrawTextWithin(at, text, columns);
}

int WatchedCanvas::TextWidth(std::string_view text) const {
  GoesOn();
  return canvas_.TextWidth(text);
}

PixelRect WatchedCanvas::TextExtent(std::string_view text) const {
  GoesOn();
  return canvas_.TextExtent(text);
}

void WatchedCanvas::Clear(Color color) {
  if (GoesOn()) canvas_.Clear(color);
}

}  // namespace orvane
