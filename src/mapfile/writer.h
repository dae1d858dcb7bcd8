#pragma once

#include "base/files.h"
#include "model/map.h"

#include <string>
#include <string_view>

namespace orvane {

class Messages;

/// Writes what belongs to the map itself to a file, through a temporary file beside it that
/// replaces the old one only when it is complete.
/// \param full  also stores the solved places, so that the file opens without solving
/// Failures give an error: "Can't open %s for writing", or that the data file may be corrupt (the old one is then unchanged). Neither `fileName` nor `MapDirty` changes.
/// \return true if the file is complete
bool WriteMapFile(Map& map, const std::string& path, bool full);

/// As above, for a finished text.
/// \param shownName  the name of the file in messages
/// \param system     the calls that write the file; a test makes them fail
bool WriteMapText(Messages& messages, const std::string& path, std::string_view shownName,
                  std::string_view text, const FileSystem& system = SystemFiles());

/// The text that `WriteMapFile` writes. The form of the basis's name depends on the path.
std::string MapFileText(Map& map, const std::string& path, bool full);

}  // namespace orvane
