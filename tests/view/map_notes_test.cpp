#include "view/map_notes.h"

#include "view_case.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(NoteLines, AreTheCreditsWithoutTheirSign) {
  ViewCase c;
  EXPECT_TRUE(NoteLines(c.map).empty());
  c.map.credits = {"\xC2\xA9 The station",
                   "\xA9"
                   "1998",
                   "\xA9", "\xA9  two blanks"};
  EXPECT_EQ(NoteLines(c.map), (std::vector<std::string>{"The station", "1998", "", " two blanks"}));
}

TEST(NoteLines, AreCutToWhatALineHolds) {
  ViewCase c;
  c.map.credits = {"\xA9 " + std::string(500, 'x')};
  EXPECT_EQ(NoteLines(c.map), std::vector<std::string>{std::string(199, 'x')});
}

}  // namespace
}  // namespace orvane
