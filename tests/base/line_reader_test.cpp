#include "base/line_reader.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(std::string_view text, size_t longest = 399) {
  LineReader reader(text, longest);
  Lines lines;
  while (const auto line = reader.Next()) lines.emplace_back(*line);
  EXPECT_FALSE(reader.Next()) << "the end is the end";
  return lines;
}

TEST(LineReader, EndsLinesAtEachKindOfEnd) {
  EXPECT_EQ(LinesOf("a\nb\rc\r\nd\xFF"
                    "e"),
            (Lines{"a", "b", "c", "d", "e"}));
}

TEST(LineReader, GivesNoLineAfterTheLastEnd) {
  EXPECT_EQ(LinesOf("a\n"), Lines{"a"});
  EXPECT_EQ(LinesOf("a"), Lines{"a"});
  EXPECT_EQ(LinesOf("a\r\n"), Lines{"a"});
  EXPECT_EQ(LinesOf(""), Lines{});
}

TEST(LineReader, KeepsEmptyLines) {
  EXPECT_EQ(LinesOf("\n\na\n\r\n\r"), (Lines{"", "", "a", "", ""}));
  EXPECT_EQ(LinesOf("a\n\rb"), (Lines{"a", "", "b"}));
}

TEST(LineReader, EndsTheTextAtTheEndByteInFrontOfALine) {
  EXPECT_EQ(LinesOf("a\n\xFF"
                    "b\nc"),
            Lines{"a"});
  EXPECT_EQ(LinesOf("a\xFF\xFF"
                    "b"),
            Lines{"a"});
  EXPECT_EQ(LinesOf("\xFF"), Lines{});
}

TEST(LineReader, CutsALongLine) {
  EXPECT_EQ(LinesOf("abcdefgh\nij", 3), (Lines{"abc", "def", "gh", "ij"}));
}

TEST(LineReader, AddsNoEmptyLineAfterOneOfExactlyTheLongestLength) {
  EXPECT_EQ(LinesOf("abc\ndef\r\nghi", 3), (Lines{"abc", "def", "ghi"}));
}

// The byte was taken as the end of the line, and what follows it was read.
TEST(LineReader, EndsAtTheByteFFAfterALineOfExactlyTheLongestLength) {
  EXPECT_EQ(LinesOf("abc\xFF"
                    "def",
                    3),
            (Lines{"abc"}));
  EXPECT_EQ(LinesOf("ab\xFF"
                    "def",
                    3),
            (Lines{"ab", "def"}));
}

TEST(LineReader, CutsALineOfMapFilesAfter399Bytes) {
  const std::string text(1000, 'x');
  const Lines lines = LinesOf(text);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].size(), 399U);
  EXPECT_EQ(lines[2].size(), 202U);
}

TEST(LineReader, LetsZeroBytesThrough) {
  const std::string text("a\0b\n\0", 5);
  EXPECT_EQ(LinesOf(text), (Lines{std::string("a\0b", 3), std::string("\0", 1)}));
}

TEST(LineReader, EndsWithALengthOfZeroToo) { EXPECT_EQ(LinesOf("ab", 0), (Lines{"a", "b"})); }

}  // namespace
}  // namespace orvane
