#include "cli/dump.h"

#include "cli/text_output.h"
#include "trails/metrics.h"

#include <nlohmann/json.hpp>
#include <unordered_map>
#include <vector>

// Each element of a list is made as one JSON value and written at once, so that a map of a hundred
// thousand points does not stand in memory a second time.

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

/// The points of the document, numbered as they are met.
class PointNumbers {
 public:
  explicit PointNumbers(const Map& map) {
    ForEachPoint(map, [&](const Point& point) { Meet(point); });
    for (size_t i = 0; i < points_.size(); ++i) {
      for (const Measurement& reading : points_[i]->measurements) {
        if (reading.base != nullptr) Meet(*reading.base);
      }
    }
    for (const Grid& grid : map.grids) Meet(*grid.corner);
  }

  const std::vector<const Point*>& Points() const { return points_; }

  Json NumberOrNull(const Point* point) const {
    const auto found = numbers_.find(point);
    return found == numbers_.end() ? Json(nullptr) : Json(found->second);
  }

 private:
  void Meet(const Point& point) {
    if (numbers_.try_emplace(&point, points_.size()).second) points_.push_back(&point);
  }

  std::vector<const Point*> points_;
  std::unordered_map<const Point*, size_t> numbers_;
};

class MapDump {
 public:
  MapDump(Map& map, const LineMessages& messages, std::ostream& out)
      : map_(map), messages_(messages), out_(out), numbers_(map) {
    size_t index = 0;
    for (const Trail& trail : map.trails) trailIndexes_.emplace(&trail, index++);
    index = 0;
    for (const Grid& grid : map.grids) gridIndexes_.emplace(&grid, index++);
  }

  void Write() {
    out_ << '{';
    WriteHead();
    WriteList("points", numbers_.Points(), [&](const Point* point) { return PointJson(*point); });
    WriteList("trails", map_.trails, [&](Trail& trail) { return TrailJson(trail); });
    const auto number = [&](const Point* point) { return numbers_.NumberOrNull(point); };
    WriteList("loosePoints", map_.loosePoints, number);
    WriteList("namelessPoints", map_.namelessPoints, number);
    WriteList("grids", map_.grids, [&](const Grid& grid) { return GridJson(grid); });
    WriteList("gridShades", map_.gridShades,
              [&](const GridShade& shade) { return ShadeJson(shade); });
    WriteField("ranges", Json::array());
    WriteField("intersections", Json::array());
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
  void WriteList(const char* key, List& list, ToJson toJson) {
    WriteKey(key);
    const char* separator = "[";
    for (auto& element : list) {
      out_ << separator << toJson(element).dump();
      separator = ", ";
    }
    out_ << (*separator == '[' ? "[]" : "]");
  }

  void WriteHead() {
    WriteField("fileName", ToUtf8(map_.fileName));
    WriteField("basis", map_.basis == nullptr ? Json(nullptr) : Json(ToUtf8(map_.basis->fileName)));
    WriteField("magneticDeviation", map_.magneticDeviation);
    WriteField("hasDeviation", (map_.flags & MapHasDeviation) != 0);
    WriteField("origin", numbers_.NumberOrNull(map_.origin));
    WriteField("contourEnabled", map_.contourEnabled);
    WriteField("contourInterval", map_.contourInterval);
    Json names = Json::array();
    for (const auto& name : map_.smName) names.push_back(TextOrNull(name));
    WriteField("smName", names);
    WriteField("comments", Texts(map_.comments));
    WriteField("credits", Texts(map_.credits));
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
            {"map", point.map == nullptr ? Json(nullptr) : Json(ToUtf8(point.map->fileName))},
            {"trail", TrailIndexOrNull(point.trail)},
            {"placed", (point.flags & PointPlaced) != 0},
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
              {"base", numbers_.NumberOrNull(reading.base)},
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

  Json TrailJson(Trail& trail) const {
    Json points = Json::array();
    for (const Point* point : trail.points) points.push_back(numbers_.NumberOrNull(point));
    return {{"name", TextOrNull(trail.name)},
            {"type", ToUtf8(trail.type)},
            {"focalAnimal", TextOrNull(trail.focalAnimal)},
            {"date", trail.date},
            {"width", trail.width},
            {"groupSize", trail.groupSize},
            {"color", trail.color},
            {"lineStyle", trail.lineStyle},
            {"labelMode", trail.labelMode},
            {"filled", trail.filled},
            {"fillPattern", trail.fillPattern},
            {"markStyle", trail.markStyle},
            {"hidden", (trail.flags & TrailHidden) != 0},
            {"note", TextOrNull(trail.note)},
            {"points", std::move(points)},
            {"metrics", MetricsJson(trail)}};
  }

  static Json MetricsJson(Trail& trail) {
    if (trail.points.empty()) return nullptr;
    const double pathLength = TrailPathLength(trail.points);
    MeasureTrail(trail);
    const bool closed = (trail.flags & TrailClosed) != 0;
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
    return {{"corner", numbers_.NumberOrNull(grid.corner)},
            {"cellSize", grid.cellSize},
            {"rows", grid.rows},
            {"columns", grid.columns},
            {"angle", grid.angle},
            {"rowStyle", grid.rowStyle},
            {"rowStart", grid.rowStart},
            {"columnStyle", grid.columnStyle},
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

  Map& map_;
  const LineMessages& messages_;
  std::ostream& out_;
  bool first_ = true;
  PointNumbers numbers_;
  std::unordered_map<const Trail*, size_t> trailIndexes_;
  std::unordered_map<const Grid*, size_t> gridIndexes_;
};

}  // namespace

void DumpMap(Map& map, const LineMessages& messages, std::ostream& out) {
  MapDump(map, messages, out).Write();
}

}  // namespace orvane
