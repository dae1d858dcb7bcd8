#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// A time of day read at the front of a text.
struct TimePrefix {
  int minutes = 0;    ///< minutes after midnight
  size_t length = 0;  ///< bytes used; 0 if the text begins with neither a digit nor `:`
};

/// "%02d:%02d" of minutes after midnight; the empty text for 0.
std::string FormatTime(int minutes);

/// "%02d:%02d-%02d:%02d" of two times in minutes after midnight.
std::string FormatTimeSpan(int from, int to);

/// A number followed by a colon is hours, and a second number the minutes; a number without a colon
/// is hours * 100 + minutes. If a plain number is less than 720 minutes, "am" after it is skipped,
/// and "pm" is skipped and adds 720, without regard to case. Without digits a number is 0; no range
/// is checked, but a result outside 32 bits is 0.
TimePrefix ParseTime(std::string_view text);

}  // namespace orvane
