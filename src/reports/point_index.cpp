#include "reports/point_index.h"

#include "base/number_text.h"
#include "base/text.h"
#include "geo/earth.h"
#include "model/cells.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace orvane {

namespace {

const Point* OriginOf(const Map& map) {
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    if (level->origin != nullptr) return level->origin;
  }
  return nullptr;
}

/// Names in the order of the map's buckets, each point at its first entry.
std::vector<std::pair<const Point*, std::string>> NamesOf(const Map& map) {
  for (const auto& bucket : map.pointHash) {
    for (Point* point : bucket) point->flags &= ~std::uint32_t{PointVisited};
  }
  std::vector<std::pair<const Point*, std::string>> names;
  for (const auto& bucket : map.pointHash) {
    for (Point* point : bucket) {
      if ((point->flags & PointVisited) != 0) continue;
      point->flags |= PointVisited;
      if (!point->name.empty() && !IsHiddenName(point->name))
        names.emplace_back(point, point->name);
      for (const std::string& synonym : point->synonyms) {
        if (!IsHiddenName(synonym)) names.emplace_back(point, synonym);
      }
    }
  }
  return names;
}

/// How long a name is without its tail of digits and points.
size_t StemLength(std::string_view name) {
  return name.find_last_not_of("0123456789.") + 1;  // npos + 1 is 0
}

/// The number at the front of a tail, as large as it may be.
double TailNumber(std::string_view tail) {
  const RealPrefix number = ReadReal(tail);
  if (number.length == 0 && IsDigit(tail.front())) return std::numeric_limits<double>::infinity();
  return number.value;
}

/// -1, 0 or 1 as the first is before, beside or after the second.
template <typename Value>
int Order(const Value& a, const Value& b) {
  return a < b ? -1 : b < a ? 1 : 0;
}

/// Merges two sorted neighbours; of names that are alike those of the first come first.
void Merge(std::vector<PointIndexEntry>& entries, std::vector<PointIndexEntry>& merged,
           size_t begin, size_t middle, size_t end) {
  merged.clear();
  size_t a = begin;
  size_t b = middle;
  while (a < middle && b < end) {
    const bool firstFits = CompareIndexNames(entries[a].name, entries[b].name) <= 0;
    merged.push_back(std::move(entries[firstFits ? a++ : b++]));
  }
  while (a < middle) merged.push_back(std::move(entries[a++]));
  std::move(merged.begin(), merged.end(), entries.begin() + static_cast<std::ptrdiff_t>(begin));
}

/// Sorts by halves. Where three names run in a circle the result depends on the way of sorting, so
/// the library's sorts can't be used: they may even run out of bounds.
void SortByName(std::vector<PointIndexEntry>& entries) {
  using Span = std::pair<size_t, size_t>;
  std::vector<Span> spans{{0, entries.size()}};
  for (size_t i = 0; i < spans.size(); ++i) {
    const auto [begin, end] = spans[i];
    if (end - begin < 2) continue;
    const size_t middle = begin + (end - begin) / 2;
    spans.emplace_back(begin, middle);
    spans.emplace_back(middle, end);
  }
  std::vector<PointIndexEntry> merged;
  merged.reserve(entries.size());
  for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
    const auto [begin, end] = *span;
    Merge(entries, merged, begin, begin + (end - begin) / 2, end);
  }
}

std::string MetersText(double meters) {
  if (meters >= 1000 || meters <= -1000) return FormatFixed(meters / 1000, 1) + "km";
  if (meters >= 0.1 || meters <= -0.1) return FormatFixed(meters, 1) + "m";
  return "0m";
}

}  // namespace

PointIndex BuildPointIndex(const Map& map, double centerLongitude) {
  PointIndex index;
  const Point* origin = OriginOf(map);
  index.hasOrigin = origin != nullptr;
  for (auto& [point, name] : NamesOf(map)) {
    PointIndexEntry& entry = index.entries.emplace_back();
    entry.name = std::move(name);
    entry.position = point->geo;
    entry.gridCell = CellAt(map, point->geo, centerLongitude).value_or("");
    if (origin != nullptr) {
      const Meters meters = LatLonToMeters(point->geo.lat, point->geo.lon - origin->geo.lon);
      entry.north = meters.north - DegreesToMeters(origin->geo.lat);
      entry.east = meters.east;
    }
  }
  SortByName(index.entries);
  return index;
}

int CompareIndexNames(std::string_view a, std::string_view b) {
  const size_t stemA = StemLength(a);
  const size_t stemB = StemLength(b);
  if (stemA < a.size() && stemB < b.size() && a.substr(0, stemA) == b.substr(0, stemB)) {
    const double x = TailNumber(a.substr(stemA));
    const double y = TailNumber(b.substr(stemB));
    return Order(x, y);
  }
  return Order(a, b);
}

std::string FormatMeters(const PointIndexEntry& entry) {
  return MetersText(entry.north) + "N," + MetersText(entry.east) + "E";
}

PointIndexColumns ColumnsOf(const PointIndex& index) {
  PointIndexColumns columns;
  for (const PointIndexEntry& entry : index.entries) {
    if (HasAltitude(entry.position.altitude)) columns.altitude = true;
    if (!entry.gridCell.empty()) columns.grid = true;
    if (index.hasOrigin) columns.meters = true;
  }
  return columns;
}

std::string PointIndexText(const PointIndex& index, CoordinateDisplay display) {
  const PointIndexColumns columns = ColumnsOf(index);
  std::string text = "Name\t" + std::string(PositionCaption(display));
  if (columns.altitude) text += "\tAltitude";
  if (columns.grid) text += "\tGrid";
  if (columns.meters) text += "\tMeters N/E";
  text += "\n\n";
  for (const PointIndexEntry& entry : index.entries) {
    text += entry.name + '\t' + FormatLatLon(entry.position, display);
    if (columns.altitude) {
      text += '\t';
      const float altitude = entry.position.altitude;
      if (HasAltitude(altitude)) text += FormatFixed(double{altitude}, 0) + "m";
    }
    if (columns.grid) text += '\t' + entry.gridCell;
    if (columns.meters) text += '\t' + FormatMeters(entry);
    text += '\n';
  }
  return text;
}

}  // namespace orvane
