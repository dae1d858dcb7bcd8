#include "output/map_features.h"

#include "base/messages.h"
#include "base/text.h"
#include "base/utf8.h"
#include "estimates/range_outlines.h"
#include "model/cells.h"
#include "model/time_names.h"
#include "model/workspace.h"
#include "output/exported_grid.h"
#include "output/geojson_shapes.h"
#include "output/named_points.h"
#include "output/shapefiles.h"
#include "trails/metrics.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <map>

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

// --- Points ---------------------------------------------------------------------------------

/// \return false for a point without a place or a visible name
bool TakePoint(MapFeature& feature, const Point& point) {
  std::vector<std::string> names;
  if (!IsHiddenName(point.name)) names.emplace_back(point.name);
  for (const std::string& synonym : point.synonyms) {
    if (!IsHiddenName(synonym)) names.push_back(synonym);
  }
  if (names.empty() || !IsPlaced(point) || !IsOnEarth(point.geo)) return false;
  feature.Begin("point");
  feature.Put("name", names.front());
  names.erase(names.begin());
  feature.Put("synonyms", std::move(names));
  feature.PutAltitude("altitude", double{point.geo.altitude});
  feature.PutTextOrNone("note", NoteText(point.note));
  feature.shape = PointShape(point.geo);
  return true;
}

void TakeStop(MapFeature& feature, const Point& point, const Trail& trail,
              const std::array<std::string, 3>& countNames) {
  feature.Begin("stop");
  const std::string& time = *PointTimeName(point);
  feature.Put("name", time);
  feature.Put("type", trail.type);
  feature.PutTextOrNone("focalAnimal", trail.focalAnimal);
  feature.PutTextOrNone("date", IsoDate(trail.date));
  // The last stop of a trail may have no time of day of its own.
  feature.PutWhole("timeOfDay", ParseTimeName(time));
  feature.PutWhole("duration", point.duration);
  feature.PutCounts(countNames, point.sm);
  feature.PutAltitude("altitude", double{point.geo.altitude});
  feature.PutTextOrNone("note", NoteText(point.note));
  feature.group = trail.type + " stops";
  feature.shape = PointShape(point.geo);
}

// --- Trails ---------------------------------------------------------------------------------

/// \return the texts that are not blank, with blanks between
std::string JoinedTitle(const std::vector<std::optional<std::string>>& parts) {
  std::string title;
  for (const auto& part : parts) {
    if (!part || part->find_first_not_of(' ') == part->npos) continue;
    title += (title.empty() ? "" : " ") + *part;
  }
  return title;
}

/// The name of a trail, or else its type, animal and date.
std::string TrailTitle(const Trail& trail) {
  std::string name = JoinedTitle({trail.name});
  if (!name.empty()) return name;
  return JoinedTitle({trail.type, trail.focalAnimal, IsoDate(trail.date)});
}

void TakeTrail(MapFeature& feature, const Trail& trail) {
  const KeptPlane plane(trail.points);
  const AltitudeSpan altitudes = AltitudeRange(trail.points);
  const bool closed = trail.points.size() > 1 && trail.points.front() == trail.points.back();
  feature.Begin(trail.filled ? "area" : "trail");
  feature.PutTextOrNone("name", trail.name);
  feature.Put("type", trail.type);
  feature.PutTextOrNone("focalAnimal", trail.focalAnimal);
  feature.PutTextOrNone("date", IsoDate(trail.date));
  feature.PutWhole("groupSize", trail.groupSize);
  feature.Put("width", trail.width);
  feature.PutTextOrNone("color", ColorText(trail.color));
  feature.Put("pathLength", TrailPathLength(trail.points));
  feature.PutAltitude("groundLength", TrailGroundLength(trail.points));
  feature.PutAltitude("minAltitude", altitudes.min);
  feature.PutAltitude("maxAltitude", altitudes.max);
  if (closed || trail.filled) feature.Put("area", FlatTrailArea(trail));
  feature.PutTextOrNone("note", NoteText(trail.note));
  feature.color = trail.color;
  feature.filled = trail.filled;
  feature.group = trail.type;
  feature.title = TrailTitle(trail);
  GeoPath path = PathOf(PlacedPoints(trail.points));
  feature.shape = trail.filled ? AreaShape(std::move(path)) : LineShape(path);
}

void TakeContour(MapFeature& feature, const Trail& line, const char* method) {
  const Point* const first = line.points.front();
  feature.Begin("contour");
  feature.PutTextOrNone("name", line.name);
  feature.Put("type", line.type);
  feature.Put("method", method);
  feature.Put("level", double{first->geo.altitude});
  feature.PutWhole("closed", first == line.points.back() ? 1 : 0);
  feature.shape = LineShape(PathOf(line.points));
}

// --- Ranges ---------------------------------------------------------------------------------

/// \return the places without their altitudes
GeoPath Flat(GeoPath path) {
  for (GeoPlace& place : path) place = {place.lon, place.lat};
  return path;
}

void TakeRange(MapFeature& feature, const Range& range,
               const std::array<std::string, 3>& countNames) {
  feature.Begin("range");
  feature.PutTextOrNone("name", range.name);
  feature.Put("area", range.mcpArea);
  feature.Put("gridArea", range.gridArea);
  feature.PutWhole("follows", static_cast<std::int64_t>(range.follows.size()));
  feature.PutWhole("minutes", range.totalMinutes);
  feature.PutWhole("meanFollowPath", range.meanFollowPath);
  feature.PutWhole("meanDailyPath", range.meanDailyPath);
  feature.PutCounts(countNames, range.tally.measure);
  feature.PutTextOrNone("note", NoteText(range.note));
  feature.shape = AreaShape(Flat(PathOf(range.hull)));
}

void TakeCluster(MapFeature& feature, const Range& range, const Cluster& cluster, size_t level) {
  const size_t percent = (level + 1) * 100 / ClusterLevels;
  feature.Begin("cluster");
  feature.PutTextOrNone("range", range.name);
  feature.PutWhole("level", static_cast<std::int64_t>(percent));
  feature.Put("area", cluster.area[level]);
  feature.title = JoinedTitle({range.name, std::to_string(percent) + " %"});
  feature.shape = AreaShape(Flat(PathOf(cluster.hull[level])));
}

void TakeOverlap(MapFeature& feature, const RangeIntersection& overlap) {
  feature.Begin("intersection");
  feature.Put("name", overlap.name);
  feature.PutTextOrNone("rangeA", overlap.a.range->name);
  feature.PutTextOrNone("rangeB", overlap.b.range->name);
  feature.Put("area", overlap.area);
  feature.Put("bothCellsArea", overlap.bothCellsArea);
  feature.PutWhole("minutesA", overlap.a.tally.minutes);
  feature.PutWhole("minutesB", overlap.b.tally.minutes);
  feature.Put("timeShareA", double{overlap.a.timeShare});
  feature.Put("timeShareB", double{overlap.b.timeShare});
  feature.Put("cellShareA", double{overlap.a.cellShare});
  feature.Put("cellShareB", double{overlap.b.cellShare});
  feature.shape = AreaShape(Flat(PathOf(overlap.polygon)));
}

// --- Estimates ------------------------------------------------------------------------------

void TakeEstimate(MapFeature& feature, const Range& range, const EstimateOutline& outline,
                  size_t fixes) {
  const bool isKernel = outline.kind.method == OutlineKind::Method::Kernel;
  const std::string caption = OutlineCaption(outline.kind);
  feature.Begin("estimate");
  feature.PutTextOrNone("range", range.name);
  feature.Put("caption", caption);
  feature.Put("method", std::string(isKernel ? "kernel" : "MCP"));
  feature.PutWhole("percent", outline.kind.percent);
  feature.Put("area", outline.area);
  feature.Put("bandwidth", isKernel ? PropertyValue(outline.bandwidth) : PropertyValue());
  feature.PutWhole("fixes", static_cast<std::int64_t>(fixes));
  feature.title = JoinedTitle({range.name, caption});
  std::vector<GeoPath> rings;
  for (const std::vector<LatLon>& ring : outline.rings) rings.push_back(PathOf(ring));
  feature.shape = OutlineShape(rings);
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

/// \return the grids of a map whose corner has a place
std::vector<ExportedGrid> PlacedGrids(const Map& map) {
  std::vector<ExportedGrid> grids;
  for (const Grid& grid : map.grids) {
    if (grid.corner != nullptr && IsPlaced(*grid.corner)) grids.emplace_back(grid);
  }
  return grids;
}

void TakeCell(MapFeature& feature, const ExportedGrid& grid, CellPlace cell,
              const GridShade* shade) {
  const auto [row, column] = cell;
  const std::string rowPart = grid.RowLabel(row);
  const std::string columnPart = grid.ColumnLabel(column);
  feature.Begin("cell");
  feature.Put("name",
              ColumnComesFirst(grid.GetGrid()) ? columnPart + rowPart : rowPart + columnPart);
  feature.Put("grid", grid.GetGrid().corner->name);
  feature.PutWhole("row", row);
  feature.PutWhole("column", column);
  feature.PutWhole("cellSize", grid.GetGrid().cellSize);
  if (shade != nullptr) {
    feature.PutTextOrNone("color", ColorText(shade->color));
    feature.Put("shade", shade->value);
    feature.color = shade->color;
    feature.filled = true;
  }
  GeoPath ring;
  for (const auto& [r, c] : {CellPlace{0, 0}, CellPlace{1, 0}, CellPlace{1, 1}, CellPlace{0, 1}}) {
    const LatLon place = grid.Place(row + r, column + c);
    if (IsOnEarth(place)) ring.push_back({place.lon, place.lat});
  }
  feature.shape = AreaShape(std::move(ring));
}

}  // namespace

void MapFeature::Begin(const char* newKind) {
  kind = newKind;
  properties.clear();
  shape = {};
  color = NoColor;
  filled = false;
  group.clear();
  title.clear();
}

void MapFeature::PutTextOrNone(std::string_view key, const std::optional<std::string>& text) {
  Put(key, text ? PropertyValue(*text) : PropertyValue());
}

void MapFeature::PutAltitude(std::string_view key, double value) {
  Put(key, HasAltitude(value) ? PropertyValue(value) : PropertyValue());
}

std::array<std::string, 3> CountNames(const Map& map) {
  constexpr std::string_view Taken[] = {
      "kind", "name", "type", "focalAnimal", "date", "timeOfDay", "duration", "altitude", "note",
      "area", "gridArea", "follows", "minutes", "meanFollowPath", "meanDailyPath", "synonyms",
      // Columns that a GeoPackage adds.
      "fid", "geom"};
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

bool VisitPoints(Map& map, const MapFeatureTaker& take) {
  MapFeature feature;
  bool goesOn = true;
  ForEachAhead(NamedPoints(map), [&](const Point& point) {
    if (goesOn && TakePoint(feature, point)) goesOn = take(feature);
  });
  return goesOn;
}

bool VisitStops(const Map& map, const MapFeatureTaker& take) {
  const std::array<std::string, 3> countNames = CountNames(map);
  MapFeature feature;
  for (const Trail& trail : map.trails) {
    for (Point* point : trail.points) point->flags &= ~std::uint32_t{PointVisited};
    for (Point* point : trail.points) {
      if ((point->flags & PointVisited) != 0) continue;
      point->flags |= PointVisited;
      if (PointTimeName(*point) == nullptr || !IsPlaced(*point)) continue;
      if (!IsOnEarth(point->geo)) continue;
      TakeStop(feature, *point, trail, countNames);
      if (!take(feature)) return false;
    }
  }
  return true;
}

bool VisitTrails(const Map& map, std::optional<bool> filled, const MapFeatureTaker& take) {
  MapFeature feature;
  for (const Trail& trail : map.trails) {
    if (trail.points.empty() || trail.filled != filled.value_or(trail.filled)) continue;
    TakeTrail(feature, trail);
    if (!take(feature)) return false;
  }
  return true;
}

bool VisitRanges(const Map& map, const MapFeatureTaker& take) {
  const std::array<std::string, 3> countNames = CountNames(map);
  MapFeature feature;
  for (const Range& range : map.ranges) {
    TakeRange(feature, range, countNames);
    if (!take(feature)) return false;
  }
  return true;
}

bool VisitClusters(const Map& map, const MapFeatureTaker& take) {
  MapFeature feature;
  for (const Range& range : map.ranges) {
    for (size_t level = 0; range.clusters != nullptr && level < ClusterLevels; ++level) {
      for (const Cluster& cluster : range.clusters->clusters) {
        if (cluster.hull[level].empty()) continue;
        TakeCluster(feature, range, cluster, level);
        if (!take(feature)) return false;
      }
    }
  }
  return true;
}

bool VisitOverlaps(const Map& map, const MapFeatureTaker& take) {
  MapFeature feature;
  for (const RangeIntersection& overlap : map.intersections) {
    TakeOverlap(feature, overlap);
    if (!take(feature)) return false;
  }
  return true;
}

bool VisitCells(const Map& map, const MapFeatureTaker& take) {
  MapFeature feature;
  for (const ExportedGrid& grid : PlacedGrids(map)) {
    const CellShades shades = ShadesOf(map, grid.GetGrid());
    for (std::int64_t row = 0; row < grid.Rows(); ++row) {
      for (std::int64_t column = 0; column < grid.Columns(); ++column) {
        const auto shade = shades.find({row, column});
        TakeCell(feature, grid, {row, column}, shade == shades.end() ? nullptr : shade->second);
        if (!take(feature)) return false;
      }
    }
  }
  return true;
}

bool VisitShades(const Map& map, const MapFeatureTaker& take) {
  MapFeature feature;
  for (const ExportedGrid& grid : PlacedGrids(map)) {
    for (const auto& [cell, shade] : ShadesOf(map, grid.GetGrid())) {
      TakeCell(feature, grid, cell, shade);
      if (!take(feature)) return false;
    }
  }
  return true;
}

bool VisitContours(const Map& map, const MapFeatureTaker& take) {
  const Map* source = &map;
  const auto hasLines = [](const Map& each) {
    return !each.contourTrails.empty() || !each.continuousContours.empty();
  };
  while (source != nullptr && !hasLines(*source)) source = source->basis;
  if (source == nullptr) return true;
  MapFeature feature;
  for (const auto& [lines, method] : {std::pair(&source->contourTrails, "classic"),
                                      std::pair(&source->continuousContours, "continuous")}) {
    for (const Trail& line : *lines) {
      TakeContour(feature, line, method);
      if (!take(feature)) return false;
    }
  }
  return true;
}

std::vector<MapFeature> EstimateFeatures(const Map& map) {
  std::vector<MapFeature> features;
  const auto count = static_cast<size_t>(std::distance(map.ranges.begin(), map.ranges.end()));
  ProgressSteps steps(map.workspace->progress, WorkStage::Analyzing, count);
  for (const Range& range : map.ranges) {
    if (!steps.Next()) break;
    const std::vector<LatLon> fixes = FixPlacesOf(range);
    for (const EstimateOutline& outline :
         OutlineEstimates(fixes, {OfferedOutlines.begin(), OfferedOutlines.end()})) {
      if (outline.rings.empty()) continue;
      TakeEstimate(features.emplace_back(), range, outline, fixes.size());
    }
  }
  return features;
}

bool HasTooManyCells(const Map& map) {
  constexpr std::uint64_t TooMany = MostExportedCells + 1;
  std::uint64_t cells = 0;
  for (const ExportedGrid& grid : PlacedGrids(map)) cells += std::min(grid.Cells(), TooMany);
  return cells >= TooMany;
}

void NoteTooManyCells(const Map& map) {
  NoteError(map.workspace->messages, "The grids have more than %s cells: they are left out",
            {std::to_string(MostExportedCells)});
}

}  // namespace orvane
