#include "base/times.h"

#include "base/number_text.h"
#include "base/text.h"

#include <cstdint>
#include <limits>

namespace orvane {

namespace {

constexpr int MinutesInHour = 60;
constexpr int Noon = 12 * MinutesInHour;

/// "%02d": a minus sign counts as one of the two places.
std::string TwoDigits(int value) {
  std::string digits = std::to_string(value);
  return digits.size() < 2 ? '0' + digits : digits;
}

std::string HoursAndMinutes(int minutes) {
  return TwoDigits(minutes / MinutesInHour) + ':' + TwoDigits(minutes % MinutesInHour);
}

}  // namespace

std::string FormatTime(int minutes) {
  return minutes == 0 ? std::string() : HoursAndMinutes(minutes);
}

std::string FormatTimeSpan(int from, int to) {
  return HoursAndMinutes(from) + '-' + HoursAndMinutes(to);
}

TimePrefix ParseTime(std::string_view text) {
  TimePrefix result;
  const IntegerPrefix first = ReadDigits(text);
  result.length = first.length;
  int64_t minutes = 0;
  if (result.length < text.size() && text[result.length] == ':') {
    ++result.length;
    const IntegerPrefix second = ReadDigits(text.substr(result.length));
    result.length += second.length;
    minutes = first.value * MinutesInHour + second.value;
  } else {
    minutes = first.value / 100 * MinutesInHour + first.value % 100;
    const std::string_view half = text.substr(result.length, 2);
    if (first.length > 0 && minutes < Noon && (SameName(half, "am") || SameName(half, "pm"))) {
      if (SameName(half, "pm")) minutes += Noon;
      result.length += half.size();
    }
  }
  if (minutes <= std::numeric_limits<int>::max()) result.minutes = static_cast<int>(minutes);
  return result;
}

}  // namespace orvane
