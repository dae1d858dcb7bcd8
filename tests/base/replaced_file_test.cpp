#include "base/replaced_file.h"

#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvane {
namespace {

struct ReplacedFiles : testing::Test {
  TemporaryFolder folder;
  FileSystem system = SystemFiles();

  long FilesInFolder() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }
};

TEST_F(ReplacedFiles, TakeTheirNamesWhenAllAreWritten) {
  folder.Write("a", "old");
  {
    ReplacedFile a(system);
    ReplacedFile b(system);
    ASSERT_EQ(a.Open(folder.Path("a")), WriteResult::Done);
    ASSERT_EQ(b.Open(folder.Path("b")), WriteResult::Done);
    EXPECT_EQ(a.Path(), folder.Path("a"));
    EXPECT_TRUE(a.Write("new") && a.Write("er") && a.Flush());
    EXPECT_TRUE(b.Write("second") && b.Flush());
    EXPECT_EQ(folder.Read("a"), "old");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("b")));
    EXPECT_TRUE(a.TakeName() && b.TakeName());
  }
  EXPECT_EQ(folder.Read("a"), "newer");
  EXPECT_EQ(folder.Read("b"), "second");
  EXPECT_EQ(FilesInFolder(), 2);
}

TEST_F(ReplacedFiles, LeaveNothingIfDestroyedBeforeTheRename) {
  folder.Write("a", "old");
  for (const bool flushed : {false, true}) {
    ReplacedFile a(system);
    ASSERT_EQ(a.Open(folder.Path("a")), WriteResult::Done);
    EXPECT_TRUE(a.Write("new"));
    EXPECT_TRUE(!flushed || a.Flush());
    EXPECT_EQ(FilesInFolder(), 2);
  }
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(ReplacedFiles, ReportWhereNoneCanBeMade) {
  ReplacedFile a(system);
  EXPECT_EQ(a.Open(folder.Path("none/a")), WriteResult::CannotOpen);
  std::filesystem::create_directory(folder.Path("b"));
  ReplacedFile b(system);
  EXPECT_EQ(b.Open(folder.Path("b")), WriteResult::CannotOpen);
}

}  // namespace
}  // namespace orvane
