#pragma once

#include "pages/report_pages.h"

namespace orvane {

/// Pages of 400 x 205 pixels; lines are 10 high.
inline ReportPageFrame SmallPages() {
  return {{.height = 205,
           .width = 400,
           .verticalResolution = 100,
           .horizontalResolution = 100,
           .marginBelow = 39},
          "site.map",
          "2026-3-1"};
}

}  // namespace orvane
