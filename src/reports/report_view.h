#pragma once

#include "view/canvas.h"

namespace orvane {

/// What the reports have in common: the part of a report that its window shows, or its page. All in
/// pixels. The caller sets size, font and scroll; the layout of each report works out the rest.
struct ReportView {
  int viewWidth = 0;   ///< of the window or the page
  int viewHeight = 0;  ///< likewise
  int lineHeight = 0;  ///< ascent and descent of `CanvasFont::Small`
  int ascent = 0;
  int headerHeight = 0;  ///< of the headings, which stay when the lines below scroll
  int scrollX = 0;       ///< how far the report is moved to the left
  int scrollY = 0;       ///< how far the lines are moved up
  int contentWidth = 0;
  int contentHeight = 0;  ///< without the headings
  Color background = 0xFFFFFF;
  Color foreground = ForegroundColor;  ///< of text and lines
  int unit = 1;                        ///< pixels to a logical one, at least 1
};

/// Takes the measures of the text from a canvas.
void TakeReportFont(ReportView& view, const Canvas& canvas);

/// Moves the scroll back where it has passed an end.
void HoldReportScroll(ReportView& view);

/// Draws a text in bold, with its middle at a column of pixels.
void DrawHeading(Canvas& canvas, Pixel middle, std::string_view text);

}  // namespace orvane
