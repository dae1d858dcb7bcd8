#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// An area in the unit that suits its size: "12km^2" from 10 square kilometres, "1.2km^2" from one,
/// "12ha" from 10 hectares, "1.2ha" from one, "123m^2" below. Figures without a decimal are cut,
/// not rounded.
/// \param prefix        comes before the figure, such as "MCP area: "; may be empty
/// \param squareMeters  a value that is not a number prints as 0
std::string FormatArea(std::string_view prefix, double squareMeters);

}  // namespace orvane
