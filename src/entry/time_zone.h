#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A day of the year on which the clocks change, by the rule for the years after a table of changes.
struct ZoneRule {
  enum class Kind { WeekdayOfMonth, DayWithoutLeapDay, DayOfYear };
  Kind kind = Kind::DayOfYear;
  int month = 1;             ///< 1 to 12
  int week = 1;              ///< 1 to 5, 5 for the last one
  int day = 0;               ///< 0 to 6 from Sunday; or 1 to 365; or 0 to 365
  std::int64_t seconds = 0;  ///< after midnight by the clock before the change; may be negative
};

/// The clocks of a region, as the time zone database of the system has them.
class TimeZone {
 public:
  /// \param seconds  since 1970-01-01 in UTC, without leap seconds
  /// \return seconds east of UTC
  std::int64_t OffsetAt(std::int64_t seconds) const;

 private:
  friend std::optional<TimeZone> ReadTimeZone(std::string_view bytes);

  struct Rules {
    std::int64_t standard = 0;  ///< seconds east of UTC
    std::int64_t summer = 0;    ///< the other offset; equal if the clocks do not change
    ZoneRule start;             ///< of the other offset
    ZoneRule end;
  };
  friend class RuleReader;
  std::int64_t OffsetByRules(std::int64_t seconds) const;

  std::vector<std::int64_t> changes_;  ///< seconds since 1970, ascending
  std::vector<std::int64_t> offsets_;  ///< before the first change, and after each
  std::optional<Rules> rules_;         ///< from the last change on
};

/// Reads a zone by its name, such as "Asia/Makassar", exactly. Only this opens the database.
/// \param folder  of the database
/// \return nothing for a text that is not the name of a zone
std::optional<TimeZone> FindTimeZone(const std::string& name,
                                     const std::string& folder = "/usr/share/zoneinfo");

/// Reads the content of a file of the database, of version 2 or later. \return nothing if it is
/// damaged
std::optional<TimeZone> ReadTimeZone(std::string_view bytes);

}  // namespace orvane
