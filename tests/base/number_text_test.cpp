#include "base/number_text.h"

#include "support/decimal_comma.h"

#include <array>
#include <bit>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace orvane {
namespace {

void ExpectReal(std::string_view text, double value, size_t length) {
  const RealPrefix read = ReadReal(text);
  EXPECT_EQ(read.value, value) << text;
  EXPECT_EQ(std::signbit(read.value), std::signbit(value)) << text;
  EXPECT_EQ(read.length, length) << text;
}

TEST(IsSpace, KnowsTheSixOfTheCLocale) {
  int count = 0;
  for (int i = 0; i < 256; ++i) count += IsSpace(static_cast<char>(i)) ? 1 : 0;
  EXPECT_EQ(count, 6);
  for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'}) EXPECT_TRUE(IsSpace(c));
  EXPECT_FALSE(IsSpace('\xA0'));
}

TEST(ReadReal, ReadsDecimalForms) {
  ExpectReal("12", 12, 2);
  ExpectReal("12.5m", 12.5, 4);
  ExpectReal(".5", 0.5, 2);
  ExpectReal("5.", 5, 2);
  ExpectReal("+5", 5, 2);
  ExpectReal("-5", -5, 2);
  ExpectReal("-0", -0.0, 2);
  ExpectReal("1e3", 1000, 3);
  ExpectReal("1E-3x", 0.001, 4);
  ExpectReal(" \t\n12", 12, 5);
}

TEST(ReadReal, LeavesAnExponentWithoutDigits) {
  ExpectReal("1e", 1, 1);
  ExpectReal("1e+", 1, 1);
  ExpectReal("34E", 34, 2);
  ExpectReal("2.e-x", 2, 2);
}

TEST(ReadReal, ReadsHexadecimalForms) {
  ExpectReal("0x10", 16, 4);
  ExpectReal("-0X.8p1", -1, 7);
  ExpectReal("0x1.8p", 1.5, 5);
  ExpectReal("0x", 0, 1);
  ExpectReal("0x.", 0, 1);
  ExpectReal("0xg", 0, 1);
  ExpectReal("-0x", -0.0, 2);
}

TEST(ReadReal, TakesOtherTextsForNoNumber) {
  for (const char* text : {"", " ", ".", "-", "+", "+-5", "--5", "- 5", "e5", ".e5", "x10", "inf",
                           "-Infinity", "nan", "NAN(1)", "+nan", "camp"}) {
    ExpectReal(text, 0, 0);
  }
}

TEST(ReadReal, TakesAnOverflowForNoNumber) {
  for (const char* text : {"1e309", "-1e309", "1e999999999999999999999", "0x1p1024",
                           "0x1p99999999999999999999", "1.8e308"}) {
    ExpectReal(text, 0, 0);
  }
  ExpectReal(std::string(400, '9'), 0, 0);
}

TEST(ReadReal, KeepsWhatIsTooSmallAsNextToNothing) {
  ExpectReal("1e-400", 0, 6);
  ExpectReal("-1e-400", -0.0, 7);
  ExpectReal("1e-99999999999999999999", 0, 23);
  ExpectReal("0x1p-2000", 0, 9);
  ExpectReal("4.9e-324", std::numeric_limits<double>::denorm_min(), 8);
  ExpectReal("0." + std::string(500, '0') + "1e10", 0, 506);
  ExpectReal("0e999", 0, 5);
}

TEST(ReadReal, StopsAtTheEndOfItsField) {
  const std::string line = "12\t34";
  ExpectReal(std::string_view(line).substr(0, 1), 1, 1);
  ExpectReal(line, 12, 2);
  ExpectReal(std::string_view("1\0002", 3), 1, 1);
}

/// The standard conversion, without overflow and texts that are not numbers.
RealPrefix StandardReal(const std::string& text) {
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  if (!std::isfinite(value)) return {};
  return {value, static_cast<size_t>(end - text.c_str())};
}

void ExpectLikeStandard(const std::string& text, unsigned seed) {
  const RealPrefix expected = StandardReal(text);
  const RealPrefix read = ReadReal(text);
  ASSERT_EQ(std::bit_cast<uint64_t>(read.value), std::bit_cast<uint64_t>(expected.value))
      << '"' << text << "\" seed " << seed;
  ASSERT_EQ(read.length, expected.length) << '"' << text << "\" seed " << seed;
}

TEST(ReadReal, AgreesWithTheStandardConversionOnRandomBytes) {
  constexpr unsigned Seed = 71;
  std::mt19937 random(Seed);
  const std::string bytes = "00112345678999..eE+-xXpPabfint \t,'";
  for (int i = 0; i < 300000; ++i) {
    std::string text;
    for (size_t n = random() % 10; n > 0; --n) text += bytes[random() % bytes.size()];
    ExpectLikeStandard(text, Seed);
    if (HasFatalFailure()) return;
  }
}

std::string RandomDigits(std::mt19937& random, unsigned most, const std::string& digits) {
  std::string text;
  for (size_t n = random() % (most + 1); n > 0; --n) text += digits[random() % digits.size()];
  return text;
}

TEST(ReadReal, AgreesWithTheStandardConversionOnRandomNumbers) {
  constexpr unsigned Seed = 72;
  std::mt19937 random(Seed);
  for (int i = 0; i < 200000; ++i) {
    const bool hexadecimal = random() % 4 == 0;
    const std::string digits = hexadecimal ? "0123456789abcDEF" : "0123456789";
    std::string text = random() % 2 == 0 ? "-" : "";
    if (hexadecimal) text += "0x";
    text += RandomDigits(random, random() % 8 == 0 ? 40 : 5, digits) + '.';
    text += RandomDigits(random, random() % 8 == 0 ? 60 : 9, digits);
    if (random() % 2 == 0) {
      text += hexadecimal ? 'p' : 'e';
      if (random() % 2 == 0) text += '-';
      text += std::to_string(random() % (hexadecimal ? 1200 : 345));
    }
    ExpectLikeStandard(text, Seed);
    if (HasFatalFailure()) return;
  }
}

TEST(ReadReal, AgreesWithTheStandardConversionAroundFifteenDigits) {
  // Up to 15 digits are read by a way of their own.
  constexpr unsigned Seed = 74;
  std::mt19937 random(Seed);
  const std::string tails = "\t eEx.m";
  for (int i = 0; i < 200000; ++i) {
    std::string text;
    for (size_t n = 12 + random() % 6; n > 0; --n) text += static_cast<char>('0' + random() % 10);
    text.insert(random() % (text.size() + 1), 1, '.');
    if (random() % 4 == 0) text += tails[random() % tails.size()];
    if (random() % 8 == 0) text += std::to_string(random() % 30);
    ExpectLikeStandard(text, Seed);
    if (HasFatalFailure()) return;
  }
}

TEST(ReadReal, AgreesWithTheStandardConversionBetweenTwoDoubles) {
  // Texts exactly half-way, or off by one in the last digit, test the rounding.
  constexpr unsigned Seed = 73;
  std::mt19937_64 random(Seed);
  for (int i = 0; i < 20000; ++i) {
    const double low = std::bit_cast<double>(random() & 0x7fefffffffffffffULL);
    const double high = std::nextafter(low, std::numeric_limits<double>::infinity());
    if (!std::isfinite(high)) continue;
    std::array<char, 1500> buffer{};
    // The middle needs a bit more than a double has.
    const long double middle = (static_cast<long double>(low) + static_cast<long double>(high)) / 2;
    std::snprintf(buffer.data(), buffer.size(), "%.1100Lg", middle);
    const std::string text = buffer.data();
    for (const std::string& twin : {text, text + "1", "-" + text}) {
      ExpectLikeStandard(twin, Seed);
      if (HasFatalFailure()) return;
    }
    std::snprintf(buffer.data(), buffer.size(), "%La", middle);
    ExpectLikeStandard(buffer.data(), Seed);
    if (HasFatalFailure()) return;
  }
}

TEST(ReadReal, ReadsBackTheShortestText) {
  constexpr unsigned Seed = 74;
  std::mt19937_64 random(Seed);
  for (int i = 0; i < 50000; ++i) {
    const double value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    const std::string text = FormatGeneral(value, 17);
    const RealPrefix read = ReadReal(text);
    ASSERT_EQ(std::bit_cast<uint64_t>(read.value), std::bit_cast<uint64_t>(value))
        << text << " seed " << Seed;
    ASSERT_EQ(read.length, text.size()) << text;
  }
}

TEST(ReadInteger, ReadsWhiteSpaceSignAndDigits) {
  EXPECT_EQ(ReadInteger(" -12m").value, -12);
  EXPECT_EQ(ReadInteger(" -12m").length, 4U);
  EXPECT_EQ(ReadInteger("+7").value, 7);
  EXPECT_EQ(ReadInteger("0x10").length, 1U);
  EXPECT_EQ(ReadInteger("9223372036854775807").value, LONG_MAX);
  EXPECT_EQ(ReadInteger("-9223372036854775808").value, LONG_MIN);
  for (const char* text : {"", "-", "+-1", "- 1", "m", "9223372036854775808"}) {
    EXPECT_EQ(ReadInteger(text).value, 0) << text;
    EXPECT_EQ(ReadInteger(text).length, 0U) << text;
  }
}

TEST(ReadInteger, AgreesWithTheStandardConversion) {
  constexpr unsigned Seed = 75;
  std::mt19937 random(Seed);
  const std::string bytes = "0123456789+- \t.x";
  for (int i = 0; i < 200000; ++i) {
    std::string text;
    for (size_t n = random() % 24; n > 0; --n) {
      text += bytes[random() % (random() % 4 == 0 ? bytes.size() : 10)];
    }
    errno = 0;
    char* end = nullptr;
    const long expected = std::strtol(text.c_str(), &end, 10);
    const bool overflow = errno == ERANGE;
    const IntegerPrefix read = ReadInteger(text);
    ASSERT_EQ(read.value, overflow ? 0 : expected) << text << " seed " << Seed;
    ASSERT_EQ(read.length, overflow ? 0 : static_cast<size_t>(end - text.c_str())) << text;
  }
}

TEST(ReadInt32, TakesWhatDoesNotFitForNoNumber) {
  size_t length = 9;
  EXPECT_EQ(ReadInt32("2147483647", &length), INT_MAX);
  EXPECT_EQ(length, 10U);
  EXPECT_EQ(ReadInt32("-2147483648", &length), INT_MIN);
  EXPECT_EQ(length, 11U);
  EXPECT_EQ(ReadInt32("2147483648", &length), 0);
  EXPECT_EQ(length, 0U);
  EXPECT_EQ(ReadInt32("-2147483649"), 0);
}

TEST(ReadDigits, TakesNeitherSignNorSpace) {
  EXPECT_EQ(ReadDigits("042-").value, 42);
  EXPECT_EQ(ReadDigits("042-").length, 3U);
  EXPECT_EQ(ReadDigits(" 1").length, 0U);
  EXPECT_EQ(ReadDigits("-1").length, 0U);
  const std::string many(1000, '9');
  EXPECT_EQ(ReadDigits(many).value, LargestReadDigits);
  EXPECT_EQ(ReadDigits(many).length, 1000U);
}

TEST(FormatGeneral, WritesAsPercentG) {
  EXPECT_EQ(FormatGeneral(0), "0");
  EXPECT_EQ(FormatGeneral(-0.0), "-0");
  EXPECT_EQ(FormatGeneral(1e6), "1e+06");
  EXPECT_EQ(FormatGeneral(123456), "123456");
  EXPECT_EQ(FormatGeneral(0.0001), "0.0001");
  EXPECT_EQ(FormatGeneral(0.00001), "1e-05");
  EXPECT_EQ(FormatGeneral(2.50), "2.5");
  EXPECT_EQ(FormatGeneral(999.9, 3), "1e+03");
  EXPECT_EQ(FormatGeneral(0.1, 17), "0.10000000000000001");
}

TEST(FormatFixed, WritesAsPercentF) {
  EXPECT_EQ(FormatFixed(1.0), "1.000000");
  EXPECT_EQ(FormatFixed(-0.0, 1), "-0.0");
  EXPECT_EQ(FormatFixed(2.5, 0), "2");
  EXPECT_EQ(FormatFixed(3.5, 0), "4");
  EXPECT_EQ(FormatFixed(-0.04, 1), "-0.0");
  EXPECT_EQ(FormatFixed(1e22, 0), "10000000000000000000000");
}

TEST(FormatNumbers, AgreeWithTheStandardConversion) {
  constexpr unsigned Seed = 76;
  std::mt19937_64 random(Seed);
  std::array<char, 2000> buffer{};
  for (int i = 0; i < 50000; ++i) {
    // Half of the values have the size of those in maps, with few decimals.
    const double value = i % 2 == 0
                             ? std::bit_cast<double>(random())
                             : static_cast<double>(static_cast<int64_t>(random()) >> 34) / 1e5;
    const int digits = static_cast<int>(random() % 20);
    std::snprintf(buffer.data(), buffer.size(), "%.*g", digits, value);
    ASSERT_EQ(FormatGeneral(value, digits), buffer.data()) << "seed " << Seed;
    std::snprintf(buffer.data(), buffer.size(), "%.*f", digits, value);
    ASSERT_EQ(FormatFixed(value, digits), buffer.data()) << "seed " << Seed;
  }
}

TEST(FormatNumbers, StayBounded) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(FormatFixed(largest, INT_MAX).size(), 309U + 1 + 1100);
  EXPECT_EQ(FormatGeneral(1.5, INT_MAX), "1.5");
  EXPECT_EQ(FormatFixed(1.5, -1), "1.500000");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::infinity(), 2), "inf");
}

TEST(FormatShortest, ReadsBackAsTheSameValue) {
  EXPECT_EQ(FormatShortest(0.1), "0.1");
  EXPECT_EQ(FormatShortest(115.61901275744214), "115.61901275744214");
  EXPECT_EQ(FormatShortest(1e22), "1e+22");
  constexpr unsigned Seed = 77;
  std::mt19937_64 random(Seed);
  for (int i = 0; i < 50000; ++i) {
    const double value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    const std::string text = FormatShortest(value);
    const RealPrefix read = ReadReal(text);
    ASSERT_EQ(read.length, text.size()) << text << ", seed " << Seed;
    ASSERT_EQ(std::bit_cast<uint64_t>(read.value), std::bit_cast<uint64_t>(value)) << text;
  }
}

TEST(FormatShortest, IsARealNumberToAnyReader) {
  EXPECT_EQ(FormatShortest(3), "3.0");
  EXPECT_EQ(FormatShortest(-0.0), "-0.0");
  EXPECT_EQ(FormatShortest(std::numeric_limits<double>::infinity()), "null");
  EXPECT_EQ(FormatShortest(std::numeric_limits<double>::quiet_NaN()), "null");
}

TEST(FormatText, PutsEachArgumentInItsPlace) {
  EXPECT_EQ(FormatText("Can't open file %s", {"a.map"}), "Can't open file a.map");
  EXPECT_EQ(FormatText("%s on %s", {"%s", "Main"}), "%s on Main");
  EXPECT_EQ(FormatText("%s%s%s", {"a", "", "c"}), "ac");
  EXPECT_EQ(FormatText("100%% %d", {"a"}), "100%% %d");
  EXPECT_EQ(FormatText("%s and %s", {"a"}), "a and %s");
  EXPECT_EQ(FormatText("", {"a"}), "");
}

TEST(NumberText, AsksNoLocaleOfTheStreams) {
  const DecimalComma comma;
  ExpectReal("12.5", 12.5, 4);
  ExpectReal("12,5", 12, 2);
  EXPECT_EQ(FormatGeneral(1234.5), "1234.5");
  EXPECT_EQ(FormatFixed(1234567.5, 1), "1234567.5");
}

TEST(NumberText, AsksNoLocaleOfC) {
  const DecimalComma comma;
  if (!comma.ReachesC()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  EXPECT_EQ(std::strtod("12,5", nullptr), 12.5);
  ExpectReal("12.5", 12.5, 4);
  ExpectReal("12,5", 12, 2);
  ExpectReal("0x1.8p1", 3, 7);
  EXPECT_EQ(FormatGeneral(1234.5), "1234.5");
  EXPECT_EQ(FormatFixed(1234567.5, 1), "1234567.5");
}

}  // namespace
}  // namespace orvane
