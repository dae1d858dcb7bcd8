#include "rings.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane::test {

Corners SortedHull(Corners places) {
  std::sort(places.begin(), places.end(), [](const Meters& a, const Meters& b) {
    return a.east != b.east ? a.east < b.east : a.north < b.north;
  });
  Corners hull;
  for (int side = 0; side < 2; ++side) {
    const size_t start = hull.size();
    for (const Meters& place : places) {
      while (hull.size() >= start + 2 &&
             Turn(hull[hull.size() - 2], hull[hull.size() - 1], place) <= 0) {
        hull.pop_back();
      }
      hull.push_back(place);
    }
    hull.pop_back();
    std::reverse(places.begin(), places.end());
  }
  return hull;
}

Corners ClipConvex(Corners subject, const Corners& clip) {
  for (size_t i = 0; i < clip.size(); ++i) {
    const Meters& a = clip[i];
    const Meters& b = clip[(i + 1) % clip.size()];
    Corners kept;
    for (size_t j = 0; j < subject.size(); ++j) {
      const Meters& p = subject[j];
      const Meters& q = subject[(j + 1) % subject.size()];
      const double atP = Turn(a, b, p);
      const double atQ = Turn(a, b, q);
      if (atP >= 0) kept.push_back(p);
      if ((atP > 0 && atQ < 0) || (atP < 0 && atQ > 0)) {
        const double t = atP / (atP - atQ);
        kept.push_back({p.north + t * (q.north - p.north), p.east + t * (q.east - p.east)});
      }
    }
    subject = kept;
  }
  return subject;
}

TEST(TestRings, SortedHullOfASquareWithInnerPoints) {
  const Corners hull = SortedHull({{0, 0}, {5, 5}, {10, 10}, {0, 10}, {10, 0}, {0, 5}});
  EXPECT_EQ(hull.size(), 4U);
  EXPECT_DOUBLE_EQ(AreaOf(hull), 100);
}

TEST(TestRings, ClippingTwoSquaresLeavesTheirOverlap) {
  const Corners a = {{0, 0}, {0, 10}, {10, 10}, {10, 0}};
  const Corners b = {{4, 4}, {4, 20}, {20, 20}, {20, 4}};
  EXPECT_DOUBLE_EQ(AreaOf(ClipConvex(a, b)), 36);
}

}  // namespace orvane::test
