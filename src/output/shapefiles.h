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
/// Each group is a .shp, a .shx and a .dbf file. A group that would hold nothing leaves no files,
/// nor does it take away those of an earlier export. Texts stand in the .dbf byte for byte as in
/// the map.
///
/// Three things differ from the published layout, and stay since the files have always been so: all
/// headers tell a length that is 2 words too large; a point with an altitude carries it behind its
/// record, uncounted; and the records of `trails3d` are longer than they tell. A reader that goes
/// by the index finds every record.

/// The longest path of a file that is written, in bytes.
constexpr size_t LongestExportPath = 1024;

/// Cells of grids that are written, over all grids of a map, and likewise lines.
constexpr long MostExportedCells = 4000000;

/// What `ExportShapefiles` writes beside the three files of each group.
struct ShapefileOptions {
  /// A .prj file (WGS 84), so that a reader places the layers without asking, and a .cpg file that
  /// tells the encoding of the texts: UTF-8 if they are all that, else Latin-1.
  bool projection = false;
};

/// How an export ended.
struct ShapefileOutcome {
  bool complete = false;  ///< every group that holds something was written
  std::string summary;    ///< a sentence on what was written, for the user; empty if cancelled

  explicit operator bool() const { return complete; }
};

/// Writes the map itself, without its basis, into a folder. All files are written and brought to the
/// disk under temporary names first, and take their names group by group at the end, so that no
/// file stands there half-written.
///
/// A group whose files cannot be opened is told as an internal error, one that cannot be written
/// whole (a full disk) as an error; the others go on, and what stood in the place of that group is
/// left as it was. An export that is called off (`Workspace::progress`) changes no file; once the
/// first of them has its name the rest follow. Overwrites `PointVisited`; the map is not changed
/// otherwise.
/// \param directory  the folder, which must exist
ShapefileOutcome ExportShapefiles(Map& map, const std::string& directory,
                                  const ShapefileOptions& options = {});

/// As above, with other calls in the place of the system's. Those that write, flush and close are
/// called from several threads.
ShapefileOutcome ExportShapefiles(Map& map, const std::string& directory,
                                  const ShapefileOptions& options, const FileSystem& system);

}  // namespace orvane
