#include "base/utf8.h"

#include "base/latin1.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

TEST(IsValidUtf8, TakesOnlyWholeCharacters) {
  EXPECT_TRUE(IsValidUtf8(""));
  EXPECT_TRUE(IsValidUtf8("Camp"));
  EXPECT_TRUE(IsValidUtf8("M\xC3\xBChle \xE2\x82\xAC \xF0\x9F\x8C\xB3"));
  EXPECT_FALSE(IsValidUtf8("M\xFChle"));
  EXPECT_FALSE(IsValidUtf8("M\xC3"));
  EXPECT_FALSE(IsValidUtf8("\xE2\x82"));
  EXPECT_FALSE(IsValidUtf8("\x80"));
}

TEST(IsValidUtf8, TakesNoOverlongFormsSurrogatesOrWhatLiesBeyond) {
  EXPECT_FALSE(IsValidUtf8("\xC0\x80"));
  EXPECT_FALSE(IsValidUtf8("\xE0\x80\x80"));
  EXPECT_FALSE(IsValidUtf8("\xF0\x80\x80\x80"));
  EXPECT_FALSE(IsValidUtf8("\xED\xA0\x80"));
  EXPECT_TRUE(IsValidUtf8("\xF4\x8F\xBF\xBF"));
  EXPECT_FALSE(IsValidUtf8("\xF4\x90\x80\x80"));
}

TEST(ToUtf8, ReadsWhatIsNotUtf8AsLatin1) {
  EXPECT_EQ(ToUtf8("M\xC3\xBChle"), "M\xC3\xBChle");
  EXPECT_EQ(ToUtf8("M\xFChle"), "M\xC3\xBChle");
  // One byte that is none makes the whole text Latin-1.
  EXPECT_EQ(ToUtf8("\xC3\xBC\xFC"), "\xC3\x83\xC2\xBC\xC3\xBC");
}

TEST(AsLatin1, TurnsWhatLatin1HasAndKeepsTheRest) {
  EXPECT_EQ(AsLatin1("plain"), "plain");
  EXPECT_EQ(AsLatin1("Caf\xC3\xA9 \xC2\xB5\xC3\xBF"), "Caf\xE9 \xB5\xFF");
  EXPECT_EQ(AsLatin1("Caf\xE9"), "Caf\xE9");
  EXPECT_EQ(AsLatin1("\xC3\xA9\xC5\x91"), "\xC3\xA9\xC5\x91");
  for (unsigned code = 0; code < 256; ++code) {
    const std::string letter(1, static_cast<char>(code));
    EXPECT_EQ(AsLatin1(ToUtf8(letter)), letter);
  }
}

TEST(FindTyped, TriesTheTextAsItIsFirst) {
  std::vector<std::string> tried;
  const auto find = [&](std::string_view text) {
    tried.emplace_back(text);
    return text == "Caf\xE9";
  };
  EXPECT_TRUE(FindTyped("Caf\xC3\xA9", find));
  EXPECT_EQ(tried, (std::vector<std::string>{"Caf\xC3\xA9", "Caf\xE9"}));
  tried.clear();
  EXPECT_FALSE(FindTyped("Cafe", find));
  EXPECT_EQ(tried.size(), 1U);
  EXPECT_TRUE(IsTypedName("caf\xE9", "CAF\xC3\xA9"));
  EXPECT_FALSE(IsTypedName("cafe", "CAF\xC3\xA9"));
}

TEST(CutText, NeverSplitsACharacter) {
  for (const std::string character : {"a", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x90\x92"}) {
    const std::string text = "xy" + character + "z";
    for (size_t most = 0; most <= text.size() + 1; ++most) {
      std::string expected = "xy";
      if (most < 2) expected.resize(most);
      if (most >= 2 + character.size()) expected += character;
      if (most >= text.size()) expected += "z";
      EXPECT_EQ(CutText(text, most), expected) << most;
    }
  }
}

TEST(CutText, CutsBytesThatAreNotUtf8Anywhere) {
  EXPECT_EQ(CutText("r\xEDo", 2), "r\xED");
  EXPECT_EQ(CutText("\xA9\xA9\xA9\xA9", 3), "\xA9\xA9\xA9");
  EXPECT_EQ(CutText("\xC3", 1), "\xC3");
  // A Latin-1 letter before does not change where a UTF-8 character is cut.
  EXPECT_EQ(CutText("\xED\xC3\xA9", 2), "\xED");
}

}  // namespace
}  // namespace orvane
