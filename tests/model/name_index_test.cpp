#include "model/name_index.h"

#include "model/point_names.h"
#include "model/workspace.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

/// A small generator whose numbers are the same everywhere.
class Numbers {
 public:
  explicit Numbers(std::uint64_t seed) : state_(seed) {}
  size_t Below(size_t bound) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<size_t>(state_ >> 33U) % bound;
  }

 private:
  std::uint64_t state_;
};

/// Names of few letters, so that they meet often: plain, hidden, and times of day.
std::string SomeName(Numbers& numbers) {
  constexpr const char* pieces[] = {"_", "@", "a", "B", "b", "0815", "1:2", "c"};
  std::string name;
  for (size_t left = 1 + numbers.Below(3); left > 0; --left) name += pieces[numbers.Below(8)];
  return name;
}

void FillMap(Map& map, Numbers& numbers) {
  for (int i = 0; i < 12; ++i) {
    Point& point = MakePoint(map, SomeName(numbers));
    AddPointName(map, point, point.name);
    if (numbers.Below(2) == 0) {
      point.synonyms.push_front(SomeName(numbers));
      AddPointName(map, point, point.synonyms.front());
    }
    map.trails.emplace_front().name = SomeName(numbers);
  }
}

TEST(NameIndexScope, ChangesNoAnswer) {
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Numbers numbers(seed);
    RecordedMessages messages;
    Workspace workspace(messages);
    Map& basis = MakeMap(workspace, "basis");
    Map& map = MakeMap(workspace, "map");
    map.basis = &basis;
    FillMap(basis, numbers);
    FillMap(map, numbers);
    std::vector<std::string> asked;
    for (int i = 0; i < 60; ++i) asked.push_back(SomeName(numbers));
    std::vector<const Trail*> trails;
    std::vector<const Point*> points;
    for (const std::string& name : asked) {
      trails.push_back(FindTrail(map, name));
      points.push_back(FindPointLoosely(map, name));
    }
    {
      const NameIndexScope scope(map);
      for (size_t i = 0; i < asked.size(); ++i) {
        EXPECT_EQ(FindTrail(map, asked[i]), trails[i]) << asked[i];
        EXPECT_EQ(FindPointLoosely(map, asked[i]), points[i]) << asked[i];
      }
    }
    EXPECT_EQ(map.nameIndex, nullptr);
    EXPECT_EQ(basis.nameIndex, nullptr);
  }
}

}  // namespace
}  // namespace orvane
