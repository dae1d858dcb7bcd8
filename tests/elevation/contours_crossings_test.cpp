#include "elevation/contours_crossings.h"

#include "ground.h"

#include <cmath>
#include <limits>
#include <list>

namespace orvane {
namespace {

TEST(CrossingLists, CrossingIsWhereTheLevelIsBetweenTheEnds) {
  CrossingLists lists(1, 4, 30, 0.5);
  ASSERT_TRUE(lists.Add(0, 1, 30.5, 97, 107, 10));
  ASSERT_EQ(lists.Size(), 1U);
  EXPECT_DOUBLE_EQ(lists.At(0).coordinate, 30.5 + 0.3 * 0.5);
  EXPECT_EQ(lists.At(0).level, 100);
}

TEST(CrossingLists, OnAFallingEdgeTheCrossingIsMirrored) {
  CrossingLists lists(1, 4, 30, 0.5);
  ASSERT_TRUE(lists.Add(0, 1, 30.5, 107, 97, 10));
  EXPECT_DOUBLE_EQ(lists.At(0).coordinate, 30.5 + 0.3 * 0.5);
}

TEST(CrossingLists, ALevelOnAnEndIsACrossingOfBothEdgesThatMeetThere) {
  CrossingLists rows(1, 4, 30, 0.5);
  ASSERT_TRUE(rows.Add(0, 0, 30, 92, 100, 10));
  ASSERT_TRUE(rows.Add(0, 1, 30.5, 100, 104, 10));
  ASSERT_EQ(rows.Size(), 2U);
  EXPECT_DOUBLE_EQ(rows.At(0).coordinate, 30.5);
  EXPECT_DOUBLE_EQ(rows.At(1).coordinate, 30.5);
}

TEST(CrossingLists, AnEdgeWhoseEndsAreTheSameLevelCrossesAtItsStart) {
  CrossingLists lists(1, 4, 30, 0.5);
  ASSERT_TRUE(lists.Add(0, 1, 30.5, 100, 100, 10));
  ASSERT_EQ(lists.Size(), 1U);
  EXPECT_EQ(lists.At(0).coordinate, 30.5);
  ASSERT_TRUE(lists.Add(0, 2, 31, 105, 105, 10));
  EXPECT_EQ(lists.Size(), 1U);
}

TEST(CrossingLists, LevelZeroHasNoSign) {
  CrossingLists lists(1, 4, 30, 0.5);
  ASSERT_TRUE(lists.Add(0, 0, 30, -3, 4, 10));
  EXPECT_FALSE(std::signbit(lists.At(0).level));
}

TEST(CrossingLists, WhatIsLeftFurtherOnHidesWhatIsNear) {
  CrossingLists lists(1, 20, 0, 1);
  ASSERT_TRUE(lists.Add(0, 2, 2, 95, 105, 10));
  ASSERT_TRUE(lists.Add(0, 9, 9, 145, 155, 10));
  // The walk begins at the crossing in cell 9, and that ends it.
  EXPECT_FALSE(lists.FindNextCrossing(0, 2.5, 100));
  // From there on it is within reach of neither, but passes.
  EXPECT_FALSE(lists.FindNextCrossing(0, 7, 100));
  lists.Take(1);
  EXPECT_EQ(lists.FindNextCrossing(0, 2.5, 100), 0U);
}

TEST(CrossingLists, SearchReachesLessThanThreeSteps) {
  CrossingLists lists(1, 20, 0, 1);
  ASSERT_TRUE(lists.Add(0, 8, 8, 95, 105, 10));  // at 8.5
  EXPECT_FALSE(lists.FindNextCrossing(0, 5.5, 100));
  EXPECT_TRUE(lists.FindNextCrossing(0, 5.6, 100));
  EXPECT_TRUE(lists.FindNextCrossing(0, 11.4, 100));
  EXPECT_FALSE(lists.FindNextCrossing(0, 11.5, 100));
  EXPECT_FALSE(lists.FindNextCrossing(0, 8.5, 90));
}

TEST(CrossingLists, OfTwoEquallyNearTheFirstOfTheListIsTaken) {
  CrossingLists lists(1, 20, 0, 1);
  ASSERT_TRUE(lists.Add(0, 4, 4, 95, 105, 10));
  ASSERT_TRUE(lists.Add(0, 6, 6, 95, 105, 10));
  EXPECT_EQ(lists.FindNextCrossing(0, 5.5, 100), 1U) << "the eastern one comes first";
}

TEST(CrossingLists, HeadsAreTheEasternCellsAndInThemTheLowLevels) {
  CrossingLists lists(2, 3, 0, 1);
  ASSERT_TRUE(lists.Add(1, 0, 0, 95, 105, 10));
  ASSERT_TRUE(lists.Add(1, 2, 2, 99, 125, 10));
  EXPECT_FALSE(lists.TakeHead(0));
  std::vector<float> levels;
  while (const auto head = lists.TakeHead(1)) levels.push_back(lists.At(*head).level);
  EXPECT_EQ(levels, (std::vector<float>{100, 110, 120, 100}));
}

TEST(CrossingLists, TooManyLevelsAreRefused) {
  CrossingLists lists(1, 4, 30, 0.5);
  EXPECT_TRUE(lists.Add(0, 0, 30, 0.5, 100000.5, 1));
  EXPECT_EQ(lists.Size(), 100000U);
  EXPECT_FALSE(lists.Add(0, 1, 30.5, 0.5, 100001.5, 1));
  EXPECT_FALSE(lists.Add(0, 1, 30.5, 0, 3e38, 1));
  EXPECT_FALSE(lists.Add(0, 1, 30.5, 0, std::numeric_limits<double>::infinity(), 1));
  // What is not a number has no crossing.
  EXPECT_TRUE(lists.Add(0, 1, 30.5, 0.5, std::nan(""), 1));
  // Levels beyond which 1 metre is less than the last bit.
  EXPECT_TRUE(lists.Add(0, 2, 31, 3e38, 3e38, 1));
}

/// One list: crossings in a row, walked from the head.
struct LiteralList {
  struct Entry {
    double coordinate;
    float level;
    CrossingLists::Index index;
  };
  std::list<Entry> entries;

  std::list<Entry>::iterator Find(double reference, float level, double step) {
    auto nearest = entries.end();
    for (auto at = entries.begin(); at != entries.end(); ++at) {
      if (at->coordinate >= reference + 3 * step) break;
      const double off = std::fabs(at->coordinate - reference);
      if (at->level != level || off >= 3 * step) continue;
      if (nearest == entries.end() || off < std::fabs(nearest->coordinate - reference))
        nearest = at;
    }
    return nearest;
  }
};

/// \param origin, step  of the lists
/// \param rise          the most that neighbours differ by, in intervals
void CompareWithWalk(std::uint64_t seed, double origin, double step, double rise) {
  SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << step << " rise " << rise);
  constexpr int Cells = 60;
  Dice dice(seed);
  CrossingLists lists(1, Cells, origin, step);
  LiteralList literal;
  double altitude = 0;
  for (int cell = 0; cell < Cells; ++cell) {
    double next = altitude + (dice.Part() - 0.5) * 2 * rise * 10;
    if (dice.Below(3) == 0) next = std::round(next / 10) * 10;
    if (dice.Below(8) == 0) next = altitude;
    const auto before = static_cast<CrossingLists::Index>(lists.Size());
    ASSERT_TRUE(lists.Add(0, cell, origin + cell * step, altitude, next, 10));
    auto place = literal.entries.begin();
    for (auto i = before; i < lists.Size(); ++i) {
      place =
          std::next(literal.entries.insert(place, {lists.At(i).coordinate, lists.At(i).level, i}));
    }
    altitude = next;
  }
  int found = 0;
  for (int round = 0; !literal.entries.empty(); ++round) {
    if (dice.Below(10) == 0) {
      ASSERT_EQ(lists.TakeHead(0), literal.entries.front().index);
      literal.entries.pop_front();
      continue;
    }
    // Somewhere, or near a crossing that is left, often the easternmost ones.
    double reference = origin + dice.Part() * Cells * step;
    auto target = literal.entries.begin();
    const int size = static_cast<int>(literal.entries.size());
    std::advance(target, dice.Below(2) == 0 ? dice.Below(size) : dice.Below(std::min(size, 12)));
    if (dice.Below(4) != 0) reference = target->coordinate + (dice.Part() - 0.5) * 7 * step;
    const auto expected = literal.Find(reference, target->level, step);
    const auto index = lists.FindNextCrossing(0, reference, target->level);
    ASSERT_EQ(index.has_value(), expected != literal.entries.end()) << "round " << round;
    if (!index) continue;
    ASSERT_EQ(*index, expected->index) << "round " << round;
    ++found;
    lists.Take(*index);
    literal.entries.erase(expected);
  }
  EXPECT_FALSE(lists.TakeHead(0));
  EXPECT_GT(found, rise >= 1 ? 3 : -1);
}

TEST(CrossingLists, SearchAnswersAsAWalkOverTheList) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    for (const double rise : {0.4, 1.0, 4.0, 30.0}) {
      CompareWithWalk(seed, 115.6, 0.0003, rise);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(CrossingLists, SearchAnswersAsAWalkWhereAStepIsAllButRoundedAway) {
  for (std::uint64_t seed = 1; seed <= 15; ++seed) {
    for (const double step : {1e-14, 5e-14, 1e-13, 1e-12, 1e-11}) {
      CompareWithWalk(seed, 115.6, step, 4);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

}  // namespace
}  // namespace orvane
