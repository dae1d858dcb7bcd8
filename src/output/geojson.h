#pragma once

#include "base/files.h"
#include "model/map.h"
#include "output/json_writer.h"

#include <string>

namespace orvane {

/// Writes the map itself, without its basis, with what was worked out of it, as one GeoJSON
/// FeatureCollection (RFC 7946), a line for each feature, in this order. The property `kind` tells
/// what each is:
///
///     point         named points, at a visible name of each
///     stop          placed points of trails that are named by a time
///     trail, area   trails as lines, filled trails as areas
///     range         the hull of each range
///     cluster       the hull of each cluster of a range, level by level
///     intersection  the overlap of two ranges
///     cell          each cell of each grid
///
/// Lengths are in metres, areas in square metres, times in minutes, dates in the form of ISO 8601.
/// Points that are not placed, and places that are not on earth, are left out; what then has no place
/// at all stands there without geometry. Texts are UTF-8. Grids of more than `MostExportedCells`
/// cells in all are told as an error and left out. Overwrites `PointVisited`; the map is not
/// changed otherwise.
/// \return false if the sink did not take all of it or if the cells were left out
bool WriteGeoJson(Map& map, const TextSink& sink);

/// The same into a file, which takes its name when it is whole. Failures are told as errors, and an
/// old file then stands as it was; without the cells the file is written.
bool ExportGeoJson(Map& map, const std::string& path);

/// As above, with other calls in the place of the system's.
bool ExportGeoJson(Map& map, const std::string& path, const FileSystem& system);

}  // namespace orvane
