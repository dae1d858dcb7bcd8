#pragma once

#include "mapfile/recovery.h"

#include <string>
#include <vector>

namespace orvane {

/// How much of each kind a map holds.
struct MapCounts {
  int trails = 0;   ///< without the follows
  int follows = 0;  ///< trails with a date or a focal animal
  int points = 0;
  int ranges = 0;
  int grids = 0;

  bool operator==(const MapCounts&) const = default;
};

/// What tells a recovery copy from the user's file.
struct RecoveryDifferences {
  bool neverSaved = false;      ///< the map was made by New and has no file yet
  bool fileMissing = false;     ///< there is no file to compare with
  bool fileUnreadable = false;  ///< there is one, but it can't be read
  bool fileChanged = false;     ///< it is not the one from which the changes began
  MapCounts copy, file;
  /// Lines that only one of the two has, as both would be saved. The order of lines, places that
  /// are worked out, and the date of the save do not count.
  int linesInCopy = 0, linesInFile = 0;
  bool orderDiffers = false;  ///< the same lines, in another order
};

/// Reads both, the file and what it rests on, without a message and without a trace in any open
/// map.
RecoveryDifferences CompareWithFile(const RecoveryCopy& copy);

/// In words for the user, a sentence each: "2 follows and 31 points more than in the file."
std::vector<std::string> DifferenceTexts(const RecoveryDifferences& differences);

/// True if the file is there, unchanged, and says the same as the copy.
bool SaysTheSame(const RecoveryDifferences& differences);

}  // namespace orvane
