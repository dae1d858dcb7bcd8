#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// Text of a map is 8-bit of no declared encoding: old files are Latin-1, new ones UTF-8, and a file
/// may hold both. What leaves the program as UTF-8 passes through here.

/// \return true if `text` is valid UTF-8: no overlong forms, no surrogates, nothing beyond the last
///         code point
bool IsValidUtf8(std::string_view text);

/// Cuts a text so that no UTF-8 character is split. Bytes that are not UTF-8 count as characters of
/// their own.
/// \return the longest beginning of `text` of at most `most` bytes
std::string_view CutText(std::string_view text, size_t most);

/// \return a text that is valid UTF-8 as it is, any other read as Latin-1, in UTF-8
std::string ToUtf8(std::string_view text);

}  // namespace orvane
