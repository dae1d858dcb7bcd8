#pragma once

#include "mapfile/recovery.h"

#include <string>
#include <vector>

namespace orvane {

/// How many things of each kind a map has.
struct MapCounts {
  int trails = 0;   ///< without the follows
  int follows = 0;  ///< trails with a date or a focal animal
  int points = 0;
  int ranges = 0;
  int grids = 0;

  bool operator==(const MapCounts&) const = default;
};

/// The differences between a recovery copy and the user's file.
struct RecoveryDifferences {
  bool neverSaved = false;      ///< the map was made by New and has no file yet
  bool fileMissing = false;     ///< there is no file to compare with
  bool fileUnreadable = false;  ///< there is one, but it can't be read
  bool fileChanged = false;     ///< it is not the one from which the changes began
  MapCounts copy, file;
  /// Lines that only one of the two would have in a save. The order of lines, solved places and the
  /// date of the save do not count.
  int linesInCopy = 0, linesInFile = 0;
  bool orderDiffers = false;  ///< the same lines, in another order
};

/// Reads the copy, the file and their bases without messages and without any effect on open maps.
RecoveryDifferences CompareWithFile(const RecoveryCopy& copy);

/// Sentences for the user, such as "2 follows and 31 points more than in the file."
std::vector<std::string> DifferenceTexts(const RecoveryDifferences& differences);

/// True if the file exists, is unchanged, and has the same content as the copy.
bool SaysTheSame(const RecoveryDifferences& differences);

}  // namespace orvane
