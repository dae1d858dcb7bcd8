#pragma once

#include "view/canvas.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace orvane {

/// A canvas for labels and marks that keeps what is drawn on it, and in `Finish` passes on, in the
/// same order, what shows in the end. A label clears its box before its text is written, so on a map
/// of 200,000 names most lie under others, and drawing those would take most of the time. The
/// picture is the same as without it.
///
/// Something is left out if filled rectangles without an outline, drawn later, cover its whole
/// extent. Fonts, clips and polygons are not taken.
class CoveredCanvas final : public Canvas {
 public:
  /// \param below  receives what is drawn; its clip and font must stay as they are until `Finish`
  /// \param font   the font that is current on `below`
  CoveredCanvas(Canvas& below, CanvasFont font);

  /// Passes everything on that shows. Nothing may be drawn afterwards.
  void Finish();

  void SetPen(const Pen& pen) override;
  void SetBrush(const Brush& brush) override;
  void SetForeColor(Color color) override;
  void SetFont(CanvasFont) override {}
  void DrawLine(Pixel from, Pixel to) override;
  void DrawPolyline(const std::vector<Pixel>&) override {}
  void DrawPolygon(const std::vector<Pixel>&) override {}
  void DrawRect(const PixelRect& rect) override;
  void DrawOval(const PixelRect& rect) override;
  /// \param text  must live until `Finish`
  void DrawText(Pixel at, std::string_view text) override;

  int TextWidth(std::string_view text) const override;
  int Ascent(CanvasFont font) const override { return below_.Ascent(font); }
  int LineHeight(CanvasFont font) const override { return below_.LineHeight(font); }
  PixelRect Clip() const override { return below_.Clip(); }
  void SetClip(const PixelRect&) override {}
  void Clear(Color) override {}

 private:
  enum class Kind : std::uint8_t { Nothing, Line, Rect, Oval, Text };
  /// What was set when something was drawn.
  struct Tools {
    Pen pen;
    Brush brush;
    Color foreColor = 0;
  };
  /// Something that was drawn, or nothing where tools were set and not used. There may be a million, so it is kept small.
  struct Operation {
    Kind kind;
    std::uint8_t newTools;  ///< bits of what was set since the operation before
    bool covers;            ///< a rectangle that hides what is under it
    bool shows;             ///< part of it is left to be seen
    std::uint32_t tools;    ///< index in `tools_`
    PixelRect box;          ///< the ends of a line; a rectangle; start, width and 0 of a text
    std::string_view text;
  };

  void ChangeTools(std::uint8_t bit, const Tools& tools);
  void Draw(Kind kind, const PixelRect& box, std::string_view text = {});
  PixelRect ExtentOf(const Operation& operation) const;
  void FindCovered();
  void Replay(const Operation& operation);

  Canvas& below_;
  const int ascent_;
  const int lineHeight_;
  std::vector<Tools> tools_{1};  ///< each that was drawn with, the present one last
  bool toolsUsed_ = false;       ///< something was drawn with the last of `tools_`
  std::uint8_t newTools_ = 0;    ///< bits of what was set since something was drawn
  std::vector<Operation> operations_;
  mutable std::string_view measured_;  ///< the text whose width was asked for last
  mutable int measuredWidth_ = 0;
};

}  // namespace orvane
