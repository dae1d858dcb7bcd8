#include "entry/fix_cells.h"

#include "base/number_text.h"
#include "base/text.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>

namespace orvane {

namespace {

constexpr std::string_view NoBreakSpace = "\xC2\xA0";

bool IsLetter(char c) { return FoldByte(c) >= 'a' && FoldByte(c) <= 'z'; }

template <size_t N>
bool IsOneOf(std::string_view cell, const std::string_view (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words),
                     [&](std::string_view word) { return SameName(cell, word); });
}

/// Takes a cell apart from its front.
class CellReader {
 public:
  explicit CellReader(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }
  char Next() const { return rest_.empty() ? '\0' : rest_.front(); }
  std::string_view Rest() const { return rest_; }

  bool Take(char c) {
    if (Next() != c || AtEnd()) return false;
    rest_.remove_prefix(1);
    return true;
  }
  /// Takes one of `set`. \return it, or 0
  char TakeOneOf(std::string_view set) {
    if (AtEnd() || set.find(Next()) == std::string_view::npos) return '\0';
    const char c = Next();
    rest_.remove_prefix(1);
    return c;
  }
  /// Takes a word in any case.
  bool TakeWord(std::string_view word) {
    if (!SameName(rest_.substr(0, word.size()), word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  bool TakeBlanks() {
    const size_t before = rest_.size();
    while (Next() == ' ') rest_.remove_prefix(1);
    return rest_.size() < before;
  }
  std::string_view TakeDigits() { return TakeWhile(IsDigit); }
  std::string_view TakeLetters() { return TakeWhile(IsLetter); }

 private:
  std::string_view TakeWhile(bool (*isIn)(char)) {
    size_t length = 0;
    while (length < rest_.size() && isIn(rest_[length])) ++length;
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  std::string_view rest_;
};

/// \param digits  at most four
int NumberOf(std::string_view digits) { return ReadInt32(digits); }

bool HasOneOrTwo(std::string_view digits) { return digits.size() == 1 || digits.size() == 2; }

/// A year that is last: with four digits, or with two.
std::optional<int> LastYear(std::string_view digits) {
  constexpr int FirstOf1900s = 80;
  const int year = NumberOf(digits.substr(0, 4));
  if (digits.size() == 4) return year;
  if (digits.size() != 2) return std::nullopt;
  return year + (year >= FirstOf1900s ? 1900 : 2000);
}

/// \return 1 to 12 for a name of a month or its first three letters; 0 for any other word
int MonthOf(std::string_view word) {
  static constexpr std::string_view Names[] = {"january",   "february", "march",    "april",
                                               "may",       "june",     "july",     "august",
                                               "september", "october",  "november", "december"};
  constexpr size_t Short = 3;
  for (size_t i = 0; i < std::size(Names); ++i) {
    if (SameName(word, Names[i]) || SameName(word, Names[i].substr(0, Short))) {
      return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

/// What follows the day and a separator: "Mar-2020".
std::optional<CellDate> ReadNamedMonth(CellReader& reader, std::string_view day) {
  if (!HasOneOrTwo(day)) return std::nullopt;
  const int month = MonthOf(reader.TakeLetters());
  if (month == 0) return std::nullopt;
  if (reader.TakeOneOf("-/.") == '\0' && !reader.TakeBlanks()) return std::nullopt;
  const auto year = LastYear(reader.TakeDigits());
  if (!year) return std::nullopt;
  return CellDate{*year, month, NumberOf(day), false};
}

/// Reads a date at the front of a cell.
std::optional<CellDate> ReadDate(CellReader& reader) {
  constexpr size_t YearDigits = 4;
  const std::string_view first = reader.TakeDigits();
  if (first.empty()) return std::nullopt;
  const char separator = reader.TakeOneOf("-/.");
  if (separator == '\0' && !reader.TakeBlanks()) return std::nullopt;
  if (IsLetter(reader.Next())) return ReadNamedMonth(reader, first);
  const std::string_view second = reader.TakeDigits();
  if (separator == '\0' || !HasOneOrTwo(second) || !reader.Take(separator)) return std::nullopt;
  const std::string_view third = reader.TakeDigits();
  if (first.size() == YearDigits) {
    if (!HasOneOrTwo(third)) return std::nullopt;
    return CellDate{NumberOf(first), NumberOf(second), NumberOf(third), false};
  }
  const auto year = LastYear(third);
  if (!HasOneOrTwo(first) || !year) return std::nullopt;
  if (separator == '.') return CellDate{*year, NumberOf(second), NumberOf(first), false};
  return CellDate{*year, NumberOf(first), NumberOf(second), true};
}

/// Reads a zone that fills the rest of a cell. \return false if the rest is not one
bool ReadZone(CellReader& reader, CellTime& time) {
  constexpr int MinutesInHour = 60;
  constexpr int MostMinutes = 14 * MinutesInHour;
  if (reader.TakeWord("Z") || reader.TakeWord("UTC") || reader.TakeWord("GMT")) {
    time.zoneMinutes = 0;
    return reader.AtEnd();
  }
  const char sign = reader.TakeOneOf("+-");
  if (sign == '\0') return false;
  const std::string_view digits = reader.TakeDigits();
  std::string_view hours = digits;
  std::string_view minutes;
  if (reader.Take(':')) {
    minutes = reader.TakeDigits();
    if (minutes.size() != 2) return false;
  } else if (digits.size() == 4) {
    hours = digits.substr(0, 2);
    minutes = digits.substr(2);
  }
  if (hours.size() != 2 || !reader.AtEnd()) return false;
  const int cut = NumberOf(minutes);
  const int whole = NumberOf(hours) * MinutesInHour + cut;
  if (cut >= MinutesInHour || whole > MostMinutes) return false;
  time.zoneMinutes = sign == '-' ? -whole : whole;
  return true;
}

/// The fraction of a second, cut to milliseconds. \return nothing without digits
std::optional<int> ReadFraction(CellReader& reader) {
  const std::string_view digits = reader.TakeDigits();
  if (digits.empty()) return std::nullopt;
  int milliseconds = 0;
  for (size_t i = 0; i < 3; ++i) {
    milliseconds = milliseconds * 10 + (i < digits.size() ? digits[i] - '0' : 0);
  }
  return milliseconds;
}

enum class HalfOfDay : std::uint8_t { Unmarked, Am, Pm };

HalfOfDay TakeHalfOfDay(CellReader& reader) {
  if (reader.TakeWord("AM")) return HalfOfDay::Am;
  return reader.TakeWord("PM") ? HalfOfDay::Pm : HalfOfDay::Unmarked;
}

/// The hour of 0 to 23 that the digits mean.
std::optional<int> HourOf(int hour, HalfOfDay half) {
  constexpr int Noon = 12;
  if (half == HalfOfDay::Unmarked) return hour < 2 * Noon ? std::optional(hour) : std::nullopt;
  if (hour < 1 || hour > Noon) return std::nullopt;
  return hour % Noon + (half == HalfOfDay::Pm ? Noon : 0);
}

/// Reads a time of day that fills the rest of a cell.
std::optional<CellTime> ReadTimeOfDay(CellReader& reader) {
  constexpr int Sixty = 60;
  const std::string_view hours = reader.TakeDigits();
  if (!HasOneOrTwo(hours) || !reader.Take(':')) return std::nullopt;
  const std::string_view minutes = reader.TakeDigits();
  if (minutes.size() != 2) return std::nullopt;
  std::string_view seconds = "00";
  int fraction = 0;
  if (reader.Take(':')) {
    seconds = reader.TakeDigits();
    if (seconds.size() != 2) return std::nullopt;
    if (reader.TakeOneOf(".,") != '\0') {
      const auto read = ReadFraction(reader);
      if (!read) return std::nullopt;
      fraction = *read;
    }
  }
  reader.TakeBlanks();
  const HalfOfDay half = TakeHalfOfDay(reader);
  reader.TakeBlanks();
  const auto hour = HourOf(NumberOf(hours), half);
  const int minute = NumberOf(minutes);
  const int second = NumberOf(seconds);
  if (!hour || minute >= Sixty || second >= Sixty) return std::nullopt;
  CellTime time;
  time.milliseconds = ((std::int64_t{*hour} * Sixty + minute) * Sixty + second) * 1000 + fraction;
  if (!reader.AtEnd() && !ReadZone(reader, time)) return std::nullopt;
  return time;
}

/// Takes what is between a date and its time of day.
bool TakeGap(CellReader& reader) { return reader.Take('T') || reader.TakeBlanks(); }

/// Reads the cell of a date whose time is in another cell.
MomentReading ReadDateCell(std::string_view cell, const CellTime& time) {
  CellReader reader(cell);
  const auto date = ReadDate(reader);
  const bool isWhole =
      date && (reader.AtEnd() || (TakeGap(reader) && ReadTimeOfDay(reader).has_value()));
  if (!isWhole) return {MomentFault::Date, true, {}};
  return {MomentFault::None, false, {*date, time}};
}

}  // namespace

std::string_view TrimCell(std::string_view cell) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  while (!cell.empty()) {
    if (isBlank(cell.front())) {
      cell.remove_prefix(1);
    } else if (isBlank(cell.back())) {
      cell.remove_suffix(1);
    } else if (cell.starts_with(NoBreakSpace)) {
      cell.remove_prefix(NoBreakSpace.size());
    } else if (cell.ends_with(NoBreakSpace)) {
      cell.remove_suffix(NoBreakSpace.size());
    } else {
      break;
    }
  }
  return cell;
}

bool HasValue(std::string_view cell) {
  static constexpr std::string_view None[] = {"-", "NA", "N/A", "NaN", "null"};
  constexpr size_t Longest = 4;
  return !cell.empty() && (cell.size() > Longest || !IsOneOf(cell, None));
}

std::string WithoutControls(std::string_view text) {
  std::string clean(text);
  for (char& c : clean) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  }
  return clean;
}

std::optional<double> CellNumber(std::string_view cell) {
  CellReader reader(cell);
  reader.TakeOneOf("+-");
  size_t digits = reader.TakeDigits().size();
  const char mark = reader.TakeOneOf(".,");
  if (mark != '\0') digits += reader.TakeDigits().size();
  if (digits == 0) return std::nullopt;
  if (reader.TakeOneOf("eE") != '\0') {
    reader.TakeOneOf("+-");
    if (reader.TakeDigits().empty()) return std::nullopt;
  }
  if (!reader.AtEnd()) return std::nullopt;
  RealPrefix read;
  if (mark == ',') {
    std::string text(cell);
    text[text.find(',')] = '.';
    read = ReadReal(text);
  } else {
    read = ReadReal(cell);
  }
  if (read.length != cell.size()) return std::nullopt;
  return read.value;
}

bool IsYes(std::string_view cell) {
  static constexpr std::string_view Words[] = {"true", "yes", "t", "y", "1"};
  return IsOneOf(cell, Words);
}

bool IsNo(std::string_view cell) {
  static constexpr std::string_view Words[] = {"false", "no", "f", "n", "0"};
  return IsOneOf(cell, Words);
}

std::optional<CellZone> ReadCellZone(std::string_view cell) {
  constexpr int LastZone = 60;
  CellReader reader(cell);
  const std::string_view digits = reader.TakeDigits();
  reader.Take(' ');
  const std::string_view letter = reader.TakeLetters();
  if (!HasOneOrTwo(digits) || letter.size() != 1 || !reader.AtEnd()) return std::nullopt;
  const int number = NumberOf(digits);
  if (number < 1 || number > LastZone) return std::nullopt;
  return CellZone{number, letter.front()};
}

int DayPlaceShownBy(const CellDate& date) {
  constexpr int Months = 12;
  constexpr int LongestMonth = 31;
  if (!date.isEither) return 0;
  const auto isMonth = [](int number) { return number >= 1 && number <= Months; };
  const auto isOnlyDay = [](int number) { return number > Months && number <= LongestMonth; };
  if (isOnlyDay(date.first) && isMonth(date.second)) return 1;
  if (isOnlyDay(date.second) && isMonth(date.first)) return 2;
  return 0;
}

std::optional<std::int64_t> DaysOf(const CellDate& date, bool dayFirst) {
  constexpr int FirstYear = 1901;
  constexpr int LastYear = 2100;
  const bool isTurned = date.isEither && dayFirst;
  const int month = isTurned ? date.second : date.first;
  const int day = isTurned ? date.first : date.second;
  const std::chrono::year_month_day whole{std::chrono::year(date.year),
                                          std::chrono::month(static_cast<unsigned>(month)),
                                          std::chrono::day(static_cast<unsigned>(day))};
  if (date.year < FirstYear || date.year > LastYear || !whole.ok()) return std::nullopt;
  return std::chrono::sys_days(whole).time_since_epoch().count();
}

std::optional<std::int64_t> UtcOf(const CellMoment& moment, bool dayFirst) {
  constexpr std::int64_t MillisecondsOfDay = 86'400'000;
  constexpr std::int64_t MillisecondsOfMinute = 60'000;
  const auto days = DaysOf(moment.date, dayFirst);
  if (!days) return std::nullopt;
  return *days * MillisecondsOfDay + moment.time.milliseconds -
         moment.time.zoneMinutes.value_or(0) * MillisecondsOfMinute;
}

MomentReading ReadMoment(std::string_view time, std::string_view date) {
  const bool isInDateCell = time.empty();
  CellReader reader(isInDateCell ? date : time);
  if (const auto read = ReadDate(reader)) {
    if (TakeGap(reader)) {
      if (const auto timeOfDay = ReadTimeOfDay(reader)) {
        return {MomentFault::None, false, {*read, *timeOfDay}};
      }
    }
    return {MomentFault::Time, isInDateCell, {}};
  }
  if (isInDateCell) return {date.empty() ? MomentFault::Time : MomentFault::Date, true, {}};
  CellReader onlyTime(time);
  const auto timeOfDay = ReadTimeOfDay(onlyTime);
  if (!timeOfDay) return {MomentFault::Time, false, {}};
  return ReadDateCell(date, *timeOfDay);
}

std::optional<CellDate> DateOfCells(std::string_view time, std::string_view date) {
  for (const std::string_view cell : {time, date}) {
    CellReader reader(cell);
    const auto read = ReadDate(reader);
    if (read && (reader.AtEnd() || reader.Next() == ' ' || reader.Next() == 'T')) return read;
  }
  return std::nullopt;
}

}  // namespace orvane
