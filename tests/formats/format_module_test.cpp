#include "formats/format_module.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(FormatModule, IsFoundBesideThePrograms) {
  const LoadedModule& loaded = LoadFormatModule();
  if (ORVANE_WITH_GDAL == 0) {
    EXPECT_EQ(loaded.module, nullptr);
    EXPECT_EQ(loaded.fault, "it is not installed");
    return;
  }
  ASSERT_NE(loaded.module, nullptr) << loaded.fault;
  EXPECT_EQ(loaded.fault, "");
  EXPECT_EQ(&LoadFormatModule(), &loaded);
}

TEST(FormatModule, ThatIsMissingOrNoneGivesAReason) {
  const TemporaryFolder folder;
  const LoadedModule missing = LoadFormatModuleFrom(folder.Path("none.so"));
  EXPECT_EQ(missing.module, nullptr);
  EXPECT_EQ(missing.fault, "it is not installed");
  const LoadedModule damaged = LoadFormatModuleFrom(folder.Write("text.so", "no library"));
  EXPECT_EQ(damaged.module, nullptr);
  EXPECT_NE(damaged.fault.find("text.so"), std::string::npos) << damaged.fault;
}

TEST(FormatModule, OfAnotherProgramIsRefused) {
  // Some library that is here for certain, as the program was linked with it.
  for (const char* path : {"/lib/x86_64-linux-gnu/libm.so.6", "/usr/lib/libm.so.6",
                           "/lib64/libm.so.6", "/lib/aarch64-linux-gnu/libm.so.6"}) {
    const LoadedModule other = LoadFormatModuleFrom(path);
    EXPECT_EQ(other.module, nullptr);
    EXPECT_TRUE(other.fault == "it is not installed" ||
                other.fault == std::string(path) + " is not a module of this program")
        << other.fault;
  }
}

TEST(FormatModule, OfAnotherVersionIsRefused) {
  const LoadedModule other = LoadFormatModuleFrom(OTHER_VERSION_MODULE);
  EXPECT_EQ(other.module, nullptr);
  EXPECT_TRUE(other.fault.starts_with("version 0.0.1-other is installed, not ")) << other.fault;
}

}  // namespace
}  // namespace orvane
