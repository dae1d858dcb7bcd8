#pragma once

#include "reports/point_index.h"

#include <string>
#include <string_view>

namespace orvane {

/// Finding names in the Point Index: by typing their beginning, and by Find.

/// What is typed is kept for so long after the last key.
constexpr int TypingMilliseconds = 1000;
/// As many characters are kept.
constexpr size_t LongestTyped = 19;

/// What a key did to the text that is typed.
enum class TypingOutcome {
  Ignored,  ///< it is not for the search, or there was nothing to remove
  Full,     ///< the text is as long as it may be
  Changed
};

/// Adds a printing character to `typed`, or removes the last one with backspace (8) or delete (127).
TypingOutcome TypeCharacter(std::string& typed, char character);

/// \return the first entry that is not before a text in the order of names, or -1 if all are
int EntryFrom(const PointIndex& index, std::string_view typed);

/// \return the first entry with a name, in any case of letters, or -1
int EntryNamed(const PointIndex& index, std::string_view name);

/// The name that is offered for the saved index of a map: that of the map with the ending ".txt".
/// \param mapName  file name without its folder; empty for a map without a file
std::string PointIndexFileName(std::string_view mapName);

}  // namespace orvane
