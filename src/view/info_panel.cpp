#include "view/info_panel.h"

#include "base/number_text.h"
#include "geo/angle_text.h"
#include "geo/earth.h"
#include "geo/utm.h"
#include "model/cells.h"
#include "view/view_transform.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double DegreesPerRadian = 180 / Pi;

/// What the panel is wide enough for at any place, and the coordinate within it.
constexpr std::string_view PanelSample = "E123  45.678' a 333";
constexpr std::string_view CoordinateSample = "E123  45.678'";
constexpr int PanelPadding = 10;  // pixels added to the width of the sample
constexpr int LeftMargin = 3;
constexpr int ColumnGap = 3;
constexpr int UsualRows = 4;
constexpr int AscentOfUnit = 10;  // letters with ascents below twice this have single margins
constexpr Color EdgeColor = 0xC0C0C0;

/// Metres cut to whole ones.
std::string WholeMeters(double meters) { return FormatFixed(std::trunc(meters) + 0.0, 0) + "m"; }

std::string OffsetText(double meters) {
  const double size = std::abs(meters);
  if (size >= 1000) return FormatFixed(meters / 1000, 1) + "km";
  if (size >= 0.1) return FormatFixed(meters, 1) + "m";
  return "0m";
}

/// The origin of the first map down the chain that has one; null if none has, or it has no place.
const Point* OriginOf(const Map* map) {
  while (map != nullptr && map->origin == nullptr) map = map->basis;
  if (map == nullptr || !IsDrawable(*map->origin)) return nullptr;
  return map->origin;
}

/// The name of the cell under a place, with a blank in front, on the first map of the chain with a
/// grid there; empty if there is none.
std::string CellNameAt(const MapWindow& view, const LatLon& place) {
  for (const Map* map = view.map; map != nullptr; map = map->basis) {
    if (auto name = CellAt(*map, place, view.centralLongitude)) return *name;
  }
  return {};
}

/// How far north and east of one place another is.
Meters WayBetween(const LatLon& from, const LatLon& to) {
  const Meters at = LatLonToMeters(to.lat, to.lon - from.lon);
  return {at.north - DegreesToMeters(from.lat), at.east};
}

std::vector<InfoRow> RestingRows(const MapWindow& view, const AltitudeEstimates& altitudes) {
  LatLon place = ScreenToMap(view, view.pointer);
  place.altitude = altitudes.At(place);
  std::vector<InfoRow> rows = PlaceRows(*view.map, place, view.coordinateDisplay);
  rows.push_back({false, ScaleLabel(LogicalScale(view)) + CellNameAt(view, place), ""});
  return rows;
}

std::string GreatCircleText(double meters) {
  const std::string name = "GreatCircle ";
  if (meters >= 1000000 || meters <= -1000000) return name + FormatFixed(meters / 1000, 0) + "km";
  if (meters >= 1000 || meters <= -1000) return name + FormatGeneral(meters / 1000, 3) + "km";
  return name + FormatGeneral(meters, 3) + "m";
}

/// Degrees clockwise from straight up; 0 for no way at all.
double BearingOf(int rowsDown, int columnsRight) {
  if (rowsDown == 0 && columnsRight == 0) return 0;
  const double bearing = std::atan2(rowsDown, columnsRight) * DegreesPerRadian + 90;
  return bearing < 0 ? bearing + 360 : bearing;
}

std::vector<InfoRow> BandRows(const MapWindow& view, const AltitudeEstimates& altitudes) {
  const double scale = static_cast<double>(view.scale);
  const int rowsDown = view.pointer.y - view.pressPoint.y;
  const int columnsRight = view.pointer.x - view.pressPoint.x;
  const double ground =
      std::sqrt(1.0 * rowsDown * rowsDown + 1.0 * columnsRight * columnsRight) / scale;
  const LatLon end = ScreenToMap(view, view.pointer);
  const LatLon begin = ScreenToMap(view, view.pressPoint);
  const float endAltitude = altitudes.At(end);
  const float beginAltitude = altitudes.At(begin);

  std::vector<InfoRow> rows(UsualRows);
  rows[0] = {true, "N" + FormatDistance(rowsDown / scale), ""};
  rows[1] = {true, "E" + FormatDistance(columnsRight / scale), ""};
  const Meters way = WayBetween(begin, end);
  if (std::isfinite(way.north)) rows[0].offset = "true N" + FormatDistance(way.north);
  if (std::isfinite(way.east)) rows[1].offset = "true E" + FormatDistance(way.east);
  rows[3].text = FormatDistance(ground);
  if (HasAltitude(endAltitude) && HasAltitude(beginAltitude)) {
    const double height = static_cast<double>(endAltitude) - static_cast<double>(beginAltitude);
    const double slope = ground > 0 ? std::atan(height / ground) * DegreesPerRadian : 0;
    rows[2] = {true, "Alt: " + WholeMeters(height) + " " + FormatFixed(slope, 0) + DegreeSign, ""};
    rows[3].text += " (" + FormatDistance(std::sqrt(ground * ground + height * height)) + ")";
  }
  rows[3].text += " " + FormatFixed(BearingOf(rowsDown, columnsRight), 0) + DegreeSign;
  const double overEquator = GreatCircleDistance(end, begin);
  if (overEquator > 0) rows.push_back({false, GreatCircleText(overEquator), ""});
  return rows;
}

/// What one pixel of the margins comes to: more on a screen of fine pixels, where letters are tall.
int MarginUnit(const Canvas& canvas) {
  return std::max(1, canvas.Ascent(CanvasFont::Small) / AscentOfUnit);
}

/// Distance of two lines of the panel.
int RowPitch(const Canvas& canvas) {
  return canvas.Ascent(CanvasFont::Small) + 2 * MarginUnit(canvas);
}

/// Room that the arrow takes, with the gap after it.
int MarkWidth(const Canvas& canvas) {
  return canvas.Ascent(CanvasFont::Small) / 2 + 4 * MarginUnit(canvas);
}

int OffsetColumn(const Canvas& canvas, const std::vector<InfoRow>& rows) {
  int widest = canvas.TextWidth(CoordinateSample);
  for (const InfoRow& row : rows) {
    if (row.offset.empty()) continue;
    widest = std::max(widest, canvas.TextWidth(row.text) + (row.mark ? MarkWidth(canvas) : 0));
  }
  return widest + (LeftMargin + ColumnGap) * MarginUnit(canvas);
}

void DrawMark(Canvas& canvas, int left, int baseline) {
  const int height = canvas.Ascent(CanvasFont::Small) * 3 / 4;
  const int half = std::max(2, height / 3);
  const Pixel tip{left + half, baseline - height};
  canvas.DrawLine({tip.x, baseline - 1}, tip);
  canvas.DrawLine({tip.x - half, tip.y + half}, tip);
  canvas.DrawLine({tip.x + half, tip.y + half}, tip);
}

}  // namespace

std::vector<InfoRow> InfoRows(const MapWindow& view, const AltitudeEstimates& altitudes) {
  const bool band = (view.flags & MapWindowDrag) != 0 && (view.flags & MapWindowPan) == 0;
  return band ? BandRows(view, altitudes) : RestingRows(view, altitudes);
}

std::vector<InfoRow> PlaceRows(const Map& map, const LatLon& place, CoordinateDisplay display) {
  const double altitude = static_cast<double>(place.altitude);
  std::vector<InfoRow> rows(3);
  const auto utm =
      display == CoordinateDisplay::Utm ? FormatUtm(place) : std::optional<std::string>();
  rows[0].text = utm ? *utm : FormatLatitude(place.lat, display);
  if (!utm) rows[1].text = FormatLongitude(place.lon, display);
  if (HasAltitude(place.altitude)) rows[2].text = " Alt: " + WholeMeters(altitude);
  if (const Point* origin = OriginOf(&map)) {
    const Meters way = WayBetween(origin->geo, place);
    rows[0].offset = OffsetText(way.north);
    rows[1].offset = OffsetText(way.east);
    if (HasAltitude(place.altitude) && HasAltitude(origin->geo.altitude)) {
      rows[2].offset = WholeMeters(altitude - static_cast<double>(origin->geo.altitude));
    }
  }
  return rows;
}

std::string ScaleLabel(float scale) {
  const double pixels = static_cast<double>(scale);
  if (scale < 0.005F) return "1px=" + FormatGeneral(0.001 / pixels, 2) + "km";
  if (scale < 0.015F) return "1px=" + FormatGeneral(1 / pixels, 3) + "m";
  if (scale < 5) return "1px=" + FormatGeneral(1 / pixels, 2) + "m";
  return "1px=" + FormatGeneral(100 / pixels, 2) + "cm";
}

double GreatCircleDistance(const LatLon& pointer, const LatLon& press) {
  const auto along = [](double latitude, double longitudes) {
    const double t1 = std::tan(latitude);
    const double t2 = std::tan(longitudes);
    return DegreesToMeters(std::atan(std::sqrt(t1 * t1 + t2 * t2)));
  };
  const double between = press.lon - pointer.lon;
  const bool near = between > -90 && between < 90;
  if (pointer.lat == 0 && near) return along(press.lat, between);
  if (press.lat == 0 && near) return along(pointer.lat, -between);
  return 0;
}

InfoPanelSize MeasureInfoPanel(Canvas& canvas, const std::vector<InfoRow>& rows) {
  canvas.SetFont(CanvasFont::Small);
  const int unit = MarginUnit(canvas);
  const int margin = LeftMargin * unit;
  int width = canvas.TextWidth(PanelSample) + PanelPadding * unit;
  const int column = OffsetColumn(canvas, rows);
  for (const InfoRow& row : rows) {
    const int start = margin + (row.mark ? MarkWidth(canvas) : 0);
    width = std::max(width, start + canvas.TextWidth(row.text) + margin);
    if (row.offset.empty()) continue;
    width = std::max(width, column + canvas.TextWidth(row.offset) + margin);
  }
  const int line = canvas.LineHeight(CanvasFont::Small);
  const int descent = line - canvas.Ascent(CanvasFont::Small);
  const int lastBaseline = static_cast<int>(rows.size()) * RowPitch(canvas);
  return {width, std::max(UsualRows * (line + unit), lastBaseline + descent + unit)};
}

void DrawInfoPanel(Canvas& canvas, const std::vector<InfoRow>& rows, const InfoPanelSize& size,
                   Color background) {
  canvas.Clear(background);
  canvas.SetPen({0, PenPattern::Solid, EdgeColor});
  canvas.DrawLine({0, 0}, {0, size.height - 1});
  canvas.DrawLine({0, size.height - 1}, {size.width - 1, size.height - 1});
  canvas.SetPen({0, PenPattern::Solid, ForegroundColor});
  canvas.SetForeColor(ForegroundColor);
  canvas.SetFont(CanvasFont::Small);
  const int column = OffsetColumn(canvas, rows);
  int baseline = 0;
  for (const InfoRow& row : rows) {
    baseline += RowPitch(canvas);
    int x = LeftMargin * MarginUnit(canvas);
    if (row.mark) {
      DrawMark(canvas, x, baseline);
      x += MarkWidth(canvas);
    }
    if (!row.text.empty()) canvas.DrawText({x, baseline}, row.text);
    if (!row.offset.empty()) canvas.DrawText({column, baseline}, row.offset);
  }
}

}  // namespace orvane
