#include "base/text.h"
#include "model/point_names.h"
#include "model/workspace.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace orvane {
namespace {

/// The search in the buckets: main names first, then synonyms, then the basis.
Point* FindInBuckets(const Map& map, std::string_view name) {
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    const auto& bucket = level->pointHash[NameBucket(name)];
    for (Point* point : bucket) {
      if (SameName(point->name, name)) return point;
    }
    for (Point* point : bucket) {
      if (PointHasName(*point, name)) return point;
    }
  }
  return nullptr;
}

struct NameTableTest : testing::TestWithParam<unsigned> {
  RecordedMessages messages;
  Workspace workspace{messages};
  std::mt19937 random{GetParam()};

  int Below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
  /// Few letters, so that names meet and share buckets.
  std::string Name(int letters) {
    std::string name;
    for (int length = 1 + Below(3); length > 0; --length) {
      const int letter = Below(letters);
      name += static_cast<char>((Below(2) == 0 ? 'a' : 'A') + letter);
    }
    return name;
  }
  std::string Spec(int letters) {
    std::string spec = Name(letters);
    for (int more = Below(6) - 3; more > 0; --more) spec += "=" + Name(letters);
    return spec;
  }
  void ExpectSameAnswers(const Map& map, int letters) {
    for (int i = 0; i < 200; ++i) {
      const std::string name = Name(letters);
      ASSERT_EQ(FindPointByName(map, nullptr, name), FindInBuckets(map, name))
          << name << ", seed " << GetParam();
    }
  }
};

TEST_P(NameTableTest, FindsWhatASearchOfTheBucketsFinds) {
  for (const int letters : {3, 8, 20}) {
    Map& map = MakeMap(workspace, "map");
    for (int i = 0; i < 300; ++i) {
      ResolvePointName(map, nullptr, Spec(letters));
      if (i % 50 == 0) ExpectSameAnswers(map, letters);
    }
    ExpectSameAnswers(map, letters);
  }
}

TEST_P(NameTableTest, FindsTheSameThroughAChainOfMaps) {
  constexpr int letters = 10;
  Map& lowest = MakeMap(workspace, "lowest");
  for (int i = 0; i < 60; ++i) ResolvePointName(lowest, nullptr, Name(letters));
  Map& middle = MakeMap(workspace, "middle");
  for (int i = 0; i < 30; ++i) ResolvePointName(middle, nullptr, Name(letters));
  middle.basis = &lowest;
  for (int i = 0; i < 60; ++i) ResolvePointName(middle, nullptr, Name(letters));
  Map& top = MakeMap(workspace, "top");
  top.basis = &middle;
  for (int i = 0; i < 60; ++i) ResolvePointName(top, nullptr, Spec(letters));
  ExpectSameAnswers(top, letters);
}

TEST_P(NameTableTest, FindsTheSameAfterNamesAreRemovedAndAdded) {
  constexpr int letters = 26;
  Map& map = MakeMap(workspace, "map");
  std::vector<Point*> points;
  for (int i = 0; i < 400; ++i) {
    // The numbers keep names apart: what is found then hangs on no order.
    const std::string name = Name(letters) + std::to_string(i);
    points.push_back(ResolvePointName(map, nullptr, name + "=" + name + "s"));
  }
  for (int i = 0; i < 400; ++i) {
    const size_t at = static_cast<size_t>(Below(static_cast<int>(points.size())));
    Point& point = *points[at];
    const std::string old = point.name;
    RemovePointName(map, old, point);
    EXPECT_EQ(FindPointByName(map, nullptr, old), nullptr);
    point.name = Name(letters) + "-" + std::to_string(i);
    AddPointName(map, point, point.name);
    ASSERT_EQ(FindPointByName(map, nullptr, point.name), &point);
    ASSERT_EQ(FindPointByName(map, nullptr, point.synonyms.front()), &point);
  }
  for (Point* point : points) {
    ASSERT_EQ(FindInBuckets(map, point->name), FindPointByName(map, nullptr, point->name));
    RemovePointNames(map, *point);
    ASSERT_EQ(FindPointByName(map, nullptr, point->name), nullptr);
  }
  for (const auto& bucket : map.pointHash) EXPECT_TRUE(bucket.empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, NameTableTest, testing::Range(1U, 21U));

}  // namespace
}  // namespace orvane
