#pragma once

#include "base/files.h"
#include "model/map.h"
#include "output/json_writer.h"

#include <string>

namespace orvane {

/// Writes the map itself, without its basis, and its analyses as one GeoJSON FeatureCollection
/// (RFC 7946), one line per feature, in this order. The property `kind` says what each is:
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
/// Points without a place, and places that are not on earth, are left out; a feature without any
/// place has no geometry. Texts are UTF-8. If the grids have more than `MostExportedCells` cells in
/// all they are left out, with an error. Overwrites `PointVisited`; the map does not change
/// otherwise.
/// \return false if the sink did not take everything, if the cells were left out, or if it was
///         cancelled (`Workspace::progress`); the text then ends early
bool WriteGeoJson(Map& map, const TextSink& sink);

/// Writes the same to a file, which replaces an old one only when it is complete. Failures give an
/// error and keep the old file; without the cells the file is written. A cancelled export
/// changes no file.
bool ExportGeoJson(Map& map, const std::string& path);

/// As above, with other calls instead of those of the system.
bool ExportGeoJson(Map& map, const std::string& path, const FileSystem& system);

}  // namespace orvane
