#include "editing/trail_rows.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

/// The point's name, followed by its synonyms: A100=Camp=7.
std::string NameWithSynonyms(const Point& point) {
  std::string text = point.name;
  for (const std::string& synonym : point.synonyms) text += "=" + synonym;
  return text;
}

TrailRow RepeatOf(const Point& point) {
  TrailRow row;
  row.name = point.name;
  row.isRepeat = true;
  return row;
}

/// What belongs to the point is shown in its first row.
void ShowPoint(const Point& point, TrailRow& row) {
  row.name = NameWithSynonyms(point);
  if (point.name.empty()) row.mark = MarkOf(point);
  row.comment = point.note;
  row.scale = point.labelLimit;
  for (size_t i = 0; i < row.sm.size(); ++i) row.sm[i] = point.sm[i];
}

TrailRow RowOfReading(const Point& point, const Measurement& reading) {
  TrailRow row;
  row.name = point.name;
  row.gps = reading.position;
  row.bearing = reading.bearing;
  row.distance = reading.distance;
  row.inclination = reading.inclination;
  row.altitude = WholeMeters(reading.altitude);
  row.weight = reading.count;
  row.isGps = (reading.flags & MeasureGps) != 0;
  row.isAltitude = (reading.flags & MeasureAltitude) != 0;
  row.isAbsolute = (reading.flags & MeasureAbsoluteBearing) != 0;
  if ((reading.flags & MeasureNear) != 0) {
    row.nearName = reading.nearName;
    row.showsNear = true;
  } else if ((reading.flags & MeasureCompass) != 0 && reading.base != nullptr) {
    row.basePoint = reading.base->name;
  }
  return row;
}

void AddRowsOf(const Point& point, bool isContour, std::vector<TrailRow>& rows) {
  const bool again = (point.flags & PointVisited) != 0;
  bool first = true;
  for (const Measurement& reading : point.measurements) {
    if ((reading.flags & MeasureDerived) != 0) continue;
    rows.push_back(again ? RepeatOf(point) : RowOfReading(point, reading));
    if (first && !again) ShowPoint(point, rows.back());
    first = false;
  }
  if (!first) return;
  TrailRow row = RepeatOf(point);
  if (isContour) {
    row.isRepeat = false;
    row.isGps = true;
    row.gps = point.geo;
  } else if (!again) {
    ShowPoint(point, row);
  }
  rows.push_back(std::move(row));
}

}  // namespace

int WholeMeters(float altitude) {
  if (!HasAltitude(altitude) || !std::isfinite(altitude)) return NoRowAltitude;
  constexpr float Most = 1e9F;
  return static_cast<int>(std::clamp(altitude, -Most, Most));
}

bool IsVisit(const TrailRow& row) {
  return !row.isGps && (!row.basePoint || row.basePoint->empty()) && row.altitude == NoRowAltitude;
}

bool IsKept(const TrailRow& row) { return !row.name.empty() || !IsVisit(row); }

bool HoldsAnything(const TrailRow& row) {
  const bool hasMeasure = std::any_of(row.sm.begin(), row.sm.end(), [](int sm) { return sm != 0; });
  const bool hasLeg = row.distance != 0 || row.bearing != 0 || row.inclination != 0;
  return !row.name.empty() || !IsVisit(row) || row.isRepeat || row.showsNear || row.comment ||
         row.scale != 0 || hasMeasure || hasLeg;
}

OwnMark MarkOf(const Point& point) {
  return {.shape = point.markShape,
          .filled = (point.flags & PointMarkFilled) != 0,
          .size = point.markSize};
}

void GiveMark(const OwnMark& mark, Point& point) {
  point.markShape = mark.shape;
  point.markSize = mark.size;
  if (mark.filled) point.flags |= PointMarkFilled;
}

std::vector<TrailRow> LoadTrailRows(const Trail& trail) {
  const bool isContour = IsContour(trail);
  for (Point* point : trail.points) point->flags &= ~std::uint32_t{PointVisited};
  std::vector<TrailRow> rows;
  for (Point* point : trail.points) {
    AddRowsOf(*point, isContour, rows);
    point->flags |= PointVisited;
  }
  return rows;
}

}  // namespace orvane
