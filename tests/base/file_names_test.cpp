#include "base/file_names.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(BaseName, IsTheTextAfterTheLastSeparator) {
  EXPECT_EQ(BaseName("/home/maps/a.map"), "a.map");
  EXPECT_EQ(BaseName("a.map"), "a.map");
  EXPECT_EQ(BaseName("/a.map"), "a.map");
  EXPECT_EQ(BaseName("maps/"), "");
  EXPECT_EQ(BaseName(""), "");
}

TEST(BaseName, GoesBackFromTheLastQuestionMark) {
  EXPECT_EQ(BaseName("maps/get?file=x/y"), "get?file=x/y");
  EXPECT_EQ(BaseName("maps/a?b/c?d/e"), "c?d/e");
  EXPECT_EQ(BaseName("a?b/c"), "a?b/c");
  EXPECT_EQ(BaseName("maps/?"), "?");
  EXPECT_EQ(BaseName("?/a"), "?/a");
}

TEST(DirectoryName, IsTheTextBeforeTheLastSeparator) {
  EXPECT_EQ(DirectoryName("/home/maps/a.map"), "/home/maps");
  EXPECT_EQ(DirectoryName("a.map"), "");
  EXPECT_EQ(DirectoryName("/a.map"), "/");
  EXPECT_EQ(DirectoryName("maps/get?file=x/y"), "maps");
}

TEST(SameDirectory, LeavesCaseAside) {
  EXPECT_TRUE(SameDirectory("Maps/a.map", "maps/b.map"));
  EXPECT_FALSE(SameDirectory("maps/a.map", "maps2/a.map"));
  EXPECT_FALSE(SameDirectory("maps/a.map", "mapt/a.map"));
  EXPECT_FALSE(SameDirectory("maps/a.map", "a.map"));
  EXPECT_FALSE(SameDirectory("/a.map", "a.map"));
}

TEST(SameDirectory, HoldsForTwoBareNames) { EXPECT_TRUE(SameDirectory("a.map", "b.map")); }

TEST(ReplaceBaseName, KeepsTheDirectory) {
  EXPECT_EQ(ReplaceBaseName("/home/maps/a.map", "b.map"), "/home/maps/b.map");
  EXPECT_EQ(ReplaceBaseName("/a.map", "b.map"), "/b.map");
  EXPECT_EQ(ReplaceBaseName("maps/get?x/y", "b"), "maps/b");
}

TEST(ReplaceBaseName, GivesTheNameWithoutADirectory) {
  EXPECT_EQ(ReplaceBaseName("a.map", "b.map"), "b.map");
  EXPECT_EQ(ReplaceBaseName("", "b.map"), "b.map");
}

TEST(JoinPath, PutsASeparatorWhereOneIsNeeded) {
  EXPECT_EQ(JoinPath("maps", "a.map"), "maps/a.map");
  EXPECT_EQ(JoinPath("maps/", "a.map"), "maps/a.map");
  EXPECT_EQ(JoinPath("/", "a.map"), "/a.map");
  EXPECT_EQ(JoinPath("..", "a.map"), "../a.map");
}

TEST(JoinPath, GivesOnlyTheNameForTheCurrentDirectory) {
  EXPECT_EQ(JoinPath(".", "a.map"), "a.map");
  EXPECT_EQ(JoinPath("", "a.map"), "a.map");
}

TEST(FileNames, FitTogetherAgain) {
  for (const char* path : {"/home/maps/a.map", "a.map", "/a.map", "x/y", "m/g?x/y"}) {
    EXPECT_EQ(JoinPath(DirectoryName(path), BaseName(path)), path);
    EXPECT_EQ(ReplaceBaseName(path, BaseName(path)), path);
  }
}

}  // namespace
}  // namespace orvane
