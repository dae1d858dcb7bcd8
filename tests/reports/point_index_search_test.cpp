#include "reports/point_index_search.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

PointIndex IndexOf(const std::vector<std::string>& names) {
  PointIndex index;
  for (const std::string& name : names) index.entries.emplace_back().name = name;
  return index;
}

TEST(TypeCharacter, AddsWhatPrints) {
  std::string typed;
  for (const char character : {' ', 'A', '~'}) {
    EXPECT_EQ(TypeCharacter(typed, character), TypingOutcome::Changed);
  }
  EXPECT_EQ(typed, " A~");
}

TEST(TypeCharacter, BackspaceAndDeleteTakeTheLastOne) {
  std::string typed = "Fig";
  EXPECT_EQ(TypeCharacter(typed, '\b'), TypingOutcome::Changed);
  EXPECT_EQ(TypeCharacter(typed, '\x7f'), TypingOutcome::Changed);
  EXPECT_EQ(typed, "F");
  EXPECT_EQ(TypeCharacter(typed, '\b'), TypingOutcome::Changed);
  EXPECT_EQ(TypeCharacter(typed, '\b'), TypingOutcome::Ignored);
  EXPECT_EQ(TypeCharacter(typed, '\x7f'), TypingOutcome::Ignored);
}

TEST(TypeCharacter, IgnoresControlCharactersAndWhatIsNotAscii) {
  std::string typed = "F";
  for (const char character : {'\r', '\n', '\x1b', '\t', '\0', '\xe9'}) {
    EXPECT_EQ(TypeCharacter(typed, character), TypingOutcome::Ignored);
  }
  EXPECT_EQ(typed, "F");
}

TEST(TypeCharacter, HoldsNineteen) {
  std::string typed(18, 'x');
  EXPECT_EQ(TypeCharacter(typed, 'y'), TypingOutcome::Changed);
  EXPECT_EQ(typed.size(), 19U);
  EXPECT_EQ(TypeCharacter(typed, 'z'), TypingOutcome::Full);
  EXPECT_EQ(typed.back(), 'y');
}

TEST(EntryFrom, IsTheFirstThatIsNotBefore) {
  const PointIndex index = IndexOf({"A1", "A2", "A10", "Camp", "Fig3"});
  EXPECT_EQ(EntryFrom(index, ""), 0);
  EXPECT_EQ(EntryFrom(index, "A3"), 2) << "numbers compare as numbers";
  EXPECT_EQ(EntryFrom(index, "B"), 3);
  EXPECT_EQ(EntryFrom(index, "Camp"), 3);
  EXPECT_EQ(EntryFrom(index, "a"), -1) << "capitals come first";
}

TEST(EntryNamed, IgnoresTheCaseOfLetters) {
  const PointIndex index = IndexOf({"Camp", "camp", "Fig"});
  EXPECT_EQ(EntryNamed(index, "CAMP"), 0);
  EXPECT_EQ(EntryNamed(index, "fig"), 2);
  EXPECT_EQ(EntryNamed(index, "Fi"), -1);
}

TEST(PointIndexFileName, IsThatOfTheMap) {
  EXPECT_EQ(PointIndexFileName("site.map"), "site.txt");
  EXPECT_EQ(PointIndexFileName("site.2020.map"), "site.2020.txt");
  EXPECT_EQ(PointIndexFileName("site"), "site.txt");
  EXPECT_EQ(PointIndexFileName(""), "untitled.txt");
}

TEST(PointIndexFileName, IsAPlainOneIfThatWouldBeTooLong) {
  EXPECT_EQ(PointIndexFileName(std::string(253, 'x') + ".map").size(), 257U);
  EXPECT_EQ(PointIndexFileName(std::string(254, 'x') + ".map"), "index.txt");
}

}  // namespace
}  // namespace orvane
