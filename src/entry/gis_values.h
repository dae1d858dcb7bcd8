#pragma once

#include "base/messages.h"
#include "entry/gis_file.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// Values of the fields of a GPS file, for the readers of both forms.

/// \return `text` without the white space at its ends
std::string_view TrimSpace(std::string_view text);

/// \return the number, if the text is one apart from white space at its ends
std::optional<double> WholeReal(std::string_view text);

/// \return a name or a date that fits into a map file: control characters become blanks, and a text
///         of more than `LongestGisName` bytes is cut, between two characters if it is UTF-8
std::string CleanName(std::string_view text);

/// \return the date of a time such as "2004-02-18T08:00:00Z", as it is there
std::string DateOfTime(std::string_view time);

/// \return the moment of a time such as "2004-02-18T08:00:00Z", in milliseconds since 1970-01-01; without
///         a zone it is UTC as well. Nothing for other texts
std::optional<std::int64_t> UtcOfTime(std::string_view time);

/// \return the fix of three texts. A longitude below -180 has 360 added. A text that is not a
///         number
/// that a map can hold gives no altitude.
/// It is nothing unless latitude and longitude are numbers, within ±90 and ±540.
std::optional<GisFix> FixOf(std::string_view lat, std::string_view lon, std::string_view altitude);

/// Posts how many lines were left out because they have no position, if any were.
void NoteLeftOut(const LeftOutLines& leftOut, std::string_view name, Messages& messages);

/// Posts that the text holds NUL bytes, if it does.
void NoteDamage(std::string_view text, std::string_view name, Messages& messages);

}  // namespace orvane
