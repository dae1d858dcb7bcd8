#pragma once

#include "base/messages.h"
#include "entry/gis_file.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The fields of a GPS file as values; shared by the readers of its two forms.

/// \return `text` without the white space at its ends
std::string_view TrimSpace(std::string_view text);

/// \return the number that `text` is, white space at its ends aside; nothing if it is none
std::optional<double> WholeReal(std::string_view text);

/// A name or a date fit for a map file: control characters become blanks, and a text of more than
/// `LongestGisName` bytes is cut, between two UTF-8 characters if it is UTF-8.
std::string CleanName(std::string_view text);

/// The fix of three texts. A longitude below -180 has 360 added. An altitude that is no number, or
/// that no map can hold, is none.
/// \return nothing unless latitude and longitude are numbers and mean a place: a latitude within
///         ±90, a longitude within ±540
std::optional<GisFix> FixOf(std::string_view lat, std::string_view lon, std::string_view altitude);

/// Posts how many lines were left out because they have no position, if any were.
void TellLeftOut(const LeftOutLines& leftOut, std::string_view name, Messages& messages);

/// Posts that the text holds NUL bytes, if it does.
void TellDamage(std::string_view text, std::string_view name, Messages& messages);

}  // namespace orvane
