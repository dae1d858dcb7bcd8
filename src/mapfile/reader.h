#pragma once

#include "model/map.h"

#include <string>
#include <string_view>

namespace orvane {

/// The longest line, in bytes; a longer one is cut there and continues as the next line.
constexpr size_t LongestMapLine = 399;

/// The depth to which includes are nested, and bases of bases while they are read.
constexpr size_t DeepestNesting = 64;

/// Reads one file into `map`: lines that begin with a tag letter, with fields between tabs. A fault
/// is reported and the rest is kept.
/// \return false with "Can't open file %s" if the file can't be read; the map then does not change
bool ReadMapFile(Map& map, const std::string& path);

/// As `ReadMapFile`, with the content of a file in memory.
void ReadMapText(Map& map, std::string_view text);

}  // namespace orvane
