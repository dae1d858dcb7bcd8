#pragma once

#include <string>
#include <vector>

namespace orvane {

/// Completes a file that GDAL's driver KML has written, which is fast and leaves out a few things:
/// the document gets its name, folders get their names as they are and not as names of elements,
/// areas with an outline of one pixel are filled with its colour, half transparent, and lines follow
/// the ground.
/// \param folders  their names in the order of the file, UTF-8
/// \return false if the file can't be read or written
bool FinishKml(const std::string& path, const std::string& title,
               const std::vector<std::string>& folders);

}  // namespace orvane
