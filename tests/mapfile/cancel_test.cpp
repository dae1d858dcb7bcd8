// Cancels the opening of a map at any moment.

#include "mapfile/open_map.h"
#include "mapfile/writer.h"
#include "support/counted_progress.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

namespace orvane {
namespace {

struct CancelTest : MapFixture {
  TemporaryFolder folder;

  CancelTest() {
    workspace.today = [] { return PackDate(2003, 3, 14); };
  }

  /// A net of shots with loops, ranges and a basis of some hundred lines.
  std::string WriteMaps() const {
    std::ostringstream basis;
    basis << "T\tMain\tTrail\nG\tA0\tN1\tE115\t10\n";
    for (int i = 1; i < 700; ++i) {
      basis << "C\tA" << i << "\tA" << i - 1 << "\t10\t" << (i * 37) % 360 << "\t0\n";
      if (i % 20 == 0) basis << "G\tA" << i << "\tN1.00" << i << "\tE115.00" << i << "\t20\n";
      if (i % 7 == 0) basis << "C\tA" << i << "\tA" << i / 2 << "\t90\t45\t0\n";
    }
    folder.Write("basis.map", basis.str());
    std::ostringstream text;
    text << "B\tbasis.map\nI " << folder.Path("more.map") << "\nT\t\tOru\tPim,7\t2003-3-5\n";
    for (int i = 0; i < 600; ++i) {
      text << "C\tB" << i << "\tA" << i << "\t" << 5 + i % 9 << "\t" << (i * 11) % 360 << "\t1\n";
    }
    text << "R\tDry\nK\tOru\nR\tWet\nK\tOru\nR\n";
    folder.Write("more.map", "# included\n");
    return folder.Write("site.map", text.str());
  }

  std::string Saved(Map& map) const {
    EXPECT_TRUE(WriteMapFile(map, folder.Path("saved.map"), true));
    return folder.Read("saved.map");
  }
};

TEST_F(CancelTest, ProgressReportsEachStageAndChangesNothing) {
  const std::string path = WriteMaps();
  const std::string plain = Saved(*OpenMapUnlessCanceled(workspace, path));
  Workspace watched{messages};
  watched.today = workspace.today;
  CountedProgress progress;
  watched.progress = &progress;
  Map* map = OpenMapUnlessCanceled(watched, path);
  ASSERT_NE(map, nullptr);
  EXPECT_EQ(Saved(*map), plain);
  for (const WorkStage stage : {WorkStage::Reading, WorkStage::Solving, WorkStage::Analyzing}) {
    EXPECT_NE(std::count(progress.stages.begin(), progress.stages.end(), stage), 0);
  }
  EXPECT_TRUE(progress.inBounds);
}

TEST_F(CancelTest, CanceledAtAnyMomentItLeavesNothing) {
  const std::string path = WriteMaps();
  Map& other = Read("G\tCamp\t1\t10\n", "other.map");
  CountedProgress whole;
  workspace.progress = &whole;
  Map* map = OpenMapUnlessCanceled(workspace, path);
  ASSERT_NE(map, nullptr);
  const std::string saved = Saved(*map);
  const Texts said = Said();
  ASSERT_GT(whole.stages.size(), 10U);
  // Each of the first moments, and more and more seldom then.
  for (size_t at = 1; at <= whole.stages.size(); at += 1 + at / 8) {
    SCOPED_TRACE(at);
    Workspace again{messages};
    again.today = workspace.today;
    Map& before = MapFromText(again, "G\tCamp\t1\t10\n", "other.map");
    const Point* lastPoint = again.reading.lastPoint;
    messages.Clear();
    CountedProgress progress(at);
    again.progress = &progress;
    EXPECT_EQ(OpenMapUnlessCanceled(again, path), nullptr);
    ASSERT_FALSE(again.maps.empty());
    EXPECT_EQ(&again.maps.front(), &before);
    EXPECT_EQ(std::distance(again.maps.begin(), again.maps.end()), 1);
    EXPECT_EQ(again.reading.lastPoint, lastPoint);
    EXPECT_EQ(again.reading.currentTrail, nullptr);
    EXPECT_EQ(again.reading.depth, 0);
    EXPECT_TRUE(again.reading.openFiles.empty());
    // What was not read is not missed in words.
    EXPECT_LE(Said().size(), said.size());
    // The next time it opens as if nothing had been.
    again.progress = nullptr;
    Map* then = OpenMapUnlessCanceled(again, path);
    ASSERT_NE(then, nullptr);
    if (at % 3 == 0) {
      EXPECT_EQ(Saved(*then), saved);
    }
  }
  EXPECT_EQ(&other, &*std::next(workspace.maps.begin(), 2));
}

TEST_F(CancelTest, AMapThatStaysIsFinishedAllTheSame) {
  CountedProgress progress(1);
  workspace.progress = &progress;
  Map& map = MakeMap(workspace, "stays.map");
  const MustFinish finish(&progress);
  ReadMapText(map, "G\tCamp\tN1\tE10\nC\tHill\tCamp\t10\t90\t0\nC\tHill\tCamp\t11\t90\t0\n");
  FinishMap(map);
  EXPECT_NE(Named(map, "Hill").flags & PointPlaced, 0U);
}

TEST_F(CancelTest, AMapOnOneThatIsOpenIsReadToTheEnd) {
  folder.Write("open.map", "T\tMain\tTrail\nG\tA\tN1\tE10\nG\tB\tN1.1\tE10\n");
  Map& open = OpenMap(workspace, folder.Path("open.map"));
  // The trail and a point of the other map get something of this one.
  std::string text = "B\topen.map\nT\tMain\tTrail\n";
  for (int i = 0; i < 2000; ++i) {
    text += "C\tN" + std::to_string(i) + "\tA\t5\t90\t0\n";
  }
  text += "C\tA\tN7\t5\t90\t0\n";
  const std::string path = folder.Write("site.map", text);
  CountedProgress progress(2);
  workspace.progress = &progress;
  Map* map = OpenMapUnlessCanceled(workspace, path);
  ASSERT_NE(map, nullptr);
  EXPECT_EQ(map->basis, &open);
  EXPECT_GT(progress.stages.size(), 2U);
  EXPECT_EQ(map->pointStore.size(), 2000U);
  Workspace unwatched{messages};
  unwatched.today = workspace.today;
  OpenMap(unwatched, folder.Path("open.map"));
  EXPECT_EQ(Saved(*map), Saved(OpenMap(unwatched, path)));
}

TEST_F(CancelTest, NoLineIsReadAfterAnIncludedFileWasCanceled) {
  std::string text;
  for (int i = 0; i < 600; ++i) text += "# " + std::to_string(i) + "\n";
  folder.Write("long.map", text);
  Map& map = MakeMap(workspace, "stays.map");
  CountedProgress progress(3);  // in the middle of the included file
  workspace.progress = &progress;
  ReadMapText(map, "I " + folder.Path("long.map") + "\n# after\n");
  EXPECT_TRUE(progress.Canceled());
  ASSERT_FALSE(map.comments.empty());
  EXPECT_NE(map.comments.back(), "# after");
}

TEST_F(CancelTest, ACanceledBasisIsNotTheMapsBasis) {
  WriteMaps();
  Map& map = MakeMap(workspace, folder.Path("stays.map"));
  CountedProgress progress(2);  // in the middle of the basis
  workspace.progress = &progress;
  ReadMapText(map, "B\tbasis.map\nG\tCamp\tN1\tE10\n");
  EXPECT_TRUE(progress.Canceled());
  EXPECT_EQ(map.basis, nullptr);
  EXPECT_EQ(&workspace.maps.front(), &map);
}

}  // namespace
}  // namespace orvane
