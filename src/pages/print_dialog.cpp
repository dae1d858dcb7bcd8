#include "pages/print_dialog.h"

#include "base/number_text.h"
#include "base/text.h"
#include "geo/angle_text.h"
#include "geo/earth.h"
#include "pages/page_limits.h"
#include "view/pointer.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orvane {

namespace {

constexpr double MetersPerInch = 0.0254;

/// A part of the earth in degrees, and its size on the ground.
struct Area {
  double north = 0;
  double south = 0;
  double east = 0;
  double west = 0;
  LatLon center;
  double vertical = 0;    ///< metres, along the edges of the view
  double horizontal = 0;  ///< metres
};

bool HasSelection(const MapWindow& view) { return (view.flags & MapWindowSelection) != 0; }

/// Rows and columns from one corner of the selection to the other, in pixels of the window.
ExactPixel SelectionSize(const MapWindow& view) {
  const auto [a, b] = SelectionCorners(view);
  return {.row = std::abs(a.row - b.row), .column = std::abs(a.column - b.column)};
}

Area SelectedArea(const MapWindow& view) {
  const auto& [a, b] = view.selection;
  const ExactPixel size = SelectionSize(view);
  Area area;
  area.north = std::max(a.lat, b.lat);
  area.south = std::min(a.lat, b.lat);
  area.east = std::max(a.lon, b.lon);
  area.west = std::min(a.lon, b.lon);
  area.center = {.lat = (a.lat + b.lat) / 2, .lon = (a.lon + b.lon) / 2};
  area.vertical = size.row / static_cast<double>(view.scale);
  area.horizontal = size.column / static_cast<double>(view.scale);
  return area;
}

/// The place in the middle of the window.
LatLon MiddleOf(const MapWindow& view) {
  const double r = static_cast<double>(view.rotation) * (Pi / 180.0);
  const double half = (std::cos(r) * view.clientHeight + std::sin(r) * view.clientWidth) /
                      (2 * static_cast<double>(view.scale));
  return {.lat = MetersToDegrees(view.top - half), .lon = view.centralLongitude};
}

Area ShownArea(const MapWindow& view) {
  Area area;
  area.center = MiddleOf(view);
  area.north = std::min(MetersToDegrees(view.top), 90.0);
  area.south = std::max(MetersToDegrees(view.bottom), -90.0);
  if (area.north < area.south) area.north = 90;
  const double middle = DegreesToMeters((area.north + area.south) / 2);
  area.east = std::min(MetersToLatLon(middle, view.right).lon + view.centralLongitude, 180.0);
  area.west = std::max(MetersToLatLon(middle, view.left).lon + view.centralLongitude, -180.0);
  if (area.east < area.west) area.east = 180;
  area.vertical = view.clientHeight / static_cast<double>(view.scale);
  area.horizontal = view.clientWidth / static_cast<double>(view.scale);
  return area;
}

/// Metres from west to east at a latitude.
double WidthAt(double latitude, double west, double east) {
  return LatLonToMeters(latitude, east).east - LatLonToMeters(latitude, west).east;
}

/// The N of the next rounder scale 1:N that shows as much.
double NiceRatio(double ratio) {
  double step = 0;
  if (ratio > 100) step = 10;
  if (ratio > 1000) step = 100;
  if (ratio > 10000) step = 1000;
  if (ratio > 100000) step = 10000;
  if (ratio > 100000000) step = 10000000;
  return step > 0 ? std::ceil(ratio / step) * step : ratio;
}

std::string ScaleText(double ratio) { return "1:" + FormatFixed(ratio, 0); }

std::string DistanceText(double meters) {
  if (meters > 10000) return FormatFixed(meters / 1000, 6) + "km";
  if (meters > 1000) return FormatFixed(meters / 1000, 1) + "km";
  if (meters <= 1) return FormatGeneral(meters * 100, 2) + "cm";
  return FormatFixed(meters, 0) + "m";
}

std::string ColorText(Color color) {
  constexpr std::string_view Digits = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) {
    text.push_back(Digits[static_cast<size_t>((color >> shift) & 0xF)]);
  }
  return text;
}

/// \return the text with the degree sign that the readers of angles know, in place of the UTF-8 one
std::string WithPlainDegrees(std::string text) {
  constexpr std::string_view Utf8Degree = "\xC2\xB0";
  for (size_t at = text.find(Utf8Degree); at != std::string::npos; at = text.find(Utf8Degree)) {
    text.erase(at, 1);
  }
  return text;
}

/// Reads an angle that fills the whole text.
std::optional<double> ReadAngle(const std::string& field, AngleMode mode) {
  const std::string text = WithPlainDegrees(field);
  size_t length = 0;
  const double angle = ParseAngle(text, &length, nullptr, mode);
  if (length != text.size() || !std::isfinite(angle)) return std::nullopt;
  return angle;
}

/// Reads "1:5000". \return pixels per metre, or nothing for a scale that can't be drawn
std::optional<double> ReadScale(std::string_view text, const PageDevice& device) {
  const RealPrefix a = ReadReal(text);
  text.remove_prefix(a.length);
  RealPrefix b;
  if (text.starts_with(':')) {
    text.remove_prefix(1);
    b = ReadReal(text);
    text.remove_prefix(b.length);
  }
  if (!text.empty() || b.value == 0) return std::nullopt;
  const double scale = a.value / b.value * device.horizontalResolution / MetersPerInch;
  // A scale is kept in 32 bits.
  if (!(static_cast<float>(scale) > 0) || !std::isfinite(static_cast<float>(scale))) {
    return std::nullopt;
  }
  return scale;
}

/// Reads a distance with a unit: "500m", "1.5km", "20cm". \return metres, not below 0, or nothing
std::optional<double> ReadDistance(std::string_view text) {
  const RealPrefix number = ReadReal(text);
  text.remove_prefix(number.length);
  double meters = number.value;
  const auto takes = [&text](char letter) {
    if (text.empty() || FoldByte(text.front()) != letter) return false;
    text.remove_prefix(1);
    return true;
  };
  if (takes('k')) {
    meters *= 1000;
  } else if (takes('c')) {
    meters /= 100;
  }
  takes('m');
  if (!text.empty() || !(meters >= 0) || !std::isfinite(meters)) return std::nullopt;
  return meters;
}

/// What reading a group of fields gives: a frame, or what is wrong with the first wrong field.
struct ReadFrame {
  PrintFrame frame;
  std::optional<PrintRefusal> wrong{};
};
ReadFrame Wrong(const char* message, std::string PrintDialog::*field) {
  return {{}, PrintRefusal{message, field}};
}

constexpr const char* BadScale = "Bad scale (must be 1:<some number>)";

ReadFrame FramePage(const PrintDialog& dialog, const PrintMapWindow& print) {
  const MapWindow& view = *print.source;
  ExactPixel size{.row = 1.0 * view.clientHeight, .column = 1.0 * view.clientWidth};
  if (dialog.lastSelection && HasSelection(view)) {
    const ExactPixel selected = SelectionSize(view);
    if (selected.row != 0 || selected.column != 0) size = selected;
  }
  const auto viewScale = static_cast<double>(view.scale);
  double scale = HUGE_VAL;
  if (size.row != 0) scale = print.device.height * viewScale / size.row;
  if (size.column != 0) scale = std::min(scale, print.device.width * viewScale / size.column);
  return {{.center = MiddleOf(view),
           .vertical = print.device.height / scale,
           .horizontal = print.device.width / scale,
           .scale = scale,
           .rotation = view.rotation}};
}

ReadFrame FrameArea(const PrintDialog& dialog, const PrintMapWindow& print) {
  const auto north = ReadAngle(dialog.north, AngleMode::Latitude);
  if (!north) return Wrong("Bad North Latitude", &PrintDialog::north);
  const auto south = ReadAngle(dialog.south, AngleMode::Latitude);
  if (!south || *north < *south) return Wrong("Bad South Latitude", &PrintDialog::south);
  const auto east = ReadAngle(dialog.east, AngleMode::Longitude);
  if (!east) return Wrong("Bad East Longitude", &PrintDialog::east);
  const auto west = ReadAngle(dialog.west, AngleMode::Longitude);
  if (!west || *east < *west) return Wrong("Bad West Longitude", &PrintDialog::west);
  const auto scale = ReadScale(dialog.areaScale, print.device);
  if (!scale) return Wrong(BadScale, &PrintDialog::areaScale);
  const LatLon center{.lat = (*north + *south) / 2, .lon = (*east + *west) / 2};
  return {{.center = center,
           .vertical = DegreesToMeters(*north) - DegreesToMeters(*south),
           .horizontal = WidthAt(center.lat, *west, *east),
           .scale = *scale}};
}

ReadFrame FramePoint(const PrintDialog& dialog, const PrintMapWindow& print) {
  PrintFrame frame;
  const double shown = print.source->centralLongitude;
  if (WithPlainDegrees(dialog.centerLongitude) == FormatLongitudeFine(shown)) {
    frame.center.lon = shown;  // the text has lost digits
  } else {
    const auto longitude = ReadAngle(dialog.centerLongitude, AngleMode::Longitude);
    if (!longitude) return Wrong("Bad Longitude", &PrintDialog::centerLongitude);
    frame.center.lon = *longitude;
  }
  const auto latitude = ReadAngle(dialog.centerLatitude, AngleMode::Latitude);
  if (!latitude) return Wrong("Bad Latitude", &PrintDialog::centerLatitude);
  frame.center.lat = *latitude;
  const auto vertical = ReadDistance(dialog.vertical);
  if (!vertical) return Wrong("Bad Vertical distance", &PrintDialog::vertical);
  frame.vertical = *vertical;
  const auto horizontal = ReadDistance(dialog.horizontal);
  if (!horizontal) return Wrong("Bad Horizontal distance", &PrintDialog::horizontal);
  frame.horizontal = *horizontal;
  const auto scale = ReadScale(dialog.pointScale, print.device);
  if (!scale) return Wrong(BadScale, &PrintDialog::pointScale);
  frame.scale = *scale;
  const RealPrefix rotation = ReadReal(dialog.rotation);
  if (rotation.length != dialog.rotation.size() || std::abs(rotation.value) > 360) {
    return Wrong("Bad rotation angle", &PrintDialog::rotation);
  }
  frame.rotation = static_cast<float>(rotation.value);
  return {frame};
}

ReadFrame FrameOf(const PrintDialog& dialog, const PrintMapWindow& print) {
  switch (dialog.mode) {
    case PrintMode::FillPage:
      return FramePage(dialog, print);
    case PrintMode::Area:
      return FrameArea(dialog, print);
    case PrintMode::AroundPoint:
      return FramePoint(dialog, print);
  }
  return FramePage(dialog, print);
}

/// Reads a whole number that fills the text; an empty text is 0.
std::optional<long> ReadWhole(const std::string& text, int base) {
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, base);
  if (end != text.c_str() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

void FillPrintDialog(PrintMapWindow& print, const PrintSettings& settings, PrintDialog& dialog) {
  const MapWindow& view = *print.source;
  const bool selected = dialog.lastSelection && HasSelection(view);
  const Area area = selected ? SelectedArea(view) : ShownArea(view);
  dialog.lastSelectionEnabled = HasSelection(view);
  dialog.centerLatitude = FormatLatitudeFine(area.center.lat);
  dialog.centerLongitude = FormatLongitudeFine(area.center.lon);
  dialog.north = FormatLatitudeFine(area.north);
  dialog.south = FormatLatitudeFine(area.south);
  dialog.east = FormatLongitudeFine(area.east);
  dialog.west = FormatLongitudeFine(area.west);
  dialog.vertical = DistanceText(area.vertical);
  dialog.horizontal = DistanceText(area.horizontal);

  const double height = DegreesToMeters(area.north) - DegreesToMeters(area.south);
  const double width = WidthAt((area.north + area.south) / 2, area.west, area.east);
  print.scale =
      static_cast<float>(std::min(print.device.height / height, print.device.width / width));
  const std::string scale = ScaleText(NiceRatio(ScaleRatio(print)));
  dialog.areaScale = scale;
  dialog.pointScale = scale;
  dialog.rotation = FormatFixed(static_cast<double>(view.rotation), 1);
  dialog.pointSize = std::to_string(settings.pointSize);
  dialog.gridColor = ColorText(settings.gridColor);
  dialog.mode = PrintMode::FillPage;
}

PrintDialog OpenPrintDialog(PrintMapWindow& print, const PrintSettings& settings) {
  PrintDialog dialog;
  dialog.lastSelection = settings.lastSelection && HasSelection(*print.source);
  FillPrintDialog(print, settings, dialog);
  return dialog;
}

const char* FillPageTitle(const PrintDialog& dialog) {
  return dialog.lastSelection ? "Print last selection to fill page"
                              : "Print current window to fill page";
}

std::optional<PrintRefusal> AcceptPrintDialog(const PrintDialog& dialog, PrintMapWindow& print,
                                              PrintSettings& settings) {
  const auto [frame, wrong] = FrameOf(dialog, print);
  if (wrong) return wrong;
  const auto pointSize = ReadWhole(dialog.pointSize, 10);
  if (!pointSize || *pointSize < 1 || *pointSize > 72) {
    return PrintRefusal{"Bad point size", &PrintDialog::pointSize};
  }
  const bool hasSign = dialog.gridColor.starts_with('#');
  const auto gridColor = ReadWhole(hasSign ? dialog.gridColor.substr(1) : dialog.gridColor, 16);
  if (!gridColor || *gridColor < 0 || *gridColor > 0xFFFFFF) {
    return PrintRefusal{"Bad color", &PrintDialog::gridColor};
  }

  SetPrintFrame(print, frame);
  const long long pages = PageCount(print);
  if (pages > MostPages)
    return PrintRefusal{FormatText("Too many pages (%s)", {std::to_string(pages)})};
  print.pointSize = static_cast<int>(*pointSize);
  print.label = dialog.label;
  print.gridColor = static_cast<Color>(*gridColor);
  settings = {
      .pointSize = print.pointSize,
      .gridColor = print.gridColor,
      .lastSelection = dialog.lastSelectionEnabled ? dialog.lastSelection : settings.lastSelection};
  return std::nullopt;
}

}  // namespace orvane
