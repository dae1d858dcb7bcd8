#pragma once

#include "base/colors.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvane {

/// A pixel, or a corner between pixels, as drawing takes it: x to the right, y down.
struct Pixel {
  int x = 0;
  int y = 0;
};

/// A rectangle of pixels; right and bottom are just outside.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

/// Columns of pixels, from `left` to just before `right`.
struct PixelColumns {
  int left = 0;
  int right = 0;
};

/// Colours that are not fixed: a canvas chooses what they look like.
constexpr Color MarkerColor = 0x6FFFF00;      ///< stands out: the Find marker, the selected trail
constexpr Color ForegroundColor = 0x7000000;  ///< the default foreground of a window

enum class PenPattern { Solid, Dotted, Dashed, Hollow };

/// How lines and outlines are drawn. A width of 0 is the thinnest line of the device; a hollow pen
/// draws nothing.
struct Pen {
  int width = 0;  ///< pixels
  PenPattern pattern = PenPattern::Solid;
  Color color = 0;
};

/// How areas are filled.
struct Brush {
  bool solid = false;  ///< otherwise hollow: nothing is filled
  Color color = 0;
};

/// Which of the canvas's fonts text is drawn in. Bold and italic have the size of the small one.
/// Only paper has those of a legend and of its scale bar.
enum class CanvasFont { Small, Label, LegendTitle, LegendText, Bold, Italic, ScaleBar };
constexpr size_t CanvasFontCount = 7;

/// The few drawing operations that a map needs. It is implemented for screen, picture and paper,
/// and by a recording one in the tests. All coordinates are device pixels within 16 bits.
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void SetPen(const Pen& pen) = 0;
  virtual void SetBrush(const Brush& brush) = 0;
  /// The colour of text.
  virtual void SetForeColor(Color color) = 0;
  virtual void SetFont(CanvasFont font) = 0;

  /// Both ends are drawn.
  virtual void DrawLine(Pixel from, Pixel to) = 0;
  /// A run of joined lines with the current pen; fewer than two points draw nothing.
  virtual void DrawPolyline(const std::vector<Pixel>& points) = 0;
  /// A closed area: filled with the brush by the even-odd rule, outlined with the pen. The first
  /// point may be repeated as the last one.
  virtual void DrawPolygon(const std::vector<Pixel>& points) = 0;
  /// A rectangle, filled with the brush and outlined with the pen inside its edge. With a hollow
  /// pen the brush covers exactly the pixels of `rect`.
  virtual void DrawRect(const PixelRect& rect) = 0;
  /// The ellipse that fits `rect`, filled and outlined likewise.
  virtual void DrawOval(const PixelRect& rect) = 0;
  /// Text in the current font and fore colour, `at` being the start of its baseline. A text that
  /// is valid UTF-8 is shown as such, any other is taken as Latin-1.
  virtual void DrawText(Pixel at, std::string_view text) = 0;
  /// The same where only some columns of pixels matter: letters without a pixel there may be left
  /// out.
  virtual void DrawTextWithin(Pixel at, std::string_view text, const PixelColumns& /*columns*/) {
    DrawText(at, text);
  }

  /// Pixels that `text` takes in the current font.
  virtual int TextWidth(std::string_view text) const = 0;
  /// A rectangle that holds every pixel that `DrawText` may change in the current font, counted
  /// from the start of the baseline.
  virtual PixelRect TextExtent(std::string_view text) const = 0;
  /// Pixels from the top of a line to the baseline, in the given font.
  virtual int Ascent(CanvasFont font) const = 0;
  /// Pixels of ascent and descent together.
  virtual int LineHeight(CanvasFont font) const = 0;

  virtual PixelRect Clip() const = 0;
  virtual void SetClip(const PixelRect& clip) = 0;
  /// Fills the current clip with a colour.
  virtual void Clear(Color color) = 0;
};

}  // namespace orvane
