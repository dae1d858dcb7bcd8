#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// \return true if `text` is valid UTF-8
bool IsValidUtf8(std::string_view text);

/// Map text is 8-bit and may be in either encoding. \return a text that is valid UTF-8 as it is, any
/// other read as Latin-1, in UTF-8
std::string ToUtf8(std::string_view text);

/// A report holds texts of several sources, each in an encoding of its own. \return each field,
/// between tabs and line ends, as `ToUtf8` gives it
std::string FieldsToUtf8(std::string_view text);

/// \return `text` in UTF-8 as one line: a line feed is written as a backslash and an n
std::string OneLine(std::string_view text);

/// Writes `text` to the file `path`, or to standard output if it is "-".
/// \return false if that failed
bool WriteOutput(const std::string& path, std::string_view text);

}  // namespace orvane
