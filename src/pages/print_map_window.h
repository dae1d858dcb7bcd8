#pragma once

#include "pages/page_device.h"
#include "view/map_window.h"

#include <string>

namespace orvane {

/// A view of a map for one print job. The area that it prints is cut into `pagesDown` times
/// `pagesAcross` pages; `PlacePage` moves the view from page to page.
struct PrintMapWindow : MapWindow {
  const MapWindow* source = nullptr;  ///< the window's own view; not owned
  PageDevice device;
  std::string label;            ///< a line of text in the legend; empty for none
  double pageHeightMeters = 0;  ///< what one page shows
  double pageWidthMeters = 0;
  int pagesDown = 1;
  int pagesAcross = 1;
  double centerLatitude = 0;  ///< degrees, of the middle of all pages
  int pointSize = 0;          ///< of all text on the map, in points
};

/// The part of a map that is printed.
struct PrintFrame {
  LatLon center;          ///< degrees
  double vertical = 0;    ///< metres; not below 0
  double horizontal = 0;  ///< metres; not below 0
  double scale = 0;       ///< pixels per metre, above 0
  float rotation = 0;     ///< degrees
};

/// Starts a view for paper: the map, the rows and the hidden grids of `source`, all else of paper.
/// \param source  must outlive the view
PrintMapWindow MakePrintView(const MapWindow& source, const PageDevice& device);

/// Sets scale, rotation and centre, and cuts the frame into pages: at least one each way, and at
/// most `MostPagesEachWay`. A frame that fills its pages exactly needs no further one.
void SetPrintFrame(PrintMapWindow& view, const PrintFrame& frame);

/// Far above any number of pages that is printed, and small enough to be counted.
constexpr int MostPagesEachWay = 1000000000;

/// \return how many pages there are
long long PageCount(const PrintMapWindow& view);

/// Where a page is among all pages, counted from the top left one.
struct PagePlace {
  int row = 0;
  int column = 0;
};

/// Moves the view to one of its pages.
void PlacePage(PrintMapWindow& view, PagePlace page);

/// The N of a scale of 1:N on this paper.
double ScaleRatio(const PrintMapWindow& view);

}  // namespace orvane
