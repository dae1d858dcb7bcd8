#include "base/left_over_files.h"

#include "base/files.h"
#include "support/temporary_folder.h"
#include "support/working_folder.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// \return the number of a process that has ended
pid_t EndedProcess() {
  const pid_t process = ::fork();
  if (process == 0) ::_exit(0);
  ::waitpid(process, nullptr, 0);
  return process;
}

class LeftOverFiles : public testing::Test {
 protected:
  using Names = std::set<std::string>;

  /// The name of a temporary file that a process would leave.
  static std::string NameOf(pid_t process) {
    return ".orvane-" + std::to_string(process) + "-123456789-0.tmp";
  }
  Names FilesLeft() const {
    Names names;
    for (const auto& entry : fs::directory_iterator(folder_.Path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  const TemporaryFolder folder_;
  const std::string ended_ = NameOf(EndedProcess());
};

TEST_F(LeftOverFiles, AreDeletedByTheNextSaveIntoTheirFolder) {
  folder_.Write(ended_, "half a map");
  fs::create_directory(folder_.Path("sub"));
  folder_.Write("sub/" + ended_, "of another folder");
  EXPECT_EQ(WriteFileAtomically(folder_.Path("a.map"), "a"), WriteResult::Done);
  EXPECT_EQ(FilesLeft(), (Names{"a.map", "sub"}));
  EXPECT_TRUE(fs::exists(folder_.Path("sub/" + ended_)));
  const WorkingFolder working(folder_.Path("sub"));
  EXPECT_EQ(WriteFileAtomically("a.map", "a"), WriteResult::Done);
  EXPECT_FALSE(fs::exists(folder_.Path("sub/" + ended_)));
}

TEST_F(LeftOverFiles, StayWhileTheirProgramRuns) {
  const Names running = {NameOf(::getpid()), NameOf(::getppid())};
  for (const std::string& name : running) folder_.Write(name, "half a map");
  RemoveLeftOverFiles(folder_.Path() + "/");
  EXPECT_EQ(FilesLeft(), running);
}

TEST_F(LeftOverFiles, StayWhileTheyAreLocked) {
  // As by a program on another machine, or in a container, whose number means nothing here.
  const int file = ::open(folder_.Write(ended_, "half a map").c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(file, 0);
  LockTemporaryFile(file);
  RemoveLeftOverFiles(folder_.Path() + "/");
  EXPECT_EQ(FilesLeft(), Names{ended_});
  ::close(file);
  RemoveLeftOverFiles(folder_.Path() + "/");
  EXPECT_EQ(FilesLeft(), Names{});
}

TEST_F(LeftOverFiles, FilesOfOtherNamesAreNotTouched) {
  const std::string process = std::to_string(EndedProcess());
  const Names others = {"orvane-" + process + "-1-0.tmp",
                        ".orvane-" + process + ".tmp",
                        ".orvane-" + process + "-1.tmp",
                        ".orvane-" + process + "-1-0-2.tmp",
                        ".orvane-" + process + "-1-0.tmp.map",
                        ".orvane-" + process + "-1-x.tmp",
                        ".orvane-" + process + "-1--1.tmp",
                        ".orvane--5-1-0.tmp",
                        ".orvane-0-1-0.tmp",
                        ".orvane-99999999999999999999-1-0.tmp",
                        ".orvane-4294967297-1-0.tmp",
                        ".orvane-.tmp"};
  for (const std::string& name : others) folder_.Write(name, "a");
  RemoveLeftOverFiles(folder_.Path() + "/");
  EXPECT_EQ(FilesLeft(), others);
}

TEST_F(LeftOverFiles, OnlyFilesThemselvesAreRemoved) {
  folder_.Write("kept", "a");
  fs::create_symlink("kept", folder_.Path(ended_));
  const std::string directory = NameOf(EndedProcess());
  fs::create_directory(folder_.Path(directory));
  RemoveLeftOverFiles(folder_.Path() + "/");
  EXPECT_EQ(FilesLeft(), (Names{"kept", ended_, directory}));
  EXPECT_EQ(folder_.Read("kept"), "a");
}

TEST_F(LeftOverFiles, AMissingFolderHasNone) {
  RemoveLeftOverFiles(folder_.Path("none/"));
  EXPECT_EQ(FilesLeft(), Names{});
}

TEST_F(LeftOverFiles, ATemporaryNameIsOneThatIsRecognized) {
  const pid_t process = ::fork();
  if (process == 0) {
    folder_.Write(fs::path(TemporaryPath("", 3)).string(), "half a map");
    ::_exit(0);
  }
  ::waitpid(process, nullptr, 0);
  EXPECT_EQ(FilesLeft().size(), 1U);
  RemoveLeftOverFiles(folder_.Path() + "/");
  EXPECT_EQ(FilesLeft(), Names{});
}

}  // namespace
}  // namespace orvane
