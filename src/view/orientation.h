#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

struct MapWindow;

/// The ways up of a map that have a name, in the order of their buttons. The compass ones add the
/// magnetic deviation of the map.
enum class Orientation {
  TrueNorth,
  TrueEast,
  TrueSouth,
  TrueWest,
  CompassNorth,
  CompassEast,
  CompassSouth,
  CompassWest,
  Free,  ///< any other, by its number
};

/// The texts of their buttons.
constexpr std::array<const char*, 9> OrientationTexts = {
    "True North",   "True East",     "True South",   "True West",        "Compass North",
    "Compass East", "Compass South", "Compass West", "Free Orientation:"};

/// True for the four that follow the compass; without a deviation they say nothing of their own.
bool IsCompassOrientation(Orientation orientation);

/// \return the rotation in degrees of a named way up; 0 for `Free`
double RotationOf(Orientation orientation, double magneticDeviation);

/// The way up that a rotation is: true and compass north, true and compass east and so on are
/// compared in turn, and the first that is equal counts.
Orientation OrientationOf(float rotation, double magneticDeviation);

/// A rotation as the field of the box shows it.
std::string RotationText(double rotation);

/// Reads that field, which may hold one number and nothing after it; an empty one counts as 0.
/// \return degrees above -360 and below 360; nothing for any other text
std::optional<double> ParseRotation(std::string_view text);

/// Turns the view about the place at its middle.
/// \param rotation  degrees; a value that is not finite changes nothing
void SetOrientation(MapWindow& view, double rotation);

}  // namespace orvane
