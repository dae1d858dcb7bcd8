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

bool Export(Map& map, const ExportRequest& request) {
  if (request.geoJson == "-") return PrintGeoJson(map);
  if (!request.geoJson.empty()) return ExportGeoJson(map, request.geoJson);
  return ExportShapefiles(map, request.directory, {request.projection}).complete;
}

}  // namespace

int ExportCommand(Map& map, const ExportRequest& request) {
  return Export(map, request) ? ExitDone : ExitFailed;
}

}  // namespace orvane
