#include "cli/dump.h"

#include "cli/point_numbers.h"
#include "cli/text_output.h"
#include "ranges/report_lines.h"
#include "trails/metrics.h"

#include <nlohmann/json.hpp>
#include <unordered_map>
#include <vector>

// Each element of a list becomes one JSON value and is written at once, so that a map of a hundred
// thousand points is not in memory a second time.

namespace orvane {

namespace {

using Json = nlohmann::ordered_json;

Json TextOrNull(const std::optional<std::string>& text) {
  return text ? Json(ToUtf8(*text)) : Json(nullptr);
}

Json AltitudeOrNull(double altitude) {
  return HasAltitude(altitude) ? Json(altitude) : Json(nullptr);
}

Json Texts(const auto& texts) {
  Json list = Json::array();
  for (const std::string& text : texts) list.push_back(ToUtf8(text));
  return list;
}

class MapDump {
 public:
  MapDump(const Map& map, const LineMessages& messages, std::ostream& out)
      : map_(map), messages_(messages), out_(out), numbers_(map) {
    size_t index = 0;
    for (const Trail& trail : map.trails) trailIndexes_.emplace(&trail, index++);
    index = 0;
    for (const Grid& grid : map.grids) gridIndexes_.emplace(&grid, index++);
    index = 0;
    for (const Range& range : map.ranges) rangeIndexes_.emplace(&range, index++);
  }

  void Write() {
    out_ << '{';
    WriteHead();
    WriteList("points", numbers_.Points(), [&](const Point* point) { return PointJson(*point); });
    WriteList("trails", map_.trails, [&](const Trail& trail) { return TrailJson(trail); });
    const auto number = [&](const Point* point) { return NumberOrNull(point); };
    WriteList("loosePoints", map_.loosePoints, number);
    WriteList("namelessPoints", map_.namelessPoints, number);
    WriteList("grids", map_.grids, [&](const Grid& grid) { return GridJson(grid); });
    WriteList("gridShades", map_.gridShades,
              [&](const GridShade& shade) { return ShadeJson(shade); });
    WriteList("ranges", map_.ranges, [&](const Range& range) { return RangeJson(range); });
    WriteList("intersections", map_.intersections,
              [&](const RangeIntersection& record) { return IntersectionJson(record); });
    WriteList("messages", messages_.Entries(), [](const LineMessages::Entry& entry) {
      const bool internal = entry.severity == Severity::InternalError;
      return Json{{"severity", internal ? "internal" : SeverityWord(entry.severity)},
                  {"text", ToUtf8(entry.text)}};
    });
    out_ << "}\n";
  }

 private:
  void WriteKey(const char* key) {
    if (!first_) out_ << ", ";
    first_ = false;
    out_ << '"' << key << "\": ";
  }
  void WriteField(const char* key, const Json& value) {
    WriteKey(key);
    out_ << value.dump();
  }
  template <typename List, typename ToJson>
  void WriteList(const char* key, const List& list, ToJson toJson) {
    WriteKey(key);
    const char* separator = "[";
    for (const auto& element : list) {
      out_ << separator << toJson(element).dump();
      separator = ", ";
    }
    out_ << (*separator == '[' ? "[]" : "]");
  }

  void WriteHead() {
    WriteField("fileName", ToUtf8(map_.shownName));
    WriteField("basis",
               map_.basis == nullptr ? Json(nullptr) : Json(ToUtf8(map_.basis->shownName)));
    WriteField("magneticDeviation", map_.magneticDeviation);
    WriteField("hasDeviation", (map_.flags & MapHasDeviation) != 0);
    WriteField("origin", NumberOrNull(map_.origin));
    WriteField("contourEnabled", map_.contourEnabled);
    WriteField("contourInterval", map_.contourInterval);
    Json names = Json::array();
    for (const auto& name : map_.smName) names.push_back(TextOrNull(name));
    WriteField("smName", names);
    WriteField("comments", Texts(map_.comments));
    WriteField("credits", Texts(map_.credits));
  }

  Json NumberOrNull(const Point* point) const {
    const auto number = numbers_.Find(point);
    return number ? Json(*number) : Json(nullptr);
  }
  Json TrailIndexOrNull(const Trail* trail) const {
    const auto found = trailIndexes_.find(trail);
    return found == trailIndexes_.end() ? Json(nullptr) : Json(found->second);
  }

  Json PointJson(const Point& point) const {
    const Meters& projected = point.projected;
    Json readings = Json::array();
    for (const Measurement& reading : point.measurements) readings.push_back(ReadingJson(reading));
    return {{"name", ToUtf8(point.name)},
            {"synonyms", Texts(point.synonyms)},
            {"map", point.map == nullptr ? Json(nullptr) : Json(ToUtf8(point.map->shownName))},
            {"trail", TrailIndexOrNull(point.trail)},
            {"placed", IsPlaced(point)},
            {"lat", point.geo.lat},
            {"lon", point.geo.lon},
            {"altitude", AltitudeOrNull(double{point.geo.altitude})},
            {"north", projected.north},
            {"east", projected.east},
            {"timeOfDay", point.timeOfDay},
            {"duration", point.duration},
            {"sm", point.sm},
            {"labelLimit", point.labelLimit},
            {"markShape", point.markShape},
            {"markFilled", (point.flags & PointMarkFilled) != 0},
            {"markSize", point.markSize},
            {"note", TextOrNull(point.note)},
            {"measurements", std::move(readings)}};
  }

  Json ReadingJson(const Measurement& reading) const {
    Json json;
    if ((reading.flags & MeasureCompass) != 0) {
      json = {{"kind", "compass"},
              {"base", NumberOrNull(reading.base)},
              {"bearing", reading.bearing},
              {"distance", reading.distance},
              {"inclination", reading.inclination},
              {"absolute", (reading.flags & MeasureAbsoluteBearing) != 0}};
    } else if ((reading.flags & MeasureGps) != 0) {
      json = {{"kind", "gps"}, {"lat", reading.position.lat}, {"lon", reading.position.lon}};
    } else if ((reading.flags & MeasureNear) != 0) {
      return {{"kind", "near"}, {"nearName", ToUtf8(reading.nearName)}};
    } else {
      json = {{"kind", "altitude"}};
    }
    json["altitude"] = AltitudeOrNull(double{reading.altitude});
    json["count"] = reading.count;
    return json;
  }

  Json TrailJson(const Trail& trail) const {
    Json points = Json::array();
    for (const Point* point : trail.points) points.push_back(NumberOrNull(point));
    return {{"name", TextOrNull(trail.name)},
            {"type", ToUtf8(trail.type)},
            {"focalAnimal", TextOrNull(trail.focalAnimal)},
            {"date", trail.date},
            {"width", trail.width},
            {"groupSize", trail.groupSize},
            {"color", trail.color},
            {"lineStyle", NumberOf(trail.lineStyle)},
            {"labelMode", NumberOf(trail.labelMode)},
            {"filled", trail.filled},
            {"fillPattern", trail.fillPattern},
            {"markStyle", NumberOf(trail.markStyle)},
            {"hidden", IsHidden(trail)},
            {"note", TextOrNull(trail.note)},
            {"points", std::move(points)},
            {"metrics", MetricsJson(trail)}};
  }

  /// Measures a copy, and puts back where the points are projected, so that the map stays as it is.
  static Json MetricsJson(const Trail& original) {
    if (original.points.empty()) return nullptr;
    Trail trail = original;
    trail.flags &= ~std::uint32_t{TrailMeasured | TrailClosed};
    std::vector<Meters> projected;
    for (const Point* point : trail.points) projected.push_back(point->projected);
    const double pathLength = TrailPathLength(trail.points);
    MeasureTrail(trail);
    for (size_t i = 0; i < projected.size(); ++i) trail.points[i]->projected = projected[i];
    const bool closed = IsClosed(trail);
    const bool measured = (trail.flags & TrailMeasured) != 0;
    const auto valueIf = [](bool valid, double value) {
      return valid ? Json(value) : Json(nullptr);
    };
    return {{"pathLength", pathLength},
            {"groundLength", AltitudeOrNull(trail.groundLength)},
            {"minAltitude", AltitudeOrNull(trail.minAltitude)},
            {"maxAltitude", AltitudeOrNull(trail.maxAltitude)},
            {"closed", closed},
            {"measured", measured},
            {"area", valueIf(closed, trail.area)},
            {"slantedArea", valueIf(measured, trail.slantedArea)},
            {"aspect", valueIf(measured, trail.aspect)},
            {"slope", valueIf(measured, trail.slope)},
            {"plane", measured ? Json(trail.plane) : Json(nullptr)}};
  }

  Json GridJson(const Grid& grid) const {
    return {{"corner", NumberOrNull(grid.corner)},
            {"cellSize", grid.cellSize},
            {"rows", grid.rows},
            {"columns", grid.columns},
            {"angle", grid.angle},
            {"rowStyle", NumberOf(grid.rowStyle)},
            {"rowStart", grid.rowStart},
            {"columnStyle", NumberOf(grid.columnStyle)},
            {"columnStart", grid.columnStart}};
  }

  Json ShadeJson(const GridShade& shade) const {
    const auto grid = gridIndexes_.find(shade.grid);
    return {{"grid", grid == gridIndexes_.end() ? Json(nullptr) : Json(grid->second)},
            {"row", shade.row},
            {"column", shade.column},
            {"color", shade.color},
            {"value", shade.value}};
  }

  // --- Ranges -------------------------------------------------------------------------------

  Json RangeJson(const Range& range) const {
    Json points = Json::array();
    for (const Point* point : range.points) points.push_back(NumberOrNull(point));
    Json hull = Json::array();
    for (const Point* point : range.hull) hull.push_back(NumberOrNull(point));
    Json follows = Json::array();
    for (const Trail* follow : range.follows) follows.push_back(TrailIndexOrNull(follow));
    Json cells = Json::array();
    for (const RangeCell& cell : range.cells) {
      Json json = {cell.row, cell.column};
      json.push_back(cell.tally.minutes);
      for (const std::int64_t measure : cell.tally.measure) json.push_back(measure);
      cells.push_back(std::move(json));
    }
    const CellWindow& window = range.window;
    return {{"name", TextOrNull(range.name)},
            {"note", TextOrNull(range.note)},
            {"keys", KeysJson(range)},
            {"bounds", range.hasBounds ? BoundsJson(range) : Json(nullptr)},
            {"hull", std::move(hull)},
            {"mcpArea", range.mcpArea},
            {"gridArea", range.gridArea},
            {"gridWindow", range.grid == nullptr ? Json(nullptr)
                                                 : Json{window.firstRow, window.firstColumn,
                                                        window.rows, window.columns}},
            {"cells", std::move(cells)},
            {"tally", TallyJson(range.tally)},
            {"points", std::move(points)},
            {"follows", std::move(follows)},
            {"totalMinutes", range.totalMinutes},
            {"meanFollowPath", range.meanFollowPath},
            {"meanDailyPath", range.meanDailyPath},
            {"slots", TravelJson(range.slots)},
            {"hours", TravelJson(range.hours)},
            {"clusters", ClustersJson(range)},
            {"report", LinesJson([&](int line) { return RangeReportLine(range, line); })}};
  }

  static Json KeysJson(const Range& range) {
    Json keys = Json::array();
    for (const SearchKey& key : range.keys) {
      keys.push_back({{"type", ToUtf8(key.type)},
                      {"focalAnimal", TextOrNull(key.focalAnimal)},
                      {"timeFrom", key.timeFrom},
                      {"timeTo", key.timeTo},
                      {"dateFrom", key.dateFrom},
                      {"dateTo", key.dateTo}});
    }
    return keys;
  }

  static Json BoundsJson(const GeoBounds& bounds) {
    return {bounds.minLat, bounds.minLon, bounds.maxLat, bounds.maxLon};
  }

  static Json TallyJson(const CellTally& tally) {
    return {tally.minutes, tally.measure[0], tally.measure[1], tally.measure[2]};
  }

  /// Slots or hours that hold anything.
  static Json TravelJson(const auto& tallies) {
    Json list = Json::array();
    for (size_t i = 0; i < tallies.size(); ++i) {
      const TravelTally& tally = tallies[i];
      if (tally.distance == 0 && tally.count == 0 && tally.measure[0] == 0 &&
          tally.measure[1] == 0 && tally.measure[2] == 0) {
        continue;
      }
      Json json = {i, tally.distance, tally.count};
      for (const float measure : tally.measure) json.push_back(static_cast<double>(measure));
      list.push_back(std::move(json));
    }
    return list;
  }

  static Json ClustersJson(const Range& range) {
    if (range.clusters == nullptr) return nullptr;
    std::unordered_map<const Cluster*, size_t> indexes;
    for (const Cluster& cluster : range.clusters->clusters) {
      indexes.emplace(&cluster, indexes.size());
    }
    Json list = Json::array();
    for (const Cluster& cluster : range.clusters->clusters) {
      Json sizes = Json::array();
      for (const auto& hull : cluster.hull) sizes.push_back(hull.size());
      const bool merged = cluster.parent != nullptr;
      list.push_back({{"madeAt", cluster.madeAt},
                      {"mergedAt", merged ? Json(cluster.mergedAt) : Json(nullptr)},
                      {"parent", merged ? Json(indexes.at(cluster.parent)) : Json(nullptr)},
                      {"area", cluster.area},
                      {"hullSize", std::move(sizes)}});
    }
    return {{"steps", range.clusters->steps}, {"list", std::move(list)}};
  }

  /// The lines of a report, from 0 until there is none.
  template <typename LineOf>
  static Json LinesJson(LineOf lineOf) {
    Json lines = Json::array();
    for (int line = 0; const auto text = lineOf(line); ++line) lines.push_back(ToUtf8(*text));
    return lines;
  }

  Json IntersectionJson(const RangeIntersection& record) const {
    Json polygon = Json::array();
    for (const LatLon& vertex : record.polygon) polygon.push_back({vertex.lat, vertex.lon});
    const OverlapShare& a = record.a;
    const OverlapShare& b = record.b;
    return {{"name", ToUtf8(record.name)},
            {"rangeA", rangeIndexes_.at(a.range)},
            {"rangeB", rangeIndexes_.at(b.range)},
            {"area", record.area},
            {"bothCellsArea", record.bothCellsArea},
            {"bounds", BoundsJson(record)},
            {"polygon", std::move(polygon)},
            {"tallyA", TallyJson(a.tally)},
            {"tallyB", TallyJson(b.tally)},
            {"beyondA", TallyJson(a.beyond)},
            {"beyondB", TallyJson(b.beyond)},
            {"withinOtherA", TallyJson(a.withinOther)},
            {"withinOtherB", TallyJson(b.withinOther)},
            {"withinOwnA", TallyJson(a.withinOwn)},
            {"withinOwnB", TallyJson(b.withinOwn)},
            {"timeShareA", static_cast<double>(a.timeShare)},
            {"timeShareB", static_cast<double>(b.timeShare)},
            {"cellShareA", static_cast<double>(a.cellShare)},
            {"cellShareB", static_cast<double>(b.cellShare)},
            {"report", LinesJson([&](int line) {
               return IntersectionReportLine(record, map_.smName, line);
             })}};
  }

  const Map& map_;
  const LineMessages& messages_;
  std::ostream& out_;
  bool first_ = true;
  PointNumbers numbers_;
  std::unordered_map<const Trail*, size_t> trailIndexes_;
  std::unordered_map<const Grid*, size_t> gridIndexes_;
  std::unordered_map<const Range*, size_t> rangeIndexes_;
};

}  // namespace

void DumpMap(const Map& map, const LineMessages& messages, std::ostream& out) {
  MapDump(map, messages, out).Write();
}

}  // namespace orvane
