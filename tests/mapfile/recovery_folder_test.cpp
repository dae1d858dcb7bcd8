#include "mapfile/recovery_folder.h"

#include "support/failing_files.h"
#include "support/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <sys/stat.h>

namespace orvane {
namespace {

namespace fs = std::filesystem;

struct RecoveryFolderTest : testing::Test {
  TemporaryFolder folder;
  std::string directory = folder.Path("settings/recovery");

  static RecoveryRecord Of(const std::string& fileName) {
    return {.fileName = fileName, .original = FileMark{.size = 3, .hash = 4}};
  }

  /// A program that writes a copy and ends without having removed it.
  std::string Abandon(const std::string& fileName, const std::string& text) const {
    RecoveryFolder ended(directory);
    std::string slot = ended.NewSlot();
    EXPECT_EQ(ended.Write(slot, Of(fileName), text), WriteResult::Done);
    return slot;
  }

  std::vector<std::string> Files() const {
    std::vector<std::string> files;
    if (!fs::exists(directory)) return files;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
      if (!entry.is_directory()) files.push_back(entry.path().filename().string());
    }
    return files;
  }
};

TEST_F(RecoveryFolderTest, NothingIsMadeBeforeThereIsACopy) {
  {
    RecoveryFolder copies(directory);
    EXPECT_TRUE(copies.TakeAbandoned().empty());
  }
  EXPECT_FALSE(fs::exists(directory));
}

TEST_F(RecoveryFolderTest, TheNextProgramFindsWhatOneLeft) {
  const std::string slot = Abandon("/a.map", "text");
  RecoveryFolder copies(directory);
  const std::vector<RecoveryCopy> found = copies.TakeAbandoned();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].record.fileName, "/a.map");
  EXPECT_EQ(found[0].record.original, Of("/a.map").original);
  EXPECT_EQ(found[0].slot, slot);
  EXPECT_GT(found[0].written, 0);
  EXPECT_EQ(ReadWholeFile(RecoveryCopyPath(slot)), "text");
}

TEST_F(RecoveryFolderTest, TheCopiesOfARunningProgramAreNotTouched) {
  auto running = std::make_unique<RecoveryFolder>(directory);
  const std::string slot = running->NewSlot();
  running->Write(slot, Of("/a.map"), "text");
  RecoveryFolder other(directory);
  EXPECT_TRUE(other.TakeAbandoned().empty());
  EXPECT_EQ(ReadWholeFile(RecoveryCopyPath(slot)), "text");
  running.reset();
  EXPECT_EQ(other.TakeAbandoned().size(), 1U);
}

TEST_F(RecoveryFolderTest, ACopyIsOfferedToOnlyOneProgram) {
  Abandon("/a.map", "text");
  auto first = std::make_unique<RecoveryFolder>(directory);
  RecoveryFolder second(directory);
  EXPECT_EQ(first->TakeAbandoned().size(), 1U);
  EXPECT_TRUE(second.TakeAbandoned().empty());
  EXPECT_TRUE(first->TakeAbandoned().empty());
  // The user postponed it: the next program offers it again.
  first.reset();
  EXPECT_EQ(second.TakeAbandoned().size(), 1U);
}

TEST_F(RecoveryFolderTest, TheNewestCopyComesFirst) {
  const std::string old = RecoveryCopyPath(Abandon("/old.map", "old"));
  Abandon("/new.map", "new");
  fs::last_write_time(old, fs::last_write_time(old) - std::chrono::hours(1));
  RecoveryFolder copies(directory);
  const std::vector<RecoveryCopy> found = copies.TakeAbandoned();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].record.fileName, "/new.map");
  EXPECT_EQ(found[1].record.fileName, "/old.map");
  EXPECT_GE(found[0].written, found[1].written + 3600);
}

TEST_F(RecoveryFolderTest, ACopyTakenOverIsWrittenInItsPlace) {
  const std::string slot = Abandon("/a.map", "text");
  {
    RecoveryFolder copies(directory);
    ASSERT_EQ(copies.TakeAbandoned().size(), 1U);
    EXPECT_EQ(copies.Write(slot, Of("/ignored.map"), "more"), WriteResult::Done);
  }
  RecoveryFolder copies(directory);
  const std::vector<RecoveryCopy> found = copies.TakeAbandoned();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].record.fileName, "/a.map");
  EXPECT_EQ(ReadWholeFile(RecoveryCopyPath(slot)), "more");
}

TEST_F(RecoveryFolderTest, WhatIsRemovedLeavesNothing) {
  Abandon("/a.map", "text");
  {
    RecoveryFolder copies(directory);
    for (const RecoveryCopy& copy : copies.TakeAbandoned()) copies.Remove(copy.slot);
    const std::string slot = copies.NewSlot();
    copies.Write(slot, Of("/b.map"), "text");
    copies.Remove(slot);
    EXPECT_EQ(Files().size(), 2U);  // the locks
  }
  EXPECT_TRUE(fs::is_empty(directory));
}

TEST_F(RecoveryFolderTest, SlotsOfOneProgramAreApart) {
  RecoveryFolder copies(directory);
  const std::string first = copies.NewSlot();
  const std::string second = copies.NewSlot();
  EXPECT_NE(first, second);
  copies.Write(first, Of("/a.map"), "a");
  copies.Write(second, Of("/b.map"), "b");
  copies.Remove(first);
  EXPECT_EQ(ReadWholeFile(RecoveryCopyPath(second)), "b");
}

TEST_F(RecoveryFolderTest, AnIncompleteFileIsDeletedByTheNextProgram) {
  const std::string slot = Abandon("/a.map", "text");
  const std::string run = fs::path(slot).parent_path();
  folder.Write("settings/recovery/" + fs::path(run).filename().string() + "/.orvane-1-2-0.tmp",
               "hal");
  RecoveryFolder copies(directory);
  EXPECT_EQ(copies.TakeAbandoned().size(), 1U);
  const std::vector<std::string> files = Files();
  EXPECT_EQ(std::set<std::string>(files.begin(), files.end()),
            (std::set<std::string>{"lock", "copy-1.map", "copy-1.record"}));
}

TEST_F(RecoveryFolderTest, ARecordWithoutACopyIsNothingToOffer) {
  fs::remove(RecoveryCopyPath(Abandon("/a.map", "text")));
  {
    RecoveryFolder copies(directory);
    EXPECT_TRUE(copies.TakeAbandoned().empty());
  }
  EXPECT_TRUE(fs::is_empty(directory));
}

TEST_F(RecoveryFolderTest, ACopyWithoutARecordIsOfferedAsAnUntitledMap) {
  const std::string slot = Abandon("/a.map", "text");
  fs::remove(slot + ".record");
  RecoveryFolder copies(directory);
  const std::vector<RecoveryCopy> found = copies.TakeAbandoned();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].record.fileName, "Untitled");
  EXPECT_TRUE(found[0].record.untitled);
}

TEST_F(RecoveryFolderTest, OtherFilesInTheFolderAreNotTouched) {
  fs::create_directories(directory + "/notes");
  folder.Write("settings/recovery/notes/copy-1.map", "mine");
  folder.Write("settings/recovery/readme", "mine");
  RecoveryFolder copies(directory);
  EXPECT_TRUE(copies.TakeAbandoned().empty());
  EXPECT_EQ(folder.Read("settings/recovery/notes/copy-1.map"), "mine");
  EXPECT_EQ(folder.Read("settings/recovery/readme"), "mine");
}

TEST_F(RecoveryFolderTest, CopiesAreForTheEyesOfTheirOwner) {
  const std::string run = fs::path(Abandon("/a.map", "text")).parent_path();
  struct stat status = {};
  ASSERT_EQ(::stat(run.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(RecoveryFolderTest, AFolderThatCannotBeMadeGivesNoSlot) {
  fs::create_directories(folder.Path("settings"));
  folder.Write("settings/recovery", "a file");
  RecoveryFolder copies(directory);
  EXPECT_TRUE(copies.TakeAbandoned().empty());
  EXPECT_EQ(copies.NewSlot(), "");
  EXPECT_EQ(copies.NewDraft(), "");
}

TEST_F(RecoveryFolderTest, WhicheverCallFailsTheOldCopyIsKept) {
  const std::string old(100, 'o');
  const std::string text(100, 'n');
  bool failed = true;
  for (int call = 1; failed; ++call) {
    SCOPED_TRACE(call);
    fs::remove_all(directory);
    const std::string slot = Abandon("/a.map", old);
    FailingDisk disk(call);
    {
      RecoveryFolder copies(directory, disk.Calls());
      ASSERT_EQ(copies.TakeAbandoned().size(), 1U);
      const WriteResult result = copies.Write(slot, Of("/a.map"), text);
      failed = disk.Failed();
      EXPECT_EQ(result == WriteResult::Done, !failed);
    }
    EXPECT_EQ(ReadWholeFile(RecoveryCopyPath(slot)), failed ? old : text);
    EXPECT_EQ(Files().size(), 2U + 1U);  // copy, record, lock, and nothing half written
    // Create, permissions, three writes, flush, close, rename.
    if (!failed) {
      EXPECT_EQ(call, 9);
    }
  }
}

TEST_F(RecoveryFolderTest, WhateverCallFailsAFirstCopyIsThereWholeOrNotAtAll) {
  const std::string text(100, 'n');
  bool failed = true;
  for (int call = 1; failed; ++call) {
    SCOPED_TRACE(call);
    fs::remove_all(directory);
    FailingDisk disk(call);
    std::string slot;
    {
      RecoveryFolder copies(directory, disk.Calls());
      slot = copies.NewSlot();
      const WriteResult result = copies.Write(slot, Of("/a.map"), text);
      failed = disk.Failed();
      EXPECT_EQ(result == WriteResult::Done, !failed);
    }
    RecoveryFolder next(directory);
    const std::vector<RecoveryCopy> found = next.TakeAbandoned();
    EXPECT_EQ(found.size(), failed ? 0U : 1U);
    if (!failed) {
      EXPECT_EQ(found[0].record.fileName, "/a.map");
      EXPECT_EQ(ReadWholeFile(RecoveryCopyPath(slot)), text);
    }
    ASSERT_LT(call, 100);
  }
}

// --- The drafts of editors ----------------------------------------------------------------------

TEST_F(RecoveryFolderTest, ADraftIsFoundByTheNextProgram) {
  std::string path;
  {
    RecoveryFolder ended(directory);
    path = ended.NewDraft();
    EXPECT_EQ(fs::path(path).filename(), "editor-1.draft");
    EXPECT_EQ(fs::path(ended.NewDraft()).filename(), "editor-2.draft");
    EXPECT_EQ(ended.WriteDraft(path, "half"), WriteResult::Done);
    EXPECT_EQ(ended.WriteDraft(path, "typed"), WriteResult::Done);
  }
  RecoveryFolder copies(directory);
  EXPECT_TRUE(copies.TakeAbandoned().empty());  // a draft is not a copy of a map
  const auto drafts = copies.TakeDrafts();
  ASSERT_EQ(drafts.size(), 1U);
  EXPECT_EQ(drafts[0].path, path);
  EXPECT_EQ(drafts[0].text, "typed");
  EXPECT_GT(drafts[0].written, 0);
  EXPECT_TRUE(copies.TakeDrafts().empty());  // only once
}

TEST_F(RecoveryFolderTest, ADraftAndACopyOfOneProgramShareItsFolder) {
  RecoveryFolder copies(directory);
  const std::string slot = copies.NewSlot();
  const std::string draft = copies.NewDraft();
  EXPECT_EQ(fs::path(slot).parent_path(), fs::path(draft).parent_path());
}

TEST_F(RecoveryFolderTest, ADraftThatIsRemovedLeavesNothing) {
  {
    RecoveryFolder copies(directory);
    const std::string path = copies.NewDraft();
    copies.WriteDraft(path, "typed");
    copies.RemoveDraft(path);
  }
  EXPECT_TRUE(fs::is_empty(directory));
}

TEST_F(RecoveryFolderTest, ADraftThatCannotBeReadIsPassedOver) {
  const std::string run = fs::path(Abandon("/a.map", "text")).parent_path();
  fs::create_directory(run + "/editor-1.draft");
  RecoveryFolder copies(directory);
  EXPECT_EQ(copies.TakeAbandoned().size(), 1U);
  EXPECT_TRUE(copies.TakeDrafts().empty());
}

// --- The folders of programs --------------------------------------------------------------------

TEST_F(RecoveryFolderTest, TwoProgramsWithOneNumberHaveTwoFolders) {
  RecoveryFolder first(directory);
  RecoveryFolder second(directory);  // the folder of its number is there already
  const fs::path one = fs::path(first.NewSlot()).parent_path();
  const fs::path two = fs::path(second.NewSlot()).parent_path();
  EXPECT_NE(one, two);
  EXPECT_TRUE(one.filename().string().ends_with("-1")) << one;
  EXPECT_TRUE(two.filename().string().ends_with("-2")) << two;
}

TEST_F(RecoveryFolderTest, AFileNamedAsTheFolderOfAProgramIsNotTouched) {
  fs::create_directories(directory);
  folder.Write("settings/recovery/run-1-1", "mine");
  {
    RecoveryFolder copies(directory);
    EXPECT_TRUE(copies.TakeAbandoned().empty());
  }
  EXPECT_EQ(folder.Read("settings/recovery/run-1-1"), "mine");
}

TEST_F(RecoveryFolderTest, AFolderWithoutItsLockIsTakenOverAndDeleted) {
  fs::create_directories(directory + "/run-1-1");
  {
    RecoveryFolder copies(directory);
    EXPECT_TRUE(copies.TakeAbandoned().empty());
  }
  EXPECT_TRUE(fs::is_empty(directory));
}

TEST_F(RecoveryFolderTest, AFolderWithOtherFilesIsKept) {
  const std::string run = fs::path(Abandon("/a.map", "text")).parent_path();
  const std::string slot = run + "/copy-1";
  std::ofstream(run + "/notes") << "mine";
  {
    RecoveryFolder copies(directory);
    for (const RecoveryCopy& copy : copies.TakeAbandoned()) copies.Remove(copy.slot);
  }
  EXPECT_FALSE(fs::exists(RecoveryCopyPath(slot)));
  EXPECT_EQ(ReadWholeFile(run + "/notes"), "mine");
}

}  // namespace
}  // namespace orvane
