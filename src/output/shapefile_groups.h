#pragma once

#include "base/progress.h"
#include "model/map.h"
#include "output/shapefile_set.h"
#include "output/shapefiles.h"

#include <deque>
#include <string>
#include <vector>

namespace orvane {

/// The groups of shapefiles. Each function looks over the map for what its group holds, opens the
/// files if it holds anything, and puts all records; `ShapefileExport` keeps the files until all
/// groups are there.

/// One run of the export.
class ShapefileExport {
 public:
  ShapefileExport(Map& map, std::string directory, bool projection, const FileSystem& system);

  Map& GetMap() { return map_; }
  PackedDate Today() const { return today_; }

  /// Opens the files of a group.
  /// \param failure  the message if they do not open
  /// \return null if they do not
  ShapefileSet* Open(const std::string& name, std::string_view failure);

  /// Asked before each record. \return false once the export is called off
  bool GoesOn() { return steps_.Next(0); }

  /// Tells that a group holds more than is written.
  void TellTooLarge(std::string_view what);

  /// Brings all files to the disk and lets them take their names, unless the export was called off.
  ShapefileOutcome Finish();

 private:
  std::string Summary(const std::vector<ShapefileSet*>& written) const;

  Map& map_;
  std::string directory_;
  bool projection_;
  const FileSystem& system_;
  PackedDate today_;
  std::deque<ShapefileSet> sets_;
  ProgressSteps steps_;
  bool done_ = true;
};

void PutPointShapes(ShapefileExport& shapes);
void PutTrailShapes(ShapefileExport& shapes);
void PutTrailShapesWithAltitude(ShapefileExport& shapes);
void PutAreaShapes(ShapefileExport& shapes);
/// Cells, and then the lines.
void PutGridShapes(ShapefileExport& shapes);

}  // namespace orvane
