#include "output/exported_map.h"

#include <cstdlib>
#include <fstream>

namespace orvane {
namespace {

/// Compares the files of all groups byte by byte with those in tests/output/golden. With
/// ORVANE_RENEW_SHAPEFILES set in the environment it writes these files instead; read the change
/// before you commit it.
struct ShapefileBytes : ExportFixture {};

TEST_F(ShapefileBytes, AreAsKept) {
  Map& map = Open(SiteOfAllGroups);
  ASSERT_TRUE(messages.Entries().empty()) << messages.Entries()[0].text;
  ASSERT_TRUE(ExportShapefiles(map, folder.Path(), {.projection = true}));
  EXPECT_EQ(FilesThere().size(), 6U * 5);
  for (const std::string& name : FilesThere()) {
    const std::string kept = std::string(OUTPUT_GOLDEN_DIR) + "/" + name;
    const std::string bytes = folder.Read(name);
    if (std::getenv("ORVANE_RENEW_SHAPEFILES") != nullptr) {
      std::ofstream(kept, std::ios::binary) << bytes;
    }
    std::ifstream file(kept, std::ios::binary);
    const std::string expected(std::istreambuf_iterator<char>(file), {});
    const size_t same = static_cast<size_t>(
        std::mismatch(bytes.begin(), bytes.end(), expected.begin(), expected.end()).first -
        bytes.begin());
    EXPECT_TRUE(bytes == expected) << name << " differs at byte " << same;
  }
}

TEST_F(ShapefileBytes, AreTheSameFromRunToRun) {
  Map& map = Open(SiteOfAllGroups);
  ASSERT_TRUE(Export(map));
  std::map<std::string, std::string> first;
  for (const std::string& name : FilesThere()) first[name] = folder.Read(name);
  ASSERT_TRUE(Export(map));
  for (const auto& [name, bytes] : first) EXPECT_TRUE(folder.Read(name) == bytes) << name;
  EXPECT_EQ(FilesThere().size(), first.size());
}

}  // namespace
}  // namespace orvane
