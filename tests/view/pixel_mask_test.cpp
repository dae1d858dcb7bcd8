#include "view/pixel_mask.h"

#include "support/dice.h"

#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

TEST(PixelMask, KnowsWhetherAllOrAnyPixelsAreInIt) {
  PixelMask mask({0, 0, 200, 50});
  mask.Add({60, 10, 130, 20});
  EXPECT_TRUE(mask.HasAll({60, 10, 130, 20}));
  EXPECT_FALSE(mask.HasAll({59, 10, 130, 20}));
  EXPECT_FALSE(mask.HasAll({60, 10, 131, 20}));
  EXPECT_FALSE(mask.HasAll({60, 9, 130, 20}));
  EXPECT_FALSE(mask.HasAll({60, 10, 130, 21}));
  EXPECT_TRUE(mask.HasAny({0, 0, 61, 11}));
  EXPECT_FALSE(mask.HasAny({0, 0, 60, 50}));
  EXPECT_FALSE(mask.HasAny({130, 0, 200, 50}));
  EXPECT_FALSE(mask.HasAny({0, 20, 200, 50}));
}

TEST(PixelMask, WhatIsOutsideItsAreaDoesNotCount) {
  PixelMask mask({10, 10, 20, 20});
  mask.Add({0, 0, 100, 100});
  EXPECT_TRUE(mask.HasAll({5, 5, 15, 15}));
  EXPECT_FALSE(mask.HasAll({0, 0, 5, 5}));
  EXPECT_FALSE(mask.HasAny({20, 10, 25, 20}));
  PixelMask nothing({0, 0, 0, 0});
  nothing.Add({0, 0, 5, 5});
  EXPECT_FALSE(nothing.HasAll({0, 0, 5, 5}));
}

TEST(PixelMask, AnEmptyRectangleIsNeverInIt) {
  PixelMask mask({0, 0, 20, 20});
  mask.Add({0, 0, 20, 20});
  EXPECT_FALSE(mask.HasAll({5, 5, 5, 9}));
  EXPECT_FALSE(mask.HasAny({5, 5, 9, 5}));
}

TEST(PixelMask, AgreesWithPixelsCountedOneByOne) {
  constexpr std::uint64_t Seed = 31;
  SCOPED_TRACE(Seed);
  constexpr int Width = 190;
  constexpr int Height = 12;
  Dice dice(Seed);
  const auto randomRect = [&dice] {
    const int left = dice.Int(-20, Width);
    const int top = dice.Int(-4, Height);
    return PixelRect{left, top, left + dice.Int(1, 90), top + dice.Int(1, 6)};
  };
  PixelMask mask({3, 2, Width, Height});
  std::vector<bool> pixels(Width * Height);
  int all = 0;
  for (int round = 0; round < 400; ++round) {
    const PixelRect added = CommonRect(randomRect(), {3, 2, Width, Height});
    if (round % 8 == 0) mask.Add(added);
    for (int y = added.top; round % 8 == 0 && y < added.bottom; ++y) {
      for (int x = added.left; x < added.right; ++x) {
        pixels[static_cast<size_t>(y) * Width + static_cast<size_t>(x)] = true;
      }
    }
    const PixelRect asked = randomRect();
    const PixelRect inside = CommonRect(asked, {3, 2, Width, Height});
    int count = 0;
    int known = 0;
    for (int y = inside.top; y < inside.bottom; ++y) {
      for (int x = inside.left; x < inside.right; ++x) {
        ++count;
        known += pixels[static_cast<size_t>(y) * Width + static_cast<size_t>(x)] ? 1 : 0;
      }
    }
    EXPECT_EQ(mask.HasAll(asked), count > 0 && known == count) << round;
    EXPECT_EQ(mask.HasAny(asked), known > 0) << round;
    all += count > 0 && known == count ? 1 : 0;
  }
  EXPECT_GT(all, 20);
}

}  // namespace
}  // namespace orvane
