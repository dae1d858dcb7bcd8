#include "cli/text_output.h"

#include "base/text.h"
#include "cli/exit_status.h"

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
  const std::string utf8 = ToUtf8(text);
  std::string_view rest = utf8;
  std::string line;
  while (true) {
    const size_t end = rest.find('\n');
    line += EscapedControls(rest.substr(0, end));
    if (end == std::string_view::npos) return line;
    line += "\\n";
    rest.remove_prefix(end + 1);
  }
}

void Print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

int FinishOutput(int status) {
  // All output passes through `stdout`, also that of `std::cout`, and an error stays set.
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  std::fputs("error: Can't write to standard output\n", stderr);
  return status == ExitDone ? ExitFailed : status;
}

}  // namespace orvane
