#pragma once

#include "geo/positions.h"

#include <string>
#include <string_view>

namespace orvane {

/// How `ParseAngle` treats its text.
enum class AngleMode { Longitude = 0, Latitude = 1, Bearing = 2 };

/// How positions are shown; the settings of the View menu.
enum class CoordinateDisplay { Degrees = 0, Minutes = 1, Seconds = 2, Utm = 3 };

/// Bytes that are read as a degree sign, also as the UTF-8 character of that number. The first one
/// is also written.
constexpr char DegreeSign = '\xB0';
constexpr char OtherDegreeSign = '\xA1';

/// Reads an angle: degrees, with optional minutes and seconds, in the forms used in field
/// notebooks. It does not report errors; the caller checks where reading stopped.
/// \param text     one field; nothing is read past its end
/// \param length   if not null, receives the number of bytes used
/// \param runningDefault  if not null, degrees of the previous reading: bare minutes belong to its
///                 degree, and an angle without a hemisphere letter to its hemisphere; overwritten
///                 with the result
/// \return degrees; 0 if the text holds no number
double ParseAngle(std::string_view text, size_t* length, double* runningDefault, AngleMode mode);

/// A stricter reader, for a text that may be a name or a position: it must contain a hemisphere
/// letter or a degree, minute or second sign.
/// \param value   receives degrees; not written on failure
/// \param length  if not null, receives the bytes used; not written on failure
/// \return true if the text begins with a coordinate
bool ParseCoordinate(std::string_view text, bool latitude, double& value, size_t* length);

/// Reads a latitude and then a longitude; only white space may follow.
/// \param place  receives the two; the latitude is stored even if the longitude then fails
bool ParseLatLon(std::string_view text, LatLon& place);

/// A latitude or longitude in degrees as text: letter, degrees, degree sign (byte 0xB0), and
/// minutes and seconds as `display` asks. Whole degrees and minutes are truncated, not rounded. UTM
/// needs both, so with it they are written in degrees.
std::string FormatLatitude(double degrees, CoordinateDisplay display);
std::string FormatLongitude(double degrees, CoordinateDisplay display);

/// Latitude, one blank, longitude; or as `FormatUtm` writes it, where UTM is defined.
std::string FormatLatLon(const LatLon& place, CoordinateDisplay display);

/// With 5 decimals of a minute.
std::string FormatLatitudeFine(double degrees);
std::string FormatLongitudeFine(double degrees);

/// A length as text in cm, m or km by its size, with three significant digits.
std::string FormatDistance(double meters);

}  // namespace orvane
