#pragma once

#include <string_view>

namespace orvane {

/// A colour as 0xRRGGBB; -1 for none.
using Color = int;
constexpr Color NoColor = -1;

/// Reads one of the 23 colour names (without regard to case), "rgb(r,g,b)", "rgb(r%,g%,b%)",
/// "r g b" in decimal or hexadecimal, or 3, 6 or 12 hexadecimal digits with or without `#`.
/// \return 0xRRGGBB, or -1 if the text is none of these
Color ParseColor(std::string_view text);

/// \return the first name with that value, or null; -1 has none
const char* ColorName(Color color);

}  // namespace orvane
