#include "output/layers.h"

#include "base/text.h"
#include "base/utf8.h"
#include "model/workspace.h"
#include "output/map_features.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <memory>
#include <utility>

namespace orvane {

namespace {

/// Features, after which the user can cancel.
constexpr unsigned FeaturesOfStep = 256;

/// The fields of the counts of a map come where a table has this name.
constexpr std::string_view Counts = "*";

struct LayerTable {
  std::string_view name;
  std::vector<LayerField> fields;
  GeoKind kind;
};

std::vector<LayerField> TrailFields() {
  return {{"name", FieldType::Text},         {"type", FieldType::Text},
          {"focalAnimal", FieldType::Text},  {"date", FieldType::Date},
          {"groupSize", FieldType::Whole},   {"width", FieldType::Real},
          {"color", FieldType::Text},        {"pathLength", FieldType::Real},
          {"groundLength", FieldType::Real}, {"minAltitude", FieldType::Real},
          {"maxAltitude", FieldType::Real},  {"area", FieldType::Real},
          {"note", FieldType::Text}};
}

std::vector<LayerField> CellFields() {
  return {{"name", FieldType::Text},    {"grid", FieldType::Text},      {"row", FieldType::Whole},
          {"column", FieldType::Whole}, {"cellSize", FieldType::Whole}, {"color", FieldType::Text},
          {"shade", FieldType::Real}};
}

/// The layers in the order of `LayerNames`.
std::vector<LayerTable> LayerTables() {
  return {
      {"points",
       {{"kind", FieldType::Text},
        {"name", FieldType::Text},
        {"synonyms", FieldType::Text},
        {"type", FieldType::Text},
        {"focalAnimal", FieldType::Text},
        {"date", FieldType::Date},
        {"timeOfDay", FieldType::Whole},
        {"duration", FieldType::Whole},
        {std::string(Counts), FieldType::Whole},
        {"altitude", FieldType::Real},
        {"note", FieldType::Text}},
       GeoKind::Point},
      {"trails", TrailFields(), GeoKind::Line},
      {"areas", TrailFields(), GeoKind::Area},
      {"grids", CellFields(), GeoKind::Area},
      {"shades", CellFields(), GeoKind::Area},
      {"ranges",
       {{"name", FieldType::Text},
        {"area", FieldType::Real},
        {"gridArea", FieldType::Real},
        {"follows", FieldType::Whole},
        {"minutes", FieldType::Whole},
        {"meanFollowPath", FieldType::Whole},
        {"meanDailyPath", FieldType::Whole},
        {std::string(Counts), FieldType::Whole},
        {"note", FieldType::Text}},
       GeoKind::Area},
      {"clusters",
       {{"range", FieldType::Text}, {"level", FieldType::Whole}, {"area", FieldType::Real}},
       GeoKind::Area},
      {"overlaps",
       {{"name", FieldType::Text},
        {"rangeA", FieldType::Text},
        {"rangeB", FieldType::Text},
        {"area", FieldType::Real},
        {"bothCellsArea", FieldType::Real},
        {"minutesA", FieldType::Whole},
        {"minutesB", FieldType::Whole},
        {"timeShareA", FieldType::Real},
        {"timeShareB", FieldType::Real},
        {"cellShareA", FieldType::Real},
        {"cellShareB", FieldType::Real}},
       GeoKind::Area},
      {"contours",
       {{"name", FieldType::Text},
        {"type", FieldType::Text},
        {"method", FieldType::Text},
        {"level", FieldType::Real},
        {"closed", FieldType::Whole}},
       GeoKind::Line},
      {"estimates",
       {{"range", FieldType::Text},
        {"caption", FieldType::Text},
        {"method", FieldType::Text},
        {"percent", FieldType::Whole},
        {"area", FieldType::Real},
        {"bandwidth", FieldType::Real},
        {"fixes", FieldType::Whole}},
       GeoKind::Area},
  };
}

/// Visits the features of a layer.
using LayerVisitor = std::function<void(const MapFeatureTaker&)>;

/// Calls the taker for the features of a layer that are made while they are visited.
void VisitLayer(Map& map, std::string_view name, const MapFeatureTaker& take) {
  if (name == "points" && VisitPoints(map, take)) VisitStops(map, take);
  if (name == "trails") VisitTrails(map, false, take);
  if (name == "areas") VisitTrails(map, true, take);
  if (name == "grids") VisitCells(map, take);
  if (name == "shades") VisitShades(map, take);
  if (name == "ranges") VisitRanges(map, take);
  if (name == "clusters") VisitClusters(map, take);
  if (name == "overlaps") VisitOverlaps(map, take);
  if (name == "contours") VisitContours(map, take);
}

/// Estimates take long, so they are made once for all visits.
LayerVisitor VisitorOf(Map& map, std::string_view name) {
  if (name != "estimates") {
    return [&map, name](const MapFeatureTaker& take) { VisitLayer(map, name, take); };
  }
  auto made = std::make_shared<const std::vector<MapFeature>>(EstimateFeatures(map));
  return [made = std::move(made)](const MapFeatureTaker& take) {
    for (const MapFeature& feature : *made) {
      if (!take(feature)) return;
    }
  };
}

/// Makes the value of a field from that of a property.
struct ValueMaker {
  FieldValue operator()(std::monostate) const { return {}; }
  FieldValue operator()(const std::string& text) const { return ToUtf8(text); }
  FieldValue operator()(std::int64_t value) const { return value; }
  FieldValue operator()(double value) const {
    if (!std::isfinite(value)) return {};
    return value;
  }
  FieldValue operator()(const std::vector<std::string>& texts) const {
    std::string joined;
    for (const std::string& text : texts) joined += (joined.empty() ? "" : "; ") + ToUtf8(text);
    if (joined.empty()) return {};
    return joined;
  }
};

/// Fills in the feature of a layer from that of the map.
class FeatureMaker {
 public:
  explicit FeatureMaker(std::vector<LayerField> fields) : fields_(std::move(fields)) {}

  const LayerFeature& Make(const MapFeature& from) {
    made_.values.assign(fields_.size(), {});
    made_.title = ToUtf8(from.title);
    made_.note.clear();
    Put("kind", std::string(from.kind));
    for (const MapProperty& property : from.properties) {
      const FieldValue value = std::visit(ValueMaker{}, property.value);
      if (const auto* text = std::get_if<std::string>(&value)) {
        if (property.key == "note") made_.note = *text;
        if (property.key == "name" && made_.title.empty()) made_.title = *text;
      }
      Put(property.key, value);
    }
    made_.shape = from.shape;
    made_.group = ToUtf8(from.group);
    made_.color.reset();
    if (from.color != NoColor) made_.color = static_cast<std::uint32_t>(from.color) & 0xFFFFFFU;
    made_.filled = from.filled;
    made_.isMark = std::string_view(from.kind) == "point";
    return made_;
  }

 private:
  void Put(std::string_view key, const FieldValue& value) {
    for (size_t i = 0; i < fields_.size(); ++i) {
      if (fields_[i].name == key) made_.values[i] = value;
    }
  }

  std::vector<LayerField> fields_;
  LayerFeature made_;
};

/// \return the fields, with those of the counts in their place
std::vector<LayerField> WithCounts(const std::vector<LayerField>& fields,
                                   const std::array<std::string, 3>& names) {
  std::vector<LayerField> all;
  for (const LayerField& field : fields) {
    if (field.name != Counts) {
      all.push_back(field);
      continue;
    }
    for (const std::string& name : names) all.push_back({name, field.type});
  }
  return all;
}

/// Looks at all features, for what a file needs to know before the first.
void Survey(ExportedLayer& layer) {
  bool differ = false;
  layer.visit([&](const LayerFeature& feature) {
    ++layer.count;
    const GeoShape& shape = feature.shape;
    differ = differ || (shape.kind != GeoKind::None && shape.kind != layer.kind);
    layer.several = layer.several || shape.parts.size() > 1;
    ForEachPath(shape, [&](const GeoPath& path) {
      layer.hasAltitudes =
          layer.hasAltitudes || std::any_of(path.begin(), path.end(), [](const GeoPlace& place) {
            return !std::isnan(place.altitude);
          });
    });
    return true;
  });
  if (differ) layer.kind = GeoKind::None;
}

ExportedLayer DescribeLayer(Map& map, const LayerTable& table) {
  ExportedLayer layer;
  layer.name = table.name;
  layer.fields = WithCounts(table.fields, CountNames(map));
  layer.kind = table.kind;
  layer.visit = [&map, visit = VisitorOf(map, table.name),
                 fields = layer.fields](const FeatureTaker& take) {
    FeatureMaker maker(fields);
    ProgressSteps steps(map.workspace->progress, WorkStage::Writing, 0, FeaturesOfStep);
    visit([&](const MapFeature& feature) { return steps.Next(0) && take(maker.Make(feature)); });
  };
  if (layer.name == "grids" && HasTooManyCells(map)) {
    NoteTooManyCells(map);
    layer.visit = [](const FeatureTaker&) {};
    layer.isComplete = false;
  }
  Survey(layer);
  return layer;
}

}  // namespace

bool IsLayerName(std::string_view name) {
  return std::find(std::begin(LayerNames), std::end(LayerNames), name) != std::end(LayerNames);
}

std::vector<std::string_view> LayersMeant(const std::vector<std::string>& names) {
  if (names.empty()) return {std::begin(LayerNames), std::begin(LayerNames) + UnnamedLayers};
  std::vector<std::string_view> meant;
  std::copy_if(std::begin(LayerNames), std::end(LayerNames), std::back_inserter(meant),
               [&](std::string_view name) {
                 return std::find(names.begin(), names.end(), name) != names.end();
               });
  return meant;
}

std::vector<ExportedLayer> LayersOf(Map& map, const std::vector<std::string>& names) {
  const std::vector<std::string_view> meant = LayersMeant(names);
  std::vector<ExportedLayer> layers;
  for (const LayerTable& table : LayerTables()) {
    if (std::find(meant.begin(), meant.end(), table.name) == meant.end()) continue;
    layers.push_back(DescribeLayer(map, table));
  }
  return layers;
}

}  // namespace orvane
