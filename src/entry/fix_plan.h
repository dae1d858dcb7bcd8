#pragma once

#include "entry/fix_table.h"
#include "entry/local_time.h"
#include "entry/spreadsheet.h"
#include "entry/time_zone.h"
#include "model/map.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvane {

/// What an import of fixes will do, before it changes a map: which fixes it takes, and the trails
/// and ranges that it makes of them.

/// The clock by which days and times of a site are named.
struct FixClock {
  std::optional<int> offsetMinutes;  ///< east of UTC; none for the offset that the fixes show
  std::optional<TimeZone> zone;      ///< instead, if given
};

/// The furthest that a clock can be from UTC, in minutes.
constexpr int MostOffsetMinutes = 14 * 60;

/// Reads "+08:00", "-03:30", "auto" or the name of a zone ("Asia/Makassar").
/// \return nothing for any other text
std::optional<FixClock> ReadFixClock(const std::string& text);

/// Which fixes of an animal are taken. Filters work in this order, each on what the one before has
/// left.
struct FixFilters {
  bool keepsOutliers = false;
  double maxSpeed = 0;      ///< km/h from one fix to the next; 0 for no limit
  std::uint64_t every = 1;  ///< takes every n-th, at least 1
  double minMinutes = 0;    ///< from one fix of a day to the next
  double minMeters = 0;     ///< likewise
};

struct FixOptions {
  FixReading reading;
  FixClock clock;
  FixFilters filters;
  std::string type;          ///< of the trails, cut to `LongestAnimalName`; empty for the species
  SheetChooser chooseSheet;  ///< of a spreadsheet
  bool makesRanges = true;
};

/// A trail to make: the fixes of an animal on one local date.
struct PlannedTrail {
  std::uint32_t animal = 0;
  PackedDate date = 0;
  size_t first = 0;  ///< in `FixPlan::order`
  size_t count = 0;
};

struct FixPlan {
  std::vector<Fix> fixes;             ///< of the table, each with its state and local time
  std::vector<std::uint32_t> order;   ///< indexes of fixes, trail by trail, by time within each
  std::vector<std::string> types;     ///< of the trails of each animal
  std::vector<PlannedTrail> trails;   ///< in the order in which they are made
  std::vector<std::uint32_t> ranges;  ///< animals that get a range
  /// Of the fixes that are too fast, by their index: km/h from the last one that was kept.
  std::unordered_map<std::uint32_t, double> speeds;
  std::array<size_t, FixStateCount> counts{};  ///< rows of each state
  int offsetMinutes = 0;                       ///< of the clock, unless it has a zone
  double meanLon = 0;                          ///< degrees, over all fixes
};

/// Makes the plan. The fixes move from the table into it.
/// \param map  is only read: a trail with the type, animal and date of a planned one keeps these fixes
///             out, a range with the name of an animal is enough
FixPlan PlanFixes(FixTable& table, const FixOptions& options, const Map& map);

}  // namespace orvane
