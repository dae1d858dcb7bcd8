#include "base/file_mark.h"

#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace orvane {
namespace {

TEST(FileMark, IsTheSameForTheSameBytes) {
  const std::string content = "T\tRidge\tTrail\nG\tCamp\tN1\tE10\n";
  EXPECT_EQ(MarkOf(content), MarkOf(std::string(content)));
  EXPECT_EQ(MarkOf(content).size, content.size());
}

TEST(FileMark, TellsEveryChangedByteFromTheOld) {
  const std::string content = "G\tCamp\tN1 0.6'\tE10\n";
  std::set<std::uint64_t> hashes = {MarkOf(content).hash};
  for (size_t i = 0; i < content.size(); ++i) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string changed = content;
      changed[i] = static_cast<char>(changed[i] ^ (1 << bit));
      EXPECT_TRUE(hashes.insert(MarkOf(changed).hash).second) << i << ", " << bit;
    }
  }
}

TEST(FileMark, TellsContentsThatDifferInZerosAtTheirEnd) {
  EXPECT_NE(MarkOf(std::string("a\0", 2)), MarkOf("a"));
  EXPECT_NE(MarkOf(std::string(8, '\0')), MarkOf(""));
  EXPECT_NE(MarkOf(std::string(8, '\0')), MarkOf(std::string(16, '\0')));
}

TEST(FileMark, TellsTwoExchangedWordsFromTheOld) {
  EXPECT_NE(MarkOf("first...second.."), MarkOf("second..first..."));
}

TEST(SameFile, IsOneByWhateverName) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a.map", "a");
  folder.Write("b.map", "a");
  std::filesystem::create_symlink("a.map", folder.Path("link.map"));
  EXPECT_TRUE(IsSameFile(path, path));
  EXPECT_TRUE(IsSameFile(path, folder.Path("./a.map")));
  EXPECT_TRUE(IsSameFile(path, folder.Path("link.map")));
  EXPECT_FALSE(IsSameFile(path, folder.Path("b.map")));
  EXPECT_FALSE(IsSameFile(path, folder.Path("missing.map")));
  EXPECT_TRUE(IsSameFile("missing.map", "missing.map"));
}

}  // namespace
}  // namespace orvane
