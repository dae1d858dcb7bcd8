#include "commands/reload_map.h"

#include "mapfile/open_map.h"
#include "support/scripted_messages.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvane {
namespace {

struct ReloadMapTest : testing::Test {
  TemporaryFolder folder;
  ScriptedMessages messages;
  Workspace workspace{messages};
  Map& map = OpenMap(workspace, folder.Write("site.map", "# one\n"));
  FileNews news;
};

TEST_F(ReloadMapTest, AMapWithoutChangesIsReloadedWithoutAQuestion) {
  EXPECT_TRUE(AskBeforeReloading(map));
  EXPECT_TRUE(messages.Questions().empty());
}

TEST_F(ReloadMapTest, ChangesAreDroppedOnlyIfTheUserSaysSo) {
  for (const std::uint32_t flag : {MapDirty, MapUnlikeFile}) {
    messages.Clear();
    map.flags = flag;
    messages.answers = {1, 2};
    EXPECT_FALSE(AskBeforeReloading(map));
    EXPECT_TRUE(AskBeforeReloading(map));
    ASSERT_EQ(messages.Questions().size(), 2U);
    EXPECT_EQ(messages.Questions()[0].title, "Reload from Disk");
    EXPECT_EQ(messages.Questions()[0].text,
              "site.map has changes that are not saved. Reloading it drops them.");
  }
}

TEST_F(ReloadMapTest, OtherBytesOnTheDiskAreNews) {
  EXPECT_EQ(news.ChangedFileOf(map), "");
  folder.Write("site.map", "# two and more\n");
  EXPECT_EQ(news.ChangedFileOf(map), map.fileName);
  EXPECT_EQ(news.ChangedFileOf(map), map.fileName);
  folder.Write("site.map", "# one\n");
  EXPECT_EQ(news.ChangedFileOf(map), "");
}

TEST_F(ReloadMapTest, WhatTheMapWroteItselfIsNoNews) {
  const std::string text = "# two and more\n";
  folder.Write("site.map", text);
  EXPECT_EQ(news.ChangedFileOf(map), map.fileName);
  map.fileMark = MarkOf(text);
  EXPECT_EQ(news.ChangedFileOf(map), "");
}

TEST_F(ReloadMapTest, WhatWasDeclinedIsNotOfferedAgain) {
  folder.Write("site.map", "# two and more\n");
  ASSERT_EQ(news.ChangedFileOf(map), map.fileName);
  news.Decline(map);
  EXPECT_EQ(news.ChangedFileOf(map), "");
  folder.Write("site.map", "# three and even more\n");
  EXPECT_EQ(news.ChangedFileOf(map), map.fileName);
}

TEST_F(ReloadMapTest, AFileThatIsGoneOrWasNeverThereIsNoNews) {
  std::filesystem::remove(folder.Path("site.map"));
  EXPECT_EQ(news.ChangedFileOf(map), "");
  Map& scratch = MakeMap(workspace, folder.Write("Untitled", "# not its file\n"));
  scratch.flags |= MapUntitled;
  EXPECT_EQ(news.ChangedFileOf(scratch), "");
}

TEST_F(ReloadMapTest, AFileThatCameUpWhereThereWasNoneIsNews) {
  Map& late = OpenMap(workspace, folder.Path("late.map"));
  EXPECT_EQ(news.ChangedFileOf(late), "");
  folder.Write("late.map", "# there now\n");
  EXPECT_EQ(news.ChangedFileOf(late), late.fileName);
}

TEST_F(ReloadMapTest, FilesThatTheMapIncludesAreNewsToo) {
  const std::string part = folder.Write("part", "# one\n");
  const std::string missing = folder.Path("missing");
  Map& whole = OpenMap(workspace, folder.Write("whole.map", "I" + part + "\nI" + missing + "\n"));
  EXPECT_EQ(news.ChangedFileOf(whole), "");
  folder.Write("part", "# one and two\n");
  EXPECT_EQ(news.ChangedFileOf(whole), part);
  folder.Write("missing", "# found\n");
  folder.Write("whole.map", "# all by itself\n");
  EXPECT_EQ(news.ChangedFileOf(whole), whole.fileName);
  news.Decline(whole);
  EXPECT_EQ(news.ChangedFileOf(whole), "");
  folder.Write("missing", "# found and changed\n");
  EXPECT_EQ(news.ChangedFileOf(whole), missing);
  EXPECT_EQ(NewsText(whole, whole, missing),
            "missing, which this map includes, has changed on the disk.");
  EXPECT_EQ(NewsText(map, whole, missing),
            "missing, which whole.map includes, has changed on the disk.");
}

TEST_F(ReloadMapTest, TheWindowNamesWhatHasChanged) {
  Map& season = OpenMap(workspace, folder.Write("season.map", "B\tsite.map\n"));
  EXPECT_EQ(NewsText(season, season, season.fileName), "season.map has changed on the disk.");
  EXPECT_EQ(NewsText(season, map, map.fileName),
            "site.map, on which this map rests, has changed on the disk.");
}

}  // namespace
}  // namespace orvane
