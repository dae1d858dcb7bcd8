#include "base/file_mark.h"

#include "support/temporary_folder.h"

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

TEST(FileMark, ChangesWithEveryByte) {
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

TEST(FileMark, ChangesWithTheNumberOfZerosAtTheEnd) {
  EXPECT_NE(MarkOf(std::string("a\0", 2)), MarkOf("a"));
  EXPECT_NE(MarkOf(std::string(8, '\0')), MarkOf(""));
  EXPECT_NE(MarkOf(std::string(8, '\0')), MarkOf(std::string(16, '\0')));
}

TEST(FileMark, ChangesIfTwoWordsAreExchanged) {
  EXPECT_NE(MarkOf("first...second.."), MarkOf("second..first..."));
}

TEST(FileMark, OfAFileIsThatOfItsBytes) {
  const TemporaryFolder folder;
  EXPECT_EQ(MarkOfFile(folder.Write("a", "one\n")), MarkOf("one\n"));
  EXPECT_EQ(MarkOfFile(folder.Path("missing")), std::nullopt);
}

}  // namespace
}  // namespace orvane
