#include "mapfile/recovery.h"

#include "base/files.h"
#include "mapfile/recovery_folder.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr auto TrailsText = "T\tRidge\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1 0.6'\tE10 0.6'\n";
constexpr auto SeasonText = "B\ttrails.map\nT\tA\tOru\tAda\t1999-3-2\nP\tCamp\nP\tHill\n";

struct RecoveryTest : MapFixture {
  TemporaryFolder folder;
  RecoveryFolder copies{folder.Path("recovery")};

  /// Copies a map as the program does.
  RecoveryCopy Copied(Map& map) {
    RecoveryCopy copy{.record = RecordOf(map), .slot = copies.NewSlot()};
    EXPECT_EQ(copies.Write(copy.slot, copy.record, RecoveryText(map)), WriteResult::Done);
    return copy;
  }

  /// The workspace of a later run.
  RecordedMessages laterMessages;
  Workspace later{laterMessages};

  Texts LaterSaid() const {
    Texts texts;
    for (const auto& entry : laterMessages.Entries()) texts.push_back(entry.text);
    return texts;
  }
};

TEST_F(RecoveryTest, ACopyIsTheMapAsItWasWithItsChanges) {
  const std::string path = folder.Write("season.map", SeasonText);
  folder.Write("trails.map", TrailsText);
  Map& map = OpenMap(workspace, path);
  map.magneticDeviation = 7;
  map.comments.emplace_back("# not saved yet");
  Map* recovered = OpenRecoveryCopy(later, Copied(map));
  ASSERT_NE(recovered, nullptr);
  // A save writes the points of the basis on the map's own trails.
  EXPECT_EQ(LaterSaid(), Texts{"A GPS location is given to a point (Camp) which is in a base map, "
                               "it will have no effect"});
  EXPECT_EQ(recovered->fileName, path);
  EXPECT_EQ(recovered->flags & (MapDirty | MapUntitled), MapDirty);
  EXPECT_EQ(recovered->magneticDeviation, 7);
  EXPECT_EQ(recovered->comments, map.comments);
  EXPECT_EQ(recovered->fileMark, map.fileMark);
  EXPECT_EQ(TrailNamesOf(*recovered), TrailNamesOf(map));
  // Opening the map again gives the recovered one.
  EXPECT_EQ(&OpenMap(later, path), recovered);
}

TEST_F(RecoveryTest, TheUsersFilesAreNotTouched) {
  const std::string path = folder.Write("season.map", SeasonText);
  folder.Write("trails.map", TrailsText);
  const auto time = fs::last_write_time(path);
  Map& map = OpenMap(workspace, path);
  map.magneticDeviation = 7;
  OpenRecoveryCopy(later, Copied(map));
  EXPECT_EQ(folder.Read("season.map"), SeasonText);
  EXPECT_EQ(folder.Read("trails.map"), TrailsText);
  EXPECT_EQ(fs::last_write_time(path), time);
}

TEST_F(RecoveryTest, TheBasisIsFoundFromTheFolderOfTheFile) {
  fs::create_directories(folder.Path("site"));
  const std::string path = folder.Write("site/season.map", SeasonText);
  folder.Write("site/trails.map", TrailsText);
  Map& map = OpenMap(workspace, path);
  Map* recovered = OpenRecoveryCopy(later, Copied(map));
  ASSERT_NE(recovered, nullptr);
  ASSERT_NE(recovered->basis, nullptr);
  EXPECT_EQ(recovered->basis->fileName, folder.Path("site/trails.map"));
  EXPECT_EQ(TrailNamesOf(*recovered->basis), Texts{"Ridge"});
  // Saved over the user's file it names its basis as that file did.
  EXPECT_TRUE(MapFileText(*recovered, path, true).starts_with("B\ttrails.map\n"));
}

TEST_F(RecoveryTest, RelativeNamesHoldInAnotherDirectory) {
  const fs::path before = fs::current_path();
  fs::create_directories(folder.Path("site"));
  folder.Write("season.map", "B\tsite/trails.map\nG\tNew\tN1\tE10\n");
  folder.Write("site/trails.map", TrailsText);
  fs::current_path(folder.Path());
  Map& map = OpenMap(workspace, "season.map");
  ASSERT_NE(map.basis, nullptr);
  const RecoveryCopy copy = Copied(map);
  fs::current_path(before);
  EXPECT_EQ(copy.record.fileName, folder.Path("season.map"));
  Map* recovered = OpenRecoveryCopy(later, copy);
  ASSERT_NE(recovered, nullptr);
  ASSERT_NE(recovered->basis, nullptr);
  EXPECT_EQ(recovered->basis->fileName, folder.Path("site/trails.map"));
  EXPECT_EQ(LaterSaid(), Texts{});
}

TEST_F(RecoveryTest, IncludedFilesAreInTheCopyItself) {
  const std::string included = folder.Write("inc.map", "G\tIncluded\tN1\tE10\n");
  Map& map = OpenMap(workspace, folder.Write("site.map", "I" + included + "\nG\tOwn\tN1\tE10\n"));
  const RecoveryCopy copy = Copied(map);
  fs::remove(included);
  Map* recovered = OpenRecoveryCopy(later, copy);
  ASSERT_NE(recovered, nullptr);
  Named(*recovered, "Included");
  Named(*recovered, "Own");
  EXPECT_EQ(LaterSaid(), Texts{});
}

TEST_F(RecoveryTest, AMapThatWasNeverSavedComesBackUntitled) {
  Map& map = MakeMap(workspace, "Untitled");
  map.flags |= MapUntitled | MapDirty;
  map.comments.emplace_back("# mine");
  const RecoveryCopy copy = Copied(map);
  EXPECT_EQ(copy.record.fileName, "Untitled");
  // Two of them do not conflict.
  for (int i = 0; i < 2; ++i) {
    Map* recovered = OpenRecoveryCopy(later, copy);
    ASSERT_NE(recovered, nullptr);
    EXPECT_EQ(recovered->fileName, "Untitled");
    EXPECT_EQ(recovered->flags & (MapDirty | MapUntitled), MapDirty | MapUntitled);
    EXPECT_EQ(recovered->comments, map.comments);
  }
}

TEST_F(RecoveryTest, AMapWhoseNameIsTakenBecomesUntitledUnderAnotherName) {
  const std::string path = folder.Write("site.map", TrailsText);
  Map& open = OpenMap(later, path);
  const RecoveryCopy copy = Copied(OpenMap(workspace, path));
  Map* first = OpenRecoveryCopy(later, copy);
  Map* second = OpenRecoveryCopy(later, copy);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(first->fileName, folder.Path("site (recovered).map"));
  EXPECT_EQ(second->fileName, folder.Path("site (recovered 2).map"));
  for (const Map* map : {first, second}) {
    // A save asks for its name, and so can't end in a file that was there.
    EXPECT_EQ(map->flags & (MapDirty | MapUntitled), MapDirty | MapUntitled);
    EXPECT_FALSE(map->fileMark);
  }
  EXPECT_EQ(&OpenMap(later, path), &open);
}

TEST_F(RecoveryTest, AMapGetsTheRecoveredFormOfItsBasis) {
  const std::string path = folder.Write("season.map", SeasonText);
  const std::string basisPath = folder.Write("trails.map", TrailsText);
  Map& map = OpenMap(workspace, path);
  Map& basis = OpenMap(workspace, basisPath);
  basis.comments.emplace_back("# changed");
  std::vector<RecoveryCopy> both = {Copied(map), Copied(basis)};
  for (const bool turned : {false, true}) {
    SCOPED_TRACE(turned);
    if (turned) std::swap(both[0], both[1]);
    Workspace next(laterMessages);
    const std::vector<Map*> maps = OpenRecoveryCopies(next, both);
    ASSERT_EQ(maps.size(), 2U);
    const Map& season = *maps[turned ? 1 : 0];
    EXPECT_EQ(season.fileName, path);
    EXPECT_EQ(season.basis, maps[turned ? 0 : 1]);
    EXPECT_EQ(season.basis->fileName, basisPath);
    EXPECT_EQ(season.basis->comments, Texts{"# changed"});
    EXPECT_EQ(Length(next.maps), 2);
  }
}

TEST_F(RecoveryTest, OfTwoCopiesOfAFileTheFirstTakesItsName) {
  const std::string path = folder.Write("site.map", TrailsText);
  Map& map = OpenMap(workspace, path);
  std::vector<RecoveryCopy> both = {Copied(map), Copied(map), Copied(map)};
  fs::remove(RecoveryCopyPath(both[2].slot));
  const std::vector<Map*> maps = OpenRecoveryCopies(later, both);
  ASSERT_EQ(maps.size(), 3U);
  EXPECT_EQ(maps[0]->fileName, path);
  EXPECT_EQ(maps[1]->fileName, folder.Path("site (recovered).map"));
  EXPECT_EQ(maps[2], nullptr);
}

TEST_F(RecoveryTest, ABasisThatNowHasTheMapAsItsBasisMakesNoCircle) {
  const std::string path = folder.Write("season.map", SeasonText);
  folder.Write("trails.map", TrailsText);
  const RecoveryCopy copy = Copied(OpenMap(workspace, path));
  folder.Write("trails.map", "B\tseason.map\n");
  Map* recovered = OpenRecoveryCopy(later, copy);
  ASSERT_NE(recovered, nullptr);
  ASSERT_NE(recovered->basis, nullptr);
  EXPECT_EQ(recovered->basis->basis, nullptr);
  ASSERT_FALSE(laterMessages.Entries().empty());
  EXPECT_EQ(laterMessages.Entries()[0].text, "Can't open file " + path);
  EXPECT_TRUE(later.reading.openFiles.empty());
}

TEST_F(RecoveryTest, ACopyThatHasGoneLeavesNoMapUnderTheUsersName) {
  const std::string path = folder.Write("site.map", TrailsText);
  const RecoveryCopy copy = Copied(OpenMap(workspace, path));
  fs::remove(RecoveryCopyPath(copy.slot));
  EXPECT_EQ(OpenRecoveryCopy(later, copy), nullptr);
  ASSERT_EQ(laterMessages.Entries().size(), 1U);
  EXPECT_EQ(laterMessages.Entries()[0].text, "Can't open file " + RecoveryCopyPath(copy.slot));
  EXPECT_TRUE(later.maps.empty());
}

TEST_F(RecoveryTest, ACopyIsReadToItsEndDespiteACancel) {
  struct Impatient : Progress {
    void Reach(WorkStage /*stage*/, size_t /*done*/, size_t /*of*/) override { Cancel(); }
    using Progress::Cancel;
  } progress;
  Map& map = OpenMap(workspace, folder.Write("site.map", TrailsText));
  const RecoveryCopy copy = Copied(map);
  progress.Cancel();
  later.progress = &progress;
  Map* recovered = OpenRecoveryCopy(later, copy);
  ASSERT_NE(recovered, nullptr);
  EXPECT_EQ(TrailNamesOf(*recovered), TrailNamesOf(map));
}

TEST_F(RecoveryTest, DatesAreReadAsTheyWereThen) {
  const std::string basis = folder.Write("trails.map", "T\tA\tOru\tAda\t2-3-99\nP\tCamp\n");
  const std::string path = folder.Write("season.map", "B\ttrails.map\n");
  workspace.preferences.europeanDates = true;
  const RecoveryCopy copy = Copied(OpenMap(workspace, path));
  EXPECT_TRUE(copy.record.europeanDates);
  Map* recovered = OpenRecoveryCopy(later, copy);
  ASSERT_NE(recovered, nullptr);
  EXPECT_EQ(OpenMap(later, basis).trails.front().date, PackDate(1999, 3, 2));
  EXPECT_FALSE(later.preferences.europeanDates);
}

TEST_F(RecoveryTest, ANameWithoutAnEndingIsMarkedAtItsEnd) {
  const std::string path = folder.Write("site", TrailsText);
  OpenMap(later, path);
  const Map* recovered = OpenRecoveryCopy(later, Copied(OpenMap(workspace, path)));
  ASSERT_NE(recovered, nullptr);
  EXPECT_EQ(recovered->fileName, folder.Path("site (recovered)"));
}

TEST_F(RecoveryTest, AnUntitledMapThatHadAFileKeepsItsWholeName) {
  const std::string path = folder.Write("site.map", TrailsText);
  Map& map = OpenMap(workspace, path);
  map.flags |= MapUntitled;
  const RecoveryRecord record = RecordOf(map);
  EXPECT_EQ(record.fileName, path);
  EXPECT_TRUE(record.untitled);
  EXPECT_EQ(record.original, map.fileMark);
}

TEST_F(RecoveryTest, OfMapsThatAreBasesOfEachOtherTheFirstIsOpenedFirst) {
  std::vector<RecoveryCopy> both;
  for (const char* name : {"a.map", "b.map"}) {
    const RecoveryCopy copy{.record = {.fileName = folder.Path(name), .original = {}},
                            .slot = copies.NewSlot()};
    const std::string other = folder.Path(*name == 'a' ? "b.map" : "a.map");
    ASSERT_EQ(copies.Write(copy.slot, copy.record, "B\t" + other + "\n# " + name + "\n"),
              WriteResult::Done);
    both.push_back(copy);
  }
  const std::vector<Map*> maps = OpenRecoveryCopies(later, both);
  ASSERT_EQ(maps.size(), 2U);
  EXPECT_EQ(maps[0]->comments, Texts{"# a.map"});
  EXPECT_EQ(maps[1]->comments, Texts{"# b.map"});
  // The first has the file of the second as its basis, so the circle is cut there.
  ASSERT_NE(maps[0]->basis, nullptr);
  EXPECT_EQ(maps[0]->basis->fileName, folder.Path("b.map"));
  EXPECT_EQ(maps[1]->basis, nullptr);
}

TEST(RecoveryRecord, IsReadBackAsItWasWritten) {
  for (const char* name : {"/home/me/site.map", "/a b/100%.map", "/line\nfeed\r/%41.map",
                           "/caf\xE9/\xE6\x9D\xB1.map", "Untitled", "%"}) {
    for (const bool flag : {false, true}) {
      RecoveryRecord record{.fileName = name,
                            .untitled = flag,
                            .europeanDates = !flag,
                            .original = FileMark{.size = 12, .hash = 0xFEDCBA9876543210}};
      if (flag) record.original.reset();
      const auto back = ParseRecoveryRecord(RecoveryRecordText(record));
      ASSERT_TRUE(back) << name;
      EXPECT_EQ(back->fileName, name);
      EXPECT_EQ(back->untitled, flag);
      EXPECT_EQ(back->europeanDates, !flag);
      EXPECT_EQ(back->original, record.original);
    }
  }
}

TEST(RecoveryRecord, WithoutAFileIsNone) {
  EXPECT_FALSE(ParseRecoveryRecord(""));
  EXPECT_FALSE(ParseRecoveryRecord("file=\nuntitled=1\n"));
  EXPECT_FALSE(ParseRecoveryRecord("\xFF\xFE\n\n"));
}

TEST(RecoveryRecord, ThatIsDamagedKeepsWhatItHas) {
  const auto record =
      ParseRecoveryRecord("nonsense\nfile=/a.map\nuntitled=yes\nsize=1x\nhash=12\nfuture=1");
  ASSERT_TRUE(record);
  EXPECT_EQ(record->fileName, "/a.map");
  EXPECT_FALSE(record->untitled);
  EXPECT_FALSE(record->original);
}

TEST(RecoveryRecord, EscapesThatAreNoneAreKept) {
  const auto nameOf = [](const std::string& text) {
    return ParseRecoveryRecord("file=" + text + "\n").value_or(RecoveryRecord{}).fileName;
  };
  EXPECT_EQ(nameOf("/a%41.map"), "/aA.map");
  EXPECT_EQ(nameOf("/a%4.map"), "/a%4.map");
  EXPECT_EQ(nameOf("/a%zz"), "/a%zz");
  EXPECT_EQ(nameOf("/a%4"), "/a%4");
  EXPECT_EQ(nameOf("/a%"), "/a%");
}

TEST(RecoveryRecord, NeedsBothSizeAndHashForTheMarkOfItsFile) {
  const auto markOf = [](const std::string& lines) {
    return ParseRecoveryRecord("file=/a.map\n" + lines).value_or(RecoveryRecord{}).original;
  };
  EXPECT_EQ(markOf("size=3\nhash=4\n"), (FileMark{.size = 3, .hash = 4}));
  EXPECT_FALSE(markOf("size=3\n"));
  EXPECT_FALSE(markOf("hash=4\n"));
  EXPECT_FALSE(markOf("size=3\nhash=99999999999999999999999\n"));
}

}  // namespace
}  // namespace orvane
