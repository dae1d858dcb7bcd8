#pragma once

#include "model/records.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The Trail Summary: a table of what trails measure, a line a trail, with totals and, for closed
/// trails, a count of the directions in which they face.

/// The columns of the table.
enum TrailSummaryColumn {
  TrailSummaryName = 0,
  TrailSummaryPathLength = 1,
  TrailSummaryGroundLength = 2,
  TrailSummaryMinAltitude = 3,
  TrailSummaryMaxAltitude = 4,
  TrailSummaryArea = 5,
  TrailSummarySlantedArea = 6,
  TrailSummaryAspect = 7,
  TrailSummaryCompassAspect = 8,
  TrailSummarySlope = 9
};
constexpr size_t TrailSummaryColumns = 10;

/// The heading of a column.
struct TrailSummaryHeading {
  int units;  ///< width of the column in line heights
  std::string_view first;
  std::string_view second;
};

/// By `TrailSummaryColumn`.
extern const std::array<TrailSummaryHeading, TrailSummaryColumns> TrailSummaryHeadings;

/// An area in square metres as "1.23km^2" from one square kilometre, "1.23ha" from one hectare, and
/// in whole square metres, cut, below.
std::string FormatTrailArea(double squareMeters);

/// The text of one field of a trail's line; empty where the trail has nothing to show: areas
/// belong to closed trails, aspects to those with altitudes and a slope of more than half a degree.
/// \param trail              its metrics are filled if it is not measured; its points are then left
///                           in a plane of their own
/// \param column             a `TrailSummaryColumn`. The name of a trail without one is its date
///                           and its focal animal
/// \param magneticDeviation  degrees, of the map; at 0 there is no compass aspect
std::string TrailSummaryCell(Trail& trail, int column, double magneticDeviation);

/// The sums over the trails of a table.
struct TrailTotals {
  double pathLength = 0;                                 ///< metres
  double groundLength = 0;                               ///< metres, over the trails that have one
  double minAltitude = static_cast<double>(NoAltitude);  ///< metres, or -9999
  double maxAltitude = static_cast<double>(NoAltitude);  ///< metres, or -9999
  double area = 0;                                       ///< square metres, over all closed trails
  double slantedArea = 0;  ///< square metres, over the trails that show one
  int closedTrails = 0;
};
TrailTotals SumTrails(const std::vector<Trail*>& trails);

/// The text of the field of a column in the line of totals; empty where there is none.
/// \param column  a `TrailSummaryColumn`
std::string TrailTotalsCell(const TrailTotals& totals, int column);

/// The classes of the aspect table: all closed trails with altitudes, the flat ones among them,
/// then the four quarters of the compass with a band of 10 degrees between each two.
constexpr size_t AspectClasses = 10;
/// The text before each count. The degree sign is the byte 0xB0.
extern const std::array<std::string_view, AspectClasses> AspectClassLabels;
/// Counts closed trails with altitudes by the direction in which they face, which is not the
/// compass direction. Those that slope by less than 10 degrees count as flat and in no direction.
std::array<int, AspectClasses> CountAspects(const std::vector<Trail*>& trails);

/// The table as text: two lines of headings, a line a trail in the given order, the totals after
/// an empty line and, if a trail is closed, the aspect table. A trail without a name has an empty
/// first field.
/// \param magneticDeviation  degrees, of the map
std::string TrailSummaryText(const std::vector<Trail*>& trails, double magneticDeviation);

}  // namespace orvane
