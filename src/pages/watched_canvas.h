#pragma once

#include "base/progress.h"
#include "view/canvas.h"

#include <cstddef>

namespace orvane {

/// The part of a print job that is done when a page begins.
struct PageProgress {
  Progress* progress = nullptr;  ///< may be null
  size_t page = 0;               ///< of those that are printed, from 0
  size_t pages = 1;
};

/// Draws on another canvas and asks now and then whether the job goes on, so that also a job of a
/// single page can be cancelled. After that it draws nothing more; texts are measured as before, for
/// the sake of the code that draws.
class WatchedCanvas final : public Canvas {
 public:
  /// \param canvas  must outlive this one, as must the progress
  WatchedCanvas(Canvas& canvas, const PageProgress& done) : canvas_(canvas), done_(done) {}

  void SetPen(const Pen& pen) override { canvas_.SetPen(pen); }
  void SetBrush(const Brush& brush) override { canvas_.SetBrush(brush); }
  void SetForeColor(Color color) override { canvas_.SetForeColor(color); }
  void SetFont(CanvasFont font) override { canvas_.SetFont(font); }

  void DrawLine(Pixel from, Pixel to) override;
  void DrawPolyline(const std::vector<Pixel>& points) override;
  void DrawPolygon(const std::vector<Pixel>& points) override;
  void DrawRect(const PixelRect& rect) override;
  void DrawOval(const PixelRect& rect) override;
  void DrawText(Pixel at, std::string_view text) override;
  void DrawTextWithin(Pixel at, std::string_view text, const PixelColumns& columns) override;

  int TextWidth(std::string_view text) const override;
  PixelRect TextExtent(std::string_view text) const override;
  int Ascent(CanvasFont font) const override { return canvas_.Ascent(font); }
  int LineHeight(CanvasFont font) const override { return canvas_.LineHeight(font); }

  PixelRect Clip() const override { return canvas_.Clip(); }
  void SetClip(const PixelRect& clip) override { canvas_.SetClip(clip); }
  void Clear(Color color) override;

 private:
  /// Reports after every so many calls. \return false once the job is cancelled
  bool GoesOn() const;

  Canvas& canvas_;
  PageProgress done_;
  mutable unsigned calls_ = 0;
};

}  // namespace orvane
