#include "editing/trail_cells.h"

#include "base/number_text.h"
#include "editing/trail_columns.h"
#include "geo/angle_text.h"
#include "geo/utm.h"

#include <cmath>
#include <cstdint>

namespace orvane {
namespace {

constexpr double MetersPerKm = 1000;
constexpr double CmPerMeter = 100;
constexpr double MinutesPerDegree = 60;

// --- Showing ----------------------------------------------------------------------------------

std::string ScaleText(double scale) {
  if (!(scale > 0)) return {};
  if (scale < 1) return FormatFixed(scale * CmPerMeter, 0) + "cm";
  if (scale < MetersPerKm) return FormatFixed(scale, 0) + "m";
  return FormatFixed(scale / MetersPerKm, 0) + "km";
}

std::string PositionText(double degrees, char positive, char negative) {
  const double size = std::abs(degrees);
  const double whole = std::floor(size);
  std::string text(1, degrees < 0 ? negative : positive);
  text += FormatFixed(whole, 0) + DegreeSign + ' ';
  return text + FormatFixed((size - whole) * MinutesPerDegree, 3) + "'";
}

/// \return true for a row that shows no compass reading
bool HidesCompass(const TrailRow& row) {
  return row.isGps || row.isAltitude || row.isRepeat || !row.basePoint;
}

std::string PointText(const TrailRow& row) {
  if (row.showsNear) return row.nearName.value_or("");
  return HidesCompass(row) ? std::string() : *row.basePoint;
}

// --- Taking -----------------------------------------------------------------------------------

/// The rest of a text after its number.
std::string_view After(std::string_view text, size_t length) { return text.substr(length); }

bool IsOptionalMeters(std::string_view rest) { return rest.empty() || rest == "m" || rest == "M"; }

/// Old maps and `ParseAngle` know the degree sign as one byte.
std::string WithOldDegreeSigns(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == DegreeSign && !result.empty() && result.back() == '\xC2') result.pop_back();
    result += c;
  }
  return result;
}

/// \return false if anything follows the angle
bool ReadAngle(std::string_view text, AngleMode mode, double& degrees) {
  const std::string plain = WithOldDegreeSigns(text);
  size_t length = 0;
  const double value = ParseAngle(plain, &length, nullptr, mode);
  if (length != plain.size()) return false;
  degrees = value;
  return true;
}

bool TakeSm(std::string_view text, int& sm) {
  const IntegerPrefix number = ReadInteger(text);
  if (number.length != text.size()) return false;
  sm = static_cast<std::int16_t>(number.value);
  return true;
}

bool TakeScale(std::string_view text, double& scale) {
  const RealPrefix number = ReadReal(text);
  double value = number.value;
  std::string_view rest = After(text, number.length);
  if (!rest.empty() && (rest[0] == 'k' || rest[0] == 'K')) {
    value *= MetersPerKm;
    rest.remove_prefix(1);
  } else if (!rest.empty() && (rest[0] == 'c' || rest[0] == 'C')) {
    value /= CmPerMeter;
    rest.remove_prefix(1);
  }
  if (!IsOptionalMeters(rest)) return false;
  scale = value;
  return true;
}

bool TakeWeight(std::string_view text, int& weight) {
  if (text.empty()) {
    weight = 0;
    return true;
  }
  size_t length = 0;
  const int value = ReadInt32(text, &length);
  if (length != text.size() || value < 1) return false;
  weight = value;
  return true;
}

bool TakeAltitude(std::string_view text, int& altitude) {
  if (text.empty()) {
    altitude = NoRowAltitude;
    return true;
  }
  size_t length = 0;
  const int value = ReadInt32(text, &length);
  if (!IsOptionalMeters(After(text, length))) return false;
  altitude = value;
  return true;
}

bool TakeDistance(std::string_view text, double& distance) {
  const RealPrefix number = ReadReal(text);
  if (!IsOptionalMeters(After(text, number.length))) return false;
  distance = number.value;
  return true;
}

bool TakeBearing(std::string_view text, TrailRow& row) {
  const bool absolute = !text.empty() && (text[0] == 'a' || text[0] == 'A');
  if (absolute) text.remove_prefix(1);
  if (!ReadAngle(text, AngleMode::Bearing, row.bearing)) return false;
  row.isAbsolute = absolute;
  return true;
}

/// A latitude, or a UTM or MGRS text, which gives the longitude as well.
bool ReadLatitude(std::string_view text, TrailRow& row) {
  if (ReadAngle(text, AngleMode::Latitude, row.gps.lat)) return true;
  const auto place = ParseUtm(text);
  if (!place) return false;
  row.gps.lat = place->lat;
  row.gps.lon = place->lon;
  return true;
}

TrailCellResult TakePosition(std::string_view text, bool latitude, TrailRow& row) {
  if (text.empty()) {
    row.isGps = false;
    row.isRepeat = false;
    return {};
  }
  if (latitude && !ReadLatitude(text, row)) return {.refusal = "Bad Latitude"};
  if (!latitude && !ReadAngle(text, AngleMode::Longitude, row.gps.lon)) {
    return {.refusal = "Bad Longtitude"};
  }
  row.isGps = true;
  row.isRepeat = false;
  return {.gps = true};
}

/// A base point throws the fix of its row away, and a near place too.
TrailCellResult TakePoint(std::string_view text, TrailRow& row) {
  row.showsNear = false;
  row.basePoint.reset();
  if (text.empty()) return {};
  row.basePoint = text;
  row.isGps = false;
  row.isAltitude = false;
  row.isRepeat = false;
  return {.compass = true};
}

TrailCellResult Accepted(bool accepted, const char* refusal) {
  return {.refusal = accepted ? nullptr : refusal};
}

}  // namespace

std::string TrailCellText(const TrailRow& row, size_t column, size_t smColumns) {
  if (column == ColumnFirstSm + smColumns) return row.comment.value_or("");
  switch (column) {
    case ColumnName:
      return row.name;
    case ColumnLat:
      return row.isGps ? PositionText(row.gps.lat, 'N', 'S') : "";
    case ColumnLon:
      return row.isGps ? PositionText(row.gps.lon, 'E', 'W') : "";
    case ColumnPoint:
      return PointText(row);
    case ColumnDistance:
      return HidesCompass(row) ? "" : FormatGeneral(row.distance) + "m";
    case ColumnBearing:
      return HidesCompass(row)
                 ? ""
                 : (row.isAbsolute ? "A" : "") + FormatGeneral(row.bearing) + DegreeSign;
    case ColumnInclination:
      return HidesCompass(row) ? "" : FormatGeneral(row.inclination) + DegreeSign;
    case ColumnAltitude:
      return row.altitude == NoRowAltitude ? "" : std::to_string(row.altitude) + "m";
    case ColumnWeight:
      return row.weight <= 1 ? "" : std::to_string(row.weight);
    case ColumnScale:
      return ScaleText(row.scale);
    default:
      break;
  }
  const size_t sm = column - ColumnFirstSm;
  if (sm >= row.sm.size() || row.sm[sm] == 0) return {};
  return std::to_string(row.sm[sm]);
}

TrailCellResult SetTrailCellText(TrailRow& row, size_t column, size_t smColumns,
                                 std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  if (column == ColumnFirstSm + smColumns) {
    row.comment.reset();
    if (!text.empty()) row.comment = text;
    return {};
  }
  switch (column) {
    case ColumnName:
      row.name = text;
      return {};
    case ColumnLat:
      return TakePosition(text, true, row);
    case ColumnLon:
      return TakePosition(text, false, row);
    case ColumnPoint:
      return TakePoint(text, row);
    case ColumnDistance:
      return Accepted(TakeDistance(text, row.distance),
                      "Bad distance.  Must be a number of meters");
    case ColumnBearing:
      return Accepted(TakeBearing(text, row),
                      "Bad compass bearing.  Must be an angle in degrees (minutes & seconds or a "
                      "decimal point are allowed)");
    case ColumnInclination:
      return Accepted(ReadAngle(text, AngleMode::Longitude, row.inclination),
                      "Bad inclination.  Must be an angle in degrees");
    case ColumnAltitude:
      return Accepted(TakeAltitude(text, row.altitude),
                      "Bad altitude.  Must be a number of meters");
    case ColumnWeight:
      return Accepted(TakeWeight(text, row.weight), "Bad weight");
    case ColumnScale:
      return Accepted(TakeScale(text, row.scale), "Bad scale, should be a number");
    default:
      break;
  }
  const size_t sm = column - ColumnFirstSm;
  if (sm < smColumns) return Accepted(TakeSm(text, row.sm[sm]), "Bad integer");
  return {.refusal = "Something is wrong with your input, but I don't know what"};
}

}  // namespace orvane
