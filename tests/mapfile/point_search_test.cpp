#include "mapfile/point_search.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

TEST(FirstLineOfPoint, IsTheFirstThatGivesItAReading) {
  const std::string map =
      "# Fig\n"
      "T\tRidge\tTrail\n"
      "C\tHide\tFig\t20\t35\n"
      "  gps\tCamp=FIG\tN1\tE10\n"
      "C\tFig\tHide\t40\t180\n";
  EXPECT_EQ(FirstLineOfPoint(map, "Fig"), 4U);
  EXPECT_EQ(FirstLineOfPoint(map, "camp"), 4U);
  EXPECT_EQ(FirstLineOfPoint(map, "Hide"), 3U);
}

TEST(FirstLineOfPoint, IsElseTheFirstThatMentionsItAsAWord) {
  const std::string map =
      "C\tHide\tPde20\t20\t35\n"
      "N\tNest\tFrom Kana400 to Pde2 by 1/3\n"
      "C\tFig\tPde2\t20\t35\n";
  EXPECT_EQ(FirstLineOfPoint(map, "Pde2"), 2U);
  EXPECT_EQ(FirstLineOfPoint(map, "Kana400"), 2U);
  EXPECT_EQ(FirstLineOfPoint(map, "Pde"), 0U);
  EXPECT_EQ(FirstLineOfPoint(map, "de20"), 0U);
}

TEST(FirstLineOfPoint, CountsLinesAsTheReaderDoes) {
  const std::string map = "#\r\n#\r\r" + std::string(1000, ' ') + "\n#\xFFG\tCamp\tN1\tE10";
  EXPECT_EQ(FirstLineOfPoint(map, "Camp"), 6U);
}

TEST(FirstLineOfPoint, PassesOverAByteOrderMarkAndACreditInUtf8) {
  EXPECT_EQ(FirstLineOfPoint("\xEF\xBB\xBFG\tCamp\tN1\tE10\nG\tCamp\tN2\tE10\n", "Camp"), 1U);
  EXPECT_EQ(FirstLineOfPoint("\xC2\xA9 by\tCamp\nC\tHide\tCamp\t20\t35\n", "Camp"), 2U);
}

TEST(FirstLineOfPoint, IsNoneForANameThatIsNotThere) {
  EXPECT_EQ(FirstLineOfPoint("", "Camp"), 0U);
  EXPECT_EQ(FirstLineOfPoint("G\tCamp\tN1\tE10\n", ""), 0U);
  EXPECT_EQ(FirstLineOfPoint("G Camp\nCamp\n# Camp\tCamp\n\xA9 \tCamp\n", "Camp"), 0U);
}

}  // namespace
}  // namespace orvane
