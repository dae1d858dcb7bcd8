#include "ranges/travel.h"

#include "geometry/planes.h"
#include "trails/metrics.h"

#include <cmath>

namespace orvane {

namespace {

constexpr int SlotsOfHour = SlotsOfDay / HoursOfDay;
constexpr double LargestPath = 1e15;  ///< metres: what a whole number is bounded to

/// A stop without a time does not count as travel.
bool HasTime(const Point& point) { return point.timeOfDay != 0 || point.duration > 1; }

bool IsOfDay(long slot) { return slot >= 0 && slot < SlotsOfDay; }

/// Calls `visit` for each slot of the day from `first` up to, not including, `end`.
template <typename Visit>
void ForEachSlot(Range& range, long first, long end, Visit visit) {
  for (long slot = std::max(first, 0L); slot < std::min(end, long{SlotsOfDay}); ++slot) {
    visit(range.slots[static_cast<size_t>(slot)]);
  }
}

void SpreadMeasures(Range& range, const Point& stop) {
  const long first = stop.timeOfDay / MinutesOfSlot;
  const long count = stop.duration / MinutesOfSlot;
  ForEachSlot(range, first, first + count, [&](TravelTally& slot) {
    for (size_t k = 0; k < 3; ++k) {
      slot.measure[k] += static_cast<float>(stop.sm[k]) / static_cast<float>(count);
    }
    ++slot.count;
  });
}

void SpreadDistance(Range& range, const Point& from, const Point& to) {
  const double distance = PlanDistance(from, to);
  const long last = (long{from.timeOfDay} + from.duration) / MinutesOfSlot - 1;
  const long next = to.timeOfDay / MinutesOfSlot;
  if (last == next) return;
  // The last slot of the stop counts with the way too, but it is only one follow.
  if (IsOfDay(last)) --range.slots[static_cast<size_t>(last)].count;
  const double share = distance / static_cast<double>(next - last);
  ForEachSlot(range, last, next, [&](TravelTally& slot) {
    ++slot.count;
    slot.distance += share;
  });
}

void TakeMeans(TravelTally& slot) {
  if (slot.count == 0) return;
  slot.distance /= static_cast<double>(slot.count);
  for (float& measure : slot.measure) measure /= static_cast<float>(slot.count);
}

void SumHour(Range& range, size_t hour) {
  TravelTally& sum = range.hours[hour];
  for (size_t i = 0; i < SlotsOfHour; ++i) {
    const TravelTally& slot = range.slots[hour * SlotsOfHour + i];
    sum.distance += slot.distance;
    sum.count += slot.count;
    for (size_t k = 0; k < 3; ++k) sum.measure[k] += slot.measure[k];
  }
  for (float& measure : sum.measure) {
    measure = static_cast<float>(double{measure} / double{SlotsOfHour});
  }
}

/// Cuts to a whole number of metres; 0 for a value that is not a number.
std::int64_t CutMeters(double meters) {
  if (!(std::abs(meters) < LargestPath)) return 0;
  return static_cast<std::int64_t>(meters);
}

}  // namespace

void ComputeTravel(Range& range) {
  range.totalMinutes = 0;
  for (const Point* point : range.points) range.totalMinutes += point->duration;
  range.slots = {};
  range.hours = {};
  for (const Trail* follow : range.follows) {
    for (size_t i = 0; i < follow->points.size(); ++i) {
      const Point& stop = *follow->points[i];
      if (!HasTime(stop)) continue;
      SpreadMeasures(range, stop);
      if (i + 1 == follow->points.size()) break;
      const Point& next = *follow->points[i + 1];
      if (HasTime(next)) SpreadDistance(range, stop, next);
    }
  }
  for (TravelTally& slot : range.slots) TakeMeans(slot);
  double day = 0;
  for (size_t hour = 0; hour < HoursOfDay; ++hour) {
    SumHour(range, hour);
    day += range.hours[hour].distance;
  }
  range.meanDailyPath = CutMeters(day + 0.5);
}

void RangePathLength(Range& range) {
  double sum = 0;
  for (const Trail* follow : range.follows) {
    if (follow->points.size() >= 2) sum += TrailPathLength(follow->points);
  }
  range.meanFollowPath =
      range.follows.empty() ? 0 : CutMeters(sum / static_cast<double>(range.follows.size()));
}

}  // namespace orvane
