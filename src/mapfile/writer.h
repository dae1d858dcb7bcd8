#pragma once

#include "model/map.h"

#include <string>

namespace orvane {

/// Writes what the map holds of its own to a file, through a temporary file beside it that takes
/// the place of the old one only when it is whole.
/// \param full  also stores the solved places, so that the file opens without solving
/// Failures are told: "Can't open %s for writing", or that the data file may be corrupt (the old
/// one is then left as it was). Neither `fileName` nor `MapDirty` changes.
/// \return true if the file stands there whole
bool WriteMapFile(Map& map, const std::string& path, bool full);

/// The text that `WriteMapFile` writes. The path decides how the basis is named.
std::string MapFileText(Map& map, const std::string& path, bool full);

}  // namespace orvane
