#include "model/name_index.h"

#include "model/point_names.h"
#include "model/workspace.h"
#include "support/dice.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

/// Names of few letters, so that they meet often: plain, hidden, and times of day.
std::string SomeName(Dice& dice) {
  constexpr const char* pieces[] = {"_", "@", "a", "B", "b", "0815", "1:2", "c"};
  std::string name;
  for (int left = 1 + dice.Below(3); left > 0; --left) name += dice.Of(pieces);
  return name;
}

void FillMap(Map& map, Dice& dice) {
  for (int i = 0; i < 12; ++i) {
    Point& point = MakePoint(map, SomeName(dice));
    AddPointName(map, point, point.name);
    if (dice.Below(2) == 0) {
      point.synonyms.push_front(SomeName(dice));
      AddPointName(map, point, point.synonyms.front());
    }
    map.trails.emplace_front().name = SomeName(dice);
  }
}

TEST(NameIndexScope, ChangesNoAnswer) {
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    RecordedMessages messages;
    Workspace workspace(messages);
    Map& basis = MakeMap(workspace, "basis");
    Map& map = MakeMap(workspace, "map");
    map.basis = &basis;
    FillMap(basis, dice);
    FillMap(map, dice);
    std::vector<std::string> asked;
    for (int i = 0; i < 60; ++i) asked.push_back(SomeName(dice));
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
