#pragma once

namespace orvane {

/// The printable area of one page, as a printer or a PDF file counts it.
struct PageDevice {
  int height = 0;                ///< pixels
  int width = 0;                 ///< pixels
  int verticalResolution = 0;    ///< pixels to the inch
  int horizontalResolution = 0;  ///< pixels to the inch
  int marginBelow = 0;           ///< pixels of paper below the area, in which a foot line has room
};

}  // namespace orvane
