#pragma once

#include "base/file_mark.h"
#include "model/map.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Recovery copies: a full save of a map with unsaved changes, apart from the user's file, in case
/// the program ends without asking. This file defines a copy and turns it into a map again;
/// `recovery_folder.h` stores the copies.

/// What a copy is of. Stored beside the copy as lines of text, each a key and a value.
struct RecoveryRecord {
  std::string fileName;        ///< whole path of the user's file; "Untitled" if there is none yet
  bool untitled = false;       ///< the map was made by New
  bool europeanDates = false;  ///< how dates were read when the copy was made
  /// Of the user's file before the changes; none if there was no file.
  std::optional<FileMark> original;
};

/// A copy found on the disk.
struct RecoveryCopy {
  RecoveryRecord record;
  std::string slot;          ///< its place in the `RecoveryFolder`
  std::int64_t written = 0;  ///< seconds since 1970
};

/// \return the file of the copy in a slot
std::string RecoveryCopyPath(const std::string& slot);

std::string RecoveryRecordText(const RecoveryRecord& record);
/// \return nothing if no file is named. Any other missing or damaged value has its default.
std::optional<RecoveryRecord> ParseRecoveryRecord(std::string_view text);

/// The record of a map as it is now. A relative file name is completed, since the next start can be
/// in another directory.
RecoveryRecord RecordOf(const Map& map);

/// The text of a copy: the map in full form. The basis has its whole path, so that the copy can be
/// read from anywhere.
std::string RecoveryText(Map& map);

/// Reads a copy as the map that it was: with the name of the user's file, which does not change,
/// with the basis of that file, and marked as changed. If a map of the workspace already has that
/// name, the copy becomes an untitled map with "(recovered)" in its name.
/// \return null, with a message, if the copy can't be read
Map* OpenRecoveryCopy(Workspace& workspace, const RecoveryCopy& copy);

/// Opens several copies, in an order that gives a map the recovered form of its basis if that is
/// among them. Of several copies of one file the first gets its name.
/// \return the maps in the order of the copies; null for one that can't be read
std::vector<Map*> OpenRecoveryCopies(Workspace& workspace, const std::vector<RecoveryCopy>& copies);

}  // namespace orvane
