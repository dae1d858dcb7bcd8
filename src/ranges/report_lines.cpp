#include "ranges/report_lines.h"

#include "base/number_text.h"
#include "ranges/clusters.h"
#include "ranges/format_area.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int FirstClusterLine = 14;
constexpr int LinesWithoutTravel = 13;  ///< lines that a range without travel skips
constexpr int MinutesPerHour = 60;
constexpr double LargestShown = 1e15;

std::string NameOf(const Range& range) { return range.name.value_or(""); }

std::string Padded(const std::string& text, size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

/// A whole number of metres, cut.
std::string CutText(double value) {
  if (!(std::abs(value) < LargestShown)) return "0";
  return std::to_string(static_cast<long>(value));
}

/// Percent with two decimals; 0.00 if the whole is 0.
std::string Percent(double part, double whole) {
  return FormatFixed(whole == 0 ? 0 : part * 100 / whole, 2) + "%";
}
std::string Percent(std::int64_t part, std::int64_t whole) {
  return Percent(static_cast<double>(part), static_cast<double>(whole));
}

// --- Ranges ---------------------------------------------------------------------------------

std::string HourText(const Range& range, int hour) {
  constexpr double SlotsOfHour = 12;
  const TravelTally& tally = range.hours[static_cast<size_t>(hour)];
  return TwoDigits(hour) + ":00-" + TwoDigits(hour + 1) +
         ":00: " + Padded(CutText(tally.distance + 0.5), 3) +
         "m (n=" + Padded(FormatFixed(static_cast<double>(tally.count) / SlotsOfHour, 1), 5) + ")";
}

std::string PathsText(const Range& range) {
  const std::int64_t hours = (range.totalMinutes + 30) / MinutesPerHour;
  return "Mean daily path: " + Padded(std::to_string(range.meanDailyPath), 5) +
         "m                 Mean follow: " + Padded(std::to_string(range.meanFollowPath), 5) +
         "m (n=" + std::to_string(range.follows.size()) + ", total time: " + std::to_string(hours) +
         " hours)";
}

// --- Overlaps -------------------------------------------------------------------------------

/// One side of an overlap, and the other.
struct SideView {
  const OverlapShare& own;
  const OverlapShare& other;

  std::string Own() const { return NameOf(*own.range); }
  std::string Other() const { return NameOf(*other.range); }
};

SideView SideA(const RangeIntersection& record) { return {record.a, record.b}; }
SideView SideB(const RangeIntersection& record) { return {record.b, record.a}; }

std::string TimeShareText(const SideView& side) {
  return "Time of " + side.Own() + " in " + side.Other() + ": " +
         FormatFixed(double{side.own.timeShare}, 2) + "%";
}

std::string CellShareText(const SideView& side) {
  return "Time of " + side.Own() + " in grid cells of " + side.Other() + ": " +
         FormatFixed(double{side.own.cellShare}, 2) + "%";
}

/// The six lines at the start of both tip and report.
std::string CommonLine(const RangeIntersection& record, int line) {
  switch (line) {
    case 0:
      return FormatArea("MCP area: ", record.area);
    case 1:
      return FormatArea("Area of grid cells used by both: ", record.bothCellsArea);
    case 2:
      return TimeShareText(SideA(record));
    case 3:
      return CellShareText(SideA(record));
    case 4:
      return TimeShareText(SideB(record));
    default:
      return CellShareText(SideB(record));
  }
}

std::string BeyondText(const std::string& what, const SideView& side, std::int64_t beyond,
                       std::int64_t within, std::int64_t whole) {
  return what + " of " + side.Own() + " just beyond " + side.Other() + ": " +
         Percent(beyond, whole) + ",  and just within: " + Percent(within, whole);
}

std::string WithinOwnText(const std::string& what, const SideView& side, std::int64_t within,
                          std::int64_t whole) {
  return what + " of " + side.Own() + " in " + side.Other() + " just within " + side.Own() + ": " +
         Percent(within, whole);
}

std::string InsideText(const std::string& what, const SideView& side, size_t measure) {
  return what + " of " + side.Own() + " in " + side.Other() + ": " +
         Percent(side.own.tally.measure[measure], side.own.range->tally.measure[measure]);
}

std::string BeyondLine(const SideView& side) {
  const OverlapShare& own = side.own;
  return BeyondText("Time", side, own.beyond.minutes, own.withinOther.minutes,
                    own.range->totalMinutes);
}

std::string WithinOwnLine(const SideView& side) {
  return WithinOwnText("Time", side, side.own.withinOwn.minutes, side.own.range->totalMinutes);
}

/// One of the six lines of a measure.
std::string MeasureLine(const RangeIntersection& record, const std::string& name, size_t measure,
                        int offset) {
  const SideView side = offset < 3 ? SideA(record) : SideB(record);
  const OverlapShare& own = side.own;
  const std::int64_t whole = own.range->tally.measure[measure];
  switch (offset % 3) {
    case 0:
      return InsideText(name, side, measure);
    case 1: {
      // For B the figures are relative to A's total. See docs/compatibility.md.
      const std::int64_t ofA = record.a.range->tally.measure[measure];
      return BeyondText(name, side, own.beyond.measure[measure], own.withinOther.measure[measure],
                        whole == 0 ? 0 : ofA);
    }
    default:
      return WithinOwnText(name, side, own.withinOwn.measure[measure], whole);
  }
}

}  // namespace

std::optional<std::string> RangeReportLine(const Range& range, int line) {
  if (line < 0) return std::nullopt;
  if (line == 0) {
    return FormatArea("MCP area: ", range.mcpArea) +
           FormatArea("                          Grid area: ", range.gridArea);
  }
  if (range.meanDailyPath == 0) line += LinesWithoutTravel;
  if (line == 1) return PathsText(range);
  if (line < FirstClusterLine) {
    const int hour = 2 * line - 4;
    return "Distance " + HourText(range, hour) + "    " + HourText(range, hour + 1);
  }
  const int level = ClusterLevels - (line - FirstClusterLine + 1);
  if (range.clusters == nullptr || level < 0) return std::nullopt;
  return ClusterLevelLine(range, level, true);
}

std::optional<std::string> IntersectionReportLine(const RangeIntersection& record,
                                                  const MeasureNames& names, int line) {
  constexpr int FirstMeasureLine = 10;
  constexpr int LinesOfMeasure = 6;
  if (line < 0) return std::nullopt;
  if (line < 6) return CommonLine(record, line);
  if (line == 6) return BeyondLine(SideA(record));
  if (line == 7) return BeyondLine(SideB(record));
  if (line == 8) return WithinOwnLine(SideA(record));
  if (line == 9) return WithinOwnLine(SideB(record));
  const auto measure = static_cast<size_t>((line - FirstMeasureLine) / LinesOfMeasure);
  const int offset = (line - FirstMeasureLine) % LinesOfMeasure;
  if (measure >= names.size() || !names[measure]) return std::nullopt;
  // Two lines of SM3 have the name of SM2. See docs/compatibility.md.
  const bool namedAsSecond = measure == 2 && offset % 3 == 0;
  const std::string name = namedAsSecond ? names[1].value_or("") : *names[measure];
  return MeasureLine(record, name, measure, offset);
}

std::optional<std::string> RangeTipLine(const Range& range, std::uint32_t clusterMask, int line) {
  constexpr int FirstLevelLine = 5;
  switch (line) {
    case 0:
      return "  " + NameOf(range);
    case 1:
      return "number of follows: " + std::to_string(range.follows.size()) + " (" +
             std::to_string((range.totalMinutes + 3) / MinutesPerHour) + " hours)";
    case 2:
      return "Mean daily path: " + std::to_string(range.meanDailyPath) + "m";
    case 3:
      return FormatArea("MCP area: ", range.mcpArea);
    case 4:
      return FormatArea("Grid area: ", range.gridArea);
    default:
      break;
  }
  // After the mask the line of the lowest level repeats. See docs/compatibility.md.
  const bool beyondAllLevels = line >= FirstLevelLine + ClusterLevels;
  if (line < 0 || beyondAllLevels || range.clusters == nullptr) return std::nullopt;
  int left = line - FirstLevelLine;
  for (int bit = 0; bit < ClusterLevels; ++bit) {
    if (((clusterMask >> static_cast<unsigned>(bit)) & 1U) == 0) continue;
    if (left-- == 0) return ClusterLevelLine(range, ClusterLevels - 1 - bit, false);
  }
  return ClusterLevelLine(range, 0, false);
}

std::optional<std::string> RangeTipLine(const RangeIntersection& record, const MeasureNames& names,
                                        int line) {
  constexpr int FirstMeasureLine = 6;
  if (line < 0) return std::nullopt;
  if (line < FirstMeasureLine) return CommonLine(record, line);
  const auto measure = static_cast<size_t>((line - FirstMeasureLine) / 2);
  if (measure >= names.size() || !names[measure]) return std::nullopt;
  // The lines of SM3 have the name of SM2. See docs/compatibility.md.
  const std::string name = measure == 2 ? names[1].value_or("") : *names[measure];
  return InsideText(name, line % 2 == 0 ? SideA(record) : SideB(record), measure);
}

std::optional<std::string> NewRangeTipLine(int line) {
  if (line == 0) return "Create a new range";
  return std::nullopt;
}

}  // namespace orvane
