#include "base/dates.h"

#include "base/number_text.h"

#include <array>
#include <cstdint>
#include <ctime>
#include <limits>
#include <utility>

namespace orvane {

namespace {

constexpr int FirstYear = 1900;
constexpr int DaysInMonth = 31;
constexpr int DaysInYear = 12 * DaysInMonth;

/// A first number above this is neither a day nor a month, so it is the year.
constexpr int64_t LargestDay = 31;

/// The century of a two-digit year at the end of a date.
constexpr int64_t FirstYearOf1900s = 80;

bool IsDateSeparator(char c) { return c == '-' || c == '/' || c == '.'; }

PackedDate PackWide(int64_t year, int64_t month, int64_t day) {
  const int64_t packed = (year - FirstYear) * DaysInYear + (month - 1) * DaysInMonth + (day - 1);
  if (packed < std::numeric_limits<PackedDate>::min() ||
      packed > std::numeric_limits<PackedDate>::max()) {
    return 0;
  }
  return static_cast<PackedDate>(packed);
}

}  // namespace

PackedDate PackDate(int year, int month, int day) { return PackWide(year, month, day); }

DateParts UnpackDate(PackedDate date) {
  int yearsSinceFirst = date / DaysInYear;
  int rest = date % DaysInYear;
  if (rest < 0) {
    rest += DaysInYear;
    --yearsSinceFirst;
  }
  return {yearsSinceFirst + FirstYear, rest / DaysInMonth + 1, rest % DaysInMonth + 1};
}

PackedDate LocalDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return PackDate(FirstYear + local.tm_year, local.tm_mon + 1, local.tm_mday);
}

std::string FormatDate(PackedDate date) {
  if (date == 0) return {};
  const DateParts parts = UnpackDate(date);
  return std::to_string(parts.year) + '-' + std::to_string(parts.month) + '-' +
         std::to_string(parts.day);
}

DatePrefix ParseDate(std::string_view text, bool europeanDates) {
  DatePrefix result;
  std::array<int64_t, 3> numbers{};
  for (size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) {
      if (result.length >= text.size() || !IsDateSeparator(text[result.length])) break;
      ++result.length;
    }
    const IntegerPrefix number = ReadDigits(text.substr(result.length));
    if (number.length == 0) break;
    numbers[i] = number.value;
    result.length += number.length;
  }
  if (result.length == 0) return result;

  auto [year, month, day] = numbers;
  if (year > LargestDay) {
    if (year < 100) year += FirstYear;
  } else {
    month = numbers[0];
    day = numbers[1];
    year = numbers[2];
    if (europeanDates) std::swap(month, day);
    if (year < FirstYearOf1900s) {
      year += 2000;
    } else if (year < 100) {
      year += FirstYear;
    }
  }
  result.date = PackWide(year, month, day);
  return result;
}

}  // namespace orvane
