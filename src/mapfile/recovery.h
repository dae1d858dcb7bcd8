#pragma once

#include "base/file_mark.h"
#include "model/map.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Recovery copies: a full save of a map with unsaved changes, kept apart from the user's file, for
/// the case that the program ends without having asked. What a copy is, and how it becomes a map
/// again; where copies lie is told in `recovery_folder.h`.

/// What a copy stands for. It is kept beside the copy as lines of text, each a key and a value.
struct RecoveryRecord {
  std::string fileName;   ///< whole path of the user's file; "Untitled" where there is none yet
  bool untitled = false;  ///< the map was made by New
  bool europeanDates = false;  ///< how dates were read when the copy was made
  /// Of the user's file as the changes began from it; none if there was no such file.
  std::optional<FileMark> original;
};

/// A copy that was found on the disk.
struct RecoveryCopy {
  RecoveryRecord record;
  std::string slot;          ///< its place in the `RecoveryFolder`
  std::int64_t written = 0;  ///< seconds since 1970
};

/// \return the file of the copy that lies in a slot
std::string RecoveryCopyPath(const std::string& slot);

std::string RecoveryRecordText(const RecoveryRecord& record);
/// \return nothing if no file is named. What else is missing or damaged has its default.
std::optional<RecoveryRecord> ParseRecoveryRecord(std::string_view text);

/// The record of a map as it is now. A relative file name is made whole, since the next start may
/// be in another directory.
RecoveryRecord RecordOf(const Map& map);

/// The text of a copy: the map in full form. The basis is named with its whole path, so that the
/// copy can be read from anywhere.
std::string RecoveryText(Map& map);

/// Reads a copy as the map that it stands for: under the name of the user's file, which is not
/// touched, marked as changed, and resting on what that file rests on. If that name is taken by a
/// map of the workspace, the copy becomes an untitled map of a name with "(recovered)" in it.
/// \return null, with a message, if the copy can't be read
Map* OpenRecoveryCopy(Workspace& workspace, const RecoveryCopy& copy);

/// Opens several copies, in such an order that a map rests on the recovered form of its basis where
/// that is among them. Of copies of one file the first takes its name.
/// \return the maps, each in the place of its copy; null for one that can't be read
std::vector<Map*> OpenRecoveryCopies(Workspace& workspace, const std::vector<RecoveryCopy>& copies);

}  // namespace orvane
