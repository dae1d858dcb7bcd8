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

/// Writes `text` to standard output. A failure shows in `FinishOutput`.
void Print(std::string_view text);

/// Ends the output of a run. If any of it could not be written, to a full disk for example, it says
/// so on standard error.
/// \param status  the `ExitStatus` of the command
/// \return the exit status of the program: `status`, or failure where that was done
int FinishOutput(int status);

}  // namespace orvane
