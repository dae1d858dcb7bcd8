#pragma once

namespace orvane {

/// The altitude that means "none" in every record, also when widened to 64 bits.
constexpr float NoAltitude = -9999.0F;

/// True if `altitude` is one. The comparison is exact on purpose.
constexpr bool HasAltitude(float altitude) { return altitude != NoAltitude; }
constexpr bool HasAltitude(double altitude) { return altitude != static_cast<double>(NoAltitude); }

/// A place on the earth.
struct LatLon {
  double lat = 0;               ///< degrees, north positive
  double lon = 0;               ///< degrees, east positive
  float altitude = NoAltitude;  ///< metres, or `NoAltitude`

  /// Exact on purpose: places that differ in the last bit are different places.
  friend bool operator==(const LatLon&, const LatLon&) = default;
};

/// A place in a plane. On a `Point` the fields are also known as x (north), y (east), z.
struct Meters {
  double north = 0;             ///< metres
  double east = 0;              ///< metres
  float altitude = NoAltitude;  ///< metres, or `NoAltitude`
};

}  // namespace orvane
