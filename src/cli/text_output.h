#pragma once

#include "base/utf8.h"

#include <string>
#include <string_view>

namespace orvane {

/// A report holds texts of several sources, each in an encoding of its own. \return each field,
/// between tabs and line ends, as `ToUtf8` gives it
std::string FieldsToUtf8(std::string_view text);

/// \return `text` in UTF-8 as one line: a line feed is written as a backslash and an n
std::string OneLine(std::string_view text);

/// Writes `text` to the file `path`, or to standard output if it is "-".
/// \return false if that failed
bool WriteOutput(const std::string& path, std::string_view text);

}  // namespace orvane
