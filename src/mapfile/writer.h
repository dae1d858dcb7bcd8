#pragma once

#include "base/files.h"
#include "model/map.h"

#include <string>
#include <string_view>

namespace orvane {

class Messages;

/// Writes what the map holds of its own to a file, through a temporary file beside it that takes
/// the place of the old one only when it is whole.
/// \param full  also stores the solved places, so that the file opens without solving
/// Failures are told: "Can't open %s for writing", or that the data file may be corrupt (the old
/// one is then left as it was). Neither `fileName` nor `MapDirty` changes.
/// \return true if the file stands there whole
bool WriteMapFile(Map& map, const std::string& path, bool full);

/// As above, with the text of the map already made.
/// \param shownName  the name of the file in messages
/// \param system     what the file is written with; a test lets its calls fail
bool WriteMapText(Messages& messages, const std::string& path, std::string_view shownName,
                  std::string_view text, const FileSystem& system = SystemFiles());

/// The text that `WriteMapFile` writes. The path decides how the basis is named.
std::string MapFileText(Map& map, const std::string& path, bool full);

}  // namespace orvane
