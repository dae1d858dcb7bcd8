#pragma once

#include "support/temporary_folder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace orvane {

/// The text of each page of a PDF file, laid out as it is printed: what pdftotext of the package
/// poppler-utils makes of it.
/// \param folder  has the file, and receives the file "read"
inline std::vector<std::string> PdfPagesAsText(const TemporaryFolder& folder,
                                               const std::string& name) {
  const std::string command =
      "pdftotext -layout '" + folder.Path(name) + "' '" + folder.Path("read") + "'";
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  std::istringstream text(folder.Read("read"));
  std::vector<std::string> pages;
  for (std::string page; std::getline(text, page, '\f');) pages.push_back(page);
  return pages;
}

}  // namespace orvane
