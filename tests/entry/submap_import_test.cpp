#include "entry/submap_import.h"

#include "support/counted_progress.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

struct SubmapImportTest : MapFixture {
  TemporaryFolder folder;
  Map& map = Open("T\tMain\nG\tCamp\tN1\tE115\n");

  std::string Import(std::string_view text) {
    return ImportSubmap(map, folder.Write("sub.map", text));
  }
  std::string From() const { return " from " + folder.Path("sub.map"); }
};

TEST_F(SubmapImportTest, AddsToTheMapAndPlacesWhatIsNew) {
  EXPECT_EQ(Import("T\tSide\nC\tHut\tCamp\t100\t90\nR\tAll\nR\tMore\nH\tCamp\t100\t2\t3\n"),
            "Imported 1 point, 1 trail, 2 ranges and 1 grid" + From());
  EXPECT_TRUE(Named(map, "Hut").flags & PointPlaced);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(SubmapImportTest, CountsThePointsWithoutAPlace) {
  EXPECT_EQ(Import("T\tSide\nP\tLost\nP\tGone\nG\tHut\tN1\tE116\n"),
            "Imported 3 points and 1 trail" + From() + "; 2 points have no place");
}

TEST_F(SubmapImportTest, SaysWhatWasLookedForWhereNothingIsNew) {
  EXPECT_EQ(Import("# notes\n"),
            "Nothing new in " + folder.Path("sub.map") +
                ": looked for lines of a map file, each a letter and fields separated by tabs");
}

TEST_F(SubmapImportTest, HasNoSentenceForAFileThatCannotBeOpened) {
  EXPECT_EQ(ImportSubmap(map, folder.Path("none.map")), "");
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("none.map")});
}

TEST_F(SubmapImportTest, KeepsWhatWasReadUntilItWasCanceled) {
  std::string text = "T\tSide\n";
  for (int i = 0; i < 20000; ++i) text += "G\tP" + std::to_string(i) + "\tN1\tE115\n";
  CountedProgress progress(2);
  workspace.progress = &progress;
  const std::string summary = Import(text);
  workspace.progress = nullptr;
  EXPECT_TRUE(summary.starts_with("Imported ")) << summary;
  EXPECT_EQ(Said(), Texts{"Only a part of " + folder.Path("sub.map") + " was imported"});
  EXPECT_GT(map.pointStore.size(), 1U);
  EXPECT_LT(map.pointStore.size(), 20001U);
  EXPECT_TRUE(std::all_of(map.pointStore.begin(), map.pointStore.end(), IsPlaced));
}

}  // namespace
}  // namespace orvane
