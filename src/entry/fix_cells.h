#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The texts of the cells of a table of fixes as values. Cells are UTF-8.

/// \return `cell` without blanks, tabs and no-break spaces at both ends
std::string_view TrimCell(std::string_view cell);

/// \return true for a trimmed cell with a value: not empty and not one of `-`, `NA`, `N/A`, `NaN`
///         and `null` in any case
bool HasValue(std::string_view cell);

/// \return `text` with a blank for each control character, U+0000 to U+001F and U+007F
std::string WithoutControls(std::string_view text);

/// \return the number of a cell: decimal digits with an optional sign, one point or comma as decimal
///         mark, and an optional exponent; nothing for any other text, and for a number that
///         overflows
std::optional<double> CellNumber(std::string_view cell);

/// \return true for `true`, `yes`, `t`, `y` and `1`, in any case
bool IsYes(std::string_view cell);
/// \return true for `false`, `no`, `f`, `n` and `0`, in any case
bool IsNo(std::string_view cell);

/// A zone of UTM as a cell has it, such as "36M".
struct CellZone {
  int number = 0;   ///< 1 to 60
  char letter = 0;  ///< as in the cell; any letter
};
/// \return nothing unless the cell is a number from 1 to 60 and a letter, with at most one blank
///         between them
std::optional<CellZone> ReadCellZone(std::string_view cell);

/// A date as its cell has it.
struct CellDate {
  int year = 0;
  int first = 0;          ///< the month; of a date that is `either`, the first of the two numbers
  int second = 0;         ///< the day; or the second of the two numbers
  bool isEither = false;  ///< day and month have their order from the table as a whole
};

/// \return 1 if such a date shows that the first number is the day, 2 for the second; 0 if it can
///         be read either way, in no way, or in one way only by its form
int DayPlaceShownBy(const CellDate& date);

/// \return days since 1970-01-01; nothing for a date that the calendar lacks, or outside the years
///         1901 to 2100
std::optional<std::int64_t> DaysOf(const CellDate& date, bool dayFirst);

/// A time of day as its cell has it.
struct CellTime {
  std::int64_t milliseconds = 0;   ///< after midnight
  std::optional<int> zoneMinutes;  ///< of its own zone, east of UTC; none if the cell has none
};

/// Date and time of a row.
struct CellMoment {
  CellDate date;
  CellTime time;
};

/// \return milliseconds since 1970-01-01 in UTC; nothing for a date that `DaysOf` refuses. A time
///         without a zone is UTC.
std::optional<std::int64_t> UtcOf(const CellMoment& moment, bool dayFirst);

/// Which part of a row makes its moment unusable.
enum class MomentFault { None, Time, Date };

struct MomentReading {
  MomentFault fault = MomentFault::None;
  bool isInDateCell = false;  ///< the fault is in that of the date, or that one is missing
  CellMoment moment;          ///< if there is no fault
};

/// Reads date and time of a row: both in the cell of the time, or the time there and the date in
/// its own cell, where a time after it is ignored, or without a cell of the time both in that of
/// the date.
/// \param time  trimmed; empty for none
/// \param date  trimmed; empty for none
MomentReading ReadMoment(std::string_view time, std::string_view date);

/// \return the date with which `ReadMoment` would begin, whatever the time of day is like; nothing
///         if there is none
std::optional<CellDate> DateOfCells(std::string_view time, std::string_view date);

}  // namespace orvane
