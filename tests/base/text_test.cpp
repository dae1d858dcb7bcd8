#include "base/text.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace orvane {
namespace {

TEST(FoldByte, ChangesOnlyAsciiCapitals) {
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    const bool capital = i >= 'A' && i <= 'Z';
    EXPECT_EQ(FoldByte(c), capital ? static_cast<char>(i + 32) : c) << i;
  }
  EXPECT_EQ(FoldedText("Fig TREE \xC4"), "fig tree \xC4");
}

TEST(CompareNames, LeavesCaseAside) {
  EXPECT_EQ(CompareNames("Fig Tree", "fIG tREE"), 0);
  EXPECT_LT(CompareNames("fig", "Vine"), 0);
  EXPECT_GT(CompareNames("VINE", "fig"), 0);
  EXPECT_TRUE(SameName("", ""));
  EXPECT_FALSE(SameName("fig", "figs"));
}

TEST(CompareNames, PutsAShorterNameFirst) {
  EXPECT_LT(CompareNames("fig", "fig1"), 0);
  EXPECT_GT(CompareNames("fig1", "FIG"), 0);
  EXPECT_LT(CompareNames("", "a"), 0);
}

TEST(CompareNames, TakesBytesAboveAsciiAsLarge) {
  EXPECT_GT(CompareNames("\xE9", "z"), 0);
  EXPECT_NE(CompareNames("\xC9", "\xE9"), 0);
}

TEST(CompareNames, SortsAnUnderscoreBeforeLettersOfEitherCase) {
  // '_' is between 'Z' and 'a': folding to lower case decides.
  EXPECT_LT(CompareNames("_", "A"), 0);
}

TEST(CompareNamesN, ComparesOnlyTheFirstBytes) {
  EXPECT_EQ(CompareNamesN("Main100", "mAIN200", 4), 0);
  EXPECT_LT(CompareNamesN("Main100", "mAIN200", 5), 0);
  EXPECT_EQ(CompareNamesN("a", "b", 0), 0);
  EXPECT_LT(CompareNamesN("ab", "abc", 3), 0);
  EXPECT_EQ(CompareNamesN("AB", "ab", 9), 0);
}

TEST(FindTextFolded, FindsTheFirstPlace) {
  EXPECT_EQ(FindTextFolded("The Fig and the fig", "FIG"), 4U);
  EXPECT_EQ(FindTextFolded("fig", "figs"), std::string_view::npos);
  EXPECT_EQ(FindTextFolded("fig", ""), 0U);
  EXPECT_EQ(FindTextFolded("", ""), 0U);
  EXPECT_EQ(FindTextFolded("", "f"), std::string_view::npos);
  EXPECT_EQ(FindTextFolded("aaab", "aab"), 1U);
}

TEST(IsHiddenName, KnowsBothMarks) {
  EXPECT_TRUE(IsHiddenName("_camp"));
  EXPECT_TRUE(IsHiddenName("@camp"));
  EXPECT_FALSE(IsHiddenName("camp_"));
  EXPECT_FALSE(IsHiddenName(""));
}

TEST(CompareHiddenName, LetsTheMarksBeLeftOut) {
  EXPECT_EQ(CompareHiddenName("_@Camp", "camp"), 0);
  EXPECT_EQ(CompareHiddenName("_@Camp", "@CAMP"), 0);
  EXPECT_EQ(CompareHiddenName("_@Camp", "_@camp"), 0);
  EXPECT_EQ(CompareHiddenName("camp", "Camp"), 0);
  EXPECT_EQ(CompareHiddenName("_", ""), 0);
}

TEST(CompareHiddenName, LetsOnlyMarksOfTheStoredNameBeLeftOut) {
  EXPECT_NE(CompareHiddenName("camp", "_camp"), 0);
  EXPECT_NE(CompareHiddenName("_camp", "@camp"), 0);
  EXPECT_NE(CompareHiddenName("acamp", "camp"), 0);
  EXPECT_LT(CompareHiddenName("_camp", "dune"), 0);
  EXPECT_GT(CompareHiddenName("_dune", "camp"), 0);
}

TEST(FindAnyOf, FindsTheFirstByteOfTheSet) {
  EXPECT_EQ(FindAnyOf("12m-30", "-m"), 2U);
  EXPECT_EQ(FindAnyOf("12", "-m"), std::string_view::npos);
  EXPECT_EQ(FindAnyOf("12", ""), std::string_view::npos);
}

TEST(StartsWith, GivesTheTextAfterThePrefix) {
  EXPECT_EQ(StartsWith("near ", "near Camp"), "Camp");
  EXPECT_EQ(StartsWith("", "Camp"), "Camp");
  EXPECT_EQ(StartsWith("Camp", "Camp"), "");
  EXPECT_FALSE(StartsWith("Near ", "near Camp"));
  EXPECT_FALSE(StartsWith("near Camp", "near "));
}

TEST(AppendNote, PutsOneBlankBetween) {
  EXPECT_EQ(AppendNote(std::nullopt, "steep"), "steep");
  EXPECT_EQ(AppendNote("wet", "steep"), "wet steep");
  EXPECT_EQ(AppendNote("", "steep"), " steep");
}

TEST(EscapedControls, ReplacesEachByItsCode) {
  EXPECT_EQ(EscapedControls("a\tb\x1B[2J\r\n\x7F"), "a\\x09b\\x1B[2J\\x0D\\x0A\\x7F");
  EXPECT_EQ(EscapedControls(std::string_view("\0", 1)), "\\x00");
  EXPECT_EQ(EscapedControls("r\xC3\xADo \x80~ \\x"), "r\xC3\xADo \x80~ \\x");
  EXPECT_EQ(EscapedControls(""), "");
}

}  // namespace
}  // namespace orvane
