#pragma once

#include "base/progress.h"
#include "model/map.h"
#include "output/shapefile_set.h"
#include "output/shapefiles.h"

#include <deque>
#include <string>
#include <vector>

namespace orvane {

/// The groups of shapefiles. Each function collects the content of its group from the map, opens
/// the files if there is any, and writes all records. `ShapefileExport` keeps the files until all
/// groups are written.

/// One run of the export.
class ShapefileExport {
 public:
  ShapefileExport(Map& map, std::string directory, bool projection, const FileSystem& system);

  Map& GetMap() { return map_; }
  PackedDate Today() const { return today_; }

  /// Opens the files of a group.
  /// \param failure  the message if they cannot be opened
  /// \return null if they cannot
  ShapefileSet* Open(const std::string& name, std::string_view failure);

  /// Called before each record. \return false once the user has cancelled
  bool GoesOn() { return steps_.Next(0); }

  /// Posts that a group has more than can be written.
  void NoteTooLarge(std::string_view what);

  /// Flushes all files to the disk and gives them their names, unless the user cancelled.
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
