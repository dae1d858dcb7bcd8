#include "view/orientation.h"

#include "base/number_text.h"
#include "view/view_transform.h"

#include <cmath>

namespace orvane {

namespace {

/// True and compass in pairs, as they are compared.
constexpr std::array<Orientation, 8> InPairs = {Orientation::TrueNorth, Orientation::CompassNorth,
                                                Orientation::TrueEast,  Orientation::CompassEast,
                                                Orientation::TrueSouth, Orientation::CompassSouth,
                                                Orientation::TrueWest,  Orientation::CompassWest};

constexpr int CompassFirst = static_cast<int>(Orientation::CompassNorth);

}  // namespace

bool IsCompassOrientation(Orientation orientation) {
  return orientation >= Orientation::CompassNorth && orientation <= Orientation::CompassWest;
}

double RotationOf(Orientation orientation, double magneticDeviation) {
  if (orientation == Orientation::Free) return 0;
  const int index = static_cast<int>(orientation);
  if (!IsCompassOrientation(orientation)) return index * 90.0;
  return (index - CompassFirst) * 90.0 + magneticDeviation;
}

Orientation OrientationOf(float rotation, double magneticDeviation) {
  for (const Orientation each : InPairs) {
    // A rotation is kept in 32 bits, so that is what a deviation must be cut to.
    if (rotation == static_cast<float>(RotationOf(each, magneticDeviation))) return each;
  }
  return Orientation::Free;
}

std::string RotationText(double rotation) { return FormatGeneral(rotation); }

std::optional<double> ParseRotation(std::string_view text) {
  if (text.empty()) return 0;
  const RealPrefix number = ReadReal(text);
  if (number.length == 0 || number.length != text.size()) return std::nullopt;
  if (!std::isfinite(number.value)) return std::nullopt;
  return std::fmod(number.value, 360.0);
}

void SetOrientation(MapWindow& view, double rotation) {
  if (!std::isfinite(rotation)) return;
  const LatLon middle = ScreenToMap(view, {view.centerColumn, view.centerRow});
  view.rotation = static_cast<float>(std::fmod(rotation, 360.0));
  CenterOn(view, middle);
}

}  // namespace orvane
