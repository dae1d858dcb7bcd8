#include "pages/print_map_window.h"

#include "geo/earth.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double MetersPerInch = 0.0254;

/// A step in metres: on paper up and to the right, on the ground north and east.
struct Shift {
  double up;
  double right;
};

/// Turns a step on paper into one on the ground.
Shift ToGround(const PrintMapWindow& view, Shift step) {
  const double r = static_cast<double>(view.rotation) * (Pi / 180.0);
  return {std::cos(r) * step.up - std::sin(r) * step.right,
          std::cos(r) * step.right + std::sin(r) * step.up};
}

/// The top left corner of a page, on the ground and from the middle of all pages.
Shift PageCorner(const PrintMapWindow& view, PagePlace page) {
  return ToGround(view, {(view.pagesDown / 2.0 - page.row) * view.pageHeightMeters,
                         (page.column - view.pagesAcross / 2.0) * view.pageWidthMeters});
}

int PagesFor(double length, double pageLength) {
  // A frame of exactly one page must not need two because of rounding.
  constexpr double Slack = 0.00001;
  const double pages = std::ceil(length / pageLength - Slack);
  if (!(pages > 1)) return 1;
  return static_cast<int>(std::min<double>(pages, MostPagesEachWay));
}

}  // namespace

PrintMapWindow MakePrintView(const MapWindow& source, const PageDevice& device) {
  constexpr Color White = 0xFFFFFF;
  PrintMapWindow view;
  view.map = source.map;
  view.centralLongitude = source.centralLongitude;
  view.trailViews = source.trailViews;
  view.rangeViews = source.rangeViews;
  view.flags = MapWindowPrint | (source.flags & MapWindowGridsHidden);
  view.background = White;
  view.source = &source;
  view.device = device;
  SetClientSize(view, device.width, device.height);
  return view;
}

void SetPrintFrame(PrintMapWindow& view, const PrintFrame& frame) {
  view.scale = static_cast<float>(frame.scale);
  view.rotation = frame.rotation;
  view.centralLongitude = frame.center.lon;
  view.centerLatitude = frame.center.lat;
  view.pageHeightMeters = view.device.height / frame.scale;
  view.pageWidthMeters = view.device.width / frame.scale;
  view.pagesDown = PagesFor(frame.vertical, view.pageHeightMeters);
  view.pagesAcross = PagesFor(frame.horizontal, view.pageWidthMeters);

  const Shift corner = PageCorner(view, {});
  view.left = corner.right;
  view.right = -corner.right;
  view.top = DegreesToMeters(frame.center.lat) + corner.up;
  view.bottom = DegreesToMeters(frame.center.lat) - corner.up;
}

long long PageCount(const PrintMapWindow& view) {
  return static_cast<long long>(view.pagesDown) * view.pagesAcross;
}

void PlacePage(PrintMapWindow& view, PagePlace page) {
  const Shift corner = PageCorner(view, page);
  view.left = corner.right;
  view.top = DegreesToMeters(view.centerLatitude) + corner.up;
  // Of a turned page these are not the opposite corner; see docs/compatibility.md.
  const double r = static_cast<double>(view.rotation) * (Pi / 180.0);
  view.right = view.left + std::cos(r) * view.pageWidthMeters + std::sin(r) * view.pageHeightMeters;
  view.bottom =
      view.top - (std::cos(r) * view.pageHeightMeters - std::sin(r) * view.pageWidthMeters);
}

double ScaleRatio(const PrintMapWindow& view) {
  return view.device.horizontalResolution / (static_cast<double>(view.scale) * MetersPerInch);
}

}  // namespace orvane
