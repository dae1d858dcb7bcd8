#pragma once

#include "base/files.h"
#include "formats/format_module.h"
#include "model/map.h"
#include "output/json_writer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

class Messages;

/// A map as layers for other programs, in the formats of the module.

/// A coordinate system for layers.
struct LayerSystem {
  bool isUtm = false;        ///< the UTM zone of the middle of the map
  int number = Wgs84System;  ///< else the EPSG number
};

/// \param text  "wgs84", "utm" or "EPSG:N", in any case
/// \return nothing for any other text
std::optional<LayerSystem> ParseLayerSystem(std::string_view text);

/// \return true if the format takes places of WGS 84 only, as a GPS unit does
bool NeedsWgs84(LayerFormat format);
/// \return true if a file of the format holds one layer only
bool HoldsOneLayer(LayerFormat format);
/// The format as it is called in sentences, such as "GeoPackage".
std::string_view FormatName(LayerFormat format);
/// The ending of its files, such as ".gpkg".
std::string_view LayerEnding(LayerFormat format);

/// What to export.
struct LayerRequest {
  LayerFormat format = LayerFormat::GeoPackage;
  std::string path;                 ///< the file; see `LayerPath`
  std::vector<std::string> layers;  ///< as for `LayersMeant`
  LayerSystem system;
};

/// How an export ended.
struct LayerOutcome {
  bool complete = false;  ///< everything asked for was written
  std::string summary;    ///< a sentence on what was written; empty if nothing was
};

/// \return the file of a layer, in a format of one layer a file: "site-trails.csv" for the path
///         "site.csv"
std::string LayerPath(const std::string& path, std::string_view layer);

/// \return the files of a request, in the order of its layers: `request.path` itself, or one for each
///         layer (`ExportLayers`)
std::vector<std::string> LayerPaths(const LayerRequest& request);

/// The EPSG number of the UTM zone of the middle of a map's own placed points.
/// \return nothing if there are none, or if their middle is too near a pole for UTM
std::optional<int> UtmSystemOf(const Map& map);

/// \return the EPSG number of a system; nothing, after an error, if the map is in no UTM zone
std::optional<int> FindSystem(const Map& map, const LayerSystem& system);

/// Posts an error that says what to install if the module can't be used.
/// \return true if it can
bool HasModule(LayerFormat format, const LoadedModule& loaded, Messages& messages);

/// Writes layers of the map itself, without its basis. A format of one layer a file gives the file
/// `request.path` if one layer is asked for by name, and else one for each layer, `LayerPath`.
///
/// Files are written completely beside their names first and renamed at the end, so that none is
/// half-written. Failures give an error and leave all old files as they were. An export that is
/// cancelled (`Workspace::progress`) changes no file. Overwrites `PointVisited`; the map does not
/// change otherwise.
/// \param loaded  the module; without one an error says what to install
LayerOutcome ExportLayers(Map& map, const LayerRequest& request, const LoadedModule& loaded);

/// As above, with other calls instead of those of the system.
LayerOutcome ExportLayers(Map& map, const LayerRequest& request, const LoadedModule& loaded,
                          const FileSystem& system);

/// Writes one file to the sink instead, for a format of several layers or for one layer.
LayerOutcome PrintLayers(Map& map, const LayerRequest& request, const LoadedModule& loaded,
                         const TextSink& sink);

}  // namespace orvane
