#include "survey/stray_turns.h"

#include "support/dice.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

/// Strays that each need some others to be placed first; a restless one does not say which.
struct Dependencies {
  std::vector<Point> points;
  std::vector<std::vector<size_t>> needs;
  std::vector<bool> restless;

  Dependencies(size_t count, Dice& dice) : points(count), needs(count), restless(count) {
    for (size_t i = 0; i < count; ++i) {
      for (int n = dice.Int(0, 3); n > 0; --n) {
        needs[i].push_back(static_cast<size_t>(dice.Below(static_cast<int>(count))));
      }
      restless[i] = dice.Int(0, 4) == 0;
    }
  }

  /// The first need that is not placed, or null.
  const Point* Missing(size_t stray, const std::vector<size_t>& placed) const {
    for (const size_t need : needs[stray]) {
      if (std::find(placed.begin(), placed.end(), need) == placed.end()) return &points[need];
    }
    return nullptr;
  }
};

/// The order in which strays are placed if each is tried in every pass.
std::vector<size_t> PlacedByPlainPasses(const Dependencies& strays) {
  std::vector<size_t> placed;
  for (bool gained = true; gained;) {
    gained = false;
    for (size_t i = 0; i < strays.points.size(); ++i) {
      if (std::find(placed.begin(), placed.end(), i) != placed.end()) continue;
      if (strays.Missing(i, placed) != nullptr) continue;
      placed.push_back(i);
      gained = true;
    }
  }
  return placed;
}

TEST(StrayTurns, PlaceInTheOrderOfPlainPasses) {
  Dice dice(7);
  for (int round = 0; round < 500; ++round) {
    const Dependencies strays(static_cast<size_t>(dice.Int(1, 30)), dice);
    std::vector<size_t> placed;
    StrayTurns turns(strays.points.size());
    while (const auto turn = turns.Next()) {
      const Point* missing = strays.Missing(*turn, placed);
      if (missing == nullptr) {
        placed.push_back(*turn);
        turns.NoteGain();
        turns.Wake(strays.points[*turn]);
      } else if (strays.restless[*turn]) {
        turns.TryEachPass();
      } else {
        turns.WaitFor(std::vector{missing, &strays.points[*turn]});
      }
    }
    ASSERT_EQ(placed, PlacedByPlainPasses(strays)) << "round " << round;
  }
}

TEST(StrayTurns, SkipWhatWaitsUntilItIsWoken) {
  const std::vector<Point> points(3);
  StrayTurns turns(3);
  EXPECT_EQ(turns.Next(), 0U);
  turns.WaitFor(std::vector{&points[2]});
  EXPECT_EQ(turns.Next(), 1U);
  turns.WaitFor({});  // never again
  EXPECT_EQ(turns.Next(), 2U);
  turns.NoteGain();
  turns.Wake(points[2]);
  turns.Wake(points[2]);
  EXPECT_EQ(turns.Next(), 0U);
  turns.NoteGain();
  EXPECT_EQ(turns.Next(), std::nullopt);
}

TEST(StrayTurns, WakeAStrayFurtherDownInTheSamePass) {
  const std::vector<Point> points(3);
  StrayTurns turns(3);
  EXPECT_EQ(turns.Next(), 0U);
  turns.TryEachPass();
  EXPECT_EQ(turns.Next(), 1U);
  turns.NoteGain();
  EXPECT_EQ(turns.Next(), 2U);
  turns.WaitFor(std::vector{points.data()});
  EXPECT_EQ(turns.Next(), 0U);  // the second pass
  turns.NoteGain();
  turns.Wake(points[0]);
  EXPECT_EQ(turns.Next(), 2U);
}

TEST(StrayTurns, EndAfterAPassWithoutGain) {
  StrayTurns turns(2);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(turns.Next(), i);
    turns.TryEachPass();
  }
  EXPECT_EQ(turns.Next(), std::nullopt);
  EXPECT_EQ(StrayTurns(0).Next(), std::nullopt);
}

}  // namespace
}  // namespace orvane
