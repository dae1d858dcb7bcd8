#pragma once

#include "model/map.h"

#include <string>
#include <string_view>

namespace orvane {

/// The longest line that is read whole; a longer one is cut there and goes on as the next line.
constexpr size_t LongestMapLine = 399;

/// Includes nest at most this deep, and so do files that rest on each other while they are read.
constexpr size_t DeepestNesting = 64;

/// Reads one file into `map`: lines told by a leading letter, with fields between tabs. A fault is
/// told and the rest is kept.
/// \return false with "Can't open file %s" if the file can't be read; the map then stays as it was
bool ReadMapFile(Map& map, const std::string& path);

/// As `ReadMapFile`, with the content of a file in memory.
void ReadMapText(Map& map, std::string_view text);

}  // namespace orvane
