#include "model/cells.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

namespace orvane {

namespace {

constexpr int Letters = 26;
constexpr int HeadBase = 27;  // letters before the last count from a = 1
constexpr long LargestNumber = std::numeric_limits<int>::max();

bool IsLetterStyle(GridStyle style) {
  return style == GridStyle::LettersLower || style == GridStyle::LettersUpper;
}

char FirstLetter(GridStyle style) { return style == GridStyle::LettersLower ? 'a' : 'A'; }

CellNumber ReadLetters(std::string_view text, char first) {
  const auto isLetter = [&](size_t at) {
    return at < text.size() && text[at] >= first && text[at] < first + Letters;
  };
  if (!isLetter(0)) return {0, 0};
  if (text[0] == first + Letters - 1 && isLetter(1)) return {text[1] - first - Letters, 2};
  long head = 0;
  size_t at = 0;
  for (; isLetter(at + 1); ++at) {
    head = std::min(head * HeadBase + (text[at] - first + 1), LargestNumber);
  }
  const long value = std::min(head * Letters + (text[at] - first) + 1, LargestNumber);
  return {static_cast<int>(value), at + 1};
}

/// The two numbers of a cell name, less the start numbers of the axes.
struct CellIndex {
  double row;
  double column;
};

std::optional<CellIndex> ReadCellName(const Grid& grid, std::string_view text) {
  const bool columnFirst = ColumnComesFirst(grid);
  const auto first = ParseCellNumber(text, columnFirst ? grid.columnStyle : grid.rowStyle);
  if (!first) return std::nullopt;
  text.remove_prefix(first->length);
  const auto second = ParseCellNumber(text, columnFirst ? grid.rowStyle : grid.columnStyle);
  if (!second || second->length != text.size()) return std::nullopt;
  const int row = columnFirst ? second->number : first->number;
  const int column = columnFirst ? first->number : second->number;
  return CellIndex{static_cast<double>(row) - grid.rowStart,
                   static_cast<double>(column) - grid.columnStart};
}

/// The index along one axis if it is on the grid. If the axis extends the other way, the count is
/// subtracted; see docs/compatibility.md.
std::optional<std::int64_t> IndexOnAxis(double index, int count) {
  const bool inside = count >= 0 ? index >= 0 && index <= static_cast<double>(count) - 1
                                 : index >= static_cast<double>(count) + 1 && index <= 0;
  if (!inside) return std::nullopt;
  return static_cast<std::int64_t>(count < 0 ? index - count : index);
}

/// The number of a cell. An index can be 2^31; the number of a label is held to 32 bits.
int CellNumberAt(std::int64_t index, int start) {
  constexpr std::int64_t Lowest = std::numeric_limits<int>::min();
  constexpr std::int64_t Highest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(index + start, Lowest, Highest));
}

}  // namespace

std::optional<CellNumber> ParseCellNumber(std::string_view text, GridStyle style) {
  if (style == GridStyle::Decimal) {
    size_t length = 0;
    const int number = ReadInt32(text, &length);
    return CellNumber{number, length};
  }
  if (IsLetterStyle(style)) return ReadLetters(text, FirstLetter(style));
  return std::nullopt;
}

std::string FormatCellNumber(int number, GridStyle style) {
  if (style == GridStyle::Decimal) return std::to_string(number);
  if (!IsLetterStyle(style)) return {};
  const char first = FirstLetter(style);
  if (number < 1) {
    // One less than what is read back; see docs/compatibility.md.
    const int place = number + Letters - 1;
    if (place < 0) return {};
    return {static_cast<char>(first + Letters - 1), static_cast<char>(first + place)};
  }
  const int rest = number - 1;
  std::string text(1, static_cast<char>(first + rest % Letters));
  // No letter counts 0: '@' takes its place; see docs/compatibility.md.
  for (int head = rest / Letters; head > 0; head /= HeadBase) {
    text.insert(text.begin(), static_cast<char>(first - 1 + head % HeadBase));
  }
  return text;
}

bool ColumnComesFirst(const Grid& grid) {
  return grid.rowStyle == GridStyle::Decimal && IsLetterStyle(grid.columnStyle);
}

GridFrame FrameOf(const Grid& grid) {
  return {grid.corner->geo.lat, grid.corner->geo.lon, static_cast<double>(grid.cellSize),
          grid.angle};
}

bool IsCellBefore(const RangeCell& a, const RangeCell& b) {
  return a.row != b.row ? a.row < b.row : a.column < b.column;
}

std::vector<RangeCell> CellsOf(const OverlapShare& share) {
  std::vector<RangeCell> whole;
  for (const std::uint32_t index : share.cells.whole) whole.push_back(share.range->cells[index]);
  std::vector<RangeCell> cells;
  std::merge(whole.begin(), whole.end(), share.cells.parts.begin(), share.cells.parts.end(),
             std::back_inserter(cells), IsCellBefore);
  return cells;
}

std::optional<LatLon> FindGridCell(const Map& map, std::string_view text) {
  if (text.empty()) return std::nullopt;
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    for (const Grid& grid : level->grids) {
      if (!IsPlaced(*grid.corner)) continue;
      const auto index = ReadCellName(grid, text);
      if (!index) continue;
      const double alongRows = (index->row + 0.5) * grid.cellSize;
      const double alongColumns = (index->column + 0.5) * grid.cellSize;
      const double angle = grid.angle * RadiansPerDegree;
      const double south = alongRows * std::cos(angle) + alongColumns * std::sin(angle);
      const double east = -alongRows * std::sin(angle) + alongColumns * std::cos(angle);
      LatLon place{grid.corner->geo.lat, grid.corner->geo.lon, NoAltitude};
      AddMeters(place, -south, east);
      return place;
    }
  }
  return std::nullopt;
}

std::optional<std::string> CellAt(const Map& map, const LatLon& place, double centerLongitude) {
  const Meters at = LatLonToMeters(place.lat, place.lon - centerLongitude);
  for (const Grid& grid : map.grids) {
    const LatLon& cornerPlace = grid.corner->geo;
    const Meters corner = LatLonToMeters(cornerPlace.lat, cornerPlace.lon - centerLongitude);
    double south = corner.north - at.north;
    double east = at.east - corner.east;
    if (grid.angle != 0) {
      const double angle = grid.angle * (GridPi / 180.0);
      const double turnedSouth = south * std::cos(angle) - east * std::sin(angle);
      east = south * std::sin(angle) + east * std::cos(angle);
      south = turnedSouth;
    }
    const auto row = IndexOnAxis(std::floor(south / grid.cellSize), grid.rows);
    const auto column = IndexOnAxis(std::floor(east / grid.cellSize), grid.columns);
    if (!row || !column) continue;
    const std::string rowPart = FormatCellNumber(CellNumberAt(*row, grid.rowStart), grid.rowStyle);
    const std::string columnPart =
        FormatCellNumber(CellNumberAt(*column, grid.columnStart), grid.columnStyle);
    return ColumnComesFirst(grid) ? " " + columnPart + rowPart : " " + rowPart + columnPart;
  }
  return std::nullopt;
}

float EstimateAltitude(const Map& map, const LatLon& place) {
  double weighted = 0;
  double weights = 0;
  float exact = NoAltitude;
  ForEachPoint(map, [&](const Point& point) {
    if (!HasAltitude(point.geo.altitude) || HasAltitude(exact)) return;
    const double dlat = point.geo.lat - place.lat;
    const double dlon = point.geo.lon - place.lon;
    const double squared = dlat * dlat + dlon * dlon;
    if (squared == 0) {
      exact = point.geo.altitude;
      return;
    }
    weighted += double{point.geo.altitude} / squared;
    weights += 1 / squared;
  });
  if (HasAltitude(exact)) return exact;
  return weights > 0 ? static_cast<float>(weighted / weights) : NoAltitude;
}

}  // namespace orvane
