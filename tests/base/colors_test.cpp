#include "base/colors.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

const std::pair<const char*, Color> Names[] = {
    {"red", 0xff0000},     {"green", 0x008000},   {"blue", 0x0000ff},      {"cyan", 0x00ffff},
    {"magenta", 0xff00ff}, {"yellow", 0xffff00},  {"black", 0x000000},     {"darkgray", 0x404040},
    {"gray", 0x808080},    {"grey", 0x808080},    {"lightgray", 0xc0c0c0}, {"lightgrey", 0xc0c0c0},
    {"white", 0xffffff},   {"maroon", 0x800000},  {"olive", 0x808000},     {"darkgrey", 0x404040},
    {"navy", 0x000080},    {"purple", 0x800080},  {"lime", 0x00ff00},      {"aqua", 0x00ffff},
    {"teal", 0x008080},    {"fuchsia", 0xff0080}, {"silver", 0xc0c0c0},
};

TEST(ParseColor, KnowsEachNameInAnyCase) {
  EXPECT_EQ(std::size(Names), 23U);
  for (const auto& [name, color] : Names) {
    EXPECT_EQ(ParseColor(name), color) << name;
    std::string capitals = name;
    for (char& c : capitals) c = static_cast<char>(c - 32);
    EXPECT_EQ(ParseColor(capitals), color) << name;
  }
  EXPECT_EQ(ParseColor("Light Gray"), NoColor);
  EXPECT_EQ(ParseColor("redd"), NoColor);
}

TEST(ParseColor, KeepsTheFuchsiaOfOldFiles) { EXPECT_EQ(ParseColor("fuchsia"), 0xff0080); }

TEST(ParseColor, ReadsThreeDigits) {
  EXPECT_EQ(ParseColor("#f0a"), 0xff00aa);
  EXPECT_EQ(ParseColor("F0A"), 0xff00aa);
}

TEST(ParseColor, ReadsSixAndTwelveDigits) {
  EXPECT_EQ(ParseColor("#12aBef"), 0x12abef);
  EXPECT_EQ(ParseColor("12abef"), 0x12abef);
  EXPECT_EQ(ParseColor("#12ffab00ef80"), 0x12abef);
  EXPECT_EQ(ParseColor("ffffffffffff"), 0xffffff);
}

TEST(ParseColor, RefusesOtherLengths) {
  for (const char* text : {"", "#", "#1", "#12345", "12345", "#1234567", "#123456789abc0", "##123",
                           "#12g", "12345g", "camp"}) {
    EXPECT_EQ(ParseColor(text), NoColor) << text;
  }
}

TEST(ParseColor, ReadsRgbForms) {
  EXPECT_EQ(ParseColor("rgb(18,171,239)"), 0x12abef);
  EXPECT_EQ(ParseColor("rgb( 18, 171, 239)"), 0x12abef);
  EXPECT_EQ(ParseColor("rgb(100%,50%,0%)"), 0xff7f00);
  EXPECT_EQ(ParseColor("rgb(1%,99% , 33%)"), NoColor);
  EXPECT_EQ(ParseColor("rgb(1 %,99 %,33 %)"), 0x02fc54);
  EXPECT_EQ(ParseColor("rgb (1,2,3)"), NoColor);
  EXPECT_EQ(ParseColor("rgb(1,2)"), NoColor);
  EXPECT_EQ(ParseColor("RGB(1,2,3)"), NoColor);
}

TEST(ParseColor, ClampsTheForms) {
  EXPECT_EQ(ParseColor("rgb(-1,256,99999999999999999999)"), 0x00ffff);
  EXPECT_EQ(ParseColor("rgb(-1%,101%,99999999999999999999%)"), 0x00ffff);
  EXPECT_EQ(ParseColor("-5 300 128"), 0x00ff80);
  EXPECT_EQ(ParseColor("-ff 1ff 80a"), 0x00ffff);
}

TEST(ParseColor, TriesDecimalNumbersBeforeHexadecimalOnes) {
  EXPECT_EQ(ParseColor("10 20 30"), 0x0a141e);
  EXPECT_EQ(ParseColor("  10\t20  30"), 0x0a141e);
  EXPECT_EQ(ParseColor("a 20 30"), 0x0a2030);
  EXPECT_EQ(ParseColor("0xff 0X80 0"), 0xff8000);
  EXPECT_EQ(ParseColor("10 ff 30"), 0x10ff30);
}

TEST(ParseColor, IgnoresWhatFollowsTheThirdNumber) {
  EXPECT_EQ(ParseColor("12 34 5f"), 0x0c2205);
  EXPECT_EQ(ParseColor("rgb(1,2,3"), 0x010203);
  EXPECT_EQ(ParseColor("rgb(10%,20%,30"), 0x19334c);
  EXPECT_EQ(ParseColor("1 2 3 4"), 0x010203);
}

TEST(ColorName, GivesTheFirstNameOfAValue) {
  EXPECT_STREQ(ColorName(0x808080), "gray");
  EXPECT_STREQ(ColorName(0xc0c0c0), "lightgray");
  EXPECT_STREQ(ColorName(0x404040), "darkgray");
  EXPECT_STREQ(ColorName(0x00ffff), "cyan");
  EXPECT_STREQ(ColorName(0), "black");
  EXPECT_EQ(ColorName(NoColor), nullptr);
  EXPECT_EQ(ColorName(0x123456), nullptr);
}

TEST(ColorName, IsReadBack) {
  for (const auto& [name, color] : Names) EXPECT_EQ(ParseColor(ColorName(color)), color) << name;
}

/// The forms as the standard scanner reads them; it knows no bounds, so only for small numbers.
Color ColorByScanning(const std::string& text) {
  int red = 0;
  int green = 0;
  int blue = 0;
  const auto pack = [](int r, int g, int b) {
    return std::clamp(r, 0, 255) * 65536 + std::clamp(g, 0, 255) * 256 + std::clamp(b, 0, 255);
  };
  const char* const form = text.c_str();
  if (std::sscanf(form, "rgb(%d,%d,%d)", &red, &green, &blue) == 3) return pack(red, green, blue);
  if (std::sscanf(form, "rgb(%d%%,%d%%,%d%%)", &red, &green, &blue) == 3) {
    return pack(red * 255 / 100, green * 255 / 100, blue * 255 / 100);
  }
  if (std::sscanf(form, "%d %d %d", &red, &green, &blue) == 3) return pack(red, green, blue);
  unsigned r = 0;
  unsigned g = 0;
  unsigned b = 0;
  if (std::sscanf(form, "%x %x %x", &r, &g, &b) == 3) {
    return pack(static_cast<int>(r), static_cast<int>(g), static_cast<int>(b));
  }
  return NoColor;
}

/// True if no run of digits is so long that the standard scanner could overflow.
bool HasSmallNumbers(const std::string& text) {
  size_t run = 0;
  for (const char c : text) {
    run = std::string_view("0123456789abcdef").find(c) == std::string_view::npos ? 0 : run + 1;
    if (run > 6) return false;
  }
  return true;
}

TEST(ParseColor, AgreesWithTheStandardScanner) {
  constexpr unsigned Seed = 9;
  std::mt19937 random(Seed);
  const std::string pieces[] = {"rgb(", "rgb(", "1", "23", "4", "99", "300", "-7", "+5",  " ", " ",
                                "  ",   "\t",   ",", ",",  "%", "%",  ")",   "af", "0x2", "b"};
  int found = 0;
  for (int i = 0; i < 200000; ++i) {
    std::string text;
    for (size_t n = random() % 11; n > 0; --n) text += pieces[random() % std::size(pieces)];
    if (!HasSmallNumbers(text)) continue;
    const Color expected = ColorByScanning(text);
    if (expected == NoColor) continue;
    ++found;
    ASSERT_EQ(ParseColor(text), expected) << '"' << text << "\" seed " << Seed;
  }
  EXPECT_GT(found, 1000);
}

}  // namespace
}  // namespace orvane
