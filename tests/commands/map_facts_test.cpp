#include "commands/map_facts.h"

#include "base/messages.h"
#include "commands/recent_files.h"
#include "commands/toolkit_errors.h"
#include "model/workspace.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(CreditLines, AreShownWithoutTheirTagAndAtMostFiveOfThem) {
  Map map;
  EXPECT_TRUE(CreditLines(map).empty());
  map.credits = {"\xC2\xA9 A. Field",
                 "\xA9\t \tB. Forest",
                 "\xA9",
                 "\xA9 \t",
                 "\xA9"
                 "C",
                 "\xA9 D"};
  EXPECT_EQ(CreditLines(map), (std::vector<std::string>{"A. Field", "B. Forest", "", "", "C"}));
}

TEST(Deviation, IsShownWithSixDecimalsAndTheDegreeSign) {
  EXPECT_EQ(DeviationText(-2.5), "-2.500000\xB0");
  EXPECT_EQ(DeviationText(0), "0.000000\xB0");
}

TEST(Deviation, IsANumberAndAtMostADegreeSign) {
  EXPECT_EQ(ParseDeviation("3.25"), 3.25);
  EXPECT_EQ(ParseDeviation("-3.25\xB0"), -3.25);
  EXPECT_EQ(ParseDeviation(" 7"), 7.0);
  EXPECT_EQ(ParseDeviation(DeviationText(-0.125)), -0.125);
  for (const char* bad : {"", "\xB0", "x", "3 ", "3\xB0 ", "3\xB0\xB0", "3 E", "3\xC2\xB0"}) {
    EXPECT_FALSE(ParseDeviation(bad)) << bad;
  }
}

TEST(SetBasis, NeverClosesACircle) {
  RecordedMessages messages;
  Workspace workspace(messages);
  Map& a = MakeMap(workspace, "a");
  Map& b = MakeMap(workspace, "b");
  Map& c = MakeMap(workspace, "c");
  EXPECT_TRUE(SetBasis(a, b));
  EXPECT_TRUE(SetBasis(b, c));
  EXPECT_FALSE(SetBasis(c, a));
  EXPECT_FALSE(SetBasis(c, c));
  EXPECT_EQ(c.basis, nullptr);
  EXPECT_EQ(a.basis, &b);
  EXPECT_EQ(a.flags & MapDirty, 0U);
  EXPECT_NE(a.flags & MapUnlikeFile, 0U);  // its file does not name the basis yet
}

TEST(RecentFiles, TheLastOneIsFirstAndListedOnce) {
  std::vector<std::string> files;
  AddRecentFile(files, "/a.map");
  AddRecentFile(files, "/b.map");
  AddRecentFile(files, "/a.map");
  AddRecentFile(files, "");
  EXPECT_EQ(files, (std::vector<std::string>{"/a.map", "/b.map"}));
  AddRecentFile(files, files[1]);
  EXPECT_EQ(files, (std::vector<std::string>{"/b.map", "/a.map"}));
}

TEST(RecentFiles, KeepTenAndComeBackFromTheirText) {
  std::vector<std::string> files;
  for (int i = 0; i < 12; ++i) AddRecentFile(files, "/map" + std::to_string(i));
  ASSERT_EQ(files.size(), MostRecentFiles);
  EXPECT_EQ(files.front(), "/map11");
  EXPECT_EQ(files.back(), "/map2");
  EXPECT_EQ(ParseRecentFiles(RecentFilesText(files)), files);
  EXPECT_EQ(ParseRecentFiles("/a\n\n/b"), (std::vector<std::string>{"/a", "/b"}));
  EXPECT_EQ(RecentFilesText({"/a\nb", "/c"}), "/c\n");
}

TEST(ToolkitErrors, TheHarmlessOneIsPassedOver) {
  RecordedMessages messages;
  ToolkitErrors errors(messages);
  EXPECT_TRUE(errors.Report(ToolkitErrors::Harmless, 4, "nothing"));
  EXPECT_TRUE(messages.Entries().empty());
}

TEST(ToolkitErrors, AGraveOneAndTheEleventhEndTheProgram) {
  RecordedMessages messages;
  ToolkitErrors grave(messages);
  EXPECT_TRUE(grave.Report(1, 2, "small"));
  EXPECT_FALSE(grave.Report(1, 3, "no display"));
  ASSERT_EQ(messages.Entries().size(), 2U);
  EXPECT_EQ(messages.Entries()[1].severity, Severity::InternalError);
  EXPECT_EQ(messages.Entries()[1].text, "no display");
  ToolkitErrors many(messages);
  for (int i = 0; i < 10; ++i) {
    EXPECT_TRUE(many.Report(1, 1, "small"));
    EXPECT_TRUE(many.Report(ToolkitErrors::Harmless, 1, ""));
  }
  EXPECT_FALSE(many.Report(1, 1, "small"));
}

}  // namespace
}  // namespace orvane
