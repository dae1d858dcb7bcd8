#include "commands/save_map.h"

#include "base/file_mark.h"
#include "commands/close_map.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "support/scripted_questions.h"
#include "support/temporary_folder.h"
#include "support/working_folder.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace orvane {
namespace {

class SaveMapTest : public testing::Test {
 protected:
  SaveMapTest() : workspace_(messages_) {
    std::filesystem::create_directory(folder_.Path("other"));
  }

  Map& MakeChanged(const std::string& name) {
    Map& map = MakeMap(workspace_, folder_.Path(name));
    map.flags |= MapDirty;
    return map;
  }

  static bool IsDirty(const Map& map) { return (map.flags & MapDirty) != 0; }

  bool Exists(const std::string& name) const { return std::filesystem::exists(folder_.Path(name)); }

  std::set<std::string> FilesInFolder() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  SaveContext Context() {
    return {.dialogs = dialogs_,
            .files = files_,
            .defaultDirectory = "/start",
            .saved = [](Map& map) { map.flags &= ~std::uint32_t{MapDirty}; },
            .renamed = [this](Map& map) { renamed_.push_back(map.fileName); },
            .written = [this](Map&, const std::string& path) { written_.push_back(path); },
            .system = system_};
  }

  TemporaryFolder folder_;
  ScriptedMessages messages_;
  ScriptedDialogs dialogs_;
  FileSpecifications files_;
  Workspace workspace_;
  std::vector<std::string> renamed_, written_;
  FileSystem system_ = SystemFiles();
};

TEST_F(SaveMapTest, SavesWhatHasChangedUpTheChain) {
  Map& map = MakeChanged("season.map");
  Map& middle = MakeMap(workspace_, folder_.Path("middle.map"));
  Map& basis = MakeChanged("trails.map");
  map.basis = &middle;
  middle.basis = &basis;
  EXPECT_TRUE(SaveChangedMaps(map, Context()));
  EXPECT_TRUE(Exists("season.map"));
  EXPECT_FALSE(Exists("middle.map"));
  EXPECT_TRUE(Exists("trails.map"));
  EXPECT_FALSE(IsDirty(map));
  EXPECT_FALSE(IsDirty(basis));
  EXPECT_TRUE(dialogs_.questions.empty());
  EXPECT_EQ(written_.size(), 2U);
  EXPECT_TRUE(renamed_.empty());
}

TEST_F(SaveMapTest, ASavedFileIncludesNothing) {
  Map& map = MakeChanged("season.map");
  map.includedFiles[folder_.Path("part")] = std::nullopt;
  EXPECT_TRUE(SaveChangedMaps(map, Context()));
  EXPECT_TRUE(map.includedFiles.empty());
}

TEST_F(SaveMapTest, AnUntitledMapIsAskedForItsNameAtEachSave) {
  Map& map = MakeMap(workspace_, "Untitled");
  map.flags |= MapDirty | MapUntitled;
  dialogs_.paths = {folder_.Path("a.map"), folder_.Path("b.map")};
  EXPECT_TRUE(SaveChangedMaps(map, Context()));
  EXPECT_EQ(map.fileName, folder_.Path("a.map"));
  EXPECT_TRUE(IsUntitled(map));
  EXPECT_EQ(dialogs_.questions[0].title, "Save untitled map as...");
  EXPECT_EQ(dialogs_.questions[0].file.name, "Untitled");
  map.flags |= MapDirty;
  EXPECT_TRUE(SaveChangedMaps(map, Context()));
  ASSERT_EQ(dialogs_.questions.size(), 2U);
  EXPECT_EQ(dialogs_.questions[1].title, "Save untitled map as...");
  EXPECT_EQ(dialogs_.questions[1].file.name, "a.map");
  EXPECT_EQ(map.fileName, folder_.Path("b.map"));
}

TEST_F(SaveMapTest, AMapOpenedByAShortNameIsSavedElsewhereWithItsBasis) {
  folder_.Write("trails.map", "L\tCamp\t1\t10\n");
  folder_.Write("season.map", "B\ttrails.map\nL\tHill\t1\t11\n");
  std::filesystem::create_directory(folder_.Path("sub"));
  const WorkingFolder working(folder_.Path());
  for (const char* name : {"season.map", "./season.map", "sub/../season.map"}) {
    Workspace workspace(messages_);
    Map& map = OpenMap(workspace, name);
    dialogs_.paths = {folder_.Path("copy.map"), folder_.Path("other/season.map")};
    EXPECT_TRUE(SaveMapAs(map, true, Context()));
    EXPECT_TRUE(messages_.Questions().empty()) << name << ": it is the folder of the basis";
    messages_.answers = {2};
    EXPECT_TRUE(SaveMapAs(map, true, Context()));
    EXPECT_EQ(messages_.Questions().size(), 1U);
    EXPECT_EQ(map.shownName, folder_.Path("other/season.map"));
    EXPECT_TRUE(
        folder_.Read("other/season.map").starts_with("B\t" + folder_.Path("trails.map") + "\n"))
        << folder_.Read("other/season.map");
    messages_.Clear();
  }
}

TEST_F(SaveMapTest, AFailureNamesTheFileAsTyped) {
  folder_.Write("season.map", "L\tHill\t1\t11\n");
  const WorkingFolder working(folder_.Path());
  Map& map = OpenMap(workspace_, "./season.map");
  system_.flush = [](int) { return -1; };
  map.flags |= MapDirty;
  EXPECT_FALSE(SaveChangedMaps(map, Context()));
  ASSERT_EQ(messages_.Entries().size(), 1U);
  EXPECT_EQ(messages_.Entries()[0].text,
            "Error ocurred while writing data file ./season.map. It may be corrupt");
  EXPECT_EQ(map.shownName, "./season.map");
}

TEST_F(SaveMapTest, WarnsOfALineThatTheReaderWouldCut) {
  Map& map = MakeChanged("season.map");
  map.comments.emplace_back("# short");
  map.comments.push_back("#" + std::string(LongestMapLine - 1, 'x'));
  ASSERT_TRUE(SaveChangedMaps(map, Context()));
  EXPECT_TRUE(messages_.Entries().empty());
  map.comments.push_back("#" + std::string(LongestMapLine, 'x'));
  map.flags |= MapDirty;
  ASSERT_TRUE(SaveChangedMaps(map, Context()));
  ASSERT_EQ(messages_.Entries().size(), 1U);
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::Warning);
  EXPECT_EQ(messages_.Entries()[0].text,
            "A line of season.map is too long: what follows its first 399 bytes will be read as a "
            "new line. Shorten the text");
  EXPECT_FALSE(IsDirty(map));
}

TEST_F(SaveMapTest, CancelingANameStopsTheWalk) {
  Map& map = MakeMap(workspace_, "Untitled");
  map.flags |= MapDirty | MapUntitled;
  Map& basis = MakeChanged("trails.map");
  map.basis = &basis;
  EXPECT_FALSE(SaveChangedMaps(map, Context()));
  EXPECT_TRUE(IsDirty(map));
  EXPECT_TRUE(IsDirty(basis));
  EXPECT_FALSE(Exists("trails.map"));
}

TEST_F(SaveMapTest, AMapThatCannotBeWrittenStaysChanged) {
  Map& map = MakeMap(workspace_, folder_.Path("none/season.map"));
  map.flags |= MapDirty;
  EXPECT_FALSE(SaveChangedMaps(map, Context()));
  EXPECT_TRUE(IsDirty(map));
  ASSERT_EQ(messages_.Entries().size(), 1U);
  EXPECT_EQ(messages_.Entries()[0].text,
            "Can't open " + folder_.Path("none/season.map") + " for writing");
  EXPECT_TRUE(written_.empty());
}

TEST_F(SaveMapTest, AnyFailedCallKeepsTheOldFileAndTheMapChanged) {
  struct Case {
    const char* call;
    std::function<void(FileSystem&)> fail;
    const char* message;
  };
  constexpr auto CannotOpen = "Can't open %s for writing";
  constexpr auto Corrupt = "Error ocurred while writing data file %s. It may be corrupt";
  const std::vector<Case> cases = {
      {"create", [](FileSystem& f) { f.create = [](const auto&, unsigned) { return -1; }; },
       CannotOpen},
      {"permissions", [](FileSystem& f) { f.setPermissions = [](int, unsigned) { return -1; }; },
       Corrupt},
      {"write", [](FileSystem& f) { f.write = [](int, const char*, size_t) { return -1L; }; },
       Corrupt},
      {"flush", [](FileSystem& f) { f.flush = [](int) { return -1; }; }, Corrupt},
      {"close",
       [](FileSystem& f) {
         f.close = [](int file) {
           SystemFiles().close(file);
           return -1;
         };
       },
       Corrupt},
      {"rename", [](FileSystem& f) { f.rename = [](const auto&, const auto&) { return -1; }; },
       Corrupt}};
  const std::string path = folder_.Write("season.map", "P\tOld\n");
  Map& map = OpenMap(workspace_, path);
  map.flags |= MapDirty;
  for (const Case& each : cases) {
    SCOPED_TRACE(each.call);
    system_ = SystemFiles();
    each.fail(system_);
    messages_.Clear();
    EXPECT_FALSE(SaveChangedMaps(map, Context()));
    EXPECT_TRUE(IsDirty(map));
    EXPECT_EQ(folder_.Read("season.map"), "P\tOld\n");
    ASSERT_EQ(messages_.Entries().size(), 1U);
    EXPECT_EQ(messages_.Entries()[0].severity, Severity::Error);
    std::string text = each.message;
    text.replace(text.find("%s"), 2, path);
    EXPECT_EQ(messages_.Entries()[0].text, text.substr(0, Messages::LongestMessage));
    EXPECT_TRUE(written_.empty());
    EXPECT_TRUE(messages_.Questions().empty());
    EXPECT_EQ(FilesInFolder(), (std::set<std::string>{"other", "season.map"}));
  }
  system_ = SystemFiles();
  EXPECT_TRUE(SaveChangedMaps(map, Context()));
  EXPECT_FALSE(IsDirty(map));
  EXPECT_NE(folder_.Read("season.map").find("P\tOld\n"), std::string::npos);
}

class ChangedFileTest : public SaveMapTest {
 protected:
  ChangedFileTest() : map_(OpenMap(workspace_, folder_.Write("season.map", "P\tOld\n"))) {
    map_.flags |= MapDirty;
  }

  void ChangeFile() const { folder_.Write("season.map", "P\tNew\n"); }

  Map& map_;
};

TEST_F(ChangedFileTest, IsAskedAbout) {
  ChangeFile();
  messages_.answers = {2};
  EXPECT_FALSE(SaveChangedMaps(map_, Context()));
  ASSERT_EQ(messages_.Questions().size(), 1U);
  const auto& question = messages_.Questions()[0];
  EXPECT_EQ(question.title, "File Has Changed");
  EXPECT_EQ(question.text,
            "season.map on the disk is not what was opened here. Overwriting it destroys its "
            "present content.");
  EXPECT_EQ(question.buttons, (std::vector<std::string>{"Save As...", "Cancel", "Overwrite"}));
}

TEST_F(ChangedFileTest, IsKeptAfterCancel) {
  ChangeFile();
  messages_.answers = {2};
  EXPECT_FALSE(SaveChangedMaps(map_, Context()));
  EXPECT_EQ(folder_.Read("season.map"), "P\tNew\n");
  EXPECT_TRUE(IsDirty(map_));
  EXPECT_TRUE(dialogs_.questions.empty());
}

TEST_F(ChangedFileTest, IsReplacedAfterOverwriteAndNotAskedAboutAgain) {
  ChangeFile();
  messages_.answers = {3};
  EXPECT_TRUE(SaveChangedMaps(map_, Context()));
  EXPECT_NE(folder_.Read("season.map").find("P\tOld"), std::string::npos);
  map_.flags |= MapDirty;
  map_.magneticDeviation = 3;
  EXPECT_TRUE(SaveChangedMaps(map_, Context()));
  EXPECT_NE(folder_.Read("season.map").find("M\t3"), std::string::npos);
  EXPECT_EQ(messages_.Questions().size(), 1U);
}

TEST_F(ChangedFileTest, IsKeptBesideTheOneOfSaveAs) {
  ChangeFile();
  messages_.answers = {1};
  dialogs_.paths = {folder_.Path("mine.map")};
  EXPECT_TRUE(SaveChangedMaps(map_, Context()));
  EXPECT_EQ(folder_.Read("season.map"), "P\tNew\n");
  EXPECT_NE(folder_.Read("mine.map").find("P\tOld"), std::string::npos);
  EXPECT_EQ(map_.fileName, folder_.Path("mine.map"));
  EXPECT_FALSE(IsDirty(map_));
}

TEST_F(ChangedFileTest, IsKeptIfSaveAsIsCanceled) {
  ChangeFile();
  messages_.answers = {1};
  EXPECT_FALSE(SaveChangedMaps(map_, Context()));
  EXPECT_EQ(folder_.Read("season.map"), "P\tNew\n");
  EXPECT_TRUE(IsDirty(map_));
}

TEST_F(ChangedFileTest, IsAskedAboutWhenSaveAsChoosesItByAnyName) {
  ChangeFile();
  // Save As again, then another name.
  messages_.answers = {1, 1};
  dialogs_.paths = {folder_.Path("season.map"), folder_.Path("other/../season.map"),
                    folder_.Path("mine.map")};
  EXPECT_TRUE(SaveMapAs(map_, false, Context()));
  EXPECT_EQ(messages_.Questions().size(), 2U);
  EXPECT_EQ(dialogs_.questions.size(), 3U);
  EXPECT_EQ(folder_.Read("season.map"), "P\tNew\n");
  EXPECT_EQ(map_.fileName, folder_.Path("mine.map"));
}

TEST_F(ChangedFileTest, IsAskedAboutFarUpTheChain) {
  Map& above = MakeChanged("above.map");
  above.basis = &map_;
  ChangeFile();
  messages_.answers = {2};
  EXPECT_FALSE(SaveChangedMaps(above, Context()));
  EXPECT_FALSE(IsDirty(above));
  EXPECT_TRUE(IsDirty(map_));
  EXPECT_EQ(folder_.Read("season.map"), "P\tNew\n");
}

TEST_F(ChangedFileTest, WithOtherBytesOfTheSameLengthAndTimeIsStillSeen) {
  const auto time = std::filesystem::last_write_time(folder_.Path("season.map"));
  ChangeFile();
  std::filesystem::last_write_time(folder_.Path("season.map"), time);
  EXPECT_TRUE(HasChangedOnDisk(map_, map_.fileName));
}

TEST_F(ChangedFileTest, WrittenAgainWithTheSameBytesIsNotAskedAbout) {
  folder_.Write("season.map", "P\tOld\n");
  EXPECT_FALSE(HasChangedOnDisk(map_, map_.fileName));
  EXPECT_TRUE(SaveChangedMaps(map_, Context()));
  EXPECT_TRUE(messages_.Questions().empty());
}

TEST_F(ChangedFileTest, ThatIsGoneIsWrittenAgainWithoutAQuestion) {
  std::filesystem::remove(folder_.Path("season.map"));
  EXPECT_TRUE(SaveChangedMaps(map_, Context()));
  EXPECT_TRUE(Exists("season.map"));
  EXPECT_TRUE(messages_.Questions().empty());
}

TEST_F(ChangedFileTest, ThatWasMadeSinceTheMapOpenedEmptyIsAskedAbout) {
  Map& map = OpenMap(workspace_, folder_.Path("later.map"));
  map.flags |= MapDirty;
  folder_.Write("later.map", "P\tOthers\n");
  messages_.answers = {2};
  EXPECT_FALSE(SaveChangedMaps(map, Context()));
  EXPECT_EQ(folder_.Read("later.map"), "P\tOthers\n");
}

TEST_F(ChangedFileTest, ThatCouldNotBeReadIsAskedAbout) {
  const std::string content("\xFF\xFEP\0\t\0", 6);
  Map& map = OpenMap(workspace_, folder_.Write("utf16.map", content));
  map.flags |= MapDirty;
  messages_.answers = {2};
  EXPECT_FALSE(SaveChangedMaps(map, Context()));
  EXPECT_EQ(folder_.Read("utf16.map"), content);
}

TEST_F(ChangedFileTest, OfASubmapThatWasImportedDoesNotCount) {
  ReadMapFile(map_, folder_.Write("sub.map", "P\tSub\n"));
  EXPECT_FALSE(HasChangedOnDisk(map_, map_.fileName));
}

TEST_F(SaveMapTest, SaveAsGivesTheMapItsNewName) {
  Map& map = MakeChanged("season.map");
  dialogs_.paths = {folder_.Path("other/copy.map")};
  EXPECT_TRUE(SaveMapAs(map, true, Context()));
  EXPECT_EQ(dialogs_.questions[0].title, "Save season.map as...");
  EXPECT_EQ(dialogs_.questions[0].file.name, "season.map");
  EXPECT_EQ(dialogs_.questions[0].file.type, "map");
  EXPECT_EQ(dialogs_.questions[0].file.directory, folder_.Path());
  EXPECT_TRUE(dialogs_.questions[0].save);
  EXPECT_EQ(map.fileName, folder_.Path("other/copy.map"));
  EXPECT_FALSE(IsDirty(map));
  EXPECT_TRUE(Exists("other/copy.map"));
  EXPECT_FALSE(Exists("season.map"));
  EXPECT_EQ(renamed_, (std::vector<std::string>{folder_.Path("other/copy.map")}));
  EXPECT_TRUE(messages_.Questions().empty());
}

TEST_F(SaveMapTest, SaveAsBeginsWhereMapsAreOpenedAndThenWhereItLastWas) {
  Map& map = MakeChanged("season.map");
  files_.maps.directory = folder_.Path();
  dialogs_.paths = {folder_.Path("other/copy.map"), ""};
  EXPECT_TRUE(SaveMapAs(map, true, Context()));
  EXPECT_EQ(dialogs_.questions[0].file.directory, folder_.Path());
  EXPECT_FALSE(SaveMapAs(map, true, Context()));
  EXPECT_EQ(dialogs_.questions[1].file.directory, folder_.Path("other"));
}

TEST_F(SaveMapTest, ADialogThatBreaksDownIsFatal) {
  Map& map = MakeChanged("season.map");
  dialogs_.fails = true;
  EXPECT_FALSE(SaveMapAs(map, true, Context()));
  ASSERT_EQ(messages_.Entries().size(), 1U);
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::Fatal);
  EXPECT_EQ(messages_.Entries()[0].text, "Error getting file name.");
}

class BasisQuestion : public SaveMapTest {
 protected:
  BasisQuestion() : map_(MakeChanged("season.map")), basis_(MakeChanged("trails.map")) {
    map_.basis = &basis_;
    basis_.basis = &MakeChanged("far.map");
    dialogs_.paths = {folder_.Path("other/season.map")};
  }

  Map& map_;
  Map& basis_;
};

TEST_F(BasisQuestion, SaveTakesTheBasisAlong) {
  messages_.answers = {1};
  EXPECT_TRUE(SaveMapAs(map_, true, Context()));
  const auto& question = messages_.Questions().at(0);
  EXPECT_EQ(question.title, "Save map basis?");
  EXPECT_EQ(question.text,
            "Do you want to save the basis files into the same directory as the main map?");
  EXPECT_EQ(question.buttons, (std::vector<std::string>{"Save", "Don't Save", "Cancel"}));
  EXPECT_EQ(basis_.fileName, folder_.Path("other/trails.map"));
  EXPECT_FALSE(IsDirty(basis_));
  EXPECT_TRUE(Exists("other/trails.map"));
  // Only the immediate basis is taken along.
  EXPECT_TRUE(IsDirty(*basis_.basis));
  EXPECT_FALSE(Exists("other/far.map"));
  EXPECT_NE(folder_.Read("other/season.map").find("trails.map"), std::string::npos);
}

TEST_F(BasisQuestion, DontSaveLeavesTheBasisWhereItIs) {
  messages_.answers = {2};
  EXPECT_TRUE(SaveMapAs(map_, true, Context()));
  EXPECT_EQ(basis_.fileName, folder_.Path("trails.map"));
  EXPECT_TRUE(IsDirty(basis_));
  EXPECT_FALSE(IsDirty(map_));
  EXPECT_FALSE(Exists("other/trails.map"));
}

TEST_F(BasisQuestion, CancelSavesNothing) {
  messages_.answers = {3};
  EXPECT_FALSE(SaveMapAs(map_, true, Context()));
  EXPECT_TRUE(IsDirty(map_));
  EXPECT_EQ(map_.fileName, folder_.Path("season.map"));
  EXPECT_FALSE(Exists("other/season.map"));
}

class OtherBasisQuestion : public BasisQuestion {
 protected:
  OtherBasisQuestion() { folder_.Write("other/trails.map", "* of another site\n"); }
};

TEST_F(OtherBasisQuestion, ComesBeforeAnotherFileOfThatNameIsReplaced) {
  messages_.answers = {1, 3};
  EXPECT_TRUE(SaveMapAs(map_, true, Context()));
  const auto& question = messages_.Questions().at(1);
  EXPECT_EQ(question.title, "Basis File Exists");
  EXPECT_EQ(question.text,
            "There is another trails.map in that directory. Overwriting it destroys its "
            "present content.");
  EXPECT_EQ(question.buttons, (std::vector<std::string>{"Don't Save", "Cancel", "Overwrite"}));
  EXPECT_EQ(basis_.fileName, folder_.Path("other/trails.map"));
  EXPECT_EQ(folder_.Read("other/trails.map").find("another site"), std::string::npos);
}

TEST_F(OtherBasisQuestion, DontSaveLeavesBothFilesAndSavesTheMap) {
  messages_.answers = {1, 1};
  EXPECT_TRUE(SaveMapAs(map_, true, Context()));
  EXPECT_EQ(basis_.fileName, folder_.Path("trails.map"));
  EXPECT_TRUE(IsDirty(basis_));
  EXPECT_FALSE(IsDirty(map_));
  EXPECT_EQ(folder_.Read("other/trails.map"), "* of another site\n");
}

TEST_F(OtherBasisQuestion, CancelSavesNothing) {
  messages_.answers = {1, 2};
  EXPECT_FALSE(SaveMapAs(map_, true, Context()));
  EXPECT_TRUE(IsDirty(map_));
  EXPECT_FALSE(Exists("other/season.map"));
  EXPECT_EQ(folder_.Read("other/trails.map"), "* of another site\n");
}

TEST_F(OtherBasisQuestion, DoesNotComeForACopyOfTheBasisAsItWasRead) {
  basis_.fileMark = MarkOf("* of another site\n");
  messages_.answers = {1};
  EXPECT_TRUE(SaveMapAs(map_, true, Context()));
  EXPECT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(basis_.fileName, folder_.Path("other/trails.map"));
}

TEST_F(BasisQuestion, IsNotAskedInTheFolderOfTheBasisByAnotherName) {
  std::filesystem::create_directory_symlink(folder_.Path(), folder_.Path("other/link"));
  for (const char* path : {"other/link/copy.map", "other/../copy.map"}) {
    dialogs_.paths = {folder_.Path(path)};
    EXPECT_TRUE(SaveMapAs(map_, true, Context())) << path;
    EXPECT_TRUE(messages_.Questions().empty()) << path;
    EXPECT_TRUE(folder_.Read(path).starts_with("B\ttrails.map\n")) << path;
  }
}

TEST_F(BasisQuestion, IsNotAskedInTheFolderOfTheBasis) {
  dialogs_.paths = {folder_.Path("copy.map")};
  EXPECT_TRUE(SaveMapAs(map_, true, Context()));
  EXPECT_TRUE(messages_.Questions().empty());
}

TEST_F(SaveMapTest, SavingSimplyLeavesSolvedPlacesOut) {
  Map& map = MakeChanged("season.map");
  Point& point = MakePoint(map, "Camp");
  AddPointName(map, point, "Camp");
  map.loosePoints.push_front(&point);
  point.flags |= PointPlaced;
  point.geo = {.lat = 1.5, .lon = 10.5};
  dialogs_.paths = {folder_.Path("full.map"), folder_.Path("simple.map")};
  EXPECT_TRUE(SaveMapAs(map, true, Context()));
  EXPECT_TRUE(SaveMapAs(map, false, Context()));
  EXPECT_NE(folder_.Read("full.map").find("\nL\tCamp"), std::string::npos)
      << folder_.Read("full.map");
  EXPECT_EQ(folder_.Read("simple.map").find("\nL\tCamp"), std::string::npos);
}

class CloseMapTest : public SaveMapTest {
 protected:
  CloseMapTest() : map_(MakeMap(workspace_, folder_.Path("season.map"))) {}
  Map& map_;
};

TEST_F(CloseMapTest, NothingIsAskedForAnUnchangedMap) {
  EXPECT_EQ(AskBeforeClosing(map_, Context()), CloseAnswer::Unchanged);
  EXPECT_TRUE(messages_.Questions().empty());
}

TEST_F(CloseMapTest, AsksAboutTheChangedMapFarthestUpTheChain) {
  map_.flags |= MapDirty;
  Map& basis = MakeChanged("trails.map");
  map_.basis = &basis;
  basis.basis = &MakeMap(workspace_, folder_.Path("far.map"));
  messages_.answers = {2};
  EXPECT_EQ(AskBeforeClosing(map_, Context()), CloseAnswer::Refused);
  const auto& question = messages_.Questions().at(0);
  EXPECT_EQ(question.title, "Save Map?");
  EXPECT_EQ(question.text, "trails.map has changed, do you want to save it?");
  EXPECT_EQ(question.buttons, (std::vector<std::string>{"Save", "Cancel", "Don't Save"}));
  EXPECT_TRUE(IsDirty(map_));
}

TEST_F(CloseMapTest, SaveSavesAndDontSaveGoesOn) {
  map_.flags |= MapDirty;
  messages_.answers = {3, 1};
  EXPECT_EQ(AskBeforeClosing(map_, Context()), CloseAnswer::Discarded);
  EXPECT_TRUE(IsDirty(map_));
  EXPECT_FALSE(Exists("season.map"));
  EXPECT_EQ(AskBeforeClosing(map_, Context()), CloseAnswer::Saved);
  EXPECT_FALSE(IsDirty(map_));
  EXPECT_TRUE(Exists("season.map"));
}

TEST_F(CloseMapTest, ASaveThatComesToNothingKeepsTheWindow) {
  map_.flags |= MapDirty | MapUntitled;
  messages_.answers = {1};
  EXPECT_EQ(AskBeforeClosing(map_, Context()), CloseAnswer::Refused);
  EXPECT_TRUE(IsDirty(map_));
}

TEST_F(SaveMapTest, TheShapefileDialogInsistsOnItsName) {
  dialogs_.paths = {folder_.Path("trees.shp"), folder_.Path("other/points.shp"), ""};
  const Map& map = MakeMap(workspace_, folder_.Path("season.map"));
  EXPECT_EQ(AskShapefileFolder(map, Context()), folder_.Path("other"));
  EXPECT_EQ(dialogs_.questions[0].file.directory, folder_.Path());
  ASSERT_EQ(dialogs_.questions.size(), 2U);
  EXPECT_EQ(dialogs_.questions[0].title, "Where should arcview files be placed?");
  EXPECT_EQ(dialogs_.questions[0].file.type, "shp");
  EXPECT_EQ(dialogs_.questions[1].file.name, "points.shp");
  ASSERT_EQ(messages_.Entries().size(), 1U);
  EXPECT_EQ(messages_.Entries()[0].text,
            "Je m'excuse, mais il faut que le nom du ficheur soit \"points.shp\".");
  EXPECT_EQ(AskShapefileFolder(map, Context()), "");
}

TEST(FileSpecification, BeginsWithItsTypeInTheFolderOfTheMap) {
  FileSpecification maps, sheets;
  PrepareSpecification(maps, maps, {.mapFolder = "", .defaultDirectory = "/start"}, "map");
  EXPECT_EQ(maps.directory, "/start");
  EXPECT_EQ(maps.type, "map");
  maps.directory = "/maps";
  PrepareSpecification(sheets, maps, {.mapFolder = "", .defaultDirectory = "/start"}, "txt");
  EXPECT_EQ(sheets.directory, "/maps");
  EXPECT_EQ(sheets.type, "txt");
  FileSpecification pictures;
  const DialogStart start{.mapFolder = "/season", .defaultDirectory = "/start"};
  PrepareSpecification(pictures, maps, start, "png");
  EXPECT_EQ(pictures.directory, "/season");
  // Later each continues where it ended.
  sheets.directory = "/sheets";
  maps.directory = "/elsewhere";
  PrepareSpecification(sheets, maps, start, "txt");
  EXPECT_EQ(sheets.directory, "/sheets");
  sheets.name = "may.txt";
  EXPECT_EQ(PathOf(sheets), "/sheets/may.txt");
}

TEST_F(SaveMapTest, SaveAsBeginsInTheFolderOfTheMapEachTime) {
  dialogs_.paths = {folder_.Path("other/copy.map"), ""};
  files_.savedMaps.directory = "/elsewhere";
  Map& map = MakeChanged("season.map");
  EXPECT_TRUE(SaveMapAs(map, true, Context()));
  EXPECT_EQ(dialogs_.questions[0].file.directory, folder_.Path());
  EXPECT_FALSE(SaveMapAs(map, true, Context()));
  EXPECT_EQ(dialogs_.questions[1].file.directory, folder_.Path("other"));
}

TEST_F(SaveMapTest, ASavedMapIsLikeItsFile) {
  Map& map = MakeChanged("season.map");
  map.flags |= MapUnlikeFile;
  EXPECT_TRUE(SaveChangedMaps(map, Context()));
  EXPECT_EQ(map.flags & MapUnlikeFile, 0U);
}

}  // namespace
}  // namespace orvane
