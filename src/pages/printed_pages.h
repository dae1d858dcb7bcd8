#pragma once

#include "view/canvas.h"

#include <string>

namespace orvane {

/// The fonts of a page, with sizes in points of 1/72 inch. A page without a legend leaves its three
/// sizes at 0.
struct PageFonts {
  int text = 0;         ///< `CanvasFont::Small` and `CanvasFont::Label`
  int legendTitle = 0;  ///< `CanvasFont::LegendTitle`
  int legendText = 0;   ///< `CanvasFont::LegendText`
  int scaleBar = 0;     ///< `CanvasFont::ScaleBar`
  bool monospaced = false;
};

/// What a print job prints: a number of pages that can be drawn in any order, and more than once.
class PrintedPages {
 public:
  virtual ~PrintedPages() = default;

  /// The name of the document, in the encoding of map files.
  virtual std::string Title() const = 0;
  virtual PageFonts Fonts() const = 0;
  /// Prepares pages whose number depends on the size of their text. Call it before `Count`.
  /// \param canvas  with the fonts of the pages; nothing is drawn on it
  virtual void Measure(Canvas& /*canvas*/) {}
  /// At least 1.
  virtual int Count() const = 0;
  /// True if lines are wider than the page, so that it cuts what is at the right. Known after
  /// `Measure`.
  virtual bool IsTooWide() const { return false; }
  /// Draws one page on a canvas that covers the printable area; pixel (0, 0) is its top left one.
  /// \param page  from 0
  virtual void DrawPage(int page, Canvas& canvas) = 0;
};

}  // namespace orvane
