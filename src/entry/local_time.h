#pragma once

#include "base/dates.h"

#include <cstdint>
#include <string>

namespace orvane {

/// Times by the clock of a site, in milliseconds since 1970-01-01 00:00 by that clock.

constexpr std::int64_t SecondMs = 1000;
constexpr std::int64_t MinuteMs = 60 * SecondMs;
constexpr std::int64_t DayMs = 24 * 60 * MinuteMs;

/// The quotient rounded down.
constexpr std::int64_t DividedDown(std::int64_t value, std::int64_t by) {
  return value / by - (value % by < 0 ? 1 : 0);
}
/// \return whole minutes since 1970-01-01
constexpr std::int64_t MinuteOfLocal(std::int64_t milliseconds) {
  return DividedDown(milliseconds, MinuteMs);
}

/// \return minutes east of UTC that are usual at a mean longitude: whole hours
int UsualOffset(double meanLon);

/// \return the date of a local time
PackedDate DateOfLocal(std::int64_t milliseconds);
/// \return the time of day of a local time as "hh:mm"
std::string ClockText(std::int64_t milliseconds);
/// \return "+08:00" for 480
std::string OffsetText(int minutes);

}  // namespace orvane
