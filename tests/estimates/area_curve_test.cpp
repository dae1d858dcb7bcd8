#include "estimates/area_curve.h"

#include "estimates/brute_force.h"
#include "estimates/percent_hulls.h"

#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

using Days = std::vector<std::vector<PlanePlace>>;

/// Days of a few fixes each, mostly around one place.
Days RandomDays(Dice& dice, int count) {
  Days days;
  for (int i = 0; i < count; ++i) days.push_back(test::RandomPlaces(dice, 1 + dice.Below(6)));
  return days;
}

std::vector<PlanePlace> FixesOfFirst(const Days& days, std::span<const size_t> order,
                                     size_t count) {
  std::vector<PlanePlace> fixes;
  for (size_t i = 0; i < count; ++i) {
    fixes.insert(fixes.end(), days[order[i]].begin(), days[order[i]].end());
  }
  return fixes;
}

TEST(RowsOfACurve, AreAllDaysUpToAHundredAndEvenlySpacedBeyond) {
  EXPECT_TRUE(DaysOfRows(0).empty());
  EXPECT_EQ(DaysOfRows(3), (std::vector<size_t>{1, 2, 3}));
  EXPECT_EQ(DaysOfRows(100).size(), 100U);
  EXPECT_EQ(DaysOfRows(100)[41], 42U);
  const auto rows = DaysOfRows(250);
  ASSERT_EQ(rows.size(), 100U);
  EXPECT_EQ(rows[0], 3U);  // 2.5, rounded up
  EXPECT_EQ(rows[1], 5U);
  EXPECT_EQ(rows[98], 248U);
  EXPECT_EQ(rows[99], 250U);
}

TEST(RandomOrdersOfDays, ComeFromOneGenerator) {
  // The first numbers of the generator with its usual seed are laid down by the standard.
  std::mt19937_64 twin(9);
  const auto orders = RandomOrders(5, 9);
  ASSERT_EQ(orders.size(), 200U);
  for (const auto& order : orders) {
    std::vector<size_t> expected = {0, 1, 2, 3, 4};
    for (size_t i = 4; i >= 1; --i) std::swap(expected[i], expected[twin() % (i + 1)]);
    EXPECT_EQ(order, expected);
  }
  EXPECT_NE(orders, RandomOrders(5, 10));
}

TEST(AreaCurve, OfOneDayIsItsArea) {
  const Days days = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const auto curve = AreaCurve(days, 1, nullptr);
  ASSERT_EQ(curve.size(), 1U);
  EXPECT_EQ(curve[0].days, 1U);
  EXPECT_EQ(curve[0].fixes, 4U);
  for (const CurveAreas& areas : {curve[0].all, curve[0].most}) {
    EXPECT_DOUBLE_EQ(areas.firstDays, 100);
    EXPECT_DOUBLE_EQ(areas.mean, 100);
    EXPECT_DOUBLE_EQ(areas.low, 100);
    EXPECT_DOUBLE_EQ(areas.high, 100);
  }
}

TEST(AreaCurve, OfNoDaysIsEmpty) { EXPECT_TRUE(AreaCurve({}, 1, nullptr).empty()); }

TEST(AreaCurve, AgreesWithSortingEverythingForEachOrder) {
  for (const int count : {2, 7, 30, 104}) {
    SCOPED_TRACE(count);
    Dice dice(static_cast<unsigned>(count));
    const Days days = RandomDays(dice, count);
    const auto curve = AreaCurve(days, 77, nullptr);
    const auto orders = RandomOrders(days.size(), 77);
    std::vector<size_t> byDate(days.size());
    for (size_t i = 0; i < byDate.size(); ++i) byDate[i] = i;
    ASSERT_EQ(curve.size(), std::min<size_t>(days.size(), 100));
    for (size_t row = 0; row < curve.size(); row += 1 + curve.size() / 3) {
      const size_t taken = curve[row].days;
      const auto first = FixesOfFirst(days, byDate, taken);
      EXPECT_EQ(curve[row].fixes, first.size());
      EXPECT_NEAR(curve[row].all.firstDays, test::WrappedHullArea(first), 1e-6);
      EXPECT_NEAR(curve[row].most.firstDays, test::SortedPercentArea(first, 95), 1e-6);
      std::vector<double> all;
      std::vector<double> most;
      for (const auto& order : orders) {
        const auto fixes = FixesOfFirst(days, order, taken);
        all.push_back(test::WrappedHullArea(fixes));
        most.push_back(test::SortedPercentArea(fixes, 95));
      }
      for (auto* areas : {&all, &most}) {
        double mean = 0;
        for (const double area : *areas) mean += area / 200;
        std::sort(areas->begin(), areas->end());
        const CurveAreas& found = areas == &all ? curve[row].all : curve[row].most;
        EXPECT_NEAR(found.mean, mean, 1e-6 * mean + 1e-6);
        // 199 steps of 2.5 %: the fourth number and 0.975 of the way to the next.
        EXPECT_NEAR(found.low, (*areas)[4] + 0.975 * ((*areas)[5] - (*areas)[4]), 1e-5);
        EXPECT_NEAR(found.high, (*areas)[194] + 0.025 * ((*areas)[195] - (*areas)[194]), 1e-5);
      }
    }
  }
}

TEST(AreaCurve, IsTheSameEachTimeAndDiffersWithTheSeed) {
  Dice dice(3);
  const Days days = RandomDays(dice, 40);
  const auto means = [&](std::uint64_t seed) {
    std::vector<double> list;
    for (const CurveRow& row : AreaCurve(days, seed, nullptr)) list.push_back(row.most.mean);
    return list;
  };
  EXPECT_EQ(means(5), means(5));
  EXPECT_NE(means(5), means(6));
}

/// Cancels at its third report.
struct Impatient : Progress {
  int reports = 0;
  void Reach(WorkStage stage, size_t done, size_t of) override {
    EXPECT_EQ(stage, WorkStage::Analyzing);
    EXPECT_LE(done, of);
    if (++reports == 3) Cancel();
  }
};

TEST(AreaCurve, StopsWhenItIsCanceled) {
  Dice dice(3);
  Impatient progress;
  EXPECT_TRUE(AreaCurve(RandomDays(dice, 40), 1, &progress).empty());
  EXPECT_EQ(progress.reports, 3);
}

TEST(StillGrows, ComparesTheLastQuarterOfTheDays) {
  const auto curveOf = [](const std::vector<double>& areas) {
    std::vector<CurveRow> curve;
    for (const double area : areas) {
      CurveRow row;
      row.days = curve.size() + 1;
      row.all.firstDays = area;
      curve.push_back(row);
    }
    return curve;
  };
  EXPECT_TRUE(StillGrows(curveOf({10, 20, 90, 100, 101, 102, 103, 108})));
  EXPECT_FALSE(StillGrows(curveOf({10, 20, 90, 100, 101, 103, 103, 108})));
  EXPECT_FALSE(StillGrows({}));
}

}  // namespace
}  // namespace orvane
