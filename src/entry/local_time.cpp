#include "entry/local_time.h"

#include <chrono>
#include <cmath>
#include <cstdlib>

namespace orvane {

namespace {

constexpr int MinutesInHour = 60;

}  // namespace

int UsualOffset(double meanLon) {
  constexpr double DegreesOfHour = 15;
  return static_cast<int>(std::floor(meanLon / DegreesOfHour + 0.5)) * MinutesInHour;
}

PackedDate DateOfLocal(std::int64_t milliseconds) {
  using namespace std::chrono;
  const sys_days day{days(DividedDown(milliseconds, DayMs))};
  const year_month_day date(day);
  return PackDate(int{date.year()}, static_cast<int>(unsigned{date.month()}),
                  static_cast<int>(unsigned{date.day()}));
}

std::string ClockText(std::int64_t milliseconds) {
  const auto minutes = static_cast<int>(DividedDown(milliseconds, MinuteMs) -
                                        DividedDown(milliseconds, DayMs) * 24 * 60);
  const auto digit = [](int number) { return static_cast<char>('0' + number); };
  const int hour = minutes / MinutesInHour;
  const int minute = minutes % MinutesInHour;
  return {digit(hour / 10), digit(hour % 10), ':', digit(minute / 10), digit(minute % 10)};
}

std::string OffsetText(int minutes) {
  return (minutes < 0 ? '-' : '+') + ClockText(std::abs(minutes) * MinuteMs);
}

}  // namespace orvane
