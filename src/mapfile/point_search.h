#pragma once

#include <string_view>

namespace orvane {

/// Where a map file names a point first: the first line that gives it a reading, or else the first
/// that mentions it, such as that of a point measured from it. Comments do not count. Names compare
/// without regard to case.
/// \param content  the whole file
/// \return the line, from 1, counted as the reader counts; 0 if no line names the point
size_t FirstLineOfPoint(std::string_view content, std::string_view name);

}  // namespace orvane
