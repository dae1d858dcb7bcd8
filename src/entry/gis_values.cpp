#include "entry/gis_values.h"

#include "base/number_text.h"
#include "entry/fix_cells.h"
#include "geo/positions.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane {

namespace {

constexpr double LargestLatitude = 90;
/// The largest longitude that one turn brings within ±180.
constexpr double LargestLongitude = 540;
constexpr double FullCircle = 360;

bool IsControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

/// \return where to cut `text`, at `size` or up to three bytes before it
size_t CutBefore(std::string_view text, size_t size) {
  constexpr size_t MostContinuing = 3;
  for (size_t back = 0; back <= MostContinuing && back <= size; ++back) {
    if (!ContinuesCharacter(text[size - back])) return size - back;
  }
  return size;
}

}  // namespace

std::string_view TrimSpace(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::optional<double> WholeReal(std::string_view text) {
  text = TrimSpace(text);
  const RealPrefix read = ReadReal(text);
  if (read.length == 0 || read.length != text.size()) return std::nullopt;
  return read.value;
}

std::string CleanName(std::string_view text) {
  if (text.size() > LongestGisName) text = text.substr(0, CutBefore(text, LongestGisName));
  std::string name(text);
  for (char& c : name) {
    if (IsControl(c)) c = ' ';
  }
  return name;
}

std::string DateOfTime(std::string_view time) {
  time = TrimSpace(time);
  return CleanName(time.substr(0, std::min(time.find_first_of("T "), time.size())));
}

std::optional<std::int64_t> UtcOfTime(std::string_view time) {
  const MomentReading read = ReadMoment(TrimSpace(time), {});
  if (read.fault != MomentFault::None) return std::nullopt;
  return UtcOf(read.moment, false);
}

std::optional<GisFix> FixOf(std::string_view lat, std::string_view lon, std::string_view altitude) {
  const auto latitude = WholeReal(lat);
  const auto longitude = WholeReal(lon);
  if (!latitude || !longitude) return std::nullopt;
  if (std::abs(*latitude) > LargestLatitude || std::abs(*longitude) > LargestLongitude) {
    return std::nullopt;
  }
  GisFix fix;
  fix.lat = *latitude;
  fix.lon = *longitude < -FullCircle / 2 ? *longitude + FullCircle : *longitude;
  fix.altitude = NoAltitude;
  const auto meters = WholeReal(altitude);
  if (meters && std::abs(*meters) <= double{std::numeric_limits<float>::max()}) {
    fix.altitude = static_cast<float>(*meters);
  }
  return fix;
}

void NoteLeftOut(const LeftOutLines& leftOut, std::string_view name, Messages& messages) {
  if (leftOut.count == 0) return;
  const std::string line = std::to_string(leftOut.firstLine);
  if (leftOut.count == 1) {
    NoteWarning(messages, "%s: line %s has no position and is left out", {name, line});
    return;
  }
  NoteWarning(messages, "%s: %s lines have no position and are left out, the first is line %s",
              {name, std::to_string(leftOut.count), line});
}

void NoteDamage(std::string_view text, std::string_view name, Messages& messages) {
  if (text.find('\0') == std::string_view::npos) return;
  NoteError(messages, "File %s holds bytes that are not text; it may be damaged", {name});
}

}  // namespace orvane
