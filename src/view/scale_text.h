#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

struct MapWindow;

/// What the box that asks for the scale shows at first: "1px = 2.5m", from 0.005 pixels per metre
/// on, else "1px = 0.4km".
/// \param scale  logical pixels per metre
std::string ScalePrompt(float scale);

/// Reads an answer of that box: "1px = 2.5m". "1px", blanks and "=" may come first; after the
/// number k (thousands) or c (hundredths) and then m, each large or small. Nothing may be left.
/// \return logical pixels per metre; nothing for any other text, and for a number that is not above
/// 0
std::optional<double> ParseScale(std::string_view answer);

/// Sets the scale, within its bounds; the place at the middle stays.
/// \param scale  logical pixels per metre, above 0
void ZoomToScale(MapWindow& view, double scale);

}  // namespace orvane
