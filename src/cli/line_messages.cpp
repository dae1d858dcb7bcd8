#include "cli/line_messages.h"

#include "cli/exit_status.h"
#include "cli/text_output.h"

#include <cstdlib>

namespace orvane {

const char* SeverityWord(Severity severity) {
  switch (severity) {
    case Severity::Note:
      return "note";
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
  const bool isNote = severity == Severity::Note;
  if (!isNote) entries_.push_back({severity, text});
  const std::string line = OneLine(text);
  if (asResult_ && !isNote) {
    std::fprintf(stdout, "%s\n", line.c_str());
  } else {
    PrintToStandardError(SeverityWord(severity), line);
  }
  if (severity == Severity::Fatal) std::exit(ExitFatal);
}

/// A button with an empty text is not there, but the others keep their numbers.
int LineMessages::Ask(const std::string& /*title*/, const std::vector<std::string>& buttons,
                      const std::string& text) {
  size_t taken = 0;
  int left = answer_;
  if (!queuedAnswers_.empty()) {
    left = queuedAnswers_.front();
    queuedAnswers_.pop_front();
  }
  for (size_t i = 0; i < buttons.size() && left > 0; ++i) {
    if (buttons[i].empty()) continue;
    taken = i;
    --left;
  }
  PrintToStandardError("question", OneLine(text + " [" + buttons[taken] + "]"));
  return static_cast<int>(taken) + 1;
}

void LineMessages::PrintToStandardError(const char* word, const std::string& text) const {
  std::string place;
  if (showsPlaces_ && Origin() != nullptr && Origin()->line > 0) {
    place = OneLine(Origin()->file) + ':' + std::to_string(Origin()->line) + ": ";
  }
  std::fprintf(stderr, "%s%s: %s\n", place.c_str(), word, text.c_str());
}

std::optional<std::string> LineMessages::Prompt(const TextPrompt& /*prompt*/) {
  return std::nullopt;
}

}  // namespace orvane
