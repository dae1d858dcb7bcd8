#include "base/file_identity.h"

#include "support/temporary_folder.h"
#include "support/working_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// The folders maps/sub and elsewhere, with elsewhere/link that leads to maps/sub.
class FileIdentity : public testing::Test {
 protected:
  FileIdentity() {
    fs::create_directories(folder_.Path("maps/sub"));
    fs::create_directory(folder_.Path("elsewhere"));
    fs::create_directory_symlink(folder_.Path("maps/sub"), folder_.Path("elsewhere/link"));
  }

  TemporaryFolder folder_;
  const std::string here_ = folder_.Path("maps");
};

TEST_F(FileIdentity, WholePathIsOneForAllSpellings) {
  const WorkingFolder working(here_);
  EXPECT_EQ(WholePath("a.map"), here_ + "/a.map");
  EXPECT_EQ(WholePath("./a.map"), here_ + "/a.map");
  EXPECT_EQ(WholePath("sub/../a.map"), here_ + "/a.map");
  EXPECT_EQ(WholePath("../maps/a.map"), here_ + "/a.map");
  EXPECT_EQ(WholePath(here_ + "//./a.map"), here_ + "/a.map");
  EXPECT_EQ(WholePath("/none/a.map"), "/none/a.map");
}

TEST_F(FileIdentity, WholePathLeadsWhereTheSystemWouldGo) {
  const WorkingFolder working(here_);
  const std::string elsewhere = folder_.Path("elsewhere");
  EXPECT_EQ(WholePath(elsewhere + "/link/a.map"), elsewhere + "/link/a.map");
  // The folder above a link is that of its target.
  EXPECT_EQ(WholePath(elsewhere + "/link/../a.map"), here_ + "/a.map");
  EXPECT_EQ(WholePath("missing/../a.map"), here_ + "/missing/../a.map");
}

TEST_F(FileIdentity, WholePathKeepsTextsThatAreNotFileNames) {
  EXPECT_EQ(WholePath(""), "");
  const std::string withNul("a\0b", 3);
  EXPECT_EQ(WholePath(withNul), withNul);
}

TEST_F(FileIdentity, WholePathLeavesTheNameInAFolderThatIsGone) {
  fs::create_directory(folder_.Path("gone"));
  const WorkingFolder working(folder_.Path("gone"));
  fs::remove(folder_.Path("gone"));
  EXPECT_EQ(WholePath("a.map"), "a.map");
}

TEST_F(FileIdentity, SameFileIsOneByWhateverName) {
  const std::string path = folder_.Write("a.map", "a");
  folder_.Write("b.map", "a");
  fs::create_symlink("a.map", folder_.Path("link.map"));
  EXPECT_TRUE(IsSameFile(path, path));
  EXPECT_TRUE(IsSameFile(path, folder_.Path("./a.map")));
  EXPECT_TRUE(IsSameFile(path, folder_.Path("link.map")));
  EXPECT_FALSE(IsSameFile(path, folder_.Path("b.map")));
  EXPECT_FALSE(IsSameFile(path, folder_.Path("missing.map")));
  EXPECT_TRUE(IsSameFile("missing.map", "missing.map"));
}

TEST_F(FileIdentity, FoldersAreComparedByWhatTheyAre) {
  const WorkingFolder working(here_);
  EXPECT_TRUE(InSameFolder("a.map", here_ + "/b.map"));
  EXPECT_TRUE(InSameFolder("sub/../a.map", "b.map"));
  EXPECT_TRUE(InSameFolder("sub/a.map", folder_.Path("elsewhere/link/b.map")));
  EXPECT_FALSE(InSameFolder("sub/a.map", "b.map"));
  EXPECT_FALSE(InSameFolder("a.map", folder_.Path("elsewhere/link/b.map")));
  fs::create_directory(here_ + "/SUB");
  EXPECT_FALSE(InSameFolder("sub/a.map", "SUB/b.map"));
}

TEST_F(FileIdentity, FoldersThatDoNotExistAreComparedAsTexts) {
  const WorkingFolder working(here_);
  EXPECT_TRUE(InSameFolder("none/a.map", here_ + "/NONE/b.map"));
  EXPECT_FALSE(InSameFolder("none/a.map", "other/a.map"));
  EXPECT_FALSE(InSameFolder("none/a.map", "a.map"));
}

}  // namespace
}  // namespace orvane
