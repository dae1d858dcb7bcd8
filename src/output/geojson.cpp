#include "output/geojson.h"

#include "base/messages.h"
#include "base/replaced_file.h"
#include "model/workspace.h"
#include "output/geojson_shapes.h"
#include "output/map_features.h"
#include "output/shapefiles.h"

namespace orvane {

namespace {

/// Features, after which the user can cancel.
constexpr unsigned FeaturesOfStep = 256;

/// Writes the value of a property.
struct ValueWriter {
  JsonWriter& json;

  void operator()(std::monostate) const { json.Null(); }
  void operator()(const std::string& text) const { json.Text(text); }
  void operator()(std::int64_t value) const { json.Whole(value); }
  void operator()(double value) const { json.Number(value); }
  void operator()(const std::vector<std::string>& texts) const {
    json.BeginArray();
    for (const std::string& text : texts) json.Text(text);
    json.EndArray();
  }
};

void PutFeature(JsonWriter& json, const MapFeature& feature) {
  json.NewLine();
  json.BeginObject();
  json.Key("type");
  json.Text("Feature");
  json.Key("properties");
  json.BeginObject();
  json.Key("kind");
  json.Text(feature.kind);
  for (const MapProperty& property : feature.properties) {
    json.Key(property.key);
    std::visit(ValueWriter{json}, property.value);
  }
  json.EndObject();
  json.Key("geometry");
  PutGeometry(json, feature.shape);
  json.EndObject();
}

}  // namespace

bool WriteGeoJson(Map& map, const TextSink& sink) {
  JsonWriter json(sink);
  json.BeginObject();
  json.Key("type");
  json.Text("FeatureCollection");
  json.Key("features");
  json.BeginArray();
  ProgressSteps steps(map.workspace->progress, WorkStage::Writing, 0, FeaturesOfStep);
  const auto put = [&](const MapFeature& feature) {
    PutFeature(json, feature);
    return steps.Next(0);
  };
  const bool goesOn = VisitPoints(map, put) && VisitStops(map, put) &&
                      VisitTrails(map, std::nullopt, put) && VisitRanges(map, put) &&
                      VisitClusters(map, put) && VisitOverlaps(map, put);
  if (!goesOn) return false;
  const bool cellsFit = !HasTooManyCells(map);
  if (!cellsFit) NoteTooManyCells(map);
  if (cellsFit && !VisitCells(map, put)) return false;
  json.EndArray();
  json.EndObject();
  return json.Finish() && cellsFit;
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
  if (written && IsCanceled(map.workspace->progress)) return false;
  if (!written || !file.Flush() || !file.TakeName()) {
    NoteError(messages, "Error while writing %s; the old file, if any, is unchanged", {path});
    return false;
  }
  FlushDirectoryOf(file.Path());
  return whole;
}

}  // namespace orvane
