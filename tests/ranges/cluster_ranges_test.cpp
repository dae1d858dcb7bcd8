#include "ranges/cluster_ranges.h"

#include "ranges/clusters.h"
#include "support/dice.h"

#include <deque>
#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

/// Ranges that share many of their points, some of them several times.
struct SharedGround {
  std::deque<Point> points;
  std::deque<Range> ranges;

  SharedGround(size_t rangeCount, size_t pointsOfRange) {
    Dice dice(23);
    for (int i = 0; i < 600; ++i) {
      Point& point = points.emplace_back();
      point.geo.lat = 1.5 + 0.01 * dice.Part();
      point.geo.lon = 20.5 + 0.01 * dice.Part();
    }
    for (size_t r = 0; r < rangeCount; ++r) {
      Range& range = ranges.emplace_back();
      for (size_t i = 0; i < pointsOfRange; ++i) {
        range.points.push_back(&dice.Of(points));
      }
    }
  }
};

size_t IndexOf(const ClusterTree& tree, const Cluster* cluster) {
  for (size_t i = 0; i < tree.clusters.size(); ++i) {
    if (&tree.clusters[i] == cluster) return i;
  }
  return tree.clusters.size();
}

void ExpectSame(const ClusterTree& tree, const ClusterTree& expected) {
  EXPECT_EQ(tree.steps, expected.steps);
  ASSERT_EQ(tree.clusters.size(), expected.clusters.size());
  for (size_t i = 0; i < tree.clusters.size(); ++i) {
    const Cluster& cluster = tree.clusters[i];
    const Cluster& other = expected.clusters[i];
    EXPECT_EQ(cluster.madeAt, other.madeAt);
    EXPECT_EQ(cluster.mergedAt, other.mergedAt);
    EXPECT_EQ(IndexOf(tree, cluster.parent), IndexOf(expected, other.parent));
    EXPECT_EQ(cluster.hull, other.hull);
    EXPECT_EQ(cluster.area, other.area);
  }
}

TEST(ClusterRanges, GivesWhatOneRangeAfterTheOtherGives) {
  // Few points are clustered by one thread, many by all that there are.
  for (const size_t pointsOfRange : {size_t{20}, size_t{700}}) {
    SharedGround ground(6, pointsOfRange);
    RecordedMessages messages;
    std::vector<Range*> ranges;
    for (Range& range : ground.ranges) ranges.push_back(&range);
    ClusterRanges(ranges, messages);
    for (const Range& range : ground.ranges) {
      ASSERT_NE(range.clusters, nullptr);
      ExpectSame(*range.clusters, *ClusterPoints(range.points, messages));
    }
  }
}

TEST(ClusterRanges, TouchesNoPoint) {
  SharedGround ground(3, 300);
  for (Point& point : ground.points) point.projected.north = 12.5;
  RecordedMessages messages;
  std::vector<Range*> ranges;
  for (Range& range : ground.ranges) ranges.push_back(&range);
  ClusterRanges(ranges, messages);
  for (const Point& point : ground.points) EXPECT_EQ(point.projected.north, 12.5);
}

TEST(ClusterRanges, LeavesARangeWithoutPointsWithoutClusters) {
  Range empty;
  Range* const one[] = {&empty};
  RecordedMessages messages;
  ClusterRanges(one, messages);
  EXPECT_EQ(empty.clusters, nullptr);
}

}  // namespace
}  // namespace orvane
