#include "formats/spreadsheets.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

std::string WhyNot(const std::string& bytes, SpreadsheetKind kind = SpreadsheetKind::Xlsx) {
  return WhyNotUnpacked({"a", bytes, kind});
}

std::string Little(std::uint64_t number, size_t size) {
  std::string bytes;
  for (size_t i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

/// The directory of a zip file whose parts have these sizes.
std::string Zip(const std::vector<std::uint64_t>& sizes, std::uint64_t parts) {
  std::string directory;
  for (const std::uint64_t size : sizes) {
    directory += "PK\x01\x02" + std::string(20, '\0') + Little(size, 4) + Little(1, 2) +
                 std::string(16, '\0') + "a";
  }
  return "data" + directory + "PK\x05\x06" + std::string(4, '\0') + Little(parts, 2) +
         Little(parts, 2) + Little(directory.size(), 4) + Little(4, 4) + Little(0, 2);
}

TEST(WhyNotUnpacked, PassesFilesUpToALimit) {
  EXPECT_EQ(WhyNot(Zip({10, 2000}, 2)), "");
  EXPECT_EQ(WhyNot(Zip({LargestSpreadsheet}, 1)), "");
  EXPECT_EQ(WhyNot(Zip({LargestSpreadsheet, 1}, 2)), "it is larger than 256 MiB unpacked");
  EXPECT_EQ(WhyNot(Zip({0xFFFFFFFFU}, 1)), "it is larger than 256 MiB unpacked");
  EXPECT_EQ(WhyNot(Zip({}, 10001)), "it has too many parts");
}

TEST(WhyNotUnpacked, RefusesWhatIsDamaged) {
  const std::string damaged = "it is damaged, locked with a password, or not what its name says";
  EXPECT_EQ(WhyNot(""), damaged);
  EXPECT_EQ(WhyNot("a text"), damaged);
  EXPECT_EQ(WhyNot(Zip({10}, 2)), damaged);  // the directory is shorter than it says
  const std::string whole = Zip({10, 20}, 2);
  for (size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(WhyNot(whole.substr(0, size)), damaged) << size;
  }
}

TEST(WhyNotUnpacked, LooksAtTheFirstBytesOfXls) {
  EXPECT_EQ(WhyNot("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and so on", SpreadsheetKind::Xls), "");
  EXPECT_NE(WhyNot("<html>", SpreadsheetKind::Xls), "");
}

TEST(SpreadsheetKind, IsThatOfTheEnding) {
  EXPECT_EQ(SpreadsheetKindOf("a.b/Follows.XLSX"), SpreadsheetKind::Xlsx);
  EXPECT_EQ(SpreadsheetKindOf("f.ods"), SpreadsheetKind::Ods);
  EXPECT_EQ(SpreadsheetKindOf("f.xls"), SpreadsheetKind::Xls);
  for (const char* name : {"", "ods", "a.csv", "a.xlsx.txt"}) {
    EXPECT_FALSE(SpreadsheetKindOf(name)) << name;
  }
}

TEST(WhyNotUnpacked, RefusesADirectoryThatIsGivenElsewhere) {
  std::string bytes = Zip({10}, 1);
  bytes.replace(bytes.size() - 6, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(WhyNot(bytes), "it has too many parts");
}

TEST(WhyNotUnpacked, FindsTheDirectoryBeforeTheLongestComment) {
  const std::string damaged = "it is damaged, locked with a password, or not what its name says";
  EXPECT_EQ(WhyNot(Zip({10}, 1) + std::string(65535, 'c')), "");
  EXPECT_EQ(WhyNot(Zip({10}, 1) + std::string(65536, 'c')), damaged);
}

TEST(WhyNotUnpacked, RefusesWhatIsTooLargeItself) {
  EXPECT_EQ(WhyNot(std::string(LargestSpreadsheet + 1, 'x')), "it is larger than 256 MiB unpacked");
}

}  // namespace
}  // namespace orvane
