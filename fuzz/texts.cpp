// Reads each line of any text in every way in which the program reads what a user types: as the
// description of a place, in Find, as a scale, a rotation, a coordinate, a date, a time, a colour, a
// cell and a template for names. Nothing may crash, hang or be undefined, and a view must always
// have a scale that can be drawn.
//
// What is before a line with only a form feed is the map in which names are looked up; without such
// a line a small site is.

#include "base/colors.h"
#include "base/dates.h"
#include "base/times.h"
#include "fuzzed_map.h"
#include "geo/angle_text.h"
#include "model/cells.h"
#include "places/resolve_location.h"
#include "ranges/selection.h"
#include "view/find_in_map.h"
#include "view/orientation.h"
#include "view/scale_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view Site =
    "T\tMain\tTrail\nG\tMain0=Start\tN1 0'\tE10 0'\t100\nG\tMain100\tN1 0'\tE10 0.1'\n"
    "G\tMain200=Camp\tN1 0'\tE10 0.2'\t120\nX\tMain0\t100\t20,20\tA\t1\n"
    "T\tMarsh\tRiver\nG\tFord\tN1 0.1'\tE10 0.1'\nG\tMain100\n"
    "T\t\tOru\tUlo\t2003-5-31\nN\t0900\tMain100\nR\tOru range\nK\tOru\n";

void RequireDrawable(const orvane::MapWindow& view) {
  fuzz::Require(view.scale >= static_cast<float>(orvane::SmallestScale) &&
                view.scale <= static_cast<float>(orvane::LargestScale));
  fuzz::Require(std::isfinite(view.top) && std::isfinite(view.left) &&
                std::isfinite(view.rotation));
}

void MoveView(orvane::MapWindow& view, std::string_view line) {
  orvane::FindInMap(view, line);
  orvane::EndFindMark(view);
  RequireDrawable(view);
  if (const auto scale = orvane::ParseScale(line)) {
    fuzz::Require(*scale > 0);
    orvane::ZoomToScale(view, *scale);
    fuzz::Require(orvane::ParseScale(orvane::ScalePrompt(view.scale)).has_value());
  }
  if (const auto rotation = orvane::ParseRotation(line)) {
    fuzz::Require(std::fabs(*rotation) < 360);
    orvane::SetOrientation(view, *rotation);
    orvane::OrientationOf(view.rotation, *rotation);
  }
  RequireDrawable(view);
}

void ReadPlace(orvane::Map& map, std::string_view line) {
  orvane::LocationNeeds needs;
  orvane::ResolveLocation(map, line, &needs);
  orvane::ResolveLocation(map, line);
  orvane::FindGridCell(map, line);
  orvane::LatLon place;
  if (orvane::ParseLatLon(line, place)) {
    orvane::CellAt(map, place, place.lon);
    orvane::EstimateAltitude(map, place);
  }
}

void ReadValues(std::string_view line) {
  for (const auto mode :
       {orvane::AngleMode::Longitude, orvane::AngleMode::Latitude, orvane::AngleMode::Bearing}) {
    std::size_t length = 0;
    double before = -12.5;
    orvane::ParseAngle(line, &length, &before, mode);
    fuzz::Require(length <= line.size());
  }
  for (const bool european : {false, true}) {
    const orvane::DatePrefix date = orvane::ParseDate(line, european);
    fuzz::Require(date.length <= line.size());
    orvane::FormatDate(date.date);
  }
  const orvane::TimePrefix time = orvane::ParseTime(line);
  fuzz::Require(time.length <= line.size());
  orvane::FormatTime(time.minutes);
  orvane::ColorName(orvane::ParseColor(line));
  for (int number = 0; number <= NumberOf(orvane::GridStyle::LettersUpper); ++number) {
    const auto style = orvane::StyleOf<orvane::GridStyle>(number);
    if (const auto cell = orvane::ParseCellNumber(line, style)) {
      fuzz::Require(cell->length <= line.size());
      orvane::FormatCellNumber(cell->number, style);
    }
  }
}

/// A line as a template, and the line before it as the name that may fit.
void MatchTemplates(const orvane::Map& map, std::string_view pattern, std::string_view name) {
  orvane::WildcardMatch(pattern, name);
  std::vector<orvane::Point*> points;
  orvane::AddPointsByTemplate(map, pattern, points);
  fuzz::Require(std::none_of(points.begin(), points.end(),
                             [](const orvane::Point* point) { return point == nullptr; }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::Parts parts = fuzz::PartsOf(data, size);
  fuzz::FuzzedMaps maps;
  orvane::Map& map = maps.Open(parts.head.empty() ? Site : std::string_view(parts.head));
  orvane::MapWindow view = fuzz::ViewOf(map);
  std::string_view rest = parts.body;
  std::string_view before;
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    ReadPlace(map, line);
    MoveView(view, line);
    ReadValues(line);
    MatchTemplates(map, line, before);
    before = line;
  }
  return 0;
}
