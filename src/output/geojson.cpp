#include "output/geojson.h"

#include "base/messages.h"
#include "base/replaced_file.h"
#include "base/text.h"
#include "base/utf8.h"
#include "model/cells.h"
#include "model/time_names.h"
#include "model/workspace.h"
#include "output/exported_grid.h"
#include "output/geojson_shapes.h"
#include "output/named_points.h"
#include "output/shapefiles.h"
#include "trails/metrics.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace orvane {

namespace {

/// "2003-03-14", or nothing for no date.
std::optional<std::string> IsoDate(PackedDate date) {
  if (date == 0) return std::nullopt;
  const DateParts parts = UnpackDate(date);
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", parts.year, parts.month, parts.day);
  return text;
}

std::optional<std::string> ColorText(Color color) {
  if (color == NoColor) return std::nullopt;
  char text[16];
  std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(color) & 0xFFFFFFU);
  return text;
}

/// \return a note without the tabs that separate it from the field before: one for each line of a
///         file that it comes from, and one more for each time that it was saved
std::optional<std::string> NoteText(const std::optional<std::string>& note) {
  if (!note) return std::nullopt;
  std::string text = note->substr(std::min(note->find_first_not_of('\t'), note->size()));
  for (size_t at = text.find(" \t"); at != std::string::npos; at = text.find(" \t", at)) {
    text.erase(at + 1, 1);
  }
  return text;
}

/// \return the property names of the counts of a map: their names, or "sm1" to "sm3" for a count
///         without a name and for a name that another property has
std::array<std::string, 3> CountNames(const Map& map) {
  constexpr std::string_view Taken[] = {"kind",    "name",           "type",         "focalAnimal",
                                        "date",    "timeOfDay",      "duration",     "altitude",
                                        "note",    "area",           "gridArea",     "follows",
                                        "minutes", "meanFollowPath", "meanDailyPath"};
  std::array<std::string, 3> names = {"sm1", "sm2", "sm3"};
  for (size_t i = 0; i < names.size(); ++i) {
    const std::string name = ToUtf8(map.smName[i].value_or(""));
    const auto isSame = [&](std::string_view other) { return SameName(other, name); };
    if (name.empty() || std::any_of(std::begin(Taken), std::end(Taken), isSame) ||
        std::any_of(names.begin(), names.end(), isSame)) {
      continue;
    }
    names[i] = name;
  }
  return names;
}

std::vector<Point*> PlacedPoints(const std::vector<Point*>& points) {
  std::vector<Point*> placed;
  std::copy_if(points.begin(), points.end(), std::back_inserter(placed),
               [](const Point* point) { return IsPlaced(*point); });
  return placed;
}

/// Restores the plane coordinates of points when it is destroyed.
class KeptPlane {
 public:
  explicit KeptPlane(const std::vector<Point*>& points) : points_(points) {
    places_.reserve(points.size());
    for (const Point* point : points) places_.push_back(point->projected);
  }
  ~KeptPlane() {
    for (size_t i = 0; i < places_.size(); ++i) points_[i]->projected = places_[i];
  }
  KeptPlane(const KeptPlane&) = delete;
  KeptPlane& operator=(const KeptPlane&) = delete;

 private:
  const std::vector<Point*>& points_;
  std::vector<Meters> places_;
};

/// Writes features. One feature is `Begin`, its properties, `End`.
class FeatureWriter {
 public:
  explicit FeatureWriter(const TextSink& sink) : json_(sink) {
    json_.BeginObject();
    json_.Key("type");
    json_.Text("FeatureCollection");
    json_.Key("features");
    json_.BeginArray();
  }

  void Begin(const char* kind) {
    json_.NewLine();
    json_.BeginObject();
    json_.Key("type");
    json_.Text("Feature");
    json_.Key("properties");
    json_.BeginObject();
    PutText("kind", kind);
  }
  /// \param counts  of what the map counts, under its names
  template <typename Counts>
  void PutCounts(const std::array<std::string, 3>& names, const Counts& counts) {
    for (size_t i = 0; i < names.size(); ++i) PutWhole(names[i], counts[i]);
  }
  void PutText(const char* key, std::string_view text) {
    json_.Key(key);
    json_.Text(text);
  }
  void PutTextOrNull(const char* key, const std::optional<std::string>& text) {
    json_.Key(key);
    if (text) {
      json_.Text(*text);
    } else {
      json_.Null();
    }
  }
  void PutTexts(const char* key, const std::vector<std::string_view>& texts) {
    json_.Key(key);
    json_.BeginArray();
    for (const std::string_view text : texts) json_.Text(text);
    json_.EndArray();
  }
  void PutNumber(const char* key, double value) {
    json_.Key(key);
    json_.Number(value);
  }
  /// Null for -9999.
  void PutAltitude(const char* key, double value) {
    json_.Key(key);
    if (HasAltitude(value)) {
      json_.Number(value);
    } else {
      json_.Null();
    }
  }
  void PutWhole(std::string_view key, std::int64_t value) {
    json_.Key(key);
    json_.Whole(value);
  }
  void End(const GeoShape& shape) {
    json_.EndObject();
    json_.Key("geometry");
    PutGeometry(json_, shape);
    json_.EndObject();
  }
  bool Finish() {
    json_.EndArray();
    json_.EndObject();
    return json_.Finish();
  }

 private:
  JsonWriter json_;
};

// --- Points ---------------------------------------------------------------------------------

void PutPoint(FeatureWriter& features, const Point& point) {
  std::vector<std::string_view> names;
  if (!IsHiddenName(point.name)) names.emplace_back(point.name);
  for (const std::string& synonym : point.synonyms) {
    if (!IsHiddenName(synonym)) names.emplace_back(synonym);
  }
  if (names.empty() || !IsPlaced(point) || !IsOnEarth(point.geo)) return;
  features.Begin("point");
  features.PutText("name", names.front());
  features.PutTexts("synonyms", {names.begin() + 1, names.end()});
  features.PutAltitude("altitude", double{point.geo.altitude});
  features.PutTextOrNull("note", NoteText(point.note));
  features.End(PointShape(point.geo));
}

void PutStop(FeatureWriter& features, const Point& point, const Trail& trail,
             const std::array<std::string, 3>& countNames) {
  features.Begin("stop");
  const std::string& time = *PointTimeName(point);
  features.PutText("name", time);
  features.PutText("type", trail.type);
  features.PutTextOrNull("focalAnimal", trail.focalAnimal);
  features.PutTextOrNull("date", IsoDate(trail.date));
  // The last stop of a trail may have no time of day of its own.
  features.PutWhole("timeOfDay", ParseTimeName(time));
  features.PutWhole("duration", point.duration);
  features.PutCounts(countNames, point.sm);
  features.PutAltitude("altitude", double{point.geo.altitude});
  features.PutTextOrNull("note", NoteText(point.note));
  features.End(PointShape(point.geo));
}

void PutStops(FeatureWriter& features, const Map& map) {
  const std::array<std::string, 3> countNames = CountNames(map);
  for (const Trail& trail : map.trails) {
    for (Point* point : trail.points) point->flags &= ~std::uint32_t{PointVisited};
    for (Point* point : trail.points) {
      if ((point->flags & PointVisited) != 0) continue;
      point->flags |= PointVisited;
      if (PointTimeName(*point) == nullptr || !IsPlaced(*point)) continue;
      if (IsOnEarth(point->geo)) PutStop(features, *point, trail, countNames);
    }
  }
}

// --- Trails ---------------------------------------------------------------------------------

void PutTrail(FeatureWriter& features, const Trail& trail) {
  if (trail.points.empty()) return;
  const KeptPlane plane(trail.points);
  const AltitudeSpan altitudes = AltitudeRange(trail.points);
  const bool closed = trail.points.size() > 1 && trail.points.front() == trail.points.back();
  features.Begin(trail.filled ? "area" : "trail");
  features.PutTextOrNull("name", trail.name);
  features.PutText("type", trail.type);
  features.PutTextOrNull("focalAnimal", trail.focalAnimal);
  features.PutTextOrNull("date", IsoDate(trail.date));
  features.PutWhole("groupSize", trail.groupSize);
  features.PutNumber("width", trail.width);
  features.PutTextOrNull("color", ColorText(trail.color));
  features.PutNumber("pathLength", TrailPathLength(trail.points));
  features.PutAltitude("groundLength", TrailGroundLength(trail.points));
  features.PutAltitude("minAltitude", altitudes.min);
  features.PutAltitude("maxAltitude", altitudes.max);
  if (closed || trail.filled) features.PutNumber("area", FlatTrailArea(trail));
  features.PutTextOrNull("note", NoteText(trail.note));
  GeoPath path = PathOf(PlacedPoints(trail.points));
  features.End(trail.filled ? AreaShape(std::move(path)) : LineShape(path));
}

// --- Ranges ---------------------------------------------------------------------------------

void PutRange(FeatureWriter& features, const Range& range,
              const std::array<std::string, 3>& countNames) {
  features.Begin("range");
  features.PutTextOrNull("name", range.name);
  features.PutNumber("area", range.mcpArea);
  features.PutNumber("gridArea", range.gridArea);
  features.PutWhole("follows", static_cast<std::int64_t>(range.follows.size()));
  features.PutWhole("minutes", range.totalMinutes);
  features.PutWhole("meanFollowPath", range.meanFollowPath);
  features.PutWhole("meanDailyPath", range.meanDailyPath);
  features.PutCounts(countNames, range.tally.measure);
  features.PutTextOrNull("note", NoteText(range.note));
  features.End(AreaShape(PathOf(range.hull)));
}

void PutClusters(FeatureWriter& features, const Range& range) {
  if (range.clusters == nullptr) return;
  for (size_t level = 0; level < ClusterLevels; ++level) {
    for (const Cluster& cluster : range.clusters->clusters) {
      if (cluster.hull[level].empty()) continue;
      features.Begin("cluster");
      features.PutTextOrNull("range", range.name);
      features.PutWhole("level", static_cast<std::int64_t>(level + 1) * 100 / ClusterLevels);
      features.PutNumber("area", cluster.area[level]);
      features.End(AreaShape(PathOf(cluster.hull[level])));
    }
  }
}

void PutIntersection(FeatureWriter& features, const RangeIntersection& overlap) {
  features.Begin("intersection");
  features.PutText("name", overlap.name);
  features.PutTextOrNull("rangeA", overlap.a.range->name);
  features.PutTextOrNull("rangeB", overlap.b.range->name);
  features.PutNumber("area", overlap.area);
  features.PutNumber("bothCellsArea", overlap.bothCellsArea);
  features.PutWhole("minutesA", overlap.a.tally.minutes);
  features.PutWhole("minutesB", overlap.b.tally.minutes);
  features.PutNumber("timeShareA", double{overlap.a.timeShare});
  features.PutNumber("timeShareB", double{overlap.b.timeShare});
  features.PutNumber("cellShareA", double{overlap.a.cellShare});
  features.PutNumber("cellShareB", double{overlap.b.cellShare});
  features.End(AreaShape(PathOf(overlap.polygon)));
}

// --- Grids ----------------------------------------------------------------------------------

using CellPlace = std::pair<std::int64_t, std::int64_t>;
using CellShades = std::map<CellPlace, const GridShade*>;

/// \return the shades of a grid by row and column, the newest one of each cell
CellShades ShadesOf(const Map& map, const Grid& grid) {
  CellShades shades;
  for (const GridShade& shade : map.gridShades) {
    if (shade.grid == &grid) shades.emplace(CellPlace{shade.row, shade.column}, &shade);
  }
  return shades;
}

void PutCell(FeatureWriter& features, const ExportedGrid& grid, CellPlace cell,
             const GridShade* shade) {
  const auto [row, column] = cell;
  const std::string rowPart = grid.RowLabel(row);
  const std::string columnPart = grid.ColumnLabel(column);
  features.Begin("cell");
  features.PutText("name",
                   ColumnComesFirst(grid.GetGrid()) ? columnPart + rowPart : rowPart + columnPart);
  features.PutText("grid", grid.GetGrid().corner->name);
  features.PutWhole("row", row);
  features.PutWhole("column", column);
  features.PutWhole("cellSize", grid.GetGrid().cellSize);
  if (shade != nullptr) {
    features.PutTextOrNull("color", ColorText(shade->color));
    features.PutNumber("shade", shade->value);
  }
  GeoPath ring;
  for (const auto& [r, c] : {CellPlace{0, 0}, CellPlace{1, 0}, CellPlace{1, 1}, CellPlace{0, 1}}) {
    const LatLon place = grid.Place(row + r, column + c);
    if (IsOnEarth(place)) ring.push_back({place.lon, place.lat});
  }
  features.End(AreaShape(std::move(ring)));
}

/// \return false if the grids have too many cells; then none is written
bool PutGrids(FeatureWriter& features, const Map& map) {
  constexpr std::uint64_t TooMany = MostExportedCells + 1;
  std::vector<ExportedGrid> grids;
  std::uint64_t cells = 0;
  for (const Grid& grid : map.grids) {
    if (grid.corner == nullptr || !IsPlaced(*grid.corner)) continue;
    cells += std::min(grids.emplace_back(grid).Cells(), TooMany);
  }
  if (cells >= TooMany) {
    NoteError(map.workspace->messages, "The grids have more than %s cells: they are left out",
              {std::to_string(MostExportedCells)});
    return false;
  }
  for (const ExportedGrid& grid : grids) {
    const CellShades shades = ShadesOf(map, grid.GetGrid());
    for (std::int64_t row = 0; row < grid.Rows(); ++row) {
      for (std::int64_t column = 0; column < grid.Columns(); ++column) {
        const auto shade = shades.find({row, column});
        PutCell(features, grid, {row, column}, shade == shades.end() ? nullptr : shade->second);
      }
    }
  }
  return true;
}

}  // namespace

bool WriteGeoJson(Map& map, const TextSink& sink) {
  FeatureWriter features(sink);
  ForEachAhead(NamedPoints(map), [&](const Point& point) { PutPoint(features, point); });
  PutStops(features, map);
  for (const Trail& trail : map.trails) PutTrail(features, trail);
  const std::array<std::string, 3> countNames = CountNames(map);
  for (const Range& range : map.ranges) PutRange(features, range, countNames);
  for (const Range& range : map.ranges) PutClusters(features, range);
  for (const RangeIntersection& overlap : map.intersections) PutIntersection(features, overlap);
  const bool gridsPut = PutGrids(features, map);
  return features.Finish() && gridsPut;
}

bool ExportGeoJson(Map& map, const std::string& path) {
  return ExportGeoJson(map, path, SystemFiles());
}

bool ExportGeoJson(Map& map, const std::string& path, const FileSystem& system) {
  Messages& messages = map.workspace->messages;
  ReplacedFile file(system);
  if (file.Open(path) != WriteResult::Done) {
    NoteError(messages, "Can't open %s for writing", {path});
    return false;
  }
  bool written = true;
  const bool whole = WriteGeoJson(map, [&](std::string_view text) {
    written = written && file.Write(text);
    return written;
  });
  if (!written || !file.Flush() || !file.TakeName()) {
    NoteError(messages, "Error while writing %s; the old file, if any, is unchanged", {path});
    return false;
  }
  FlushDirectoryOf(file.Path());
  return whole;
}

}  // namespace orvane
