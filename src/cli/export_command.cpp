#include "cli/export_command.h"

#include "cli/exit_status.h"
#include "cli/text_output.h"
#include "output/geojson.h"
#include "output/shapefiles.h"

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

bool Export(Map& map, Messages& messages, const ExportRequest& request) {
  if (request.geoJson == "-") return PrintGeoJson(map);
  if (!request.geoJson.empty()) return ExportGeoJson(map, request.geoJson);
  const ShapefileOutcome outcome = ExportShapefiles(map, request.directory, {request.projection});
  messages.Post(Severity::Note, outcome.summary);
  return outcome.complete;
}

}  // namespace

int ExportCommand(Map& map, Messages& messages, const ExportRequest& request) {
  return Export(map, messages, request) ? ExitDone : ExitFailed;
}

}  // namespace orvane
