#pragma once

#include "base/files.h"
#include "model/map.h"

#include <cstddef>
#include <string>

namespace orvane {

/// A map as ESRI shapefiles, for a geographic information system. Places are plain latitude and
/// longitude in degrees, X the longitude and Y the latitude; nothing is projected.
///
///     points     Point      each visible name of each point that the map names
///     trails     PolyLine   named trails that are not filled
///     trails3d   PolyLineZ  the same, if any of their points has an altitude
///     areas      Polygon    named trails that are filled
///     grids      Polygon    each cell of each grid
///     gridlins   PolyLine   each row and column of each grid
///
/// Each group is a .shp, a .shx and a .dbf file. An empty group writes no files and leaves those of
/// an earlier export. Texts are in the .dbf byte for byte as in the map.
///
/// Three things differ from the published layout, on purpose: the length in all headers is 2 words
/// too large; a point with an altitude has it after its record, uncounted; and the records of
/// `trails3d` are longer than their headers say. A reader that follows the index finds every
/// record.

/// The longest path of a file that is written, in bytes.
constexpr size_t LongestExportPath = 1024;

/// The most cells of all grids of a map that are written, and likewise lines.
constexpr long MostExportedCells = 4000000;

/// What `ExportShapefiles` writes besides the three files of each group.
struct ShapefileOptions {
  /// A .prj file (WGS 84), so that a reader places the layers without asking, and a .cpg file that
  /// names the encoding of the texts: UTF-8 if all are valid UTF-8, else Latin-1.
  bool projection = false;
};

/// How an export ended.
struct ShapefileOutcome {
  bool complete = false;  ///< every group that holds something was written
  std::string summary;    ///< a sentence on what was written, for the user; empty if cancelled

  explicit operator bool() const { return complete; }
};

/// Writes the map itself, without its basis, into a folder. All files are written and flushed under
/// temporary names first, and renamed group by group at the end, so that no file is half-written.
///
/// A group whose files cannot be opened gives an internal error, one that cannot be written
/// completely (a full disk) an error. The other groups go on, and the old files of that group stay.
/// An export that is cancelled (`Workspace::progress`) changes no file; once the first has its name
/// the rest follow. Overwrites `PointVisited`; the map does not change otherwise.
/// \param directory  the folder, which must exist
ShapefileOutcome ExportShapefiles(Map& map, const std::string& directory,
                                  const ShapefileOptions& options = {});

/// As above, with other calls instead of those of the system. Those that write, flush and close are
/// called from several threads.
ShapefileOutcome ExportShapefiles(Map& map, const std::string& directory,
                                  const ShapefileOptions& options, const FileSystem& system);

}  // namespace orvane
