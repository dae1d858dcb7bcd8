#include "view/label_boxes.h"

#include "view/view_case.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

TEST(LabelBoxes, NothingHitsWhileNoneIsKept) { EXPECT_FALSE(LabelBoxes().Hits({0, 0, 100, 100})); }

TEST(LabelBoxes, BoxesThatShareAnEdgeDoNotHit) {
  LabelBoxes boxes;
  boxes.Add({10, 10, 50, 20});
  EXPECT_FALSE(boxes.Hits({50, 10, 90, 20}));
  EXPECT_FALSE(boxes.Hits({10, 20, 50, 30}));
  EXPECT_FALSE(boxes.Hits({0, 0, 10, 40}));
  EXPECT_TRUE(boxes.Hits({49, 19, 90, 30}));
}

TEST(LabelBoxes, ABoxOfNoWidthHitsTheBoxAroundIt) {
  LabelBoxes boxes;
  boxes.Add({10, 10, 50, 20});
  EXPECT_TRUE(boxes.Hits({30, 12, 30, 14}));
  EXPECT_FALSE(boxes.Hits({10, 12, 10, 14}));
  EXPECT_FALSE(boxes.Hits({50, 12, 50, 14}));
}

TEST(LabelBoxes, AnswersAsIfEachBoxWereLookedAt) {
  constexpr std::uint64_t Seed = 2024;
  Dice dice(Seed);
  for (const int reach : {100, 2000, 40000}) {
    LabelBoxes boxes;
    std::vector<PixelRect> kept;
    int hits = 0;
    for (int i = 0; i < 3000; ++i) {
      const int left = dice.Int(-reach, reach);
      const int top = dice.Int(-reach, reach);
      const PixelRect box{left, top, left + dice.Int(0, reach / 10), top + dice.Int(0, reach / 30)};
      const bool expected = std::any_of(kept.begin(), kept.end(), [&](const PixelRect& other) {
        return BoxesOverlap(other, box);
      });
      ASSERT_EQ(boxes.Hits(box), expected) << "seed " << Seed << " reach " << reach << " at " << i;
      hits += expected ? 1 : 0;
      if (expected && i % 7 != 0) continue;
      boxes.Add(box);
      kept.push_back(box);
    }
    EXPECT_GT(hits, 100);
    EXPECT_GT(kept.size(), 50U);
  }
}

}  // namespace
}  // namespace orvane
