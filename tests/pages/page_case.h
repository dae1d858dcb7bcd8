#pragma once

#include "pages/print_dialog.h"
#include "support/small_map.h"

#include <string>

namespace orvane {

/// A small map in a window of 1000 x 500 pixels at one metre to the pixel, about (1 N, 10 E), and a
/// page of 7 x 10 inches at 300 pixels to the inch.
struct PageCase {
  SmallMap map;
  MapWindow window = map.View(1000, 500);
  PageDevice device{
      .height = 3000, .width = 2100, .verticalResolution = 300, .horizontalResolution = 300};
  PrintSettings settings;
  PrintMapWindow view = MakePrintView(window, device);
  PrintDialog dialog = OpenPrintDialog(view, settings);

  void Select(const LatLon& a, const LatLon& b) {
    window.selection[0] = a;
    window.selection[1] = b;
    window.flags |= MapWindowSelection;
  }
  /// The message of a refusal, or an empty text.
  std::string Accept() {
    return AcceptPrintDialog(dialog, view, settings).value_or(PrintRefusal{}).message;
  }
  /// About (1 N, 10 E) at 1:10000, two kilometres square.
  void ChooseAroundPoint() {
    dialog.mode = PrintMode::AroundPoint;
    dialog.centerLatitude = "N1";
    dialog.centerLongitude = "E10";
    dialog.vertical = "2km";
    dialog.horizontal = "2km";
    dialog.pointScale = "1:10000";
    dialog.rotation = "0";
  }
  void ChooseArea() {
    dialog.mode = PrintMode::Area;
    dialog.north = "N1 1";
    dialog.south = "N0 59";
    dialog.east = "E10 1";
    dialog.west = "E9 59";
    dialog.areaScale = "1:10000";
  }
};

/// Pixels to the metre at 1:10000 and 300 pixels to the inch.
constexpr double ScaleOf10000 = 300 / 0.0254 / 10000;

}  // namespace orvane
