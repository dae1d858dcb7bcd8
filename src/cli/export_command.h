#pragma once

#include "base/messages.h"
#include "model/map.h"

#include <string>

namespace orvane {

/// What `export` writes: shapefiles into a folder, or else one file of GeoJSON.
struct ExportRequest {
  std::string directory;    ///< of the shapefiles; empty for none
  bool projection = false;  ///< a .prj and a .cpg beside each
  std::string geoJson;      ///< the file, or "-" for standard output; empty for none
};

/// Exports the map. \return an `ExitStatus`
int ExportCommand(Map& map, Messages& messages, const ExportRequest& request);

}  // namespace orvane
