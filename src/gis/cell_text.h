#pragma once

#include "formats/spreadsheets.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// Texts of the cells of spreadsheets that hold numbers, dates and times.

/// What a cell shows of its number, which counts days.
struct CellFormat {
  bool showsDate = false;
  bool showsTime = false;
  bool showsElapsed = false;  ///< the hours go on after 24
  bool showsEither = false;   ///< a date or a time, by the language of the program
};

/// Reads a number format such as "d/m/yy h:mm". Only its first section counts.
CellFormat ReadCellFormat(std::string_view code);

/// The format with a number of the program's own, up to 163.
CellFormat OwnCellFormat(int number);

/// A moment without a zone, to the second.
struct CellMoment {
  std::int64_t days = 0;  ///< since 1970-01-01
  int seconds = 0;        ///< of the day
};

/// \return the moment of a number of days since 1970-01-01, rounded to the second
CellMoment MomentOfDays(double days);

/// \return "2003-03-04"
std::string DateText(std::int64_t days);
/// \return "08:05", or "08:05:30"; more than 24 hours as they are
std::string ClockTextOf(std::int64_t seconds, ClockForm clock);

/// A date, a time of day or both, as ISO 8601 writes them.
struct IsoMoment {
  std::optional<std::int64_t> days;  ///< since 1970-01-01
  std::optional<int> seconds;        ///< of the day, rounded
};

/// Reads "2003-03-04", "2003-03-04T08:05:30.5", "2003-03-04T08:05" or "08:05". A zone at the end has no
/// effect: the clock is that of the cell. \return nothing for another form, or a day that does not exist
std::optional<IsoMoment> ReadIsoMoment(std::string_view text);
/// \return its text: what the format shows, or all that it has if the format shows neither
std::string TextOfIsoMoment(const IsoMoment& moment, const CellFormat& format, ClockForm clock);

/// \return a text in which each "_x0041_" is the character with that number in UTF-16
std::string WithoutEscapes(std::string_view text);

/// \return the text of a cell as GDAL gives those of `.xls` files: clocks in the form above, any other
///         unchanged
std::string XlsCellText(std::string_view text, ClockForm clock);

/// \return a number as a spreadsheet program shows it without a format: 15 digits
std::string NumberText(std::string_view stored);

}  // namespace orvane
