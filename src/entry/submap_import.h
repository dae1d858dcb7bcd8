#pragma once

#include "model/map.h"

#include <string>

namespace orvane {

/// Reads a further map file into a map that is open, and finishes the map: all that is new gets its
/// place. The map is not marked as changed. If the user cancels (`Workspace::progress`), what was
/// read so far stays, with a warning.
/// \return a sentence on what was read, for the user; empty, after an error, if the file cannot be
///         opened
std::string ImportSubmap(Map& map, const std::string& path);

}  // namespace orvane
