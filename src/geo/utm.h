#pragma once

#include "geo/positions.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// UTM and MGRS coordinates, on the ellipsoid of WGS 84.

/// A place in a UTM zone.
struct UtmPlace {
  int zone = 1;         ///< 1 to 60
  char band = 'N';      ///< the band of latitude: C to X without I and O
  double easting = 0;   ///< metres
  double northing = 0;  ///< metres; south of the equator counted from 10000000 there
};

/// The bounds within which UTM coordinates are read, in metres.
constexpr double LeastUtmEasting = 100000;
constexpr double LargestUtmEasting = 900000;
constexpr double LargestUtmNorthing = 10000000;

/// The half of the earth that the letter of a zone means. C to M are bands of the southern half, N
/// to X of the northern. But many write S for the southern half: outside the northings of band S,
/// 3500000 to 4500000, it means that.
/// \param letter    in any case
/// \param northing  metres
/// \return true for north; nothing if no band has this letter
std::optional<bool> IsUtmNorthern(char letter, double northing);

/// \param zone      1 to 60
/// \param northern  false if the northing is counted from 10000000 at the equator
/// \param easting   metres, 100000 to 900000
/// \param northing  metres, 0 to 10000000
/// \return the place, without an altitude; nothing if a number is outside its bounds
std::optional<LatLon> UtmToPosition(int zone, bool northern, double easting, double northing);

/// The usual zone of a place, with the wider ones of Norway and Svalbard.
/// \return nothing south of 80 S, north of 84 N, and for numbers that are not finite; the longitude
///         may be any
std::optional<UtmPlace> PositionToUtm(const LatLon& place);

/// A place as text in whole metres: zone and band, easting, northing, as in "36M 501234 9876543".
/// \return nothing where `PositionToUtm` has nothing
std::optional<std::string> FormatUtm(const LatLon& place);

/// Reads a text of zone, letter, easting and northing, with white space around. Legal:
///   "36M 501234 9876543", "36 m 501234.5 9876543", "36M 501234, 9876543": UTM, metres as decimal
///   digits with an optional point, blanks or a comma between them;
///   "36MTV1234567890", "36M TV 12345 67890", "36MTV1267": MGRS, two letters of a square and one to
///   five digits each way; the place is the middle of the square that the digits name.
/// Illegal: places south of 80 S or north of 84 N, a zone or square without numbers, signs, exponents, squares that their zone lacks.
/// \return the place, without an altitude; nothing for any other text
std::optional<LatLon> ParseUtm(std::string_view text);

}  // namespace orvane
