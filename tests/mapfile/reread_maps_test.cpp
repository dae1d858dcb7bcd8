#include "mapfile/reread_maps.h"

#include "mapfile/open_map.h"
#include "mapfile/writer.h"
#include "support/counted_progress.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <new>

namespace orvane {
namespace {

struct RereadMapsTest : MapFixture {
  TemporaryFolder folder;

  Map& OpenFile(const std::string& path) { return OpenMap(workspace, path); }
  long MapsOpen() const { return Length(workspace.maps); }
  static std::string Text(Map& map) { return MapFileText(map, map.fileName, true); }
};

constexpr auto Ridge = "T\tRidge\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1.01\tE10\n";

TEST_F(RereadMapsTest, AMapTakesWhatItsFileSaysNow) {
  Map& map = OpenFile(folder.Write("site.map", Ridge));
  folder.Write("site.map", "# new\nT\tValley\tTrail\nG\tCamp\tN2\tE10\nR\tNorth\n");
  EXPECT_EQ(RereadMap(map), RereadOutcome::Done);
  EXPECT_EQ(TrailNamesOf(map), Texts{"Valley"});
  EXPECT_EQ(Named(map, "Camp").geo.lat, 2);
  EXPECT_EQ(Named(map, "Camp").map, &map);
  EXPECT_EQ(FindPointByName(map, nullptr, "Hill"), nullptr);
  EXPECT_EQ(map.comments, Texts{"# new"});
  EXPECT_EQ(Length(map.ranges), 1);
  EXPECT_EQ(map.fileMark, MarkOf(folder.Read("site.map")));
  EXPECT_EQ(map.workspace, &workspace);
  EXPECT_EQ(MapsOpen(), 1);
  EXPECT_TRUE(Said().empty());
}

TEST_F(RereadMapsTest, ItsChangesAreDropped) {
  Map& map = OpenFile(folder.Write("site.map", Ridge));
  map.comments.emplace_back("# mine");
  map.flags |= MapDirty | MapUnlikeFile;
  EXPECT_EQ(RereadMap(map), RereadOutcome::Done);
  EXPECT_TRUE(map.comments.empty());
  EXPECT_EQ(map.flags & (MapDirty | MapUnlikeFile), 0U);
}

TEST_F(RereadMapsTest, AFileThatIsGoneLeavesTheMapAsItWas) {
  Map& map = OpenFile(folder.Write("site.map", Ridge));
  map.flags |= MapDirty;
  std::filesystem::remove(folder.Path("site.map"));
  const Point* camp = &Named(map, "Camp");
  EXPECT_EQ(RereadMap(map), RereadOutcome::Unreadable);
  EXPECT_EQ(&Named(map, "Camp"), camp);
  EXPECT_NE(map.flags & MapDirty, 0U);
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("site.map")});
}

TEST_F(RereadMapsTest, AMapOnABasisThatIsReadAgainFollowsIt) {
  folder.Write("base.map", Ridge);
  Map& season = OpenFile(
      folder.Write("season.map", "B\tbase.map\nT\tPde\tHuman\nP\tCamp\nC\tTree\tHill\t100\t0\n"));
  Map& base = *season.basis;
  EXPECT_EQ(Named(season, "Camp").geo.lat, 1);
  folder.Write("base.map", "T\tRidge\tTrail\nG\tCamp\tN3\tE10\nG\tHill\tN3.01\tE10\n");
  EXPECT_EQ(RereadMap(base), RereadOutcome::Done);
  EXPECT_EQ(season.basis, &base);
  const Trail& follow = season.trails.front();
  EXPECT_EQ(follow.points.front(), &Named(base, "Camp"));
  EXPECT_EQ(follow.points.front()->geo.lat, 3);
  EXPECT_NEAR(Named(season, "Tree").geo.lat, 3.01, 0.01);
  EXPECT_EQ(MapsOpen(), 2);
  EXPECT_TRUE(Said().empty());
}

TEST_F(RereadMapsTest, WhatAMapDidToItsBasisIsUndoneWithIt) {
  folder.Write("base.map", std::string(Ridge) + "T\nG\tTree\tN1.02\tE10\n");
  const std::string text = folder.Read("base.map");
  // The map above runs a trail of the basis over a point of its own, and takes a loose point of it.
  Map& season = OpenFile(folder.Write(
      "season.map", "B\tbase.map\nT\tRidge\tTrail\nG\tOwn\tN1\tE11\nT\tPde\tHuman\nP\tTree\n"));
  Map& base = *season.basis;
  EXPECT_EQ(base.trails.front().points.front()->map, &season);
  folder.Write("season.map", "B\tbase.map\n");
  EXPECT_EQ(RereadMap(season), RereadOutcome::Done);
  Workspace plain(messages);
  EXPECT_EQ(Text(base), Text(OpenMap(plain, folder.Path("base.map"))));
  EXPECT_EQ(Named(base, "Tree").trail, nullptr);
  EXPECT_EQ(folder.Read("base.map"), text);
}

TEST_F(RereadMapsTest, UnsavedChangesOfOtherMapsAreKept) {
  folder.Write("base.map", Ridge);
  Map& season = OpenFile(folder.Write("season.map", "B\tbase.map\nT\tPde\tHuman\nP\tCamp\n"));
  season.comments.emplace_back("# mine");
  season.flags |= MapDirty;
  const auto mark = season.fileMark;
  folder.Write("base.map", "G\tCamp\tN3\tE10\n");
  EXPECT_EQ(RereadMap(*season.basis), RereadOutcome::Done);
  EXPECT_EQ(season.comments, Texts{"# mine"});
  EXPECT_NE(season.flags & MapDirty, 0U);
  EXPECT_EQ(season.fileMark, mark);
  EXPECT_EQ(season.trails.front().points.front()->geo.lat, 3);
}

TEST_F(RereadMapsTest, PointsOfABasisGetNothingTwiceFromAMapWithChanges) {
  const std::string base =
      "T\tRidge\tTrail\nG\tCamp\tN1 0.1234567'\tE10\t50\t3\t2k\tby the river\n"
      "C\tHill\tCamp\t100\t45.5\n";
  folder.Write("base.map", base);
  Map& season = OpenFile(folder.Write(
      "season.map",
      "B\tbase.map\nT\tPde\tHuman\nP\tCamp\t\tburnt\nG\tHill\tN1\tE10\nP\tOwn\t\tnest\n"));
  season.flags |= MapDirty;
  const std::string note = *Named(season, "Camp").note;
  messages.Clear();
  EXPECT_EQ(RereadMap(*season.basis), RereadOutcome::Done);
  const Point& camp = Named(season, "Camp");
  EXPECT_EQ(Readings(camp).size(), 1U);
  EXPECT_EQ(camp.note, note);
  EXPECT_EQ(camp.labelLimit, 2000);
  EXPECT_EQ(Readings(Named(season, "Hill")).size(), 2U);  // one is of the season
  EXPECT_EQ(Named(season, "Own").note, "\tnest");
  EXPECT_TRUE(Said().empty());
  // What the basis says now counts.
  folder.Write("base.map", "G\tCamp\tN2\tE10\t60\t1\t3k\tby the lake\n");
  EXPECT_EQ(RereadMap(*season.basis), RereadOutcome::Done);
  EXPECT_EQ(Named(season, "Camp").geo.lat, 2);
  EXPECT_EQ(Named(season, "Camp").labelLimit, 3000);
  EXPECT_EQ(Named(season, "Camp").note, "\tby the lake");
}

TEST_F(RereadMapsTest, ASubmapAndABasisThatNoFileNamesAreKept) {
  Map& base = OpenFile(folder.Write("base.map", Ridge));
  Map& season = OpenFile(folder.Write("season.map", "T\tPde\tHuman\nG\tTree\tN1\tE11\n"));
  season.basis = &base;
  season.flags |= MapUnlikeFile;
  EXPECT_EQ(RereadMap(base), RereadOutcome::Done);
  EXPECT_EQ(season.basis, &base);
  EXPECT_NE(season.flags & MapUnlikeFile, 0U);
  EXPECT_EQ(TrailNamesOf(season), Texts{"Pde"});
}

TEST_F(RereadMapsTest, AMapStaysOnABasisThatWasSavedUnderAnotherName) {
  folder.Write("base.map", Ridge);
  Map& season = OpenFile(folder.Write("season.map", "B\tbase.map\nT\tPde\tHuman\nP\tCamp\n"));
  Map& base = *season.basis;
  base.fileName = folder.Write("second.map", "G\tCamp\tN3\tE10\n");
  EXPECT_EQ(RereadMap(base), RereadOutcome::Done);
  EXPECT_EQ(season.basis, &base);
  EXPECT_EQ(season.trails.front().points.front()->geo.lat, 3);
  EXPECT_EQ(MapsOpen(), 2);
}

TEST_F(RereadMapsTest, ANewBasisIsOpenedOrFoundOpen) {
  folder.Write("far.map", "G\tFar\tN5\tE10\n");
  Map& open = OpenFile(folder.Write("open.map", Ridge));
  Map& a = OpenFile(folder.Write("a.map", ""));
  Map& b = OpenFile(folder.Write("b.map", ""));
  folder.Write("a.map", "B\topen.map\nT\tPde\tHuman\nP\tCamp\n");
  folder.Write("b.map", "B\tfar.map\nT\tPde\tHuman\nP\tFar\n");
  EXPECT_EQ(RereadMap(a), RereadOutcome::Done);
  EXPECT_EQ(a.basis, &open);
  EXPECT_EQ(a.trails.front().points.front(), &Named(open, "Camp"));
  EXPECT_EQ(MapsOpen(), 3);
  EXPECT_EQ(RereadMap(b), RereadOutcome::Done);
  EXPECT_EQ(MapsOpen(), 4);
  ASSERT_NE(b.basis, nullptr);
  EXPECT_EQ(b.basis, FindMap(workspace, folder.Path("far.map")));
  EXPECT_EQ(b.basis->workspace, &workspace);
  EXPECT_EQ(Named(b, "Far").map, b.basis);
  EXPECT_EQ(OpenMap(workspace, folder.Path("far.map")).fileName, b.basis->fileName);
  EXPECT_EQ(MapsOpen(), 4);
}

TEST_F(RereadMapsTest, ABasisThatWouldCloseACircleIsRefused) {
  folder.Write("base.map", Ridge);
  Map& season = OpenFile(folder.Write("season.map", "B\tbase.map\n"));
  Map& base = *season.basis;
  folder.Write("base.map", "B\tseason.map\nG\tCamp\tN3\tE10\n");
  EXPECT_EQ(RereadMap(base), RereadOutcome::Done);
  EXPECT_EQ(base.basis, nullptr);
  EXPECT_EQ(season.basis, &base);
  EXPECT_EQ(Said(), Texts{"Can't open file " + folder.Path("season.map")});
  EXPECT_EQ(MapsOpen(), 2);
}

TEST_F(RereadMapsTest, AMapCanGetAnotherMapOfTheSameBasisAsItsBasis) {
  folder.Write("base.map", Ridge);
  Map& first = OpenFile(folder.Write("first.map", "B\tbase.map\nG\tTree\tN4\tE10\n"));
  Map& second = OpenFile(folder.Write("second.map", "B\tbase.map\n"));
  folder.Write("second.map", "B\tfirst.map\nT\tPde\tHuman\nP\tTree\n");
  EXPECT_EQ(RereadMap(second), RereadOutcome::Done);
  EXPECT_EQ(second.basis, &first);
  EXPECT_EQ(second.trails.front().points.front(), &Named(first, "Tree"));
  EXPECT_EQ(MapsOpen(), 3);
}

TEST_F(RereadMapsTest, MessagesOnABasisThatWasReadBeforeAreLeftOut) {
  folder.Write("base.map", "? odd\n");
  Map& season = OpenFile(folder.Write("season.map", "B\tbase.map\n"));
  ASSERT_EQ(Said().size(), 1U);
  messages.Clear();
  folder.Write("season.map", "B\tbase.map\n! odd\n");
  EXPECT_EQ(RereadMap(season), RereadOutcome::Done);
  EXPECT_EQ(Said(), Texts{"Unparseable input: ! odd"});
}

TEST_F(RereadMapsTest, CancelingLeavesAllMapsAsTheyWere) {
  folder.Write("base.map", Ridge);
  Map& season = OpenFile(folder.Write("season.map", "B\tbase.map\n# old\n"));
  const std::string before = Text(*season.basis) + Text(season);
  folder.Write("season.map", "B\tbase.map\n# new\n");
  CountedProgress progress(1);
  workspace.progress = &progress;
  EXPECT_EQ(RereadMap(season), RereadOutcome::Canceled);
  workspace.progress = nullptr;
  EXPECT_EQ(Text(*season.basis) + Text(season), before);
  EXPECT_EQ(MapsOpen(), 2);
}

/// Runs out of memory at the given report of progress.
class ScarceMemory final : public Progress {
 public:
  explicit ScarceMemory(int failAt) : left_(failAt) {}
  void Reach(WorkStage stage, size_t done, size_t of) override {
    (void)stage, (void)done, (void)of;
    if (--left_ == 0) throw std::bad_alloc();
  }

 private:
  int left_;
};

TEST_F(RereadMapsTest, WithoutMemoryAllMapsStayAsTheyWere) {
  folder.Write("base.map", Ridge);
  Map& season = OpenFile(folder.Write("season.map", "B\tbase.map\n# old\n"));
  const std::string before = Text(*season.basis) + Text(season);
  folder.Write("season.map", "B\tbase.map\n# new\n");
  int failures = 0;
  for (int failAt = 1;; ++failAt, ++failures) {
    ScarceMemory work(failAt);
    workspace.progress = &work;
    try {
      EXPECT_EQ(RereadMap(season), RereadOutcome::Done);
      break;
    } catch (const std::bad_alloc&) {
      workspace.progress = nullptr;
    }
    EXPECT_EQ(Text(*season.basis) + Text(season), before);
    EXPECT_EQ(MapsOpen(), 2);
  }
  EXPECT_GT(failures, 1);
  EXPECT_EQ(season.comments, Texts{"# new"});
  workspace.progress = nullptr;
}

TEST_F(RereadMapsTest, AMapThatDoesNotFitIntoMemoryLeavesNothingInItsBasis) {
  folder.Write("base.map", std::string(Ridge) + "T\nG\tTree\tN1.02\tE10\n");
  Map& base = OpenFile(folder.Path("base.map"));
  const std::string before = Text(base);
  std::string text = "B\tbase.map\nT\tRidge\tTrail\nG\tOwn\tN1\tE11\nT\tPde\tHuman\nP\tTree\n";
  for (int i = 0; i < 600; ++i) text += "# many lines\n";
  const std::string season = folder.Write("season.map", text);
  int failures = 0;
  for (int failAt = 1;; ++failAt, ++failures) {
    ScarceMemory work(failAt);
    workspace.progress = &work;
    try {
      EXPECT_NE(OpenMapUnlessCanceled(workspace, season), nullptr);
      break;
    } catch (const std::bad_alloc&) {
      workspace.progress = nullptr;
    }
    EXPECT_EQ(Text(base), before);
    EXPECT_EQ(Named(base, "Tree").trail, nullptr);
    EXPECT_EQ(MapsOpen(), 1);
    EXPECT_TRUE(workspace.reading.openFiles.empty());
  }
  workspace.progress = nullptr;
  EXPECT_GT(failures, 1);
  EXPECT_EQ(base.trails.front().points.front()->name, "Own");
}

TEST_F(RereadMapsTest, ABackupBringsAMapBack) {
  folder.Write("base.map", Ridge);
  for (const bool dirty : {false, true}) {
    Workspace own(messages);
    Map& map = OpenMap(own, folder.Write("site.map", "B\tbase.map\nT\tPde\tHuman\nP\tCamp\n"));
    if (dirty) map.comments.emplace_back("# mine");
    if (dirty) map.flags |= MapDirty;
    const std::string before = Text(map);
    const std::uint32_t flags = map.flags;
    const MapBackup backup = BackUp(map);
    EXPECT_EQ(backup.text.has_value(), dirty);
    ReadMapText(map, "T\tOther\tTrail\nG\tFar\tN5\tE10\nP\tHill\tA note\n");
    map.flags |= MapDirty;
    map.basis = nullptr;
    EXPECT_TRUE(RestoreMap(map, backup));
    EXPECT_EQ(Text(map), before);
    EXPECT_EQ(map.flags, flags);
    ASSERT_NE(map.basis, nullptr);
    EXPECT_EQ(Named(*map.basis, "Hill").note, std::nullopt);
  }
}

// The other maps keep what they have read, also if a file that they include has changed since.
TEST_F(RereadMapsTest, AnIncludedFileIsReadAgainOnlyWithItsOwnMap) {
  folder.Write("base.map", Ridge);
  folder.Write("part", "P\tCamp\tOld\n");
  Map& season =
      OpenFile(folder.Write("season.map", "B\tbase.map\nI " + folder.Path("part") + "\nP\tTree\n"));
  const auto marks = season.includedFiles;
  folder.Write("part", "# new\n");
  EXPECT_EQ(RereadMap(*season.basis), RereadOutcome::Done);
  EXPECT_TRUE(season.comments.empty());
  EXPECT_EQ(season.includedFiles, marks);
  EXPECT_EQ(RereadMap(season), RereadOutcome::Done);
  EXPECT_EQ(season.comments, Texts{"# new"});
  EXPECT_EQ(season.includedFiles.at(folder.Path("part")), MarkOf("# new\n"));
}

}  // namespace
}  // namespace orvane
