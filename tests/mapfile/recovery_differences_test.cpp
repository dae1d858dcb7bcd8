#include "mapfile/recovery_differences.h"

#include "base/dates.h"
#include "mapfile/recovery_folder.h"
#include "model/point_names.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <utility>

namespace orvane {
namespace {

constexpr auto SiteText =
    "T\tRidge\tTrail\nG\tCamp\tN1\tE10\nC\tHill\tCamp\t100\t45\nC\tTop\tHill\t50\t45\n"
    "T\tDay\tOru\tAda\t1999-3-2\nP\tCamp\nP\tHill\nR\tOru range\nK\tOru\n";

struct DifferencesTest : MapFixture {
  TemporaryFolder folder;
  RecoveryFolder copies{folder.Path("recovery")};
  std::string path = folder.Write("site.map", SiteText);

  RecoveryCopy Copied(Map& map) {
    RecoveryCopy copy{.record = RecordOf(map), .slot = copies.NewSlot()};
    EXPECT_EQ(copies.Write(copy.slot, copy.record, RecoveryText(map)), WriteResult::Done);
    return copy;
  }
  Texts Differences(Map& map) { return DifferenceTexts(CompareWithFile(Copied(map))); }

  static std::string NameInFolder(const RecoveryCopy& copy) {
    const std::filesystem::path file(RecoveryCopyPath(copy.slot));
    return (file.parent_path().filename() / file.filename()).string();
  }
  /// The sentences for so many lines that only the copy, or only the file, has.
  static Texts LinesOnly(int inCopy, int inFile) {
    RecoveryDifferences differences;
    differences.linesInCopy = inCopy;
    differences.linesInFile = inFile;
    return DifferenceTexts(differences);
  }

  /// The map with further lines typed at its end.
  Map& WithMore(const std::string& text) {
    Map& map = OpenMap(workspace, path);
    ReadMapText(map, text);
    FinishMap(map);
    return map;
  }
};

TEST_F(DifferencesTest, ACopyWithoutChangesSaysTheSame) {
  Map& map = OpenMap(workspace, path);
  const RecoveryDifferences differences = CompareWithFile(Copied(map));
  EXPECT_TRUE(SaysTheSame(differences));
  EXPECT_EQ(differences.copy, differences.file);
  EXPECT_EQ(differences.file.trails, 1);
  EXPECT_EQ(differences.file.follows, 1);
  EXPECT_EQ(differences.file.points, 3);
  EXPECT_EQ(differences.file.ranges, 1);
  EXPECT_EQ(DifferenceTexts(differences), Texts{"The copy says the same as the file."});
}

TEST_F(DifferencesTest, TheDayOfTheCopyDoesNotCount) {
  workspace.today = [] { return PackDate(1999, 12, 31); };
  EXPECT_TRUE(SaysTheSame(CompareWithFile(Copied(OpenMap(workspace, path)))));
}

TEST_F(DifferencesTest, WhatIsNewIsCountedByKind) {
  Map& map = WithMore(
      "T\tDay 2\tOru\tAda\t1999-3-3\nG\tFig\tN1\tE10 0.1'\nG\tBee\tN1\tE10 0.2'\n"
      "T\tDay 3\tOru\tAda\t1999-3-4\nP\tFig\n");
  const Texts told = Differences(map);
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0], "2 follows and 2 points more than in the file.");
  EXPECT_EQ(told[1], "5 lines are new.");
}

TEST_F(DifferencesTest, WhatIsGoneIsCountedByKind) {
  Map& map = OpenMap(workspace, path);
  map.ranges.clear();
  map.trails.remove_if([](const Trail& trail) { return trail.name == "Day"; });
  const Texts told = Differences(map);
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0], "1 follow and 1 home range fewer than in the file.");
}

TEST_F(DifferencesTest, MoreOfOneKindAndFewerOfAnotherAreTwoSentences) {
  Map& map = WithMore("H\tCamp\t10\t5\t5\t0\n");
  map.ranges.clear();
  const Texts told = Differences(map);
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told[0], "1 grid more than in the file.");
  EXPECT_EQ(told[1], "1 home range fewer than in the file.");
}

TEST_F(DifferencesTest, AChangedReadingIsOneLineForAnotherHoweverManyPlacesMove) {
  Map& map = OpenMap(workspace, path);
  Named(map, "Hill").measurements.front().distance = 120;
  for (Point& point : map.pointStore) point.geo.lat += 0.001;
  EXPECT_EQ(Differences(map), Texts{"1 line new or changed, in place of 1 line of the file."});
}

TEST_F(DifferencesTest, AnotherOrderOfTheSameLinesIsReported) {
  Map& map = OpenMap(workspace, path);
  map.trails.reverse();
  const Texts told = Differences(map);
  // Where a point is first met its reading is written, so lines change too.
  EXPECT_FALSE(SaysTheSame(CompareWithFile(Copied(map))));
  RecoveryDifferences order;
  order.orderDiffers = true;
  EXPECT_EQ(DifferenceTexts(order), Texts{"The same lines, in another order."});
}

TEST_F(DifferencesTest, AFileThatAnotherProgramChangedIsReported) {
  Map& map = OpenMap(workspace, path);
  const RecoveryCopy copy = Copied(map);
  folder.Write("site.map", std::string(SiteText) + "P\tNew\n");
  const RecoveryDifferences differences = CompareWithFile(copy);
  EXPECT_TRUE(differences.fileChanged);
  const Texts told = DifferenceTexts(differences);
  ASSERT_GE(told.size(), 2U);
  EXPECT_EQ(told[0], "The file was changed by something else since it was opened.");
  EXPECT_EQ(told[1], "1 point fewer than in the file.");
}

TEST_F(DifferencesTest, AMissingFileIsReported) {
  const RecoveryCopy copy = Copied(OpenMap(workspace, path));
  std::filesystem::remove(path);
  EXPECT_EQ(DifferenceTexts(CompareWithFile(copy)),
            (Texts{"The file is no longer there.",
                   "The copy holds 1 trail, 1 follow, 3 points and 1 home range."}));
}

TEST_F(DifferencesTest, AFileThatCannotBeReadIsReported) {
  const RecoveryCopy copy = Copied(OpenMap(workspace, path));
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  EXPECT_EQ(DifferenceTexts(CompareWithFile(copy))[0], "The file can't be read.");
}

TEST_F(DifferencesTest, AMapThatWasNeverSavedListsItsContents) {
  Map& map = MakeMap(workspace, "Untitled");
  map.flags |= MapUntitled;
  EXPECT_EQ(Differences(map), (Texts{"The map was never saved.", "The map is empty."}));
}

TEST_F(DifferencesTest, ComparingLeavesNoMessage) {
  path = folder.Write("bad.map", "Q\tnonsense\nG\tCamp\tx\n");
  Map& map = OpenMap(workspace, path);
  const size_t before = messages.Entries().size();
  CompareWithFile(Copied(map));
  EXPECT_EQ(messages.Entries().size(), before);
}

TEST_F(DifferencesTest, TheExampleSiteSaysTheSameAsItsCopy) {
  for (const char* name : {"trails.map", "season.map", "rains.map"}) {
    RecordedMessages unheard;
    Workspace own(unheard);
    Map& map = OpenMap(own, std::string(EXAMPLE_SITE) + "/" + name);
    const RecoveryDifferences differences = CompareWithFile(Copied(map));
    EXPECT_TRUE(SaysTheSame(differences)) << name << ": " << DifferenceTexts(differences)[0];
    EXPECT_EQ(differences.copy, differences.file) << name;
  }
}

TEST_F(DifferencesTest, WhatIsOnlyGoneIsCountedInLines) {
  EXPECT_EQ(LinesOnly(0, 1), Texts{"1 line of the file is gone."});
  EXPECT_EQ(LinesOnly(0, 2), Texts{"2 lines of the file are gone."});
  EXPECT_EQ(LinesOnly(1, 0), Texts{"1 line is new."});
  EXPECT_EQ(LinesOnly(2, 3), Texts{"2 lines new or changed, in place of 3 lines of the file."});
}

TEST_F(DifferencesTest, LinesThatChangedPlacesAreReported) {
  path = folder.Write("notes.map", "# one\n# two\n");
  Map& map = OpenMap(workspace, path);
  std::swap(map.comments[0], map.comments[1]);
  const RecoveryDifferences differences = CompareWithFile(Copied(map));
  EXPECT_TRUE(differences.orderDiffers);
  EXPECT_FALSE(SaysTheSame(differences));
  EXPECT_EQ(DifferenceTexts(differences), Texts{"The same lines, in another order."});
}

TEST_F(DifferencesTest, ACopyWithoutItsLastLineEndIsComparedToItsEnd) {
  path = folder.Write("notes.map", "# one\n# two\n");
  Map& map = OpenMap(workspace, path);
  const RecoveryCopy copy = Copied(map);
  std::string text = folder.Read("recovery/" + NameInFolder(copy));
  ASSERT_EQ(text.substr(text.size() - 7), "# two\n\n");
  text.resize(text.size() - 2);
  folder.Write("recovery/" + NameInFolder(copy), text);
  EXPECT_TRUE(SaysTheSame(CompareWithFile(copy)));
}

TEST_F(DifferencesTest, ACopyThatIsGoneHasNothing) {
  const RecoveryCopy copy = Copied(OpenMap(workspace, path));
  std::filesystem::remove(RecoveryCopyPath(copy.slot));
  const RecoveryDifferences differences = CompareWithFile(copy);
  EXPECT_EQ(differences.copy, MapCounts{});
  EXPECT_EQ(DifferenceTexts(differences)[0],
            "1 trail, 1 follow, 3 points and 1 home range fewer than in the file.");
}

TEST_F(DifferencesTest, AnUntitledMapThatHasAFileIsComparedWithIt) {
  Map& map = OpenMap(workspace, path);
  map.flags |= MapUntitled;
  const RecoveryDifferences differences = CompareWithFile(Copied(map));
  EXPECT_FALSE(differences.neverSaved);
  EXPECT_TRUE(SaysTheSame(differences));
}

TEST_F(DifferencesTest, ATrailWithOnlyADateOrOnlyAnAnimalIsAFollow) {
  path = folder.Write("days.map", "T\ta\tOru\t\t1999-3-2\nT\tb\tOru\tAda\nT\tc\tTrail\n");
  const RecoveryDifferences differences = CompareWithFile(Copied(OpenMap(workspace, path)));
  EXPECT_EQ(differences.file.follows, 2);
  EXPECT_EQ(differences.file.trails, 1);
}

TEST(SaysTheSame, OnlyOfAFileThatWasComparedAndIsAlike) {
  EXPECT_TRUE(SaysTheSame({}));
  EXPECT_FALSE(SaysTheSame({.neverSaved = true, .copy = {}, .file = {}}));
  EXPECT_FALSE(SaysTheSame({.fileMissing = true, .copy = {}, .file = {}}));
  EXPECT_FALSE(SaysTheSame({.fileUnreadable = true, .copy = {}, .file = {}}));
  EXPECT_FALSE(SaysTheSame({.fileChanged = true, .copy = {}, .file = {}}));
  EXPECT_FALSE(SaysTheSame({.copy = {}, .file = {}, .linesInCopy = 1}));
  EXPECT_FALSE(SaysTheSame({.copy = {}, .file = {}, .linesInFile = 1}));
  EXPECT_FALSE(SaysTheSame({.copy = {}, .file = {}, .orderDiffers = true}));
}

}  // namespace
}  // namespace orvane
