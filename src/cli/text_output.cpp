#include "cli/text_output.h"

#include "base/files.h"

#include <algorithm>
#include <cstdio>

namespace orvane {

std::string FieldsToUtf8(std::string_view text) {
  std::string utf8;
  while (!text.empty()) {
    const size_t end = std::min(text.find_first_of("\t\n"), text.size());
    utf8 += ToUtf8(text.substr(0, end));
    if (end < text.size()) utf8 += text[end];
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return utf8;
}

std::string OneLine(std::string_view text) {
  std::string line;
  for (const char c : ToUtf8(text)) {
    if (c == '\n') {
      line += "\\n";
    } else {
      line += c;
    }
  }
  return line;
}

bool WriteOutput(const std::string& path, std::string_view text) {
  if (path == "-") {
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return std::fflush(stdout) == 0 && written;
  }
  return WriteFileAtomically(path, text) == WriteResult::Done;
}

}  // namespace orvane
