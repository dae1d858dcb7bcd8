#include "view/pixel_square.h"

#include "support/dice.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

bool Same(const ExactPixel& a, const ExactPixel& b) {
  return a.row == b.row && a.column == b.column;
}

/// Twice the area of a ring.
double DoubleArea(const std::vector<Pixel>& ring) {
  double sum = 0;
  for (size_t i = 0; i < ring.size(); ++i) {
    const Pixel& a = ring[i];
    const Pixel& b = ring[(i + 1) % ring.size()];
    sum += 1.0 * a.x * b.y - 1.0 * b.x * a.y;
  }
  return std::abs(sum);
}

TEST(CutSegment, KeepsASegmentWithinTheSquareToTheBit) {
  const ExactSegment segment{{-32000, 0.1}, {17.3, 32000}};
  const auto cut = CutSegment(segment);
  ASSERT_TRUE(cut.has_value());
  EXPECT_TRUE(Same(cut->from, segment.from));
  EXPECT_TRUE(Same(cut->to, segment.to));
}

TEST(CutSegment, CutsEachEndAtTheEdgeThatItCrosses) {
  const auto cut = CutSegment({{-64000, -100}, {64000, 100}});
  ASSERT_TRUE(cut.has_value());
  EXPECT_EQ(cut->from.row, -32000);
  EXPECT_EQ(cut->from.column, -50);
  EXPECT_EQ(cut->to.row, 32000);
  EXPECT_EQ(cut->to.column, 50);
}

TEST(CutSegment, GivesNothingForASegmentThatMissesTheSquare) {
  EXPECT_FALSE(CutSegment({{0, 32001}, {5, 40000}}).has_value());
  EXPECT_FALSE(CutSegment({{32001, -9}, {32001, 9}}).has_value());
  EXPECT_FALSE(CutSegment({{0, 64010}, {64010, 0}}).has_value());  // passes beside a corner
  EXPECT_TRUE(CutSegment({{0, 63990}, {63990, 0}}).has_value());
}

TEST(CutSegment, WhatIsLeftIsOnTheSegment) {
  constexpr std::uint64_t Seed = 3;
  Dice dice(Seed);
  int cuts = 0;
  for (int i = 0; i < 5000; ++i) {
    const double reach = std::exp(dice.Between(8, 30));
    const ExactSegment whole{{dice.Between(-reach, reach), dice.Between(-reach, reach)},
                             {dice.Between(-40000, 40000), dice.Between(-40000, 40000)}};
    const auto cut = CutSegment(whole);
    if (!cut) continue;
    ++cuts;
    const double rows = whole.to.row - whole.from.row;
    const double columns = whole.to.column - whole.from.column;
    for (const ExactPixel& end : {cut->from, cut->to}) {
      EXPECT_LE(std::abs(end.row), LargestPixel + 0.01) << "seed " << Seed << " round " << i;
      EXPECT_LE(std::abs(end.column), LargestPixel + 0.01) << "seed " << Seed << " round " << i;
      const double across =
          (columns * (end.row - whole.from.row) - rows * (end.column - whole.from.column)) /
          std::hypot(rows, columns);
      EXPECT_NEAR(across, 0, 0.01) << "seed " << Seed << " round " << i;
    }
  }
  EXPECT_GT(cuts, 1000);
}

TEST(CutRing, KeepsARingWithinTheSquare) {
  const std::vector<Pixel> pixels = CutRing({{0.4, 0.5}, {10, 0}, {10, 32000}, {0.4, 0.5}});
  ASSERT_EQ(pixels.size(), 4U);
  EXPECT_EQ(pixels[0].x, 1);
  EXPECT_EQ(pixels[0].y, 0);
  EXPECT_EQ(pixels[2].x, 32000);
  EXPECT_EQ(pixels[2].y, 10);
}

TEST(CutRing, KeepsTheSidesThatPassThroughTheSquareInPlace) {
  // A triangle whose long side runs through the middle.
  const std::vector<Pixel> cut = CutRing({{-64000, -64000}, {64000, 64000}, {-64000, 64000}});
  EXPECT_EQ(DoubleArea(cut), 64000.0 * 64000.0);
  for (const Pixel& corner : cut) EXPECT_GE(corner.x, corner.y);
}

TEST(CutRing, AnAreaAboutTheSquareBecomesTheSquare) {
  const double far = 1e13;
  EXPECT_EQ(DoubleArea(CutRing({{-far, -far}, {-far, far}, {far, far}, {far, -far}})),
            2 * 64000.0 * 64000.0);
}

TEST(CutRing, LeavesNothingOfAnAreaOutside) {
  EXPECT_TRUE(CutRing({{40000, 0}, {50000, 100}, {50000, -100}}).empty());
  EXPECT_TRUE(CutRing({}).empty());
}

}  // namespace
}  // namespace orvane
