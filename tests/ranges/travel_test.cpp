#include "ranges/travel.h"

#include "ranges/analysis.h"
#include "ranges/range_case.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

// Slot 96 begins at 8:00. A stop from 8:00 to 8:10 has the slots 96 and 97.
constexpr int Eight = 480;
constexpr double Millimeter = 1e-3;

struct TravelTest : testing::Test, RangeCase {
  /// The travel of one range of all follows of type "Blue", their points in one plane.
  const Range& Travel() {
    Range& range = map.ranges.empty() ? AddRangeOf("Blue") : map.ranges.front();
    AnalyzeRange(range, map);
    return range;
  }
  static double Distance(const Range& range, size_t slot) { return range.slots[slot].distance; }
  static long Count(const Range& range, size_t slot) { return range.slots[slot].count; }
  /// The slots that hold anything.
  static std::vector<size_t> Used(const Range& range) {
    std::vector<size_t> used;
    for (size_t i = 0; i < SlotsOfDay; ++i) {
      const TravelTally& slot = range.slots[i];
      if (slot.distance != 0 || slot.count != 0 || slot.measure[0] != 0 || slot.measure[1] != 0 ||
          slot.measure[2] != 0) {
        used.push_back(i);
      }
    }
    return used;
  }
};

using Slots = std::vector<size_t>;

TEST_F(TravelTest, SpreadsTheWayFromTheLastSlotOfAStopToTheNextOne) {
  AddFollow("Blue", 1, {{0, 0, Eight, 10}, {300, 0, Eight + 30, 10}});
  const Range& range = Travel();
  for (size_t slot = 97; slot <= 101; ++slot) {
    EXPECT_NEAR(Distance(range, slot), 60, Millimeter) << slot;
    EXPECT_EQ(Count(range, slot), 1) << slot;
  }
  EXPECT_EQ(Used(range), (Slots{96, 97, 98, 99, 100, 101, 102, 103}));
  EXPECT_EQ(Distance(range, 96), 0);
  EXPECT_EQ(Distance(range, 102), 0);
  EXPECT_EQ(range.meanDailyPath, 300);
}

TEST_F(TravelTest, PutsTheWholeWayIntoOneSlotWithoutAGap) {
  AddFollow("Blue", 1, {{0, 0, Eight, 10}, {300, 0, Eight + 10, 10}});
  const Range& range = Travel();
  EXPECT_NEAR(Distance(range, 97), 300, Millimeter);
  EXPECT_EQ(Count(range, 97), 1);
  EXPECT_EQ(Distance(range, 98), 0);
}

TEST_F(TravelTest, GivesAShortStopNoSlots) {
  AddFollow("Blue", 1, {{0, 0, Eight, 4, 7, 7, 7}, {300, 0, Eight + 30, 4}});
  const Range& range = Travel();
  // (480 + 4) / 5 - 1 is slot 95: its count is taken down and up again.
  EXPECT_EQ(Used(range), (Slots{95, 96, 97, 98, 99, 100, 101}));
  EXPECT_EQ(Count(range, 95), 0);
  EXPECT_EQ(Count(range, 96), 1);
  EXPECT_NEAR(Distance(range, 96), 300.0 / 7, Millimeter);
  EXPECT_EQ(range.slots[96].measure[0], 0);
}

TEST_F(TravelTest, DoesNotDivideWhereTheCountCameOutAsZero) {
  AddFollow("Blue", 1, {{0, 0, Eight, 4}, {300, 0, Eight + 30, 4}});
  EXPECT_NEAR(Distance(Travel(), 95), 300.0 / 7, Millimeter);
}

TEST_F(TravelTest, LeavesOutTheWayBetweenOverlappingStops) {
  // The last slot of the first stop is 101, the second begins in slot 98: the count of 101 goes
  // down, and no way is added.
  AddFollow("Blue", 1, {{0, 0, Eight, 30}, {300, 0, Eight + 10, 5}});
  const Range& range = Travel();
  EXPECT_EQ(Count(range, 101), 0);
  EXPECT_EQ(Count(range, 100), 1);
  EXPECT_EQ(Count(range, 98), 2);
  EXPECT_EQ(range.meanDailyPath, 0);
}

TEST_F(TravelTest, LeavesOutTheWayIntoTheLastSlotOfTheStopItself) {
  // The last slot of the first stop is the slot of the second: nothing more happens.
  AddFollow("Blue", 1, {{0, 0, Eight, 10}, {300, 0, Eight + 5, 10}});
  const Range& range = Travel();
  EXPECT_EQ(Count(range, 97), 2);
  EXPECT_EQ(range.meanDailyPath, 0);
}

TEST_F(TravelTest, TakesTheMeanOverTheFollowsThatCoverASlot) {
  AddFollow("Blue", 1, {{0, 0, Eight, 10}, {100, 0, Eight + 10, 10}});
  AddFollow("Blue", 2, {{0, 0, Eight, 10}, {300, 0, Eight + 10, 10}});
  AddFollow("Blue", 3, {{0, 0, 900, 10}, {500, 0, 910, 10}});
  const Range& range = Travel();
  EXPECT_NEAR(Distance(range, 97), 200, Millimeter);
  EXPECT_EQ(Count(range, 97), 2);
  EXPECT_NEAR(Distance(range, 181), 500, Millimeter);
  EXPECT_EQ(range.meanDailyPath, 700);
}

TEST_F(TravelTest, SpreadsMeasuresOverTheSlotsOfTheStop) {
  AddFollow("Blue", 1, {{0, 0, Eight, 20, 8, 4, 1}});
  AddFollow("Blue", 2, {{0, 0, Eight, 10, 2, 0, 0}});
  const Range& range = Travel();
  EXPECT_FLOAT_EQ(range.slots[96].measure[0], 1.5F);  // (8 / 4 + 2 / 2) / 2
  EXPECT_FLOAT_EQ(range.slots[96].measure[1], 0.5F);
  EXPECT_FLOAT_EQ(range.slots[98].measure[0], 2);  // one follow covers it
  EXPECT_FLOAT_EQ(range.slots[99].measure[2], 0.25F);
}

TEST_F(TravelTest, SumsUpTheHours) {
  AddFollow("Blue", 1, {{0, 0, Eight, 60, 12, 0, 0}, {120, 0, Eight + 70, 5, 6, 0, 0}});
  const Range& range = Travel();
  // Slot 107, the last of the hour, and 108 and 109 carry 40 m each.
  EXPECT_NEAR(range.hours[8].distance, 40, Millimeter);
  EXPECT_NEAR(range.hours[9].distance, 80, Millimeter);
  EXPECT_EQ(range.hours[8].count, 12);
  EXPECT_EQ(range.hours[9].count, 3);
  EXPECT_FLOAT_EQ(range.hours[8].measure[0], 1);
  EXPECT_FLOAT_EQ(range.hours[9].measure[0], 0.5F);
  EXPECT_EQ(range.hours[7].count, 0);
  EXPECT_EQ(range.meanDailyPath, 120);
}

TEST_F(TravelTest, TravelsNothingAcrossAPointWithoutTime) {
  Trail& trail =
      AddFollow("Blue", 1, {{0, 0, Eight, 10}, {300, 0, 0, 1}, {600, 0, Eight + 30, 10}});
  const Range& range = Travel();
  EXPECT_EQ(range.meanDailyPath, 0);
  EXPECT_EQ(Used(range), (Slots{96, 97, 102, 103}));
  // With two minutes it is a stop at midnight: from there a way of 300 m leads to 8:30.
  trail.points[1]->duration = 2;
  EXPECT_NEAR(Distance(Travel(), 50), 300.0 / 103, Millimeter);
}

TEST_F(TravelTest, CountsFromMidnightOnForAStopOfTwoMinutesThere) {
  // Its last slot is the one before midnight, which is left out with its share of the way.
  AddFollow("Blue", 1, {{0, 0, 0, 2}, {300, 0, 10, 5}});
  const Range& range = Travel();
  EXPECT_EQ(Used(range), (Slots{0, 1, 2}));
  EXPECT_NEAR(Distance(range, 0), 100, Millimeter);
  EXPECT_EQ(range.meanDailyPath, 200);
}

TEST_F(TravelTest, LeavesOutSlotsAfterMidnight) {
  AddFollow("Blue", 1, {{0, 0, 1430, 60, 12, 12, 12}, {500, 0, 1500, 10}});
  const Range& range = Travel();
  EXPECT_EQ(Used(range), (Slots{286, 287}));
  EXPECT_FLOAT_EQ(range.slots[287].measure[0], 1);
  EXPECT_EQ(range.meanDailyPath, 0);
}

TEST_F(TravelTest, TakesTimesAndDurationsOfAnySize) {
  constexpr int largest = std::numeric_limits<int>::max();
  constexpr int least = std::numeric_limits<int>::min();
  for (const int time : {least, -1, 0, 1439, largest}) {
    for (const int duration : {least, -600, -1, 0, 1440, largest}) {
      AddFollow("Blue", 1, {{0, 0, time, duration, 1, -1, largest}, {300, 0, Eight, 10}});
      AddFollow("Blue", 1, {{0, 0, Eight, 10}, {300, 0, time, duration, least, 0, 0}});
    }
  }
  const Range& range = Travel();
  for (const TravelTally& hour : range.hours) EXPECT_TRUE(std::isfinite(hour.distance));
}

TEST_F(TravelTest, SumsUpMinutesWithRepetitions) {
  Trail& trail = AddFollow("Blue", 1, {{0, 0, Eight, 10}, {300, 0, Eight + 30, 7}});
  trail.points.push_back(trail.points.front());
  EXPECT_EQ(Travel().totalMinutes, 27);
}

TEST_F(TravelTest, GivesARangeOfTemplatesMinutesAndNoTravel) {
  Named("Pde1", 0, 0).duration = 5;
  Named("Pde2", 100, 0);
  Range& range = AddRangeOf("points:Pde*");
  AnalyzeRange(range, map);
  EXPECT_EQ(range.points.size(), 2U);
  EXPECT_TRUE(range.follows.empty());
  EXPECT_EQ(range.totalMinutes, 5);
  EXPECT_EQ(range.meanDailyPath, 0);
  EXPECT_EQ(range.meanFollowPath, 0);
}

TEST_F(TravelTest, WalksAllPointsOfAFollowWhateverTheTimesOfTheKeys) {
  // The window takes only the first stop; the way to the second is travelled all the same, in one
  // plane about the range.
  AddFollow("Blue", 1, {{0, 0, Eight, 10}, {300, 400, Eight + 30, 10}});
  Range& range = AddRange("Morning", {KeyOf("Blue", Eight, Eight + 10)});
  AnalyzeRange(range, map);
  EXPECT_EQ(range.points.size(), 1U);
  EXPECT_EQ(range.meanDailyPath, 500);
  EXPECT_EQ(range.totalMinutes, 10);
}

TEST_F(TravelTest, RoundsTheDayAndCutsTheMeanFollow) {
  AddFollow("Blue", 1, {{0, 0, Eight, 10}, {100.7, 0, Eight + 30, 10}});
  const Range& range = Travel();
  EXPECT_EQ(range.meanDailyPath, 101);
  EXPECT_EQ(range.meanFollowPath, 100);
}

TEST_F(TravelTest, CountsFollowsOfFewerThanTwoPointsInTheMeanPath) {
  AddFollow("Blue", 1, {{0, 0, Eight, 10}, {301, 0, Eight + 30, 10}});
  AddFollow("Blue", 2, {{50, 0, Eight, 10}});
  AddTrail("Blue");
  EXPECT_EQ(Travel().meanFollowPath, 100);
}

TEST_F(TravelTest, AveragesEachSlotOfRandomDaysOverItsFollows) {
  constexpr std::uint64_t seed = 7;
  Dice dice(seed);
  std::vector<std::vector<double>> distances;
  for (PackedDate day = 0; day < 20; ++day) {
    std::vector<Stop> stops;
    int time = 300;
    for (int i = 0; i < 15; ++i) {
      const int duration = dice.Int(5, 30);
      stops.push_back({dice.Between(0, 500), 0, time, duration});
      time += duration + dice.Int(5, 40);
    }
    AddFollow("Blue", day, stops);
    // The same by brute force: minutes of way for each slot of this day, all along one line.
    auto& slots = distances.emplace_back(SlotsOfDay, -1);
    for (size_t i = 0; i < stops.size(); ++i) {
      for (int slot = stops[i].time / 5; slot < stops[i].time / 5 + stops[i].duration / 5; ++slot) {
        slots[static_cast<size_t>(slot)] = std::max(slots[static_cast<size_t>(slot)], 0.0);
      }
      if (i + 1 == stops.size()) break;
      const int last = (stops[i].time + stops[i].duration) / 5 - 1;
      const int next = stops[i + 1].time / 5;
      for (int slot = last; slot < next; ++slot) {
        auto& sum = slots[static_cast<size_t>(slot)];
        sum = std::max(sum, 0.0) + std::abs(stops[i + 1].north - stops[i].north) / (next - last);
      }
    }
  }
  const Range& range = Travel();
  double day = 0;
  for (size_t slot = 0; slot < SlotsOfDay; ++slot) {
    double sum = 0;
    for (const auto& slots : distances) sum += std::max(slots[slot], 0.0);
    // Slots may be counted less often than they are covered where a stop ends within one; where
    // the counts agree the means must.
    if (Count(range, slot) != 0) {
      EXPECT_NEAR(Distance(range, slot) * static_cast<double>(Count(range, slot)), sum, 0.01)
          << "seed " << seed << " slot " << slot;
    }
    day += Distance(range, slot);
  }
  EXPECT_EQ(range.meanDailyPath, static_cast<long>(day + 0.5));
}

}  // namespace
}  // namespace orvane
