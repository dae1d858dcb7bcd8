#include "model/map_chain.h"

#include "base/messages.h"
#include "model/workspace.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct MapChainTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& New(std::string_view name, Map* basis = nullptr) {
    Map& map = MakeMap(workspace, name);
    map.basis = basis;
    return map;
  }
};

TEST_F(MapChainTest, RestsOnFollowsTheWholeChain) {
  Map& c = New("c");
  Map& b = New("b", &c);
  Map& a = New("a", &b);
  EXPECT_TRUE(RestsOn(a, a));
  EXPECT_TRUE(RestsOn(a, c));
  EXPECT_FALSE(RestsOn(c, a));
}

TEST_F(MapChainTest, TheNearestMapAboveComesFirst) {
  Map& base = New("base");
  Map& near1 = New("near1", &base);
  Map& far = New("far", &near1);
  Map& near2 = New("near2", &base);
  New("other");
  EXPECT_EQ(MapsBasedOn(base), (std::vector<Map*>{&near2, &near1, &far}));
  EXPECT_EQ(MapsBasedOn(far), std::vector<Map*>{});
}

}  // namespace
}  // namespace orvane
