#include "entry/time_zone.h"

#include "base/files.h"
#include "base/number_text.h"

#include <algorithm>
#include <chrono>

// A file of the database has two tables of changes, the first in 32 bits for old readers, the second
// in 64 bits, and then a line with the rule for the time after the last change:
//
//     header │ table of 32 bits │ header │ table of 64 bits │ \n rule \n
//
// Within a table: the times of the changes, the number of the clock after each, the clocks (offset,
// whether it is summer time, name), and lists that matter only to others.

namespace orvane {

namespace {

constexpr std::int64_t SecondsOfDay = 86400;
constexpr std::int64_t SecondsOfHour = 3600;

/// Takes numbers off the front of bytes. After an attempt to take too much it is broken.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

  bool IsBroken() const { return isBroken_; }
  std::string_view Rest() const { return rest_; }

  std::string_view Take(size_t count) {
    if (count > rest_.size()) {
      isBroken_ = true;
      rest_ = {};
      return {};
    }
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  /// Takes a signed number, its highest byte first.
  std::int64_t Number(size_t bytes) {
    std::uint64_t value = 0;
    const std::string_view taken = Take(bytes);
    if (!taken.empty() && (static_cast<unsigned char>(taken.front()) & 0x80U) != 0) value = ~value;
    for (const char c : taken) value = value << 8U | static_cast<unsigned char>(c);
    return static_cast<std::int64_t>(value);
  }

 private:
  std::string_view rest_;
  bool isBroken_ = false;
};

struct Header {
  bool isNew = false;  ///< a second table follows the first
  size_t utcMarks = 0;
  size_t standardMarks = 0;
  size_t leaps = 0;
  size_t changes = 0;
  size_t clocks = 0;
  size_t nameBytes = 0;
};

std::optional<Header> ReadHeader(ByteReader& reader) {
  constexpr size_t Reserved = 15;
  if (reader.Take(4) != "TZif") return std::nullopt;
  Header header;
  header.isNew = reader.Take(1) >= "2";
  reader.Take(Reserved);
  for (size_t* count : {&header.utcMarks, &header.standardMarks, &header.leaps, &header.changes,
                        &header.clocks, &header.nameBytes}) {
    *count = static_cast<size_t>(reader.Number(4)) & 0xFFFFFFFFU;
  }
  if (reader.IsBroken()) return std::nullopt;
  return header;
}

constexpr size_t ClockBytes = 6;

/// Bytes of a table after the times of its changes and their clocks.
size_t BytesAfterClocks(const Header& header, size_t timeBytes) {
  return header.nameBytes + header.leaps * (timeBytes + 4) + header.standardMarks + header.utcMarks;
}

std::int64_t DayNumber(int year, unsigned month, unsigned day) {
  using namespace std::chrono;
  const year_month_day whole{std::chrono::year(year), std::chrono::month(month),
                             std::chrono::day(day)};
  return sys_days(whole).time_since_epoch().count();
}

/// \return the day of a rule in a year, since 1970-01-01
std::int64_t DayOf(const ZoneRule& rule, int year) {
  using namespace std::chrono;
  const std::int64_t newYear = DayNumber(year, 1, 1);
  if (rule.kind == ZoneRule::Kind::DayOfYear) return newYear + rule.day;
  if (rule.kind == ZoneRule::Kind::DayWithoutLeapDay) {
    constexpr int LastOfFebruary = 59;
    const bool isAfterLeapDay = std::chrono::year(year).is_leap() && rule.day > LastOfFebruary;
    return newYear + rule.day - 1 + (isAfterLeapDay ? 1 : 0);
  }
  constexpr int LastWeek = 5;
  const auto month = std::chrono::year(year) / rule.month;
  const auto weekday = std::chrono::weekday(static_cast<unsigned>(rule.day));
  const sys_days day = rule.week == LastWeek
                           ? sys_days(month / weekday[last])
                           : sys_days(month / weekday[static_cast<unsigned>(rule.week)]);
  return day.time_since_epoch().count();
}

int YearOf(std::int64_t seconds) {
  using namespace std::chrono;
  const sys_days day = floor<days>(sys_seconds(std::chrono::seconds(seconds)));
  return int{year_month_day(day).year()};
}

}  // namespace

/// Reads the line with the rule, such as "CET-1CEST,M3.5.0,M10.5.0/3".
class RuleReader {
 public:
  explicit RuleReader(std::string_view text) : rest_(text) {}

  std::optional<TimeZone::Rules> Read() {
    TimeZone::Rules rules;
    if (!TakeName() || !TakeOffset(rules.standard)) return std::nullopt;
    rules.summer = rules.standard;
    if (rest_.empty()) return rules;
    rules.summer += SecondsOfHour;
    if (!TakeName()) return std::nullopt;
    if (!rest_.starts_with(',') && !TakeOffset(rules.summer)) return std::nullopt;
    if (!TakeRule(rules.start) || !TakeRule(rules.end) || !rest_.empty()) return std::nullopt;
    return rules;
  }

 private:
  bool Take(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool TakeName() {
    const bool isQuoted = Take('<');
    size_t length = 0;
    const auto ends = [&](char c) {
      return isQuoted ? c == '>' : (IsDigit(c) || c == '+' || c == '-' || c == ',');
    };
    while (length < rest_.size() && !ends(rest_[length])) ++length;
    rest_.remove_prefix(length);
    return length > 0 && (!isQuoted || Take('>'));
  }

  std::optional<int> TakeNumber() {
    constexpr size_t MostDigits = 3;
    size_t length = 0;
    while (length < rest_.size() && length < MostDigits && IsDigit(rest_[length])) ++length;
    if (length == 0) return std::nullopt;
    const int number = ReadInt32(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return number;
  }

  /// Takes hours, and minutes and seconds after colons, with a sign.
  bool TakeTime(std::int64_t& seconds) {
    const bool isNegative = Take('-');
    if (!isNegative) Take('+');
    std::int64_t total = 0;
    std::int64_t unit = SecondsOfHour;
    do {
      const auto number = TakeNumber();
      if (!number || unit == 0) return false;
      total += *number * unit;
      unit = unit == 1 ? 0 : unit / 60;
    } while (Take(':'));
    seconds = isNegative ? -total : total;
    return true;
  }

  /// In the rule, offsets are west of UTC.
  bool TakeOffset(std::int64_t& offset) {
    if (!TakeTime(offset)) return false;
    offset = -offset;
    return true;
  }

  bool TakeWithin(int least, int most, int& value) {
    const auto number = TakeNumber();
    if (!number || *number < least || *number > most) return false;
    value = *number;
    return true;
  }

  bool TakeRule(ZoneRule& rule) {
    constexpr std::int64_t UsualHour = 2;
    constexpr int MostDays = 365;
    if (!Take(',')) return false;
    rule.seconds = UsualHour * SecondsOfHour;
    bool isGood = false;
    if (Take('M')) {
      rule.kind = ZoneRule::Kind::WeekdayOfMonth;
      isGood = TakeWithin(1, 12, rule.month) && Take('.') && TakeWithin(1, 5, rule.week) &&
               Take('.') && TakeWithin(0, 6, rule.day);
    } else if (Take('J')) {
      rule.kind = ZoneRule::Kind::DayWithoutLeapDay;
      isGood = TakeWithin(1, MostDays, rule.day);
    } else {
      isGood = TakeWithin(0, MostDays, rule.day);
    }
    return isGood && (!Take('/') || TakeTime(rule.seconds));
  }

  std::string_view rest_;
};

std::int64_t TimeZone::OffsetByRules(std::int64_t seconds) const {
  const Rules& rules = *rules_;
  if (rules.summer == rules.standard) return rules.standard;
  const int year = YearOf(seconds + rules.standard);
  const auto start = DayOf(rules.start, year) * SecondsOfDay + rules.start.seconds - rules.standard;
  const auto end = DayOf(rules.end, year) * SecondsOfDay + rules.end.seconds - rules.summer;
  const bool isSummer =
      start < end ? seconds >= start && seconds < end : seconds >= start || seconds < end;
  return isSummer ? rules.summer : rules.standard;
}

std::int64_t TimeZone::OffsetAt(std::int64_t seconds) const {
  if (rules_ && (changes_.empty() || seconds >= changes_.back())) return OffsetByRules(seconds);
  const auto after = std::upper_bound(changes_.begin(), changes_.end(), seconds);
  return offsets_[static_cast<size_t>(after - changes_.begin())];
}

std::optional<TimeZone> ReadTimeZone(std::string_view bytes) {
  ByteReader reader(bytes);
  const auto old = ReadHeader(reader);
  if (!old || !old->isNew) return std::nullopt;
  constexpr size_t OldTimeBytes = 4;
  constexpr size_t TimeBytes = 8;
  reader.Take(old->changes * (OldTimeBytes + 1) + old->clocks * ClockBytes +
              BytesAfterClocks(*old, OldTimeBytes));
  const auto header = ReadHeader(reader);
  if (!header || header->clocks == 0) return std::nullopt;
  ByteReader times(reader.Take(header->changes * TimeBytes));
  const std::string_view numbers = reader.Take(header->changes);
  ByteReader clocks(reader.Take(header->clocks * ClockBytes));
  reader.Take(BytesAfterClocks(*header, TimeBytes));
  if (reader.IsBroken()) return std::nullopt;
  std::vector<std::int64_t> offsets;
  for (size_t i = 0; i < header->clocks; ++i) {
    offsets.push_back(clocks.Number(4));
    clocks.Take(ClockBytes - 4);
  }
  TimeZone zone;
  zone.offsets_.push_back(offsets.front());
  for (const char number : numbers) {
    const size_t clock = static_cast<unsigned char>(number);
    if (clock >= offsets.size()) return std::nullopt;
    zone.changes_.push_back(times.Number(TimeBytes));
    zone.offsets_.push_back(offsets[clock]);
  }
  std::string_view rule = reader.Rest();
  if (rule.starts_with('\n')) rule.remove_prefix(1);
  zone.rules_ = RuleReader(rule.substr(0, rule.find('\n'))).Read();
  return zone;
}

std::optional<TimeZone> FindTimeZone(const std::string& name, const std::string& folder) {
  // The folder also has copies of the database in other forms, and the clock of this machine.
  static constexpr std::string_view Others[] = {"posix/", "right/", "posixrules", "localtime"};
  const bool isOther = std::any_of(std::begin(Others), std::end(Others),
                                   [&](std::string_view text) { return name.starts_with(text); });
  const bool isName = std::all_of(name.begin(), name.end(), [](char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           std::string_view("/_-+").find(c) != std::string_view::npos;
  });
  if (name.empty() || name.front() == '/' || name.find("//") != std::string::npos || isOther ||
      !isName) {
    return std::nullopt;
  }
  const auto bytes = ReadWholeFile(folder + '/' + name);
  if (!bytes) return std::nullopt;
  return ReadTimeZone(*bytes);
}

}  // namespace orvane
