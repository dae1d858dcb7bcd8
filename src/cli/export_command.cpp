#include "cli/export_command.h"

#include "base/messages.h"
#include "cli/contours_command.h"
#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "output/geojson.h"
#include "output/shapefiles.h"
#include "panes/trail_tree.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace orvane {

namespace {

bool PrintGeoJson(Map& map) {
  return WriteGeoJson(map, [](std::string_view text) {
    Print(text);
    return std::ferror(stdout) == 0;
  });
}

/// Makes the contours that a layer of them needs. A map that asks for none has an empty layer,
/// unless the layer was asked for by name.
/// \return false after an error
bool MakeLayerContours(Map& map, LineMessages& messages, const LayerRequest& request) {
  const auto& names = request.layers;
  const bool isNamed = std::find(names.begin(), names.end(), "contours") != names.end();
  if (!names.empty() && !isNamed) return true;
  if (MapWithContours(&map) == nullptr && !isNamed) return true;
  return MakeContours(map, messages, {}) != nullptr;
}

bool ExportLayerFiles(Map& map, LineMessages& messages, const LayerRequest& request) {
  if (!MakeLayerContours(map, messages, request)) return false;
  const LayerOutcome outcome = request.path == "-" ? PrintLayers(map, request, LoadFormatModule(),
                                                                 [](std::string_view text) {
                                                                   Print(text);
                                                                   return std::ferror(stdout) == 0;
                                                                 })
                                                   : ExportLayers(map, request, LoadFormatModule());
  if (!outcome.summary.empty()) messages.Post(Severity::Note, outcome.summary);
  return outcome.complete;
}

bool Export(Map& map, LineMessages& messages, const ExportRequest& request) {
  if (request.layers) return ExportLayerFiles(map, messages, *request.layers);
  if (request.geoJson == "-") return PrintGeoJson(map);
  if (!request.geoJson.empty()) {
    if (!ExportGeoJson(map, request.geoJson)) return false;
    PostNote(messages, "Exported everything to %s", {request.geoJson});
    return true;
  }
  const ShapefileOutcome outcome = ExportShapefiles(map, request.directory, {request.projection});
  messages.Post(Severity::Note, outcome.summary);
  return outcome.complete;
}

}  // namespace

int ExportCommand(Map& map, LineMessages& messages, const ExportRequest& request) {
  return Export(map, messages, request) ? ExitDone : ExitFailed;
}

}  // namespace orvane
