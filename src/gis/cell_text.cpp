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

int DigitsAt(std::string_view text, size_t at, size_t size) {
  int number = 0;
  for (const char c : text.substr(at, size)) number = number * 10 + (c - '0');
  return number;
}

/// Reads "08:05", "08:05:30" or "08:05:30.25" at the start of a text, and removes it.
/// \return seconds; nothing for another form
std::optional<double> TakeClock(std::string_view& text) {
  constexpr std::string_view Minutes = "00:00";
  constexpr std::string_view Seconds = ":00";
  if (!HasForm(text.substr(0, Minutes.size()), Minutes)) return std::nullopt;
  const int hours = DigitsAt(text, 0, 2);
  const int minutes = DigitsAt(text, 3, 2);
  text.remove_prefix(Minutes.size());
  double seconds = 0;
  if (HasForm(text.substr(0, Seconds.size()), Seconds)) {
    text.remove_prefix(1);
    const auto [stop, error] =
        std::from_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<size_t>(stop - text.data()));
  }
  if (hours > 24 || minutes > 59 || seconds > 60) return std::nullopt;
  return hours * 3600 + minutes * 60 + seconds;
}

/// \return true for no zone, too
bool IsZone(std::string_view text) {
  return text.empty() || text == "Z" || HasForm(text, "+00:00") || HasForm(text, "-00:00");
}

constexpr size_t EscapeSize = 7;

/// \return the number in "_x0041_" at the start of a text
std::optional<std::uint32_t> EscapeAt(std::string_view text) {
  constexpr int Hexadecimal = 16;
  if (text.size() < EscapeSize || !text.starts_with("_x") || text[EscapeSize - 1] != '_') {
    return std::nullopt;
  }
  std::uint32_t unit = 0;
  const char* const end = text.data() + EscapeSize - 1;
  const auto [stop, error] = std::from_chars(text.data() + 2, end, unit, Hexadecimal);
  if (error != std::errc() || stop != end) return std::nullopt;
  return unit;
}

/// \param code  a character, not a surrogate
void AppendUtf8(std::string& text, std::uint32_t code) {
  const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  const auto follow = [&](unsigned shift) { add(0x80U | (code >> shift & 0x3FU)); };
  if (code < 0x80U) return add(code);
  if (code < 0x800U) {
    add(0xC0U | code >> 6U);
    return follow(0);
  }
  if (code < 0x10000U) {
    add(0xE0U | code >> 12U);
  } else {
    add(0xF0U | code >> 18U);
    follow(12);
  }
  follow(6);
  follow(0);
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
  // In Chinese, Japanese and Korean. Some are dates in one of these languages and times in another.
  if (isWithin(27, 31) || number == 36 || isWithin(50, 51) || number == 54 || isWithin(57, 58)) {
    format.showsDate = true;
  }
  if (isWithin(32, 33)) format.showsTime = true;
  format.showsEither = isWithin(34, 35) || isWithin(52, 53) || isWithin(55, 56);
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

std::optional<IsoMoment> ReadIsoMoment(std::string_view text) {
  constexpr std::string_view Date = "0000-00-00";
  IsoMoment moment;
  if (HasForm(text.substr(0, Date.size()), Date)) {
    const std::chrono::year_month_day date{
        std::chrono::year{DigitsAt(text, 0, 4)},
        std::chrono::month{static_cast<unsigned>(DigitsAt(text, 5, 2))},
        std::chrono::day{static_cast<unsigned>(DigitsAt(text, 8, 2))}};
    if (!date.ok()) return std::nullopt;
    moment.days = std::chrono::sys_days{date}.time_since_epoch().count();
    text.remove_prefix(Date.size());
    if (IsZone(text)) return moment;
    if (!text.starts_with('T')) return std::nullopt;
    text.remove_prefix(1);
  }
  const auto seconds = TakeClock(text);
  if (!seconds || !IsZone(text)) return std::nullopt;
  const double start = static_cast<double>(moment.days.value_or(0));
  const CellMoment rounded = MomentOfDays(start + *seconds / SecondsOfDay);
  if (moment.days) moment.days = rounded.days;
  moment.seconds = rounded.seconds;
  return moment;
}

std::string TextOfIsoMoment(const IsoMoment& moment, const CellFormat& format, ClockForm clock) {
  const bool showsAll = !format.showsDate && !format.showsTime;
  std::string time = ClockTextOf(moment.seconds.value_or(0), clock);
  if (!moment.days || (format.showsTime && !format.showsDate)) return time;
  const bool hasTime = format.showsTime || (showsAll && moment.seconds);
  return DateText(*moment.days) + (hasTime ? ' ' + time : std::string());
}

std::string WithoutEscapes(std::string_view text) {
  std::string plain;
  std::uint32_t first = 0;  // of a pair of surrogates
  while (!text.empty()) {
    const auto unit = EscapeAt(text);
    if (!unit) {
      plain += text.front();
      text.remove_prefix(1);
      continue;
    }
    text.remove_prefix(EscapeSize);
    const bool isSecond = *unit >= 0xDC00U && *unit <= 0xDFFFU;
    if (isSecond && first != 0) {
      AppendUtf8(plain, 0x10000U + ((first - 0xD800U) << 10U) + (*unit - 0xDC00U));
    } else if (*unit != 0 && (*unit < 0xD800U || *unit > 0xDFFFU)) {
      AppendUtf8(plain, *unit);
    }
    first = *unit >= 0xD800U && *unit < 0xDC00U && EscapeAt(text) ? *unit : 0;
  }
  return plain;
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
