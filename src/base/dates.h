#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// A date packed into one number: (year - 1900) * 372 + (month - 1) * 31 + (day - 1). It sorts like
/// a date, but the difference of two is not a number of days. 0 means "no date".
using PackedDate = int;

/// A date in its parts.
struct DateParts {
  int year = 0;
  int month = 0;  ///< 1 to 12
  int day = 0;    ///< 1 to 31
};

/// A date read at the front of a text.
struct DatePrefix {
  PackedDate date = 0;
  size_t length = 0;  ///< bytes used; 0 if the text does not begin with a digit
};

/// Packs a date. No range of month or day is checked.
PackedDate PackDate(int year, int month, int day);

/// Splits a packed date, rounding down, so that a date before 1900 comes out as it went in.
DateParts UnpackDate(PackedDate date);

/// Today's date by the local clock.
PackedDate LocalDate();

/// "year-month-day" without leading zeros; the empty text for 0.
std::string FormatDate(PackedDate date);

/// Three numbers separated by `-`, `/` or `.`. A first number above 31 is the year, and month and
/// day follow; below 100 it gets 1900 added. Otherwise the third number is the year: 80 to 99 get
/// 1900 added, below 80 2000; the first number is then the month and the second the day, or the
/// other way round with `europeanDates`. A missing number counts as 0 and no range is checked; a
/// result outside 32 bits is 0.
DatePrefix ParseDate(std::string_view text, bool europeanDates);

}  // namespace orvane
