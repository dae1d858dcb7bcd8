#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// Text of a map is 8-bit without a declared encoding: old files are Latin-1, new ones UTF-8, and a
/// file can have both. Text that leaves the program as UTF-8 passes through here.

/// The byte order mark that some programs put before the text of a file.
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

/// \return true if `text` is valid UTF-8: no overlong forms, no surrogates, nothing beyond the last
///         code point
bool IsValidUtf8(std::string_view text);

/// Cuts a text so that no UTF-8 character is split. Each byte that is not UTF-8 counts as one
/// character.
/// \return the longest beginning of `text` of at most `most` bytes
std::string_view CutText(std::string_view text, size_t most);

/// \return the text itself if it is valid UTF-8; any other text converted from Latin-1
std::string ToUtf8(std::string_view text);

}  // namespace orvane
