#pragma once

#include "cli/line_messages.h"
#include "model/map.h"
#include "output/layer_export.h"

#include <optional>
#include <string>

namespace orvane {

/// What `export` writes: shapefiles into a folder, or else one file of GeoJSON, or else layers.
struct ExportRequest {
  std::string directory;                  ///< of the shapefiles; empty for none
  bool projection = false;                ///< a .prj and a .cpg beside each
  std::string geoJson;                    ///< the file, or "-" for standard output; empty for none
  std::optional<LayerRequest> layers;     ///< its path can be "-" for standard output
  std::optional<std::string> layerNames;  ///< as given, between commas
  std::optional<std::string> system;      ///< of the coordinates, as given
};

/// Exports the map. \return an `ExitStatus`
int ExportCommand(Map& map, LineMessages& messages, const ExportRequest& request);

}  // namespace orvane
