#include "cli/line_messages.h"

#include "cli/exit_status.h"
#include "cli/text_output.h"

#include <algorithm>
#include <cstdlib>

namespace orvane {

const char* SeverityWord(Severity severity) {
  switch (severity) {
    case Severity::Warning:
      return "warning";
    case Severity::Error:
      return "error";
    case Severity::InternalError:
      return "internal error";
    default:
      return "fatal";
  }
}

void LineMessages::Post(Severity severity, const std::string& text) {
  entries_.push_back({severity, text});
  const std::string line = OneLine(text);
  if (asResult_) {
    std::fprintf(stdout, "%s\n", line.c_str());
  } else {
    std::fprintf(stderr, "%s: %s\n", SeverityWord(severity), line.c_str());
  }
  if (severity == Severity::Fatal) std::exit(ExitFatal);
}

int LineMessages::Ask(const std::string& /*title*/, const std::vector<std::string>& buttons,
                      const std::string& /*text*/) {
  return std::clamp(answer_, 1, std::max(static_cast<int>(buttons.size()), 1));
}

std::optional<std::string> LineMessages::Prompt(const std::string& /*title*/,
                                                const std::string& /*message*/,
                                                const std::string& /*text*/) {
  return std::nullopt;
}

}  // namespace orvane
