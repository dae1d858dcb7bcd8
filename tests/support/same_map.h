#pragma once

#include "base/dates.h"
#include "base/number_text.h"
#include "model/map.h"
#include "model/time_names.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace orvane {

/// Expects of a map that was edited, saved and read again what the windows held of it. These may
/// differ: the order of the readings of a point, tabs in notes, digits that are not written, and
/// what is never written.

inline std::string WithoutTabs(std::string text) {
  std::erase(text, '\t');
  return text;
}

/// Degrees that are lost where a file has not all digits.
constexpr double WrittenDegrees = 2e-6;

/// What the file holds of a reading but its place: of each kind only what it uses.
inline std::string TextOf(const Measurement& reading) {
  std::string text = FormatGeneral(double{reading.altitude}) + " " + std::to_string(reading.count);
  if ((reading.flags & MeasureCompass) != 0) {
    text += " shot " + (reading.base == nullptr ? "" : reading.base->name) + " " +
            FormatGeneral(reading.bearing) + " " + FormatGeneral(reading.distance) + " " +
            FormatGeneral(reading.inclination) + " " +
            std::to_string(reading.flags & MeasureAbsoluteBearing);
  }
  const auto kinds = MeasureGps | MeasureAltitude | MeasureNear;
  return text + " " + std::to_string(reading.flags & kinds) + " " + reading.nearName;
}

/// Readings come back in the reverse order.
inline void ExpectSameReadings(const Point& held, const Point& back) {
  std::vector<const Measurement*> readings;
  for (const Measurement& reading : back.measurements) readings.insert(readings.begin(), &reading);
  ASSERT_EQ(std::distance(held.measurements.begin(), held.measurements.end()),
            std::distance(readings.begin(), readings.end()))
      << held.name;
  auto read = readings.begin();
  for (const Measurement& reading : held.measurements) {
    EXPECT_EQ(TextOf(reading), TextOf(**read)) << held.name;
    if ((reading.flags & MeasureGps) != 0) {
      EXPECT_NEAR(reading.position.lat, (*read)->position.lat, WrittenDegrees) << held.name;
      EXPECT_NEAR(reading.position.lon, (*read)->position.lon, WrittenDegrees) << held.name;
    }
    ++read;
  }
}

/// Altitudes are not compared: those of a region depend on the order of the readings.
inline void ExpectSamePoint(const Point& held, const Point& back) {
  ASSERT_EQ(held.name, back.name);
  ExpectSameReadings(held, back);
  EXPECT_EQ(held.timeOfDay, back.timeOfDay) << held.name;
  EXPECT_EQ(held.duration, back.duration) << held.name;
  EXPECT_TRUE(std::equal(std::begin(held.sm), std::end(held.sm), std::begin(back.sm))) << held.name;
  EXPECT_EQ(held.markShape, back.markShape) << held.name;
  EXPECT_EQ(held.labelLimit, back.labelLimit) << held.name;
  EXPECT_EQ(WithoutTabs(held.note.value_or("")), WithoutTabs(back.note.value_or("")));
  if (held.measurements.empty()) return;  // it keeps a place that no reading gives
  EXPECT_EQ(IsPlaced(held), IsPlaced(back)) << held.name;
  if (!IsPlaced(held) || !IsPlaced(back)) return;
  EXPECT_NEAR(held.geo.lat, back.geo.lat, WrittenDegrees) << held.name;
  EXPECT_NEAR(held.geo.lon, back.geo.lon, WrittenDegrees) << held.name;
}

inline void ExpectSameTrail(const Trail& held, const Trail& back) {
  EXPECT_EQ(held.name, back.name);
  EXPECT_EQ(held.type, back.type);
  EXPECT_EQ(held.focalAnimal, back.focalAnimal);
  EXPECT_EQ(held.date, back.date);
  EXPECT_EQ(held.color, back.color);
  EXPECT_EQ(held.width, back.width);
  EXPECT_EQ(held.groupSize, back.groupSize);
  ASSERT_EQ(held.points.size(), back.points.size()) << held.name.value_or("");
  for (size_t i = 0; i < held.points.size(); ++i) {
    ExpectSamePoint(*held.points[i], *back.points[i]);
  }
}

inline std::set<std::string> LooseNames(const Map& map) {
  std::set<std::string> names;
  for (const Point* point : map.loosePoints) {
    if (!IsTimeName(point->name)) names.insert(point->name);  // the others are never written
  }
  return names;
}

/// Equal times mean no limit, whatever they are; so does an end without a first date. A
/// key without a type comes back with the type of what has none.
inline std::string TextOf(const SearchKey& key) {
  const bool timed = key.timeFrom != key.timeTo;
  return (key.type.empty() ? "!!Unknown!!" : key.type) + "/" + key.focalAnimal.value_or("-") + " " +
         FormatDate(key.dateFrom) + " " + (key.dateFrom == 0 ? "" : FormatDate(key.dateTo)) + " " +
         std::to_string(timed ? key.timeFrom : 0) + " " + std::to_string(timed ? key.timeTo : 0);
}

inline std::vector<std::string> KeysOf(const Range& range) {
  std::vector<std::string> keys;
  for (const SearchKey& key : range.keys) keys.push_back(TextOf(key));
  return keys;
}

/// A file gives the keys back in the reverse order.
inline void ExpectSameRange(const Range& held, const Range& back) {
  EXPECT_EQ(held.name, back.name);
  std::vector<std::string> keys = KeysOf(back);
  std::reverse(keys.begin(), keys.end());
  EXPECT_EQ(KeysOf(held), keys) << held.name.value_or("");
  EXPECT_EQ(held.follows.size(), back.follows.size()) << held.name.value_or("");
  EXPECT_EQ(held.points.size(), back.points.size()) << held.name.value_or("");
  EXPECT_EQ(held.totalMinutes, back.totalMinutes) << held.name.value_or("");
  EXPECT_EQ(WithoutTabs(held.note.value_or("")), WithoutTabs(back.note.value_or("")));
}

/// The ranges that overlap. Their overlap is called after them only when it is computed again.
inline std::multiset<std::set<std::string>> OverlappingRanges(const Map& map) {
  std::multiset<std::set<std::string>> pairs;
  for (const RangeIntersection& overlap : map.intersections) {
    pairs.insert({overlap.a.range->name.value_or(""), overlap.b.range->name.value_or("")});
  }
  return pairs;
}

/// A file can't hold a reading from a time of another trail: there the time means that of the trail
/// on which the point is written.
inline bool CanBeWritten(const Map& map) {
  return std::all_of(map.pointStore.begin(), map.pointStore.end(), [](const Point& point) {
    return std::all_of(point.measurements.begin(), point.measurements.end(),
                       [&](const Measurement& reading) {
                         return reading.base == nullptr || !IsTimeName(reading.base->name) ||
                                reading.base->trail == point.trail;
                       });
  });
}

inline void ExpectSameMap(const Map& held, const Map& back) {
  const auto count = [](const auto& list) { return std::distance(list.begin(), list.end()); };
  ASSERT_EQ(count(held.trails), count(back.trails));
  auto trail = back.trails.begin();
  for (const Trail& each : held.trails) ExpectSameTrail(each, *trail++);
  EXPECT_EQ(LooseNames(held), LooseNames(back));
  ASSERT_EQ(count(held.ranges), count(back.ranges));
  // A file gives the ranges back in the reverse order.
  std::vector<const Range*> ranges;
  for (const Range& range : back.ranges) ranges.insert(ranges.begin(), &range);
  auto range = ranges.begin();
  for (const Range& each : held.ranges) ExpectSameRange(each, **range++);
  EXPECT_EQ(OverlappingRanges(held), OverlappingRanges(back));
}

}  // namespace orvane
