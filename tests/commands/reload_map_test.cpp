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
  EXPECT_FALSE(news.HasNews(map));
  folder.Write("site.map", "# two and more\n");
  EXPECT_TRUE(news.HasNews(map));
  EXPECT_TRUE(news.HasNews(map));
  folder.Write("site.map", "# one\n");
  EXPECT_FALSE(news.HasNews(map));
}

TEST_F(ReloadMapTest, WhatTheMapWroteItselfIsNoNews) {
  const std::string text = "# two and more\n";
  folder.Write("site.map", text);
  EXPECT_TRUE(news.HasNews(map));
  map.fileMark = MarkOf(text);
  EXPECT_FALSE(news.HasNews(map));
}

TEST_F(ReloadMapTest, WhatWasDeclinedIsNotOfferedAgain) {
  folder.Write("site.map", "# two and more\n");
  ASSERT_TRUE(news.HasNews(map));
  news.Decline(map);
  EXPECT_FALSE(news.HasNews(map));
  folder.Write("site.map", "# three and even more\n");
  EXPECT_TRUE(news.HasNews(map));
}

TEST_F(ReloadMapTest, AFileThatIsGoneOrWasNeverThereIsNoNews) {
  std::filesystem::remove(folder.Path("site.map"));
  EXPECT_FALSE(news.HasNews(map));
  Map& scratch = MakeMap(workspace, folder.Write("Untitled", "# not its file\n"));
  scratch.flags |= MapUntitled;
  EXPECT_FALSE(news.HasNews(scratch));
}

TEST_F(ReloadMapTest, AFileThatCameUpWhereThereWasNoneIsNews) {
  Map& late = OpenMap(workspace, folder.Path("late.map"));
  EXPECT_FALSE(news.HasNews(late));
  folder.Write("late.map", "# there now\n");
  EXPECT_TRUE(news.HasNews(late));
}

TEST_F(ReloadMapTest, TheWindowNamesWhatHasChanged) {
  Map& season = OpenMap(workspace, folder.Write("season.map", "B\tsite.map\n"));
  EXPECT_EQ(NewsText(season, season), "season.map has changed on the disk.");
  EXPECT_EQ(NewsText(season, map), "site.map, on which this map rests, has changed on the disk.");
}

}  // namespace
}  // namespace orvane
