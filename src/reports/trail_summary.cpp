#include "reports/trail_summary.h"

#include "base/number_text.h"
#include "geo/angle_text.h"
#include "geo/earth.h"
#include "trails/metrics.h"

#include <algorithm>
#include <cmath>

namespace orvane {

const std::array<TrailSummaryHeading, TrailSummaryColumns> TrailSummaryHeadings = {{
    {9, "Trail", "Name"},
    {3, "Path", "Length"},
    {3, "Ground", "Length"},
    {3, "Min", "Alt"},
    {3, "Max", "Alt"},
    {4, "", "Area"},
    {4, "Slanted", "Area"},
    {3, "", "Aspect"},
    {3, "Compass", "Aspect"},
    {3, "", "Slope"},
}};

const std::array<std::string_view, AspectClasses> AspectClassLabels = {
    "Total closed trails:", "Slope < 10\xB0:",  "321\xB0-40\xB0:",  "41\xB0-50\xB0:",
    "51\xB0-130\xB0:",      "131\xB0-140\xB0:", "141\xB0-220\xB0:", "221\xB0-230\xB0:",
    "231\xB0-310\xB0:",     "311\xB0-320\xB0:"};

namespace {

constexpr double SquareMetersPerKm2 = 1000000;
constexpr double SquareMetersPerHectare = 10000;
constexpr double LevelSlope = 0.5;                 // degrees: too flat to face anywhere
constexpr double FlatSlope = 0.17453292519943295;  // radians, 10 degrees

/// Every point of the trail has an altitude.
bool HasAltitudes(const Trail& trail) { return HasAltitude(trail.groundLength); }

void MeasureIfNeeded(Trail& trail) {
  if ((trail.flags & TrailMeasured) == 0) MeasureTrail(trail);
}

/// A ring without a plane is level.
double SlopeOf(const Trail& trail) { return (trail.flags & TrailMeasured) != 0 ? trail.slope : 0; }

bool Faces(const Trail& trail) {
  const double degrees = SlopeOf(trail) / RadiansPerDegree;
  return IsClosed(trail) && HasAltitudes(trail) && (degrees > LevelSlope || degrees < -LevelSlope);
}

double IntoCircle(double degrees) {
  while (degrees < 0) degrees += 360;
  while (degrees >= 360) degrees -= 360;
  return degrees;
}

/// Degrees from 0 up to but not including 360.
double AspectOf(const Trail& trail) { return IntoCircle(180 * trail.aspect / Pi + 90); }

/// The deviation is a number that a file holds: it may be of any size.
double CompassAspectOf(const Trail& trail, double magneticDeviation) {
  return IntoCircle(180 * trail.aspect / Pi - std::fmod(magneticDeviation, 360) + 90);
}

std::string DegreesText(double degrees) { return FormatFixed(degrees, 0) + DegreeSign; }

std::string AltitudeText(double altitude) {
  return HasAltitude(altitude) ? FormatFixed(altitude, 0) + "m" : "";
}

std::string ShownName(const Trail& trail) {
  if (trail.name) return *trail.name;
  return FormatDate(trail.date) + (trail.focalAnimal ? " " + *trail.focalAnimal : "");
}

size_t AspectClassOf(const Trail& trail) {
  if (SlopeOf(trail) < FlatSlope) return 1;
  const double d = AspectOf(trail);
  if (d > 320 || d <= 40) return 2;
  if (d <= 50) return 3;
  if (d <= 130) return 4;
  if (d <= 140) return 5;
  if (d <= 220) return 6;
  if (d <= 230) return 7;
  return d > 310 ? 9 : 8;
}

}  // namespace

std::string FormatTrailArea(double squareMeters) {
  if (squareMeters >= SquareMetersPerKm2) {
    return FormatFixed(squareMeters / SquareMetersPerKm2, 2) + "km^2";
  }
  if (squareMeters >= SquareMetersPerHectare) {
    return FormatFixed(squareMeters / SquareMetersPerHectare, 2) + "ha";
  }
  return FormatFixed(std::isfinite(squareMeters) ? std::trunc(squareMeters) + 0.0 : 0, 0) + "m^2";
}

std::string TrailSummaryCell(Trail& trail, int column, double magneticDeviation) {
  MeasureIfNeeded(trail);
  const bool known = HasAltitudes(trail);
  switch (column) {
    case TrailSummaryName:
      return ShownName(trail);
    case TrailSummaryPathLength:
      return FormatDistance(TrailPathLength(trail.points));
    case TrailSummaryGroundLength:
      return known ? FormatDistance(trail.groundLength) : "";
    case TrailSummaryMinAltitude:
      return known ? AltitudeText(trail.minAltitude) : "";
    case TrailSummaryMaxAltitude:
      return known ? AltitudeText(trail.maxAltitude) : "";
    case TrailSummaryArea:
      return IsClosed(trail) ? FormatTrailArea(trail.area) : "";
    case TrailSummarySlantedArea:
      return Faces(trail) ? FormatTrailArea(trail.slantedArea) : "";
    case TrailSummaryAspect:
      return Faces(trail) ? DegreesText(AspectOf(trail)) : "";
    case TrailSummaryCompassAspect:
      if (!Faces(trail) || magneticDeviation == 0) return "";
      return DegreesText(CompassAspectOf(trail, magneticDeviation));
    case TrailSummarySlope:
      if (!IsClosed(trail) || !known) return "";
      return DegreesText(SlopeOf(trail) / RadiansPerDegree);
    default:
      return "";
  }
}

TrailTotals SumTrails(const std::vector<Trail*>& trails) {
  TrailTotals totals;
  for (Trail* trail : trails) {
    MeasureIfNeeded(*trail);
    totals.pathLength += TrailPathLength(trail->points);
    if (IsClosed(*trail)) {
      ++totals.closedTrails;
      totals.area += trail->area;
      // Level trails show no slanted area, but count in the sum.
      if (HasAltitudes(*trail)) totals.slantedArea += trail->slantedArea;
    }
    if (!HasAltitudes(*trail)) continue;
    totals.groundLength += trail->groundLength;
    // A trail without points has a length of 0 and no altitude.
    if (!HasAltitude(trail->minAltitude)) continue;
    const bool first = !HasAltitude(totals.minAltitude);
    totals.minAltitude =
        first ? trail->minAltitude : std::min(totals.minAltitude, trail->minAltitude);
    totals.maxAltitude =
        first ? trail->maxAltitude : std::max(totals.maxAltitude, trail->maxAltitude);
  }
  return totals;
}

std::string TrailTotalsCell(const TrailTotals& totals, int column) {
  switch (column) {
    case TrailSummaryName:
      return "Totals";
    case TrailSummaryPathLength:
      return FormatDistance(totals.pathLength);
    case TrailSummaryGroundLength:
      return FormatDistance(totals.groundLength);
    case TrailSummaryMinAltitude:
      return AltitudeText(totals.minAltitude);
    case TrailSummaryMaxAltitude:
      return AltitudeText(totals.maxAltitude);
    case TrailSummaryArea:
      return totals.area != 0 ? FormatTrailArea(totals.area) : "";
    case TrailSummarySlantedArea:
      return totals.slantedArea != 0 ? FormatTrailArea(totals.slantedArea) : "";
    default:
      return "";
  }
}

std::array<int, AspectClasses> CountAspects(const std::vector<Trail*>& trails) {
  std::array<int, AspectClasses> counts{};
  for (Trail* trail : trails) {
    MeasureIfNeeded(*trail);
    if (!IsClosed(*trail) || !HasAltitudes(*trail)) continue;
    ++counts[0];
    ++counts[AspectClassOf(*trail)];
  }
  return counts;
}

std::string TrailSummaryText(const std::vector<Trail*>& trails, double magneticDeviation) {
  std::string text;
  for (const TrailSummaryHeading& heading : TrailSummaryHeadings) {
    text.append(heading.first) += '\t';
  }
  text += '\n';
  for (const TrailSummaryHeading& heading : TrailSummaryHeadings) {
    text.append(heading.second) += '\t';
  }
  text += '\n';
  constexpr int Columns = static_cast<int>(TrailSummaryColumns);
  for (Trail* trail : trails) {
    text += trail->name.value_or("");
    for (int column = 1; column < Columns; ++column) {
      text += '\t' + TrailSummaryCell(*trail, column, magneticDeviation);
    }
    text += '\n';
  }
  const TrailTotals totals = SumTrails(trails);
  text += '\n';
  for (int column = 0; column <= TrailSummaryMaxAltitude; ++column) {
    text += TrailTotalsCell(totals, column) + '\t';
  }
  // An area of 0 takes no field, so a slanted area would move up into its place; but none is
  // without the other.
  for (const int column : {TrailSummaryArea, TrailSummarySlantedArea}) {
    const std::string cell = TrailTotalsCell(totals, column);
    if (!cell.empty()) text += cell + '\t';
  }
  text += '\n';
  if (totals.closedTrails == 0) return text;
  const auto counts = CountAspects(trails);
  for (size_t i = 0; i < AspectClasses; ++i) {
    text.append(AspectClassLabels[i]) += '\t' + std::to_string(counts[i]) + '\n';
  }
  return text;
}

}  // namespace orvane
