#include "gis/cell_text.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace orvane {

namespace {

constexpr int SecondsOfDay = 24 * 60 * 60;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// \return the end of a part of a number format that shows no part of a date, from `at` on; `at` if
///         the character counts
size_t EndOfLiteral(std::string_view code, size_t at) {
  constexpr std::string_view Half = "AM/PM";
  switch (code[at]) {
    case '"':
      return std::min(code.find('"', at + 1), code.size() - 1) + 1;
    case '\\':
    case '_':
    case '*':
      return std::min(at + 2, code.size());
    default:
      return code.substr(at, Half.size()) == Half ? at + Half.size() : at;
  }
}

/// \return true if the text has the form: 0 is a digit, anything else itself
bool HasForm(std::string_view text, std::string_view form) {
  return text.size() == form.size() &&
         std::equal(text.begin(), text.end(), form.begin(), [](char c, char wanted) {
           return wanted == '0' ? c >= '0' && c <= '9' : c == wanted;
         });
}

}  // namespace

CellFormat ReadCellFormat(std::string_view code) {
  CellFormat format;
  bool hasMonthOrMinute = false;
  const auto count = [&](char letter) {
    if (letter == 'y' || letter == 'd') format.showsDate = true;
    if (letter == 'h' || letter == 's') format.showsTime = true;
    if (letter == 'm') hasMonthOrMinute = true;
  };
  for (size_t at = 0; at < code.size() && code[at] != ';';) {
    if (const size_t end = EndOfLiteral(code, at); end > at) {
      at = end;
      continue;
    }
    if (code[at] != '[') {
      count(Lower(code[at++]));
      continue;
    }
    // Colours and languages, or elapsed hours, minutes or seconds.
    const size_t end = std::min(code.find(']', at), code.size());
    const std::string_view inside = code.substr(at + 1, end - at - 1);
    if (!inside.empty() && inside.find_first_not_of("hHmMsS") == inside.npos) {
      format.showsTime = format.showsElapsed = true;
    }
    at = std::min(end + 1, code.size());
  }
  if (hasMonthOrMinute && !format.showsTime) format.showsDate = true;
  return format;
}

CellFormat OwnCellFormat(int number) {
  const auto isWithin = [&](int first, int last) { return number >= first && number <= last; };
  CellFormat format;
  format.showsDate = isWithin(14, 17) || number == 22;
  format.showsTime = isWithin(18, 22) || isWithin(45, 47);
  format.showsElapsed = number == 46;
  return format;
}

CellMoment MomentOfDays(double days) {
  const double whole = std::floor(days);
  CellMoment moment{static_cast<std::int64_t>(whole),
                    static_cast<int>(std::floor((days - whole) * SecondsOfDay + 0.5))};
  if (moment.seconds == SecondsOfDay) return {moment.days + 1, 0};
  return moment;
}

std::string DateText(std::int64_t days) {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text;
}

std::string ClockTextOf(std::int64_t seconds, ClockForm clock) {
  char text[32];
  const auto part = [&](std::int64_t unit) { return static_cast<int>(seconds / unit % 60); };
  const auto hours = static_cast<long long>(seconds / 3600);
  if (clock == ClockForm::Minutes || part(1) == 0) {
    std::snprintf(text, sizeof text, "%02lld:%02d", hours, part(60));
  } else {
    std::snprintf(text, sizeof text, "%02lld:%02d:%02d", hours, part(60), part(1));
  }
  return text;
}

std::string XlsCellText(std::string_view text, ClockForm clock) {
  constexpr std::string_view Date = "0000-00-00 ";
  constexpr std::string_view Time = "00:00:00";
  const size_t time = HasForm(text.substr(0, Date.size()), Date) ? Date.size() : 0;
  if (!HasForm(text.substr(time), Time)) return std::string(text);
  const bool isCut = clock == ClockForm::Minutes || text.ends_with(":00");
  return std::string(text.substr(0, time + (isCut ? Time.size() - 3 : Time.size())));
}

std::string NumberText(std::string_view stored) {
  constexpr int Digits = 15;
  // Whole numbers may be names: they keep all their digits.
  if (stored.find_first_not_of("-0123456789") == stored.npos) return std::string(stored);
  double number = 0;
  const char* const end = stored.data() + stored.size();
  const auto [stop, error] = std::from_chars(stored.data(), end, number);
  if (error != std::errc() || stop != end) return std::string(stored);
  char text[64];
  const auto written =
      std::to_chars(text, text + sizeof text, number, std::chars_format::general, Digits);
  return {text, written.ptr};
}

}  // namespace orvane
