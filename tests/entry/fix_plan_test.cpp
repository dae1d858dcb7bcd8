#include "entry/fix_plan.h"

#include "geo/earth.h"
#include "support/dice.h"
#include "support/map_from_text.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace orvane {
namespace {

constexpr std::int64_t Minute = 60'000;
constexpr std::int64_t Hour = 60 * Minute;
constexpr std::int64_t Day = 24 * Hour;

struct FixPlanTest : MapFixture {
  Map* map = &Open("T\tMain\n");
  FixTable table;
  FixOptions options;

  FixPlanTest() {
    table.animals = {{"Kiki", "Pongo"}, {"Bo", ""}};
    options.clock.offsetMinutes = 0;
  }

  void Add(std::int64_t utc, double lat = 1, std::uint32_t animal = 0, bool isOutlier = false) {
    Fix fix;
    fix.utc = utc;
    fix.lat = lat;
    fix.lon = 115;
    fix.animal = animal;
    fix.row = static_cast<std::uint32_t>(table.fixes.size()) + 2;
    fix.isOutlier = isOutlier;
    table.fixes.push_back(fix);
  }
  FixPlan Plan() { return PlanFixes(table, options, *map); }
  /// The states of the fixes in the order of the table, by their first letters.
  std::string States() {
    std::string states;
    for (const Fix& fix : Plan().fixes) states += FixStateName(fix.state).front();
    return states;
  }
  /// Each trail as "animal date times".
  static Texts Trails(const FixPlan& plan) {
    Texts trails;
    for (const PlannedTrail& trail : plan.trails) {
      std::string text = std::to_string(trail.animal) + ' ' + FormatDate(trail.date);
      for (size_t i = 0; i < trail.count; ++i) {
        text += ' ' + ClockText(plan.fixes[plan.order[trail.first + i]].local);
      }
      trails.push_back(text);
    }
    return trails;
  }
};

TEST(ReadFixClock, TakesOffsetsZonesAndAuto) {
  EXPECT_FALSE(ReadFixClock("auto")->offsetMinutes);
  EXPECT_EQ(ReadFixClock("+08:00")->offsetMinutes, 480);
  EXPECT_EQ(ReadFixClock("-03:30")->offsetMinutes, -210);
  EXPECT_EQ(ReadFixClock("+14:00")->offsetMinutes, 840);
  EXPECT_EQ(ReadFixClock("-14:00")->offsetMinutes, -840);
  EXPECT_TRUE(ReadFixClock("Asia/Makassar")->zone);
  for (const char* text : {"", "Auto", "+8:00", "08:00", "+08:60", "+14:01", "-15:00", "+0800",
                           "+08:0x", "+0x:00", "+08:000", "asia/makassar"}) {
    EXPECT_FALSE(ReadFixClock(text)) << text;
  }
}

TEST(UsualOffset, IsTheHourOfTheLongitude) {
  EXPECT_EQ(UsualOffset(0), 0);
  EXPECT_EQ(UsualOffset(7.49), 0);
  EXPECT_EQ(UsualOffset(7.5), 60);
  EXPECT_EQ(UsualOffset(-7.5), 0);
  EXPECT_EQ(UsualOffset(-7.51), -60);
  EXPECT_EQ(UsualOffset(115.6), 480);
  EXPECT_EQ(UsualOffset(180), 720);
  EXPECT_EQ(UsualOffset(-180), -720);
}

TEST(LocalTimes, AreNamedByDateAndClock) {
  EXPECT_EQ(FormatDate(DateOfLocal(0)), "1970-1-1");
  EXPECT_EQ(FormatDate(DateOfLocal(-1)), "1969-12-31");
  EXPECT_EQ(ClockText(-1), "23:59");
  EXPECT_EQ(ClockText(8 * Hour + 30 * Minute + 59'999), "08:30");
  EXPECT_EQ(OffsetText(480), "+08:00");
  EXPECT_EQ(OffsetText(-210), "-03:30");
  EXPECT_EQ(OffsetText(0), "+00:00");
}

TEST_F(FixPlanTest, MakesATrailForEachAnimalAndLocalDate) {
  options.clock.offsetMinutes = 60;
  Add(22 * Hour, 1, 1);
  Add(23 * Hour + 30 * Minute);
  Add(22 * Hour + 30 * Minute);
  Add(23 * Hour, 1, 1);
  const FixPlan plan = Plan();
  EXPECT_EQ(Trails(plan), (Texts{"0 1970-1-1 23:30", "0 1970-1-2 00:30", "1 1970-1-1 23:00",
                                 "1 1970-1-2 00:00"}));
  EXPECT_EQ(plan.types, (Texts{"Pongo", "Animal"}));
  EXPECT_EQ(plan.ranges, (std::vector<std::uint32_t>{0, 1}));
  EXPECT_EQ(plan.counts[static_cast<size_t>(FixState::Used)], 4U);
}

TEST_F(FixPlanTest, TakesTheClockFromTheMeanLongitude) {
  options.clock.offsetMinutes.reset();
  Add(0);
  Add(Minute);
  table.fixes[1].lon = -115;
  table.fixes[1].isOutlier = true;
  EXPECT_EQ(Plan().offsetMinutes, 0);
}

TEST_F(FixPlanTest, FollowsAZoneWhenItsClocksChange) {
  options.clock = *ReadFixClock("America/St_Johns");
  // On 2006-10-29 at 00:01 the clocks went back to 23:01 of the day before.
  const std::int64_t change = 1162089060LL * 1000;
  for (const std::int64_t minutes : {-62, -60, -1, 0, 59, 60}) Add(change + minutes * Minute);
  const FixPlan plan = Plan();
  EXPECT_EQ(Trails(plan), (Texts{"0 2006-10-28 22:59 23:01", "0 2006-10-29 00:00 00:01"}));
  EXPECT_EQ(plan.fixes[3].state, FixState::Repeat);
  EXPECT_EQ(plan.fixes[4].state, FixState::Repeat);
}

TEST_F(FixPlanTest, KeepsTheFirstFixOfAMinute) {
  Add(Minute + 59'999);
  Add(2 * Minute);
  Add(Minute);
  Add(Minute);
  EXPECT_EQ(States(), "ruur");
}

TEST_F(FixPlanTest, LeavesOutliersOutFirst) {
  Add(0, 1, 0, true);
  Add(1000);
  EXPECT_EQ(States(), "ou");
  table.fixes.clear();
  Add(0, 1, 0, true);
  Add(1000);
  options.filters.keepsOutliers = true;
  EXPECT_EQ(States(), "ur");
}

TEST_F(FixPlanTest, MeasuresSpeedFromTheLastFixThatIsLeft) {
  options.filters.maxSpeed = 10;
  Add(0, 1);
  Add(10 * Minute, 1.1);  // 67 km/h
  Add(20 * Minute, 1.0001);
  Add(80 * Minute, 1.09);   // 10 km/h from the fix before, more from the outlier
  Add(140 * Minute, 1.19);  // more than 10 km/h
  EXPECT_EQ(States(), "utuut");
}

TEST_F(FixPlanTest, TakesEveryNthOverAllDays) {
  options.filters.every = 3;
  for (int i = 0; i < 7; ++i) Add(i * 10 * Hour);
  EXPECT_EQ(States(), "uttuttu");
  table.fixes.clear();
  for (int i = 0; i < 3; ++i) Add(i * Hour);
  options.filters.every = ~std::uint64_t{0};
  EXPECT_EQ(States(), "utt");
}

TEST_F(FixPlanTest, LeavesOutFixesSoonAfterAnother) {
  options.filters.minMinutes = 30;
  for (const int minutes : {0, 29, 30, 59, 60}) Add(minutes * Minute);
  Add(Day - Minute);
  Add(Day);  // the first one of a day is always taken
  EXPECT_EQ(States(), "ututuuu");
}

TEST_F(FixPlanTest, WantsMinutesAndMetresBoth) {
  options.filters.minMinutes = 30;
  options.filters.minMeters = 500;
  Add(0, 1);
  Add(40 * Minute, 1.001);
  Add(50 * Minute, 1.01);
  Add(60 * Minute, 1.02);
  EXPECT_EQ(States(), "utut");
}

TEST_F(FixPlanTest, LeavesTrailsThatAreThere) {
  map = &Open("T\t\tpongo\tKIKI\t1970-1-1\nG\t08:00\tN1\tE115\nT\t\tPongo\tKiki\t1970-1-3\n");
  Add(0);
  Add(Day);
  Add(2 * Day);
  const FixPlan plan = Plan();
  EXPECT_EQ(Trails(plan), (Texts{"0 1970-1-2 00:00"}));
  EXPECT_EQ(plan.counts[static_cast<size_t>(FixState::AlreadyThere)], 2U);
  EXPECT_EQ(plan.ranges.size(), 1U);
}

TEST_F(FixPlanTest, LeavesTrailsOfTheBasis) {
  Map& basis = Open("T\t\tPongo\tKiki\t1970-1-1\n", "basis.map");
  map->basis = &basis;
  Add(0);
  EXPECT_EQ(States(), "a");
}

TEST_F(FixPlanTest, TheChosenTypeDecidesWhatIsThere) {
  map = &Open("T\t\tPongo\tKiki\t1970-1-1\n");
  options.type = "Ape\t1";
  Add(0);
  const FixPlan plan = Plan();
  EXPECT_EQ(Trails(plan).size(), 1U);
  EXPECT_EQ(plan.types, (Texts{"Ape 1", "Ape 1"}));
}

TEST_F(FixPlanTest, MakesRangesForAnimalsWithFixesLeft) {
  map = &Open("R\tKIKI\n");
  table.animals.push_back({"Mo", ""});
  Add(0);
  Add(0, 1, 1, true);
  Add(0, 1, 2);
  EXPECT_EQ(Plan().ranges, std::vector<std::uint32_t>{2});
  Add(0);
  options.makesRanges = false;
  EXPECT_TRUE(Plan().ranges.empty());
}

/// The filters once more, fix by fix and without regard to speed.
struct Twin {
  const FixFilters& filters;
  std::vector<const Fix*> left;

  static double Meters(const Fix& a, const Fix& b) {
    const auto radians = [](double degrees) { return degrees * RadiansPerDegree; };
    const double cosine =
        std::sin(radians(a.lat)) * std::sin(radians(b.lat)) +
        std::cos(radians(a.lat)) * std::cos(radians(b.lat)) * std::cos(radians(b.lon - a.lon));
    return std::acos(std::clamp(cosine, -1.0, 1.0)) / RadiansPerDegree * 111120;
  }

  /// Runs one filter after the other over the fixes of an animal in the order of their times.
  void Run() {
    std::vector<const Fix*> next;
    for (const Fix* fix : left) {
      if (filters.keepsOutliers || !fix->isOutlier) next.push_back(fix);
    }
    left = std::exchange(next, {});
    for (const Fix* fix : left) {
      const bool isNew = std::none_of(next.begin(), next.end(), [&](const Fix* before) {
        return before->local / Minute == fix->local / Minute;
      });
      if (isNew) next.push_back(fix);
    }
    left = std::exchange(next, {});
    for (const Fix* fix : left) {
      const bool isSlow =
          next.empty() || filters.maxSpeed == 0 ||
          Meters(*next.back(), *fix) * 3600.0 / static_cast<double>(fix->utc - next.back()->utc) <=
              filters.maxSpeed;
      if (isSlow) next.push_back(fix);
    }
    left = std::exchange(next, {});
    for (size_t i = 0; i < left.size(); i += filters.every) next.push_back(left[i]);
    left = std::exchange(next, {});
    for (const Fix* fix : left) {
      const Fix* last = nullptr;
      for (const Fix* before : next) {
        if (before->local / Day == fix->local / Day) last = before;
      }
      if (last == nullptr || (static_cast<double>(fix->utc - last->utc) >=
                                  filters.minMinutes * static_cast<double>(Minute) &&
                              Meters(*last, *fix) >= filters.minMeters)) {
        next.push_back(fix);
      }
    }
    left = next;
  }
};

TEST_F(FixPlanTest, FiltersAsATwinThatTakesFixesOneByOne) {
  Dice dice(15);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(round);
    table.fixes.clear();
    options = {};
    options.clock.offsetMinutes = 15 * dice.Int(-56, 57);
    FixFilters& filters = options.filters;
    filters.keepsOutliers = dice.OneIn(2);
    if (dice.OneIn(2)) filters.maxSpeed = dice.Between(0.5, 40);
    if (dice.OneIn(2)) filters.every = static_cast<std::uint64_t>(dice.Int(1, 5));
    if (dice.OneIn(2)) filters.minMinutes = dice.Int(0, 60);
    if (dice.OneIn(2)) filters.minMeters = dice.Between(0, 3000);
    const int size = dice.Int(1, 60);
    for (int i = 0; i < size; ++i) {
      Add(100 * Day + dice.Below(3 * 24 * 60 * 2) * Minute / 2, 1 + 0.02 * dice.Part(),
          static_cast<std::uint32_t>(dice.Below(2)), dice.OneIn(6));
    }
    const FixPlan plan = Plan();
    std::set<const Fix*> expected;
    for (const std::uint32_t animal : {0U, 1U}) {
      Twin twin{filters, {}};
      for (const Fix& fix : plan.fixes) {
        if (fix.animal == animal) twin.left.push_back(&fix);
      }
      std::stable_sort(twin.left.begin(), twin.left.end(),
                       [](const Fix* a, const Fix* b) { return a->utc < b->utc; });
      twin.Run();
      expected.insert(twin.left.begin(), twin.left.end());
    }
    size_t inTrails = 0;
    for (const PlannedTrail& trail : plan.trails) inTrails += trail.count;
    EXPECT_EQ(inTrails, expected.size());
    for (const Fix& fix : plan.fixes) {
      EXPECT_EQ(fix.state == FixState::Used, expected.contains(&fix)) << "row " << fix.row;
    }
  }
}

}  // namespace
}  // namespace orvane
