#include "panes/pane_layout.h"

#include "view/view_case.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

constexpr int ScrollBar = 16;

std::string Text(const PixelRect& r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + " " + std::to_string(r.right) +
         "," + std::to_string(r.bottom);
}

bool IsEmpty(const PixelRect& r) { return r.right <= r.left || r.bottom <= r.top; }

TEST(PaneLayout, PutsTheListsOverEachOtherBesideTheMap) {
  const PaneLayout layout = LayOutPanes(1000, 700, {150, 300}, ScrollBar);
  EXPECT_EQ(Text(layout.trails), "0,0 150,300");
  EXPECT_EQ(Text(layout.betweenLists), "0,300 150,305");
  EXPECT_EQ(Text(layout.ranges), "0,305 150,700");
  EXPECT_EQ(Text(layout.besideMap), "150,0 155,700");
  EXPECT_EQ(Text(layout.map), "155,0 1000,700");
  EXPECT_EQ(layout.sizes.panelWidth, 150);
  EXPECT_EQ(layout.sizes.panelHeight, 300);
}

TEST(PaneLayout, APaneSmallerThanAScrollBarVanishes) {
  const PaneLayout narrow = LayOutPanes(1000, 700, {15, 300}, ScrollBar);
  EXPECT_EQ(narrow.sizes.panelWidth, 0);
  EXPECT_TRUE(IsEmpty(narrow.trails));
  EXPECT_TRUE(IsEmpty(narrow.ranges));
  EXPECT_TRUE(IsEmpty(narrow.betweenLists));
  EXPECT_EQ(Text(narrow.besideMap), "0,0 5,700");
  EXPECT_EQ(Text(narrow.map), "5,0 1000,700");

  const PaneLayout low = LayOutPanes(1000, 700, {150, 15}, ScrollBar);
  EXPECT_EQ(low.sizes.panelHeight, 0);
  EXPECT_TRUE(IsEmpty(low.trails));
  EXPECT_EQ(Text(low.ranges), "0,5 150,700");

  EXPECT_EQ(LayOutPanes(1000, 700, {16, 16}, ScrollBar).sizes.panelWidth, 16);
  EXPECT_EQ(LayOutPanes(1000, 700, {16, 16}, ScrollBar).sizes.panelHeight, 16);
}

TEST(PaneLayout, TheLowerListVanishesWhenNothingIsLeftForIt) {
  const PaneLayout layout = LayOutPanes(1000, 700, {150, 690}, ScrollBar);
  EXPECT_EQ(Text(layout.trails), "0,0 150,690");
  EXPECT_TRUE(IsEmpty(layout.ranges));
  EXPECT_EQ(Text(layout.betweenLists), "0,690 150,695");
}

TEST(PaneLayout, APaneThatNoLongerFitsIsCut) {
  const PaneLayout layout = LayOutPanes(200, 100, {500, 400}, ScrollBar);
  EXPECT_EQ(layout.sizes.panelWidth, 131);
  EXPECT_EQ(layout.sizes.panelHeight, 95);
  EXPECT_EQ(Text(layout.besideMap), "131,0 136,100");
}

TEST(PaneLayout, ListsWiderThanTheWindowLeaveSomeOfTheMap) {
  for (const int wanted : {1000, 30000, 2147483647}) {
    const PaneLayout layout = LayOutPanes(1000, 700, {wanted, 300}, ScrollBar);
    EXPECT_EQ(Text(layout.map), "936,0 1000,700") << wanted;
  }
  const PaneLayout narrow = LayOutPanes(84, 700, {1000, 300}, ScrollBar);
  EXPECT_EQ(Text(narrow.map), "5,0 84,700");
}

TEST(PaneLayout, CoversTheWindowWithoutOverlapAtAnySize) {
  constexpr std::uint64_t Seed = 5;
  SCOPED_TRACE(Seed);
  Dice dice(Seed);
  for (int i = 0; i < 2000; ++i) {
    const int width = dice.Int(0, 400);
    const int height = dice.Int(0, 300);
    const PaneSizes sizes{dice.Int(-20, 500), dice.Int(-20, 400)};
    const PaneLayout layout = LayOutPanes(width, height, sizes, ScrollBar);
    long long area = 0;
    for (const PixelRect& rect :
         {layout.trails, layout.ranges, layout.map, layout.besideMap, layout.betweenLists}) {
      ASSERT_GE(rect.left, 0);
      ASSERT_GE(rect.top, 0);
      ASSERT_LE(rect.right, width);
      ASSERT_LE(rect.bottom, height);
      if (!IsEmpty(rect)) area += 1LL * (rect.right - rect.left) * (rect.bottom - rect.top);
    }
    // Only what is too low for the lower list stays bare.
    const long long bare = 1LL * layout.sizes.panelWidth * ScrollBar;
    ASSERT_LE(area, 1LL * width * height);
    ASSERT_GE(area, 1LL * width * height - bare);
  }
}

TEST(PaneLayout, KnowsTheDividerUnderAPixel) {
  const PaneLayout layout = LayOutPanes(1000, 700, {150, 300}, ScrollBar);
  EXPECT_EQ(DividerAt(layout, {149, 10}), PaneDivider::None);
  EXPECT_EQ(DividerAt(layout, {150, 10}), PaneDivider::BesideMap);
  EXPECT_EQ(DividerAt(layout, {154, 699}), PaneDivider::BesideMap);
  EXPECT_EQ(DividerAt(layout, {155, 10}), PaneDivider::None);
  EXPECT_EQ(DividerAt(layout, {0, 300}), PaneDivider::BetweenLists);
  EXPECT_EQ(DividerAt(layout, {149, 304}), PaneDivider::BetweenLists);
  EXPECT_EQ(DividerAt(layout, {10, 305}), PaneDivider::None);
}

TEST(PaneLayout, ADropMovesOneDividerAndALetGoAtItsPlaceNone) {
  const PaneLayout layout = LayOutPanes(1000, 700, {150, 300}, ScrollBar);
  const PaneSizes wider = SizesAfterDrop(layout, PaneDivider::BesideMap, {252, 9});
  EXPECT_EQ(wider.panelWidth, 250);
  EXPECT_EQ(wider.panelHeight, 300);
  const PaneSizes lower = SizesAfterDrop(layout, PaneDivider::BetweenLists, {9, 402});
  EXPECT_EQ(lower.panelWidth, 150);
  EXPECT_EQ(lower.panelHeight, 400);
  EXPECT_EQ(SizesAfterDrop(layout, PaneDivider::BesideMap, {152, 9}).panelWidth, 150);
  EXPECT_EQ(SizesAfterDrop(layout, PaneDivider::BesideMap, {-70, 9}).panelWidth, 0);
  EXPECT_EQ(SizesAfterDrop(layout, PaneDivider::None, {400, 400}).panelWidth, 150);
}

TEST(PaneLayout, WhatHasVanishedCanBePulledBack) {
  PaneLayout layout = LayOutPanes(1000, 700, {0, 300}, ScrollBar);
  EXPECT_EQ(DividerAt(layout, {2, 100}), PaneDivider::BesideMap);
  layout =
      LayOutPanes(1000, 700, SizesAfterDrop(layout, PaneDivider::BesideMap, {102, 0}), ScrollBar);
  EXPECT_EQ(layout.sizes.panelWidth, 100);
  EXPECT_EQ(layout.sizes.panelHeight, 300);
}

TEST(PaneLayout, AStepMovesADividerByPixels) {
  const PaneLayout layout = LayOutPanes(1000, 700, {150, 300}, ScrollBar);
  PaneSizes sizes = SizesAfterStep(layout, PaneDivider::BesideMap, 10, ScrollBar);
  EXPECT_EQ(sizes.panelWidth, 160);
  EXPECT_EQ(sizes.panelHeight, 300);
  sizes = SizesAfterStep(layout, PaneDivider::BetweenLists, -1, ScrollBar);
  EXPECT_EQ(sizes.panelWidth, 150);
  EXPECT_EQ(sizes.panelHeight, 299);
  sizes = SizesAfterStep(layout, PaneDivider::None, 10, ScrollBar);
  EXPECT_EQ(sizes.panelWidth, 150);
  EXPECT_EQ(sizes.panelHeight, 300);
}

TEST(PaneLayout, StepsMakeAPaneVanishAndBringItBackAtOnce) {
  PaneLayout layout = LayOutPanes(1000, 700, {20, 20}, ScrollBar);
  for (const PaneDivider divider : {PaneDivider::BesideMap, PaneDivider::BetweenLists}) {
    PaneSizes sizes = SizesAfterStep(layout, divider, -10, ScrollBar);
    const bool across = divider == PaneDivider::BesideMap;
    const PaneLayout without = LayOutPanes(1000, 700, sizes, ScrollBar);
    EXPECT_EQ(across ? without.sizes.panelWidth : without.sizes.panelHeight, 0);
    sizes = SizesAfterStep(without, divider, -10, ScrollBar);
    EXPECT_EQ(across ? sizes.panelWidth : sizes.panelHeight, 0);
    sizes = SizesAfterStep(without, divider, 1, ScrollBar);
    EXPECT_EQ(across ? sizes.panelWidth : sizes.panelHeight, ScrollBar);
  }
}

}  // namespace
}  // namespace orvane
