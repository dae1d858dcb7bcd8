#include "base/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace orvane {
namespace {

/// A directory of its own for each test.
class Files : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = testing::TempDir() + "orvane-files-XXXXXX";
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    directory_ = name;
    oldMask_ = ::umask(022);
  }
  void TearDown() override {
    ::umask(oldMask_);
    std::filesystem::remove_all(directory_);
  }

  std::string Path(const std::string& name) const { return directory_ + '/' + name; }

  void Put(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory_)) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  unsigned PermissionsOf(const std::string& name) const {
    struct stat status = {};
    EXPECT_EQ(::stat(Path(name).c_str(), &status), 0);
    return status.st_mode & 07777U;
  }

  /// The old file is unchanged, and there is nothing beside it.
  void ExpectUntouched() const {
    EXPECT_EQ(ReadWholeFile(Path("a.map")), "old");
    EXPECT_EQ(PermissionsOf("a.map"), 0640U);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.map"});
  }

  void PutOld() const {
    Put("a.map", "old");
    ASSERT_EQ(::chmod(Path("a.map").c_str(), 0640), 0);
  }

 private:
  std::string directory_;
  mode_t oldMask_ = 0;
};

/// Nothing is protected from the administrator; while one of these lives, a test that runs as one
/// continues as a user without rights, who owns the test's directory.
class WithoutRights {
 public:
  explicit WithoutRights(const std::string& directory) : wasRoot_(::geteuid() == 0) {
    if (!wasRoot_) return;
    EXPECT_EQ(::chown(directory.c_str(), Nobody, Nobody), 0);
    EXPECT_EQ(::seteuid(Nobody), 0);
  }
  ~WithoutRights() {
    if (!wasRoot_) return;
    EXPECT_EQ(::seteuid(0), 0);
  }
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;

  static constexpr uid_t Nobody = 65534;

 private:
  bool wasRoot_;
};

int FailWith(int reason) {
  errno = reason;
  return -1;
}

TEST_F(Files, AreReadByteForByte) {
  const std::string content("a\r\n\0\xFF\xFEz", 7);
  Put("a.map", content);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), content);
  Put("empty.map", "");
  EXPECT_EQ(ReadWholeFile(Path("empty.map")), "");
}

TEST_F(Files, AreReadThroughALink) {
  Put("a.map", "content");
  ASSERT_EQ(::symlink("a.map", Path("link.map").c_str()), 0);
  EXPECT_EQ(ReadWholeFile(Path("link.map")), "content");
}

TEST_F(Files, ThatAreNoneGiveNothing) {
  Put("a.map", "content");
  EXPECT_FALSE(ReadWholeFile(Path("missing.map")));
  EXPECT_FALSE(ReadWholeFile(Path("")));
  EXPECT_FALSE(ReadWholeFile(Path("a.map/b.map")));
  EXPECT_FALSE(ReadWholeFile(""));
  EXPECT_FALSE(ReadWholeFile(Path(std::string("a.map\0.bak", 10))));
  EXPECT_FALSE(ReadWholeFile(Path(std::string(5000, 'x'))));
}

TEST_F(Files, ThatArePipesOrDevicesAreNotWaitedFor) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(ReadWholeFile(Path("pipe")));
  EXPECT_FALSE(ReadWholeFile("/dev/zero"));
}

TEST_F(Files, ThatAreProtectedGiveNothing) {
  const WithoutRights user(Path(""));
  Put("a.map", "content");
  ASSERT_EQ(::chmod(Path("a.map").c_str(), 0), 0);
  EXPECT_FALSE(ReadWholeFile(Path("a.map")));
}

TEST_F(Files, ThatFailWhileReadingGiveNothing) {
  // Opens like any regular file, and cannot be read at its front.
  if (::access("/proc/self/mem", R_OK) != 0) GTEST_SKIP() << "no file that fails";
  EXPECT_FALSE(ReadWholeFile("/proc/self/mem"));
}

TEST_F(Files, OfUnknownSizeAreReadToTheEnd) {
  if (::access("/proc/self/maps", R_OK) != 0) GTEST_SKIP() << "no file without a size";
  const std::optional<std::string> content = ReadWholeFile("/proc/self/maps");
  ASSERT_TRUE(content);
  EXPECT_NE(content->find("[stack]"), std::string::npos);
}

TEST_F(Files, MayBeLarge) {
  constexpr size_t Size = 100'000'000;
  Put("a.map", "");
  ASSERT_EQ(::truncate(Path("a.map").c_str(), Size), 0);
  const std::optional<std::string> content = ReadWholeFile(Path("a.map"));
  ASSERT_TRUE(content);
  EXPECT_EQ(content->size(), Size);
  EXPECT_EQ(content->find_first_not_of('\0'), std::string::npos);
}

TEST_F(Files, ThatAreTooLargeGiveNothing) {
  Put("a.map", "");
  if (::truncate(Path("a.map").c_str(), off_t{LargestFile} + 1) != 0) {
    GTEST_SKIP() << "no room for a file with a hole of this size";
  }
  EXPECT_FALSE(ReadWholeFile(Path("a.map")));
}

TEST_F(Files, AreWrittenAndReadBack) {
  const std::string content("a\r\n\0\xFF\xFEz", 7);
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), content), WriteResult::Done);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), content);
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), ""), WriteResult::Done);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), "");
  EXPECT_EQ(Names(), std::vector<std::string>{"a.map"});
}

TEST_F(Files, AreWrittenBesideTheProgramToo) {
  const std::filesystem::path old = std::filesystem::current_path();
  std::filesystem::current_path(Path(""));
  EXPECT_EQ(WriteFileAtomically("a.map", "new"), WriteResult::Done);
  std::filesystem::current_path(old);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), "new");
}

TEST_F(Files, ThatAreNewHaveThePermissionsOfTheMask) {
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new"), WriteResult::Done);
  EXPECT_EQ(PermissionsOf("a.map"), 0644U);
  ::umask(027);
  EXPECT_EQ(WriteFileAtomically(Path("b.map"), "new"), WriteResult::Done);
  EXPECT_EQ(PermissionsOf("b.map"), 0640U);
}

TEST_F(Files, KeepTheirPermissions) {
  Put("a.map", "old");
  for (const unsigned permissions : {0600U, 0666U, 0754U}) {
    ASSERT_EQ(::chmod(Path("a.map").c_str(), permissions), 0);
    EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new"), WriteResult::Done);
    EXPECT_EQ(PermissionsOf("a.map"), permissions);
  }
}

TEST_F(Files, ThatAreReplacedAreNeverOpenToOthers) {
  PutOld();
  FileSystem system = SystemFiles();
  unsigned createdWith = 0777;
  system.create = [&](const std::string& path, unsigned permissions) {
    createdWith = permissions;
    return SystemFiles().create(path, permissions);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Done);
  EXPECT_EQ(createdWith, 0600U);
  EXPECT_EQ(PermissionsOf("a.map"), 0640U);
}

TEST_F(Files, AreReplacedThroughALink) {
  PutOld();
  std::filesystem::create_directory(Path("links"));
  ASSERT_EQ(::symlink("../a.map", Path("links/relative").c_str()), 0);
  ASSERT_EQ(::symlink(Path("links/relative").c_str(), Path("absolute").c_str()), 0);
  EXPECT_EQ(WriteFileAtomically(Path("absolute"), "new"), WriteResult::Done);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), "new");
  EXPECT_EQ(PermissionsOf("a.map"), 0640U);
  EXPECT_TRUE(std::filesystem::is_symlink(Path("absolute")));
  EXPECT_TRUE(std::filesystem::is_symlink(Path("links/relative")));
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.map", "absolute", "links"}));
}

TEST_F(Files, AreMadeWhereALinkPointsTo) {
  ASSERT_EQ(::symlink("new.map", Path("link").c_str()), 0);
  EXPECT_EQ(WriteFileAtomically(Path("link"), "new"), WriteResult::Done);
  EXPECT_EQ(ReadWholeFile(Path("new.map")), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link")));
}

TEST_F(Files, CannotBeOpenedThroughACircleOfLinks) {
  ASSERT_EQ(::symlink("b", Path("a").c_str()), 0);
  ASSERT_EQ(::symlink("a", Path("b").c_str()), 0);
  EXPECT_EQ(WriteFileAtomically(Path("a"), "new"), WriteResult::CannotOpen);
  EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(Files, CannotBeOpenedInThePlaceOfAnythingElse) {
  std::filesystem::create_directory(Path("directory"));
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(WriteFileAtomically(Path("directory"), "new"), WriteResult::CannotOpen);
  EXPECT_EQ(WriteFileAtomically(Path("pipe"), "new"), WriteResult::CannotOpen);
  EXPECT_EQ(WriteFileAtomically("/dev/null", "new"), WriteResult::CannotOpen);
  EXPECT_EQ(WriteFileAtomically(Path("missing/a.map"), "new"), WriteResult::CannotOpen);
  EXPECT_EQ(WriteFileAtomically("", "new"), WriteResult::CannotOpen);
  EXPECT_EQ(WriteFileAtomically(Path(std::string("a\0b", 3)), "new"), WriteResult::CannotOpen);
  EXPECT_EQ(WriteFileAtomically(Path(std::string(300, 'x')), "new"), WriteResult::CannotOpen);
  EXPECT_EQ(Names(), (std::vector<std::string>{"directory", "pipe"}));
}

TEST_F(Files, AreUnchangedIfTheyAreProtected) {
  const WithoutRights user(Path(""));
  Put("a.map", "old");
  ASSERT_EQ(::chmod(Path("a.map").c_str(), 0444), 0);
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new"), WriteResult::CannotOpen);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), "old");
}

TEST_F(Files, AreUnchangedInAProtectedDirectory) {
  const WithoutRights user(Path(""));
  PutOld();
  ASSERT_EQ(::chmod(Path("").c_str(), 0500), 0);
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new"), WriteResult::CannotOpen);
  ASSERT_EQ(::chmod(Path("").c_str(), 0700), 0);
  ExpectUntouched();
}

TEST_F(Files, KeepTheirOwner) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator writes files of others";
  Put("a.map", "old");
  ASSERT_EQ(::chown(Path("a.map").c_str(), WithoutRights::Nobody, WithoutRights::Nobody), 0);
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new"), WriteResult::Done);
  struct stat status = {};
  ASSERT_EQ(::stat(Path("a.map").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, WithoutRights::Nobody);
  EXPECT_EQ(status.st_gid, WithoutRights::Nobody);
}

TEST_F(Files, AreUnchangedIfNoFileCanBeMadeBesideThem) {
  PutOld();
  FileSystem system = SystemFiles();
  system.create = [](const std::string&, unsigned) { return FailWith(EACCES); };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::CannotOpen);
  ExpectUntouched();
}

TEST_F(Files, AreUnchangedIfEveryNameBesideThemIsTaken) {
  PutOld();
  FileSystem system = SystemFiles();
  std::vector<std::string> tried;
  system.create = [&](const std::string& path, unsigned) {
    tried.push_back(path);
    return FailWith(EEXIST);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::CannotOpen);
  EXPECT_GT(tried.size(), 10U);
  std::sort(tried.begin(), tried.end());
  EXPECT_EQ(std::unique(tried.begin(), tried.end()), tried.end()) << "a name was tried twice";
  ExpectUntouched();
}

TEST_F(Files, TakeTheNextNameIfOneBesideIsTaken) {
  PutOld();
  FileSystem system = SystemFiles();
  int calls = 0;
  system.create = [&](const std::string& path, unsigned permissions) {
    return ++calls < 3 ? FailWith(EEXIST) : SystemFiles().create(path, permissions);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Done);
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), "new");
}

TEST_F(Files, AreMadeBesideTheOldOne) {
  PutOld();
  FileSystem system = SystemFiles();
  std::string made;
  system.create = [&](const std::string& path, unsigned permissions) {
    made = path;
    return SystemFiles().create(path, permissions);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Done);
  EXPECT_TRUE(made.starts_with(Path(""))) << made;
}

TEST_F(Files, AreReplacedWhereTheFileSystemKeepsNoPermissions) {
  for (const int error : {ENOSYS, EOPNOTSUPP, EPERM, EINVAL}) {
    PutOld();
    FileSystem system = SystemFiles();
    system.setPermissions = [error](int, unsigned) { return FailWith(error); };
    EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Done) << error;
    EXPECT_EQ(ReadWholeFile(Path("a.map")), "new");
  }
}

TEST_F(Files, AreUnchangedIfThePermissionsCannotBeKept) {
  PutOld();
  FileSystem system = SystemFiles();
  system.setPermissions = [](int, unsigned) { return FailWith(EIO); };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Failed);
  ExpectUntouched();
}

TEST_F(Files, AreUnchangedIfTheDiskIsFull) {
  PutOld();
  FileSystem system = SystemFiles();
  int calls = 0;
  // The second half finds no room any more.
  system.write = [&](int file, const char* bytes, size_t size) -> long {
    if (++calls > 1) return FailWith(ENOSPC);
    return SystemFiles().write(file, bytes, size / 2);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new content", system), WriteResult::Failed);
  EXPECT_EQ(calls, 2);
  ExpectUntouched();
}

TEST_F(Files, AreUnchangedIfWritingMakesNoProgress) {
  PutOld();
  FileSystem system = SystemFiles();
  system.write = [](int, const char*, size_t) { return 0L; };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Failed);
  ExpectUntouched();
}

TEST_F(Files, AreWrittenWholeInSmallPieces) {
  PutOld();
  FileSystem system = SystemFiles();
  int calls = 0;
  system.write = [&](int file, const char* bytes, size_t) -> long {
    if (++calls % 2 == 0) return FailWith(EINTR);
    return SystemFiles().write(file, bytes, 1);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new content", system), WriteResult::Done);
  EXPECT_EQ(ReadWholeFile(Path("a.map")), "new content");
}

TEST_F(Files, AreUnchangedIfTheFlushFails) {
  PutOld();
  FileSystem system = SystemFiles();
  system.flush = [](int) { return FailWith(EIO); };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Failed);
  ExpectUntouched();
}

TEST_F(Files, AreUnchangedIfClosingFails) {
  PutOld();
  FileSystem system = SystemFiles();
  int calls = 0;
  system.close = [&](int file) {
    ++calls;
    EXPECT_EQ(SystemFiles().close(file), 0);
    return FailWith(EIO);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Failed);
  EXPECT_EQ(calls, 1) << "a number may belong to another file by now";
  ExpectUntouched();
}

TEST_F(Files, AreUnchangedIfTheRenameFails) {
  PutOld();
  FileSystem system = SystemFiles();
  system.rename = [](const std::string&, const std::string&) { return FailWith(EBUSY); };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Failed);
  ExpectUntouched();
}

TEST_F(Files, AreOnTheDiskBeforeTheyTakeTheName) {
  PutOld();
  FileSystem system = SystemFiles();
  std::string order;
  system.flush = [&](int file) {
    order += "flush ";
    return SystemFiles().flush(file);
  };
  system.close = [&](int file) {
    order += "close ";
    return SystemFiles().close(file);
  };
  system.rename = [&](const std::string& from, const std::string& to) {
    order += "rename";
    EXPECT_EQ(ReadWholeFile(from), "new");
    EXPECT_EQ(ReadWholeFile(to), "old");
    return SystemFiles().rename(from, to);
  };
  EXPECT_EQ(WriteFileAtomically(Path("a.map"), "new", system), WriteResult::Done);
  EXPECT_EQ(order, "flush close rename");
}

}  // namespace
}  // namespace orvane
