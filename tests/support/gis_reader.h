#pragma once

#include "support/temporary_folder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace orvane {

/// What a reader that is much used makes of a file: ogrinfo of the package gdal-bin.
/// \param folder  has the file, and receives the file "listed"
inline std::string ListedByOgrinfo(const TemporaryFolder& folder, const std::string& name,
                                   const std::string& options = "-so -al") {
  const std::string command =
      "ogrinfo " + options + " '" + folder.Path(name) + "' >'" + folder.Path("listed") + "' 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0) << folder.Read("listed");
  return folder.Read("listed");
}

inline void ExpectIn(const std::string& text, const std::string& expected) {
  EXPECT_NE(text.find(expected), std::string::npos) << "no " << expected << " in\n" << text;
}

inline void ExpectNoComplaint(const std::string& text) {
  for (const char* word : {"Warning", "ERROR", "FAILURE"}) {
    EXPECT_EQ(text.find(word), std::string::npos) << text;
  }
}

}  // namespace orvane
