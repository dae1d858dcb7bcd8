#pragma once

#include "reports/report_selection.h"
#include "reports/report_view.h"

#include <string>

namespace orvane {

/// A report of lines, as its window knows it. The window sets size and scroll of `View`, calls
/// `LayOut` after every change of size or content, and draws.
///
/// Lines count from 0, top to bottom and, where some are side by side, left to right.
class ShownReport {
 public:
  virtual ~ShownReport() = default;

  virtual ReportView& View() = 0;
  virtual const ReportView& View() const = 0;

  /// Works the layout out in the fonts of a canvas, and holds the scroll.
  virtual void LayOut(Canvas& canvas) = 0;
  /// Draws what the clip of the canvas shows.
  virtual void Draw(Canvas& canvas) const = 0;

  virtual int LineCount() const = 0;
  /// How many lines are side by side, at least 1.
  virtual int Across() const { return 1; }
  /// The pixels of a line in the window, as it is scrolled now.
  virtual PixelRect LinePlace(int line) const = 0;
  /// The text of a line for the clipboard, with a tab between fields; empty for a line that is a
  /// picture.
  virtual std::string LineText(int line) const = 0;
  /// The whole report as it is saved.
  virtual std::string FileText() const = 0;
  /// How far a page of the vertical scroll bar moves the lines, in pixels.
  virtual int PageStep() const;

  /// Nothing of the map may be used from now on: it is about to go. The report is empty then.
  virtual void Drop() = 0;
};

/// \return the line at a pixel of the window, or -1
int LineAt(const ShownReport& report, Pixel at);

/// Scrolls as little as needed to bring a line into view.
void ScrollToLine(ShownReport& report, int line);

/// The texts of the selected lines, or of all if none is selected, each with a line feed. Lines
/// without a text are left out.
std::string CopiedText(const ShownReport& report, const ReportSelection& selection);

/// How selected lines look.
struct ReportColors {
  Color background = 0;
  Color foreground = 0;
};

/// Draws a report on a canvas whose clip is what has to be drawn, and its selected lines in other
/// colours.
void DrawReport(ShownReport& report, const ReportSelection& selection,
                const ReportColors& highlight, Canvas& canvas);

}  // namespace orvane
