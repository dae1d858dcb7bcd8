#pragma once

#include <string_view>

namespace orvane {

/// A colour as 0xRRGGBB; -1 for none.
using Color = int;
constexpr Color NoColor = -1;

/// Reads one of the 23 colour names (without regard to case), "rgb(r,g,b)", "rgb(r%,g%,b%)", "r g
/// b" in decimal or else in hexadecimal, or 3, 6 or 12 hexadecimal digits with or without `#`. The
/// components of the forms with three numbers are clamped to 0 to 255; white space is allowed
/// before each number, and whatever follows the third one is ignored, so "12 34 5f" is decimal and
/// has a blue of 5.
/// \return 0xRRGGBB, or -1 if the text is none of these
Color ParseColor(std::string_view text);

/// \return the first name with that value, or null; -1 has no name
const char* ColorName(Color color);

}  // namespace orvane
