#pragma once

#include "elevation/profile.h"

#include <functional>
#include <string>

namespace orvane {

/// The samples of a profile as text: a heading and a line for each column, with tabs between the
/// fields. Distances and altitudes are in metres, places in degrees; the altitude is empty where it
/// is not known, and the label where there is none.
/// \param number  writes a number
/// \return UTF-8
std::string ProfileTable(const ElevationView& view,
                         const std::function<std::string(double)>& number);

}  // namespace orvane
